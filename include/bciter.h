#pragma once
#include <iosfwd>
#include "bclist.h"
#include "bcfwd.h"
#include "norlib2api.h"

// A cursor over any list. It is itself a list: each list operation on it runs on the list it
// was opened on, with the iterator's position swapped in for the call (the list's SwapState)
// and swapped out again afterwards, so the list's own position is never disturbed. Several
// iterators walk one list independently. An iterator standing on a node that the list frees
// (deleted through another iterator or the list) moves where the deleting cursor went, or to
// no position; array-list indexes are not corrected and may point past the end. The list is
// not owned and must outlive the iterator.
class NORLIB2_API BCIterator : public BCList {
  public:
    // Starts on the item that is current in `list`. A null list gives an iterator on which
    // every operation fails.
    explicit BCIterator(BCList* list);
    ~BCIterator() override;

    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    // The list's dump.
    void Display(const char* prefix) override;

    int Clear(int freeItems) override;
    void* Find(void* key) override;
    int Insert(void* key, void* item) override;
    int Append(void* key, void* item) override;
    int Relocate(void* key, void* item, void* newKey) override;
    int Delete(void* key) override;
    int DeleteCrnt() override;
    int Home() override;
    int End() override;
    int GoToIndex(unsigned int index) override;
    int GoToItem(void* key) override;
    int Prev() override;
    int Next() override;
    unsigned long GetCrntInd() override;
    void* GetCrntItem() override;
    void* GetCrntKey() override;
    void* Lock() override;
    int Update(void* key, void* item) override;
    int Unlock(void* key, void* item) override;
    int SetLen(unsigned int length) override;
    int SetItemSize(unsigned int itemSize) override;

    BCList* GetList() const { return opList; }

  private:
    // Where the base module's SwapState finds an iterator's position words.
    static BCIteratorState* StateOf(BCIterator* iterator);
    // Runs `call` on the list with this iterator's position in place; `none` when there is
    // no list or the position cannot be exchanged.
    template <class Result, class Call> Result OnList(Result none, Call call);

    BCList* opList;
    BCIteratorState dwState; // the three saved position words
};
