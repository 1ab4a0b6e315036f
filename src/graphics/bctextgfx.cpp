#include "bctextgfx.h"

#include <cstring>
#include <istream>
#include <new>
#include <ostream>

#include "bcdevice.h"
#include "bcfont.h"
#include "bcstream.h"
#include "bcmemory.h"
#include "bcids2.h"
#include "bcgdi.h"
#include "bclib2.h"

namespace {

// The device's own colours and mode are used as they stand.
constexpr unsigned int kModeDevice = 4;

// Style bits of a font in drawing records.
enum : unsigned char { kBold = 1, kLight = 2, kItalic = 4, kUnderline = 8, kStrikeOut = 16 };

// Drawing records add the font: a presence mark, then face, width, height and style bits.
int SaveFont(std::ostream& os, BCFont* font) {
    if (!BCSavePtr(os, font))
        return 0;
    if (!font)
        return 1;
    const BCSize size = font->GetSize();
    const unsigned char style = static_cast<unsigned char>(
        (font->IsBold() ? kBold : 0) | (font->IsLight() ? kLight : 0) |
        (font->IsItalic() ? kItalic : 0) | (font->IsUnderline() ? kUnderline : 0) |
        (font->IsStrikeOut() ? kStrikeOut : 0));
    return BCSaveStringPtr(os, font->GetFontName()) &&
           BCSaveWord(os, static_cast<unsigned short>(size.GetWidth())) &&
           BCSaveWord(os, static_cast<unsigned short>(size.GetHeight())) && BCSaveByte(os, style);
}

// The font made is handed to the stream's keeper; null with `ok` 0 when the record is bad.
BCFont* LoadFont(std::istream& is, int& ok) {
    void* mark = nullptr;
    ok = BCLoadPtr(is, mark);
    if (!ok || !mark)
        return nullptr;
    char* face = nullptr;
    unsigned int width = 0, height = 0;
    unsigned char style = 0;
    ok = BCLoadStringPtr(is, face) && BCLoadWord(is, width) && BCLoadWord(is, height) &&
         BCLoadByte(is, style);
    BCFont* font = ok ? new (std::nothrow) BCFont(face, BCGetDLLModule2()) : nullptr;
    delete[] face;
    BCKeepLoaded(is, font);
    if (!font) {
        ok = 0;
        return nullptr;
    }
    font->SetSize(BCSize(static_cast<short>(width), static_cast<short>(height)));
    font->SetBold(style & kBold);
    font->SetLight(style & kLight);
    font->SetItalic(style & kItalic);
    font->SetUnderline(style & kUnderline);
    font->SetStrikeOut(style & kStrikeOut);
    return font;
}

} // namespace

BCTextGraphic::BCTextGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                             const char* text)
    : BCGraphicObject(bcids::kTypeTextGraphic, id, pos, size), lpText(nullptr),
      crFore(BC_COLOR_BLACK), crBack(BC_COLOR_WHITE), wBackMode(kModeDevice), opFont(nullptr) {
    SetText(text);
}

BCTextGraphic::BCTextGraphic()
    : BCGraphicObject(bcids::kTypeTextGraphic), lpText(nullptr), crFore(BC_COLOR_BLACK),
      crBack(BC_COLOR_WHITE), wBackMode(kModeDevice), opFont(nullptr) {}

BCTextGraphic::~BCTextGraphic() {
    delete[] lpText;
}

int BCTextGraphic::SetText(const char* text) {
    if (!text) {
        delete[] lpText;
        lpText = nullptr;
        return 1;
    }
    const size_t size = std::strlen(text) + 1;
    // Same length: reuse the storage so that pointers to it stay valid.
    if (lpText && std::strlen(lpText) + 1 == size) {
        std::memmove(lpText, text, size);
        return 1;
    }
    // Copied before the old text goes, which `text` may point into.
    char* copy = new (std::nothrow) char[size];
    if (copy)
        std::memcpy(copy, text, size);
    delete[] lpText;
    lpText = copy;
    return copy != nullptr;
}

BCColor BCTextGraphic::SetForeColor(const BCColor& color) {
    BCColor old = crFore;
    crFore = color;
    return old;
}

BCColor BCTextGraphic::SetBackColor(const BCColor& color) {
    BCColor old = crBack;
    crBack = color;
    return old;
}

unsigned int BCTextGraphic::SetBackMode(unsigned int mode) {
    unsigned int old = wBackMode;
    wBackMode = mode;
    return old;
}

BCFont* BCTextGraphic::SetFont(BCFont* font) {
    BCFont* old = opFont;
    opFont = font;
    return old;
}

int BCTextGraphic::Draw(BCDisplayDevice* dev) {
    if (!lpText || !dev)
        return 0;
    BCFont* oldFont = opFont ? dev->SetFont(opFont) : nullptr;
    const BCPosition at(coX, coY);
    int result;
    if (wBackMode == kModeDevice) {
        result = dev->PosStr(at, lpText);
    } else {
        BCColor oldText = dev->SetTextColor(crFore);
        BCColor oldBack = dev->SetBackColor(crBack);
        unsigned int oldMode = dev->SetBackMode(wBackMode);
        result = dev->PosStr(at, lpText);
        dev->SetTextColor(oldText);
        dev->SetBackColor(oldBack);
        dev->SetBackMode(oldMode);
    }
    if (opFont)
        dev->SetFont(oldFont);
    return result;
}

int BCTextGraphic::UnDraw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    dev->Clear(BCRectangle(coX, coY, static_cast<short>(coX + coW), static_cast<short>(coY + coH)));
    return 1;
}

int BCTextGraphic::Save(std::ostream& os) {
    return BCGraphicObject::Save(os) && BCSaveStringPtr(os, lpText) && crFore.Save(os) &&
           crBack.Save(os) && BCSaveWord(os, wBackMode) &&
           (!BCIsDrawingRecords(os) || SaveFont(os, opFont));
}

int BCTextGraphic::Load(std::istream& is) {
    if (!BCGraphicObject::Load(is))
        return 0;
    char* text = nullptr;
    if (!BCLoadStringPtr(is, text)) {
        delete[] text;
        return 0;
    }
    delete[] lpText;
    lpText = text;
    if (!crFore.Load(is) || !crBack.Load(is) || !BCLoadWord(is, wBackMode))
        return 0;
    if (!BCIsDrawingRecords(is))
        return 1;
    int ok = 0;
    opFont = LoadFont(is, ok);
    return ok;
}

BCBitmapGraphic::BCBitmapGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                                 BCBitmap* bitmap, unsigned long rasterOp)
    : BCGraphicObject(bcids::kTypeBitmapGraphic, id, pos, size), opBitmap(bitmap),
      dwRasterOp(rasterOp) {}

BCBitmapGraphic::BCBitmapGraphic()
    : BCGraphicObject(bcids::kTypeBitmapGraphic), opBitmap(nullptr), dwRasterOp(BC_ROP_COPY) {}

BCBitmapGraphic::~BCBitmapGraphic() = default;

BCBitmap* BCBitmapGraphic::SetBitmap(BCBitmap* bitmap) {
    BCBitmap* old = opBitmap;
    opBitmap = bitmap;
    return old;
}

unsigned long BCBitmapGraphic::SetRasterOp(unsigned long rasterOp) {
    unsigned long old = dwRasterOp;
    dwRasterOp = rasterOp;
    return old;
}

// The device copes with a null bitmap, so it is not checked here.
int BCBitmapGraphic::Draw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    dev->PutBitmap(BCPosition(coX, coY), BCSize(coW, coH), opBitmap,
                   static_cast<unsigned int>(dwRasterOp));
    return 1;
}

int BCBitmapGraphic::UnDraw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    dev->PutBitmap(BCPosition(coX, coY), BCSize(coW, coH), opBitmap, BC_ROP_ERASE);
    return 1;
}

int BCBitmapGraphic::Save(std::ostream& os) {
    if (!BCGraphicObject::Save(os))
        return 0;
    if (!opBitmap) {
        opBitmap = new (std::nothrow) BCBitmap(BCGetDLLModule2());
        if (!opBitmap)
            return 0;
    }
    return opBitmap->Save(os) && BCSaveDblWord(os, dwRasterOp);
}

int BCBitmapGraphic::Load(std::istream& is) {
    if (!BCGraphicObject::Load(is))
        return 0;
    if (!opBitmap) {
        opBitmap = new (std::nothrow) BCBitmap(BCGetDLLModule2());
        if (!opBitmap)
            return 0;
        BCKeepLoaded(is, opBitmap);
    }
    return opBitmap->Load(is) && BCLoadDblWord(is, dwRasterOp);
}
