#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>
#include <string>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"

namespace {

bool AllZero(const char* memory, size_t n) {
    return std::string(memory, n) == std::string(n, '\0');
}

TEST(FarMemTest, AllocatesZeroedMovableBlocksAndKeepsContentsOnRealloc) {
    MsgRecorder recorder;
    char* block = static_cast<char*>(BCAllocFarMem(100));
    ASSERT_NE(nullptr, block);
    HGLOBAL handle = GlobalHandle(block); // handed out locked
    EXPECT_TRUE(AllZero(block, 100) && handle && (GlobalFlags(handle) & GMEM_LOCKCOUNT));

    std::memcpy(block, "payload", 8);
    char* grown = static_cast<char*>(BCReallocFarMem(block, 100000));
    ASSERT_TRUE(grown && std::string(grown) == "payload" && AllZero(grown + 100, 100000 - 100) &&
                GlobalSize(GlobalHandle(grown)) >= 100000u);

    SetLastError(ERROR_ACCESS_DENIED); // an earlier call's failure is not the free's
    EXPECT_TRUE(BCFreeFarMem(grown) && !recorder.Count() && !BCAllocFarMem(-1));
}

TEST(FarMemTest, NullArgumentsAreReportedWithTheirMessages) {
    MsgRecorder recorder;
    EXPECT_FALSE(BCFreeFarMem(nullptr) || BCReallocFarMem(nullptr, 10) || BCLockFarMem(nullptr) ||
                 BCUnlockFarMem(nullptr));
    ASSERT_EQ((std::vector<unsigned int>{10043, 10039, 10045, 10048}), recorder.NumberedIds());
    EXPECT_EQ("Internal error-Freeing memory with a NULL memory pointer-BCFreeFarMem:  NULL "
              "pointer.",
              recorder.Entries()[0].text);
}

TEST(FarMemTest, UnlockingCountsDownAndReportsAnUnlockedBlock) {
    MsgRecorder recorder;
    void* block = BCAllocFarMem(16);
    HGLOBAL handle = block ? GlobalHandle(block) : nullptr;
    ASSERT_TRUE(handle && BCLockFarMem(handle) == block); // a second lock
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
    BCCopyMem(nullptr, text, 4);  // ignored
    EXPECT_STREQ("ababcdef", text);

    // Copied and cut to the buffer; no text is an empty one; a buffer of no bytes is left.
    char cut[6], ok[6], none[6] = "x", untouched[6] = "x";
    EXPECT_EQ((Seq{5, 2, 0, 0, 0, 3}),
              (Seq{BCCopyLimStr(cut, "truncated", 6), BCCopyLimStr(ok, "ok", 6),
                   BCCopyLimStr(none, nullptr, 6), BCCopyLimStr(untouched, "abc", 0),
                   BCGetStrLen(nullptr), BCGetStrLen("abc")}));
    EXPECT_EQ("trunc|ok||x", std::string(cut) + "|" + ok + "|" + none + "|" + untouched);

    char buffer[136], small[8];
    EXPECT_EQ((Seq{22, 7, 0}),
              (Seq{BCFrmtStr(buffer, sizeof buffer, "%sblFrame=%d, blFill=%d, ", "", -1, 0),
                   BCFrmtStr(small, sizeof small, "%d", 123456789),
                   BCFrmtStr(small, 0, "%d", 5)})); // no room: the buffer is left alone
    EXPECT_EQ("blFrame=-1, blFill=0, |1234567", std::string(buffer) + "|" + small);
}

} // namespace
