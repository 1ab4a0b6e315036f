#pragma once
#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "norlib2.h"

// The test program's application, and a frame for child windows. Showing costs Wine a wait
// for the X server: only tests that paint show the frame.
BCApplication& App();
struct Frame {
    explicit Frame(bool shown = false);
    BCMainWindow main{&App()};
};

// An object that tells when it goes, so that ownership shows.
template <class Base> struct Watched : Base {
    template <class... Args>
    explicit Watched(bool* gone, Args... args) : Base(args...), flag(gone) {}
    ~Watched() override { *flag = true; }
    bool* flag;
};

using Step = std::function<bool(HWND)>;
// Steps for a dialog, sent so that later steps see their effect: a button's click; text
// typed into a field (after moving to the field's end with `atEnd`).
Step Press(int controlId);
Step TypeInto(int controlId, const std::string& text, bool atEnd = false);
// The visible dialog (class #32770) of `thread`, or null.
HWND ShownDialog(DWORD thread);
// Whether the dialog's field has the focus with its whole text selected.
bool FocusedWhole(HWND dialog, int fieldId);
// A dialog template of the library's own.
inline BCResID Template(unsigned int id) {
    return BCResID(id, BCGetDLLModule2());
}

// Acts on a modal dialog from another thread while the test's thread runs the dialog's
// loop: waits for the dialog, then performs the scripted steps as if a user had acted.
class DialogDriver {
  public:
    ~DialogDriver() { Finish(); }
    DialogDriver& SetText(int controlId, const std::string& text);
    // Posted: the click is handled by the dialog's own loop.
    DialogDriver& Click(int controlId);
    // Text the dialog's control had when the driver read it (after the steps before it).
    DialogDriver& ReadText(int controlId, std::string* into);
    // Any other step, given the dialog's window; false stops the script.
    DialogDriver& Do(Step step) { return m_steps.push_back(std::move(step)), *this; }
    // Starts the thread; it gives up after `timeoutMs` without a dialog.
    void Start(int timeoutMs = 5000);
    // Waits for the thread; true when every step was carried out.
    bool Finish() { return (m_thread.joinable() ? m_thread.join() : void()), m_ok; }

  private:
    std::vector<Step> m_steps;
    std::thread m_thread;
    std::atomic<bool> m_ok{false};
};

// Input a user would give, as real messages to a window. Ctrl is held through the
// keyboard state, where the framework reads it.
namespace Input {
LRESULT Key(HWND window, UINT virtualKey, bool ctrl = false);
inline LRESULT Char(HWND window, char c) {
    return SendMessageA(window, WM_CHAR, static_cast<unsigned char>(c), 1);
}
// Handles the messages waiting for this thread's windows.
void Pump();
} // namespace Input
