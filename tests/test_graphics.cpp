#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <sstream>
#include <string>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"
#include "test_devices.h"

namespace {

struct Tools {
    BCPen red{BC_PEN_SOLID, 1, BCColor(BC_COLOR_RED)};
    BCPen black{BC_PEN_SOLID, 1, BCColor(BC_COLOR_BLACK)};
    BCPen green{BC_PEN_SOLID, 1, BCColor(BC_COLOR_GREEN)};
    BCBrush blue{BCColor(BC_COLOR_BLUE)};
    BCBrush greenBrush{BCColor(BC_COLOR_GREEN)};
};

// The type code word and the 12-byte field block that every graphic record begins with.
std::string Head(unsigned code, unsigned id, short x, short y, short w, short h) {
    return LE32(code) + LE32(id) + LE16(x) + LE16(y) + LE16(w) + LE16(h);
}

std::string Saved(BCObject& object) {
    std::ostringstream os = OutStream();
    EXPECT_TRUE(object.Save(os));
    return os.str();
}

TEST(GraphicObjectTest, HitTestIsHalfOpenAndSettersGiveBackTheOldValues) {
    MsgRecorder recorder;
    BCGraphicObject g(70, 7, BCPosition(10, 20), BCSize(5, 4));
    EXPECT_TRUE(g.IsHit(BCPosition(10, 20)));
    EXPECT_TRUE(g.IsHit(BCPosition(14, 23)));
    EXPECT_FALSE(g.IsHit(BCPosition(15, 20)));
    EXPECT_FALSE(g.IsHit(BCPosition(10, 24)));
    EXPECT_FALSE(g.IsHit(BCPosition(9, 20)));
    EXPECT_FALSE(g.IsHit(BCPosition(10, 19)));

    // The far edge is summed without 16-bit wrap.
    EXPECT_EQ(BCPosition(10, 20), g.SetPos(BCPosition(32000, 0)));
    EXPECT_EQ(BCSize(5, 4), g.SetSize(BCSize(1000, 10)));
    EXPECT_TRUE(g.IsHit(BCPosition(32500, 5)));
    EXPECT_TRUE(g.IsHit(BCPosition(32767, 9)));
    EXPECT_FALSE(g.IsHit(BCPosition(-32768, 5)));
    g.SetSize(BCSize(0, 10));
    EXPECT_FALSE(g.IsHit(BCPosition(32000, 5)));
    g.SetSize(BCSize(-3, 10));
    EXPECT_FALSE(g.IsHit(BCPosition(32000, 5)));
    EXPECT_EQ(7u, g.SetID(9));
    EXPECT_EQ(9u, g.GetID());

    // The base draws its class name at its position; erasing is a no-op.
    BCGraphicObject named(70, 1, BCPosition(2, 2), BCSize(50, 20));
    BCMemoryDevice dev(120, 30);
    EXPECT_TRUE(named.Draw(&dev));
    EXPECT_GT(CountNotWhite(dev), 20);
    EXPECT_EQ(kWhite, dev.GetPixel(0, 0));
    EXPECT_EQ(1, named.UnDraw(&dev));
    EXPECT_EQ(0, named.Draw(nullptr));

    BCDrawGraphic d(71);
    EXPECT_EQ(-1, d.GetFrame());
    EXPECT_EQ(0, d.GetFill());
    d.SetFill(2); // only bit 0 counts
    EXPECT_EQ(0, d.GetFill());
    d.SetFill(1);
    EXPECT_EQ(-1, d.GetFill());
    d.SetFrame(2);
    EXPECT_EQ(0, d.GetFrame());
    d.SetMode(3, 0, 5);
    EXPECT_EQ(-1, d.GetFrame());
    EXPECT_EQ(0, d.GetFill());
    EXPECT_EQ(-1, d.GetOpaque());
    Tools t;
    EXPECT_EQ(nullptr, d.SetPen(&t.red));
    EXPECT_EQ(&t.red, d.SetPen(&t.black));
    EXPECT_EQ(nullptr, d.SetBrush(&t.blue));
    EXPECT_EQ(&t.blue, d.SetBrush(nullptr));
    EXPECT_EQ(0u, recorder.Count());
}

TEST(GraphicObjectTest, TypeCodesNamesAndDumps) {
    MsgRecorder recorder;
    BCLineGraphic line;
    BCPolylineGraphic polyline;
    BCBoxGraphic box;
    BCPolygonGraphic polygon;
    BCArcGraphic arc;
    BCCircleGraphic circle;
    BCEllipseGraphic ellipse;
    BCChordGraphic chord;
    BCPieGraphic pie;
    const BCObject* all[] = {&line,   &polyline, &box,   &polygon, &arc,
                             &circle, &ellipse,  &chord, &pie};
    const char* names[] = {"BCLineGraphic",    "BCPolylineGraphic", "BCBoxGraphic",
                           "BCPolygonGraphic", "BCArcGraphic",      "BCCircleGraphic",
                           "BCEllipseGraphic", "BCChordGraphic",    "BCPieGraphic"};
    for (unsigned i = 0; i < 9; ++i) {
        EXPECT_EQ(72 + i, all[i]->GetObjectType());
        EXPECT_STREQ(names[i], all[i]->GetObjectTypeStr());
    }
    EXPECT_STREQ("BCDrawGraphic", BCDrawGraphic(71).GetObjectTypeStr());

    BCGraphicObject g(70, 5, BCPosition(-1, 2), BCSize(3, 4));
    g.Display(nullptr);
    BCBoxGraphic b(6, BCPosition(1, 2), BCSize(3, 4), nullptr, nullptr);
    b.SetFill(1);
    b.Display("B: ");
    BCArcGraphic a(8, BCPosition(0, 0), BCSize(10, 10), BCPosition(1, 2), BCPosition(3, -4),
                   nullptr);
    a.Display("A ");
    BCPieGraphic p(9, BCPosition(0, 0), BCSize(10, 10), BCPosition(5, 6), BCPosition(7, 8), nullptr,
                   nullptr);
    p.SetMode(0, 0, 1);
    p.Display(nullptr);
    ASSERT_EQ(4u, recorder.Count());
    EXPECT_EQ(BC_MSG_DIAGNOSTIC, recorder.Entries()[0].kind);
    EXPECT_EQ("wID=5, coX=-1, coY=2, coW=3, coH=4", recorder.Entries()[0].text);
    EXPECT_EQ("B: blFrame=-1, blFill=-1, blOpaque=0, wID=6, coX=1, coY=2, coW=3, coH=4",
              recorder.Entries()[1].text);
    EXPECT_EQ("A coStartX=1, coStartY=2, coEndX=3, coEndY=-4blFrame=-1, blFill=0, "
              "blOpaque=0, wID=8, coX=0, coY=0, coW=10, coH=10",
              recorder.Entries()[2].text);
    EXPECT_EQ("coStartX=5, coStartY=6, coEndX=7, coEndY=8blFrame=0, blFill=0, blOpaque=-1, "
              "wID=9, coX=0, coY=0, coW=10, coH=10",
              recorder.Entries()[3].text);
}

TEST(DrawingTest, ShapesPaintEdgesAndInteriorsAndEraseWithWhiteAndBackground) {
    MsgRecorder recorder;
    Tools t;
    BCMemoryDevice dev(200, 120);
    dev.SetPen(&t.black);

    BCBoxGraphic box(1, BCPosition(10, 10), BCSize(20, 20), &t.red, &t.blue);
    box.SetFill(1);
    EXPECT_EQ(1, box.Draw(&dev));
    EXPECT_EQ(kRed, dev.GetPixel(10, 10));
    EXPECT_EQ(kRed, dev.GetPixel(29, 29));
    EXPECT_EQ(kBlue, dev.GetPixel(20, 20));
    EXPECT_EQ(kWhite, dev.GetPixel(30, 20));
    EXPECT_EQ(kWhite, dev.GetPixel(9, 9));
    EXPECT_EQ(400, CountNotWhite(dev));
    // The device gets its own settings back.
    EXPECT_EQ(&t.black, dev.GetPen());
    EXPECT_EQ(nullptr, dev.GetBrush());
    EXPECT_EQ(unsigned(BC_BACK_OPAQUE), dev.GetBackMode());
    EXPECT_EQ(0u, dev.GetSelectCount());

    // Erasing repaints the edge white and the inside with the background brush.
    dev.SetBackground(&t.greenBrush);
    EXPECT_EQ(1, box.UnDraw(&dev));
    EXPECT_EQ(kWhite, dev.GetPixel(10, 10));
    EXPECT_EQ(kGreen, dev.GetPixel(20, 20));
    EXPECT_EQ(0, CountColor(dev, BCRectangle(0, 0, 200, 120), kRed));
    EXPECT_EQ(18 * 18, CountColor(dev, BCRectangle(0, 0, 200, 120), kGreen));
    dev.SetBackground(nullptr);

    // An unfilled ellipse leaves what lies inside it, drawing and erasing alike.
    BCBoxGraphic under(2, BCPosition(100, 10), BCSize(60, 40), &t.black, &t.blue);
    under.SetFill(1);
    under.Draw(&dev);
    BCEllipseGraphic ellipse(3, BCPosition(100, 10), BCSize(60, 40), &t.red, &t.greenBrush);
    EXPECT_EQ(1, ellipse.Draw(&dev));
    EXPECT_EQ(kRed, dev.GetPixel(130, 10));
    EXPECT_EQ(kBlue, dev.GetPixel(130, 30));
    EXPECT_EQ(1, ellipse.UnDraw(&dev));
    EXPECT_EQ(kWhite, dev.GetPixel(130, 10));
    EXPECT_EQ(kBlue, dev.GetPixel(130, 30));
    EXPECT_EQ(0, CountColor(dev, BCRectangle(0, 0, 200, 120), kRed));

    // A circle is the largest one centred in its box; a frameless filled one has no edge.
    BCMemoryDevice c(100, 60);
    BCCircleGraphic circle(4, BCPosition(10, 10), BCSize(60, 40), &t.red, &t.blue);
    circle.SetMode(0, 1, 0);
    EXPECT_EQ(1, circle.Draw(&c));
    EXPECT_EQ(kBlue, c.GetPixel(40, 30));
    EXPECT_EQ(kWhite, c.GetPixel(12, 30));
    EXPECT_EQ(kWhite, c.GetPixel(68, 30));
    EXPECT_EQ(0, CountColor(c, BCRectangle(0, 0, 100, 60), kRed));

    // A line with a negative size runs up and to the left.
    BCMemoryDevice l(100, 100);
    BCLineGraphic line(5, BCPosition(60, 60), BCSize(-40, -40), &t.red);
    EXPECT_EQ(1, line.Draw(&l));
    EXPECT_EQ(kRed, l.GetPixel(40, 40));
    EXPECT_EQ(kRed, l.GetPixel(21, 21));
    EXPECT_EQ(kWhite, l.GetPixel(70, 70));
    EXPECT_EQ(1, line.UnDraw(&l));
    EXPECT_EQ(0, CountNotWhite(l));

    EXPECT_EQ(0, box.Draw(nullptr));
    EXPECT_EQ(0, line.UnDraw(nullptr));
    EXPECT_EQ(0, ellipse.Draw(nullptr));
    EXPECT_EQ(0u, recorder.Count());
}

TEST(DrawingTest, ArcFamilyAndPointLists) {
    MsgRecorder recorder;
    Tools t;
    const BCRectangle all(0, 0, 200, 120);
    // Counter-clockwise from the right-hand point to the left-hand one: the upper half.
    BCMemoryDevice dev(200, 120);
    BCArcGraphic arc(1, BCPosition(10, 10), BCSize(40, 40), BCPosition(60, 30), BCPosition(0, 30),
                     &t.red);
    arc.SetFill(1); // the arc has no interior whatever the flag
    EXPECT_EQ(1, arc.Draw(&dev));
    EXPECT_EQ(kRed, dev.GetPixel(30, 10));
    EXPECT_EQ(kWhite, dev.GetPixel(30, 49));
    EXPECT_EQ(kWhite, dev.GetPixel(30, 20));
    EXPECT_EQ(1, arc.UnDraw(&dev));
    EXPECT_EQ(0, CountNotWhite(dev));

    BCPieGraphic pie(2, BCPosition(60, 10), BCSize(40, 40), BCPosition(110, 30), BCPosition(50, 30),
                     &t.red, &t.blue);
    pie.SetFill(1);
    EXPECT_EQ(1, pie.Draw(&dev));
    EXPECT_EQ(kBlue, dev.GetPixel(80, 20));
    EXPECT_EQ(kWhite, dev.GetPixel(80, 40));
    BCChordGraphic chord(3, BCPosition(110, 10), BCSize(40, 40), BCPosition(160, 30),
                         BCPosition(100, 30), &t.red, &t.blue);
    chord.SetFill(1);
    EXPECT_EQ(1, chord.Draw(&dev));
    EXPECT_EQ(kBlue, dev.GetPixel(130, 20));
    EXPECT_EQ(kWhite, dev.GetPixel(130, 40));
    EXPECT_EQ(kRed, dev.GetPixel(130, 10));
    EXPECT_EQ(1, pie.UnDraw(&dev));
    EXPECT_EQ(1, chord.UnDraw(&dev));
    EXPECT_EQ(0, CountColor(dev, all, kRed) + CountColor(dev, all, kBlue));

    // Point lists: none or one point draws nothing and gives 0.
    BCMemoryDevice pl(200, 120);
    BCPolylineGraphic none(4, BCPosition(0, 0), BCSize(0, 0), nullptr, &t.red);
    EXPECT_EQ(0, none.Draw(&pl));
    const short one[] = {5, 5};
    BCPolyline single(1, one);
    EXPECT_EQ(nullptr, none.SetPolyline(&single));
    EXPECT_EQ(0, none.Draw(&pl));
    EXPECT_EQ(0, CountNotWhite(pl));

    const short two[] = {0, 0, 30, 0};
    BCPolyline segment(2, two);
    BCPolylineGraphic open(5, BCPosition(10, 5), BCSize(30, 1), &segment, &t.red);
    EXPECT_NE(0, open.Draw(&pl));
    EXPECT_EQ(kRed, pl.GetPixel(10, 5));
    EXPECT_EQ(kRed, pl.GetPixel(39, 5));
    EXPECT_EQ(30, CountNotWhite(pl));
    EXPECT_NE(0, open.UnDraw(&pl));
    EXPECT_EQ(0, CountNotWhite(pl));

    // Points are moved with 16-bit wrap: -32768 + -32718 lands on x = 50.
    const short farPts[] = {-32768, 0, -32768, 20};
    BCPolyline wrapped(2, farPts);
    BCPolylineGraphic wrap(6, BCPosition(-32718, 10), BCSize(0, 0), &wrapped, &t.red);
    EXPECT_NE(0, wrap.Draw(&pl));
    EXPECT_EQ(kRed, pl.GetPixel(50, 10));
    EXPECT_EQ(kRed, pl.GetPixel(50, 29));
    EXPECT_EQ(20, CountNotWhite(pl));
    wrap.UnDraw(&pl);

    const short square[] = {0, 0, 20, 0, 20, 20, 0, 20};
    BCPolyline outline(4, square);
    BCPolygonGraphic polygon(7, BCPosition(100, 50), BCSize(20, 20), &outline, &t.red, &t.blue);
    polygon.SetFill(1);
    EXPECT_NE(0, polygon.Draw(&pl));
    EXPECT_EQ(kRed, pl.GetPixel(100, 50));
    EXPECT_EQ(kRed, pl.GetPixel(120, 70));
    EXPECT_EQ(kBlue, pl.GetPixel(110, 60));
    EXPECT_EQ(kWhite, pl.GetPixel(121, 60));
    EXPECT_NE(0, polygon.UnDraw(&pl));
    EXPECT_EQ(0, CountNotWhite(pl));
    EXPECT_EQ(0, polygon.Draw(nullptr));
    EXPECT_EQ(0u, recorder.Count());
}

TEST(DrawingTest, AFrameWithoutItsOwnPenRestoresThePenOfAnEarlierSetup) {
    MsgRecorder recorder;
    Tools t;
    BCMemoryDevice dev(100, 50);
    dev.SetPen(&t.black);
    BCBoxGraphic own(1, BCPosition(5, 5), BCSize(10, 10), &t.red, nullptr);
    own.Draw(&dev); // remembers the black pen
    EXPECT_EQ(&t.black, dev.GetPen());

    dev.SetPen(&t.green);
    BCBoxGraphic borrowed(2, BCPosition(30, 5), BCSize(10, 10), nullptr, nullptr);
    EXPECT_EQ(1, borrowed.Draw(&dev));
    EXPECT_EQ(kGreen, dev.GetPixel(30, 5));  // drawn with the device's pen...
    EXPECT_EQ(&t.black, dev.GetPen());       // ...and the earlier setup's pen put back
    EXPECT_EQ(kWhite, dev.GetPixel(35, 10)); // fill off: the clear brush
}

TEST(StreamTest, DrawGraphicSaveAndLoadAreDifferentRecords) {
    MsgRecorder recorder;
    Tools t;
    // All flags off: the base record and a word 0, no presence marks.
    BCBoxGraphic off(3, BCPosition(1, -2), BCSize(30, 40), &t.red, nullptr);
    off.SetMode(0, 0, 0);
    const std::string pen = Saved(t.red);
    EXPECT_EQ(Head(74, 3, 1, -2, 30, 40) + LE32(0) + pen, Saved(off));

    // Flags on: pen mark, brush mark, word 1, then the pen's and brush's own records.
    BCBoxGraphic full(4, BCPosition(5, 6), BCSize(7, 8), &t.red, &t.blue);
    full.SetFill(1);
    const std::string brush = Saved(t.blue);
    EXPECT_EQ(Head(74, 4, 5, 6, 7, 8) + LE32(1) + LE32(1) + LE32(1) + pen + brush, Saved(full));
    BCBoxGraphic bare(5, BCPosition(0, 0), BCSize(2, 2), nullptr, nullptr);
    EXPECT_EQ(Head(74, 5, 0, 0, 2, 2) + LE32(0) + LE32(0) + LE32(1), Saved(bare));

    // Reading back its own record: the flags byte is the first byte of the pen mark, and
    // the brush mark is made of the bytes that follow, so a brush is expected that the
    // stream does not hold.
    {
        BCBoxGraphic back;
        std::istringstream is = InStream(Saved(bare));
        EXPECT_EQ(0, back.Load(is));
        EXPECT_EQ(5u, back.GetID());
        EXPECT_EQ(nullptr, back.GetPen());
        std::unique_ptr<BCBrush> made(back.GetBrush());
        EXPECT_NE(nullptr, made.get());
    }

    // What Load does read: flags byte, pen mark, brush mark, then the records.
    {
        BCBoxGraphic back;
        std::istringstream is =
            InStream(Head(74, 9, 10, 10, 20, 20) + "\x07" + LE32(1) + LE32(1) + pen + brush);
        ASSERT_EQ(1, back.Load(is));
        std::unique_ptr<BCPen> madePen(back.GetPen());
        std::unique_ptr<BCBrush> madeBrush(back.GetBrush());
        ASSERT_NE(nullptr, madePen.get());
        ASSERT_NE(nullptr, madeBrush.get());
        EXPECT_EQ(-1, back.GetFrame());
        EXPECT_EQ(-1, back.GetFill());
        EXPECT_EQ(-1, back.GetOpaque());
        EXPECT_EQ(BCPosition(10, 10), back.GetPos());
        BCMemoryDevice dev(50, 50);
        back.Draw(&dev);
        EXPECT_EQ(kRed, dev.GetPixel(10, 10));
        EXPECT_EQ(kBlue, dev.GetPixel(20, 20));
    }
    {
        BCBoxGraphic back(1, BCPosition(0, 0), BCSize(0, 0), &t.red, &t.blue);
        std::istringstream is = InStream(Head(74, 2, 0, 0, 1, 1) + "\x02" + LE32(0) + LE32(0));
        ASSERT_EQ(1, back.Load(is));
        EXPECT_EQ(0, back.GetFrame());
        EXPECT_EQ(-1, back.GetFill());
        EXPECT_EQ(nullptr, back.GetPen());
        EXPECT_EQ(nullptr, back.GetBrush());
    }
    // Another type's record and every cut of a good record are refused without harm.
    const std::string good = Head(74, 2, 0, 0, 1, 1) + "\x01" + LE32(0) + LE32(0);
    {
        BCCircleGraphic other;
        std::istringstream is = InStream(good);
        EXPECT_EQ(0, other.Load(is));
    }
    for (size_t n = 0; n < good.size(); ++n) {
        BCBoxGraphic back;
        std::istringstream is = InStream(good.substr(0, n));
        EXPECT_EQ(0, back.Load(is)) << n;
        EXPECT_EQ(nullptr, back.GetPen());
    }
    // A failed stream takes nothing.
    std::ostringstream bad = OutStream();
    bad.setstate(std::ios::badbit);
    EXPECT_EQ(0, full.Save(bad));
}

TEST(StreamTest, ArcChordPieAndPointListRecords) {
    MsgRecorder recorder;
    BCArcGraphic arc(1, BCPosition(2, 3), BCSize(4, 5), BCPosition(-6, 7), BCPosition(8, -9),
                     nullptr);
    const std::string drawRec = LE32(0) + LE32(0) + LE32(1);
    const std::string ends = LE16(-6) + LE16(7) + LE16(8) + LE16(-9);
    EXPECT_EQ(Head(76, 1, 2, 3, 4, 5) + drawRec + ends, Saved(arc));
    BCPieGraphic pie(1, BCPosition(2, 3), BCSize(4, 5), BCPosition(-6, 7), BCPosition(8, -9),
                     nullptr, nullptr);
    EXPECT_EQ(Head(80, 1, 2, 3, 4, 5) + drawRec + ends, Saved(pie));
    BCChordGraphic chord(1, BCPosition(2, 3), BCSize(4, 5), BCPosition(-6, 7), BCPosition(8, -9),
                         nullptr, nullptr);
    EXPECT_EQ(Head(79, 1, 2, 3, 4, 5) + drawRec + ends, Saved(chord));

    // A record as Load reads it, with the four ends.
    auto loadable = [](unsigned code) {
        return Head(code, 1, 0, 0, 10, 10) + "\x01" + LE32(0) + LE32(0) + LE16(11) + LE16(12) +
               LE16(13) + LE16(14);
    };
    {
        BCArcGraphic back;
        std::istringstream is = InStream(loadable(76));
        EXPECT_EQ(1, back.Load(is));
        EXPECT_EQ(BCPosition(11, 12), back.GetStart());
        EXPECT_EQ(BCPosition(13, 14), back.GetEnd());
    }
    // Cut after two coordinates: the first two are taken and the load fails.
    const std::string cut76 = loadable(76).substr(0, loadable(76).size() - 4);
    {
        BCArcGraphic back;
        std::istringstream is = InStream(cut76);
        EXPECT_EQ(0, back.Load(is));
        EXPECT_EQ(BCPosition(11, 12), back.GetStart());
        EXPECT_EQ(BCPosition(0, 0), back.GetEnd());
    }
    {
        BCPieGraphic back;
        std::istringstream is = InStream(loadable(80).substr(0, cut76.size()));
        EXPECT_EQ(0, back.Load(is));
        EXPECT_EQ(BCPosition(11, 12), back.GetStart());
        EXPECT_EQ(BCPosition(0, 0), back.GetEnd());
    }
    {
        BCChordGraphic back;
        std::istringstream is = InStream(loadable(79));
        EXPECT_EQ(1, back.Load(is));
        EXPECT_EQ(BCPosition(13, 14), back.GetEnd());
    }

    // Point lists: the polyline's own record follows; Load always makes a new polyline.
    const short pts[] = {1, 2, 3, 4};
    BCPolyline line(2, pts);
    const std::string lineRec = Saved(line);
    BCPolylineGraphic open(1, BCPosition(0, 0), BCSize(1, 1), &line, nullptr);
    EXPECT_EQ(Head(73, 1, 0, 0, 1, 1) + drawRec + lineRec, Saved(open));
    BCPolygonGraphic closed;
    std::ostringstream os = OutStream();
    EXPECT_EQ(0, closed.Save(os)); // no polyline: nothing to write
    EXPECT_EQ("", os.str());
    {
        std::istringstream is =
            InStream(Head(75, 1, 0, 0, 1, 1) + "\x01" + LE32(0) + LE32(0) + lineRec);
        EXPECT_EQ(nullptr, closed.SetPolyline(&line));
        EXPECT_EQ(1, closed.Load(is));
        std::unique_ptr<BCPolyline> made(closed.GetPolyline());
        ASSERT_NE(&line, made.get());
        EXPECT_EQ(2u, made->GetPointCount());
        EXPECT_EQ(BCPosition(3, 4), made->GetPoint(1));
    }
    {
        BCPolylineGraphic back;
        std::istringstream is = InStream(Head(73, 1, 0, 0, 1, 1) + "\x01" + LE32(0) + LE32(0));
        EXPECT_EQ(0, back.Load(is)); // the polyline record is missing
        delete back.GetPolyline();
    }
}

} // namespace
