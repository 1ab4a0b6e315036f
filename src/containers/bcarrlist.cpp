#include "bcarrlist.h"
#include "bcstream.h"
#include "bcmemory.h"

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <istream>
#include <new>
#include <ostream>

#include "bcids2.h"
#include "bcplatform.h"

namespace {

constexpr UINT kBlockFlags = GMEM_MOVEABLE | GMEM_ZEROINIT; // 0x42
// Largest block a list record may ask for: larger claims are corrupt streams.
constexpr unsigned long long kMaxLoadedBlock = 256ull * 1024 * 1024;

HGLOBAL Handle(void* block) {
    return static_cast<HGLOBAL>(block);
}

// Releases every lock still held on `block` and frees it.
void FreeBlock(void* block) {
    while (GlobalUnlock(Handle(block)))
        ;
    if (GlobalFree(Handle(block)))
        BCTraceFailure("GlobalFree");
}

} // namespace

BCArrayList::BCArrayList(unsigned int length, unsigned int itemSize, unsigned int keyOffset,
                         unsigned int keySize, unsigned int growBy, unsigned int flags)
    : BCList(length, flags | BC_FLAG_ARRAY, itemSize), hBlock(nullptr), lpBase(nullptr),
      dwKeyOfs(keyOffset), dwGrowBy(growBy), dwCrnt(0), lpKeyBuf(nullptr), dwLockCount(0),
      lpKeyScratch(nullptr) {
    SetObjectType(bcids::kTypeArrayList);
    dwKeySize = keySize;
    MakeKeyBuffers();
    if (length)
        SetLen(length);
}

// Items are bytes of the block; the key buffer is left to the heap's end of life.
BCArrayList::~BCArrayList() {
    if (hBlock)
        FreeBlock(hBlock);
    delete[] lpKeyScratch;
}

bool BCArrayList::KeysByAddress() const {
    return (dwFlags & (BC_FLAG_STRING_KEY | BC_FLAG_BLOCK_KEY)) != 0;
}

int BCArrayList::MakeKeyBuffers() {
    unsigned char* scratch = nullptr;
    unsigned char* keyBuf = nullptr;
    // Room for a terminating NUL and for a 32-bit value however short the key, even an
    // empty one.
    scratch = new (std::nothrow) unsigned char[dwKeySize + 5]();
    if (KeysByAddress())
        keyBuf = new (std::nothrow) unsigned char[dwKeySize + 1]();
    if (!scratch || (KeysByAddress() && !keyBuf)) {
        delete[] scratch;
        delete[] keyBuf;
        return 0;
    }
    delete[] lpKeyScratch;
    lpKeyScratch = scratch;
    delete[] lpKeyBuf;
    lpKeyBuf = keyBuf;
    return 1;
}

void* BCArrayList::KeyArgument(unsigned long index) {
    // A key that reaches past the item is cut there, never read beyond the block.
    unsigned long available = dwKeyOfs < dwItemSize ? dwItemSize - dwKeyOfs : 0;
    unsigned long size = dwKeySize < available ? dwKeySize : available;
    const unsigned char* key = ItemAt(index) + dwKeyOfs;
    std::int32_t value = 0;
    if (!KeysByAddress() && size >= sizeof value) { // the common case: no copy to make
        std::memcpy(&value, key, sizeof value);
        return reinterpret_cast<void*>(static_cast<std::intptr_t>(value));
    }
    std::memcpy(lpKeyScratch, key, size);
    std::memset(lpKeyScratch + size, 0, dwKeySize + 5 - size);
    if (KeysByAddress())
        return lpKeyScratch;
    std::memcpy(&value, lpKeyScratch, sizeof value);
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(value));
}

int BCArrayList::Clear(int freeItems) {
    BCList::Clear(freeItems);
    dwCrnt = 0;
    return 0;
}

void* BCArrayList::Find(void* key) {
    return GoToItem(key) ? GetCrntItem() : nullptr;
}

int BCArrayList::SetLen(unsigned int length) {
    unsigned long long size = static_cast<unsigned long long>(length) * dwItemSize;
    if (size > 0x7FFFFFFFull)
        return 0;
    HGLOBAL block =
        hBlock ? BCTraced(GlobalReAlloc(Handle(hBlock), static_cast<SIZE_T>(size), kBlockFlags),
                          "GlobalReAlloc")
               : BCTraced(GlobalAlloc(kBlockFlags, static_cast<SIZE_T>(size)), "GlobalAlloc");
    if (!block)
        return 0;
    hBlock = block;
    if (dwLockCount && lpBase) {
        // The block may have moved while this list held it locked.
        BCGlobalLock lock(block);
        lpBase = lock.As<unsigned char>();
    }
    return BCList::SetLen(length);
}

int BCArrayList::LockList() {
    unsigned long was = dwLockCount++;
    if (was)
        return lpBase != nullptr;
    if (!hBlock && !SetLen(dwGrowBy))
        return 0;
    lpBase = static_cast<unsigned char*>(BCTraced(GlobalLock(Handle(hBlock)), "GlobalLock"));
    return lpBase != nullptr;
}

int BCArrayList::UnlockList() {
    if (dwLockCount == 0) {
        DispObjectMsg(bcids::kMsgArrayListUnlockNesting);
        return 0;
    }
    --dwLockCount;
    SetLastError(NO_ERROR);
    if (GlobalUnlock(Handle(hBlock)))
        return 0;
    // Inner levels release a lock the block no longer holds, by design: only other errors
    // are faults.
    if (GetLastError() != NO_ERROR && GetLastError() != ERROR_NOT_LOCKED)
        BCTraceFailure("GlobalUnlock");
    return 1;
}

int BCArrayList::Insert(void* key, void* item) {
    if (!item)
        return 0;
    if (dwCount >= dwLength && (!SetLen(dwLength + dwGrowBy) || dwCount >= dwLength))
        return 0;
    if (!LockList())
        return 0;
    unsigned long place = dwCrnt < dwCount ? dwCrnt : dwCount;
    if (dwFlags & BC_FLAG_SORTED) {
        for (place = 0; place < dwCount; ++place) {
            if (CmpKey(key, KeyArgument(place)) < 0)
                break;
        }
    }
    if (place < dwCount)
        std::memmove(ItemAt(place + 1), ItemAt(place), (dwCount - place) * dwItemSize);
    std::memcpy(ItemAt(place), item, dwItemSize);
    ++dwCount;
    dwCrnt = place;
    return UnlockList();
}

int BCArrayList::Append(void* key, void* item) {
    dwCrnt = dwCount;
    return Insert(key, item);
}

int BCArrayList::Delete(void* key) {
    return GoToItem(key) ? DeleteCrnt() : 0;
}

int BCArrayList::DeleteCrnt() {
    if (dwCount == 0 || !LockList())
        return 0;
    if (dwCrnt < dwCount)
        std::memmove(ItemAt(dwCrnt), ItemAt(dwCrnt + 1), (dwCount - dwCrnt - 1) * dwItemSize);
    --dwCount;
    if (dwCrnt != 0 && dwCrnt == dwCount)
        --dwCrnt;
    return UnlockList();
}

int BCArrayList::Home() {
    if (dwCount == 0)
        return 0;
    dwCrnt = 0;
    return 1;
}

int BCArrayList::End() {
    if (dwCount == 0)
        return 0;
    dwCrnt = dwCount - 1;
    return 1;
}

int BCArrayList::GoToIndex(unsigned int index) {
    if (dwCount == 0)
        return 0;
    dwCrnt = index;
    return 1;
}

int BCArrayList::GoToItem(void* key) {
    if (dwCount == 0 || !LockList())
        return 0;
    for (unsigned long i = 0; i < dwCount; ++i) {
        if (CmpKey(key, KeyArgument(i)) < 0) {
            dwCrnt = i;
            return UnlockList();
        }
    }
    UnlockList();
    return 0;
}

int BCArrayList::Prev() {
    if (dwCount == 0 || dwCrnt == 0)
        return 0;
    --dwCrnt;
    return 1;
}

int BCArrayList::Next() {
    if (dwCount == 0 || dwCrnt >= dwCount - 1)
        return 0;
    ++dwCrnt;
    return 1;
}

unsigned long BCArrayList::GetCrntInd() {
    return dwCrnt;
}

void* BCArrayList::GetCrntItem() {
    return Lock();
}

// The current index may lie past the items (GoToIndex does not check it): then there is
// no item to hand out or change.
void* BCArrayList::GetCrntKey() {
    if (dwKeySize == 0 || dwCrnt >= dwCount || !LockList())
        return nullptr;
    void* key = KeyArgument(dwCrnt);
    if (KeysByAddress()) {
        std::memcpy(lpKeyBuf, lpKeyScratch, dwKeySize);
        key = lpKeyBuf;
    }
    UnlockList();
    return key;
}

void* BCArrayList::Lock() {
    if (dwCrnt >= dwCount || !LockList())
        return nullptr;
    unsigned char* copy = new (std::nothrow) unsigned char[dwItemSize ? dwItemSize : 1];
    if (copy)
        std::memcpy(copy, ItemAt(dwCrnt), dwItemSize);
    UnlockList();
    return copy;
}

int BCArrayList::Update(void*, void* item) {
    if (!item || dwCrnt >= dwCount || !LockList())
        return 0;
    std::memcpy(ItemAt(dwCrnt), item, dwItemSize);
    UnlockList();
    return 1;
}

int BCArrayList::Unlock(void* key, void* item) {
    if (!Update(key, item))
        return 0;
    delete[] static_cast<unsigned char*>(item);
    return 1;
}

int BCArrayList::SaveBase(std::ostream& os) {
    return BCList::SaveBase(os) && BCSaveDblWord(os, dwKeyOfs) && BCSaveDblWord(os, dwKeySize) &&
           BCSaveDblWord(os, dwGrowBy);
}

int BCArrayList::LoadBase(std::istream& is) {
    // What a failed load puts back, so the list stays usable.
    const unsigned long flags = dwFlags, length = dwLength, itemSize = dwItemSize,
                        keySize = dwKeySize, keyOfs = dwKeyOfs, growBy = dwGrowBy;
    auto restore = [&]() {
        dwFlags = flags, dwLength = length, dwItemSize = itemSize;
        dwKeySize = keySize, dwKeyOfs = keyOfs, dwGrowBy = growBy;
        MakeKeyBuffers();
        return 0;
    };
    unsigned long keyOfs2 = 0, keySize2 = 0, growBy2 = 0;
    if (!BCList::LoadBase(is))
        return restore();
    if (!BCLoadDblWord(is, keyOfs2) || !BCLoadDblWord(is, keySize2) || !BCLoadDblWord(is, growBy2))
        return restore();
    const unsigned long long count = GetLoadCount();
    const unsigned long long itemBytes = count * dwItemSize;
    const long long remaining = BCStreamRemaining(is);
    if (count > dwLength || dwItemSize > kMaxLoadedBlock ||
        static_cast<unsigned long long>(dwLength) * dwItemSize > kMaxLoadedBlock ||
        (keySize2 && static_cast<unsigned long long>(keyOfs2) + keySize2 > dwItemSize) ||
        (remaining >= 0 && itemBytes > static_cast<unsigned long long>(remaining)))
        return restore();
    dwKeyOfs = keyOfs2, dwKeySize = keySize2, dwGrowBy = growBy2;
    if (!MakeKeyBuffers())
        return restore();
    if (hBlock) {
        FreeBlock(hBlock);
        hBlock = nullptr;
        lpBase = nullptr;
    }
    return SetLen(dwLength) ? 1 : restore();
}

int BCArrayList::Save(std::ostream& os) {
    if (!SaveBase(os))
        return 0;
    if (dwCount == 0)
        return 1;
    if (!LockList())
        return 0;
    int ok = 1;
    for (unsigned long i = 0; i < dwCount && ok; ++i)
        ok = SaveItem(os, KeyArgument(i), ItemAt(i));
    UnlockList();
    return ok;
}

int BCArrayList::SaveItem(std::ostream& os, void*, void* item) {
    return item && BCSaveFarBlk(os, item, static_cast<long>(dwItemSize));
}

int BCArrayList::LoadItem(std::istream& is) {
    if (dwCrnt >= dwLength || !LockList())
        return 0;
    if (!BCLoadFarBlk(is, ItemAt(dwCrnt), static_cast<long>(dwItemSize))) {
        UnlockList();
        return 0;
    }
    ++dwCount;
    return UnlockList();
}

int BCArrayList::SwapState(BCIterator* iterator) {
    BCIteratorState* state = BCGetIteratorState(iterator);
    if (!state)
        return 0;
    std::uintptr_t crnt = dwCrnt;
    dwCrnt = static_cast<unsigned long>(state->dwState2);
    state->dwState2 = crnt;
    return 1;
}
