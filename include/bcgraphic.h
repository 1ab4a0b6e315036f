#pragma once
#include <ios>
#include "bcobject.h"
#include "bcvalues.h"
#include "bcfwd.h"
#include "norlib2api.h"

// The type codes of the graphic classes, as their objects report them (GetObjectType).
enum BCGraphicType : unsigned int {
    BC_GRAPHIC_OBJECT = 70,
    BC_GRAPHIC_DRAW = 71,
    BC_GRAPHIC_LINE = 72,
    BC_GRAPHIC_POLYLINE = 73,
    BC_GRAPHIC_BOX = 74,
    BC_GRAPHIC_POLYGON = 75,
    BC_GRAPHIC_ARC = 76,
    BC_GRAPHIC_CIRCLE = 77,
    BC_GRAPHIC_ELLIPSE = 78,
    BC_GRAPHIC_CHORD = 79,
    BC_GRAPHIC_PIE = 80,
    BC_GRAPHIC_TEXT = 81,
    BC_GRAPHIC_BITMAP = 82,
    BC_GRAPHIC_COMPOUND = 83
};

// Whether a type code names a graphic class, and one with a pen and a brush (a BCDrawGraphic).
inline bool BCIsGraphicType(unsigned int code) {
    return code >= BC_GRAPHIC_OBJECT && code <= BC_GRAPHIC_COMPOUND;
}
inline bool BCIsDrawGraphicType(unsigned int code) {
    return code >= BC_GRAPHIC_DRAW && code <= BC_GRAPHIC_PIE;
}

// A retained drawing element: a rectangle on a display device with a caller-chosen
// identifier. It draws and erases itself, is hit-tested on its bounding box, and is saved
// and loaded as a type code word followed by a 12-byte block (wID 4 bytes, coX, coY, coW,
// coH 2 bytes each, little-endian).
class NORLIB2_API BCGraphicObject : public BCObject {
  public:
    BCGraphicObject(unsigned int typeCode, unsigned int id, const BCPosition& pos,
                    const BCSize& size);
    // All fields zero: the empty object that a load fills.
    explicit BCGraphicObject(unsigned int typeCode);
    ~BCGraphicObject() override;

    // Both return 1 when the base record went through and the stream is still good.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;
    // Writes the class name at the object's position; returns what the device returns.
    virtual int Draw(BCDisplayDevice* dev);
    // Nothing to erase here; returns 1.
    virtual int UnDraw(BCDisplayDevice* dev);

    unsigned int GetID() const { return wID; }
    // Each setter returns the previous value.
    unsigned int SetID(unsigned int id);
    BCPosition GetPos() const { return BCPosition(coX, coY); }
    BCPosition SetPos(const BCPosition& pos);
    BCSize GetSize() const { return BCSize(coW, coH); }
    BCSize SetSize(const BCSize& size);
    // Half-open box: left and top edges hit, right and bottom do not. The far edges are
    // summed in 32 bits so that a box near the end of the coordinate range still hits.
    int IsHit(const BCPosition& pos) const;
    // Whether `pos` points at the object, `tolerance` pixels allowed: here the box grown by
    // the tolerance on every side; lines and polylines measure the distance to their stroke.
    virtual int HitTest(const BCPosition& pos, short tolerance) const;

  protected:
    // The field block as stored: wID, then coX, coY, coW, coH, little-endian.
    void PackFields(unsigned char* block) const;

    unsigned int wID;
    short coX;
    short coY;
    short coW;
    short coH;
};

// An outlined and/or filled shape: a pen, a brush and the frame, fill and opaque flags.
// The pen and brush are never deleted by the graphic; those that Load makes belong to the
// caller, who reaches them through GetPen and GetBrush (a BCDrawingData frees those of its
// loads itself).
class NORLIB2_API BCDrawGraphic : public BCGraphicObject {
  public:
    // Frame on, fill and opaque off, no pen or brush.
    BCDrawGraphic(unsigned int typeCode, unsigned int id, const BCPosition& pos,
                  const BCSize& size);
    explicit BCDrawGraphic(unsigned int typeCode);
    ~BCDrawGraphic() override;

    // Save writes the pen and brush presence marks (only when a flag is on) and then a
    // word, 1 when a flag was on; Load reads a flags byte and two marks. The two records
    // differ on purpose; see docs/streams.md.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;

    // Each flag is taken from bit 0 of its argument only.
    void SetMode(int frame, int fill, int opaque);
    void SetFrame(int frame);
    void SetFill(int fill);
    void SetOpaque(int opaque);
    // -1 when on, 0 when off.
    int GetFrame() const { return (bFlags & kFrame) ? -1 : 0; }
    int GetFill() const { return (bFlags & kFill) ? -1 : 0; }
    int GetOpaque() const { return (bFlags & kOpaque) ? -1 : 0; }

    BCPen* GetPen() const { return opPen; }
    BCPen* SetPen(BCPen* pen);
    BCBrush* GetBrush() const { return opBrush; }
    BCBrush* SetBrush(BCBrush* brush);

  protected:
    // Puts the object's pen, brush and background mode into the device (drawing non-zero)
    // or the white pen and background brush (erasing), and selects its context. The state
    // to restore is shared by all draw graphics, so one pair may be open at a time.
    void DrawSetup(BCDisplayDevice* dev, int drawing);
    void DrawReset();

    // The buffer each dump formats its own fields into before handing them down.
    static constexpr int kDumpSize = 136;

    enum : unsigned char { kFrame = 0x01, kFill = 0x02, kOpaque = 0x04 };
    unsigned char bFlags;
    BCPen* opPen;
    BCBrush* opBrush;
};

// What a load makes (pens, brushes, fonts, polylines, bitmaps, the lists of compounds) is
// the caller's; a stream can carry a keeper that is handed each such object as it is made,
// so that one owner can free them all later. BCDrawingData keeps them this way.
class NORLIB2_API BCLoadKeeper {
  public:
    virtual ~BCLoadKeeper();
    virtual void Keep(BCObject* made) = 0;
};

// Drawing records: on a stream so marked, each draw graphic is written in the layout its Load
// reads (flags byte, pen and brush marks, then the pen and brush) and each text graphic adds
// its font, so that what is saved loads back equal. Unmarked streams keep the records of the
// single classes. `keeper` (may be null) receives what loads from the stream make.
NORLIB2_API void BCBeginDrawingRecords(std::ios_base& stream, BCLoadKeeper* keeper);
NORLIB2_API void BCEndDrawingRecords(std::ios_base& stream);
NORLIB2_API int BCIsDrawingRecords(std::ios_base& stream);
// Hands `made` to the stream's keeper, when it has one.
NORLIB2_API void BCKeepLoaded(std::ios_base& stream, BCObject* made);
// The stream's keeper, or null: what loads make is then theirs to free.
NORLIB2_API BCLoadKeeper* BCGetLoadKeeper(std::ios_base& stream);
