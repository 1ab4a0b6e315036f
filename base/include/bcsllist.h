#pragma once
#include "bclist.h"

struct NORLIB1_API BCSingleLinkNode : BCListNode {
    BCSingleLinkNode(void* key, void* item) : BCListNode{key, item}, opNext(nullptr) {}
    BCSingleLinkNode* opNext;
};

// Nodes linked one way, each holding the caller's key and item. Keeps head, tail and the
// current node; sorted lists (flag 0x0100) place new nodes by key, equal keys after the
// nodes already there.
class NORLIB1_API BCSingleLinkedList : public BCList {
  public:
    BCSingleLinkedList(unsigned int flags, unsigned int itemSize);
    ~BCSingleLinkedList() override;

    // Frees every node; items go through DeleteItem, left alone when `freeItems` is 0.
    int Clear(int freeItems) override;
    // Unsorted: in front of the current node, or appended when there is none. The new node
    // becomes current.
    int Insert(void* key, void* item) override;
    int Append(void* key, void* item) override;
    // Sorted lists only: moves the node of `oldKey` (or else of `key`) to its place for `key`.
    int Relocate(void* key, void* oldKey, void* unused) override;
    int Delete(void* key) override;
    // The successor becomes current, or the predecessor when the last node went.
    int DeleteCrnt() override;
    int Home() override;
    int End() override;
    int GoToIndex(unsigned int index) override;
    int GoToItem(void* key) override;
    int Prev() override;
    int Next() override;
    unsigned long GetCrntInd() override;

    BCSingleLinkNode* GetHead() const { return opHead; }
    BCSingleLinkNode* GetTail() const { return opTail; }

  protected:
    BCSingleLinkNode* Crnt() const { return static_cast<BCSingleLinkNode*>(lpCrnt); }
    // Links a made node in at its place and makes it current.
    int InsertNode(void* key, BCSingleLinkNode* node);
    // Unlinks the first node whose key compares equal; null when none.
    BCSingleLinkNode* RemoveNode(void* key);

  private:
    BCSingleLinkNode* PredecessorOf(const BCSingleLinkNode* node) const;
    void LinkAfter(BCSingleLinkNode* prev, BCSingleLinkNode* node);
    void Unlink(BCSingleLinkNode* prev, BCSingleLinkNode* node);

    BCSingleLinkNode* opHead;
    BCSingleLinkNode* opTail;
};
