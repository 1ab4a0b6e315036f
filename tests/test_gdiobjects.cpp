#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"
#include "test_devices.h"

namespace {

// ---- records ----

std::string Saved(BCObject& object) {
    std::ostringstream os = OutStream();
    EXPECT_TRUE(object.Save(os));
    return os.str();
}

// Every cut of a record short of its end must be refused.
template <class T, class Make> void EveryShortRecordFails(const std::string& record, Make make) {
    for (size_t n = 0; n < record.size(); ++n) {
        T* object = make();
        std::istringstream is = InStream(record.substr(0, n));
        EXPECT_FALSE(object->Load(is)) << "cut at " << n;
        delete object;
    }
}

std::string ColorRecord(unsigned long rgb) {
    return LE32(8) + LE32(rgb);
}

TEST(RecordTest, ColourPenBrushAndPolylineRecords) {
    MsgRecorder recorder;
    BCColor red(BC_COLOR_RED);
    EXPECT_EQ(ColorRecord(0x0000FF), Saved(red));
    EXPECT_EQ(kBlack, BCColor(BC_COLOR_BLACK).GetCOLORREF());
    EXPECT_EQ(kWhite, BCColor(BC_COLOR_WHITE).GetCOLORREF());
    EXPECT_EQ(kBlack, BCGetBlack().GetCOLORREF());

    BCPen dashed(BC_PEN_DASH, 3, red);
    std::string pen = LE32(14) + LE32(BC_PEN_DASH) + LE32(3) + ColorRecord(0x0000FF);
    EXPECT_EQ(pen, Saved(dashed));
    BCPen loaded(1, 1, BCGetBlack());
    std::istringstream is = InStream(pen);
    ASSERT_TRUE(loaded.Load(is));
    EXPECT_EQ(static_cast<unsigned>(BC_PEN_DASH), loaded.GetStyle());
    EXPECT_EQ(3u, loaded.GetWidth());
    EXPECT_EQ(red, loaded.GetColor());
    EXPECT_NE(nullptr, loaded.GetHandle());

    BCBrush hatched(BC_HATCH_CROSS, red);
    std::string brush =
        LE32(13) + LE32(BC_BRUSH_HATCHED) + LE32(BC_HATCH_CROSS) + ColorRecord(0x0000FF);
    EXPECT_EQ(brush, Saved(hatched));
    BCBrush empty;
    is = InStream(brush);
    ASSERT_TRUE(empty.Load(is));
    EXPECT_EQ(BC_BRUSH_HATCHED, empty.GetKind());
    EXPECT_EQ(static_cast<unsigned>(BC_HATCH_CROSS), empty.GetStyle());
    // A loaded brush paints: a cross hatch leaves red lines and white gaps.
    BCMemoryDevice dev(16, 16);
    dev.SetPen(BCGetClearPen());
    dev.SetBrush(&empty);
    ASSERT_TRUE(dev.PutRect(BCRectangle(0, 0, 17, 17), BC_DRAW_FILLED));
    EXPECT_GT(CountColor(dev, BCRectangle(0, 0, 16, 16), kRed), 16);
    EXPECT_GT(CountColor(dev, BCRectangle(0, 0, 16, 16), kWhite), 16);

    BCBrush stock(BC_STOCK_BLACK);
    EXPECT_EQ(LE32(13) + LE32(BC_BRUSH_STOCK) + LE32(BC_STOCK_BLACK) + ColorRecord(0),
              Saved(stock));

    short xy[] = {1, -2, 300, -32768};
    BCPolyline line(2, xy);
    std::string points = LE32(6) + LE32(2) + LE16(1) + LE16(0xFFFE) + LE16(300) + LE16(0x8000);
    EXPECT_EQ(points, Saved(line));
    BCPolyline back;
    is = InStream(points);
    ASSERT_TRUE(back.Load(is));
    ASSERT_EQ(2u, back.GetPointCount());
    EXPECT_EQ(BCPosition(300, -32768), back.GetPoint(1));

    EveryShortRecordFails<BCPen>(pen, [] { return new BCPen(1, 1, BCGetBlack()); });
    EveryShortRecordFails<BCBrush>(brush, [] { return new BCBrush(); });
    EveryShortRecordFails<BCPolyline>(points, [] { return new BCPolyline(); });
    EXPECT_TRUE(recorder.NumberedIds().empty());
}

TEST(RecordTest, CorruptRecordsAreRefusedAndLeaveTheObject) {
    MsgRecorder recorder;
    BCColor red(BC_COLOR_RED);
    BCPen pen(BC_PEN_DOT, 2, red);
    for (const std::string& bad :
         {LE32(14) + LE32(99) + LE32(1) + ColorRecord(0),         // unknown style
          LE32(14) + LE32(1) + LE32(0x7FFFFFFF) + ColorRecord(0), // absurd width
          LE32(13) + LE32(1) + LE32(1) + ColorRecord(0)}) {       // another class's record
        std::istringstream is = InStream(bad);
        EXPECT_FALSE(pen.Load(is));
        EXPECT_EQ(static_cast<unsigned>(BC_PEN_DOT), pen.GetStyle());
        EXPECT_EQ(2u, pen.GetWidth());
    }

    BCBrush brush(red);
    for (const std::string& bad : {LE32(13) + LE32(9) + LE32(0) + ColorRecord(0),
                                   LE32(13) + LE32(BC_BRUSH_HATCHED) + LE32(6) + ColorRecord(0),
                                   LE32(13) + LE32(BC_BRUSH_STOCK) + LE32(77) + ColorRecord(0),
                                   LE32(13) + LE32(BC_BRUSH_PATTERN) + LE32(0) + ColorRecord(0) +
                                       LE32(10) + LE32(0) + LE32(0)}) {
        std::istringstream is = InStream(bad);
        EXPECT_FALSE(brush.Load(is));
        EXPECT_EQ(BC_BRUSH_SOLID, brush.GetKind());
    }

    short xy[] = {5, 6, 7, 8};
    BCPolyline line(2, xy);
    for (const std::string& bad : {LE32(6) + LE32(0xFFFFFFFF) + LE16(1) + LE16(1),
                                   LE32(6) + LE32(3) + LE16(1) + LE16(1) + LE16(2) + LE16(2)}) {
        std::istringstream is = InStream(bad);
        EXPECT_FALSE(line.Load(is));
        ASSERT_EQ(2u, line.GetPointCount());
        EXPECT_EQ(BCPosition(7, 8), line.GetPoint(1));
    }
    EXPECT_TRUE(recorder.NumberedIds().empty());
}

// ---- bitmaps ----

// A 2 x 2 picture: red, green on top, blue, black below (pixels are 0x00RRGGBB).
const unsigned long kPicture[] = {0xFF0000, 0x00FF00, 0x0000FF, 0x000000};

void ExpectPicture(BCMemoryDevice& dev, short x, short y) {
    EXPECT_EQ(kRed, dev.GetPixel(x, y));
    EXPECT_EQ(kGreen, dev.GetPixel(x + 1, y));
    EXPECT_EQ(kBlue, dev.GetPixel(x, y + 1));
    EXPECT_EQ(kBlack, dev.GetPixel(x + 1, y + 1));
}

TEST(BitmapTest, PicturesAreCopiedStretchedCombinedAndErased) {
    MsgRecorder recorder;
    BCBitmap pic;
    ASSERT_TRUE(pic.SetPixels(2, 2, kPicture));
    EXPECT_EQ(BCSize(2, 2), pic.GetSize());
    BCMemoryDevice dev(40, 20);

    ASSERT_TRUE(dev.PutBitmap(BCPosition(1, 1), BCSize(), &pic, BC_ROP_COPY));
    ExpectPicture(dev, 1, 1);
    EXPECT_EQ(4, CountNotWhite(dev));

    ASSERT_TRUE(dev.PutBitmap(BCPosition(10, 0), BCSize(8, 8), &pic, BC_ROP_COPY));
    EXPECT_EQ(16, CountColor(dev, BCRectangle(10, 0, 14, 4), kRed));
    EXPECT_EQ(16, CountColor(dev, BCRectangle(14, 0, 18, 4), kGreen));
    EXPECT_EQ(16, CountColor(dev, BCRectangle(10, 4, 14, 8), kBlue));
    EXPECT_EQ(16, CountColor(dev, BCRectangle(14, 4, 18, 8), kBlack));

    BCBrush green{BCColor(BC_COLOR_GREEN)};
    dev.SetBackground(&green);
    ASSERT_TRUE(dev.PutBitmap(BCPosition(10, 0), BCSize(8, 8), &pic, BC_ROP_ERASE));
    EXPECT_EQ(64, CountColor(dev, BCRectangle(10, 0, 18, 8), kGreen));
    ASSERT_TRUE(dev.PutBitmap(BCPosition(30, 0), BCSize(4, 4), nullptr, BC_ROP_ERASE));
    EXPECT_EQ(16, CountColor(dev, BCRectangle(30, 0, 34, 4), kGreen));

    ASSERT_TRUE(dev.PutBitmap(BCPosition(20, 10), BCSize(), &pic, BC_ROP_XOR));
    EXPECT_EQ(RGB(0, 255, 255), dev.GetPixel(20, 10)); // white XOR red
    ASSERT_TRUE(dev.PutBitmap(BCPosition(20, 10), BCSize(), &pic, BC_ROP_XOR));
    EXPECT_EQ(4, CountColor(dev, BCRectangle(20, 10, 22, 12), kWhite));

    // No picture: nothing drawn and no fault; an unknown operation is one.
    int before = CountNotWhite(dev);
    BCBitmap none;
    EXPECT_TRUE(dev.PutBitmap(BCPosition(0, 0), BCSize(5, 5), nullptr, BC_ROP_COPY));
    EXPECT_TRUE(dev.PutBitmap(BCPosition(0, 0), BCSize(5, 5), &none, BC_ROP_COPY));
    EXPECT_EQ(before, CountNotWhite(dev));
    EXPECT_TRUE(recorder.NumberedIds().empty());
    EXPECT_FALSE(dev.PutBitmap(BCPosition(0, 0), BCSize(), &pic, 99));
    EXPECT_EQ((std::vector<unsigned int>{10025}), recorder.NumberedIds());

    BCBitmap blank(3, 2);
    unsigned long pixels[6] = {};
    ASSERT_TRUE(blank.GetPixels(pixels));
    for (unsigned long p : pixels)
        EXPECT_EQ(0x00FFFFFFul, p);
}

TEST(BitmapTest, TheRecordCarriesThePixels) {
    MsgRecorder recorder;
    BCBitmap pic;
    ASSERT_TRUE(pic.SetPixels(2, 2, kPicture));
    std::string record =
        LE32(10) + LE32(2) + LE32(2) + LE32(0xFF0000) + LE32(0x00FF00) + LE32(0x0000FF) + LE32(0);
    EXPECT_EQ(record, Saved(pic));
    BCBitmap loaded;
    std::istringstream is = InStream(record);
    ASSERT_TRUE(loaded.Load(is));
    BCMemoryDevice dev(4, 4);
    dev.PutBitmap(BCPosition(1, 1), BCSize(), &loaded, BC_ROP_COPY);
    ExpectPicture(dev, 1, 1);

    BCBitmap none;
    std::string empty = LE32(10) + LE32(0) + LE32(0);
    EXPECT_EQ(empty, Saved(none));
    is = InStream(empty);
    ASSERT_TRUE(loaded.Load(is));
    EXPECT_TRUE(loaded.IsEmpty());

    // Refused, before anything is made: sizes no picture has, more pixels than there are.
    for (const std::string& bad : {LE32(10) + LE32(60000) + LE32(60000) + std::string(64, '\0'),
                                   LE32(10) + LE32(4) + LE32(4) + std::string(10, '\0'),
                                   LE32(10) + LE32(0) + LE32(5), LE32(14) + LE32(0) + LE32(0)}) {
        is = InStream(bad);
        EXPECT_FALSE(pic.Load(is));
        EXPECT_EQ(BCSize(2, 2), pic.GetSize());
    }
    EveryShortRecordFails<BCBitmap>(record, [] { return new BCBitmap(); });
    EXPECT_TRUE(recorder.NumberedIds().empty());
}

TEST(BitmapTest, PatternBrushesKeepTheirPictureAndRecordIt) {
    MsgRecorder recorder;
    BCBitmap* pic = new BCBitmap;
    ASSERT_TRUE(pic->SetPixels(2, 2, kPicture));
    BCBrush pattern(pic);
    delete pic; // the brush has its own copy
    EXPECT_EQ(BC_BRUSH_PATTERN, pattern.GetKind());
    BCMemoryDevice dev(8, 8);
    dev.SetPen(BCGetClearPen());
    dev.SetBrush(&pattern);
    ASSERT_TRUE(dev.PutRect(BCRectangle(0, 0, 9, 9), BC_DRAW_FILLED));
    ExpectPicture(dev, 0, 0);
    ExpectPicture(dev, 4, 6);

    std::string record = Saved(pattern);
    EXPECT_EQ(LE32(13) + LE32(BC_BRUSH_PATTERN) + LE32(0) + ColorRecord(0) +
                  Saved(*pattern.GetPattern()),
              record);
    BCBrush loaded;
    std::istringstream is = InStream(record);
    ASSERT_TRUE(loaded.Load(is));
    BCMemoryDevice again(8, 8);
    again.SetPen(BCGetClearPen());
    again.SetBrush(&loaded);
    ASSERT_TRUE(again.PutRect(BCRectangle(0, 0, 9, 9), BC_DRAW_FILLED));
    ExpectPicture(again, 2, 2);

    BCBrush nothing(static_cast<BCBitmap*>(nullptr));
    BCMemoryDevice clear(8, 8);
    clear.SetBrush(&nothing);
    clear.SetPen(BCGetClearPen());
    clear.PutRect(BCRectangle(0, 0, 8, 8), BC_DRAW_FILLED);
    EXPECT_EQ(0, CountNotWhite(clear));
    EXPECT_TRUE(recorder.NumberedIds().empty());
}

// A 24-bit BMP file of the 2 x 2 picture; rows are stored bottom first, padded to 4 bytes.
// A 24-bit .BMP file; by default 2 x 2: blue, black over red, green.
std::string BmpFile(std::uint32_t width = 2, std::uint32_t height = 2,
                    std::string rows = Bytes({0xFF, 0, 0, 0, 0, 0, 0, 0}) +
                                       Bytes({0, 0, 0xFF, 0, 0xFF, 0, 0, 0})) {
    std::string info = LE32(40) + LE32(width) + LE32(height) + LE16(1) + LE16(24) + LE32(0) +
                       LE32(static_cast<std::uint32_t>(rows.size())) + LE32(2835) + LE32(2835) +
                       LE32(0) + LE32(0);
    std::string header = "BM" + LE32(static_cast<std::uint32_t>(14 + info.size() + rows.size())) +
                         LE32(0) + LE32(static_cast<std::uint32_t>(14 + info.size()));
    return header + info + rows;
}

TEST(BitmapTest, FilesLoadAndHandlesFollowTheFlags) {
    MsgRecorder recorder;
    std::string path = TempFile("bmp", BmpFile());
    BCBitmap pic;
    EXPECT_TRUE(pic.LoadFromFile(path.c_str()));
    DeleteFileA(path.c_str());
    EXPECT_EQ(BCSize(2, 2), pic.GetSize());
    BCMemoryDevice dev(4, 4);
    dev.PutBitmap(BCPosition(0, 0), BCSize(), &pic, BC_ROP_COPY);
    ExpectPicture(dev, 0, 0);
    EXPECT_TRUE(recorder.NumberedIds().empty());
    EXPECT_FALSE(pic.LoadFromFile(path.c_str())); // gone now
    EXPECT_FALSE(pic.IsEmpty());                  // the picture held stays
    EXPECT_EQ((std::vector<unsigned int>{10003}), recorder.NumberedIds());

    // Wider than a 16-bit size can say: refused whole, not wrapped to a negative width.
    const unsigned long objects = BCGetGdiObjectCount();
    path = TempFile("bmp", BmpFile(20000, 1, std::string(60000, '\x40')));
    EXPECT_FALSE(pic.LoadFromFile(path.c_str()));
    DeleteFileA(path.c_str());
    EXPECT_EQ(BCSize(2, 2), pic.GetSize());
    EXPECT_EQ(objects, BCGetGdiObjectCount());
    HBITMAP wide = CreateBitmap(20000, 2, 1, 32, nullptr);
    EXPECT_FALSE(pic.SetHandle(wide));
    EXPECT_EQ(BCSize(2, 2), pic.GetSize());
    EXPECT_EQ(static_cast<DWORD>(OBJ_BITMAP), GetObjectType(wide)); // still the caller's
    DeleteObject(wide);
    recorder.Clear();

    // A handle handed to the clipboard, or borrowed from it, outlives the object.
    BCBitmap* given = new BCBitmap(3, 3);
    HGDIOBJ handle = given->GetHandle();
    EXPECT_EQ(0ul, given->SetFlags(BC_BITMAP_HANDED_OVER, 1));
    delete given;
    EXPECT_EQ(static_cast<DWORD>(OBJ_BITMAP), GetObjectType(handle));
    BCBitmap* borrowed = new BCBitmap;
    borrowed->SetHandle(handle);
    borrowed->SetFlags(BC_BITMAP_BORROWED, 1);
    EXPECT_EQ(BCSize(3, 3), borrowed->GetSize());
    delete borrowed;
    EXPECT_EQ(static_cast<DWORD>(OBJ_BITMAP), GetObjectType(handle));
    BCBitmap* owner = new BCBitmap;
    owner->SetHandle(handle);
    delete owner;
    EXPECT_EQ(0u, GetObjectType(handle));
}

} // namespace
