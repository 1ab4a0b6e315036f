#include "bcdevice.h"

#include <windows.h>

namespace {
enum : unsigned int {
    kSelectNesting1 = 10020,
    kSelectNoDC = 10021,
    kSelectNesting2 = 10022,
    kReleaseNesting1 = 10023,
    kReleaseNesting2 = 10024
};
}

BCDevice::BCDevice(unsigned int typeCode, BCModule* module)
    : BCObject(typeCode), hDC(nullptr), wSelectCount(0), dwDevFlags(BC_DEV_TOP_DOWN),
      opModule(module) {}

BCDevice::~BCDevice() {}

void BCDevice::Display(const char* prefix) {
    DispObjectMsg("%shDC=%p, wSelectCount=%u, dwDevFlags=%08lx", prefix ? prefix : "", hDC,
                  wSelectCount, dwDevFlags);
}

void* BCDevice::GetDeviceDC() {
    return nullptr;
}

int BCDevice::ReleaseDeviceDC(void*) {
    return 1;
}

int BCDevice::SelectDC() {
    if (wSelectCount == 0) {
        if (hDC) { // a context without a selection: the bookkeeping is broken
            DispObjectMsg(kSelectNesting1);
            return 0;
        }
        hDC = GetDeviceDC();
        if (!hDC) {
            DispObjectMsg(kSelectNoDC);
            return 0;
        }
    } else if (!hDC) {
        DispObjectMsg(kSelectNesting2);
        return 0;
    }
    ++wSelectCount;
    return 1;
}

int BCDevice::ReleaseDC() {
    if (wSelectCount == 0) {
        DispObjectMsg(kReleaseNesting1);
        return 0;
    }
    if (!hDC) {
        DispObjectMsg(kReleaseNesting2);
        return 0;
    }
    if (--wSelectCount == 0) {
        void* dc = hDC;
        hDC = nullptr;
        return ReleaseDeviceDC(dc);
    }
    return 1;
}

unsigned long BCDevice::SetDeviceFlags(unsigned long bits, int on) {
    unsigned long previous = dwDevFlags;
    dwDevFlags = on ? (dwDevFlags | bits) : (dwDevFlags & ~bits);
    return previous;
}

void BCDevice::AdoptDC(void* dc) {
    hDC = dc;
    wSelectCount = 1;
}

void* BCDevice::DropDC() {
    void* dc = hDC;
    hDC = nullptr;
    wSelectCount = 0;
    return dc;
}

BCDisplayDevice::BCDisplayDevice(unsigned int typeCode, BCModule* module)
    : BCDevice(typeCode, module) {}

BCDisplayDevice::~BCDisplayDevice() {}
