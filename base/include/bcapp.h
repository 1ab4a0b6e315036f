#pragma once
#include <windows.h>

#include "bcobject.h"

class BCModule;
class BCWindow;

// The running application: its module (the program's resources), its main window and the
// message loop. The first application made is the one BCGetApp returns.
class NORLIB1_API BCApplication : public BCObject {
  public:
    // `instance` null: the program's own module.
    explicit BCApplication(HINSTANCE instance = nullptr, const char* name = "");
    ~BCApplication() override;
    BCApplication(const BCApplication&) = delete;
    BCApplication& operator=(const BCApplication&) = delete;

    BCModule* GetModule() const { return opModule; }
    BCWindow* GetMainWindow() const { return opMainWindow; }
    void SetMainWindow(BCWindow* window) { opMainWindow = window; }
    BCWindow* GetMDIClient() const { return opMDIClient; }
    void SetMDIClient(BCWindow* client) { opMDIClient = client; }
    // A window that goes is no longer the main window or the client.
    void ForgetWindow(BCWindow* window);

    // Runs the message loop until the application quits; returns the exit code.
    int Run();
    // Handles the messages waiting now and returns; 0 once the application was told to quit.
    int ProcessPending();
    void Quit(int exitCode);
    void Display(const char* prefix) override;

  private:
    // Handles one message the loop took; gives dialogs and the MDI client first say.
    void Handle(MSG& message);

    BCModule* opModule;
    BCWindow* opMainWindow;
    BCWindow* opMDIClient;
    int blQuit;
    int wExitCode;
};

NORLIB1_API BCApplication* BCGetApp();
