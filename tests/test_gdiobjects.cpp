#include <cstdint>

#include "test_devices.h"

namespace {

struct GdiObjectTest : Quiet {};

std::string ColorRecord(unsigned long rgb) {
    return LE32(8) + LE32(rgb);
}

void Paint(BCMemoryDevice& dev, BCBrush* brush) {
    dev.SetPen(BCGetClearPen());
    dev.SetBrush(brush);
    ASSERT_TRUE(dev.PutRect(BCRectangle(0, 0, 17, 17), BC_DRAW_FILLED));
}

TEST_F(GdiObjectTest, ColourPenBrushAndPolylineRecords) {
    BCColor red(BC_COLOR_RED);
    EXPECT_TRUE(BCBrush(BC_STOCK_CLEAR).GetHandle() == GetStockObject(NULL_BRUSH) && // the last
                RecordOf(red) == ColorRecord(0x0000FF));

    BCPen dashed(BC_PEN_DASH, 3, red);
    std::string pen = LE32(14) + LE32(BC_PEN_DASH) + LE32(3) + ColorRecord(0x0000FF);
    EXPECT_EQ(pen + pen, RecordOf(dashed) + Reloaded(BCPen(1, 1, BCGetBlack()), pen));
    EXPECT_EQ(LE32(14) + LE32(BC_PEN_SOLID) + LE32(1000) + ColorRecord(0),
              RecordOf(*std::make_unique<BCPen>(99, 5000, BCGetBlack()))); // limited, not refused

    BCBrush hatched(BC_HATCH_DIAGCROSS, red);
    std::string brush =
        LE32(13) + LE32(BC_BRUSH_HATCHED) + LE32(BC_HATCH_DIAGCROSS) + ColorRecord(0x0000FF);
    BCBrush empty;
    EXPECT_TRUE(RecordOf(hatched) == brush && LoadFrom(empty, brush) &&
                empty.GetStyle() == unsigned(BC_HATCH_DIAGCROSS));
    BCMemoryDevice dev(16, 16); // the loaded hatch paints red lines and white gaps
    Paint(dev, &empty);
    EXPECT_TRUE(CountColor(dev, BCRectangle(0, 0, 16, 16), kRed) > 16 && CountNotWhite(dev) < 240);
    BCBrush stock(BC_STOCK_BLACK);
    EXPECT_EQ(LE32(13) + LE32(BC_BRUSH_STOCK) + LE32(BC_STOCK_BLACK) + ColorRecord(0),
              RecordOf(stock));

    short xy[] = {1, -2, 300, -32768};
    BCPolyline line(2, xy);
    std::string points = LE32(6) + LE32(2) + LE16(1) + LE16(0xFFFE) + LE16(300) + LE16(0x8000);
    BCPolyline back; // an empty list loads too
    EXPECT_EQ(points + points + LE32(6) + LE32(0),
              RecordOf(line) + Reloaded(back, points) + Reloaded(back, LE32(6) + LE32(0)));

    std::vector<short> many(2 * ((1u << 20) + 1)); // the most points a list holds, and one more
    EXPECT_EQ(Nums(1, 0), Nums(back.SetPoints(1u << 20, many.data()),
                               back.SetPoints((1u << 20) + 1, many.data())));
    EveryShortRecordFails<BCPen>(pen, [] { return new BCPen(1, 1, BCGetBlack()); });
    EveryShortRecordFails<BCBrush>(brush, [] { return new BCBrush(); });
    EveryShortRecordFails<BCPolyline>(points, [] { return new BCPolyline(); });
}

TEST_F(GdiObjectTest, CorruptRecordsAreRefusedAndLeaveTheObject) {
    BCPen pen(BC_PEN_DOT, 2, BCColor(BC_COLOR_RED));
    BCBrush brush{BCColor(BC_COLOR_RED)};
    short xy[] = {5, 6, 7, 8};
    BCPolyline line(2, xy);
    struct Case {
        BCObject* object;
        std::string record;
    } cases[] = {{&pen, LE32(14) + LE32(99) + LE32(1) + ColorRecord(0)},         // unknown style
                 {&pen, LE32(14) + LE32(1) + LE32(0x7FFFFFFF) + ColorRecord(0)}, // absurd width
                 {&pen, LE32(13) + LE32(1) + LE32(1) + ColorRecord(0)},          // another class's
                 {&brush, LE32(13) + LE32(9) + LE32(0) + ColorRecord(0)},
                 {&brush, LE32(13) + LE32(BC_BRUSH_HATCHED) + LE32(6) + ColorRecord(0)},
                 {&brush, LE32(13) + LE32(BC_BRUSH_STOCK) + LE32(77) + ColorRecord(0)},
                 {&brush, LE32(13) + LE32(BC_BRUSH_PATTERN) + LE32(0) + ColorRecord(0) + LE32(10) +
                              LE32(0) + LE32(0)},
                 {&line, LE32(6) + LE32(0xFFFFFFFF) + LE16(1) + LE16(1)},
                 {&line, LE32(6) + LE32(3) + LE16(1) + LE16(1) + LE16(2) + LE16(2)}};
    const std::string before = RecordOf(pen) + RecordOf(brush) + RecordOf(line);
    for (const Case& c : cases)
        EXPECT_FALSE(LoadFrom(*c.object, c.record));
    EXPECT_EQ(before, RecordOf(pen) + RecordOf(brush) + RecordOf(line));
}

// A 2 x 2 picture: red, green on top, blue, black below (pixels are 0x00RRGGBB).
const unsigned long kPicture[] = {0xFF0000, 0x00FF00, 0x0000FF, 0x000000};

void ExpectPicture(BCMemoryDevice& dev, short x, short y) {
    const short dx = x + 1, dy = y + 1;
    EXPECT_EQ((std::vector<unsigned long>{kRed, kGreen, kBlue, kBlack}),
              (std::vector<unsigned long>{dev.GetPixel(x, y), dev.GetPixel(dx, y),
                                          dev.GetPixel(x, dy), dev.GetPixel(dx, dy)}));
}

TEST_F(GdiObjectTest, PicturesAreCopiedStretchedCombinedAndErased) {
    BCBitmap pic;
    ASSERT_TRUE(pic.SetPixels(2, 2, kPicture));
    BCMemoryDevice dev(40, 20);
    ASSERT_TRUE(dev.PutBitmap(BCPosition(1, 1), BCSize(), &pic, BC_ROP_COPY) &&
                dev.PutBitmap(BCPosition(10, 0), BCSize(8, 8), &pic, BC_ROP_COPY));
    ExpectPicture(dev, 1, 1);
    EXPECT_EQ(Nums(16, 4 + 64),
              Nums(CountColor(dev, BCRectangle(14, 0, 18, 4), kGreen), CountNotWhite(dev)));

    BCBrush green{BCColor(BC_COLOR_GREEN)};
    dev.SetBackground(&green);
    ASSERT_TRUE(dev.PutBitmap(BCPosition(10, 0), BCSize(8, 8), &pic, BC_ROP_ERASE) &&
                dev.PutBitmap(BCPosition(30, 0), BCSize(4, 4), nullptr, BC_ROP_ERASE));
    EXPECT_EQ(Nums(64, 16), Nums(CountColor(dev, BCRectangle(10, 0, 18, 8), kGreen),
                                 CountColor(dev, BCRectangle(30, 0, 34, 4), kGreen)));
    ASSERT_TRUE(dev.PutBitmap(BCPosition(20, 10), BCSize(), &pic, BC_ROP_XOR));
    const unsigned long once = dev.GetPixel(20, 10);
    ASSERT_TRUE(dev.PutBitmap(BCPosition(20, 10), BCSize(), &pic, BC_ROP_XOR));
    EXPECT_TRUE(once == RGB(0, 255, 255) && // white XOR red, then white again
                CountColor(dev, BCRectangle(20, 10, 22, 12), kWhite) == 4);

    // No picture: nothing drawn and no fault; an unknown operation is one.
    int before = CountNotWhite(dev);
    BCBitmap none;
    EXPECT_TRUE(dev.PutBitmap(BCPosition(0, 0), BCSize(5, 5), nullptr, BC_ROP_COPY) &&
                dev.PutBitmap(BCPosition(0, 0), BCSize(5, 5), &none, BC_ROP_COPY));
    EXPECT_FALSE(CountNotWhite(dev) != before ||
                 dev.PutBitmap(BCPosition(0, 0), BCSize(), &pic, 99));
    EXPECT_EQ((std::vector<unsigned int>{10025}), Taken());

    std::vector<unsigned long> pixels(6);
    EXPECT_TRUE(BCBitmap(3, 2).GetPixels(pixels.data()) && !BCBitmap(3, 2).GetPixels(nullptr) &&
                pixels == std::vector<unsigned long>(6, 0x00FFFFFFul));
}

TEST_F(GdiObjectTest, PicturesAndPatternBrushesRecordThePixels) {
    BCBitmap pic;
    ASSERT_TRUE(pic.SetPixels(2, 2, kPicture));
    std::string record =
        LE32(10) + LE32(2) + LE32(2) + LE32(0xFF0000) + LE32(0x00FF00) + LE32(0x0000FF) + LE32(0);
    BCBitmap loaded, none;
    const std::string empty = LE32(10) + LE32(0) + LE32(0);
    EXPECT_EQ(record + record + empty + empty,
              RecordOf(pic) + Reloaded(loaded, record) + RecordOf(none) + Reloaded(loaded, empty));

    // Refused, before anything is made: sizes no picture has, more pixels than there are.
    for (const std::string& bad : {LE32(10) + LE32(60000) + LE32(60000) + std::string(64, '\0'),
                                   LE32(10) + LE32(16385) + LE32(1) + std::string(65540, '\0'),
                                   LE32(10) + LE32(4) + LE32(4) + std::string(10, '\0'),
                                   LE32(10) + LE32(0) + LE32(5), LE32(14) + LE32(0) + LE32(0)}) {
        EXPECT_FALSE(LoadFrom(pic, bad));
        EXPECT_EQ(BCSize(2, 2), pic.GetSize());
    }
    EveryShortRecordFails<BCBitmap>(record, [] { return new BCBitmap(); });
    for (short side : {4200, 16384}) {
        const BCSize size(side, side == 4200 ? side : 2);
        BCBitmap big(size.GetWidth(), size.GetHeight());
        EXPECT_TRUE(LoadFrom(loaded, RecordOf(big)) && loaded.GetSize() == size) << side;
    }

    // A pattern brush keeps its own copy of the picture and records it.
    auto copied = std::make_unique<BCBitmap>();
    ASSERT_TRUE(copied->SetPixels(2, 2, kPicture));
    BCBrush pattern(copied.get()), brush, nothing(static_cast<BCBitmap*>(nullptr));
    copied.reset();
    const std::string patternRecord =
        LE32(13) + LE32(BC_BRUSH_PATTERN) + LE32(0) + ColorRecord(0) + record;
    EXPECT_TRUE(RecordOf(pattern) == patternRecord && LoadFrom(brush, patternRecord));
    BCMemoryDevice dev(16, 16);
    Paint(dev, &pattern);
    ExpectPicture(dev, 4, 6);
    Paint(dev, BCGetWhiteBrush());
    Paint(dev, &nothing); // a brush of no picture paints nothing
    EXPECT_EQ(0, CountNotWhite(dev));
    Paint(dev, &brush);
    ExpectPicture(dev, 2, 2);
}

// A 24-bit .BMP file; by default 2 x 2: blue, black over red, green (rows bottom first).
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

TEST_F(GdiObjectTest, FilesLoadAndHandlesFollowTheFlags) {
    std::string path = TempFile("bmp", BmpFile());
    BCBitmap pic;
    BCMemoryDevice dev(4, 4);
    EXPECT_TRUE(pic.LoadFromFile(path.c_str()) && DeleteFileA(path.c_str()) &&
                dev.PutBitmap(BCPosition(0, 0), BCSize(), &pic, BC_ROP_COPY));
    ExpectPicture(dev, 0, 0);
    EXPECT_FALSE(pic.LoadFromFile(path.c_str()) || pic.IsEmpty()); // gone; the picture stays
    EXPECT_EQ((std::vector<unsigned int>{10003}), Taken());

    // Wider than a 16-bit size can say: refused whole, not wrapped to a negative width.
    const unsigned long objects = BCGetGdiObjectCount();
    path = TempFile("bmp", BmpFile(20000, 1, std::string(60000, '\x40')));
    EXPECT_FALSE(pic.LoadFromFile(path.c_str()) || !DeleteFileA(path.c_str()) ||
                 BCGetGdiObjectCount() != objects);
    EXPECT_EQ((std::vector<unsigned int>{10003}), Taken());
    HBITMAP wide = CreateBitmap(20000, 2, 1, 32, nullptr);
    EXPECT_TRUE(!pic.SetHandle(wide) && pic.GetSize() == BCSize(2, 2));
    EXPECT_EQ(static_cast<DWORD>(OBJ_BITMAP), GetObjectType(wide)); // still the caller's
    DeleteObject(wide);

    // A handle handed to the clipboard, or borrowed from it, outlives the object.
    BCBitmap* given = new BCBitmap(3, 3);
    HGDIOBJ handle = given->GetHandle();
    EXPECT_EQ(0ul, given->SetFlags(BC_BITMAP_HANDED_OVER, 1));
    delete given;
    EXPECT_EQ(static_cast<DWORD>(OBJ_BITMAP), GetObjectType(handle));
    for (unsigned long flags : {static_cast<unsigned long>(BC_BITMAP_BORROWED), 0ul}) {
        BCBitmap* holder = new BCBitmap;
        holder->SetHandle(handle);
        holder->SetFlags(flags, 1);
        EXPECT_EQ(BCSize(3, 3), holder->GetSize());
        delete holder;
        EXPECT_EQ(flags ? static_cast<DWORD>(OBJ_BITMAP) : 0u, GetObjectType(handle));
    }
}

} // namespace
