// A main window filled by a text editor with a vertical scroll bar and the File, Edit and
// Search menus of the commands the editor carries, with their usual shortcut keys, opening
// the file named on the command line.
//
//   editdemo.exe [file]              runs until the window is closed
//   editdemo.exe --demo N [file]     types, selects, scrolls and undoes on its own, then
//                                    ends after N seconds
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <norlib2.h>

namespace {

enum : unsigned int { kMenuExit = 203, kEditorId = 10, kDemoTimer = 1 };

constexpr int kClientWidth = 560;
constexpr int kClientHeight = 400;
constexpr unsigned int kUndoDepth = 100;

// Tells whoever watches the demonstration (a script taking screenshots) how far it got.
void Mark(const char* file) {
    if (FILE* f = std::fopen(file, "w"))
        std::fclose(f);
}

const char kWelcome[] =
    "A text editor in a window.\r\n"
    "\r\n"
    "Type anywhere; Return breaks the line and Backspace joins it again.\r\n"
    "Insert switches between inserting and overwriting.\r\n"
    "F8 starts a selection that grows by word, line and text.\r\n"
    "Drag the mouse to select; a click in the left margin takes the whole line.\r\n"
    "\tTABs line up\tat the tab stops.\r\n"
    "Edit > Undo takes back the last step, Edit > Redo puts it back.\r\n"
    "Cut, Copy and Paste go through the clipboard (Ctrl+X, Ctrl+C, Ctrl+V).\r\n"
    "Search > Find (Ctrl+F) looks for a text, F3 finds the next one, and\r\n"
    "Search > Replace (Ctrl+H) replaces one occurrence, each after asking, or all.\r\n";

class EditorWindow : public BCMainWindow {
  public:
    EditorWindow(const char* fileName, int demoSeconds)
        : BCMainWindow(BCGetApp()), menu(BCResID(100u, BCGetApp()->GetModule())),
          fileName(fileName), demoSeconds(demoSeconds) {
        RECT frame = {0, 0, kClientWidth, kClientHeight};
        AdjustWindowRectEx(&frame, static_cast<DWORD>(GetStyle()), TRUE, 0);
        SetWindowRect(BCRectangle(40, 40, static_cast<short>(40 + frame.right - frame.left),
                                  static_cast<short>(40 + frame.bottom - frame.top)));
        SetMenu(&menu);
    }
    ~EditorWindow() override { delete editor; }

    LRESULT Initialize(BCEvent*) override {
        BCTextData* data = nullptr;
        if (fileName) {
            data = new BCTextData(this, "txt", fileName);
            data->LoadFile();
        }
        editor =
            new BCTextEdit(kEditorId, this, BCPosition(0, 0), BCSize(kClientWidth, kClientHeight),
                           "txt", nullptr, data, GetApp(), 0, kUndoDepth);
        editor->SetStyle(WS_VSCROLL, 1);
        return 0;
    }
    LRESULT ReSize(BCEvent*) override {
        if (editor && editor->GetHandle()) {
            BCRectangle client = GetClientRect();
            editor->SetWindowRect(client);
        }
        return 0;
    }
    LRESULT Focus(BCEvent* e) override {
        if (editor && editor->GetHandle() && e->GetMessage() == WM_SETFOCUS)
            editor->SetFocus();
        return 0;
    }
    LRESULT MenuInit(BCEvent* e) override { return editor->MenuInit(e); }
    LRESULT MenuCommand(BCEvent* e) override {
        if (e->GetControlID() == kMenuExit) {
            Destroy();
            return 1;
        }
        return editor->MenuCommand(e);
    }
    LRESULT Timer(BCEvent*) override { return DemoStep(); }
    int Start(const char* title) {
        if (!Create(title) || !editor->Create(""))
            return 0;
        editor->SetWindowRect(GetClientRect());
        if (!fileName)
            editor->SetText(kWelcome);
        Show(SW_SHOW);
        editor->SetFocus();
        if (demoSeconds > 0)
            SetTimer(kDemoTimer, 1500);
        return 1;
    }

  private:
    void Type(const char* text) {
        for (; *text; ++text)
            SendMessageA(editor->GetHandle(), WM_CHAR, static_cast<unsigned char>(*text), 1);
    }
    void Drag(POINT from, POINT to) {
        HWND h = editor->GetHandle();
        SendMessageA(h, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.x, from.y));
        SendMessageA(h, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to.x, to.y));
        SendMessageA(h, WM_LBUTTONUP, 0, MAKELPARAM(to.x, to.y));
    }
    POINT PointOf(unsigned long ofs) {
        BCPosition p = editor->GetOfsPos(ofs);
        return {p.GetX(), p.GetY() + editor->GetChrHeight('H') / 2};
    }
    // The next step comes a while after this one ended, however long it took.
    long Pause() {
        SetTimer(kDemoTimer, 1500);
        return 0;
    }
    // The demonstration: typing at the end, an undo, a scroll back to the top and a
    // selection made by dragging.
    long DemoStep() {
        HWND h = editor->GetHandle();
        switch (step++) {
        case 0:
            editor->SetTextPos(editor->GetTextLen(), -1);
            Type("\rThis line was typed by the demonstration.\r");
            for (int i = 0; i < 25; ++i)
                Type("More lines, to have something to scroll.\r");
            Type("A line to undo.");
            return Pause();
        case 1:
            SendMessageA(hWnd, WM_COMMAND, 111, 0); // Edit > Undo
            Type("The last line.");
            Mark("editdemo.typed");
            return Pause();
        case 2: {
            SendMessageA(h, WM_VSCROLL, SB_TOP, 0);
            BCTextData* text = editor->GetText();
            Drag(PointOf(text->GetLineOfs(2) + 5), PointOf(text->GetLineOfs(4) + 12));
            KillTimer(kDemoTimer);
            Mark("editdemo.done");
            SetTimer(kDemoTimer, static_cast<unsigned int>(demoSeconds * 1000));
            return 0;
        }
        default:
            KillTimer(kDemoTimer);
            Destroy();
            return 0;
        }
    }

    BCMenu menu;
    BCTextEdit* editor = nullptr;
    const char* fileName;
    int demoSeconds;
    int step = 0;
};

// The application's loop with the menu's shortcut keys turned into commands first.
int RunWithKeys(HWND window) {
    HACCEL keys = LoadAcceleratorsA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(100));
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        if (keys && TranslateAcceleratorA(window, keys, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return static_cast<int>(message.wParam);
}

} // namespace

int main(int argc, char** argv) {
    int demoSeconds = 0;
    int arg = 1;
    if (argc > 2 && std::strcmp(argv[1], "--demo") == 0) {
        demoSeconds = std::atoi(argv[2]);
        arg = 3;
    }
    const char* fileName = arg < argc ? argv[arg] : nullptr;
    BCApplication app;
    EditorWindow window(fileName, demoSeconds);
    if (!window.Start("Norlib2 editor sample"))
        return 1;
    return RunWithKeys(window.GetHandle());
}
