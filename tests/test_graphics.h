#pragma once
// Helpers shared by the graphics test files.
#include "norlib2.h"

// What a graphic-list load hangs off its objects belongs to the caller: the bitmaps and the
// compounds' lists.
inline void FreeLoaded(BCGraphicList* list) {
    for (int more = list->Home(); more; more = list->Next()) {
        auto* obj = static_cast<BCGraphicObject*>(list->GetCrntItem());
        if (auto* bitmap = dynamic_cast<BCBitmapGraphic*>(obj))
            delete bitmap->GetBitmap();
        if (auto* compound = dynamic_cast<BCCompoundGraphic*>(obj)) {
            if (compound->GetList()) {
                FreeLoaded(compound->GetList());
                delete compound->GetList();
            }
        }
    }
    list->Clear(1);
}
