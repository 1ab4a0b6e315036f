#include "guidriver.h"

#include <chrono>
#include <utility>

namespace {

BOOL CALLBACK NoteDialog(HWND window, LPARAM found) {
    char name[16];
    if (GetClassNameA(window, name, sizeof name) && !lstrcmpA(name, "#32770") &&
        IsWindowVisible(window))
        *reinterpret_cast<HWND*>(found) = window;
    return !*reinterpret_cast<HWND*>(found);
}

} // namespace

BCApplication& App() {
    static BCApplication app;
    return app;
}

Frame::Frame(bool shown) {
    main.SetWindowRect(BCRectangle(10, 10, 410, 310));
    EXPECT_TRUE(main.Create("Frame"));
    if (shown)
        main.Show(SW_SHOW);
}

Step Press(int controlId) {
    return [controlId](HWND dialog) {
        HWND button = GetDlgItem(dialog, controlId);
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(controlId, BN_CLICKED),
                     reinterpret_cast<LPARAM>(button));
        return true;
    };
}

Step TypeInto(int controlId, const std::string& text, bool atEnd) {
    return [=](HWND dialog) {
        HWND field = GetDlgItem(dialog, controlId);
        if (atEnd)
            SendMessageA(field, WM_KEYDOWN, VK_END, 1);
        for (char c : text)
            Input::Char(field, c);
        return field != nullptr;
    };
}

HWND ShownDialog(DWORD thread) {
    HWND found = nullptr;
    EnumThreadWindows(thread, NoteDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

bool FocusedWhole(HWND dialog, int fieldId) {
    DWORD start = 9, end = 9;
    HWND field = GetDlgItem(dialog, fieldId);
    SendMessageA(field, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    GUITHREADINFO info = {sizeof info, 0, {}, {}, {}, {}, {}, {}, {}};
    GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &info);
    return info.hwndFocus == field && start == 0 && end == DWORD(GetWindowTextLengthA(field));
}

DialogDriver& DialogDriver::SetText(int controlId, const std::string& text) {
    return Do([=](HWND dialog) { return SetDlgItemTextA(dialog, controlId, text.c_str()) != 0; });
}

DialogDriver& DialogDriver::Click(int controlId) {
    return Do([controlId](HWND dialog) {
        HWND button = GetDlgItem(dialog, controlId);
        return button && PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(controlId, BN_CLICKED),
                                      reinterpret_cast<LPARAM>(button));
    });
}

DialogDriver& DialogDriver::ReadText(int controlId, std::string* into) {
    return Do([controlId, into](HWND dialog) {
        char text[256] = "";
        GetDlgItemTextA(dialog, controlId, text, sizeof text);
        *into = text;
        return GetDlgItem(dialog, controlId) != nullptr;
    });
}

void DialogDriver::Start(int timeoutMs) {
    m_thread = std::thread([this, timeoutMs, thread = GetCurrentThreadId()] {
        auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
        HWND dialog = nullptr;
        while (!dialog && std::chrono::steady_clock::now() < deadline) {
            Sleep(20);
            dialog = ShownDialog(thread);
        }
        bool ok = dialog != nullptr;
        for (auto step = m_steps.begin(); ok && step != m_steps.end(); ++step)
            ok = (*step)(dialog);
        m_ok = ok;
    });
}

namespace Input {

LRESULT Key(HWND window, UINT virtualKey, bool ctrl) {
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_CONTROL] = keys[VK_LCONTROL] = ctrl ? 0x80 : 0;
    SetKeyboardState(keys);
    LRESULT result = SendMessageA(window, WM_KEYDOWN, virtualKey, 1);
    SendMessageA(window, WM_KEYUP, virtualKey, static_cast<LPARAM>(0xC0000001u));
    keys[VK_CONTROL] = keys[VK_LCONTROL] = 0;
    SetKeyboardState(keys);
    return result;
}

void Pump() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

} // namespace Input
