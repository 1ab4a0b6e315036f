#include "bccursor.h"

#include "bcmodule.h"
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

} // namespace

BCCaret::BCCaret(BCWindow* window, const BCSize& size)
    : BCObject(11), opWindow(window), blCreated(0) {
    if (window && window->GetHandle())
        blCreated = CreateCaret(window->GetHandle(), nullptr, size.GetWidth(), size.GetHeight());
}

BCCaret::~BCCaret() {
    Destroy();
}

int BCCaret::SetPos(const BCPosition& pos) {
    psPos = pos;
    return blCreated && SetCaretPos(pos.GetX(), pos.GetY());
}

int BCCaret::Show() {
    return blCreated && ShowCaret(opWindow->GetHandle());
}

int BCCaret::Hide() {
    return blCreated && HideCaret(opWindow->GetHandle());
}

int BCCaret::Destroy() {
    if (!blCreated)
        return 0;
    blCreated = 0;
    return DestroyCaret();
}

BCCursor::BCCursor(unsigned int type) : BCObject(12), hCursor(nullptr) {
    LPCSTR stock = StockCursor(type);
    if (!stock) {
        DispObjectMsg(10017u, type);
        return;
    }
    hCursor = LoadCursorA(nullptr, stock);
    if (!hCursor)
        DispObjectMsg(10018u, type);
}

BCCursor::BCCursor(const BCResID& name) : BCObject(12), hCursor(nullptr) {
    hCursor = LoadCursorA(InstanceOf(name), name.GetResource());
    if (!hCursor) {
        char text[16];
        NameOf(name, text);
        DispObjectMsg(10019u, text);
    }
}

HCURSOR BCCursor::Set() const {
    return hCursor ? SetCursor(hCursor) : nullptr;
}

BCIcon::BCIcon(unsigned int type) : BCObject(16), hIcon(nullptr) {
    LPCSTR stock = StockIcon(type);
    hIcon = stock ? LoadIconA(nullptr, stock) : nullptr;
    if (!hIcon)
        DispObjectMsg(10031u, type);
}

BCIcon::BCIcon(const BCResID& name) : BCObject(16), hIcon(nullptr) {
    hIcon = LoadIconA(InstanceOf(name), name.GetResource());
    if (!hIcon) {
        char text[16];
        NameOf(name, text);
        DispObjectMsg(10032u, text);
    }
}
