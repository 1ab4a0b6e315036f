#include "bcstream.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <istream>
#include <new>
#include <ostream>

namespace {

constexpr unsigned int kNullString = 0xFFFFFFFFu;
// Strings are read in pieces, so a corrupt length fails at the end of the stream instead of
// allocating what it claims.
constexpr unsigned long kReadPiece = 64 * 1024;

template <unsigned N> int SaveLittleEndian(std::ostream& os, unsigned long value) {
    unsigned char bytes[N];
    for (unsigned i = 0; i < N; ++i)
        bytes[i] = static_cast<unsigned char>(value >> (8 * i));
    os.write(reinterpret_cast<const char*>(bytes), N);
    return BCStreamOK(os);
}

template <unsigned N> int LoadLittleEndian(std::istream& is, unsigned long& value) {
    unsigned char bytes[N];
    is.read(reinterpret_cast<char*>(bytes), N);
    if (!BCStreamOK(is) || is.gcount() != N)
        return 0;
    value = 0;
    for (unsigned i = 0; i < N; ++i)
        value |= static_cast<unsigned long>(bytes[i]) << (8 * i);
    return 1;
}

} // namespace

int BCStreamOK(const std::ios& stream) {
    return (stream.rdstate() & (std::ios::badbit | std::ios::failbit)) == 0;
}

long long BCStreamRemaining(std::istream& is) {
    if (!BCStreamOK(is))
        return -1;
    std::istream::pos_type here = is.tellg();
    if (here == std::istream::pos_type(-1))
        return -1;
    is.seekg(0, std::ios::end);
    std::istream::pos_type end = is.tellg();
    is.seekg(here);
    if (end == std::istream::pos_type(-1) || !BCStreamOK(is)) {
        is.clear(is.rdstate() & ~std::ios::failbit);
        is.seekg(here);
        return -1;
    }
    return static_cast<long long>(end - here);
}

int BCSaveWord(std::ostream& os, unsigned int value) {
    return SaveLittleEndian<4>(os, value);
}

int BCLoadWord(std::istream& is, unsigned int& value) {
    unsigned long v = 0;
    if (!LoadLittleEndian<4>(is, v))
        return 0;
    value = static_cast<unsigned int>(v);
    return 1;
}

int BCSaveDblWord(std::ostream& os, unsigned long value) {
    return SaveLittleEndian<4>(os, value);
}

int BCLoadDblWord(std::istream& is, unsigned long& value) {
    return LoadLittleEndian<4>(is, value);
}

int BCSaveCoord(std::ostream& os, short value) {
    return SaveLittleEndian<2>(os, static_cast<unsigned short>(value));
}

int BCLoadCoord(std::istream& is, short& value) {
    unsigned long v = 0;
    if (!LoadLittleEndian<2>(is, v))
        return 0;
    value = static_cast<short>(static_cast<unsigned short>(v));
    return 1;
}

int BCSaveByte(std::ostream& os, unsigned char value) {
    return SaveLittleEndian<1>(os, value);
}

int BCLoadByte(std::istream& is, unsigned char& value) {
    unsigned long v = 0;
    if (!LoadLittleEndian<1>(is, v))
        return 0;
    value = static_cast<unsigned char>(v);
    return 1;
}

int BCSaveStringPtr(std::ostream& os, const char* text) {
    if (!text)
        return BCSaveWord(os, kNullString);
    size_t length = std::strlen(text);
    if (length >= kNullString)
        return 0;
    if (!BCSaveWord(os, static_cast<unsigned int>(length)))
        return 0;
    os.write(text, static_cast<std::streamsize>(length));
    return BCStreamOK(os);
}

int BCLoadStringPtr(std::istream& is, char*& text) {
    text = nullptr;
    unsigned int length = 0;
    if (!BCLoadWord(is, length))
        return 0;
    if (length == kNullString)
        return 1;
    // The buffer grows geometrically as bytes arrive, never ahead of the stream.
    std::string bytes;
    while (bytes.size() < length) {
        size_t have = bytes.size();
        size_t piece = length - have;
        if (piece > have && piece > kReadPiece)
            piece = have > kReadPiece ? have : kReadPiece;
        bytes.resize(have + piece);
        is.read(&bytes[have], static_cast<std::streamsize>(piece));
        if (!BCStreamOK(is) || static_cast<size_t>(is.gcount()) != piece)
            return 0;
    }
    char* copy = new (std::nothrow) char[bytes.size() + 1];
    if (!copy)
        return 0;
    std::memcpy(copy, bytes.data(), bytes.size());
    copy[bytes.size()] = '\0';
    text = copy;
    return 1;
}

int BCSavePtr(std::ostream& os, const void* pointer) {
    return BCSaveWord(os, pointer ? 1u : 0u);
}

int BCLoadPtr(std::istream& is, void*& pointer) {
    unsigned int mark = 0;
    if (!BCLoadWord(is, mark))
        return 0;
    pointer = mark ? reinterpret_cast<void*>(static_cast<std::uintptr_t>(1)) : nullptr;
    return 1;
}

int BCSaveFarBlk(std::ostream& os, const void* block, long length) {
    if (length < 0 || (!block && length > 0))
        return 0;
    os.write(static_cast<const char*>(block), length);
    return BCStreamOK(os);
}

int BCLoadFarBlk(std::istream& is, void* block, long length) {
    if (length < 0 || (!block && length > 0))
        return 0;
    is.read(static_cast<char*>(block), length);
    return BCStreamOK(is) && is.gcount() == length;
}
