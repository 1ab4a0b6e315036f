#pragma once
#include "bcmemdata.h"

struct BCLineIndex;

// Text in a memory block: lines end with CR LF. A text made from a string counts its
// terminating NUL in the length. Line and search queries never read past the bytes held.
// The line feeds are counted per stretch of text and the counts kept up to date by every
// insert and delete, so line queries cost the same in a short text as in a long one; a
// borrowed buffer, which its owner may change at any time, is recounted when asked.
class NORLIB2_API BCText : public BCMemoryData {
  public:
    explicit BCText(char* text = nullptr, unsigned int flags = 0);
    BCText(const BCText& other);
    BCText& operator=(const BCText& other);
    ~BCText() override;

    // Record: the bytes as they are, no header; Load takes the rest of the stream, so a text
    // saved alone is a plain text file.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;

    BCRenderableData* Dup() override;
    // True for plain text (1) and the private formats 0x8001-0x8003.
    int IsRenderable(BCFormat& format) override;

    unsigned long SetText(const char* text, unsigned long offset, unsigned long count, int insert);
    unsigned long DeleteText(unsigned long offset, unsigned long count);
    // Copies up to `count` characters from `offset` and a NUL after them: the buffer must
    // hold count + 1 bytes. Returns the number copied.
    unsigned long GetText(char* buffer, unsigned long offset, unsigned long count);

    // Finds `pattern` from `position` on. Without `matchCase` only a-z and A-Z are folded;
    // with `wholeWord` a match next to a letter or digit is passed over. On success sets
    // `position` to the match and returns 1.
    int Search(const char* pattern, unsigned long& position, int matchCase, int wholeWord);
    // Start of line `line`: 0 for line 0 (even when empty), all bits set when there is none.
    unsigned long GetLineOfs(unsigned long line);
    // Start and length (without CR LF) of the line holding `offset`; 0 when `offset` is past
    // the end (then start is the length and length 0).
    int GetLineStartLen(unsigned long offset, unsigned long& start, unsigned int& length);
    // The offset `lines` lines away from `offset`, in the same column or at the end of a
    // shorter line.
    unsigned long GetLineRelOfs(unsigned long offset, long lines);
    // Line feeds in [from, to), `to` cut to the length.
    unsigned long GetNumLines(unsigned long from, unsigned long to);
    // Copies line `line` with its CR LF, at most `size` characters, and a NUL after them: the
    // buffer must hold size + 1 bytes. Returns the number copied, 0 when there is no line.
    unsigned int GetTextLine(unsigned int line, char* buffer, unsigned int size);

    // Reads a whole file's bytes. A file whose lines end in LF alone (no CR anywhere) gets
    // CR LF line ends and `lfOnly` set; any other file is taken byte for byte. Returns 1, 0
    // on a read error, -1 when the text would not fit in memory; on failure the text is as
    // it was.
    int LoadLines(std::istream& is, int& lfOnly);
    // Writes the bytes, with every CR LF written as LF alone when `lfOnly` is set.
    int SaveLines(std::ostream& os, int lfOnly);

  protected:
    void Removing(unsigned long offset, unsigned long count) override;
    void Inserted(unsigned long offset, unsigned long count) override;
    void Replaced() override;

  private:
    const char* Chars() const { return reinterpret_cast<const char*>(Contiguous()); }
    unsigned long CountLF(unsigned long from, unsigned long to) const;
    // Offset of the last line feed in [from, to), all bits set when there is none.
    unsigned long LastLF(unsigned long from, unsigned long to) const;
    // Offset of the `nth` line feed in [from, to); all bits set (and `nth` reduced by those
    // passed) when there are fewer.
    unsigned long NthLF(unsigned long from, unsigned long to, unsigned long& nth) const;
    // Offset of the first carriage return at or after `from` before `to`; `to` when none.
    unsigned long NextCR(unsigned long from, unsigned long to) const;

    // Whether the line feed counts can be used, making them when they are missing.
    bool Indexed();
    void BuildIndex();
    // Cuts the stretch `i`, starting at `start`, into stretches of the usual size.
    void SplitStretch(unsigned long i, unsigned long start);
    // Line feeds before `offset`.
    unsigned long LinesBefore(unsigned long offset);
    // Offset just after the `line`-th line feed; all bits set when there are fewer.
    unsigned long AfterNthLF(unsigned long line);
    // Offset just after the last line feed before `offset`; 0 when there is none.
    unsigned long LineStart(unsigned long offset);
    bool MatchesAt(const char* pattern, unsigned long length, unsigned long at,
                   int matchCase) const;
    bool IsWholeWord(unsigned long at, unsigned long length) const;

    BCLineIndex* opLines; // null when it could not be made: queries then scan
};
