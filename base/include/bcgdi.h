#pragma once
#include <iosfwd>
#include "bcobject.h"
#include "bcrendata.h"
#include "bcvalues.h"

class BCModule;

// The platform handle a drawing object stands for. A handle the object made is deleted with
// it; a stock handle is the system's.
class NORLIB1_API BCGdiHandle {
  public:
    BCGdiHandle(const BCGdiHandle&) = delete;
    BCGdiHandle& operator=(const BCGdiHandle&) = delete;

    // The platform handle (HPEN, HBRUSH, HBITMAP, HFONT); null when it could not be made.
    void* GetHandle() const { return hObject; }
    BCModule* GetModule() const { return opModule; }
    // Deletes the replaced handles that were still selected into a context when their
    // object let go of them; devices call it once they have taken their objects out.
    static void DeleteReleasedHandles();

  protected:
    explicit BCGdiHandle(BCModule* module);
    ~BCGdiHandle();
    // Puts `handle` in place, deleting a handle of its own made before (later, when a
    // context still holds it).
    void SetObjectHandle(void* handle, int owned);

    void* hObject;
    int blOwned;
    BCModule* opModule;
};

// A drawing object of the platform (pen, brush, font).
class NORLIB1_API BCGdiObject : public BCObject, public BCGdiHandle {
  public:
    ~BCGdiObject() override;

  protected:
    BCGdiObject(unsigned int typeCode, BCModule* module);
};

// Pen styles; the numbering starts at 1 so that a pen of style 1 is a plain solid line.
enum BCPenStyle : unsigned int {
    BC_PEN_SOLID = 1,
    BC_PEN_DASH = 2,
    BC_PEN_DOT = 3,
    BC_PEN_DASHDOT = 4,
    BC_PEN_DASHDOTDOT = 5,
    BC_PEN_CLEAR = 6, // draws nothing
    BC_PEN_INSIDEFRAME = 7
};

// An outline pen: style, width in device units, colour.
class NORLIB1_API BCPen : public BCGdiObject {
  public:
    // An unknown style gives a solid pen; failure to make it is reported with message 10053.
    BCPen(unsigned int style, unsigned int width, const BCColor& color, BCModule* module = nullptr);

    unsigned int GetStyle() const { return wStyle; }
    unsigned int GetWidth() const { return wWidth; }
    const BCColor& GetColor() const { return crColor; }

    // Record: type code, style, width, colour record. A record with an unknown style or a
    // width above 1000 is refused and the pen stays as it was.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;

  private:
    int Make();

    unsigned int wStyle;
    unsigned int wWidth;
    BCColor crColor;
};

// How a brush paints.
enum BCBrushKind : unsigned int {
    BC_BRUSH_SOLID = 1,
    BC_BRUSH_HATCHED = 2,
    BC_BRUSH_PATTERN = 3,
    BC_BRUSH_STOCK = 4
};

// Hatch patterns (the platform's values).
enum BCHatchStyle : unsigned int {
    BC_HATCH_HORIZONTAL = 0,
    BC_HATCH_VERTICAL = 1,
    BC_HATCH_FDIAGONAL = 2,
    BC_HATCH_BDIAGONAL = 3,
    BC_HATCH_CROSS = 4,
    BC_HATCH_DIAGCROSS = 5
};

// The system's stock brushes (the platform's values).
enum BCStockBrush : unsigned int {
    BC_STOCK_WHITE = 0,
    BC_STOCK_LIGHTGRAY = 1,
    BC_STOCK_GRAY = 2,
    BC_STOCK_DARKGRAY = 3,
    BC_STOCK_BLACK = 4,
    BC_STOCK_CLEAR = 5 // paints nothing
};

class BCBitmap;

// An interior brush: solid, hatched, a pattern picture, or one of the system's.
class NORLIB1_API BCBrush : public BCGdiObject {
  public:
    // Empty, for loading: paints nothing until it is loaded.
    explicit BCBrush(BCModule* module = nullptr);
    BCBrush(const BCColor& color, BCModule* module = nullptr);
    BCBrush(BCHatchStyle hatch, const BCColor& color, BCModule* module = nullptr);
    // The brush keeps its own copy of the picture; a null bitmap gives an empty brush.
    BCBrush(BCBitmap* pattern, BCModule* module = nullptr);
    BCBrush(BCStockBrush stock, BCModule* module = nullptr);
    ~BCBrush() override;

    BCBrushKind GetKind() const { return wKind; }
    // The hatch or stock number; 0 for the other kinds.
    unsigned int GetStyle() const { return wStyle; }
    const BCColor& GetColor() const { return crColor; }
    BCBitmap* GetPattern() const { return opPattern; }

    // Record: type code, kind, style, colour record, and for a pattern brush the bitmap
    // record. An unknown kind or style is refused and the brush stays as it was.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;

  private:
    int Make();
    void SetPattern(BCBitmap* pattern);

    BCBrushKind wKind;
    unsigned int wStyle;
    BCColor crColor;
    BCBitmap* opPattern;
};

// Flags of a bitmap's handle.
enum BCBitmapFlag : unsigned long {
    BC_BITMAP_HANDED_OVER = 0x0008, // given to the clipboard: no longer ours to delete
    BC_BITMAP_BORROWED = 0x0010     // taken from the clipboard: still the clipboard's
};

class BCResID;

// A picture held by the platform. Pictures this class makes are 32-bit device-independent
// bitmaps, so their pixels are the same on every display. It is renderable data, so a file
// data object can hold it; its flags word carries 8 (handle handed over) and 16 (borrowed).
class NORLIB1_API BCBitmap : public BCRenderableData, public BCGdiHandle {
  public:
    // Empty (no picture), for loading or for SetHandle.
    explicit BCBitmap(BCModule* module = nullptr);
    // From a module's resources (the id's module, else `module`, else the application);
    // failure is reported with message 10003 and leaves the bitmap empty.
    BCBitmap(const BCResID& id, BCModule* module = nullptr);
    // A white picture of the given size; failure is reported with message 10004.
    BCBitmap(short width, short height, BCModule* module = nullptr);
    ~BCBitmap() override;

    int LoadFromRes(const BCResID& id);
    // A .BMP file; failure is reported with message 10003.
    int LoadFromFile(const char* path);
    // Takes an HBITMAP in place of the picture held (deleted unless flags 8 or 16 say it is
    // not ours). The new handle is ours until the flags say otherwise. A picture over 16384
    // pixels a side is refused with 0 and stays the caller's.
    int SetHandle(void* bitmap);
    int IsEmpty() const { return hObject == nullptr; }
    BCSize GetSize() const;

    // A new bitmap with a copy of the picture; null when it cannot be made.
    BCRenderableData* Dup() override;
    // Lets go of the picture (deleted unless flags 8 or 16 say it is not ours).
    int Clear(int freeItems) override;
    // The platform's bitmap format.
    int IsRenderable(BCFormat& format) override;

    // Record: type code, width, height (double words), then the pixels, top row first, 4
    // bytes each (blue, green, red, 0). An empty bitmap is width and height 0. Pictures above
    // 16384 pixels a side, or more pixels than the stream holds, are refused.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;

    // Copies the pixels (4 bytes each, top row first) into `pixels`, which holds
    // width x height of them; returns 1 on success.
    int GetPixels(unsigned long* pixels) const;
    // A new picture of this size from such pixels.
    int SetPixels(short width, short height, const unsigned long* pixels);

  private:
    // Refuses (returns 0, leaving the picture held) a picture over 16384 pixels a side.
    int TakeHandle(void* bitmap, int owned);
    // TakeHandle for a handle this object made: a refused one is deleted.
    int TakeMade(void* bitmap);
    int ReadPixels(std::istream& is, unsigned long width, unsigned long height);
    short coWidth;
    short coHeight;
};

// A point list; points are pairs of signed 16-bit x, y.
class NORLIB1_API BCPolyline : public BCObject {
  public:
    explicit BCPolyline(BCModule* module = nullptr);
    // Copies `count` points from `xy` (x0, y0, x1, y1, ...).
    BCPolyline(unsigned int count, const short* xy, BCModule* module = nullptr);
    ~BCPolyline() override;
    BCPolyline(const BCPolyline&) = delete;
    BCPolyline& operator=(const BCPolyline&) = delete;

    unsigned int GetPointCount() const { return wCount; }
    // The points as x, y pairs; null when there are none.
    short* GetPoints() const { return lpPoints; }
    BCPosition GetPoint(unsigned int index) const;
    int SetPoints(unsigned int count, const short* xy);
    int AddPoint(const BCPosition& point);
    BCModule* GetModule() const { return opModule; }

    // Record: type code, count, then count pairs of coordinates. A count above 1048576 or
    // above what the stream holds is refused and the points stay as they were.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;

  private:
    int Reserve(unsigned int count);
    short* lpPoints;
    unsigned int wCount;
    unsigned int wCapacity;
    BCModule* opModule;
};

// Shared stock objects; they live as long as the process and must not be deleted.
NORLIB1_API BCPen* BCGetClearPen();
// Solid, one unit wide: the pen a display device holds until it is given another.
NORLIB1_API BCPen* BCGetBlackPen();
NORLIB1_API BCPen* BCGetWhitePen();
NORLIB1_API BCBrush* BCGetClearBrush();
NORLIB1_API BCBrush* BCGetBlackBrush();
NORLIB1_API BCBrush* BCGetWhiteBrush();
NORLIB1_API BCColor& BCGetBlack();

// The GDI objects the process holds now: what an application watches to find a leak.
NORLIB1_API unsigned long BCGetGdiObjectCount();
