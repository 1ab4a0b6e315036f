#pragma once
#include <iosfwd>
#include "bcobject.h"
#include "bcformat.h"

// Flag bits of the flags word shared by renderable data and lists.
enum BCDataFlag : unsigned long {
    BC_FLAG_MODIFIED = 0x0001,
    BC_FLAG_NOTIFY = 0x0002,
    BC_FLAG_PASS_ON = 0x0004,
    BC_FLAG_NOT_OWNED = 0x0008,
    BC_FLAG_BORROW = 0x0020,
    BC_FLAG_NOTIFYING = 0x0080,
    BC_FLAG_SORTED = 0x0100,
    BC_FLAG_STRING_KEY = 0x0200,
    BC_FLAG_ARRAY = 0x0400,
    BC_FLAG_KEEP_ITEMS = 0x0800,
    BC_FLAG_BLOCK_KEY = 0x1000
};

// Base of data objects and lists: a flags word, a key, and the operations by which an
// object renders itself in a data format. A data object that wraps another links it into
// the modified chain, so that the modified flag is set and read down the whole chain.
class NORLIB1_API BCRenderableData : public BCObject {
  public:
    BCRenderableData(unsigned int typeCode, unsigned long flags);
    BCRenderableData(const BCRenderableData& other);
    BCRenderableData& operator=(const BCRenderableData& other);
    ~BCRenderableData() override;

    // Record: the type code word, then the flags word; loading takes only the notify bit
    // from it (ownership bits describe this object's memory, not the stream's).
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;

    virtual BCRenderableData* Dup();
    virtual int Clear(int freeItems);
    virtual void* GetKey();
    // Returns the previous key.
    virtual void* SetKey(void* key);
    // This base holds no contents: it renders in no format.
    virtual int IsRenderable(BCFormat& format);
    virtual unsigned long GetData(void* buffer, unsigned long size, BCFormat& format);
    virtual void* GetDataPtr(BCFormat& format);
    virtual unsigned long GetLen(BCFormat& format);
    virtual unsigned long SetData(void* buffer, unsigned long length, BCFormat& format);

    unsigned long GetFlags() const { return dwFlags; }
    // Sets (on non-zero) or clears `bits`; returns the previous word.
    unsigned long SetFlags(unsigned long bits, int on);
    // Non-zero when this object or one it wraps is modified.
    int IsModified() const;
    // Sets or clears the modified flag down the chain; returns this object's previous value.
    int SetModified(int modified);

  protected:
    // The object this one wraps in the modified chain (not owned here), or null.
    BCRenderableData* GetChained() const { return opChained; }
    void SetChained(BCRenderableData* wrapped) { opChained = wrapped; }

    unsigned long dwFlags;
    void* lpKey;

  private:
    BCRenderableData* opChained;
};
