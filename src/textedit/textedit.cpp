// The editor's construction, text queries, editing primitives and undo.
#include "bctextedit.h"

#include <cstring>
#include <new>

#include "bccursor.h"
#include "bcids2.h"
#include "bcmemory.h"

namespace {
const char kFile[] = "TEXTEDIT";
constexpr unsigned long kNoLine = 0xFFFFFFFFul;
constexpr unsigned long kCreatedHere = 4; // data flag: the editor made its data object
constexpr unsigned long kLocalChars = 132;

// The characters of a range, read before a change so that it can be undone: in a local
// buffer when short, else in a far block freed with the copy.
class RangeCopy {
  public:
    RangeCopy(BCTextData* text, unsigned long ofs, unsigned long count)
        : m_block(count > kLocalChars ? count + 1 : 0),
          m_data(count > kLocalChars ? m_block.Get() : m_local), m_len(0) {
        if (!m_data)
            return;
        *m_data = 0;
        if (count)
            m_len = text->GetText(m_data, ofs, count);
    }
    RangeCopy(const RangeCopy&) = delete;
    RangeCopy& operator=(const RangeCopy&) = delete;
    bool Ok() const { return m_data != nullptr; }
    const char* Text() const { return m_data; }
    unsigned long Len() const { return m_len; }
    bool HasLF() const { return m_len && std::memchr(m_data, '\n', m_len); }

  private:
    char m_local[kLocalChars + 1];
    BCFarBlock m_block;
    char* m_data;
    unsigned long m_len;
};

// Printable 7-bit characters and TAB are typed; the byte is taken as signed, so 128-255 are
// dropped with the control characters.
bool IsTyped(char c) {
    signed char s = static_cast<signed char>(c);
    return (s >= 32 && s <= 126) || s == '\t';
}

bool IsKnown(unsigned long type) {
    return type >= BC_UNDO_INSERT && type <= BC_UNDO_REPLACE;
}

bool IsBreak(char c) {
    return c == '\r' || c == '\n';
}

unsigned long Low(const BCLimits& l) {
    return static_cast<unsigned long>(l.GetStart() < l.GetEnd() ? l.GetStart() : l.GetEnd());
}

void FreeText(char*& text) {
    delete[] text;
    text = nullptr;
}
} // namespace

BCTextEdit::BCTextEdit(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
                       const char* fileExt, const char* fileName, BCTextData* data,
                       BCApplication* app, unsigned int mode, unsigned int undoDepth)
    : BCChildWindow(parent, id, app, bcids::kTypeTextEdit), opText(data), dwMode(mode), dwState(0),
      dwF8Count(0), opCaret(nullptr), dwPageTop(0), dwCaret(0), dwPageEnd(0), dwLineCnt(0),
      dwFirstLine(0), dwSearchPos(0), caPattern(nullptr), caReplace(nullptr), dwSearchOpts(4),
      opUndo(nullptr), dwLastLen(0), blCaretShown(0), blDirty(1) {
    if (!opText) {
        opText = new (std::nothrow) BCTextData(this, fileExt, fileName);
        if (opText)
            opText->SetFlags(kCreatedHere, 1);
    }
    opUndo = new (std::nothrow) BCUndoList(undoDepth);
    dwMode = mode;
    IntReset();
    opCaret = nullptr;
    SetWindowRect(BCRectangle(pos, size));
}

BCTextEdit::~BCTextEdit() {
    // The window goes first, while its messages still reach this editor.
    Destroy();
    delete opCaret;
    FreeText(caPattern);
    FreeText(caReplace);
    delete opText;
    delete opUndo;
}

void BCTextEdit::IntReset() {
    dwMode %= 16;
    dwState = 0;
    psCaret = BCGetNullPos();
    dwPageTop = dwCaret = dwPageEnd = 0;
    dwLineCnt = opText ? opText->GetNumLines(0, GetTextLen()) : 0;
    dwFirstLine = 0;
    dwSearchPos = 0;
    // Nothing else holds the search texts: dropping the pointers would lose them.
    FreeText(caPattern);
    FreeText(caReplace);
    dwSearchOpts = 4;
    lmSel = BCGetNullLimits();
    szLast = BCGetNullSize();
    dwLastLen = 0;
}

int BCTextEdit::Assert(long condition, unsigned int line) {
    return static_cast<int>(BCAssert(this, condition, line, kFile));
}

int BCTextEdit::Unreachable(long condition, unsigned int line) {
    return static_cast<int>(
        BCAssert(this, condition, line, kFile, "This code should not be reached"));
}

unsigned long BCTextEdit::GetTextLen() {
    return opText ? opText->GetTextLen() : 0;
}

unsigned long BCTextEdit::GetText(char* buffer, unsigned long max) {
    return opText && buffer ? opText->GetText(buffer, 0, max) : 0;
}

unsigned int BCTextEdit::GetTextLine(unsigned int lineNo, char* buffer, unsigned int max) {
    if (!buffer)
        return 0;
    unsigned long copied = 0, start = 0;
    unsigned int len = 0;
    unsigned long ofs = opText ? opText->GetLineOfs(lineNo) : kNoLine;
    if (ofs != kNoLine && opText->GetLineStartLen(ofs, start, len)) {
        unsigned long count = len + 2ul < max ? len + 2ul : max;
        copied = opText->GetText(buffer, start, count);
    }
    buffer[copied] = 0;
    return static_cast<unsigned int>(copied);
}

unsigned int BCTextEdit::GetLineLen(int lineNo) {
    unsigned long ofs = opText ? opText->GetLineOfs(static_cast<unsigned long>(lineNo)) : kNoLine;
    unsigned long start = 0;
    unsigned int len = 0;
    if (static_cast<long>(ofs) < 0 || !opText->GetLineStartLen(ofs, start, len))
        return 0;
    return len;
}

int BCTextEdit::GetLineParms(unsigned long ofs, unsigned long& start, unsigned int& len,
                             BCSize& size) {
    if (!opText || !opText->GetLineStartLen(ofs, start, len))
        return 0;
    size = GetLineSize(start, len);
    return 1;
}

int BCTextEdit::IsModified() {
    if (!opText)
        return 0;
    BCRenderableData* wrapped = opText->GetDataObject();
    return opText->IsModified() || (wrapped && wrapped->IsModified());
}

void BCTextEdit::SetModified(int modified) {
    if (!opText)
        return;
    opText->SetModified(modified);
    if (BCRenderableData* wrapped = opText->GetDataObject())
        wrapped->SetModified(modified);
}

void BCTextEdit::Display(const char* prefix) {
    unsigned char b[17] = {};
    GetText(reinterpret_cast<char*>(b), 16);
    DispObjectMsg("%sGetTextLen()=%d\nIsModified()=%d\n[0..15]={\n"
                  "             %02x %02x %02x %02x %02x %02x %02x %02x\n"
                  "             %02x %02x %02x %02x %02x %02x %02x %02x\n        }\n",
                  prefix ? prefix : "", static_cast<int>(GetTextLen()), IsModified(), b[0], b[1],
                  b[2], b[3], b[4], b[5], b[6], b[7], b[8], b[9], b[10], b[11], b[12], b[13], b[14],
                  b[15]);
}

// ---- recorded primitives ----

int BCTextEdit::Note(unsigned long type, unsigned long ofs, const char* removed,
                     unsigned long removedLen, const char* inserted, unsigned long insertedLen) {
    return !opUndo || opUndo->Record(type, ofs, removed, removedLen, inserted, insertedLen);
}

int BCTextEdit::InputText(const char* text, unsigned long ofs, unsigned int len, int insert) {
    if (!opText || !text)
        return 0;
    RangeCopy old(opText, ofs, insert ? 0 : len);
    if (!old.Ok() ||
        !Note(insert ? BC_UNDO_INSERT : BC_UNDO_OVERWRITE, ofs, old.Text(), old.Len(), text, len))
        return 0;
    if (opUndo && std::memchr(text, '\n', len))
        opUndo->SetNoMerge();
    blDirty = 1;
    return static_cast<int>(opText->SetText(text, ofs, len, insert));
}

int BCTextEdit::DeleteText(unsigned long ofs, unsigned long len, int backward) {
    if (!opText)
        return 0;
    RangeCopy old(opText, ofs, len);
    if (!old.Ok())
        return 0;
    if (!old.Len())
        return 1;
    if (!Note(backward ? BC_UNDO_BACKSPACE : BC_UNDO_DELETE, ofs, old.Text(), old.Len(), "", 0))
        return 0;
    if (opUndo && old.HasLF())
        opUndo->SetNoMerge();
    blDirty = 1;
    // Only what exists goes: the text object would take a longer count off its length.
    opText->DeleteText(ofs, old.Len());
    return 1;
}

int BCTextEdit::ReplaceTextA(unsigned long ofs, unsigned long oldLen, const char* text,
                             unsigned long newLen) {
    if (!opText)
        return 0;
    RangeCopy old(opText, ofs, oldLen);
    if (!old.Ok())
        return 0;
    if (!text)
        newLen = 0;
    blDirty = 1;
    if (old.Len())
        opText->DeleteText(ofs, old.Len());
    if (newLen)
        opText->SetText(text, ofs, newLen, 1);
    if (old.Len() || newLen) {
        unsigned long type = !newLen     ? BC_UNDO_DELETE
                             : old.Len() ? BC_UNDO_REPLACE
                                         : BC_UNDO_INSERT;
        Note(type, ofs, old.Text(), old.Len(), text ? text : "", newLen);
    }
    return 1;
}

// ---- text at the caret and the selection ----

int BCTextEdit::HasVertBar() const {
    return (static_cast<unsigned long>(dwStyle) & WS_VSCROLL) != 0;
}

void BCTextEdit::SetScrollRange(unsigned long minimum) {
    if (HasVertBar() && HandleCheck())
        SetVertScrollRange(0, static_cast<int>(dwLineCnt > minimum ? dwLineCnt : minimum));
}

void BCTextEdit::Relayout(unsigned long ofs) {
    // The change may have moved the top line's start: take the start of the line it is in.
    unsigned long start = 0;
    unsigned int len = 0;
    unsigned long top = dwPageTop < GetTextLen() ? dwPageTop : GetTextLen();
    dwPageTop = opText && opText->GetLineStartLen(top, start, len) ? start : 0;
    dwPageEnd = dwPageTop;
    dwLineCnt = opText ? opText->GetNumLines(0, GetTextLen()) : 0;
    SetScrollRange(0);
    SetTextPos(ofs, -1);
}

int BCTextEdit::InsertPiece(const char* piece, unsigned int count) {
    unsigned long start = 0;
    unsigned int len = 0;
    unsigned int over = 0;
    if ((dwMode & BC_TE_OVERWRITE) && opText->GetLineStartLen(dwCaret, start, len) &&
        dwCaret < start + len) {
        // Overwriting stops at the line's end: the CR LF is never typed over.
        unsigned long left = start + len - dwCaret;
        over = static_cast<unsigned int>(count < left ? count : left);
    }
    unsigned long from = dwCaret;
    int onPage = CaretOnPage(), dirty = blDirty;
    if (over && !InputText(piece, dwCaret, over, 0))
        return 0;
    if (count > over && !InputText(piece + over, dwCaret + over, count - over, 1))
        return 0;
    if (from < dwPageTop)
        dwPageTop += count - over;
    dwCaret += count;
    if (!onPage) {
        Relayout(dwCaret);
        return 1;
    }
    dwPageEnd += count - over;
    CaretOff();
    SetCaretPos(dwCaret);
    PutLine(from);
    blDirty = dirty; // the changed line is drawn: scrolling may still move the page's bits
    CaretOn();
    return 1;
}

int BCTextEdit::InsertBreak() {
    if (!InputText("\r\n", dwCaret, 2, 1))
        return 0;
    if (dwCaret < dwPageTop)
        dwPageTop += 2;
    dwCaret += 2;
    ++dwLineCnt;
    dwPageEnd = dwPageTop;
    SetScrollRange(0);
    SetTextPos(dwCaret, -1);
    return 1;
}

int BCTextEdit::InsertText(const char* text) {
    if (!opText || !text)
        return 0;
    for (const char* p = text; *p;) {
        if (IsTyped(*p)) {
            const char* q = p;
            while (IsTyped(*q))
                ++q;
            if (!InsertPiece(p, static_cast<unsigned int>(q - p)))
                return 0;
            p = q;
        } else if (IsBreak(*p)) {
            if (!InsertBreak())
                return 0;
            char first = *p++;
            if (IsBreak(*p) && *p != first)
                ++p; // CR LF or LF CR: one break
        } else {
            ++p;
        }
    }
    return 1;
}

int BCTextEdit::AppendText(const char* text) {
    unsigned long len = GetTextLen();
    if (dwCaret != len)
        SetTextPos(len, -1);
    return InsertText(text);
}

unsigned long BCTextEdit::GetSelectedText(char* buffer, unsigned long max) {
    if (!buffer)
        return 0;
    *buffer = 0;
    unsigned long count = lmSel.GetLength();
    if (!count || !opText)
        return 0;
    return opText->GetText(buffer, Low(lmSel), count < max ? count : max);
}

int BCTextEdit::ReplaceSelectedText(const char* text) {
    if (!opText || !text)
        return 0;
    unsigned long n = std::strlen(text);
    unsigned long low = lmSel.IsEmpty() ? dwCaret : Low(lmSel);
    RangeCopy old(opText, low, lmSel.GetLength());
    if (!old.Ok())
        return 0;
    blDirty = 1;
    if (old.Len())
        opText->DeleteText(low, old.Len());
    lmSel = BCLimits(static_cast<long>(low), static_cast<long>(low));
    int ok = 1;
    if (n) {
        lmSel.SetEnd(static_cast<long>(low + n));
        ok = opText->SetText(text, low, n, 1) == n;
    }
    Relayout(low);
    if (old.Len() || n)
        Note(n ? BC_UNDO_REPLACE : BC_UNDO_DELETE, low, old.Text(), old.Len(), text, n);
    return ok;
}

int BCTextEdit::DeleteSelectedText() {
    return ReplaceSelectedText("");
}

int BCTextEdit::SetText(const char* text) {
    if (!opText)
        return 0;
    unsigned long len = GetTextLen();
    if (len)
        opText->DeleteText(0, len);
    unsigned long n = text ? std::strlen(text) : 0;
    int ok = !n || opText->SetText(text, 0, n, 0) == n;
    NewText();
    return ok;
}

int BCTextEdit::SetText(BCTextData* data) {
    if (data && data != opText) {
        delete opText;
        opText = data;
    }
    NewText();
    Repaint();
    return 1;
}

void BCTextEdit::NewText() {
    IntReset();
    blDirty = 1;
    if (HandleCheck()) {
        SetScrollRange(1);
        SetTextPos(0, 0);
    }
    if (opUndo)
        opUndo->Reset();
}

// ---- undo and redo ----

void BCTextEdit::ApplyUndo(const BCUndoRecord& r, int redo, unsigned long& ofs) {
    // Undo takes the typed characters out and puts the removed ones back; an overwrite is
    // undone like a deletion (the old characters go back in front of the typed ones, which
    // stay), and redone by taking the old ones out again.
    unsigned long t = r.dwType;
    bool typed = t == BC_UNDO_INSERT || t == BC_UNDO_REPLACE;
    bool removed = t != BC_UNDO_INSERT;
    unsigned long take =
        redo ? (removed ? r.bfRemoved.GetLen() : 0) : (typed ? r.bfInserted.GetLen() : 0);
    const BCUndoBuffer* put =
        redo ? (typed ? &r.bfInserted : nullptr) : (removed ? &r.bfRemoved : nullptr);
    if (take)
        opText->DeleteText(ofs, take);
    if (put && put->GetLen() && opText->SetText(put->GetData(), ofs, put->GetLen(), 1) &&
        t != BC_UNDO_REPLACE)
        ofs += put->GetLen();
}

int BCTextEdit::Undo() {
    BCUndoRecord* r = opUndo && opText ? opUndo->TakeUndo() : nullptr;
    if (!r)
        return 0;
    if (!Unreachable(IsKnown(r->dwType), __LINE__))
        return 0;
    unsigned long ofs = r->dwOfs;
    ApplyUndo(*r, 0, ofs);
    AfterUndo(ofs);
    return 0;
}

int BCTextEdit::Redo() {
    if (!opUndo || !opText || !opUndo->CanRedo())
        return 0;
    BCUndoRecord* r = opUndo->TakeRedo();
    if (!Unreachable(r && IsKnown(r->dwType), __LINE__))
        return 0;
    unsigned long ofs = r->dwOfs;
    ApplyUndo(*r, 1, ofs);
    AfterUndo(ofs);
    return 1;
}

void BCTextEdit::AfterUndo(unsigned long ofs) {
    blDirty = 1;
    lmSel = BCLimits(static_cast<long>(ofs), static_cast<long>(ofs));
    Relayout(ofs);
}
