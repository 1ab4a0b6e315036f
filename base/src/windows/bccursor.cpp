#include "bccursor.h"

#include "bcids1.h"
#include "bcmodule.h"
#include "bcplatform.h"
#include "bcwindow.h"

namespace {

HINSTANCE InstanceOf(const BCResID& name) {
    return name.GetModule() ? static_cast<HINSTANCE>(name.GetModule()->GetResources())
                            : GetModuleHandleA(nullptr);
}

// The name of a resource for a message: its name, or its number.
void NameOf(const BCResID& name, char (&text)[16]) {
    if (name.GetResName())
        lstrcpynA(text, name.GetResName(), sizeof text);
    else
        wsprintfA(text, "%u", name.GetResNum());
}

LPCSTR StockCursor(unsigned int type) {
    switch (type) {
    case BC_CURSOR_ARROW:
        return IDC_ARROW;
    case BC_CURSOR_IBEAM:
        return IDC_IBEAM;
    case BC_CURSOR_WAIT:
        return IDC_WAIT;
    case BC_CURSOR_CROSS:
        return IDC_CROSS;
    case BC_CURSOR_UPARROW:
        return IDC_UPARROW;
    case BC_CURSOR_SIZE:
        return IDC_SIZEALL;
    default:
        return nullptr;
    }
}

LPCSTR StockIcon(unsigned int type) {
    switch (type) {
    case BC_ICON_APPLICATION:
        return IDI_APPLICATION;
    case BC_ICON_HAND:
        return IDI_HAND;
    case BC_ICON_QUESTION:
        return IDI_QUESTION;
    case BC_ICON_EXCLAMATION:
        return IDI_EXCLAMATION;
    case BC_ICON_ASTERISK:
        return IDI_ASTERISK;
    default:
        return nullptr;
    }
}

// A caret as tall as the window's text lines fits under them whatever the font; the width
// follows the system's border, as the platform's own default caret does.
BCSize CaretSize(BCWindow* window, const BCSize& size) {
    short width = size.GetWidth();
    short height = size.GetHeight();
    if (!width)
        width = static_cast<short>(GetSystemMetrics(SM_CXBORDER));
    if (!height)
        height = window->GetChrHeight('H');
    return BCSize(width, height);
}

} // namespace

BCCaret::BCCaret(BCWindow* window, const BCSize& size)
    : BCObject(bcids::kTypeCaret), opWindow(window), szSize(size), blCreated(0) {
    if (!window || !window->GetHandle())
        return;
    szSize = CaretSize(window, size);
    blCreated =
        BCTraced(CreateCaret(window->GetHandle(), nullptr, szSize.GetWidth(), szSize.GetHeight()),
                 "CreateCaret");
}

BCCaret::~BCCaret() {
    Destroy();
}

int BCCaret::SetPos(const BCPosition& pos) {
    psPos = pos;
    return blCreated && BCTraced(SetCaretPos(pos.GetX(), pos.GetY()), "SetCaretPos");
}

int BCCaret::Show() {
    return blCreated && BCTraced(ShowCaret(opWindow->GetHandle()), "ShowCaret");
}

int BCCaret::Hide() {
    return blCreated && BCTraced(HideCaret(opWindow->GetHandle()), "HideCaret");
}

int BCCaret::Destroy() {
    if (!blCreated)
        return 0;
    blCreated = 0;
    return BCTraced(DestroyCaret(), "DestroyCaret");
}

BCCursor::BCCursor(unsigned int type, BCModule*)
    : BCObject(bcids::kTypeCursor), hCursor(nullptr), hPrevious(nullptr), blSet(0) {
    LPCSTR stock = StockCursor(type);
    if (!stock) {
        DispObjectMsg(bcids::kMsgBadCursorType, type);
        return;
    }
    hCursor = BCTraced(LoadCursorA(nullptr, stock), "LoadCursorA");
    if (!hCursor)
        DispObjectMsg(bcids::kMsgCannotLoadStockCursor, type);
}

BCCursor::BCCursor(const BCResID& name)
    : BCObject(bcids::kTypeCursor), hCursor(nullptr), hPrevious(nullptr), blSet(0) {
    hCursor = BCTraced(LoadCursorA(InstanceOf(name), name.GetResource()), "LoadCursorA");
    if (!hCursor) {
        char text[16];
        NameOf(name, text);
        DispObjectMsg(bcids::kMsgCannotLoadCursor, text);
    }
}

HCURSOR BCCursor::Set() {
    if (!hCursor)
        return nullptr;
    hPrevious = SetCursor(hCursor);
    blSet = 1;
    return hPrevious;
}

int BCCursor::Restore() {
    if (!blSet)
        return 0;
    blSet = 0;
    SetCursor(hPrevious);
    return 1;
}

BCIcon::BCIcon(unsigned int type) : BCObject(bcids::kTypeIcon), hIcon(nullptr) {
    LPCSTR stock = StockIcon(type);
    hIcon = stock ? BCTraced(LoadIconA(nullptr, stock), "LoadIconA") : nullptr;
    if (!hIcon)
        DispObjectMsg(bcids::kMsgCannotGetStockIcon, type);
}

BCIcon::BCIcon(const BCResID& name) : BCObject(bcids::kTypeIcon), hIcon(nullptr) {
    hIcon = BCTraced(LoadIconA(InstanceOf(name), name.GetResource()), "LoadIconA");
    if (!hIcon) {
        char text[16];
        NameOf(name, text);
        DispObjectMsg(bcids::kMsgCannotLoadIcon, text);
    }
}
