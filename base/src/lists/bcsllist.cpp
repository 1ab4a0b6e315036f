#include "bcsllist.h"

#include <new>

#include "bcids1.h"

BCSingleLinkedList::BCSingleLinkedList(unsigned int flags, unsigned int itemSize)
    : BCList(0, flags, itemSize), opHead(nullptr), opTail(nullptr) {
    SetObjectType(bcids::kTypeSingleLinkedList);
}

BCSingleLinkedList::~BCSingleLinkedList() {
    BCSingleLinkedList::Clear(1);
}

int BCSingleLinkedList::Clear(int freeItems) {
    unsigned long keep = dwFlags & BC_FLAG_KEEP_ITEMS;
    SetFlags(BC_FLAG_KEEP_ITEMS, freeItems == 0);
    while (BCSingleLinkNode* node = opHead) {
        opHead = node->opNext;
        DeleteItem(node->lpKey, node->lpItem);
        delete node;
    }
    dwFlags = (dwFlags & ~BC_FLAG_KEEP_ITEMS) | keep;
    opTail = nullptr;
    BCList::Clear(1);
    return 1;
}

int BCSingleLinkedList::Insert(void* key, void* item) {
    if (!(dwFlags & BC_FLAG_SORTED) && !lpCrnt)
        return Append(key, item);
    BCSingleLinkNode* node = new (std::nothrow) BCSingleLinkNode(key, item);
    return node ? InsertNode(key, node) : 0;
}

int BCSingleLinkedList::Append(void* key, void* item) {
    if (dwFlags & BC_FLAG_SORTED)
        return Insert(key, item);
    BCSingleLinkNode* node = new (std::nothrow) BCSingleLinkNode(key, item);
    if (!node)
        return 0;
    LinkAfter(opTail, node);
    lpCrnt = node;
    return Install(key, item, 0);
}

int BCSingleLinkedList::InsertNode(void* key, BCSingleLinkNode* node) {
    BCSingleLinkNode* prev = nullptr;
    if (dwFlags & BC_FLAG_SORTED) {
        // After every node whose key is not above the new one: equal keys keep their order.
        for (BCSingleLinkNode* p = opHead; p && CmpKey(key, p->lpKey) >= 0; p = p->opNext)
            prev = p;
    } else {
        prev = PredecessorOf(Crnt());
    }
    LinkAfter(prev, node);
    lpCrnt = node;
    return Install(key, node->lpItem, 1);
}

BCSingleLinkNode* BCSingleLinkedList::RemoveNode(void* key) {
    BCSingleLinkNode* prev = nullptr;
    for (BCSingleLinkNode* p = opHead; p; prev = p, p = p->opNext) {
        if (CmpKey(key, p->lpKey) == 0) {
            Unlink(prev, p);
            return p;
        }
    }
    return nullptr;
}

int BCSingleLinkedList::Relocate(void* key, void* oldKey, void*) {
    if (!(dwFlags & BC_FLAG_SORTED))
        return 1;
    BCSingleLinkNode* node = RemoveNode(oldKey);
    if (!node)
        node = RemoveNode(key);
    if (!node)
        return 0;
    node->lpKey = key;
    if (InsertNode(key, node))
        return 1;
    // Install refused the node after linking it: take it out again.
    Unlink(PredecessorOf(node), node);
    MoveIterators(node, nullptr, 0);
    delete node;
    return 0;
}

int BCSingleLinkedList::Delete(void* key) {
    return GoToItem(key) ? DeleteCrnt() : 0;
}

int BCSingleLinkedList::DeleteCrnt() {
    BCSingleLinkNode* node = Crnt();
    if (!node)
        return 0;
    BCSingleLinkNode* prev = PredecessorOf(node);
    BCSingleLinkNode* next = node->opNext;
    Unlink(prev, node);
    lpCrnt = next ? next : prev;
    MoveIterators(node, lpCrnt, 0);
    DeleteItem(node->lpKey, node->lpItem);
    delete node;
    return 1;
}

int BCSingleLinkedList::Home() {
    lpCrnt = opHead;
    return opHead != nullptr;
}

int BCSingleLinkedList::End() {
    if (!opTail)
        return 0;
    lpCrnt = opTail;
    return 1;
}

int BCSingleLinkedList::GoToIndex(unsigned int index) {
    if (index >= dwCount)
        return 0;
    BCSingleLinkNode* p = opHead;
    if (index == dwCount - 1)
        p = opTail;
    else
        for (unsigned int i = 0; p && i < index; ++i)
            p = p->opNext;
    if (!p)
        return 0;
    lpCrnt = p;
    return 1;
}

int BCSingleLinkedList::GoToItem(void* key) {
    for (BCSingleLinkNode* p = opHead; p; p = p->opNext) {
        if (CmpKey(key, p->lpKey) == 0) {
            lpCrnt = p;
            return 1;
        }
    }
    return 0;
}

int BCSingleLinkedList::Prev() {
    BCSingleLinkNode* prev = Crnt() ? PredecessorOf(Crnt()) : nullptr;
    if (!prev)
        return 0;
    lpCrnt = prev;
    return 1;
}

int BCSingleLinkedList::Next() {
    if (!Crnt() || !Crnt()->opNext)
        return 0;
    lpCrnt = Crnt()->opNext;
    return 1;
}

unsigned long BCSingleLinkedList::GetCrntInd() {
    if (!lpCrnt || !opHead)
        return BC_NO_INDEX;
    if (lpCrnt == opTail)
        return dwCount - 1;
    unsigned long i = 0;
    for (BCSingleLinkNode* p = opHead; p; p = p->opNext, ++i) {
        if (p == lpCrnt)
            return i;
    }
    return BC_NO_INDEX;
}

BCSingleLinkNode* BCSingleLinkedList::PredecessorOf(const BCSingleLinkNode* node) const {
    if (!node || node == opHead)
        return nullptr;
    for (BCSingleLinkNode* p = opHead; p; p = p->opNext) {
        if (p->opNext == node)
            return p;
    }
    return nullptr;
}

// Links `node` after `prev`, or at the head when `prev` is null.
void BCSingleLinkedList::LinkAfter(BCSingleLinkNode* prev, BCSingleLinkNode* node) {
    BCSingleLinkNode*& link = prev ? prev->opNext : opHead;
    node->opNext = link;
    link = node;
    if (!node->opNext)
        opTail = node;
    ++dwCount;
}

void BCSingleLinkedList::Unlink(BCSingleLinkNode* prev, BCSingleLinkNode* node) {
    (prev ? prev->opNext : opHead) = node->opNext;
    if (opTail == node)
        opTail = prev;
    if (lpCrnt == node)
        lpCrnt = nullptr;
    --dwCount;
}
