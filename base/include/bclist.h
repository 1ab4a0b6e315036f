#pragma once
#include <cstdint>
#include <iosfwd>
#include "bcrendata.h"

class BCIterator;

// What GetCrntInd gives when there is no current item.
constexpr unsigned long BC_NO_INDEX = 0xFFFFFFFFul;

// The first fields of every list node: code that reads a node's key or item works on all
// node kinds.
struct BCListNode {
    void* lpKey;
    void* lpItem;
};

// The three words in which an iterator keeps a position of its list while it is not in
// use. Pointer-sized, since a linked list's position is a node. The link chains the
// iterators open on one list, so that the list can move them off a node it frees.
struct BCIteratorState {
    std::uintptr_t dwState1; // current node (BCList default)
    std::uintptr_t dwState2; // current index (array list)
    std::uintptr_t dwState3; // auxiliary position word (BCList default), e.g. a bucket
    BCIterator* opNextIter;  // the next iterator open on the same list
};

// The iterator class lives in the library above this module; it tells this module where
// its state words are, so the default SwapState can reach them.
typedef BCIteratorState* (*BCIteratorStateAccess)(BCIterator* iterator);
NORLIB1_API void BCSetIteratorStateAccess(BCIteratorStateAccess access);
// The state words of `iterator`; null without an iterator or before the access is set.
NORLIB1_API BCIteratorState* BCGetIteratorState(BCIterator* iterator);

// The list protocol. The order of the virtual operations is part of the contract: callers
// reach them by slot. BCList holds no items itself: its positional defaults report an empty
// list; lists whose current position is a node (a BCListNode) use the item defaults.
class NORLIB1_API BCList : public BCRenderableData {
    friend class BCIterator;

  public:
    BCList(unsigned int length, unsigned int flags, unsigned int itemSize);
    BCList(const BCList&) = delete;
    BCList& operator=(const BCList&) = delete;
    ~BCList() override;

    // Record: SaveBase, then every item through SaveItem; Load empties the list, then
    // LoadBase and one LoadItem for each item saved, stopping at the first failure. Save,
    // GetLen and GetData leave the current position as they found it, also none.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;

    // A list holds nothing that can be copied by this base: Dup gives null.
    BCRenderableData* Dup() override;
    int Clear(int freeItems) override;
    // Whole-list rendering: every item's rendering, each followed by CR LF.
    int IsRenderable(BCFormat& format) override;
    unsigned long GetData(void* buffer, unsigned long size, BCFormat& format) override;
    unsigned long GetLen(BCFormat& format) override;
    // Replaces the items by one per line of the text.
    unsigned long SetData(void* buffer, unsigned long length, BCFormat& format) override;

    virtual void* Find(void* key);
    virtual int Insert(void* key, void* item);
    virtual int Append(void* key, void* item);
    virtual int Relocate(void* key, void* item, void* newKey);
    virtual int Delete(void* key);
    virtual int DeleteCrnt();
    virtual int Home();
    virtual int End();
    virtual int GoToIndex(unsigned int index);
    virtual int GoToItem(void* key);
    virtual int Prev();
    virtual int Next();
    // Index of the current item; all bits set when there is none.
    virtual unsigned long GetCrntInd();
    virtual void* GetCrntItem();
    // Returns the item replaced, null without a current item.
    virtual void* SetCrntItem(void* item);
    virtual void* GetCrntKey();
    virtual void* Lock();
    virtual int Update(void* key, void* item);
    virtual int Unlock(void* key, void* item);
    virtual int LoadBase(std::istream& is);
    virtual int SaveBase(std::ostream& os);
    virtual int LoadItem(std::istream& is);
    virtual int SaveItem(std::ostream& os, void* key, void* item);
    virtual int SetLen(unsigned int length);
    virtual int SetItemSize(unsigned int itemSize);
    virtual int SwapState(BCIterator* iterator);
    // Strings by strcmp, blocks by memcmp over the key size, other keys as signed values.
    virtual int CmpKey(void* key, void* itemKey);
    virtual int Install(void* key, void* item, int inserted);
    // Items of a list with a non-zero item size are blocks the list owns (new[]); they are
    // freed here unless flag 0x0800 is set. Items of size 0 are the caller's. A string or
    // block key that a load made lives in its item's block and goes with it. A list class
    // that overrides DeleteItem must empty itself (Clear(1)) in its own destructor: a base's
    // destructor no longer reaches the override. Every list of the library does.
    virtual int DeleteItem(void* key, void* item);
    // Owned items render as text: their bytes up to a NUL or the item size.
    virtual int IsItemRenderable(void* key, void* item, BCFormat& format);
    virtual unsigned long GetItemData(void* key, void* item, void* buffer, unsigned long size,
                                      BCFormat& format);
    virtual unsigned long GetItemLen(void* key, void* item, BCFormat& format);
    // Appends a new owned item made from the rendering.
    virtual int SetItemData(void* buffer, unsigned long length, BCFormat& format);

    unsigned long GetCount() const { return dwCount; }
    unsigned long GetLength() const { return dwLength; }
    unsigned long GetItemSize() const { return dwItemSize; }
    unsigned long GetIterCount() const { return dwIterCount; }
    unsigned long GetKeySize() const { return dwKeySize; }

  protected:
    BCListNode* GetCrntNode() const { return static_cast<BCListNode*>(lpCrnt); }
    // The count a LoadBase found in the stream; Load reads that many items.
    unsigned long GetLoadCount() const { return dwLoadCount; }

    unsigned long dwLength;
    unsigned long dwCount;
    unsigned long dwItemSize;
    void* lpCrnt;
    unsigned long dwIterCount;
    unsigned long dwKeySize; // bytes of a block key (flag 0x1000)
    unsigned long dwCrntAux; // second word of a position, for lists that need one

    // Iterators parked on `node`, which is leaving the list, move to `to` with the auxiliary
    // word `toAux`: no cursor may keep a freed node. Called before the node is freed.
    void MoveIterators(const void* node, void* to, unsigned long toAux);

  private:
    // Iterators open on this list, chained through their state words; the count follows.
    void AttachIterator(BCIterator* iterator);
    void DetachIterator(BCIterator* iterator);
    // Calls `visit` with the state words of every iterator open on this list.
    template <class Visit> void ForEachIterator(Visit visit);
    // Visits every item in list order and puts the position back as it was.
    template <class Visit> int ForEachItem(Visit visit);
    int RenderItems(char* buffer, unsigned long size, BCFormat& format, unsigned long& total);
    // A string or block key as it travels: its length (kNoKey when null), then its bytes.
    int SaveKey(std::ostream& os, void* key);
    bool KeysByAddress() const;
    unsigned long dwLoadCount;
    BCIterator* opIters; // the first iterator open on this list
};
