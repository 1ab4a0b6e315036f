// The editor's keyboard, mouse and menu handling.
#include <windows.h>

#include <cctype>

#include "bcclipboard.h"
#include "bcformat.h"
#include "bcids2.h"
#include "bcmenu.h"
#include "bctextedit.h"

namespace {
// Reads the text around an offset a block at a time, so that walking over a word costs one
// read, not one per character.
class CharReader {
  public:
    explicit CharReader(BCTextData* text) : m_text(text), m_base(0), m_len(0) {}
    // The character at `ofs`, or -1 outside the text.
    int At(unsigned long ofs) {
        if (ofs < m_base || ofs >= m_base + m_len) {
            m_base = ofs > kBack ? ofs - kBack : 0;
            m_len = m_text ? m_text->GetText(m_buffer, m_base, sizeof m_buffer - 1) : 0;
        }
        return ofs - m_base < m_len ? static_cast<unsigned char>(m_buffer[ofs - m_base]) : -1;
    }
    bool IsWord(unsigned long ofs) {
        int c = At(ofs);
        return c >= 0 && (std::isupper(c) || std::islower(c) || std::isdigit(c));
    }
    bool IsBlank(unsigned long ofs) {
        int c = At(ofs);
        return c == ' ' || c == '\t';
    }

  private:
    static constexpr unsigned long kBack = 256;
    BCTextData* m_text;
    unsigned long m_base;
    unsigned long m_len;
    char m_buffer[513];
};

bool IsTypedKey(unsigned int key) {
    signed char c = static_cast<signed char>(key);
    return (c >= 32 && c <= 126) || c == '\t';
}

// Keys that end an undo step: movement, Clear and the extended selection.
bool EndsStep(unsigned int key) {
    return key == VK_CLEAR || (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_F8 ||
           (key >= BC_KEY_CTRL_HOME && key <= BC_KEY_CTRL_DOWN);
}
} // namespace

unsigned long BCTextEdit::WordLeft(unsigned long ofs) {
    CharReader r(opText);
    while (ofs && r.IsWord(ofs - 1))
        --ofs;
    while (ofs && r.IsBlank(ofs - 1))
        --ofs;
    return ofs;
}

unsigned long BCTextEdit::WordRight(unsigned long ofs) {
    CharReader r(opText);
    while (r.IsWord(ofs))
        ++ofs;
    while (r.IsBlank(ofs))
        ++ofs;
    return ofs;
}

void BCTextEdit::CollapseSel() {
    SetCrntSelection(BCLimits(static_cast<long>(dwCaret), static_cast<long>(dwCaret)));
}

LRESULT BCTextEdit::CharKey(BCEvent* e) {
    long result = DefaultEvent(e);
    if (dwMode & BC_TE_DISPLAY_ONLY)
        return result;
    dwState &= ~static_cast<unsigned long>(BC_TE_EXTENDED_SEL);
    unsigned int key = e->GetKeycode();
    int readOnly = (dwMode & BC_TE_READ_ONLY) != 0;
    if (!lmSel.IsEmpty()) {
        if (key == VK_ESCAPE)
            CollapseSel();
        else if (!readOnly)
            DeleteSelectedText();
    }
    if (!readOnly) {
        char text[2] = {static_cast<char>(key), 0};
        if (key == '\r' || key == '\n')
            InsertText("\r\n");
        else if (IsTypedKey(key))
            InsertText(text);
    }
    result = DefaultEvent(e);
    CaretOn();
    return result;
}

LRESULT BCTextEdit::KeyDown(BCEvent* e) {
    long result = DefaultEvent(e);
    unsigned int key = e->GetKeycode();
    if (!opText)
        return result;
    if (dwMode & BC_TE_DISPLAY_ONLY) {
        DisplayOnlyKey(key);
        return result;
    }
    if ((dwMode & BC_TE_READ_ONLY) && (key == VK_INSERT || key == VK_DELETE || key == VK_BACK))
        return result;
    if (opUndo && EndsStep(key))
        opUndo->SetNoMerge();
    EditKey(key);
    if (!(dwState & BC_TE_EXTENDED_SEL) && !lmSel.IsEmpty())
        CollapseSel();
    CaretOn();
    return result;
}

void BCTextEdit::DisplayOnlyKey(unsigned int key) {
    long page = static_cast<long>(LinesShown() * 3 / 4);
    switch (key) {
    case VK_PRIOR:
        return SetPagePos(opText->GetLineRelOfs(dwPageTop, -page));
    case VK_NEXT:
        return SetPagePos(opText->GetLineRelOfs(dwPageTop, page));
    case VK_UP:
    case BC_KEY_CTRL_UP:
        return SetPagePos(PrevStart(dwPageTop));
    case VK_DOWN:
    case BC_KEY_CTRL_DOWN:
        return SetPagePos(opText->GetLineRelOfs(dwPageTop, 1));
    case BC_KEY_CTRL_HOME:
        return SetPagePos(0);
    case BC_KEY_CTRL_END:
        return SetPagePos(GetTextLen());
    default:
        return;
    }
}

void BCTextEdit::EditKey(unsigned int key) {
    unsigned long start = dwCaret;
    unsigned int len = 0;
    opText->GetLineStartLen(dwCaret, start, len);
    long page = static_cast<long>(LinesShown() * 3 / 4);
    switch (key) {
    case VK_BACK:
        return BackspaceKey(start);
    case VK_CLEAR:
        return SetTextPos(dwCaret, 3);
    case VK_PRIOR:
        return SetTextPos(opText->GetLineRelOfs(dwCaret, -page), -1);
    case VK_NEXT:
        return SetTextPos(opText->GetLineRelOfs(dwCaret, page), -1);
    case VK_END:
        return SetTextPos(start + len, -1);
    case VK_HOME:
        return SetTextPos(start, -1);
    case VK_LEFT:
        if (dwCaret)
            SetTextPos(dwCaret - (dwCaret == start && dwCaret > 1 ? 2 : 1), -1);
        return;
    case VK_UP:
        return SetTextPos(opText->GetLineRelOfs(dwCaret, -1), -1);
    case VK_RIGHT:
        return SetTextPos(dwCaret + (dwCaret == start + len ? 2 : 1), -1);
    case VK_DOWN:
        return SetTextPos(opText->GetLineRelOfs(dwCaret, 1), -1);
    case VK_INSERT:
        dwMode ^= BC_TE_OVERWRITE;
        return;
    case VK_DELETE:
        return DeleteKey(start, len);
    case VK_F8:
        return ExtendKey(start + len);
    case BC_KEY_CTRL_HOME:
        return SetTextPos(0, -1);
    case BC_KEY_CTRL_END:
        return SetTextPos(GetTextLen(), -1);
    case BC_KEY_CTRL_LEFT:
    case BC_KEY_CTRL_RIGHT: {
        unsigned long to = key == BC_KEY_CTRL_LEFT ? WordLeft(dwCaret) : WordRight(dwCaret);
        if (to != dwCaret)
            SetTextPos(to, -1);
        return;
    }
    case BC_KEY_CTRL_UP:
        return CtrlUpKey();
    case BC_KEY_CTRL_DOWN:
        return CtrlDownKey();
    default:
        return;
    }
}

void BCTextEdit::EditedInLine(unsigned long from, long pageEndShift) {
    if (!CaretOnPage() || !HandleCheck()) {
        Relayout(dwCaret);
        return;
    }
    dwPageEnd += static_cast<unsigned long>(pageEndShift);
    CaretOff();
    SetCaretPos(dwCaret);
    PutLine(from);
}

void BCTextEdit::BackspaceKey(unsigned long start) {
    dwState &= ~static_cast<unsigned long>(BC_TE_EXTENDED_SEL);
    if (!lmSel.IsEmpty()) {
        DeleteSelectedText();
        return;
    }
    if (!dwCaret)
        return;
    if (dwCaret == start && dwCaret > 1) {
        // Joining two lines takes the whole CR LF in one step.
        if (DeleteText(dwCaret - 2, 2, 1))
            Relayout(dwCaret - 2);
        return;
    }
    int dirty = blDirty;
    if (!DeleteText(dwCaret - 1, 1, 1))
        return;
    --dwCaret;
    EditedInLine(dwCaret, -1);
    blDirty = dirty;
}

void BCTextEdit::DeleteKey(unsigned long start, unsigned int len) {
    dwState &= ~static_cast<unsigned long>(BC_TE_EXTENDED_SEL);
    if (!lmSel.IsEmpty()) {
        DeleteSelectedText();
        return;
    }
    unsigned long textLen = GetTextLen();
    if (dwCaret >= textLen)
        return;
    if (dwCaret < start + len) {
        int dirty = blDirty;
        if (DeleteText(dwCaret, 1, 0)) {
            EditedInLine(dwCaret, -1);
            blDirty = dirty;
        }
        return;
    }
    if (DeleteText(dwCaret, 2, 0))
        Relayout(dwCaret);
}

void BCTextEdit::ExtendKey(unsigned long lineEnd) {
    if (!(dwState & BC_TE_EXTENDED_SEL)) {
        dwState |= BC_TE_EXTENDED_SEL;
        dwF8Count = 0;
        lmSel = BCLimits(static_cast<long>(dwCaret), static_cast<long>(dwCaret));
        return;
    }
    switch (++dwF8Count) {
    case 1:
        return SetTextPos(WordRight(dwCaret), -1);
    case 2:
        return SetTextPos(lineEnd, -1);
    case 3:
        return SetTextPos(GetTextLen(), -1);
    case 4:
        dwState &= ~static_cast<unsigned long>(BC_TE_EXTENDED_SEL);
        dwF8Count = 0;
        return CollapseSel();
    default:
        Unreachable(0, __LINE__);
    }
}

void BCTextEdit::ScrollByLine(unsigned long top, unsigned long end, unsigned long first) {
    unsigned long oldTop = dwPageTop, oldFirst = dwFirstLine;
    CaretOff();
    dwPageTop = top;
    dwPageEnd = end;
    dwFirstLine = first;
    if (HasVertBar())
        SetVertThumb(static_cast<int>(dwFirstLine));
    PageMoved(oldTop, oldFirst);
    SetCaretPos(dwCaret);
    Update();
}

void BCTextEdit::CtrlUpKey() {
    if (!dwPageTop)
        return;
    unsigned long start = dwPageEnd;
    unsigned int len = 0;
    opText->GetLineStartLen(dwPageEnd, start, len);
    unsigned long end = start == dwPageEnd ? PrevStart(dwPageEnd) : start;
    if (end <= dwCaret && end < GetTextLen())
        dwCaret = opText->GetLineRelOfs(dwCaret, -1);
    ScrollByLine(PrevStart(dwPageTop), end, dwFirstLine - 1);
}

void BCTextEdit::CtrlDownKey() {
    unsigned long len = GetTextLen();
    if (dwPageEnd >= len)
        return;
    unsigned long top = NextStart(dwPageTop);
    unsigned long end = NextStart(dwPageEnd);
    // A caret left above the page goes one line further up, not down, and stays off the
    // page: the behaviour users of this editor rely on.
    if (dwCaret < top)
        dwCaret = opText->GetLineRelOfs(dwCaret, -1);
    ScrollByLine(top, end < len ? end : len, dwFirstLine + 1);
}

// ---- mouse ----

int BCTextEdit::InLeftMargin(const BCPosition& pos) {
    return pos.GetX() < rcText.GetLeft() - GetChrWidth('H') / 2;
}

LRESULT BCTextEdit::MouseDown(BCEvent* e) {
    if (!opText)
        return 0;
    if (!HasFocus())
        SetFocus();
    BCPosition pos = e->GetPos();
    unsigned long ofs = GetPosOfs(pos);
    if (InLeftMargin(pos)) {
        unsigned long start = ofs, next = 0;
        unsigned int len = 0;
        opText->GetLineStartLen(ofs, start, len);
        next = NextStart(start);
        unsigned long textLen = GetTextLen();
        SetCrntSelection(
            BCLimits(static_cast<long>(start), static_cast<long>(next < textLen ? next : textLen)));
    } else {
        SetCrntSelection(BCLimits(static_cast<long>(ofs), static_cast<long>(ofs)));
    }
    if (!(dwMode & BC_TE_NO_MOUSE_SEL)) {
        CaptureMouse();
        dwState |= BC_TE_MOUSE_SELECTING;
        dwState &= ~static_cast<unsigned long>(BC_TE_EXTENDED_SEL);
    }
    CaretOn();
    return 0;
}

LRESULT BCTextEdit::MouseDrag(BCEvent* e) {
    if (!(dwState & BC_TE_MOUSE_SELECTING) || !opText)
        return 0;
    BCPosition pos = e->GetPos();
    unsigned long len = GetTextLen(), top = dwPageTop;
    if (pos.GetY() < rcText.GetTop() && dwPageTop)
        SetPagePos(PrevStart(dwPageTop));
    else if (pos.GetY() >= rcText.GetBottom() && dwPageEnd < len)
        SetPagePos(NextStart(dwPageTop));
    unsigned long ofs = GetPosOfs(pos);
    unsigned long anchor = static_cast<unsigned long>(lmSel.GetStart());
    unsigned long start = ofs;
    unsigned int lineLen = 0;
    opText->GetLineStartLen(ofs, start, lineLen);
    if (InLeftMargin(pos)) {
        if (ofs >= anchor) {
            unsigned long next = NextStart(start);
            ofs = next < len ? next : len;
        }
    } else if (pos.GetX() + GetOrigin().GetX() > rcText.GetLeft() +
                                                     GetLineSize(start, lineLen).GetWidth() +
                                                     GetChrHeight('H') / 2 &&
               ofs < len) {
        ofs += 2;
    }
    if (dwPageTop == top) {
        SetCrntSelection(BCLimits(static_cast<long>(anchor), static_cast<long>(ofs)));
        return 0;
    }
    lmSel.SetEnd(static_cast<long>(ofs));
    Invalidate(nullptr, 1);
    Update();
    return 0;
}

LRESULT BCTextEdit::MouseUp(BCEvent*) {
    dwState &= ~static_cast<unsigned long>(BC_TE_MOUSE_SELECTING);
    ReleaseMouse();
    return 0;
}

LRESULT BCTextEdit::MouseDblClk(BCEvent*) {
    if ((dwMode & BC_TE_NO_MOUSE_SEL) || !opText)
        return 0;
    CharReader r(opText);
    unsigned long end = dwCaret, start = dwCaret;
    while (r.IsWord(end))
        ++end;
    while (start && r.IsWord(start - 1))
        --start;
    SetCrntSelection(BCLimits(static_cast<long>(start), static_cast<long>(end)));
    return 0;
}

// ---- menu ----

LRESULT BCTextEdit::MenuInit(BCEvent* e) {
    BCMenu* menu = e->GetMenu();
    if (!menu)
        return 0;
    auto set = [menu](unsigned int id, int on) {
        on ? menu->Enable(id, 1, 1) : menu->Disable(id, 1, 1);
    };
    set(bcids::kCmdUndo, CanUndo());
    set(bcids::kCmdRedo, CanRedo());
    set(bcids::kCmdCut, !lmSel.IsEmpty());
    set(bcids::kCmdCopy, !lmSel.IsEmpty());
    BCClipboard clipboard(this);
    set(bcids::kCmdPaste, clipboard.IsType(BCGetTextFormat()));
    return 0;
}

LRESULT BCTextEdit::MenuCommand(BCEvent* e) {
    switch (e->GetControlID()) {
    case bcids::kCmdNewFile:
        return NewFile();
    case bcids::kCmdOpenFile:
        return OpenFile();
    case bcids::kCmdSaveFile:
        return SaveFile();
    case bcids::kCmdSaveAsFile:
        return SaveAsFile();
    case bcids::kCmdUndo:
        return Undo();
    case bcids::kCmdCut:
        return Cut();
    case bcids::kCmdCopy:
        return Copy();
    case bcids::kCmdPaste:
        return Paste();
    case bcids::kCmdRedo:
        return Redo();
    case bcids::kCmdFind:
        return Find();
    case bcids::kCmdFindNext:
        return FindNext();
    case bcids::kCmdReplace:
        return Replace();
    default:
        return 0;
    }
}
