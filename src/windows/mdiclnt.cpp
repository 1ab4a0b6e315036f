#include <windows.h>

#include "bcapp.h"
#include "bcids2.h"
#include "bcmdi.h"
#include "bcmenu.h"
#include "bcplatform.h"

namespace {

const char kFile[] = "MDICLNT";
constexpr unsigned int kLineWindowMenu = 38;
constexpr unsigned int kLineFirstChildID = 39;

// A child with clipped children and both scroll bars, which the client shows when documents
// reach past its edges.
constexpr long kClientStyle = 0x42300000;

} // namespace

BCMDIClientWindow::BCMDIClientWindow(BCMDIFrameWindow* frame, BCMenu* windowMenu,
                                     unsigned int firstChildID, BCApplication* app)
    : BCWindow(bcids::kTypeMDIClientWindow, frame, app), opSubMenu(windowMenu),
      wFirstChildID(firstChildID) {
    SetStyle(kClientStyle, 1);
    wID = bcids::kMDIClientID;
    AssertType(windowMenu, bcids::kTypeMenuObject, "opSubMenu", kLineWindowMenu, kFile);
    BCAssert(this, firstChildID != 0, kLineFirstChildID, kFile);
}

BCMDIClientWindow::~BCMDIClientWindow() {
    delete opSubMenu;
}

void BCMDIClientWindow::Display(const char* prefix) {
    DispObjectMsg("%sopSubMenu=%p, wFirstChildID=%u", prefix ? prefix : "",
                  static_cast<void*>(opSubMenu), wFirstChildID);
}

int BCMDIClientWindow::Create(const char* title) {
    if (hWnd)
        return 1;
    CLIENTCREATESTRUCT record = {};
    record.hWindowMenu = opSubMenu ? opSubMenu->GetHandle() : nullptr;
    record.idFirstChild = wFirstChildID;
    HWND frame = opParent ? opParent->GetHandle() : nullptr;
    HWND window = nullptr;
    if (BCWindow::Create("") && frame)
        window = CreateWindowExA(
            0, "MDICLIENT", title ? title : "", static_cast<DWORD>(dwStyle), rcWindow.GetLeft(),
            rcWindow.GetTop(), rcWindow.GetWidth(), rcWindow.GetHeight(), frame,
            reinterpret_cast<HMENU>(static_cast<UINT_PTR>(wID)),
            reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(frame, GWLP_HINSTANCE)), &record);
    if (!window || !Attach(window)) {
        if (window)
            DestroyWindow(window);
        else
            BCTraceFailure("CreateWindowExA");
        DispObjectMsg(bcids::kMsgCannotCreateMDIClient);
        return 0;
    }
    if (opApp)
        opApp->SetMDIClient(this);
    Show(SW_SHOW);
    return 1;
}
