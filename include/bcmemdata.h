#pragma once
#include <iosfwd>
#include "bcrendata.h"
#include "bcfwd.h"
#include "norlib2api.h"

// A block of bytes as renderable data: a copy of what it is given, or (flag 0x0020) the
// caller's own buffer. Bytes can be inserted, overwritten and deleted at any offset; the
// block grows and shrinks in steps. Flag 0x0008 or 0x0020 keeps the bytes from being freed.
// The free bytes of an owned block lie at the place of the last edit, so that editing at one
// place moves only the bytes between the old and the new place; whatever hands out the block
// (the data pointer, a record) first moves them back to the end.
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
    // The bytes in one piece. Writing through the pointer is allowed until the next call.
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
    // Bytes lying together in the block.
    struct Run {
        const unsigned char* bytes;
        unsigned long size;
    };

    // The bytes [from, to) (within those held) as they lie: the second run is empty unless
    // the free bytes lie between.
    void Runs(unsigned long from, unsigned long to, Run& first, Run& second) const;
    // The byte at `offset` (below the bytes held).
    unsigned char At(unsigned long offset) const {
        return lpData[offset < dwGapAt ? offset : offset + Free()];
    }
    // The bytes held, in one piece (the free bytes moved to the end); null when empty.
    const unsigned char* Contiguous() const;

    // Told before the bytes [offset, offset + count) are removed or overwritten.
    virtual void Removing(unsigned long offset, unsigned long count);
    // Told after `count` new bytes were placed at `offset`.
    virtual void Inserted(unsigned long offset, unsigned long count);
    // Told when the bytes changed in a way the two above do not describe, or may change
    // behind the object's back.
    virtual void Replaced();

    // The bytes that really exist: the length, bounded by the allocation (a delete past the
    // end leaves the length larger than the block).
    unsigned long Held() const;
    // Replaces the contents with bytes read from the stream: `count` of them, or all that
    // are left when `toEnd` is non-zero. On failure the contents stay as they were.
    int LoadBytes(std::istream& is, unsigned long count, int toEnd);
    // Takes `block` (from the far-memory allocator) as the bytes: `length` of `capacity` in
    // use, the rest free at the end.
    void Adopt(unsigned char* block, unsigned long length, unsigned long capacity);

    unsigned char* lpData;
    unsigned long dwLen;
    unsigned long dwBufLen;
    unsigned long dwGrowStep;

  private:
    // Where the free bytes start; the bytes after them follow the ones before.
    mutable unsigned long dwGapAt;

    unsigned long Free() const { return lpData ? dwBufLen - Held() : 0; }
    // Moves the free bytes to start at `offset`.
    void MoveGap(unsigned long offset) const;
    // Places `count` bytes at `offset`, `removed` of them over old ones.
    void WriteAtGap(unsigned long offset, const void* source, unsigned long count,
                    unsigned long removed);
    // Inserts or overwrites in place, for a buffer that must stay in one piece.
    void WriteInPlace(unsigned long offset, const void* source, unsigned long count, int insert);
    // The shrinking step of a delete; 0 when the block was lost.
    int ShrinkAfterDelete(unsigned long count);
    bool OwnsBytes() const;
    void FreeBytes();
    // Fills an empty object as the constructor does: borrowing or copying.
    void TakeBytes(void* buffer, unsigned long length);
    // Makes room for `size` bytes, keeping the bytes held; 0 on failure (nothing changed).
    int Reserve(unsigned long long size);
    void Install(unsigned char* block, unsigned long length, unsigned long capacity);
    void Empty();
};
