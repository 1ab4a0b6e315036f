#include <gtest/gtest.h>

#include <windows.h>

#include <chrono>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"

namespace {

using Strings = std::vector<std::string>;

BCApplication& App() {
    static BCApplication app;
    return app;
}

struct Frame {
    BCMainWindow main{&App()};
    Frame() {
        main.SetWindowRect(BCRectangle(10, 10, 410, 310));
        EXPECT_TRUE(main.Create("Frame"));
    }
    BCComboBox* Combo(long style, const char* text = nullptr) {
        return new BCComboBox(7, &main, BCPosition(0, 0), BCSize(200, 150), style, text, &App(), 1);
    }
};

Strings Entries(BCComboBox& box) {
    Strings all;
    for (int i = 0; i < box.GetCount(); ++i) {
        std::string text(box.GetItemLen(i), '\0');
        box.GetItem(i, &text[0]);
        all.push_back(text);
    }
    return all;
}

char* Text(const char* s) {
    return const_cast<char*>(s);
}

TEST(ComboBoxTest, EntriesSelectionAndFind) {
    Frame frame;
    std::unique_ptr<BCComboBox> box(frame.Combo(CBS_DROPDOWN, "typed"));
    EXPECT_EQ(0x50A00002, box->GetStyle() & 0x50A00003);
    EXPECT_EQ(42u, box->GetObjectType());
    char text[16] = "";
    EXPECT_TRUE(box->GetText(text, sizeof text) == 5 && std::string("typed") == text);
    EXPECT_EQ(0, box->Delete(-1)); // nothing to delete
    for (const char* s : {"beta", "alpha", "gamma"})
        box->Append(Text(s));
    EXPECT_TRUE(box->Insert(Text("delta"), 1) && box->Delete(-1) && box->Delete(0));
    EXPECT_EQ((Strings{"delta", "alpha"}), Entries(*box));
    EXPECT_EQ(-1, box->GetCrntInd());
    EXPECT_FALSE(box->GetCrntItem(text) || box->GoTo(5));
    EXPECT_TRUE(box->GoTo(1) && box->GetCrntItem(text) && std::string("alpha") == text);
    EXPECT_EQ(0, box->Find(Text("del"), -1, 0, 0));
    EXPECT_TRUE(box->Find(Text("del"), -1, 1, 0) == 0 && box->GetCrntInd() == 0);
    EXPECT_EQ(-1, box->Find(Text("zeta"), -1, 0, 0));

    // Data words: the search starts after `start`, wraps once and sees `start` itself last.
    box->Append(Text("omega"));
    int data[] = {7, 9, 7};
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(box->SetItemData(i, &data[i == 2 ? 0 : i]));
    struct Case {
        int start, select, found;
    } cases[] = {{-1, 0, 0}, {0, 0, 2}, {2, 0, 0}, {1, 0, 2}, {1, 1, 1}};
    for (const Case& c : cases)
        EXPECT_EQ(c.found, box->Find(&data[0], c.start, c.select, 1)) << c.start;
    EXPECT_EQ(2, box->GetCrntInd());
    EXPECT_TRUE(box->Find(&data[1], 1, 0, 1) == 1 && box->Find(text, 0, 0, 1) == -1);
    EXPECT_TRUE(box->GetItemData(1) == &data[1] && box->GetItemData(9) == nullptr);
    EXPECT_EQ(0, box->SetItemData(9, data));
    EXPECT_TRUE(box->DeleteAll() && box->GetCount() == 0);
}

TEST(ComboBoxTest, EditFieldSelectionIsCutToTheBufferAnd131Characters) {
    Frame frame;
    std::unique_ptr<BCComboBox> box(frame.Combo(CBS_DROPDOWN));
    ASSERT_TRUE(box->SetText("combo box") && box->GetTextLen() == 9);
    box->SetCrntSelection(BCLimits(2, 7));
    EXPECT_TRUE(box->GetCrntSelection() == BCLimits(2, 7));
    char text[200] = "";
    EXPECT_TRUE(box->GetSelectedText(text, 5) == 5 && std::string("mbo b") == text);
    EXPECT_TRUE(box->GetSelectedText(text, 3) == 2 && std::string("mb") == text);
    EXPECT_TRUE(box->SetCharLimit(300) && box->SetText(std::string(150, 'x').c_str()));
    box->SetCrntSelection(BCLimits(0, 150));
    EXPECT_EQ(131u, box->GetSelectedText(text, sizeof text));
    EXPECT_EQ(9u, box->GetText(text, 10));
}

TEST(ComboBoxTest, InsertAndAppendFailuresShowTheirMessages) {
    Frame frame;
    std::unique_ptr<BCComboBox> box(frame.Combo(CBS_DROPDOWN));
    MsgRecorder recorder;
    EXPECT_EQ(0, box->Insert(Text("x"), 5)); // past the end
    EXPECT_EQ((std::vector<unsigned int>{10071}), recorder.NumberedIds());
}

// Every list kind fills a box and takes its entries back through the list protocol.
TEST(ComboBoxTest, LoadAndSaveWorkWithEveryListKind) {
    Frame frame;
    std::unique_ptr<BCComboBox> source(frame.Combo(CBS_DROPDOWN)), sorted(frame.Combo(CBS_SORT));
    for (const char* s : {"pear", "fig tree", "apple"})
        source->Append(Text(s));
    BCFormat& text = BCGetTextFormat();
    std::unique_ptr<BCList> lists[] = {
        std::make_unique<BCArrayList>(4, 16, 0, 0, 4, 0),
        std::make_unique<BCDoubleLinkedList>(0, 16), std::make_unique<BCHashList>(7, 0, 16),
        std::make_unique<BCStackList>(), std::make_unique<BCQueueList>()};
    for (auto& list : lists) {
        list->SetItemSize(16);
        ASSERT_EQ(1, source->SaveToList(list.get(), text, 0));
        sorted->DeleteAll();
        ASSERT_EQ(1, sorted->LoadFromList(list.get(), text, 0, 1));
        EXPECT_EQ((Strings{"apple", "fig tree", "pear"}), Entries(*sorted));
        for (int i = 0; i < 3; ++i) // each entry holds its item
            EXPECT_EQ(Entries(*sorted)[i], static_cast<char*>(sorted->GetItemData(i)));
    }
    BCDoubleLinkedList pointers(0x0800, 16), empty(0, 16);
    ASSERT_TRUE(sorted->SaveToList(&pointers, text, 1) && pointers.GetCount() == 3u);
    EXPECT_EQ(1, sorted->LoadFromList(&empty, text, 0, 0));
    EXPECT_EQ(0, sorted->LoadFromList(&empty, BCGetBitmapFormat(), 0, 0));
    EXPECT_EQ(0, sorted->SaveToList(&empty, BCGetBitmapFormat(), 0));
}

TEST(ComboBoxTest, EveryOperationWithoutAWindowGivesItsNoWindowResult) {
    BCComboBox box(BCResID(1u), nullptr, &App());
    BCArrayList list(4, 16, 0, 0, 4, 0);
    char buffer[8] = "keep";
    MsgRecorder recorder;
    EXPECT_EQ(7u, box.GetText(buffer, 7));
    EXPECT_EQ(-6, box.Append(buffer) + box.GetCount() + box.GetCrntInd() + box.GetItemLen(0) +
                      box.Find(buffer, 0, 0, 0) + box.Find(buffer, 0, 0, 1));
    EXPECT_EQ(0, box.Insert(buffer, 0) + box.Delete(0) + box.DeleteAll() + box.GoTo(0) +
                     box.GetCrntItem(buffer) + box.SetText("x") + box.GetTextLen() +
                     box.SetCharLimit(4) + box.GetSelectedText(buffer, 8) + box.GetItem(0, buffer) +
                     box.SetItemData(0, buffer) + box.LoadFromList(&list, BCGetTextFormat(), 0, 0) +
                     box.SaveToList(&list, BCGetTextFormat(), 0));
    EXPECT_TRUE(box.GetCrntItem() == nullptr && box.GetItemData(0) == nullptr &&
                box.GetCrntSelection() == BCLimits(0, 0) && recorder.Count() == 0);
    EXPECT_STREQ("keep", buffer);
}

// A fresh directory under the temporary one, left as the current directory was.
struct Folder {
    std::string root, previous;
    explicit Folder(const char* name) {
        char buffer[MAX_PATH];
        GetCurrentDirectoryA(MAX_PATH, buffer);
        previous = buffer;
        GetTempPathA(MAX_PATH, buffer);
        root = std::string(buffer) + name + std::to_string(GetCurrentProcessId());
        Make("");
    }
    ~Folder() {
        SetCurrentDirectoryA(previous.c_str());
        Remove(root);
    }
    static void Remove(const std::string& path) {
        WIN32_FIND_DATAA found;
        HANDLE search = FindFirstFileA((path + "\\*").c_str(), &found);
        for (BOOL more = search != INVALID_HANDLE_VALUE; more;
             more = FindNextFileA(search, &found)) {
            std::string name = found.cFileName, full = path + "\\" + name;
            if (name == "." || name == "..")
                continue;
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                Remove(full);
            else
                DeleteFileA(full.c_str());
        }
        FindClose(search);
        RemoveDirectoryA(path.c_str());
    }
    void Make(const std::string& sub) { CreateDirectoryA((root + "\\" + sub).c_str(), nullptr); }
    void File(const std::string& name) {
        CloseHandle(CreateFileA((root + "\\" + name).c_str(), GENERIC_WRITE, 0, nullptr,
                                CREATE_ALWAYS, 0, nullptr));
    }
    std::string Current() const {
        char buffer[MAX_PATH];
        GetCurrentDirectoryA(MAX_PATH, buffer);
        return buffer;
    }
};

struct FileDialog {
    BCModelessDialog dialog{BCResID(700u), nullptr, &App()};
    BCFileListBox* files = new BCFileListBox(BCResID(2002u), &dialog, BCResID(2003u), &App());
    FileDialog() { EXPECT_TRUE(dialog.Create("Files")); }
    ~FileDialog() { dialog.EndDlg(2); }
    Strings Shown() {
        Strings all;
        for (int i = 0; i < files->GetCount(); ++i) {
            std::string text(files->GetItemLen(i), '\0');
            files->GetItem(i, &text[0]);
            all.push_back(text);
        }
        return all;
    }
    std::string Path() {
        char text[MAX_PATH] = "";
        GetDlgItemTextA(dialog.GetHandle(), 2003, text, MAX_PATH);
        return text;
    }
};

bool SamePath(const std::string& a, const std::string& b) {
    return _stricmp(a.c_str(), b.c_str()) == 0;
}

TEST(FileListBoxTest, ListsByPatternAndKeepsPatternAndExtension) {
    Folder folder("nlcombo");
    for (const char* d : {"Sub One", "Sub One\\Deeper"})
        folder.Make(d);
    for (const char* f : {"a.txt", "b one.TXT", "README", "notes.markdown12345", "Sub One\\in.txt"})
        folder.File(f);
    FileDialog ui;
    EXPECT_EQ(41u, ui.files->GetObjectType());
    std::string spec = folder.root + "\\*.txt";
    EXPECT_EQ(1, ui.files->ListFiles(&spec[0], DDL_DIRECTORY));
    EXPECT_EQ((Strings{"a.txt", "b one.TXT", "[..]", "[Sub One]"}), ui.Shown());
    EXPECT_TRUE(SamePath(folder.root, ui.Path()) && SamePath(folder.root, folder.Current()));
    MsgRecorder recorder;
    ui.files->Display("> ");
    EXPECT_EQ("> caDfltPat=*.txt, caDfltExt=txt, wAttrib=0010, wPathID=2003.",
              recorder.Last().text);
    struct Case {
        const char *spec, *pattern, *extension;
    } cases[] = {{"*", "*", ""},
                 {"Sub One/*.markdown12345", "*.markdown12345", "markdown1"},
                 {"..\\x.y.z", "x.y.z", "y.z"}};
    for (const Case& c : cases) {
        std::string typed = c.spec;
        ui.files->ListFiles(&typed[0], 0);
        EXPECT_TRUE(ui.files->GetDfltPat() == std::string(c.pattern) &&
                    ui.files->GetDfltExt() == std::string(c.extension))
            << c.spec;
    }
    EXPECT_EQ(0u, ui.files->GetAttrib());
    std::string sub = folder.root + "\\Sub One\\*.q";
    EXPECT_EQ(1, ui.files->ListDirs(&sub[0], DDL_DIRECTORY | DDL_EXCLUSIVE));
    EXPECT_EQ((Strings{"[..]", "[Deeper]"}), ui.Shown());
    EXPECT_TRUE(std::string("x.y.z") == ui.files->GetDfltPat() && ui.files->GetAttrib() == 0x8010u);
    char chosen[MAX_PATH] = "keep";
    ui.files->GoTo(0);
    EXPECT_TRUE(ui.files->GetCrntFile(chosen) == 0 && chosen[0] == '\0'); // asked with length 0
}

TEST(FileListBoxTest, TypedNamesAreClassified) {
    Folder folder("nlcheck");
    folder.Make("Sub One");
    for (const char* f : {"a.txt", "Sub One\\in.txt", "Sub One\\b.md"})
        folder.File(f);
    FileDialog ui;
    std::string start = folder.root + "\\*.txt";
    ASSERT_EQ(1, ui.files->ListFiles(&start[0], DDL_DIRECTORY));
    struct Case {
        const char* typed;
        int result;
        const char* after; // what the name reads afterwards
        Strings shown;
    } cases[] = {
        {"a.txt", 0, "a.txt", {"a.txt", "[..]", "[Sub One]"}},
        {"new file.txt", 2, "new file.txt", {"a.txt", "[..]", "[Sub One]"}},
        {"no dir\\x.txt", 1, "no dir\\x.txt", {"a.txt", "[..]", "[Sub One]"}},
        {"Sub One\\", 3, "Sub One\\", {"in.txt", "[..]"}},
        {"*.md", 3, "*.MD", {"b.md", "[..]"}}, // the listing writes the file part back
        {"", 3, "", {"b.md", "[..]"}},
        {"..", 1, "..", {"b.md", "[..]"}}, // a directory is not a file
        {"a<b.txt", 1, "a<b.txt", {"b.md", "[..]"}},
        {"no dir\\*.txt", 1, "no dir\\*.txt", {"b.md", "[..]"}},
    };
    for (const Case& c : cases) {
        char name[300];
        std::strcpy(name, c.typed);
        EXPECT_EQ(c.result, ui.files->CheckFile(name)) << c.typed;
        EXPECT_STREQ(c.after, name);
        EXPECT_EQ(c.shown, ui.Shown()) << c.typed;
    }
    std::string long_name(300, 'n');
    EXPECT_EQ(1, ui.files->CheckFile(&long_name[0]));
    char drive[16] = "C:";
    std::strcat(drive, "*.md");
    drive[0] = folder.root[0];
    EXPECT_EQ(3, ui.files->CheckFile(drive));
    EXPECT_STREQ("*.md", drive); // a name with a drive becomes the pattern
}

TEST(FileListBoxTest, TenThousandFilesListWithinASecond) {
    Folder folder("nlmany");
    for (int i = 0; i < 10000; ++i)
        folder.File("file " + std::to_string(i) + ".dat");
    FileDialog ui;
    std::string spec = folder.root + "\\*.dat";
    auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(1, ui.files->ListFiles(&spec[0], 0));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
    EXPECT_EQ(10000, ui.files->GetCount());
}

TEST(FileListBoxTest, WithoutADialogWindowNothingIsListed) {
    BCModelessDialog dialog(BCResID(700u), nullptr, &App());
    BCFileListBox* files = new BCFileListBox(BCResID(2002u), &dialog, BCResID(2003u), &App());
    char spec[] = "*.txt", buffer[8] = "keep";
    EXPECT_EQ(0, files->ListFiles(spec, 0) + files->ListDirs(spec, 0) + files->GetCrntFile(buffer));
    EXPECT_EQ(1, files->CheckFile(spec));
    EXPECT_TRUE(buffer[0] == '\0' && files->GetDfltPat()[0] == '\0' && files->GetAttrib() == 0);
}
} // namespace
