#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
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

struct FindCase {
    unsigned long from, options;
    const char* pattern;
    const char* found; // selection@search position, one per Find Next until the miss
};

TEST_F(Search, FindNextSelectsEachMatchByTheOptionsThenReportsTheMissOnce) {
    BCTextEdit& e = Make("Cat cat scatter CAT");
    MsgRecorder rec;
    e.SetTextPos(2, -1);
    // No pattern yet: nothing happens.
    EXPECT_EQ((Seq{0, 0, 2}), (Seq{Command(H(), 121), rec.Count(), e.GetCaretOfs()}));
    const std::string longer(40, 'c');
    const FindCase cases[] = {{0, 0, "cat", "0-3@3 4-7@7 9-12@12 16-19@19 "},
                              {5, 1, "cat", "9-12@12 "}, // from the caret
                              {0, 2, "CAT", "0-3@3 4-7@7 16-19@19 "},
                              {0, 3, "cat", "4-7@7 "},
                              {0, 0, longer.c_str(), ""}};
    for (const FindCase& c : cases) {
        e.SetCrntSelection(BCLimits(c.from, c.from));
        ASSERT_TRUE(e.SetSearch(c.pattern, nullptr, c.options));
        std::string found;
        while (Command(H(), 121))
            found += Selected(e) + "@" + std::to_string(e.GetSearchPos()) + " ";
        EXPECT_EQ(c.found, found) << c.options;
    }
    EXPECT_EQ("Text `cat' not found.", rec.Entries()[3].text);
    ASSERT_TRUE(e.SetSearch("", "x", 4)); // an empty pattern is none
    EXPECT_TRUE(e.GetSearchPattern() == nullptr && e.FindNext() + e.ReplaceDirect(1) == 0);
    EXPECT_EQ(std::vector<unsigned int>(5, 10087), rec.NumberedIds());
}

TEST_F(Search, ReplaceAllEndsAtTheTextsEndWithAStepPerReplacement) {
    BCTextEdit& e = Make("a-a-ba\r\na");
    MsgRecorder rec;
    e.SetTextPos(2, -1);
    ASSERT_TRUE(e.SetSearch("a", "aa", 0)); // the replacement holds the pattern
    EXPECT_EQ((Seq{1, 12, 12}), (Seq{e.ReplaceDirect(1), e.GetCaretOfs(), e.GetSearchPos()}));
    EXPECT_EQ("a-aa-baa\r\naa|a-aa-baa\r\na|a-aa-ba\r\na|a-a-ba\r\na",
              Join({Text(), Undone(), Undone(), Undone()}));
    EXPECT_FALSE(e.CanUndo());
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
    edit.reset(new BCTextEdit(7, &main, BCPosition(0, 0), BCSize(200, 100), "txt", name.c_str(),
                              nullptr, &App(), 0, 8));
    BCTextEdit& e = *edit;
    ASSERT_TRUE(e.Create(""));
    e.SetText("abc\r\ndef");
    BCClipboard clipboard(nullptr);
    clipboard.Clear();
    // Nothing to move.
    EXPECT_TRUE(Command(H(), 114) + Command(H(), 113) + Command(H(), 112) == 0 && !e.CanUndo());
    e.SetCrntSelection(BCLimits(2, 6));
    char copied[8] = "";
    EXPECT_EQ(1, Command(H(), 113));
    clipboard.GetText(copied, sizeof copied);
    EXPECT_TRUE(std::string(copied) == "c\r\nd" && Command(H(), 112) == 1);
    clipboard.Clear();
    clipboard.SetText("XY");
    e.SetCrntSelection(BCLimits(1, 3));
    EXPECT_TRUE(Command(H(), 114) == 1 && Text() == "aXYf");
    e.SetModified(1);
    EXPECT_TRUE(Command(H(), 103) == 1 && !e.IsModified());
    std::ifstream file(name, std::ios::binary);
    EXPECT_EQ("aXYf", std::string(std::istreambuf_iterator<char>(file), {}));
    file.close();
    std::remove(name.c_str());
    ASSERT_TRUE(e.CanUndo());
    EXPECT_EQ(1, Command(H(), 101)); // saved: nothing to ask
    EXPECT_EQ(Nums(0, 0, 0), Nums(e.GetTextLen(), e.GetCaretOfs(), e.CanUndo()));

    // Save As and Open name the file in the file dialogs.
    const std::string other = name + ".new";
    e.SetText("saved as");
    DialogDriver saveAs, open;
    saveAs.SetText(2013, other).Click(IDOK).Start();
    EXPECT_TRUE(Command(H(), 104) == 1 && saveAs.Finish() && !e.IsModified());
    e.SetText("");
    e.SetModified(0);
    open.SetText(2001, other).Click(IDOK).Start();
    EXPECT_TRUE(Command(H(), 102) == 1 && open.Finish());
    EXPECT_EQ(Join({"saved as", other}), Join({Text(), e.GetText()->GetFileName()}));
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

struct DialogCase {
    bool query; // after a reset the query box is ticked
    int button;
    std::vector<int> answers; // to "Replace this occurrence?"
    const char* text;
    long result;
    size_t misses;
};

TEST_F(Search, ReplaceDialogAsksForEachOccurrenceOnceOrAll) {
    const DialogCase cases[] = {{true, 2037, {6, 7, 6}, "bb1 a2 bb3", 1, 1},
                                {true, 2037, {6, 2}, "bb1 a2 a3", 0, 0},
                                {true, 1, {7}, "a1 a2 a3", 1, 0},
                                {false, 2037, {}, "bb1 bb2 bb3", 1, 0},
                                {false, 1, {}, "bb1 a2 a3", 1, 0},
                                {true, 2, {}, "a1 a2 a3", 0, 0}};
    Make("");
    for (const DialogCase& c : cases) {
        edit->SetText("a1 a2 a3");
        MsgRecorder rec;
        auto last = std::make_shared<HWND>();
        DialogDriver driver;
        driver.Do([last](HWND dialog) { return (*last = dialog) != nullptr; });
        driver.Do(TypeInto(2032, "a")).Do(TypeInto(2033, "bb"));
        if (!c.query)
            driver.Do(Press(2036));
        driver.Do(Press(c.button));
        for (int answer : c.answers)
            driver.Do(Answer(last, answer));
        driver.Start();
        long result = Command(H(), 122);
        EXPECT_EQ(Nums(1, c.result, c.misses) + c.text,
                  Nums(driver.Finish(), result, rec.Count()) + Text());
    }
}

TEST_F(Search, FindDialogShowsTheLastPatternAndStartsAtTheSelection) {
    BCTextEdit& e = Make("a1 A1 a1");
    MsgRecorder rec;
    std::string shown[3], trail;
    for (int step = 0; step < 3; ++step) {
        DialogDriver driver;
        driver.ReadText(2031, &shown[step]);
        if (step == 0)
            driver.Do(TypeInto(2031, "A1"));
        if (step == 1)
            driver.Do(Press(2034)); // match case: the "a1" selected is passed over
        driver.Click(step < 2 ? 1 : 2).Start();
        long result = Command(H(), 120);
        trail += std::to_string(result) + ":" + Selected(e) + " ";
        EXPECT_TRUE(driver.Finish());
        trail += shown[step] + "|";
    }
    EXPECT_EQ("1:0-2 |1:3-5 A1|0:3-5 A1|", trail);
    EXPECT_EQ(Nums(5, 0), Nums(e.GetSearchOptions(), rec.Count())); // query bit kept
}

} // namespace
