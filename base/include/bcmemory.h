#pragma once
#include "norlib1api.h"

// Movable global memory handed out locked: the pointer stays valid until it is freed or
// reallocated. Faults are reported with the numbered messages 10037-10048.
NORLIB1_API void* BCAllocFarMem(long size);
// Returns the new address (the old one is invalid then) or null, leaving the block as it was.
NORLIB1_API void* BCReallocFarMem(void* memory, long size);
NORLIB1_API int BCFreeFarMem(void* memory);
// Locks a global memory handle; returns the address or null.
NORLIB1_API void* BCLockFarMem(void* handle);

// A far block of `size` bytes for one scope, freed on every way out. Get is null when the block
// could not be had, and for a size of 0 or beyond what a long holds.
class BCFarBlock {
  public:
    explicit BCFarBlock(unsigned long size)
        : m_bytes(size && size < 0x7FFFFFFFul
                      ? static_cast<char*>(BCAllocFarMem(static_cast<long>(size)))
                      : nullptr) {}
    ~BCFarBlock() {
        if (m_bytes)
            BCFreeFarMem(m_bytes);
    }
    BCFarBlock(const BCFarBlock&) = delete;
    BCFarBlock& operator=(const BCFarBlock&) = delete;
    char* Get() const { return m_bytes; }

  private:
    char* m_bytes;
};
// Releases one lock of the block at `memory`; returns non-zero while it is still locked.
NORLIB1_API int BCUnlockFarMem(void* memory);

// Copies n bytes; overlapping ranges are allowed.
NORLIB1_API void BCCopyMem(void* to, const void* from, unsigned long n);
// Copies at most limit - 1 characters and a NUL; returns the characters copied.
NORLIB1_API unsigned long BCCopyLimStr(char* to, const char* from, unsigned long limit);
// Length of a NUL-terminated string; 0 for null.
NORLIB1_API unsigned long BCGetStrLen(const char* text);
// printf into a buffer of `size` bytes, always NUL-terminated; returns the length written.
NORLIB1_API int BCFrmtStr(char* buffer, unsigned int size, const char* format, ...);
