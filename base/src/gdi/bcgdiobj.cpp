#include "bcgdi.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace {
// Handles replaced while a context held them: the platform refuses to delete a selected
// object, and forgetting it would leak one handle per change.
struct ReleasedHandles {
    std::mutex lock;
    std::vector<HGDIOBJ> handles;
    std::atomic<bool> any{false}; // devices ask on every release: no lock when empty
};

ReleasedHandles& Released() {
    static ReleasedHandles* released = new ReleasedHandles;
    return *released;
}

// Gone (deleted now, or no longer a handle at all): nothing is left to keep.
bool Gone(HGDIOBJ handle) {
    return DeleteObject(handle) || !GetObjectType(handle);
}

void DeleteOrKeep(HGDIOBJ handle) {
    if (Gone(handle))
        return;
    ReleasedHandles& released = Released();
    std::lock_guard<std::mutex> guard(released.lock);
    released.handles.push_back(handle);
    released.any = true;
}
} // namespace

BCGdiHandle::BCGdiHandle(BCModule* module) : hObject(nullptr), blOwned(0), opModule(module) {}

BCGdiHandle::~BCGdiHandle() {
    SetObjectHandle(nullptr, 0);
}

BCGdiObject::BCGdiObject(unsigned int typeCode, BCModule* module)
    : BCObject(typeCode), BCGdiHandle(module) {}

BCGdiObject::~BCGdiObject() {}

void BCGdiHandle::SetObjectHandle(void* handle, int owned) {
    if (hObject && blOwned && hObject != handle)
        DeleteOrKeep(static_cast<HGDIOBJ>(hObject));
    hObject = handle;
    blOwned = handle && owned;
}

void BCGdiHandle::DeleteReleasedHandles() {
    ReleasedHandles& released = Released();
    if (!released.any)
        return;
    std::lock_guard<std::mutex> guard(released.lock);
    std::vector<HGDIOBJ>& handles = released.handles;
    handles.erase(std::remove_if(handles.begin(), handles.end(), Gone), handles.end());
    released.any = !handles.empty();
}

// The stock objects are made on first use and kept for the process's life: graphics select
// them around every shape, so they must cost nothing once made.
BCPen* BCGetClearPen() {
    static BCPen* pen = new BCPen(BC_PEN_CLEAR, 1, BCColor(BC_COLOR_BLACK));
    return pen;
}

BCPen* BCGetBlackPen() {
    static BCPen* pen = new BCPen(BC_PEN_SOLID, 1, BCColor(BC_COLOR_BLACK));
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

unsigned long BCGetGdiObjectCount() {
    if (unsigned long count = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS))
        return count;
    // Wine does not count them (the call gives 0), but it takes a handle's bare slot number
    // (high word 0) for the object in that slot, so the live objects can be counted by slot.
    unsigned long alive = 0;
    for (UINT_PTR slot = 1; slot < 0x10000; ++slot)
        alive += GetObjectType(reinterpret_cast<HGDIOBJ>(slot)) != 0;
    return alive;
}

BCColor& BCGetBlack() {
    static BCColor black(BC_COLOR_BLACK);
    return black;
}
