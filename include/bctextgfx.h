#pragma once
#include <iosfwd>
#include "bcgraphic.h"

// One line of text drawn at the object's top-left corner with its own colours, background
// mode and font. coW x coH only serve hit tests and erasing; the text is not clipped to them.
// Record: the graphic-object record, the text (string pointer), the foreground and background
// colour records and the background mode word. The font is not stored.
class NORLIB2_API BCTextGraphic : public BCGraphicObject {
  public:
    // Black on white, mode 4 (the device's own colours and mode), no font.
    BCTextGraphic(unsigned int id, const BCPosition& pos, const BCSize& size, const char* text);
    BCTextGraphic();
    BCTextGraphic(const BCTextGraphic&) = delete;
    BCTextGraphic& operator=(const BCTextGraphic&) = delete;
    ~BCTextGraphic() override;

    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    // 0 without a text; otherwise what the device's PosStr returns.
    int Draw(BCDisplayDevice* dev) override;
    // Clears the whole box with the device's background; 1.
    int UnDraw(BCDisplayDevice* dev) override;

    // A text of the length held is copied in place; otherwise new storage is made. 0 when
    // memory ran out (the object then holds no text). A null text drops the one held.
    int SetText(const char* text);
    const char* GetText() const { return lpText; }
    // Each setter returns the previous value.
    BCColor SetForeColor(const BCColor& color);
    BCColor SetBackColor(const BCColor& color);
    const BCColor& GetForeColor() const { return crFore; }
    const BCColor& GetBackColor() const { return crBack; }
    // 1 transparent, 2 opaque, 4 the device's current colours and mode.
    unsigned int SetBackMode(unsigned int mode);
    unsigned int GetBackMode() const { return wBackMode; }
    // Not owned; null means the device's current font.
    BCFont* SetFont(BCFont* font);
    BCFont* GetFont() const { return opFont; }

  private:
    char* lpText;
    BCColor crFore;
    BCColor crBack;
    unsigned int wBackMode;
    BCFont* opFont;
};

// A bitmap drawn into the object's box with a raster operation; erasing always uses raster
// operation 15. The bitmap is never deleted by the graphic, including one that Save or Load
// makes: it belongs to the caller, reached through GetBitmap.
// Record: the graphic-object record, the bitmap's record, the raster operation double word.
class NORLIB2_API BCBitmapGraphic : public BCGraphicObject {
  public:
    BCBitmapGraphic(unsigned int id, const BCPosition& pos, const BCSize& size, BCBitmap* bitmap,
                    unsigned long rasterOp);
    // No bitmap, raster operation 1.
    BCBitmapGraphic();
    ~BCBitmapGraphic() override;

    // Save without a bitmap first makes an empty one and keeps it; Load makes one only when
    // the graphic has none.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    int Draw(BCDisplayDevice* dev) override;
    int UnDraw(BCDisplayDevice* dev) override;

    BCBitmap* GetBitmap() const { return opBitmap; }
    BCBitmap* SetBitmap(BCBitmap* bitmap);
    unsigned long GetRasterOp() const { return dwRasterOp; }
    unsigned long SetRasterOp(unsigned long rasterOp);

  private:
    BCBitmap* opBitmap;
    unsigned long dwRasterOp;
};
