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
