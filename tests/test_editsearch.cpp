#include <cstdio>
#include <memory>
#include <tuple>
#include <vector>

#include "editfixture.h"
#include "msgrecorder.h"
#include "streambytes.h"

namespace {

using Search = EditFixture;

long Command(HWND h, int id) {
    return static_cast<long>(SendMessageA(h, WM_COMMAND, static_cast<WPARAM>(id), 0));
}

std::string Selected(BCTextEdit& e) {
    BCLimits s = e.GetCrntSelection();
    return std::to_string(s.GetStart()) + "-" + std::to_string(s.GetEnd());
}

TEST_F(Search, FindNextSelectsEachMatchByTheOptionsThenReportsTheMissOnce) {
    BCTextEdit& e = Make("Cat cat scatter CAT");
    MsgRecorder rec;
    // From, options, pattern: selection@search position, one per Find Next until the miss.
    const std::tuple<long, unsigned long, const char*, const char*> cases[] = {
        {0, 0, "cat", "0-3@3 4-7@7 9-12@12 16-19@19 "},
        {5, 1, "cat", "9-12@12 "}, // from the caret
        {0, 3, "CAT", "16-19@19 "}};
    for (auto [from, options, pattern, want] : cases) {
        e.SetCrntSelection(BCLimits(from, from));
        ASSERT_TRUE(e.SetSearch(pattern, nullptr, options));
        std::string found;
        while (Command(H(), 121))
            found += Selected(e) + "@" + std::to_string(e.GetSearchPos()) + " ";
        EXPECT_EQ(want, found) << options;
    }
    EXPECT_EQ("Text `cat' not found.", rec.Entries()[0].text);
    ASSERT_TRUE(e.SetSearch("", "x", 4)); // an empty pattern is none
    EXPECT_TRUE(e.GetSearchPattern() == nullptr && e.FindNext() + e.ReplaceDirect(1) == 0);
    EXPECT_EQ(std::vector<unsigned int>(3, 10087), rec.NumberedIds());
}

TEST_F(Search, ReplaceAllEndsAtTheTextsEndWithAStepPerReplacement) {
    BCTextEdit& e = Make("a-a-ba\r\na");
    MsgRecorder rec;
    e.SetTextPos(2, -1);
    ASSERT_TRUE(e.SetSearch("a", "aa", 0)); // the replacement holds the pattern
    EXPECT_EQ((Seq{1, 12, 12}), (Seq{e.ReplaceDirect(1), e.GetCaretOfs(), e.GetSearchPos()}));
    EXPECT_EQ("a-aa-baa\r\naa|a-aa-baa\r\na|a-aa-ba\r\na|a-a-ba\r\na|0",
              Join({Text(), Undone(), Undone(), Undone(), std::to_string(e.CanUndo())}));
    e.SetText("xxxy"); // deleting neighbours: still a step each
    e.SetSearch("x", "", 0);
    EXPECT_TRUE(e.ReplaceDirect(1) == 1 && Undone() == "xy");
    e.SetText("ab ab"); // once: the next match only, the search going on after it
    e.SetSearch("ab", "c", 0);
    EXPECT_EQ((Seq{1, 1, 1, 0}),
              (Seq{e.ReplaceDirect(0), e.GetSearchPos(), e.ReplaceDirect(0), e.ReplaceDirect(0)}));
    EXPECT_EQ("c c", Text());
    EXPECT_EQ(std::vector<unsigned int>{10087}, rec.NumberedIds());
}

TEST_F(Search, ClipboardAndFileCommands) {
    const std::string name = TempFile("editsearch");
    BCTextEdit& e = Make("abc\r\ndef", 0, 8, name.c_str());
    BCClipboard clipboard(nullptr);
    clipboard.Clear();
    EXPECT_TRUE(Command(H(), 114) + Command(H(), 113) + Command(H(), 112) == 0 && // nothing to move
                !e.CanUndo());
    e.SetCrntSelection(BCLimits(2, 6));
    char copied[8] = "";
    EXPECT_TRUE(Command(H(), 113) == 1 && clipboard.GetText(copied, sizeof copied) &&
                std::string(copied) == "c\r\nd" && Command(H(), 112) == 1);
    clipboard.Clear();
    clipboard.SetText("XY");
    e.SetCrntSelection(BCLimits(1, 3));
    EXPECT_TRUE(Command(H(), 114) == 1 && Text() == "aXYf");
    e.SetModified(1);
    EXPECT_TRUE(Command(H(), 103) == 1 && !e.IsModified() && e.CanUndo());
    EXPECT_EQ((Seq{1, 0, 0, 0}), // New: saved, so nothing to ask
              (Seq{Command(H(), 101), e.GetTextLen(), e.GetCaretOfs(), e.CanUndo()}));
    // Save As and Open name the file in the file dialogs.
    const std::string other = name + ".new";
    e.SetText("saved as");
    DialogDriver saveAs, open;
    saveAs.SetText(2013, other).Click(IDOK).Start();
    EXPECT_TRUE(Command(H(), 104) == 1 && saveAs.Finish() && !e.IsModified());
    e.SetText("");
    e.SetModified(0);
    open.SetText(2001, other).Click(IDOK).Start();
    EXPECT_TRUE(Command(H(), 102) == 1 && open.Finish() && Text() == "saved as");
    std::remove(name.c_str());
    std::remove(other.c_str());
}

// Presses `button` in the next dialog once the one answered before (`last`) has gone.
Step Answer(std::shared_ptr<HWND> last, int button) {
    return [last, button](HWND first) {
        DWORD thread = GetWindowThreadProcessId(first, nullptr);
        HWND shown = nullptr;
        for (int i = 0; i < 250 && !shown; ++i) {
            Sleep(20);
            if (!IsWindow(*last))
                shown = ShownDialog(thread);
        }
        *last = shown;
        return shown && Press(button)(shown);
    };
}

TEST_F(Search, ReplaceDialogAsksForEachOccurrenceOnceOrAll) {
    // Query (ticked after a reset), button, answers to "Replace this occurrence?": the text,
    // the command's result and the misses reported.
    const std::tuple<bool, int, std::vector<int>, const char*, long, size_t> cases[] = {
        {true, 2037, {6, 7, 6}, "bb1 a2 bb3", 1, 1},
        {true, 2037, {6, 2}, "bb1 a2 a3", 0, 0},
        {true, 1, {7}, "a1 a2 a3", 1, 0},
        {false, 2037, {}, "bb1 bb2 bb3", 1, 0},
        {true, 2, {}, "a1 a2 a3", 0, 0}};
    Make("");
    for (const auto& [query, button, answers, text, result, misses] : cases) {
        edit->SetText("a1 a2 a3");
        MsgRecorder rec;
        auto last = std::make_shared<HWND>();
        DialogDriver driver;
        driver.Do([last](HWND dialog) { return (*last = dialog) != nullptr; });
        driver.Do(TypeInto(2032, "a")).Do(TypeInto(2033, "bb"));
        if (!query)
            driver.Do(Press(2036));
        driver.Do(Press(button));
        for (int answer : answers)
            driver.Do(Answer(last, answer));
        driver.Start();
        long answer = Command(H(), 122);
        EXPECT_EQ(Nums(1, result, misses) + text,
                  Nums(driver.Finish(), answer, rec.Count()) + Text());
    }
}

TEST_F(Search, FindDialogShowsTheLastPatternAndStartsAtTheSelection) {
    BCTextEdit& e = Make("a1 A1 a1");
    MsgRecorder rec;
    std::string trail;
    for (int button : {1, 2}) { // find, then cancel
        std::string shown;
        DialogDriver driver;
        driver.ReadText(2031, &shown);
        if (button == 1)
            driver.Do(TypeInto(2031, "A1"));
        driver.Click(button).Start();
        const std::string result = std::to_string(Command(H(), 120)) + ":";
        trail += result + Selected(e) + " " + (driver.Finish() ? shown : "unfinished") + "|";
    }
    EXPECT_EQ("1:0-2 |0:0-2 A1|", trail);
    EXPECT_EQ(Nums(4, 0), Nums(e.GetSearchOptions(), rec.Count())); // the query bit kept
}

} // namespace
