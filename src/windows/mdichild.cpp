#include <windows.h>

#include "bcids2.h"
#include "bcmdi.h"
#include "bcmenu.h"
#include "bcplatform.h"

namespace {

// Visible child first; clipped children added after, as the platform's document windows
// hold controls of their own.
constexpr long kChildStyle = 0x50000000;
constexpr long kChildClipStyle = 0x02000000;

HINSTANCE FrameworkInstance() {
    HMODULE module = nullptr;
    if (!GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCSTR>(&BCWndProc), &module))
        BCTraceFailure("GetModuleHandleExA");
    return module;
}

int ScreenHeight() {
    return GetSystemMetrics(SM_CYSCREEN);
}

} // namespace

BCMDIChildWindow::BCMDIChildWindow(BCMDIClientWindow* client, BCApplication* app)
    : BCChildWindow(client, 0, app, bcids::kTypeMDIChildWindow) {
    dwStyle = kChildStyle;
    SetStyle(kChildClipStyle, 1);
    SetWindowRect(BCRectangle(0, 0, 0, 0));
}

BCMDIChildWindow::~BCMDIChildWindow() {
    if (hWnd)
        ForgetActive();
    Destroy();
}

BCMDIClientWindow* BCMDIChildWindow::GetClient() const {
    return opParent && opParent->GetObjectType() == bcids::kTypeMDIClientWindow
               ? static_cast<BCMDIClientWindow*>(opParent)
               : nullptr;
}

BCMDIFrameWindow* BCMDIChildWindow::GetFrame() const {
    BCMDIClientWindow* client = GetClient();
    BCWindow* frame = client ? client->GetPrnt() : nullptr;
    return frame && frame->GetObjectType() == bcids::kTypeMDIFrameWindow
               ? static_cast<BCMDIFrameWindow*>(frame)
               : nullptr;
}

// The frame must never point to a document whose window is gone.
void BCMDIChildWindow::ForgetActive() {
    BCMDIFrameWindow* frame = GetFrame();
    if (frame && frame->GetActiveChild() == this)
        frame->SetActiveChild(nullptr);
}

int BCMDIChildWindow::Create(const char* title) {
    BCMDIClientWindow* client = GetClient();
    if (hWnd)
        return 1;
    const bool placed = !rcWindow.IsEmpty();
    int top = rcWindow.GetTop();
    if (placed && !(GetDeviceFlags() & BC_DEV_TOP_DOWN)) // measured up from the bottom
        top = (opParent && opParent->GetHandle() ? opParent->GetClientRect().GetHeight()
                                                 : ScreenHeight()) -
              top;
    MDICREATESTRUCTA record = {};
    record.szClass = WindowClass();
    record.szTitle = title ? title : "";
    record.hOwner = FrameworkInstance();
    record.x = placed ? rcWindow.GetLeft() : CW_USEDEFAULT;
    record.y = placed ? top : CW_USEDEFAULT;
    record.cx = placed ? rcWindow.GetWidth() : CW_USEDEFAULT;
    record.cy = placed ? rcWindow.GetHeight() : CW_USEDEFAULT;
    record.style = static_cast<DWORD>(dwStyle);
    record.lParam = reinterpret_cast<LPARAM>(this);
    HWND window = nullptr;
    BCSetCreateWindow(this);
    if (BCWindow::Create(title) && record.szClass && client && client->HandleCheck())
        window = reinterpret_cast<HWND>(
            SendMessageA(client->GetHandle(), WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&record)));
    BCSetCreateWindow(nullptr);
    if (!window || hWnd != window) {
        DispObjectMsg(bcids::kMsgCannotCreateMDIChild);
        return 0;
    }
    return 1;
}

int BCMDIChildWindow::Destroy() {
    if (IsBeingDestroyed())
        return 0;
    if (!HandleCheck()) // without a window the client may be gone too
        return 0;
    BCMDIClientWindow* client = GetClient();
    if (!client || !client->HandleCheck())
        return 0;
    SendMessageA(client->GetHandle(), WM_MDIDESTROY, reinterpret_cast<WPARAM>(hWnd), 0);
    return 1;
}

// The platform tells a document both sides of an activation: the window losing it and the
// window gaining it.
void BCMDIChildWindow::NoteActivation(BCEvent* e) {
    BCMDIFrameWindow* frame = GetFrame();
    if (!frame || !hWnd)
        return;
    if (reinterpret_cast<HWND>(e->GetLParam()) == hWnd)
        frame->SetActiveChild(this);
    else if (reinterpret_cast<HWND>(e->GetWParam()) == hWnd && frame->GetActiveChild() == this)
        frame->SetActiveChild(nullptr);
}

LRESULT BCMDIChildWindow::DispatchEvent(BCEvent* e) {
    if (e->GetMessage() == WM_MDIACTIVATE)
        NoteActivation(e);
    else if (e->GetMessage() == WM_DESTROY)
        ForgetActive();
    return BCChildWindow::DispatchEvent(e);
}

LRESULT BCMDIChildWindow::DefaultEvent(BCEvent* e) {
    return DefMDIChildProcA(e->GetWindow(), e->GetMessage(), e->GetWParam(), e->GetLParam());
}

unsigned int BCMDIChildWindow::GetID() {
    if (hWnd)
        wID = static_cast<unsigned int>(GetWindowLongPtrA(hWnd, GWLP_ID));
    return wID;
}

void BCMDIChildWindow::SetFrameMenu(BCMenu* menu) {
    opMenu = menu;
    if (BCMDIFrameWindow* frame = GetFrame())
        frame->SetMenu(menu);
}

BCMenu* BCMDIChildWindow::GetFrameMenu() const {
    BCMDIFrameWindow* frame = GetFrame();
    return frame ? frame->GetMenu() : nullptr;
}

LRESULT BCMDIChildWindow::SendToClient(unsigned int message) {
    BCMDIClientWindow* client = GetClient();
    if (!client || !client->HandleCheck() || !HandleCheck())
        return 0;
    return SendMessageA(client->GetHandle(), message, reinterpret_cast<WPARAM>(hWnd), 0);
}

LRESULT BCMDIChildWindow::BringToFront() {
    return SendToClient(WM_MDIACTIVATE);
}

LRESULT BCMDIChildWindow::Maximize() {
    return SendToClient(WM_MDIMAXIMIZE);
}

LRESULT BCMDIChildWindow::Restore() {
    return SendToClient(WM_MDIRESTORE);
}
