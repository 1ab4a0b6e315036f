#include <windows.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>
#include <new>

#include "bcgdi.h"
#include "bcids1.h"
#include "bcmodule.h"
#include "bcplatform.h"
#include "bcstream.h"

namespace {
constexpr unsigned long kNotOurs = BC_BITMAP_HANDED_OVER | BC_BITMAP_BORROWED;
constexpr unsigned long kMaxSide = 16384;

// One limit for every picture held, saved and loaded, so that whatever is saved loads again.
bool FitsLimit(unsigned long width, unsigned long height) {
    return width <= kMaxSide && height <= kMaxSide;
}

BITMAPINFO TopDownInfo(int width, int height) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

// A 32-bit top-down DIB section; `bits` receives its pixels.
HBITMAP MakeDib(int width, int height, void** bits) {
    BITMAPINFO info = TopDownInfo(width, height);
    return BCTraced(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, bits, nullptr, 0),
                    "CreateDIBSection");
}

void* InstanceOf(BCModule* module) {
    return module ? module->GetInstance() : nullptr;
}
} // namespace

BCBitmap::BCBitmap(BCModule* module)
    : BCRenderableData(bcids::kTypeBitmap, 0), BCGdiHandle(module), coWidth(0), coHeight(0) {}

BCBitmap::BCBitmap(const BCResID& id, BCModule* module) : BCBitmap(module) {
    LoadFromRes(id);
}

BCBitmap::BCBitmap(short width, short height, BCModule* module) : BCBitmap(module) {
    void* bits = nullptr;
    HBITMAP dib = width > 0 && height > 0 ? MakeDib(width, height, &bits) : nullptr;
    if (!dib) {
        DispObjectMsg(bcids::kMsgBitmapCreateFailed);
        return;
    }
    unsigned long* pixels = static_cast<unsigned long*>(bits);
    std::fill(pixels, pixels + static_cast<size_t>(width) * height, 0x00FFFFFFul);
    if (!TakeMade(dib))
        DispObjectMsg(bcids::kMsgBitmapCreateFailed);
}

BCBitmap::~BCBitmap() {
    TakeHandle(nullptr, 0);
}

int BCBitmap::TakeHandle(void* bitmap, int owned) {
    BITMAP info = {};
    if (bitmap && GetObjectA(static_cast<HBITMAP>(bitmap), sizeof info, &info)) {
        info.bmHeight = info.bmHeight < 0 ? -info.bmHeight : info.bmHeight;
        // Sizes are 16-bit and records are bounded: a larger picture is refused, not cut.
        if (!FitsLimit(static_cast<unsigned long>(info.bmWidth),
                       static_cast<unsigned long>(info.bmHeight)))
            return 0;
    }
    if (dwFlags & kNotOurs) // the old handle belongs to the clipboard now
        blOwned = 0;
    dwFlags &= ~kNotOurs;
    SetObjectHandle(bitmap, owned);
    coWidth = static_cast<short>(info.bmWidth);
    coHeight = static_cast<short>(info.bmHeight);
    return bitmap != nullptr;
}

int BCBitmap::TakeMade(void* bitmap) {
    if (TakeHandle(bitmap, 1))
        return 1;
    if (bitmap)
        DeleteObject(static_cast<HGDIOBJ>(bitmap));
    return 0;
}

int BCBitmap::SetHandle(void* bitmap) {
    return TakeHandle(bitmap, 1);
}

BCRenderableData* BCBitmap::Dup() {
    BCBitmap* copy = new (std::nothrow) BCBitmap(opModule);
    if (!copy || IsEmpty())
        return copy;
    std::vector<unsigned long> pixels(static_cast<size_t>(coWidth) * coHeight);
    if (!GetPixels(pixels.data()) || !copy->SetPixels(coWidth, coHeight, pixels.data())) {
        delete copy;
        return nullptr;
    }
    return copy;
}

int BCBitmap::Clear(int) {
    TakeHandle(nullptr, 0);
    return 1;
}

int BCBitmap::IsRenderable(BCFormat& format) {
    return format.GetFormat() == BC_FORMAT_BITMAP;
}

BCSize BCBitmap::GetSize() const {
    return BCSize(coWidth, coHeight);
}

int BCBitmap::LoadFromRes(const BCResID& id) {
    // The module named by the id, then the bitmap's, then the application's.
    void* instances[] = {InstanceOf(id.GetModule()), InstanceOf(opModule),
                         GetModuleHandleA(nullptr)};
    for (void* instance : instances) {
        if (!instance)
            continue;
        if (HANDLE image = LoadImageA(static_cast<HINSTANCE>(instance), id.GetResource(),
                                      IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)) {
            if (TakeMade(image))
                return 1;
            break;
        }
    }
    char number[16];
    wsprintfA(number, "#%u", id.GetResNum());
    DispObjectMsg(bcids::kMsgBitmapLoadFailed, id.GetResName() ? id.GetResName() : number);
    return 0;
}

int BCBitmap::LoadFromFile(const char* path) {
    HANDLE image =
        path ? LoadImageA(nullptr, path, IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION)
             : nullptr;
    if (!image || !TakeMade(image)) {
        DispObjectMsg(bcids::kMsgBitmapLoadFailed, path ? path : "");
        return 0;
    }
    return 1;
}

int BCBitmap::GetPixels(unsigned long* pixels) const {
    if (!hObject || !pixels)
        return 0;
    BITMAPINFO info = TopDownInfo(coWidth, coHeight);
    BCWindowDC screen(nullptr);
    int lines = GetDIBits(screen.Get(), static_cast<HBITMAP>(hObject), 0, coHeight, pixels, &info,
                          DIB_RGB_COLORS);
    if (lines != coHeight)
        return BCTraceFailure("GetDIBits");
    return 1;
}

int BCBitmap::SetPixels(short width, short height, const unsigned long* pixels) {
    void* bits = nullptr;
    HBITMAP dib = width > 0 && height > 0 && pixels ? MakeDib(width, height, &bits) : nullptr;
    if (!dib)
        return 0;
    std::memcpy(bits, pixels, static_cast<size_t>(width) * height * 4);
    return TakeMade(dib);
}

int BCBitmap::ReadPixels(std::istream& is, unsigned long width, unsigned long height) {
    unsigned long long bytes = 4ull * width * height;
    long long remaining = BCStreamRemaining(is);
    // A record can claim any size: one beyond the limit or the stream is refused before
    // anything is made.
    if (!FitsLimit(width, height) ||
        (remaining >= 0 && static_cast<unsigned long long>(remaining) < bytes))
        return 0;
    void* bits = nullptr;
    HBITMAP dib = MakeDib(static_cast<int>(width), static_cast<int>(height), &bits);
    if (!dib)
        return 0;
    if (!BCLoadFarBlk(is, bits, static_cast<long>(bytes))) {
        DeleteObject(dib);
        return 0;
    }
    return TakeMade(dib);
}

int BCBitmap::Load(std::istream& is) {
    unsigned long width = 0, height = 0;
    if (!BCObject::Load(is) || !BCLoadDblWord(is, width) || !BCLoadDblWord(is, height))
        return 0;
    if (width == 0 && height == 0) {
        TakeHandle(nullptr, 0);
        return 1;
    }
    return width != 0 && height != 0 && ReadPixels(is, width, height);
}

int BCBitmap::Save(std::ostream& os) {
    unsigned long width = hObject ? coWidth : 0, height = hObject ? coHeight : 0;
    if (!BCObject::Save(os) || !BCSaveDblWord(os, width) || !BCSaveDblWord(os, height))
        return 0;
    if (!width || !height)
        return 1;
    std::unique_ptr<unsigned long[]> pixels(new (std::nothrow) unsigned long[width * height]);
    return pixels && GetPixels(pixels.get()) &&
           BCSaveFarBlk(os, pixels.get(), static_cast<long>(width * height * 4));
}

void BCBitmap::Display(const char* prefix) {
    DispObjectMsg("%shBitmap=%p, coWidth=%d, coHeight=%d, dwFlags=%04lx", prefix ? prefix : "",
                  hObject, coWidth, coHeight, dwFlags);
}
