#pragma once
// Pixels of a memory device, tools and records, shared by the device and graphics test files.
#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"

constexpr unsigned long kWhite = RGB(255, 255, 255), kBlack = RGB(0, 0, 0), kRed = RGB(255, 0, 0),
                        kBlue = RGB(0, 0, 255), kGreen = RGB(0, 255, 0);

inline int CountColor(BCMemoryDevice& dev, const BCRectangle& r, unsigned long color) {
    int n = 0;
    for (short y = r.GetTop(); y < r.GetBottom(); ++y)
        for (short x = r.GetLeft(); x < r.GetRight(); ++x)
            n += dev.GetPixel(x, y) == color;
    return n;
}

// Every pixel of the device, row by row, for comparing two pictures at once.
inline std::string Snapshot(BCMemoryDevice& dev) {
    std::string pixels;
    for (short y = 0; y < dev.GetHeight(); ++y)
        for (short x = 0; x < dev.GetWidth(); ++x)
            pixels += LE32(dev.GetPixel(x, y));
    return pixels;
}

inline int CountNotWhite(BCMemoryDevice& dev) {
    BCRectangle all(0, 0, dev.GetWidth(), dev.GetHeight());
    return all.GetWidth() * all.GetHeight() - CountColor(dev, all, kWhite);
}

// Leftmost and one past the rightmost column holding a pixel of `color` in a band of rows.
inline std::pair<int, int> ColumnsOf(BCMemoryDevice& dev, short top, short bottom,
                                     unsigned long color) {
    int left = -1, right = -1;
    for (short x = 0; x < dev.GetWidth(); ++x)
        if (CountColor(dev, BCRectangle(x, top, static_cast<short>(x + 1), bottom), color))
            right = x + 1, left = left < 0 ? x : left;
    return {left, right};
}

// Each pixel {x, y, colour} of the table as the device holds it.
template <size_t N> void ExpectPixels(BCMemoryDevice& dev, const unsigned long (&table)[N][3]) {
    for (const auto& e : table)
        EXPECT_EQ(e[2], dev.GetPixel(static_cast<short>(e[0]), static_cast<short>(e[1])))
            << e[0] << "," << e[1];
}

inline std::string FirstFace(BCModule& module) {
    EXPECT_TRUE(module.GetFontList()->Home());
    return module.GetFontList()->GetFontName();
}

// Pens and brushes in plain colours; equipping a device gives it the red pen and blue brush.
struct Tools {
    BCPen red{BC_PEN_SOLID, 1, BCColor(BC_COLOR_RED)},
        black{BC_PEN_SOLID, 1, BCColor(BC_COLOR_BLACK)},
        green{BC_PEN_SOLID, 1, BCColor(BC_COLOR_GREEN)};
    BCBrush blue{BCColor(BC_COLOR_BLUE)}, greenBrush{BCColor(BC_COLOR_GREEN)};
    void Equip(BCDisplayDevice& dev) {
        dev.SetPen(&red);
        dev.SetBrush(&blue);
    }
};

// A test that records every message and expects none it did not clear.
class Quiet : public ::testing::Test {
  protected:
    void TearDown() override { EXPECT_EQ(0u, recorder.Count()) << recorder.Entries()[0].text; }
    std::vector<unsigned int> Taken() {
        std::vector<unsigned int> ids = recorder.NumberedIds();
        recorder.Clear();
        return ids;
    }
    MsgRecorder recorder;
};

// The type code word and the 12-byte field block that every graphic record begins with.
inline std::string Head(unsigned code, unsigned id, short x, short y, short w, short h) {
    return LE32(code) + LE32(id) + LE16(x) + LE16(y) + LE16(w) + LE16(h);
}

// What a graphic-list load hangs off its objects belongs to the caller: bitmaps, compounds' lists.
inline void FreeLoaded(BCGraphicList* list) {
    for (int more = list->Home(); more; more = list->Next()) {
        auto* obj = static_cast<BCGraphicObject*>(list->GetCrntItem());
        if (auto* bitmap = dynamic_cast<BCBitmapGraphic*>(obj))
            delete bitmap->GetBitmap();
        auto* compound = dynamic_cast<BCCompoundGraphic*>(obj);
        if (compound && compound->GetList()) {
            FreeLoaded(compound->GetList());
            delete compound->GetList();
        }
    }
    list->Clear(1);
}

inline BCBitmap* Solid(short w, short h, unsigned long rgb) {
    std::vector<unsigned long> pixels(w * h, rgb);
    auto* bitmap = new BCBitmap();
    bitmap->SetPixels(w, h, pixels.data());
    return bitmap;
}

// Everything the scene's graphics point to; the application keeps it.
struct Pieces {
    Tools tools;
    BCPen wide{BC_PEN_SOLID, 3, BCColor(BC_COLOR_MAGENTA)};
    BCBrush hatch{BC_HATCH_CROSS, BCColor(BC_COLOR_RED)};
    std::unique_ptr<BCBitmap> picture{Solid(6, 4, 0x00FF00)};
    const short zigzag[8] = {0, 0, 10, 12, 20, 0, 30, 12};
    BCPolyline line{4, zigzag};
    BCFont font{"Arial"};
    BCGraphicList inner, innermost;
};

// One graphic of every kind, some nested two compounds deep.
template <class Target> void FillScene(Target& drawing, Pieces& p) {
    p.font.SetBold(1);
    p.font.SetItalic(1);
    p.font.SetSize(BCSize(0, -15));
    auto* text = new BCTextGraphic(12, BCPosition(4, 150), BCSize(90, 20), "Drawn");
    text->SetFont(&p.font);
    text->SetForeColor(BCColor(BC_COLOR_BLUE));
    auto* box = new BCBoxGraphic(3, BCPosition(10, 10), BCSize(40, 30), &p.wide, &p.hatch);
    box->SetMode(1, 1, 0);
    auto* pie = new BCPieGraphic(9, BCPosition(0, 0), BCSize(30, 30), BCPosition(30, 15),
                                 BCPosition(15, 0), &p.tools.black, &p.tools.greenBrush);
    pie->SetMode(1, 1, 1);
    p.innermost.Append(nullptr, pie);
    p.innermost.Append(
        nullptr, new BCBitmapGraphic(13, BCPosition(35, 0), BCSize(12, 8), p.picture.get(), 1));
    p.inner.Append(nullptr, new BCCircleGraphic(7, BCPosition(0, 0), BCSize(20, 20), &p.tools.red,
                                                &p.tools.blue));
    p.inner.Append(nullptr,
                   new BCCompoundGraphic(15, BCPosition(5, 25), BCSize(60, 40), &p.innermost));
    BCGraphicObject* const scene[] = {
        new BCGraphicObject(70, 1, BCPosition(200, 150), BCSize(40, 16)),
        new BCDrawGraphic(71, 2, BCPosition(0, 0), BCSize(5, 5)),
        box,
        new BCLineGraphic(4, BCPosition(60, 10), BCSize(40, 30), &p.tools.green),
        new BCPolylineGraphic(5, BCPosition(110, 10), BCSize(31, 13), &p.line, &p.wide),
        new BCPolygonGraphic(6, BCPosition(110, 40), BCSize(31, 13), &p.line, &p.tools.red,
                             &p.tools.blue),
        new BCArcGraphic(8, BCPosition(160, 10), BCSize(40, 40), BCPosition(200, 30),
                         BCPosition(180, 10), &p.wide),
        new BCEllipseGraphic(10, BCPosition(10, 60), BCSize(50, 25), &p.tools.black, &p.hatch),
        new BCChordGraphic(11, BCPosition(70, 60), BCSize(40, 40), BCPosition(110, 80),
                           BCPosition(90, 60), &p.tools.red, &p.tools.greenBrush),
        text,
        new BCCompoundGraphic(14, BCPosition(150, 60), BCSize(90, 80), &p.inner)};
    for (BCGraphicObject* graphic : scene)
        ASSERT_EQ(1, drawing.Append(nullptr, graphic));
}
