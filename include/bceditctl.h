#pragma once
#include "bccontrol.h"
#include "bcfwd.h"
#include "norlib2api.h"

class BCTextData;

// The system's edit control, bound to a template control of a dialog or created as a child
// window. Every operation asks for the window first and, without one, does nothing and gives
// its no-window result (0 unless said otherwise).
class NORLIB2_API BCEditControl : public BCControlWindow {
  public:
    BCEditControl(const BCResID& id, BCDialog* dialog, unsigned int typeCode, BCApplication* app);
    BCEditControl(long style, unsigned int id, BCWindow* parent, const BCPosition& pos,
                  const BCSize& size, unsigned int typeCode, BCApplication* app);

    // (start, end) in characters; (0, 0) without a window.
    BCLimits GetCrntSelection() const;
    void SetCrntSelection(const BCLimits& limits);
    int IsModified() const;
    // Returns the flag as it was.
    int SetModified(int flag);
    int Undo();
    int CanUndo() const;
    int Cut();
    int Copy();
    int Paste();

  protected:
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const;
    // The shared bodies of the fields' text operations, with their no-window results.
    unsigned long ReadText(char* buffer, unsigned long size);
    int TextLen() const;
    void LimitText(unsigned long count);
    void ReplaceSelection(const char* text);
    // The dump of both fields: length, modified flag and the first 16 bytes of the text.
    void DisplayText(const char* prefix, const unsigned char (&bytes)[16], int length);
    // The selection (start, end) cut to size - 1 characters when it is longer than `size`;
    // false when there is nothing to copy.
    bool ClampedSelection(unsigned long size, unsigned long& start, unsigned long& end) const;
};

// A single-line field.
class NORLIB2_API BCStringEdit : public BCEditControl {
  public:
    BCStringEdit(const BCResID& id, BCDialog* dialog, BCApplication* app);
    // Created at once when `text` is not null.
    BCStringEdit(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
                 const char* text, BCApplication* app);

    // At most size - 1 characters, terminated; the count read. Without a window it returns
    // `size` and leaves the buffer alone: not a count.
    unsigned int GetText(char* buffer, unsigned int size);
    // 1, or 0 after the platform reported an error.
    int SetText(const char* text);
    int GetTextLen() const;
    void SetCharLimit(unsigned int count);
    // The selection, cut to size - 1 characters when longer than `size` (a selection of
    // exactly `size` is copied whole: the buffer holds size + 1 bytes); the count copied.
    unsigned int GetSelectedText(char* buffer, unsigned int size);
    void ReplaceSelectedText(const char* text);
    void DeleteSelectedText();
    int SetPasswordChar(char c);
    void Display(const char* prefix) override;
};

// A multi-line field that exchanges its whole text with a BCTextData. The data object it
// makes for GetText() is its own and reused; one bound with SetText(BCTextData*) stays the
// caller's. Texts over 32767 characters are refused with a message.
class NORLIB2_API BCMultiStringEdit : public BCEditControl {
  public:
    BCMultiStringEdit(const BCResID& id, BCDialog* dialog, BCApplication* app);
    // Single-line below a height of 25, multi-line with a vertical scroll bar from 25 on.
    BCMultiStringEdit(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
                      const char* text, BCApplication* app);
    ~BCMultiStringEdit() override;
    BCMultiStringEdit(const BCMultiStringEdit&) = delete;
    BCMultiStringEdit& operator=(const BCMultiStringEdit&) = delete;

    // With style bit 0x0800 Enter inserts a line break instead of pressing the default button.
    LRESULT DispatchEvent(BCEvent* event) override;
    // As BCStringEdit::GetText, with the same no-window result.
    unsigned long GetText(char* buffer, unsigned long size);
    int SetText(const char* text);
    // The whole text, in the bound or the control's own data object; null on failure.
    BCTextData* GetText();
    int SetText(BCTextData* text);
    int GetTextLen() const;
    // The line with a CR and an LF appended while they fit; see the count it returns.
    unsigned int GetTextLine(unsigned int line, char* buffer, unsigned int size);
    int GetLineLen(int pos) const;
    int GetLineCnt() const;
    void SetCharLimit(unsigned long count);
    void ScrollVert(int lines);
    void ScrollHoriz(int columns);
    void PageUp();
    void PageDown();
    void LineUp();
    void LineDown();
    unsigned long GetSelectedText(char* buffer, unsigned long size);
    void ReplaceSelectedText(const char* text);
    void DeleteSelectedText();
    int EmptyUndo();
    BCRectangle GetFormatRect() const;
    int SetFormatRect(const BCRectangle& rect, int redraw);
    int FormatLines(int flag);
    // The tab positions follow `count` as int arguments.
    int SetTabStops(unsigned int count, ...);
    void Display(const char* prefix) override;

  private:
    BCTextData* opTextData;
    int blExternalText;
};
