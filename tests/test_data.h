#pragma once
// Helpers shared by the data object suites.
#include <sstream>
#include <string>

#include "norlib2.h"

inline BCFormat gText(BC_FORMAT_TEXT);
inline BCFormat gBinary(BC_FORMAT_PRIVATE_BINARY);

// Texts handed to interfaces that take char* but only read it.
inline char* Str(const char* text) {
    return const_cast<char*>(text);
}

// The bytes a memory object holds.
inline std::string Contents(BCMemoryData& data) {
    std::string out(data.GetBufLen(), '\0');
    out.resize(data.GetData(0, &out[0], data.GetBufLen()));
    return out;
}

// The text rendering, up to its NUL.
inline std::string TextForm(BCRenderableData& data) {
    char out[64] = {};
    data.GetData(out, sizeof out - 1, gText);
    return out;
}

// The record an object saves; "failed" when its Save fails.
inline std::string Saved(BCObject& object) {
    std::ostringstream os(std::ios::binary);
    return object.Save(os) ? os.str() : "failed";
}

inline int LoadFrom(BCObject& object, const std::string& bytes) {
    std::istringstream is(bytes, std::ios::binary);
    return object.Load(is);
}

// A stream that cannot tell its size, as a pipe cannot.
class UnseekableBuf : public std::stringbuf {
  public:
    explicit UnseekableBuf(const std::string& bytes)
        : std::stringbuf(bytes, std::ios::in | std::ios::binary) {}

  protected:
    pos_type seekoff(off_type, std::ios::seekdir, std::ios::openmode) override { return -1; }
    pos_type seekpos(pos_type, std::ios::openmode) override { return -1; }
};
