#pragma once
#include "bcfiledata.h"

// A document over a list of any kind: the list's record is the file's content and its
// renderings are the document's. Every change made through this object marks the document
// modified and, with notification on, tells the updaters (code 4); changes made on the list
// directly are not seen. The list is owned unless flag 0x0008 is set.
class NORLIB2_API BCListData : public BCFileData {
  public:
    // A null list leaves the document empty until SetObject gives it one.
    BCListData(BCList* list, BCWindow* window, const char* fileExt, const char* fileName,
               unsigned int flags, BCUpdaterList* updaters);

    // A copy wraps the list's duplicate; null when the list cannot be duplicated, so that no
    // copy silently comes without the contents.
    BCRenderableData* Dup() override;

    // The wrapped list; null when there is none or the wrapped object is not a list.
    BCList* GetList() const;
    // Forwarded to the list; null and 0 without one.
    void* Find(void* key);
    unsigned long GetCount() const;

    // Forwarded to the list; when it reports a change the document is modified and the
    // updaters are told. 0 (null) without a list.
    int Insert(void* key, void* item);
    int Append(void* key, void* item);
    int Relocate(void* key, void* item, void* newKey);
    int Delete(void* key);
    int DeleteCrnt();
    int Update(void* key, void* item);
    // Returns the item replaced, which the caller now owns.
    void* SetCrntItem(void* item);

  private:
    template <class Result, class Change> Result Changed(Change change);
};
