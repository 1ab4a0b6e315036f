#include "bclistdata.h"

#include <new>

#include "bcids2.h"

BCListData::BCListData(BCList* list, BCWindow* window, const char* fileExt, const char* fileName,
                       unsigned int flags, BCUpdaterList* updaters)
    : BCFileData(list, window, fileExt, fileName, flags, updaters) {
    SetObjectType(bcids::kTypeListData);
}

BCRenderableData* BCListData::Dup() {
    BCListData* copy = new (std::nothrow) BCListData(*this);
    if (copy && opData && !copy->opData) {
        delete copy;
        return nullptr;
    }
    return copy;
}

// Any class may wrap a list, so the wrapped object's class is asked, not its type code.
BCList* BCListData::GetList() const {
    return dynamic_cast<BCList*>(opData);
}

void* BCListData::Find(void* key) {
    BCList* list = GetList();
    return list ? list->Find(key) : nullptr;
}

unsigned long BCListData::GetCount() const {
    BCList* list = GetList();
    return list ? list->GetCount() : 0;
}

// Runs `change` on the list; a result that reports a change marks the document and tells
// the updaters.
template <class Result, class Change> Result BCListData::Changed(Change change) {
    BCList* list = GetList();
    if (!list)
        return Result();
    Result result = change(list);
    if (result) {
        SetModified(true);
        if (dwFlags & BC_FLAG_NOTIFY)
            UpdateDependents(BC_UPDATE_CHANGED, nullptr);
    }
    return result;
}

int BCListData::Insert(void* key, void* item) {
    return Changed<int>([&](BCList* list) { return list->Insert(key, item); });
}

int BCListData::Append(void* key, void* item) {
    return Changed<int>([&](BCList* list) { return list->Append(key, item); });
}

int BCListData::Relocate(void* key, void* item, void* newKey) {
    return Changed<int>([&](BCList* list) { return list->Relocate(key, item, newKey); });
}

int BCListData::Delete(void* key) {
    return Changed<int>([&](BCList* list) { return list->Delete(key); });
}

int BCListData::DeleteCrnt() {
    return Changed<int>([](BCList* list) { return list->DeleteCrnt(); });
}

int BCListData::Update(void* key, void* item) {
    return Changed<int>([&](BCList* list) { return list->Update(key, item); });
}

void* BCListData::SetCrntItem(void* item) {
    return Changed<void*>([&](BCList* list) { return list->SetCrntItem(item); });
}
