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
class RedirectingObject : public BCObject {
  public:
    void Error(const char* text, unsigned int line, const char* file) override {
        lastText = text;
        lastLine = line;
        lastFile = file;
    }
    std::string lastText, lastFile;
    unsigned int lastLine = 0;
};

TEST(TypeWordTest, CodeKeepsTenBitsAndNeverTouchesStateBits) {
    StatefulObject object(86);
    object.SetStateBits(0x2A);
    object.SetObjectType(1100); // 1100 & 0x3FF = 76
    EXPECT_EQ(76u, object.GetObjectType());
    EXPECT_EQ(0x2Au, object.GetStateBits());
    object.SetObjectType(0x3FF);
    EXPECT_EQ(0x3FFu, object.GetObjectType());
    EXPECT_EQ(0x2Au, object.GetStateBits());

    // The most-derived constructor that sets a code wins.
    BCSingleLinkedList linked(0, 0);
    EXPECT_EQ(87u, linked.GetObjectType());
    BCArrayList array(0, 4, 0, 0, 4, 0);
    EXPECT_EQ(86u, array.GetObjectType());
    BCList plain(0, 0, 0);
    EXPECT_EQ(85u, plain.GetObjectType());
}

TEST(TypeNameTest, NamesComeFromTheLibraryTable) {
    struct Row {
        unsigned int code;
        const char* name;
    };
    const Row rows[] = {
        {1, "BCObject"}, {86, "BCArrayList"}, {110, "BCMDIFrameWindow"}, {156, "BCText"}};
    for (const Row& row : rows) {
        StatefulObject object(row.code);
        EXPECT_STREQ(row.name, object.GetObjectTypeStr()) << row.code;
    }
    // Codes without an entry have no name, and asking is no error.
    for (unsigned int code : {28u, 99u, 1000u}) {
        StatefulObject object(code);
        EXPECT_STREQ("", object.GetObjectTypeStr()) << code;
    }
    EXPECT_FALSE(KoErrorHook::DidProcErrorOccur());

    char text[64];
    EXPECT_GT(BCGetResString(3202, text, sizeof text, BCGetDLLModule2()), 0);
    EXPECT_STREQ("File not found:  %s", text);
    EXPECT_GT(BCGetResString(3401, text, sizeof text, nullptr), 0);
    EXPECT_STREQ("Zorvan<TM>", text);
}

TEST(MessageTableTest, TextsKeepTheirSpellingAndSpacing) {
    struct Row {
        unsigned int id;
        const char* text;
    };
    const Row rows[] = {
        {10000, "Unable to load accelerator table %s."},
        {10043, "Internal error-Freeing memory with a NULL memory pointer-BCFreeFarMem:  NULL "
                "pointer."},
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
    pos.Display(nullptr);
    pos.Display("at ");
    ASSERT_EQ(2u, recorder.Count());
    EXPECT_EQ(BC_MSG_DIAGNOSTIC, recorder.Entries()[0].kind);
    EXPECT_EQ("coX=3, coY=-4", recorder.Entries()[0].text);
    EXPECT_EQ("at coX=3, coY=-4", recorder.Entries()[1].text);
    EXPECT_EQ(&pos, recorder.Entries()[1].object);

    BCObject root;
    root.Display(nullptr);
    EXPECT_EQ("BCObject", recorder.Last().text);

    root.DispObjectMsg("%s=%d", "count", 7);
    EXPECT_EQ("count=7", recorder.Last().text);
    EXPECT_EQ(BC_MSG_DIAGNOSTIC, recorder.Last().kind);
}

TEST(NumberedMessageTest, FormatsShowsAndAnswersThroughTheSink) {
    MsgRecorder recorder;
    recorder.Answer(IDYES);
    BCObject object;
    EXPECT_EQ(IDYES, object.DispObjectMsg(10072u, "c:\\doc.txt"));
    ASSERT_EQ(1u, recorder.Count());
    const MsgRecorder::Entry& shown = recorder.Last();
    EXPECT_EQ(BC_MSG_NUMBERED, shown.kind);
    EXPECT_EQ(10072u, shown.id);
    EXPECT_EQ("File already exists:  c:\\doc.txt", shown.text);
    EXPECT_EQ(&object, shown.object);

    EXPECT_EQ(1, BCDispMsg(10017, nullptr, 5));
    EXPECT_EQ("Invalid cursor type:  5", recorder.Last().text);
    EXPECT_EQ(static_cast<unsigned>(MB_TASKMODAL), recorder.Last().style & MB_TASKMODAL);

    BCDispAppMsg(BCGetDLLModule2(), 10083u, 3);
    EXPECT_EQ("Printer Abort:  3", recorder.Last().text);
    EXPECT_EQ(0u, recorder.Last().style & MB_TASKMODAL);
    BCDispAppMsg(BCGetDLLModule2(), static_cast<BCWindow*>(nullptr), 10082u, 40000L);
    EXPECT_EQ(10082u, recorder.Last().id);
    EXPECT_NE(std::string::npos,
              recorder.Last().text.find("(Attempted to edit 40000 characters.)"));

    // A message the tables do not hold is not shown, and its miss is not left for others.
    size_t before = recorder.Count();
    EXPECT_EQ(0, BCDispMsg(9999, nullptr));
    EXPECT_EQ(before, recorder.Count());
    EXPECT_FALSE(KoErrorHook::DidProcErrorOccur());
}

TEST(SinkTest, InstallingReturnsThePreviousSinkAndContext) {
    int context = 0;
    auto sink = [](const BCMsgInfo&, void* ctx) {
        ++*static_cast<int*>(ctx);
        return IDNO;
    };
    void* previousContext = &context;
    BCMsgSink previous = BCSetMsgSink(sink, &context, &previousContext);
    EXPECT_EQ(BCDefaultMsgSink, previous);
    EXPECT_EQ(nullptr, previousContext);
    EXPECT_EQ(IDNO, BCDispMsg(10051, nullptr));
    EXPECT_EQ(1, context);
    void* ours = nullptr;
    EXPECT_EQ(sink, BCSetMsgSink(nullptr, nullptr, &ours));
    EXPECT_EQ(&context, ours);
}

TEST(FaultTest, ErrorAndAssertionsReportFileAndLine) {
    MsgRecorder recorder;
    BCObject object;
    object.Error("Assertion failure", 145, "MLTEDIT");
    ASSERT_EQ(1u, recorder.Count());
    EXPECT_EQ(BC_MSG_FAULT, recorder.Last().kind);
    EXPECT_EQ("Assertion failure", recorder.Last().text);
    EXPECT_EQ("MLTEDIT", recorder.Last().file);
    EXPECT_EQ(145u, recorder.Last().line);

    EXPECT_EQ(42, BCAssert(&object, 42, 10, "TEXTEDIT", "Assertion failure"));
    EXPECT_EQ(1u, recorder.Count());
    EXPECT_EQ(0, BCAssert(&object, 0, 11, "TEXTEDIT", "This code should not be reached"));
    EXPECT_EQ("This code should not be reached", recorder.Last().text);
    EXPECT_EQ(11u, recorder.Last().line);

    // Error is virtual: a class that redirects it gets the assertion, the sink nothing.
    RedirectingObject redirecting;
    recorder.Clear();
    EXPECT_EQ(0, BCAssert(&redirecting, 0, 293, "PRINTER", "Null pointer:  opDev"));
    EXPECT_EQ("Null pointer:  opDev", redirecting.lastText);
    EXPECT_EQ("PRINTER", redirecting.lastFile);
    EXPECT_EQ(293u, redirecting.lastLine);
    EXPECT_EQ(0u, recorder.Count());
}

TEST(FaultTest, AssertTypeChecksNullAndType) {
    MsgRecorder recorder;
    BCObject checker;
    BCArrayList list(0, 4, 0, 0, 4, 0);
    EXPECT_EQ(1, checker.AssertType(&list, 86, "opList", 1, "MLTEDIT"));
    EXPECT_EQ(0u, recorder.Count());
    EXPECT_EQ(0, checker.AssertType(nullptr, 98, "opNewText", 170, "MLTEDIT"));
    EXPECT_EQ("Null pointer:  opNewText", recorder.Last().text);
    EXPECT_EQ(170u, recorder.Last().line);
    EXPECT_EQ(0, checker.AssertType(&list, 98, "opNewText", 170, "MLTEDIT"));
    EXPECT_EQ("Assertion failure", recorder.Last().text);
}

TEST(ObjectRecordTest, BeginsWithTheTypeCodeWord) {
    BCArrayList list(0, 4, 0, 0, 4, 0);
    std::ostringstream os = OutStream();
    EXPECT_EQ(1, list.BCObject::Save(os));
    EXPECT_EQ(LE32(86), os.str());

    StatefulObject same(86), other(76);
    std::istringstream in = InStream(os.str());
    EXPECT_EQ(1, same.Load(in));
    std::istringstream again = InStream(os.str());
    EXPECT_EQ(0, other.Load(again)); // the record of another class
    std::istringstream shortStream = InStream(LE16(86));
    EXPECT_EQ(0, same.Load(shortStream));
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
    EXPECT_EQ(static_cast<unsigned long>(BC_FLAG_NOT_OWNED | BC_FLAG_NOTIFY), inner.GetFlags());
    inner.SetFlags(BC_FLAG_NOTIFY, 0);

    EXPECT_FALSE(outer.IsModified());
    inner.SetModified(1);
    EXPECT_TRUE(outer.IsModified()); // a wrapped change shows from outside
    EXPECT_FALSE(outer.GetFlags() & BC_FLAG_MODIFIED);
    EXPECT_EQ(0, outer.SetModified(1));
    EXPECT_TRUE(middle.GetFlags() & BC_FLAG_MODIFIED);
    EXPECT_EQ(1, outer.SetModified(0));
    EXPECT_FALSE(inner.IsModified());
    EXPECT_FALSE(outer.IsModified());

    int value = 5;
    EXPECT_EQ(nullptr, inner.SetKey(&value));
    EXPECT_EQ(&value, inner.SetKey(nullptr));
    BCFormat text = BCGetTextFormat();
    // The root renders nothing and takes nothing.
    EXPECT_FALSE(inner.IsRenderable(text));
    EXPECT_EQ(nullptr, inner.GetDataPtr(text));
    EXPECT_EQ(0ul, inner.SetData(&value, sizeof value, text));
}

TEST(RenderableDataTest, CopiesDuplicatesAndRecord) {
    BCRenderableData data(153, BC_FLAG_NOT_OWNED | BC_FLAG_NOTIFY);
    int key = 1;
    data.SetKey(&key);
    BCRenderableData* dup = data.Dup();
    ASSERT_NE(nullptr, dup);
    EXPECT_EQ(153u, dup->GetObjectType());
    EXPECT_EQ(data.GetFlags(), dup->GetFlags());
    EXPECT_EQ(&key, dup->GetKey());
    delete dup;

    BCRenderableData assigned(154, 0);
    assigned = data;
    EXPECT_EQ(153u, assigned.GetObjectType());

    std::ostringstream os = OutStream();
    ASSERT_EQ(1, data.Save(os));
    EXPECT_EQ(LE32(153) + LE32(BC_FLAG_NOT_OWNED | BC_FLAG_NOTIFY), os.str());
    // Only the notify bit comes from the record; ownership stays the object's own.
    BCRenderableData loaded(153, BC_FLAG_MODIFIED);
    std::istringstream in = InStream(os.str());
    ASSERT_EQ(1, loaded.Load(in));
    EXPECT_EQ(static_cast<unsigned long>(BC_FLAG_MODIFIED | BC_FLAG_NOTIFY), loaded.GetFlags());
    std::istringstream cut = InStream(os.str().substr(0, 6));
    EXPECT_EQ(0, loaded.Load(cut));
}

TEST(ValueTypeTest, GeometryColourAndResourceIds) {
    BCRectangle rect(BCPosition(10, 20), BCSize(30, 5));
    EXPECT_EQ(40, rect.GetRight());
    EXPECT_TRUE(rect.Contains(BCPosition(10, 20)));
    EXPECT_FALSE(rect.Contains(BCPosition(40, 20)));
    RECT platform;
    rect.ToRECT(&platform);
    EXPECT_EQ(25, platform.bottom);
    EXPECT_TRUE(BCRectangle::FromRECT(&platform) == rect);
    EXPECT_TRUE(BCGetNullRect().IsEmpty());

    BCLimits limits(9, 4);
    EXPECT_EQ(5u, limits.GetLength());
    EXPECT_FALSE(limits.IsEmpty());

    BCColor color(0x11, 0x22, 0x33);
    EXPECT_EQ(0x332211ul, color.GetCOLORREF());
    std::ostringstream os = OutStream();
    ASSERT_EQ(1, color.Save(os));
    EXPECT_EQ(LE32(8) + LE32(0x332211), os.str());
    BCColor loaded;
    std::istringstream in = InStream(os.str());
    ASSERT_EQ(1, loaded.Load(in));
    EXPECT_TRUE(loaded == color);

    BCResID byName("MAINMENU", BCGetDLLModule2());
    BCResID copy(byName);
    BCResID byNumber(1021);
    copy = byNumber;
    EXPECT_STREQ("MAINMENU", byName.GetResName());
    EXPECT_EQ(nullptr, copy.GetResName());
    EXPECT_EQ(1021u, copy.GetResNum());
    EXPECT_EQ(MAKEINTRESOURCEA(1021), copy.GetResource());

    EXPECT_EQ(1u, BCGetTextFormat().GetFormat());
    EXPECT_EQ(2u, BCGetBitmapFormat().GetFormat());
}

TEST(StartupTest, ModuleCachesAndOutOfMemoryRetry) {
    BCModule* module = BCGetDLLModule2();
    ASSERT_NE(nullptr, module);
    EXPECT_EQ(114u, module->GetObjectType());
    EXPECT_STREQ("", module->GetName());
    EXPECT_EQ(GetModuleHandleA("norlib2.dll"), module->GetInstance());
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), BCGetScreenWidth2());
    EXPECT_EQ(GetSystemMetrics(SM_CYSCREEN), BCGetScreenHeight2());
    EXPECT_NE(nullptr, BCGetArrowCursor2());
    EXPECT_EQ(reinterpret_cast<void*>(&BCWndProc), BCGetWindowProc2());
    EXPECT_EQ(reinterpret_cast<void*>(&BCDlgWndProc), BCGetDialogProc2());
    EXPECT_EQ(&BCOutOfMemoryHandler, std::get_new_handler());

    MsgRecorder recorder;
    recorder.Answer(IDRETRY);
    BCOutOfMemoryHandler(); // returns so that the allocation is tried again
    ASSERT_EQ(1u, recorder.Count());
    EXPECT_EQ(BC_MSG_BOX, recorder.Last().kind);
    EXPECT_EQ("Can't allocate enough memory!", recorder.Last().text);
    EXPECT_EQ("Attention", recorder.Last().caption);
    EXPECT_EQ(static_cast<unsigned>(MB_SYSTEMMODAL | MB_ICONSTOP | MB_RETRYCANCEL),
              recorder.Last().style);
}

TEST(ModuleTest, RegisteredModulesAreSearchedUntilTheyGo) {
    HMODULE library = GetModuleHandleA("norlib2.dll");
    char text[32];
    {
        BCModule module(library, "copy", 0);
        BCRegisterLibModule(&module);
        EXPECT_GT(BCGetResString(3086, text, sizeof text, &module), 0);
        EXPECT_STREQ("BCArrayList", text);
    }
    // The copy took only its own registration with it.
    EXPECT_GT(BCGetResString(3086, text, sizeof text, nullptr), 0);
}

} // namespace
