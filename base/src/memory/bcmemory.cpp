#include "bcmemory.h"

#include <windows.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "bcmsg.h"

namespace {

// The memory helpers report their faults as numbered messages of their own.
enum : unsigned int {
    kReallocNullHandle = 10037,
    kReallocBadPointer = 10038,
    kReallocNullPointer = 10039,
    kFreeBadHandle = 10040,
    kFreeNullHandle = 10041,
    kFreeBadPointer = 10042,
    kFreeNullPointer = 10043,
    kLockFailed = 10044,
    kLockNullHandle = 10045,
    kUnlockNoHandle = 10046,
    kUnlockBadPointer = 10047,
    kUnlockNullPointer = 10048
};

int Fault(unsigned int id) {
    BCDispMsg(id, nullptr);
    return 0;
}

// The handle of a block this module handed out; null (with no fault shown) when the
// address is not the start of a global block.
HGLOBAL HandleOf(void* memory) {
    return GlobalHandle(memory);
}

} // namespace

void* BCAllocFarMem(long size) {
    if (size < 0)
        return nullptr;
    HGLOBAL handle = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, static_cast<SIZE_T>(size));
    if (!handle)
        return nullptr;
    void* memory = BCLockFarMem(handle);
    if (!memory)
        GlobalFree(handle);
    return memory;
}

void* BCReallocFarMem(void* memory, long size) {
    if (!memory) {
        Fault(kReallocNullPointer);
        return nullptr;
    }
    HGLOBAL handle = HandleOf(memory);
    if (!handle) {
        Fault(kReallocNullHandle);
        return nullptr;
    }
    if (size < 0)
        return nullptr;
    GlobalUnlock(handle);
    HGLOBAL moved = GlobalReAlloc(handle, static_cast<SIZE_T>(size), GMEM_MOVEABLE | GMEM_ZEROINIT);
    void* address = GlobalLock(moved ? moved : handle);
    if (!address) {
        Fault(kReallocBadPointer);
        return nullptr;
    }
    return moved ? address : nullptr;
}

int BCFreeFarMem(void* memory) {
    if (!memory)
        return Fault(kFreeNullPointer);
    HGLOBAL handle = HandleOf(memory);
    if (!handle)
        return Fault(kFreeNullHandle);
    SetLastError(NO_ERROR);
    if (!GlobalUnlock(handle) && GetLastError() != NO_ERROR)
        return Fault(kFreeBadPointer);
    if (GlobalFree(handle))
        return Fault(kFreeBadHandle);
    return 1;
}

void* BCLockFarMem(void* handle) {
    if (!handle) {
        Fault(kLockNullHandle);
        return nullptr;
    }
    void* memory = GlobalLock(static_cast<HGLOBAL>(handle));
    if (!memory)
        Fault(kLockFailed);
    return memory;
}

int BCUnlockFarMem(void* memory) {
    if (!memory)
        return Fault(kUnlockNullPointer);
    HGLOBAL handle = HandleOf(memory);
    if (!handle)
        return Fault(kUnlockNoHandle);
    SetLastError(NO_ERROR);
    if (GlobalUnlock(handle))
        return 1;
    if (GetLastError() != NO_ERROR)
        return Fault(kUnlockBadPointer);
    return 0;
}

void BCCopyMem(void* to, const void* from, unsigned long n) {
    if (to && from && n)
        std::memmove(to, from, n);
}

unsigned long BCCopyLimStr(char* to, const char* from, unsigned long limit) {
    if (!to || limit == 0)
        return 0;
    unsigned long n = 0;
    if (from) {
        while (n + 1 < limit && from[n] != '\0') {
            to[n] = from[n];
            ++n;
        }
    }
    to[n] = '\0';
    return n;
}

unsigned long BCGetStrLen(const char* text) {
    return text ? std::strlen(text) : 0;
}

int BCFrmtStr(char* buffer, unsigned int size, const char* format, ...) {
    if (!buffer || size == 0)
        return 0;
    buffer[0] = '\0';
    if (!format)
        return 0;
    va_list args;
    va_start(args, format);
    int length = std::vsnprintf(buffer, size, format, args);
    va_end(args);
    if (length < 0) {
        buffer[0] = '\0';
        return 0;
    }
    return length < static_cast<int>(size) ? length : static_cast<int>(size) - 1;
}
