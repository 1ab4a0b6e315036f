#pragma once
#include "bclist.h"
#include "bcfwd.h"
#include "norlib2api.h"

// Key and item first, as in every node kind, then the links (null at the ends).
struct NORLIB2_API BCDoubleLinkNode : BCListNode {
    BCDoubleLinkNode(void* key, void* item)
        : BCListNode{key, item}, opPrev(nullptr), opNext(nullptr) {}
    BCDoubleLinkNode* opPrev;
    BCDoubleLinkNode* opNext;
};

// Nodes linked both ways, each holding the caller's key and item pointer (nothing is
// copied; items leave only through DeleteItem). Keeps head, tail and the current node;
// sorted lists (flag 0x0100) place new nodes by key, equal keys after those already there.
class NORLIB2_API BCDoubleLinkedList : public BCList {
  public:
    BCDoubleLinkedList(unsigned int flags, unsigned int itemSize);
    ~BCDoubleLinkedList() override;

    // Items go through DeleteItem with flag 0x0800 set when `freeItems` is 0; the flag is
    // put back afterwards. Returns 1.
    int Clear(int freeItems) override;
    // Unsorted: in front of the current node, or appended when there is none. The new node
    // becomes current.
    int Insert(void* key, void* item) override;
    // Sorted lists place by key instead.
    int Append(void* key, void* item) override;
    // Sorted lists only (unsorted ones report success and do nothing): moves the node of
    // `oldKey`, or else of `key`, to its place for `key`.
    int Relocate(void* key, void* oldKey, void* unused) override;
    // Removes the first node whose key compares equal; the current node, if it was that
    // one, is lost.
    int Delete(void* key) override;
    // The successor becomes current, or the predecessor when the last node went.
    int DeleteCrnt() override;
    int Home() override;
    int End() override;
    int GoToIndex(unsigned int index) override;
    // The first node whose key compares equal (zero, unlike the array list's search).
    int GoToItem(void* key) override;
    int Prev() override;
    int Next() override;
    unsigned long GetCrntInd() override;

    // Links a made node in at its place (see Insert), makes it current and returns what
    // Install says of it.
    int InsertNode(void* key, BCDoubleLinkNode* node);
    // Unlinks the first node whose key compares equal, without freeing it; null when none.
    BCDoubleLinkNode* RemoveNode(void* key);

    BCDoubleLinkNode* GetHead() const { return opHead; }
    BCDoubleLinkNode* GetTail() const { return opTail; }

  protected:
    BCDoubleLinkNode* Crnt() const { return static_cast<BCDoubleLinkNode*>(lpCrnt); }

  private:
    // The node a sorted insert of `key` goes after; null for the front.
    BCDoubleLinkNode* SortedPlace(void* key);
    // Links `node` after `prev`, or in front of the head when `prev` is null.
    void Link(BCDoubleLinkNode* prev, BCDoubleLinkNode* node);
    // Takes `node` out of the chain; it stops being current.
    void Unlink(BCDoubleLinkNode* node);
    BCDoubleLinkNode* FindNode(void* key);

    BCDoubleLinkNode* opHead;
    BCDoubleLinkNode* opTail;
};
