#include <cstdio>
#include <cstring>

#include "test_devices.h"

namespace {

struct GraphicListTest : Quiet {};

std::string ListHead(unsigned flags, unsigned count) {
    return LE32(95) + LE32(flags) + LE32(0) + LE32(count) + LE32(0);
}

// Records where it was asked to paint and answers with a chosen result.
struct ProbeGraphic : BCGraphicObject {
    ProbeGraphic(const BCPosition& pos, int result)
        : BCGraphicObject(70, 0, pos, BCSize(10, 10)), result(result) {
        ++alive;
    }
    ~ProbeGraphic() override { --alive; }
    int Draw(BCDisplayDevice*) override { return seen.push_back(GetPos()), result; }
    int UnDraw(BCDisplayDevice* dev) override { return Draw(dev); }
    std::vector<BCPosition> seen;
    int result;
    static inline int alive = 0;
};

TEST_F(GraphicListTest, RecordBytesOfTextBitmapAndCompound) {
    BCFont font("Arial");
    BCTextGraphic text(9, BCPosition(-1, 2), BCSize(30, 12), "Hi"), back;
    text.SetForeColor(BCColor(BC_COLOR_RED));
    text.SetBackColor(BCColor(BC_COLOR_BLUE));
    text.SetBackMode(BC_BACK_OPAQUE);
    text.SetFont(&font);
    const std::string textRecord = Head(81, 9, -1, 2, 30, 12) + LE32(2) + "Hi" + LE32(8) +
                                   LE32(0x0000FF) + LE32(8) + LE32(0xFF0000) + LE32(2);
    EXPECT_EQ(textRecord, RecordOf(text));
    EXPECT_EQ(4u, back.GetBackMode());
    EXPECT_TRUE(Reloaded(back, textRecord) == textRecord && !back.GetFont()); // no font stored
    const char* storage = back.GetText();
    EXPECT_EQ((Seq{1, 1, 1}), (Seq{back.SetText("Ho"), storage == back.GetText(),
                                   back.SetText("Longer") && !strcmp("Longer", back.GetText()) &&
                                       back.SetText(nullptr) && !back.GetText()}));
    EveryShortRecordFails<BCTextGraphic>(textRecord, [] { return new BCTextGraphic(); });

    // Without a bitmap, a new empty one is saved and kept; a load reuses the graphic's bitmap.
    BCBitmapGraphic none(3, BCPosition(1, 1), BCSize(4, 4), nullptr, 15);
    EXPECT_EQ(Head(82, 3, 1, 1, 4, 4) + LE32(10) + LE32(0) + LE32(0) + LE32(15), RecordOf(none));
    std::unique_ptr<BCBitmap> made(none.GetBitmap()), red(Solid(1, 1, 0xFF0000));
    ASSERT_TRUE(made && made->IsEmpty());
    BCBitmapGraphic one(4, BCPosition(0, 0), BCSize(1, 1), red.get(), 1);
    BCBitmapGraphic into(0, BCPosition(), BCSize(), made.get(), 7);
    const std::string bitmapRecord =
        Head(82, 4, 0, 0, 1, 1) + LE32(10) + LE32(1) + LE32(1) + Bytes({0, 0, 255, 0}) + LE32(1);
    EXPECT_EQ(bitmapRecord + bitmapRecord, RecordOf(one) + Reloaded(into, bitmapRecord));
    EXPECT_EQ(made.get(), into.GetBitmap());
    EveryShortRecordFails<BCBitmapGraphic>(bitmapRecord, [] { return new BCBitmapGraphic(); });

    BCCompoundGraphic compound(5, BCPosition(10, 20), BCSize(3, 3), nullptr);
    const std::string compoundRecord = RecordOf(compound);
    std::unique_ptr<BCGraphicList> kept(compound.GetList()); // an empty list, kept
    ASSERT_TRUE(kept && kept->GetCount() == 0);
    EXPECT_EQ(Head(83, 5, 10, 20, 3, 3) + ListHead(unsigned(kept->GetFlags()), 0), compoundRecord);
}

TEST_F(GraphicListTest, BadStreamsFailCleanlyAndKeepWhatLoaded) {
    BCGraphicList list, nested;
    const std::string first = Head(81, 1, 0, 0, 20, 10) + LE32(1) + "A" + LE32(8) + LE32(0) +
                              LE32(8) + LE32(0xFFFFFF) + LE32(4);
    for (unsigned code : {84u, 69u}) { // what loaded before stays
        EXPECT_EQ(0, LoadFrom(list, ListHead(0, 2) + first + Head(code, 2, 0, 0, 1, 1)));
        EXPECT_EQ(1u, list.GetCount());
    }
    EXPECT_EQ((std::vector<unsigned>{10079u, 10079u}), Taken());

    // An object that fails to load frees what it made: a cut bitmap graphic leaves no picture.
    std::unique_ptr<BCBitmap> red(Solid(2, 2, 0xFF0000));
    BCBitmapGraphic source(1, BCPosition(0, 0), BCSize(2, 2), red.get(), 1);
    const std::string cut =
        ListHead(0, 1) + RecordOf(source).substr(0, RecordOf(source).size() - 2);
    const unsigned long objects = BCGetGdiObjectCount();
    EXPECT_TRUE(!LoadFrom(BCGraphicList(), cut) && objects == BCGetGdiObjectCount());
    // Compounds nest 64 deep; deeper ones, thousands too, are refused without exhausting the stack.
    for (int depth : {64, 65, 5000}) {
        std::string deep;
        for (int i = 0; i < depth; ++i)
            deep += Head(83, i, 1, 1, 1, 1) + ListHead(0, 1);
        EXPECT_EQ(depth == 64, LoadFrom(nested, ListHead(0, 1) + deep + first) == 1) << depth;
        EXPECT_EQ(depth == 64 ? 1u : 0u, nested.GetCount());
        FreeLoaded(&nested);
    }
    // A list record claiming items of a size is not a graphic list's.
    EXPECT_TRUE(!LoadFrom(nested, LE32(95) + LE32(0) + LE32(0) + LE32(1) + LE32(4) + first) &&
                !nested.GetItemSize());
    EXPECT_TRUE(!LoadFrom(nested, ListHead(0, 4000000) + first) && nested.GetCount() == 1u);
}

TEST_F(GraphicListTest, HitWalksAndOffsetDrawing) {
    BCGraphicList list;
    BCMemoryDevice dev(60, 60);
    EXPECT_TRUE(list.Draw(&dev) + list.UnDraw(&dev) == 2 &&
                !list.GetHitObject(BCPosition(0, 0), 0));
    auto *low = new ProbeGraphic(BCPosition(0, 0), 1),
         *aside = new ProbeGraphic(BCPosition(30, 30), 1),
         *high = new ProbeGraphic(BCPosition(5, 5), 1);
    for (ProbeGraphic* g : {low, aside, high})
        list.Append(nullptr, g);
    // A walk goes on from the last hit; (10, 10) is on the far edge of `low`.
    const BCPosition p(6, 6);
    const std::vector<BCGraphicObject*> hits{list.GetHitObject(p, 0), list.GetHitObject(p, 1),
                                             list.GetHitObject(p, 1),
                                             list.GetHitObject(BCPosition(10, 10), 0)};
    EXPECT_EQ((std::vector<BCGraphicObject*>{low, high, nullptr, high}), hits);

    aside->SetPos(BCPosition(32767, -32768));
    ASSERT_TRUE(list.Draw(BCPosition(1, -1), &dev) == 1 &&
                list.UnDraw(BCPosition(2, 3), &dev) == 1);
    EXPECT_EQ((std::vector<BCPosition>{BCPosition(-32768, 32767), BCPosition(-32767, -32765)}),
              aside->seen);
    EXPECT_TRUE(aside->GetPos() == BCPosition(32767, -32768) && high->seen[1] == BCPosition(7, 8));

    // A failing object ends the walk; the objects above it are not painted.
    list.Home();
    list.Insert(nullptr, new ProbeGraphic(BCPosition(1, 1), 0)); // in front of the head
    high->seen.clear();
    EXPECT_TRUE(!list.Draw(&dev) && !list.UnDraw(BCPosition(1, 1), &dev) && high->seen.empty());
    list.DeleteCrnt();
    dev.ReleaseDC(); // the failed Draw left its context selected
    list.Append(nullptr, nullptr);
    EXPECT_EQ(0, list.Draw(&dev));
    dev.ReleaseDC();
    EXPECT_EQ(low, list.GetHitObject(p, 0)); // null items are skipped

    const int probes = ProbeGraphic::alive;
    std::make_unique<BCGraphicList>()->Append(nullptr, new ProbeGraphic(BCPosition(0, 0), 1));
    EXPECT_EQ(probes, ProbeGraphic::alive);
    // A compound draws its list at its offset (the scene test); without one it draws nothing.
    BCGraphicList children;
    BCCompoundGraphic compound(2, BCPosition(10, 20), BCSize(1, 1), &children);
    EXPECT_EQ(&children, compound.SetList(nullptr));
    EXPECT_EQ(0, compound.Draw(&dev) + compound.UnDraw(&dev) + list.Draw(nullptr));
}

TEST_F(GraphicListTest, BackgroundModesAndRasterOperations) {
    BCMemoryDevice dev(80, 30);
    dev.SetTextColor(BCColor(BC_COLOR_GREEN));
    dev.SetBackColor(BCColor(BC_COLOR_RED));
    dev.SetBackMode(BC_BACK_TRANSPARENT);
    const BCRectangle box(0, 0, 80, 30);
    BCTextGraphic text(1, BCPosition(2, 2), BCSize(60, 20), "Wide text");
    // The text draws in `ink`, on a painted `back` or none, and then erases itself.
    auto drawn = [&](unsigned long ink, unsigned long back, bool painted) {
        EXPECT_GT(text.Draw(&dev), 0);
        const int inked = CountColor(dev, box, ink), backed = CountColor(dev, box, back);
        EXPECT_TRUE(inked > 5 && (painted ? backed > 50 : !backed)) << inked << " " << backed;
        EXPECT_EQ(1, text.UnDraw(&dev));
    };
    drawn(kGreen, kRed, false); // mode 4: the device's own colours and mode
    text.SetForeColor(BCColor(BC_COLOR_BLACK));
    text.SetBackColor(BCColor(BC_COLOR_BLUE));
    text.SetBackMode(BC_BACK_OPAQUE);
    drawn(kBlack, kBlue, true);
    EXPECT_TRUE(dev.GetTextColor() == BCColor(BC_COLOR_GREEN) &&
                dev.GetBackColor() == BCColor(BC_COLOR_RED) && dev.GetBackMode() == 1u);
    // Mode 1: its text colour, no background; a font of its own is put back afterwards.
    text.SetBackMode(BC_BACK_TRANSPARENT);
    dev.SetBackMode(BC_BACK_OPAQUE);
    BCFont font("Arial");
    EXPECT_EQ(nullptr, text.SetFont(&font));
    drawn(kBlack, kBlue, false);
    EXPECT_TRUE(dev.GetBackMode() == 2u && !dev.GetFont());
    EXPECT_EQ((Seq{0, 0}), (Seq{BCTextGraphic().Draw(&dev), CountNotWhite(dev)}));

    // Raster operation 1 copies; undrawing always fills with the background (15).
    std::unique_ptr<BCBitmap> red(Solid(4, 4, 0xFF0000));
    BCBitmapGraphic picture(2, BCPosition(10, 5), BCSize(8, 8), red.get(), BC_ROP_COPY);
    ASSERT_EQ(1, picture.Draw(&dev));
    EXPECT_EQ(128, CountColor(dev, BCRectangle(10, 5, 18, 13), kRed) + CountNotWhite(dev));
    BCBrush blue{BCColor(BC_COLOR_BLUE)};
    dev.SetBackground(&blue);
    EXPECT_EQ(1ul, picture.SetRasterOp(BC_ROP_XOR));
    ASSERT_EQ(1, picture.UnDraw(&dev));
    EXPECT_EQ(128, CountColor(dev, box, kBlue) + CountNotWhite(dev));
    dev.SetBackground(nullptr);
    EXPECT_EQ(red.get(), picture.SetBitmap(nullptr)); // then nothing is drawn, and no fault
    EXPECT_EQ((Seq{1, 64, 1}),
              (Seq{picture.Draw(&dev) + picture.Draw(nullptr) + picture.UnDraw(nullptr),
                   CountNotWhite(dev), BCBitmapGraphic().GetRasterOp()}));
}

struct DrawingTest : Quiet {
    std::string path = "drawing-test.n2d";
    void TearDown() override {
        std::remove(path.c_str());
        Quiet::TearDown();
    }
};

// What the list draws; `nested` counts the green of the bitmap two compounds deep.
std::string Pixels(BCGraphicList* list, int* nested = nullptr) {
    BCMemoryDevice dev(260, 180);
    EXPECT_EQ(1, list->Draw(&dev));
    if (nested) // 150 + 5 + 35, 60 + 25 + 0: stretched to 12 x 8
        *nested = CountColor(dev, BCRectangle(188, 83, 204, 95), kGreen);
    return Snapshot(dev);
}

TEST_F(DrawingTest, EveryKindReopensEqualTheReopenedDrawingOwnsWhatItMadeAndBadRecordsAreRefused) {
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
    int nested = 0;
    EXPECT_EQ(Pixels(drawing.GetGraphics(), &nested), Pixels(reopened.GetGraphics()));
    EXPECT_EQ(12 * 8, nested);
    // Pens 9 + brushes 6 + polylines 2 + bitmap + font + two compound lists.
    EXPECT_EQ(21u, reopened.GetLoadedCount());
    std::unique_ptr<BCRenderableData> copy(reopened.Dup());
    ASSERT_TRUE(copy);
    EXPECT_EQ(RecordOf(drawing), RecordOf(*copy));
    const unsigned long objects = BCGetGdiObjectCount();
    for (int i = 0; i < 100; ++i) {
        BCMemoryDevice dev(260, 180);
        ASSERT_TRUE(reopened.LoadFile() && reopened.GetGraphics()->Draw(&dev));
    }
    EXPECT_EQ(objects, BCGetGdiObjectCount());

    // A foreign, later or cut record is refused; clearing frees what a cut one made.
    const std::string record = RecordOf(drawing);
    EXPECT_EQ("N2DW" + LE32(1), record.substr(0, 8));
    std::string later = record;
    later[4] = 2;
    BCGraphicList plain;
    for (const std::string& bad : {RecordOf(plain), later, record.substr(0, record.size() / 2)})
        EXPECT_EQ((Seq{0, 1, 0, 0}), (Seq{LoadFrom(reopened, bad), reopened.Clear(1),
                                          reopened.GetCount(), reopened.GetLoadedCount()}));
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
    for (const Probe& p : probes)
        EXPECT_TRUE(list.GetTopHitObject(BCPosition(p.x, p.y), p.tolerance) == p.expected &&
                    list.GetCrntItem() == p.expected)
            << p.x << "," << p.y;

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
}

} // namespace
