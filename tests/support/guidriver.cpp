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
            SendMessageA(field, WM_CHAR, static_cast<unsigned char>(c), 1);
        return field != nullptr;
    };
}

HWND ShownDialog(DWORD thread) {
    HWND found = nullptr;
    EnumThreadWindows(thread, NoteDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

DialogDriver& DialogDriver::SetText(int controlId, const std::string& text) {
    return Do([=](HWND dialog) {
        return SendDlgItemMessageA(dialog, controlId, WM_SETTEXT, 0,
                                   reinterpret_cast<LPARAM>(text.c_str())) != 0;
    });
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
        HWND control = GetDlgItem(dialog, controlId);
        SendMessageA(control, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
        *into = text;
        return control != nullptr;
    });
}

DialogDriver& DialogDriver::Do(Step step) {
    m_steps.push_back(std::move(step));
    return *this;
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

bool DialogDriver::Finish() {
    if (m_thread.joinable())
        m_thread.join();
    return m_ok;
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

LRESULT Char(HWND window, char character) {
    return SendMessageA(window, WM_CHAR, static_cast<unsigned char>(character), 1);
}

void Pump() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

} // namespace Input
