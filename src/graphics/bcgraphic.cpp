#include "bcgraphic.h"

#include <istream>
#include <ostream>
#include <new>

#include "bcdevice.h"
#include "bcstream.h"
#include "bcmemory.h"
#include "bcgdi.h"
#include "bclib2.h"

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

// Where a stream keeps its drawing-records mark (iword) and keeper (pword).
int DrawingSlot() {
    static const int slot = std::ios_base::xalloc();
    return slot;
}

// The pen and brush records that follow the marks, in both layouts.
int SavePieces(std::ostream& os, BCPen* pen, BCBrush* brush) {
    return (!pen || pen->Save(os)) && (!brush || brush->Save(os));
}

} // namespace

BCLoadKeeper::~BCLoadKeeper() = default;

void BCBeginDrawingRecords(std::ios_base& stream, BCLoadKeeper* keeper) {
    stream.iword(DrawingSlot()) = 1;
    stream.pword(DrawingSlot()) = keeper;
}

void BCEndDrawingRecords(std::ios_base& stream) {
    stream.iword(DrawingSlot()) = 0;
    stream.pword(DrawingSlot()) = nullptr;
}

int BCIsDrawingRecords(std::ios_base& stream) {
    return stream.iword(DrawingSlot()) ? 1 : 0;
}

BCLoadKeeper* BCGetLoadKeeper(std::ios_base& stream) {
    return static_cast<BCLoadKeeper*>(stream.pword(DrawingSlot()));
}

void BCKeepLoaded(std::ios_base& stream, BCObject* made) {
    if (BCLoadKeeper* keeper = BCGetLoadKeeper(stream); keeper && made)
        keeper->Keep(made);
}

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

int BCGraphicObject::HitTest(const BCPosition& pos, short tolerance) const {
    const long px = pos.GetX();
    const long py = pos.GetY();
    return px >= coX - tolerance && px < static_cast<long>(coX) + coW + tolerance &&
           py >= coY - tolerance && py < static_cast<long>(coY) + coH + tolerance;
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

namespace {

// What a setup took out of the device, for its reset to put back. One set serves every
// draw graphic, so setups and resets come strictly in pairs.
BCDisplayDevice* sDevice = nullptr;
BCPen* sOldPen = nullptr;
BCBrush* sOldBrush = nullptr;
unsigned int sOldBackMode = BC_BACK_OPAQUE;

} // namespace

BCDrawGraphic::BCDrawGraphic(unsigned int typeCode, unsigned int id, const BCPosition& pos,
                             const BCSize& size)
    : BCGraphicObject(typeCode, id, pos, size), bFlags(kFrame), opPen(nullptr), opBrush(nullptr) {}

BCDrawGraphic::BCDrawGraphic(unsigned int typeCode)
    : BCGraphicObject(typeCode), bFlags(kFrame), opPen(nullptr), opBrush(nullptr) {}

BCDrawGraphic::~BCDrawGraphic() = default;

void BCDrawGraphic::SetMode(int frame, int fill, int opaque) {
    SetFrame(frame);
    SetFill(fill);
    SetOpaque(opaque);
}

// Only bit 0 counts: SetFrame(2) turns the frame off.
void BCDrawGraphic::SetFrame(int frame) {
    bFlags = static_cast<unsigned char>((bFlags & ~kFrame) | (frame & 1 ? kFrame : 0));
}

void BCDrawGraphic::SetFill(int fill) {
    bFlags = static_cast<unsigned char>((bFlags & ~kFill) | (fill & 1 ? kFill : 0));
}

void BCDrawGraphic::SetOpaque(int opaque) {
    bFlags = static_cast<unsigned char>((bFlags & ~kOpaque) | (opaque & 1 ? kOpaque : 0));
}

BCPen* BCDrawGraphic::SetPen(BCPen* pen) {
    BCPen* old = opPen;
    opPen = pen;
    return old;
}

BCBrush* BCDrawGraphic::SetBrush(BCBrush* brush) {
    BCBrush* old = opBrush;
    opBrush = brush;
    return old;
}

void BCDrawGraphic::DrawSetup(BCDisplayDevice* dev, int drawing) {
    sDevice = dev;
    if (!dev)
        return;
    const bool frame = bFlags & kFrame;
    const bool fill = bFlags & kFill;
    if (drawing) {
        if (!frame)
            sOldPen = dev->SetPen(BCGetClearPen());
        else if (opPen)
            sOldPen = dev->SetPen(opPen);
        else
            sOldBrush = nullptr; // the pen remembered by an earlier setup stays on purpose
        if (!fill)
            sOldBrush = dev->SetBrush(BCGetClearBrush());
        else if (opBrush)
            sOldBrush = dev->SetBrush(opBrush);
        else
            sOldBrush = nullptr;
    } else {
        sOldPen = dev->SetPen(frame ? BCGetWhitePen() : BCGetClearPen());
        sOldBrush = dev->SetBrush(fill ? dev->GetBackground() : BCGetClearBrush());
    }
    const bool opaque = !drawing || (bFlags & kOpaque);
    sOldBackMode = dev->SetBackMode(opaque ? BC_BACK_OPAQUE : BC_BACK_TRANSPARENT);
    dev->SelectDC();
}

void BCDrawGraphic::DrawReset() {
    BCDisplayDevice* dev = sDevice;
    if (!dev)
        return;
    if (opPen || sOldPen)
        dev->SetPen(sOldPen);
    if (opBrush || sOldBrush)
        dev->SetBrush(sOldBrush);
    dev->SetBackMode(sOldBackMode);
    dev->ReleaseDC();
}

int BCDrawGraphic::Save(std::ostream& os) {
    if (!BCGraphicObject::Save(os))
        return 0;
    if (BCIsDrawingRecords(os))
        return BCSaveByte(os, bFlags) && BCSavePtr(os, opPen) && BCSavePtr(os, opBrush) &&
               SavePieces(os, opPen, opBrush);
    const bool anyFlag = (bFlags & (kFrame | kFill | kOpaque)) != 0;
    int marks = 0;
    if (anyFlag) {
        marks = BCSavePtr(os, opPen);
        if (marks)
            marks = BCSavePtr(os, opBrush);
    }
    // The flags themselves are not written; Load reads them as a byte where this word and
    // the marks lie.
    return BCSaveWord(os, anyFlag && marks ? 1u : 0u) && SavePieces(os, opPen, opBrush);
}

int BCDrawGraphic::Load(std::istream& is) {
    unsigned char flags = 0;
    void* penMark = nullptr;
    void* brushMark = nullptr;
    if (!BCGraphicObject::Load(is) || !BCLoadByte(is, flags) || !BCLoadPtr(is, penMark) ||
        !BCLoadPtr(is, brushMark))
        return 0;
    // The marks only say whether a pen or brush follows; earlier ones are the caller's.
    opPen = nullptr;
    opBrush = nullptr;
    if (penMark) {
        opPen = new (std::nothrow) BCPen(1, 1, BCGetBlack(), BCGetDLLModule2());
        BCKeepLoaded(is, opPen);
        if (!opPen || !opPen->Load(is))
            return 0;
    }
    if (brushMark) {
        opBrush = new (std::nothrow) BCBrush(BCGetDLLModule2());
        BCKeepLoaded(is, opBrush);
        if (!opBrush || !opBrush->Load(is))
            return 0;
    }
    bFlags = static_cast<unsigned char>(flags & (kFrame | kFill | kOpaque));
    return 1;
}

void BCDrawGraphic::Display(const char* prefix) {
    char text[kDumpSize];
    BCFrmtStr(text, sizeof text, "%sblFrame=%d, blFill=%d, blOpaque=%d, ", prefix ? prefix : "",
              GetFrame(), GetFill(), GetOpaque());
    BCGraphicObject::Display(text);
}
