#include <gtest/gtest.h>

#include <windows.h>

#include <cstdlib>
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
    Frame() { EXPECT_TRUE(main.Create("Frame")); }
    BCComboBox* Combo(long style, const char* text = nullptr) {
        return new BCComboBox(7, &main, BCPosition(0, 0), BCSize(200, 150), style, text, &App(), 1);
    }
};

template <class Box> Strings Entries(Box& box) {
    Strings all;
    for (int i = 0; i < box.GetCount(); ++i) {
        all.emplace_back(box.GetItemLen(i), '\0');
        box.GetItem(i, &all.back()[0]);
    }
    return all;
}

char* Text(const char* s) {
    return const_cast<char*>(s);
}

TEST(ComboBoxTest, EntriesEditFieldAndFind) {
    using s = std::string;
    Frame frame;
    std::unique_ptr<BCComboBox> box(frame.Combo(CBS_DROPDOWN, "typed text"));
    EXPECT_TRUE(box->GetObjectType() == 42u && (box->GetStyle() & 0x50A00003) == 0x50A00002);
    char text[200] = "";
    EXPECT_TRUE(box->GetText(text, sizeof text) == 10 && text == s("typed text"));
    MsgRecorder recorder;
    EXPECT_TRUE(box->Delete(-1) == 0 && box->Insert(Text("x"), 5) == 0); // empty box
    for (const char* s : {"beta", "alpha", "gamma", "omega"})
        box->Append(Text(s));
    EXPECT_EQ((std::vector<unsigned int>{10071}), recorder.NumberedIds()); // adding is quiet
    EXPECT_TRUE(box->Insert(Text("delta"), 1) && box->Delete(-1) && box->Delete(0));
    EXPECT_EQ((Strings{"delta", "alpha", "gamma"}), Entries(*box));
    EXPECT_FALSE(box->GetCrntInd() != -1 || box->GetCrntItem(text) || box->GoTo(5));
    EXPECT_TRUE(box->GoTo(1) && box->GetCrntItem(text) && s("alpha") == text);
    void* value = box->GetCrntItem(); // a text entry read as a value gives its first bytes
    EXPECT_EQ(0, std::memcmp(&value, "alpha\0\0\0", sizeof value));
    EXPECT_TRUE(box->Find(Text("del"), -1, 0, 0) == 0 && box->GetCrntInd() == 1);
    EXPECT_TRUE(box->Find(Text("del"), -1, 1, 0) == 0 && box->GetCrntInd() == 0);
    EXPECT_EQ(-1, box->Find(Text("zeta"), -1, 0, 0));
    // Data words: the search starts after `start`, wraps once and sees `start` itself last.
    int data[] = {7, 9};
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(box->SetItemData(i, &data[i % 2 ? 1 : 0]));
    struct Case {
        int start, select, found;
    } cases[] = {{-1, 0, 0}, {0, 0, 2}, {2, 0, 0}, {1, 0, 2}, {1, 1, 1}};
    for (const Case& c : cases)
        EXPECT_EQ(c.found, box->Find(&data[0], c.start, c.select, 1)) << c.start;
    EXPECT_TRUE(box->GetCrntInd() == 2 && box->Find(text, 0, 0, 1) == -1);
    EXPECT_TRUE(box->GetItemData(1) == &data[1] && box->GetItemData(9) == nullptr &&
                box->SetItemData(9, data) == 0);
    // The edit field and its selection, cut to the buffer and to 131 characters.
    EXPECT_TRUE(box->SetText("typed text") && box->GetText(text, 6) == 5 && text == s("typed"));
    box->SetCrntSelection(BCLimits(2, 8));
    EXPECT_TRUE(box->GetCrntSelection() == BCLimits(2, 8) && box->GetTextLen() == 10);
    EXPECT_TRUE(box->GetSelectedText(text, 6) == 6 && s("ped te") == text);
    EXPECT_TRUE(box->GetSelectedText(text, 4) == 3 && s("ped") == text);
    EXPECT_TRUE(box->SetCharLimit(300) && box->SetText(std::string(150, 'x').c_str()));
    box->SetCrntSelection(BCLimits(0, 150));
    EXPECT_EQ(131u, box->GetSelectedText(text, sizeof text));
    EXPECT_TRUE(box->SetText("") && box->GetSelectedText(text, sizeof text) == 0);
    EXPECT_TRUE(box->Delete(-1) && box->Delete(-1) && box->Delete(-1) && box->GetCount() == 0);
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
    struct Refusing : BCDoubleLinkedList {
        Refusing() : BCDoubleLinkedList(0x0800, 16) {}
        int Append(void*, void*) override { return 0; }
    } full;
    EXPECT_EQ(0, sorted->SaveToList(&full, text, 1));
    ASSERT_TRUE(sorted->SaveToList(&pointers, text, 1) && pointers.GetCount() == 3u);
    pointers.Home();
    EXPECT_EQ(sorted->GetItemData(0), pointers.GetCrntItem());
    sorted->Append(Text(std::string(300, 'x').c_str()));
    BCArrayList longs(4, 16, 0, 0, 4, 0);
    EXPECT_EQ(0, sorted->SaveToList(&longs, text, 0)); // an entry too long for a list item
    EXPECT_EQ(1, sorted->LoadFromList(&empty, text, 0, 0));
    EXPECT_EQ(0, sorted->LoadFromList(&empty, BCGetBitmapFormat(), 0, 0) +
                     sorted->SaveToList(&empty, BCGetBitmapFormat(), 0));
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

// A fresh directory under the temporary one; the current directory is put back afterwards.
struct Folder {
    char previous[MAX_PATH], temp[MAX_PATH];
    std::string root;
    Folder(const char* name, std::initializer_list<const char*> dirs = {},
           std::initializer_list<const char*> files = {}) {
        GetCurrentDirectoryA(MAX_PATH, previous);
        GetTempPathA(MAX_PATH, temp);
        root = temp + (name + std::to_string(GetCurrentProcessId()));
        Make("");
        for (const char* d : dirs)
            Make(d);
        for (const char* f : files)
            File(f);
    }
    ~Folder() {
        SetCurrentDirectoryA(previous);
        std::system(("rmdir /s /q \"" + root + "\"").c_str());
    }
    void Make(const std::string& sub) { CreateDirectoryA((root + "\\" + sub).c_str(), nullptr); }
    void File(const std::string& name) {
        CloseHandle(CreateFileA((root + "\\" + name).c_str(), GENERIC_WRITE, 0, nullptr,
                                CREATE_ALWAYS, 0, nullptr));
    }
};

struct FileDialog {
    BCModelessDialog dialog{BCResID(700u), nullptr, &App()};
    BCFileListBox* files = new BCFileListBox(BCResID(2002u), &dialog, BCResID(2003u), &App());
    explicit FileDialog(bool open = true) { EXPECT_TRUE(!open || dialog.Create("Files")); }
    ~FileDialog() { dialog.EndDlg(2); }
    bool Shows(const std::string& directory) {
        char label[MAX_PATH] = "", current[MAX_PATH] = "";
        GetDlgItemTextA(dialog.GetHandle(), 2003, label, MAX_PATH);
        GetCurrentDirectoryA(MAX_PATH, current);
        return !_stricmp(label, directory.c_str()) && !_stricmp(current, directory.c_str());
    }
};

TEST(FileListBoxTest, ListsByPatternAndKeepsPatternAndExtension) {
    Folder folder("nlcombo", {"Sub One", "Sub One\\Deeper"},
                  {"a.txt", "b one.TXT", "README", "notes.markdown12345"});
    FileDialog ui;
    std::string spec = folder.root + "\\*.txt";
    EXPECT_TRUE(ui.files->GetObjectType() == 41u && ui.files->ListFiles(&spec[0], DDL_DIRECTORY));
    EXPECT_EQ((Strings{"a.txt", "b one.TXT", "[..]", "[Sub One]"}), Entries(*ui.files));
    EXPECT_TRUE(ui.Shows(folder.root));
    MsgRecorder recorder;
    ui.files->Display("> ");
    EXPECT_EQ("> caDfltPat=*.txt, caDfltExt=txt, wAttrib=0010, wPathID=2003.",
              recorder.Last().text);
    struct Case {
        const char *spec, *pattern, *extension;
    } cases[] = {{"*", "*", ""},
                 {"..\\x.y.z", "x.y.z", "y.z"},
                 {"nlcombo/*.markdown12345", "*.markdown12345", "markdown1"}};
    for (const Case& c : cases) {
        std::string typed = c.spec;
        ui.files->ListFiles(&typed[0], 0);
        EXPECT_TRUE(ui.files->GetDfltPat() == std::string(c.pattern) &&
                    ui.files->GetDfltExt() == std::string(c.extension))
            << c.spec;
    }
    std::string sub = folder.root + "\\Sub One\\*.q";
    EXPECT_TRUE(ui.files->GetAttrib() == 0 && ui.files->ListDirs(&sub[0], 0x8010));
    EXPECT_EQ((Strings{"[..]", "[Deeper]"}), Entries(*ui.files));
    EXPECT_TRUE(ui.Shows(folder.root + "\\Sub One") && ui.files->GetAttrib() == 0x8010u);
    EXPECT_EQ(std::string("markdown1"), ui.files->GetDfltExt()); // kept by ListDirs
    char chosen[MAX_PATH] = "keep";
    ui.files->GoTo(0);
    EXPECT_TRUE(ui.files->GetCrntFile(chosen) == 0 && chosen[0] == '\0'); // asked with length 0
    FileDialog closed(false);
    EXPECT_EQ(0, closed.files->ListFiles(&sub[0], 0) + closed.files->ListDirs(&sub[0], 0) +
                     closed.files->GetCrntFile(chosen) + (closed.files->CheckFile(chosen) - 1));
}

TEST(FileListBoxTest, TypedNamesAreClassified) {
    Folder folder("nlcheck", {"Sub One"}, {"a.txt", "Sub One\\in.txt", "Sub One\\b.md"});
    FileDialog ui;
    std::string start = folder.root + "\\*.txt";
    ASSERT_EQ(1, ui.files->ListFiles(&start[0], DDL_DIRECTORY));
    const Strings top{"a.txt", "[..]", "[Sub One]"}, md{"b.md", "[..]"};
    struct Case {
        const char *typed, *after; // what the name reads afterwards
        int result;
        Strings shown;
    } cases[] = {
        {"a.txt", "a.txt", 0, top},
        {"new file.txt", "new file.txt", 2, top},
        {"no dir\\x.txt", "no dir\\x.txt", 1, top},
        {"Sub One\\new.txt", "Sub One\\new.txt", 2, top},
        {"Sub One\\", "Sub One\\", 3, {"in.txt", "[..]"}},
        {"*.md", "*.MD", 3, md}, // the listing writes the file part back
        {"", "", 3, md},
        {"..", "..", 1, md}, // a directory is not a file
        {"a<b.txt", "a<b.txt", 1, md},
        {"no dir\\*.txt", "no dir\\*.txt", 1, md},
    };
    for (const Case& c : cases) {
        char name[300];
        std::strcpy(name, c.typed);
        EXPECT_EQ(c.result, ui.files->CheckFile(name)) << c.typed;
        EXPECT_STREQ(c.after, name);
        EXPECT_EQ(c.shown, Entries(*ui.files)) << c.typed;
    }
    std::string tooLong(300, 'n');
    char drive[16] = "C:*.md";
    drive[0] = folder.root[0];
    EXPECT_TRUE(ui.files->CheckFile(nullptr) == 1 && ui.files->CheckFile(&tooLong[0]) == 1 &&
                ui.files->CheckFile(drive) == 3);
    EXPECT_STREQ("*.md", drive); // a name with a drive becomes the pattern
}

} // namespace
