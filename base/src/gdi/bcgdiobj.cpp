#include "bcgdi.h"

#include <windows.h>

BCGdiHandle::BCGdiHandle(BCModule* module) : hObject(nullptr), blOwned(0), opModule(module) {}

BCGdiHandle::~BCGdiHandle() {
    SetObjectHandle(nullptr, 0);
}

BCGdiObject::BCGdiObject(unsigned int typeCode, BCModule* module)
    : BCObject(typeCode), BCGdiHandle(module) {}

BCGdiObject::~BCGdiObject() {}

void BCGdiHandle::SetObjectHandle(void* handle, int owned) {
    if (hObject && blOwned && hObject != handle)
        DeleteObject(static_cast<HGDIOBJ>(hObject));
    hObject = handle;
    blOwned = handle && owned;
}

// The stock objects are made on first use and kept for the process's life: graphics select
// them around every shape, so they must cost nothing once made.
BCPen* BCGetClearPen() {
    static BCPen* pen = new BCPen(BC_PEN_CLEAR, 1, BCColor(BC_COLOR_BLACK));
    return pen;
}

BCPen* BCGetWhitePen() {
    static BCPen* pen = new BCPen(BC_PEN_SOLID, 1, BCColor(BC_COLOR_WHITE));
    return pen;
}

BCBrush* BCGetClearBrush() {
    static BCBrush* brush = new BCBrush(BC_STOCK_CLEAR);
    return brush;
}

BCBrush* BCGetBlackBrush() {
    static BCBrush* brush = new BCBrush(BC_STOCK_BLACK);
    return brush;
}

BCBrush* BCGetWhiteBrush() {
    static BCBrush* brush = new BCBrush(BC_STOCK_WHITE);
    return brush;
}

BCColor& BCGetBlack() {
    static BCColor black(BC_COLOR_BLACK);
    return black;
}
