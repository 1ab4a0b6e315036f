#include "bcmemory.h"

#include <windows.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "bcids1.h"
#include "bcmsg.h"
#include "bcplatform.h"

namespace {

using namespace bcids;

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
    HGLOBAL handle = BCTraced(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, static_cast<SIZE_T>(size)),
                              "GlobalAlloc");
    if (!handle)
        return nullptr;
    void* memory = BCLockFarMem(handle);
    if (!memory)
        GlobalFree(handle);
    return memory;
}

void* BCReallocFarMem(void* memory, long size) {
    if (!memory) {
        Fault(kMsgReallocNullPointer);
        return nullptr;
    }
    HGLOBAL handle = HandleOf(memory);
    if (!handle) {
        Fault(kMsgReallocNullHandle);
        return nullptr;
    }
    if (size < 0)
        return nullptr;
    GlobalUnlock(handle);
    HGLOBAL moved =
        BCTraced(GlobalReAlloc(handle, static_cast<SIZE_T>(size), GMEM_MOVEABLE | GMEM_ZEROINIT),
                 "GlobalReAlloc");
    void* address = GlobalLock(moved ? moved : handle);
    if (!address) {
        Fault(kMsgReallocBadPointer);
        return nullptr;
    }
    return moved ? address : nullptr;
}

int BCFreeFarMem(void* memory) {
    if (!memory)
        return Fault(kMsgFreeNullPointer);
    HGLOBAL handle = HandleOf(memory);
    if (!handle)
        return Fault(kMsgFreeNullHandle);
    SetLastError(NO_ERROR);
    if (!GlobalUnlock(handle) && GetLastError() != NO_ERROR)
        return Fault(kMsgFreeBadPointer);
    if (GlobalFree(handle)) {
        BCTraceFailure("GlobalFree");
        return Fault(kMsgFreeBadHandle);
    }
    return 1;
}

void* BCLockFarMem(void* handle) {
    if (!handle) {
        Fault(kMsgLockNullHandle);
        return nullptr;
    }
    void* memory = GlobalLock(static_cast<HGLOBAL>(handle));
    if (!memory) {
        BCTraceFailure("GlobalLock");
        Fault(kMsgLockFailed);
    }
    return memory;
}

int BCUnlockFarMem(void* memory) {
    if (!memory)
        return Fault(kMsgUnlockNullPointer);
    HGLOBAL handle = HandleOf(memory);
    if (!handle)
        return Fault(kMsgUnlockNoHandle);
    SetLastError(NO_ERROR);
    if (GlobalUnlock(handle))
        return 1;
    if (GetLastError() != NO_ERROR)
        return Fault(kMsgUnlockBadPointer);
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
