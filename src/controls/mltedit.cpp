#include <cstdarg>
#include <cstring>
#include <new>

#include "bceditctl.h"
#include "bcids2.h"
#include "bcmemory.h"
#include "bcmsg.h"
#include "bcplatform.h"
#include "bctextdata.h"

namespace {
const char kFile[] = "MLTEDIT";
// Source lines the assertions report.
constexpr unsigned int kLineNoReadBuffer = 145;
constexpr unsigned int kLineNotTextData = 170;
constexpr unsigned int kLineNoShowBuffer = 193;
constexpr unsigned int kLineShortRead = 195;

constexpr unsigned long kMaxText = 32767;
// Room the transfer buffers get beyond the text.
constexpr long kSlack = 512;
// Below this height a created field is a single line.
constexpr short kMultiLineHeight = 25;
// Set in the window object's style word: Enter makes a new line even inside a dialog.
constexpr long kEnterMakesLine = 0x0800;

constexpr long kSingleLineStyle = WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL;
constexpr long kMultiLineStyle = WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL | WS_HSCROLL |
                                 ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL;
static_assert(kSingleLineStyle == 0x50800080 && kMultiLineStyle == 0x50B000C4, "field styles");

long StyleFor(const BCSize& size) {
    return size.GetHeight() < kMultiLineHeight ? kSingleLineStyle : kMultiLineStyle;
}

} // namespace

BCMultiStringEdit::BCMultiStringEdit(const BCResID& id, BCDialog* dialog, BCApplication* app)
    : BCEditControl(id, dialog, bcids::kTypeMultiStringEdit, app), opTextData(nullptr),
      blExternalText(0) {
    Intercept(1);
}

BCMultiStringEdit::BCMultiStringEdit(unsigned int id, BCWindow* parent, const BCPosition& pos,
                                     const BCSize& size, const char* text, BCApplication* app)
    : BCEditControl(StyleFor(size), id, parent, pos, size, bcids::kTypeMultiStringEdit, app),
      opTextData(nullptr), blExternalText(0) {
    if (text)
        Create(text);
}

BCMultiStringEdit::~BCMultiStringEdit() {
    if (!blExternalText)
        delete opTextData;
}

LRESULT BCMultiStringEdit::DispatchEvent(BCEvent* e) {
    if (GetStyle() & kEnterMakesLine) {
        if (e->GetMessage() == WM_KEYDOWN && e->GetWParam() == VK_RETURN) {
            if (!PostMessageA(hWnd, WM_CHAR, '\n', 0))
                BCTraceFailure("PostMessageA");
            return 0;
        }
        if (e->GetMessage() == WM_MOUSEMOVE)
            return BCControlWindow::DefaultEvent(e);
    }
    return BCControlWindow::DispatchEvent(e);
}

unsigned long BCMultiStringEdit::GetText(char* buffer, unsigned long size) {
    return ReadText(buffer, size);
}

int BCMultiStringEdit::SetText(const char* text) {
    if (!HandleCheck())
        return 0;
    unsigned long length = BCGetStrLen(text);
    if (length > kMaxText) {
        BCDispAppMsg(GetModule(), this, bcids::kMsgEditTextTooLong, static_cast<long>(length));
        return 0;
    }
    return SetWindowTextA(hWnd, text ? text : "") ? 1 : BCTraceFailure("SetWindowTextA");
}

BCTextData* BCMultiStringEdit::GetText() {
    if (!HandleCheck())
        return nullptr;
    unsigned long length = static_cast<unsigned long>(TextLen());
    if (!opTextData) {
        opTextData = new (std::nothrow) BCTextData(nullptr, nullptr, nullptr, nullptr, 0, nullptr);
        blExternalText = 0;
        if (!opTextData)
            return nullptr;
    }
    BCFarBlock buffer(length + kSlack);
    if (!BCAssert(this, buffer.Get() != nullptr, kLineNoReadBuffer, kFile))
        return nullptr;
    opTextData->DeleteText(0, opTextData->GetTextLen());
    ReadText(buffer.Get(), length + 1);
    if (opTextData->SetText(buffer.Get(), 0, length, 0) != length)
        return nullptr;
    opTextData->SetModified(IsModified());
    return opTextData;
}

int BCMultiStringEdit::SetText(BCTextData* text) {
    if (text && !AssertType(text, bcids::kTypeTextData, "opNewText", kLineNotTextData, kFile))
        return 0; // not a text: nothing of it can be shown
    if (!HandleCheck())
        return 0;
    bool own = opTextData && !blExternalText;
    if (own && opTextData != text)
        delete opTextData;
    // The control's own object handed back stays the control's.
    blExternalText = text && !(own && opTextData == text);
    opTextData = text;
    if (!text)
        return SetText(""), 1;
    unsigned long length = text->GetTextLen();
    BCFarBlock buffer(length + kSlack);
    if (!BCAssert(this, buffer.Get() != nullptr, kLineNoShowBuffer, kFile))
        return 0;
    if (!BCAssert(this, text->GetText(buffer.Get(), 0, length) == length, kLineShortRead, kFile))
        return 0;
    if (SetText(buffer.Get()))
        SetModified(text->IsModified());
    return 1; // also when the text was too long to show: the message said so
}

int BCMultiStringEdit::GetTextLen() const {
    return TextLen();
}

unsigned int BCMultiStringEdit::GetTextLine(unsigned int line, char* buffer, unsigned int size) {
    if (!HandleCheck() || !buffer || size == 0)
        return 0;
    // The control reads the buffer's size from its first bytes; a tiny buffer borrows room.
    char small[sizeof(DWORD)];
    char* target = size < sizeof(DWORD) ? small : buffer;
    DWORD room = size;
    std::memcpy(target, &room, sizeof room);
    unsigned int n =
        static_cast<unsigned int>(Send(EM_GETLINE, line, reinterpret_cast<LPARAM>(target)));
    if (target == small)
        std::memcpy(buffer, small, n < size ? n : size);
    if (size > n)
        buffer[n++] = '\r';
    if (size > n)
        buffer[n++] = '\n';
    buffer[size <= n ? size - 1 : n] = '\0';
    return n;
}

int BCMultiStringEdit::GetLineLen(int pos) const {
    return HandleCheck() ? static_cast<int>(Send(EM_LINELENGTH, static_cast<WPARAM>(pos), 0)) : 0;
}

int BCMultiStringEdit::GetLineCnt() const {
    return HandleCheck() ? static_cast<int>(Send(EM_GETLINECOUNT, 0, 0)) : 0;
}

void BCMultiStringEdit::SetCharLimit(unsigned long count) {
    LimitText(count);
}

void BCMultiStringEdit::ScrollVert(int lines) {
    if (HandleCheck())
        Send(EM_LINESCROLL, 0, lines);
}

void BCMultiStringEdit::ScrollHoriz(int columns) {
    if (HandleCheck())
        Send(EM_LINESCROLL, static_cast<WPARAM>(columns), 0);
}

void BCMultiStringEdit::PageUp() {
    if (HandleCheck())
        Send(EM_SCROLL, SB_PAGEUP, 0);
}

void BCMultiStringEdit::PageDown() {
    if (HandleCheck())
        Send(EM_SCROLL, SB_PAGEDOWN, 0);
}

void BCMultiStringEdit::LineUp() {
    if (HandleCheck())
        Send(EM_SCROLL, SB_LINEUP, 0);
}

void BCMultiStringEdit::LineDown() {
    if (HandleCheck())
        Send(EM_SCROLL, SB_LINEDOWN, 0);
}

unsigned long BCMultiStringEdit::GetSelectedText(char* buffer, unsigned long size) {
    unsigned long start = 0, end = 0;
    if (!HandleCheck() || !buffer || !ClampedSelection(size, start, end))
        return 0;
    BCTextData* data = GetText();
    return data ? data->GetText(buffer, start, end - start) : 0;
}

void BCMultiStringEdit::ReplaceSelectedText(const char* text) {
    ReplaceSelection(text);
}

void BCMultiStringEdit::DeleteSelectedText() {
    ReplaceSelection("");
}

int BCMultiStringEdit::EmptyUndo() {
    return HandleCheck() ? (Send(EM_EMPTYUNDOBUFFER, 0, 0), 1) : 0;
}

BCRectangle BCMultiStringEdit::GetFormatRect() const {
    if (!HandleCheck())
        return BCGetNullRect();
    RECT rect = {};
    Send(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&rect));
    return BCRectangle::FromRECT(&rect);
}

int BCMultiStringEdit::SetFormatRect(const BCRectangle& r, int redraw) {
    if (!HandleCheck())
        return 0;
    RECT rect;
    r.ToRECT(&rect);
    Send(redraw ? EM_SETRECT : EM_SETRECTNP, 0, reinterpret_cast<LPARAM>(&rect));
    return 1;
}

int BCMultiStringEdit::FormatLines(int flag) {
    return HandleCheck() ? static_cast<int>(Send(EM_FMTLINES, static_cast<WPARAM>(flag), 0)) : 0;
}

// The positions are gathered into an array: variadic arguments need not lie side by side.
int BCMultiStringEdit::SetTabStops(unsigned int count, ...) {
    if (!HandleCheck())
        return 0;
    int* stops = count ? new (std::nothrow) int[count] : nullptr;
    if (count && !stops)
        return 0;
    va_list args;
    va_start(args, count);
    for (unsigned int i = 0; i < count; ++i)
        stops[i] = va_arg(args, int);
    va_end(args);
    int set = Send(EM_SETTABSTOPS, count, reinterpret_cast<LPARAM>(stops)) ? 1 : 0;
    delete[] stops;
    return set;
}

void BCMultiStringEdit::Display(const char* prefix) {
    unsigned char bytes[16] = {};
    GetText(reinterpret_cast<char*>(bytes), sizeof bytes);
    DisplayText(prefix, bytes, GetTextLen());
}
