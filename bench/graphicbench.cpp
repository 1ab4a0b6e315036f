// A graphic list of 10,000 mixed shapes drawn onto a memory device, against a plain GDI loop
// drawing the same shapes with the same pens and brushes, in one run.
#include <windows.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include <norlib2.h>

namespace {

using Clock = std::chrono::steady_clock;

template <class Work> double Millis(Work work) {
    auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

struct Shape {
    int kind; // 0 box, 1 ellipse, 2 circle, 3 line
    short x, y, w, h;
    int tool;
};

// Draws and erases the list `rounds` times and reports the process's GDI objects before and
// after: a handle lost per shape would show as millions.
void LeakRun(BCGraphicList& list, BCMemoryDevice& device, int rounds) {
    list.UnDraw(&device); // the first erase makes the stock white pen
    const unsigned long before = BCGetGdiObjectCount();
    double drawing = 0, erasing = 0;
    for (int r = 0; r < rounds; ++r) {
        drawing += Millis([&] { list.Draw(&device); });
        erasing += Millis([&] { list.UnDraw(&device); });
    }
    const unsigned long after = BCGetGdiObjectCount();
    std::printf("%lu shapes drawn and erased %d times (%.0f ms drawing, %.0f ms erasing): GDI "
                "objects %lu before, %lu after\n",
                list.GetCount(), rounds, drawing, erasing, before, after);
}

} // namespace

int main(int argc, char** argv) {
    // `graphicbench 1000` adds the leak run: the list drawn and erased that many times.
    const int leakRounds = argc > 1 ? std::atoi(argv[1]) : 0;
    const int count = 10000, rounds = 5;
    const COLORREF colors[] = {RGB(200, 0, 0), RGB(0, 150, 0), RGB(0, 0, 200), RGB(90, 90, 90)};
    std::vector<BCPen*> pens;
    std::vector<BCBrush*> brushes;
    for (COLORREF c : colors) {
        BCColor color = BCColor::FromCOLORREF(c);
        pens.push_back(new BCPen(BC_PEN_SOLID, 1, color));
        brushes.push_back(new BCBrush(BCColor::FromCOLORREF(c ^ 0x00FFFFFF)));
    }
    std::vector<Shape> shapes;
    for (int i = 0; i < count; ++i)
        shapes.push_back({i % 4, static_cast<short>((i * 37) % 760),
                          static_cast<short>((i * 53) % 560), static_cast<short>(10 + i % 30),
                          static_cast<short>(8 + i % 25), i % 4});

    BCGraphicList list;
    for (const Shape& s : shapes) {
        BCPosition pos(s.x, s.y);
        BCSize size(s.w, s.h);
        BCGraphicObject* g = nullptr;
        BCPen* pen = pens[s.tool];
        BCBrush* brush = brushes[s.tool];
        switch (s.kind) {
        case 0:
            g = new BCBoxGraphic(1, pos, size, pen, brush);
            break;
        case 1:
            g = new BCEllipseGraphic(1, pos, size, pen, brush);
            break;
        case 2:
            g = new BCCircleGraphic(1, pos, size, pen, brush);
            break;
        default:
            g = new BCLineGraphic(1, pos, size, pen);
            break;
        }
        if (BCDrawGraphic* d = dynamic_cast<BCDrawGraphic*>(g))
            d->SetFill(1);
        list.Append(nullptr, g);
    }

    BCMemoryDevice device(800, 600);
    double ours = Millis([&] {
        for (int r = 0; r < rounds; ++r)
            list.Draw(&device);
    });

    device.SelectDC();
    HDC dc = static_cast<HDC>(device.GetDC());
    double plain = Millis([&] {
        for (int r = 0; r < rounds; ++r) {
            for (const Shape& s : shapes) {
                HGDIOBJ oldPen = SelectObject(dc, static_cast<HGDIOBJ>(pens[s.tool]->GetHandle()));
                HGDIOBJ oldBrush =
                    SelectObject(dc, static_cast<HGDIOBJ>(brushes[s.tool]->GetHandle()));
                switch (s.kind) {
                case 0:
                    Rectangle(dc, s.x, s.y, s.x + s.w, s.y + s.h);
                    break;
                case 1:
                    Ellipse(dc, s.x, s.y, s.x + s.w, s.y + s.h);
                    break;
                case 2: {
                    int d = s.w < s.h ? s.w : s.h;
                    int cx = s.x + (s.w - d) / 2, cy = s.y + (s.h - d) / 2;
                    Ellipse(dc, cx, cy, cx + d, cy + d);
                    break;
                }
                default:
                    MoveToEx(dc, s.x, s.y, nullptr);
                    LineTo(dc, s.x + s.w, s.y + s.h);
                    break;
                }
                SelectObject(dc, oldBrush);
                SelectObject(dc, oldPen);
            }
        }
    });
    device.ReleaseDC();

    std::printf("%d shapes drawn %d times onto an 800x600 memory device\n\n", count, rounds);
    std::printf("%-36s %9.2f ms  %-20s %9.2f ms  ratio %5.2f\n", "graphic list Draw", ours,
                "plain GDI loop", plain, plain > 0 ? ours / plain : 0.0);
    if (leakRounds > 0)
        LeakRun(list, device, leakRounds);

    // Saving and loading 10,000 text graphics against the same number of bytes moved raw.
    BCGraphicList labels;
    for (int i = 0; i < count; ++i) {
        std::string text = "Label " + std::to_string(i);
        labels.Append(nullptr, new BCTextGraphic(static_cast<unsigned>(i),
                                                 BCPosition(static_cast<short>(i % 700), 10),
                                                 BCSize(60, 14), text.c_str()));
    }
    std::ostringstream saved(std::ios::binary);
    double save = Millis([&] { labels.Save(saved); });
    const std::string bytes = saved.str();
    std::ostringstream raw(std::ios::binary);
    double rawWrite =
        Millis([&] { raw.write(bytes.data(), static_cast<std::streamsize>(bytes.size())); });
    BCGraphicList loaded;
    std::istringstream in(bytes, std::ios::binary);
    double load = Millis([&] { loaded.Load(in); });
    std::string back(bytes.size(), '\0');
    std::istringstream rawIn(bytes, std::ios::binary);
    double rawRead =
        Millis([&] { rawIn.read(&back[0], static_cast<std::streamsize>(back.size())); });
    std::printf("%-36s %9.2f ms  %-20s %9.2f ms  ratio %5.1f\n", "save 10,000 text graphics", save,
                "raw write", rawWrite, rawWrite > 0 ? save / rawWrite : 0.0);
    std::printf("%-36s %9.2f ms  %-20s %9.2f ms  ratio %5.1f\n", "load 10,000 text graphics", load,
                "raw read", rawRead, rawRead > 0 ? load / rawRead : 0.0);
    std::printf("(%zu bytes, %lu graphics loaded back)\n", bytes.size(), loaded.GetCount());

    for (BCPen* p : pens)
        delete p;
    for (BCBrush* b : brushes)
        delete b;
    return 0;
}
