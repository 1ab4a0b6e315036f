#include <algorithm>
#include <cstring>
#include <vector>

#include "editfixture.h"
#include "msgrecorder.h"
#include "streambytes.h"

namespace {

using Edit = EditFixture;

// Text for the key tables: offsets a0 b1 _2 c3 d4 CR5 LF6 x7 y8 z9 CR10 LF11 CR12 LF13 l14..t17.
const char kKeyText[] = "ab cd\r\nxyz\r\n\r\nlast";

// With a key code: the character typed instead.
constexpr int kChar = 0x2000;

struct KeyCase {
    unsigned long caret;
    UINT key;         // with kCtrl or kChar
    const char* text; // null: unchanged
    unsigned long wantCaret;
};

template <size_t N> void RunKeys(EditFixture& f, const KeyCase (&cases)[N]) {
    for (const KeyCase& c : cases) {
        f.edit->SetText(kKeyText);
        f.edit->SetTextPos(c.caret, -1);
        if (c.key & kChar)
            Input::Char(f.H(), static_cast<char>(c.key));
        else
            f.Key(c.key);
        SCOPED_TRACE(testing::Message() << "key " << std::hex << c.key << " at " << c.caret);
        EXPECT_EQ(c.text ? c.text : kKeyText, f.Text());
        EXPECT_EQ(c.wantCaret, f.edit->GetCaretOfs());
    }
}

TEST_F(Edit, KeysMoveAndEditRespectingLineBreaksUnlessReadOnly) {
    Make("");
    // Backspace at a line's start and Delete at its end join the lines.
    const KeyCase edits[] = {{7, VK_BACK, "ab cdxyz\r\n\r\nlast", 5},
                             {4, VK_BACK, "ab d\r\nxyz\r\n\r\nlast", 3},
                             {5, VK_DELETE, "ab cdxyz\r\n\r\nlast", 5},
                             {3, VK_DELETE, "ab d\r\nxyz\r\n\r\nlast", 3},
                             {1, kChar | '\r', "a\r\nb cd\r\nxyz\r\n\r\nlast", 3},
                             {1, kChar | '\n', "a\r\nb cd\r\nxyz\r\n\r\nlast", 3},
                             {0, kChar | '\t', "\tab cd\r\nxyz\r\n\r\nlast", 1}};
    // Down cuts the column to a shorter line and on the last line goes to the end; typing is
    // 7-bit only.
    const KeyCase unchanged[] = {
        {0, VK_BACK, nullptr, 0},         {18, VK_DELETE, nullptr, 18},
        {7, VK_LEFT, nullptr, 5},         {0, VK_LEFT, nullptr, 0},
        {5, VK_RIGHT, nullptr, 7},        {3, VK_RIGHT, nullptr, 4},
        {9, VK_HOME, nullptr, 7},         {8, VK_END, nullptr, 10},
        {9, VK_UP, nullptr, 2},           {4, VK_DOWN, nullptr, 10},
        {9, VK_DOWN, nullptr, 12},        {16, VK_DOWN, nullptr, 18},
        {9, VK_HOME | kCtrl, nullptr, 0}, {9, VK_END | kCtrl, nullptr, 18},
        {4, VK_LEFT | kCtrl, nullptr, 2}, {0, VK_RIGHT | kCtrl, nullptr, 3},
        {0, VK_LEFT | kCtrl, nullptr, 0}, {0, kChar | 0x7f, nullptr, 0},
        {0, kChar | 0xe9, nullptr, 0},    {0, kChar | 0x01, nullptr, 0}};
    RunKeys(*this, edits);
    RunKeys(*this, unchanged);
    edit->SetMode(4, 1);
    const KeyCase readOnly[] = {{7, VK_BACK, nullptr, 7},
                                {3, VK_DELETE, nullptr, 3},
                                {3, kChar | 'q', nullptr, 3},
                                {3, kChar | '\r', nullptr, 3},
                                {5, VK_RIGHT, nullptr, 7}};
    RunKeys(*this, readOnly);
    Key(VK_INSERT);
    EXPECT_EQ(4u, edit->GetMode());
}

TEST_F(Edit, OverwriteStopsAtLineEndAndUndoesLikeADeletion) {
    BCTextEdit& e = Make("ab cd\r\nx");
    Key(VK_INSERT);
    EXPECT_EQ(1u, e.GetMode());
    e.SetTextPos(3, -1);
    Type("XYZ");
    // The Z went in at the line's end: a step of its own. The typed-over characters come back
    // in front of the typed ones.
    EXPECT_EQ("ab XYZ\r\nx|ab XY\r\nx|ab cdXY\r\nx|ab XY\r\nx",
              Join({Text(), Undone(), Undone(), Redone()}));
    Key(VK_INSERT);
    EXPECT_EQ(0u, e.GetMode());
}

std::string Lines(int n) {
    std::string s;
    for (int i = 0; i < n; ++i)
        s += "line " + std::to_string(i) + "\r\n";
    return s;
}

// The lines of `text` the page shows.
unsigned long ShownLines(BCTextEdit& e, const std::string& text) {
    return static_cast<unsigned long>(
        std::count(text.begin(), text.begin() + e.GetPageEnd(), '\n'));
}

TEST_F(Edit, DisplayOnlyKeysScrollThePageWithoutCaretOrChange) {
    std::string text = Lines(100);
    BCTextEdit& e = Make(text.c_str(), 2);
    EXPECT_EQ(nullptr, e.GetCaret());
    const unsigned long shown = ShownLines(e, text);
    EXPECT_EQ((Seq{1u, 1 + shown * 3 / 4, shown * 3 / 4}),
              (Seq{TopAfter(VK_DOWN), TopAfter(VK_NEXT), TopAfter(VK_UP | kCtrl)}));
    Key(VK_END | kCtrl);
    EXPECT_EQ(text.size(), e.GetPageEnd());
    Type("x");
    Key(VK_DELETE);
    EXPECT_TRUE(Text() == text && e.GetCaretOfs() == 0);
    e.SetMode(2, 0); // leaving display-only gives a caret and shows where it is
    EXPECT_TRUE(e.GetCaret() && e.GetPageTop() == 0);
}

// The client area's pixels, read back from the screen.
std::vector<COLORREF> Shown(HWND h) {
    RECT r;
    GetClientRect(h, &r);
    HDC screen = GetDC(h), copy = CreateCompatibleDC(screen);
    HBITMAP bits = CreateCompatibleBitmap(screen, r.right, r.bottom);
    HGDIOBJ old = SelectObject(copy, bits);
    BitBlt(copy, 0, 0, r.right, r.bottom, screen, 0, 0, SRCCOPY);
    std::vector<COLORREF> pixels;
    for (int y = 0; y < r.bottom; y += 2)
        for (int x = 0; x < r.right; x += 2)
            pixels.push_back(GetPixel(copy, x, y));
    SelectObject(copy, old);
    DeleteObject(bits);
    DeleteDC(copy);
    ReleaseDC(h, screen);
    return pixels;
}

std::vector<COLORREF> Repainted(HWND h, BOOL erase) {
    InvalidateRect(h, nullptr, erase);
    UpdateWindow(h);
    return Shown(h);
}

// Scrolling moves the lines still shown with the window's bits and paints only the uncovered
// ones: the result must look exactly like a repaint of the whole page.
TEST_F(Edit, AScrolledPageLooksLikeTheWholePageRepainted) {
    std::string text = Lines(100);
    BCTextEdit& e = Make(text.c_str(), 2); // no caret to blink into the pictures
    RECT client;
    GetClientRect(H(), &client);
    // Every line that fits below the top margin is on the page.
    EXPECT_EQ((client.bottom - e.GetTextRect().GetTop()) / e.GetChrHeight('H'),
              e.GetText()->GetNumLines(e.GetPageTop(), e.GetPageEnd()));
    for (int code : {SB_THUMBPOSITION, SB_LINEDOWN, SB_LINEDOWN, SB_LINEUP, VK_DOWN, SB_PAGEDOWN,
                     SB_PAGEUP}) { // a scroll bar's code, or the key
        if (code == SB_THUMBPOSITION)
            SetScrollPos(H(), SB_VERT, 3, FALSE);
        if (code == VK_DOWN)
            Key(VK_DOWN);
        else
            SendMessageA(H(), WM_VSCROLL, MAKEWPARAM(code, 0), 0);
        UpdateWindow(H());
        std::vector<COLORREF> scrolled = Shown(H());
        EXPECT_TRUE(scrolled == Repainted(H(), TRUE))
            << "scroll " << code << " to line " << e.GetFirstLine();
    }
    // A repaint without the system's erase clears what lies below the last line itself.
    e.SetText("short");
    HDC dc = GetDC(H());
    RECT below = {0, client.bottom / 2, client.right, client.bottom};
    FillRect(dc, &below, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    ReleaseDC(H(), dc);
    std::vector<COLORREF> unerased = Repainted(H(), FALSE);
    EXPECT_TRUE(unerased == Repainted(H(), TRUE));
}

TEST_F(Edit, MouseSelectsByPointLineAndWordUnlessForbidden) {
    BCTextEdit& e = Make("alpha beta\r\ngamma");
    POINT b = At(7), g = At(14);
    Click(WM_LBUTTONDOWN, b.x, b.y);
    EXPECT_EQ(H(), GetCapture());
    EXPECT_EQ(BCLimits(7, 14), Clicks({WM_MOUSEMOVE, WM_LBUTTONUP}, g));
    EXPECT_EQ(nullptr, GetCapture());
    // The left margin takes the whole line; a double click the word.
    EXPECT_EQ(BCLimits(12, 17), Clicks({WM_LBUTTONDOWN, WM_LBUTTONUP}, {1, g.y}));
    EXPECT_EQ(BCLimits(6, 10), Clicks({WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK}, b));
    // A drag further right than the line's end plus half the height of "H" takes its break.
    const int end =
        e.GetTextRect().GetLeft() + e.GetLineSize(0, 10).GetWidth() + e.GetChrHeight('H') / 2;
    Click(WM_LBUTTONDOWN, b.x, b.y);
    EXPECT_EQ(BCLimits(7, 10), Clicks({WM_MOUSEMOVE}, {end, b.y}));
    EXPECT_EQ(BCLimits(7, 12), Clicks({WM_MOUSEMOVE, WM_LBUTTONUP}, {end + 1, b.y}));
    e.SetMode(8, 1);
    Click(WM_LBUTTONDOWN, g.x, g.y);
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_TRUE(Clicks({WM_LBUTTONDBLCLK}, g).IsEmpty());
}

TEST_F(Edit, UndoMergesTypingAndDeletingAtOnePlace) {
    BCTextEdit& e = Make("hello");
    Type("abc"); // one step, the caret following
    EXPECT_EQ(e.GetOfsPos(3).GetX(), e.GetCaretPos().GetX());
    EXPECT_EQ(32u, e.GetUndoList()->GetCrntRecord()->bfInserted.GetCapacity());
    EXPECT_TRUE(e.Undo() == 0 && Text() == "hello" && !e.CanUndo());
    e.SetTextPos(5, -1);
    for (int i = 0; i < 5; ++i)
        Key(VK_BACK);
    const BCUndoRecord* r = e.GetUndoList()->GetCrntRecord();
    EXPECT_EQ(4u, r->dwType);
    EXPECT_STREQ("hello", r->bfRemoved.GetData());
    EXPECT_TRUE(Undone() == "hello" && e.GetCaretOfs() == 5);
    for (int i = 0; i < 2; ++i) {
        e.SetTextPos(1, -1);
        Key(VK_DELETE);
    }
    EXPECT_EQ("hello", Undone()); // Delete pressed twice at one place: one step
    e.SetTextPos(0, -1);
    Type("ab\rcd"); // Return ends a step
    EXPECT_EQ("ab\r\nhello|hello", Join({Undone(), Undone()}));
    for (int key : {VK_HOME, VK_HOME | kCtrl, VK_LEFT, VK_LEFT | kCtrl, VK_UP, VK_UP | kCtrl,
                    VK_PRIOR, VK_CLEAR, VK_F8}) {
        e.SetText("abcd"); // Delete, a key that ends the step without moving, Delete
        for (int pressed : {VK_DELETE, key, VK_DELETE})
            Key(pressed);
        EXPECT_EQ("bcd", Undone()) << key;
    }
    e.SetText("hello");
    std::string typed(40, 'q'); // a long step grows its buffer by the step rule
    Type(typed.c_str());
    const BCUndoBuffer& in = e.GetUndoList()->GetCrntRecord()->bfInserted;
    EXPECT_TRUE(typed == in.GetData() && in.GetCapacity() == 64u);
    e.Undo();
    Type("ab\rcd");
    e.Undo();
    Type("z"); // a change after Undo ends Redo
    EXPECT_TRUE(!e.CanRedo() && e.Redo() == 0);
}

TEST_F(Edit, HistoryKeepsOnlyItsDepthReusingTheOldestRecord) {
    BCTextEdit& e = Make("", 0, 3);
    for (const char* s : {"a", "b", "c", "d"}) {
        Key(VK_HOME); // movement ends a step
        Type(s);
    }
    EXPECT_TRUE(Text() == "dcba" && e.GetUndoList()->GetCount() == 3);
    int steps = 0;
    for (; e.CanUndo(); ++steps)
        e.Undo();
    EXPECT_TRUE(steps == 3 && Text() == "a");
    while (e.CanRedo())
        e.Redo();
    EXPECT_EQ("dcba", Text());
}

TEST_F(Edit, SelectionIsReplacedInTwoStepsAndPastesStaySelected) {
    BCTextEdit& e = Make("abcd");
    e.SetCrntSelection(BCLimits(1, 3));
    Type("X");
    EXPECT_EQ("aXd|ad|abcd", Join({Text(), Undone(), Undone()}));
    e.SetCrntSelection(BCLimits(3, 1));
    char sel[8] = "";
    EXPECT_TRUE(e.GetSelectedText(sel, 7) == 2 && std::string(sel) == "bc");
    EXPECT_TRUE(e.ReplaceSelectedText("long") == 1 && Text() == "alongd");
    EXPECT_TRUE(e.GetCrntSelection() == BCLimits(1, 5) && e.GetCaretOfs() == 1);
    e.ReplaceSelectedText("X"); // replacements never merge
    EXPECT_EQ("alongd", Undone());
    Input::Char(H(), 27); // Escape only collapses
    EXPECT_TRUE(Text() == "alongd" && e.GetCrntSelection().IsEmpty());
    EXPECT_TRUE(e.InsertText("x\xe9y\x01z") == 1 && Text() == "axyzlongd");
    e.AppendText("!");
    EXPECT_EQ("axyzlongd!", Text());
    EXPECT_TRUE(e.ReplaceTextA(1, 3, "Q", 1) == 1 && Text() == "aQlongd!");
    EXPECT_TRUE(e.ReplaceTextA(0, 1, nullptr, 0) == 1 && Text() == "Qlongd!");
    e.Undo();
    EXPECT_EQ("axyzlongd!", Undone());
}

TEST_F(Edit, ExtendedSelectionGrowsByWordLineAndText) {
    BCTextEdit& e = Make("one two\r\nthree");
    for (BCLimits want : {BCLimits(0, 0), BCLimits(0, 4), BCLimits(0, 7), BCLimits(0, 14)}) {
        Key(VK_F8);
        EXPECT_EQ(want, e.GetCrntSelection());
    }
    Key(VK_F8);
    EXPECT_TRUE(e.GetCrntSelection().IsEmpty() && e.GetState() == 0);
}

// Per offset, the colour at the top row of its line a pixel right of its x: b(lack), w(hite)
// or ? for any other.
std::string Inks(EditFixture& f, std::initializer_list<unsigned long> offsets) {
    HDC dc = GetDC(f.H());
    std::string inks;
    for (unsigned long ofs : offsets) {
        BCPosition p = f.edit->GetOfsPos(ofs);
        COLORREF c = GetPixel(dc, p.GetX() + 1, p.GetY());
        inks += c == RGB(0, 0, 0) ? 'b' : c == RGB(255, 255, 255) ? 'w' : '?';
    }
    ReleaseDC(f.H(), dc);
    return inks;
}

// Black pixels in the cells of the characters from..to of one line.
int DarkIn(EditFixture& f, unsigned long from, unsigned long to) {
    BCPosition a = f.edit->GetOfsPos(from), b = f.edit->GetOfsPos(to);
    HDC dc = GetDC(f.H());
    int n = 0;
    for (int x = a.GetX(); x < b.GetX(); ++x)
        for (int y = a.GetY(); y < a.GetY() + f.edit->GetChrHeight('H'); ++y)
            n += GetPixel(dc, x, y) == RGB(0, 0, 0);
    ReleaseDC(f.H(), dc);
    return n;
}

TEST_F(Edit, SelectionIsDrawnInverseIncludingSelectedLineBreaks) {
    BCTextEdit& e = Make("Hello world\r\n\r\nnext");
    e.SetCrntSelection(BCLimits(2, 11)); // up to the line's end, not its break
    EXPECT_EQ("w", Inks(*this, {11}));
    e.SetCrntSelection(BCLimits(2, 15)); // to the start of "next"
    Input::Pump();
    // Inverse too: the blank after the line and the selected empty line.
    EXPECT_EQ("wbbbw", Inks(*this, {1, 2, 11, 13, 15}));
    e.SetCrntSelection(BCLimits(2, 5)); // shrinking redraws the rest plain
    EXPECT_EQ("bwww", Inks(*this, {3, 6, 11, 13}));
    e.Repaint(); // and a whole repaint draws the same
    UpdateWindow(H());
    EXPECT_EQ("bwww", Inks(*this, {3, 6, 11, 13}));
    // The text around the selection is drawn too, and the lines the selection leaves alone.
    EXPECT_TRUE(DarkIn(*this, 0, 2) > 0 && DarkIn(*this, 6, 11) > 0 && DarkIn(*this, 15, 19) > 0);
    Key(VK_RIGHT); // any key collapses it
    Input::Pump();
    EXPECT_EQ("w", Inks(*this, {3}));
    e.SetCrntSelection(BCLimits(0, 5));
    EXPECT_EQ("b", Inks(*this, {2}));
    SendMessageA(H(), WM_HSCROLL, SB_PAGERIGHT, 0); // the text moves left, repainted
    EXPECT_EQ("w", Inks(*this, {2}));
}

TEST_F(Edit, PagesAndScrollingMoveByTheirAmounts) {
    std::string text = Lines(100);
    BCTextEdit& e = Make(text.c_str());
    const unsigned long shown = ShownLines(e, text);
    ASSERT_GT(shown, 4u);
    BCSize h(e.GetChrWidth('H'), e.GetChrHeight('H'));
    BCRectangle c = e.GetClientRect();
    EXPECT_EQ(BCRectangle(h.GetWidth(), h.GetHeight() / 4, c.GetRight() - h.GetWidth() / 2,
                          c.GetBottom() - h.GetHeight() / 4),
              e.GetTextRect());
    unsigned long page = shown * 3 / 4;
    EXPECT_TRUE(TopAfter(VK_NEXT) == 0 && e.GetCaretOfs() == LineOfs(page));
    EXPECT_EQ(2 * page - shown + 1, TopAfter(VK_NEXT)); // off the page: its line at the bottom
    e.SetTextPos(LineOfs(2), 0);
    // The caret, now above the page, goes one line up; then further up.
    EXPECT_TRUE(TopAfter(VK_DOWN | kCtrl) == 3 && e.GetCaretOfs() == LineOfs(1));
    e.SetTextPos(LineOfs(1), 0);
    EXPECT_EQ(1u, e.GetFirstLine());
    EXPECT_TRUE(TopAfter(VK_DOWN | kCtrl) == 2 && e.GetCaretOfs() == 0);
    EXPECT_EQ(1u, TopAfter(VK_UP | kCtrl));
    e.SetTextPos(LineOfs(3), -1);
    for (UINT key : {VK_RIGHT, VK_LEFT, VK_END, VK_HOME, VK_DOWN, VK_UP})
        EXPECT_EQ(1u, TopAfter(key)) << key; // the caret stays on the page: the page stays
    EXPECT_EQ(0u, TopAfter(VK_CLEAR));       // the caret's line three below the top
    e.SetTextPos(0, -1);
    EXPECT_EQ(1u, TopAfter(VK_DOWN | kCtrl));
    auto scroll = [&](int type, int thumb = 0) {
        SetScrollPos(H(), SB_VERT, thumb, FALSE);
        SendMessageA(H(), WM_VSCROLL, MAKEWPARAM(type, thumb), 0);
        return e.GetFirstLine();
    };
    EXPECT_EQ(2u, scroll(SB_LINEDOWN));
    EXPECT_EQ(-1, e.GetCaretPos().GetX()); // the caret's line went off the page
    EXPECT_EQ((Seq{2 + shown * 3 / 4, 40u, 39u, 0u}),
              (Seq{scroll(SB_PAGEDOWN), scroll(SB_THUMBPOSITION, 40), scroll(SB_LINEUP),
                   scroll(SB_TOP)}));
    EXPECT_EQ(e.GetTextRect().GetLeft(), e.GetCaretPos().GetX());
    e.SetTextPos(LineOfs(2), 0); // on the page, put at the top
    EXPECT_EQ(2u, e.GetFirstLine());
    scroll(SB_BOTTOM); // scrolling leaves the caret where it is
    EXPECT_TRUE(e.GetPageEnd() == text.size() && e.GetCaretOfs() == LineOfs(2) &&
                GetScrollPos(H(), SB_VERT) == static_cast<int>(e.GetFirstLine()));
    Type("x"); // typing brings the caret's line back onto the page
    EXPECT_TRUE(e.GetPageTop() <= LineOfs(2) && LineOfs(3) <= e.GetPageEnd());
    e.Undo();
    Key(VK_END | kCtrl);
    unsigned long top = e.GetPageTop();
    Key(VK_NEXT);
    EXPECT_EQ(top, e.GetPageTop());
    const int steps[][2] = {{SB_LINELEFT, 0},   {SB_PAGERIGHT, 8}, {SB_LINELEFT, 7},
                            {SB_PAGERIGHT, 15}, {SB_PAGELEFT, 7},  {SB_TOP, 0}}; // to x, in units
    for (auto [type, units] : steps) {
        SendMessageA(H(), WM_HSCROLL, MAKEWPARAM(type, 0), 0);
        EXPECT_EQ(units * e.GetChrWidth('H'), e.GetOrigin().GetX());
    }
    e.SetTextPos(LineOfs(5), 0);
    Type("x"); // typing at the top line's start keeps that line at the top
    EXPECT_EQ(LineOfs(5), e.GetPageTop());
    unsigned long deep = LineOfs(60);
    e.SetCrntSelection(BCLimits(0, static_cast<long>(deep + 3))); // the page follows its end
    EXPECT_EQ("b", Inks(*this, {deep}));
}

// The click rule the editor keeps, from each character's own measure: a point lands on the
// nearer side of a character's middle.
void CheckClicks(BCTextEdit& e, unsigned long start, unsigned int len) {
    std::vector<int> widths;
    for (unsigned int i = 0; i < len; ++i)
        widths.push_back(e.GetLineSize(start + i, 1).GetWidth());
    short y = e.GetOfsPos(start).GetY();
    for (int x = 0; x < 300; ++x) {
        int run = e.GetTextRect().GetLeft(), logical = x + e.GetOrigin().GetX();
        unsigned long want = start;
        while (want < start + len &&
               logical + widths[want - start] / 2 > run + widths[want - start])
            run += widths[want++ - start];
        ASSERT_EQ(want, e.GetPosOfs(BCPosition(static_cast<short>(x), y))) << x;
    }
}

TEST_F(Edit, PointToOffsetFollowsCharacterMiddlesWithTabsInAProportionalFont) {
    BCTextEdit& e = Make("iW\tmi\t.x\tWWi\r\n\tlonger line of text");
    BCFont font("Tahoma");
    font.SetPointSize(12);
    e.SetFont(&font);
    ASSERT_NE(e.GetChrWidth('i'), e.GetChrWidth('W'));
    e.SetTabWidth(30);
    CheckClicks(e, 0, 12);
    CheckClicks(e, 14, 20);
    EXPECT_EQ(e.GetLineSize(0, 2).GetWidth() + 30 - e.GetLineSize(0, 2).GetWidth() % 30,
              e.GetLineSize(0, 3).GetWidth());
    std::string wide(1030, 'i');
    e.SetText((wide + "\t\tWx").c_str()); // TABs past the measured part
    e.SetOrigin(BCPosition(static_cast<short>(e.GetLineSize(0, 1024).GetWidth() - 100), 0));
    CheckClicks(e, 0, 1034);
    e.SetOrigin(BCPosition(0, 0));
    wide.assign(2000, 'a');
    e.SetText(wide.c_str()); // lines are measured up to their 1024th character
    EXPECT_EQ(e.GetLineSize(0, 1024), e.GetLineSize(0, 2000));
    EXPECT_LT(e.GetLineSize(0, 1000).GetWidth(), e.GetLineSize(0, 1024).GetWidth());
    e.SetFont(nullptr);
}

TEST_F(Edit, MenuFollowsHistorySelectionAndClipboard) {
    BCTextEdit& e = Make("abc");
    BCMenu menu;
    for (unsigned int id : {111u, 112u, 113u, 114u, 116u})
        menu.Append(id, "item");
    auto enabled = [&] {
        SendMessageA(H(), WM_INITMENU, reinterpret_cast<WPARAM>(menu.GetHandle()), 0);
        std::string s;
        for (unsigned int id : {111u, 112u, 113u, 114u, 116u})
            s += menu.IsEnabled(id) ? '1' : '0';
        return s;
    };
    BCClipboard clipboard(nullptr);
    ASSERT_TRUE(clipboard.Clear());
    EXPECT_EQ("00000", enabled());
    Type("x");
    e.SetCrntSelection(BCLimits(0, 2));
    EXPECT_EQ("11100", enabled());
    ASSERT_TRUE(clipboard.SetText("t"));
    EXPECT_EQ('1', enabled()[3]);
    // Undo answers 0 but undoes.
    EXPECT_TRUE(SendMessageA(H(), WM_COMMAND, 111, 0) == 0 && Text() == "abc");
    EXPECT_EQ('1', enabled()[4]);
    EXPECT_TRUE(SendMessageA(H(), WM_COMMAND, 116, 0) == 1 && Text() == "xabc");
    EXPECT_TRUE(SendMessageA(H(), WM_COMMAND, 130, 0) == 0 && Text() == "xabc");
}

TEST_F(Edit, QueriesDumpAndOwnershipOfTheDocument) {
    BCTextEdit& e = Make("one\r\ntwo");
    char buf[9] = "xxxxxxxx";
    EXPECT_EQ(5u, e.GetTextLine(0, buf, 7));
    EXPECT_STREQ("one\r\n", buf);
    // The terminator follows the max characters.
    EXPECT_TRUE(e.GetTextLine(0, buf, 2) == 2 && buf[2] == 0);
    EXPECT_TRUE(e.GetTextLine(7, buf, 7) == 0 && buf[0] == 0);
    EXPECT_EQ(0u, e.GetTextLine(0, nullptr, 7) + e.GetSelectedText(nullptr, 7) +
                      e.GetText(nullptr, 7) + e.InsertText(nullptr) +
                      e.ReplaceSelectedText(nullptr));
    EXPECT_EQ("one\r\ntwo", Text());
    unsigned long start = 0;
    unsigned int len = 0;
    BCSize size;
    EXPECT_EQ(0, e.GetLineParms(99, start, len, size)); // past the end
    EXPECT_TRUE(e.GetLineParms(6, start, len, size) == 1 && start == 5 &&
                size == e.GetLineSize(5, 3));
    EXPECT_EQ(Nums(3, 0), Nums(e.GetLineLen(1), e.GetLineLen(7)));
    e.SetModified(0);
    EXPECT_FALSE(e.IsModified());
    Type("z");
    EXPECT_TRUE(e.IsModified());
    MsgRecorder rec;
    e.Display("E ");
    EXPECT_EQ("E GetTextLen()=9\nIsModified()=1\n[0..15]={\n"
              "             7a 6f 6e 65 0d 0a 74 77\n"
              "             6f 00 00 00 00 00 00 00\n        }\n",
              rec.Last().text);
    bool gone = false;
    {
        BCTextEdit owner(6, &main, BCPosition(), BCSize(50, 50), nullptr, nullptr,
                         new Watched<BCTextData>(&gone, nullptr, nullptr, nullptr), &App(), 0, 4);
        EXPECT_TRUE(owner.GetObjectType() == 51 && owner.GetTextLen() == 0);
    }
    EXPECT_TRUE(gone);
}

} // namespace
