#pragma once
#include "bcsllist.h"
#include "bcfwd.h"
#include "norlib2api.h"

// Last in, first out over the single-linked list (unsorted, keys are 32-bit values, items
// the caller's). Removal goes through Delete(key), which takes the first node of an equal
// key from the head: with repeated keys Pop may remove an older node than the top, while
// still returning the top's item.
class NORLIB2_API BCStackList : public BCSingleLinkedList {
  public:
    BCStackList();

    // Appends; the new node becomes current.
    void Push(void* key, void* item);
    // The current node's item (after Push, the top), or null when there is no current node.
    // A caller that moved the current position pops the node it moved to.
    void* Pop();
};

// First in, first out over the single-linked list: In appends, Out takes the head.
class NORLIB2_API BCQueueList : public BCSingleLinkedList {
  public:
    BCQueueList();

    void In(void* key, void* item);
    // The head's item, or null on an empty queue.
    void* Out();
};
