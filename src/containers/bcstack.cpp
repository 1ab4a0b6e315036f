#include "bcstack.h"

#include "bcids2.h"

BCStackList::BCStackList() : BCSingleLinkedList(0, 0) {
    SetObjectType(bcids::kTypeStackList);
}

void BCStackList::Push(void* key, void* item) {
    Append(key, item);
}

void* BCStackList::Pop() {
    BCListNode* node = GetCrntNode();
    if (!node)
        return nullptr;
    void* item = node->lpItem;
    Delete(node->lpKey);
    End();
    return item;
}

BCQueueList::BCQueueList() : BCSingleLinkedList(0, 0) {
    SetObjectType(bcids::kTypeQueueList);
}

void BCQueueList::In(void* key, void* item) {
    Home();
    Append(key, item);
}

void* BCQueueList::Out() {
    BCSingleLinkNode* head = GetHead();
    if (!head)
        return nullptr;
    void* item = head->lpItem;
    Delete(head->lpKey);
    Home();
    return item;
}
