#include "bcgraphic.h"
#include "bcdevice.h"
#include "bcstream.h"
#include "bcmemory.h"

#include <istream>
#include <ostream>

namespace {

constexpr int kBlockSize = 12;

// The field block as stored: wID, then coX, coY, coW, coH, little-endian.
void PutLE(unsigned char* at, unsigned int value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        at[i] = static_cast<unsigned char>(value >> (8 * i));
}

void PutLE(unsigned char* at, short value) {
    PutLE(at, static_cast<unsigned short>(value), 2);
}

unsigned int GetLE(const unsigned char* at, int bytes) {
    unsigned int value = 0;
    for (int i = 0; i < bytes; ++i)
        value |= static_cast<unsigned int>(at[i]) << (8 * i);
    return value;
}

} // namespace

BCGraphicObject::BCGraphicObject(unsigned int typeCode, unsigned int id, const BCPosition& pos,
                                 const BCSize& size)
    : BCObject(typeCode), wID(id), coX(pos.GetX()), coY(pos.GetY()), coW(size.GetWidth()),
      coH(size.GetHeight()) {}

BCGraphicObject::BCGraphicObject(unsigned int typeCode)
    : BCObject(typeCode), wID(0), coX(0), coY(0), coW(0), coH(0) {}

BCGraphicObject::~BCGraphicObject() = default;

unsigned int BCGraphicObject::SetID(unsigned int id) {
    unsigned int old = wID;
    wID = id;
    return old;
}

BCPosition BCGraphicObject::SetPos(const BCPosition& pos) {
    BCPosition old(coX, coY);
    coX = pos.GetX();
    coY = pos.GetY();
    return old;
}

BCSize BCGraphicObject::SetSize(const BCSize& size) {
    BCSize old(coW, coH);
    coW = size.GetWidth();
    coH = size.GetHeight();
    return old;
}

int BCGraphicObject::IsHit(const BCPosition& pos) const {
    const short px = pos.GetX();
    const short py = pos.GetY();
    const long right = static_cast<long>(coX) + coW;
    const long bottom = static_cast<long>(coY) + coH;
    return px >= coX && px < right && py >= coY && py < bottom;
}

int BCGraphicObject::Draw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    const char* name = GetObjectTypeStr();
    return dev->PosStr(BCPosition(coX, coY), name ? name : "");
}

int BCGraphicObject::UnDraw(BCDisplayDevice*) {
    return 1;
}

void BCGraphicObject::PackFields(unsigned char* block) const {
    PutLE(block, wID, 4);
    PutLE(block + 4, coX);
    PutLE(block + 6, coY);
    PutLE(block + 8, coW);
    PutLE(block + 10, coH);
}

int BCGraphicObject::Save(std::ostream& os) {
    if (!BCObject::Save(os))
        return 0;
    unsigned char block[kBlockSize];
    PackFields(block);
    os.write(reinterpret_cast<const char*>(block), kBlockSize);
    return BCStreamOK(os);
}

int BCGraphicObject::Load(std::istream& is) {
    if (!BCObject::Load(is))
        return 0;
    // A raw block read: a short stream still overwrites the bytes it delivered.
    unsigned char block[kBlockSize];
    PackFields(block);
    is.read(reinterpret_cast<char*>(block), kBlockSize);
    wID = GetLE(block, 4);
    coX = static_cast<short>(GetLE(block + 4, 2));
    coY = static_cast<short>(GetLE(block + 6, 2));
    coW = static_cast<short>(GetLE(block + 8, 2));
    coH = static_cast<short>(GetLE(block + 10, 2));
    return BCStreamOK(is);
}

void BCGraphicObject::Display(const char* prefix) {
    DispObjectMsg("%swID=%d, coX=%d, coY=%d, coW=%d, coH=%d", prefix ? prefix : "", wID, coX, coY,
                  coW, coH);
}
