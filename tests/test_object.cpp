#include <gtest/gtest.h>

#include <windows.h>

#include <new>
#include <string>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"

namespace {

// Exposes the state bits, which only the root class and its heirs may touch.
class StatefulObject : public BCObject {
  public:
    explicit StatefulObject(unsigned int code) : BCObject(code) {}
    void SetStateBits(unsigned int bits) {
        wType = static_cast<unsigned short>((wType & ~0x3Fu) | (bits & 0x3Fu));
    }
};

// Redirects faults, as a class may.
struct RedirectingObject : BCObject {
    void Error(const char* text, unsigned int line, const char* file) override {
        last = std::string(text) + "@" + file + ":" + std::to_string(line);
    }
    std::string last;
};

TEST(TypeWordTest, CodeKeepsTenBitsAndNeverTouchesStateBits) {
    StatefulObject object(86);
    object.SetStateBits(0x2A);
    const unsigned int codes[][2] = {{1100, 76}, {0x3FF, 0x3FF}}; // 1100 & 0x3FF = 76
    for (const auto& [code, kept] : codes) {
        object.SetObjectType(code);
        EXPECT_EQ(Nums(kept, 0x2A), Nums(object.GetObjectType(), object.GetStateBits()));
    }
}

TEST(TypeNameTest, NamesComeFromTheLibraryTable) {
    struct Row {
        unsigned int code;
        const char* name;
    };
    // Codes without an entry have no name, and asking is no error.
    const Row rows[] = {{1, "BCObject"}, {156, "BCText"}, {28, ""}, {1000, ""}};
    for (const Row& row : rows)
        EXPECT_STREQ(row.name, StatefulObject(row.code).GetObjectTypeStr()) << row.code;
    EXPECT_FALSE(KoErrorHook::DidProcErrorOccur());

    char text[64], other[64];
    EXPECT_TRUE(BCGetResString(3202, text, sizeof text, BCGetDLLModule2()) > 0 &&
                BCGetResString(3401, other, sizeof other, nullptr) > 0);
    EXPECT_EQ("File not found:  %s|Zorvan<TM>", std::string(text) + "|" + other);
}

TEST(MessageTableTest, TextsKeepTheirSpellingAndSpacing) {
    struct Row {
        unsigned int id;
        const char* text;
    };
    const Row rows[] = {
        {10000, "Unable to load accelerator table %s."},
        {10079, "Internal error-MakeEmptyObject:  Unknown object type - Overload "
                "MakeEmptyObject."},
        {10087, "Text `%s' not found."},
        {10088, "Internal error-Icon previously set.  SetAppIcon:  BCIcon already has been set "
                "in class."}};
    for (const Row& row : rows) {
        KoString text;
        ASSERT_TRUE(text.getResource(row.id)) << row.id;
        EXPECT_STREQ(row.text, text.c_str()) << row.id;
    }
    for (unsigned int id = 10000; id <= 10088; ++id) {
        char text[300];
        EXPECT_GT(BCGetResString(id, text, sizeof text, nullptr), 0) << id;
    }
}

TEST(DiagnosticTest, DumpsGoThroughTheSinkWithTheirPrefix) {
    MsgRecorder recorder;
    BCPosition pos(3, -4);
    BCObject root;
    pos.Display(nullptr);
    pos.Display("at ");
    root.Display(nullptr);
    root.DispObjectMsg("%s=%d", "count", 7);
    EXPECT_EQ("coX=3, coY=-4|at coX=3, coY=-4|BCObject|count=7|", recorder.Texts());
    for (const MsgRecorder::Entry& e : recorder.Entries())
        EXPECT_EQ(BC_MSG_DIAGNOSTIC, e.kind);
    EXPECT_EQ(&pos, recorder.Entries()[1].object);
}

// Each entry as "id:text:style bits", for the numbered messages' checks.
std::string Shown(const MsgRecorder::Entry& e) {
    return std::to_string(e.id) + ":" + e.text + ":" + std::to_string(e.style & MB_TASKMODAL);
}

TEST(NumberedMessageTest, FormatsShowsAndAnswersThroughTheSink) {
    MsgRecorder recorder;
    recorder.Answer(IDYES);
    BCObject object;
    EXPECT_EQ(IDYES, object.DispObjectMsg(10072u, "c:\\doc.txt"));
    EXPECT_TRUE(Shown(recorder.Last()) == "10072:File already exists:  c:\\doc.txt:8192" &&
                recorder.Last().object == &object);
    EXPECT_EQ(1, BCDispMsg(10017, nullptr, 5));
    EXPECT_EQ("10017:Invalid cursor type:  5:8192", Shown(recorder.Last()));
    BCDispAppMsg(BCGetDLLModule2(), 10083u, 3);
    EXPECT_EQ("10083:Printer Abort:  3:0", Shown(recorder.Last()));
    BCDispAppMsg(BCGetDLLModule2(), static_cast<BCWindow*>(nullptr), 10082u, 40000L);
    EXPECT_NE(std::string::npos,
              Shown(recorder.Last()).find("(Attempted to edit 40000 characters.)"));
    recorder.Answer(IDNO);
    EXPECT_EQ(IDNO, BCDispAppText(nullptr, "%d shapes in %s", 3, "a.n2d"));
    EXPECT_TRUE(Shown(recorder.Last()) == "0:3 shapes in a.n2d:0" &&
                recorder.Last().kind == BC_MSG_NUMBERED);
    // A message the tables do not hold is not shown, and its miss is not left for others.
    EXPECT_TRUE(!BCDispMsg(9999, nullptr) && recorder.Count() == 5u &&
                !KoErrorHook::DidProcErrorOccur());
}

TEST(SinkTest, InstallingReturnsThePreviousSinkAndContext) {
    int context = 0;
    auto sink = [](const BCMsgInfo&, void* ctx) {
        ++*static_cast<int*>(ctx);
        return IDNO;
    };
    void* previousContext = &context;
    BCMsgSink previous = BCSetMsgSink(sink, &context, &previousContext);
    EXPECT_TRUE(previous == BCDefaultMsgSink && !previousContext);
    EXPECT_TRUE(BCDispMsg(10051, nullptr) == IDNO && context == 1);
    void* ours = nullptr;
    EXPECT_TRUE(BCSetMsgSink(nullptr, nullptr, &ours) == sink && ours == &context);
}

TEST(FaultTest, ErrorsAndAssertionsReportFileAndLine) {
    MsgRecorder recorder;
    auto fault = [&recorder] {
        const MsgRecorder::Entry& e = recorder.Last();
        return e.text + "@" + e.file + ":" + std::to_string(e.line);
    };
    BCObject object;
    object.Error("Assertion failure", 145, "MLTEDIT");
    EXPECT_TRUE(recorder.Count() == 1u && recorder.Last().kind == BC_MSG_FAULT &&
                fault() == "Assertion failure@MLTEDIT:145");
    EXPECT_TRUE(BCAssert(&object, 42, 10, "TEXTEDIT", "Assertion failure") == 42 &&
                recorder.Count() == 1u); // a holding assertion says nothing
    EXPECT_TRUE(!BCAssert(&object, 0, 11, "TEXTEDIT", "This code should not be reached") &&
                fault() == "This code should not be reached@TEXTEDIT:11");

    // Error is virtual: a class that redirects it gets the assertion, the sink nothing.
    RedirectingObject redirecting;
    EXPECT_EQ(0, BCAssert(&redirecting, 0, 293, "PRINTER", "Null pointer:  opDev"));
    EXPECT_TRUE(redirecting.last == "Null pointer:  opDev@PRINTER:293" && recorder.Count() == 2u);
    // A type check fails on null, then on another type, at the caller's line.
    BCArrayList list(0, 4, 0, 0, 4, 0);
    recorder.Clear();
    EXPECT_TRUE(object.AssertType(&list, 86, "opList", 1, "MLTEDIT") &&
                !object.AssertType(nullptr, 98, "opNewText", 170, "MLTEDIT") &&
                !object.AssertType(&list, 98, "opNewText", 170, "MLTEDIT"));
    EXPECT_EQ("Null pointer:  opNewText|Assertion failure|", recorder.Texts());
    EXPECT_EQ(170u, recorder.Last().line);
}

TEST(ObjectRecordTest, BeginsWithTheTypeCodeWord) {
    BCArrayList list(0, 4, 0, 0, 4, 0);
    std::ostringstream os = OutStream();
    EXPECT_TRUE(list.BCObject::Save(os) == 1 && os.str() == LE32(86));

    StatefulObject same(86), other(76); // the record of another class fails, as a cut one
    EXPECT_EQ(Nums(1, 0, 0),
              Nums(LoadFrom(same, os.str()), LoadFrom(other, os.str()), LoadFrom(same, LE16(86))));
}

// A data object that wraps another, as dependent data do.
class WrappingData : public BCRenderableData {
  public:
    explicit WrappingData(BCRenderableData* inner) : BCRenderableData(151, 0) { SetChained(inner); }
};

TEST(RenderableDataTest, FlagsKeyAndTheModifiedChain) {
    BCRenderableData inner(155, BC_FLAG_NOT_OWNED);
    WrappingData middle(&inner);
    WrappingData outer(&middle);

    EXPECT_EQ(BC_FLAG_NOT_OWNED, inner.SetFlags(BC_FLAG_NOTIFY, 1));
    EXPECT_TRUE(inner.GetFlags() == (BC_FLAG_NOT_OWNED | BC_FLAG_NOTIFY) && !outer.IsModified());
    // A wrapped change shows from outside, though only the wrapped object holds the flag;
    // setting passes down the chain and answers whether the flag was set before.
    inner.SetModified(1);
    EXPECT_TRUE(outer.IsModified() && !(outer.GetFlags() & BC_FLAG_MODIFIED));
    EXPECT_TRUE(!outer.SetModified(1) && (middle.GetFlags() & BC_FLAG_MODIFIED));
    EXPECT_TRUE(outer.SetModified(0) == 1 && !inner.IsModified() && !outer.IsModified());
    int value = 5;
    EXPECT_TRUE(!inner.SetKey(&value) && inner.SetKey(nullptr) == &value);
    // The root renders nothing and takes nothing.
    BCFormat text = BCGetTextFormat();
    EXPECT_FALSE(inner.IsRenderable(text) || inner.GetDataPtr(text) ||
                 inner.SetData(&value, sizeof value, text));
}

TEST(RenderableDataTest, CopiesDuplicatesAndRecord) {
    BCRenderableData data(153, BC_FLAG_NOT_OWNED | BC_FLAG_NOTIFY);
    int key = 1;
    data.SetKey(&key);
    std::unique_ptr<BCRenderableData> dup(data.Dup());
    ASSERT_NE(nullptr, dup);
    EXPECT_TRUE(dup->GetObjectType() == 153u && dup->GetFlags() == data.GetFlags() &&
                dup->GetKey() == &key);
    BCRenderableData assigned(154, 0);
    assigned = data;
    const std::string record = RecordOf(data);
    EXPECT_EQ(153u, assigned.GetObjectType());
    EXPECT_EQ(LE32(153) + LE32(BC_FLAG_NOT_OWNED | BC_FLAG_NOTIFY), record);
    // Only the notify bit comes from the record; ownership stays the object's own.
    BCRenderableData loaded(153, BC_FLAG_MODIFIED);
    ASSERT_EQ(1, LoadFrom(loaded, record));
    EXPECT_TRUE(loaded.GetFlags() == (BC_FLAG_MODIFIED | BC_FLAG_NOTIFY) &&
                !LoadFrom(loaded, record.substr(0, 6)));
}

TEST(ValueTypeTest, GeometryColourAndResourceIds) {
    BCRectangle rect(BCPosition(10, 20), BCSize(30, 5));
    RECT platform;
    rect.ToRECT(&platform);
    BCLimits limits(9, 4);
    EXPECT_TRUE(rect.GetRight() == 40 && rect.Contains(BCPosition(10, 20)) &&
                !rect.Contains(BCPosition(40, 20)) && platform.bottom == 25 &&
                BCRectangle::FromRECT(&platform) == rect && BCGetNullRect().IsEmpty() &&
                limits.GetLength() == 5u && !limits.IsEmpty());

    BCColor color(0x11, 0x22, 0x33), loaded;
    EXPECT_EQ(LE32(8) + LE32(0x332211), RecordOf(color));
    EXPECT_TRUE(color.GetCOLORREF() == 0x332211ul && LoadFrom(loaded, RecordOf(color)) &&
                loaded == color);

    BCResID byName("MAINMENU", BCGetDLLModule2());
    BCResID copy(byName);
    BCResID byNumber(1021);
    copy = byNumber;
    EXPECT_TRUE(std::string(byName.GetResName()) == "MAINMENU" && !copy.GetResName() &&
                copy.GetResNum() == 1021u && copy.GetResource() == MAKEINTRESOURCEA(1021));
    EXPECT_EQ(Nums(1, 2), Nums(BCGetTextFormat().GetFormat(), BCGetBitmapFormat().GetFormat()));
}

TEST(StartupTest, ModuleCachesAndOutOfMemoryRetry) {
    BCModule* module = BCGetDLLModule2();
    ASSERT_NE(nullptr, module);
    EXPECT_TRUE(module->GetObjectType() == 114u && !*module->GetName() &&
                module->GetInstance() == GetModuleHandleA("norlib2.dll"));
    EXPECT_EQ(Nums(GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)),
              Nums(BCGetScreenWidth2(), BCGetScreenHeight2()));
    EXPECT_TRUE(BCGetArrowCursor2() && BCGetWindowProc2() == reinterpret_cast<void*>(&BCWndProc) &&
                BCGetDialogProc2() == reinterpret_cast<void*>(&BCDlgWndProc) &&
                std::get_new_handler() == &BCOutOfMemoryHandler);

    MsgRecorder recorder;
    recorder.Answer(IDRETRY);
    BCOutOfMemoryHandler(); // returns so that the allocation is tried again
    EXPECT_TRUE(recorder.Count() == 1u && recorder.Last().kind == BC_MSG_BOX &&
                recorder.Last().style == (MB_SYSTEMMODAL | MB_ICONSTOP | MB_RETRYCANCEL));
    EXPECT_EQ("Can't allocate enough memory!|Attention",
              recorder.Last().text + "|" + recorder.Last().caption);
}

TEST(ModuleTest, RegisteredModulesAreSearchedUntilTheyGo) {
    HMODULE library = GetModuleHandleA("norlib2.dll");
    char text[32];
    {
        BCModule module(library, "copy", 0);
        BCRegisterLibModule(&module);
        EXPECT_TRUE(BCGetResString(3086, text, sizeof text, &module) > 0 &&
                    std::string(text) == "BCArrayList");
    }
    // The copy took only its own registration with it.
    EXPECT_GT(BCGetResString(3086, text, sizeof text, nullptr), 0);
}

} // namespace
