#pragma once
// Every type code, message id, control id and command id of the library, defined once. Each
// family keeps its own section; tests keep literal numbers as an independent check.

// ---- containers ----
namespace bcids {} // namespace bcids
// ---- end of containers ----

// ---- data objects ----
namespace bcids {
constexpr unsigned int kTypeListData = 97;
constexpr unsigned int kTypeTextData = 98;
constexpr unsigned int kTypeWindowUpdater = 146;
constexpr unsigned int kTypeDataUpdater = 147;
constexpr unsigned int kTypeUpdaterList = 149;
constexpr unsigned int kTypeDependentData = 151;
constexpr unsigned int kTypeInteger = 153;
constexpr unsigned int kTypeFloat = 154;
constexpr unsigned int kTypeMemoryData = 155;
constexpr unsigned int kTypeText = 156;
constexpr unsigned int kMsgFileWriteError = 10074;
constexpr unsigned int kMsgFileReadError = 10075;
constexpr unsigned int kMsgSaveCurrentChanges = 10076;
constexpr unsigned int kMsgSaveChangesTo = 10077;
} // namespace bcids
// ---- end of data objects ----

// ---- graphics ----
namespace bcids {} // namespace bcids
// ---- end of graphics ----
