#include "bcbmpdata.h"

#include <new>

namespace {
constexpr unsigned int kTypeBitmapData = 102;
constexpr unsigned int kTypeBitmap = 10;
} // namespace

BCBitmapData::BCBitmapData(BCBitmap* bitmap, BCWindow* window, const char* fileExt,
                           const char* fileName, unsigned int flags, BCUpdaterList* updaters)
    : BCFileData(bitmap, window, fileExt, fileName, flags, updaters) {
    SetObjectType(kTypeBitmapData);
}

BCRenderableData* BCBitmapData::Dup() {
    return new (std::nothrow) BCBitmapData(*this);
}

BCBitmap* BCBitmapData::GetBitmap() const {
    return opData && opData->GetObjectType() == kTypeBitmap ? static_cast<BCBitmap*>(opData)
                                                            : nullptr;
}
