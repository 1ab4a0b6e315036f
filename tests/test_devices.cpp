#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <utility>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"
#include "test_devices.h"

namespace {

struct RedBlue {
    BCPen pen{BC_PEN_SOLID, 1, BCColor(BC_COLOR_RED)};
    BCBrush brush{BCColor(BC_COLOR_BLUE)};
};

TEST(DeviceTest, MemoryDeviceStartsWhiteAndNestsItsContext) {
    MsgRecorder recorder;
    BCMemoryDevice dev(40, 30);
    EXPECT_EQ(kWhite, dev.GetPixel(0, 0));
    EXPECT_EQ(kWhite, dev.GetPixel(39, 29));
    EXPECT_EQ(0xFFFFFFFFul, dev.GetPixel(40, 0));
    EXPECT_EQ(0xFFFFFFFFul, dev.GetPixel(0, -1));
    EXPECT_EQ(BC_DEV_OWNS_DC | BC_DEV_TOP_DOWN, dev.GetDeviceFlags());
    EXPECT_EQ(BCRectangle(0, 0, 40, 30), dev.GetUserRect());

    ASSERT_TRUE(dev.SelectDC());
    void* dc = dev.GetDC();
    ASSERT_TRUE(dev.SelectDC());
    EXPECT_EQ(dc, dev.GetDC());
    EXPECT_EQ(2u, dev.GetSelectCount());
    EXPECT_TRUE(dev.ReleaseDC());
    EXPECT_TRUE(dev.ReleaseDC());
    EXPECT_EQ(nullptr, dev.GetDC());
    EXPECT_FALSE(dev.ReleaseDC());

    // A device whose picture could not be made has no context to give.
    BCMemoryDevice empty(0, 10);
    EXPECT_FALSE(empty.SelectDC());
    EXPECT_EQ(0, empty.PutRect(BCRectangle(0, 0, 5, 5), BC_DRAW_FILLED));
    EXPECT_EQ((std::vector<unsigned int>{10023, 10049, 10021, 10021}), recorder.NumberedIds());
}

TEST(DrawingTest, ClosedShapesHaveThePenOnTheEdgeAndTheBrushInside) {
    MsgRecorder recorder;
    RedBlue tools;
    BCMemoryDevice dev(200, 120);
    // Set before the context is selected: the settings must reach it.
    EXPECT_EQ(nullptr, dev.SetPen(&tools.pen));
    EXPECT_EQ(nullptr, dev.SetBrush(&tools.brush));
    ASSERT_TRUE(dev.SelectDC());

    ASSERT_TRUE(dev.PutRect(BCRectangle(10, 10, 30, 30), BC_DRAW_FILLED));
    EXPECT_EQ(kRed, dev.GetPixel(10, 10));
    EXPECT_EQ(kRed, dev.GetPixel(29, 20)); // right and bottom edges lie just inside
    EXPECT_EQ(kRed, dev.GetPixel(20, 29));
    EXPECT_EQ(kBlue, dev.GetPixel(20, 20));
    EXPECT_EQ(18 * 18, CountColor(dev, BCRectangle(11, 11, 29, 29), kBlue));
    EXPECT_EQ(kWhite, dev.GetPixel(30, 20));
    EXPECT_EQ(kWhite, dev.GetPixel(20, 9));

    ASSERT_TRUE(dev.PutRect(BCRectangle(40, 10, 60, 30), BC_DRAW_OUTLINE));
    EXPECT_EQ(kRed, dev.GetPixel(40, 20));
    EXPECT_EQ(kWhite, dev.GetPixel(50, 20));
    ASSERT_TRUE(dev.PutRect(BCRectangle(70, 10, 90, 30), BC_DRAW_INTERIOR));
    EXPECT_EQ(0, CountColor(dev, BCRectangle(69, 9, 91, 31), kRed));
    EXPECT_EQ(kBlue, dev.GetPixel(80, 20));
    EXPECT_FALSE(dev.PutRect(BCRectangle(100, 10, 120, 30), 7));
    EXPECT_EQ(0, CountColor(dev, BCRectangle(100, 10, 120, 30), kRed));

    ASSERT_TRUE(dev.PutEllipse(BCRectangle(130, 10, 190, 40), BC_DRAW_FILLED));
    EXPECT_EQ(kBlue, dev.GetPixel(160, 25));
    EXPECT_EQ(kRed, dev.GetPixel(130, 25));
    EXPECT_EQ(kWhite, dev.GetPixel(132, 12)); // the box's corner is outside the ellipse
    EXPECT_EQ(kWhite, dev.GetPixel(190, 25));

    // A circle in a wide box: centred, as wide as the box is high.
    ASSERT_TRUE(dev.PutCircle(BCRectangle(0, 50, 60, 70), BC_DRAW_FILLED));
    EXPECT_EQ(kBlue, dev.GetPixel(30, 60));
    EXPECT_EQ(kRed, dev.GetPixel(20, 60));
    EXPECT_EQ(kWhite, dev.GetPixel(15, 60));
    EXPECT_EQ(kWhite, dev.GetPixel(45, 60));

    // Arc, chord and pie over the upper right quarter of a circle centred at (100, 80).
    BCRectangle box(80, 60, 120, 100);
    BCPosition right(120, 80), top(100, 60);
    ASSERT_TRUE(dev.PutArc(box, right, top));
    EXPECT_GT(CountColor(dev, BCRectangle(100, 60, 120, 81), kRed), 25);
    EXPECT_EQ(0, CountColor(dev, BCRectangle(80, 81, 120, 100), kRed)); // nothing below
    EXPECT_EQ(0, CountColor(dev, BCRectangle(80, 60, 99, 100), kRed));  // nor left
    EXPECT_EQ(0, CountColor(dev, BCRectangle(80, 60, 120, 100), kBlue));

    BCMemoryDevice chordDev(60, 60), pieDev(60, 60);
    for (BCMemoryDevice* d : {&chordDev, &pieDev}) {
        d->SetPen(&tools.pen);
        d->SetBrush(&tools.brush);
    }
    BCRectangle box2(10, 10, 50, 50);
    BCPosition right2(50, 30), top2(30, 10);
    ASSERT_TRUE(chordDev.PutChord(box2, right2, top2, BC_DRAW_FILLED));
    ASSERT_TRUE(pieDev.PutPie(box2, right2, top2, BC_DRAW_FILLED));
    EXPECT_EQ(kBlue, chordDev.GetPixel(41, 19)); // between the arc and the chord
    EXPECT_EQ(kBlue, pieDev.GetPixel(41, 19));
    EXPECT_EQ(kWhite, chordDev.GetPixel(35, 25)); // inside the quarter, below the chord
    EXPECT_EQ(kBlue, pieDev.GetPixel(35, 25));
    EXPECT_EQ(kRed, pieDev.GetPixel(30, 30)); // the pie's sides meet at the centre
    EXPECT_EQ(0, CountColor(chordDev, BCRectangle(0, 32, 60, 60), kBlue));
    EXPECT_EQ(0, CountColor(pieDev, BCRectangle(0, 0, 28, 60), kBlue));

    EXPECT_TRUE(dev.ReleaseDC());
    EXPECT_TRUE(recorder.NumberedIds().empty());
}

TEST(DrawingTest, LinesAndPointListsFollowThePen) {
    MsgRecorder recorder;
    RedBlue tools;
    BCMemoryDevice dev(100, 100);
    dev.SetPen(&tools.pen);
    dev.SetBrush(&tools.brush);

    // The position survives leaving and re-entering the context.
    ASSERT_TRUE(dev.MoveTo(BCPosition(5, 5)));
    ASSERT_TRUE(dev.LineTo(BCPosition(25, 5)));
    ASSERT_TRUE(dev.LineTo(BCPosition(25, 15)));
    EXPECT_EQ(BCPosition(25, 15), dev.GetCrntPos());
    EXPECT_EQ(21, CountColor(dev, BCRectangle(0, 5, 100, 6), kRed)); // 5..24, and 25 down
    EXPECT_EQ(kRed, dev.GetPixel(25, 10));
    EXPECT_EQ(kWhite, dev.GetPixel(25, 15)); // the end point is not drawn

    short tri[] = {0, 0, 20, 0, 20, 20};
    BCPolyline line(3, tri);
    ASSERT_TRUE(dev.PutPolyline(&line, BCPosition(10, 30)));
    EXPECT_EQ(kRed, dev.GetPixel(10, 30));
    EXPECT_EQ(kRed, dev.GetPixel(30, 40));
    EXPECT_EQ(kWhite, dev.GetPixel(25, 33)); // an open line fills nothing
    ASSERT_TRUE(dev.PutPolygon(&line, BCPosition(50, 30)));
    EXPECT_EQ(kBlue, dev.GetPixel(65, 33));
    EXPECT_EQ(kRed, dev.GetPixel(60, 40)); // the closing side

    BCPolyline one(1, tri), none;
    EXPECT_FALSE(dev.PutPolyline(&one, BCPosition(0, 70)));
    EXPECT_FALSE(dev.PutPolygon(nullptr, BCPosition(0, 70)));
    EXPECT_FALSE(dev.PutPolyline(&none, BCPosition(0, 70)));
    EXPECT_EQ(0, CountColor(dev, BCRectangle(0, 60, 100, 100), kRed));
    EXPECT_TRUE(recorder.NumberedIds().empty());
}

TEST(DrawingTest, ClearToolsPaintNothingAndNullToolsUseTheDefaults) {
    MsgRecorder recorder;
    RedBlue tools;
    BCMemoryDevice dev(80, 80);
    ASSERT_TRUE(dev.SelectDC());
    dev.SetPen(&tools.pen);
    dev.SetBrush(&tools.brush);
    EXPECT_EQ(&tools.pen, dev.SetPen(BCGetClearPen()));
    EXPECT_EQ(&tools.brush, dev.SetBrush(BCGetClearBrush()));
    BCRectangle box(10, 10, 70, 70);
    BCPosition a(70, 40), b(40, 10);
    dev.PutRect(box, BC_DRAW_FILLED);
    dev.PutEllipse(box, BC_DRAW_FILLED);
    dev.PutCircle(box, BC_DRAW_FILLED);
    dev.PutArc(box, a, b);
    dev.PutChord(box, a, b, BC_DRAW_FILLED);
    dev.PutPie(box, a, b, BC_DRAW_FILLED);
    dev.MoveTo(BCPosition(0, 0));
    dev.LineTo(BCPosition(79, 79));
    EXPECT_EQ(0, CountNotWhite(dev));

    // Null tools stand for the context's own: a black pen and a white brush.
    dev.SetPen(nullptr);
    dev.SetBrush(nullptr);
    ASSERT_TRUE(dev.PutRect(box, BC_DRAW_FILLED));
    EXPECT_EQ(kBlack, dev.GetPixel(10, 40));
    EXPECT_EQ(kWhite, dev.GetPixel(40, 40));
    EXPECT_TRUE(dev.ReleaseDC());

    // The background brush clears; without one, clearing paints white.
    BCMemoryDevice back(20, 20);
    BCBrush green{BCColor(BC_COLOR_GREEN)};
    EXPECT_EQ(nullptr, back.SetBackground(&green));
    ASSERT_TRUE(back.Clear(BCRectangle(0, 0, 10, 20)));
    EXPECT_EQ(200, CountColor(back, BCRectangle(0, 0, 20, 20), kGreen));
    EXPECT_EQ(&green, back.SetBackground(nullptr));
    ASSERT_TRUE(back.Clear(BCRectangle(0, 0, 5, 20)));
    EXPECT_EQ(100, CountColor(back, BCRectangle(0, 0, 20, 20), kGreen));
    EXPECT_TRUE(recorder.NumberedIds().empty());
}

TEST(TextTest, BackModeDecidesWhetherTheBackgroundIsPainted) {
    MsgRecorder recorder;
    BCMemoryDevice dev(200, 60);
    EXPECT_EQ(BCColor(BC_COLOR_BLACK), dev.SetTextColor(BCColor(BC_COLOR_RED)));
    EXPECT_EQ(BCColor(BC_COLOR_WHITE), dev.SetBackColor(BCColor(BC_COLOR_GREEN)));
    EXPECT_EQ(static_cast<unsigned>(BC_BACK_OPAQUE), dev.SetBackMode(BC_BACK_TRANSPARENT));
    EXPECT_EQ(static_cast<unsigned>(BC_BACK_TRANSPARENT), dev.SetBackMode(9)); // ignored
    BCSize size = dev.GetStrSize("Hello");
    ASSERT_GT(size.GetWidth(), 0);
    ASSERT_GT(size.GetHeight(), 0);

    ASSERT_TRUE(dev.PosStr(BCPosition(5, 5), "Hello"));
    BCRectangle first(BCPosition(5, 5), size);
    EXPECT_GT(CountColor(dev, first, kRed), 0);
    EXPECT_EQ(0, CountColor(dev, first, kGreen));
    EXPECT_EQ(BCPosition(static_cast<short>(5 + size.GetWidth()), 5), dev.GetCrntPos());

    dev.SetBackMode(BC_BACK_OPAQUE);
    ASSERT_TRUE(dev.PosStr(BCPosition(5, 30), "Hello"));
    BCRectangle second(BCPosition(5, 30), size);
    EXPECT_GT(CountColor(dev, second, kRed), 0);
    EXPECT_GT(CountColor(dev, second, kGreen), size.GetWidth() * size.GetHeight() / 3);
    // Nothing is painted beside the text.
    EXPECT_EQ(0, CountColor(dev, BCRectangle(0, 0, 5, 60), kGreen));
    EXPECT_EQ(0, CountColor(dev, BCRectangle(static_cast<short>(5 + size.GetWidth()), 0, 200, 60),
                            kGreen));

    EXPECT_FALSE(dev.PosStr(BCPosition(0, 0), nullptr));
    EXPECT_EQ(dev.GetChrHeight('H'), size.GetHeight());
    EXPECT_GT(dev.GetChrWidth('W'), dev.GetChrWidth('i'));
    EXPECT_TRUE(recorder.NumberedIds().empty());
}

TEST(TextTest, TabsMoveToTheStopsCountedFromTheTabOrigin) {
    MsgRecorder recorder;
    BCMemoryDevice dev(300, 40);
    EXPECT_GT(dev.GetTabWidth(), 8 * dev.GetChrWidth('i') - 1); // eight average characters
    dev.SetTabWidth(40);
    dev.SetTabOrigin(10);
    EXPECT_EQ(40, dev.GetTabWidth());
    dev.SetBackMode(BC_BACK_TRANSPARENT);
    short ab = dev.GetStrSize("ab").GetWidth(), c = dev.GetStrSize("c").GetWidth();
    ASSERT_LT(ab, 40);

    // Measured from the origin, as the editor measures a line.
    EXPECT_EQ(40 + c, dev.GetStrSize("ab\tc").GetWidth());
    EXPECT_EQ(80 + c, dev.GetStrSize("\t\tc").GetWidth());

    ASSERT_TRUE(dev.PosStr(BCPosition(10, 5), "ab\tc"));
    EXPECT_EQ(10 + 40 + c, dev.GetCrntPos().GetX());
    std::pair<int, int> ink = ColumnsOf(dev, 0, 40, kBlack);
    EXPECT_LE(ink.first, 12);
    EXPECT_LE(ink.second, 50 + c + 1);
    EXPECT_EQ(0, CountColor(dev, BCRectangle(static_cast<short>(10 + ab + 1), 0, 49, 40), kBlack));
    EXPECT_GT(CountColor(dev, BCRectangle(50, 0, static_cast<short>(50 + c), 40), kBlack), 0);

    // A text that starts past the origin reaches the same stop.
    BCMemoryDevice second(300, 40);
    second.SetTabWidth(40);
    second.SetTabOrigin(10);
    short a = second.GetStrSize("a").GetWidth();
    ASSERT_TRUE(second.PosStr(BCPosition(25, 5), "a\tc"));
    EXPECT_EQ(50 + c, second.GetCrntPos().GetX());
    EXPECT_GT(CountColor(second, BCRectangle(50, 0, static_cast<short>(50 + c), 40), kBlack), 0);
    EXPECT_EQ(0,
              CountColor(second, BCRectangle(static_cast<short>(25 + a + 1), 0, 49, 40), kBlack));

    // Opaque text paints the room a TAB takes too.
    BCMemoryDevice opaque(300, 40);
    opaque.SetTabWidth(40);
    opaque.SetBackColor(BCColor(BC_COLOR_GREEN));
    ASSERT_TRUE(opaque.PosStr(BCPosition(0, 0), "\tx"));
    EXPECT_EQ(40 * opaque.GetChrHeight('H'), CountColor(opaque, BCRectangle(0, 0, 40, 40), kGreen));
    EXPECT_TRUE(recorder.NumberedIds().empty());
}

BCApplication& App() {
    static BCApplication app;
    return app;
}

// A window that paints a box with whatever the device holds.
class BoxWindow : public BCMainWindow {
  public:
    BoxWindow() : BCMainWindow(&App()) {}
    long Paint(BCEvent*) override {
        painted = PutRect(BCRectangle(60, 10, 100, 50), BC_DRAW_FILLED);
        return 0;
    }
    int painted = 0;
};

TEST(WindowDeviceTest, AWindowPutsItsSettingsIntoEveryContext) {
    MsgRecorder recorder;
    RedBlue tools;
    BoxWindow window;
    window.SetWindowRect(BCRectangle(10, 10, 250, 150));
    ASSERT_TRUE(window.Create("devices"));
    window.Show(SW_SHOWNOACTIVATE);
    window.Update();
    window.SetPen(&tools.pen);
    window.SetBrush(&tools.brush);
    window.SetTextColor(BCColor(BC_COLOR_RED));
    window.SetBackMode(BC_BACK_TRANSPARENT);

    window.Invalidate(nullptr, 1);
    window.Update(); // paints through the adopted paint context
    EXPECT_TRUE(window.painted);
    // Each pair gets a new context from the system; the settings come along.
    ASSERT_TRUE(window.SelectDC());
    ASSERT_TRUE(window.PutRect(BCRectangle(10, 10, 50, 50), BC_DRAW_FILLED));
    ASSERT_TRUE(window.ReleaseDC());
    ASSERT_TRUE(window.PosStr(BCPosition(10, 60), "HHHH"));

    HDC dc = GetDC(window.GetHandle());
    EXPECT_EQ(kRed, ::GetPixel(dc, 10, 30));
    EXPECT_EQ(kBlue, ::GetPixel(dc, 30, 30));
    EXPECT_EQ(kRed, ::GetPixel(dc, 60, 30));
    EXPECT_EQ(kBlue, ::GetPixel(dc, 80, 30));
    int red = 0;
    for (int x = 10; x < 60; ++x)
        for (int y = 60; y < 80; ++y)
            red += ::GetPixel(dc, x, y) == kRed;
    ReleaseDC(window.GetHandle(), dc);
    EXPECT_GT(red, 0); // the text colour reached the context of the last pair
    window.SetPen(nullptr);
    window.SetBrush(nullptr);
    EXPECT_TRUE(recorder.NumberedIds().empty());
}

void DrawScene(const char* face) {
    BCColor red(BC_COLOR_RED), green(BC_COLOR_GREEN);
    BCPen pen(BC_PEN_DASH, 1, red);
    BCBrush solid{BCColor(BC_COLOR_BLUE)}, hatched{BC_HATCH_CROSS, green};
    BCBitmap picture(8, 8);
    BCBrush pattern(&picture);
    BCFont font(face);
    short xy[] = {0, 0, 20, 0, 20, 20};
    BCPolyline line(3, xy);
    BCMemoryDevice dev(64, 64);
    dev.SetBackground(&hatched);
    dev.SelectDC();
    dev.SetPen(&pen);
    dev.SetBrush(&solid);
    dev.PutRect(BCRectangle(0, 0, 30, 30), BC_DRAW_FILLED);
    dev.PutEllipse(BCRectangle(0, 0, 30, 30), BC_DRAW_OUTLINE);
    dev.PutPie(BCRectangle(0, 0, 30, 30), BCPosition(30, 15), BCPosition(15, 0), BC_DRAW_FILLED);
    dev.SetBrush(&pattern);
    dev.PutPolygon(&line, BCPosition(30, 30));
    dev.SetFont(&font);
    dev.PosStr(BCPosition(0, 40), "a\tb");
    dev.PutBitmap(BCPosition(40, 0), BCSize(), &picture, BC_ROP_COPY);
    dev.PutBitmap(BCPosition(40, 0), BCSize(16, 16), &picture, BC_ROP_XOR);
    dev.PutBitmap(BCPosition(40, 0), BCSize(16, 16), nullptr, BC_ROP_ERASE);
    dev.ReleaseDC();
    // The tools go before the device in the next scene: the device must let go of them.
    dev.SetPen(nullptr);
    dev.SetBrush(nullptr);
    dev.SetFont(nullptr);
}

TEST(GdiLeakTest, DrawingASceneAThousandTimesLeavesNoObjectBehind) {
    MsgRecorder recorder;
    BCModule module(GetModuleHandleA(nullptr), "test_devices", 0);
    BCFontList* faces = module.GetFontList();
    ASSERT_TRUE(faces && faces->Home());
    std::string face = faces->GetFontName();
    DrawScene(face.c_str()); // stock objects and shared buffers are made once
    unsigned long count = BCGetGdiObjectCount();
    ASSERT_GT(count, 0ul);
    for (int i = 0; i < 1000; ++i)
        DrawScene(face.c_str());
    EXPECT_EQ(count, BCGetGdiObjectCount());
    EXPECT_TRUE(recorder.NumberedIds().empty());
}

} // namespace
