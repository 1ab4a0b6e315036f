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

constexpr unsigned long kWhite = RGB(255, 255, 255);
constexpr unsigned long kBlack = RGB(0, 0, 0);
constexpr unsigned long kRed = RGB(255, 0, 0);
constexpr unsigned long kBlue = RGB(0, 0, 255);
constexpr unsigned long kGreen = RGB(0, 255, 0);

// Pixels of `color` inside a rectangle of the device.
inline int CountColor(BCMemoryDevice& dev, const BCRectangle& r, unsigned long color) {
    int n = 0;
    for (short y = r.GetTop(); y < r.GetBottom(); ++y)
        for (short x = r.GetLeft(); x < r.GetRight(); ++x)
            n += dev.GetPixel(x, y) == color;
    return n;
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
        for (short y = top; y < bottom; ++y)
            if (dev.GetPixel(x, y) == color) {
                if (left < 0)
                    left = x;
                right = x + 1;
            }
    return {left, right};
}

// Each pixel {x, y, colour} of the table as the device holds it.
template <size_t N> void ExpectPixels(BCMemoryDevice& dev, const unsigned long (&table)[N][3]) {
    for (const auto& e : table)
        EXPECT_EQ(e[2], dev.GetPixel(static_cast<short>(e[0]), static_cast<short>(e[1])))
            << e[0] << "," << e[1];
}

// The first face the module lists.
inline std::string FirstFace(BCModule& module) {
    EXPECT_TRUE(module.GetFontList()->Home());
    return module.GetFontList()->GetFontName();
}

// Pens and brushes in plain colours; equipping a device gives it the red pen and blue brush.
struct Tools {
    BCPen red{BC_PEN_SOLID, 1, BCColor(BC_COLOR_RED)};
    BCPen black{BC_PEN_SOLID, 1, BCColor(BC_COLOR_BLACK)};
    BCPen green{BC_PEN_SOLID, 1, BCColor(BC_COLOR_GREEN)};
    BCBrush blue{BCColor(BC_COLOR_BLUE)};
    BCBrush greenBrush{BCColor(BC_COLOR_GREEN)};
    void Equip(BCDisplayDevice& dev) {
        dev.SetPen(&red);
        dev.SetBrush(&blue);
    }
};

// A test that records every message and expects none it did not clear.
class Quiet : public ::testing::Test {
  protected:
    void TearDown() override { EXPECT_EQ(0u, recorder.Count()) << recorder.Entries()[0].text; }
    // The numbered messages so far, which are then no longer counted.
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
        if (auto* compound = dynamic_cast<BCCompoundGraphic*>(obj)) {
            if (compound->GetList()) {
                FreeLoaded(compound->GetList());
                delete compound->GetList();
            }
        }
    }
    list->Clear(1);
}

// A w x h picture of one colour (0x00RRGGBB).
inline BCBitmap* Solid(short w, short h, unsigned long rgb) {
    std::vector<unsigned long> pixels(w * h, rgb);
    auto* bitmap = new BCBitmap();
    bitmap->SetPixels(w, h, pixels.data());
    return bitmap;
}
