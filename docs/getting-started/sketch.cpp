// Sketch: click to add a shape, drag to move the one on top, save and open the drawing.
//
//   sketch.exe              runs until the window is closed
//   sketch.exe --selftest   draws, saves, reopens and cycles on its own, prints the outcome
#include <cstdio>
#include <cstring>
#include <sstream>

#include <norlib2.h>

namespace {

enum : unsigned int {
    kNew = 101,
    kOpen = 102,
    kSave = 103,
    kExit = 104,
    kBox = 201,
    kEllipse = 202,
    kLine = 203,
    kSelfTestTimer = 1
};

class SketchWindow : public BCMainWindow {
  public:
    SketchWindow()
        : BCMainWindow(BCGetApp()), menu(BCResID(100u, BCGetApp()->GetModule())),
          drawing(nullptr, this, "n2d", "sketch.n2d", 0, nullptr),
          pen(BC_PEN_SOLID, 2, BCColor(BC_COLOR_BLUE)), brush(BCColor(BC_COLOR_YELLOW)) {
        SetWindowRect(BCRectangle(40, 40, 520, 400));
    }

    int Open() {
        if (!Create("Sketch"))
            return 0;
        SetMenu(&menu); // the window shows the menu bar: it goes with the window
        Show(SW_SHOW);
        return 1;
    }

    // Adds a shape of the chosen kind with its corner at `pos`; the document notes the change.
    void AddShape(const BCPosition& pos) {
        const BCSize size(60, 40);
        BCGraphicObject* shape;
        if (kind == kLine)
            shape = new BCLineGraphic(0, pos, size, &pen);
        else if (kind == kEllipse)
            shape = new BCEllipseGraphic(0, pos, size, &pen, &brush);
        else
            shape = new BCBoxGraphic(0, pos, size, &pen, &brush);
        if (auto* filled = dynamic_cast<BCDrawGraphic*>(shape); filled && kind != kLine)
            filled->SetFill(1);
        drawing.Append(nullptr, shape); // the list owns the shape from now on
        Invalidate(nullptr, 1);
    }

    int SelfTest();

    // Paint runs inside the system's paint cycle: the window's device holds the paint
    // context, so the drawing paints straight onto it.
    LRESULT Paint(BCEvent*) override { return drawing.GetGraphics()->Draw(this); }

    LRESULT MouseDown(BCEvent* e) override {
        const BCPosition at = e->GetPos();
        dragged = drawing.GetGraphics()->GetTopHitObject(at, 3);
        if (!dragged) {
            AddShape(at);
            return 0;
        }
        grip = at - dragged->GetPos();
        drawing.GetGraphics()->BringToFront(dragged);
        CaptureMouse();
        return 0;
    }

    LRESULT MouseDrag(BCEvent* e) override {
        if (!dragged)
            return 0;
        dragged->SetPos(e->GetPos() - grip);
        // Moving a shape changes the list directly, which the document cannot see: say so.
        drawing.SetModified(true);
        Invalidate(nullptr, 1);
        return 0;
    }

    LRESULT MouseUp(BCEvent*) override {
        dragged = nullptr;
        ReleaseMouse();
        return 0;
    }

    LRESULT MenuCommand(BCEvent* e) override {
        const unsigned int id = e->GetControlID();
        switch (id) {
        case kNew:
            drawing.NewFile(); // asks to save unsaved changes first
            break;
        case kOpen:
            drawing.LoadFile(); // the file named at construction
            break;
        case kSave:
            if (drawing.SaveFile())
                BCDispAppText(this, "Saved %lu shapes to %s.", drawing.GetCount(),
                              drawing.GetFileName());
            break;
        case kExit:
            if (drawing.QuerySaveFile())
                Destroy();
            return 0;
        case kBox:
        case kEllipse:
        case kLine:
            kind = id;
            menu.SetExclCheck(kBox, kLine, id);
            return 0;
        default:
            return 0;
        }
        Invalidate(nullptr, 1);
        return 0;
    }

    // Closing asks to save unsaved changes; Cancel keeps the window.
    LRESULT Close(BCEvent* e) override { return drawing.QuerySaveFile() ? DefaultEvent(e) : 0; }

    LRESULT Timer(BCEvent*) override {
        KillTimer(kSelfTestTimer);
        selfTestResult = SelfTest();
        Destroy(); // the main window going ends the message loop
        return 0;
    }

    int selfTestResult = 1;

  private:
    BCMenu menu;
    BCDrawingData drawing;
    BCPen pen;
    BCBrush brush;
    unsigned int kind = kBox;
    BCGraphicObject* dragged = nullptr;
    BCSize grip;
};

std::string RecordOf(BCDrawingData& drawing) {
    std::ostringstream record;
    drawing.Save(record);
    return record.str();
}

// What a user does, done by the program itself: three shapes, save, reopen equal, and a
// hundred open/close cycles that leave no drawing object behind.
int SketchWindow::SelfTest() {
    const unsigned int kinds[] = {kBox, kEllipse, kLine};
    for (unsigned int i = 0; i < 3; ++i) {
        kind = kinds[i];
        AddShape(BCPosition(static_cast<short>(20 + 90 * i), 30));
    }
    Update();
    if (!drawing.SaveFile())
        return 1;
    const unsigned long handles = BCGetGdiObjectCount();
    for (int cycle = 0; cycle < 100; ++cycle) {
        BCDrawingData reopened(nullptr, nullptr, "n2d", "sketch.n2d", 0, nullptr);
        if (!reopened.LoadFile() || RecordOf(reopened) != RecordOf(drawing))
            return 1;
    }
    return BCGetGdiObjectCount() == handles ? 0 : 1;
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR commandLine, int) {
    BCApplication app;
    SketchWindow window;
    if (!window.Open())
        return 1;
    const bool selfTest = std::strstr(commandLine, "--selftest") != nullptr;
    if (selfTest)
        window.SetTimer(kSelfTestTimer, 200);
    app.Run();
    if (!selfTest)
        return 0;
    std::printf("sketch: %s\n", window.selfTestResult == 0 ? "ok" : "FAILED");
    return window.selfTestResult;
}
