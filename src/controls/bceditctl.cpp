#include "bceditctl.h"

#include <climits>
#include <cstring>
#include <new>

#include "bcids2.h"
#include "bcplatform.h"
#include "koerrhk.h"

namespace {
// Child, visible, border, automatic horizontal scroll.
constexpr long kSingleLineStyle = WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL;

// Messages whose result is a success flag.
int Flag(LRESULT result) {
    return result ? 1 : 0;
}
} // namespace

BCEditControl::BCEditControl(const BCResID& id, BCDialog* dialog, unsigned int typeCode,
                             BCApplication* app)
    : BCControlWindow(id, dialog, typeCode, app) {}

BCEditControl::BCEditControl(long style, unsigned int id, BCWindow* parent, const BCPosition& pos,
                             const BCSize& size, unsigned int typeCode, BCApplication* app)
    : BCControlWindow("EDIT", style, id, parent, pos, size, typeCode, app) {}

LRESULT BCEditControl::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageA(hWnd, message, wParam, lParam);
}

BCLimits BCEditControl::GetCrntSelection() const {
    if (!HandleCheck())
        return BCLimits(0, 0);
    DWORD start = 0, end = 0;
    Send(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return BCLimits(static_cast<long>(start), static_cast<long>(end));
}

void BCEditControl::SetCrntSelection(const BCLimits& limits) {
    if (HandleCheck())
        Send(EM_SETSEL, static_cast<WPARAM>(limits.GetStart()),
             static_cast<LPARAM>(limits.GetEnd()));
}

int BCEditControl::IsModified() const {
    return HandleCheck() ? Flag(Send(EM_GETMODIFY, 0, 0)) : 0;
}

int BCEditControl::SetModified(int flag) {
    if (!HandleCheck())
        return 0;
    int old = IsModified();
    Send(EM_SETMODIFY, static_cast<WPARAM>(flag != 0), 0);
    return old;
}

int BCEditControl::Undo() {
    return HandleCheck() ? Flag(Send(EM_UNDO, 0, 0)) : 0;
}

int BCEditControl::CanUndo() const {
    return HandleCheck() ? Flag(Send(EM_CANUNDO, 0, 0)) : 0;
}

// The system answers the clipboard messages with 0 whatever they did; that answer is passed
// on as it is, like every other.
int BCEditControl::Cut() {
    return HandleCheck() ? Flag(Send(WM_CUT, 0, 0)) : 0;
}

int BCEditControl::Copy() {
    return HandleCheck() ? Flag(Send(WM_COPY, 0, 0)) : 0;
}

int BCEditControl::Paste() {
    return HandleCheck() ? Flag(Send(WM_PASTE, 0, 0)) : 0;
}

// Without a window the buffer is left alone and `size` comes back: callers of old relied on it.
unsigned long BCEditControl::ReadText(char* buffer, unsigned long size) {
    if (!HandleCheck() || !buffer || size == 0)
        return size;
    int count = GetWindowTextA(hWnd, buffer, size > INT_MAX ? INT_MAX : static_cast<int>(size));
    buffer[count] = '\0';
    return static_cast<unsigned long>(count);
}

int BCEditControl::TextLen() const {
    return HandleCheck() ? GetWindowTextLengthA(hWnd) : 0;
}

void BCEditControl::LimitText(unsigned long count) {
    if (HandleCheck())
        Send(EM_LIMITTEXT, count, 0);
}

void BCEditControl::ReplaceSelection(const char* text) {
    if (HandleCheck())
        Send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text ? text : ""));
}

bool BCEditControl::ClampedSelection(unsigned long size, unsigned long& start,
                                     unsigned long& end) const {
    BCLimits selection = GetCrntSelection();
    start = static_cast<unsigned long>(selection.GetStart());
    end = static_cast<unsigned long>(selection.GetEnd());
    if (size == 0 || end < start)
        return false;
    if (end - start > size)
        end = start + size - 1;
    return true;
}

void BCEditControl::DisplayText(const char* prefix, const unsigned char (&b)[16], int length) {
    DispObjectMsg("%sGetTextLen()=%d\nIsModified()=%d\n[0..15]={\n"
                  "             %02x %02x %02x %02x %02x %02x %02x %02x\n"
                  "             %02x %02x %02x %02x %02x %02x %02x %02x\n        }\n",
                  prefix ? prefix : "", length, IsModified(), b[0], b[1], b[2], b[3], b[4], b[5],
                  b[6], b[7], b[8], b[9], b[10], b[11], b[12], b[13], b[14], b[15]);
}

BCStringEdit::BCStringEdit(const BCResID& id, BCDialog* dialog, BCApplication* app)
    : BCEditControl(id, dialog, bcids::kTypeStringEdit, app) {}

BCStringEdit::BCStringEdit(unsigned int id, BCWindow* parent, const BCPosition& pos,
                           const BCSize& size, const char* text, BCApplication* app)
    : BCEditControl(kSingleLineStyle, id, parent, pos, size, bcids::kTypeStringEdit, app) {
    if (text)
        Create(text);
}

unsigned int BCStringEdit::GetText(char* buffer, unsigned int size) {
    return static_cast<unsigned int>(ReadText(buffer, size));
}

int BCStringEdit::SetText(const char* text) {
    if (!HandleCheck())
        return 0;
    KoErrorHook::ResetProcError();
    if (!SetWindowTextA(hWnd, text ? text : ""))
        return BCTraceFailure("SetWindowTextA");
    return KoErrorHook::DidProcErrorOccur() ? 0 : 1;
}

int BCStringEdit::GetTextLen() const {
    return TextLen();
}

void BCStringEdit::SetCharLimit(unsigned int count) {
    LimitText(count);
}

unsigned int BCStringEdit::GetSelectedText(char* buffer, unsigned int size) {
    unsigned long length = static_cast<unsigned long>(GetTextLen());
    char* scratch = new (std::nothrow) char[length + 1];
    unsigned long start = 0, end = 0;
    unsigned int copied = 0;
    if (HandleCheck() && scratch && buffer && ClampedSelection(size, start, end) &&
        GetText(scratch, static_cast<unsigned int>(length + 1)) != 0 && end <= length) {
        copied = static_cast<unsigned int>(end - start);
        std::memcpy(buffer, scratch + start, copied);
        buffer[copied] = '\0';
    }
    delete[] scratch;
    return copied;
}

void BCStringEdit::ReplaceSelectedText(const char* text) {
    ReplaceSelection(text);
}

void BCStringEdit::DeleteSelectedText() {
    ReplaceSelectedText("");
}

int BCStringEdit::SetPasswordChar(char c) {
    return HandleCheck() ? (Send(EM_SETPASSWORDCHAR, static_cast<unsigned char>(c), 0), 1) : 0;
}

void BCStringEdit::Display(const char* prefix) {
    unsigned char bytes[16] = {};
    GetText(reinterpret_cast<char*>(bytes), sizeof bytes);
    DisplayText(prefix, bytes, GetTextLen());
}
