#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string>
#include <tuple>
#include <vector>

#include "guidriver.h"
#include "msgrecorder.h"
#include "norlib2.h"

namespace {

using Step = std::function<bool(HWND)>;
using Strings = std::vector<std::string>;

BCApplication& App() {
    static BCApplication app;
    return app;
}

BCResID Template(unsigned int id) {
    return BCResID(id, BCGetDLLModule2());
}

// One tree for the suite: nested folders, names with blanks, files with and without
// extensions. The folder of 10,000 files costs seconds to make and to remove under Wine: it
// is kept in the temporary folder for later runs, and a mark file says it is complete.
class FileDialogTest : public ::testing::Test {
  protected:
    static std::string root, many;
    static void SetUpTestSuite() {
        char temp[MAX_PATH];
        GetTempPathA(MAX_PATH, temp);
        root = temp + ("nlfdlg" + std::to_string(GetCurrentProcessId()));
        many = temp + std::string("nlfdlg-10000");
        for (const std::string& dir : {root, root + "\\Sub Dir", root + "\\Sub Dir\\D", many})
            CreateDirectoryA(dir.c_str(), nullptr);
        for (const char* file : {"a.txt", "b one.TXT", "README", "c.doc", "Sub Dir\\in.txt"})
            Make(root + "\\" + file);
        if (GetFileAttributesA((many + "\\complete").c_str()) != INVALID_FILE_ATTRIBUTES)
            return;
        for (int i = 0; i < 10000; ++i)
            Make(many + "\\f" + std::to_string(i) + ".dat");
        Make(many + "\\complete");
    }
    static void TearDownTestSuite() {
        SetCurrentDirectoryA(previous);
        std::system(("rmdir /s /q \"" + root + "\"").c_str());
    }
    static void Make(const std::string& path) {
        CloseHandle(
            CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    }
    // Every dialog starts in the tree's top folder: browsing moves the current directory.
    void SetUp() override {
        if (!previous[0])
            GetCurrentDirectoryA(MAX_PATH, previous);
        SetCurrentDirectoryA(root.c_str());
    }
    static char previous[MAX_PATH];
    MsgRecorder recorder;
};
std::string FileDialogTest::root, FileDialogTest::many;
char FileDialogTest::previous[MAX_PATH];

// Sent, not posted, so that the next step sees what the dialog did.
Step Press(int id) {
    return [id](HWND dialog) {
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
        return true;
    };
}
// Selects a list entry and tells the dialog, as a click or a double click does.
Step Pick(int id, const std::string& entry, bool twice = false) {
    return [=](HWND dialog) {
        HWND list = GetDlgItem(dialog, id);
        LRESULT index =
            SendMessageA(list, LB_FINDSTRINGEXACT, -1, reinterpret_cast<LPARAM>(entry.c_str()));
        SendMessageA(list, LB_SETCURSEL, index, 0);
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, twice ? LBN_DBLCLK : LBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(list));
        return index >= 0;
    };
}
Step Type(const std::string& keys) {
    return [keys](HWND dialog) {
        for (char c : keys)
            SendDlgItemMessageA(dialog, 2001, WM_CHAR, static_cast<unsigned char>(c), 1);
        return true;
    };
}
// Appends what the user sees: "field[selection]" with the OK button's state, or a list.
Step Look(std::string* trail) {
    return [trail](HWND dialog) {
        char text[256] = "";
        DWORD start = 9, end = 9;
        GetDlgItemTextA(dialog, 2001, text, sizeof text);
        SendDlgItemMessageA(dialog, 2001, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                            reinterpret_cast<LPARAM>(&end));
        GUITHREADINFO info = {sizeof info, 0, {}, {}, {}, {}, {}, {}, {}};
        GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &info);
        bool all = start == 0 && end == strlen(text) && info.hwndFocus == GetDlgItem(dialog, 2001);
        *trail += text + std::string(all ? "[all]" : "") +
                  (IsWindowEnabled(GetDlgItem(dialog, 1)) ? "+" : "-") + "|";
        return true;
    };
}
Step List(int id, Strings* into) {
    return [id, into](HWND dialog) {
        HWND list = GetDlgItem(dialog, id);
        into->clear();
        for (LRESULT i = 0, n = SendMessageA(list, LB_GETCOUNT, 0, 0); i < n; ++i) {
            char entry[MAX_PATH] = "";
            SendMessageA(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(entry));
            into->push_back(entry);
        }
        return true;
    };
}

struct Ran {
    int result;
    std::string name;
};
// Runs the open (0) or new (1) dialog with the extension .TXT while `driver` acts on it.
Ran RunFileDialog(DialogDriver& driver, int newFile, unsigned int templateId = 1011) {
    driver.Do([](HWND dialog) { // a dialog left open by a failing case must not hang the suite
        return !IsWindow(dialog) || PostMessageA(dialog, WM_CLOSE, 0, 0);
    });
    driver.Start();
    Ran ran;
    if (newFile) {
        BCNewDialog dialog(".TXT", Template(templateId), nullptr, &App());
        ran = {dialog.GetResult(), dialog.GetFileName(nullptr)};
    } else {
        BCOpenDialog dialog(".TXT", Template(templateId), nullptr, &App());
        ran = {dialog.GetResult(), dialog.GetFileName(nullptr)};
    }
    EXPECT_TRUE(driver.Finish());
    return ran;
}

TEST_F(FileDialogTest, TypedNamesAreAcceptedOrRefusedWithTheirMessage) {
    const std::string k150(150, 'n'), k120 = k150.substr(0, 120);
    struct Case {
        int newFile;
        std::string typed, kept; // a refused name stays for the user, wholly selected
        unsigned int message;
        std::string text;
    } cases[] = {
        {0, "a", "a.TXT", 0, ""},
        {0, "b one", "b one.TXT", 0, ""},
        {0, "README.", "README.", 0, ""},
        {0, "Sub Dir\\..\\a.txt", "Sub Dir\\..\\a.txt", 0, ""},
        {1, "fresh", "fresh.TXT", 0, ""},
        {1, "Sub Dir\\fresh", "Sub Dir\\fresh.TXT", 0, ""},
        {0, "README", "README[all]+|", 3202, "File not found:  README.TXT"},
        {0, "..\\new", "..\\new[all]+|", 3202, "File not found:  ..\\new.TXT"},
        {1, "c.doc", "c.doc[all]+|", 10072, "File already exists:  c.doc"},
        {0, "no dir\\x.txt", "no dir\\x.txt[all]+|", 10073, "Invalid file name:  no dir\\x.txt"},
        {1, "a<b|c", "a<b|c[all]+|", 10073, "Invalid file name:  a<b|c.TXT"},
        {0, "q:x", "q:x[all]+|", 10073, "Invalid file name:  q:x.TXT"},
        {0, "q:*.txt", "q:*.txt[all]+|", 10073, "Invalid file name:  q:*.txt"},
        // The field takes 120 characters; with the extension, the path is too long to open.
        {1, k150, k150 + "[all]+|", 10073, "Invalid file name:  " + k120 + ".TXT"},
    };
    for (const Case& c : cases) {
        std::string trail;
        DialogDriver driver;
        driver.SetText(2001, c.typed).Do(Press(1));
        if (c.message)
            driver.Do(Look(&trail)).Do(Press(2));
        recorder.Clear();
        Ran ran = RunFileDialog(driver, c.newFile);
        EXPECT_EQ(c.message ? 0 : 1, ran.result) << c.typed;
        EXPECT_EQ(c.kept, c.message ? trail : ran.name);
        EXPECT_EQ(c.message ? std::vector<unsigned int>{c.message} : std::vector<unsigned int>{},
                  recorder.NumberedIds());
        EXPECT_EQ(c.text.empty() ? "" : c.text + "|", recorder.Texts());
    }
}

TEST_F(FileDialogTest, BrowsingFoldersPatternsAndDrives) {
    std::string trail, path, top;
    Strings files, dirs, subFiles, docs;
    DialogDriver driver;
    driver.Do(Look(&trail)).Do(List(2002, &files)).Do(List(2006, &dirs)).ReadText(2003, &top);
    driver.Do(Pick(2006, "[Sub Dir]", true)).Do(Look(&trail)).Do(List(2002, &subFiles));
    driver.ReadText(2003, &path).Do(Pick(2006, "[D]")).Do(Look(&trail));
    driver.Do(Pick(2006, "[..]", true)).Do(Look(&trail));
    driver.SetText(2001, "*.DOC").Do(Press(1)).Do(Look(&trail)).Do(List(2002, &docs));
    driver.Do(Pick(2006, "[Sub Dir]", true)).Do(Look(&trail)); // the typed pattern goes along
    driver.SetText(2001, "..\\").Do(Press(1)).Do(Look(&trail));
    driver.Do(Pick(2006, "[-c-]", true)).Do(Look(&trail));
    driver.SetText(2001, "*.*").Do(Press(1)).Do(Look(&trail));
    driver.Do(Type("\b")).Do(Look(&trail)).Do(Type("x")).Do(Look(&trail)).Do(Type("\b"));
    driver.Do(Pick(2006, "[Sub Dir]")).Do(Look(&trail)); // choosing enables OK again
    driver.Do(Pick(2002, "README")).Do(Look(&trail)).Do(Press(1));
    Ran ran = RunFileDialog(driver, 0, 1012);
    EXPECT_EQ("*.TXT[all]+|*.TXT[all]+|D\\*.TXT+|*.TXT[all]+|*.DOC[all]+|*.DOC[all]+|"
              "*.TXT[all]+|*.TXT[all]+|*.*[all]+|[all]-|x+|Sub Dir\\*.TXT+|README.+|",
              trail);
    EXPECT_EQ((Strings{"a.txt", "b one.TXT"}), files);
    EXPECT_TRUE(std::find(dirs.begin(), dirs.end(), "[-c-]") != dirs.end());
    dirs.erase(std::remove_if(dirs.begin(), dirs.end(), [](auto& d) { return d[1] == '-'; }),
               dirs.end());
    std::sort(dirs.begin(), dirs.end());
    EXPECT_EQ((Strings{"[..]", "[Sub Dir]"}), dirs);
    EXPECT_EQ((Strings{"in.txt"}), subFiles);
    EXPECT_EQ((Strings{"c.doc"}), docs);
    EXPECT_EQ(0, _stricmp(top.c_str(), root.c_str()));
    EXPECT_EQ(0, _stricmp(path.c_str(), (root + "\\Sub Dir").c_str()));
    EXPECT_TRUE(ran.result == 1 && ran.name == "README." && recorder.Count() == 0);
    char current[MAX_PATH];
    GetCurrentDirectoryA(MAX_PATH, current);
    EXPECT_EQ(0, _stricmp(current, root.c_str())); // browsing is not undone
}

TEST_F(FileDialogTest, ChoosingAFileThatThenVanishes) {
    std::string trail;
    DialogDriver driver;
    driver.Do(Type("\b")).Do(Pick(2002, "a.txt")).Do(Look(&trail)).Do([](HWND) {
        return DeleteFileA((root + "\\a.txt").c_str()) != 0;
    });
    driver.Do(Press(1)).Do(Look(&trail)).Do(Pick(2002, "b one.TXT", true));
    Ran ran = RunFileDialog(driver, 0);
    Make(root + "\\a.txt");
    EXPECT_EQ("a.txt+|a.txt[all]+|", trail);
    EXPECT_EQ((std::vector<unsigned int>{3202}), recorder.NumberedIds());
    EXPECT_TRUE(ran.result == 1 && ran.name == "b one.TXT");
}

// Cancel, Escape and closing give 0, keep the pattern and let the controls go.
TEST_F(FileDialogTest, CancellingInEveryWay) {
    struct Probe : BCFileDialog {
        Probe(const char* ext) : BCFileDialog(Template(1011), nullptr, ext, 1, &App()) {}
        unsigned long Controls() const { return opControls->GetCount(); }
        bool Running() const { return opNameEdit && opFileList && opDirList && opOkButton; }
    };
    std::vector<Step> endings = {
        Press(2), [](HWND d) { return PostMessageA(d, WM_CLOSE, 0, 0); },
        [](HWND d) { return PostMessageA(GetDlgItem(d, 2001), WM_KEYDOWN, VK_ESCAPE, 1); }};
    for (const Step& end : endings) {
        DialogDriver driver;
        driver.Do(end).Start();
        Probe dialog(".TEXT");
        EXPECT_TRUE(dialog.IsNewFile() && !dialog.Running() && dialog.GetObjectType() == 57u);
        dialog.Create("");
        EXPECT_TRUE(driver.Finish());
        char name[121], ext[121];
        EXPECT_TRUE(dialog.GetResult() == 0 && dialog.Controls() == 0 && !dialog.Running());
        EXPECT_EQ("*.TEX.TEX", std::string(dialog.GetFileName(name)) + dialog.GetFileExt(ext));
        dialog.SetFileName(std::string(130, 'x').c_str());
        EXPECT_EQ(120u, strlen(dialog.GetFileName(nullptr)));
    }
}

// A new extension while the dialog runs relists the files; none lists all of them.
TEST_F(FileDialogTest, TheExtensionCanChangeWhileRunning) {
    struct Switching : BCFileDialog {
        const char* next;
        Switching(const char* ext)
            : BCFileDialog(Template(1011), nullptr, ".TXT", 0, &App()), next(ext) {
            Create("");
        }
        void InitNameEdit() override {
            BCFileDialog::InitNameEdit();
            SetFileExt(next);
        }
    };
    for (auto [ext, shown, listed] :
         {std::make_tuple(".DOCX", "*.DOC[all]+|", Strings{"c.doc"}),
          std::make_tuple((const char*)nullptr, "*.*[all]+|",
                          Strings{"a.txt", "b one.TXT", "c.doc", "README"})}) {
        std::string trail;
        Strings files;
        DialogDriver driver;
        driver.Do(Look(&trail)).Do(List(2002, &files)).Do(Press(2)).Start();
        Switching dialog(ext);
        EXPECT_TRUE(driver.Finish());
        EXPECT_EQ(shown, trail);
        EXPECT_EQ(listed, files);
    }
}

TEST_F(FileDialogTest, TenThousandFilesListWithinASecond) {
    std::chrono::steady_clock::duration took{};
    Strings files;
    DialogDriver driver;
    driver.SetText(2001, many + "\\*.dat").Do([&took](HWND dialog) {
        auto begin = std::chrono::steady_clock::now();
        Press(1)(dialog);
        took = std::chrono::steady_clock::now() - begin;
        return true;
    });
    driver.Do(List(2002, &files)).Do(Press(2));
    RunFileDialog(driver, 0);
    EXPECT_EQ(10000u, files.size());
    EXPECT_LT(took, std::chrono::seconds(1));
}

TEST_F(FileDialogTest, SaveAsAddsTheExtensionAndAsksBeforeOverwriting) {
    const std::string k70(70, 'l');
    struct Case {
        const char *name, *ext;
        int answer, result;
        std::string kept, texts;
    } cases[] = {
        {"REPORT", ".TXT", 0, 1, "REPORT.TXT", ""},
        {"REPORT.DOC", ".TXT", 0, 1, "REPORT.DOC", ""},
        {"plain", "", 0, 1, "plain", ""},
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
