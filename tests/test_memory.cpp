#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>

#include "msgrecorder.h"
#include "norlib2.h"

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
    ASSERT_NE(nullptr, handle);
    EXPECT_NE(0u, GlobalFlags(handle) & GMEM_LOCKCOUNT); // handed out locked

    std::memcpy(block, "payload", 8);
    char* grown = static_cast<char*>(BCReallocFarMem(block, 100000));
    ASSERT_NE(nullptr, grown);
    EXPECT_STREQ("payload", grown);
    EXPECT_TRUE(AllZero(grown + 100, 100000 - 100));
    EXPECT_GE(GlobalSize(GlobalHandle(grown)), 100000u);

    SetLastError(ERROR_ACCESS_DENIED); // an earlier call's failure is not the free's
    EXPECT_EQ(1, BCFreeFarMem(grown));
    EXPECT_EQ(0u, recorder.Count());
    EXPECT_EQ(nullptr, BCAllocFarMem(-1));
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
    EXPECT_EQ(1, BCUnlockFarMem(block));    // still locked once
    EXPECT_EQ(0, BCUnlockFarMem(block));    // now unlocked
    EXPECT_EQ(0u, recorder.Count());
    EXPECT_EQ(0, BCUnlockFarMem(block)); // nothing left to unlock
    EXPECT_EQ((std::vector<unsigned int>{10047}), recorder.NumberedIds());
    EXPECT_EQ(block, BCLockFarMem(handle));
    EXPECT_EQ(1, BCFreeFarMem(block));
}

TEST(MemHelperTest, CopiesAndBoundedStrings) {
    char text[16] = "abcdefgh";
    BCCopyMem(text + 2, text, 6); // overlapping
    EXPECT_STREQ("ababcdef", text);
    BCCopyMem(nullptr, text, 4); // ignored

    char out[6];
    EXPECT_EQ(5u, BCCopyLimStr(out, "truncated", sizeof out));
    EXPECT_STREQ("trunc", out);
    EXPECT_EQ(2u, BCCopyLimStr(out, "ok", sizeof out));
    EXPECT_STREQ("ok", out);
    EXPECT_EQ(0u, BCCopyLimStr(out, nullptr, sizeof out));
    EXPECT_STREQ("", out);
    out[0] = 'x';
    EXPECT_EQ(0u, BCCopyLimStr(out, "abc", 0));
    EXPECT_EQ('x', out[0]);

    EXPECT_EQ(0u, BCGetStrLen(nullptr));
    EXPECT_EQ(3u, BCGetStrLen("abc"));

    char buffer[136];
    EXPECT_EQ(22, BCFrmtStr(buffer, sizeof buffer, "%sblFrame=%d, blFill=%d, ", "", -1, 0));
    EXPECT_STREQ("blFrame=-1, blFill=0, ", buffer + 0);
    char small[8];
    EXPECT_EQ(7, BCFrmtStr(small, sizeof small, "%d", 123456789));
    EXPECT_STREQ("1234567", small);
}

} // namespace
