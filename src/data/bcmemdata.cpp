#include "bcmemdata.h"
#include "bcstream.h"
#include "bcmemory.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <istream>
#include <new>
#include <ostream>

#include "bcids2.h"

namespace {

constexpr unsigned long kDefaultStep = 512;
// The allocator takes a signed 32-bit size.
constexpr unsigned long long kMaxBlock = 0x7FFFFFFFull;
// First piece of a read whose size the stream cannot tell.
constexpr unsigned long kFirstPiece = 64 * 1024;
constexpr unsigned long kLowFlags = 0xFFFF;

// `n` rounded down to the step, plus two steps.
unsigned long long StepTarget(unsigned long long n, unsigned long step) {
    return 2ull * step + n - n % step;
}

unsigned char* Alloc(unsigned long long size) {
    if (size == 0 || size > kMaxBlock)
        return nullptr;
    return static_cast<unsigned char*>(BCAllocFarMem(static_cast<long>(size)));
}

// A new block holding a copy of `length` bytes; null when there is nothing or no memory.
unsigned char* CopyOf(const void* buffer, unsigned long length) {
    unsigned char* block = buffer ? Alloc(length) : nullptr;
    if (block)
        std::memcpy(block, buffer, length);
    return block;
}

bool Inside(const void* p, const unsigned char* block, unsigned long size) {
    std::uintptr_t at = reinterpret_cast<std::uintptr_t>(p);
    std::uintptr_t start = reinterpret_cast<std::uintptr_t>(block);
    return block && at >= start && at - start < size;
}

void Release(unsigned char*& block) {
    if (block)
        BCFreeFarMem(block);
    block = nullptr;
}

// Reads up to `limit` bytes into a new block. When the stream cannot tell how many bytes
// it holds, the block grows as they arrive, so a corrupt length fails at the end of the
// stream instead of allocating what it claims.
int ReadBlock(std::istream& is, unsigned long limit, bool known, unsigned char*& block,
              unsigned long& got, unsigned long& capacity) {
    block = nullptr;
    got = 0;
    capacity = known || limit < kFirstPiece ? limit : kFirstPiece;
    while (capacity > got) {
        void* grown = block ? BCReallocFarMem(block, static_cast<long>(capacity))
                            : BCAllocFarMem(static_cast<long>(capacity));
        if (!grown) {
            Release(block);
            return 0;
        }
        block = static_cast<unsigned char*>(grown);
        is.read(reinterpret_cast<char*>(block + got), static_cast<std::streamsize>(capacity - got));
        got += static_cast<unsigned long>(is.gcount());
        if (got < capacity || got == limit)
            break;
        capacity = capacity > limit / 2 ? limit : capacity * 2;
    }
    if (is.bad()) {
        Release(block);
        return 0;
    }
    if (got == 0) {
        Release(block);
        capacity = 0;
    }
    return 1;
}

} // namespace

BCMemoryData::BCMemoryData(void* buffer, unsigned long length, unsigned int flags)
    : BCRenderableData(bcids::kTypeMemoryData, flags), lpData(nullptr), dwLen(0), dwBufLen(0),
      dwGrowStep(kDefaultStep), dwGapAt(0) {
    TakeBytes(buffer, length);
}

BCMemoryData::BCMemoryData(const BCMemoryData& other)
    : BCRenderableData(other), lpData(nullptr), dwLen(0), dwBufLen(0), dwGrowStep(other.dwGrowStep),
      dwGapAt(0) {
    TakeBytes(const_cast<unsigned char*>(other.Contiguous()), other.Held());
}

BCMemoryData& BCMemoryData::operator=(const BCMemoryData& other) {
    if (this == &other)
        return *this;
    FreeBytes();
    dwFlags = (dwFlags & ~kLowFlags) | other.dwFlags;
    Install(nullptr, 0, 0);
    TakeBytes(const_cast<unsigned char*>(other.Contiguous()), other.Held());
    return *this;
}

BCMemoryData::~BCMemoryData() {
    FreeBytes();
}

bool BCMemoryData::OwnsBytes() const {
    return !(dwFlags & (BC_FLAG_NOT_OWNED | BC_FLAG_BORROW));
}

void BCMemoryData::FreeBytes() {
    if (lpData && OwnsBytes())
        BCFreeFarMem(lpData);
    lpData = nullptr;
}

void BCMemoryData::Install(unsigned char* block, unsigned long length, unsigned long capacity) {
    lpData = block;
    dwLen = length;
    dwBufLen = capacity;
    dwGapAt = std::min(length, capacity);
}

void BCMemoryData::Empty() {
    FreeBytes();
    Install(nullptr, 0, 0);
    Replaced();
}

void BCMemoryData::TakeBytes(void* buffer, unsigned long length) {
    Replaced();
    if (!buffer || !length)
        return;
    if (dwFlags & BC_FLAG_BORROW) {
        Install(static_cast<unsigned char*>(buffer), length, length);
        return;
    }
    unsigned char* copy = CopyOf(buffer, length);
    Install(copy, copy ? length : 0, copy ? length : 0);
}

unsigned long BCMemoryData::Held() const {
    return lpData ? std::min(dwLen, dwBufLen) : 0;
}

void BCMemoryData::Removing(unsigned long, unsigned long) {}

void BCMemoryData::Inserted(unsigned long, unsigned long) {}

void BCMemoryData::Replaced() {}

void BCMemoryData::MoveGap(unsigned long offset) const {
    unsigned long free = Free();
    if (free && offset < dwGapAt)
        std::memmove(lpData + offset + free, lpData + offset, dwGapAt - offset);
    else if (free && offset > dwGapAt)
        std::memmove(lpData + dwGapAt, lpData + dwGapAt + free, offset - dwGapAt);
    dwGapAt = offset;
}

const unsigned char* BCMemoryData::Contiguous() const {
    MoveGap(Held());
    return lpData;
}

void BCMemoryData::Runs(unsigned long from, unsigned long to, Run& first, Run& second) const {
    unsigned long split = std::max(from, std::min(to, dwGapAt));
    first = {lpData + from, split - from};
    second = {lpData + split + Free(), to - split};
}

unsigned long BCMemoryData::SetGrowStep(unsigned long step) {
    unsigned long previous = dwGrowStep;
    if (step)
        dwGrowStep = step;
    return previous;
}

// A borrowed buffer cannot be reallocated: its bytes move into a block of our own and the
// object stops borrowing. An owned block keeps its free bytes where they are: only the
// bytes after them move, to the new end.
int BCMemoryData::Reserve(unsigned long long size) {
    if (size > kMaxBlock)
        return 0;
    if (lpData && !(dwFlags & BC_FLAG_BORROW) && dwLen == Held()) {
        unsigned long tail = dwLen - dwGapAt;
        void* grown = BCReallocFarMem(lpData, static_cast<long>(size));
        if (!grown)
            return 0;
        lpData = static_cast<unsigned char*>(grown);
        std::memmove(lpData + size - tail, lpData + dwBufLen - tail, tail);
        dwBufLen = static_cast<unsigned long>(size);
        return 1;
    }
    MoveGap(Held());
    void* block = nullptr;
    if (lpData && (dwFlags & BC_FLAG_BORROW)) {
        block = Alloc(size);
        if (block)
            std::memcpy(block, lpData, Held());
    } else {
        block = lpData ? BCReallocFarMem(lpData, static_cast<long>(size)) : Alloc(size);
    }
    if (!block)
        return 0;
    if (lpData && (dwFlags & BC_FLAG_BORROW))
        dwFlags &= ~static_cast<unsigned long>(BC_FLAG_BORROW);
    Install(static_cast<unsigned char*>(block), dwLen, static_cast<unsigned long>(size));
    return 1;
}

BCRenderableData* BCMemoryData::Dup() {
    return new (std::nothrow) BCMemoryData(*this);
}

int BCMemoryData::Clear(int) {
    SetModified(true);
    Empty();
    return 1;
}

int BCMemoryData::IsRenderable(BCFormat& format) {
    unsigned int number = format.GetFormat();
    return number == BC_FORMAT_PRIVATE_TEXT || number == BC_FORMAT_PRIVATE_BINARY;
}

unsigned long BCMemoryData::GetData(void* buffer, unsigned long size, BCFormat&) {
    return GetData(0, buffer, size);
}

void* BCMemoryData::GetDataPtr(BCFormat&) {
    Contiguous();
    Replaced();
    return lpData;
}

unsigned long BCMemoryData::GetLen(BCFormat&) {
    return dwLen;
}

// The new bytes are copied before the old ones go, so the buffer may be our own.
unsigned long BCMemoryData::SetData(void* buffer, unsigned long length, BCFormat&) {
    bool borrow = (dwFlags & BC_FLAG_BORROW) != 0;
    unsigned char* copy = borrow || !length ? nullptr : CopyOf(buffer, length);
    Clear(true);
    if (borrow)
        TakeBytes(buffer, length);
    else if (copy)
        Install(copy, length, length);
    SetModified(true);
    return dwLen;
}

unsigned long BCMemoryData::SetData(unsigned long offset, const void* buffer, unsigned long count,
                                    int insert) {
    if (count == 0 || offset > dwLen || !buffer)
        return 0;
    unsigned long long newLen = static_cast<unsigned long long>(insert ? dwLen : offset) + count;
    if (newLen < dwLen)
        newLen = dwLen;
    SetModified(true);
    // Bytes taken from our own block are set aside first: growing may move the block and
    // inserting shifts them.
    unsigned char* own = nullptr;
    if (Inside(buffer, lpData, dwBufLen) && !(own = CopyOf(buffer, count))) {
        Empty();
        return 0;
    }
    const void* source = own ? own : buffer;
    if (newLen > dwBufLen && !Reserve(lpData ? StepTarget(newLen, dwGrowStep) : newLen)) {
        Release(own);
        Empty();
        return 0;
    }
    // Growing has made every byte of the length held, so the offset lies within them.
    unsigned long held = Held();
    unsigned long removed = insert ? 0 : std::min(count, held - offset);
    Removing(offset, removed);
    bool borrowed = (dwFlags & BC_FLAG_BORROW) != 0;
    if (borrowed)
        WriteInPlace(offset, source, count, insert);
    else
        WriteAtGap(offset, source, count, removed);
    dwLen = static_cast<unsigned long>(newLen);
    if (borrowed)
        dwGapAt = Held();
    Inserted(offset, count);
    Release(own);
    return count;
}

void BCMemoryData::WriteInPlace(unsigned long offset, const void* source, unsigned long count,
                                int insert) {
    unsigned long held = Held();
    MoveGap(held);
    if (insert && offset < held)
        std::memmove(lpData + offset + count, lpData + offset, held - offset);
    std::memcpy(lpData + offset, source, count);
}

// The overwritten bytes end where the free bytes start; new bytes beyond them go into the
// free bytes, which then start after the last byte written.
void BCMemoryData::WriteAtGap(unsigned long offset, const void* source, unsigned long count,
                              unsigned long removed) {
    MoveGap(offset + removed);
    std::memcpy(lpData + offset, source, count);
    dwGapAt = offset + count;
}

unsigned long BCMemoryData::DeleteData(unsigned long offset, unsigned long count) {
    if (offset >= dwLen)
        return 0;
    unsigned long long end = static_cast<unsigned long long>(offset) + count;
    unsigned long held = Held();
    if (count == dwLen) {
        Clear(true);
        SetModified(true);
        return count;
    }
    SetModified(true);
    if (end <= held && dwLen == held && !(dwFlags & BC_FLAG_BORROW)) {
        // The deleted bytes join the free bytes.
        Removing(offset, count);
        MoveGap(offset);
    } else {
        // A borrowed buffer stays in one piece; a delete past the end keeps what lies there.
        MoveGap(held);
        if (end < held)
            std::memmove(lpData + offset, lpData + end, held - end);
        Replaced();
    }
    dwLen -= count;
    if (dwGapAt > Held())
        dwGapAt = Held();
    return ShrinkAfterDelete(count) ? count : 0;
}

int BCMemoryData::ShrinkAfterDelete(unsigned long count) {
    if (count <= dwGrowStep)
        return 1;
    unsigned long long target = StepTarget(dwLen, dwGrowStep);
    if (!lpData || (dwFlags & BC_FLAG_BORROW) || target >= dwBufLen)
        return 1;
    MoveGap(Held());
    void* shrunk = BCReallocFarMem(lpData, static_cast<long>(target));
    if (!shrunk) {
        Empty();
        return 0;
    }
    Install(static_cast<unsigned char*>(shrunk), dwLen, static_cast<unsigned long>(target));
    return 1;
}

unsigned long BCMemoryData::GetData(unsigned long offset, void* buffer, unsigned long count) {
    unsigned long held = Held();
    if (!buffer || count == 0 || offset >= held)
        return 0;
    unsigned long n = held - offset < count ? held - offset : count;
    Run first, second;
    Runs(offset, offset + n, first, second);
    std::memcpy(buffer, first.bytes, first.size);
    if (second.size)
        std::memcpy(static_cast<unsigned char*>(buffer) + first.size, second.bytes, second.size);
    return n;
}

int BCMemoryData::LoadBytes(std::istream& is, unsigned long count, int toEnd) {
    if (!BCStreamOK(is))
        return 0;
    long long remaining = BCStreamRemaining(is);
    bool known = remaining >= 0;
    if (toEnd && known && static_cast<unsigned long long>(remaining) > kMaxBlock)
        return 0;
    if (!toEnd &&
        (count > kMaxBlock || (known && static_cast<unsigned long long>(remaining) < count)))
        return 0;
    unsigned long limit = toEnd ? static_cast<unsigned long>(known ? remaining : kMaxBlock) : count;
    unsigned char* block = nullptr;
    unsigned long got = 0, capacity = 0;
    if (!ReadBlock(is, limit, known, block, got, capacity))
        return 0;
    // A read to the end that filled the largest block may have left bytes behind.
    bool left = toEnd && !known && got == limit && is.peek() != std::char_traits<char>::eof();
    if (left || (!toEnd && got != count)) {
        Release(block);
        return 0;
    }
    if (toEnd) // running into the end is how a read to the end finishes
        is.clear(is.rdstate() & ~std::ios::failbit);
    Adopt(block, got, capacity);
    return 1;
}

void BCMemoryData::Adopt(unsigned char* block, unsigned long length, unsigned long capacity) {
    FreeBytes();
    dwFlags &= ~static_cast<unsigned long>(BC_FLAG_BORROW);
    Install(block, length, capacity);
    Replaced();
}

int BCMemoryData::Load(std::istream& is) {
    unsigned long length = 0;
    if (!BCObject::Load(is) || !BCLoadDblWord(is, length))
        return 0;
    return LoadBytes(is, length, false);
}

int BCMemoryData::Save(std::ostream& os) {
    return BCObject::Save(os) && BCSaveDblWord(os, Held()) &&
           BCSaveFarBlk(os, Contiguous(), static_cast<long>(Held()));
}

void BCMemoryData::Display(const char* prefix) {
    unsigned char b[16] = {};
    GetData(0, b, sizeof b);
    DispObjectMsg("%slpData=%08lX\ndwLen=%ld\ndwBufLen=%ld\nwFlags=%04X\n[0..15]=\n"
                  "%02x %02x %02x %02x\n%02x %02x %02x %02x\n%02x %02x %02x %02x\n"
                  "%02x %02x %02x %02x\n",
                  prefix ? prefix : "",
                  static_cast<unsigned long>(reinterpret_cast<std::uintptr_t>(lpData)),
                  static_cast<long>(dwLen), static_cast<long>(dwBufLen),
                  static_cast<unsigned int>(dwFlags), b[0], b[1], b[2], b[3], b[4], b[5], b[6],
                  b[7], b[8], b[9], b[10], b[11], b[12], b[13], b[14], b[15]);
}
