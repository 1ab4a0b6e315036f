#include "bcvalues.h"

#include <windows.h>

#include <cstring>
#include <new>

#include "bcformat.h"
#include "bcids1.h"
#include "bcstream.h"

namespace {
const char* Prefix(const char* prefix) {
    return prefix ? prefix : "";
}

char* CopyName(const char* name) {
    if (!name)
        return nullptr;
    char* copy = new (std::nothrow) char[std::strlen(name) + 1];
    if (copy)
        std::strcpy(copy, name);
    return copy;
}
} // namespace

BCPosition::BCPosition(short x, short y) : BCObject(bcids::kTypePosition), coX(x), coY(y) {}

void BCPosition::Display(const char* prefix) {
    DispObjectMsg("%scoX=%d, coY=%d", Prefix(prefix), coX, coY);
}

BCSize::BCSize(short width, short height) : BCObject(bcids::kTypeSize), coW(width), coH(height) {}

void BCSize::Display(const char* prefix) {
    DispObjectMsg("%scoW=%d, coH=%d", Prefix(prefix), coW, coH);
}

BCLimits::BCLimits(long start, long end)
    : BCObject(bcids::kTypeLimits), dwStart(start), dwEnd(end) {}

void BCLimits::Display(const char* prefix) {
    DispObjectMsg("%sdwStart=%ld, dwEnd=%ld", Prefix(prefix), dwStart, dwEnd);
}

BCRectangle::BCRectangle(short left, short top, short right, short bottom)
    : BCObject(bcids::kTypeRectangle), coLeft(left), coTop(top), coRight(right), coBottom(bottom) {}

BCRectangle::BCRectangle(const BCPosition& pos, const BCSize& size)
    : BCObject(bcids::kTypeRectangle), coLeft(pos.GetX()), coTop(pos.GetY()),
      coRight(static_cast<short>(pos.GetX() + size.GetWidth())),
      coBottom(static_cast<short>(pos.GetY() + size.GetHeight())) {}

void BCRectangle::Set(short left, short top, short right, short bottom) {
    coLeft = left, coTop = top, coRight = right, coBottom = bottom;
}

bool BCRectangle::Contains(const BCPosition& pos) const {
    return pos.GetX() >= coLeft && pos.GetX() < coRight && pos.GetY() >= coTop &&
           pos.GetY() < coBottom;
}

bool BCRectangle::operator==(const BCRectangle& o) const {
    return coLeft == o.coLeft && coTop == o.coTop && coRight == o.coRight && coBottom == o.coBottom;
}

void BCRectangle::ToRECT(void* rect) const {
    if (RECT* r = static_cast<RECT*>(rect))
        *r = RECT{coLeft, coTop, coRight, coBottom};
}

BCRectangle BCRectangle::FromRECT(const void* rect) {
    const RECT* r = static_cast<const RECT*>(rect);
    if (!r)
        return BCRectangle();
    return BCRectangle(static_cast<short>(r->left), static_cast<short>(r->top),
                       static_cast<short>(r->right), static_cast<short>(r->bottom));
}

void BCRectangle::Display(const char* prefix) {
    DispObjectMsg("%scoLeft=%d, coTop=%d, coRight=%d, coBottom=%d", Prefix(prefix), coLeft, coTop,
                  coRight, coBottom);
}

const BCPosition& BCGetNullPos() {
    static const BCPosition nullPos;
    return nullPos;
}

const BCSize& BCGetNullSize() {
    static const BCSize nullSize;
    return nullSize;
}

const BCLimits& BCGetNullLimits() {
    static const BCLimits nullLimits;
    return nullLimits;
}

const BCRectangle& BCGetNullRect() {
    static const BCRectangle nullRect;
    return nullRect;
}

BCColor::BCColor(unsigned char red, unsigned char green, unsigned char blue)
    : BCObject(bcids::kTypeColor),
      dwRGB(red | (green << 8) | (static_cast<unsigned long>(blue) << 16)) {}

BCColor::BCColor(BCColorConst constant) : BCObject(bcids::kTypeColor), dwRGB(0) {
    // As COLORREF values, 0x00BBGGRR.
    static const unsigned long rgb[BC_COLOR_CONSTANTS] = {0x000000, 0xFF0000, 0x00FF00, 0xFFFF00,
                                                          0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF,
                                                          0x808080, 0xC0C0C0};
    if (constant < BC_COLOR_CONSTANTS)
        dwRGB = rgb[constant];
}

BCColor BCColor::FromCOLORREF(unsigned long rgb) {
    return BCColor(static_cast<unsigned char>(rgb & 0xFF), static_cast<unsigned char>(rgb >> 8),
                   static_cast<unsigned char>(rgb >> 16));
}

int BCColor::Load(std::istream& is) {
    unsigned long rgb = 0;
    if (!BCObject::Load(is) || !BCLoadDblWord(is, rgb))
        return 0;
    dwRGB = rgb & 0x00FFFFFFul;
    return 1;
}

int BCColor::Save(std::ostream& os) {
    return BCObject::Save(os) && BCSaveDblWord(os, dwRGB);
}

void BCColor::Display(const char* prefix) {
    DispObjectMsg("%sdwRGB=%06lx", Prefix(prefix), dwRGB);
}

BCResID::BCResID(unsigned int id, BCModule* module)
    : BCObject(bcids::kTypeResID), wResNum(id), caResName(nullptr), opModule(module) {}

BCResID::BCResID(const char* name, BCModule* module)
    : BCObject(bcids::kTypeResID), wResNum(0), caResName(CopyName(name)), opModule(module) {}

BCResID::BCResID(const BCResID& other)
    : BCObject(other), wResNum(other.wResNum), caResName(CopyName(other.caResName)),
      opModule(other.opModule) {}

BCResID& BCResID::operator=(const BCResID& other) {
    if (this != &other) {
        char* name = CopyName(other.caResName);
        delete[] caResName;
        caResName = name;
        wResNum = other.wResNum;
        opModule = other.opModule;
    }
    return *this;
}

BCResID::~BCResID() {
    delete[] caResName;
}

const char* BCResID::GetResource() const {
    return caResName ? caResName : MAKEINTRESOURCEA(wResNum);
}

void BCResID::Display(const char* prefix) {
    DispObjectMsg("%swResNum=%u, caResName=%s", Prefix(prefix), wResNum,
                  caResName ? caResName : "");
}

void BCFormat::Display(const char* prefix) {
    DispObjectMsg("%swFormat=%u", Prefix(prefix), wFormat);
}

BCFormat& BCGetTextFormat() {
    static BCFormat text(BC_FORMAT_TEXT);
    return text;
}

BCFormat& BCGetBitmapFormat() {
    static BCFormat bitmap(BC_FORMAT_BITMAP);
    return bitmap;
}
