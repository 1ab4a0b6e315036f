#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>

#include "guidriver.h"
#include "test_data.h"

namespace {

using Codes = std::vector<unsigned int>;

// The next file dialog's user: types each entry into the field and presses OK; "" cancels.
class FileDialogUser {
  public:
    FileDialogUser(int field, const std::vector<std::string>& entries) {
        for (size_t i = 0; i + 1 < entries.size(); ++i)
            m_driver.SetText(field, entries[i]).Do([](HWND dialog) {
                // Sent, not posted: the next entry must not overtake this OK.
                SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED),
                             reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDOK)));
                return true;
            });
        if (entries.back().empty())
            m_driver.Click(IDCANCEL);
        else
            m_driver.SetText(field, entries.back()).Click(IDOK);
        m_driver.Start();
    }
    bool Done() { return m_driver.Finish(); }

  private:
    DialogDriver m_driver;
};

constexpr int kOpenField = 2001;
constexpr int kSaveAsField = 2013;

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

bool Exists(const std::string& path) {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// A folder of the user's with a blank in its name, as a full path ending in '\\'.
std::string UserFolder() {
    char temp[MAX_PATH];
    GetTempPathA(sizeof temp, temp);
    const std::string path = std::string(temp) + "norlib documents\\";
    CreateDirectoryA(path.c_str(), nullptr);
    return path;
}

// Records the codes a data object sends.
struct CodeRecorder : BCUpdater {
    CodeRecorder() : BCUpdater(145, nullptr) {}
    int DataUpdated(BCObject*, unsigned int code, BCObject*) override {
        codes.push_back(code);
        return 1;
    }
    Codes codes;
};

// A notifying document of any kind with a recorder of its codes; starts unmodified.
template <class Data> struct Doc {
    BCUpdaterList updaters;
    CodeRecorder* recorder = new CodeRecorder;
    Data data;
    template <class Contents>
    explicit Doc(Contents* contents, const char* name = nullptr)
        : data(contents, nullptr, ".txt", name, BC_FLAG_NOTIFY, &updaters) {
        updaters.InsertUpdater(recorder, 1);
        data.SetModified(0);
    }
    Codes Taken() { return std::move(recorder->codes); }
};

struct Document : Doc<BCTextData> {
    explicit Document(const char* name = nullptr) : Doc(static_cast<BCText*>(nullptr), name) {}
    void Type(const char* text) { data.SetText(text, data.GetTextLen(), std::strlen(text), 1); }
};

TEST(TextDataTest, EditsAreForwardedAndReportedAndPicturesLetGo) {
    Document doc;
    EXPECT_STREQ("BCTextData", doc.data.GetObjectTypeStr());
    doc.Type("one\r\ntwo\r\n");
    // Nothing there to delete: no code.
    EXPECT_EQ((Seq{1, 3, 2, 0}),
              (Seq{doc.data.GetTextObject()->IsModified(), doc.data.DeleteText(0, 3),
                   doc.data.GetLineOfs(1), doc.data.DeleteText(100, 3)}));
    EXPECT_EQ((Codes{4, 4}), doc.Taken());

    BCTextData empty(nullptr, nullptr, nullptr);
    delete empty.SetObject(new BCMemoryData(nullptr, 0, 0));
    EXPECT_EQ(nullptr, empty.GetTextObject()); // not a text: forwarding gives nothing
    EXPECT_EQ(Nums(0, 0xFFFFFFFF), Nums(empty.SetText("x", 0, 1, 1), empty.GetLineOfs(0)));
    // A new picture document lets go of the picture.
    auto* picture = new BCBitmap(3, 2);
    BCBitmapData document(picture, nullptr, ".bmd", nullptr, 0, nullptr);
    EXPECT_STREQ("BCBitmapData", document.GetObjectTypeStr());
    ASSERT_EQ(picture, document.GetBitmap());
    EXPECT_TRUE(document.NewFile() && picture->IsEmpty());
}

TEST(FileDataTest, QuestionAnsweredYesNoAndCancel) {
    MsgRecorder boxes;
    Document doc;
    // Not modified: no question.
    EXPECT_TRUE(doc.data.NewFile() && !boxes.Count() && doc.Taken() == (Codes{6, 7}));

    doc.Type("draft");
    boxes.Answer(IDCANCEL);
    boxes.Answer(IDCANCEL);
    EXPECT_TRUE(!doc.data.OpenFile() && !doc.data.CloseFile() &&
                doc.data.GetTextLen() == 5u); // no dialog, nothing lost
    EXPECT_EQ("Save current changes?35", boxes.Last().text + std::to_string(boxes.Last().style));

    // An error left behind by others does not spoil the question, and none is left behind.
    KoErrorHook::RaiseProcError(KO_ERR_FORMAT);
    doc.data.SetFileName("letter.txt");
    boxes.Answer(IDNO);
    doc.Taken();
    EXPECT_TRUE(doc.data.CloseFile() == 1 && !KoErrorHook::DidProcErrorOccur());
    EXPECT_EQ("Save changes to letter.txt?", boxes.Last().text);
    EXPECT_TRUE(!doc.data.GetFileName() && !doc.data.IsModified() && doc.Taken() == (Codes{6, 10}));

    // Yes saves: as, when unnamed (cancelled here), else under the name.
    doc.Type("more");
    boxes.Answer(IDYES);
    FileDialogUser cancels(kSaveAsField, {""});
    EXPECT_TRUE(!doc.data.NewFile() && cancels.Done() && doc.data.IsModified());
    std::string path = TempFile("nyes");
    doc.data.SetFileName(path.c_str());
    boxes.Answer(IDYES);
    EXPECT_EQ(1, doc.data.NewFile());
    EXPECT_EQ("more", ReadFile(path));
    std::remove(path.c_str());
}

TEST(FileDataTest, SavedDocumentsArePlainTextFiles) {
    std::string path = TempFile("ndoc");
    Document doc(path.c_str());
    doc.Type("first line\r\n");
    ASSERT_EQ(1, doc.data.SaveFile());
    EXPECT_EQ("first line\r\n9", ReadFile(path) + std::to_string(doc.Taken().back()));

    std::ofstream(path, std::ios::binary) << "made\r\nelsewhere"; // loads as it is
    Document reader(path.c_str());
    ASSERT_EQ(1, reader.data.LoadFile());
    EXPECT_TRUE(reader.data.GetTextLen() == 15u && !reader.data.IsModified() &&
                reader.Taken() == (Codes{6, 8}));
    EXPECT_TRUE(reader.data.DeleteFile() && !Exists(path));
    // Gone: no message, nothing changed.
    EXPECT_EQ(Nums(0, 15, 0),
              Nums(reader.data.LoadFile(), reader.data.GetTextLen(), Document().data.DeleteFile()));
}

std::string TextOf(BCTextData& data) {
    std::string out(data.GetTextLen(), '\0');
    return out.substr(0, data.GetText(&out[0], 0, data.GetTextLen()));
}

// Lines ending in LF alone open as lines and are written back so, new lines too; anything
// else (lone LFs among CR LF, NUL, bytes 128-255) goes back byte for byte.
TEST(FileDataTest, FilesFromOtherSystemsGoBackAsTheyCame) {
    struct Case {
        std::string file, text, saved;
        unsigned long lines;
    } const cases[] = {
        {"one\ntwo\n\nthree", "one\r\ntwo\r\n\r\nthree\r\nx", "one\ntwo\n\nthree\nx", 4},
        {std::string("a\0b\r\n\xff\xe9\ny\rz", 11), std::string("a\0b\r\n\xff\xe9\ny\rz\r\nx", 14),
         std::string("a\0b\r\n\xff\xe9\ny\rz\r\nx", 14), 3},
    };
    for (const Case& c : cases) {
        std::string path = TempFile("nlf", c.file);
        Document doc(path.c_str());
        ASSERT_EQ(1, doc.data.LoadFile());
        doc.Type("\r\nx");
        EXPECT_EQ(Nums(c.lines, 1), Nums(doc.data.GetNumLines(0, 999), doc.data.SaveFile()));
        EXPECT_EQ(c.text + "|" + c.saved, TextOf(doc.data) + "|" + ReadFile(path));
        std::remove(path.c_str());
    }
}

TEST(FileDataTest, AFileTooLargeForMemoryLeavesTheDocument) {
    std::string path = TempFile("nbig");
    HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    LARGE_INTEGER size;
    size.QuadPart = 0x80000001ll; // sparse: beyond any block this library allocates
    ASSERT_TRUE(SetFilePointerEx(file, size, nullptr, FILE_BEGIN) && SetEndOfFile(file));
    CloseHandle(file);
    Document doc(path.c_str());
    doc.data.SetText("kept", 0, 4, 1);
    doc.data.SetModified(0);
    MsgRecorder messages;
    EXPECT_EQ(0, doc.data.LoadFile());
    EXPECT_EQ("Can't allocate enough memory!|kept", messages.Last().text + "|" + TextOf(doc.data));
    EXPECT_EQ(Nums(0, 0), Nums(messages.NumberedIds().size(), doc.data.IsModified()));
    std::remove(path.c_str());
}

// Writes part of its record, then fails, as a full disk would.
struct FailingData : BCRenderableData {
    FailingData() : BCRenderableData(155, 0) {}
    int Save(std::ostream& os) override { return !(os << "partial"); }
};

TEST(FileDataTest, FailedWritesKeepThePreviousFileAndFailedReadsAreShown) {
    std::string path = TempFile("nkeep", "the user's work");
    MsgRecorder messages;
    BCFileData data(new FailingData, nullptr, nullptr, path.c_str(), 0, nullptr);
    data.SetModified(1);
    EXPECT_EQ(Nums(151, 0), Nums(data.GetObjectType(), data.SaveFile()));
    EXPECT_TRUE(ReadFile(path) == "the user's work" && !Exists(path + ".~sv") && data.IsModified());
    BCFileData memory(new BCMemoryData(nullptr, 0, 0), nullptr, nullptr, path.c_str(), 0, nullptr);
    EXPECT_TRUE(!memory.LoadFile() && memory.IsModified()); // not a record of the object
    EXPECT_EQ("Error writing file " + path + "|Error reading file " + path + ".|",
              messages.Texts());
    EXPECT_EQ((Codes{10074, 10075}), messages.NumberedIds());

    // A target that cannot be written leads to save-as, silently; where the write fails again,
    // the new name stays.
    messages.Clear();
    data.SetFileName((path + "-dir\\x.txt").c_str());
    const std::string other = UserFolder() + "failed.dat";
    FileDialogUser user(kSaveAsField, {other});
    EXPECT_TRUE(!data.SaveFile() && user.Done() && !Exists(other));
    EXPECT_EQ(other + "|1",
              data.GetFileName() + std::string("|") + std::to_string(messages.Count()));
    EXPECT_EQ((Codes{10074}), messages.NumberedIds());
    std::remove(path.c_str());
}

struct WatchingWindow : BCWindow {
    WatchingWindow() : BCWindow(26, nullptr, nullptr) {}
    long DataUpdated(BCObject*, unsigned int code, BCObject*) override {
        codes.push_back(code);
        return 1;
    }
    Codes codes;
};

TEST(FileDataTest, TheWindowGetsAnUpdaterAtTheEnd) {
    WatchingWindow window, other;
    BCTextData data(nullptr, &window, ".txt", nullptr, BC_FLAG_NOTIFY, nullptr);
    BCUpdaterList* list = data.GetUpdaters();
    window.codes.clear();
    ASSERT_TRUE(list && data.SetText("abc", 0, 3, 1) && window.codes == Codes{4});

    // Another document adds none for the same window; one for another, at the list's end.
    BCTextData second(nullptr, &window, ".txt", nullptr, BC_FLAG_NOTIFY, list);
    EXPECT_EQ(1u, list->GetCount());
    list->InsertUpdater(new CodeRecorder, 1);
    ASSERT_TRUE(list->Home());
    BCTextData third(nullptr, &other, ".txt", nullptr, BC_FLAG_NOTIFY, list);
    ASSERT_TRUE(list->End());
    auto* last = static_cast<BCUpdater*>(list->GetCrntItem());
    EXPECT_TRUE(&other == last->GetTarget() && last->GetObjectType() == 146u);
    delete list; // the documents never own their list
}

// A list of eight-byte owned items that counts its own end.
struct CountedList : BCDoubleLinkedList {
    explicit CountedList(int* gone) : BCDoubleLinkedList(0, 8), gone(gone) {}
    ~CountedList() override { ++*gone; }
    int* gone;
};

char* Item(const char* text) {
    return std::strncpy(new char[8](), text, 7);
}

TEST(ListDataTest, ChangesThroughTheDocumentAreReported) {
    int gone = 0;
    {
        Doc<BCListData> doc(new CountedList(&gone));
        BCListData& data = doc.data;
        EXPECT_EQ("97BCListData", std::to_string(data.GetObjectType()) + data.GetObjectTypeStr());
        ASSERT_TRUE(data.Append(Key(1), Item("one")) && data.IsModified());
        ASSERT_TRUE(data.Append(Key(3), Item("three")) && data.GetList()->Home() &&
                    data.Insert(Key(0), Item("zero")));
        EXPECT_STREQ("three", static_cast<char*>(data.Find(Key(3))));
        delete[] static_cast<char*>(data.SetCrntItem(Item("drei")));
        ASSERT_EQ(1, data.Delete(Key(1)));
        data.SetModified(0);
        EXPECT_FALSE(data.Delete(Key(9)) || data.IsModified()); // nothing there: no code
        EXPECT_EQ("zero\r\ndrei\r\n", TextForm(data));
        EXPECT_EQ((Codes{4, 4, 4, 4, 4}), doc.Taken());
        ASSERT_TRUE(data.GetList()->Home() && data.DeleteCrnt() == 1 && data.Clear(1) == 1);
        EXPECT_TRUE(doc.Taken() == (Codes{4, 6}) && !data.GetCount());
        EXPECT_EQ(nullptr, data.Dup()); // a list that cannot be duplicated makes no copy
    }
    EXPECT_EQ(1, gone); // the document owned its list

    BCListData none(nullptr, nullptr, nullptr, nullptr, 0, nullptr);
    delete none.SetObject(new BCText);
    EXPECT_EQ(nullptr, none.GetList()); // not a list: nothing forwarded
    EXPECT_EQ(0, none.Append(Key(1), nullptr) + none.Insert(Key(1), nullptr));
}

// A text document, or a list document whose file is the list's record; `filled` puts
// something in it, bytes a text-mode write or read would spoil among them.
std::unique_ptr<BCFileData> MakeDocument(int kind, bool filled) {
    if (kind == 0) {
        auto text = std::make_unique<BCTextData>(nullptr, ".txt", nullptr);
        if (filled)
            text->SetText("one\r\ntwo", 0, 8, 1);
        return text;
    }
    auto list = std::make_unique<BCListData>(new BCDoubleLinkedList(0, 8), nullptr, ".lst", nullptr,
                                             0, nullptr);
    if (filled)
        list->SetData(Str("alpha\r\n\x1a\xff"), 9, gText);
    return list;
}

TEST(FileDialogsTest, EveryKindOfDocumentSavesUnderANewNameAndOpensAgain) {
    MsgRecorder messages;
    for (int kind = 0; kind < 2; ++kind) {
        std::unique_ptr<BCFileData> doc = MakeDocument(kind, true);
        const std::string record =
            kind ? RecordOf(*static_cast<BCListData&>(*doc).GetList()) : RecordOf(*doc);
        FileDialogUser saver(kSaveAsField, {UserFolder() + "doc " + std::to_string(kind)});
        ASSERT_EQ(1, doc->SaveAsFile()) << kind;
        EXPECT_TRUE(saver.Done() && !doc->IsModified());
        // The default extension is added and the name kept whole.
        const std::string path = UserFolder() + "doc " + std::to_string(kind) + doc->GetFileExt();
        EXPECT_EQ(path + record, doc->GetFileName() + ReadFile(path));

        std::unique_ptr<BCFileData> reopened = MakeDocument(kind, false);
        // Browsing to the folder first, then choosing the file by its bare name.
        FileDialogUser opener(kOpenField, {UserFolder(), path.substr(UserFolder().size())});
        ASSERT_EQ(1, reopened->OpenFile()) << kind;
        EXPECT_TRUE(opener.Done() && !reopened->IsModified());
        EXPECT_EQ(path + TextForm(*doc), reopened->GetFileName() + TextForm(*reopened));
        std::remove(path.c_str());
    }
    EXPECT_EQ(0u, messages.Count());
}

// The open dialog lists the document's extension, or every file without one; save-as offers
// the name, by its file part where the dialog cannot hold it. Cancel keeps the name.
TEST(FileDialogsTest, TheDialogsOfferTheExtensionAndTheName) {
    const std::string deep = "C:\\" + std::string(60, 'd') + "\\letter.txt";
    const struct {
        const char* ext;
        std::string name, shown;
        int field;
    } cases[] = {{".txt", "a.txt", "*.txt", kOpenField},
                 {nullptr, "a.txt", "*.*", kOpenField},
                 {".txt", "C:\\x\\letter.txt", "C:\\x\\letter.txt", kSaveAsField},
                 {".txt", deep, "letter.txt", kSaveAsField}};
    for (const auto& c : cases) {
        Document doc(c.name.c_str());
        doc.data.SetFileExt(c.ext);
        std::string shown;
        DialogDriver driver;
        driver.ReadText(c.field, &shown).Click(IDCANCEL).Start();
        EXPECT_FALSE(c.field == kOpenField ? doc.data.OpenFile() : doc.data.SaveAsFile());
        EXPECT_TRUE(driver.Finish() && !lstrcmpiA(c.shown.c_str(), shown.c_str())) << shown;
        EXPECT_EQ(c.name, doc.data.GetFileName());
    }
}

} // namespace
