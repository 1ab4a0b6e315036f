#include "bcbmpdata.h"
#include "bcgdi.h"

#include <new>
#include "bcids2.h"

BCBitmapData::BCBitmapData(BCBitmap* bitmap, BCWindow* window, const char* fileExt,
                           const char* fileName, unsigned int flags, BCUpdaterList* updaters)
    : BCFileData(bitmap, window, fileExt, fileName, flags, updaters) {
    SetObjectType(bcids::kTypeBitmapData);
}

BCRenderableData* BCBitmapData::Dup() {
    return new (std::nothrow) BCBitmapData(*this);
}

BCBitmap* BCBitmapData::GetBitmap() const {
    return opData && opData->GetObjectType() == bcids::kTypeBitmapObject
               ? static_cast<BCBitmap*>(opData)
               : nullptr;
}
