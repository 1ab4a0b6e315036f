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
namespace bcids {
constexpr unsigned int kTypeBitmapObject = 10; // the base module's bitmap
constexpr unsigned int kTypeGraphicObject = 70;
constexpr unsigned int kTypeDrawGraphic = 71;
constexpr unsigned int kTypeLineGraphic = 72;
constexpr unsigned int kTypePolylineGraphic = 73;
constexpr unsigned int kTypeBoxGraphic = 74;
constexpr unsigned int kTypePolygonGraphic = 75;
constexpr unsigned int kTypeArcGraphic = 76;
constexpr unsigned int kTypeCircleGraphic = 77;
constexpr unsigned int kTypeEllipseGraphic = 78;
constexpr unsigned int kTypeChordGraphic = 79;
constexpr unsigned int kTypePieGraphic = 80;
constexpr unsigned int kTypeTextGraphic = 81;
constexpr unsigned int kTypeBitmapGraphic = 82;
constexpr unsigned int kTypeCompoundGraphic = 83;
constexpr unsigned int kTypeGraphicList = 95;
constexpr unsigned int kTypeBitmapData = 102;
constexpr unsigned int kTypeDrawingData = 157;
constexpr unsigned int kMsgUnknownGraphicType = 10079;
} // namespace bcids
// ---- end of graphics ----

// ---- clipboard ----
namespace bcids {
constexpr unsigned int kTypeClipboard = 103;
constexpr unsigned int kMsgClipboardBuffer = 10069;
} // namespace bcids
// ---- end of clipboard ----

// ---- text editor ----
namespace bcids {
constexpr unsigned int kTypeTextEdit = 51;
constexpr unsigned int kCmdNewFile = 101;
constexpr unsigned int kCmdOpenFile = 102;
constexpr unsigned int kCmdSaveFile = 103;
constexpr unsigned int kCmdSaveAsFile = 104;
constexpr unsigned int kCmdUndo = 111;
constexpr unsigned int kCmdCut = 112;
constexpr unsigned int kCmdCopy = 113;
constexpr unsigned int kCmdPaste = 114;
constexpr unsigned int kCmdRedo = 116;
constexpr unsigned int kCmdFind = 120;
constexpr unsigned int kCmdFindNext = 121;
constexpr unsigned int kCmdReplace = 122;
constexpr unsigned int kMsgTextNotFound = 10087;
} // namespace bcids
// ---- end of text editor ----

// ---- controls ----
namespace bcids {
constexpr unsigned int kTypeRadioButton = 33;
constexpr unsigned int kTypePushButton = 34;
constexpr unsigned int kTypeCheckBox = 35;
constexpr unsigned int kTypeGroupBox = 36;
constexpr unsigned int kTypeStringEdit = 38;
constexpr unsigned int kTypeMultiStringEdit = 39;
constexpr unsigned int kTypeSizeBox = 46;
constexpr unsigned int kTypeStaticControl = 47;
constexpr unsigned int kTypeStaticText = 48;
constexpr unsigned int kTypeStaticIcon = 49;
constexpr unsigned int kMsgEditTextTooLong = 10082;
} // namespace bcids
// ---- end of controls ----

// ---- find, replace, string and message dialogs ----
namespace bcids {
constexpr unsigned int kTypeStringDialog = 63;
constexpr unsigned int kTypeFindDialog = 64;
constexpr unsigned int kTypeReplaceDialog = 65;
constexpr unsigned int kTypeMessageDialog = 66;
constexpr unsigned int kDlgFind = 1021;
constexpr unsigned int kDlgReplace = 1022;
constexpr unsigned int kDlgMessage = 1023;
constexpr unsigned int kDlgReplaceQuery = 1024;
constexpr unsigned int kCtlStringEdit = 2013;
constexpr unsigned int kCtlMessageText = 2024;
constexpr unsigned int kCtlFindPattern = 2031;
constexpr unsigned int kCtlReplacePattern = 2032;
constexpr unsigned int kCtlReplacement = 2033;
constexpr unsigned int kCtlMatchCase = 2034;
constexpr unsigned int kCtlWholeWord = 2035;
constexpr unsigned int kCtlQuery = 2036;
constexpr unsigned int kCtlReplaceAll = 2037;
} // namespace bcids
// ---- end of find, replace, string and message dialogs ----

// ---- MDI windows and fonts ----
namespace bcids {
constexpr unsigned int kTypeFontInfo = 107;
constexpr unsigned int kTypeMDIFrameWindow = 108;
constexpr unsigned int kTypeMDIClientWindow = 109;
constexpr unsigned int kTypeMDIChildWindow = 110;
constexpr unsigned int kTypeFontObject = 15; // the base module's font
constexpr unsigned int kTypeMenuObject = 17; // the base module's menu
constexpr unsigned int kMsgFontNotInList = 10078;
constexpr unsigned int kMsgCannotCreateMDIChild = 10080;
constexpr unsigned int kMsgCannotCreateMDIClient = 10081;
constexpr unsigned int kMDIClientID = 43981;
constexpr unsigned int kMDIFirstChildID = 310;
constexpr unsigned int kCmdFontLight = 141;
constexpr unsigned int kCmdFontNormal = 142;
constexpr unsigned int kCmdFontBold = 143;
constexpr unsigned int kCmdFontItalic = 144;
constexpr unsigned int kCmdFontUnderline = 145;
constexpr unsigned int kCmdFontStrikeOut = 146;
constexpr unsigned int kCmdFontReservedLast = 153;
constexpr unsigned int kCmdFontFaceFirst = 161;
constexpr unsigned int kCmdFontFaceLast = 179;
constexpr unsigned int kCmdFontSizeFirst = 200;
constexpr unsigned int kCmdFontSizeLast = 233;
} // namespace bcids
// ---- end of MDI windows and fonts ----

// ---- printer ----
namespace bcids {
constexpr unsigned int kTypePrinter = 24;
constexpr unsigned int kDlgPrintStatus = 1020;
constexpr unsigned int kCtlPrintDocName = 2005;
constexpr unsigned int kCtlPrintCancel = 2;
constexpr unsigned int kMsgPrinterAbort = 10083;
constexpr unsigned int kMsgPrintCannotStart = 10084;
constexpr unsigned int kMsgPrinterDriverLoad = 10085;
} // namespace bcids
// ---- end of printer ----

// ---- combo box and file list box ----
namespace bcids {
constexpr unsigned int kTypeFileListBox = 41;
constexpr unsigned int kTypeComboBox = 42;
constexpr unsigned int kMsgComboNoMemory = 10070;
constexpr unsigned int kMsgComboError = 10071;
} // namespace bcids
// ---- end of combo box and file list box ----

// ---- file dialogs ----
namespace bcids {
constexpr unsigned int kDlgOpenFile = 1011;
constexpr unsigned int kDlgSaveAs = 1013;
constexpr unsigned int kTypeSaveAsDialog = 62;
constexpr unsigned int kCtlFileName = 2001;
constexpr unsigned int kCtlFileList = 2002;
constexpr unsigned int kCtlFilePath = 2003;
constexpr unsigned int kCtlDirList = 2006;
constexpr unsigned int kMsgFileNotFound = 3202;
constexpr unsigned int kMsgFileExists = 10072;
constexpr unsigned int kMsgInvalidFileName = 10073;
constexpr unsigned int kMsgOverwriteFile = 10086;
} // namespace bcids
// ---- end of file dialogs ----
