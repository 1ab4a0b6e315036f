#pragma once
#include "bcobject.h"
#include "bcvalues.h"

class BCModule;
class BCPen;
class BCBrush;
class BCFont;
class BCBitmap;
class BCPolyline;

// Device flags.
enum BCDeviceFlag : unsigned long {
    BC_DEV_OWNS_DC = 0x0001, // holds a context it created
    BC_DEV_TOP_DOWN = 0x0002 // y grows downwards
};

// Something to draw on. SelectDC/ReleaseDC nest: the outermost pair obtains the platform
// context through GetDeviceDC and gives it back through ReleaseDeviceDC. A device with nothing
// to draw on yet (a window not created) fails SelectDC and the ReleaseDC paired with it
// quietly, as every other operation of such a window does.
class NORLIB1_API BCDevice : public BCObject {
  public:
    explicit BCDevice(unsigned int typeCode = 22, BCModule* module = nullptr);
    ~BCDevice() override;
    BCDevice(const BCDevice&) = delete;
    BCDevice& operator=(const BCDevice&) = delete;

    void Display(const char* prefix) override;
    // The platform context (HDC) for a first SelectDC; null when there is none.
    virtual void* GetDeviceDC();
    virtual int ReleaseDeviceDC(void* dc);

    // Nesting faults are reported with messages 10020-10024, a context the platform refused
    // with 10021.
    int SelectDC();
    int ReleaseDC();
    // The selected context (HDC), null outside a SelectDC/ReleaseDC pair.
    void* GetDC() const { return hDC; }
    unsigned int GetSelectCount() const { return wSelectCount; }
    unsigned long GetDeviceFlags() const { return dwDevFlags; }
    // Returns the previous flags.
    unsigned long SetDeviceFlags(unsigned long bits, int on);
    const BCRectangle& GetUserRect() const { return rcUser; }
    void SetUserRect(const BCRectangle& rect) { rcUser = rect; }
    BCModule* GetModule() const { return opModule; }

  protected:
    // Obtains and attaches the context of an outermost SelectDC; 0 when there is none.
    int OpenDC();
    // A context has just become current (outermost SelectDC, or an adopted paint context):
    // a device that keeps drawing settings puts them into it. The base does nothing.
    virtual void AttachDCState(void* dc);
    // The context is about to be given back: the device takes its own objects out of it.
    virtual void DetachDCState(void* dc);

    // Puts a context that the caller obtained (a paint context) in place as if selected.
    void AdoptDC(void* dc);
    void* DropDC();

    void* hDC;
    unsigned int wSelectCount;
    unsigned int wFailedSelects; // SelectDC calls that found no context, awaiting their release
    unsigned long dwDevFlags;
    BCRectangle rcUser;
    BCModule* opModule;
};

// Background modes (the platform's values).
enum BCBackMode : unsigned int { BC_BACK_TRANSPARENT = 1, BC_BACK_OPAQUE = 2 };

// How the closed shapes are painted.
enum BCDrawMode : unsigned int {
    BC_DRAW_OUTLINE = 1, // outline with the pen, interior left alone
    BC_DRAW_FILLED = 2,  // outline with the pen and interior with the brush
    BC_DRAW_INTERIOR = 3 // interior with the brush only
};

// Raster operations of PutBitmap.
enum BCRasterOp : unsigned int {
    BC_ROP_COPY = 1,       // the picture replaces what is there
    BC_ROP_OR = 2,         // picture OR screen
    BC_ROP_AND = 3,        // picture AND screen
    BC_ROP_XOR = 4,        // picture XOR screen
    BC_ROP_INVERTCOPY = 5, // the inverted picture
    BC_ROP_INVERT = 6,     // the screen inverted, picture unused
    BC_ROP_ERASE = 15      // the area filled with the background brush, picture unused
};

// A device that shows things to the user (a window, a printer page, a memory picture). It
// keeps its drawing settings (pen, brush, font, colours, background mode, current position)
// itself and puts them into each context it obtains, so they outlast SelectDC/ReleaseDC
// pairs. Drawing operations called outside a pair select the context for their own call.
// Pens, brushes, fonts and bitmaps are the caller's: the device only points to them. The
// device always holds a pen and a brush, so that whoever swaps them can put back what was
// there: SetPen(nullptr) and SetBrush(nullptr) select the shared BCGetBlackPen() and
// BCGetWhiteBrush(). A null font stands for the context's own.
class NORLIB1_API BCDisplayDevice : public BCDevice {
  public:
    explicit BCDisplayDevice(unsigned int typeCode = 25, BCModule* module = nullptr);
    ~BCDisplayDevice() override;
    void Display(const char* prefix) override;

    // Each setter returns what was set before.
    BCPen* SetPen(BCPen* pen);
    BCPen* GetPen() const { return opPen; }
    BCBrush* SetBrush(BCBrush* brush);
    BCBrush* GetBrush() const { return opBrush; }
    BCFont* SetFont(BCFont* font);
    BCFont* GetFont() const { return opFont; }
    BCColor SetTextColor(const BCColor& color);
    const BCColor& GetTextColor() const { return crText; }
    BCColor SetBackColor(const BCColor& color);
    const BCColor& GetBackColor() const { return crBack; }
    // 1 transparent, 2 opaque; other values are ignored.
    unsigned int SetBackMode(unsigned int mode);
    unsigned int GetBackMode() const { return wBackMode; }
    // The brush that Clear and erasing paint with; null means white.
    BCBrush* SetBackground(BCBrush* brush);
    BCBrush* GetBackground() const { return opBackground; }

    // Tab stops of PosStr and GetStrSize: every tab width pixels from the tab origin. Width
    // 0 (the default) means eight average characters of the current font.
    short SetTabWidth(short width);
    short GetTabWidth();
    short SetTabOrigin(short x);
    short GetTabOrigin() const { return coTabOrigin; }

    // The logical point shown at the context's top-left corner: drawing at x appears at
    // x - origin.x (horizontal scrolling moves it). Returns the previous origin.
    BCPosition SetOrigin(const BCPosition& origin);
    BCPosition GetOrigin() const { return BCPosition(coOrgX, coOrgY); }

    int MoveTo(const BCPosition& pos);
    int LineTo(const BCPosition& pos);
    BCPosition GetCrntPos() const { return BCPosition(coCrntX, coCrntY); }

    // Closed shapes in a rectangle (left and top inside, right and bottom just outside),
    // painted as the BCDrawMode says.
    int PutRect(const BCRectangle& rect, unsigned int mode);
    // The largest circle centred in the rectangle.
    int PutCircle(const BCRectangle& rect, unsigned int mode);
    int PutEllipse(const BCRectangle& rect, unsigned int mode);
    // Part of the rectangle's ellipse, counter-clockwise from where the line from its centre
    // to `start` meets it to where the line to `end` does.
    int PutArc(const BCRectangle& rect, const BCPosition& start, const BCPosition& end);
    int PutChord(const BCRectangle& rect, const BCPosition& start, const BCPosition& end,
                 unsigned int mode);
    int PutPie(const BCRectangle& rect, const BCPosition& start, const BCPosition& end,
               unsigned int mode);
    // A point list moved by `offset` (16-bit wrap-around), open or closed and filled.
    int PutPolyline(const BCPolyline* line, const BCPosition& offset);
    int PutPolygon(const BCPolyline* line, const BCPosition& offset);

    // Text with its top-left corner at `pos`, in the current font and colours; TABs move to
    // the next tab stop. The current position moves to the end of the text. `length` -1
    // takes the text up to its NUL.
    int PosStr(const BCPosition& pos, const char* text, int length = -1);
    // PosStr on `row` cleared first: a text line redrawn whole. One drawing call when the
    // background brush is the back colour and the text has no TAB.
    int PosStrInRow(const BCPosition& pos, const char* text, int length, const BCRectangle& row);
    // Width and height of a text written at the tab origin, TABs expanded.
    BCSize GetStrSize(const char* text, int length = -1);
    // Width and height of one character.
    short GetChrWidth(unsigned int ch);
    short GetChrHeight(unsigned int ch);

    // Fills the rectangle with the background brush.
    int Clear(const BCRectangle& rect);
    // Draws the bitmap into the rectangle at `pos` (stretched when `size` differs from the
    // picture's, the picture's own size when `size` is 0 x 0). A null bitmap draws nothing
    // and is no fault; an unknown raster operation is reported with message 10025.
    int PutBitmap(const BCPosition& pos, const BCSize& size, BCBitmap* bitmap,
                  unsigned int rasterOp);

  protected:
    void AttachDCState(void* dc) override;
    void DetachDCState(void* dc) override;

  private:
    // Selects the handle, or the fallback when it has none, into the current context.
    void SelectHandle(void* handle, void* fallback);
    // Puts the display origin into the current context.
    void ApplyOrigin();
    // Selects the font's handle again when the font was changed (size, style, face) while
    // this device had it selected; text is then measured and drawn as the font now is.
    void FollowFont();
    BCSize CharExtent(unsigned int ch);
    // The colour a clear paints, when the background brush is one plain colour.
    bool PlainBackground(unsigned long& rgb) const;
    void* PenHandle() const;
    void* BrushHandle() const;
    void* FontHandle() const;
    int PutPoints(const BCPolyline* line, const BCPosition& offset, int closed);
    // Writes (`draw`) or measures a text from x; returns its width, TABs expanded.
    int TextRuns(void* dc, const char* text, int length, int x, int y, int draw);

    BCPen* opPen;
    BCBrush* opBrush;
    BCFont* opFont;
    BCBrush* opBackground;
    BCColor crText;
    BCColor crBack;
    unsigned int wBackMode;
    short coTabWidth;
    short coTabOrigin;
    short coAutoTabWidth; // eight average characters of hTabFont
    void* hTabFont;
    short coCrntX;
    short coCrntY;
    short coOrgX;
    short coOrgY;
    void* hOrigPen; // the context's own objects while it is attached
    void* hOrigBrush;
    void* hOrigFont;
    void* hSelFont; // the font handle the context holds, to notice a font changed in place
};

// A picture in memory to draw on: a 32-bit top-down device-independent bitmap, white when
// made. Its context is made with it and kept for its life.
class NORLIB1_API BCMemoryDevice : public BCDisplayDevice {
  public:
    // Failure to make the picture is reported with message 10049; the device then has no
    // context and SelectDC fails.
    BCMemoryDevice(short width, short height, BCModule* module = nullptr);
    ~BCMemoryDevice() override;
    void Display(const char* prefix) override;
    void* GetDeviceDC() override;
    int ReleaseDeviceDC(void* dc) override;

    // The COLORREF at (x, y); 0xFFFFFFFF outside the picture.
    unsigned long GetPixel(short x, short y);
    short GetWidth() const { return coWidth; }
    short GetHeight() const { return coHeight; }

  private:
    void* hMemDC;
    void* hPicture;
    void* hOldPicture;
    unsigned long* lpBits;
    short coWidth;
    short coHeight;
};
