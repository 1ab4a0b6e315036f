#pragma once
// Helpers shared by the data object suites.
#include <sstream>
#include <string>

#include "norlib2.h"

inline BCFormat gText(BC_FORMAT_TEXT);
inline BCFormat gBinary(BC_FORMAT_PRIVATE_BINARY);

inline char* Str(const char* text) {
    return const_cast<char*>(text);
}

inline std::string Contents(BCMemoryData& data) {
    std::string out(data.GetBufLen(), '\0');
    return out.substr(0, data.GetData(0, &out[0], data.GetBufLen()));
}

inline std::string TextForm(BCRenderableData& data) {
    char out[64] = {};
    return data.GetData(out, sizeof out - 1, gText) ? out : "";
}

// Whether the object renders in the formats 1, 2, 0x8001, 0x8002 and 0x8003, as "0"/"1".
inline std::string Formats(BCRenderableData& data) {
    std::string got;
    for (unsigned int number : {1u, 2u, 0x8001u, 0x8002u, 0x8003u}) {
        BCFormat format(number);
        got += data.IsRenderable(format) ? '1' : '0';
    }
    return got;
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
struct UnseekableBuf : std::stringbuf {
    explicit UnseekableBuf(const std::string& bytes) : std::stringbuf(bytes, std::ios::in) {}
    pos_type seekoff(off_type, std::ios::seekdir, std::ios::openmode) override { return -1; }
    pos_type seekpos(pos_type, std::ios::openmode) override { return -1; }
};
