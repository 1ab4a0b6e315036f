// What the array list does beyond the protocol that every list keeps (test_lists).
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"

namespace {

[[maybe_unused]] const bool g_neverWait = NeverWaitOnFaults();

// An item with an integer key at offset 4.
struct Record {
    int payload, key;
};

std::vector<int> Payloads(BCArrayList& list) {
    std::vector<int> out;
    for (int more = list.Home(); more; more = list.Next()) {
        void* copy = list.GetCrntItem();
        out.push_back(static_cast<Record*>(copy)->payload);
        delete[] static_cast<unsigned char*>(copy);
    }
    return out;
}

BCArrayList MakeList(unsigned flags = 0, unsigned length = 0, unsigned growBy = 4) {
    return BCArrayList(length, sizeof(Record), 4, sizeof(int), growBy, flags);
}

void AppendAll(BCArrayList& list, std::initializer_list<Record> records) {
    for (Record r : records)
        ASSERT_TRUE(list.Append(Key(r.key), &r));
}

TEST(ArrayListTest, IndexesAreNotCheckedAndFailedSearchesKeepThePosition) {
    BCArrayList list = MakeList();
    EXPECT_EQ(static_cast<unsigned long>(BC_FLAG_ARRAY), list.GetFlags());
    AppendAll(list, {{1, 10}, {2, 20}, {3, 30}});
    EXPECT_TRUE(list.GoToIndex(1000) && list.GetCrntInd() == 1000u);
    // But nothing is read or written past the items; the copy stays the caller's.
    auto copy = std::make_unique<unsigned char[]>(sizeof(Record));
    EXPECT_FALSE(list.GetCrntItem() || list.GetCrntKey() || list.Update(nullptr, &list) ||
                 list.Unlock(nullptr, copy.get()));
    ASSERT_TRUE(list.GoToItem(Key(25))); // CmpKey(25, k) is negative first for 30
    EXPECT_EQ(0, list.GoToItem(Key(30)));
    EXPECT_EQ(2u, list.GetCrntInd());
}

TEST(ArrayListTest, CopiesAreIndependentUntilUpdateOrUnlock) {
    BCArrayList list = MakeList();
    AppendAll(list, {{1, 1}});
    Record* a = static_cast<Record*>(list.GetCrntItem());
    Record* b = static_cast<Record*>(list.Lock());
    ASSERT_TRUE(a && b && a != b);
    a->payload = 77;
    EXPECT_EQ((std::vector<int>{1}), Payloads(list));
    ASSERT_TRUE(list.Update(nullptr, a));
    EXPECT_EQ((std::vector<int>{77}), Payloads(list));
    delete[] reinterpret_cast<unsigned char*>(a);
    b->payload = 78;
    ASSERT_TRUE(list.Unlock(nullptr, b)); // stores and frees the copy
    EXPECT_EQ((std::vector<int>{78}), Payloads(list));
}

TEST(ArrayListTest, GrowsByGrowBySlotsAndClearReturnsZero) {
    BCArrayList list = MakeList(0, 0, 3), preset = MakeList(0, 5, 2), stuck = MakeList(0, 1, 0);
    // A block past 2 GiB is refused, the size kept; the first lock makes grow-by slots.
    EXPECT_EQ((Seq{5, 0, sizeof(Record), 1, 3, 1}),
              (Seq{preset.GetLength(), preset.SetItemSize(0x40000000), preset.GetItemSize(),
                   list.LockList() != 0, list.GetLength(), list.UnlockList() != 0}));
    AppendAll(list, {{1, 1}, {2, 2}, {3, 3}});
    EXPECT_EQ(3u, list.GetLength());
    AppendAll(list, {{4, 4}});
    EXPECT_EQ(6u, list.GetLength());
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), Payloads(list));
    EXPECT_EQ(0, list.Clear(1));
    EXPECT_EQ(0u, list.GetCount() + list.GetCrntInd());
    // A list that cannot grow refuses the insert instead of writing past its block.
    AppendAll(stuck, {{1, 1}});
    Record r{2, 2};
    EXPECT_EQ(0, stuck.Append(Key(2), &r));
    EXPECT_EQ(1u, stuck.GetCount());
}

TEST(ArrayListTest, LockNestingAndTheUnbalancedUnlockMessage) {
    MsgRecorder recorder;
    BCArrayList list = MakeList();
    ASSERT_TRUE(list.LockList());
    ASSERT_TRUE(list.LockList());
    AppendAll(list, {{1, 1}, {2, 2}}); // operations under a lock keep the count balanced
    EXPECT_EQ(2u, list.GetLockCount());
    list.UnlockList();
    list.UnlockList();
    EXPECT_TRUE(!recorder.Count() && !list.UnlockList()); // one unlock too many is reported
    EXPECT_EQ((std::vector<unsigned int>{10068}), recorder.NumberedIds());
    EXPECT_EQ("Internal error-Array List:UnlockList nesting error.|", recorder.Texts());
    EXPECT_EQ(&list, recorder.Last().object);
    EXPECT_EQ((std::vector<int>{1, 2}), Payloads(list));
}

TEST(ArrayListTest, StringKeysComeBackInTheKeyBufferAndKeylessItemsCompareAsZero) {
    struct Named {
        char name[8];
        int value;
    };
    BCArrayList names(0, sizeof(Named), 0, 8, 4, BC_FLAG_STRING_KEY | BC_FLAG_SORTED);
    for (const char* n : {"pear", "apple", "fig"}) {
        Named item{};
        std::strcpy(item.name, n);
        ASSERT_TRUE(names.Insert(const_cast<char*>(n), &item));
    }
    ASSERT_TRUE(names.Home());
    char* key = static_cast<char*>(names.GetCrntKey());
    EXPECT_STREQ("apple", key);
    ASSERT_TRUE(names.Next());
    EXPECT_EQ(key, names.GetCrntKey()); // the same buffer, refilled
    EXPECT_STREQ("fig", key);

    BCArrayList keyless(0, 4, 0, 0, 4, 0);
    for (int x : {1, 2})
        ASSERT_TRUE(keyless.Append(nullptr, &x));
    EXPECT_EQ(nullptr, keyless.GetCrntKey());
    EXPECT_TRUE(keyless.GoToItem(Key(-1)) && keyless.GetCrntInd() == 0u);
    EXPECT_EQ(0, keyless.GoToItem(Key(5)));
}

// Counts the per-item calls a save should not need: it reads the locked block directly.
class CountingList : public BCArrayList {
  public:
    CountingList() : BCArrayList(0, sizeof(Record), 4, sizeof(int), 4, BC_FLAG_SORTED) {}
    void* Lock() override { return ++calls, BCArrayList::Lock(); }
    int Unlock(void* key, void* item) override { return ++calls, BCArrayList::Unlock(key, item); }
    void* GetCrntKey() override { return ++calls, BCArrayList::GetCrntKey(); }
    int calls = 0;
};

TEST(ArrayListStreamTest, RecordIsHeaderThenRawItemsSavedStraightFromTheBlock) {
    CountingList list;
    AppendAll(list, {{0x0A0B0C0D, 2}, {0x01020304, 1}});
    ASSERT_TRUE(list.GoToIndex(1));
    const std::string record = SavedBytes(list);
    EXPECT_EQ(Nums(0, 1, 0), Nums(list.calls, list.GetCrntInd(), list.GetLockCount()));
    EXPECT_EQ(LE32(86) + LE32(BC_FLAG_ARRAY | BC_FLAG_SORTED) + LE32(4) + LE32(2) +
                  LE32(sizeof(Record)) + LE32(4) + LE32(4) + LE32(4) + LE32(0x01020304) + LE32(1) +
                  LE32(0x0A0B0C0D) + LE32(2),
              record);
    BCArrayList loaded = MakeList(0, 0, 9);
    ASSERT_EQ(1, LoadFrom(loaded, record));
    EXPECT_EQ(Nums(4, 4, BC_FLAG_SORTED),
              Nums(loaded.GetLength(), loaded.GetGrowBy(), loaded.GetFlags() & BC_FLAG_SORTED));
    std::ostringstream bad = OutStream();
    bad.setstate(std::ios::badbit);
    EXPECT_EQ(0, loaded.Save(bad));
    std::istringstream again = InStream(record);
    EXPECT_EQ(1, loaded.LoadBase(again));
}

TEST(ArrayListStreamTest, CorruptRecordsFailAndLeaveTheListUsable) {
    const std::string own = LE32(4) + LE32(4) + LE32(4);
    auto header = [](unsigned long length, unsigned long count, unsigned long itemSize) {
        return LE32(86) + LE32(BC_FLAG_ARRAY) + LE32(length) + LE32(count) + LE32(itemSize);
    };
    const std::string cases[] = {
        header(0x40000000, 1, 8) + own + std::string(8, 'x'), // absurd capacity
        header(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF) + own,     // overflowing sizes
        header(2, 5, 8) + own + std::string(40, 'x'),         // more items than slots
        header(100, 100000000, 8) + own,                      // billions of bytes claimed
        header(4, 1, 8) + LE32(6) + LE32(4) + LE32(4) + std::string(8, 'x'), // key past item
        LE32(76) + header(4, 0, 8).substr(4) + own, // another class's record
    };
    for (const std::string& bytes : cases) {
        BCArrayList list = MakeList();
        AppendAll(list, {{1, 1}});
        EXPECT_EQ(0, LoadFrom(list, bytes));
        AppendAll(list, {{2, 2}, {3, 3}}); // usable afterwards
        const std::vector<int> payloads = Payloads(list);
        EXPECT_TRUE(!payloads.empty() && payloads.back() == 3);
        EXPECT_EQ(sizeof(Record), list.GetItemSize());
    }
}

} // namespace
