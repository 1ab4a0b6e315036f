#include "streambytes.h"

std::string LE32(std::uint32_t value) {
    std::string s(4, '\0');
    for (int i = 0; i < 4; ++i)
        s[i] = static_cast<char>((value >> (8 * i)) & 0xFF);
    return s;
}

std::string LE16(std::uint16_t value) {
    return std::string{static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
}

std::string Bytes(std::initializer_list<unsigned char> bytes) {
    return std::string(bytes.begin(), bytes.end());
}

std::istringstream InStream(const std::string& bytes) {
    return std::istringstream(bytes, std::ios::in | std::ios::binary);
}

std::ostringstream OutStream() {
    return std::ostringstream(std::ios::out | std::ios::binary);
}
