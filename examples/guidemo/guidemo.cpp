// A main window with a menu, a canvas of shapes that the mouse drags and that reports the
// keys and mouse actions it gets into a list box, a modal dialog from a template and a
// message box.
//
//   guidemo.exe              runs until the window is closed
//   guidemo.exe --demo N     shows itself acting on its own and ends after N seconds
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <norlib2.h>

#include "canvas.h"

namespace {

enum : unsigned int {
    kMenuGreeting = 201,
    kMenuAbout = 202,
    kMenuExit = 203,
    kMenuSmall = 211,
    kMenuLarge = 212,
    kLogId = 20,
    kPadId = 21,
    kDemoTimer = 1
};

// The client area: the canvas and the log side by side, with margins.
constexpr int kClientWidth = 510;
constexpr int kClientHeight = 350;

// Tells whoever watches the demonstration (a script taking screenshots) how far it got.
void Mark(const char* file) {
    if (FILE* f = std::fopen(file, "w"))
        std::fclose(f);
}

// The dialog keeps the name typed before OK.
class GreetingDialog : public BCModalDialog {
  public:
    explicit GreetingDialog(BCWindow* parent, bool closeItself)
        : BCModalDialog(BCResID(300u), parent, BCGetApp()), closeItself(closeItself) {
        name = new BCControlWindow(BCResID(301u), this, 37, BCGetApp());
    }
    LRESULT Initialize(BCEvent* e) override {
        name->SetTitle("Ada");
        if (closeItself) {
            SetTimer(kDemoTimer, 3000);
            Mark("guidemo.dialog");
        }
        return BCModalDialog::Initialize(e);
    }
    LRESULT ButtonSnglClk(BCEvent* e) override {
        if (e->GetControlID() == IDOK)
            name->GetTitle(typed, sizeof typed);
        return DefaultEvent(e);
    }
    LRESULT Timer(BCEvent*) override { // as if OK was pressed
        name->GetTitle(typed, sizeof typed);
        return EndDlg(IDOK);
    }
    char typed[64] = "";

  private:
    BCControlWindow* name;
    bool closeItself;
};

class DemoWindow : public BCMainWindow {
  public:
    explicit DemoWindow(int demoSeconds)
        : BCMainWindow(BCGetApp()), menu(BCResID(100u, BCGetApp()->GetModule())),
          demoSeconds(demoSeconds) {
        // The canvas and the log need a client area of their own size; the frame around it
        // (caption, menu bar, borders) depends on the system's metrics.
        RECT frame = {0, 0, kClientWidth, kClientHeight};
        AdjustWindowRectEx(&frame, static_cast<DWORD>(GetStyle()), TRUE, 0);
        SetWindowRect(BCRectangle(40, 40, static_cast<short>(40 + frame.right - frame.left),
                                  static_cast<short>(40 + frame.bottom - frame.top)));
        SetMenu(&menu);
    }
    ~DemoWindow() override {
        delete pad;
        delete log;
    }
    LRESULT Initialize(BCEvent*) override {
        log = new BCListBox(kLogId, this, BCPosition(260, 10), BCSize(240, 330), nullptr, GetApp());
        pad = new Canvas(this, kPadId, log);
        pad->SetWindowRect(BCRectangle(10, 10, 250, 340));
        return 0;
    }
    LRESULT MenuInit(BCEvent* e) override {
        BCMenu* opened = e->GetMenu();
        if (opened)
            opened->SetExclCheck(kMenuSmall, kMenuLarge, large ? kMenuLarge : kMenuSmall);
        return 0;
    }
    LRESULT MenuCommand(BCEvent* e) override {
        switch (e->GetControlID()) {
        case kMenuGreeting:
            return Greet();
        case kMenuAbout:
            BCMsgBox("A sample of the window classes.", "About", MB_OK | MB_ICONINFORMATION, this,
                     GetApp()->GetModule());
            return 1;
        case kMenuExit:
            Destroy();
            return 1;
        case kMenuSmall:
        case kMenuLarge:
            large = e->GetControlID() == kMenuLarge;
            return 1;
        default:
            return DefaultEvent(e);
        }
    }
    LRESULT Timer(BCEvent*) override { return DemoStep(); }
    int Start(const char* title) {
        if (!Create(title) || !pad->Create("pad") || !log->Create(""))
            return 0;
        Show(SW_SHOW);
        if (demoSeconds > 0)
            SetTimer(kDemoTimer, 300);
        return 1;
    }

  private:
    long Greet() {
        GreetingDialog dialog(this, demoSeconds > 0);
        if (dialog.Create("") && dialog.GetResult() == IDOK) {
            KoString text;
            text.Sprintf("Hello, %s!", dialog.typed);
            log->GoTo(log->Append(const_cast<char*>(text.c_str())));
        }
        if (demoSeconds > 0) { // the last step: the end, a while later
            Mark("guidemo.done");
            SetTimer(kDemoTimer, static_cast<unsigned int>(demoSeconds * 1000));
        }
        return 1;
    }
    // The demonstration: input to the pad, then the dialog, then the end.
    long DemoStep() {
        HWND p = pad->GetHandle();
        switch (step++) {
        case 0:
            // Drag the box over the ellipse.
            SendMessageA(p, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(40, 40));
            SendMessageA(p, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(90, 60));
            SendMessageA(p, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(130, 70));
            SendMessageA(p, WM_LBUTTONUP, 0, MAKELPARAM(130, 70));
            for (const char* c = "Hi"; *c; ++c) {
                SendMessageA(p, WM_KEYDOWN, static_cast<WPARAM>(VkKeyScanA(*c) & 0xFF), 1);
                SendMessageA(p, WM_CHAR, static_cast<WPARAM>(*c), 1);
            }
            return 0;
        case 1:
            KillTimer(kDemoTimer);
            PostMessageA(hWnd, WM_COMMAND, kMenuGreeting, 0); // opens the dialog
            return 0;
        default:
            KillTimer(kDemoTimer);
            Destroy();
            return 0;
        }
    }

    BCMenu menu;
    BCListBox* log = nullptr;
    Canvas* pad = nullptr;
    int demoSeconds;
    int step = 0;
    bool large = false;
};

} // namespace

int main(int argc, char** argv) {
    int demoSeconds = 0;
    if (argc > 2 && std::strcmp(argv[1], "--demo") == 0)
        demoSeconds = std::atoi(argv[2]);
    BCApplication app;
    DemoWindow window(demoSeconds);
    if (!window.Start("Norlib2 windows sample"))
        return 1;
    return app.Run();
}
