#include "bctextgfx.h"
#include "bcdevice.h"
#include "bcgdi.h"
#include "bcstream.h"

#include <istream>
#include <new>
#include <ostream>

#include "bcids2.h"
#include "bclib2.h"

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
    }
    return opBitmap->Load(is) && BCLoadDblWord(is, dwRasterOp);
}
