#include <algorithm>
#include <cstring>

#include "guidriver.h"
#include "msgrecorder.h"
#include "streambytes.h"

namespace {

// Wine's clipboard manager opens the clipboard briefly after each change: wait it out.
bool Win32Open(HWND owner = nullptr) {
    for (int attempt = 0; attempt < 100; ++attempt, Sleep(5))
        if (OpenClipboard(owner))
            return true;
    return false;
}

// What a plain program sees: the bytes of a format's block, empty when it is absent.
std::string Win32Read(UINT format) {
    std::string bytes;
    if (!Win32Open())
        return "open failed";
    if (HANDLE block = GetClipboardData(format)) {
        bytes.assign(static_cast<const char*>(GlobalLock(block)), GlobalSize(block));
        GlobalUnlock(block);
    }
    CloseClipboard();
    return bytes;
}

void Win32Put(UINT format, const std::string& bytes) {
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    std::memcpy(GlobalLock(block), bytes.data(), bytes.size());
    GlobalUnlock(block);
    ASSERT_TRUE(Win32Open());
    EmptyClipboard();
    SetClipboardData(format, block);
    CloseClipboard();
}

// An object that claims more than a block may hold.
struct Huge : BCRenderableData {
    Huge() : BCRenderableData(1, 0) {}
    unsigned long GetLen(BCFormat&) override { return 0x80000000ul; }
} huge;

class ClipboardTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(clip.Clear(), 1); }
    BCClipboard clip{nullptr};
    MsgRecorder messages;
};

TEST_F(ClipboardTest, PlainProgramsAndTheClassReadEachOthersData) {
    Win32Put(CF_TEXT, std::string("from win32\0", 11));
    char buffer[16] = "GGGGGGGGGGGGGGG";
    EXPECT_EQ(Nums(10, 2),
              Nums(clip.GetTextLen(), clip.GetText(buffer, 10) + clip.GetText(buffer + 12, 0)));
    EXPECT_EQ(std::string(buffer, 13), std::string("from win3\0GGG", 13));
    // A private format put by name elsewhere is found under its library number.
    Win32Put(RegisterClipboardFormatA("Norlib2 Private Binary"), "abc");
    char bytes[9] = "xxxxxxxx";
    EXPECT_EQ(2, clip.IsType(BCFormat(0x8002)) + clip.GetData(BCFormat(0x8002), bytes, 5));
    EXPECT_EQ(std::string(bytes, 8), std::string("abc\0\0xxx", 8));
    EXPECT_EQ(clip.GetData(BCFormat(0x8001), bytes, 5) + clip.GetData(BCFormat(0x8002), nullptr, 5),
              0);
    EXPECT_EQ(clip.GetTextLen() + clip.GetText(buffer, sizeof buffer), 0u); // no text now

    ASSERT_EQ(clip.SetText("hello") + clip.SetData(BCFormat(0x8003), "\x01\x00\x02", 3), 2);
    EXPECT_EQ(Win32Read(CF_TEXT), std::string("hello\0", 6));
    EXPECT_EQ(Win32Read(RegisterClipboardFormatA("Norlib2 Text Data")), std::string("\1\0\2", 3));
    // Too long a block is refused before anything is read, with a message; a null text without.
    EXPECT_EQ(clip.SetText(nullptr) + clip.SetData(BCFormat(0x8002), "x", 0x80000000ul), 0);
    EXPECT_EQ(messages.NumberedIds(), std::vector<unsigned int>{10069});
    EXPECT_EQ(Win32Read(CF_TEXT), std::string("hello\0", 6));
}

TEST_F(ClipboardTest, TextsOfEveryLengthAndAlignmentAreMeasuredAndCutExactly) {
    const std::string text(1100, 'x');
    std::vector<char> buffer(1100);
    for (size_t start : {0u, 7u})
        for (size_t length : {0u, 1u, 15u, 16u, 17u, 33u, 1000u}) {
            ASSERT_EQ(clip.SetText((text.substr(0, start + length) + '\0').c_str() + start), 1);
            EXPECT_EQ(clip.GetTextLen(), length) << start << " " << length;
            for (size_t max : {length + 1, length / 2 + 1})
                EXPECT_TRUE(clip.GetText(buffer.data(), max) &&
                            std::string(buffer.data()) == text.substr(0, max - 1))
                    << length << " " << max;
        }
}

TEST_F(ClipboardTest, EnumerationWalksEveryFormatAndDisplayNamesTheOwner) {
    ASSERT_EQ(clip.SetData(BCFormat(0x8001), "p", 1) + clip.SetText("t"), 2);
    std::vector<unsigned int> seen;
    for (BCFormat f = clip.GetType(BCFormat(0)); f.GetFormat() && seen.size() < 50;
         f = clip.GetType(f))
        seen.push_back(f.GetFormat() * clip.IsType(f));
    ASSERT_GE(seen.size(), 2u);
    EXPECT_TRUE(seen[0] == 0x8001 && seen[1] == 1 && !std::count(seen.begin(), seen.end(), 0u));
    EXPECT_EQ(clip.IsType(BCFormat(0)) + clip.IsType(BCFormat(0x8002)), 0);

    BCMainWindow owner(&App());
    ASSERT_NE(owner.Create("Clip Owner"), 0);
    BCClipboard(&owner).Display("pre ");
    clip.Display(nullptr);
    EXPECT_EQ(messages.Texts(), "pre User window = \"Clip Owner\"|User window = \"(none)\"|");
}

TEST_F(ClipboardTest, ObjectsGoThroughInTheirFormatsAndEdgeBlocksAreKeptOrRefused) {
    for (unsigned int format : {1u, 0x8001u, 0x8003u}) {
        BCText text(const_cast<char*>("line one\r\nline two")), back;
        ASSERT_EQ(clip.SetObject(BCFormat(format), text), 1) << format;
        EXPECT_GE(clip.GetObject(BCFormat(format), back), 19u) << format;
        EXPECT_STREQ(static_cast<char*>(back.GetDataPtr(BCGetTextFormat())),
                     "line one\r\nline two");
    }
    EXPECT_EQ(Win32Read(RegisterClipboardFormatA("Norlib2 Private Text")),
              std::string("line one\r\nline two\0\0", 20));
    BCText none;
    EXPECT_EQ(clip.GetObject(BCFormat(0x8002), none), 0u);

    ASSERT_EQ(clip.SetText(""), 1);
    EXPECT_EQ(Win32Read(CF_TEXT), std::string("\0", 1));
    // A null block is delayed rendering: the format is listed though no data comes.
    void* handle = &handle;
    EXPECT_EQ((Seq{1, 1, 0, 1}),
              (Seq{clip.SetData(BCFormat(0x8002), nullptr, 0), clip.IsType(BCFormat(0x8002)),
                   clip.GetHandle(BCFormat(0x8002), handle), handle == nullptr}));

    ASSERT_EQ((Seq{1, 1}), (Seq{clip.Clear(), clip.SetText("keep")}));
    BCMemoryData empty(nullptr, 0, 0);
    EXPECT_EQ((Seq{0, 0, 0}),
              (Seq{clip.SetObject(BCFormat(0x8002), empty), clip.SetObject(BCFormat(0x8002), huge),
                   clip.IsType(BCFormat(0x8002))}));
    EXPECT_TRUE(messages.NumberedIds().empty());
    EXPECT_EQ(Win32Read(CF_TEXT), std::string("keep\0", 5));
}

TEST_F(ClipboardTest, BitmapsRoundTripWithTheirPixelsAndHandleFlags) {
    const std::vector<unsigned long> pixels{0x0000FF, 0x00FF00, 0xFF0000, 0x123456, 0xFFFFFF, 0};
    BCBitmap bitmap;
    ASSERT_EQ((Seq{1, 1, 0x08u}), (Seq{bitmap.SetPixels(3, 2, pixels.data()),
                                       clip.SetBitmap(&bitmap), bitmap.GetFlags() & 0x18}));
    BCBitmap* back = nullptr;
    ASSERT_EQ(clip.GetBitmap(back), 1);
    std::vector<unsigned long> got(6);
    EXPECT_EQ((Seq{0x10u, 3, 2, 1}),
              (Seq{back->GetFlags() & 0x18, back->GetSize().GetWidth(), back->GetSize().GetHeight(),
                   back->GetPixels(got.data())}));
    for (unsigned long& pixel : got)
        pixel &= 0xFFFFFF;
    EXPECT_EQ(pixels, got);
    delete back;
    // A null bitmap lists the format alone; a picture too wide for the library is refused.
    EXPECT_EQ((Seq{1, 1}), (Seq{clip.SetBitmap(nullptr), clip.IsType(BCGetBitmapFormat())}));
    EXPECT_TRUE(clip.GetBitmap(back) == 0 && back == nullptr);
    ASSERT_EQ(clip.Clear(), 1);
    ASSERT_EQ(clip.SetHandle(BCGetBitmapFormat(), CreateBitmap(16385, 1, 1, 32, nullptr)), 1);
    EXPECT_TRUE(clip.GetBitmap(back) == 0 && back == nullptr);
}

TEST_F(ClipboardTest, HeldByAnotherProgramEverythingFailsSilently) {
    ASSERT_EQ(clip.SetText("before"), 1);
    std::atomic<int> stage{0};
    std::thread holder([&] { // as another program would: with a window of its own
        HWND window = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                      nullptr, nullptr);
        stage = Win32Open(window) ? 1 : -1;
        while (stage == 1)
            Sleep(1);
        CloseClipboard();
        DestroyWindow(window);
    });
    while (stage == 0)
        Sleep(1);
    char buffer[8] = "x";
    void* handle = nullptr;
    BCBitmap bitmap(2, 2);
    BCText text(const_cast<char*>("t"));
    EXPECT_EQ(clip.SetText("after") + clip.SetObject(BCFormat(1), text) + clip.Clear() +
                  clip.IsType(BCFormat(1)) + clip.GetHandle(BCFormat(1), handle) +
                  clip.GetText(buffer, sizeof buffer),
              0);
    EXPECT_EQ((Seq{0, 0u}), (Seq{clip.SetBitmap(&bitmap), bitmap.GetFlags() & 0x08}));
    EXPECT_EQ(clip.GetType(BCFormat(0)).GetFormat() + clip.GetTextLen(), 0u);
    stage = 2;
    holder.join();
    EXPECT_TRUE(messages.NumberedIds().empty());
    EXPECT_EQ(Win32Read(CF_TEXT), std::string("before\0", 7));
}

} // namespace
