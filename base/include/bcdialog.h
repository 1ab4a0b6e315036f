#pragma once
#include <windows.h>

#include "bcvalues.h"
#include "bcwindow.h"

class BCControlWindow;

// A dialog made from a template in a module's resources (searched in the module asked for,
// the application's, then the registered libraries). It owns the control objects bound to
// its template's controls and binds them when the dialog starts.
class NORLIB1_API BCDialog : public BCWindow {
  public:
    BCDialog(const BCResID& dialogTemplate, BCWindow* parent, BCApplication* app,
             unsigned int typeCode = 56);
    ~BCDialog() override;

    int GetResult() const { return wResult; }
    const BCResID& GetTemplate() const { return rsTemplate; }
    // Dialogs pass what they do not handle to the dialog manager: FALSE, and TRUE at
    // start-up so that it sets the focus. OK and Cancel end the dialog.
    LRESULT DefaultEvent(BCEvent* event) override;
    virtual int EndDlg(int result);

    // Called by the control constructors and destructors; the dialog deletes its controls.
    void AddControl(BCControlWindow* control);
    void RemoveControl(BCControlWindow* control);
    // Binds the controls to the template's windows (at start-up) and lets them go (at the
    // end, when the dialog manager destroys the windows).
    int BindControls();
    void UnbindControls();

  protected:
    // The module whose resources hold the template, null when none does.
    HINSTANCE FindTemplate() const;

    BCResID rsTemplate;
    int wResult;
    BCWindowList* opControls;
};

// Create runs the dialog's modal loop and returns when EndDlg is called: 1 when the dialog
// ran (its result is GetResult), 0 when it could not be made (message 10052).
class NORLIB1_API BCModalDialog : public BCDialog {
  public:
    BCModalDialog(const BCResID& dialogTemplate, BCWindow* parent, BCApplication* app,
                  unsigned int typeCode = 57);
    int Create(const char* title) override;
    int EndDlg(int result) override;
};

// A dialog that stays open beside its owner (status windows); EndDlg closes it.
class NORLIB1_API BCModelessDialog : public BCDialog {
  public:
    BCModelessDialog(const BCResID& dialogTemplate, BCWindow* parent, BCApplication* app,
                     unsigned int typeCode = 67);
    int Create(const char* title) override;
    int EndDlg(int result) override;
};

// A message box, shown through the message sink when made; GetResult is the button
// pressed (IDOK 1, IDCANCEL 2, IDYES 6, IDNO 7).
class NORLIB1_API BCMsgBox : public BCObject {
  public:
    BCMsgBox(const char* text, const char* title, unsigned int flags, BCWindow* owner,
             BCModule* module);
    int GetResult() const { return wResult; }

  private:
    int wResult;
};

NORLIB1_API INT_PTR CALLBACK BCDlgWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
