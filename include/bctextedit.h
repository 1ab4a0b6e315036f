#pragma once
#include "bcfwd.h"
#include "bctextdata.h"
#include "bcundolist.h"
#include "bcwindow.h"
#include "norlib2api.h"

class BCCaret;

// Editor modes (the low four bits of the mode word).
enum BCTextEditMode : unsigned long {
    BC_TE_OVERWRITE = 1,    // typing replaces characters (the Insert key toggles it)
    BC_TE_DISPLAY_ONLY = 2, // no caret, the keys only scroll
    BC_TE_READ_ONLY = 4,    // no typing, no deleting
    BC_TE_NO_MOUSE_SEL = 8  // no capture, dragging or word selection
};

// Editor state bits.
enum BCTextEditState : unsigned long {
    BC_TE_MOUSE_SELECTING = 1,
    BC_TE_IN_SCROLL_BAR = 2,
    BC_TE_EXTENDED_SEL = 4
};

// A multi-line plain-text editor window. It keeps no text of its own: the text lives in a
// BCTextData, which the editor reads and changes by offsets and destroys with itself (also
// one the application supplied). Lines end in CR LF and are never wrapped; the caret never
// rests between the CR and the LF. Changes go through InputText, DeleteText and ReplaceTextA,
// which record them for Undo and Redo.
class NORLIB2_API BCTextEdit : public BCChildWindow {
  public:
    // `fileExt` and `fileName` name the document of a text data object made here when `data`
    // is null. The undo history holds `undoDepth` steps.
    BCTextEdit(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
               const char* fileExt, const char* fileName, BCTextData* data, BCApplication* app,
               unsigned int mode, unsigned int undoDepth);
    ~BCTextEdit() override;
    BCTextEdit(const BCTextEdit&) = delete;
    BCTextEdit& operator=(const BCTextEdit&) = delete;

    void Display(const char* prefix) override;

    LRESULT CharKey(BCEvent* event) override;
    LRESULT Focus(BCEvent* event) override;
    LRESULT HorizScroll(BCEvent* event) override;
    LRESULT Initialize(BCEvent* event) override;
    LRESULT KeyDown(BCEvent* event) override;
    // The file (101-104), edit (111-116) and search (120-122) commands; others return 0.
    LRESULT MenuCommand(BCEvent* event) override;
    // Enables Undo, Redo, Cut, Copy and Paste (111, 116, 112, 113, 114) by the state.
    LRESULT MenuInit(BCEvent* event) override;
    LRESULT MouseDown(BCEvent* event) override;
    LRESULT MouseUp(BCEvent* event) override;
    LRESULT MouseDblClk(BCEvent* event) override;
    LRESULT MouseDrag(BCEvent* event) override;
    LRESULT Paint(BCEvent* event) override;
    LRESULT ReSize(BCEvent* event) override;
    LRESULT VertScroll(BCEvent* event) override;

    // Draws `len` characters (at most 1024) from `ofs` at `pos`; returns the number drawn.
    virtual unsigned int PosLineFrag(const BCPosition& pos, unsigned long ofs, unsigned int len);
    // The caret's pixel position for `ofs`, without moving the system caret.
    virtual void SetIntCaretPos(unsigned long ofs);
    // Drawn size of `len` characters from `ofs` (at most 1024 measured), TABs expanded from
    // the line's start.
    virtual BCSize GetLineSize(unsigned long ofs, unsigned int len);
    // The recorded primitives. `insert` 0 overwrites.
    virtual int InputText(const char* text, unsigned long ofs, unsigned int len, int insert);
    virtual int DeleteText(unsigned long ofs, unsigned long len, int backward);
    // Returns 0 only when the characters to replace could not be read.
    virtual int ReplaceTextA(unsigned long ofs, unsigned long oldLen, const char* text,
                             unsigned long newLen);
    virtual void IntReset();
    virtual BCCaret* CreateCaret();
    virtual void DestroyCaret(BCCaret* caret);
    // Puts the line holding `ofs` at the top of the page; the caret stays where it is.
    virtual void SetPagePos(unsigned long ofs);
    // Moves the caret to `ofs`, laying the page out when it is off the page or when
    // `linesAbove` (-1: keep the page) asks for a number of lines above it.
    virtual void SetTextPos(unsigned long ofs, int linesAbove);

    unsigned long GetTextLen();
    unsigned long GetText(char* buffer, unsigned long max);
    BCTextData* GetText() const { return opText; }
    unsigned long GetLineCnt() const { return dwLineCnt; }
    // The line with its CR LF, at most `max` characters, NUL after them: the buffer holds
    // max + 1 bytes.
    unsigned int GetTextLine(unsigned int lineNo, char* buffer, unsigned int max);
    unsigned int GetLineLen(int lineNo);
    int GetLineParms(unsigned long ofs, unsigned long& start, unsigned int& len, BCSize& size);
    int IsModified();
    void SetModified(int modified);

    void PutLine(unsigned long ofs);
    void PosLine(unsigned long ofs, const BCPosition& pos);
    void PutFrag(unsigned long from, unsigned long to, int highlighted);
    BCPosition GetOfsPos(unsigned long ofs);
    unsigned long GetPosOfs(const BCPosition& pos);
    void SetCaretPos(unsigned long ofs);
    void CaretOn();
    void CaretOff();
    // The selection, low end first.
    BCLimits GetCrntSelection() const;
    void SetCrntSelection(const BCLimits& limits);
    void SetMode(unsigned int bits, int on);

    // Typing and pasting at the caret: printable 7-bit characters and TABs, CR or LF as a
    // line break; everything else is dropped. 0 when the text object refused a piece.
    int InsertText(const char* text);
    int AppendText(const char* text);
    unsigned long GetSelectedText(char* buffer, unsigned long max);
    int ReplaceSelectedText(const char* text);
    int DeleteSelectedText();
    // New text: the history is emptied and the page laid out at the start.
    int SetText(const char* text);
    int SetText(BCTextData* data);
    // Returns 0 also on success: callers ask CanUndo.
    int Undo();
    int Redo();
    int CanUndo() const { return opUndo && opUndo->CanUndo(); }
    int CanRedo() const { return opUndo && opUndo->CanRedo(); }

    // The system clipboard's text. Each returns 1 when it did its work: Cut and Copy need a
    // selection, Paste a text on the clipboard.
    int Cut();
    int Copy();
    int Paste();
    // The data object's file commands. A new or opened document is shown from its start with
    // an empty history; a saved one is no longer modified.
    int NewFile();
    int OpenFile();
    int SaveFile();
    int SaveAsFile();
    // Find and Replace ask for the texts and options (BCFindOption) in the library's dialogs;
    // FindNext selects the next match of the last pattern from the search position. A
    // pattern that is not there is reported with message 10087.
    int Find();
    int FindNext();
    int Replace();
    // What the dialogs leave: copies of the texts (null for none) and the options; the search
    // then starts at the selection's low end, or at the caret. 0 when a copy could not be
    // made.
    int SetSearch(const char* pattern, const char* replacement, unsigned long options);
    // Replaces matches from the search position, asking before each one; `once` stops after
    // the first one asked about. 0 when cancelled or when a replacement failed.
    int ReplaceAsking(int once);
    // Replaces the next match, or with `all` every one up to the end, leaving the caret at the
    // end; each replacement is its own undo step and the window is repainted once.
    int ReplaceDirect(int all);
    const char* GetSearchPattern() const { return caPattern; }
    const char* GetReplacement() const { return caReplace; }
    unsigned long GetSearchOptions() const { return dwSearchOpts; }
    unsigned long GetSearchPos() const { return dwSearchPos; }

    unsigned long GetMode() const { return dwMode; }
    unsigned long GetState() const { return dwState; }
    unsigned long GetCaretOfs() const { return dwCaret; }
    unsigned long GetPageTop() const { return dwPageTop; }
    unsigned long GetPageEnd() const { return dwPageEnd; }
    unsigned long GetFirstLine() const { return dwFirstLine; }
    BCCaret* GetCaret() const { return opCaret; }
    const BCPosition& GetCaretPos() const { return psCaret; }
    const BCRectangle& GetTextRect() const { return rcText; }
    BCUndoList* GetUndoList() const { return opUndo; }

  private:
    // textedit.cpp
    int Assert(long condition, unsigned int line);
    int Unreachable(long condition, unsigned int line);
    int Note(unsigned long type, unsigned long ofs, const char* removed, unsigned long removedLen,
             const char* inserted, unsigned long insertedLen);
    int HasVertBar() const;
    void SetScrollRange(unsigned long minimum);
    void Relayout(unsigned long ofs);
    int InsertPiece(const char* piece, unsigned int count);
    int InsertBreak();
    void NewText();
    void ApplyUndo(const BCUndoRecord& r, int redo, unsigned long& ofs);
    void AfterUndo(unsigned long ofs);
    // tedisplay.cpp
    BCSize CharSize();
    // PosLine with the height of "H" known (a page measures it once).
    void PosLine(unsigned long ofs, const BCPosition& pos, short lineHeight);
    void ComputeTextRect();
    unsigned int ColumnAt(unsigned long start, unsigned int len, int x);
    // Start of the line after the one holding `start`, past the text's length when none.
    unsigned long NextStart(unsigned long start);
    unsigned long PrevStart(unsigned long start);
    // Lines that fit the window (at least one).
    unsigned long PageLines();
    unsigned long LinesShown();
    void FillPage(unsigned long start, unsigned long above);
    void PageMoved(unsigned long oldTop, unsigned long oldFirst);
    int CaretOnPage();
    void PlaceCaret();
    void ClearRight(short y, short height);
    // Where a scroll-bar event puts the page's top; all bits set for none.
    unsigned long ScrollTarget(BCEvent* event);
    void DrawFrag(unsigned long ofs, unsigned long count, int highlighted);
    // tesearch.cpp
    unsigned long SelLow() const;
    int SearchNext();
    void NotFound();
    // ReplaceTextA at the search position, which then moves past the replacement.
    int ReplaceFound();
    // tekeys.cpp
    void CollapseSel();
    void DisplayOnlyKey(unsigned int key);
    void EditKey(unsigned int key);
    void EditedInLine(unsigned long from, long pageEndShift);
    void BackspaceKey(unsigned long start);
    void DeleteKey(unsigned long start, unsigned int len);
    void ExtendKey(unsigned long lineEnd);
    void ScrollByLine(unsigned long top, unsigned long end, unsigned long first);
    void CtrlUpKey();
    void CtrlDownKey();
    int InLeftMargin(const BCPosition& pos);
    unsigned long WordLeft(unsigned long ofs);
    unsigned long WordRight(unsigned long ofs);

    BCTextData* opText;
    unsigned long dwMode;
    unsigned long dwState;
    unsigned long dwF8Count;
    BCCaret* opCaret;
    BCPosition psCaret;
    unsigned long dwPageTop;
    unsigned long dwCaret;
    unsigned long dwPageEnd;
    unsigned long dwLineCnt;
    unsigned long dwFirstLine;
    unsigned long dwSearchPos;
    char* caPattern;
    char* caReplace;
    unsigned long dwSearchOpts;
    BCLimits lmSel;
    BCRectangle rcText;
    BCUndoList* opUndo;
    BCSize szLast;
    unsigned long dwLastLen;
    int blCaretShown; // the system caret is shown (its hide count is not ours to pile up)
    int blDirty;      // the text changed since the page was last repainted whole
};
