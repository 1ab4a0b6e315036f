#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"

namespace {

void* Key(long value) {
    return reinterpret_cast<void*>(static_cast<intptr_t>(value));
}
long KeyValue(void* key) {
    return static_cast<long>(reinterpret_cast<intptr_t>(key));
}

// Items of size 0 are the caller's: here, pointers into a fixed array of ints.
int g_items[10] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
void* Item(int i) {
    return &g_items[i];
}
int ItemNo(void* item) {
    return item ? *static_cast<int*>(item) : -1;
}

std::vector<int> Items(BCList& list) {
    std::vector<int> out;
    for (int more = list.Home(); more; more = list.Next())
        out.push_back(ItemNo(list.GetCrntItem()));
    return out;
}

// Records every item handed to DeleteItem and the keep flag at that moment.
class RecordingList : public BCSingleLinkedList {
  public:
    explicit RecordingList(unsigned flags = 0) : BCSingleLinkedList(flags, 0) {}
    ~RecordingList() override { Clear(1); }
    int DeleteItem(void* key, void* item) override {
        deleted.push_back(ItemNo(item));
        keepFlagSeen.push_back((GetFlags() & BC_FLAG_KEEP_ITEMS) != 0);
        return BCSingleLinkedList::DeleteItem(key, item);
    }
    void SetKeySize(unsigned long n) { dwKeySize = n; }
    std::vector<int> deleted;
    std::vector<bool> keepFlagSeen;
};

TEST(SingleLinkedListTest, InsertAppendAndTheCurrentNode) {
    BCSingleLinkedList list(0, 0);
    EXPECT_EQ(87u, list.GetObjectType());
    EXPECT_EQ(0xFFFFFFFFul, list.GetCrntInd());
    // Without a current node Insert appends.
    ASSERT_TRUE(list.Insert(Key(1), Item(1)));
    ASSERT_TRUE(list.Append(Key(2), Item(2)));
    EXPECT_EQ(1u, list.GetCrntInd());
    // With one, the new node goes in front of it and becomes current.
    ASSERT_TRUE(list.Insert(Key(3), Item(3)));
    EXPECT_EQ(1u, list.GetCrntInd());
    EXPECT_EQ((std::vector<int>{1, 3, 2}), Items(list));
    ASSERT_TRUE(list.Home());
    ASSERT_TRUE(list.Insert(Key(4), Item(4)));
    EXPECT_EQ((std::vector<int>{4, 1, 3, 2}), Items(list));
    EXPECT_EQ(4, ItemNo(list.GetHead()->lpItem));
    EXPECT_EQ(2, ItemNo(list.GetTail()->lpItem));

    ASSERT_TRUE(list.End());
    EXPECT_EQ(0, list.Next());
    ASSERT_TRUE(list.Prev());
    EXPECT_EQ(3, ItemNo(list.GetCrntItem()));
    EXPECT_EQ(Key(3), list.GetCrntKey());
    ASSERT_TRUE(list.GoToIndex(0));
    EXPECT_EQ(0, list.Prev());
    EXPECT_EQ(0, list.GoToIndex(4));
    EXPECT_EQ(1, ItemNo(list.Find(Key(1))));
    EXPECT_EQ(nullptr, list.Find(Key(99)));
}

TEST(SingleLinkedListTest, SortedPlacementAndRelocation) {
    BCSingleLinkedList list(BC_FLAG_SORTED, 0);
    ASSERT_TRUE(list.Append(Key(30), Item(3)));
    ASSERT_TRUE(list.Insert(Key(10), Item(1)));
    ASSERT_TRUE(list.Insert(Key(20), Item(2)));
    ASSERT_TRUE(list.Insert(Key(20), Item(4))); // after the equal key
    ASSERT_TRUE(list.Insert(Key(-5), Item(5)));
    EXPECT_EQ((std::vector<int>{5, 1, 2, 4, 3}), Items(list));
    EXPECT_EQ(Key(-5), list.GetHead()->lpKey);

    ASSERT_TRUE(list.Relocate(Key(40), Key(10), nullptr));
    EXPECT_EQ((std::vector<int>{5, 2, 4, 3, 1}), Items(list));
    EXPECT_EQ(Key(40), list.GetTail()->lpKey);
    EXPECT_EQ(0, list.Relocate(Key(50), Key(77), nullptr)); // neither key present

    BCSingleLinkedList unsorted(0, 0);
    ASSERT_TRUE(unsorted.Append(Key(1), Item(1)));
    EXPECT_EQ(1, unsorted.Relocate(Key(9), Key(1), nullptr)); // nothing to move
    EXPECT_EQ(Key(1), unsorted.GetHead()->lpKey);
}

TEST(SingleLinkedListTest, DeletionMovesCurrentToSuccessorOrPredecessor) {
    RecordingList list;
    for (int i = 1; i <= 4; ++i)
        ASSERT_TRUE(list.Append(Key(i), Item(i)));
    ASSERT_TRUE(list.GoToIndex(1));
    ASSERT_TRUE(list.DeleteCrnt());
    EXPECT_EQ(3, ItemNo(list.GetCrntItem()));
    ASSERT_TRUE(list.End());
    ASSERT_TRUE(list.DeleteCrnt());
    EXPECT_EQ(3, ItemNo(list.GetCrntItem()));
    EXPECT_EQ(3, ItemNo(list.GetTail()->lpItem));
    // Delete by key finds the first equal key from the head.
    ASSERT_TRUE(list.Delete(Key(1)));
    EXPECT_EQ((std::vector<int>{3}), Items(list));
    EXPECT_EQ(0, list.Delete(Key(1)));
    EXPECT_EQ((std::vector<int>{2, 4, 1}), list.deleted);
    ASSERT_TRUE(list.DeleteCrnt());
    EXPECT_EQ(0u, list.GetCount());
    EXPECT_EQ(nullptr, list.GetHead());
    EXPECT_EQ(nullptr, list.GetTail());
    EXPECT_EQ(0, list.DeleteCrnt());
    EXPECT_EQ(0, list.Home());
    EXPECT_EQ(0, list.End());
}

TEST(SingleLinkedListTest, ClearHonoursAndRestoresTheKeepFlag) {
    RecordingList list;
    for (int i = 1; i <= 3; ++i)
        ASSERT_TRUE(list.Append(Key(i), Item(i)));
    EXPECT_EQ(1, list.Clear(0));
    EXPECT_EQ((std::vector<int>{1, 2, 3}), list.deleted);
    EXPECT_EQ((std::vector<bool>{true, true, true}), list.keepFlagSeen);
    EXPECT_FALSE(list.GetFlags() & BC_FLAG_KEEP_ITEMS);
    EXPECT_EQ(0u, list.GetCount());

    list.SetFlags(BC_FLAG_KEEP_ITEMS, 1);
    list.deleted.clear();
    list.keepFlagSeen.clear();
    ASSERT_TRUE(list.Append(Key(5), Item(5)));
    EXPECT_EQ(1, list.Clear(1));
    EXPECT_EQ((std::vector<bool>{false}), list.keepFlagSeen);
    EXPECT_TRUE(list.GetFlags() & BC_FLAG_KEEP_ITEMS);
}

TEST(ListProtocolTest, CmpKeyForEachKeyKind) {
    RecordingList values;
    EXPECT_LT(values.CmpKey(Key(-1), Key(5)), 0); // signed, as the numbers they are
    EXPECT_GT(values.CmpKey(Key(7), Key(5)), 0);
    EXPECT_EQ(0, values.CmpKey(Key(5), Key(5)));

    RecordingList strings(BC_FLAG_STRING_KEY);
    char a[] = "apple", b[] = "apple", c[] = "pear";
    EXPECT_EQ(0, strings.CmpKey(a, b)); // by contents, not address
    EXPECT_LT(strings.CmpKey(a, c), 0);
    EXPECT_GT(strings.CmpKey(c, nullptr), 0);

    RecordingList blocks(BC_FLAG_BLOCK_KEY);
    blocks.SetKeySize(3);
    unsigned char x[] = {1, 2, 3, 9}, y[] = {1, 2, 3, 0}, z[] = {1, 2, 4, 0};
    EXPECT_EQ(0, blocks.CmpKey(x, y)); // only key-size bytes count
    EXPECT_LT(blocks.CmpKey(x, z), 0);

    // String keys find by contents.
    ASSERT_TRUE(strings.Append(a, Item(1)));
    ASSERT_TRUE(strings.Append(c, Item(2)));
    char probe[] = "pear";
    EXPECT_EQ(2, ItemNo(strings.Find(probe)));
}

TEST(ListProtocolTest, BaseListHoldsNothing) {
    BCList list(7, 0, 4);
    EXPECT_EQ(85u, list.GetObjectType());
    EXPECT_EQ(7u, list.GetLength());
    EXPECT_EQ(0, list.Insert(Key(1), Item(1)));
    EXPECT_EQ(0, list.Append(Key(1), Item(1)));
    EXPECT_EQ(0, list.Home());
    EXPECT_EQ(0, list.Delete(Key(1)));
    EXPECT_EQ(0xFFFFFFFFul, list.GetCrntInd());
    EXPECT_EQ(nullptr, list.GetCrntItem());
    EXPECT_EQ(nullptr, list.Lock());
    EXPECT_EQ(0, list.Update(nullptr, Item(1)));
    EXPECT_EQ(nullptr, list.SetCrntItem(Item(1)));
    EXPECT_EQ(nullptr, list.Dup());
    EXPECT_EQ(1, list.Install(nullptr, nullptr, 0));
    EXPECT_EQ(1, list.SetItemSize(8));
    EXPECT_EQ(8u, list.GetItemSize());
}

TEST(ListProtocolTest, ItemsAreChangedInPlaceThroughTheCurrentNode) {
    BCSingleLinkedList list(0, 0);
    ASSERT_TRUE(list.Append(Key(1), Item(1)));
    EXPECT_EQ(Item(1), list.Lock()); // no copy: the item itself
    ASSERT_TRUE(list.Unlock(Key(1), Item(2)));
    EXPECT_EQ(2, ItemNo(list.GetCrntItem()));
    EXPECT_EQ(Item(2), list.SetCrntItem(Item(3)));
    EXPECT_EQ(3, ItemNo(list.GetCrntItem()));
    EXPECT_EQ(0, list.SetItemSize(4)); // refused while items are held
}

// Iterator state as the library above this module keeps it.
struct FakeIterator {
    BCIteratorState state;
};
BCIteratorState* FakeAccess(BCIterator* it) {
    return &reinterpret_cast<FakeIterator*>(it)->state;
}

TEST(ListProtocolTest, SwapStateExchangesThePositionWithTheIterator) {
    BCSingleLinkedList list(0, 0);
    for (int i = 1; i <= 3; ++i)
        ASSERT_TRUE(list.Append(Key(i), Item(i)));
    FakeIterator fake{};
    BCIterator* it = reinterpret_cast<BCIterator*>(&fake);
    EXPECT_EQ(0, list.SwapState(it)); // nobody has told the module where the words are

    BCSetIteratorStateAccess(FakeAccess);
    ASSERT_TRUE(list.Home());
    ASSERT_TRUE(list.SwapState(it)); // the iterator's empty position comes in
    EXPECT_EQ(0xFFFFFFFFul, list.GetCrntInd());
    ASSERT_TRUE(list.End());
    ASSERT_TRUE(list.SwapState(it)); // and goes out again with the move
    EXPECT_EQ(0u, list.GetCrntInd());
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(list.GetTail()), fake.state.dwState1);

    BCArrayList array(0, sizeof(int), 0, 0, 4, 0);
    int v = 5;
    ASSERT_TRUE(array.Append(nullptr, &v));
    ASSERT_TRUE(array.Append(nullptr, &v));
    fake.state.dwState2 = 0;
    ASSERT_TRUE(array.SwapState(it));
    EXPECT_EQ(0u, array.GetCrntInd());
    EXPECT_EQ(1u, fake.state.dwState2);
    BCSetIteratorStateAccess(nullptr);
}

TEST(ListRenderingTest, OwnedItemsRenderAsLinesOfText) {
    BCSingleLinkedList list(0, 8);
    BCFormat& text = BCGetTextFormat();
    ASSERT_TRUE(list.IsRenderable(text));
    EXPECT_FALSE(list.IsRenderable(BCGetBitmapFormat()));
    const char source[] = "one\r\ntwo\nlonger-than-eight\r\n";
    ASSERT_EQ(sizeof source - 1, list.SetData(const_cast<char*>(source), sizeof source - 1, text));
    EXPECT_EQ(3u, list.GetCount());
    EXPECT_TRUE(list.IsModified());
    ASSERT_TRUE(list.GoToIndex(2));
    EXPECT_STREQ("longer-", static_cast<char*>(list.GetCrntItem())); // cut to the item size

    const std::string expected = "one\r\ntwo\r\nlonger-\r\n";
    EXPECT_EQ(expected.size() + 1, list.GetLen(text));
    char buffer[64];
    EXPECT_EQ(expected.size() + 1, list.GetData(buffer, sizeof buffer, text));
    EXPECT_EQ(expected, buffer);
    EXPECT_EQ(2u, list.GetCrntInd()); // position kept
    char small[6];
    EXPECT_EQ(6u, list.GetData(small, sizeof small, text));
    EXPECT_STREQ("one\r\n", small);

    // Items of size 0 are not the list's to render.
    BCSingleLinkedList foreign(0, 0);
    EXPECT_FALSE(foreign.IsRenderable(text));
    EXPECT_EQ(0, foreign.SetItemData(const_cast<char*>("x"), 1, text));
}

TEST(ListStreamTest, OwnedItemsSaveWithTheirValueKeys) {
    BCSingleLinkedList list(BC_FLAG_SORTED, 4);
    for (long key : {20L, -3L}) {
        char* item = new char[4];
        std::memcpy(item, key > 0 ? "abc" : "xyz", 4);
        ASSERT_TRUE(list.Insert(Key(key), item));
    }
    std::ostringstream os = OutStream();
    ASSERT_EQ(1, list.Save(os));
    const std::string expected = LE32(87) + LE32(BC_FLAG_SORTED) + LE32(0) + LE32(2) + LE32(4) +
                                 LE32(0xFFFFFFFD) + std::string("xyz", 4) + LE32(20) +
                                 std::string("abc", 4);
    EXPECT_EQ(expected, os.str());

    BCSingleLinkedList loaded(0, 0);
    std::istringstream is = InStream(os.str());
    ASSERT_EQ(1, loaded.Load(is));
    EXPECT_EQ(2u, loaded.GetCount());
    EXPECT_TRUE(loaded.GetFlags() & BC_FLAG_SORTED);
    ASSERT_TRUE(loaded.Home());
    EXPECT_EQ(-3, KeyValue(loaded.GetCrntKey()));
    EXPECT_STREQ("xyz", static_cast<char*>(loaded.GetCrntItem()));
    ASSERT_TRUE(loaded.Next());
    EXPECT_EQ(20, KeyValue(loaded.GetCrntKey()));
}

TEST(ListStreamTest, ShortAndAbsurdRecordsFailAndLeaveTheListUsable) {
    const std::string base = LE32(87) + LE32(0);
    const std::string cases[] = {
        base + LE32(0) + LE32(3) + LE32(4) + LE32(1) + "abcd",          // fewer items than claimed
        base + LE32(0) + LE32(0xFFFFFFFF) + LE32(0xFFFFFFFF) + LE32(1), // absurd item size
        base + LE32(0),                                                 // settings cut short
        LE32(87) + LE32(BC_FLAG_STRING_KEY | BC_FLAG_BLOCK_KEY) + LE32(0) + LE32(0) + LE32(4),
        base + LE32(0) + LE32(1) + LE32(0) + LE32(1), // items not the list's
    };
    for (const std::string& bytes : cases) {
        BCSingleLinkedList list(0, 4);
        std::istringstream is = InStream(bytes);
        EXPECT_EQ(0, list.Load(is));
        char* item = new char[4]{'o', 'k', 0, 0};
        ASSERT_TRUE(list.Append(Key(42), item));
        EXPECT_STREQ("ok", static_cast<char*>(list.Find(Key(42))));
    }
}

} // namespace
