#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"

namespace {

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void WriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary);
    out << bytes;
}

bool Exists(const std::string& path) {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// Records the codes the data object sends.
class CodeRecorder : public BCUpdater {
  public:
    CodeRecorder() : BCUpdater(145, nullptr) {}
    int DataUpdated(BCObject*, unsigned int code, BCObject*) override {
        codes.push_back(code);
        return 1;
    }
    std::vector<unsigned int> codes;
};

struct Document {
    BCUpdaterList updaters;
    CodeRecorder* recorder = new CodeRecorder;
    BCTextData data;
    explicit Document(const char* name = nullptr)
        : data(nullptr, nullptr, ".txt", name, BC_FLAG_NOTIFY, &updaters) {
        updaters.InsertUpdater(recorder, 1);
        data.SetModified(0);
        recorder->codes.clear();
    }
    void Type(const char* text) { data.SetText(text, data.GetTextLen(), std::strlen(text), 1); }
};

TEST(TextDataTest, EditsAreForwardedAndReported) {
    Document doc;
    EXPECT_EQ(98u, doc.data.GetObjectType());
    EXPECT_STREQ("BCTextData", doc.data.GetObjectTypeStr());
    doc.Type("one\r\ntwo\r\n");
    EXPECT_TRUE(doc.data.IsModified());
    EXPECT_TRUE(doc.data.GetTextObject()->IsModified());
    EXPECT_EQ(10u, doc.data.GetTextLen());
    EXPECT_EQ(2u, doc.data.GetNumLines(0, 10));
    EXPECT_EQ(5u, doc.data.GetLineOfs(1));
    ASSERT_EQ(3u, doc.data.DeleteText(0, 3));
    char line[16];
    EXPECT_EQ(2u, doc.data.GetTextLine(0, line, sizeof line - 1));
    EXPECT_STREQ("\r\n", line);
    EXPECT_EQ((std::vector<unsigned int>{4, 4}), doc.recorder->codes);
    EXPECT_EQ(0u, doc.data.DeleteText(100, 3)); // nothing there: no code
    EXPECT_EQ(2u, doc.recorder->codes.size());

    BCTextData empty(nullptr, nullptr, nullptr);
    ASSERT_NE(nullptr, empty.GetTextObject());
    EXPECT_EQ(0u, empty.GetTextLen());
    BCRenderableData* other = empty.SetObject(new BCMemoryData(nullptr, 0, 0));
    delete other;
    EXPECT_EQ(nullptr, empty.GetTextObject()); // not a text: forwarding gives nothing
    EXPECT_EQ(0u, empty.SetText("x", 0, 1, 1));
    EXPECT_EQ(0xFFFFFFFFul, empty.GetLineOfs(0));
}

TEST(FileDataTest, QuestionAnsweredYesNoAndCancel) {
    MsgRecorder boxes;
    Document doc;
    // Not modified: no question, contents cleared, codes 6 and 7.
    ASSERT_EQ(1, doc.data.NewFile());
    EXPECT_EQ(0u, boxes.Count());
    EXPECT_EQ((std::vector<unsigned int>{6, 7}), doc.recorder->codes);

    doc.Type("draft");
    boxes.Answer(IDCANCEL);
    EXPECT_EQ(0, doc.data.CloseFile());
    EXPECT_EQ("Save current changes?", boxes.Last().text);
    EXPECT_EQ(0x23u, boxes.Last().style);
    EXPECT_EQ(5u, doc.data.GetTextLen()); // nothing lost

    doc.data.SetFileName("letter.txt");
    boxes.Answer(IDNO);
    doc.recorder->codes.clear();
    EXPECT_EQ(1, doc.data.CloseFile());
    EXPECT_EQ("Save changes to letter.txt?", boxes.Last().text);
    EXPECT_EQ(0u, doc.data.GetTextLen());
    EXPECT_EQ(nullptr, doc.data.GetFileName());
    EXPECT_FALSE(doc.data.IsModified());
    EXPECT_EQ((std::vector<unsigned int>{6, 10}), doc.recorder->codes);

    // Yes on an unnamed document saves as: without the file dialogs that gives 0.
    doc.Type("more");
    boxes.Answer(IDYES);
    EXPECT_EQ(0, doc.data.NewFile());
    EXPECT_EQ(4u, doc.data.GetTextLen());
}

TEST(FileDataTest, SavedDocumentsArePlainTextFiles) {
    char dir[MAX_PATH];
    GetTempPathA(sizeof dir, dir);
    std::string path = std::string(dir) + "norlib_doc.txt";
    std::remove(path.c_str());

    Document doc(path.c_str());
    doc.Type("first line\r\nsecond\r\n");
    ASSERT_EQ(1, doc.data.SaveFile());
    EXPECT_EQ("first line\r\nsecond\r\n", ReadFile(path));
    EXPECT_FALSE(doc.data.IsModified());
    EXPECT_EQ(9u, doc.recorder->codes.back());
    EXPECT_FALSE(Exists(path + ".~sv"));

    // A text file made elsewhere loads as it is.
    WriteFile(path, "made\r\nelsewhere");
    Document reader(path.c_str());
    ASSERT_EQ(1, reader.data.LoadFile());
    EXPECT_EQ(15u, reader.data.GetTextLen());
    EXPECT_EQ(6u, reader.data.GetLineOfs(1));
    EXPECT_EQ((std::vector<unsigned int>{6, 8}), reader.recorder->codes);
    EXPECT_FALSE(reader.data.IsModified());

    ASSERT_EQ(1, reader.data.DeleteFile());
    EXPECT_FALSE(Exists(path));
    EXPECT_EQ(0, reader.data.LoadFile()); // gone: no message, nothing changed
    EXPECT_EQ(15u, reader.data.GetTextLen());
    Document unnamed;
    EXPECT_EQ(0, unnamed.data.DeleteFile());
}

// Writes part of its record, then fails, as a full disk would.
class FailingData : public BCRenderableData {
  public:
    FailingData() : BCRenderableData(155, 0) {}
    int Save(std::ostream& os) override {
        os << "partial";
        return 0;
    }
};

TEST(FileDataTest, AFailedWriteKeepsThePreviousFile) {
    char dir[MAX_PATH];
    GetTempPathA(sizeof dir, dir);
    std::string path = std::string(dir) + "norlib_keep.txt";
    WriteFile(path, "the user's work");

    MsgRecorder messages;
    BCFileData data(new FailingData, nullptr, nullptr, path.c_str(), 0, nullptr);
    data.SetModified(1);
    EXPECT_EQ(0, data.SaveFile());
    EXPECT_EQ("the user's work", ReadFile(path));
    EXPECT_FALSE(Exists(path + ".~sv"));
    ASSERT_EQ((std::vector<unsigned int>{10074}), messages.NumberedIds());
    EXPECT_EQ("Error writing file " + path, messages.Last().text);
    EXPECT_TRUE(data.IsModified());

    // A target that cannot be written leads to save-as (0 without the dialogs), silently.
    messages.Clear();
    data.SetFileName((std::string(dir) + "no-such-dir\\x.txt").c_str());
    EXPECT_EQ(0, data.SaveFile());
    EXPECT_EQ(0u, messages.Count());
    std::remove(path.c_str());
}

// Windows given to a document hear of its changes.
class WatchingWindow : public BCWindow {
  public:
    WatchingWindow() : BCWindow(26, nullptr, nullptr) {}
    long DataUpdated(BCObject*, unsigned int code, BCObject*) override {
        codes.push_back(code);
        return 1;
    }
    std::vector<unsigned int> codes;
};

TEST(FileDataTest, TheWindowGetsAnUpdater) {
    WatchingWindow window;
    BCTextData data(nullptr, &window, ".txt", nullptr, BC_FLAG_NOTIFY, nullptr);
    ASSERT_NE(nullptr, data.GetUpdaters());
    EXPECT_NE(nullptr, data.GetUpdaters()->Find(&window));
    window.codes.clear();
    data.SetText("abc", 0, 3, 1);
    EXPECT_EQ((std::vector<unsigned int>{4}), window.codes);

    // A second document on the same list does not add a second updater for the window.
    BCTextData second(nullptr, &window, ".txt", nullptr, BC_FLAG_NOTIFY, data.GetUpdaters());
    EXPECT_EQ(1u, data.GetUpdaters()->GetCount());
    delete data.GetUpdaters(); // the documents never own their list
}

} // namespace

namespace {

TEST(BitmapDataTest, APictureDocumentSavesAndLoadsItsPixels) {
    char dir[MAX_PATH];
    GetTempPathA(sizeof dir, dir);
    std::string path = std::string(dir) + "norlib_picture.bmd";
    auto* picture = new BCBitmap(3, 2);
    unsigned long pixels[6] = {0xFF0000, 0x00FF00, 0x0000FF, 0x123456, 0xFFFFFF, 0};
    ASSERT_TRUE(picture->SetPixels(3, 2, pixels));
    BCBitmapData document(picture, nullptr, ".bmd", path.c_str(), 0, nullptr);
    EXPECT_EQ(102u, document.GetObjectType());
    EXPECT_STREQ("BCBitmapData", document.GetObjectTypeStr());
    document.SetModified(1);
    ASSERT_EQ(1, document.SaveFile());

    BCBitmapData reader(new BCBitmap, nullptr, ".bmd", path.c_str(), 0, nullptr);
    ASSERT_EQ(1, reader.LoadFile());
    ASSERT_NE(nullptr, reader.GetBitmap());
    EXPECT_TRUE(reader.GetBitmap()->GetSize() == BCSize(3, 2));
    unsigned long loaded[6] = {};
    ASSERT_TRUE(reader.GetBitmap()->GetPixels(loaded));
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(pixels[i] & 0xFFFFFF, loaded[i] & 0xFFFFFF) << i;

    // A new document lets go of the picture.
    ASSERT_EQ(1, reader.NewFile());
    EXPECT_TRUE(reader.GetBitmap()->IsEmpty());
    std::remove(path.c_str());
}

} // namespace
