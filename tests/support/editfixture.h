#pragma once
// A text editor in a shown main window, driven with real key, character and mouse messages.
#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <string>

#include "guidriver.h"
#include "norlib2.h"

inline BCApplication& EditApp() {
    static BCApplication app;
    return app;
}

class EditFixture : public ::testing::Test {
  public:
    void SetUp() override {
        ASSERT_TRUE(main.Create("editor"));
        main.Show(SW_SHOWNORMAL);
    }
    // A 300 x 200 editor (client) holding `text`, with the focus.
    BCTextEdit& Make(const char* text, unsigned int mode = 0, unsigned int depth = 64,
                     short height = 200) {
        BCPosition pos(0, 0);
        BCSize size(300, height);
        edit.reset(new BCTextEdit(5, &main, pos, size, nullptr, nullptr, nullptr, &EditApp(), mode,
                                  depth));
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
    void Key(UINT key, bool ctrl = false) { Input::Key(H(), key, ctrl); }
    void Type(const char* text) {
        for (; *text; ++text)
            Input::Char(H(), *text);
    }
    void Click(UINT message, int x, int y) { Input::Mouse(H(), message, x, y, MK_LBUTTON); }
    // Point of an offset in client coordinates, in the middle of its line's height.
    POINT At(unsigned long ofs) {
        BCPosition p = edit->GetOfsPos(ofs);
        return {p.GetX(), p.GetY() + edit->GetChrHeight('H') / 2};
    }

    BCMainWindow main{&EditApp()};
    std::unique_ptr<BCTextEdit> edit;
};
