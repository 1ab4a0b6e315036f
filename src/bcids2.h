#pragma once
// Every type code, message id, control id and command id of the library, defined once. Each
// family keeps its own section; tests keep literal numbers as an independent check.

// ---- containers ----
namespace bcids {
constexpr unsigned int kTypeArrayList = 86;
constexpr unsigned int kTypeDoubleLinkedList = 88;
constexpr unsigned int kTypeStackList = 89;
constexpr unsigned int kTypeQueueList = 90;
constexpr unsigned int kMsgArrayListUnlockNesting = 10068;
} // namespace bcids
// ---- end of containers ----

// ---- data objects ----
namespace bcids {} // namespace bcids
// ---- end of data objects ----

// ---- graphics ----
namespace bcids {} // namespace bcids
// ---- end of graphics ----
