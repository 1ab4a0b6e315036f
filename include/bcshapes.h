#pragma once
#include <iosfwd>
#include "bcgraphic.h"

// The shapes. Each box is left = coX, top = coY, right = coX + coW, bottom = coY + coH with
// 16-bit wrap-around. Draw and UnDraw differ only in the setup: UnDraw repaints with the
// white pen and the device's background brush. A null device draws nothing and gives 0.

// A line from (coX, coY) to (coX + coW, coY + coH).
class NORLIB2_API BCLineGraphic : public BCDrawGraphic {
  public:
    BCLineGraphic(unsigned int id, const BCPosition& pos, const BCSize& size, BCPen* pen);
    BCLineGraphic();
    int Draw(BCDisplayDevice* dev) override;
    int UnDraw(BCDisplayDevice* dev) override;
    // Within half the pen's width plus `tolerance` of the line.
    int HitTest(const BCPosition& pos, short tolerance) const override;
};

class NORLIB2_API BCBoxGraphic : public BCDrawGraphic {
  public:
    BCBoxGraphic(unsigned int id, const BCPosition& pos, const BCSize& size, BCPen* pen,
                 BCBrush* brush);
    BCBoxGraphic();
    int Draw(BCDisplayDevice* dev) override;
    int UnDraw(BCDisplayDevice* dev) override;
};

// The largest circle centred in the box.
class NORLIB2_API BCCircleGraphic : public BCDrawGraphic {
  public:
    BCCircleGraphic(unsigned int id, const BCPosition& pos, const BCSize& size, BCPen* pen,
                    BCBrush* brush);
    BCCircleGraphic();
    int Draw(BCDisplayDevice* dev) override;
    int UnDraw(BCDisplayDevice* dev) override;
};

class NORLIB2_API BCEllipseGraphic : public BCDrawGraphic {
  public:
    BCEllipseGraphic(unsigned int id, const BCPosition& pos, const BCSize& size, BCPen* pen,
                     BCBrush* brush);
    BCEllipseGraphic();
    int Draw(BCDisplayDevice* dev) override;
    int UnDraw(BCDisplayDevice* dev) override;
};

// Part of the box's ellipse from where the line from the centre to the start point meets
// it to where the line to the end point does. Start and end are absolute positions.
// Record: the draw-graphic record, then coStartX, coStartY, coEndX, coEndY as coordinates;
// success is judged on the stream's state after all four.
class NORLIB2_API BCArcGraphic : public BCDrawGraphic {
  public:
    BCArcGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                 const BCPosition& start, const BCPosition& end, BCPen* pen);
    BCArcGraphic();
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;
    int Draw(BCDisplayDevice* dev) override;
    int UnDraw(BCDisplayDevice* dev) override;

    BCPosition GetStart() const { return BCPosition(coStartX, coStartY); }
    BCPosition GetEnd() const { return BCPosition(coEndX, coEndY); }

  private:
    int Paint(BCDisplayDevice* dev, int drawing);
    short coStartX;
    short coStartY;
    short coEndX;
    short coEndY;
};

// The arc closed by its chord. The record is the arc's, but each coordinate is checked and
// the first failure stops the load or save.
class NORLIB2_API BCChordGraphic : public BCDrawGraphic {
  public:
    BCChordGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                   const BCPosition& start, const BCPosition& end, BCPen* pen, BCBrush* brush);
    BCChordGraphic();
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;
    int Draw(BCDisplayDevice* dev) override;
    int UnDraw(BCDisplayDevice* dev) override;

    BCPosition GetStart() const { return BCPosition(coStartX, coStartY); }
    BCPosition GetEnd() const { return BCPosition(coEndX, coEndY); }

  private:
    int Paint(BCDisplayDevice* dev, int drawing);
    short coStartX;
    short coStartY;
    short coEndX;
    short coEndY;
};

// The arc closed by two radii; record as the chord's.
class NORLIB2_API BCPieGraphic : public BCDrawGraphic {
  public:
    BCPieGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                 const BCPosition& start, const BCPosition& end, BCPen* pen, BCBrush* brush);
    BCPieGraphic();
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;
    int Draw(BCDisplayDevice* dev) override;
    int UnDraw(BCDisplayDevice* dev) override;

    BCPosition GetStart() const { return BCPosition(coStartX, coStartY); }
    BCPosition GetEnd() const { return BCPosition(coEndX, coEndY); }

  private:
    int Paint(BCDisplayDevice* dev, int drawing);
    short coStartX;
    short coStartY;
    short coEndX;
    short coEndY;
};

// An open point list whose points are relative to (coX, coY), moved with 16-bit
// wrap-around. The polyline is not owned; one that Load makes belongs to the caller.
// Draw gives 0 without a polyline or with fewer than two points, else the platform's
// result. Record: the draw-graphic record, then the polyline's own record.
class NORLIB2_API BCPolylineGraphic : public BCDrawGraphic {
  public:
    BCPolylineGraphic(unsigned int id, const BCPosition& pos, const BCSize& size, BCPolyline* line,
                      BCPen* pen);
    BCPolylineGraphic();
    int Load(std::istream& is) override;
    // A graphic without a polyline writes nothing and gives 0.
    int Save(std::ostream& os) override;
    int Draw(BCDisplayDevice* dev) override;
    int UnDraw(BCDisplayDevice* dev) override;
    // Within half the pen's width plus `tolerance` of a segment; never without points.
    int HitTest(const BCPosition& pos, short tolerance) const override;

    BCPolyline* GetPolyline() const { return opPolyline; }
    BCPolyline* SetPolyline(BCPolyline* line);

  private:
    BCPolyline* opPolyline;
};

// The point list closed and filled; otherwise as the polyline graphic.
class NORLIB2_API BCPolygonGraphic : public BCDrawGraphic {
  public:
    BCPolygonGraphic(unsigned int id, const BCPosition& pos, const BCSize& size, BCPolyline* line,
                     BCPen* pen, BCBrush* brush);
    BCPolygonGraphic();
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    int Draw(BCDisplayDevice* dev) override;
    int UnDraw(BCDisplayDevice* dev) override;

    BCPolyline* GetPolyline() const { return opPolyline; }
    BCPolyline* SetPolyline(BCPolyline* line);

  private:
    BCPolyline* opPolyline;
};
