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
namespace bcids {} // namespace bcids
// ---- end of lists and streams ----

// ---- devices, pens, brushes, bitmaps, polylines, fonts ----
namespace bcids {} // namespace bcids
// ---- end of devices and drawing objects ----

// ---- application, windows, menus, dialogs, controls, cursors ----
namespace bcids {
// Type codes.
constexpr unsigned int kTypePosition = 2;
constexpr unsigned int kTypeSize = 3;
constexpr unsigned int kTypeLimits = 4;
constexpr unsigned int kTypeRectangle = 5;
constexpr unsigned int kTypeResID = 7;
constexpr unsigned int kTypeColor = 8;
constexpr unsigned int kTypeCaret = 11;
constexpr unsigned int kTypeCursor = 12;
constexpr unsigned int kTypeIcon = 16;
constexpr unsigned int kTypeMenu = 17;
constexpr unsigned int kTypeApplication = 20;
constexpr unsigned int kTypeEvent = 21;
constexpr unsigned int kTypeMainWindow = 27;
constexpr unsigned int kTypeChildWindow = 29;
constexpr unsigned int kTypePopUpWindow = 30;
constexpr unsigned int kTypeListBox = 40;
constexpr unsigned int kTypeMsgBox = 68;
constexpr unsigned int kTypeWindowList = 92;
// Messages.
constexpr unsigned int kMsgCannotCreateChild = 10012;
constexpr unsigned int kMsgCannotInstallControl = 10013;
constexpr unsigned int kMsgNoControl = 10014;
constexpr unsigned int kMsgNoDialog = 10015;
constexpr unsigned int kMsgCannotCreateControl = 10016;
constexpr unsigned int kMsgBadCursorType = 10017;
constexpr unsigned int kMsgCannotLoadStockCursor = 10018;
constexpr unsigned int kMsgCannotLoadCursor = 10019;
constexpr unsigned int kMsgNotAFocusEvent = 10027;
constexpr unsigned int kMsgCannotGetStockIcon = 10031;
constexpr unsigned int kMsgCannotLoadIcon = 10032;
constexpr unsigned int kMsgListError = 10033;
constexpr unsigned int kMsgListNoMemory = 10034;
constexpr unsigned int kMsgCannotCreateMain = 10036;
constexpr unsigned int kMsgCannotLoadMenu = 10050;
constexpr unsigned int kMsgCannotCreateMenu = 10051;
constexpr unsigned int kMsgCannotCreateDialog = 10052;
constexpr unsigned int kMsgCannotCreatePopUp = 10054;
constexpr unsigned int kMsgPaintWithDC = 10059;
constexpr unsigned int kMsgNoScrollBar = 10060;
constexpr unsigned int kMsgNullWindowObject = 10064;
constexpr unsigned int kMsgNullWindowHandle = 10065;
constexpr unsigned int kMsgCannotInstallWindow = 10066;
} // namespace bcids
// ---- end of windows ----
