#include "bcevent.h"

#include "bcmenu.h"

BCEvent::BCEvent(HWND window, UINT message, WPARAM wp, LPARAM lp)
    : BCObject(21), hWnd(window), wMsg(message), wParam(wp), lParam(lp), opMenu(nullptr) {}

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
        DispObjectMsg(10027u);
    return 0;
}
