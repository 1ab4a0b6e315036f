#pragma once
#include "bcdllist.h"
#include "norlib2api.h"

// A character buffer that grows in 16-byte steps with 32 bytes of slack, kept NUL-terminated.
// Its memory comes from the far-memory allocator; a failed growth leaves it as it was.
class NORLIB2_API BCUndoBuffer {
  public:
    BCUndoBuffer() : lpData(nullptr), dwLen(0), dwCap(0) {}
    ~BCUndoBuffer();
    BCUndoBuffer(const BCUndoBuffer&) = delete;
    BCUndoBuffer& operator=(const BCUndoBuffer&) = delete;

    int Append(const char* text, unsigned long count);
    int Prepend(const char* text, unsigned long count);
    void Empty();
    // Never null: an empty buffer reads as "".
    const char* GetData() const { return lpData ? lpData : ""; }
    unsigned long GetLen() const { return dwLen; }
    unsigned long GetCapacity() const { return dwCap; }

  private:
    // Room for `length` characters and the NUL; 0 when it cannot be had.
    int Reserve(unsigned long length);

    char* lpData;
    unsigned long dwLen;
    unsigned long dwCap;
};

// Kinds of undoable change.
enum BCUndoType : unsigned long {
    BC_UNDO_NONE = 0,
    BC_UNDO_INSERT = 1,
    BC_UNDO_OVERWRITE = 2,
    BC_UNDO_DELETE = 3,
    BC_UNDO_BACKSPACE = 4,
    BC_UNDO_REPLACE = 5
};

// One undoable step of the editor: what changed where, with the characters it removed and
// the characters it inserted.
struct NORLIB2_API BCUndoRecord {
    void Empty() { dwType = BC_UNDO_NONE, dwOfs = 0, bfRemoved.Empty(), bfInserted.Empty(); }
    unsigned long dwType = BC_UNDO_NONE;
    unsigned long dwOfs = 0;
    BCUndoBuffer bfRemoved;
    BCUndoBuffer bfInserted;
};

// The editor's undo history: a fixed ring of `depth` records, allocated once and reused
// oldest first. The current node is the newest step that can be undone; no current node
// means every step has been undone.
class NORLIB2_API BCUndoList : public BCDoubleLinkedList {
  public:
    explicit BCUndoList(unsigned int depth);
    ~BCUndoList() override;

    // Records a change at `ofs`, merged into the newest step where typing or deleting goes on
    // at the same place. Returns 0 when a buffer could not grow (the history then lacks it).
    int Record(unsigned long type, unsigned long ofs, const char* removed, unsigned long removedLen,
               const char* inserted, unsigned long insertedLen);
    // The step to undo, the position stepped back before it; null when there is none.
    BCUndoRecord* TakeUndo();
    // The step to redo, the position advanced onto it; null when there is none.
    BCUndoRecord* TakeRedo();
    int CanUndo() const;
    int CanRedo() const { return dwRedoCount != 0; }
    // Empties every record and puts the position back on the first.
    void Reset();
    // Makes the next change start a step of its own.
    void SetNoMerge() { blNoMerge = 1; }
    int GetNoMerge() const { return blNoMerge; }
    unsigned long GetDepth() const { return dwDepth; }
    unsigned long GetRedoCount() const { return dwRedoCount; }
    BCUndoRecord* GetCrntRecord() const;

  protected:
    // Records are emptied, not freed, unless the list is being destroyed.
    int DeleteItem(void* key, void* item) override;

  private:
    int Merges(const BCUndoRecord* newest, unsigned long type, unsigned long ofs,
               unsigned long count) const;
    // The next record in the ring, emptied and typed; null when the ring is broken.
    BCUndoRecord* Start(unsigned long type, unsigned long ofs);

    unsigned long dwDepth;
    unsigned long dwRedoCount;
    int blNoMerge;
    int blClearing;
};
