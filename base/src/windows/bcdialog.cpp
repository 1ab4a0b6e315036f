#include "bcdialog.h"

#include "../object/msgformat.h"
#include "bccontrol.h"
#include "bcids1.h"
#include "bcmodule.h"
#include "bcplatform.h"
#include "kostring.h"

namespace {
int HasDialog(void* module, void* name) {
    return FindResourceA(static_cast<HMODULE>(module), static_cast<const char*>(name),
                         reinterpret_cast<LPCSTR>(RT_DIALOG)) != nullptr;
}
} // namespace

INT_PTR CALLBACK BCDlgWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    BCWindow* object = BCWindow::FromHandle(window);
    if (!object) {
        // The messages before WM_INITDIALOG belong to the dialog being created.
        BCWindow* creating = message == WM_INITDIALOG && lParam
                                 ? reinterpret_cast<BCWindow*>(lParam)
                                 : BCGetCreateWindow();
        if (!creating || creating->GetHandle() || !creating->Attach(window))
            return FALSE;
        object = creating;
    }
    BCDialog* dialog = static_cast<BCDialog*>(object);
    if (message == WM_INITDIALOG)
        dialog->BindControls();
    BCEvent event(window, message, wParam, lParam);
    INT_PTR result = object->DispatchEvent(&event);
    if (message == WM_NCDESTROY) {
        dialog->UnbindControls();
        object->Detach();
    }
    return result;
}

BCDialog::BCDialog(const BCResID& dialogTemplate, BCWindow* parent, BCApplication* app,
                   unsigned int typeCode)
    : BCWindow(typeCode, parent, app), rsTemplate(dialogTemplate), wResult(0),
      opControls(new BCWindowList) {}

BCDialog::~BCDialog() {
    // The controls are the dialog's: each is taken off the list before it goes.
    while (opControls->Home()) {
        BCControlWindow* control = static_cast<BCControlWindow*>(opControls->GetCrntItem());
        opControls->DeleteCrnt();
        control->ForgetDialog();
        delete control;
    }
    delete opControls;
}

void BCDialog::AddControl(BCControlWindow* control) {
    if (control)
        opControls->Append(control, control);
}

void BCDialog::RemoveControl(BCControlWindow* control) {
    opControls->Delete(control);
}

int BCDialog::BindControls() {
    int all = 1;
    for (int more = opControls->Home(); more; more = opControls->Next()) {
        BCControlWindow* control = static_cast<BCControlWindow*>(opControls->GetCrntItem());
        all &= control->Create("");
    }
    return all;
}

void BCDialog::UnbindControls() {
    for (int more = opControls->Home(); more; more = opControls->Next())
        static_cast<BCControlWindow*>(opControls->GetCrntItem())->Unbind();
}

LRESULT BCDialog::DefaultEvent(BCEvent* e) {
    switch (e->GetMessage()) {
    case WM_INITDIALOG:
        return TRUE;
    case WM_CLOSE:
        return EndDlg(IDCANCEL);
    case WM_COMMAND:
        if (e->GetNotifyCode() == BN_CLICKED &&
            (e->GetControlID() == IDOK || e->GetControlID() == IDCANCEL))
            return EndDlg(static_cast<int>(e->GetControlID()));
        return FALSE;
    default:
        return FALSE;
    }
}

int BCDialog::EndDlg(int result) {
    wResult = result;
    return 1;
}

HINSTANCE BCDialog::FindTemplate() const {
    BCModule* module = rsTemplate.GetModule();
    return static_cast<HINSTANCE>(
        KoString::FindModule(module ? module->GetResources() : nullptr, HasDialog,
                             const_cast<char*>(rsTemplate.GetResource())));
}

BCModalDialog::BCModalDialog(const BCResID& dialogTemplate, BCWindow* parent, BCApplication* app,
                             unsigned int typeCode)
    : BCDialog(dialogTemplate, parent, app, typeCode) {}

int BCModalDialog::Create(const char* title) {
    HINSTANCE instance = FindTemplate();
    if (!instance || hWnd || !BCWindow::Create(title)) {
        DispObjectMsg(bcids::kMsgCannotCreateDialog);
        return 0;
    }
    BCSetCreateWindow(this);
    INT_PTR result = DialogBoxParamA(instance, rsTemplate.GetResource(),
                                     opParent ? opParent->GetHandle() : nullptr, BCDlgWndProc,
                                     reinterpret_cast<LPARAM>(this));
    BCSetCreateWindow(nullptr);
    if (result == -1) {
        BCTraceFailure("DialogBoxParamA");
        DispObjectMsg(bcids::kMsgCannotCreateDialog);
        return 0;
    }
    wResult = static_cast<int>(result);
    return 1;
}

int BCModalDialog::EndDlg(int result) {
    BCDialog::EndDlg(result);
    return hWnd ? EndDialog(hWnd, result) : 0;
}

BCModelessDialog::BCModelessDialog(const BCResID& dialogTemplate, BCWindow* parent,
                                   BCApplication* app, unsigned int typeCode)
    : BCDialog(dialogTemplate, parent, app, typeCode) {}

int BCModelessDialog::Create(const char* title) {
    HINSTANCE instance = FindTemplate();
    if (!instance || hWnd || !BCWindow::Create(title)) {
        DispObjectMsg(bcids::kMsgCannotCreateDialog);
        return 0;
    }
    BCSetCreateWindow(this);
    HWND window = CreateDialogParamA(instance, rsTemplate.GetResource(),
                                     opParent ? opParent->GetHandle() : nullptr, BCDlgWndProc,
                                     reinterpret_cast<LPARAM>(this));
    BCSetCreateWindow(nullptr);
    if (!window) {
        BCTraceFailure("CreateDialogParamA");
        DispObjectMsg(bcids::kMsgCannotCreateDialog);
        return 0;
    }
    if (title && *title)
        BCTraced(SetWindowTextA(window, title), "SetWindowTextA");
    ShowWindow(window, SW_SHOW);
    return 1;
}

int BCModelessDialog::EndDlg(int result) {
    BCDialog::EndDlg(result);
    return Destroy();
}

BCMsgBox::BCMsgBox(const char* text, const char* title, unsigned int flags, BCWindow* owner,
                   BCModule*)
    : BCObject(bcids::kTypeMsgBox), wResult(0) {
    BCMsgInfo info = {BC_MSG_BOX, 0, text ? text : "", title, flags, this, nullptr, 0};
    BCSetMsgOwner(owner ? owner->GetHandle() : nullptr);
    wResult = BCShowMsg(info);
    BCSetMsgOwner(nullptr);
}
