#pragma once
#include <windows.h>

#include "bcobject.h"
#include "bcvalues.h"

class BCMenu;

// Key codes the framework gives Ctrl with the movement keys.
enum BCCtrlKey : unsigned int {
    BC_KEY_CTRL_HOME = 144,
    BC_KEY_CTRL_END = 145,
    BC_KEY_CTRL_LEFT = 146,
    BC_KEY_CTRL_RIGHT = 147,
    BC_KEY_CTRL_UP = 148,
    BC_KEY_CTRL_DOWN = 149
};

// One window message, as the dispatch hands it to a window object's handlers.
class NORLIB1_API BCEvent : public BCObject {
  public:
    BCEvent(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    ~BCEvent() override;
    BCEvent(const BCEvent&) = delete;
    BCEvent& operator=(const BCEvent&) = delete;

    HWND GetWindow() const { return hWnd; }
    UINT GetMessage() const { return wMsg; }
    WPARAM GetWParam() const { return wParam; }
    LPARAM GetLParam() const { return lParam; }

    // The virtual-key code (key events) or the character (WM_CHAR); Ctrl with Home, End,
    // Left, Right, Up or Down gives 144-149.
    unsigned int GetKeycode() const;
    // Command and notification events: the control or menu item id, and the notification.
    unsigned int GetControlID() const { return LOWORD(wParam); }
    unsigned int GetTimerID() const { return static_cast<unsigned int>(wParam); }
    unsigned int GetNotifyCode() const { return HIWORD(wParam); }
    HWND GetControlWindow() const { return reinterpret_cast<HWND>(lParam); }
    // A menu command (not a control's notification).
    bool IsMenuCommand() const { return wMsg == WM_COMMAND && lParam == 0; }
    // Scroll events: the scroll type (SB_...) and the thumb position. The position is read from
    // the scroll bar (the one being dragged, or its settled position), so it holds the bar's
    // whole range; the message's 16-bit copy is used only when no bar answers (message 10060).
    unsigned int GetScrollType() const { return LOWORD(wParam); }
    int GetThumbPos() const;
    // Mouse events: the position in client coordinates.
    BCPosition GetPos() const;
    // Menu-initialisation events: the menu being opened (owned by the event).
    BCMenu* GetMenu();
    // Focus events: 1 when the window gains the focus, 0 when it loses it. Other events show
    // message 10027 and give 0.
    int IsFocused() const;

  private:
    HWND hWnd;
    UINT wMsg;
    WPARAM wParam;
    LPARAM lParam;
    BCMenu* opMenu;
};
