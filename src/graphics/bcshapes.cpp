#include "bcshapes.h"

#include <windows.h>

#include <istream>
#include <ostream>
#include <new>

#include "bcdevice.h"
#include "bcgdi.h"
#include "bcstream.h"
#include "bcmemory.h"
#include "bcids2.h"
#include "bclib2.h"
#include "bcplatform.h"

namespace {

// Box corners and translated points wrap at 16 bits like every coordinate.
short Wrap(int value) {
    return static_cast<short>(value);
}

// How far from the stroke's middle a point still touches it: half the pen (one pixel without
// one) and the tolerance.
double Reach(const BCPen* pen, short tolerance) {
    const unsigned int width = pen && pen->GetWidth() > 1 ? pen->GetWidth() : 1;
    return width / 2.0 + tolerance;
}

// Whether `p` lies within `reach` of the segment from `a` to `b`.
bool NearSegment(const BCPosition& p, const BCPosition& a, const BCPosition& b, double reach) {
    const double dx = b.GetX() - a.GetX(), dy = b.GetY() - a.GetY();
    const double length2 = dx * dx + dy * dy;
    double t =
        length2 > 0 ? ((p.GetX() - a.GetX()) * dx + (p.GetY() - a.GetY()) * dy) / length2 : 0;
    t = t < 0 ? 0 : t > 1 ? 1 : t;
    const double ex = a.GetX() + t * dx - p.GetX(), ey = a.GetY() + t * dy - p.GetY();
    return ex * ex + ey * ey <= reach * reach;
}

} // namespace

// ---- Line

BCLineGraphic::BCLineGraphic(unsigned int id, const BCPosition& pos, const BCSize& size, BCPen* pen)
    : BCDrawGraphic(bcids::kTypeLineGraphic, id, pos, size) {
    opPen = pen;
    SetFrame(1);
    SetFill(0);
}

BCLineGraphic::BCLineGraphic() : BCDrawGraphic(bcids::kTypeLineGraphic) {
    SetFrame(1);
    SetFill(0);
}

int BCLineGraphic::Draw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    DrawSetup(dev, 1);
    dev->MoveTo(BCPosition(coX, coY));
    dev->LineTo(BCPosition(Wrap(coX + coW), Wrap(coY + coH)));
    DrawReset();
    return 1;
}

int BCLineGraphic::HitTest(const BCPosition& pos, short tolerance) const {
    return NearSegment(pos, BCPosition(coX, coY), BCPosition(Wrap(coX + coW), Wrap(coY + coH)),
                       Reach(opPen, tolerance));
}

int BCLineGraphic::UnDraw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    DrawSetup(dev, 0);
    dev->MoveTo(BCPosition(coX, coY));
    dev->LineTo(BCPosition(Wrap(coX + coW), Wrap(coY + coH)));
    DrawReset();
    return 1;
}

// ---- Box, circle, ellipse

BCBoxGraphic::BCBoxGraphic(unsigned int id, const BCPosition& pos, const BCSize& size, BCPen* pen,
                           BCBrush* brush)
    : BCDrawGraphic(bcids::kTypeBoxGraphic, id, pos, size) {
    opPen = pen;
    opBrush = brush;
}

BCBoxGraphic::BCBoxGraphic() : BCDrawGraphic(bcids::kTypeBoxGraphic) {}

int BCBoxGraphic::Draw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    BCRectangle rect(coX, coY, Wrap(coX + coW), Wrap(coY + coH));
    DrawSetup(dev, 1);
    dev->PutRect(rect, BC_DRAW_FILLED);
    DrawReset();
    return 1;
}

int BCBoxGraphic::UnDraw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    BCRectangle rect(coX, coY, Wrap(coX + coW), Wrap(coY + coH));
    DrawSetup(dev, 0);
    dev->PutRect(rect, BC_DRAW_FILLED);
    DrawReset();
    return 1;
}

BCCircleGraphic::BCCircleGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                                 BCPen* pen, BCBrush* brush)
    : BCDrawGraphic(bcids::kTypeCircleGraphic, id, pos, size) {
    opPen = pen;
    opBrush = brush;
}

BCCircleGraphic::BCCircleGraphic() : BCDrawGraphic(bcids::kTypeCircleGraphic) {}

int BCCircleGraphic::Draw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    DrawSetup(dev, 1);
    dev->PutCircle(BCRectangle(coX, coY, Wrap(coX + coW), Wrap(coY + coH)), BC_DRAW_FILLED);
    DrawReset();
    return 1;
}

int BCCircleGraphic::UnDraw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    DrawSetup(dev, 0);
    dev->PutCircle(BCRectangle(coX, coY, Wrap(coX + coW), Wrap(coY + coH)), BC_DRAW_FILLED);
    DrawReset();
    return 1;
}

BCEllipseGraphic::BCEllipseGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                                   BCPen* pen, BCBrush* brush)
    : BCDrawGraphic(bcids::kTypeEllipseGraphic, id, pos, size) {
    opPen = pen;
    opBrush = brush;
}

BCEllipseGraphic::BCEllipseGraphic() : BCDrawGraphic(bcids::kTypeEllipseGraphic) {}

int BCEllipseGraphic::Draw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    DrawSetup(dev, 1);
    dev->PutEllipse(BCRectangle(coX, coY, Wrap(coX + coW), Wrap(coY + coH)), BC_DRAW_FILLED);
    DrawReset();
    return 1;
}

int BCEllipseGraphic::UnDraw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    DrawSetup(dev, 0);
    dev->PutEllipse(BCRectangle(coX, coY, Wrap(coX + coW), Wrap(coY + coH)), BC_DRAW_FILLED);
    DrawReset();
    return 1;
}

// ---- Arc, chord, pie

namespace {

// The chord and the pie stop at the first coordinate that fails.
int SaveEndsChecked(std::ostream& os, short sx, short sy, short ex, short ey) {
    return BCSaveCoord(os, sx) && BCSaveCoord(os, sy) && BCSaveCoord(os, ex) && BCSaveCoord(os, ey);
}

int LoadEndsChecked(std::istream& is, short& sx, short& sy, short& ex, short& ey) {
    return BCLoadCoord(is, sx) && BCLoadCoord(is, sy) && BCLoadCoord(is, ex) && BCLoadCoord(is, ey);
}

} // namespace

#define BC_ENDS_DUMP "%scoStartX=%d, coStartY=%d, coEndX=%d, coEndY=%d"

BCArcGraphic::BCArcGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                           const BCPosition& start, const BCPosition& end, BCPen* pen)
    : BCDrawGraphic(bcids::kTypeArcGraphic, id, pos, size), coStartX(start.GetX()),
      coStartY(start.GetY()), coEndX(end.GetX()), coEndY(end.GetY()) {
    opPen = pen;
    opBrush = nullptr;
}

BCArcGraphic::BCArcGraphic()
    : BCDrawGraphic(bcids::kTypeArcGraphic), coStartX(0), coStartY(0), coEndX(0), coEndY(0) {}

int BCArcGraphic::Paint(BCDisplayDevice* dev, int drawing) {
    if (!dev)
        return 0;
    DrawSetup(dev, drawing);
    dev->PutArc(BCRectangle(coX, coY, Wrap(coX + coW), Wrap(coY + coH)),
                BCPosition(coStartX, coStartY), BCPosition(coEndX, coEndY));
    DrawReset();
    return 1;
}

int BCArcGraphic::Draw(BCDisplayDevice* dev) {
    return Paint(dev, 1);
}
int BCArcGraphic::UnDraw(BCDisplayDevice* dev) {
    return Paint(dev, 0);
}

// The arc writes and reads all four coordinates and then judges by the stream's state, so
// a short stream still fills the coordinates it held.
int BCArcGraphic::Save(std::ostream& os) {
    if (!BCDrawGraphic::Save(os))
        return 0;
    BCSaveCoord(os, coStartX);
    BCSaveCoord(os, coStartY);
    BCSaveCoord(os, coEndX);
    BCSaveCoord(os, coEndY);
    return BCStreamOK(os);
}

int BCArcGraphic::Load(std::istream& is) {
    if (!BCDrawGraphic::Load(is))
        return 0;
    BCLoadCoord(is, coStartX);
    BCLoadCoord(is, coStartY);
    BCLoadCoord(is, coEndX);
    BCLoadCoord(is, coEndY);
    return BCStreamOK(is);
}

void BCArcGraphic::Display(const char* prefix) {
    char text[kDumpSize];
    BCFrmtStr(text, sizeof text, BC_ENDS_DUMP, prefix ? prefix : "", coStartX, coStartY, coEndX,
              coEndY);
    BCDrawGraphic::Display(text);
}

BCChordGraphic::BCChordGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                               const BCPosition& start, const BCPosition& end, BCPen* pen,
                               BCBrush* brush)
    : BCDrawGraphic(bcids::kTypeChordGraphic, id, pos, size), coStartX(start.GetX()),
      coStartY(start.GetY()), coEndX(end.GetX()), coEndY(end.GetY()) {
    opPen = pen;
    opBrush = brush;
}

BCChordGraphic::BCChordGraphic()
    : BCDrawGraphic(bcids::kTypeChordGraphic), coStartX(0), coStartY(0), coEndX(0), coEndY(0) {}

int BCChordGraphic::Paint(BCDisplayDevice* dev, int drawing) {
    if (!dev)
        return 0;
    DrawSetup(dev, drawing);
    dev->PutChord(BCRectangle(coX, coY, Wrap(coX + coW), Wrap(coY + coH)),
                  BCPosition(coStartX, coStartY), BCPosition(coEndX, coEndY), BC_DRAW_FILLED);
    DrawReset();
    return 1;
}

int BCChordGraphic::Draw(BCDisplayDevice* dev) {
    return Paint(dev, 1);
}
int BCChordGraphic::UnDraw(BCDisplayDevice* dev) {
    return Paint(dev, 0);
}

int BCChordGraphic::Save(std::ostream& os) {
    return BCDrawGraphic::Save(os) && SaveEndsChecked(os, coStartX, coStartY, coEndX, coEndY);
}

int BCChordGraphic::Load(std::istream& is) {
    return BCDrawGraphic::Load(is) && LoadEndsChecked(is, coStartX, coStartY, coEndX, coEndY);
}

void BCChordGraphic::Display(const char* prefix) {
    char text[kDumpSize];
    BCFrmtStr(text, sizeof text, BC_ENDS_DUMP, prefix ? prefix : "", coStartX, coStartY, coEndX,
              coEndY);
    BCDrawGraphic::Display(text);
}

BCPieGraphic::BCPieGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                           const BCPosition& start, const BCPosition& end, BCPen* pen,
                           BCBrush* brush)
    : BCDrawGraphic(bcids::kTypePieGraphic, id, pos, size), coStartX(start.GetX()),
      coStartY(start.GetY()), coEndX(end.GetX()), coEndY(end.GetY()) {
    opPen = pen;
    opBrush = brush;
}

BCPieGraphic::BCPieGraphic()
    : BCDrawGraphic(bcids::kTypePieGraphic), coStartX(0), coStartY(0), coEndX(0), coEndY(0) {}

int BCPieGraphic::Paint(BCDisplayDevice* dev, int drawing) {
    if (!dev)
        return 0;
    DrawSetup(dev, drawing);
    dev->PutPie(BCRectangle(coX, coY, Wrap(coX + coW), Wrap(coY + coH)),
                BCPosition(coStartX, coStartY), BCPosition(coEndX, coEndY), BC_DRAW_FILLED);
    DrawReset();
    return 1;
}

int BCPieGraphic::Draw(BCDisplayDevice* dev) {
    return Paint(dev, 1);
}
int BCPieGraphic::UnDraw(BCDisplayDevice* dev) {
    return Paint(dev, 0);
}

int BCPieGraphic::Save(std::ostream& os) {
    return BCDrawGraphic::Save(os) && SaveEndsChecked(os, coStartX, coStartY, coEndX, coEndY);
}

int BCPieGraphic::Load(std::istream& is) {
    return BCDrawGraphic::Load(is) && LoadEndsChecked(is, coStartX, coStartY, coEndX, coEndY);
}

void BCPieGraphic::Display(const char* prefix) {
    char text[kDumpSize];
    BCFrmtStr(text, sizeof text, BC_ENDS_DUMP, prefix ? prefix : "", coStartX, coStartY, coEndX,
              coEndY);
    BCDrawGraphic::Display(text);
}

namespace {

// Draws the point list moved by (x, y), each coordinate wrapping at 16 bits, with the
// platform's open or closed call on the device's context. Gives 0 without at least two
// points; no setup is made then.
template <class Paint> int PaintPoints(const BCPolyline* line, short x, short y, Paint paint) {
    if (!line || line->GetPointCount() < 2 || !line->GetPoints())
        return 0;
    const unsigned int count = line->GetPointCount();
    POINT* points = new (std::nothrow) POINT[count];
    if (!points)
        return 0;
    const short* xy = line->GetPoints();
    for (unsigned int i = 0; i < count; ++i) {
        points[i].x = static_cast<short>(xy[2 * i] + x);
        points[i].y = static_cast<short>(xy[2 * i + 1] + y);
    }
    const int result = paint(points, static_cast<int>(count));
    delete[] points;
    return result;
}

// The platform's open or closed call on the device's selected context; a device without one
// draws nothing.
int PutPoints(BCDisplayDevice* dev, const POINT* points, int count, bool closed) {
    HDC dc = static_cast<HDC>(dev->GetDC());
    if (!dc)
        return 0;
    if (closed)
        return BCTraced(::Polygon(dc, points, count), "Polygon");
    return BCTraced(::Polyline(dc, points, count), "Polyline");
}

// The polyline that Load makes is the caller's, like the one given to the constructor.
BCPolyline* LoadPolyline(std::istream& is, BCPolyline*& field) {
    field = new (std::nothrow) BCPolyline(BCGetDLLModule2());
    BCKeepLoaded(is, field);
    return field && field->Load(is) ? field : nullptr;
}

} // namespace

// ---- Polyline

BCPolylineGraphic::BCPolylineGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                                     BCPolyline* line, BCPen* pen)
    : BCDrawGraphic(bcids::kTypePolylineGraphic, id, pos, size), opPolyline(line) {
    opPen = pen;
    opBrush = nullptr;
}

BCPolylineGraphic::BCPolylineGraphic()
    : BCDrawGraphic(bcids::kTypePolylineGraphic), opPolyline(nullptr) {}

BCPolyline* BCPolylineGraphic::SetPolyline(BCPolyline* line) {
    BCPolyline* old = opPolyline;
    opPolyline = line;
    return old;
}

int BCPolylineGraphic::Draw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    return PaintPoints(opPolyline, coX, coY, [&](POINT* points, int count) {
        DrawSetup(dev, 1);
        const int result = PutPoints(dev, points, count, false);
        DrawReset();
        return result;
    });
}

int BCPolylineGraphic::HitTest(const BCPosition& pos, short tolerance) const {
    const unsigned int count = opPolyline ? opPolyline->GetPointCount() : 0;
    const short* xy = count ? opPolyline->GetPoints() : nullptr;
    if (!xy)
        return 0;
    const double reach = Reach(opPen, tolerance);
    auto point = [&](unsigned int i) {
        return BCPosition(Wrap(coX + xy[2 * i]), Wrap(coY + xy[2 * i + 1]));
    };
    for (unsigned int i = 0; i < count; ++i)
        if (NearSegment(pos, point(i), point(i + 1 < count ? i + 1 : i), reach))
            return 1;
    return 0;
}

int BCPolylineGraphic::UnDraw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    return PaintPoints(opPolyline, coX, coY, [&](POINT* points, int count) {
        DrawSetup(dev, 0);
        const int result = PutPoints(dev, points, count, false);
        DrawReset();
        return result;
    });
}

int BCPolylineGraphic::Save(std::ostream& os) {
    if (!opPolyline)
        return 0;
    return BCDrawGraphic::Save(os) && opPolyline->Save(os);
}

int BCPolylineGraphic::Load(std::istream& is) {
    if (!BCDrawGraphic::Load(is))
        return 0;
    return LoadPolyline(is, opPolyline) != nullptr;
}

// ---- Polygon

BCPolygonGraphic::BCPolygonGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                                   BCPolyline* line, BCPen* pen, BCBrush* brush)
    : BCDrawGraphic(bcids::kTypePolygonGraphic, id, pos, size), opPolyline(line) {
    opPen = pen;
    opBrush = brush;
}

BCPolygonGraphic::BCPolygonGraphic()
    : BCDrawGraphic(bcids::kTypePolygonGraphic), opPolyline(nullptr) {}

BCPolyline* BCPolygonGraphic::SetPolyline(BCPolyline* line) {
    BCPolyline* old = opPolyline;
    opPolyline = line;
    return old;
}

int BCPolygonGraphic::Draw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    return PaintPoints(opPolyline, coX, coY, [&](POINT* points, int count) {
        DrawSetup(dev, 1);
        const int result = PutPoints(dev, points, count, true);
        DrawReset();
        return result;
    });
}

int BCPolygonGraphic::UnDraw(BCDisplayDevice* dev) {
    if (!dev)
        return 0;
    return PaintPoints(opPolyline, coX, coY, [&](POINT* points, int count) {
        DrawSetup(dev, 0);
        const int result = PutPoints(dev, points, count, true);
        DrawReset();
        return result;
    });
}

int BCPolygonGraphic::Save(std::ostream& os) {
    if (!opPolyline)
        return 0;
    return BCDrawGraphic::Save(os) && opPolyline->Save(os);
}

int BCPolygonGraphic::Load(std::istream& is) {
    if (!BCDrawGraphic::Load(is))
        return 0;
    return LoadPolyline(is, opPolyline) != nullptr;
}
