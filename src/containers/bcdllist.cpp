#include "bcdllist.h"

#include <new>

#include "bcids2.h"

BCDoubleLinkedList::BCDoubleLinkedList(unsigned int flags, unsigned int itemSize)
    : BCList(0, flags, itemSize), opHead(nullptr), opTail(nullptr) {
    SetObjectType(bcids::kTypeDoubleLinkedList);
}

BCDoubleLinkedList::~BCDoubleLinkedList() {
    Clear(1);
}

int BCDoubleLinkedList::Clear(int freeItems) {
    const unsigned long previous = SetFlags(BC_FLAG_KEEP_ITEMS, freeItems == 0);
    while (BCDoubleLinkNode* node = opHead) {
        opHead = node->opNext;
        DeleteItem(node->lpKey, node->lpItem);
        delete node;
    }
    SetFlags(BC_FLAG_KEEP_ITEMS, (previous & BC_FLAG_KEEP_ITEMS) != 0);
    opTail = nullptr;
    BCList::Clear(1);
    return 1;
}

int BCDoubleLinkedList::Insert(void* key, void* item) {
    if (!(dwFlags & BC_FLAG_SORTED) && !lpCrnt)
        return Append(key, item);
    BCDoubleLinkNode* node = new (std::nothrow) BCDoubleLinkNode(key, item);
    return node ? InsertNode(key, node) : 0;
}

int BCDoubleLinkedList::Append(void* key, void* item) {
    if (dwFlags & BC_FLAG_SORTED)
        return Insert(key, item);
    BCDoubleLinkNode* node = new (std::nothrow) BCDoubleLinkNode(key, item);
    if (!node)
        return 0;
    Link(opTail, node);
    lpCrnt = node;
    return Install(key, item, 0);
}

int BCDoubleLinkedList::InsertNode(void* key, BCDoubleLinkNode* node) {
    if (!node)
        return 0;
    BCDoubleLinkNode* prev = nullptr;
    if (opHead && (dwFlags & BC_FLAG_SORTED))
        prev = SortedPlace(key);
    else if (opHead && Prev()) // in front of the node that was current
        prev = Crnt();
    Link(prev, node);
    lpCrnt = node;
    return Install(key, node->lpItem, 1);
}

BCDoubleLinkNode* BCDoubleLinkedList::SortedPlace(void* key) {
    if (CmpKey(key, opHead->lpKey) < 0)
        return nullptr;
    BCDoubleLinkNode* prev = opHead;
    for (BCDoubleLinkNode* p = opHead->opNext; p && CmpKey(key, p->lpKey) >= 0; p = p->opNext)
        prev = p;
    return prev;
}

BCDoubleLinkNode* BCDoubleLinkedList::RemoveNode(void* key) {
    BCDoubleLinkNode* node = FindNode(key);
    if (node)
        Unlink(node);
    return node;
}

int BCDoubleLinkedList::Relocate(void* key, void* oldKey, void*) {
    if (!(dwFlags & BC_FLAG_SORTED))
        return 1;
    BCDoubleLinkNode* node = RemoveNode(oldKey);
    if (!node)
        node = RemoveNode(key);
    if (!node)
        return 0;
    node->lpKey = key;
    if (InsertNode(key, node))
        return 1;
    // Install refused it after it was linked: take it out again; the item is not ours.
    Unlink(node);
    MoveIterators(node, nullptr, 0);
    delete node;
    return 0;
}

int BCDoubleLinkedList::Delete(void* key) {
    BCDoubleLinkNode* node = RemoveNode(key);
    if (!node)
        return 0;
    MoveIterators(node, nullptr, 0);
    DeleteItem(node->lpKey, node->lpItem);
    delete node;
    return 1;
}

int BCDoubleLinkedList::DeleteCrnt() {
    BCDoubleLinkNode* node = Crnt();
    if (!node)
        return 0;
    BCDoubleLinkNode* successor = node->opNext ? node->opNext : node->opPrev;
    Unlink(node);
    lpCrnt = successor;
    MoveIterators(node, successor, 0);
    DeleteItem(node->lpKey, node->lpItem);
    delete node;
    return 1;
}

int BCDoubleLinkedList::Home() {
    lpCrnt = opHead;
    return opHead != nullptr;
}

int BCDoubleLinkedList::End() {
    if (!opTail)
        return 0;
    lpCrnt = opTail;
    return 1;
}

int BCDoubleLinkedList::GoToIndex(unsigned int index) {
    if (index >= dwCount || !opHead)
        return 0;
    BCDoubleLinkNode* p = opTail;
    if (index != dwCount - 1) {
        p = opHead;
        for (unsigned int i = 0; p && i < index; ++i)
            p = p->opNext;
    }
    if (!p)
        return 0;
    lpCrnt = p;
    return 1;
}

int BCDoubleLinkedList::GoToItem(void* key) {
    BCDoubleLinkNode* node = FindNode(key);
    if (!node)
        return 0;
    lpCrnt = node;
    return 1;
}

int BCDoubleLinkedList::Prev() {
    if (!Crnt() || !Crnt()->opPrev)
        return 0;
    lpCrnt = Crnt()->opPrev;
    return 1;
}

int BCDoubleLinkedList::Next() {
    if (!Crnt() || !Crnt()->opNext)
        return 0;
    lpCrnt = Crnt()->opNext;
    return 1;
}

unsigned long BCDoubleLinkedList::GetCrntInd() {
    if (!lpCrnt || !opHead)
        return BC_NO_INDEX;
    if (lpCrnt == opTail)
        return dwCount - 1;
    unsigned long i = 0;
    for (BCDoubleLinkNode* p = opHead; p && i < dwCount; p = p->opNext, ++i) {
        if (p == lpCrnt)
            return i;
    }
    return BC_NO_INDEX;
}

BCDoubleLinkNode* BCDoubleLinkedList::FindNode(void* key) {
    for (BCDoubleLinkNode* p = opHead; p; p = p->opNext) {
        if (CmpKey(key, p->lpKey) == 0)
            return p;
    }
    return nullptr;
}

void BCDoubleLinkedList::Link(BCDoubleLinkNode* prev, BCDoubleLinkNode* node) {
    BCDoubleLinkNode*& next = prev ? prev->opNext : opHead;
    node->opPrev = prev;
    node->opNext = next;
    if (next)
        next->opPrev = node;
    next = node;
    if (!node->opNext)
        opTail = node;
    ++dwCount;
}

void BCDoubleLinkedList::Unlink(BCDoubleLinkNode* node) {
    (node->opPrev ? node->opPrev->opNext : opHead) = node->opNext;
    (node->opNext ? node->opNext->opPrev : opTail) = node->opPrev;
    node->opPrev = node->opNext = nullptr;
    if (lpCrnt == node)
        lpCrnt = nullptr;
    --dwCount;
}
