#pragma once
#include <windows.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

// Acts on a modal dialog from another thread while the test's thread runs the dialog's
// loop: waits for the dialog (a window of class #32770 of this process, optionally with a
// given title), then performs the scripted steps with messages the dialog handles as if a
// user had acted.
class DialogDriver {
  public:
    DialogDriver() = default;
    ~DialogDriver();
    DialogDriver(const DialogDriver&) = delete;
    DialogDriver& operator=(const DialogDriver&) = delete;

    DialogDriver& SetText(int controlId, const std::string& text);
    DialogDriver& Click(int controlId);
    // Starts the thread; it gives up after `timeoutMs` without a dialog.
    void Start(int timeoutMs = 5000);
    // Waits for the thread; true when every step was carried out.
    bool Finish();
    // Text the dialog's control had when the driver read it (after the steps before it).
    DialogDriver& ReadText(int controlId, std::string* into);
    // Any other step, given the dialog's window; false stops the script.
    DialogDriver& Do(std::function<bool(HWND)> step);

  private:
    void Run(int timeoutMs);
    std::vector<std::function<bool(HWND)>> m_steps;
    std::thread m_thread;
    std::atomic<bool> m_done{false};
    std::atomic<bool> m_ok{false};
    DWORD m_threadId = 0;
};

// Input a user would give, as real messages to a window. Ctrl is held through the
// keyboard state, where the framework reads it.
namespace Input {
void SetCtrl(bool down);
LRESULT Key(HWND window, UINT virtualKey, bool ctrl = false);
LRESULT Char(HWND window, char character);
LRESULT Mouse(HWND window, UINT message, int x, int y, WPARAM keys = 0);
// Handles the messages waiting for this thread's windows.
void Pump();
} // namespace Input
