#pragma once
#include <iosfwd>
#include "bcrendata.h"
#include "bcfwd.h"
#include "norlib2api.h"

// A number with the printf format it is shown in. Renders as text through the format (1,
// 0x8001) and in a private binary form (0x8002): the value's bytes, a length byte and the
// format's characters. Flag 0x0008 means the format text is not owned (the default is
// static). A format that is not one conversion of the number's kind is not used: the
// default stands in for it, so that no format can read or write what is not there.
class NORLIB2_API BCInteger : public BCRenderableData {
  public:
    explicit BCInteger(long value = 0);
    // Shares a static format; an owned one is copied, so each object frees only its own.
    BCInteger(const BCInteger& other);
    BCInteger& operator=(const BCInteger& other);
    ~BCInteger() override;

    // Record: type code word, the value (4 bytes), the format as a string primitive.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;

    BCRenderableData* Dup() override;
    // Value 0, not modified.
    int Clear(int freeItems) override;
    // The value itself.
    void* GetKey() override;
    int IsRenderable(BCFormat& format) override;
    unsigned long GetData(void* buffer, unsigned long size, BCFormat& format) override;
    void* GetDataPtr(BCFormat& format) override;
    unsigned long GetLen(BCFormat& format) override;
    // From text: reads at most 24 characters with the format. From the binary form: the
    // value, and a new format when the length byte is non-zero, whose characters are taken
    // from offset 8 (not 5, where GetData puts them).
    unsigned long SetData(void* buffer, unsigned long size, BCFormat& format) override;

    long GetValue() const { return lValue; }
    const char* GetFormat() const { return lpFormat; }

  private:
    // The value printed into `text` (`size` bytes); returns its length.
    unsigned long Print(char* text, unsigned long size) const;

    long lValue;
    char* lpFormat;
};

// As BCInteger, for a 64-bit floating-point value; the binary form's format characters
// follow at offset 9 both ways.
class NORLIB2_API BCFloat : public BCRenderableData {
  public:
    explicit BCFloat(double value = 0.0);
    BCFloat(const BCFloat& other);
    BCFloat& operator=(const BCFloat& other);
    ~BCFloat() override;

    // Record: type code word, the value (8 bytes), the format as a string primitive.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;

    BCRenderableData* Dup() override;
    int Clear(int freeItems) override;
    int IsRenderable(BCFormat& format) override;
    unsigned long GetData(void* buffer, unsigned long size, BCFormat& format) override;
    void* GetDataPtr(BCFormat& format) override;
    unsigned long GetLen(BCFormat& format) override;
    unsigned long SetData(void* buffer, unsigned long size, BCFormat& format) override;

    double GetValue() const { return dValue; }
    const char* GetFormat() const { return lpFormat; }

  private:
    unsigned long Print(char* text, unsigned long size) const;

    double dValue;
    char* lpFormat;
};
