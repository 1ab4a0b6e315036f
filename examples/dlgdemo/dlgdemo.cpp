// Opens the find, replace, string, open, new, save-as and message dialogs in turn over a main
// window; the last one tells what was asked for in the first.
//
//   dlgdemo.exe             the user answers each dialog
//   dlgdemo.exe --demo N    each dialog is filled in on its own, left up for N seconds and
//                           accepted; a mark file per dialog tells a watcher it is up. The file
//                           dialogs browse a folder of sample files made for the purpose
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <norlib2.h>

namespace {

enum : unsigned int { kStringTemplate = 300, kNextTimer = 1, kFillTimer = 2, kAcceptTimer = 3 };

// Where the sample started: the file dialogs move the current directory.
std::string startDir;

// Tells whoever watches the demonstration (a script taking screenshots) how far it got.
void Mark(const char* file) {
    if (FILE* f = std::fopen((startDir + "\\" + file).c_str(), "w"))
        std::fclose(f);
}

BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
    char className[16];
    if (GetClassNameA(window, className, sizeof className) &&
        std::strcmp(className, "#32770") == 0 && IsWindowVisible(window)) {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

// The dialog running now on this thread, if any.
HWND RunningDialog() {
    HWND found = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

void Type(HWND dialog, int id, const char* text) {
    HWND edit = GetDlgItem(dialog, id);
    SendMessageA(edit, WM_KEYDOWN, VK_END, 1);
    for (; *text; ++text)
        SendMessageA(edit, WM_CHAR, static_cast<unsigned char>(*text), 1);
}

// A few documents and a folder to browse, made in the current directory, which it becomes.
void MakeSamples() {
    CreateDirectoryA("samples", nullptr);
    CreateDirectoryA("samples\\drafts", nullptr);
    SetCurrentDirectoryA("samples");
    for (const char* name : {"letter.txt", "notes.txt", "report.txt", "budget.doc"})
        if (FILE* f = std::fopen(name, "w"))
            std::fclose(f);
}

// Picks an entry of a list box as a click on it does.
void Pick(HWND dialog, int id, const char* entry) {
    HWND list = GetDlgItem(dialog, id);
    LRESULT index = SendMessageA(list, LB_FINDSTRINGEXACT, -1, reinterpret_cast<LPARAM>(entry));
    SendMessageA(list, LB_SETCURSEL, index, 0);
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, LBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
}

void Click(HWND dialog, int id) {
    PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

class DemoWindow : public BCMainWindow {
  public:
    explicit DemoWindow(int demoSeconds) : BCMainWindow(BCGetApp()), demoSeconds(demoSeconds) {
        SetWindowRect(BCRectangle(40, 40, 480, 360));
    }

    int Start(const char* title) {
        if (!Create(title))
            return 0;
        Show(SW_SHOW);
        SetTimer(kNextTimer, 500);
        return 1;
    }
    LRESULT Timer(BCEvent* e) override {
        const unsigned int timer = e->GetTimerID();
        KillTimer(timer);
        if (timer == kNextTimer)
            RunNext();
        else if (HWND dialog = RunningDialog())
            timer == kFillTimer ? Fill(dialog) : Click(dialog, IDOK);
        return 0;
    }

  private:
    BCResID Template(unsigned int id) const { return BCResID(id, BCGetDLLModule2()); }

    // Each dialog runs inside its constructor; the timers set before act on it meanwhile.
    void RunNext() {
        if (demoSeconds > 0)
            SetTimer(kFillTimer, 600);
        switch (step++) {
        case 0: {
            BCFindDialog find(Template(1021), this, "needle", BC_FIND_MATCH_CASE, GetApp());
            pattern = find.GetPattern(nullptr);
            break;
        }
        case 1:
            BCReplaceDialog(Template(1022), this, pattern.c_str(), "thread", BC_FIND_QUERY,
                            GetApp());
            break;
        case 2:
            BCStringDialog(BCResID(kStringTemplate, GetApp()->GetModule()), this, "notes", 40,
                           GetApp());
            break;
        case 3:
            BCOpenDialog(".TXT", Template(1011), this, GetApp());
            break;
        case 4:
            BCNewDialog(".TXT", Template(1012), this, GetApp());
            break;
        case 5:
            BCSaveAsDialog("summary", ".TXT", Template(1013), this, GetApp());
            break;
        case 6: {
            std::string text = "Looking for `" + pattern + "'.";
            BCMessageDialog(Template(1023), this, text.c_str(), GetApp());
            break;
        }
        default:
            Destroy();
            return;
        }
        SetTimer(kNextTimer, 300);
    }
    // What a user would do in each dialog, then a mark for the screenshot.
    void Fill(HWND dialog) {
        static const char* const kMarks[] = {"dlgdemo.find",   "dlgdemo.replace", "dlgdemo.string",
                                             "dlgdemo.open",   "dlgdemo.new",     "dlgdemo.saveas",
                                             "dlgdemo.message"};
        switch (step - 1) {
        case 0:
            Type(dialog, 2031, "s");
            Click(dialog, 2035);
            break;
        case 1:
            Type(dialog, 2033, "s");
            break;
        case 2:
            Type(dialog, 2013, ".txt");
            break;
        case 3:
            Pick(dialog, 2002, "notes.txt");
            break;
        case 4:
            SetDlgItemTextA(dialog, 2001, "minutes");
            break;
        default:
            break;
        }
        Mark(kMarks[step - 1]);
        SetTimer(kAcceptTimer, static_cast<unsigned int>(demoSeconds * 1000));
    }

    int demoSeconds;
    int step = 0;
    std::string pattern;
};

} // namespace

int main(int argc, char** argv) {
    int demoSeconds = argc > 2 && std::strcmp(argv[1], "--demo") == 0 ? std::atoi(argv[2]) : 0;
    char current[MAX_PATH] = "";
    GetCurrentDirectoryA(MAX_PATH, current);
    startDir = current;
    if (demoSeconds > 0)
        MakeSamples();
    BCApplication app;
    DemoWindow window(demoSeconds);
    if (!window.Start("Norlib2 dialog sample"))
        return 1;
    return app.Run();
}
