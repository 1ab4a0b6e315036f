#include <windows.h>

#include <memory>
#include <new>

#include "bcgdi.h"
#include "bcids1.h"
#include "bcplatform.h"
#include "bcstream.h"

namespace {

int IsValidStyle(unsigned int kind, unsigned int style) {
    switch (kind) {
    case BC_BRUSH_SOLID:
    case BC_BRUSH_PATTERN:
        return style == 0;
    case BC_BRUSH_HATCHED:
        return style <= BC_HATCH_DIAGCROSS;
    case BC_BRUSH_STOCK:
        return style <= BC_STOCK_CLEAR;
    default:
        return 0;
    }
}

// A copy of `bitmap`'s picture, or null when there is none.
BCBitmap* CopyPicture(const BCBitmap* bitmap, BCModule* module) {
    if (!bitmap || bitmap->IsEmpty())
        return nullptr;
    BCSize size = bitmap->GetSize();
    std::unique_ptr<unsigned long[]> pixels(
        new (std::nothrow) unsigned long[size.GetWidth() * size.GetHeight()]);
    BCBitmap* copy = new (std::nothrow) BCBitmap(module);
    if (!pixels || !copy || !bitmap->GetPixels(pixels.get()) ||
        !copy->SetPixels(size.GetWidth(), size.GetHeight(), pixels.get())) {
        delete copy;
        return nullptr;
    }
    return copy;
}
} // namespace

BCBrush::BCBrush(BCModule* module)
    : BCGdiObject(bcids::kTypeBrush, module), wKind(BC_BRUSH_STOCK), wStyle(BC_STOCK_CLEAR),
      opPattern(nullptr) {
    Make();
}

BCBrush::BCBrush(const BCColor& color, BCModule* module)
    : BCGdiObject(bcids::kTypeBrush, module), wKind(BC_BRUSH_SOLID), wStyle(0), crColor(color),
      opPattern(nullptr) {
    Make();
}

BCBrush::BCBrush(BCHatchStyle hatch, const BCColor& color, BCModule* module)
    : BCGdiObject(bcids::kTypeBrush, module), wKind(BC_BRUSH_HATCHED),
      wStyle(hatch <= BC_HATCH_DIAGCROSS ? hatch : BC_HATCH_CROSS), crColor(color),
      opPattern(nullptr) {
    Make();
}

BCBrush::BCBrush(BCBitmap* pattern, BCModule* module)
    : BCGdiObject(bcids::kTypeBrush, module), wKind(BC_BRUSH_PATTERN), wStyle(0),
      opPattern(CopyPicture(pattern, module)) {
    if (!opPattern)
        wKind = BC_BRUSH_STOCK, wStyle = BC_STOCK_CLEAR;
    Make();
}

BCBrush::BCBrush(BCStockBrush stock, BCModule* module)
    : BCGdiObject(bcids::kTypeBrush, module), wKind(BC_BRUSH_STOCK),
      wStyle(stock <= BC_STOCK_CLEAR ? stock : BC_STOCK_CLEAR), opPattern(nullptr) {
    Make();
}

BCBrush::~BCBrush() {
    // The platform brush goes before the picture it was made from.
    SetObjectHandle(nullptr, 0);
    delete opPattern;
}

int BCBrush::Make() {
    HBRUSH brush = nullptr;
    switch (wKind) {
    case BC_BRUSH_SOLID:
        brush = BCTraced(CreateSolidBrush(crColor.GetCOLORREF()), "CreateSolidBrush");
        break;
    case BC_BRUSH_HATCHED:
        if (!(brush = BCTraced(CreateHatchBrush(static_cast<int>(wStyle), crColor.GetCOLORREF()),
                               "CreateHatchBrush")))
            DispObjectMsg(bcids::kMsgHatchBrushFailed, wStyle);
        break;
    case BC_BRUSH_PATTERN:
        if (!(brush = BCTraced(CreatePatternBrush(static_cast<HBITMAP>(
                                   opPattern ? opPattern->GetHandle() : nullptr)),
                               "CreatePatternBrush")))
            DispObjectMsg(bcids::kMsgPatternBrushFailed);
        break;
    case BC_BRUSH_STOCK:
        if (!(brush = static_cast<HBRUSH>(GetStockObject(static_cast<int>(wStyle)))))
            DispObjectMsg(bcids::kMsgStockBrushFailed, wStyle);
        SetObjectHandle(brush, 0);
        return brush != nullptr;
    }
    SetObjectHandle(brush, 1);
    return brush != nullptr;
}

void BCBrush::SetPattern(BCBitmap* pattern) {
    SetObjectHandle(nullptr, 0);
    delete opPattern;
    opPattern = pattern;
}

int BCBrush::Load(std::istream& is) {
    unsigned int kind = 0, style = 0;
    BCColor color;
    if (!BCObject::Load(is) || !BCLoadWord(is, kind) || !BCLoadWord(is, style) || !color.Load(is) ||
        !IsValidStyle(kind, style))
        return 0;
    BCBitmap* pattern = nullptr;
    if (kind == BC_BRUSH_PATTERN) {
        pattern = new (std::nothrow) BCBitmap(opModule);
        if (!pattern || !pattern->Load(is) || pattern->IsEmpty()) {
            delete pattern;
            return 0;
        }
    }
    SetPattern(pattern);
    wKind = static_cast<BCBrushKind>(kind);
    wStyle = style;
    crColor = color;
    return Make();
}

int BCBrush::Save(std::ostream& os) {
    if (!BCObject::Save(os) || !BCSaveWord(os, wKind) || !BCSaveWord(os, wStyle) ||
        !crColor.Save(os))
        return 0;
    return wKind != BC_BRUSH_PATTERN || opPattern->Save(os);
}

void BCBrush::Display(const char* prefix) {
    DispObjectMsg("%swKind=%u, wStyle=%u, dwRGB=%06lx", prefix ? prefix : "", wKind, wStyle,
                  crColor.GetCOLORREF());
}
