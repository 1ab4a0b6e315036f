// A multiple-document frame: text editor documents and drawing documents, a Window menu that
// lists them and arranges them, and a Font menu (faces, sizes and styles of the machine's
// fonts) that changes the font of the active document.
//
//   mdidemo.exe               runs until the frame is closed
//   mdidemo.exe --demo N      opens two documents, tiles them, cascades them and changes the
//                             editor's font on its own, prints the editor to the default
//                             printer, then ends after N more seconds
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include <norlib2.h>

namespace {

enum : unsigned int {
    kNewEditor = 301,
    kNewDrawing = 302,
    kExit = 303,
    kPrint = 304,
    kTile = 401,
    kCascade = 402,
    kArrange = 403,
    kNext = 404,
    kCloseAll = 405,
    kEditorId = 10,
    kDemoTimer = 1
};

// Positions in the Font menu of the face and size submenus.
constexpr unsigned int kFacePos = 0;
constexpr unsigned int kSizePos = 1;

// Tells whoever watches the demonstration (a script taking screenshots) how far it got.
void Mark(const char* file) {
    if (FILE* f = std::fopen(file, "w"))
        std::fclose(f);
}

const char kEditorText[] = "A text editor in a document window.\r\n"
                           "\r\n"
                           "File > New editor and File > New drawing open more documents;\r\n"
                           "the Window menu lists them and tiles, cascades or closes them.\r\n"
                           "\r\n"
                           "The Font menu shows the faces and sizes of this machine's fonts\r\n"
                           "and the styles of the active document's font: choose one and\r\n"
                           "the document is drawn in it.\r\n";

BCFontList* Faces() {
    return BCGetApp()->GetModule()->GetFontList();
}

// A document drawn in a font of its own, which the Font menu changes in place.
class Document : public BCMDIChildWindow {
  public:
    explicit Document(BCMDIClientWindow* client) : BCMDIChildWindow(client, BCGetApp()) {}
    ~Document() override {
        ReleaseFont();
        delete font;
    }
    // The window the Font menu acts on.
    BCWindow* FontWindow() const { return fontWindow; }
    // Draws the document on a printer whose job has started.
    virtual void PrintOn(BCPrinter& printer) = 0;

  protected:
    int UseFont(BCWindow* window, const char* face, unsigned int points) {
        BCFontList* faces = Faces();
        font = new BCFont(faces->HasFace(face) ? face : nullptr, BCGetApp()->GetModule(), faces);
        font->SetPointSize(points);
        fontWindow = window;
        window->SetFont(font);
        return 1;
    }
    // The font menu may have put a font of its own on the window: that one is ours too.
    void ReleaseFont() {
        if (!fontWindow)
            return;
        BCFont* shown = fontWindow->SetFont(nullptr);
        if (shown != font)
            delete shown;
        fontWindow = nullptr;
    }

  private:
    BCFont* font = nullptr;
    BCWindow* fontWindow = nullptr;
};

class EditorDocument : public Document {
  public:
    using Document::Document;
    ~EditorDocument() override {
        ReleaseFont();
        delete editor;
    }
    int Start(const char* title) {
        if (!Create(title))
            return 0;
        editor = new BCTextEdit(kEditorId, this, BCPosition(0, 0), BCSize(200, 100), "txt", nullptr,
                                nullptr, GetApp(), 0, 100);
        editor->SetStyle(WS_VSCROLL, 1);
        if (!editor->Create(""))
            return 0;
        UseFont(editor, "Liberation Mono", 10);
        editor->SetWindowRect(GetClientRect());
        editor->SetText(kEditorText);
        return 1;
    }
    LRESULT ReSize(BCEvent* e) override {
        if (editor && editor->GetHandle())
            editor->SetWindowRect(GetClientRect());
        return DefaultEvent(e); // the client needs it to maximize
    }
    LRESULT Focus(BCEvent* e) override {
        if (editor && editor->GetHandle() && e->GetMessage() == WM_SETFOCUS)
            editor->SetFocus();
        return DefaultEvent(e);
    }

    // One printed line per line of text, a small margin around them, in a face of fixed
    // width a sixth of an inch high (the printer's units are its dots).
    void PrintOn(BCPrinter& printer) override {
        BCFont face("Liberation Mono", BCGetApp()->GetModule());
        face.SetSize(BCSize(
            0,
            static_cast<short>(-GetDeviceCaps(static_cast<HDC>(printer.GetDC()), LOGPIXELSY) / 6)));
        printer.SetFont(&face);
        const short margin = 150, height = static_cast<short>(printer.GetChrHeight('H'));
        char line[256];
        for (unsigned int i = 0; i < editor->GetLineCnt(); ++i) {
            unsigned int length = editor->GetTextLine(i, line, sizeof line - 1);
            while (length > 0 && (line[length - 1] == '\r' || line[length - 1] == '\n'))
                --length;
            printer.PosStr(BCPosition(margin, static_cast<short>(margin + i * height)), line,
                           static_cast<int>(length));
        }
        printer.SetFont(nullptr);
    }

  private:
    BCTextEdit* editor = nullptr;
};

class DrawingDocument : public Document {
  public:
    using Document::Document;
    ~DrawingDocument() override {
        scene.Clear(1); // the objects go before the tools they point to
        for (int i = 0; i < 3; ++i) {
            delete pens[i];
            delete brushes[i];
        }
    }
    int Start(const char* title) {
        const BCColor inks[] = {BCColor(180, 0, 0), BCColor(0, 110, 0), BCColor(0, 0, 170)};
        const BCColor fills[] = {BCColor(255, 210, 200), BCColor(200, 240, 200),
                                 BCColor(200, 215, 255)};
        for (int i = 0; i < 3; ++i) {
            pens[i] = new BCPen(BC_PEN_SOLID, 2, inks[i]);
            brushes[i] = new BCBrush(fills[i]);
        }
        Add(new BCBoxGraphic(1, BCPosition(20, 50), BCSize(90, 60), pens[0], brushes[0]));
        Add(new BCEllipseGraphic(2, BCPosition(130, 50), BCSize(110, 60), pens[1], brushes[1]));
        Add(new BCCircleGraphic(3, BCPosition(70, 130), BCSize(70, 70), pens[2], brushes[2]));
        scene.Append(nullptr, new BCLineGraphic(4, BCPosition(160, 130), BCSize(80, 70), pens[0]));
        scene.Append(nullptr, new BCTextGraphic(5, BCPosition(20, 15), BCSize(260, 24),
                                                "A drawing from a graphic list"));
        if (!Create(title))
            return 0;
        return UseFont(this, "Liberation Serif", 14);
    }
    LRESULT Paint(BCEvent*) override {
        scene.Draw(this);
        return 0;
    }
    void PrintOn(BCPrinter& printer) override { scene.Draw(&printer); }

  private:
    void Add(BCDrawGraphic* shape) {
        shape->SetFill(1);
        scene.Append(nullptr, shape);
    }
    BCGraphicList scene;
    BCPen* pens[3] = {};
    BCBrush* brushes[3] = {};
};

class Frame : public BCMDIFrameWindow {
  public:
    explicit Frame(int demoSeconds)
        : BCMDIFrameWindow(BCGetApp()), menu(BCResID(100u, BCGetApp()->GetModule())),
          fontMenu(&menu, 1, BCGetApp()->GetModule()), demoSeconds(demoSeconds) {
        SetWindowRect(BCRectangle(20, 20, 780, 560));
        SetMenu(&menu);
    }

    int Start(const char* title) {
        if (!Create(title))
            return 0;
        Show(SW_SHOW);
        if (demoSeconds > 0)
            SetTimer(kDemoTimer, 1200);
        return 1;
    }

    LRESULT MenuInit(BCEvent* e) override {
        if (e->GetMessage() == WM_INITMENUPOPUP &&
            reinterpret_cast<HMENU>(e->GetWParam()) == fontMenu.GetHandle())
            BuildFontMenu();
        return DefaultEvent(e);
    }

    LRESULT MenuCommand(BCEvent* e) override {
        const unsigned int id = e->GetControlID();
        switch (id) {
        case kNewEditor:
            return Open(new EditorDocument(GetClient()));
        case kNewDrawing:
            return Open(new DrawingDocument(GetClient()));
        case kExit:
            Destroy();
            return 0;
        case kPrint:
            return PrintActive();
        case kTile:
            return Tile();
        case kCascade:
            return Cascade();
        case kArrange:
            return ArrangeIcons();
        case kNext:
            return Next();
        case kCloseAll:
            return CloseAll();
        default:
            break;
        }
        BCWindow* target = Target();
        if (target && BCFontMenuCommand(target, &fontMenu, id)) {
            target->Repaint();
            return 0;
        }
        return DefaultEvent(e); // the Window menu's documents
    }

    LRESULT Timer(BCEvent*) override { return DemoStep(); }

  private:
    // The active document on the default printer, with the status dialog while it prints.
    long PrintActive() {
        auto* active = static_cast<Document*>(GetActiveChild());
        char title[64] = "";
        if (!active || !active->GetTitle(title, sizeof title))
            return 0;
        BCPrinter printer(GetApp(), BC_PRINT_NORMAL);
        if (!printer.Exists() || !printer.Start(title, this))
            return 0;
        active->PrintOn(printer);
        return printer.End(this);
    }

    BCWindow* Target() {
        Document* active = static_cast<Document*>(GetActiveChild());
        return active ? active->FontWindow() : nullptr;
    }

    template <class Doc> long Open(Doc* doc) {
        // Documents the user closed are gone as windows; their objects go now.
        for (auto it = documents.begin(); it != documents.end();)
            it = (*it)->HandleCheck() ? it + 1 : documents.erase(it);
        std::unique_ptr<Doc> owned(doc);
        char title[32];
        std::snprintf(title, sizeof title, "Document %d", ++opened);
        if (!GetClient() || !owned->Start(title))
            return 0;
        documents.push_back(std::move(owned));
        return 1;
    }

    // The face and size menus are made afresh for the active document each time.
    void BuildFontMenu() {
        BCWindow* target = Target();
        if (!target)
            return;
        for (unsigned int pos : {kFacePos, kSizePos}) {
            HMENU sub = GetSubMenu(fontMenu.GetHandle(), static_cast<int>(pos));
            while (GetMenuItemCount(sub) > 0)
                DeleteMenu(sub, 0, MF_BYPOSITION);
        }
        BCInitFontMenu(target, &fontMenu, kFacePos);
        BCInitSizeMenu(target, &fontMenu, kSizePos);
        BCInitFormatMenu(target, &fontMenu);
    }

    void Command(unsigned int id) { SendMessageA(hWnd, WM_COMMAND, id, 0); }

    // What a user would pick in the Font menu for the active document: a face by name, a
    // size and bold.
    void ChangeFont(const char* face, unsigned int points) {
        BuildFontMenu();
        BCFontList* faces = Faces();
        if (faces->Find(const_cast<char*>(face)))
            Command(161 + static_cast<unsigned int>(faces->GetCrntInd()));
        Command(200 + points);
        Command(143);
    }

    long Pause(unsigned int ms) {
        SetTimer(kDemoTimer, ms);
        return 0;
    }

    // The demonstration: an editor and a drawing, tiled; then cascaded with the editor in
    // front in a new font.
    long DemoStep() {
        KillTimer(kDemoTimer);
        switch (step++) {
        case 0:
            Command(kNewEditor);
            Command(kNewDrawing);
            Command(kTile);
            return Pause(1500);
        case 1:
            Mark("mdidemo.tile");
            return Pause(1500);
        case 2:
            Command(kCascade);
            static_cast<BCMDIChildWindow*>(documents.front().get())->BringToFront();
            ChangeFont("DejaVu Serif", 14);
            return Pause(1500);
        case 3:
            Mark("mdidemo.cascade");
            Command(kPrint); // the editor, in front
            Mark("mdidemo.printed");
            return Pause(static_cast<unsigned int>(demoSeconds * 1000));
        default:
            Destroy();
            return 0;
        }
    }

    BCMenu menu;
    BCMenu fontMenu;
    std::vector<std::unique_ptr<Document>> documents;
    int opened = 0;
    int demoSeconds;
    int step = 0;
};

} // namespace

int main(int argc, char** argv) {
    int demoSeconds = 0;
    if (argc > 2 && std::strcmp(argv[1], "--demo") == 0)
        demoSeconds = std::atoi(argv[2]);
    BCApplication app;
    Frame frame(demoSeconds);
    if (!frame.Start("Norlib2 MDI sample"))
        return 1;
    return app.Run();
}
