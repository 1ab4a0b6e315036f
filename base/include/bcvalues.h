#pragma once
#include <iosfwd>
#include "bcobject.h"

class BCModule;

// A point; coordinates are signed 16-bit values.
class NORLIB1_API BCPosition : public BCObject {
  public:
    BCPosition(short x = 0, short y = 0);
    short GetX() const { return coX; }
    short GetY() const { return coY; }
    void SetX(short x) { coX = x; }
    void SetY(short y) { coY = y; }
    void Set(short x, short y) { coX = x, coY = y; }
    bool operator==(const BCPosition& o) const { return coX == o.coX && coY == o.coY; }
    bool operator!=(const BCPosition& o) const { return !(*this == o); }
    void Display(const char* prefix) override;

  private:
    short coX, coY;
};

class NORLIB1_API BCSize : public BCObject {
  public:
    BCSize(short width = 0, short height = 0);
    short GetWidth() const { return coW; }
    short GetHeight() const { return coH; }
    void SetWidth(short width) { coW = width; }
    void SetHeight(short height) { coH = height; }
    bool operator==(const BCSize& o) const { return coW == o.coW && coH == o.coH; }
    bool operator!=(const BCSize& o) const { return !(*this == o); }
    void Display(const char* prefix) override;

  private:
    short coW, coH;
};

// A pair of offsets: a selection's anchor and end, a range's start and end.
class NORLIB1_API BCLimits : public BCObject {
  public:
    BCLimits(long start = 0, long end = 0);
    long GetStart() const { return dwStart; }
    long GetEnd() const { return dwEnd; }
    void SetStart(long start) { dwStart = start; }
    void SetEnd(long end) { dwEnd = end; }
    // Distance between the two ends, whichever comes first.
    unsigned long GetLength() const {
        return dwEnd >= dwStart ? static_cast<unsigned long>(dwEnd - dwStart)
                                : static_cast<unsigned long>(dwStart - dwEnd);
    }
    bool IsEmpty() const { return dwStart == dwEnd; }
    bool operator==(const BCLimits& o) const { return dwStart == o.dwStart && dwEnd == o.dwEnd; }
    void Display(const char* prefix) override;

  private:
    long dwStart, dwEnd;
};

// Left and top are inside, right and bottom just outside, as the platform's rectangles.
class NORLIB1_API BCRectangle : public BCObject {
  public:
    BCRectangle(short left = 0, short top = 0, short right = 0, short bottom = 0);
    BCRectangle(const BCPosition& pos, const BCSize& size);
    short GetLeft() const { return coLeft; }
    short GetTop() const { return coTop; }
    short GetRight() const { return coRight; }
    short GetBottom() const { return coBottom; }
    short GetWidth() const { return static_cast<short>(coRight - coLeft); }
    short GetHeight() const { return static_cast<short>(coBottom - coTop); }
    BCPosition GetPos() const { return BCPosition(coLeft, coTop); }
    BCSize GetSize() const { return BCSize(GetWidth(), GetHeight()); }
    void Set(short left, short top, short right, short bottom);
    bool IsEmpty() const { return coRight <= coLeft || coBottom <= coTop; }
    bool Contains(const BCPosition& pos) const;
    bool operator==(const BCRectangle& o) const;
    // Conversion to and from the platform's RECT (passed as void* to keep windows.h out).
    void ToRECT(void* rect) const;
    static BCRectangle FromRECT(const void* rect);
    void Display(const char* prefix) override;

  private:
    short coLeft, coTop, coRight, coBottom;
};

// Arithmetic of points and extents, wrapping at 16 bits as the coordinates do: a position
// moved by a size, the size between two positions, sizes added and taken away.
inline BCPosition operator+(const BCPosition& p, const BCSize& s) {
    return BCPosition(static_cast<short>(p.GetX() + s.GetWidth()),
                      static_cast<short>(p.GetY() + s.GetHeight()));
}
inline BCPosition operator-(const BCPosition& p, const BCSize& s) {
    return BCPosition(static_cast<short>(p.GetX() - s.GetWidth()),
                      static_cast<short>(p.GetY() - s.GetHeight()));
}
inline BCSize operator-(const BCPosition& a, const BCPosition& b) {
    return BCSize(static_cast<short>(a.GetX() - b.GetX()), static_cast<short>(a.GetY() - b.GetY()));
}
inline BCSize operator+(const BCSize& a, const BCSize& b) {
    return BCSize(static_cast<short>(a.GetWidth() + b.GetWidth()),
                  static_cast<short>(a.GetHeight() + b.GetHeight()));
}
inline BCSize operator-(const BCSize& a, const BCSize& b) {
    return BCSize(static_cast<short>(a.GetWidth() - b.GetWidth()),
                  static_cast<short>(a.GetHeight() - b.GetHeight()));
}
inline BCPosition& operator+=(BCPosition& p, const BCSize& s) {
    return p = p + s;
}
inline BCPosition& operator-=(BCPosition& p, const BCSize& s) {
    return p = p - s;
}

// The null values: a position, size, selection and rectangle of all zeros. A null size asks
// for the platform's default where a size is optional (a caret's).
NORLIB1_API const BCPosition& BCGetNullPos();
NORLIB1_API const BCSize& BCGetNullSize();
NORLIB1_API const BCLimits& BCGetNullLimits();
NORLIB1_API const BCRectangle& BCGetNullRect();

// Stock colours; the first eight follow the classic colour-display order, so 0 is black
// and 7 white.
enum BCColorConst : unsigned int {
    BC_COLOR_BLACK = 0,
    BC_COLOR_BLUE = 1,
    BC_COLOR_GREEN = 2,
    BC_COLOR_CYAN = 3,
    BC_COLOR_RED = 4,
    BC_COLOR_MAGENTA = 5,
    BC_COLOR_YELLOW = 6,
    BC_COLOR_WHITE = 7,
    BC_COLOR_GRAY = 8,
    BC_COLOR_LIGHTGRAY = 9,
    BC_COLOR_CONSTANTS = 10
};

// An RGB colour; stored as the platform's COLORREF (0x00BBGGRR).
class NORLIB1_API BCColor : public BCObject {
  public:
    BCColor(unsigned char red = 0, unsigned char green = 0, unsigned char blue = 0);
    // A stock colour; an unknown constant gives black.
    BCColor(BCColorConst constant);
    static BCColor FromCOLORREF(unsigned long rgb);
    unsigned char GetRed() const { return static_cast<unsigned char>(dwRGB & 0xFF); }
    unsigned char GetGreen() const { return static_cast<unsigned char>((dwRGB >> 8) & 0xFF); }
    unsigned char GetBlue() const { return static_cast<unsigned char>((dwRGB >> 16) & 0xFF); }
    unsigned long GetCOLORREF() const { return dwRGB; }
    bool operator==(const BCColor& o) const { return dwRGB == o.dwRGB; }
    bool operator!=(const BCColor& o) const { return dwRGB != o.dwRGB; }
    // Record: the type code word, then the COLORREF as a double word.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;

  private:
    unsigned long dwRGB;
};

// Names a resource of a module, by number or by name.
class NORLIB1_API BCResID : public BCObject {
  public:
    BCResID(unsigned int id, BCModule* module = nullptr);
    BCResID(const char* name, BCModule* module = nullptr);
    BCResID(const BCResID& other);
    BCResID& operator=(const BCResID& other);
    ~BCResID() override;

    unsigned int GetResNum() const { return wResNum; }
    // The name, or null for a numbered resource.
    const char* GetResName() const { return caResName; }
    BCModule* GetModule() const { return opModule; }
    // What the platform's Load...A calls take: the name, or the number as an integer atom.
    const char* GetResource() const;
    void Display(const char* prefix) override;

  private:
    unsigned int wResNum;
    char* caResName;
    BCModule* opModule;
};
