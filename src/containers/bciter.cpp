#include "bciter.h"

#include <istream>
#include <ostream>

BCIterator::BCIterator(BCList* list) : BCList(0, 0, 0), opList(list), dwState{0, 0, 0, nullptr} {
    // The base module cannot see this class's layout; tell it where the words are before
    // the first exchange.
    BCSetIteratorStateAccess(&BCIterator::StateOf);
    if (!opList)
        return;
    opList->AttachIterator(this);
    Home();
    // The list's own index, asked without swapping: the iterator starts where the list is.
    GoToIndex(static_cast<unsigned int>(opList->GetCrntInd()));
}

BCIterator::~BCIterator() {
    if (opList)
        opList->DetachIterator(this);
}

BCIteratorState* BCIterator::StateOf(BCIterator* iterator) {
    return &iterator->dwState;
}

// SwapState is an exchange: the first call brings this iterator's position into the list
// and parks the list's own; the second puts both back, the iterator keeping what the call
// left.
template <class Result, class Call> Result BCIterator::OnList(Result none, Call call) {
    if (!opList || !opList->SwapState(this))
        return none;
    Result result = call(*opList);
    opList->SwapState(this);
    return result;
}

int BCIterator::Load(std::istream& is) {
    return OnList(0, [&](BCList& list) { return list.Load(is); });
}

int BCIterator::Save(std::ostream& os) {
    return OnList(0, [&](BCList& list) { return list.Save(os); });
}

void BCIterator::Display(const char* prefix) {
    if (opList)
        opList->Display(prefix);
    else
        BCList::Display(prefix);
}

int BCIterator::Clear(int freeItems) {
    return OnList(0, [&](BCList& list) { return list.Clear(freeItems); });
}

void* BCIterator::Find(void* key) {
    return OnList<void*>(nullptr, [&](BCList& list) { return list.Find(key); });
}

int BCIterator::Insert(void* key, void* item) {
    return OnList(0, [&](BCList& list) { return list.Insert(key, item); });
}

int BCIterator::Append(void* key, void* item) {
    return OnList(0, [&](BCList& list) { return list.Append(key, item); });
}

int BCIterator::Relocate(void* key, void* item, void* newKey) {
    return OnList(0, [&](BCList& list) { return list.Relocate(key, item, newKey); });
}

int BCIterator::Delete(void* key) {
    return OnList(0, [&](BCList& list) { return list.Delete(key); });
}

int BCIterator::DeleteCrnt() {
    return OnList(0, [](BCList& list) { return list.DeleteCrnt(); });
}

int BCIterator::Home() {
    return OnList(0, [](BCList& list) { return list.Home(); });
}

int BCIterator::End() {
    return OnList(0, [](BCList& list) { return list.End(); });
}

int BCIterator::GoToIndex(unsigned int index) {
    return OnList(0, [&](BCList& list) { return list.GoToIndex(index); });
}

int BCIterator::GoToItem(void* key) {
    return OnList(0, [&](BCList& list) { return list.GoToItem(key); });
}

int BCIterator::Prev() {
    return OnList(0, [](BCList& list) { return list.Prev(); });
}

int BCIterator::Next() {
    return OnList(0, [](BCList& list) { return list.Next(); });
}

unsigned long BCIterator::GetCrntInd() {
    return OnList(BC_NO_INDEX, [](BCList& list) { return list.GetCrntInd(); });
}

void* BCIterator::GetCrntItem() {
    return OnList<void*>(nullptr, [](BCList& list) { return list.GetCrntItem(); });
}

void* BCIterator::GetCrntKey() {
    return OnList<void*>(nullptr, [](BCList& list) { return list.GetCrntKey(); });
}

void* BCIterator::Lock() {
    return OnList<void*>(nullptr, [](BCList& list) { return list.Lock(); });
}

int BCIterator::Update(void* key, void* item) {
    return OnList(0, [&](BCList& list) { return list.Update(key, item); });
}

int BCIterator::Unlock(void* key, void* item) {
    return OnList(0, [&](BCList& list) { return list.Unlock(key, item); });
}

int BCIterator::SetLen(unsigned int length) {
    return OnList(0, [&](BCList& list) { return list.SetLen(length); });
}

int BCIterator::SetItemSize(unsigned int itemSize) {
    return OnList(0, [&](BCList& list) { return list.SetItemSize(itemSize); });
}
