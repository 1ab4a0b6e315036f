#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"

namespace {

BCApplication& App() {
    static BCApplication app;
    return app;
}

// What a plain program sees: the bytes of a format's block, empty when it is absent.
std::string Win32Read(UINT format) {
    std::string bytes;
    if (!OpenClipboard(nullptr))
        return "open failed";
    if (HANDLE block = GetClipboardData(format)) {
        const char* data = static_cast<const char*>(GlobalLock(block));
        bytes.assign(data, GlobalSize(block));
        GlobalUnlock(block);
    }
    CloseClipboard();
    return bytes;
}

void Win32Put(UINT format, const std::string& bytes) {
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    std::memcpy(GlobalLock(block), bytes.data(), bytes.size());
    GlobalUnlock(block);
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    SetClipboardData(format, block);
    CloseClipboard();
}

class ClipboardTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(clip.Clear(), 1); }
    BCClipboard clip{nullptr};
    MsgRecorder messages;
};

TEST_F(ClipboardTest, PlainProgramsAndTheClassReadEachOthersData) {
    Win32Put(CF_TEXT, std::string("from win32\0", 11));
    char buffer[16];
    EXPECT_EQ(clip.GetTextLen(), 10u);
    ASSERT_EQ(clip.GetText(buffer, 5), 1);
    EXPECT_STREQ(buffer, "from");
    ASSERT_EQ(clip.GetText(buffer, sizeof buffer), 1);
    EXPECT_STREQ(buffer, "from win32");
    // A private format put by name elsewhere is found under its library number.
    Win32Put(RegisterClipboardFormatA("Norlib2 Private Binary"), "abc");
    EXPECT_EQ(clip.IsType(BCFormat(0x8002)), 1);
    EXPECT_EQ(clip.IsType(BCFormat(0x8001)), 0);
    char bytes[6] = "xxxxx";
    ASSERT_EQ(clip.GetData(BCFormat(0x8002), bytes, 5), 1);
    EXPECT_EQ(std::string(bytes, 5), std::string("abc\0\0", 5)); // nothing read past the block
    EXPECT_EQ(clip.GetTextLen(), 0u);
    EXPECT_EQ(clip.GetText(buffer, sizeof buffer), 0);

    ASSERT_EQ(clip.Clear(), 1);
    ASSERT_EQ(clip.SetText("hello"), 1);
    ASSERT_EQ(clip.SetData(BCFormat(0x8003), "\x01\x00\x02", 3), 1);
    EXPECT_EQ(Win32Read(CF_TEXT), std::string("hello\0", 6));
    EXPECT_EQ(Win32Read(RegisterClipboardFormatA("Norlib2 Text Data")), std::string("\1\0\2", 3));
    EXPECT_EQ(clip.SetText(nullptr), 0);
    EXPECT_TRUE(messages.NumberedIds().empty());
}

TEST_F(ClipboardTest, EnumerationWalksEveryFormatFromZeroToTheEnd) {
    ASSERT_EQ(clip.SetData(BCFormat(0x8001), "p", 1), 1);
    ASSERT_EQ(clip.SetText("t"), 1);
    std::vector<unsigned int> seen;
    for (BCFormat f = clip.GetType(BCFormat(0)); f.GetFormat() && seen.size() < 50;
         f = clip.GetType(f))
        seen.push_back(f.GetFormat());
    ASSERT_TRUE(OpenClipboard(nullptr));
    EXPECT_EQ(seen.size(), static_cast<size_t>(CountClipboardFormats()));
    CloseClipboard();
    ASSERT_GE(seen.size(), 2u);
    EXPECT_EQ(seen[0], 0x8001u);
    EXPECT_EQ(seen[1], 1u);
    for (unsigned int f : seen)
        EXPECT_EQ(clip.IsType(BCFormat(f)), 1) << f;
    EXPECT_EQ(clip.IsType(BCFormat(0)), 0);
    EXPECT_EQ(clip.IsType(BCFormat(0x8002)), 0);
}

TEST_F(ClipboardTest, EdgeBlocksEmptyTextNullDataAndObjectsThatRenderNothing) {
    ASSERT_EQ(clip.SetText(""), 1);
    EXPECT_EQ(Win32Read(CF_TEXT), std::string("\0", 1));
    EXPECT_EQ(clip.GetTextLen(), 0u);
    // A null block is delayed rendering: the format is listed though no data comes.
    EXPECT_EQ(clip.SetData(BCFormat(0x8002), nullptr, 0), 1);
    EXPECT_EQ(clip.IsType(BCFormat(0x8002)), 1);
    void* handle = &handle;
    EXPECT_EQ(clip.GetHandle(BCFormat(0x8002), handle), 0);
    EXPECT_EQ(handle, nullptr);

    ASSERT_EQ(clip.Clear(), 1);
    ASSERT_EQ(clip.SetText("keep"), 1);
    BCMemoryData empty(nullptr, 0, 0);
    EXPECT_EQ(clip.SetObject(BCFormat(0x8002), empty), 0);
    EXPECT_EQ(clip.IsType(BCFormat(0x8002)), 0);
    EXPECT_EQ(Win32Read(CF_TEXT), std::string("keep\0", 5));
}

TEST_F(ClipboardTest, TextObjectsGoThroughInTheirFormats) {
    for (unsigned int format : {1u, 0x8001u, 0x8003u}) {
        BCText text(const_cast<char*>("line one\r\nline two"));
        ASSERT_EQ(clip.SetObject(BCFormat(format), text), 1) << format;
        BCText back;
        EXPECT_GE(clip.GetObject(BCFormat(format), back), 19u) << format;
        EXPECT_STREQ(static_cast<char*>(back.GetDataPtr(BCGetTextFormat())),
                     "line one\r\nline two");
    }
    EXPECT_EQ(Win32Read(RegisterClipboardFormatA("Norlib2 Private Text")).substr(0, 20),
              std::string("line one\r\nline two\0\0", 20));
    BCText none;
    EXPECT_EQ(clip.GetObject(BCFormat(0x8002), none), 0u);
}

TEST_F(ClipboardTest, BitmapsRoundTripWithTheirPixelsAndHandleFlags) {
    const unsigned long pixels[6] = {0x0000FF, 0x00FF00, 0xFF0000, 0x123456, 0xFFFFFF, 0};
    BCBitmap bitmap;
    ASSERT_EQ(bitmap.SetPixels(3, 2, pixels), 1);
    ASSERT_EQ(clip.SetBitmap(&bitmap), 1);
    EXPECT_EQ(bitmap.GetFlags() & 0x18, 0x08u);
    BCBitmap* back = nullptr;
    ASSERT_EQ(clip.GetBitmap(back), 1);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->GetFlags() & 0x18, 0x10u);
    ASSERT_EQ(back->GetSize().GetWidth(), 3);
    ASSERT_EQ(back->GetSize().GetHeight(), 2);
    unsigned long got[6] = {};
    ASSERT_EQ(back->GetPixels(got), 1);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(got[i] & 0xFFFFFF, pixels[i]) << i;
    delete back;
    EXPECT_EQ(clip.SetBitmap(nullptr), 1);
    EXPECT_EQ(clip.IsType(BCGetBitmapFormat()), 1);
    EXPECT_EQ(clip.GetBitmap(back), 0);
    EXPECT_EQ(back, nullptr);
}

TEST_F(ClipboardTest, HeldByAnotherThreadEverythingFailsSilently) {
    ASSERT_EQ(clip.SetText("before"), 1);
    HANDLE held = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    HANDLE release = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    std::thread holder([&] { // as another program would: with a window of its own
        HWND window = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                      nullptr, nullptr);
        OpenClipboard(window);
        SetEvent(held);
        WaitForSingleObject(release, INFINITE);
        CloseClipboard();
        DestroyWindow(window);
    });
    WaitForSingleObject(held, INFINITE);
    char buffer[8] = "x";
    void* handle = nullptr;
    BCBitmap bitmap(2, 2);
    BCText text(const_cast<char*>("t"));
    EXPECT_EQ(clip.SetText("after"), 0);
    EXPECT_EQ(clip.SetBitmap(&bitmap), 0);
    EXPECT_EQ(bitmap.GetFlags() & 0x08, 0u); // the picture stays the bitmap's
    EXPECT_EQ(clip.SetObject(BCFormat(1), text), 0);
    EXPECT_EQ(clip.Clear(), 0);
    EXPECT_EQ(clip.IsType(BCFormat(1)), 0);
    EXPECT_EQ(clip.GetType(BCFormat(0)).GetFormat(), 0u);
    EXPECT_EQ(clip.GetHandle(BCFormat(1), handle), 0);
    EXPECT_EQ(clip.GetTextLen(), 0u);
    EXPECT_EQ(clip.GetText(buffer, sizeof buffer), 0);
    SetEvent(release);
    holder.join();
    CloseHandle(held);
    CloseHandle(release);
    EXPECT_TRUE(messages.NumberedIds().empty());
    EXPECT_EQ(Win32Read(CF_TEXT), std::string("before\0", 7));
}

TEST_F(ClipboardTest, DisplayShowsTheOwnerWindowsTitle) {
    BCMainWindow owner(&App());
    ASSERT_NE(owner.Create("Clip Owner"), 0);
    BCClipboard owned(&owner);
    owned.Display("pre ");
    clip.Display(nullptr);
    ASSERT_EQ(messages.Count(), 2u);
    EXPECT_EQ(messages.Entries()[0].text, "pre User window = \"Clip Owner\"");
    EXPECT_EQ(messages.Entries()[1].text, "User window = \"(none)\"");
    EXPECT_STREQ(owned.GetObjectTypeStr(), "BCClipboard");
    // Owned by a window, the clipboard works the same.
    ASSERT_EQ(owned.Clear(), 1);
    ASSERT_EQ(owned.SetText("owned"), 1);
    EXPECT_EQ(owned.GetTextLen(), 5u);
}

} // namespace
