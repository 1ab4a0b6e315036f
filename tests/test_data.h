#pragma once
// Helpers shared by the data object suites.
#include <gtest/gtest.h>

#include <windows.h>

#include <sstream>
#include <string>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"

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

// The type code, then "0"/"1" for rendering in the formats 1, 2, 0x8001, 0x8002, 0x8003.
inline std::string TypeAndFormats(BCRenderableData& data) {
    std::string got = std::to_string(data.GetObjectType()) + " ";
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
