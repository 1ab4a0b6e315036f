// The editor's menu-level services: the clipboard, the document's file commands, find and
// replace.
#include "bctextedit.h"

#include <cstring>
#include <new>

#include "bcclipboard.h"
#include "bccursor.h"
#include "bcfinddlg.h"
#include "bcids2.h"
#include "bclib2.h"
#include "bcmemory.h"
#include "bcmsg.h"

namespace {

// Puts a copy of `text` (null: none) in place of `field`; 0 when the copy could not be made,
// and then the field is as it was.
int Store(char*& field, const char* text) {
    char* copy = nullptr;
    if (text) {
        std::size_t n = std::strlen(text) + 1;
        copy = new (std::nothrow) char[n];
        if (!copy)
            return 0;
        std::memcpy(copy, text, n);
    }
    delete[] field;
    field = copy;
    return 1;
}

unsigned long Length(const char* text) {
    return text ? static_cast<unsigned long>(std::strlen(text)) : 0;
}

} // namespace

// ---- clipboard ----

int BCTextEdit::Copy() {
    unsigned long len = lmSel.GetLength();
    BCFarBlock block(len + 1);
    if (!len || !block.Get())
        return 0;
    GetSelectedText(block.Get(), len);
    BCClipboard clipboard(this);
    // Only what really reached the clipboard may be cut.
    return clipboard.Clear() && clipboard.SetText(block.Get()) ? 1 : 0;
}

int BCTextEdit::Cut() {
    if (!Copy())
        return 0;
    DeleteSelectedText();
    return 1;
}

int BCTextEdit::Paste() {
    BCClipboard clipboard(this);
    unsigned long len = clipboard.GetTextLen();
    BCFarBlock block(len + 1);
    if (!len || !block.Get())
        return 0;
    if (clipboard.GetText(block.Get(), len + 1))
        ReplaceSelectedText(block.Get());
    return 1;
}

// ---- file commands ----

int BCTextEdit::NewFile() {
    return opText && opText->NewFile() ? SetText(opText) : 0;
}

int BCTextEdit::OpenFile() {
    return opText && opText->OpenFile() ? SetText(opText) : 0;
}

int BCTextEdit::SaveFile() {
    if (!opText || !opText->SaveFile())
        return 0;
    SetModified(0);
    return 1;
}

int BCTextEdit::SaveAsFile() {
    if (!opText || !opText->SaveAsFile())
        return 0;
    SetModified(0);
    return 1;
}

// ---- search ----

unsigned long BCTextEdit::SelLow() const {
    if (lmSel.IsEmpty())
        return dwCaret;
    long low = lmSel.GetStart() < lmSel.GetEnd() ? lmSel.GetStart() : lmSel.GetEnd();
    return static_cast<unsigned long>(low);
}

// An empty pattern is no pattern: there is nothing to look for.
int BCTextEdit::SetSearch(const char* pattern, const char* replacement, unsigned long options) {
    dwSearchPos = SelLow();
    if (!Store(caPattern, pattern && *pattern ? pattern : nullptr) ||
        !Store(caReplace, replacement))
        return 0;
    dwSearchOpts = options;
    return 1;
}

int BCTextEdit::SearchNext() {
    return opText && caPattern &&
           opText->Search(caPattern, dwSearchPos, dwSearchOpts & BC_FIND_MATCH_CASE,
                          dwSearchOpts & BC_FIND_WHOLE_WORD);
}

void BCTextEdit::NotFound() {
    BCDispAppMsg(GetModule(), this, bcids::kMsgTextNotFound, caPattern);
}

int BCTextEdit::FindNext() {
    if (!caPattern)
        return 0;
    if (!SearchNext()) {
        NotFound();
        return 0;
    }
    unsigned long end = dwSearchPos + Length(caPattern);
    SetCrntSelection(BCLimits(static_cast<long>(dwSearchPos), static_cast<long>(end)));
    dwSearchPos = end;
    return 1;
}

int BCTextEdit::ReplaceFound() {
    // Two replacements next to each other stay two steps.
    if (opUndo)
        opUndo->SetNoMerge();
    unsigned long n = Length(caReplace);
    if (!ReplaceTextA(dwSearchPos, Length(caPattern), caReplace ? caReplace : "", n))
        return 0;
    dwSearchPos += n;
    return 1;
}

// The window is laid out and repainted once, after the last replacement.
int BCTextEdit::ReplaceDirect(int all) {
    if (!caPattern)
        return 0;
    if (!SearchNext()) {
        NotFound();
        return 0;
    }
    BCCursor wait(BC_CURSOR_WAIT);
    wait.Set();
    int ok = ReplaceFound();
    if (all) {
        while (ok && SearchNext())
            ok = ReplaceFound();
        dwSearchPos = GetTextLen();
    }
    lmSel = BCLimits(static_cast<long>(dwSearchPos), static_cast<long>(dwSearchPos));
    Relayout(dwSearchPos);
    wait.Restore();
    Repaint();
    return ok;
}

int BCTextEdit::Find() {
    BCFindDialog dialog(BCResID(bcids::kDlgFind, BCGetDLLModule2()), this, caPattern,
                        static_cast<unsigned int>(dwSearchOpts), GetApp());
    if (dialog.GetResult() == BC_FIND_CANCELLED)
        return 0;
    if (!SetSearch(dialog.GetPattern(nullptr), caReplace, dialog.GetFlags()))
        return 0;
    return FindNext();
}

int BCTextEdit::Replace() {
    BCReplaceDialog dialog(BCResID(bcids::kDlgReplace, BCGetDLLModule2()), this, caPattern,
                           caReplace, static_cast<unsigned int>(dwSearchOpts), GetApp());
    int result = dialog.GetResult();
    if (result == BC_FIND_CANCELLED ||
        !SetSearch(dialog.GetPattern(nullptr), dialog.GetReplacement(nullptr), dialog.GetFlags()))
        return 0;
    if (dwSearchOpts & BC_FIND_QUERY)
        return ReplaceAsking(result == BC_FIND_ONE);
    return ReplaceDirect(result == BC_FIND_ALL);
}

// A replacement moves the search past itself, so one that holds the pattern is not asked
// about again.
int BCTextEdit::ReplaceAsking(int once) {
    if (!caPattern)
        return 0;
    while (FindNext()) {
        BCMessageDialog ask(BCResID(bcids::kDlgReplaceQuery, BCGetDLLModule2()), this, nullptr,
                            GetApp());
        int answer = ask.GetResult();
        if (answer == IDCANCEL)
            return 0;
        if (answer == IDYES) {
            if (!ReplaceSelectedText(caReplace ? caReplace : ""))
                return 0;
            dwSearchPos = SelLow() + Length(caReplace);
        }
        if (once)
            return 1;
    }
    return 1;
}
