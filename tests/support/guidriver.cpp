#include "guidriver.h"

#include <chrono>
#include <utility>

namespace {

struct Search {
    DWORD thread;
    HWND found;
};

BOOL CALLBACK FindDialog(HWND window, LPARAM context) {
    Search* search = reinterpret_cast<Search*>(context);
    char className[16];
    if (GetClassNameA(window, className, sizeof className) && lstrcmpA(className, "#32770") == 0 &&
        IsWindowVisible(window)) {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

} // namespace

DialogDriver::~DialogDriver() {
    if (m_thread.joinable())
        m_thread.join();
}

DialogDriver& DialogDriver::SetText(int controlId, const std::string& text) {
    m_steps.push_back([controlId, text](HWND dialog) {
        HWND control = GetDlgItem(dialog, controlId);
        return control &&
               SendMessageA(control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    });
    return *this;
}

DialogDriver& DialogDriver::Click(int controlId) {
    m_steps.push_back([controlId](HWND dialog) {
        HWND button = GetDlgItem(dialog, controlId);
        if (!button)
            return false;
        // What a click on the button tells its dialog.
        PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(controlId, BN_CLICKED),
                     reinterpret_cast<LPARAM>(button));
        return true;
    });
    return *this;
}

DialogDriver& DialogDriver::ReadText(int controlId, std::string* into) {
    m_steps.push_back([controlId, into](HWND dialog) {
        char text[256] = "";
        HWND control = GetDlgItem(dialog, controlId);
        if (!control)
            return false;
        SendMessageA(control, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
        *into = text;
        return true;
    });
    return *this;
}

DialogDriver& DialogDriver::Do(std::function<bool(HWND)> step) {
    m_steps.push_back(std::move(step));
    return *this;
}

void DialogDriver::Start(int timeoutMs) {
    m_threadId = GetCurrentThreadId();
    m_thread = std::thread([this, timeoutMs] { Run(timeoutMs); });
}

void DialogDriver::Run(int timeoutMs) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    Search search = {m_threadId, nullptr};
    while (!search.found && std::chrono::steady_clock::now() < deadline) {
        Sleep(20);
        EnumThreadWindows(m_threadId, FindDialog, reinterpret_cast<LPARAM>(&search));
    }
    bool ok = search.found != nullptr;
    for (auto& step : m_steps) {
        if (!ok)
            break;
        ok = step(search.found);
    }
    m_ok = ok;
    m_done = true;
}

bool DialogDriver::Finish() {
    if (m_thread.joinable())
        m_thread.join();
    return m_ok;
}

namespace Input {

void SetCtrl(bool down) {
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_CONTROL] = down ? 0x80 : 0;
    keys[VK_LCONTROL] = down ? 0x80 : 0;
    SetKeyboardState(keys);
}

LRESULT Key(HWND window, UINT virtualKey, bool ctrl) {
    SetCtrl(ctrl);
    LRESULT result = SendMessageA(window, WM_KEYDOWN, virtualKey, 1);
    SendMessageA(window, WM_KEYUP, virtualKey, static_cast<LPARAM>(0xC0000001u));
    SetCtrl(false);
    return result;
}

LRESULT Char(HWND window, char character) {
    return SendMessageA(window, WM_CHAR, static_cast<unsigned char>(character), 1);
}

LRESULT Mouse(HWND window, UINT message, int x, int y, WPARAM keys) {
    return SendMessageA(window, message, keys, MAKELPARAM(x, y));
}

void Pump() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

} // namespace Input
