#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "guidriver.h"
#include "msgrecorder.h"
#include "norlib2.h"

namespace {

using Step = std::function<bool(HWND)>;

BCApplication& App() {
    static BCApplication app;
    return app;
}

BCResID Template(unsigned int id) {
    return BCResID(id, BCGetDLLModule2());
}

const std::string kLong(150, 'p');

// Counts the control objects a dialog still holds once it has ended.
template <class Dialog> struct Probe : Dialog {
    using Dialog::Dialog;
    unsigned long Controls() const { return this->opControls->GetCount(); }
};

// A user's actions, carried out synchronously so that later reads see them. Typing starts
// at the end of the field.
Step Type(int id, const std::string& text) {
    return [id, text](HWND dialog) {
        HWND edit = GetDlgItem(dialog, id);
        SendMessageA(edit, WM_KEYDOWN, VK_END, 1);
        for (char c : text)
            SendMessageA(edit, WM_CHAR, static_cast<unsigned char>(c), 1);
        return edit != nullptr;
    };
}
Step Press(int id) {
    return [id](HWND dialog) {
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
        return true;
    };
}
// A key the dialog's own loop takes (Enter, Escape), as the last step.
Step Key(int id, UINT key) {
    return [id, key](HWND dialog) {
        return PostMessageA(GetDlgItem(dialog, id), WM_KEYDOWN, key, 1) != 0;
    };
}
Step Close() {
    return [](HWND dialog) { return PostMessageA(dialog, WM_CLOSE, 0, 0) != 0; };
}
// Appends 1 or 0: whether the button is checked, or with `enabled`, whether it is enabled.
Step Note(int id, std::string* trail, bool enabled = false) {
    return [=](HWND dialog) {
        HWND button = GetDlgItem(dialog, id);
        *trail += (enabled ? IsWindowEnabled(button) : SendMessageA(button, BM_GETCHECK, 0, 0))
                      ? '1'
                      : '0';
        return button != nullptr;
    };
}

TEST(FindDialogTest, TextsAndOptionsAsTheUserLeftThem) {
    struct Case {
        Step end;
        int result;
    };
    for (const Case& c :
         {Case{Key(2031, VK_RETURN), 1}, Case{Key(2031, VK_ESCAPE), 0}, Case{Close(), 0}}) {
        std::string shown, boxes;
        DialogDriver driver;
        driver.ReadText(2031, &shown).Do(Note(2034, &boxes)).Do(Note(2035, &boxes));
        driver.Do(Press(2034)).Do(Note(2034, &boxes));
        driver.Do(Press(2035)).Do(Press(2035)).Do(Note(2035, &boxes));
        driver.Do(Type(2031, "\bab")).Do(c.end).Start(); // the b does not fit
        Probe<BCFindDialog> find(Template(1021), nullptr, kLong.c_str(), 1 | 8, &App());
        EXPECT_TRUE(driver.Finish());
        EXPECT_EQ(c.result, find.GetResult());
        EXPECT_EQ(0u, find.Controls());
        EXPECT_EQ(kLong.substr(0, 120), shown);
        EXPECT_EQ("1000", boxes);
        // Toggled flags stay even when cancelled; other bits are the caller's.
        EXPECT_EQ(8u, find.GetFlags());
        char buffer[121];
        EXPECT_EQ(c.result ? kLong.substr(0, 119) + "a" : shown, find.GetPattern(buffer));
        EXPECT_EQ(64u, find.GetObjectType());
        find.SetPattern((kLong + kLong).c_str());
        EXPECT_EQ(120u, strlen(find.GetPattern(nullptr)));
    }
}

TEST(FindDialogTest, FindIsEnabledOnlyWhileThePatternHoldsText) {
    std::string trail;
    DialogDriver driver;
    driver.Do(Note(1, &trail, true)).Do(Type(2031, "x")).Do(Note(1, &trail, true));
    driver.Do(Type(2031, "\b")).Do(Note(1, &trail, true));
    driver.SetText(2031, kLong).Do(Press(1)).Start(); // set past the limit by another program
    BCFindDialog find(Template(1021), nullptr, nullptr, 0, &App());
    EXPECT_TRUE(driver.Finish());
    EXPECT_EQ("010", trail);
    EXPECT_EQ(1, find.GetResult());
    EXPECT_EQ(kLong.substr(0, 120), find.GetPattern(nullptr));
}

TEST(ReplaceDialogTest, ResultsTextsAndOptions) {
    struct Case {
        Step end;
        int result;
    };
    for (const Case& c :
         {Case{Press(1), 1}, Case{Press(2037), 2}, Case{Press(2), 0}, Case{Close(), 0}}) {
        std::string trail, shown;
        DialogDriver driver;
        driver.ReadText(2033, &shown).Do(Note(1, &trail, true)).Do(Note(2037, &trail, true));
        // A change to the replacement does not count.
        driver.Do(Type(2033, "\b")).Do(Note(1, &trail, true));
        driver.Do(Type(2032, "p")).Do(Note(1, &trail, true)).Do(Note(2037, &trail, true));
        for (int box : {2034, 2035, 2036, 2036})
            driver.Do(Press(box)).Do(Note(box, &trail));
        driver.Do(c.end).Start();
        Probe<BCReplaceDialog> replace(Template(1022), nullptr, "", kLong.c_str(), 0, &App());
        EXPECT_TRUE(driver.Finish());
        EXPECT_EQ(c.result, replace.GetResult());
        EXPECT_EQ(0u, replace.Controls());
        EXPECT_EQ("000111110", trail);
        EXPECT_EQ(kLong.substr(0, 120), shown);
        EXPECT_EQ(3u, replace.GetFlags());
        char buffer[121];
        EXPECT_STREQ(c.result ? "p" : "", replace.GetPattern(buffer));
        EXPECT_EQ(c.result ? kLong.substr(0, 119) : shown, replace.GetReplacement(nullptr));
        EXPECT_EQ(65u, replace.GetObjectType());
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
         {Case{kLong.c_str(), 200, "\bxy", Press(1), 1, "11", k80.substr(0, 79) + "x"},
          Case{"", 5, "ok\b", Press(2), 0, "01", ""},
          Case{"abcdef", 3, "\b", Close(), 0, "11", "abc"}}) {
        std::string shown, trail;
        DialogDriver driver;
        driver.ReadText(2013, &shown).Do(Note(1, &trail, true)).Do(Type(2013, c.typed));
        driver.Do(Note(1, &trail, true)).Do(c.end).Start();
        Probe<BCStringDialog> entry(BCResID(510u), nullptr, c.text, c.maxLen, &App());
        EXPECT_TRUE(driver.Finish());
        EXPECT_EQ(c.result, entry.GetResult());
        EXPECT_EQ(2u, entry.Controls()); // kept until the dialog goes
        EXPECT_EQ(std::min(c.maxLen, 80u), entry.GetMaxLen());
        EXPECT_EQ(std::string(c.text).substr(0, entry.GetMaxLen()), shown);
        EXPECT_EQ(c.enabled, trail);
        char buffer[81];
        EXPECT_EQ(c.kept, entry.GetString(buffer));
    }
}

TEST(StringDialogTest, WithoutATextItWaitsForItsDerivedClass) {
    DialogDriver driver;
    driver.Click(2).Start(300);
    BCStringDialog entry(BCResID(510u), nullptr, nullptr, 20, &App());
    EXPECT_FALSE(driver.Finish()); // no dialog came up
    EXPECT_STREQ("", entry.GetString(nullptr));
}

TEST(MessageDialogTest, GivesTheButtonPressedAndShowsTheMessage) {
    struct Case {
        unsigned int id;
        const char* message;
        int button;
        const char* shown;
    };
    const char* query = "Replace this occurrence?";
    for (Case c : {Case{1023, "Hello there", 1, "Hello there"}, Case{1024, nullptr, 6, query},
                   Case{1024, nullptr, 7, query}, Case{1024, "Replace it?", 2, "Replace it?"}}) {
        std::string shown;
        DialogDriver driver;
        driver.ReadText(2024, &shown).Click(c.button).Start();
        BCMessageDialog message(Template(c.id), nullptr, c.message, &App());
        EXPECT_TRUE(driver.Finish());
        EXPECT_EQ(c.button, message.GetResult());
        EXPECT_EQ(c.shown, shown);
        EXPECT_EQ(66u, message.GetObjectType());
    }
}

TEST(DialogTemplateTest, AMissingTemplateIsReportedAndNothingRuns) {
    MsgRecorder recorder;
    BCFindDialog find(BCResID(999u), nullptr, "kept", 2, &App());
    BCMessageDialog message(BCResID(999u), nullptr, "x", &App());
    EXPECT_EQ(0, find.GetResult() | message.GetResult());
    EXPECT_STREQ("kept", find.GetPattern(nullptr));
    EXPECT_EQ((std::vector<unsigned int>{10052, 10052}), recorder.NumberedIds());
}

} // namespace
