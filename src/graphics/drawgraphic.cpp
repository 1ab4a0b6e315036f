#include "bcgraphic.h"
#include "bcdevice.h"
#include "bcgdi.h"
#include "bcstream.h"
#include "bcmemory.h"

#include <new>

#include "bclib2.h"

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
    const bool anyFlag = (bFlags & (kFrame | kFill | kOpaque)) != 0;
    int marks = 0;
    if (anyFlag) {
        marks = BCSavePtr(os, opPen);
        if (marks)
            marks = BCSavePtr(os, opBrush);
    }
    // The flags themselves are not written; Load reads them as a byte where this word and
    // the marks lie.
    if (!BCSaveWord(os, anyFlag && marks ? 1u : 0u))
        return 0;
    if (opPen && !opPen->Save(os))
        return 0;
    if (opBrush && !opBrush->Save(os))
        return 0;
    return 1;
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
        if (!opPen || !opPen->Load(is))
            return 0;
    }
    if (brushMark) {
        opBrush = new (std::nothrow) BCBrush(BCGetDLLModule2());
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
