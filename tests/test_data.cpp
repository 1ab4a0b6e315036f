#include "test_data.h"

#include <psapi.h>

namespace {

// Logs "<name><code>/<source's length>", "!" when the source is not notifying; gives its answer.
struct Probe : BCUpdater {
    Probe(BCObject* target, std::string* log, char name, int answer = 1, int* gone = nullptr)
        : BCUpdater(145, target), log(log), name(name), answer(answer), gone(gone) {}
    ~Probe() override { gone && ++*gone; }
    int DataUpdated(BCObject* source, unsigned int code, BCObject*) override {
        auto* data = static_cast<BCDependentData*>(source);
        *log += name + std::to_string(code) + "/" + std::to_string(data->GetLen(gText)) +
                ((data->GetFlags() & BC_FLAG_NOTIFYING) ? " " : "! ");
        return answer;
    }
    std::string* log;
    char name;
    int answer, *gone;
};

// A dependent data object that logs the codes a data updater passes on to it.
struct Listener : BCDependentData {
    explicit Listener(std::string* log) : BCDependentData(nullptr, 0, nullptr), log(log) {}
    int DataUpdated(BCObject*, unsigned int code, BCObject*) override {
        *log += "L" + std::to_string(code) + " ";
        return answer;
    }
    std::string* log;
    int answer = 1;
};

TEST(UpdaterListTest, OrderRefusalDuplicatesAndOwnership) {
    std::string log;
    BCObject ta, tb, tc, td;
    int gone = 0;
    {
        BCUpdaterList list;
        EXPECT_EQ("149 1 ", Nums(list.GetObjectType(), list.UpdateAll(nullptr, 4, nullptr)));
        BCDependentData source(new BCText(Str("x"), 0), BC_FLAG_NOTIFY, &list);
        // Not appended: goes in at the current position.
        ASSERT_TRUE(list.InsertUpdater(new Probe(&ta, &log, 'a', 1, &gone), 1) &&
                    list.InsertUpdater(new Probe(&tc, &log, 'c', 1, &gone), 1) && list.Home() &&
                    list.InsertUpdater(new Probe(&tb, &log, 'b', 1, &gone), 0));
        EXPECT_EQ(1, source.UpdateDependents(4, nullptr));
        Probe duplicate(&ta, &log, 'A'); // refused: the caller keeps it
        EXPECT_EQ(1, list.InsertUpdater(&duplicate, 1) + list.GetCount() - 3);
        // The first refusal ends the broadcast; a plain updater always refuses.
        ASSERT_EQ(1, list.InsertUpdater(new Probe(&td, &log, 'd', 0, &gone), 0));
        EXPECT_EQ(0, source.UpdateDependents(6, nullptr));
        EXPECT_EQ("b4/2 a4/2 c4/2 b6/2 d6/2 ", log);
        EXPECT_EQ(0, BCUpdater(145, &ta).DataUpdated(&source, 4, nullptr));
        EXPECT_EQ(0, list.DeleteUpdater(&source)); // no updater for that target
        EXPECT_EQ(1, list.DeleteUpdater(&td) + gone - 1);
        // Clear(0) lets the updaters go without deleting them.
        std::vector<BCUpdater*> kept;
        for (int more = list.Home(); more; more = list.Next())
            kept.push_back(static_cast<BCUpdater*>(list.GetCrntItem()));
        list.Clear(0);
        for (BCUpdater* updater : kept)
            ASSERT_EQ(1, list.InsertUpdater(updater, 1) + gone - 1);
        EXPECT_EQ(0, list.DeleteItem(nullptr, nullptr));
    }
    EXPECT_EQ(4, gone); // the list deleted the three it held
}

TEST(DependentDataTest, CodesComeAfterChangesAndBeforeClearing) {
    std::string log;
    BCUpdaterList list;
    ASSERT_EQ(1, list.InsertUpdater(new Probe(&list, &log, 'p'), 1));
    BCDependentData data(new BCText(Str("abc"), 0), BC_FLAG_NOTIFY, &list);
    EXPECT_TRUE(data.GetObjectType() == 151u && data.SetData(Str("hello"), 6, gText) == 6u);
    data.SetModified(0);
    delete data.SetObject(new BCText(Str("ab"), 0)); // the caller owns the old object
    EXPECT_TRUE(data.IsModified() && data.Clear(1) == 1 && !(data.GetFlags() & BC_FLAG_NOTIFYING));
    // Without the notify flag nobody hears; without a wrapped object results are 0, yet notified.
    data.SetFlags(BC_FLAG_NOTIFY, 0);
    EXPECT_EQ(2u, data.SetData(Str("z"), 2, gText));
    BCDependentData empty(nullptr, BC_FLAG_NOTIFY, &list);
    EXPECT_EQ(0u, empty.SetData(Str("z"), 2, gText) + empty.Clear(1));
    EXPECT_EQ(2, BCDependentData(nullptr, 0, nullptr).UpdateDependents(4, nullptr) +
                     empty.DataUpdated(&data, 4, nullptr));

    // A data updater hands the notification on and returns the answer it got.
    Listener listener(&log);
    BCUpdaterList forward;
    auto* updater = new BCDataUpdater(&listener);
    ASSERT_TRUE(updater->GetObjectType() == 147u && forward.InsertUpdater(updater, 1));
    BCDependentData source(new BCText(Str("ab"), 0), BC_FLAG_NOTIFY, &forward);
    EXPECT_EQ(1, source.UpdateDependents(6, nullptr));
    listener.answer = 0;
    EXPECT_EQ(0, source.UpdateDependents(4, nullptr) +
                     BCDataUpdater(nullptr).DataUpdated(&source, 4, nullptr));
    EXPECT_EQ("p4/6 p4/3 p6/3 p4/0 p6/0 L6 L4 ", log);
}

TEST(DependentDataTest, ModifiedChainCopiesOwnershipAndRecord) {
    BCUpdaterList list;
    BCDependentData data(new BCText(Str("ab"), 0), 0, &list);
    auto* text = static_cast<BCText*>(data.GetDataObject());
    data.SetData(Str("xy"), 3, gText);
    EXPECT_TRUE(data.SetModified(0) == 1 && text->SetText("!", 0, 1, 1) &&
                data.IsModified()); // a change inside shows

    // Copies wrap their own duplicate and share the updater list.
    BCDependentData copy(data), assigned(nullptr, BC_FLAG_NOT_OWNED, nullptr);
    assigned = data;
    for (BCDependentData* other : {&copy, &assigned}) {
        auto* duplicate = static_cast<BCText*>(other->GetDataObject());
        ASSERT_TRUE(duplicate && duplicate != text);
        EXPECT_EQ(std::string("!xy", 4), Contents(*duplicate));
        EXPECT_TRUE(other->GetUpdaters() == &list &&
                    !(other->GetFlags() & BC_FLAG_NOT_OWNED)); // the duplicate is theirs
    }
    BCText kept(Str("keep"), 0);
    { BCDependentData borrower(&kept, BC_FLAG_NOT_OWNED, nullptr); }
    EXPECT_EQ("keep", Contents(kept).substr(0, 4)); // still alive

    // The record is the wrapped object's own; flag 0x0004 goes down both ways.
    BCDependentData none(nullptr, 0, nullptr), number(new BCInteger(42), BC_FLAG_PASS_ON, nullptr);
    EXPECT_EQ(0, LoadFrom(none, LE32(153)));
    const std::string record = LE32(153) + LE32(42) + LE32(3) + "%ld";
    std::ostringstream nothing;
    EXPECT_TRUE(!none.Save(nothing) && RecordOf(number) == record);
    for (int on : {0, 1}) {
        number.GetDataObject()->SetFlags(BC_FLAG_PASS_ON, !on);
        number.SetFlags(BC_FLAG_PASS_ON, on);
        ASSERT_EQ(1, LoadFrom(number, record));
        EXPECT_EQ(on != 0, (number.GetDataObject()->GetFlags() & BC_FLAG_PASS_ON) != 0);
    }
}

TEST(MemoryDataTest, GrowsShrinksAndMovesBytesByTheStepRule) {
    // Written, then the block's size: the first block is exactly what was asked; then 11 is
    // rounded down to the 512 step, plus two steps; overwriting past the end lengthens.
    BCMemoryData data(nullptr, 0, 0);
    std::string more(1014, 'm');
    EXPECT_EQ(
        (Seq{10, 10, 1, 1024, 1014, 2048, 3, 0, 0, 1026}),
        (Seq{data.SetData(0, "0123456789", 10, 1), data.GetBufLen(), data.SetData(10, "A", 1, 1),
             data.GetBufLen(), data.SetData(11, more.data(), 1014, 1), data.GetBufLen(),
             data.SetData(1023, "xyz", 3, 0), data.SetData(1027, "q", 1, 1),
             data.SetData(0, "q", 0, 1), data.GetLen(gText)}));
    // Small deletes leave the block; 3900 left is rounded down to the step, plus two steps.
    std::string big(5000, 'b');
    BCMemoryData block(&big[0], 5000, 0);
    EXPECT_EQ((Seq{100, 5000, 1000, 4608}), (Seq{block.DeleteData(0, 100), block.GetBufLen(),
                                                 block.DeleteData(10, 1000), block.GetBufLen()}));

    BCMemoryData small(Str("abcdef"), 6, 0);
    small.SetData(2, "XY", 2, 1);
    small.SetData(0, "Z", 1, 0);
    EXPECT_EQ(3ul, small.DeleteData(1, 3));
    small.SetData(1, small.GetDataPtr(gText), 3, 1); // its own bytes, from the first
    EXPECT_TRUE(Contents(small) == "ZZcdcdef" && !small.DeleteData(8, 1));
    small.SetModified(0);
    EXPECT_TRUE(small.Clear(1) && small.IsModified());
    small.SetData(Str("Zdefcdef"), 8, gText);
    small.SetModified(0);
    // As many as the length: everything goes.
    EXPECT_TRUE(small.DeleteData(3, 8) == 8ul && !small.GetDataPtr(gText) && small.IsModified());

    // Deleting past the end subtracts the full count yet reads nothing past the bytes; a change
    // that cannot be held empties the object, which works on.
    small.SetData(Str("0123456789"), 10, gText);
    char out[64];
    EXPECT_EQ(
        (Seq{100, 0xFFFFFFA6, 18, 0, 0, 2}),
        (Seq{small.DeleteData(2, 100), small.GetLen(gText),
             small.GetData(out, sizeof out, gText) + small.GetData(2, out, sizeof out),
             small.SetData(5, "x", 1, 1), small.GetLen(gText), small.SetData(0, "ok", 2, 1)}));
    EXPECT_EQ("ok", Contents(small));
}

TEST(MemoryDataTest, BorrowingAndCopies) {
    MsgRecorder recorder; // a free of the caller's buffer would report a fault here
    char buffer[] = "borrowed";
    {
        BCMemoryData lent(buffer, 8, BC_FLAG_BORROW);
        lent.SetData(0, "B", 1, 0);
        BCMemoryData sharer(lent);
        // The caller's buffer cannot grow: the bytes move into a block of the object's own.
        EXPECT_TRUE(sharer.GetDataPtr(gText) == buffer && lent.SetData(8, "!", 1, 1) == 1ul &&
                    lent.GetDataPtr(gText) != buffer && !(lent.GetFlags() & BC_FLAG_BORROW));
        EXPECT_EQ("Borrowed!", Contents(lent));
        sharer.Clear(1);
        std::string big(5000, 'b'); // a borrowed block never shrinks: it is not ours
        big[1010] = 'X';
        BCMemoryData large(&big[0], 5000, BC_FLAG_BORROW);
        EXPECT_TRUE(large.DeleteData(10, 1000) == 1000ul && large.GetDataPtr(gText) == &big[0] &&
                    big[10] == 'X');
    }
    EXPECT_EQ("Borrowed|", std::string(buffer) + "|" + recorder.Texts());
    // A length without bytes holds nothing, borrowed or not.
    BCMemoryData none(nullptr, 5, 0), lentNone(nullptr, 5, BC_FLAG_BORROW);
    EXPECT_EQ(Nums(0, 0), Nums(none.GetLen(gText), lentNone.GetLen(gText)));

    BCMemoryData original(Str("abc"), 3, BC_FLAG_NOTIFY);
    original.SetGrowStep(64);
    BCMemoryData copy(original), assigned(Str("zz"), 2, BC_FLAG_MODIFIED | 0x10000);
    assigned = original;
    EXPECT_TRUE(original.GetDataPtr(gText) != copy.GetDataPtr(gText) &&
                Contents(assigned) == "abc");
    // The step is copied but not assigned.
    EXPECT_EQ(Nums(64, 512, BC_FLAG_NOTIFY | 0x10000),
              Nums(copy.GetGrowStep(), assigned.GetGrowStep(), assigned.GetFlags()));
}

// Marks itself modified on setting even where an override of Clear does not.
struct QuietClear : BCMemoryData {
    QuietClear() : BCMemoryData(nullptr, 0, 0) {}
    int Clear(int) override { return 1; }
};

TEST(MemoryDataTest, RecordIsCodeLengthBytesAndBadRecordsFail) {
    QuietClear quiet;
    EXPECT_TRUE(quiet.SetData(Str("ab"), 2, gText) == 2ul && quiet.IsModified());
    BCMemoryData data(Str("ab\0c"), 4, 0);
    const std::string record = LE32(155) + LE32(4) + std::string("ab\0c", 4);
    EXPECT_EQ(record, RecordOf(data));
    std::istringstream in = InStream(record + "tail");
    EXPECT_TRUE(data.Load(in) && in.get() == 't'); // the record delimits itself

    for (const std::string& bytes : {
             record.substr(0, 10),                // bytes cut short
             record.substr(0, 6),                 // length cut short
             LE32(156) + record.substr(4),        // another class's record
             LE32(155) + LE32(0xFFFFFFFF) + "ab", // absurd lengths
             LE32(155) + LE32(0x7FFFFFF0) + "ab",
         }) {
        BCMemoryData target(Str("keep"), 4, 0);
        EXPECT_EQ(0, LoadFrom(target, bytes) + LoadPiped(target, bytes));
        EXPECT_TRUE(target.SetData(4, "!", 1, 1) == 1ul && Contents(target) == "keep!"); // usable
    }
}

size_t MemoryInUse() {
    PROCESS_MEMORY_COUNTERS counters = {};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

TEST(MemoryDataTest, BlocksGivenUpAreFreed) {
    std::string bytes(256 * 1024, 'b');
    BCMemoryData data(nullptr, 0, 0), other(&bytes[0], bytes.size(), 0);
    const std::string cut = LE32(155) + LE32(1 << 20) + "abc";
    size_t before = MemoryInUse();
    for (int i = 0; i < 200; ++i) {
        data = other;
        data = other; // the block held before goes
        data.Clear(1);
        data = other;
        ASSERT_EQ(0, LoadPiped(data, cut)); // and so does the piece read of a short record
        BCMemoryData wrapped(&bytes[0], bytes.size(), 0);
        wrapped.DeleteData(2, 0xFFFFFFFFul);          // the length wraps to one past the block
        ASSERT_EQ(1u, wrapped.SetData(0, "x", 1, 1)); // growing lets the old block go
    }
    EXPECT_LT(MemoryInUse(), before + (8u << 20)); // leaking would take over 60 MiB
}

} // namespace
