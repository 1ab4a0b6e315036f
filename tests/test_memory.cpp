#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>
#include <string>
#include <utility>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"

namespace {

bool AllZero(const void* memory, size_t n) {
    const unsigned char* p = static_cast<const unsigned char*>(memory);
    for (size_t i = 0; i < n; ++i)
        if (p[i])
            return false;
    return true;
}

TEST(FarMemTest, AllocatesZeroedMovableBlocksAndKeepsContentsOnRealloc) {
    MsgRecorder recorder;
    char* block = static_cast<char*>(BCAllocFarMem(100));
    ASSERT_NE(nullptr, block);
    EXPECT_TRUE(AllZero(block, 100));
    HGLOBAL handle = GlobalHandle(block);
    EXPECT_TRUE(handle && (GlobalFlags(handle) & GMEM_LOCKCOUNT)); // handed out locked

    std::memcpy(block, "payload", 8);
    char* grown = static_cast<char*>(BCReallocFarMem(block, 100000));
    ASSERT_NE(nullptr, grown);
    EXPECT_STREQ("payload", grown);
    EXPECT_TRUE(AllZero(grown + 100, 100000 - 100));
    EXPECT_GE(GlobalSize(GlobalHandle(grown)), 100000u);

    SetLastError(ERROR_ACCESS_DENIED); // an earlier call's failure is not the free's
    EXPECT_TRUE(BCFreeFarMem(grown) && !recorder.Count() && !BCAllocFarMem(-1));
}

TEST(FarMemTest, NullArgumentsAreReportedWithTheirMessages) {
    MsgRecorder recorder;
    EXPECT_EQ(0, BCFreeFarMem(nullptr));
    EXPECT_EQ(nullptr, BCReallocFarMem(nullptr, 10));
    EXPECT_EQ(nullptr, BCLockFarMem(nullptr));
    EXPECT_EQ(0, BCUnlockFarMem(nullptr));
    ASSERT_EQ((std::vector<unsigned int>{10043, 10039, 10045, 10048}), recorder.NumberedIds());
    EXPECT_EQ("Internal error-Freeing memory with a NULL memory pointer-BCFreeFarMem:  NULL "
              "pointer.",
              recorder.Entries()[0].text);
}

TEST(FarMemTest, UnlockingCountsDownAndReportsAnUnlockedBlock) {
    MsgRecorder recorder;
    void* block = BCAllocFarMem(16);
    ASSERT_NE(nullptr, block);
    HGLOBAL handle = GlobalHandle(block);
    ASSERT_EQ(block, BCLockFarMem(handle)); // a second lock
    // Still locked once, then unlocked, then nothing is left to unlock, which is reported.
    EXPECT_EQ((Seq{1, 0, 0, 0, 1}),
              (Seq{BCUnlockFarMem(block), BCUnlockFarMem(block), recorder.Count(),
                   BCUnlockFarMem(block), recorder.Count()}));
    EXPECT_EQ((std::vector<unsigned int>{10047}), recorder.NumberedIds());
    EXPECT_TRUE(BCLockFarMem(handle) == block && BCFreeFarMem(block));
}

TEST(MemHelperTest, CopiesAndBoundedStrings) {
    char text[16] = "abcdefgh";
    BCCopyMem(text + 2, text, 6); // overlapping
    EXPECT_STREQ("ababcdef", text);
    BCCopyMem(nullptr, text, 4); // ignored

    // Copied and cut to the buffer; no text is an empty one; a buffer of no bytes is left.
    const std::pair<const char*, const char*> copies[] = {
        {"truncated", "trunc"}, {"ok", "ok"}, {nullptr, ""}};
    char out[6];
    for (const auto& [from, to] : copies)
        EXPECT_TRUE(BCCopyLimStr(out, from, sizeof out) == std::strlen(to) &&
                    std::string(out) == to)
            << to;
    out[0] = 'x';
    EXPECT_TRUE(BCCopyLimStr(out, "abc", 0) == 0u && out[0] == 'x');
    EXPECT_EQ(Nums(0, 3), Nums(BCGetStrLen(nullptr), BCGetStrLen("abc")));

    char buffer[136];
    EXPECT_EQ(22, BCFrmtStr(buffer, sizeof buffer, "%sblFrame=%d, blFill=%d, ", "", -1, 0));
    EXPECT_STREQ("blFrame=-1, blFill=0, ", buffer + 0);
    char small[8];
    EXPECT_EQ(7, BCFrmtStr(small, sizeof small, "%d", 123456789));
    EXPECT_STREQ("1234567", small);
    EXPECT_EQ(0, BCFrmtStr(small, 0, "%d", 5)); // no room: the buffer is left alone
    EXPECT_STREQ("1234567", small);
}

} // namespace
