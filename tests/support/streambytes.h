#pragma once
#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

// Building and reading expected stream bytes.
inline std::string LE16(std::uint16_t value) {
    return std::string{static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
}
inline std::string LE32(std::uint32_t value) {
    return LE16(value & 0xFFFF) + LE16(value >> 16);
}
inline std::string Bytes(std::initializer_list<unsigned char> bytes) {
    return std::string(bytes.begin(), bytes.end());
}
inline std::istringstream InStream(const std::string& bytes) {
    return std::istringstream(bytes, std::ios::in | std::ios::binary);
}
inline std::ostringstream OutStream() {
    return std::ostringstream(std::ios::out | std::ios::binary);
}

class BCObject;
// The record `object` saves, which it must; empty when Save fails.
std::string RecordOf(BCObject& object);

// A number given to a list as its key.
inline void* Key(long value) {
    return reinterpret_cast<void*>(static_cast<intptr_t>(value));
}

// What loading `record` into `object` answers.
template <class T> int LoadFrom(T&& object, const std::string& record) {
    std::istringstream is = InStream(record);
    return object.Load(is);
}

// A stream that cannot tell its size or seek, as a pipe cannot.
struct UnseekableBuf : std::stringbuf {
    explicit UnseekableBuf(const std::string& bytes) : std::stringbuf(bytes, std::ios::in) {}
    pos_type seekoff(off_type, std::ios::seekdir, std::ios::openmode) override { return -1; }
    pos_type seekpos(pos_type, std::ios::openmode) override { return -1; }
};

// The record of `object` once it has loaded `record`.
template <class T> std::string Reloaded(T&& object, const std::string& record) {
    EXPECT_EQ(1, LoadFrom(object, record));
    return RecordOf(object);
}

// Every cut of a record short of its end must be refused by a fresh object from `make`.
template <class T, class Make> void EveryShortRecordFails(const std::string& record, Make make) {
    for (size_t n = 0; n < record.size(); ++n)
        EXPECT_FALSE(LoadFrom(*std::unique_ptr<T>(make()), record.substr(0, n))) << "cut at " << n;
}

// What loading `record` from a pipe-like stream answers.
template <class T> int LoadPiped(T&& object, const std::string& record) {
    UnseekableBuf buf(record);
    std::istream piped(&buf);
    return object.Load(piped);
}

// Results joined by spaces, so that a row of them is checked at once.
template <class... T> std::string Nums(T... values) {
    std::string out;
    ((out += std::to_string(values) + " "), ...);
    return out;
}

// A row of results made in the order written (braces fix the order of the calls), joined as
// Nums joins them, for steps whose results are checked at once: EXPECT_EQ((Seq{1, 2}), (Seq{...})).
struct Seq {
    template <class... T> explicit Seq(T... values) : text(Nums(values...)) {}
    std::string text;
};
inline bool operator==(const Seq& a, const Seq& b) {
    return a.text == b.text;
}
inline std::ostream& operator<<(std::ostream& os, const Seq& row) {
    return os << row.text;
}
// Makes a crash end the test program at once with a failure and answers every message box
// at once with OK, so that a fault fails the run instead of stalling it in a dialog. Call it
// once, at start-up: `[[maybe_unused]] const bool g_neverWait = NeverWaitOnFaults();`.
bool NeverWaitOnFaults();

// A new file of the temporary folder, named with `prefix`, holding `bytes`; its path.
std::string TempFile(const char* prefix, const std::string& bytes = std::string());
