#include <gtest/gtest.h>

#include <string>

#include "norlib2.h"
#include "streambytes.h"

namespace {

[[maybe_unused]] const bool g_neverWait = NeverWaitOnFaults();

TEST(StreamPrimitiveTest, FixedWidthsInLittleEndianOrder) {
    std::ostringstream os = OutStream();
    ASSERT_TRUE(BCSaveWord(os, 0x11223344u) && BCSaveDblWord(os, 0xA1B2C3D4ul) &&
                BCSaveCoord(os, -2) && BCSaveByte(os, 0x7F) && BCSavePtr(os, &os) &&
                BCSavePtr(os, nullptr) && BCSaveStringPtr(os, "hi") && BCSaveStringPtr(os, "") &&
                BCSaveStringPtr(os, nullptr) && BCSaveFarBlk(os, "xyz", 3));
    const std::string expected =
        Bytes({0x44, 0x33, 0x22, 0x11, 0xD4, 0xC3, 0xB2, 0xA1, 0xFE, 0xFF, 0x7F}) + LE32(1) +
        LE32(0) + LE32(2) + "hi" + LE32(0) + LE32(0xFFFFFFFF) + "xyz";
    EXPECT_EQ(expected, os.str());

    std::istringstream is = InStream(os.str());
    unsigned int word = 0;
    unsigned long dbl = 0;
    short coord = 0;
    unsigned char byte = 0;
    void *set = nullptr, *unset = &word;
    char *hi = nullptr, *empty = nullptr, *none = &reinterpret_cast<char&>(byte);
    char block[3];
    ASSERT_TRUE(BCLoadWord(is, word) && BCLoadDblWord(is, dbl) && BCLoadCoord(is, coord) &&
                BCLoadByte(is, byte) && BCLoadPtr(is, set) && BCLoadPtr(is, unset) &&
                BCLoadStringPtr(is, hi) && BCLoadStringPtr(is, empty) &&
                BCLoadStringPtr(is, none) && BCLoadFarBlk(is, block, 3));
    // A pointer is only a presence mark.
    EXPECT_EQ(Nums(0x11223344u, 0xA1B2C3D4ul, -2, 0x7F, 1, 1, 1),
              Nums(word, dbl, coord, byte, set != nullptr, !unset, !none));
    EXPECT_EQ("hi||xyz", std::string(hi) + "|" + empty + "|" + std::string(block, 3));
    delete[] hi;
    delete[] empty;
}

TEST(StreamPrimitiveTest, ShortStreamsAndAbsurdLengthsFailAndLongStringsLoadWhole) {
    unsigned int word = 7;
    short coord = 0;
    unsigned char byte = 9;
    char block[8];
    char* text = reinterpret_cast<char*>(&word);
    std::istringstream three = InStream(std::string(3, '\x01')), one = InStream("x"),
                       five = InStream("12345"), cut = InStream(LE32(10) + "abc"),
                       absurd = InStream(LE32(0xFFFFFFFE) + std::string(100, 'a')), empty;
    std::ostringstream os = OutStream();
    EXPECT_EQ(0, BCLoadWord(three, word) + BCLoadCoord(one, coord) + BCLoadByte(empty, byte) +
                     BCStreamOK(three));
    // Nothing to read or write is no failure; a block past the stream's end is one.
    EXPECT_EQ((Seq{0, 1, 1, 0, 0}),
              (Seq{BCLoadFarBlk(five, nullptr, 2), BCLoadFarBlk(five, nullptr, 0),
                   BCSaveFarBlk(os, nullptr, 0), BCLoadFarBlk(five, block, -1),
                   BCLoadFarBlk(five, block, 8)}));
    // More bytes claimed than follow, or absurdly many: refused at the end, not allocated.
    for (std::istringstream* in : {&cut, &absurd})
        EXPECT_TRUE(!BCLoadStringPtr(*in, text) && !text);
    // Long strings load whole; seekable streams tell what remains.
    std::string big(300000, 'q');
    std::ostringstream longer = OutStream();
    ASSERT_TRUE(BCSaveStringPtr(longer, big.c_str()));
    std::istringstream in = InStream(longer.str());
    EXPECT_TRUE(BCLoadStringPtr(in, text) && big == text);
    delete[] text;
    std::istringstream is = InStream("abcdef");
    char two[2], rest[4];
    is.read(two, 2);
    UnseekableBuf pipe("abc"); // a pipe cannot tell
    std::istream piped(&pipe);
    EXPECT_EQ(Nums(4, -1), Nums(BCStreamRemaining(is), BCStreamRemaining(piped)));
    EXPECT_TRUE(BCLoadFarBlk(is, rest, 4) && std::string(rest, 4) == "cdef"); // position kept
}

} // namespace
