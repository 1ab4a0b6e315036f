#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <vector>

#include "editfixture.h"
#include "msgrecorder.h"

namespace {

using Search = EditFixture;

long Command(HWND h, int id) {
    return static_cast<long>(SendMessageA(h, WM_COMMAND, static_cast<WPARAM>(id), 0));
}

std::string Selected(BCTextEdit& e) {
    BCLimits s = e.GetCrntSelection();
    return std::to_string(s.GetStart()) + "-" + std::to_string(s.GetEnd());
}

TEST_F(Search, FindNextSelectsEachMatchThenReportsTheMissOnce) {
    BCTextEdit& e = Make("one two one\r\nOne");
    MsgRecorder rec;
    e.SetTextPos(2, -1);
    std::string before = Selected(e);
    EXPECT_EQ(0, Command(H(), 121)); // no pattern yet: nothing happens
    EXPECT_EQ(before, Selected(e));
    EXPECT_EQ(2u, e.GetCaretOfs());
    EXPECT_EQ(0u, rec.Count());
    ASSERT_TRUE(e.SetSearch("one", nullptr, 1));
    EXPECT_EQ(2u, e.GetSearchPos()); // from the caret
    EXPECT_EQ(1, Command(H(), 121));
    EXPECT_EQ("8-11", Selected(e));
    EXPECT_EQ(11u, e.GetSearchPos());
    EXPECT_EQ(11u, e.GetCaretOfs());
    EXPECT_EQ(0, e.FindNext()); // "One" differs in case
    EXPECT_EQ("8-11", Selected(e));
    ASSERT_EQ(std::vector<unsigned int>{10087}, rec.NumberedIds());
    EXPECT_EQ("Text `one' not found.", rec.Last().text);

    // Bad patterns: empty is none at all; one longer than the text is simply not there.
    rec.Clear();
    ASSERT_TRUE(e.SetSearch("", "x", 4));
    EXPECT_EQ(nullptr, e.GetSearchPattern());
    EXPECT_EQ(0, e.FindNext() + e.ReplaceDirect(1));
    EXPECT_EQ(0u, rec.Count());
    std::string longer(40, 'o');
    ASSERT_TRUE(e.SetSearch(longer.c_str(), nullptr, 0));
    EXPECT_EQ(0, e.FindNext());
    EXPECT_EQ(1u, rec.Count());
}

struct OptionCase {
    unsigned long options;
    const char* pattern;
    const char* found; // the selections, in order
};

TEST_F(Search, OptionsAreMatchCaseAndWholeWord) {
    BCTextEdit& e = Make("Cat cat scatter CAT");
    MsgRecorder rec;
    const OptionCase cases[] = {{0, "cat", "0-3 4-7 9-12 16-19 "},
                                {1, "cat", "4-7 9-12 "},
                                {2, "CAT", "0-3 4-7 16-19 "},
                                {3, "cat", "4-7 "}};
    for (const OptionCase& c : cases) {
        e.SetCrntSelection(BCLimits(0, 0)); // the search starts at the selection

        ASSERT_TRUE(e.SetSearch(c.pattern, nullptr, c.options));
        std::string found;
        while (e.FindNext())
            found += Selected(e) + " ";
        EXPECT_EQ(c.found, found) << c.options;
    }
    EXPECT_EQ(4u, rec.Count()); // one miss each
}

TEST_F(Search, ReplaceAllEndsAtTheTextsEndWithAStepPerReplacement) {
    BCTextEdit& e = Make("a-a-ba\r\na");
    MsgRecorder rec;
    e.SetTextPos(2, -1);
    ASSERT_TRUE(e.SetSearch("a", "aa", 0)); // the replacement holds the pattern
    EXPECT_EQ(1, e.ReplaceDirect(1));
    EXPECT_EQ("a-aa-baa\r\naa", Text());
    EXPECT_EQ(Text().size(), e.GetCaretOfs());
    EXPECT_EQ(Text().size(), e.GetSearchPos());
    EXPECT_EQ(0u, rec.Count());
    for (const char* before : {"a-aa-baa\r\na", "a-aa-ba\r\na", "a-a-ba\r\na"}) {
        e.Undo();
        EXPECT_EQ(before, Text());
    }
    EXPECT_FALSE(e.CanUndo());

    // Deleting neighbours: still a step each.
    e.SetText("xxxy");
    e.SetSearch("x", "", 0);
    EXPECT_EQ(1, e.ReplaceDirect(1));
    EXPECT_EQ("y", Text());
    e.Undo();
    EXPECT_EQ("xy", Text());

    // Once: the next match only, the search going on after it.
    e.SetText("ab ab");
    e.SetSearch("ab", "c", 0);
    EXPECT_EQ(1, e.ReplaceDirect(0));
    EXPECT_EQ("c ab", Text());
    EXPECT_EQ(1u, e.GetSearchPos());
    EXPECT_EQ(1, e.ReplaceDirect(0));
    EXPECT_EQ(0, e.ReplaceDirect(0));
    EXPECT_EQ("c c", Text());
    EXPECT_EQ(std::vector<unsigned int>{10087}, rec.NumberedIds());
}

// Text put on the system clipboard by hand; null empties it.
void PutClipboard(const char* text) {
    ASSERT_TRUE(OpenClipboard(nullptr) && EmptyClipboard());
    if (text) {
        HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, std::strlen(text) + 1);
        std::strcpy(static_cast<char*>(GlobalLock(block)), text);
        GlobalUnlock(block);
        SetClipboardData(CF_TEXT, block);
    }
    CloseClipboard();
}

std::string ClipboardText() {
    std::string s;
    if (OpenClipboard(nullptr)) {
        if (HANDLE h = GetClipboardData(CF_TEXT)) {
            s = static_cast<const char*>(GlobalLock(h));
            GlobalUnlock(h);
        }
        CloseClipboard();
    }
    return s;
}

TEST_F(Search, CutCopyAndPasteGoThroughTheSystemClipboard) {
    BCTextEdit& e = Make("abc\r\ndef");
    PutClipboard(nullptr);
    EXPECT_EQ(0, Command(H(), 114) + Command(H(), 113) + Command(H(), 112)); // nothing to move
    EXPECT_EQ("abc\r\ndef", Text());
    EXPECT_FALSE(e.CanUndo());
    e.SetCrntSelection(BCLimits(2, 6));
    EXPECT_EQ(1, Command(H(), 113));
    EXPECT_EQ("c\r\nd", ClipboardText());
    EXPECT_EQ("abc\r\ndef", Text());
    EXPECT_EQ(1, Command(H(), 112));
    EXPECT_EQ("abef", Text());
    PutClipboard("XY");
    e.SetCrntSelection(BCLimits(1, 3));
    EXPECT_EQ(1, Command(H(), 114));
    EXPECT_EQ("aXYf", Text());
}

TEST_F(Search, SaveClearsTheModifiedStateAndNewEmptiesTheEditor) {
    char path[MAX_PATH];
    GetTempPathA(MAX_PATH, path);
    std::string name = std::string(path) + "editsearch.txt";
    BCTextEdit e(7, &main, BCPosition(0, 0), BCSize(200, 100), "txt", name.c_str(), nullptr,
                 &EditApp(), 0, 8);
    ASSERT_TRUE(e.Create(""));
    e.SetText("saved\r\ntext");
    e.SetModified(1);
    EXPECT_EQ(1, Command(e.GetHandle(), 103));
    EXPECT_FALSE(e.IsModified());
    std::ifstream file(name, std::ios::binary);
    EXPECT_EQ("saved\r\ntext",
              std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()));
    file.close();
    e.SetTextPos(5, -1);
    e.InsertText("x");
    ASSERT_TRUE(e.CanUndo());
    e.SetModified(0); // nothing to ask about
    EXPECT_EQ(1, Command(e.GetHandle(), 101));
    EXPECT_EQ(0u, e.GetTextLen() + e.GetCaretOfs());
    EXPECT_FALSE(e.CanUndo());
    std::remove(name.c_str());
}

// Typing into a dialog's field as a user does.
std::function<bool(HWND)> TypeInto(int id, const std::string& text) {
    return [id, text](HWND dialog) {
        HWND edit = GetDlgItem(dialog, id);
        for (char c : text)
            SendMessageA(edit, WM_CHAR, static_cast<unsigned char>(c), 1);
        return edit != nullptr;
    };
}

std::function<bool(HWND)> Tick(int id) {
    return [id](HWND dialog) {
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
        return true;
    };
}

BOOL CALLBACK ShownDialog(HWND window, LPARAM found) {
    char name[16];
    if (GetClassNameA(window, name, sizeof name) && !lstrcmpA(name, "#32770") &&
        IsWindowVisible(window)) {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

// Presses `button` in the dialog that comes up once the one answered before (`last`) has
// gone: the questions come one after another.
std::function<bool(HWND)> Answer(std::shared_ptr<HWND> last, int button) {
    return [last, button](HWND first) {
        DWORD thread = GetWindowThreadProcessId(first, nullptr);
        HWND shown = nullptr;
        for (int i = 0; i < 250 && !shown; ++i) {
            Sleep(20);
            if (!IsWindow(*last))
                EnumThreadWindows(thread, ShownDialog, reinterpret_cast<LPARAM>(&shown));
        }
        *last = shown;
        return shown && PostMessageA(shown, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                                     reinterpret_cast<LPARAM>(GetDlgItem(shown, button)));
    };
}

struct DialogCase {
    bool query;               // after a reset the query box is ticked
    int button;               // of the replace dialog
    std::vector<int> answers; // to "Replace this occurrence?"
    const char* text;
    long result;
    size_t misses; // messages 10087
};

TEST_F(Search, ReplaceDialogAsksForEachOccurrenceOnceOrAll) {
    const DialogCase cases[] = {
        {true, 2037, {6, 7, 6}, "bb1 a2 bb3", 1, 1}, // the miss after the last answer, once
        {true, 2037, {6, 2}, "bb1 a2 a3", 0, 0},
        {true, 1, {7}, "a1 a2 a3", 1, 0},
        {false, 2037, {}, "bb1 bb2 bb3", 1, 0},
        {false, 1, {}, "bb1 a2 a3", 1, 0},
        {true, 2, {}, "a1 a2 a3", 0, 0},
    };
    Make("");
    for (const DialogCase& c : cases) {
        edit->SetText("a1 a2 a3");
        MsgRecorder rec;
        auto last = std::make_shared<HWND>();
        DialogDriver driver;
        driver.Do([last](HWND dialog) { return (*last = dialog) != nullptr; });
        driver.Do(TypeInto(2032, "a")).Do(TypeInto(2033, "bb"));
        if (!c.query)
            driver.Do(Tick(2036));
        driver.Click(c.button);
        for (int answer : c.answers)
            driver.Do(Answer(last, answer));
        driver.Start();
        long result = Command(H(), 122);
        EXPECT_TRUE(driver.Finish());
        SCOPED_TRACE(c.text);
        EXPECT_EQ(c.result, result);
        EXPECT_EQ(c.text, Text());
        EXPECT_EQ(c.misses, rec.Count());
    }
}

TEST_F(Search, FindDialogShowsTheLastPatternAndStartsAtTheSelection) {
    BCTextEdit& e = Make("a1 A1 a1");
    MsgRecorder rec;
    std::string shown[3];
    const long results[] = {1, 1, 0};
    const char* selections[] = {"0-2", "3-5", "3-5"};
    for (int step = 0; step < 3; ++step) {
        DialogDriver driver;
        driver.ReadText(2031, &shown[step]);
        if (step == 0)
            driver.Do(TypeInto(2031, "A1"));
        if (step == 1)
            driver.Do(Tick(2034)); // match case: the "a1" selected is passed over
        driver.Click(step < 2 ? 1 : 2).Start();
        EXPECT_EQ(results[step], Command(H(), 120));
        EXPECT_TRUE(driver.Finish());
        EXPECT_EQ(selections[step], Selected(e));
    }
    EXPECT_EQ(",A1,A1", shown[0] + "," + shown[1] + "," + shown[2]);
    EXPECT_EQ(5u, e.GetSearchOptions()); // query bit kept from the reset
    EXPECT_EQ(0u, rec.Count());
}

} // namespace
