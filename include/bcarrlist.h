#pragma once
#include <iosfwd>
#include "bclist.h"
#include "bcfwd.h"
#include "norlib2api.h"

// Items kept by value, one after another in one movable global block. An item's key is a
// field inside it (offset and size). The block grows by grow-by slots and is locked only
// while an operation touches it; LockList/UnlockList nest.
class NORLIB2_API BCArrayList : public BCList {
  public:
    BCArrayList(unsigned int length, unsigned int itemSize, unsigned int keyOffset,
                unsigned int keySize, unsigned int growBy, unsigned int flags);
    ~BCArrayList() override;

    // Returns 0 in every case.
    int Clear(int freeItems) override;
    void* Find(void* key) override;
    // Sorted lists place the item by key, after equal keys; others at the current index.
    // The new item becomes current.
    int Insert(void* key, void* item) override;
    int Append(void* key, void* item) override;
    int Delete(void* key) override;
    int DeleteCrnt() override;
    int Home() override;
    int End() override;
    // The index is not checked against the count.
    int GoToIndex(unsigned int index) override;
    // Lands on the first item for which CmpKey(key, item's key) is negative: the first whose
    // key is above `key`.
    int GoToItem(void* key) override;
    int Prev() override;
    int Next() override;
    unsigned long GetCrntInd() override;
    // A new heap copy of the current item (caller frees it with delete[]).
    void* GetCrntItem() override;
    void* GetCrntKey() override;
    void* Lock() override;
    int Update(void* key, void* item) override;
    // Stores the copy Lock gave and frees it.
    int Unlock(void* key, void* item) override;
    // The record BCList::Save writes, with each item handed to SaveItem straight from the
    // locked block: no copies, one lock for the whole save, the position untouched.
    int Save(std::ostream& os) override;
    int LoadBase(std::istream& is) override;
    int SaveBase(std::ostream& os) override;
    int LoadItem(std::istream& is) override;
    int SaveItem(std::ostream& os, void* key, void* item) override;
    int SetLen(unsigned int length) override;
    int SwapState(BCIterator* iterator) override;

    int LockList();
    // Shows message 10068 when not locked. Releases one system lock at every level; returns
    // 1 when the block is no longer locked.
    int UnlockList();

    unsigned long GetKeyOffset() const { return dwKeyOfs; }
    unsigned long GetGrowBy() const { return dwGrowBy; }
    unsigned long GetLockCount() const { return dwLockCount; }

  private:
    unsigned char* ItemAt(unsigned long index) const { return lpBase + index * dwItemSize; }
    // The key argument of CmpKey for item `index`: the address of a copy of the key bytes
    // (string and block keys) or their first 32-bit value. The list must be locked.
    void* KeyArgument(unsigned long index);
    bool KeysByAddress() const;
    // Makes the key buffer (when keys are compared by address) and the comparison scratch
    // for the current key size; returns 0 when memory is short.
    int MakeKeyBuffers();

    void* hBlock;
    unsigned char* lpBase;
    unsigned long dwKeyOfs;
    unsigned long dwGrowBy;
    unsigned long dwCrnt;
    unsigned char* lpKeyBuf;
    unsigned long dwLockCount;
    unsigned char* lpKeyScratch;
};
