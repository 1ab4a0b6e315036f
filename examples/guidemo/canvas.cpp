#include "canvas.h"

namespace {

BCPosition At(short x, short y) {
    return BCPosition(x, y);
}
BCSize Of(short w, short h) {
    return BCSize(w, h);
}

// Filled shapes are drawn with outline and interior.
template <class Shape> Shape* Filled(Shape* shape) {
    shape->SetFill(1);
    return shape;
}

} // namespace

Canvas::Canvas(BCWindow* parent, unsigned int id, BCListBox* log)
    : BCChildWindow(parent, id, BCGetApp()), log(log) {
    SetStyle(WS_BORDER, 1);
    const BCColor inks[] = {BCColor(180, 0, 0), BCColor(0, 110, 0), BCColor(0, 0, 170)};
    const BCColor fills[] = {BCColor(255, 210, 200), BCColor(200, 240, 200),
                             BCColor(200, 215, 255)};
    for (int i = 0; i < 3; ++i) {
        pens[i] = new BCPen(BC_PEN_SOLID, 2, inks[i]);
        brushes[i] = new BCBrush(fills[i]);
    }
    const short zig[] = {0, 30, 20, 0, 40, 30, 60, 0, 80, 30};
    zigzag = new BCPolyline(5, zig);
    const short tips[] = {30, 0,  38, 22, 60, 22, 42, 36, 50, 60,
                          30, 45, 10, 60, 18, 36, 0,  22, 22, 22};
    star = new BCPolyline(10, tips);
    picture = new BCBitmap(32, 32);
    unsigned long pixels[32 * 32];
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 32; ++x)
            pixels[y * 32 + x] = ((x / 8 + y / 8) % 2) ? 0x00C08040ul : 0x00FFE0A0ul;
    picture->SetPixels(32, 32, pixels);
    Build();
}

Canvas::~Canvas() {
    scene.Clear(1); // the objects go before the tools they point to
    for (int i = 0; i < 3; ++i) {
        delete pens[i];
        delete brushes[i];
    }
    delete zigzag;
    delete star;
    delete picture;
}

void Canvas::Build() {
    scene.Append(nullptr, Filled(new BCBoxGraphic(1, At(20, 20), Of(80, 50), pens[0], brushes[0])));
    scene.Append(nullptr,
                 Filled(new BCEllipseGraphic(2, At(120, 20), Of(90, 50), pens[1], brushes[1])));
    scene.Append(nullptr,
                 Filled(new BCCircleGraphic(3, At(20, 90), Of(60, 60), pens[2], brushes[2])));
    scene.Append(nullptr, new BCLineGraphic(4, At(100, 90), Of(100, 50), pens[0]));
    scene.Append(nullptr,
                 new BCArcGraphic(5, At(20, 170), Of(70, 60), At(90, 170), At(20, 170), pens[1]));
    scene.Append(nullptr, Filled(new BCChordGraphic(6, At(110, 170), Of(70, 60), At(180, 200),
                                                    At(110, 200), pens[2], brushes[2])));
    scene.Append(nullptr, Filled(new BCPieGraphic(7, At(20, 250), Of(70, 70), At(90, 250),
                                                  At(20, 250), pens[0], brushes[0])));
    scene.Append(nullptr, new BCPolylineGraphic(8, At(110, 260), Of(80, 30), zigzag, pens[1]));
    scene.Append(nullptr, Filled(new BCPolygonGraphic(9, At(150, 90), Of(60, 60), star, pens[2],
                                                      brushes[1])));
    scene.Append(nullptr, new BCTextGraphic(10, At(110, 300), Of(110, 16), "Drag the shapes"));
    scene.Append(nullptr, new BCBitmapGraphic(11, At(200, 250), Of(32, 32), picture, BC_ROP_COPY));
}

template <class... Args> long Canvas::Report(const char* format, Args... args) {
    KoString line;
    line.Sprintf(format, args...);
    log->GoTo(log->Append(const_cast<char*>(line.c_str())));
    return 1;
}

LRESULT Canvas::Paint(BCEvent*) {
    scene.Draw(this);
    return 0;
}

LRESULT Canvas::MouseDown(BCEvent* e) {
    SetFocus();
    BCPosition pos = e->GetPos();
    // The object on top: the last one that holds the point.
    dragged = nullptr;
    for (BCGraphicObject* hit = scene.GetHitObject(pos, 0); hit; hit = scene.GetHitObject(pos, 1))
        dragged = hit;
    if (!dragged)
        return Report("Mouse down at %d, %d", pos.GetX(), pos.GetY());
    grip = BCPosition(static_cast<short>(pos.GetX() - dragged->GetPos().GetX()),
                      static_cast<short>(pos.GetY() - dragged->GetPos().GetY()));
    CaptureMouse();
    return Report("Picked %s", dragged->GetObjectTypeStr());
}

LRESULT Canvas::MouseDrag(BCEvent* e) {
    if (!dragged)
        return 0;
    BCPosition pos = e->GetPos();
    SelectDC();
    dragged->UnDraw(this);
    dragged->SetPos(BCPosition(static_cast<short>(pos.GetX() - grip.GetX()),
                               static_cast<short>(pos.GetY() - grip.GetY())));
    dragged->Draw(this);
    ReleaseDC();
    return 1;
}

LRESULT Canvas::MouseUp(BCEvent* e) {
    if (!dragged)
        return Report("Mouse up at %d, %d", e->GetPos().GetX(), e->GetPos().GetY());
    ReleaseMouse();
    BCPosition at = dragged->GetPos();
    dragged = nullptr;
    Repaint(); // erasing left gaps in what lay underneath
    return Report("Dropped at %d, %d", at.GetX(), at.GetY());
}

LRESULT Canvas::KeyDown(BCEvent* e) {
    return Report("Key down: code %u", e->GetKeycode());
}

LRESULT Canvas::CharKey(BCEvent* e) {
    return Report("Character: '%c'", static_cast<int>(e->GetWParam()));
}
