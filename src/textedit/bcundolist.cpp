#include "bcundolist.h"

#include <cstring>
#include <new>

#include "bcmemory.h"
#include "bcobject.h"

namespace {
const char kFile[] = "TEXTEDIT";

// Capacity for `length` characters: 32 bytes of slack over the 16-byte step below it.
unsigned long CapacityFor(unsigned long length) {
    return length + 32 - length % 16;
}
} // namespace

BCUndoBuffer::~BCUndoBuffer() {
    if (lpData)
        BCFreeFarMem(lpData);
}

void BCUndoBuffer::Empty() {
    dwLen = 0;
    if (lpData)
        *lpData = 0;
}

int BCUndoBuffer::Reserve(unsigned long length) {
    if (length < dwCap)
        return 1;
    unsigned long capacity = CapacityFor(length);
    char* block = static_cast<char*>(BCAllocFarMem(static_cast<long>(capacity)));
    if (!block)
        return 0;
    if (lpData) {
        std::memcpy(block, lpData, dwLen + 1);
        BCFreeFarMem(lpData);
    } else {
        *block = 0;
    }
    lpData = block;
    dwCap = capacity;
    return 1;
}

int BCUndoBuffer::Append(const char* text, unsigned long count) {
    if (!count)
        return 1;
    if (!text || !Reserve(dwLen + count))
        return 0;
    std::memcpy(lpData + dwLen, text, count);
    dwLen += count;
    lpData[dwLen] = 0;
    return 1;
}

int BCUndoBuffer::Prepend(const char* text, unsigned long count) {
    if (!count)
        return 1;
    if (!text || !Reserve(dwLen + count))
        return 0;
    std::memmove(lpData + count, lpData, dwLen + 1);
    std::memcpy(lpData, text, count);
    dwLen += count;
    return 1;
}

BCUndoList::BCUndoList(unsigned int depth)
    : BCDoubleLinkedList(0, 0), dwDepth(0), dwRedoCount(0), blNoMerge(0), blClearing(0) {
    for (unsigned int i = 0; i < depth; ++i) {
        BCUndoRecord* record = new (std::nothrow) BCUndoRecord;
        if (!record)
            break;
        if (!Append(record, record)) {
            delete record;
            break;
        }
        ++dwDepth;
    }
    Home();
}

BCUndoList::~BCUndoList() {
    blClearing = 1;
    Clear(1);
}

int BCUndoList::DeleteItem(void*, void* item) {
    BCUndoRecord* record = static_cast<BCUndoRecord*>(item);
    if (blClearing)
        delete record;
    else if (record)
        record->Empty();
    return 1;
}

BCUndoRecord* BCUndoList::GetCrntRecord() const {
    BCListNode* node = GetCrntNode();
    return node ? static_cast<BCUndoRecord*>(node->lpItem) : nullptr;
}

int BCUndoList::CanUndo() const {
    const BCUndoRecord* record = GetCrntRecord();
    return record && record->dwType != BC_UNDO_NONE;
}

void BCUndoList::Reset() {
    for (BCDoubleLinkNode* n = GetHead(); n; n = n->opNext)
        static_cast<BCUndoRecord*>(n->lpItem)->Empty();
    Home();
    dwRedoCount = 0;
    blNoMerge = 0;
}

BCUndoRecord* BCUndoList::Start(unsigned long type, unsigned long ofs) {
    if (!Crnt())
        Home();
    else if (!Next()) {
        // The ring is full: the oldest record becomes the newest.
        BCDoubleLinkNode* oldest = RemoveNode(GetHead()->lpKey);
        void* record = oldest->lpItem;
        delete oldest;
        if (!Append(record, record)) {
            delete static_cast<BCUndoRecord*>(record);
            --dwDepth;
        }
    }
    BCUndoRecord* record = GetCrntRecord();
    if (!BCAssert(this, record != nullptr, __LINE__, kFile))
        return nullptr;
    record->Empty();
    record->dwType = type;
    record->dwOfs = ofs;
    blNoMerge = 0;
    return record;
}

int BCUndoList::Merges(const BCUndoRecord* newest, unsigned long type, unsigned long ofs,
                       unsigned long count) const {
    if (blNoMerge || !newest || newest->dwType != type)
        return 0;
    switch (type) {
    case BC_UNDO_INSERT:
    case BC_UNDO_OVERWRITE:
        return ofs == newest->dwOfs + newest->bfInserted.GetLen();
    case BC_UNDO_DELETE:
        return ofs == newest->dwOfs;
    case BC_UNDO_BACKSPACE:
        return ofs == newest->dwOfs - count;
    default:
        return 0;
    }
}

int BCUndoList::Record(unsigned long type, unsigned long ofs, const char* removed,
                       unsigned long removedLen, const char* inserted, unsigned long insertedLen) {
    if (!dwDepth)
        return 0;
    BCUndoRecord* record = GetCrntRecord();
    int merged = Merges(record, type, ofs, removedLen);
    if (!merged && !(record = Start(type, ofs)))
        return 0;
    dwRedoCount = 0;
    if (type == BC_UNDO_BACKSPACE) {
        record->dwOfs = ofs;
        return record->bfRemoved.Prepend(removed, removedLen);
    }
    return record->bfRemoved.Append(removed, removedLen) &&
           record->bfInserted.Append(inserted, insertedLen);
}

BCUndoRecord* BCUndoList::TakeUndo() {
    if (!CanUndo())
        return nullptr;
    BCUndoRecord* record = GetCrntRecord();
    if (!Prev())
        lpCrnt = nullptr; // stepped back before the first record
    if (dwRedoCount < dwDepth)
        ++dwRedoCount;
    blNoMerge = 1;
    return record;
}

BCUndoRecord* BCUndoList::TakeRedo() {
    if (!dwRedoCount)
        return nullptr;
    if (Crnt() ? !Next() : !Home())
        return nullptr;
    --dwRedoCount;
    blNoMerge = 1;
    return GetCrntRecord();
}
