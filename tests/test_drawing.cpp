#include <cstdio>
#include <memory>

#include "test_graphics.h"

namespace {

struct DrawingTest : Quiet {
    std::string path = "drawing-test.n2d";
    void TearDown() override {
        std::remove(path.c_str());
        Quiet::TearDown();
    }
};

// A w x h picture of one colour.
BCBitmap* Solid(short w, short h, unsigned long rgb) {
    std::vector<unsigned long> pixels(w * h, rgb);
    auto* bitmap = new BCBitmap();
    bitmap->SetPixels(w, h, pixels.data());
    return bitmap;
}

// Everything the scene's graphics point to; the application keeps it.
struct Pieces {
    Tools tools;
    BCPen wide{BC_PEN_SOLID, 3, BCColor(BC_COLOR_MAGENTA)};
    BCBrush hatch{BC_HATCH_CROSS, BCColor(BC_COLOR_RED)};
    std::unique_ptr<BCBitmap> picture{Solid(6, 4, 0x00FF00)};
    const short zigzag[8] = {0, 0, 10, 12, 20, 0, 30, 12};
    BCPolyline line{4, zigzag};
    BCFont font{"Arial"};
    BCGraphicList inner, innermost;
};

// One graphic of every kind, some nested two compounds deep.
void FillScene(BCDrawingData& drawing, Pieces& p) {
    p.font.SetBold(1);
    p.font.SetItalic(1);
    p.font.SetSize(BCSize(0, -15));
    auto* text = new BCTextGraphic(12, BCPosition(4, 150), BCSize(90, 20), "Drawn");
    text->SetFont(&p.font);
    text->SetForeColor(BCColor(BC_COLOR_BLUE));
    auto* box = new BCBoxGraphic(3, BCPosition(10, 10), BCSize(40, 30), &p.wide, &p.hatch);
    box->SetMode(1, 1, 0);
    auto* pie = new BCPieGraphic(9, BCPosition(0, 0), BCSize(30, 30), BCPosition(30, 15),
                                 BCPosition(15, 0), &p.tools.black, &p.tools.greenBrush);
    pie->SetMode(1, 1, 1);
    p.innermost.Append(nullptr, pie);
    p.innermost.Append(
        nullptr, new BCBitmapGraphic(13, BCPosition(35, 0), BCSize(12, 8), p.picture.get(), 1));
    p.inner.Append(nullptr, new BCCircleGraphic(7, BCPosition(0, 0), BCSize(20, 20), &p.tools.red,
                                                &p.tools.blue));
    p.inner.Append(nullptr,
                   new BCCompoundGraphic(15, BCPosition(5, 25), BCSize(60, 40), &p.innermost));
    BCGraphicObject* const scene[] = {
        new BCGraphicObject(70, 1, BCPosition(200, 150), BCSize(40, 16)),
        new BCDrawGraphic(71, 2, BCPosition(0, 0), BCSize(5, 5)),
        box,
        new BCLineGraphic(4, BCPosition(60, 10), BCSize(40, 30), &p.tools.green),
        new BCPolylineGraphic(5, BCPosition(110, 10), BCSize(31, 13), &p.line, &p.wide),
        new BCPolygonGraphic(6, BCPosition(110, 40), BCSize(31, 13), &p.line, &p.tools.red,
                             &p.tools.blue),
        new BCArcGraphic(8, BCPosition(160, 10), BCSize(40, 40), BCPosition(200, 30),
                         BCPosition(180, 10), &p.wide),
        new BCEllipseGraphic(10, BCPosition(10, 60), BCSize(50, 25), &p.tools.black, &p.hatch),
        new BCChordGraphic(11, BCPosition(70, 60), BCSize(40, 40), BCPosition(110, 80),
                           BCPosition(90, 60), &p.tools.red, &p.tools.greenBrush),
        text,
        new BCCompoundGraphic(14, BCPosition(150, 60), BCSize(90, 80), &p.inner)};
    for (BCGraphicObject* graphic : scene)
        ASSERT_EQ(1, drawing.Append(nullptr, graphic));
}

std::string Pixels(BCGraphicList* list) {
    BCMemoryDevice dev(260, 180);
    EXPECT_EQ(1, list->Draw(&dev));
    std::string pixels;
    for (short y = 0; y < 180; ++y)
        for (short x = 0; x < 260; ++x)
            pixels += LE32(dev.GetPixel(x, y));
    return pixels;
}

TEST_F(DrawingTest, EveryKindReopensEqualAndTheReopenedDrawingOwnsWhatItMade) {
    Pieces pieces;
    BCDrawingData drawing(nullptr, nullptr, "n2d", path.c_str(), 0, nullptr);
    EXPECT_EQ(157u, drawing.GetObjectType());
    FillScene(drawing, pieces);
    ASSERT_EQ(1, drawing.SaveFile());
    EXPECT_EQ(0u, drawing.GetLoadedCount()); // nothing of the application's is taken

    BCDrawingData reopened(nullptr, nullptr, "n2d", path.c_str(), 0, nullptr);
    ASSERT_EQ(1, reopened.LoadFile());
    ASSERT_EQ(11u, reopened.GetCount());
    // Saving what loaded gives the same record: every field, pen, brush, font and bitmap.
    EXPECT_EQ(RecordOf(drawing), RecordOf(reopened));
    EXPECT_EQ(Pixels(drawing.GetGraphics()), Pixels(reopened.GetGraphics()));
    auto* text = static_cast<BCTextGraphic*>(
        (reopened.GetGraphics()->GoToIndex(9), reopened.GetGraphics()->GetCrntItem()));
    ASSERT_TRUE(text->GetFont());
    EXPECT_EQ(Seq(1, 1, 0, -15),
              Seq(text->GetFont()->IsBold(), text->GetFont()->IsItalic(),
                  text->GetFont()->IsUnderline(), text->GetFont()->GetSize().GetHeight()));
    // Pens 9 + brushes 6 + polylines 2 + bitmap + font + two compound lists.
    EXPECT_EQ(21u, reopened.GetLoadedCount());
    std::unique_ptr<BCRenderableData> copy(reopened.Dup());
    ASSERT_TRUE(copy);
    EXPECT_EQ(RecordOf(drawing), RecordOf(*copy));
    ASSERT_EQ(1, reopened.Clear(1));
    EXPECT_EQ(Seq(0, 0), Seq(reopened.GetCount(), reopened.GetLoadedCount()));
}

TEST_F(DrawingTest, OpenCloseCyclesLeakNoGdiObject) {
    Pieces pieces;
    {
        BCDrawingData drawing(nullptr, nullptr, "n2d", path.c_str(), 0, nullptr);
        FillScene(drawing, pieces);
        ASSERT_EQ(1, drawing.SaveFile());
    }
    auto cycle = [&] {
        BCDrawingData drawing(nullptr, nullptr, "n2d", path.c_str(), 0, nullptr);
        ASSERT_EQ(1, drawing.LoadFile());
        BCMemoryDevice dev(260, 180);
        drawing.GetGraphics()->Draw(&dev);
        ASSERT_EQ(1, drawing.LoadFile()); // reopening frees the first load's pieces
    };
    cycle(); // the first cycle may make the system's shared objects
    const unsigned long before = BCGetGdiObjectCount();
    for (int i = 0; i < 100; ++i)
        cycle();
    EXPECT_EQ(before, BCGetGdiObjectCount());
}

TEST_F(DrawingTest, ForeignLaterOrCutRecordsAreRefused) {
    Pieces pieces;
    BCDrawingData drawing(nullptr, nullptr, "n2d", path.c_str(), 0, nullptr);
    FillScene(drawing, pieces);
    const std::string record = RecordOf(drawing);
    EXPECT_EQ("N2DW", record.substr(0, 4));
    EXPECT_EQ(LE32(1), record.substr(4, 4));
    BCGraphicList plain;
    std::string later = record;
    later[4] = 2;
    for (const std::string& bad : {RecordOf(plain), later, record.substr(0, record.size() / 2)}) {
        BCDrawingData other(nullptr, nullptr, "n2d", nullptr, 0, nullptr);
        EXPECT_EQ(0, LoadFrom(other, bad));
        other.Clear(1); // what a cut record made before the fault is freed with it
        EXPECT_EQ(0u, other.GetLoadedCount());
    }
}

TEST_F(DrawingTest, TopmostHitsFollowTheStrokeAndTheZOrder) {
    Tools tools;
    BCPen thick(BC_PEN_SOLID, 9, BCColor(BC_COLOR_RED));
    const short corner[6] = {0, 0, 40, 0, 40, 40};
    BCPolyline path(3, corner);
    BCGraphicList list;
    auto* box = new BCBoxGraphic(1, BCPosition(0, 0), BCSize(100, 100), &tools.red, &tools.blue);
    auto* diagonal = new BCLineGraphic(2, BCPosition(10, 10), BCSize(60, 60), &thick);
    auto* hook = new BCPolylineGraphic(3, BCPosition(50, 10), BCSize(41, 41), &path, nullptr);
    for (BCGraphicObject* graphic : std::vector<BCGraphicObject*>{box, diagonal, hook})
        list.Append(nullptr, graphic);
    struct Probe {
        short x, y, tolerance;
        BCGraphicObject* expected;
    } probes[] = {{40, 46, 0, diagonal}, // 4.2 pixels off the line: inside half of 9
                  {40, 48, 0, box},      // 5.7 pixels off: only the box below
                  {40, 48, 2, diagonal}, // the tolerance reaches it
                  {70, 10, 0, hook},     // on the first segment
                  {90, 30, 0, hook},     // on the second
                  {75, 30, 0, box},      // inside the hook's box, away from its stroke
                  {120, 50, 0, nullptr}, // outside everything
                  {-3, 50, 3, box}};     // the box grown by the tolerance
    for (const Probe& p : probes) {
        EXPECT_EQ(p.expected, list.GetTopHitObject(BCPosition(p.x, p.y), p.tolerance))
            << p.x << "," << p.y;
        EXPECT_EQ(p.expected, list.GetCrntItem());
    }

    ASSERT_EQ(1, list.SendToBack(hook));
    ASSERT_EQ(1, list.BringToFront(box));
    EXPECT_EQ(box, list.GetCrntItem());
    std::vector<BCGraphicObject*> order;
    for (int more = list.Home(); more; more = list.Next())
        order.push_back(static_cast<BCGraphicObject*>(list.GetCrntItem()));
    EXPECT_EQ((std::vector<BCGraphicObject*>{hook, diagonal, box}), order);
    EXPECT_EQ(box, list.GetTopHitObject(BCPosition(40, 40), 0)); // now above the line
    BCBoxGraphic stranger(9, BCPosition(0, 0), BCSize(5, 5), nullptr, nullptr);
    EXPECT_EQ(Seq(0, 0, 3),
              Seq(list.BringToFront(&stranger), list.SendToBack(nullptr), list.GetCount()));

    EXPECT_TRUE(BCIsDrawGraphicType(box->GetObjectType()) && BCIsDrawGraphicType(BC_GRAPHIC_PIE));
    EXPECT_FALSE(BCIsDrawGraphicType(BC_GRAPHIC_TEXT) || BCIsDrawGraphicType(BC_GRAPHIC_OBJECT));
    EXPECT_TRUE(BCIsGraphicType(BC_GRAPHIC_COMPOUND) && BCIsGraphicType(70));
    EXPECT_FALSE(BCIsGraphicType(69) || BCIsGraphicType(84));
    const BCPosition moved = BCPosition(30000, 5) + BCSize(5000, -10);
    EXPECT_EQ(Seq(-30536, -5), Seq(moved.GetX(), moved.GetY())); // 16-bit wrap
    EXPECT_TRUE(moved - BCPosition(-30546, 0) == BCSize(10, -5));
    EXPECT_TRUE(BCSize(3, 4) + BCSize(1, 1) - BCSize(0, 2) == BCSize(4, 3));
    BCPosition p(1, 1);
    p += BCSize(2, 3);
    p -= BCSize(1, 0);
    EXPECT_TRUE(p == BCPosition(2, 4) && p - BCSize(2, 4) == BCPosition(0, 0));
}

} // namespace
