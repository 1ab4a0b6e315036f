#include "bccontrol.h"

#include "bcdialog.h"
#include "bcids1.h"
#include "bcplatform.h"

namespace {
BCRectangle RectAt(const BCPosition& pos, const BCSize& size) {
    return BCRectangle(pos, size);
}
} // namespace

BCControlWindow::BCControlWindow(const BCResID& id, BCDialog* dialog, unsigned int typeCode,
                                 BCApplication* app)
    : BCWindow(typeCode, dialog, app), opDialog(dialog), caClass(nullptr), lpOldProc(nullptr),
      blIntercept(0) {
    wID = id.GetResNum();
    if (dialog)
        dialog->AddControl(this);
}

BCControlWindow::BCControlWindow(const char* className, long style, unsigned int id,
                                 BCWindow* parent, const BCPosition& pos, const BCSize& size,
                                 unsigned int typeCode, BCApplication* app)
    : BCWindow(typeCode, parent, app), opDialog(nullptr), caClass(className), lpOldProc(nullptr),
      blIntercept(0) {
    wID = id;
    dwStyle = style;
    rcWindow = RectAt(pos, size);
}

BCControlWindow::~BCControlWindow() {
    Subclass(0);
    if (opDialog) {
        opDialog->RemoveControl(this);
        Unbind(); // the dialog's window owns the control's window
    }
}

// The window goes, the wish to intercept stays for the next binding.
void BCControlWindow::Unbind() {
    Subclass(0);
    Detach();
}

int BCControlWindow::Create(const char* title) {
    if (hWnd)
        return 1;
    if (!caClass) { // bound to a template control
        if (!opDialog || !opDialog->GetHandle()) {
            DispObjectMsg(bcids::kMsgNoDialog);
            return 0;
        }
        HWND control = GetDlgItem(opDialog->GetHandle(), static_cast<int>(wID));
        if (!control) {
            DispObjectMsg(bcids::kMsgNoControl);
            return 0;
        }
        if (!Attach(control)) {
            DispObjectMsg(bcids::kMsgCannotInstallControl);
            return 0;
        }
        dwStyle = static_cast<long>(GetWindowLongPtrA(control, GWL_STYLE));
        if (title && *title)
            SetTitle(title);
        return Subclass(blIntercept);
    }
    if (!opParent || !opParent->GetHandle()) {
        DispObjectMsg(bcids::kMsgCannotCreateControl);
        return 0;
    }
    return BCWindow::Create(title) &&
           CreateSystemWindow(caClass, opParent->GetHandle(),
                              reinterpret_cast<HMENU>(static_cast<UINT_PTR>(wID)),
                              bcids::kMsgCannotCreateControl) &&
           Subclass(blIntercept);
}

int BCControlWindow::Intercept(int on) {
    blIntercept = on == 1;
    return hWnd ? Subclass(blIntercept) : 1;
}

int BCControlWindow::Subclass(int on) {
    if (!hWnd || (on != 0) == (lpOldProc != nullptr))
        return 1;
    WNDPROC replacing = on ? &BCControlWindow::InterceptProc : lpOldProc;
    LONG_PTR replaced =
        SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(replacing));
    if (!replaced)
        return BCTraceFailure("SetWindowLongPtrA");
    lpOldProc = on ? reinterpret_cast<WNDPROC>(replaced) : nullptr;
    return 1;
}

LRESULT CALLBACK BCControlWindow::InterceptProc(HWND window, UINT message, WPARAM wParam,
                                                LPARAM lParam) {
    BCControlWindow* control = static_cast<BCControlWindow*>(FromHandle(window));
    if (!control || !control->lpOldProc)
        return DefWindowProcA(window, message, wParam, lParam);
    WNDPROC old = control->lpOldProc;
    if (message == WM_NCDESTROY) { // the control goes: hand it back to its own procedure
        control->Unbind();
        return CallWindowProcA(old, window, message, wParam, lParam);
    }
    BCEvent event(window, message, wParam, lParam);
    return control->DispatchEvent(&event);
}

LRESULT BCControlWindow::DefaultEvent(BCEvent* e) {
    if (lpOldProc)
        return CallWindowProcA(lpOldProc, e->GetWindow(), e->GetMessage(), e->GetWParam(),
                               e->GetLParam());
    return DefWindowProcA(e->GetWindow(), e->GetMessage(), e->GetWParam(), e->GetLParam());
}

LRESULT BCListControl::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageA(hWnd, message, wParam, lParam);
}

// Adding reports a full box and other failures with the control's own messages.
int BCListControl::Added(int index) const {
    if (index == LB_ERRSPACE)
        DispObjectMsg(bcids::kMsgListNoMemory);
    else if (index < 0)
        DispObjectMsg(bcids::kMsgListError);
    return index;
}

int BCListControl::Append(void* item) {
    if (!hWnd)
        return -1;
    return Added(static_cast<int>(
        Send(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item ? item : const_cast<char*>("")))));
}

int BCListControl::Insert(void* item, int index) {
    if (!hWnd)
        return 0;
    return Added(static_cast<int>(
               Send(LB_INSERTSTRING, static_cast<WPARAM>(index),
                    reinterpret_cast<LPARAM>(item ? item : const_cast<char*>(""))))) >= 0;
}

int BCListControl::Delete(int index) {
    if (!hWnd)
        return 0;
    if (index == -1)
        index = GetCount() - 1;
    return index >= 0 && Send(LB_DELETESTRING, static_cast<WPARAM>(index), 0) >= 0;
}

int BCListControl::DeleteAll() {
    return hWnd ? (Send(LB_RESETCONTENT, 0, 0), 1) : 0;
}

int BCListControl::GetCount() {
    return hWnd ? static_cast<int>(Send(LB_GETCOUNT, 0, 0)) : -1;
}

int BCListControl::GetCrntInd() {
    return hWnd ? static_cast<int>(Send(LB_GETCURSEL, 0, 0)) : -1;
}

int BCListControl::GoTo(int index) {
    return hWnd && Send(LB_SETCURSEL, static_cast<WPARAM>(index), 0) != LB_ERR;
}

int BCListControl::GetCrntItem(char* buffer) {
    int index = GetCrntInd();
    return index >= 0 && buffer &&
           Send(LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(buffer)) > 0;
}

int BCListControl::GetItem(int index, char* buffer) {
    return hWnd && buffer &&
           Send(LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(buffer)) != LB_ERR;
}

int BCListControl::GetItemLen(int index) {
    return hWnd ? static_cast<int>(Send(LB_GETTEXTLEN, static_cast<WPARAM>(index), 0)) : -1;
}

BCListBox::BCListBox(const BCResID& id, BCDialog* dialog, BCApplication* app)
    : BCListControl(id, dialog, bcids::kTypeListBox, app) {}

BCListBox::BCListBox(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
                     const char* text, BCApplication* app)
    : BCListControl("LISTBOX", WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL | LBS_NOTIFY, id,
                    parent, pos, size, bcids::kTypeListBox, app) {
    if (text)
        Create(text);
}

BCScrollBar::BCScrollBar(const BCResID& id, BCDialog* dialog, unsigned int kind,
                         unsigned int typeCode, BCApplication* app)
    : BCControlWindow(id, dialog, typeCode, app), wKind(kind) {}

BCScrollBar::BCScrollBar(unsigned int kind, long style, unsigned int id, BCWindow* parent,
                         const BCPosition& pos, const BCSize& size, unsigned int typeCode,
                         BCApplication* app)
    : BCControlWindow("SCROLLBAR", style, id, parent, pos, size, typeCode, app), wKind(kind) {}

int BCScrollBar::SetRange(int minimum, int maximum) {
    return hWnd && SetScrollRange(hWnd, SB_CTL, minimum, maximum, TRUE);
}

int BCScrollBar::SetThumb(int position) {
    return hWnd ? (SetScrollPos(hWnd, SB_CTL, position, TRUE), 1) : 0;
}

int BCScrollBar::GetThumb() const {
    return hWnd ? GetScrollPos(hWnd, SB_CTL) : -1;
}
