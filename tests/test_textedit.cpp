#include <algorithm>
#include <vector>

#include "editfixture.h"
#include "msgrecorder.h"
#include "streambytes.h"

namespace {

using Edit = EditFixture;

// Offsets: a0 b1 _2 c3 d4 CR5 LF6 x7 y8 z9 CR10 LF11 CR12 LF13 l14..t17.
const char kKeyText[] = "ab cd\r\nxyz\r\n\r\nlast";
constexpr int kChar = 0x2000; // with a key code: the character typed instead

struct KeyCase {
    unsigned long caret;
    UINT key; // with kCtrl or kChar
    unsigned long wantCaret;
    const char* text = kKeyText;
};

void RunKeys(EditFixture& f, std::initializer_list<KeyCase> cases) {
    for (const KeyCase& c : cases) {
        f.edit->SetText(kKeyText);
        f.edit->SetTextPos(c.caret, -1);
        if (c.key & kChar)
            Input::Char(f.H(), static_cast<char>(c.key));
        else
            f.Key(c.key);
        EXPECT_EQ(Join({c.text, std::to_string(c.wantCaret)}),
                  Join({f.Text(), std::to_string(f.edit->GetCaretOfs())}))
            << "key " << std::hex << c.key << " at " << c.caret;
    }
}

TEST_F(Edit, KeysMoveAndEditRespectingLineBreaksUnlessReadOnlyOrOverwriting) {
    Make("");
    // Its own text given again: the bar still spans one line. Input without text is refused.
    int low = -1, high = -1;
    EXPECT_EQ(1, edit->SetText(edit->GetText()));
    GetScrollRange(H(), SB_VERT, &low, &high);
    EXPECT_EQ((Seq{0, 1, 0, 0}),
              (Seq{low, high, edit->InputText(nullptr, 0, 3, 1), edit->GetTextLen()}));
    // Backspace at a line's start and Delete at its end join the lines; typing is 7-bit only.
    RunKeys(*this, {{7, VK_BACK, 5, "ab cdxyz\r\n\r\nlast"},
                    {4, VK_BACK, 3, "ab d\r\nxyz\r\n\r\nlast"},
                    {5, VK_DELETE, 5, "ab cdxyz\r\n\r\nlast"},
                    {3, VK_DELETE, 3, "ab d\r\nxyz\r\n\r\nlast"},
                    {1, kChar | '\r', 3, "a\r\nb cd\r\nxyz\r\n\r\nlast"},
                    {0, kChar | '\t', 1, "\tab cd\r\nxyz\r\n\r\nlast"}});
    const std::initializer_list<KeyCase> moves = {
        {7, VK_LEFT, 5},         {5, VK_RIGHT, 7},         {3, VK_RIGHT, 4},
        {9, VK_HOME, 7},         {8, VK_END, 10},          {9, VK_UP, 2},
        {4, VK_DOWN, 10},        {9, VK_HOME | kCtrl, 0},  {9, VK_END | kCtrl, 18},
        {4, VK_LEFT | kCtrl, 2}, {0, VK_RIGHT | kCtrl, 3}, {0, kChar | 0x7f, 0},
        {0, kChar | 0x01, 0}};
    RunKeys(*this, moves);
    edit->SetMode(4, 1);
    RunKeys(*this, {{7, VK_BACK, 7}, {3, VK_DELETE, 3}, {3, kChar | 'q', 3}, {5, VK_RIGHT, 7}});
    Key(VK_INSERT); // ignored too: the one below turns overwriting on
    // Overwriting stops at the line's end: the Z went in there, a step of its own. The
    // typed-over characters come back in front of the typed ones.
    edit->SetMode(4, 0);
    edit->SetText("ab cd\r\nx");
    Key(VK_INSERT);
    edit->SetTextPos(3, -1);
    edit->InsertText("XYZ");
    EXPECT_EQ("ab XYZ\r\nx|ab XY\r\nx|ab cdXY\r\nx|ab XY\r\nx",
              Join({Text(), Undone(), Undone(), (edit->Redo(), Text())}));
}

std::string Lines(int n) {
    std::string s;
    for (int i = 0; i < n; ++i)
        s += "line " + std::to_string(i) + "\r\n";
    return s;
}

// Every third pixel of the client area as shown, or (erase 0 or 1) once repainted whole.
std::vector<COLORREF> Shown(HWND h, int erase = -1) {
    if (erase >= 0)
        RedrawWindow(h, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | (erase ? RDW_ERASE : 0));
    HDC dc = GetDC(h);
    std::vector<COLORREF> pixels;
    for (int y = 0; y < 200; y += 3)
        for (int x = 0; x < 280; x += 3)
            pixels.push_back(GetPixel(dc, x, y));
    ReleaseDC(h, dc);
    return pixels;
}

// Display only (no caret to blink into the pictures): keys and the scroll bar move the page by
// their amounts, the window's bits moved and the uncovered lines painted as a repaint would.
TEST_F(Edit, DisplayOnlyPageScrollsByItsAmountsLikeAWholeRepaint) {
    std::string text = Lines(100);
    BCTextEdit& e = Make(text.c_str(), 2);
    const unsigned long shown = std::count(text.begin(), text.begin() + e.GetPageEnd(), '\n'),
                        page = shown * 3 / 4;
    constexpr unsigned long kKey = 0x4000; // with a key code: the key pressed instead
    const unsigned long steps[][3] = {
        // code, thumb, first line shown (the thumb's place too)
        {kKey | VK_DOWN, 0, 1},     {kKey | VK_NEXT, 0, 1 + page}, {kKey | VK_UP | kCtrl, 0, page},
        {SB_LINEDOWN, 0, page + 1}, {SB_LINEUP, 0, page},          {SB_PAGEDOWN, 0, 2 * page},
        {SB_PAGEUP, 0, page},       {SB_THUMBPOSITION, 40, 40},    {kKey | VK_HOME | kCtrl, 0, 0},
        {SB_BOTTOM, 0, 101 - shown}};
    for (auto [code, thumb, first] : steps) {
        SetScrollPos(H(), SB_VERT, static_cast<int>(thumb), FALSE);
        if (code & kKey)
            Key(static_cast<UINT>(code & ~kKey));
        else
            SendMessageA(H(), WM_VSCROLL, MAKEWPARAM(code, thumb), 0);
        UpdateWindow(H());
        EXPECT_EQ(Nums(first, first), Nums(e.GetFirstLine(), GetScrollPos(H(), SB_VERT))) << code;
        EXPECT_TRUE(Shown(H()) == Shown(H(), TRUE)) << "scroll " << code;
    }
    e.SetMode(2, 0); // leaving display-only gives a caret and shows where it is
    EXPECT_TRUE(e.GetCaret() && e.GetPageTop() == 0);
    // A repaint without the system's erase clears what lies below the last line itself.
    e.SetText("short");
    HDC dc = GetDC(H());
    PatBlt(dc, 0, 100, 300, 100, BLACKNESS);
    ReleaseDC(H(), dc);
    EXPECT_TRUE(Shown(H(), FALSE) == Shown(H(), TRUE));
}

TEST_F(Edit, MouseSelectsByPointLineAndWordUnlessForbidden) {
    BCTextEdit& e = Make("alpha beta\r\ngamma");
    POINT b = At(7), g = At(14);
    Click(WM_LBUTTONDOWN, b.x, b.y);
    EXPECT_EQ(H(), GetCapture());
    EXPECT_TRUE(Clicks({WM_MOUSEMOVE, WM_LBUTTONUP}, g) == BCLimits(7, 14) && !GetCapture());
    // The left margin takes the whole line; a double click the word.
    EXPECT_EQ(BCLimits(12, 17), Clicks({WM_LBUTTONDOWN, WM_LBUTTONUP}, {1, g.y}));
    EXPECT_EQ(BCLimits(6, 10), Clicks({WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK}, b));
    // A drag further right than the line's end plus half the height of "H" takes its break.
    const int end =
        e.GetTextRect().GetLeft() + e.GetLineSize(0, 10).GetWidth() + e.GetChrHeight('H') / 2;
    Click(WM_LBUTTONDOWN, b.x, b.y);
    EXPECT_EQ(BCLimits(7, 10), Clicks({WM_MOUSEMOVE}, {end, b.y}));
    EXPECT_EQ(BCLimits(7, 12), Clicks({WM_MOUSEMOVE, WM_LBUTTONUP}, {end + 1, b.y}));
    // Dragging above or onto the bottom of the text scrolls a line; within it, the page stays.
    e.SetText(Lines(100).c_str());
    SendMessageA(H(), WM_VSCROLL, SB_LINEDOWN, 0);
    const int top = e.GetTextRect().GetTop(), bottom = e.GetTextRect().GetBottom();
    Click(WM_LBUTTONDOWN, 50, 50);
    std::string firsts;
    for (int y : {50, top - 1, bottom - 1, bottom})
        firsts += (Click(WM_MOUSEMOVE, 50, y), std::to_string(e.GetFirstLine()));
    Click(WM_LBUTTONUP, 50, 50);
    EXPECT_EQ("1001", firsts);
    e.SetMode(8, 1);
    Click(WM_LBUTTONDOWN, g.x, g.y);
    EXPECT_TRUE(GetCapture() == nullptr && Clicks({WM_LBUTTONDBLCLK}, g).IsEmpty());
}

TEST_F(Edit, UndoMergesTypingAndDeletingAtOnePlace) {
    BCTextEdit& e = Make("hello");
    e.SetTextPos(5, -1);
    for (int i = 0; i < 5; ++i)
        Key(VK_BACK);
    EXPECT_TRUE(Undone() == "hello" && e.GetCaretOfs() == 5);
    e.SetTextPos(1, -1);
    Key(VK_DELETE);
    Key(VK_DELETE);
    EXPECT_EQ("hello", Undone()); // Delete pressed twice at one place: one step
    e.SetTextPos(0, -1);
    Type("ab\rcd"); // Return ends a step
    EXPECT_EQ("ab\r\nhello|hello", Join({Undone(), Undone()}));
    // Keys that end a step without moving the caret, between two Deletes at the text's start
    // or two Backspaces at its end: the first and last of each range of such keys.
    const std::initializer_list<std::pair<int, int>> ends = {{VK_PRIOR, VK_DELETE},
                                                             {VK_HOME | kCtrl, VK_DELETE},
                                                             {VK_DOWN, VK_BACK},
                                                             {VK_DOWN | kCtrl, VK_BACK}};
    for (auto [key, press] : ends) {
        e.SetText("abcd");
        e.SetTextPos(press == VK_BACK ? 4 : 0, -1);
        for (int pressed : {press, key, press})
            Key(pressed);
        EXPECT_EQ(press == VK_BACK ? "abc" : "bcd", Undone()) << key;
    }
    e.SetText("hello");
    std::string typed(40, 'q'); // a long step grows its buffer by the step rule
    Type(typed.c_str());
    const BCUndoBuffer& in = e.GetUndoList()->GetCrntRecord()->bfInserted;
    EXPECT_TRUE(typed == in.GetData() && in.GetCapacity() == 64u);
    e.Undo();
    Type("z"); // a change after Undo ends Redo
    EXPECT_TRUE(!e.CanRedo() && e.Redo() == 0);
}

TEST_F(Edit, SelectionIsReplacedInTwoStepsPastesStaySelectedF8ExtendsIt) {
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
    EXPECT_TRUE(e.InsertText("x\xe9y\x01z") == 1 && e.AppendText("!") == 1);
    EXPECT_TRUE(e.ReplaceTextA(1, 3, "Q", 1) == 1 && Text() == "aQlongd!");
    EXPECT_TRUE(e.ReplaceTextA(0, 1, nullptr, 0) == 1 && Text() == "Qlongd!");
    e.Undo();
    EXPECT_EQ("axyzlongd!", Undone());
    e.SetText("one two\r\nthree"); // F8 selects from the caret a word, the line, the text
    std::string grown;
    for (int i = 0; i < 5; ++i, grown += std::to_string(e.GetCrntSelection().GetLength()) + " ")
        Key(VK_F8);
    EXPECT_EQ("0 4 7 14 0 |0", grown + "|" + std::to_string(e.GetState()));
}

// Black pixels in the box `w` x `h` `dx` pixels right of an offset's place on its line.
int Dark(EditFixture& f, unsigned long ofs, int w, int h, int dx = 1) {
    const BCPosition p = f.edit->GetOfsPos(ofs);
    HDC dc = GetDC(f.H());
    int n = 0;
    for (int x = 0; x < w * h; ++x)
        n += GetPixel(dc, p.GetX() + dx + x % w, p.GetY() + x / w) == RGB(0, 0, 0);
    ReleaseDC(f.H(), dc);
    return n;
}

// Per offset, b(lack) or w(hite) on the top row of its line `dx` pixels right of its place.
std::string Inks(EditFixture& f, std::initializer_list<unsigned long> offsets, int dx = 1) {
    std::string inks;
    for (unsigned long ofs : offsets)
        inks += Dark(f, ofs, 1, 1, dx) ? 'b' : 'w';
    return inks;
}

TEST_F(Edit, SelectionIsDrawnInverseIncludingSelectedLineBreaks) {
    BCTextEdit& e = Make("Hello world\r\n\r\nnext");
    e.SetCrntSelection(BCLimits(2, 11)); // up to the line's end, not its break
    EXPECT_EQ("w", Inks(*this, {11}));
    e.SetCrntSelection(BCLimits(2, 15)); // to the start of "next"
    Input::Pump();
    // Inverse too: the blank after the line and the selected empty line.
    EXPECT_EQ("wbbbw", Inks(*this, {1, 2, 11, 13, 15}));
    e.Repaint(); // a whole repaint the same, the empty line's break one blank wide
    UpdateWindow(H());
    EXPECT_EQ("wbbbw|w",
              Inks(*this, {1, 2, 11, 13, 15}) + "|" + Inks(*this, {13}, e.GetChrWidth(' ') + 1));
    e.SetCrntSelection(BCLimits(2, 5)); // shrinking redraws the rest plain
    EXPECT_EQ("bwww", Inks(*this, {3, 6, 11, 13}));
    e.Repaint(); // and a whole repaint draws the same
    UpdateWindow(H());
    EXPECT_EQ("bwww", Inks(*this, {3, 6, 11, 13}));
    // The text around the selection is drawn too, and the lines the selection leaves alone.
    const int h = e.GetChrHeight('H');
    EXPECT_TRUE(Dark(*this, 0, 5, h) && Dark(*this, 6, 5, h) && Dark(*this, 15, 5, h));
    Key(VK_RIGHT); // any key collapses it
    Input::Pump();
    EXPECT_EQ("w", Inks(*this, {3}));
    e.SetCrntSelection(BCLimits(0, 5));
    EXPECT_EQ("b", Inks(*this, {2}));
    SendMessageA(H(), WM_HSCROLL, SB_PAGERIGHT, 0); // the text moves left, repainted
    EXPECT_EQ("w", Inks(*this, {2}));
}

TEST_F(Edit, PagesAndScrollingKeepTheCaretInView) {
    std::string text = Lines(100);
    BCTextEdit& e = Make(text.c_str());
    const unsigned long shown = std::count(text.begin(), text.begin() + e.GetPageEnd(), '\n'),
                        page = shown * 3 / 4;
    BCSize h(e.GetChrWidth('H'), e.GetChrHeight('H'));
    BCRectangle c = e.GetClientRect();
    EXPECT_EQ(BCRectangle(h.GetWidth(), h.GetHeight() / 4, c.GetRight() - h.GetWidth() / 2,
                          c.GetBottom() - h.GetHeight() / 4),
              e.GetTextRect());
    // Page Down: the caret first, then the page, with the caret's line at the bottom.
    EXPECT_EQ((Seq{0, LineOfs(page), 2 * page - shown + 1}),
              (Seq{TopAfter(VK_NEXT), e.GetCaretOfs(), TopAfter(VK_NEXT)}));
    e.SetTextPos(LineOfs(2), 0);
    // Ctrl+Down: the caret, now above the page, goes one line up; then further up.
    EXPECT_EQ((Seq{3, LineOfs(1)}), (Seq{TopAfter(VK_DOWN | kCtrl), e.GetCaretOfs()}));
    e.SetTextPos(LineOfs(1), 0);
    EXPECT_EQ((Seq{2, 0, 1}),
              (Seq{TopAfter(VK_DOWN | kCtrl), e.GetCaretOfs(), TopAfter(VK_UP | kCtrl)}));
    e.SetTextPos(LineOfs(3), -1);
    for (UINT key : {VK_RIGHT, VK_LEFT, VK_END, VK_HOME, VK_DOWN, VK_UP})
        EXPECT_EQ(1u, TopAfter(key)) << key; // the caret stays on the page: the page stays
    EXPECT_EQ(0u, TopAfter(VK_CLEAR));       // the caret's line three below the top
    const short y = e.GetCaretPos().GetY();  // Ctrl+Down: the caret moves up with its line
    EXPECT_TRUE(TopAfter(VK_DOWN | kCtrl) == 1 && e.GetCaretPos().GetY() == y - h.GetHeight());
    e.SetTextPos(LineOfs(2), 0); // on the page, put at the top
    SendMessageA(H(), WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(-1, e.GetCaretPos().GetX()); // the caret's line went off the page
    EXPECT_TRUE(TopAfter(VK_HOME) == 2 && e.GetCaretPos().GetX() == e.GetTextRect().GetLeft());
    SendMessageA(H(), WM_VSCROLL, SB_BOTTOM, 0); // scrolling leaves the caret where it is
    EXPECT_EQ(LineOfs(2), e.GetCaretOfs());
    Type("x"); // typing brings the caret's line back onto the page
    EXPECT_TRUE(e.GetPageTop() <= LineOfs(2) && LineOfs(3) <= e.GetPageEnd());
    e.Undo();
    Key(VK_END | kCtrl); // a caret past the last line shown stays on the bottom row
    SendMessageA(H(), WM_VSCROLL, SB_LINEUP, 0);
    EXPECT_EQ(e.GetTextRect().GetTop() + (shown - 1) * h.GetHeight(), e.GetCaretPos().GetY());
    const int steps[][2] = {{SB_LINELEFT, 0},   {SB_PAGERIGHT, 8}, {SB_LINELEFT, 7},
                            {SB_PAGERIGHT, 15}, {SB_PAGELEFT, 7},  {SB_TOP, 0}}; // to x, in units
    for (auto [type, units] : steps) // handled: the answer is 0
        EXPECT_EQ(
            (Seq{0, units * h.GetWidth()}),
            (Seq{SendMessageA(H(), WM_HSCROLL, MAKEWPARAM(type, 0), 0), e.GetOrigin().GetX()}));
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
    const short y = e.GetOfsPos(start).GetY();
    unsigned long want = start;
    for (int x = 0, run = e.GetTextRect().GetLeft(), w = 0; x < 300; ++x) {
        while (want < start + len &&
               (w = e.GetLineSize(want, 1).GetWidth(), x + e.GetOrigin().GetX() + w / 2 > run + w))
            run += w, ++want;
        ASSERT_EQ(want, e.GetPosOfs(BCPosition(static_cast<short>(x), y))) << x;
    }
}

TEST_F(Edit, PointToOffsetFollowsCharacterMiddlesWithTabsInAProportionalFont) {
    BCTextEdit& e = Make("iW\tmi\t.x\tWWi\r\n\tlonger line of text");
    BCFont font("Tahoma");
    font.SetPointSize(12);
    e.SetFont(&font);
    e.SetTabWidth(30);
    CheckClicks(e, 0, 12);
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

TEST_F(Edit, QueriesDumpOwnershipAndTheMenu) {
    BCTextEdit& e = Make("one\r\ntwo");
    char buf[9] = "xxxxxxxx"; // the terminator follows the max characters
    EXPECT_TRUE(e.GetTextLine(0, buf, 7) == 5 && std::string(buf) == "one\r\n");
    EXPECT_TRUE(e.GetTextLine(0, buf, 2) == 2 && buf[2] == 0 && !e.GetTextLine(7, buf, 7) && !*buf);
    EXPECT_EQ(0u, e.GetTextLine(0, nullptr, 7) + e.GetSelectedText(buf, 7) + // none selected
                      e.GetSelectedText(nullptr, 7) + e.GetText(nullptr, 7) +
                      e.InsertText(nullptr) + e.ReplaceSelectedText(nullptr));
    unsigned long start = 0;
    unsigned int len = 0;
    BCSize size;
    EXPECT_EQ((Seq{0, 1, 5, 3, 0}),
              (Seq{e.GetLineParms(99, start, len, size), e.GetLineParms(6, start, len, size), start,
                   e.GetLineLen(1), e.GetLineLen(7)}));
    e.SetModified(0);
    Type("z");
    MsgRecorder rec;
    e.Display("E ");
    EXPECT_EQ("E GetTextLen()=9\nIsModified()=1\n[0..15]={\n"
              "             7a 6f 6e 65 0d 0a 74 77\n"
              "             6f 00 00 00 00 00 00 00\n        }\n",
              rec.Last().text);
    bool gone = false;
    {
        BCTextEdit owner(6, &main, BCPosition(), BCSize(50, 50), nullptr, nullptr,
                         new Watched<BCTextData>(&gone, nullptr, nullptr, nullptr), &App(), 17, 4);
        EXPECT_EQ(Nums(51, 0, 1), Nums(owner.GetObjectType(), owner.GetTextLen(), owner.GetMode()));
    }
    EXPECT_TRUE(gone);
    e.SetText("abc"); // the menu follows the history, the selection and the clipboard
    BCMenu menu;
    const unsigned int ids[] = {111, 112, 113, 114, 116};
    for (unsigned int id : ids)
        menu.Append(id, "item");
    auto enabled = [&] {
        SendMessageA(H(), WM_INITMENU, reinterpret_cast<WPARAM>(menu.GetHandle()), 0);
        std::string s;
        for (unsigned int id : ids)
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
    // Undo answers 0 but undoes.
    EXPECT_TRUE(SendMessageA(H(), WM_COMMAND, 111, 0) == 0 && Text() == "abc");
    EXPECT_EQ("00011", enabled());
    EXPECT_TRUE(SendMessageA(H(), WM_COMMAND, 116, 0) == 1 && Text() == "xabc");
    EXPECT_TRUE(SendMessageA(H(), WM_COMMAND, 130, 0) == 0 && Text() == "xabc");
}

} // namespace
