#include "bcshapes.h"
#include "bcdevice.h"
#include "bcgdi.h"
#include "bcstream.h"
#include "bcmemory.h"

#include <windows.h>

#include <new>

#include "bclib2.h"
#include "bcplatform.h"
#include "bcids2.h"

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
