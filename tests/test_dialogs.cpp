#include <gtest/gtest.h>

#include <windows.h>

#include <string>

#include "guidriver.h"
#include "msgrecorder.h"
#include "norlib2.h"

namespace {

BCApplication& App() {
    static BCApplication app;
    return app;
}

BCResID Template(unsigned int id) {
    return BCResID(id, BCGetDLLModule2());
}

const std::string kLong(150, 'p');

// Steps a user's hands would take, carried out synchronously so later reads see them.
std::function<bool(HWND)> Type(int id, const std::string& text) {
    return [id, text](HWND dialog) {
        HWND edit = GetDlgItem(dialog, id);
        for (char c : text)
            SendMessageA(edit, WM_CHAR, static_cast<unsigned char>(c), 1);
        return edit != nullptr;
    };
}
// The caret to the end of the field, as the End key takes it.
std::function<bool(HWND)> ToEnd(int id) {
    return [id](HWND dialog) {
        SendDlgItemMessageA(dialog, id, WM_KEYDOWN, VK_END, 1);
        return true;
    };
}
std::function<bool(HWND)> Press(int id) {
    return [id](HWND dialog) {
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
        return true;
    };
}
std::function<bool(HWND)> Enabled(int id, std::string* trail) {
    return [id, trail](HWND dialog) {
        *trail += IsWindowEnabled(GetDlgItem(dialog, id)) ? '1' : '0';
        return true;
    };
}
std::function<bool(HWND)> Checked(int id, std::string* trail) {
    return [id, trail](HWND dialog) {
        *trail += SendDlgItemMessageA(dialog, id, BM_GETCHECK, 0, 0) ? '1' : '0';
        return true;
    };
}

TEST(FindDialogTest, ResultsTextsAndOptionsAsTheUserLeftThem) {
    struct Case {
        int button, result;
    };
    for (Case c : {Case{1, 1}, Case{2, 0}}) {
        std::string shown, boxes;
        DialogDriver driver;
        driver.ReadText(2031, &shown).Do(Checked(2034, &boxes)).Do(Checked(2035, &boxes));
        driver.Do(Press(2034)).Do(Checked(2034, &boxes)); // match case off
        driver.Do(Press(2035)).Do(Press(2035)).Do(Checked(2035, &boxes));
        driver.Do(Type(2031, "ab")).Click(c.button).Start();
        BCFindDialog find(Template(1021), nullptr, "old", 1 | 8, &App());
        EXPECT_TRUE(driver.Finish());
        EXPECT_EQ(c.result, find.GetResult());
        EXPECT_EQ("old", shown);
        EXPECT_EQ("1000", boxes);
        // Toggled flags stay even when cancelled; other bits are the caller's.
        EXPECT_EQ(8u, find.GetFlags());
        EXPECT_STREQ(c.result ? "ab" : "old", find.GetPattern(nullptr));
        EXPECT_EQ(64u, find.GetObjectType());
    }
}

TEST(FindDialogTest, FindIsEnabledOnlyWhileThePatternHoldsText) {
    std::string trail;
    DialogDriver driver;
    driver.Do(Enabled(1, &trail)).Do(Type(2031, "x")).Do(Enabled(1, &trail));
    driver.Do(Type(2031, "\b")).Do(Enabled(1, &trail)).Click(2).Start();
    BCFindDialog find(Template(1021), nullptr, nullptr, 0, &App());
    EXPECT_TRUE(driver.Finish());
    EXPECT_EQ("010", trail);
    EXPECT_EQ(0, find.GetResult());
}

TEST(FindDialogTest, PatternsAreCutTo120Characters) {
    std::string shown;
    DialogDriver driver;
    driver.ReadText(2031, &shown).Do(ToEnd(2031)).Do(Type(2031, "more")).Click(1).Start();
    BCFindDialog find(Template(1021), nullptr, kLong.c_str(), 0, &App());
    EXPECT_TRUE(driver.Finish());
    EXPECT_EQ(kLong.substr(0, 120), shown);
    char buffer[121];
    EXPECT_EQ(kLong.substr(0, 120), find.GetPattern(buffer)); // the edit took no more
    find.SetPattern((kLong + kLong).c_str());
    EXPECT_EQ(120u, strlen(find.GetPattern(nullptr)));
}

TEST(ReplaceDialogTest, ResultsTextsAndOptions) {
    struct Case {
        int button, result;
    };
    for (Case c : {Case{1, 1}, Case{2037, 2}, Case{2, 0}}) {
        std::string trail, shown;
        DialogDriver driver;
        driver.ReadText(2033, &shown).Do(Enabled(1, &trail)).Do(Enabled(2037, &trail));
        // A change to the replacement does not count.
        driver.Do(ToEnd(2033)).Do(Type(2033, "\b")).Do(Enabled(1, &trail));
        driver.Do(Type(2032, "p")).Do(Enabled(1, &trail)).Do(Enabled(2037, &trail));
        for (int box : {2034, 2035, 2036})
            driver.Do(Press(box)).Do(Checked(box, &trail));
        driver.Do(Press(2036)).Do(Checked(2036, &trail)).Click(c.button).Start();
        BCReplaceDialog replace(Template(1022), nullptr, "", kLong.c_str(), 0, &App());
        EXPECT_TRUE(driver.Finish());
        EXPECT_EQ(c.result, replace.GetResult());
        EXPECT_EQ("000111110", trail);
        EXPECT_EQ(kLong.substr(0, 120), shown);
        EXPECT_EQ(3u, replace.GetFlags());
        std::string read = c.result ? "p" : "";
        char buffer[121];
        EXPECT_EQ(read, replace.GetPattern(buffer));
        EXPECT_EQ(c.result ? kLong.substr(0, 119) : shown, replace.GetReplacement(nullptr));
        EXPECT_EQ(65u, replace.GetObjectType());
    }
}

TEST(DialogCloseTest, ClosingTheWindowCancels) {
    for (int kind = 0; kind < 3; ++kind) {
        DialogDriver driver;
        driver.Do([](HWND dialog) { return PostMessageA(dialog, WM_CLOSE, 0, 0) != 0; }).Start();
        int result = -1;
        if (kind == 0)
            result = BCFindDialog(Template(1021), nullptr, "a", 0, &App()).GetResult();
        else if (kind == 1)
            result = BCReplaceDialog(Template(1022), nullptr, "a", "b", 0, &App()).GetResult();
        else
            result = BCStringDialog(BCResID(510u), nullptr, "a", 10, &App()).GetResult();
        EXPECT_TRUE(driver.Finish());
        EXPECT_EQ(0, result) << kind;
    }
}

TEST(StringDialogTest, KeepsAtMost80CharactersAndReturnsWhatWasTyped) {
    std::string shown, trail;
    DialogDriver driver;
    driver.ReadText(2013, &shown).Do(Enabled(1, &trail));
    driver.Do(ToEnd(2013)).Do(Type(2013, "x")).Do(Enabled(1, &trail)).Click(1).Start();
    BCStringDialog entry(BCResID(510u), nullptr, kLong.c_str(), 200, &App());
    EXPECT_TRUE(driver.Finish());
    EXPECT_EQ(1, entry.GetResult());
    EXPECT_EQ(80u, entry.GetMaxLen());
    EXPECT_EQ(kLong.substr(0, 80), shown);
    EXPECT_EQ("11", trail);
    EXPECT_EQ(kLong.substr(0, 80), entry.GetString(nullptr)); // the typed x did not fit
}

TEST(StringDialogTest, EmptyTextDisablesOkAndCancelGivesZero) {
    std::string trail;
    DialogDriver driver;
    driver.Do(Enabled(1, &trail)).Do(Type(2013, "ok")).Do(Enabled(1, &trail));
    driver.Do(Type(2013, "\b\b")).Do(Enabled(1, &trail)).Click(2).Start();
    BCStringDialog entry(BCResID(510u), nullptr, "", 5, &App());
    EXPECT_TRUE(driver.Finish());
    EXPECT_EQ("010", trail);
    EXPECT_EQ(0, entry.GetResult());
    char buffer[81];
    EXPECT_STREQ("", entry.GetString(buffer));
}

TEST(StringDialogTest, WithoutATextItWaitsForItsDerivedClass) {
    DialogDriver driver;
    driver.Click(2).Start(300);
    BCStringDialog entry(BCResID(510u), nullptr, nullptr, 20, &App());
    EXPECT_FALSE(driver.Finish()); // no dialog came up
    EXPECT_EQ(nullptr, entry.GetHandle());
    EXPECT_STREQ("", entry.GetString(nullptr));
}

TEST(MessageDialogTest, GivesTheButtonPressedAndShowsTheMessage) {
    struct Case {
        unsigned int tpl;
        const char* message;
        int button;
        const char* shown;
    };
    for (Case c : {Case{1023, "Hello there", 1, "Hello there"},
                   Case{1024, nullptr, 6, "Replace this occurrence?"},
                   Case{1024, nullptr, 7, "Replace this occurrence?"},
                   Case{1024, "Replace it?", 2, "Replace it?"}}) {
        std::string shown;
        DialogDriver driver;
        driver.ReadText(2024, &shown).Click(c.button).Start();
        BCMessageDialog message(Template(c.tpl), nullptr, c.message, &App());
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
