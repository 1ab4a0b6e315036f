#include "bcevent.h"

#include "bcids1.h"
#include "bcmenu.h"
#include "bcplatform.h"

BCEvent::BCEvent(HWND window, UINT message, WPARAM wp, LPARAM lp)
    : BCObject(bcids::kTypeEvent), hWnd(window), wMsg(message), wParam(wp), lParam(lp),
      opMenu(nullptr) {}

BCEvent::~BCEvent() {
    delete opMenu;
}

unsigned int BCEvent::GetKeycode() const {
    unsigned int key = static_cast<unsigned int>(wParam);
    if ((wMsg != WM_KEYDOWN && wMsg != WM_KEYUP) || !(GetKeyState(VK_CONTROL) & 0x8000))
        return key;
    switch (key) {
    case VK_HOME:
        return BC_KEY_CTRL_HOME;
    case VK_END:
        return BC_KEY_CTRL_END;
    case VK_LEFT:
        return BC_KEY_CTRL_LEFT;
    case VK_RIGHT:
        return BC_KEY_CTRL_RIGHT;
    case VK_UP:
        return BC_KEY_CTRL_UP;
    case VK_DOWN:
        return BC_KEY_CTRL_DOWN;
    default:
        return key;
    }
}

int BCEvent::GetThumbPos() const {
    short word = static_cast<short>(HIWORD(wParam));
    if (wMsg != WM_VSCROLL && wMsg != WM_HSCROLL)
        return word;
    // A scroll bar control names itself; otherwise the bar is the window's own.
    HWND control = reinterpret_cast<HWND>(lParam);
    HWND bar = control ? control : hWnd;
    int kind = control ? SB_CTL : (wMsg == WM_HSCROLL ? SB_HORZ : SB_VERT);
    SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_POS | SIF_TRACKPOS;
    if (!GetScrollInfo(bar, kind, &info)) {
        BCTraceFailure("GetScrollInfo");
        DispObjectMsg(bcids::kMsgNoScrollBar);
        return word;
    }
    unsigned int type = GetScrollType();
    return type == SB_THUMBTRACK || type == SB_THUMBPOSITION ? info.nTrackPos : info.nPos;
}

BCPosition BCEvent::GetPos() const {
    return BCPosition(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
}

BCMenu* BCEvent::GetMenu() {
    if (wMsg != WM_INITMENU && wMsg != WM_INITMENUPOPUP)
        return nullptr;
    if (!opMenu)
        opMenu = new BCMenu(reinterpret_cast<HMENU>(wParam));
    return opMenu;
}

int BCEvent::IsFocused() const {
    if (wMsg == WM_SETFOCUS)
        return 1;
    if (wMsg != WM_KILLFOCUS)
        DispObjectMsg(bcids::kMsgNotAFocusEvent);
    return 0;
}
