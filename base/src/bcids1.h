#pragma once
// Every type code, message id and command id of the base module, defined once. Each family
// keeps its own section; tests keep literal numbers as an independent check.

// ---- object model and messages ----
namespace bcids {
// A class's name is string resource kTypeNameBase + its type code.
constexpr unsigned int kTypeNameBase = 3000;
constexpr unsigned int kTypeCodes = 1024;
constexpr unsigned int kTypeModule = 114;
} // namespace bcids
// ---- end of object model and messages ----

// ---- memory helpers ----
namespace bcids {
constexpr unsigned int kMsgReallocNullHandle = 10037;
constexpr unsigned int kMsgReallocBadPointer = 10038;
constexpr unsigned int kMsgReallocNullPointer = 10039;
constexpr unsigned int kMsgFreeBadHandle = 10040;
constexpr unsigned int kMsgFreeNullHandle = 10041;
constexpr unsigned int kMsgFreeBadPointer = 10042;
constexpr unsigned int kMsgFreeNullPointer = 10043;
constexpr unsigned int kMsgLockFailed = 10044;
constexpr unsigned int kMsgLockNullHandle = 10045;
constexpr unsigned int kMsgUnlockNoHandle = 10046;
constexpr unsigned int kMsgUnlockBadPointer = 10047;
constexpr unsigned int kMsgUnlockNullPointer = 10048;
} // namespace bcids
// ---- end of memory helpers ----

// ---- lists and streams ----
namespace bcids {
constexpr unsigned int kTypeList = 85;
constexpr unsigned int kTypeSingleLinkedList = 87;
} // namespace bcids
// ---- end of lists and streams ----

// ---- devices, pens, brushes, bitmaps, polylines, fonts ----
namespace bcids {
constexpr unsigned int kTypePolyline = 6;
constexpr unsigned int kTypeBitmap = 10;
constexpr unsigned int kTypeBrush = 13;
constexpr unsigned int kTypePen = 14;
constexpr unsigned int kTypeFont = 15;
constexpr unsigned int kTypeMemoryDevice = 23;
constexpr unsigned int kTypeFontList = 94;
constexpr unsigned int kMsgBitmapLoadFailed = 10003;
constexpr unsigned int kMsgBitmapCreateFailed = 10004;
constexpr unsigned int kMsgPatternBrushFailed = 10009;
constexpr unsigned int kMsgStockBrushFailed = 10010;
constexpr unsigned int kMsgHatchBrushFailed = 10011;
constexpr unsigned int kMsgSelectNesting1 = 10020;
constexpr unsigned int kMsgSelectNoDC = 10021;
constexpr unsigned int kMsgSelectNesting2 = 10022;
constexpr unsigned int kMsgReleaseNesting1 = 10023;
constexpr unsigned int kMsgReleaseNesting2 = 10024;
constexpr unsigned int kMsgBadRasterOp = 10025;
constexpr unsigned int kMsgFontNotFound = 10028;
constexpr unsigned int kMsgFontFailed = 10029;
constexpr unsigned int kMsgFontListInsert = 10030;
constexpr unsigned int kMsgNoMemoryDC = 10049;
constexpr unsigned int kMsgPenFailed = 10053;
} // namespace bcids
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
