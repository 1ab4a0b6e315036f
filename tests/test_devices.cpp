#include "test_devices.h"

namespace {

struct DeviceTest : Quiet {};
struct DrawingTest : Quiet {};
struct TextTest : Quiet {};

BCApplication& App() {
    static BCApplication app;
    return app;
}

TEST_F(DeviceTest, MemoryDeviceStartsWhiteAndNestsItsContext) {
    BCMemoryDevice dev(40, 30);
    const unsigned long corners[][3] = {
        {39, 29, kWhite}, {40, 0, 0xFFFFFFFF}, {0, 30, 0xFFFFFFFF}, {0, 0xFFFF, 0xFFFFFFFF}};
    ExpectPixels(dev, corners); // outside the picture: no colour
    EXPECT_EQ(BC_DEV_OWNS_DC | BC_DEV_TOP_DOWN, dev.GetDeviceFlags());
    EXPECT_EQ(BCRectangle(0, 0, 40, 30), dev.GetUserRect());
    ASSERT_TRUE(dev.SelectDC());
    void* dc = dev.GetDC();
    EXPECT_TRUE(dev.SelectDC() && dc == dev.GetDC() && dev.GetSelectCount() == 2u &&
                dev.ReleaseDC() && dev.ReleaseDC() && !dev.GetDC() && !dev.ReleaseDC()); // 10023

    // A device whose picture could not be made says so once and then has no context.
    BCMemoryDevice empty(0, 10);
    EXPECT_FALSE(empty.SelectDC() || empty.ReleaseDC() ||
                 empty.PutRect(BCRectangle(0, 0, 5, 5), BC_DRAW_FILLED));
    EXPECT_EQ((std::vector<unsigned int>{10023, 10049}), Taken());
}

TEST_F(DrawingTest, RectanglesTakeThePenAndBrushClearToolsNoneAndNullToolsTheDefaults) {
    Tools tools;
    BCMemoryDevice dev(200, 120);
    // Set before the context is selected: the settings must reach it.
    EXPECT_TRUE(dev.SetPen(&tools.red) == BCGetBlackPen() &&
                dev.SetBrush(&tools.blue) == BCGetWhiteBrush());
    ASSERT_TRUE(dev.SelectDC() && dev.PutRect(BCRectangle(10, 10, 30, 30), BC_DRAW_FILLED));
    EXPECT_EQ(Nums(18 * 18, 20 * 20),
              Nums(CountColor(dev, BCRectangle(11, 11, 29, 29), kBlue), CountNotWhite(dev)));
    ASSERT_TRUE(dev.PutRect(BCRectangle(40, 10, 60, 30), BC_DRAW_OUTLINE) &&
                dev.PutRect(BCRectangle(70, 10, 90, 30), BC_DRAW_INTERIOR) &&
                !dev.PutRect(BCRectangle(100, 10, 120, 30), 7));
    const unsigned long expected[][3] = {
        {40, 20, kRed}, {50, 20, kWhite}, {80, 20, kBlue}, {70, 20, kBlue}, {110, 20, kWhite}};
    ExpectPixels(dev, expected);

    const BCRectangle box(10, 50, 70, 110);
    ASSERT_TRUE(dev.SetPen(BCGetClearPen()) == &tools.red &&
                dev.SetBrush(BCGetClearBrush()) == &tools.blue && dev.PutRect(box, BC_DRAW_FILLED));
    EXPECT_EQ(60 * 60, CountColor(dev, box, kWhite));
    // Null tools put back the device's defaults, a black pen and a white brush.
    EXPECT_TRUE(dev.SetPen(nullptr) == BCGetClearPen() &&
                dev.SetBrush(nullptr) == BCGetClearBrush() && dev.GetPen() == BCGetBlackPen() &&
                dev.GetBrush() == BCGetWhiteBrush() && dev.PutRect(box, BC_DRAW_FILLED) &&
                dev.GetPixel(10, 80) == kBlack && dev.GetPixel(40, 80) == kWhite &&
                dev.ReleaseDC());

    BCMemoryDevice back(20, 20);
    ASSERT_TRUE(!back.SetBackground(&tools.greenBrush) && back.Clear(BCRectangle(0, 0, 10, 20)));
    const int before = CountColor(back, BCRectangle(0, 0, 20, 20), kGreen);
    EXPECT_TRUE(back.SetBackground(nullptr) == &tools.greenBrush &&
                back.Clear(BCRectangle(0, 0, 5, 20)));
    EXPECT_EQ(Nums(200, 100), Nums(before, CountColor(back, BCRectangle(0, 0, 20, 20), kGreen)));
}

TEST_F(DrawingTest, LinesPointListsAndTheOriginFollowThePen) {
    Tools tools;
    BCMemoryDevice dev(100, 100);
    tools.Equip(dev);
    ASSERT_TRUE(dev.MoveTo(BCPosition(5, 5)) && dev.LineTo(BCPosition(25, 5)) &&
                dev.LineTo(BCPosition(25, 15)));
    // 5..24, and 25 down; the end is not drawn.
    EXPECT_TRUE(dev.GetCrntPos() == BCPosition(25, 15) && dev.GetPixel(25, 15) == kWhite &&
                CountColor(dev, BCRectangle(0, 5, 100, 6), kRed) == 21);

    short tri[] = {0, 0, 20, 0, 20, 20};
    BCPolyline line(3, tri), two(2, tri), one(1, tri), none;
    ASSERT_TRUE(dev.PutPolyline(&line, BCPosition(10, 30)) &&
                dev.PutPolygon(&line, BCPosition(50, 30)) &&
                dev.PutPolyline(&two, BCPosition(10, 90)));
    EXPECT_EQ(20, CountColor(dev, BCRectangle(0, 90, 100, 91), kRed)); // two points: one side
    // An open line fills nothing; a polygon has its closing side.
    const unsigned long pixels[][3] = {
        {30, 40, kRed}, {25, 33, kWhite}, {65, 33, kBlue}, {60, 40, kRed}};
    ExpectPixels(dev, pixels);
    for (BCPolyline* bad : {&one, &none, static_cast<BCPolyline*>(nullptr)})
        EXPECT_FALSE(dev.PutPolyline(bad, BCPosition(0, 70)) ||
                     dev.PutPolygon(bad, BCPosition(0, 70)));
    EXPECT_EQ(0, CountColor(dev, BCRectangle(0, 60, 100, 90), kRed));

    // The origin shifts everything drawn and outlives the context.
    BCMemoryDevice shifted(100, 40);
    tools.Equip(shifted);
    EXPECT_EQ(BCPosition(0, 0), shifted.SetOrigin(BCPosition(30, 5)));
    ASSERT_TRUE(shifted.PutRect(BCRectangle(40, 10, 50, 20), BC_DRAW_FILLED)); // a pair of its own
    EXPECT_EQ(100, CountColor(shifted, BCRectangle(10, 5, 20, 15), kRed) +
                       CountColor(shifted, BCRectangle(10, 5, 20, 15), kBlue));
    ASSERT_TRUE(shifted.SelectDC() && shifted.SetOrigin(BCPosition(-10, 0)) == BCPosition(30, 5) &&
                shifted.PosStr(BCPosition(-10, 20), "H"));    // moved while selected
    const int ink = ColumnsOf(shifted, 20, 40, kBlack).first; // at 0, give or take the bearing
    EXPECT_TRUE(ink >= 0 && ink < 3 && shifted.ReleaseDC()) << ink;
    shifted.SetOrigin(BCPosition(0, 0));
    EXPECT_TRUE(shifted.PutRect(BCRectangle(90, 0, 100, 10), BC_DRAW_FILLED) &&
                shifted.GetPixel(90, 0) == kRed);
}

TEST_F(TextTest, BackModeDecidesWhetherTheBackgroundIsPainted) {
    BCMemoryDevice dev(200, 60);
    const BCSize size = dev.GetStrSize("Hello");
    EXPECT_TRUE(dev.SetTextColor(BCColor(BC_COLOR_RED)) == BCColor(BC_COLOR_BLACK) &&
                dev.SetBackColor(BCColor(BC_COLOR_GREEN)) == BCColor(BC_COLOR_WHITE) &&
                dev.SetBackMode(BC_BACK_TRANSPARENT) == unsigned(BC_BACK_OPAQUE) &&
                dev.SetBackMode(9) == unsigned(BC_BACK_TRANSPARENT) && // ignored
                dev.GetChrHeight('H') == size.GetHeight() &&
                dev.GetChrWidth('W') > dev.GetChrWidth('i') &&
                dev.PosStr(BCPosition(5, 5), "Hello"));
    EXPECT_TRUE(CountColor(dev, BCRectangle(0, 0, 200, 60), kGreen) == 0 &&
                dev.GetCrntPos() == BCPosition(short(5 + size.GetWidth()), 5));
    dev.SetBackMode(BC_BACK_OPAQUE);
    ASSERT_TRUE(dev.PosStr(BCPosition(5, 30), "Hello"));
    EXPECT_EQ(std::make_pair(5, 5 + size.GetWidth()), ColumnsOf(dev, 0, 60, kGreen));
    EXPECT_TRUE(CountColor(dev, BCRectangle(0, 0, 200, 60), kRed) > 0 &&
                !dev.PosStr(BCPosition(0, 0), nullptr));
}

TEST_F(TextTest, TabsMoveToTheStopsCountedFromTheTabOriginAsTheyAreMeasured) {
    BCMemoryDevice dev(300, 40);
    EXPECT_GT(dev.GetTabWidth(), 8 * dev.GetChrWidth('i') - 1); // eight average characters
    EXPECT_EQ(0, dev.SetTabWidth(40) + dev.SetTabOrigin(10));
    dev.SetBackMode(BC_BACK_TRANSPARENT);
    const short ab = dev.GetStrSize("ab").GetWidth(), c = dev.GetStrSize("c").GetWidth();
    ASSERT_LT(ab, 40);
    EXPECT_EQ(Nums(40 + c, 80 + c),
              Nums(dev.GetStrSize("ab\tc").GetWidth(), dev.GetStrSize("\t\tc").GetWidth()));
    // Written from the origin, a text ends where measuring says, whatever its TABs.
    for (const char* text : {"ab\tc", "\t\tc", "abcdefghijklmnop\tq", "\t", "x\t\ty"}) {
        ASSERT_TRUE(dev.PosStr(BCPosition(10, 5), text));
        EXPECT_EQ(10 + dev.GetStrSize(text).GetWidth(), dev.GetCrntPos().GetX()) << text;
    }
    // A text that starts past the origin reaches the same stop, and nothing lies between.
    BCMemoryDevice second(300, 40), opaque(300, 40);
    second.SetTabWidth(40);
    opaque.SetTabWidth(40);
    second.SetTabOrigin(10);
    ASSERT_TRUE(second.PosStr(BCPosition(25, 5), "i\tc"));
    EXPECT_TRUE(second.GetCrntPos().GetX() == 50 + c &&
                !CountColor(second, BCRectangle(32, 0, 49, 40), kBlack));

    opaque.SetBackColor(BCColor(BC_COLOR_GREEN));
    ASSERT_TRUE(opaque.PosStr(BCPosition(0, 0), "\tx"));
    EXPECT_EQ(40 * opaque.GetChrHeight('H'), CountColor(opaque, BCRectangle(0, 0, 40, 40), kGreen));
}

TEST_F(TextTest, ATextInItsRowLooksLikeTheRowClearedAndTheTextWritten) {
    BCBrush red{BCColor(BC_COLOR_RED)};
    BCFont big("Arial");
    big.SetSize(BCSize(0, -22));
    for (bool plain : {true, false}) { // or with a TAB, a background, a back colour and a font
        BCMemoryDevice fast(200, 30), slow(200, 30);
        for (BCMemoryDevice* dev : {&fast, &slow}) {
            dev->SetBackColor(BCColor(plain ? BC_COLOR_WHITE : BC_COLOR_GREEN));
            dev->SetBackground(plain ? nullptr : &red);
            dev->SetFont(plain ? nullptr : &big);
        }
        const char* text = plain ? "plain text" : "tab\tstop";
        const BCRectangle row(0, 4, 180, static_cast<short>(4 + fast.GetChrHeight('H')));
        ASSERT_TRUE(fast.PosStrInRow(BCPosition(12, 4), text, -1, row));
        ASSERT_TRUE(slow.Clear(row) && slow.PosStr(BCPosition(12, 4), text));
        EXPECT_TRUE(slow.GetCrntPos() == fast.GetCrntPos() && Snapshot(slow) == Snapshot(fast))
            << text;
        EXPECT_EQ(row.GetWidth() * row.GetHeight() - CountColor(fast, row, kWhite),
                  CountNotWhite(fast)) // nothing beside the row
            << text;
    }
}

class BoxWindow : public BCMainWindow {
  public:
    BoxWindow() : BCMainWindow(&App()) {}
    LRESULT Paint(BCEvent*) override {
        painted = PutRect(BCRectangle(60, 10, 100, 50), BC_DRAW_FILLED);
        return 0;
    }
    int painted = 0;
};

TEST_F(DeviceTest, AWindowDrawsOnlyOnceCreatedAndPutsItsSettingsIntoEveryContext) {
    Tools tools;
    BoxWindow window;
    // Not yet created: drawing does nothing and says nothing.
    BCBoxGraphic box(1, BCPosition(0, 0), BCSize(10, 10), nullptr, nullptr);
    BCGraphicList list;
    list.Append(nullptr, new BCLineGraphic(2, BCPosition(0, 0), BCSize(5, 5), nullptr));
    EXPECT_TRUE(box.Draw(&window) && box.UnDraw(&window) && list.Draw(&window) &&
                !window.PutRect(BCRectangle(0, 0, 5, 5), BC_DRAW_FILLED) &&
                !window.PosStr(BCPosition(0, 0), "x") && !recorder.Count());
    // Each failed select was paired: a release of its own is still a nesting fault.
    EXPECT_TRUE(!window.ReleaseDC() && Taken() == std::vector<unsigned int>{10023});

    window.SetWindowRect(BCRectangle(10, 10, 250, 150));
    ASSERT_TRUE(window.Create("devices"));
    window.Show(SW_SHOWNOACTIVATE);
    window.Update();
    tools.Equip(window);
    window.SetTextColor(BCColor(BC_COLOR_RED));
    window.SetBackMode(BC_BACK_TRANSPARENT);
    window.Invalidate(nullptr, 1);
    window.Update(); // paints through the adopted paint context
    ASSERT_TRUE(window.painted && window.SelectDC() &&
                window.PutRect(BCRectangle(10, 10, 50, 50), BC_DRAW_FILLED) && window.ReleaseDC() &&
                window.PosStr(BCPosition(10, 60), "HHHH"));

    HDC dc = GetDC(window.GetHandle());
    const std::vector<COLORREF> seen{::GetPixel(dc, 10, 30), ::GetPixel(dc, 30, 30),
                                     ::GetPixel(dc, 60, 30), ::GetPixel(dc, 80, 30)};
    int red = 0; // the text colour reached the context of the last pair too
    for (int x = 10; x < 60; ++x)
        for (int y = 60; y < 80; ++y)
            red += ::GetPixel(dc, x, y) == kRed;
    ReleaseDC(window.GetHandle(), dc);
    EXPECT_TRUE(seen == std::vector<COLORREF>({kRed, kBlue, kRed, kBlue}) && red > 0);
}

// Patterns, backgrounds, TABs and raster operations, which the drawing tests' scenes lack.
void DrawScene(const char* face) {
    BCBrush hatched{BC_HATCH_CROSS, BCColor(BC_COLOR_GREEN)};
    BCBitmap picture(8, 8);
    BCBrush pattern(&picture);
    BCFont font(face);
    BCMemoryDevice dev(64, 64);
    dev.SetBackground(&hatched);
    dev.SelectDC();
    dev.SetBrush(&pattern);
    dev.SetFont(&font);
    dev.PutRect(BCRectangle(0, 0, 30, 30), BC_DRAW_FILLED);
    dev.PosStr(BCPosition(0, 40), "a\tb");
    dev.PutBitmap(BCPosition(40, 0), BCSize(16, 16), &picture, BC_ROP_XOR);
    dev.PutBitmap(BCPosition(40, 0), BCSize(16, 16), nullptr, BC_ROP_ERASE);
    dev.ReleaseDC();
}

TEST_F(DeviceTest, DrawingASceneAThousandTimesLeavesNoObjectBehind) {
    BCModule module(GetModuleHandleA(nullptr), "test_devices", 0);
    const std::string face = FirstFace(module);
    DrawScene(face.c_str()); // stock objects and shared buffers are made once
    const unsigned long count = BCGetGdiObjectCount();
    for (int i = 0; i < 1000; ++i)
        DrawScene(face.c_str());
    EXPECT_EQ(count, BCGetGdiObjectCount());
}

} // namespace
