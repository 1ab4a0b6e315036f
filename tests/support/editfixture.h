#pragma once
// A text editor in a shown main window, driven with real key, character and mouse messages.
#include <initializer_list>
#include <memory>

#include "guidriver.h"

// Texts joined by "|", made in the order written: a braced list fixes the order of the calls.
inline std::string Join(std::initializer_list<std::string> parts) {
    std::string all;
    for (const std::string& part : parts)
        all += (all.empty() ? "" : "|") + part;
    return all;
}

constexpr int kCtrl = 0x1000; // with a key code: pressed with Ctrl

class EditFixture : public ::testing::Test {
  public:
    void SetUp() override {
        ASSERT_TRUE(main.Create("editor"));
        main.Show(SW_SHOWNORMAL);
        // Pixels are read from the screen: no other window may cover this one.
        SetWindowPos(main.GetHandle(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    }
    // A 300 x 200 editor (client) holding `text`, with the focus.
    BCTextEdit& Make(const char* text, unsigned int mode = 0, unsigned int depth = 64,
                     const char* file = nullptr) {
        edit.reset(new BCTextEdit(5, &main, BCPosition(0, 0), BCSize(300, 200), nullptr, file,
                                  nullptr, &App(), mode, depth));
        edit->SetStyle(WS_VSCROLL, 1);
        EXPECT_TRUE(edit->Create(""));
        edit->SetText(text);
        edit->SetFocus();
        Input::Pump();
        return *edit;
    }
    HWND H() const { return edit->GetHandle(); }
    std::string Text() {
        std::string s(edit->GetTextLen(), '\0');
        edit->GetText(&s[0], s.size());
        return s;
    }
    std::string Undone() { return edit->Undo(), Text(); }
    void Key(UINT key, bool ctrl = false) { Input::Key(H(), key & ~kCtrl, ctrl || (key & kCtrl)); }
    // The first line shown once `key` is pressed.
    unsigned long TopAfter(UINT key) { return Key(key), edit->GetFirstLine(); }
    unsigned long LineOfs(unsigned long line) { return edit->GetText()->GetLineOfs(line); }
    void Type(const char* text) {
        for (; *text; ++text)
            Input::Char(H(), *text);
    }
    void Click(UINT message, int x, int y) {
        SendMessageA(H(), message, MK_LBUTTON, MAKELPARAM(x, y));
    }
    // The selection once the mouse messages came at `p`.
    BCLimits Clicks(std::initializer_list<UINT> messages, POINT p) {
        for (UINT message : messages)
            Click(message, p.x, p.y);
        return edit->GetCrntSelection();
    }
    // Point of an offset in client coordinates, in the middle of its line's height.
    POINT At(unsigned long ofs) {
        BCPosition p = edit->GetOfsPos(ofs);
        return {p.GetX(), p.GetY() + edit->GetChrHeight('H') / 2};
    }

    BCMainWindow main{&App()};
    std::unique_ptr<BCTextEdit> edit;
};
