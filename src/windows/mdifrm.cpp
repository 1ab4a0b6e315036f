#include <windows.h>

#include <new>

#include "bcapp.h"
#include "bcids2.h"
#include "bcmdi.h"
#include "bcmenu.h"
#include "bcplatform.h"

namespace {

const char kFile[] = "MDIFRM";
const char kWindowMenu[] = "&Window";
constexpr unsigned int kNotFound = 0xFFFF;

// Source lines that faults report, kept stable so that a report can be matched to its cause.
constexpr unsigned int kLineNoMenu = 63;
constexpr unsigned int kLineNoWindowMenu = 65;
constexpr unsigned int kLineNoClientWindow = 71;
constexpr unsigned int kLineSetMenuNoWindowMenu = 110;
constexpr unsigned int kLineCascade = 135;
constexpr unsigned int kLineTile = 144;
constexpr unsigned int kLineArrange = 153;
constexpr unsigned int kLineNext = 162;

// The frame styles: an overlapped window that does not paint over its client.
constexpr long kFrameStyle = 0x02CF0000;

} // namespace

BCMDIFrameWindow::BCMDIFrameWindow(BCApplication* app)
    : BCMainWindow(app, bcids::kTypeMDIFrameWindow), opClient(nullptr), opActiveChild(nullptr) {
    SetStyle(kFrameStyle, 1);
    SetWindowRect(BCRectangle(0, 0, 0, 0));
}

BCMDIFrameWindow::~BCMDIFrameWindow() {
    // The client goes first, taking the documents' windows with it, while the frame the
    // documents report to is still whole.
    delete opClient;
    opClient = nullptr;
    opActiveChild = nullptr;
}

void BCMDIFrameWindow::Display(const char* prefix) {
    DispObjectMsg("%sopClient=%p, opActiveChild=%p", prefix ? prefix : "",
                  static_cast<void*>(opClient), static_cast<void*>(opActiveChild));
}

LRESULT BCMDIFrameWindow::DispatchEvent(BCEvent* e) {
    switch (e->GetMessage()) {
    case WM_CREATE: {
        LRESULT result = BCMainWindow::DispatchEvent(e);
        if (!opClient) {
            MakeClient();
            DefaultEvent(e);
        }
        return result;
    }
    case WM_DESTROY:
        delete opClient;
        opClient = nullptr;
        opActiveChild = nullptr;
        return BCMainWindow::DispatchEvent(e);
    default:
        return BCMainWindow::DispatchEvent(e);
    }
}

// The client lists the documents in the menu bar's "&Window" menu; without one no client is
// made and the frame stays a plain window.
void BCMDIFrameWindow::MakeClient() {
    BCMenu* bar = GetMenu();
    if (!BCAssert(this, bar != nullptr, kLineNoMenu, kFile))
        return;
    unsigned int position = bar->FindItem(kWindowMenu, 0);
    if (!BCAssert(this, position != kNotFound, kLineNoWindowMenu, kFile))
        return;
    BCMenu* windowMenu = new (std::nothrow) BCMenu(bar, position, bar->GetModule());
    if (!windowMenu)
        return;
    BCMDIClientWindow* client =
        new (std::nothrow) BCMDIClientWindow(this, windowMenu, bcids::kMDIFirstChildID, GetApp());
    if (!client) {
        delete windowMenu;
        return;
    }
    opClient = client;
    if (!BCAssert(this, opClient->Create(""), kLineNoClientWindow, kFile)) {
        delete opClient;
        opClient = nullptr;
    }
}

// Events of the frame's own window reach the frame procedure with the client, so that the
// client fills the frame and the window menu's commands reach it.
LRESULT BCMDIFrameWindow::DefaultEvent(BCEvent* e) {
    HWND frame = hWnd ? hWnd : e->GetWindow();
    HWND client = opClient && e->GetWindow() == frame ? opClient->GetHandle() : nullptr;
    return DefFrameProcA(frame, client, e->GetMessage(), e->GetWParam(), e->GetLParam());
}

BCMenu* BCMDIFrameWindow::SetMenu(BCMenu* menu) {
    if (!opClient || !menu)
        return BCMainWindow::SetMenu(menu);
    unsigned int position = menu->FindItem(kWindowMenu, 0);
    if (!BCAssert(this, position != kNotFound, kLineSetMenuNoWindowMenu, kFile))
        return GetMenu();
    BCMenu* previous = BCMainWindow::SetMenu(menu);
    BCMenu windowMenu(menu, position, menu->GetModule());
    // The pair goes packed into one parameter, window menu high and menu bar low, with the
    // first parameter 0: the form applications of this library have always sent.
    UINT_PTR packed = (reinterpret_cast<UINT_PTR>(windowMenu.GetHandle()) << 16) +
                      (reinterpret_cast<UINT_PTR>(menu->GetHandle()) & 0xFFFF);
    SendMessageA(opClient->GetHandle(), WM_MDISETMENU, 0, static_cast<LPARAM>(packed));
    if (hWnd)
        BCTraced(DrawMenuBar(hWnd), "DrawMenuBar");
    return previous;
}

int BCMDIFrameWindow::PostToClient(unsigned int message, unsigned int line) {
    if (!BCAssert(this, opClient && opClient->HandleCheck(), line, kFile))
        return 0;
    if (!PostMessageA(opClient->GetHandle(), message, 0, 0))
        return BCTraceFailure("PostMessageA");
    return 1;
}

int BCMDIFrameWindow::Cascade() {
    return PostToClient(WM_MDICASCADE, kLineCascade);
}

int BCMDIFrameWindow::Tile() {
    return PostToClient(WM_MDITILE, kLineTile);
}

int BCMDIFrameWindow::ArrangeIcons() {
    return PostToClient(WM_MDIICONARRANGE, kLineArrange);
}

int BCMDIFrameWindow::Next() {
    return PostToClient(WM_MDINEXT, kLineNext);
}

int BCMDIFrameWindow::CloseAll() {
    if (!opClient || !opClient->HandleCheck())
        return 0;
    BCWindowList children;
    for (HWND w = GetWindow(opClient->GetHandle(), GW_CHILD); w; w = GetWindow(w, GW_HWNDNEXT))
        if (BCWindow* child = BCWindow::FromHandle(w))
            children.Append(child, child);
    return children.CloseAll();
}
