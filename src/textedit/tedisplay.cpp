// The editor's page: layout, measuring, painting, scrolling, the caret and the selection.
#include <windows.h>

#include <new>

#include "bccursor.h"
#include "bcgdi.h"
#include "bcplatform.h"
#include "bctextedit.h"

namespace {
constexpr unsigned int kMeasured = 1024; // characters measured or drawn of one line
constexpr short kCaretUnplaced = -1;     // x 65535: the caret has no place on the page

// Holds the window's context for a whole drawing job, so that the operations inside it
// reuse one context instead of obtaining one each.
class HeldDC {
  public:
    explicit HeldDC(BCDevice* device) : m_device(device), m_held(device->SelectDC() != 0) {}
    ~HeldDC() {
        if (m_held)
            m_device->ReleaseDC();
    }
    HeldDC(const HeldDC&) = delete;
    HeldDC& operator=(const HeldDC&) = delete;
    HDC Get() const { return static_cast<HDC>(m_device->GetDC()); }

  private:
    BCDevice* m_device;
    bool m_held;
};

unsigned long Min(unsigned long a, unsigned long b) {
    return a < b ? a : b;
}

unsigned long Max(unsigned long a, unsigned long b) {
    return a > b ? a : b;
}

// Both ends as offsets, low first.
void Ends(const BCLimits& l, unsigned long& low, unsigned long& high) {
    low = static_cast<unsigned long>(l.GetStart() < l.GetEnd() ? l.GetStart() : l.GetEnd());
    high = static_cast<unsigned long>(l.GetStart() < l.GetEnd() ? l.GetEnd() : l.GetStart());
}

// Width of a TAB that starts `x` pixels into its line.
int TabAdvance(int x, int tab) {
    return tab > 0 ? tab - x % tab : 0;
}
} // namespace

// ---- measuring ----

BCSize BCTextEdit::CharSize() {
    return BCSize(GetChrWidth('H'), GetChrHeight('H'));
}

BCSize BCTextEdit::GetLineSize(unsigned long ofs, unsigned int len) {
    short height = GetChrHeight('H');
    if (!len || !opText)
        return BCSize(0, height);
    unsigned long start = ofs;
    unsigned int lineLen = 0;
    int x = 0;
    // TAB stops count from the line's start: the part before `ofs` sets where they fall.
    if (opText->GetLineStartLen(ofs, start, lineLen))
        x = GetLineSize(start, static_cast<unsigned int>(ofs - start)).GetWidth();
    char text[kMeasured + 1];
    unsigned long n = opText->GetText(text, ofs, Min(len, kMeasured));
    HeldDC dc(this);
    int tab = GetTabWidth();
    int width = 0;
    for (unsigned long i = 0; i < n;) {
        if (text[i] == '\t') {
            width += TabAdvance(x + width, tab);
            ++i;
            continue;
        }
        unsigned long j = i;
        while (j < n && text[j] != '\t')
            ++j;
        width += GetStrSize(text + i, static_cast<int>(j - i)).GetWidth();
        i = j;
    }
    return BCSize(static_cast<short>(width), height);
}

unsigned int BCTextEdit::ColumnAt(unsigned long start, unsigned int len, int x) {
    // One extent call per run of the line gives every character's width; the click lands on
    // the nearer side of a character's middle.
    char text[kMeasured + 1];
    int dx[kMeasured];
    HeldDC dc(this);
    int tab = GetTabWidth();
    int run = rcText.GetLeft();
    int capped = 0; // TABs past the measured part count their stop from its width
    for (unsigned int done = 0; done < len;) {
        unsigned long n = opText->GetText(text, start + done, Min(len - done, kMeasured));
        if (!n)
            break;
        for (unsigned long i = 0; i < n;) {
            unsigned long j = i;
            while (j < n && text[j] != '\t')
                ++j;
            SIZE extent = {};
            if (j > i && !GetTextExtentExPointA(dc.Get(), text + i, static_cast<int>(j - i), 0,
                                                nullptr, dx, &extent))
                BCTraceFailure("GetTextExtentExPointA");
            for (unsigned long k = i; k <= j && k < n; ++k) {
                int w =
                    k < j ? dx[k - i] - (k > i ? dx[k - i - 1] : 0)
                          : TabAdvance(done + k < kMeasured ? run - rcText.GetLeft() : capped, tab);
                if (x + w / 2 <= run + w)
                    return static_cast<unsigned int>(done + k);
                run += w;
                if (done + k + 1 == kMeasured)
                    capped = run - rcText.GetLeft();
            }
            i = j + 1;
        }
        done += static_cast<unsigned int>(n);
    }
    return len;
}

// ---- page layout ----

unsigned long BCTextEdit::NextStart(unsigned long start) {
    unsigned long s = 0;
    unsigned int len = 0;
    if (!opText || !opText->GetLineStartLen(start, s, len))
        return GetTextLen() + 1;
    return s + len + 2;
}

unsigned long BCTextEdit::PrevStart(unsigned long start) {
    return opText ? opText->GetLineRelOfs(start, -1) : 0;
}

unsigned long BCTextEdit::PageLines() {
    short h = GetChrHeight('H');
    long room = GetClientRect().GetBottom() - rcText.GetTop();
    return h > 0 && room / h > 1 ? static_cast<unsigned long>(room / h) : 1;
}

unsigned long BCTextEdit::LinesShown() {
    unsigned long len = GetTextLen();
    return opText->GetNumLines(dwPageTop, dwPageEnd) + (dwPageEnd == len ? 1 : 0);
}

void BCTextEdit::FillPage(unsigned long start, unsigned long above) {
    unsigned long oldFirst = dwFirstLine, oldTop = dwPageTop;
    unsigned long cap = PageLines(), len = GetTextLen();
    unsigned long top = start, last = start, shown = 1, next = 0;
    for (; shown < cap && above && top; --above, ++shown)
        top = PrevStart(top);
    while (shown < cap && (next = NextStart(last)) <= len)
        last = next, ++shown;
    while (shown < cap && top)
        top = PrevStart(top), ++shown;
    dwPageTop = top;
    dwPageEnd = Min(NextStart(last), len);
    dwFirstLine = opText->GetNumLines(0, top);
    if (!(dwState & BC_TE_IN_SCROLL_BAR) && HasVertBar())
        SetVertThumb(static_cast<int>(dwFirstLine));
    PageMoved(oldTop, oldFirst);
}

void BCTextEdit::PageMoved(unsigned long oldTop, unsigned long oldFirst) {
    if (!HandleCheck())
        return;
    long delta = static_cast<long>(dwFirstLine - oldFirst);
    long cap = static_cast<long>(PageLines());
    short h = GetChrHeight('H');
    if (blDirty || delta >= cap || -delta >= cap || (!delta && dwPageTop != oldTop)) {
        blDirty = 0;
        Invalidate(nullptr, 1);
    } else if (delta) {
        // The lines still shown move with the window's bits; only the uncovered ones paint.
        BCRectangle client = GetClientRect();
        RECT area = {0, rcText.GetTop(), client.GetRight(),
                     static_cast<LONG>(rcText.GetTop() + cap * h)};
        CaretOff();
        if (ScrollWindowEx(GetHandle(), 0, static_cast<int>(-delta * h), &area, &area, nullptr,
                           nullptr, SW_INVALIDATE | SW_ERASE) == ERROR)
            BCTraceFailure("ScrollWindowEx");
    }
}

void BCTextEdit::SetPagePos(unsigned long ofs) {
    unsigned long len = GetTextLen(), start = 0;
    unsigned int lineLen = 0;
    if (ofs > len)
        ofs = len;
    if (!opText || !opText->GetLineStartLen(ofs, start, lineLen))
        start = 0;
    CaretOff();
    FillPage(start, 0);
    PlaceCaret();
    Update();
    CaretOn();
}

void BCTextEdit::SetTextPos(unsigned long ofs, int linesAbove) {
    if (!opText)
        return;
    unsigned long len = GetTextLen(), start = 0;
    unsigned int lineLen = 0;
    if (ofs > len)
        ofs = len;
    opText->GetLineStartLen(ofs, start, lineLen);
    unsigned long above = ofs >= dwPageTop ? opText->GetNumLines(dwPageTop, start) : 0;
    bool onPage = dwPageTop <= ofs && ofs <= dwPageEnd && !(ofs == dwPageEnd && ofs == start);
    bool keep = linesAbove < 0 || static_cast<unsigned long>(linesAbove) == above;
    if (!onPage || !keep) {
        CaretOff();
        FillPage(start, linesAbove == -1 ? above : static_cast<unsigned long>(linesAbove));
        Update();
    }
    if (dwState & (BC_TE_MOUSE_SELECTING | BC_TE_EXTENDED_SEL))
        SetCrntSelection(BCLimits(lmSel.GetStart(), static_cast<long>(ofs)));
    dwCaret = ofs;
    SetCaretPos(ofs);
}

int BCTextEdit::CaretOnPage() {
    return dwPageTop <= dwCaret && (dwCaret < dwPageEnd || dwCaret == GetTextLen());
}

void BCTextEdit::PlaceCaret() {
    if (!CaretOnPage()) {
        psCaret.SetX(kCaretUnplaced);
        return;
    }
    SetIntCaretPos(dwCaret);
    if (opCaret && psCaret.GetX() != kCaretUnplaced)
        opCaret->SetPos(BCPosition(-10, psCaret.GetY()));
}

// ---- painting ----

LRESULT BCTextEdit::Paint(BCEvent*) {
    CaretOff();
    HeldDC dc(this);
    RECT clip = {0, 0, 0, 0};
    GetClipBox(dc.Get(), &clip);
    short y = rcText.GetTop();
    unsigned long ofs = dwPageTop, len = 0;
    unsigned int lineLen = 0;
    const short lineHeight = GetChrHeight('H');
    for (unsigned long n = PageLines(); ofs < dwPageEnd && n; --n) {
        short h = lineHeight;
        if (y + h > clip.top && y < clip.bottom) {
            PosLine(ofs, BCPosition(rcText.GetLeft(), y), lineHeight);
            h = szLast.GetHeight();
            lineLen = static_cast<unsigned int>(dwLastLen);
        } else if (!opText->GetLineStartLen(ofs, len, lineLen)) {
            break;
        }
        ofs += lineLen + 2;
        y = static_cast<short>(y + h);
    }
    BCRectangle client = GetClientRect();
    short right = static_cast<short>(GetOrigin().GetX() + client.GetRight());
    Clear(BCRectangle(GetOrigin().GetX(), y, right, client.GetBottom()));
    CaretOn();
    return 0;
}

void BCTextEdit::ClearRight(short y, short height) {
    short right = static_cast<short>(GetOrigin().GetX() + GetClientRect().GetRight());
    short x = GetCrntPos().GetX();
    if (x < right)
        Clear(BCRectangle(x, y, right, static_cast<short>(y + height)));
}

unsigned int BCTextEdit::PosLineFrag(const BCPosition& pos, unsigned long ofs, unsigned int len) {
    char text[kMeasured + 1];
    unsigned long n = opText ? opText->GetText(text, ofs, Min(len, kMeasured)) : 0;
    PosStr(pos, text, static_cast<int>(n));
    return static_cast<unsigned int>(n);
}

void BCTextEdit::DrawFrag(unsigned long ofs, unsigned long count, int highlighted) {
    BCPosition at = GetCrntPos();
    if (!highlighted) {
        PosLineFrag(at, ofs, static_cast<unsigned int>(count));
        return;
    }
    BCColor text = GetTextColor(), back = GetBackColor();
    BCBrush* background = SetBackground(BCGetBlackBrush());
    SetTextColor(back);
    SetBackColor(text);
    if (count)
        PosLineFrag(at, ofs, static_cast<unsigned int>(count));
    else
        PosStr(at, " ", 1); // a selected line break
    SetTextColor(text);
    SetBackColor(back);
    SetBackground(background);
}

void BCTextEdit::PosLine(unsigned long ofs, const BCPosition& pos) {
    PosLine(ofs, pos, GetChrHeight('H'));
}

void BCTextEdit::PosLine(unsigned long ofs, const BCPosition& pos, short lineHeight) {
    if (!opText)
        return;
    HeldDC dc(this);
    unsigned long low = 0, high = 0, start = ofs;
    unsigned int len = 0;
    Ends(lmSel, low, high);
    opText->GetLineStartLen(ofs, start, len);
    dwLastLen = len;
    unsigned long end = start + len;
    if (low == high || high <= start || low > end) {
        // Untouched by the selection: one clear of the whole row and one string output,
        // whose own measuring gives the line's width; a page is a few hundred of these.
        char text[kMeasured + 1];
        unsigned long n = opText->GetText(text, start, Min(len, kMeasured));
        short right = static_cast<short>(GetOrigin().GetX() + GetClientRect().GetRight());
        short y = pos.GetY();
        PosStrInRow(pos, text, static_cast<int>(n),
                    BCRectangle(0, y, right, static_cast<short>(y + lineHeight)));
        szLast = BCSize(static_cast<short>(GetCrntPos().GetX() - pos.GetX()), lineHeight);
        return;
    }
    szLast = GetLineSize(start, len);
    short y = pos.GetY(), h = szLast.GetHeight();
    Clear(BCRectangle(0, y, rcText.GetLeft(), static_cast<short>(y + h)));
    MoveTo(pos);
    unsigned long a = Max(low, start), b = Min(high, end);
    DrawFrag(start, a - start, 0);
    if (b > a)
        DrawFrag(a, b - a, 1);
    if (high > end)
        DrawFrag(end, 0, 1);
    DrawFrag(b, end - b, 0);
    ClearRight(y, h);
}

void BCTextEdit::PutLine(unsigned long ofs) {
    if (!opText || ofs < dwPageTop || ofs > dwPageEnd)
        return;
    unsigned long start = ofs;
    unsigned int len = 0;
    opText->GetLineStartLen(ofs, start, len);
    BCPosition at = GetOfsPos(start);
    if (at.GetY() >= GetClientRect().GetBottom())
        return;
    HeldDC dc(this);
    if (!lmSel.IsEmpty()) {
        PosLine(start, at);
        return;
    }
    BCPosition from = GetOfsPos(ofs);
    MoveTo(from);
    DrawFrag(ofs, start + len - ofs, 0);
    ClearRight(from.GetY(), GetChrHeight('H'));
}

void BCTextEdit::PutFrag(unsigned long from, unsigned long to, int highlighted) {
    if (!opText)
        return;
    HeldDC dc(this);
    from = Max(from, dwPageTop);
    short bottom = GetClientRect().GetBottom();
    while (from < to && from <= dwPageEnd) {
        unsigned long start = from;
        unsigned int len = 0;
        if (!opText->GetLineStartLen(from, start, len))
            break;
        BCPosition at = GetOfsPos(from);
        if (at.GetY() >= bottom)
            break;
        unsigned long end = start + len, stop = Min(to, end);
        MoveTo(at);
        if (stop > from)
            DrawFrag(from, stop - from, highlighted);
        if (to > end && highlighted)
            DrawFrag(end, 0, 1);
        else if (to > end)
            ClearRight(at.GetY(), GetChrHeight('H'));
        from = end + 2;
    }
}

// ---- offsets and points ----

BCPosition BCTextEdit::GetOfsPos(unsigned long ofs) {
    unsigned long len = GetTextLen();
    if (ofs < dwPageTop || !opText)
        return rcText.GetPos();
    if (ofs > dwPageEnd || (ofs == dwPageEnd && ofs != len))
        return BCPosition(rcText.GetLeft(), GetClientRect().GetBottom());
    unsigned long start = ofs;
    unsigned int lineLen = 0;
    opText->GetLineStartLen(ofs, start, lineLen);
    unsigned long index = Min(opText->GetNumLines(dwPageTop, start), PageLines() - 1);
    short h = GetChrHeight('H');
    short x = static_cast<short>(
        rcText.GetLeft() + GetLineSize(start, static_cast<unsigned int>(ofs - start)).GetWidth());
    return BCPosition(x, static_cast<short>(rcText.GetTop() + index * h));
}

unsigned long BCTextEdit::GetPosOfs(const BCPosition& pos) {
    if (!opText)
        return 0;
    int x = pos.GetX() + GetOrigin().GetX();
    int y = pos.GetY();
    if (x < rcText.GetLeft())
        x = rcText.GetLeft();
    if (y < rcText.GetTop())
        y = rcText.GetTop();
    if (y > rcText.GetBottom())
        y = rcText.GetBottom();
    short h = GetChrHeight('H');
    unsigned long line = h > 0 ? static_cast<unsigned long>((y - rcText.GetTop()) / h) : 0;
    unsigned long ofs = dwPageTop, len = GetTextLen();
    for (; line && ofs < dwPageEnd; --line)
        ofs = Min(NextStart(ofs), dwPageEnd);
    if (ofs > len)
        ofs = len;
    unsigned long start = ofs;
    unsigned int lineLen = 0;
    opText->GetLineStartLen(ofs, start, lineLen);
    return start + ColumnAt(start, lineLen, x);
}

// ---- the caret ----

BCCaret* BCTextEdit::CreateCaret() {
    return new (std::nothrow) BCCaret(this, BCGetNullSize());
}

void BCTextEdit::DestroyCaret(BCCaret* caret) {
    delete caret;
}

void BCTextEdit::SetIntCaretPos(unsigned long ofs) {
    psCaret = GetOfsPos(ofs);
    if (!GetClientRect().Contains(
            BCPosition(static_cast<short>(psCaret.GetX() - GetOrigin().GetX()), psCaret.GetY())))
        psCaret.SetX(kCaretUnplaced);
}

void BCTextEdit::SetCaretPos(unsigned long ofs) {
    SetIntCaretPos(ofs);
    if (psCaret.GetX() == kCaretUnplaced)
        CaretOff();
    else if (blCaretShown)
        CaretOn(); // moves the shown caret
}

void BCTextEdit::CaretOn() {
    if ((dwMode & BC_TE_DISPLAY_ONLY) || !lmSel.IsEmpty() || !opCaret ||
        psCaret.GetX() == kCaretUnplaced)
        return;
    short foot =
        static_cast<short>(psCaret.GetY() + GetChrHeight('H') - opCaret->GetSize().GetHeight());
    opCaret->SetPos(BCPosition(static_cast<short>(psCaret.GetX() - GetOrigin().GetX()), foot));
    if (!blCaretShown)
        blCaretShown = opCaret->Show();
}

void BCTextEdit::CaretOff() {
    if (opCaret && blCaretShown)
        opCaret->Hide();
    blCaretShown = 0;
}

LRESULT BCTextEdit::Focus(BCEvent* e) {
    if (dwMode & BC_TE_DISPLAY_ONLY)
        return 0;
    if (e->IsFocused()) {
        if (!opCaret)
            opCaret = CreateCaret();
        blCaretShown = 0;
        SetIntCaretPos(dwCaret);
        CaretOn();
    } else {
        DestroyCaret(opCaret);
        opCaret = nullptr;
        blCaretShown = 0;
    }
    return 0;
}

void BCTextEdit::SetMode(unsigned int bits, int on) {
    unsigned long was = dwMode;
    dwMode = on ? dwMode | bits : dwMode & ~static_cast<unsigned long>(bits);
    if ((was & BC_TE_DISPLAY_ONLY) && !(dwMode & BC_TE_DISPLAY_ONLY)) {
        if (!opCaret)
            opCaret = CreateCaret();
        blCaretShown = 0;
        SetTextPos(dwCaret, -1);
        CaretOn();
    }
    if ((dwMode & BC_TE_DISPLAY_ONLY) && opCaret) {
        DestroyCaret(opCaret);
        opCaret = nullptr;
        blCaretShown = 0;
    }
}

// ---- the selection ----

BCLimits BCTextEdit::GetCrntSelection() const {
    unsigned long low = 0, high = 0;
    Ends(lmSel, low, high);
    return BCLimits(static_cast<long>(low), static_cast<long>(high));
}

void BCTextEdit::SetCrntSelection(const BCLimits& limits) {
    CaretOff();
    unsigned long a = 0, b = 0, c = 0, d = 0;
    Ends(lmSel, a, b);
    Ends(limits, c, d);
    unsigned long moving = static_cast<unsigned long>(limits.GetEnd());
    if (!(dwState & (BC_TE_MOUSE_SELECTING | BC_TE_EXTENDED_SEL)) && moving != dwCaret) {
        unsigned long top = dwPageTop;
        SetTextPos(moving, -1);
        if (dwPageTop != top) {
            lmSel = limits;
            Invalidate(nullptr, 1);
            Update();
            CaretOn();
            return;
        }
    }
    if (a != c || b != d) {
        HeldDC dc(this);
        if (a == b) {
            PutFrag(c, d, 1);
        } else {
            lmSel = limits; // the redrawn parts show the new state
            PutFrag(a, Min(b, c), 0);
            PutFrag(Max(a, d), b, 0);
            PutFrag(c, Min(d, a), 1);
            PutFrag(Max(c, b), d, 1);
        }
    }
    lmSel = limits;
    CaretOn();
}

// ---- window events ----

void BCTextEdit::ComputeTextRect() {
    BCRectangle c = GetClientRect();
    BCSize h = CharSize();
    short dy = static_cast<short>(h.GetHeight() / 4);
    if (!(GetDeviceFlags() & BC_DEV_TOP_DOWN))
        dy = static_cast<short>(-dy);
    rcText.Set(static_cast<short>(c.GetLeft() + h.GetWidth()), static_cast<short>(c.GetTop() + dy),
               static_cast<short>(c.GetRight() - h.GetWidth() / 2),
               static_cast<short>(c.GetBottom() - dy));
    SetTabOrigin(rcText.GetLeft());
}

LRESULT BCTextEdit::Initialize(BCEvent* e) {
    ComputeTextRect();
    SetScrollRange(1);
    SetIntCaretPos(0);
    return DefaultEvent(e);
}

LRESULT BCTextEdit::ReSize(BCEvent*) {
    ComputeTextRect();
    dwPageEnd = dwPageTop;
    blDirty = 1;
    SetTextPos(dwCaret, -1);
    CaretOn();
    return 0;
}

unsigned long BCTextEdit::ScrollTarget(BCEvent* e) {
    // Far moves go by line number, which the text answers without walking the lines between.
    long page = static_cast<long>(LinesShown() * 3 / 4);
    switch (e->GetScrollType()) {
    case SB_LINEUP:
        return opText->GetLineRelOfs(dwPageTop, -1);
    case SB_LINEDOWN:
        return opText->GetLineRelOfs(dwPageTop, 1);
    case SB_PAGEUP:
        return opText->GetLineRelOfs(dwPageTop, -page);
    case SB_PAGEDOWN:
        return opText->GetLineRelOfs(dwPageTop, page);
    case SB_THUMBPOSITION: {
        unsigned long ofs = opText->GetLineOfs(static_cast<unsigned long>(e->GetThumbPos()));
        return ofs == 0xFFFFFFFFul ? GetTextLen() : ofs;
    }
    case SB_TOP:
        return 0;
    case SB_BOTTOM:
        return GetTextLen();
    default:
        return 0xFFFFFFFFul;
    }
}

LRESULT BCTextEdit::VertScroll(BCEvent* e) {
    unsigned long target = opText ? ScrollTarget(e) : 0xFFFFFFFFul;
    if (target == 0xFFFFFFFFul)
        return 0;
    dwState |= BC_TE_IN_SCROLL_BAR;
    SetPagePos(target);
    dwState &= ~static_cast<unsigned long>(BC_TE_IN_SCROLL_BAR);
    // The bar was left alone while it spoke; now its thumb shows where the page went.
    if (HasVertBar())
        SetVertThumb(static_cast<int>(dwFirstLine));
    return 0;
}

LRESULT BCTextEdit::HorizScroll(BCEvent* e) {
    int unit = GetChrWidth('H');
    int x = GetOrigin().GetX();
    switch (e->GetScrollType()) {
    case SB_LINELEFT:
        x -= unit;
        break;
    case SB_LINERIGHT:
        x += unit;
        break;
    case SB_PAGELEFT:
        x -= 8 * unit;
        break;
    case SB_PAGERIGHT:
        x += 8 * unit;
        break;
    case SB_THUMBPOSITION:
        x = e->GetThumbPos() * unit;
        break;
    case SB_TOP:
        x = 0;
        break;
    default:
        return 0;
    }
    short nx = static_cast<short>(x);
    SetOrigin(BCPosition(nx < 0 ? 0 : nx, GetOrigin().GetY()));
    CaretOff();
    SetIntCaretPos(dwCaret);
    Invalidate(nullptr, 1);
    Update();
    CaretOn();
    return 0;
}
