#include "bcdepdata.h"
#include "bcwindow.h"

#include <new>

#include "bcids2.h"

namespace {
void* KeyOf(BCObject* target) {
    return target;
}
} // namespace

// ---- Updaters

BCUpdater::BCUpdater(unsigned int typeCode, BCObject* target)
    : BCObject(typeCode), opTarget(target) {}

BCUpdater* BCUpdater::Dup() {
    return new (std::nothrow) BCUpdater(*this);
}

int BCUpdater::DataUpdated(BCObject*, unsigned int, BCObject*) {
    return 0;
}

BCDataUpdater::BCDataUpdater(BCDependentData* target)
    : BCUpdater(bcids::kTypeDataUpdater, target) {}

BCUpdater* BCDataUpdater::Dup() {
    return new (std::nothrow) BCDataUpdater(*this);
}

// The constructor only takes dependent data, so the target is one.
int BCDataUpdater::DataUpdated(BCObject* source, unsigned int code, BCObject* data) {
    if (!opTarget)
        return 0;
    return static_cast<BCDependentData*>(opTarget)->DataUpdated(source, code, data);
}

BCWindowUpdater::BCWindowUpdater(BCWindow* target) : BCUpdater(bcids::kTypeWindowUpdater, target) {}

BCUpdater* BCWindowUpdater::Dup() {
    return new (std::nothrow) BCWindowUpdater(*this);
}

// The constructor only takes windows, so the target is one.
int BCWindowUpdater::DataUpdated(BCObject* source, unsigned int code, BCObject* data) {
    if (!opTarget)
        return 0;
    return static_cast<int>(static_cast<BCWindow*>(opTarget)->DataUpdated(source, code, data));
}

// ---- Updater list

BCUpdaterList::BCUpdaterList() : BCSingleLinkedList(0, 0) {
    SetObjectType(bcids::kTypeUpdaterList);
}

// The base destructor would free the nodes without reaching this class's DeleteItem.
BCUpdaterList::~BCUpdaterList() {
    Clear(true);
}

int BCUpdaterList::InsertUpdater(BCUpdater* updater, int append) {
    if (!updater)
        return 0;
    void* key = KeyOf(updater->GetTarget());
    if (GoToItem(key))
        return 1;
    return append ? Append(key, updater) : Insert(key, updater);
}

int BCUpdaterList::DeleteUpdater(BCObject* target) {
    return Delete(KeyOf(target));
}

int BCUpdaterList::DeleteItem(void*, void* item) {
    if (dwFlags & BC_FLAG_KEEP_ITEMS)
        return 1;
    if (!item)
        return 0;
    delete static_cast<BCUpdater*>(item);
    return 1;
}

int BCUpdaterList::UpdateAll(BCObject* source, unsigned int code, BCObject* data) {
    for (int more = Home(); more; more = Next()) {
        BCUpdater* updater = static_cast<BCUpdater*>(GetCrntItem());
        if (!updater || !updater->DataUpdated(source, code, data))
            return 0;
    }
    return 1;
}

// ---- Dependent data

BCDependentData::BCDependentData(BCRenderableData* data, unsigned int flags,
                                 BCUpdaterList* updaters)
    : BCRenderableData(bcids::kTypeDependentData, flags), opData(nullptr), opUpdaters(updaters) {
    Wrap(data);
}

BCDependentData::BCDependentData(const BCDependentData& other)
    : BCRenderableData(other), opData(nullptr), opUpdaters(nullptr) {
    dwFlags &= ~static_cast<unsigned long>(BC_FLAG_NOTIFYING);
    Adopt(other.opData ? other.opData->Dup() : nullptr, other.opUpdaters);
}

BCDependentData& BCDependentData::operator=(const BCDependentData& other) {
    if (this == &other)
        return *this;
    // Duplicated before our own object goes: the other may wrap that very object.
    BCRenderableData* copy = other.opData ? other.opData->Dup() : nullptr;
    DeleteOwnedData();
    unsigned long notifying = dwFlags & BC_FLAG_NOTIFYING;
    BCRenderableData::operator=(other);
    dwFlags = (dwFlags & ~static_cast<unsigned long>(BC_FLAG_NOTIFYING)) | notifying;
    Adopt(copy, other.opUpdaters);
    return *this;
}

BCDependentData::~BCDependentData() {
    DeleteOwnedData();
}

// A copy owns the duplicate it made, whatever the other's ownership bit said, and shares
// the other's updater list.
void BCDependentData::Adopt(BCRenderableData* copy, BCUpdaterList* updaters) {
    dwFlags &= ~static_cast<unsigned long>(BC_FLAG_NOT_OWNED);
    Wrap(copy);
    opUpdaters = updaters;
}

// The wrapped object is also the next link of the modified chain.
void BCDependentData::Wrap(BCRenderableData* data) {
    opData = data;
    SetChained(data);
}

void BCDependentData::DeleteOwnedData() {
    if (!(dwFlags & BC_FLAG_NOT_OWNED))
        delete opData;
    Wrap(nullptr);
}

BCRenderableData* BCDependentData::Dup() {
    return new (std::nothrow) BCDependentData(*this);
}

int BCDependentData::Load(std::istream& is) {
    if (!opData)
        return 0;
    opData->SetFlags(BC_FLAG_PASS_ON, (dwFlags & BC_FLAG_PASS_ON) != 0);
    return opData->Load(is);
}

int BCDependentData::Save(std::ostream& os) {
    if (!opData)
        return 0;
    opData->SetFlags(BC_FLAG_PASS_ON, (dwFlags & BC_FLAG_PASS_ON) != 0);
    return opData->Save(os);
}

void BCDependentData::Display(const char* prefix) {
    if (opData)
        opData->Display(prefix);
    else
        DispObjectMsg("%s(no data)", prefix ? prefix : "");
}

int BCDependentData::Clear(int freeItems) {
    SetModified(true);
    if (dwFlags & BC_FLAG_NOTIFY)
        UpdateDependents(BC_UPDATE_CLEARED, nullptr);
    return opData ? opData->Clear(freeItems) : 0;
}

int BCDependentData::IsRenderable(BCFormat& format) {
    return opData ? opData->IsRenderable(format) : 0;
}

unsigned long BCDependentData::GetData(void* buffer, unsigned long size, BCFormat& format) {
    return opData ? opData->GetData(buffer, size, format) : 0;
}

void* BCDependentData::GetDataPtr(BCFormat& format) {
    return opData ? opData->GetDataPtr(format) : nullptr;
}

unsigned long BCDependentData::GetLen(BCFormat& format) {
    return opData ? opData->GetLen(format) : 0;
}

unsigned long BCDependentData::SetData(void* buffer, unsigned long length, BCFormat& format) {
    SetModified(true);
    unsigned long result = opData ? opData->SetData(buffer, length, format) : 0;
    if (dwFlags & BC_FLAG_NOTIFY)
        UpdateDependents(BC_UPDATE_CHANGED, nullptr);
    return result;
}

int BCDependentData::DataUpdated(BCObject*, unsigned int, BCObject*) {
    return 1;
}

BCRenderableData* BCDependentData::SetObject(BCRenderableData* data) {
    SetModified(true);
    BCRenderableData* old = opData;
    Wrap(data);
    if (dwFlags & BC_FLAG_NOTIFY)
        UpdateDependents(BC_UPDATE_CHANGED, nullptr);
    return old;
}

// The in-progress bit is put back as it was, so that a change made from inside a
// notification does not end the outer one's mark.
int BCDependentData::UpdateDependents(unsigned int code, BCRenderableData* data) {
    if (!opUpdaters)
        return 1;
    unsigned long was = SetFlags(BC_FLAG_NOTIFYING, true);
    int result = opUpdaters->UpdateAll(this, code, data);
    SetFlags(BC_FLAG_NOTIFYING, (was & BC_FLAG_NOTIFYING) != 0);
    return result;
}
