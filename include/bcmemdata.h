#pragma once
#include <iosfwd>
#include "bcrendata.h"
#include "bcfwd.h"
#include "norlib2api.h"

// A block of bytes as renderable data: a copy of what it is given, or (flag 0x0020) the
// caller's own buffer. Bytes can be inserted, overwritten and deleted at any offset; the
// block grows and shrinks in steps. Flag 0x0008 or 0x0020 keeps the bytes from being freed.
class NORLIB2_API BCMemoryData : public BCRenderableData {
  public:
    BCMemoryData(void* buffer, unsigned long length, unsigned int flags);
    BCMemoryData(const BCMemoryData& other);
    // Takes the other's flags and bytes, not its grow step.
    BCMemoryData& operator=(const BCMemoryData& other);
    ~BCMemoryData() override;

    // Record: the type code word, a 4-byte length, then the bytes.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;

    BCRenderableData* Dup() override;
    int Clear(int freeItems) override;
    // True for the private formats 0x8001 and 0x8002.
    int IsRenderable(BCFormat& format) override;
    // Copies from the start, at most `size` bytes; returns the number copied.
    unsigned long GetData(void* buffer, unsigned long size, BCFormat& format) override;
    void* GetDataPtr(BCFormat& format) override;
    unsigned long GetLen(BCFormat& format) override;
    // Replaces the contents (borrowing the buffer with flag 0x0020); returns the length.
    unsigned long SetData(void* buffer, unsigned long length, BCFormat& format) override;

    // Inserts or overwrites `count` bytes at `offset` (at most the length); returns count, or
    // 0 when nothing was done or memory ran out (the object is then empty).
    unsigned long SetData(unsigned long offset, const void* buffer, unsigned long count,
                          int insert);
    // Removes `count` bytes at `offset`. The count is subtracted from the length in full even
    // when it reaches past the end, and deleting as many bytes as the length clears the
    // object whatever the offset.
    unsigned long DeleteData(unsigned long offset, unsigned long count);
    // Copies up to `count` bytes from `offset`; returns the number copied.
    unsigned long GetData(unsigned long offset, void* buffer, unsigned long count);

    unsigned long GetBufLen() const { return dwBufLen; }
    unsigned long GetGrowStep() const { return dwGrowStep; }
    // A step of 0 is refused; returns the previous step.
    unsigned long SetGrowStep(unsigned long step);

  protected:
    // The bytes that really exist: the length, bounded by the allocation (a delete past the
    // end leaves the length larger than the block).
    unsigned long Held() const;
    // Replaces the contents with bytes read from the stream: `count` of them, or all that
    // are left when `toEnd` is non-zero. On failure the contents stay as they were.
    int LoadBytes(std::istream& is, unsigned long count, int toEnd);

    unsigned char* lpData;
    unsigned long dwLen;
    unsigned long dwBufLen;
    unsigned long dwGrowStep;

  private:
    bool OwnsBytes() const;
    void FreeBytes();
    // Fills an empty object as the constructor does: borrowing or copying.
    void TakeBytes(void* buffer, unsigned long length);
    // Makes room for `size` bytes, keeping the bytes held; 0 on failure (nothing changed).
    int Reserve(unsigned long long size);
    void Install(unsigned char* block, unsigned long length, unsigned long capacity);
    void Empty();
};

// Text in a memory block: lines end with CR LF. A text made from a string counts its
// terminating NUL in the length. Line and search queries never read past the bytes held.
class NORLIB2_API BCText : public BCMemoryData {
  public:
    explicit BCText(char* text = nullptr, unsigned int flags = 0);

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

  private:
    const char* Chars() const { return reinterpret_cast<const char*>(lpData); }
    // Offset just after the last line feed before `offset`; 0 when there is none.
    unsigned long LineStart(unsigned long offset) const;
    // Offset of the first carriage return at or after `from` before `to`; `to` when none.
    unsigned long NextCR(unsigned long from, unsigned long to) const;
    bool MatchesAt(const char* pattern, unsigned long length, unsigned long at,
                   int matchCase) const;
    bool IsWholeWord(unsigned long at, unsigned long length) const;
};
