#pragma once
// Helpers shared by the graphics test files.
#include "test_devices.h"

// The type code word and the 12-byte field block that every graphic record begins with.
inline std::string Head(unsigned code, unsigned id, short x, short y, short w, short h) {
    return LE32(code) + LE32(id) + LE16(x) + LE16(y) + LE16(w) + LE16(h);
}

// What a graphic-list load hangs off its objects belongs to the caller: bitmaps, compounds' lists.
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
