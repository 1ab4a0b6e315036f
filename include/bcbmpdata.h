#pragma once
#include "bcfiledata.h"

// The document of a picture: a file data object wrapping a BCBitmap, whose record is the
// file's content.
class NORLIB2_API BCBitmapData : public BCFileData {
  public:
    BCBitmapData(BCBitmap* bitmap, BCWindow* window, const char* fileExt, const char* fileName,
                 unsigned int flags, BCUpdaterList* updaters);

    BCRenderableData* Dup() override;
    // The wrapped bitmap, null when the wrapped object is none or not a bitmap.
    BCBitmap* GetBitmap() const;
};
