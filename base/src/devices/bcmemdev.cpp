#include <windows.h>

#include <algorithm>

#include "bcdevice.h"
#include "bcids1.h"
#include "bcplatform.h"

namespace {
constexpr unsigned long kWhite = 0x00FFFFFFul;
constexpr unsigned long kOutside = 0xFFFFFFFFul;
} // namespace

BCMemoryDevice::BCMemoryDevice(short width, short height, BCModule* module)
    : BCDisplayDevice(bcids::kTypeMemoryDevice, module), hMemDC(nullptr), hPicture(nullptr),
      hOldPicture(nullptr), lpBits(nullptr), coWidth(width > 0 ? width : 0),
      coHeight(height > 0 ? height : 0) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = coWidth;
    info.bmiHeader.biHeight = -coHeight; // top-down: row 0 is y 0
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HBITMAP picture =
        coWidth && coHeight
            ? BCTraced(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0),
                       "CreateDIBSection")
            : nullptr;
    HDC dc = picture ? BCTraced(CreateCompatibleDC(nullptr), "CreateCompatibleDC") : nullptr;
    if (!dc) {
        if (picture)
            DeleteObject(picture);
        coWidth = coHeight = 0;
        DispObjectMsg(bcids::kMsgNoMemoryDC);
        return;
    }
    lpBits = static_cast<unsigned long*>(bits);
    std::fill(lpBits, lpBits + static_cast<size_t>(coWidth) * coHeight, kWhite);
    hPicture = picture;
    hMemDC = dc;
    hOldPicture = SelectObject(dc, picture);
    SetDeviceFlags(BC_DEV_OWNS_DC | BC_DEV_TOP_DOWN, 1);
    SetUserRect(BCRectangle(0, 0, coWidth, coHeight));
}

BCMemoryDevice::~BCMemoryDevice() {
    if (GetDC())
        DropDC();
    if (hMemDC) {
        SelectObject(static_cast<HDC>(hMemDC), static_cast<HGDIOBJ>(hOldPicture));
        DeleteDC(static_cast<HDC>(hMemDC));
        DeleteObject(static_cast<HGDIOBJ>(hPicture));
    }
}

void BCMemoryDevice::Display(const char* prefix) {
    DispObjectMsg("%shMemDC=%p, coWidth=%d, coHeight=%d, wSelectCount=%u", prefix ? prefix : "",
                  hMemDC, coWidth, coHeight, wSelectCount);
}

// The context lives as long as the device: selecting it costs nothing.
void* BCMemoryDevice::GetDeviceDC() {
    return hMemDC;
}

int BCMemoryDevice::ReleaseDeviceDC(void*) {
    return 1;
}

unsigned long BCMemoryDevice::GetPixel(short x, short y) {
    if (!lpBits || x < 0 || y < 0 || x >= coWidth || y >= coHeight)
        return kOutside;
    GdiFlush(); // drawing may still be batched
    unsigned long pixel = lpBits[static_cast<size_t>(y) * coWidth + x];
    // The picture stores 0x00RRGGBB; COLORREF is 0x00BBGGRR.
    return ((pixel & 0xFF) << 16) | (pixel & 0xFF00) | ((pixel >> 16) & 0xFF);
}
