#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "guidriver.h"
#include "msgrecorder.h"

namespace {

using Strings = std::vector<std::string>;
using Ids = std::vector<unsigned int>;
using std::string;

void Make(const string& path) {
    CloseHandle(CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
}

// One tree for the suite: nested folders, names with blanks, files with and without
// extensions. (How fast a folder of 10,000 files lists is measured by bench/filebench.)
struct FileDialogTest : ::testing::Test {
    static void SetUpTestSuite() {
        char temp[MAX_PATH];
        GetTempPathA(MAX_PATH, temp);
        GetCurrentDirectoryA(MAX_PATH, previous);
        root = temp + ("nlfdlg" + std::to_string(GetCurrentProcessId()));
        for (const string& dir : {root, root + "\\Sub Dir", root + "\\Sub Dir\\D"})
            CreateDirectoryA(dir.c_str(), nullptr);
        for (const char* file : {"a.txt", "b one.TXT", "README", "c.doc", "Sub Dir\\in.txt"})
            Make(root + "\\" + file);
    }
    static void TearDownTestSuite() {
        SetCurrentDirectoryA(previous);
        std::system(("rmdir /s /q \"" + root + "\"").c_str());
    }
    // Every dialog starts in the tree's top folder: browsing moves the current directory.
    void SetUp() override { SetCurrentDirectoryA(root.c_str()); }
    static inline string root;
    static inline char previous[MAX_PATH];
    MsgRecorder recorder;
};

Strings Listed(HWND dialog, int id) {
    Strings all;
    char entry[MAX_PATH];
    for (int i = 0; SendDlgItemMessageA(dialog, id, LB_GETTEXT, i, (LPARAM)entry) >= 0; ++i)
        all.push_back(entry);
    return all;
}

// The file list box on its own, in the file dialogs' template run modeless.
struct FileList {
    BCModelessDialog dialog{Template(1011), nullptr, &App()};
    BCFileListBox* files = new BCFileListBox(BCResID(2002u), &dialog, BCResID(2003u), &App());
    explicit FileList(bool open = true) { EXPECT_TRUE(!open || dialog.Create("Files")); }
    ~FileList() { dialog.EndDlg(2); }
    Strings Entries() { return Listed(dialog.GetHandle(), 2002); }
    bool Shows(const string& directory) { // in the path label
        char label[MAX_PATH] = "";
        GetDlgItemTextA(dialog.GetHandle(), 2003, label, MAX_PATH);
        return !_stricmp(label, directory.c_str());
    }
};

// Names that are no plain file: a folder or a pattern lists it, anything else is invalid.
TEST_F(FileDialogTest, FileListClassifiesNamesAndKeepsPatternAndExtension) {
    FileList ui;
    string spec = root + "\\*.txt";
    ASSERT_TRUE(ui.files->GetObjectType() == 41u && ui.files->ListFiles(&spec[0], DDL_DIRECTORY));
    ui.files->Display("> ");
    EXPECT_EQ("> caDfltPat=*.txt, caDfltExt=txt, wAttrib=0010, wPathID=2003.",
              recorder.Last().text);
    const Strings top{"a.txt", "b one.TXT", "[..]", "[Sub Dir]"},
        docs{"c.doc", "[..]", "[Sub Dir]"};
    struct Case {
        const char *typed, *after; // what the name reads afterwards
        int result;
        Strings shown;
    } cases[] = {
        {"Sub Dir\\new.txt", "Sub Dir\\new.txt", 2, top},
        {"Sub Dir\\", "Sub Dir\\", 3, {"in.txt", "[..]", "[D]"}},
        {"..\\*.doc", "*.DOC", 3, docs}, // the listing writes the file part back
        {"", "", 3, docs},
        {"..", "..", 1, docs}, // a directory is not a file
        {"no dir\\*.txt", "no dir\\*.txt", 1, docs},
    };
    for (const Case& c : cases) {
        char name[300];
        std::strcpy(name, c.typed);
        EXPECT_EQ(c.result, ui.files->CheckFile(name)) << c.typed;
        EXPECT_STREQ(c.after, name);
        EXPECT_EQ(c.shown, ui.Entries()) << c.typed;
    }
    string tooLong(300, 'n');
    char drive[16] = "C:*.doc";
    drive[0] = root[0];
    EXPECT_TRUE(ui.files->CheckFile(nullptr) == 1 && ui.files->CheckFile(&tooLong[0]) == 1 &&
                ui.files->CheckFile(drive) == 3);
    EXPECT_STREQ("*.doc", drive); // a name with a drive becomes the pattern

    const char* patterns[][3] = {{"*", "*", ""},
                                 {"..\\x.y.z", "x.y.z", "y.z"},
                                 {"no/*.markdown12345", "*.markdown12345", "markdown1"}};
    for (auto [typed, pattern, extension] : patterns) {
        string name = typed;
        ui.files->ListFiles(&name[0], 0);
        EXPECT_EQ(string(pattern) + "|" + extension,
                  string(ui.files->GetDfltPat()) + "|" + ui.files->GetDfltExt());
    }
    string sub = root + "\\Sub Dir\\*.q";
    EXPECT_TRUE(ui.files->GetAttrib() == 0 && ui.files->ListDirs(&sub[0], 0x8010));
    EXPECT_EQ((Strings{"[..]", "[D]"}), ui.Entries());
    EXPECT_TRUE(ui.Shows(root + "\\Sub Dir") && ui.files->GetAttrib() == 0x8010u &&
                string("markdown1") == ui.files->GetDfltExt()); // the extension kept
    char chosen[MAX_PATH] = "keep";
    ui.files->GoTo(0);
    EXPECT_TRUE(ui.files->GetCrntFile(chosen) == 0 && chosen[0] == '\0'); // asked with length 0
    FileList closed(false);
    EXPECT_EQ(0, closed.files->ListFiles(&sub[0], 0) + closed.files->ListDirs(&sub[0], 0) +
                     closed.files->GetCrntFile(chosen) + (closed.files->CheckFile(chosen) - 1));
}

// A message to the dialog (id 0) or a control, sent so that the next step sees its effect,
// or posted to go through the dialog's own loop.
Step Msg(int id, UINT message, WPARAM wParam, LPARAM lParam = 1, bool post = false) {
    return [=](HWND dialog) {
        HWND to = id ? GetDlgItem(dialog, id) : dialog;
        return post ? PostMessageA(to, message, wParam, lParam) != 0
                    : (SendMessageA(to, message, wParam, lParam), true);
    };
}
// A list's notification after selecting `entry`. Steps do not stop the script: what went
// wrong shows in the outcome, and the dialog still gets closed.
Step Pick(int id, const char* entry, bool twice = false) {
    return [=](HWND dialog) {
        HWND list = GetDlgItem(dialog, id);
        LPARAM text = reinterpret_cast<LPARAM>(entry);
        SendMessageA(list, LB_SETCURSEL, SendMessageA(list, LB_FINDSTRINGEXACT, -1, text), 0);
        WPARAM code = MAKEWPARAM(id, twice ? LBN_DBLCLK : LBN_SELCHANGE);
        return Msg(0, WM_COMMAND, code, reinterpret_cast<LPARAM>(list))(dialog);
    };
}
// Appends what the user sees: the name field, "[all]" when it has the focus with its whole
// text selected, and whether OK is enabled.
Step Look(string* trail) {
    return [trail](HWND dialog) {
        char text[256] = "";
        GetDlgItemTextA(dialog, 2001, text, sizeof text);
        *trail += text + string(FocusedWhole(dialog, 2001) ? "[all]" : "") +
                  (IsWindowEnabled(GetDlgItem(dialog, 1)) ? "+" : "-") + "|";
        return true;
    };
}
Step List(int id, Strings* into) {
    return [id, into](HWND dialog) { return *into = Listed(dialog, id), true; };
}

// Runs an open or new dialog for .TXT files while `driver` acts on it: the result and name.
template <class Dialog>
std::pair<int, string> RunDialog(DialogDriver& driver, unsigned int templateId = 1011) {
    // A dialog left open by a failing case must not hang the suite.
    driver.Do(
        [](HWND dialog) { return !IsWindow(dialog) || Msg(0, WM_CLOSE, 0, 0, true)(dialog); });
    driver.Start();
    Dialog dialog(".TXT", Template(templateId), nullptr, &App());
    EXPECT_TRUE(driver.Finish());
    return {dialog.GetResult(), dialog.GetFileName(nullptr)};
}

TEST_F(FileDialogTest, TypedNamesAreAcceptedOrRefusedWithTheirMessage) {
    const string k150(150, 'n');
    struct Case {
        bool newFile;
        string typed;
        unsigned int message; // none: `outcome` is the name accepted, else the message shown
        string outcome;
    } cases[] = {
        {false, "a", 0, "a.TXT"},
        {false, "README.", 0, "README."},
        {false, "Sub Dir\\..\\a.txt", 0, "Sub Dir\\..\\a.txt"},
        {true, "fresh", 0, "fresh.TXT"},
        {false, "README", 3202, "File not found:  README.TXT"},
        {false, "..\\new", 3202, "File not found:  ..\\new.TXT"},
        {true, "c.doc", 10072, "File already exists:  c.doc"},
        {false, "no dir\\x.txt", 10073, "Invalid file name:  no dir\\x.txt"},
        // The field gives 120 characters; with the extension, the path is too long to open.
        {true, k150, 10073, "Invalid file name:  " + k150.substr(0, 120) + ".TXT"},
    };
    for (const Case& c : cases) {
        string trail; // a refused name stays in the field, selected
        DialogDriver driver;
        driver.SetText(2001, c.typed).Do(Press(1));
        if (c.message)
            driver.Do(Look(&trail)).Do(Press(2));
        recorder.Clear();
        auto [result, name] =
            c.newFile ? RunDialog<BCNewDialog>(driver) : RunDialog<BCOpenDialog>(driver);
        EXPECT_EQ(c.message ? 0 : 1, result) << c.typed;
        EXPECT_EQ(c.message ? c.typed + "[all]+|" : "", trail);
        EXPECT_EQ(c.outcome + (c.message ? "|" : ""), c.message ? recorder.Texts() : name);
        EXPECT_TRUE(!c.message || recorder.NumberedIds() == std::vector<unsigned int>{c.message});
    }
}

// Folders, the parent, patterns and a drive; a file chosen and then deleted.
TEST_F(FileDialogTest, BrowsingAndChoosing) {
    string trail;
    Strings files, dirs, inSub, docs;
    DialogDriver driver;
    driver.Do(Look(&trail)).Do(List(2002, &files)).Do(List(2006, &dirs));
    driver.Do(Pick(2006, "[Sub Dir]", true)).Do(Look(&trail)).Do(List(2002, &inSub));
    driver.Do(Pick(2006, "[D]")).Do(Look(&trail));
    driver.Do(Pick(2006, "[..]", true)).Do(Look(&trail));
    driver.SetText(2001, "*.DOC").Do(Press(1)).Do(Look(&trail)).Do(List(2002, &docs));
    driver.Do(Pick(2006, "[Sub Dir]", true)).Do(Look(&trail)); // the typed pattern goes along
    driver.SetText(2001, "..\\").Do(Press(1)).Do(Look(&trail));
    driver.Do(Pick(2006, "[Sub Dir]")).Do(Look(&trail)); // the folders listed are the parent's
    driver.Do(Pick(2006, "[-c-]", true)).Do(Look(&trail));
    driver.SetText(2001, "*.*").Do(Press(1)).Do(Look(&trail));
    driver.Do(TypeInto(2001, "\b")).Do(Look(&trail)).Do(TypeInto(2001, "x")).Do(Look(&trail));
    driver.Do(TypeInto(2001, "\b"));
    driver.Do(Pick(2002, "README")).Do(Look(&trail)); // choosing enables OK again
    driver.Do(Msg(2001, EM_SETSEL, 0, -1)).Do(TypeInto(2001, "\b")).Do(Pick(2006, "[Sub Dir]"));
    driver.Do(Look(&trail)).Do(Pick(2002, "a.txt")).Do([](HWND) {
        return DeleteFileA("a.txt") != 0;
    });
    driver.Do(Press(1)).Do(Look(&trail)); // vanished since it was listed
    driver.SetText(2001, root + "\\*.*").Do(Press(1));
    driver.Do(Pick(2002, "b one.TXT", true));
    auto [result, name] = RunDialog<BCOpenDialog>(driver, 1012);
    Make(root + "\\a.txt");
    EXPECT_EQ(
        "*.TXT[all]+|*.TXT[all]+|D\\*.TXT+|*.TXT[all]+|*.DOC[all]+|*.DOC[all]+|"
        "*.TXT[all]+|Sub Dir\\*.TXT+|*.TXT[all]+|*.*[all]+|[all]-|x+|README.+|Sub Dir\\*.TXT+|"
        "a.txt[all]+|",
        trail);
    EXPECT_TRUE(files == Strings({"a.txt", "b one.TXT"}) && inSub == Strings{"in.txt"} &&
                docs == Strings{"c.doc"});
    dirs.erase(std::remove_if(dirs.begin(), dirs.end(), [](auto& d) { return d[1] == '-'; }),
               dirs.end());
    EXPECT_EQ((Strings{"[..]", "[Sub Dir]"}), dirs);
    EXPECT_TRUE(result == 1 && name == "b one.TXT" && recorder.NumberedIds() == Ids{3202});
}

// A dialog the test runs itself: its controls can be counted, and the extension changes
// once it runs. Cancel, closing and Escape give 0 and let the controls go.
TEST_F(FileDialogTest, ExtensionsAndCancelling) {
    struct Probe : BCFileDialog {
        const char* const* later; // the extension set once it runs, when given
        explicit Probe(const char* const* later)
            : BCFileDialog(Template(1011), nullptr, ".TEXT", 1, &App()), later(later) {}
        unsigned long Controls() const { return opControls->GetCount(); }
        bool Holds() const { return opNameEdit || opFileList || opDirList || opOkButton; }
        void InitNameEdit() override {
            BCFileDialog::InitNameEdit();
            if (later)
                SetFileExt(*later);
        }
    };
    const char* const exts[] = {".DOCX", nullptr};
    const Strings all{"a.txt", "b one.TXT", "c.doc", "README"};
    struct Case {
        const char* const* later;
        Step end;
        string shown;
        Strings listed;
    };
    for (auto& [later, end, shown, listed] :
         {Case{&exts[0], Press(2), "*.DOC.DOC", {"c.doc"}},
          Case{&exts[1], Msg(0, WM_CLOSE, 0, 0, true), "*.*", all},
          Case{nullptr, Msg(2001, WM_KEYDOWN, VK_ESCAPE, 1, true), "*.TEX.TEX", {}}}) {
        string trail;
        Strings files;
        DialogDriver driver;
        driver.Do(Look(&trail)).Do(List(2002, &files)).Do(end).Start();
        Probe dialog(later);
        EXPECT_TRUE(dialog.IsNewFile() && !dialog.Holds() && dialog.GetObjectType() == 57u);
        dialog.Create("");
        EXPECT_TRUE(driver.Finish());
        EXPECT_TRUE(dialog.GetResult() == 0 && dialog.Controls() == 0 && !dialog.Holds());
        char name[121], ext[121];
        EXPECT_EQ(shown, string(dialog.GetFileName(name)) + dialog.GetFileExt(ext));
        EXPECT_EQ(trail, string(dialog.GetFileName(nullptr)) + "[all]+|");
        EXPECT_EQ(listed, files);
        dialog.SetFileName(string(130, 'x').c_str());
        EXPECT_EQ(120u, strlen(dialog.GetFileName(nullptr)));
    }
}

TEST_F(FileDialogTest, SaveAsAddsTheExtensionAndAsksBeforeOverwriting) {
    const string k70(70, 'l');
    struct Case {
        const char *name, *ext;
        int answer, result;
        string kept, texts;
    } cases[] = {
        {"REPORT", ".TXT", 0, 1, "REPORT.TXT", ""},
        {"REPORT.DOC", ".TXT", 0, 1, "REPORT.DOC", ""},
        {"a", ".TXT", IDYES, 1, "a.TXT", "File a.TXT already exists.  Overwrite?|"},
        {"c.doc", nullptr, IDNO, 0, "c.doc", "File c.doc already exists.  Overwrite?|"},
        {"a<b", ".TXT", 0, 1, "a<b.TXT", "Invalid file name:  a<b.TXT|"},
        {"no dir\\x", nullptr, 0, 1, "no dir\\x", "Invalid file name:  no dir\\x|"},
        {"cancelled", ".TXT", 0, 0, "cancelled", ""},
        // The name is cut to 65 characters, and with the extension to 80.
        {k70.c_str(), ".TXT", 0, 1, k70.substr(0, 65) + ".TXT", ""},
        {k70.c_str(), ".extension-too-long", 0, 1, k70.substr(0, 65) + ".extension-too-", ""},
    };
    for (const Case& c : cases) {
        recorder.Clear();
        if (c.answer)
            recorder.Answer(c.answer);
        DialogDriver driver;
        driver.Do(Press(c.result || c.answer ? 1 : 2)).Start();
        BCSaveAsDialog dialog(c.name, c.ext, Template(1013), nullptr, &App());
        EXPECT_TRUE(driver.Finish());
        EXPECT_TRUE(c.result == dialog.GetResult() && dialog.GetObjectType() == 62u) << c.name;
        EXPECT_EQ(c.kept, dialog.GetString(nullptr));
        EXPECT_EQ(c.texts, recorder.Texts());
        EXPECT_TRUE(!c.answer ||
                    (recorder.Last().style == 0x24u && recorder.Last().caption.empty()));
    }
}

} // namespace
