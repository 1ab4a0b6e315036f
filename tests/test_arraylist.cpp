#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"

namespace {

// An item with an integer key at offset 4.
struct Record {
    int payload;
    int key;
};

void* Key(long value) {
    return reinterpret_cast<void*>(static_cast<intptr_t>(value));
}

Record CurrentRecord(BCArrayList& list) {
    Record r{};
    void* copy = list.GetCrntItem();
    if (copy) {
        std::memcpy(&r, copy, sizeof r);
        delete[] static_cast<unsigned char*>(copy);
    }
    return r;
}

std::vector<int> Payloads(BCArrayList& list) {
    std::vector<int> out;
    for (int more = list.Home(); more; more = list.Next())
        out.push_back(CurrentRecord(list).payload);
    return out;
}

BCArrayList MakeList(unsigned flags = 0, unsigned length = 0, unsigned growBy = 4) {
    return BCArrayList(length, sizeof(Record), 4, sizeof(int), growBy, flags);
}

void AppendAll(BCArrayList& list, std::initializer_list<Record> records) {
    for (Record r : records)
        ASSERT_TRUE(list.Append(Key(r.key), &r));
}

TEST(ArrayListTest, EmptyListRefusesPositioning) {
    BCArrayList list = MakeList();
    EXPECT_EQ(86u, list.GetObjectType());
    EXPECT_STREQ("BCArrayList", list.GetObjectTypeStr());
    EXPECT_EQ(static_cast<unsigned long>(BC_FLAG_ARRAY), list.GetFlags());
    EXPECT_EQ(0, list.Home());
    EXPECT_EQ(0, list.End());
    EXPECT_EQ(0, list.GoToIndex(0));
    EXPECT_EQ(0, list.Next());
    EXPECT_EQ(0, list.Prev());
    EXPECT_EQ(0, list.GoToItem(Key(1)));
    EXPECT_EQ(0, list.DeleteCrnt());
    EXPECT_EQ(nullptr, list.GetCrntItem());
    EXPECT_EQ(nullptr, list.Find(Key(1)));
}

TEST(ArrayListTest, InsertPlacesAtCurrentAndMakesTheNewItemCurrent) {
    BCArrayList list = MakeList();
    AppendAll(list, {{1, 10}, {2, 20}, {3, 30}});
    EXPECT_EQ(2u, list.GetCrntInd());
    ASSERT_TRUE(list.GoToIndex(1));
    Record r{9, 90};
    ASSERT_TRUE(list.Insert(Key(90), &r));
    EXPECT_EQ(1u, list.GetCrntInd());
    EXPECT_EQ((std::vector<int>{1, 9, 2, 3}), Payloads(list));

    // Navigation bounds.
    ASSERT_TRUE(list.End());
    EXPECT_EQ(3u, list.GetCrntInd());
    EXPECT_EQ(0, list.Next());
    ASSERT_TRUE(list.Home());
    EXPECT_EQ(0, list.Prev());
    // The index is not checked.
    EXPECT_EQ(1, list.GoToIndex(1000));
    EXPECT_EQ(1000u, list.GetCrntInd());
    EXPECT_EQ(nullptr, list.GetCrntItem()); // but nothing is read past the items
}

TEST(ArrayListTest, SortedInsertGoesAfterEqualKeysAndAppendStillSorts) {
    BCArrayList list = MakeList(BC_FLAG_SORTED);
    AppendAll(list, {{1, 30}, {2, 10}, {3, 20}, {4, 20}, {5, -5}});
    EXPECT_EQ((std::vector<int>{5, 2, 3, 4, 1}), Payloads(list));
    Record r{6, 20};
    ASSERT_TRUE(list.Insert(Key(20), &r));
    EXPECT_EQ(4u, list.GetCrntInd());
    EXPECT_EQ((std::vector<int>{5, 2, 3, 4, 6, 1}), Payloads(list));
}

TEST(ArrayListTest, GoToItemLandsOnTheFirstKeyThatComparesBelow) {
    BCArrayList list = MakeList();
    AppendAll(list, {{1, 10}, {2, 20}, {3, 30}});
    // CmpKey(25, k) is negative first for k = 30.
    ASSERT_TRUE(list.GoToItem(Key(25)));
    EXPECT_EQ(2u, list.GetCrntInd());
    // An equal key compares 0, not below: the search goes on to 30.
    ASSERT_TRUE(list.GoToItem(Key(20)));
    EXPECT_EQ(2u, list.GetCrntInd());
    EXPECT_EQ(0, list.GoToItem(Key(30)));
    EXPECT_EQ(2u, list.GetCrntInd());
    void* found = list.Find(Key(5));
    ASSERT_NE(nullptr, found);
    EXPECT_EQ(1, reinterpret_cast<Record*>(found)->payload);
    delete[] static_cast<unsigned char*>(found);
    ASSERT_TRUE(list.Delete(Key(15)));
    EXPECT_EQ((std::vector<int>{1, 3}), Payloads(list));
}

TEST(ArrayListTest, DeletingMovesCurrentBackOnlyAtTheEnd) {
    BCArrayList list = MakeList();
    AppendAll(list, {{1, 1}, {2, 2}, {3, 3}});
    ASSERT_TRUE(list.GoToIndex(1));
    ASSERT_TRUE(list.DeleteCrnt());
    EXPECT_EQ(1u, list.GetCrntInd());
    EXPECT_EQ(3, CurrentRecord(list).payload);
    ASSERT_TRUE(list.DeleteCrnt()); // the last item
    EXPECT_EQ(0u, list.GetCrntInd());
    ASSERT_TRUE(list.DeleteCrnt()); // the only item
    EXPECT_EQ(0u, list.GetCrntInd());
    EXPECT_EQ(0u, list.GetCount());
}

TEST(ArrayListTest, CopiesAreIndependentUntilUpdateOrUnlock) {
    BCArrayList list = MakeList();
    AppendAll(list, {{1, 1}});
    Record* a = static_cast<Record*>(list.GetCrntItem());
    Record* b = static_cast<Record*>(list.GetCrntItem());
    ASSERT_TRUE(a && b);
    EXPECT_NE(a, b);
    a->payload = 77;
    EXPECT_EQ(1, CurrentRecord(list).payload);
    ASSERT_TRUE(list.Update(nullptr, a));
    EXPECT_EQ(77, CurrentRecord(list).payload);
    delete[] reinterpret_cast<unsigned char*>(a);

    Record* locked = static_cast<Record*>(list.Lock());
    locked->payload = 78;
    ASSERT_TRUE(list.Unlock(nullptr, locked)); // stores and frees the copy
    EXPECT_EQ(78, CurrentRecord(list).payload);
    delete[] reinterpret_cast<unsigned char*>(b);
}

TEST(ArrayListTest, GrowsByGrowBySlotsAndClearReturnsZero) {
    BCArrayList list = MakeList(0, 0, 3);
    EXPECT_EQ(0u, list.GetLength());
    ASSERT_TRUE(list.LockList()); // the first lock makes grow-by slots
    EXPECT_EQ(3u, list.GetLength());
    ASSERT_TRUE(list.UnlockList());
    AppendAll(list, {{1, 1}, {2, 2}, {3, 3}});
    EXPECT_EQ(3u, list.GetLength());
    AppendAll(list, {{4, 4}});
    EXPECT_EQ(6u, list.GetLength());
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), Payloads(list));

    BCArrayList preset = MakeList(0, 5, 2);
    EXPECT_EQ(5u, preset.GetLength());

    EXPECT_EQ(0, list.Clear(1));
    EXPECT_EQ(0u, list.GetCount());
    EXPECT_EQ(0u, list.GetCrntInd());
    AppendAll(list, {{5, 5}});
    EXPECT_EQ((std::vector<int>{5}), Payloads(list));

    // A list that cannot grow refuses the insert instead of writing past its block.
    BCArrayList stuck = MakeList(0, 1, 0);
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
    EXPECT_EQ(2u, list.GetLockCount());
    list.UnlockList();
    list.UnlockList();
    EXPECT_EQ(0u, list.GetLockCount());
    EXPECT_EQ(0u, recorder.Count());
    EXPECT_EQ(0, list.UnlockList());
    ASSERT_EQ(1u, recorder.Count());
    EXPECT_EQ(BC_MSG_NUMBERED, recorder.Last().kind);
    EXPECT_EQ(10068u, recorder.Last().id);
    EXPECT_EQ("Internal error-Array List:UnlockList nesting error.", recorder.Last().text);
    EXPECT_EQ(&list, recorder.Last().object);

    // Operations under an outer lock still work and keep the count balanced.
    ASSERT_TRUE(list.LockList());
    AppendAll(list, {{1, 1}, {2, 2}});
    EXPECT_EQ(1u, list.GetLockCount());
    list.UnlockList();
    EXPECT_EQ((std::vector<int>{1, 2}), Payloads(list));
}

TEST(ArrayListTest, StringAndBlockKeysComeBackInTheKeyBuffer) {
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

    BCArrayList values = MakeList();
    AppendAll(values, {{1, -7}});
    EXPECT_EQ(Key(-7), values.GetCrntKey());
    BCArrayList keyless(0, 4, 0, 0, 4, 0);
    int x = 1;
    ASSERT_TRUE(keyless.Append(nullptr, &x));
    EXPECT_EQ(nullptr, keyless.GetCrntKey());
    // Without a key every item compares as the value 0 (a find lands on the first below).
    int y = 2;
    ASSERT_TRUE(keyless.Append(nullptr, &y));
    ASSERT_NE(nullptr, keyless.Find(Key(-1)));
    EXPECT_EQ(1, *static_cast<int*>(keyless.Find(Key(-1))));
    EXPECT_EQ(nullptr, keyless.Find(Key(5)));
}

TEST(ArrayListStreamTest, RecordLayoutIsHeaderThenRawItems) {
    BCArrayList list = MakeList(BC_FLAG_SORTED, 0, 4);
    AppendAll(list, {{0x0A0B0C0D, 2}, {0x01020304, 1}});
    std::ostringstream os = OutStream();
    ASSERT_EQ(1, list.Save(os));
    const std::string header =
        LE32(86) + LE32(BC_FLAG_ARRAY | BC_FLAG_SORTED) + LE32(4) + LE32(2) + LE32(sizeof(Record));
    const std::string own = LE32(4) + LE32(4) + LE32(4);
    const std::string items = LE32(0x01020304) + LE32(1) + LE32(0x0A0B0C0D) + LE32(2);
    EXPECT_EQ(header + own + items, os.str());

    BCArrayList loaded = MakeList(0, 0, 9);
    std::istringstream is = InStream(os.str());
    ASSERT_EQ(1, loaded.Load(is));
    EXPECT_EQ(2u, loaded.GetCount());
    EXPECT_EQ(4u, loaded.GetLength());
    EXPECT_EQ(4u, loaded.GetGrowBy());
    EXPECT_TRUE(loaded.GetFlags() & BC_FLAG_SORTED);
    EXPECT_EQ((std::vector<int>{0x01020304, 0x0A0B0C0D}), Payloads(loaded));
    std::ostringstream again = OutStream();
    ASSERT_EQ(1, loaded.Save(again));
    EXPECT_EQ(os.str(), again.str());
}

TEST(ArrayListStreamTest, CorruptRecordsFailAndLeaveTheListUsable) {
    const std::string own = LE32(4) + LE32(4) + LE32(4);
    auto header = [](unsigned long length, unsigned long count, unsigned long itemSize) {
        return LE32(86) + LE32(BC_FLAG_ARRAY) + LE32(length) + LE32(count) + LE32(itemSize);
    };
    const std::string cases[] = {
        header(4, 2, 8) + own + std::string(12, 'x'),         // items cut short
        header(4, 2, 8),                                      // settings cut short
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
        std::istringstream is = InStream(bytes);
        EXPECT_EQ(0, list.Load(is));
        // Usable afterwards: items can be added and read back.
        AppendAll(list, {{2, 2}, {3, 3}});
        std::vector<int> payloads = Payloads(list);
        ASSERT_FALSE(payloads.empty());
        EXPECT_EQ(3, payloads.back());
        EXPECT_EQ(sizeof(Record), list.GetItemSize());
    }
}

} // namespace
