#pragma once
// Every type code, message id and command id of the base module, defined once. Each family
// keeps its own section; tests keep literal numbers as an independent check.

// ---- object model and messages ----
namespace bcids {} // namespace bcids
// ---- end of object model and messages ----

// ---- memory helpers ----
namespace bcids {} // namespace bcids
// ---- end of memory helpers ----

// ---- lists and streams ----
namespace bcids {
constexpr unsigned int kTypeList = 85;
constexpr unsigned int kTypeSingleLinkedList = 87;
} // namespace bcids
// ---- end of lists and streams ----

// ---- devices, pens, brushes, bitmaps, polylines, fonts ----
namespace bcids {} // namespace bcids
// ---- end of devices and drawing objects ----

// ---- application, windows, menus, dialogs, controls, cursors ----
namespace bcids {} // namespace bcids
// ---- end of windows ----
