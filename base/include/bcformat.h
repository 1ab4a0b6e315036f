#pragma once
#include "bcobject.h"

// A data-format tag: the platform's numeric clipboard format, or one of the framework's
// private formats.
class NORLIB1_API BCFormat : public BCObject {
  public:
    explicit BCFormat(unsigned int format = 0) : BCObject(135), wFormat(format) {}
    unsigned int GetFormat() const { return wFormat; }
    void SetFormat(unsigned int format) { wFormat = format; }
    bool operator==(const BCFormat& o) const { return wFormat == o.wFormat; }
    bool operator!=(const BCFormat& o) const { return wFormat != o.wFormat; }
    void Display(const char* prefix) override;

  private:
    unsigned int wFormat;
};

// Format numbers: the platform's text and bitmap formats and the framework's private ones.
enum BCFormatNumber : unsigned int {
    BC_FORMAT_TEXT = 1,
    BC_FORMAT_BITMAP = 2,
    BC_FORMAT_PRIVATE_TEXT = 0x8001,
    BC_FORMAT_PRIVATE_BINARY = 0x8002,
    BC_FORMAT_PRIVATE_TEXTDATA = 0x8003
};

NORLIB1_API BCFormat& BCGetTextFormat();
NORLIB1_API BCFormat& BCGetBitmapFormat();
