#pragma once
// Multiple-document windows: a frame (the main window), its client (the system window that
// holds and arranges the documents) and the document windows themselves.
#include <windows.h>

#include "norlib2api.h"
#include "bcwindow.h"

class BCMDIClientWindow;
class BCMDIChildWindow;

// The main window of a multiple-document application. Its menu bar must hold a "&Window"
// menu: when the frame's window is created, the frame makes its client there and the client
// lists the open documents in that menu. Default handling goes to the frame procedure of the
// platform, which sizes the client, routes the window menu's commands and hands other
// commands to the active document.
class NORLIB2_API BCMDIFrameWindow : public BCMainWindow {
  public:
    explicit BCMDIFrameWindow(BCApplication* app);
    ~BCMDIFrameWindow() override;

    void Display(const char* prefix) override;
    LRESULT DispatchEvent(BCEvent* event) override;
    LRESULT DefaultEvent(BCEvent* event) override;
    // With a client, `menu` must hold a "&Window" menu too; returns the previous menu.
    BCMenu* SetMenu(BCMenu* menu) override;

    // Arrange the documents; each returns 0 without a client window.
    int Cascade();
    int Tile();
    int ArrangeIcons();
    // Activates the document after the active one.
    int Next();
    // Asks every document to close; 1 when all went.
    int CloseAll();

    BCMDIClientWindow* GetClient() const { return opClient; }
    BCMDIChildWindow* GetActiveChild() const { return opActiveChild; }
    // Kept up to date by the documents as they are activated and destroyed.
    void SetActiveChild(BCMDIChildWindow* child) { opActiveChild = child; }

  private:
    void MakeClient();
    int PostToClient(unsigned int message, unsigned int line);

    BCMDIClientWindow* opClient;
    BCMDIChildWindow* opActiveChild;
};

// The system's document-holding window inside a frame. It owns `windowMenu`, a wrapper of the
// frame's "&Window" menu, where it lists the documents with ids from `firstChildID` on.
class NORLIB2_API BCMDIClientWindow : public BCWindow {
  public:
    BCMDIClientWindow(BCMDIFrameWindow* frame, BCMenu* windowMenu, unsigned int firstChildID,
                      BCApplication* app);
    ~BCMDIClientWindow() override;

    void Display(const char* prefix) override;
    // Makes the system window; message 10081 when it cannot be made.
    int Create(const char* title) override;

    BCMenu* GetSubMenu() const { return opSubMenu; }
    unsigned int GetFirstChildID() const { return wFirstChildID; }

  private:
    BCMenu* opSubMenu;
    unsigned int wFirstChildID;
};

// One document window, made and destroyed through its client. Its menu slot remembers the
// frame menu it put up (SetFrameMenu); the frame shows and owns nothing of it.
class NORLIB2_API BCMDIChildWindow : public BCChildWindow {
  public:
    BCMDIChildWindow(BCMDIClientWindow* client, BCApplication* app);
    ~BCMDIChildWindow() override;

    // An empty rectangle lets the client place and size the new window; message 10080 when
    // it cannot be made.
    int Create(const char* title) override;
    // Asks the client to destroy the window; 0 when there is none or it is already going.
    int Destroy();
    LRESULT DispatchEvent(BCEvent* event) override;
    LRESULT DefaultEvent(BCEvent* event) override;

    // The id the client gave the window (it renumbers its documents as they come and go).
    unsigned int GetID();
    void SetFrameMenu(BCMenu* menu);
    BCMenu* GetFrameMenu() const;

    // Each returns 0 unless both the client and this document have a window.
    LRESULT BringToFront();
    LRESULT Maximize();
    LRESULT Restore();

    BCMDIClientWindow* GetClient() const;
    BCMDIFrameWindow* GetFrame() const;

  private:
    LRESULT SendToClient(unsigned int message);
    void NoteActivation(BCEvent* event);
    void ForgetActive();
};
