#include <algorithm>
#include <utility>

#include "guidriver.h"
#include "msgrecorder.h"

namespace {

using Ending = std::pair<Step, int>; // the user's last step and the result it gives

const std::string kLong(150, 'p');

// Counts the control objects a dialog still holds once it has ended.
template <class Dialog> struct Probe : Dialog {
    using Dialog::Dialog;
    unsigned long Controls() const { return this->opControls->GetCount(); }
};

// Typing starts at the end of the field.
Step Type(int id, const std::string& text) {
    return TypeInto(id, text, true);
}
// The last step, through the dialog's own loop: a key to a control, or with no id, closing.
Step Key(int id, UINT key) {
    return [id, key](HWND dialog) {
        return PostMessageA(id ? GetDlgItem(dialog, id) : dialog, key ? WM_KEYDOWN : WM_CLOSE, key,
                            1) != 0;
    };
}
// Appends whether a button is checked or enabled, or whether a field has the focus with its
// whole text selected (the test template has its buttons first).
enum Seen { kChecked, kEnabled, kFocused };
Step Note(int id, std::string* trail, Seen seen = kChecked) {
    return [=](HWND dialog) {
        HWND control = GetDlgItem(dialog, id);
        bool on = seen == kFocused   ? FocusedWhole(dialog, id)
                  : seen == kEnabled ? IsWindowEnabled(control)
                                     : SendMessageA(control, BM_GETCHECK, 0, 0) == BST_CHECKED;
        *trail += std::to_string(on);
        return control != nullptr;
    };
}

TEST(FindDialogTest, TextsAndOptionsAsTheUserLeftThem) {
    for (const Ending& c :
         {Ending{Key(2031, VK_RETURN), 1}, Ending{Key(2031, VK_ESCAPE), 0}, Ending{Key(0, 0), 0}}) {
        std::string shown, boxes;
        DialogDriver driver;
        driver.ReadText(2031, &shown).Do(Note(2031, &boxes, kFocused));
        driver.Do(Note(2034, &boxes)).Do(Note(2035, &boxes));
        driver.Do(Press(2034)).Do(Note(2034, &boxes));
        driver.Do(Press(2035)).Do(Press(2035)).Do(Note(2035, &boxes));
        driver.Do(Type(2031, "\bab")).Do(c.first).Start(); // the b does not fit
        Probe<BCFindDialog> find(BCResID(510u), nullptr, kLong.c_str(), 1 | 8, &App());
        EXPECT_TRUE(driver.Finish() && c.second == find.GetResult() && find.Controls() == 0 &&
                    find.GetObjectType() == 64 && find.GetFlags() == 8); // toggled flags stay
        EXPECT_EQ(kLong.substr(0, 120) + "11000", shown + boxes);
        char buffer[121];
        EXPECT_EQ(c.second ? kLong.substr(0, 119) + "a" : shown, find.GetPattern(buffer));
        EXPECT_EQ(120u,
                  (find.SetPattern((kLong + kLong).c_str()), strlen(find.GetPattern(nullptr))));
    }
}

TEST(FindDialogTest, FindIsEnabledOnlyWhileThePatternHoldsText) {
    std::string trail;
    DialogDriver driver;
    driver.Do(Note(1, &trail, kEnabled)).Do(Type(2031, "x")).Do(Note(1, &trail, kEnabled));
    driver.Do(Type(2031, "\b")).Do(Note(1, &trail, kEnabled));
    driver.SetText(2031, kLong).Do(Press(1)).Start(); // set past the limit by another program
    BCFindDialog find(Template(1021), nullptr, nullptr, 0, &App());
    EXPECT_TRUE(driver.Finish() && find.GetResult() == 1);
    EXPECT_EQ("010" + kLong.substr(0, 120), trail + find.GetPattern(nullptr));
}

TEST(ReplaceDialogTest, ResultsTextsAndOptions) {
    for (const Ending& c :
         {Ending{Press(1), 1}, Ending{Press(2037), 2}, Ending{Press(2), 0}, Ending{Key(0, 0), 0}}) {
        std::string trail, shown;
        DialogDriver driver;
        driver.ReadText(2033, &shown).Do(Note(2032, &trail, kFocused));
        driver.Do(Note(1, &trail, kEnabled)).Do(Note(2037, &trail, kEnabled));
        driver.Do(Type(2033, "\b")).Do(Note(1, &trail, kEnabled)); // the replacement does not count
        driver.Do(Type(2032, "p")).Do(Note(1, &trail, kEnabled)).Do(Note(2037, &trail, kEnabled));
        for (int box : {2034, 2035, 2036, 2036})
            driver.Do(Press(box)).Do(Note(box, &trail));
        driver.Do(c.first).Start();
        Probe<BCReplaceDialog> replace(BCResID(510u), nullptr, "", kLong.c_str(), 0, &App());
        EXPECT_TRUE(driver.Finish() && c.second == replace.GetResult() && replace.Controls() == 0 &&
                    replace.GetObjectType() == 65 && replace.GetFlags() == 3);
        EXPECT_EQ(kLong.substr(0, 120) + "1000111110", shown + trail);
        char buffer[121];
        EXPECT_STREQ(c.second ? "p" : "", replace.GetPattern(buffer));
        EXPECT_EQ(c.second ? kLong.substr(0, 119) : shown, replace.GetReplacement(nullptr));
    }
}

TEST(StringDialogTest, KeepsAtMostMaxLenUpTo80Characters) {
    struct Case {
        const char* text;
        unsigned int maxLen;
        std::string typed;
        Step end;
        int result;
        std::string enabled, kept;
    };
    const std::string k80 = kLong.substr(0, 80);
    for (const Case& c :
         {Case{kLong.c_str(), 200, "\bxy", Press(1), 1, "1111", k80.substr(0, 79) + "x"},
          Case{"", 5, "ok\b\b", Press(2), 0, "01110", ""},
          Case{"abcdef", 3, "\b", Key(0, 0), 0, "11", "abc"}}) {
        std::string shown, trail;
        DialogDriver driver;
        driver.ReadText(2013, &shown).Do(Note(2013, &trail, kFocused));
        driver.Do(Note(1, &trail, kEnabled));
        for (char typed : c.typed) // OK's state after each key
            driver.Do(Type(2013, std::string(1, typed))).Do(Note(1, &trail, kEnabled));
        driver.Do(c.end).Start();
        Probe<BCStringDialog> entry(BCResID(510u), nullptr, c.text, c.maxLen, &App());
        // The controls are kept until the dialog goes.
        EXPECT_TRUE(driver.Finish() && c.result == entry.GetResult() &&
                    std::min(c.maxLen, 80u) == entry.GetMaxLen() && entry.Controls() == 2);
        EXPECT_EQ(std::string(c.text).substr(0, entry.GetMaxLen()) + "1" + c.enabled,
                  shown + trail);
        char buffer[81];
        EXPECT_EQ(c.kept, entry.GetString(buffer));
    }
}

TEST(MessageDialogTest, GivesTheButtonPressedAndShowsTheMessage) {
    const char* query = "Replace this occurrence?";
    for (auto [id, message, button, shown] :
         {std::make_tuple(1023u, "Hello there", 1, "Hello there"),
          std::make_tuple(1024u, (const char*)nullptr, 6, query)}) {
        std::string seen;
        DialogDriver driver;
        driver.ReadText(2024, &seen).Click(button).Start();
        BCMessageDialog dialog(Template(id), nullptr, message, &App());
        EXPECT_TRUE(driver.Finish() && button == dialog.GetResult() && seen == shown &&
                    dialog.GetObjectType() == 66)
            << seen;
    }
}

} // namespace
