#include "bclist.h"

#include <cstring>
#include <istream>
#include <new>
#include <ostream>

#include "bcids1.h"
#include "bcstream.h"

namespace {

BCIteratorStateAccess g_iteratorState = nullptr;

// Flag bits a list record carries: they fix how keys compare and items are placed.
constexpr unsigned long kRecordFlags =
    BC_FLAG_NOTIFY | BC_FLAG_SORTED | BC_FLAG_STRING_KEY | BC_FLAG_BLOCK_KEY;
// Largest owned item loaded from a stream that cannot tell its size.
constexpr unsigned long kMaxBlindItem = 64ul * 1024 * 1024;
// The length word of a null string or block key.
constexpr unsigned long kNoKey = 0xFFFFFFFFul;

bool IsTextFormat(const BCFormat& format) {
    return format.GetFormat() == BC_FORMAT_TEXT || format.GetFormat() == BC_FORMAT_PRIVATE_TEXT;
}

unsigned long TextLength(const void* item, unsigned long limit) {
    const char* text = static_cast<const char*>(item);
    unsigned long n = 0;
    while (n < limit && text[n] != '\0')
        ++n;
    return n;
}

// A value key as the signed number it stands for, the same on 32- and 64-bit builds.
void* ValueKey(long value) {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(value));
}

} // namespace

void BCSetIteratorStateAccess(BCIteratorStateAccess access) {
    g_iteratorState = access;
}

BCIteratorState* BCGetIteratorState(BCIterator* iterator) {
    return (iterator && g_iteratorState) ? g_iteratorState(iterator) : nullptr;
}

BCList::BCList(unsigned int length, unsigned int flags, unsigned int itemSize)
    : BCRenderableData(bcids::kTypeList, flags), dwLength(length), dwCount(0), dwItemSize(itemSize),
      lpCrnt(nullptr), dwIterCount(0), dwKeySize(0), dwCrntAux(0), dwLoadCount(0),
      opIters(nullptr) {}

BCList::~BCList() {}

void BCList::AttachIterator(BCIterator* iterator) {
    if (BCIteratorState* state = BCGetIteratorState(iterator)) {
        state->opNextIter = opIters;
        opIters = iterator;
    }
    ++dwIterCount;
}

void BCList::DetachIterator(BCIterator* iterator) {
    for (BCIterator** link = &opIters; *link;) {
        BCIteratorState* state = BCGetIteratorState(*link);
        if (!state)
            break;
        if (*link == iterator) {
            *link = state->opNextIter;
            break;
        }
        link = &state->opNextIter;
    }
    if (dwIterCount)
        --dwIterCount;
}

template <class Visit> void BCList::ForEachIterator(Visit visit) {
    for (BCIterator* it = opIters; it;) {
        BCIteratorState* state = BCGetIteratorState(it);
        if (!state)
            return;
        visit(*state);
        it = state->opNextIter;
    }
}

// The iterator whose call is running holds the list's own position in its words: it is
// moved like the others.
void BCList::MoveIterators(const void* node, void* to, unsigned long toAux) {
    ForEachIterator([&](BCIteratorState& state) {
        if (state.dwState1 == reinterpret_cast<std::uintptr_t>(node)) {
            state.dwState1 = reinterpret_cast<std::uintptr_t>(to);
            state.dwState3 = toAux;
        }
    });
}

// Visits every item in list order through the protocol (Lock/Unlock, so lists that hand out
// copies get them back). The walk moves the position; the node and its auxiliary word go
// back as they were, even when there was none, and lists that keep an index of their own
// (no node) go back to it.
template <class Visit> int BCList::ForEachItem(Visit visit) {
    void* node = lpCrnt;
    const unsigned long aux = dwCrntAux;
    const unsigned long index = node ? BC_NO_INDEX : GetCrntInd();
    int ok = 1;
    for (int more = Home(); more && ok; more = Next()) {
        void* key = GetCrntKey();
        void* item = Lock();
        ok = visit(key, item);
        Unlock(key, item);
    }
    lpCrnt = node;
    dwCrntAux = aux;
    if (index != BC_NO_INDEX)
        GoToIndex(index);
    return ok;
}

int BCList::Load(std::istream& is) {
    Clear(1);
    if (!LoadBase(is))
        return 0;
    unsigned long expected = dwLoadCount;
    dwLoadCount = 0;
    for (unsigned long i = 0; i < expected; ++i) {
        // Lists that store at the current index need it just past the last item; lists
        // that append refuse the index and need nothing.
        GoToIndex(dwCount);
        if (!LoadItem(is))
            return 0;
    }
    Home();
    return 1;
}

int BCList::Save(std::ostream& os) {
    if (!SaveBase(os))
        return 0;
    return ForEachItem([&](void* key, void* item) { return SaveItem(os, key, item); });
}

void BCList::Display(const char* prefix) {
    DispObjectMsg("%sdwFlags=%08lx, dwLength=%lu, dwCount=%lu, dwItemSize=%lu, dwIterCount=%lu",
                  prefix ? prefix : "", dwFlags, dwLength, dwCount, dwItemSize, dwIterCount);
}

BCRenderableData* BCList::Dup() {
    return nullptr;
}

// Every node is gone: no iterator keeps one.
int BCList::Clear(int) {
    dwCount = 0;
    lpCrnt = nullptr;
    dwCrntAux = 0;
    ForEachIterator([](BCIteratorState& state) { state.dwState1 = state.dwState3 = 0; });
    return 1;
}

int BCList::IsRenderable(BCFormat& format) {
    return IsItemRenderable(nullptr, nullptr, format);
}

unsigned long BCList::GetLen(BCFormat& format) {
    if (!IsRenderable(format))
        return 0;
    unsigned long total = 1; // the closing NUL
    ForEachItem([&](void* key, void* item) {
        unsigned long length = GetItemLen(key, item, format);
        total += (length ? length - 1 : 0) + 2;
        return 1;
    });
    return total;
}

unsigned long BCList::GetData(void* buffer, unsigned long size, BCFormat& format) {
    if (!buffer || size == 0 || !IsRenderable(format))
        return 0;
    unsigned long total = 0;
    if (!RenderItems(static_cast<char*>(buffer), size, format, total))
        return 0;
    return total;
}

int BCList::RenderItems(char* buffer, unsigned long size, BCFormat& format, unsigned long& total) {
    unsigned long used = 0;
    buffer[0] = '\0';
    int ok = ForEachItem([&](void* key, void* item) {
        if (used + 1 >= size)
            return 1; // full: the rest is cut
        unsigned long written = GetItemData(key, item, buffer + used, size - used, format);
        if (written == 0)
            return 0;
        used += written - 1;
        for (const char* end = "\r\n"; *end && used + 1 < size; ++end)
            buffer[used++] = *end;
        buffer[used] = '\0';
        return 1;
    });
    total = used + 1;
    return ok;
}

unsigned long BCList::SetData(void* buffer, unsigned long length, BCFormat& format) {
    if (!IsRenderable(format) || (!buffer && length))
        return 0;
    Clear(1);
    const char* text = static_cast<const char*>(buffer);
    unsigned long start = 0;
    while (start < length && text[start] != '\0') {
        unsigned long end = start;
        while (end < length && text[end] != '\0' && text[end] != '\n')
            ++end;
        unsigned long lineEnd = (end > start && text[end - 1] == '\r') ? end - 1 : end;
        if (!SetItemData(const_cast<char*>(text + start), lineEnd - start, format))
            return 0;
        start = (end < length && text[end] == '\n') ? end + 1 : end;
    }
    SetModified(1);
    return length;
}

void* BCList::Find(void* key) {
    return GoToItem(key) ? GetCrntItem() : nullptr;
}

// This base keeps no items: nothing can be added, moved or visited.
int BCList::Insert(void*, void*) {
    return 0;
}
int BCList::Append(void*, void*) {
    return 0;
}
int BCList::Relocate(void*, void*, void*) {
    return 0;
}
int BCList::Delete(void* key) {
    return GoToItem(key) ? DeleteCrnt() : 0;
}
int BCList::DeleteCrnt() {
    return 0;
}
int BCList::Home() {
    return 0;
}
int BCList::End() {
    return 0;
}
int BCList::GoToIndex(unsigned int) {
    return 0;
}
int BCList::GoToItem(void*) {
    return 0;
}
int BCList::Prev() {
    return 0;
}
int BCList::Next() {
    return 0;
}
unsigned long BCList::GetCrntInd() {
    return BC_NO_INDEX;
}

void* BCList::GetCrntItem() {
    return lpCrnt ? GetCrntNode()->lpItem : nullptr;
}

void* BCList::SetCrntItem(void* item) {
    if (!lpCrnt)
        return nullptr;
    void* previous = GetCrntNode()->lpItem;
    GetCrntNode()->lpItem = item;
    return previous;
}

void* BCList::GetCrntKey() {
    return lpCrnt ? GetCrntNode()->lpKey : nullptr;
}

void* BCList::Lock() {
    return GetCrntItem();
}

int BCList::Update(void*, void* item) {
    if (!lpCrnt)
        return 0;
    GetCrntNode()->lpItem = item;
    return 1;
}

int BCList::Unlock(void* key, void* item) {
    return Update(key, item);
}

int BCList::SaveBase(std::ostream& os) {
    return BCObject::Save(os) && BCSaveDblWord(os, dwFlags) && BCSaveDblWord(os, dwLength) &&
           BCSaveDblWord(os, dwCount) && BCSaveDblWord(os, dwItemSize);
}

int BCList::LoadBase(std::istream& is) {
    unsigned long flags = 0, length = 0, count = 0, itemSize = 0;
    if (!BCObject::Load(is) || !BCLoadDblWord(is, flags) || !BCLoadDblWord(is, length) ||
        !BCLoadDblWord(is, count) || !BCLoadDblWord(is, itemSize))
        return 0;
    if ((flags & BC_FLAG_STRING_KEY) && (flags & BC_FLAG_BLOCK_KEY))
        return 0;
    dwFlags = (dwFlags & ~kRecordFlags) | (flags & kRecordFlags);
    dwLength = length;
    dwItemSize = itemSize;
    dwLoadCount = count;
    return 1;
}

bool BCList::KeysByAddress() const {
    return (dwFlags & (BC_FLAG_STRING_KEY | BC_FLAG_BLOCK_KEY)) != 0;
}

// Owned items travel as their key, then their item-size bytes. A value key is its 4-byte
// signed value; a string or block key is its length and bytes (kNoKey alone when null). A
// loaded string or block key is placed behind the item in the item's own block, so that it
// lives and dies with the item.
int BCList::LoadItem(std::istream& is) {
    unsigned long keyWord = 0;
    if (dwItemSize == 0 || !BCLoadDblWord(is, keyWord))
        return 0;
    const bool byAddress = KeysByAddress();
    const unsigned long keyBytes = (byAddress && keyWord != kNoKey) ? keyWord : 0;
    if ((dwFlags & BC_FLAG_BLOCK_KEY) && keyWord != kNoKey && keyWord != dwKeySize)
        return 0;
    const unsigned long long need = static_cast<unsigned long long>(dwItemSize) + keyBytes;
    long long remaining = BCStreamRemaining(is);
    if (remaining >= 0 ? static_cast<unsigned long long>(remaining) < need : need > kMaxBlindItem)
        return 0;
    char* item = new (std::nothrow) char[need + 1]();
    if (!item)
        return 0;
    char* keyCopy = item + dwItemSize;
    void* key =
        byAddress ? (keyWord == kNoKey ? nullptr : keyCopy) : ValueKey(static_cast<long>(keyWord));
    if (!BCLoadFarBlk(is, keyCopy, static_cast<long>(keyBytes)) ||
        !BCLoadFarBlk(is, item, static_cast<long>(dwItemSize)) || !Append(key, item)) {
        delete[] item;
        return 0;
    }
    return 1;
}

int BCList::SaveKey(std::ostream& os, void* key) {
    if (!KeysByAddress())
        return BCSaveDblWord(os, static_cast<unsigned long>(reinterpret_cast<std::intptr_t>(key)));
    if (!key)
        return BCSaveDblWord(os, kNoKey);
    const unsigned long length =
        (dwFlags & BC_FLAG_STRING_KEY) ? std::strlen(static_cast<char*>(key)) : dwKeySize;
    return BCSaveDblWord(os, length) && BCSaveFarBlk(os, key, static_cast<long>(length));
}

int BCList::SaveItem(std::ostream& os, void* key, void* item) {
    if (dwItemSize == 0 || !item)
        return 0;
    return SaveKey(os, key) && BCSaveFarBlk(os, item, static_cast<long>(dwItemSize));
}

int BCList::SetLen(unsigned int length) {
    dwLength = length;
    return 1;
}

// Items already stored keep their size; the change is refused while there are any. The
// capacity is set again so that lists holding storage resize it.
int BCList::SetItemSize(unsigned int itemSize) {
    if (dwCount != 0)
        return 0;
    unsigned long previous = dwItemSize;
    dwItemSize = itemSize;
    if (!SetLen(dwLength)) {
        dwItemSize = previous;
        return 0;
    }
    return 1;
}

int BCList::SwapState(BCIterator* iterator) {
    BCIteratorState* state = BCGetIteratorState(iterator);
    if (!state)
        return 0;
    std::uintptr_t crnt = reinterpret_cast<std::uintptr_t>(lpCrnt);
    lpCrnt = reinterpret_cast<void*>(state->dwState1);
    state->dwState1 = crnt;
    std::uintptr_t aux = dwCrntAux;
    dwCrntAux = static_cast<unsigned long>(state->dwState3);
    state->dwState3 = aux;
    return 1;
}

int BCList::CmpKey(void* key, void* itemKey) {
    if (dwFlags & BC_FLAG_STRING_KEY) {
        const char* a = key ? static_cast<const char*>(key) : "";
        const char* b = itemKey ? static_cast<const char*>(itemKey) : "";
        return std::strcmp(a, b);
    }
    if (dwFlags & BC_FLAG_BLOCK_KEY) {
        if (!key || !itemKey)
            return (key ? 1 : 0) - (itemKey ? 1 : 0);
        return std::memcmp(key, itemKey, dwKeySize);
    }
    std::intptr_t a = reinterpret_cast<std::intptr_t>(key);
    std::intptr_t b = reinterpret_cast<std::intptr_t>(itemKey);
    return a < b ? -1 : (a > b ? 1 : 0);
}

int BCList::Install(void*, void*, int) {
    return 1;
}

int BCList::DeleteItem(void*, void* item) {
    if (dwFlags & BC_FLAG_KEEP_ITEMS)
        return 1;
    if (item && dwItemSize)
        delete[] static_cast<char*>(item);
    return 1;
}

int BCList::IsItemRenderable(void*, void*, BCFormat& format) {
    return dwItemSize != 0 && IsTextFormat(format);
}

unsigned long BCList::GetItemData(void* key, void* item, void* buffer, unsigned long size,
                                  BCFormat& format) {
    if (!item || !buffer || size == 0 || !IsItemRenderable(key, item, format))
        return 0;
    unsigned long length = TextLength(item, dwItemSize);
    if (length > size - 1)
        length = size - 1;
    std::memcpy(buffer, item, length);
    static_cast<char*>(buffer)[length] = '\0';
    return length + 1;
}

unsigned long BCList::GetItemLen(void* key, void* item, BCFormat& format) {
    if (!item || !IsItemRenderable(key, item, format))
        return 0;
    return TextLength(item, dwItemSize) + 1;
}

int BCList::SetItemData(void* buffer, unsigned long length, BCFormat& format) {
    if ((!buffer && length) || !IsItemRenderable(nullptr, nullptr, format))
        return 0;
    char* item = new (std::nothrow) char[dwItemSize]();
    if (!item)
        return 0;
    unsigned long n = TextLength(buffer ? buffer : "", length);
    if (n > dwItemSize - 1)
        n = dwItemSize - 1;
    if (n)
        std::memcpy(item, buffer, n);
    int appended = Append(nullptr, item);
    // An array list (flag 0x0400) stores a copy of the bytes; other lists keep the block.
    if (!appended || (dwFlags & BC_FLAG_ARRAY))
        delete[] item;
    return appended ? 1 : 0;
}
