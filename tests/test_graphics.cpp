#include <cstdlib>

#include "test_devices.h"

namespace {

struct DrawingTest : Quiet {};
struct GraphicObjectTest : Quiet {};
struct StreamTest : Quiet {};

TEST_F(GraphicObjectTest, HitTestIsHalfOpenAndSettersGiveBackTheOldValues) {
    BCGraphicObject g(70, 7, BCPosition(10, 20), BCSize(5, 4));
    EXPECT_EQ(Nums(1, 1, 0, 0, 0, 0),
              Nums(g.IsHit(BCPosition(10, 20)), g.IsHit(BCPosition(14, 23)),
                   g.IsHit(BCPosition(15, 20)), g.IsHit(BCPosition(10, 24)),
                   g.IsHit(BCPosition(9, 20)), g.IsHit(BCPosition(10, 19))));
    EXPECT_TRUE(g.SetPos(BCPosition(32000, 0)) == BCPosition(10, 20) &&
                g.SetSize(BCSize(1000, 10)) == BCSize(5, 4) && g.IsHit(BCPosition(32767, 9)) &&
                !g.IsHit(BCPosition(-32768, 5)) && g.SetID(9) == 7u);
    EXPECT_EQ(0, LoadFrom(g, Head(74, 1, 2, 3, 4, 5))); // another class's record

    // The base draws its class name at its position; erasing is a no-op.
    BCGraphicObject named(70, 1, BCPosition(2, 2), BCSize(50, 20));
    BCMemoryDevice dev(120, 30);
    EXPECT_TRUE(named.Draw(&dev) && CountNotWhite(dev) > 20);
    EXPECT_EQ(2, ColumnsOf(dev, 0, 30, kBlack).first / 2 * 2); // at x 2 (or 3, the bearing)
    EXPECT_EQ(1, named.UnDraw(&dev) - named.Draw(nullptr));

    BCDrawGraphic d(71);
    EXPECT_EQ((Seq{-1, 0, -1, -2}),
              (Seq{d.GetFrame() + d.GetFill(), (d.SetFill(2), d.GetFill()),
                   (d.SetFill(1), d.SetFrame(2), d.GetFill() + d.GetFrame()),
                   (d.SetMode(3, 0, 5), d.GetFrame() + d.GetFill() + d.GetOpaque())}));
    Tools t;
    EXPECT_TRUE(!d.SetPen(&t.red) && d.SetPen(&t.black) == &t.red && !d.SetBrush(&t.blue) &&
                d.SetBrush(nullptr) == &t.blue);
}

TEST_F(GraphicObjectTest, TypeCodesNamesAndDumps) {
    const char* names[] = {"GraphicObject",  "DrawGraphic",    "LineGraphic", "PolylineGraphic",
                           "BoxGraphic",     "PolygonGraphic", "ArcGraphic",  "CircleGraphic",
                           "EllipseGraphic", "ChordGraphic",   "PieGraphic",  "TextGraphic",
                           "BitmapGraphic",  "CompoundGraphic"};
    BCGraphicList maker;
    for (unsigned code = 70; code <= 83; ++code) {
        BCGraphicObject* made = nullptr;
        ASSERT_EQ(1, maker.MakeEmptyObject(code, made));
        std::unique_ptr<BCGraphicObject> shape(made);
        EXPECT_EQ(code, shape->GetObjectType());
        EXPECT_EQ(std::string("BC") + names[code - 70], shape->GetObjectTypeStr());
        auto* drawn = dynamic_cast<BCDrawGraphic*>(shape.get());
        EXPECT_TRUE(!drawn || drawn->GetFrame() == -1) << code; // framed where they have a pen
    }
    BCGraphicObject plain(70, 5, BCPosition(-1, 2), BCSize(3, 4));
    BCGraphicObject* out = &plain;
    EXPECT_TRUE(!maker.MakeEmptyObject(95, out) && out == &plain);
    EXPECT_EQ((std::vector<unsigned>{10079u}), Taken());

    const BCPosition o(0, 0);
    const BCSize ten(10, 10);
    BCBoxGraphic b(6, BCPosition(1, 2), BCSize(3, 4), nullptr, nullptr);
    b.SetFill(1);
    BCPieGraphic p(9, o, ten, BCPosition(5, 6), BCPosition(7, 8), nullptr, nullptr);
    p.SetMode(0, 0, 1);
    plain.Display(nullptr);
    b.Display("B: ");
    BCArcGraphic(8, o, ten, BCPosition(1, 2), BCPosition(3, -4), nullptr).Display("A ");
    p.Display(nullptr);
    BCChordGraphic(1, o, BCSize(1, 1), BCPosition(2, 3), BCPosition(4, 5), nullptr, nullptr)
        .Display("C ");
    EXPECT_EQ(
        "wID=5, coX=-1, coY=2, coW=3, coH=4|"
        "B: blFrame=-1, blFill=-1, blOpaque=0, wID=6, coX=1, coY=2, coW=3, coH=4|"
        "A coStartX=1, coStartY=2, coEndX=3, coEndY=-4blFrame=-1, blFill=0, blOpaque=0, wID=8, "
        "coX=0, coY=0, coW=10, coH=10|"
        "coStartX=5, coStartY=6, coEndX=7, coEndY=8blFrame=0, blFill=0, blOpaque=-1, wID=9, "
        "coX=0, coY=0, coW=10, coH=10|"
        "C coStartX=2, coStartY=3, coEndX=4, coEndY=5blFrame=-1, blFill=0, blOpaque=0, wID=1, "
        "coX=0, coY=0, coW=1, coH=1|",
        recorder.Texts());
    recorder.Clear();
}

TEST_F(DrawingTest, ShapesPaintEdgesAndInteriorsAndEraseWithWhiteAndBackground) {
    Tools t;
    BCMemoryDevice dev(200, 120), c(100, 60);
    const BCRectangle all(0, 0, 200, 120);
    dev.SetPen(&t.black);
    BCBoxGraphic box(1, BCPosition(10, 10), BCSize(20, 20), &t.red, &t.blue);
    box.SetFill(1);
    EXPECT_EQ((Seq{1, 18 * 18, 400}),
              (Seq{box.Draw(&dev), CountColor(dev, all, kBlue), CountNotWhite(dev)}));
    EXPECT_TRUE(dev.GetPen() == &t.black && dev.GetBrush() == BCGetWhiteBrush() &&
                dev.GetBackMode() == unsigned(BC_BACK_OPAQUE) && dev.GetSelectCount() == 0u);
    dev.SetBackground(&t.greenBrush);
    EXPECT_EQ((Seq{1, 18 * 18, 18 * 18}),
              (Seq{box.UnDraw(&dev), CountColor(dev, all, kGreen), CountNotWhite(dev)}));
    dev.SetBackground(nullptr);

    // An unfilled ellipse leaves what lies inside it, drawing and erasing alike.
    BCBoxGraphic under(2, BCPosition(100, 10), BCSize(60, 40), &t.black, &t.blue);
    under.SetFill(1);
    under.Draw(&dev);
    BCEllipseGraphic ellipse(3, BCPosition(100, 10), BCSize(60, 40), &t.red, &t.greenBrush);
    EXPECT_TRUE(ellipse.Draw(&dev) && dev.GetPixel(130, 10) == kRed && ellipse.UnDraw(&dev) &&
                dev.GetPixel(130, 10) == kWhite && dev.GetPixel(130, 30) == kBlue);

    // A circle is the largest one centred in its box; a frameless filled one has no edge.
    BCCircleGraphic circle(4, BCPosition(10, 10), BCSize(60, 40), &t.red, &t.blue);
    circle.SetMode(0, 1, 0);
    EXPECT_EQ(1, circle.Draw(&c));
    const std::pair<int, int> columns = ColumnsOf(c, 0, 60, kBlue);
    EXPECT_TRUE(std::abs(columns.first - 20) <= 1 && std::abs(columns.second - 60) <= 1 &&
                !CountColor(c, BCRectangle(0, 0, 100, 60), kRed));
    BCLineGraphic line(5, BCPosition(60, 60), BCSize(-40, -40), &t.red);
    EXPECT_TRUE(circle.UnDraw(&c) && !CountNotWhite(c));
    for (BCGraphicObject* g :
         std::initializer_list<BCGraphicObject*>{&box, &line, &ellipse, &circle})
        EXPECT_EQ(0, g->Draw(nullptr) + g->UnDraw(nullptr));
}

TEST_F(DrawingTest, ShapesWithoutToolsOfTheirOwnLeaveTheDeviceAsTheyFoundIt) {
    Tools t;
    BCMemoryDevice dev(60, 60), quirk(100, 50);
    BCLineGraphic line(1, BCPosition(5, 5), BCSize(40, 0), nullptr);
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(1, line.Draw(&dev));
        EXPECT_EQ(40, CountColor(dev, BCRectangle(0, 0, 60, 60), kBlack)) << round;
        EXPECT_TRUE(line.UnDraw(&dev) && !CountNotWhite(dev));
    }
    // A filled box without a frame gives the application its pen and brush back.
    BCBoxGraphic box(2, BCPosition(10, 10), BCSize(20, 20), nullptr, &t.blue);
    box.SetMode(0, 1, 0);
    for (int (BCBoxGraphic::*paint)(BCDisplayDevice*) :
         {&BCBoxGraphic::Draw, &BCBoxGraphic::UnDraw}) {
        ASSERT_EQ(1, (box.*paint)(&dev));
        EXPECT_TRUE(dev.GetPen() == BCGetBlackPen() && dev.GetBrush() == BCGetWhiteBrush());
    }
    dev.MoveTo(BCPosition(0, 50));
    dev.LineTo(BCPosition(60, 50));
    EXPECT_EQ(60, CountColor(dev, BCRectangle(0, 50, 60, 51), kBlack));

    // A frame without a pen of its own puts back the pen of an earlier setup, on purpose.
    quirk.SetPen(&t.black);
    BCBoxGraphic own(3, BCPosition(5, 5), BCSize(10, 10), &t.red, nullptr);
    own.Draw(&quirk); // remembers the black pen
    quirk.SetPen(&t.green);
    BCBoxGraphic borrowed(4, BCPosition(30, 5), BCSize(10, 10), nullptr, nullptr);
    EXPECT_TRUE(borrowed.Draw(&quirk) == 1 && quirk.GetPixel(30, 5) == kGreen &&
                quirk.GetPixel(35, 10) == kWhite && quirk.GetPen() == &t.black);
}

TEST_F(DrawingTest, ArcFamilyAndPointLists) {
    Tools t;
    // Counter-clockwise from the right-hand point to the left-hand one: the upper half.
    BCMemoryDevice dev(200, 120);
    const BCSize size(40, 40);
    BCArcGraphic arc(1, BCPosition(10, 10), size, BCPosition(60, 30), BCPosition(0, 30), &t.red);
    BCPieGraphic pie(2, BCPosition(60, 10), size, BCPosition(110, 30), BCPosition(50, 30), &t.red,
                     &t.blue);
    BCChordGraphic chord(3, BCPosition(110, 10), size, BCPosition(160, 30), BCPosition(100, 30),
                         &t.red, &t.blue);
    const std::initializer_list<BCDrawGraphic*> family{&arc, &pie, &chord};
    for (BCDrawGraphic* shape : family) {
        shape->SetFill(1); // the arc has no interior whatever the flag
        EXPECT_EQ(1, shape->Draw(&dev));
    }
    const unsigned long arcs[][3] = {{30, 10, kRed},  {30, 49, kWhite}, {30, 20, kWhite},
                                     {80, 20, kBlue}, {80, 40, kWhite}, {130, 20, kBlue},
                                     {130, 10, kRed}};
    ExpectPixels(dev, arcs);
    for (BCDrawGraphic* shape : family)
        EXPECT_EQ(1, shape->UnDraw(&dev) - shape->Draw(nullptr));
    EXPECT_EQ(0, CountNotWhite(dev));

    // One point draws nothing; points move with 16-bit wrap: -32768 + -32718 lands on x = 50.
    const short one[] = {5, 5}, farPts[] = {-32768, 0, -32768, 20};
    BCPolyline single(1, one), wrapped(2, farPts);
    BCPolylineGraphic wrap(6, BCPosition(-32718, 10), BCSize(0, 0), nullptr, &t.red);
    EXPECT_TRUE(!wrap.Draw(&dev) && !wrap.SetPolyline(&single) && !wrap.Draw(&dev));
    wrap.SetPolyline(&wrapped);
    EXPECT_TRUE(wrap.Draw(&dev) && dev.GetPixel(50, 29) == kRed && CountNotWhite(dev) == 20 &&
                wrap.UnDraw(&dev));
    const short square[] = {0, 0, 20, 0, 20, 20, 0, 20};
    BCPolyline outline(4, square);
    BCPolygonGraphic polygon(7, BCPosition(100, 50), BCSize(20, 20), &outline, &t.red, &t.blue);
    polygon.SetFill(1);
    EXPECT_NE(0, polygon.Draw(&dev));
    const unsigned long polygonPixels[][3] = {{120, 70, kRed}, {110, 60, kBlue}, {121, 60, kWhite}};
    ExpectPixels(dev, polygonPixels);
    EXPECT_TRUE(polygon.UnDraw(&dev) && !CountNotWhite(dev));
    EXPECT_EQ(0, polygon.Draw(nullptr) + polygon.UnDraw(nullptr) + wrap.UnDraw(nullptr));
}

TEST_F(StreamTest, DrawGraphicSaveAndLoadDifferAndEachShapeAddsItsOwnFields) {
    Tools t;
    // Flags off: no presence marks; on: pen and brush marks, word 1, the tools' own records.
    BCBoxGraphic off(3, BCPosition(1, -2), BCSize(30, 40), &t.red, nullptr), back;
    BCBoxGraphic full(4, BCPosition(5, 6), BCSize(7, 8), &t.red, &t.blue);
    BCBoxGraphic bare(5, BCPosition(0, 0), BCSize(2, 2), nullptr, nullptr);
    off.SetMode(0, 0, 0);
    full.SetFill(1);
    const std::string pen = RecordOf(t.red), brush = RecordOf(t.blue);
    EXPECT_EQ(Head(74, 3, 1, -2, 30, 40) + LE32(0) + pen, RecordOf(off));
    EXPECT_EQ(Head(74, 4, 5, 6, 7, 8) + LE32(1) + LE32(1) + LE32(1) + pen + brush, RecordOf(full));
    EXPECT_EQ(Head(74, 5, 0, 0, 2, 2) + LE32(0) + LE32(0) + LE32(1), RecordOf(bare));

    // Load reads a flags byte where Save wrote a pen mark: its own record is not read back.
    EXPECT_TRUE(!LoadFrom(back, RecordOf(bare)) && back.GetID() == 5u && !back.GetPen());
    delete back.GetBrush();
    ASSERT_EQ(
        1, LoadFrom(back, Head(74, 9, 10, 10, 20, 20) + "\x07" + LE32(1) + LE32(1) + pen + brush));
    std::unique_ptr<BCPen> madePen(back.GetPen());
    std::unique_ptr<BCBrush> madeBrush(back.GetBrush());
    EXPECT_TRUE(back.GetFrame() + back.GetFill() + back.GetOpaque() == -3 && madePen &&
                RecordOf(*madePen) == pen && madeBrush && RecordOf(*madeBrush) == brush);
    const std::string good = Head(74, 2, 0, 0, 1, 1) + "\x02" + LE32(0) + LE32(0);
    ASSERT_EQ(1, LoadFrom(back, good));
    EXPECT_TRUE(back.GetFill() - back.GetFrame() == -1 && !back.GetPen() && !back.GetBrush());
    EXPECT_EQ(0, LoadFrom(BCCircleGraphic(), good));
    EveryShortRecordFails<BCBoxGraphic>(good, [] { return new BCBoxGraphic(); });
    std::ostringstream bad = OutStream();
    bad.setstate(std::ios::badbit);
    EXPECT_EQ(0, full.Save(bad) + BCGraphicObject(70).Save(bad) + BCBitmapGraphic().Save(bad));
    // A disk that fills up inside the pen's record fails the save too.
    struct FullDisk : std::streambuf {
        int room = 30;
        int overflow(int c) override { return room-- > 0 ? c : EOF; }
    } disk;
    std::ostream filled(&disk);
    EXPECT_EQ(0, full.Save(filled));

    // Arcs, chords and pies add their ends; point lists their polyline.
    const std::string drawRec = LE32(0) + LE32(0) + LE32(1), flags = "\x01" + LE32(0) + LE32(0);
    const BCPosition at(2, 3), start(-6, 7), end(8, -9);
    BCArcGraphic arc(1, at, BCSize(4, 5), start, end, nullptr), freshArc;
    BCPieGraphic pie(1, at, BCSize(4, 5), start, end, nullptr, nullptr), freshPie;
    BCChordGraphic chord(1, at, BCSize(4, 5), start, end, nullptr, nullptr);
    BCDrawGraphic* shapes[] = {&arc, &pie, &chord};
    BCDrawGraphic* fresh[] = {&freshArc, &freshPie};
    const unsigned codes[] = {76, 80, 79};
    for (int i = 0; i < 3; ++i) {
        const std::string loadable =
            Head(codes[i], 1, 0, 0, 10, 10) + flags + LE16(11) + LE16(12) + LE16(13) + LE16(14);
        EXPECT_EQ(Head(codes[i], 1, 2, 3, 4, 5) + drawRec + LE16(-6) + LE16(7) + LE16(8) + LE16(-9),
                  RecordOf(*shapes[i]));
        EXPECT_EQ(0, LoadFrom(*shapes[i], loadable.substr(0, 20))); // cut in the base
        EXPECT_EQ(1, LoadFrom(*shapes[i], loadable)) << codes[i];
        // Cut after two coordinates: the first two are taken and the load fails.
        EXPECT_TRUE(i == 2 || !LoadFrom(*fresh[i], loadable.substr(0, 29)));
    }
    EXPECT_TRUE(chord.GetEnd() == BCPosition(13, 14) && freshArc.GetEnd() == BCPosition(0, 0) &&
                freshArc.GetStart() == BCPosition(11, 12) &&
                freshPie.GetStart() == BCPosition(11, 12));

    // Point lists: the polyline's own record follows; Load always makes a new polyline.
    const short pts[] = {1, 2, 3, 4};
    BCPolyline line(2, pts);
    BCPolylineGraphic open(1, BCPosition(0, 0), BCSize(1, 1), &line, nullptr), missing;
    BCPolygonGraphic closed;
    EXPECT_EQ(Head(73, 1, 0, 0, 1, 1) + drawRec + RecordOf(line), RecordOf(open));
    std::ostringstream os = OutStream();
    EXPECT_TRUE(!closed.Save(os) && os.str().empty() && !closed.SetPolyline(&line));
    EXPECT_EQ(1, LoadFrom(closed, Head(75, 1, 0, 0, 1, 1) + flags + RecordOf(line)));
    std::unique_ptr<BCPolyline> made(closed.GetPolyline());
    EXPECT_TRUE(made.get() != &line && made->GetPoint(1) == BCPosition(3, 4));
    EXPECT_EQ(0, LoadFrom(missing, Head(73, 1, 0, 0, 1, 1) + flags)); // the polyline is missing
    delete missing.GetPolyline();
}

} // namespace
