#pragma once
#include <iosfwd>
#include "norlib1api.h"

// Root of every framework class. The 16-bit type word keeps the class's type code in bits
// 6-15; bits 0-5 are object state bits of this class, which the library leaves alone.
class NORLIB1_API BCObject {
  public:
    explicit BCObject(unsigned int typeCode = 1);
    BCObject(const BCObject& other);
    BCObject& operator=(const BCObject& other);
    virtual ~BCObject();

    // Class name: string resource 3000 + type code; empty when the table has none.
    virtual const char* GetObjectTypeStr() const;
    // The record every persistent object begins with: its type code as a word. Load fails
    // when the stream is short or holds the record of another type.
    virtual int Load(std::istream& is);
    virtual int Save(std::ostream& os);
    // Internal fault of this object, reported through the message sink.
    virtual void Error(const char* text, unsigned int line, const char* file);
    // Diagnostic dump; a null prefix prints as empty.
    virtual void Display(const char* prefix);

    unsigned int GetObjectType() const { return wType >> 6; }
    unsigned int GetStateBits() const { return wType & 0x3Fu; }
    // Keeps the low ten bits of `code` and never touches the state bits.
    void SetObjectType(unsigned int code) {
        wType = static_cast<unsigned short>(((code & 0x3FFu) << 6) | (wType & 0x3Fu));
    }

    // Formats a diagnostic text (printf conventions) and shows it as this object's dump.
    int DispObjectMsg(const char* format, ...) const;
    // Loads numbered message `messageID`, formats it and shows it to the user; returns the
    // button the user pressed.
    int DispObjectMsg(unsigned int messageID, ...) const;
    // Checks that `object` is non-null and of type `typeCode`; otherwise reports through
    // this object's Error ("Null pointer:  <name>" or "Assertion failure") and returns 0.
    int AssertType(const BCObject* object, unsigned int typeCode, const char* name,
                   unsigned int line, const char* file);

  protected:
    unsigned short wType;
};

// Assertion check: returns `condition` unchanged when it holds; otherwise reports `text`
// ("Assertion failure" when null) with the source line and file through object->Error and
// returns 0.
NORLIB1_API long BCAssert(BCObject* object, long condition, unsigned int line, const char* file,
                          const char* text = nullptr);
