#include "bchash.h"

#include <cstdint>
#include <istream>
#include <new>

namespace {
// Downward bucket walks take this index for the position before the first bucket.
constexpr unsigned long kBeforeFirst = 0xFFFF;
} // namespace

BCHashList::BCHashList(unsigned int buckets, unsigned int flags, unsigned int itemSize)
    : BCList(buckets, flags, itemSize), lpBuckets(nullptr) {
    if (buckets && buckets <= SIZE_MAX / sizeof(BCSingleLinkNode*))
        lpBuckets = new (std::nothrow) BCSingleLinkNode*[buckets]();
    dwCrntAux = 0;
}

BCHashList::~BCHashList() {
    Clear((dwFlags & BC_FLAG_KEEP_ITEMS) ? 0 : 1);
    delete[] lpBuckets;
}

unsigned long BCHashList::Hash(void* key) {
    if (dwLength == 0)
        return 0;
    std::uint32_t sum = 0;
    const signed char* bytes = static_cast<const signed char*>(key);
    if (dwFlags & BC_FLAG_STRING_KEY) {
        // Characters above 127 count as negative and subtract.
        for (const signed char* c = bytes; c && *c; ++c)
            sum += static_cast<std::uint32_t>(*c);
    } else if (dwFlags & BC_FLAG_BLOCK_KEY) {
        // By contents, as they compare: a copy of a key must land where the key did.
        for (unsigned long i = 0; bytes && i < dwKeySize; ++i)
            sum += static_cast<std::uint32_t>(bytes[i]);
    } else {
        sum = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(key) & 0xFFFFu);
    }
    return sum % dwLength;
}

unsigned long BCHashList::BucketOf(void* key) {
    return Hash(key) % dwLength;
}

int BCHashList::Clear(int freeItems) {
    if (lpBuckets) {
        const unsigned long previous = SetFlags(BC_FLAG_KEEP_ITEMS, freeItems == 0);
        for (unsigned long b = 0; b < dwLength; ++b) {
            while (BCSingleLinkNode* node = lpBuckets[b]) {
                lpBuckets[b] = node->opNext;
                DeleteItem(node->lpKey, node->lpItem);
                delete node;
            }
        }
        SetFlags(BC_FLAG_KEEP_ITEMS, (previous & BC_FLAG_KEEP_ITEMS) != 0);
    }
    BCList::Clear(1);
    return 1;
}

int BCHashList::Insert(void* key, void* item) {
    if (!lpBuckets)
        return 0;
    BCSingleLinkNode* node = new (std::nothrow) BCSingleLinkNode(key, item);
    return node ? InsertNode(key, node) : 0;
}

int BCHashList::Append(void* key, void* item) {
    return Insert(key, item);
}

int BCHashList::InsertNode(void* key, BCSingleLinkNode* node) {
    if (!lpBuckets || !node)
        return 0;
    const unsigned long b = BucketOf(key);
    const bool sorted = (dwFlags & BC_FLAG_SORTED) != 0;
    BCSingleLinkNode** link = &lpBuckets[b];
    while (*link && (!sorted || CmpKey(key, (*link)->lpKey) >= 0))
        link = &(*link)->opNext;
    node->opNext = *link;
    *link = node;
    ++dwCount;
    SetCrnt(b, node);
    return Install(key, node->lpItem, 1);
}

BCSingleLinkNode* BCHashList::RemoveNode(void* key) {
    if (!lpBuckets)
        return nullptr;
    BCSingleLinkNode** link = LinkToKey(BucketOf(key), key);
    if (!link)
        return nullptr;
    BCSingleLinkNode* node = *link;
    Unlink(link);
    return node;
}

int BCHashList::Relocate(void* key, void* oldKey, void*) {
    BCSingleLinkNode* node = RemoveNode(oldKey);
    if (!node)
        node = RemoveNode(key);
    if (!node)
        return 0;
    node->lpKey = key;
    if (InsertNode(key, node))
        return 1;
    // Install refused it after it was linked: take it out again; the item is not ours.
    if (BCSingleLinkNode** link = LinkToNode(node))
        Unlink(link);
    MoveIterators(node, nullptr, 0);
    delete node;
    return 0;
}

int BCHashList::Delete(void* key) {
    BCSingleLinkNode* node = RemoveNode(key);
    if (!node)
        return 0;
    MoveIterators(node, nullptr, 0);
    DeleteItem(node->lpKey, node->lpItem);
    delete node;
    return 1;
}

// The node is looked for in the chain its key hashes to, and only there.
int BCHashList::DeleteCrnt() {
    if (!lpCrnt || !lpBuckets)
        return 0;
    BCSingleLinkNode* node = Crnt();
    BCSingleLinkNode** link = LinkToNode(node);
    if (!link)
        return 0;
    Unlink(link);
    MoveIterators(node, nullptr, 0);
    DeleteItem(node->lpKey, node->lpItem);
    delete node;
    return 1;
}

int BCHashList::Home() {
    if (!lpBuckets)
        return 0;
    const unsigned long b = FilledUpFrom(0);
    if (b >= dwLength)
        return 0;
    SetCrnt(b, lpBuckets[b]);
    return 1;
}

int BCHashList::End() {
    if (!lpBuckets)
        return 0;
    const unsigned long b = FilledDownFrom(dwLength - 1, nullptr);
    if (b == kBeforeFirst)
        return 0;
    BCSingleLinkNode* last = lpBuckets[b];
    while (last->opNext)
        last = last->opNext;
    SetCrnt(b, last);
    return 1;
}

int BCHashList::Prev() {
    if (!lpBuckets || !lpCrnt)
        return 0;
    const unsigned long b = FilledDownFrom(dwCrntAux, Crnt());
    if (b == kBeforeFirst)
        return 0;
    // The node before the current one in its chain, or else the last of a lower chain.
    BCSingleLinkNode* p = lpBuckets[b];
    while (p->opNext && p->opNext != lpCrnt)
        p = p->opNext;
    SetCrnt(b, p);
    return 1;
}

int BCHashList::Next() {
    if (!lpBuckets || !lpCrnt || dwCrntAux >= dwLength)
        return 0;
    if (Crnt()->opNext) {
        lpCrnt = Crnt()->opNext;
        return 1;
    }
    const unsigned long b = FilledUpFrom(dwCrntAux + 1);
    if (b >= dwLength)
        return 0;
    SetCrnt(b, lpBuckets[b]);
    return 1;
}

int BCHashList::GoToIndex(unsigned int index) {
    if (!lpBuckets || index >= dwCount)
        return 0;
    unsigned long n = 0;
    for (unsigned long b = 0; b < dwLength; ++b) {
        for (BCSingleLinkNode* p = lpBuckets[b]; p; p = p->opNext, ++n) {
            if (n == index) {
                SetCrnt(b, p);
                return 1;
            }
        }
    }
    return 0;
}

int BCHashList::GoToItem(void* key) {
    if (!lpBuckets)
        return 0;
    const unsigned long b = BucketOf(key);
    BCSingleLinkNode** link = LinkToKey(b, key);
    if (!link)
        return 0;
    SetCrnt(b, *link);
    return 1;
}

unsigned long BCHashList::GetCrntInd() {
    if (!lpBuckets || !lpCrnt)
        return BC_NO_INDEX;
    unsigned long n = 0;
    for (unsigned long b = 0; b < dwLength; ++b) {
        for (BCSingleLinkNode* p = lpBuckets[b]; p; p = p->opNext, ++n) {
            if (p == lpCrnt)
                return n;
        }
    }
    return BC_NO_INDEX;
}

int BCHashList::LoadBase(std::istream& is) {
    const unsigned long buckets = dwLength;
    const int loaded = BCList::LoadBase(is);
    dwLength = buckets;
    return loaded;
}

int BCHashList::SetLen(unsigned int length) {
    return length == dwLength;
}

template <class Match> BCSingleLinkNode** BCHashList::LinkTo(unsigned long bucket, Match match) {
    for (BCSingleLinkNode** link = &lpBuckets[bucket]; *link; link = &(*link)->opNext) {
        if (match(*link))
            return link;
    }
    return nullptr;
}

BCSingleLinkNode** BCHashList::LinkToKey(unsigned long bucket, void* key) {
    return LinkTo(bucket, [&](BCSingleLinkNode* p) { return CmpKey(key, p->lpKey) == 0; });
}

BCSingleLinkNode** BCHashList::LinkToNode(const BCSingleLinkNode* node) {
    return LinkTo(BucketOf(node->lpKey), [&](BCSingleLinkNode* p) { return p == node; });
}

void BCHashList::Unlink(BCSingleLinkNode** link) {
    BCSingleLinkNode* node = *link;
    *link = node->opNext;
    node->opNext = nullptr;
    if (lpCrnt == node)
        SetCrnt(0, nullptr);
    --dwCount;
}

unsigned long BCHashList::FilledUpFrom(unsigned long from) const {
    unsigned long b = from;
    while (b < dwLength && !lpBuckets[b])
        ++b;
    return b;
}

// Both ends stop the walk: the 0xFFFF sentinel and running below bucket 0 (which wraps past
// the bucket count).
unsigned long BCHashList::FilledDownFrom(unsigned long from,
                                         const BCSingleLinkNode* exclude) const {
    for (unsigned long b = from; b < dwLength && b != kBeforeFirst; --b) {
        if (lpBuckets[b] && lpBuckets[b] != exclude)
            return b;
    }
    return kBeforeFirst;
}

void BCHashList::SetCrnt(unsigned long bucket, BCSingleLinkNode* node) {
    lpCrnt = node;
    dwCrntAux = bucket;
}
