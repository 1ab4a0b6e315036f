#include "bcdevice.h"

#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <new>

#include "bcfont.h"
#include "bcgdi.h"
#include "bcids1.h"
#include "devices/bcdcscope.h"
#include "bcplatform.h"

BCDevice::BCDevice(unsigned int typeCode, BCModule* module)
    : BCObject(typeCode), hDC(nullptr), wSelectCount(0), wFailedSelects(0),
      dwDevFlags(BC_DEV_TOP_DOWN), opModule(module) {}

BCDevice::~BCDevice() {}

void BCDevice::Display(const char* prefix) {
    DispObjectMsg("%shDC=%p, wSelectCount=%u, dwDevFlags=%08lx", prefix ? prefix : "", hDC,
                  wSelectCount, dwDevFlags);
}

void* BCDevice::GetDeviceDC() {
    return nullptr;
}

int BCDevice::ReleaseDeviceDC(void*) {
    return 1;
}

void BCDevice::AttachDCState(void*) {}

void BCDevice::DetachDCState(void*) {}

int BCDevice::OpenDC() {
    // A device with nothing to draw on gives null without a platform error: that is the
    // no-window result, not a fault.
    SetLastError(0);
    hDC = GetDeviceDC();
    if (hDC) {
        AttachDCState(hDC);
        return 1;
    }
    if (GetLastError()) {
        BCTraceFailure("GetDeviceDC");
        DispObjectMsg(bcids::kMsgSelectNoDC);
    }
    ++wFailedSelects;
    return 0;
}

int BCDevice::SelectDC() {
    if (wSelectCount == 0) {
        if (hDC) { // a context without a selection: the bookkeeping is broken
            DispObjectMsg(bcids::kMsgSelectNesting1);
            return 0;
        }
        if (!OpenDC())
            return 0;
    } else if (!hDC) {
        DispObjectMsg(bcids::kMsgSelectNesting2);
        return 0;
    }
    ++wSelectCount;
    return 1;
}

int BCDevice::ReleaseDC() {
    if (wSelectCount == 0 && wFailedSelects) { // the pair of a select that found no context
        --wFailedSelects;
        return 0;
    }
    if (wSelectCount == 0) {
        DispObjectMsg(bcids::kMsgReleaseNesting1);
        return 0;
    }
    if (!hDC) {
        DispObjectMsg(bcids::kMsgReleaseNesting2);
        return 0;
    }
    if (--wSelectCount == 0) {
        void* dc = hDC;
        DetachDCState(dc);
        hDC = nullptr;
        return ReleaseDeviceDC(dc);
    }
    return 1;
}

unsigned long BCDevice::SetDeviceFlags(unsigned long bits, int on) {
    unsigned long previous = dwDevFlags;
    dwDevFlags = on ? (dwDevFlags | bits) : (dwDevFlags & ~bits);
    return previous;
}

void BCDevice::AdoptDC(void* dc) {
    hDC = dc;
    wSelectCount = 1;
    if (dc)
        AttachDCState(dc);
}

void* BCDevice::DropDC() {
    void* dc = hDC;
    if (dc)
        DetachDCState(dc);
    hDC = nullptr;
    wSelectCount = 0;
    return dc;
}

// ---- display device: settings ----

BCDisplayDevice::BCDisplayDevice(unsigned int typeCode, BCModule* module)
    : BCDevice(typeCode, module), opPen(BCGetBlackPen()), opBrush(BCGetWhiteBrush()),
      opFont(nullptr), opBackground(nullptr), crText(BC_COLOR_BLACK), crBack(BC_COLOR_WHITE),
      wBackMode(BC_BACK_OPAQUE), coTabWidth(0), coTabOrigin(0), coAutoTabWidth(0),
      hTabFont(nullptr), coCrntX(0), coCrntY(0), coOrgX(0), coOrgY(0), hOrigPen(nullptr),
      hOrigBrush(nullptr), hOrigFont(nullptr), hSelFont(nullptr) {}

BCDisplayDevice::~BCDisplayDevice() {}

void BCDisplayDevice::Display(const char* prefix) {
    DispObjectMsg("%shDC=%p, opPen=%p, opBrush=%p, opFont=%p, opBackground=%p, dwText=%06lx, "
                  "dwBack=%06lx, wBackMode=%u, coTabWidth=%d, coTabOrigin=%d, coOrgX=%d, coOrgY=%d",
                  prefix ? prefix : "", hDC, static_cast<void*>(opPen), static_cast<void*>(opBrush),
                  static_cast<void*>(opFont), static_cast<void*>(opBackground),
                  crText.GetCOLORREF(), crBack.GetCOLORREF(), wBackMode, coTabWidth, coTabOrigin,
                  coOrgX, coOrgY);
}

void* BCDisplayDevice::PenHandle() const {
    return opPen && opPen->GetHandle() ? opPen->GetHandle() : hOrigPen;
}

void* BCDisplayDevice::BrushHandle() const {
    return opBrush && opBrush->GetHandle() ? opBrush->GetHandle() : hOrigBrush;
}

void* BCDisplayDevice::FontHandle() const {
    return opFont && opFont->GetHandle() ? opFont->GetHandle() : hOrigFont;
}

namespace {
// The objects stay selected past this call (until the context is detached), so no scope fits.
void Select(HDC dc, void* object) {
    if (dc && object && !SelectObject(dc, static_cast<HGDIOBJ>(object)))
        BCTraceFailure("SelectObject");
}

void SelectIfOther(HDC dc, void* wanted, void* current) {
    if (wanted != current)
        Select(dc, wanted);
}
} // namespace

void BCDisplayDevice::SelectHandle(void* handle, void* fallback) {
    Select(static_cast<HDC>(hDC), handle ? handle : fallback);
}

void BCDisplayDevice::ApplyOrigin() {
    if (hDC && !SetWindowOrgEx(static_cast<HDC>(hDC), coOrgX, coOrgY, nullptr))
        BCTraceFailure("SetWindowOrgEx");
}

void BCDisplayDevice::AttachDCState(void* dc) {
    HDC h = static_cast<HDC>(dc);
    hOrigPen = GetCurrentObject(h, OBJ_PEN);
    hOrigBrush = GetCurrentObject(h, OBJ_BRUSH);
    hOrigFont = GetCurrentObject(h, OBJ_FONT);
    // Selecting costs the platform real work (a font most of all) even when nothing changes,
    // and erasing a list attaches once per object: select only what differs.
    SelectIfOther(h, PenHandle(), hOrigPen);
    SelectIfOther(h, BrushHandle(), hOrigBrush);
    hSelFont = FontHandle();
    SelectIfOther(h, hSelFont, hOrigFont);
    ::SetTextColor(h, crText.GetCOLORREF());
    ::SetBkColor(h, crBack.GetCOLORREF());
    ::SetBkMode(h, static_cast<int>(wBackMode));
    MoveToEx(h, coCrntX, coCrntY, nullptr);
    ApplyOrigin();
}

// Our objects leave the context so that their owners can delete them once it is gone.
void BCDisplayDevice::DetachDCState(void* dc) {
    HDC h = static_cast<HDC>(dc);
    SelectIfOther(h, hOrigPen, PenHandle());
    SelectIfOther(h, hOrigBrush, BrushHandle());
    SelectIfOther(h, hOrigFont, hSelFont);
    hOrigPen = hOrigBrush = hOrigFont = hSelFont = nullptr;
    BCGdiHandle::DeleteReleasedHandles();
}

void BCDisplayDevice::FollowFont() {
    void* font = FontHandle();
    if (!hDC || font == hSelFont)
        return;
    Select(static_cast<HDC>(hDC), font);
    hSelFont = font;
    BCGdiHandle::DeleteReleasedHandles();
}

BCPen* BCDisplayDevice::SetPen(BCPen* pen) {
    BCPen* previous = opPen;
    if (!pen)
        pen = BCGetBlackPen();
    if (pen != opPen) {
        opPen = pen;
        SelectHandle(pen->GetHandle(), hOrigPen);
    }
    return previous;
}

BCBrush* BCDisplayDevice::SetBrush(BCBrush* brush) {
    BCBrush* previous = opBrush;
    if (!brush)
        brush = BCGetWhiteBrush();
    if (brush != opBrush) {
        opBrush = brush;
        SelectHandle(brush->GetHandle(), hOrigBrush);
    }
    return previous;
}

BCFont* BCDisplayDevice::SetFont(BCFont* font) {
    BCFont* previous = opFont;
    opFont = font;
    SelectHandle(font ? font->GetHandle() : nullptr, hOrigFont);
    if (hDC)
        hSelFont = FontHandle();
    return previous;
}

BCColor BCDisplayDevice::SetTextColor(const BCColor& color) {
    BCColor previous = crText;
    crText = color;
    if (hDC)
        ::SetTextColor(static_cast<HDC>(hDC), color.GetCOLORREF());
    return previous;
}

BCColor BCDisplayDevice::SetBackColor(const BCColor& color) {
    BCColor previous = crBack;
    crBack = color;
    if (hDC)
        ::SetBkColor(static_cast<HDC>(hDC), color.GetCOLORREF());
    return previous;
}

unsigned int BCDisplayDevice::SetBackMode(unsigned int mode) {
    unsigned int previous = wBackMode;
    if ((mode == BC_BACK_TRANSPARENT || mode == BC_BACK_OPAQUE) && mode != wBackMode) {
        wBackMode = mode;
        if (hDC)
            ::SetBkMode(static_cast<HDC>(hDC), static_cast<int>(mode));
    }
    return previous;
}

BCBrush* BCDisplayDevice::SetBackground(BCBrush* brush) {
    BCBrush* previous = opBackground;
    opBackground = brush;
    return previous;
}

short BCDisplayDevice::SetTabWidth(short width) {
    short previous = coTabWidth;
    coTabWidth = width > 0 ? width : 0;
    return previous;
}

short BCDisplayDevice::SetTabOrigin(short x) {
    short previous = coTabOrigin;
    coTabOrigin = x;
    return previous;
}

BCPosition BCDisplayDevice::SetOrigin(const BCPosition& origin) {
    BCPosition previous = GetOrigin();
    coOrgX = origin.GetX();
    coOrgY = origin.GetY();
    ApplyOrigin();
    return previous;
}

// ---- display device: drawing ----

namespace {
// The stock object that takes the pen or the brush out for a shape drawn in outline or
// interior mode; null for the filled mode.
HGDIOBJ ModeObject(unsigned int mode) {
    if (mode == BC_DRAW_OUTLINE)
        return GetStockObject(NULL_BRUSH);
    return mode == BC_DRAW_INTERIOR ? GetStockObject(NULL_PEN) : nullptr;
}

// Puts the mode's stock object in for one shape.
class ModeScope {
  public:
    ModeScope(HDC dc, unsigned int mode)
        : m_selection(dc, ModeObject(mode)),
          m_valid(dc && mode >= BC_DRAW_OUTLINE && mode <= BC_DRAW_INTERIOR) {}
    bool valid() const { return m_valid; }

  private:
    BCSelection m_selection;
    bool m_valid;
};

// Point buffer of the point-list shapes, grown as needed and kept: large scenes draw many
// of them, and drawing is single-threaded.
POINT* PointBuffer(unsigned int count) {
    static POINT* points = nullptr;
    static unsigned int capacity = 0;
    if (count > capacity) {
        POINT* grown = new (std::nothrow) POINT[count];
        if (!grown)
            return nullptr;
        delete[] points;
        points = grown;
        capacity = count;
    }
    return points;
}

// The memory context that bitmaps are drawn from; one serves every device.
HDC BlitDC() {
    static HDC dc = BCTraced(CreateCompatibleDC(nullptr), "CreateCompatibleDC");
    return dc;
}

DWORD PlatformRop(unsigned int rasterOp) {
    switch (rasterOp) {
    case BC_ROP_COPY:
        return SRCCOPY;
    case BC_ROP_OR:
        return SRCPAINT;
    case BC_ROP_AND:
        return SRCAND;
    case BC_ROP_XOR:
        return SRCINVERT;
    case BC_ROP_INVERTCOPY:
        return NOTSRCCOPY;
    case BC_ROP_INVERT:
        return DSTINVERT;
    default:
        return 0;
    }
}

int FloorMod(int value, int divisor) {
    int m = value % divisor;
    return m < 0 ? m + divisor : m;
}
} // namespace

int BCDisplayDevice::MoveTo(const BCPosition& pos) {
    coCrntX = pos.GetX();
    coCrntY = pos.GetY();
    return !hDC || MoveToEx(static_cast<HDC>(hDC), coCrntX, coCrntY, nullptr);
}

int BCDisplayDevice::LineTo(const BCPosition& pos) {
    BCDCScope scope(this);
    if (!scope.dc() || !BCTraced(::LineTo(scope.dc(), pos.GetX(), pos.GetY()), "LineTo"))
        return 0;
    coCrntX = pos.GetX();
    coCrntY = pos.GetY();
    return 1;
}

int BCDisplayDevice::PutRect(const BCRectangle& r, unsigned int mode) {
    BCDCScope scope(this);
    ModeScope shape(scope.dc(), mode);
    return shape.valid() &&
           Rectangle(scope.dc(), r.GetLeft(), r.GetTop(), r.GetRight(), r.GetBottom());
}

int BCDisplayDevice::PutEllipse(const BCRectangle& r, unsigned int mode) {
    BCDCScope scope(this);
    ModeScope shape(scope.dc(), mode);
    return shape.valid() &&
           Ellipse(scope.dc(), r.GetLeft(), r.GetTop(), r.GetRight(), r.GetBottom());
}

int BCDisplayDevice::PutCircle(const BCRectangle& r, unsigned int mode) {
    int width = r.GetRight() - r.GetLeft(), height = r.GetBottom() - r.GetTop();
    int side = abs(width) < abs(height) ? abs(width) : abs(height);
    int left = (r.GetLeft() + r.GetRight() - side) / 2;
    int top = (r.GetTop() + r.GetBottom() - side) / 2;
    return PutEllipse(BCRectangle(static_cast<short>(left), static_cast<short>(top),
                                  static_cast<short>(left + side), static_cast<short>(top + side)),
                      mode);
}

int BCDisplayDevice::PutArc(const BCRectangle& r, const BCPosition& start, const BCPosition& end) {
    BCDCScope scope(this);
    return scope.dc() && Arc(scope.dc(), r.GetLeft(), r.GetTop(), r.GetRight(), r.GetBottom(),
                             start.GetX(), start.GetY(), end.GetX(), end.GetY());
}

int BCDisplayDevice::PutChord(const BCRectangle& r, const BCPosition& start, const BCPosition& end,
                              unsigned int mode) {
    BCDCScope scope(this);
    ModeScope shape(scope.dc(), mode);
    return shape.valid() && Chord(scope.dc(), r.GetLeft(), r.GetTop(), r.GetRight(), r.GetBottom(),
                                  start.GetX(), start.GetY(), end.GetX(), end.GetY());
}

int BCDisplayDevice::PutPie(const BCRectangle& r, const BCPosition& start, const BCPosition& end,
                            unsigned int mode) {
    BCDCScope scope(this);
    ModeScope shape(scope.dc(), mode);
    return shape.valid() && Pie(scope.dc(), r.GetLeft(), r.GetTop(), r.GetRight(), r.GetBottom(),
                                start.GetX(), start.GetY(), end.GetX(), end.GetY());
}

int BCDisplayDevice::PutPoints(const BCPolyline* line, const BCPosition& offset, int closed) {
    unsigned int count = line ? line->GetPointCount() : 0;
    if (count < 2)
        return 0;
    BCDCScope scope(this);
    POINT* points = PointBuffer(count);
    if (!scope.dc() || !points)
        return 0;
    const short* xy = line->GetPoints();
    for (unsigned int i = 0; i < count; ++i) {
        points[i].x = static_cast<short>(xy[2 * i] + offset.GetX());
        points[i].y = static_cast<short>(xy[2 * i + 1] + offset.GetY());
    }
    int n = static_cast<int>(count);
    return closed ? Polygon(scope.dc(), points, n) : Polyline(scope.dc(), points, n);
}

int BCDisplayDevice::PutPolyline(const BCPolyline* line, const BCPosition& offset) {
    return PutPoints(line, offset, 0);
}

int BCDisplayDevice::PutPolygon(const BCPolyline* line, const BCPosition& offset) {
    return PutPoints(line, offset, 1);
}

int BCDisplayDevice::Clear(const BCRectangle& r) {
    BCDCScope scope(this);
    RECT rect;
    r.ToRECT(&rect);
    void* brush = opBackground ? opBackground->GetHandle() : nullptr;
    return scope.dc() && FillRect(scope.dc(), &rect,
                                  static_cast<HBRUSH>(brush ? brush : GetStockObject(WHITE_BRUSH)));
}

int BCDisplayDevice::PutBitmap(const BCPosition& pos, const BCSize& size, BCBitmap* bitmap,
                               unsigned int rasterOp) {
    BCSize picture = bitmap ? bitmap->GetSize() : BCSize();
    BCSize area = size.GetWidth() || size.GetHeight() ? size : picture;
    if (rasterOp == BC_ROP_ERASE)
        return Clear(BCRectangle(pos, area));
    DWORD rop = PlatformRop(rasterOp);
    if (!rop) {
        DispObjectMsg(bcids::kMsgBadRasterOp, rasterOp);
        return 0;
    }
    if (rasterOp == BC_ROP_INVERT) {
        BCDCScope scope(this);
        return scope.dc() && PatBlt(scope.dc(), pos.GetX(), pos.GetY(), area.GetWidth(),
                                    area.GetHeight(), DSTINVERT);
    }
    if (!bitmap || bitmap->IsEmpty())
        return 1;
    HDC source = BlitDC();
    if (!source) {
        DispObjectMsg(bcids::kMsgNoMemoryDC);
        return 0;
    }
    BCDCScope scope(this);
    if (!scope.dc())
        return 0;
    BCSelection picked(source, static_cast<HGDIOBJ>(bitmap->GetHandle()));
    BOOL done = area == picture ? BitBlt(scope.dc(), pos.GetX(), pos.GetY(), area.GetWidth(),
                                         area.GetHeight(), source, 0, 0, rop)
                                : StretchBlt(scope.dc(), pos.GetX(), pos.GetY(), area.GetWidth(),
                                             area.GetHeight(), source, 0, 0, picture.GetWidth(),
                                             picture.GetHeight(), rop);
    return BCTraced(done, area == picture ? "BitBlt" : "StretchBlt") != 0;
}

// ---- display device: text ----

short BCDisplayDevice::GetTabWidth() {
    if (coTabWidth > 0)
        return coTabWidth;
    BCDCScope scope(this);
    if (!scope.dc())
        return 0;
    FollowFont();
    void* font = FontHandle();
    if (font != hTabFont || coAutoTabWidth <= 0) {
        TEXTMETRICA metrics;
        if (!GetTextMetricsA(scope.dc(), &metrics) || metrics.tmAveCharWidth <= 0)
            return 0;
        coAutoTabWidth = static_cast<short>(8 * metrics.tmAveCharWidth);
        hTabFont = font;
    }
    return coAutoTabWidth;
}

int BCDisplayDevice::TextRuns(void* context, const char* text, int length, int x, int y, int draw) {
    HDC dc = static_cast<HDC>(context);
    FollowFont();
    int tab = 0, height = 0, left = x;
    for (int i = 0; i < length;) {
        if (text[i] != '\t') {
            int n = 0;
            while (i + n < length && text[i + n] != '\t')
                ++n;
            SIZE extent = {};
            GetTextExtentPoint32A(dc, text + i, n, &extent);
            if (draw)
                TextOutA(dc, x, y, text + i, n);
            x += extent.cx;
            height = extent.cy;
            i += n;
            continue;
        }
        if (!tab && (tab = GetTabWidth()) <= 0)
            tab = 1; // no font metrics: a TAB takes no room rather than looping on 0
        int next = x + tab - FloorMod(x - coTabOrigin, tab);
        if (draw && wBackMode == BC_BACK_OPAQUE) {
            if (!height)
                height = GetChrHeight('H');
            RECT gap = {x, y, next, y + height};
            ExtTextOutA(dc, x, y, ETO_OPAQUE, &gap, "", 0, nullptr);
        }
        x = next;
        ++i;
    }
    return x - left;
}

int BCDisplayDevice::PosStr(const BCPosition& pos, const char* text, int length) {
    if (!text)
        return 0;
    BCDCScope scope(this);
    if (!scope.dc())
        return 0;
    if (length < 0)
        length = lstrlenA(text);
    int width = TextRuns(scope.dc(), text, length, pos.GetX(), pos.GetY(), 1);
    return MoveTo(BCPosition(static_cast<short>(pos.GetX() + width), pos.GetY()));
}

bool BCDisplayDevice::PlainBackground(unsigned long& rgb) const {
    const BCBrush* brush = opBackground;
    if (!brush || (brush->GetKind() == BC_BRUSH_STOCK && brush->GetStyle() == BC_STOCK_WHITE)) {
        rgb = RGB(255, 255, 255);
        return true;
    }
    rgb = brush->GetColor().GetCOLORREF();
    return brush->GetKind() == BC_BRUSH_SOLID;
}

int BCDisplayDevice::PosStrInRow(const BCPosition& pos, const char* text, int length,
                                 const BCRectangle& row) {
    BCDCScope scope(this);
    if (!text || !scope.dc())
        return 0;
    const int n = length < 0 ? lstrlenA(text) : length;
    unsigned long plain = 0;
    if (std::find(text, text + n, '\t') != text + n || !PlainBackground(plain) ||
        plain != crBack.GetCOLORREF()) {
        Clear(row);
        return PosStr(pos, text, n);
    }
    // The opaque rectangle paints the row in the back colour, exactly what the clear would.
    FollowFont();
    RECT rect;
    row.ToRECT(&rect);
    SIZE extent = {};
    GetTextExtentPoint32A(scope.dc(), text, n, &extent);
    if (!ExtTextOutA(scope.dc(), pos.GetX(), pos.GetY(), ETO_OPAQUE, &rect, text,
                     static_cast<UINT>(n), nullptr))
        BCTraceFailure("ExtTextOutA");
    return MoveTo(BCPosition(static_cast<short>(pos.GetX() + extent.cx), pos.GetY()));
}

BCSize BCDisplayDevice::GetStrSize(const char* text, int length) {
    BCDCScope scope(this);
    if (!scope.dc() || !text)
        return BCSize();
    if (length < 0)
        length = lstrlenA(text);
    int width = TextRuns(scope.dc(), text, length, coTabOrigin, 0, 0);
    return BCSize(static_cast<short>(width), GetChrHeight('H'));
}

BCSize BCDisplayDevice::CharExtent(unsigned int ch) {
    BCDCScope scope(this);
    if (!scope.dc())
        return BCSize();
    FollowFont();
    char c = static_cast<char>(ch);
    SIZE extent = {};
    GetTextExtentPoint32A(scope.dc(), &c, 1, &extent);
    return BCSize(static_cast<short>(extent.cx), static_cast<short>(extent.cy));
}

short BCDisplayDevice::GetChrWidth(unsigned int ch) {
    return CharExtent(ch).GetWidth();
}

short BCDisplayDevice::GetChrHeight(unsigned int ch) {
    return CharExtent(ch).GetHeight();
}
