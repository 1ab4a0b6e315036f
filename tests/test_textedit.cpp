#include <cstring>
#include <vector>

#include "editfixture.h"
#include "msgrecorder.h"

namespace {

using Edit = EditFixture;

// Text for the key tables: offsets a0 b1 _2 c3 d4 CR5 LF6 x7 y8 z9 CR10 LF11 CR12 LF13 l14..t17.
const char kKeyText[] = "ab cd\r\nxyz\r\n\r\nlast";

struct KeyCase {
    unsigned long caret;
    UINT key; // 0: type `ch`
    bool ctrl;
    char ch;
    const char* text; // null: unchanged
    unsigned long wantCaret;
};

void RunKeys(EditFixture& f, const std::vector<KeyCase>& cases) {
    for (const KeyCase& c : cases) {
        f.edit->SetText(kKeyText);
        f.edit->SetTextPos(c.caret, -1);
        if (c.key)
            f.Key(c.key, c.ctrl);
        else
            Input::Char(f.H(), c.ch);
        SCOPED_TRACE(testing::Message()
                     << "key " << c.key << " char " << int(c.ch) << " at " << c.caret);
        EXPECT_EQ(c.text ? c.text : kKeyText, f.Text());
        EXPECT_EQ(c.wantCaret, f.edit->GetCaretOfs());
    }
}

TEST_F(Edit, KeysMoveAndEditRespectingLineBreaks) {
    Make("");
    RunKeys(*this, {
                       {7, VK_BACK, false, 0, "ab cdxyz\r\n\r\nlast", 5}, // joins lines
                       {0, VK_BACK, false, 0, nullptr, 0},
                       {4, VK_BACK, false, 0, "ab d\r\nxyz\r\n\r\nlast", 3},
                       {5, VK_DELETE, false, 0, "ab cdxyz\r\n\r\nlast", 5},
                       {3, VK_DELETE, false, 0, "ab d\r\nxyz\r\n\r\nlast", 3},
                       {18, VK_DELETE, false, 0, nullptr, 18},
                       {7, VK_LEFT, false, 0, nullptr, 5},
                       {0, VK_LEFT, false, 0, nullptr, 0},
                       {5, VK_RIGHT, false, 0, nullptr, 7},
                       {3, VK_RIGHT, false, 0, nullptr, 4},
                       {9, VK_HOME, false, 0, nullptr, 7},
                       {8, VK_END, false, 0, nullptr, 10},
                       {9, VK_UP, false, 0, nullptr, 2},
                       {4, VK_DOWN, false, 0, nullptr, 10}, // column cut to a shorter line
                       {9, VK_DOWN, false, 0, nullptr, 12},
                       {16, VK_DOWN, false, 0, nullptr, 18}, // last line: to the end
                       {9, VK_HOME, true, 0, nullptr, 0},
                       {9, VK_END, true, 0, nullptr, 18},
                       {4, VK_LEFT, true, 0, nullptr, 2},
                       {0, VK_RIGHT, true, 0, nullptr, 3},
                       {0, VK_LEFT, true, 0, nullptr, 0},
                       {1, 0, false, '\r', "a\r\nb cd\r\nxyz\r\n\r\nlast", 3},
                       {1, 0, false, '\n', "a\r\nb cd\r\nxyz\r\n\r\nlast", 3},
                       {0, 0, false, '\t', "\tab cd\r\nxyz\r\n\r\nlast", 1},
                       {0, 0, false, '\x7f', nullptr, 0},
                       {0, 0, false, '\xe9', nullptr, 0}, // 7-bit typing only
                       {0, 0, false, '\x01', nullptr, 0},
                   });
}

TEST_F(Edit, ReadOnlyTypesAndDeletesNothingButMoves) {
    Make("", 4);
    RunKeys(*this, {{7, VK_BACK, false, 0, nullptr, 7},
                    {3, VK_DELETE, false, 0, nullptr, 3},
                    {3, 0, false, 'q', nullptr, 3},
                    {3, 0, false, '\r', nullptr, 3},
                    {5, VK_RIGHT, false, 0, nullptr, 7}});
    Key(VK_INSERT);
    EXPECT_EQ(4u, edit->GetMode());
}

TEST_F(Edit, OverwriteStopsAtLineEndAndUndoesLikeADeletion) {
    BCTextEdit& e = Make("ab cd\r\nx");
    Key(VK_INSERT);
    EXPECT_EQ(1u, e.GetMode());
    e.SetTextPos(3, -1);
    Type("XYZ");
    EXPECT_EQ("ab XYZ\r\nx", Text());
    e.Undo(); // the Z went in at the line's end: a step of its own
    EXPECT_EQ("ab XY\r\nx", Text());
    e.Undo(); // the typed-over characters come back in front of the typed ones
    EXPECT_EQ("ab cdXY\r\nx", Text());
    e.Redo();
    EXPECT_EQ("ab XY\r\nx", Text());
    Key(VK_INSERT);
    EXPECT_EQ(0u, e.GetMode());
}

std::string Lines(int n) {
    std::string s;
    for (int i = 0; i < n; ++i)
        s += "line " + std::to_string(i) + "\r\n";
    return s;
}

TEST_F(Edit, DisplayOnlyKeysScrollThePageWithoutCaretOrChange) {
    std::string text = Lines(100);
    BCTextEdit& e = Make(text.c_str(), 2);
    EXPECT_EQ(nullptr, e.GetCaret());
    unsigned long shown = e.GetPageEnd() ? 0 : 0;
    for (unsigned long o = 0; o < e.GetPageEnd(); ++o)
        shown += text[o] == '\n';
    Key(VK_DOWN);
    EXPECT_EQ(1u, e.GetFirstLine());
    Key(VK_NEXT);
    EXPECT_EQ(1 + shown * 3 / 4, e.GetFirstLine());
    Key(VK_UP, true);
    EXPECT_EQ(shown * 3 / 4, e.GetFirstLine());
    Key(VK_END, true);
    EXPECT_EQ(text.size(), e.GetPageEnd());
    Type("x");
    Key(VK_DELETE);
    EXPECT_EQ(text, Text());
    EXPECT_EQ(0u, e.GetCaretOfs());
    e.SetMode(2, 0); // leaving display-only gives a caret and shows where it is
    EXPECT_NE(nullptr, e.GetCaret());
    EXPECT_EQ(0u, e.GetPageTop());
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
    for (auto [message, code] : {std::pair<UINT, int>{WM_VSCROLL, SB_THUMBPOSITION},
                                 {WM_VSCROLL, SB_LINEDOWN},
                                 {WM_VSCROLL, SB_LINEDOWN},
                                 {WM_VSCROLL, SB_LINEUP},
                                 {WM_KEYDOWN, VK_DOWN},
                                 {WM_VSCROLL, SB_PAGEDOWN},
                                 {WM_VSCROLL, SB_PAGEUP}}) {
        if (message == WM_VSCROLL && code == SB_THUMBPOSITION)
            SetScrollPos(H(), SB_VERT, 3, FALSE);
        if (message == WM_KEYDOWN)
            Key(static_cast<UINT>(code));
        else
            SendMessageA(H(), message, MAKEWPARAM(code, 0), 0);
        UpdateWindow(H());
        std::vector<COLORREF> scrolled = Shown(H());
        InvalidateRect(H(), nullptr, TRUE);
        UpdateWindow(H());
        EXPECT_TRUE(scrolled == Shown(H())) << "scroll " << code << " to line " << e.GetFirstLine();
    }
    // A repaint without the system's erase clears what lies below the last line itself.
    e.SetText("short");
    HDC dc = GetDC(H());
    RECT below = {0, client.bottom / 2, client.right, client.bottom};
    FillRect(dc, &below, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    ReleaseDC(H(), dc);
    InvalidateRect(H(), nullptr, FALSE);
    UpdateWindow(H());
    std::vector<COLORREF> unerased = Shown(H());
    InvalidateRect(H(), nullptr, TRUE);
    UpdateWindow(H());
    EXPECT_TRUE(unerased == Shown(H()));
}

TEST_F(Edit, MouseSelectsByPointLineAndWordUnlessForbidden) {
    BCTextEdit& e = Make("alpha beta\r\ngamma");
    POINT b = At(7);
    Click(WM_LBUTTONDOWN, b.x, b.y);
    EXPECT_EQ(H(), GetCapture());
    POINT g = At(14);
    Click(WM_MOUSEMOVE, g.x, g.y);
    Click(WM_LBUTTONUP, g.x, g.y);
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_EQ(BCLimits(7, 14), e.GetCrntSelection());
    Click(WM_LBUTTONDOWN, 1, g.y); // the left margin takes the whole line
    Click(WM_LBUTTONUP, 1, g.y);
    EXPECT_EQ(BCLimits(12, 17), e.GetCrntSelection());
    Click(WM_LBUTTONDOWN, b.x, b.y);
    Click(WM_LBUTTONUP, b.x, b.y);
    Click(WM_LBUTTONDBLCLK, b.x, b.y);
    EXPECT_EQ(BCLimits(6, 10), e.GetCrntSelection());
    e.SetMode(8, 1);
    Click(WM_LBUTTONDOWN, g.x, g.y);
    EXPECT_EQ(nullptr, GetCapture());
    Click(WM_LBUTTONDBLCLK, g.x, g.y);
    EXPECT_TRUE(e.GetCrntSelection().IsEmpty());
}

TEST_F(Edit, UndoMergesTypingAndDeletingAtOnePlace) {
    BCTextEdit& e = Make("hello");
    Type("abc"); // one step
    EXPECT_EQ(32u, e.GetUndoList()->GetCrntRecord()->bfInserted.GetCapacity());
    EXPECT_EQ(0, e.Undo());
    EXPECT_EQ("hello", Text());
    EXPECT_FALSE(e.CanUndo());
    e.SetTextPos(5, -1);
    for (int i = 0; i < 5; ++i)
        Key(VK_BACK);
    const BCUndoRecord* r = e.GetUndoList()->GetCrntRecord();
    EXPECT_EQ(4u, r->dwType);
    EXPECT_STREQ("hello", r->bfRemoved.GetData());
    e.Undo();
    EXPECT_EQ("hello", Text());
    EXPECT_EQ(5u, e.GetCaretOfs());
    for (int i = 0; i < 2; ++i) {
        e.SetTextPos(1, -1);
        Key(VK_DELETE);
    }
    e.Undo(); // Delete pressed twice at one place: one step
    EXPECT_EQ("hello", Text());
    e.SetTextPos(0, -1);
    Type("ab\rcd"); // Return ends a step
    e.Undo();
    EXPECT_EQ("ab\r\nhello", Text());
    e.Undo();
    EXPECT_EQ("hello", Text());
    for (auto [key, ctrl] : {std::pair<UINT, bool>{VK_HOME, false},
                             {VK_HOME, true},
                             {VK_LEFT, false},
                             {VK_LEFT, true},
                             {VK_UP, false},
                             {VK_UP, true},
                             {VK_PRIOR, false},
                             {VK_CLEAR, false},
                             {VK_F8, false}}) {
        e.SetText("abcd"); // Delete, a key that ends the step without moving, Delete
        Key(VK_DELETE);
        Key(key, ctrl);
        Key(VK_DELETE);
        e.Undo();
        EXPECT_EQ("bcd", Text()) << key << ctrl;
    }
    e.SetText("hello");
    std::string typed(40, 'q'); // a long step grows its buffer by the step rule
    Type(typed.c_str());
    const BCUndoBuffer& in = e.GetUndoList()->GetCrntRecord()->bfInserted;
    EXPECT_EQ(typed, in.GetData());
    EXPECT_EQ(64u, in.GetCapacity());
    e.Undo();
    Type("ab\rcd");
    e.Undo();
    Type("z"); // a change after Undo ends Redo
    EXPECT_FALSE(e.CanRedo());
    EXPECT_EQ(0, e.Redo());
}

TEST_F(Edit, HistoryKeepsOnlyItsDepthReusingTheOldestRecord) {
    BCTextEdit& e = Make("", 0, 3);
    for (const char* s : {"a", "b", "c", "d"}) {
        Key(VK_HOME); // movement ends a step
        Type(s);
    }
    EXPECT_EQ("dcba", Text());
    EXPECT_EQ(3u, e.GetUndoList()->GetCount());
    int steps = 0;
    for (; e.CanUndo(); ++steps)
        e.Undo();
    EXPECT_EQ(3, steps);
    EXPECT_EQ("a", Text());
    while (e.CanRedo())
        e.Redo();
    EXPECT_EQ("dcba", Text());
}

TEST_F(Edit, SelectionIsReplacedInTwoStepsAndPastesStaySelected) {
    BCTextEdit& e = Make("abcd");
    e.SetCrntSelection(BCLimits(1, 3));
    Type("X");
    EXPECT_EQ("aXd", Text());
    e.Undo();
    EXPECT_EQ("ad", Text());
    e.Undo();
    EXPECT_EQ("abcd", Text());
    e.SetCrntSelection(BCLimits(3, 1));
    char sel[8];
    EXPECT_EQ(2u, e.GetSelectedText(sel, 7));
    EXPECT_STREQ("bc", sel);
    EXPECT_EQ(1, e.ReplaceSelectedText("long"));
    EXPECT_EQ("alongd", Text());
    EXPECT_EQ(BCLimits(1, 5), e.GetCrntSelection());
    EXPECT_EQ(1u, e.GetCaretOfs());
    e.ReplaceSelectedText("X"); // replacements never merge
    e.Undo();
    EXPECT_EQ("alongd", Text());
    Input::Char(H(), 27); // Escape only collapses
    EXPECT_EQ("alongd", Text());
    EXPECT_TRUE(e.GetCrntSelection().IsEmpty());
    EXPECT_EQ(1, e.InsertText("x\xe9y\x01z"));
    EXPECT_EQ("axyzlongd", Text());
    e.AppendText("!");
    EXPECT_EQ("axyzlongd!", Text());
    EXPECT_EQ(1, e.ReplaceTextA(1, 3, "Q", 1));
    EXPECT_EQ("aQlongd!", Text());
    EXPECT_EQ(1, e.ReplaceTextA(0, 1, nullptr, 0));
    EXPECT_EQ("Qlongd!", Text());
    e.Undo();
    e.Undo();
    EXPECT_EQ("axyzlongd!", Text());
}

TEST_F(Edit, ExtendedSelectionGrowsByWordLineAndText) {
    BCTextEdit& e = Make("one two\r\nthree");
    for (BCLimits want : {BCLimits(0, 0), BCLimits(0, 4), BCLimits(0, 7), BCLimits(0, 14)}) {
        Key(VK_F8);
        EXPECT_EQ(want, e.GetCrntSelection());
    }
    Key(VK_F8);
    EXPECT_TRUE(e.GetCrntSelection().IsEmpty());
    EXPECT_EQ(0u, e.GetState());
}

// Colour at the top row of the line holding `ofs`, `dx` pixels right of the offset's x.
COLORREF PixelAt(EditFixture& f, unsigned long ofs, int dx) {
    BCPosition p = f.edit->GetOfsPos(ofs);
    HDC dc = GetDC(f.H());
    COLORREF c = GetPixel(dc, p.GetX() + dx, p.GetY());
    ReleaseDC(f.H(), dc);
    return c;
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
    EXPECT_EQ(RGB(255, 255, 255), PixelAt(*this, 11, 1));
    e.SetCrntSelection(BCLimits(2, 15)); // to the start of "next"
    Input::Pump();
    EXPECT_EQ(RGB(255, 255, 255), PixelAt(*this, 1, 1));
    EXPECT_EQ(RGB(0, 0, 0), PixelAt(*this, 2, 1));
    EXPECT_EQ(RGB(0, 0, 0), PixelAt(*this, 11, 1)); // the blank after the line
    EXPECT_EQ(RGB(0, 0, 0), PixelAt(*this, 13, 1)); // the selected empty line
    EXPECT_EQ(RGB(255, 255, 255), PixelAt(*this, 15, 1));
    e.SetCrntSelection(BCLimits(2, 5)); // shrinking redraws the rest plain
    e.Repaint();                        // and a whole repaint draws the same
    UpdateWindow(H());
    EXPECT_EQ(RGB(0, 0, 0), PixelAt(*this, 3, 1));
    EXPECT_EQ(RGB(255, 255, 255), PixelAt(*this, 6, 1));
    EXPECT_EQ(RGB(255, 255, 255), PixelAt(*this, 11, 1));
    EXPECT_EQ(RGB(255, 255, 255), PixelAt(*this, 13, 1));
    EXPECT_GT(DarkIn(*this, 0, 2), 0); // the text around the selection is drawn too
    EXPECT_GT(DarkIn(*this, 6, 11), 0);
    EXPECT_GT(DarkIn(*this, 15, 19), 0); // and the lines the selection leaves alone
    Key(VK_RIGHT);                       // any key collapses it
    Input::Pump();
    EXPECT_EQ(RGB(255, 255, 255), PixelAt(*this, 3, 1));
    e.SetCrntSelection(BCLimits(0, 5));
    EXPECT_EQ(RGB(0, 0, 0), PixelAt(*this, 2, 1));
    SendMessageA(H(), WM_HSCROLL, SB_PAGERIGHT, 0); // the text moves left, repainted
    EXPECT_EQ(RGB(255, 255, 255), PixelAt(*this, 2, 1));
}

TEST_F(Edit, PagesAndScrollingMoveByTheirAmounts) {
    std::string text = Lines(100);
    BCTextEdit& e = Make(text.c_str());
    unsigned long shown = 0;
    for (unsigned long o = 0; o < e.GetPageEnd(); ++o)
        shown += text[o] == '\n';
    ASSERT_GT(shown, 4u);
    BCSize h(e.GetChrWidth('H'), e.GetChrHeight('H'));
    BCRectangle c = e.GetClientRect();
    EXPECT_EQ(BCRectangle(h.GetWidth(), h.GetHeight() / 4, c.GetRight() - h.GetWidth() / 2,
                          c.GetBottom() - h.GetHeight() / 4),
              e.GetTextRect());
    unsigned long page = shown * 3 / 4;
    Key(VK_NEXT);
    EXPECT_EQ(e.GetText()->GetLineOfs(page), e.GetCaretOfs());
    EXPECT_EQ(0u, e.GetFirstLine());
    Key(VK_NEXT); // off the page: the caret's line shows at the bottom
    EXPECT_EQ(2 * page - shown + 1, e.GetFirstLine());
    e.SetTextPos(e.GetText()->GetLineOfs(2), 0);
    Key(VK_DOWN, true); // the caret, now above the page, goes one line up
    EXPECT_EQ(3u, e.GetFirstLine());
    EXPECT_EQ(e.GetText()->GetLineOfs(1), e.GetCaretOfs());
    e.SetTextPos(e.GetText()->GetLineOfs(1), 0);
    EXPECT_EQ(1u, e.GetFirstLine());
    Key(VK_DOWN, true); // the caret above the page goes further up
    EXPECT_EQ(2u, e.GetFirstLine());
    EXPECT_EQ(0u, e.GetCaretOfs());
    Key(VK_UP, true);
    EXPECT_EQ(1u, e.GetFirstLine());
    e.SetTextPos(e.GetText()->GetLineOfs(3), -1);
    for (UINT key : {VK_RIGHT, VK_LEFT, VK_END, VK_HOME, VK_DOWN, VK_UP}) {
        Key(key); // the caret stays on the page: the page stays
        EXPECT_EQ(1u, e.GetFirstLine()) << key;
    }
    Key(VK_CLEAR); // the caret's line three below the top
    EXPECT_EQ(0u, e.GetFirstLine());
    e.SetTextPos(0, -1);
    Key(VK_DOWN, true);
    EXPECT_EQ(1u, e.GetFirstLine());
    auto scroll = [&](int type, int thumb = 0) {
        SetScrollPos(H(), SB_VERT, thumb, FALSE);
        SendMessageA(H(), WM_VSCROLL, MAKEWPARAM(type, thumb), 0);
        return e.GetFirstLine();
    };
    EXPECT_EQ(2u, scroll(SB_LINEDOWN));
    EXPECT_EQ(-1, e.GetCaretPos().GetX()); // the caret's line went off the page
    EXPECT_EQ(2 + shown * 3 / 4, scroll(SB_PAGEDOWN));
    EXPECT_EQ(40u, scroll(SB_THUMBPOSITION, 40));
    EXPECT_EQ(39u, scroll(SB_LINEUP));
    EXPECT_EQ(0u, scroll(SB_TOP));
    EXPECT_EQ(e.GetTextRect().GetLeft(), e.GetCaretPos().GetX());
    e.SetTextPos(e.GetText()->GetLineOfs(2), 0); // on the page, put at the top
    EXPECT_EQ(2u, e.GetFirstLine());
    scroll(SB_BOTTOM); // scrolling leaves the caret where it is
    EXPECT_EQ(text.size(), e.GetPageEnd());
    EXPECT_EQ(e.GetText()->GetLineOfs(2), e.GetCaretOfs());
    EXPECT_EQ(GetScrollPos(H(), SB_VERT), static_cast<int>(e.GetFirstLine()));
    Key(VK_END, true);
    unsigned long top = e.GetPageTop();
    Key(VK_NEXT);
    EXPECT_EQ(top, e.GetPageTop());
    short unit = e.GetChrWidth('H');
    for (auto [type, x] : {std::pair<int, int>{SB_LINELEFT, 0},
                           {SB_PAGERIGHT, 8 * unit},
                           {SB_LINELEFT, 7 * unit},
                           {SB_PAGERIGHT, 15 * unit},
                           {SB_PAGELEFT, 7 * unit},
                           {SB_TOP, 0}}) {
        SendMessageA(H(), WM_HSCROLL, MAKEWPARAM(type, 0), 0);
        EXPECT_EQ(x, e.GetOrigin().GetX());
    }
    e.SetTextPos(e.GetText()->GetLineOfs(5), 0);
    Type("x"); // typing at the top line's start keeps that line at the top
    EXPECT_EQ(e.GetText()->GetLineOfs(5), e.GetPageTop());
    unsigned long deep = e.GetText()->GetLineOfs(60);
    e.SetCrntSelection(BCLimits(0, static_cast<long>(deep + 3))); // the page follows its end
    EXPECT_EQ(RGB(0, 0, 0), PixelAt(*this, deep, 1));
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
    ASSERT_TRUE(OpenClipboard(nullptr) && EmptyClipboard() && CloseClipboard());
    EXPECT_EQ("00000", enabled());
    Type("x");
    e.SetCrntSelection(BCLimits(0, 2));
    EXPECT_EQ("11100", enabled());
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, 2);
    std::memcpy(GlobalLock(block), "t", 2);
    GlobalUnlock(block);
    ASSERT_TRUE(OpenClipboard(nullptr) && EmptyClipboard() && SetClipboardData(CF_TEXT, block));
    CloseClipboard();
    EXPECT_EQ('1', enabled()[3]);
    EXPECT_EQ(0, SendMessageA(H(), WM_COMMAND, 111, 0)); // Undo answers 0 but undoes
    EXPECT_EQ("abc", Text());
    EXPECT_EQ('1', enabled()[4]);
    EXPECT_EQ(1, SendMessageA(H(), WM_COMMAND, 116, 0));
    EXPECT_EQ("xabc", Text());
    EXPECT_EQ(0, SendMessageA(H(), WM_COMMAND, 130, 0));
    EXPECT_EQ("xabc", Text());
}

struct TrackedData : BCTextData {
    explicit TrackedData(bool* gone) : BCTextData(nullptr, nullptr, nullptr), m_gone(gone) {}
    ~TrackedData() override { *m_gone = true; }
    bool* m_gone;
};

TEST_F(Edit, QueriesDumpAndOwnershipOfTheDocument) {
    BCTextEdit& e = Make("one\r\ntwo");
    char buf[9];
    std::memset(buf, 'x', sizeof buf);
    EXPECT_EQ(5u, e.GetTextLine(0, buf, 7));
    EXPECT_STREQ("one\r\n", buf);
    std::memset(buf, 'x', sizeof buf);
    EXPECT_EQ(2u, e.GetTextLine(0, buf, 2));
    EXPECT_EQ(0, buf[2]); // the terminator follows the max characters
    EXPECT_EQ(0u, e.GetTextLine(7, buf, 7));
    EXPECT_STREQ("", buf);
    EXPECT_EQ(0u, e.GetTextLine(0, nullptr, 7) + e.GetSelectedText(nullptr, 7) +
                      e.GetText(nullptr, 7) + e.InsertText(nullptr) +
                      e.ReplaceSelectedText(nullptr));
    EXPECT_EQ("one\r\ntwo", Text());
    unsigned long start = 0;
    unsigned int len = 0;
    BCSize size;
    EXPECT_EQ(0, e.GetLineParms(99, start, len, size)); // past the end
    EXPECT_EQ(1, e.GetLineParms(6, start, len, size));
    EXPECT_EQ(5u, start);
    EXPECT_EQ(e.GetLineSize(5, 3), size);
    EXPECT_EQ(3u, e.GetLineLen(1));
    EXPECT_EQ(0u, e.GetLineLen(7));
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
                         new TrackedData(&gone), &EditApp(), 0, 4);
        EXPECT_EQ(51u, owner.GetObjectType());
        EXPECT_EQ(0u, owner.GetTextLen());
    }
    EXPECT_TRUE(gone);
}

} // namespace
