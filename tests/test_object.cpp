#include <gtest/gtest.h>

#include <windows.h>

#include <new>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"

namespace {

// Exposes the state bits, which only the root class and its heirs may touch.
struct StatefulObject : BCObject {
    explicit StatefulObject(unsigned int code) : BCObject(code) {}
    void SetStateBits(unsigned int bits) {
        wType = static_cast<unsigned short>((wType & ~0x3Fu) | (bits & 0x3Fu));
    }
};

TEST(TypeWordTest, CodeKeepsTenBitsNamesAndTextsComeFromTheLibraryTables) {
    StatefulObject object(86);
    object.SetStateBits(0x2A);
    EXPECT_EQ((Seq{76, 0x3FF, 0x2A}), // 1100 & 0x3FF = 76
              (Seq{(object.SetObjectType(1100), object.GetObjectType()),
                   (object.SetObjectType(0x3FF), object.GetObjectType()), object.GetStateBits()}));
    // Codes without an entry have no name, and asking is no error.
    std::string names;
    for (unsigned int code : {1u, 156u, 28u, 1000u})
        names += StatefulObject(code).GetObjectTypeStr() + std::string("|");
    EXPECT_EQ("BCObject|BCText|||", names);
    EXPECT_FALSE(KoErrorHook::DidProcErrorOccur());

    char text[64], other[64];
    EXPECT_TRUE(BCGetResString(3202, text, sizeof text, BCGetDLLModule2()) > 0 &&
                BCGetResString(3401, other, sizeof other, nullptr) > 0);
    EXPECT_EQ("File not found:  %s|Zorvan<TM>", std::string(text) + "|" + other);

    // Message texts keep their spelling and spacing.
    const std::pair<unsigned int, const char*> rows[] = {
        {10000, "Unable to load accelerator table %s."},
        {10079, "Internal error-MakeEmptyObject:  Unknown object type - Overload "
                "MakeEmptyObject."},
        {10087, "Text `%s' not found."},
        {10088, "Internal error-Icon previously set.  SetAppIcon:  BCIcon already has been set "
                "in class."}};
    for (const auto& [id, expected] : rows) {
        KoString loaded;
        EXPECT_TRUE(loaded.getResource(id) && std::string(expected) == loaded.c_str()) << id;
    }
}

// An entry as "id:text:task-modal bit", for the numbered messages' checks.
std::string Shown(const MsgRecorder::Entry& e) {
    return std::to_string(e.id) + ":" + e.text + ":" + std::to_string(e.style & MB_TASKMODAL);
}

// Dumps and numbered messages reach the installed sink, which answers for the user.
TEST(MessageTest, SinksDumpsAndNumberedMessages) {
    int context = 0;
    auto sink = [](const BCMsgInfo&, void* ctx) { return ++*static_cast<int*>(ctx), IDNO; };
    void* previousContext = &context;
    EXPECT_TRUE(BCSetMsgSink(sink, &context, &previousContext) == BCDefaultMsgSink &&
                !previousContext);
    EXPECT_TRUE(BCDispMsg(10051, nullptr) == IDNO && context == 1);
    void* ours = nullptr;
    EXPECT_TRUE(BCSetMsgSink(nullptr, nullptr, &ours) == sink && ours == &context);
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
    recorder.Clear();
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
    BCArrayList list(0, 4, 0, 0, 4, 0);
    EXPECT_TRUE(object.AssertType(&list, 86, "opList", 1, "MLTEDIT") &&
                !object.AssertType(nullptr, 98, "opNewText", 170, "MLTEDIT") &&
                fault() == "Null pointer:  opNewText@MLTEDIT:170" &&
                !object.AssertType(&list, 98, "opNewText", 170, "MLTEDIT") &&
                fault() == "Assertion failure@MLTEDIT:170");

    std::ostringstream os = OutStream(); // the root's record: the type code word
    EXPECT_TRUE(list.BCObject::Save(os) == 1 && os.str() == LE32(86));
    StatefulObject same(86), other(76); // the record of another class fails, as a cut one
    EXPECT_EQ(Nums(1, 0, 0),
              Nums(LoadFrom(same, os.str()), LoadFrom(other, os.str()), LoadFrom(same, LE16(86))));
}

// A data object that wraps another, as dependent data do.
struct WrappingData : BCRenderableData {
    explicit WrappingData(BCRenderableData* inner) : BCRenderableData(151, 0) { SetChained(inner); }
};

TEST(DataTest, RenderableDataAndValueTypes) {
    BCRenderableData inner(155, BC_FLAG_NOT_OWNED);
    WrappingData middle(&inner), outer(&middle);
    EXPECT_EQ(BC_FLAG_NOT_OWNED, inner.SetFlags(BC_FLAG_NOTIFY, 1));
    EXPECT_TRUE(inner.GetFlags() == (BC_FLAG_NOT_OWNED | BC_FLAG_NOTIFY) && !outer.IsModified());
    // A wrapped change shows from outside, though only the wrapped object holds the flag;
    // setting passes down the chain and answers whether the flag was set before.
    inner.SetModified(1);
    EXPECT_TRUE(outer.IsModified() && !(outer.GetFlags() & BC_FLAG_MODIFIED));
    EXPECT_TRUE(!outer.SetModified(1) && (middle.GetFlags() & BC_FLAG_MODIFIED));
    EXPECT_TRUE(outer.SetModified(0) == 1 && !inner.IsModified() && !outer.IsModified());
    int key = 5;
    EXPECT_TRUE(!inner.SetKey(&key) && inner.SetKey(nullptr) == &key);
    BCFormat text = BCGetTextFormat(); // the root renders nothing and takes nothing
    EXPECT_FALSE(inner.IsRenderable(text) || inner.GetDataPtr(text) ||
                 inner.SetData(&key, sizeof key, text));

    BCRenderableData data(153, BC_FLAG_NOT_OWNED | BC_FLAG_NOTIFY), assigned(154, 0);
    data.SetKey(&key);
    std::unique_ptr<BCRenderableData> dup(data.Dup());
    assigned = data;
    ASSERT_TRUE(dup && dup->GetObjectType() == 153u && dup->GetFlags() == data.GetFlags() &&
                dup->GetKey() == &key && assigned.GetObjectType() == 153u);
    const std::string record = RecordOf(data);
    EXPECT_EQ(LE32(153) + LE32(BC_FLAG_NOT_OWNED | BC_FLAG_NOTIFY), record);
    // Only the notify bit comes from the record; ownership stays the object's own.
    BCRenderableData loaded(153, BC_FLAG_MODIFIED);
    EXPECT_TRUE(LoadFrom(loaded, record) &&
                loaded.GetFlags() == (BC_FLAG_MODIFIED | BC_FLAG_NOTIFY) &&
                !LoadFrom(loaded, record.substr(0, 6)));

    // Geometry, colours and resource ids.
    BCRectangle rect(BCPosition(10, 20), BCSize(30, 5));
    RECT platform;
    rect.ToRECT(&platform);
    EXPECT_TRUE(rect.GetRight() == 40 && rect.Contains(BCPosition(10, 20)) &&
                !rect.Contains(BCPosition(40, 20)) && platform.bottom == 25 &&
                BCRectangle::FromRECT(&platform) == rect && BCGetNullRect().IsEmpty() &&
                BCLimits(9, 4).GetLength() == 5u && !BCLimits(9, 4).IsEmpty());
    BCColor color(0x11, 0x22, 0x33), read;
    EXPECT_EQ(LE32(8) + LE32(0x332211), RecordOf(color));
    EXPECT_TRUE(color.GetCOLORREF() == 0x332211ul && LoadFrom(read, RecordOf(color)) &&
                read == color && BCColor(BC_COLOR_CONSTANTS) == BCColor()); // no stock: black
    BCResID byName("MAINMENU", BCGetDLLModule2()), copy(byName);
    copy = BCResID(1021);
    EXPECT_TRUE(std::string(byName.GetResName()) == "MAINMENU" && !copy.GetResName() &&
                copy.GetResNum() == 1021u && copy.GetResource() == MAKEINTRESOURCEA(1021));
}

TEST(StartupTest, TheModuleOutOfMemoryRetryAndRegisteredModules) {
    BCModule* module = BCGetDLLModule2();
    ASSERT_NE(nullptr, module);
    HMODULE library = GetModuleHandleA("norlib2.dll");
    EXPECT_TRUE(module->GetObjectType() == 114u && !*module->GetName() &&
                module->GetInstance() == library);
    EXPECT_EQ(std::get_new_handler(), &BCOutOfMemoryHandler);
    MsgRecorder recorder;
    recorder.Answer(IDRETRY);
    BCOutOfMemoryHandler(); // returns so that the allocation is tried again
    EXPECT_TRUE(recorder.Count() == 1u && recorder.Last().kind == BC_MSG_BOX &&
                recorder.Last().style == (MB_SYSTEMMODAL | MB_ICONSTOP | MB_RETRYCANCEL));
    EXPECT_EQ("Can't allocate enough memory!|Attention",
              recorder.Last().text + "|" + recorder.Last().caption);

    char text[32];
    {
        BCModule copy(library, "copy", 0);
        BCRegisterLibModule(&copy);
        EXPECT_TRUE(BCGetResString(3086, text, sizeof text, &copy) > 0 &&
                    std::string(text) == "BCArrayList");
    }
    // The copy took only its own registration with it.
    EXPECT_GT(BCGetResString(3086, text, sizeof text, nullptr), 0);
}

} // namespace
