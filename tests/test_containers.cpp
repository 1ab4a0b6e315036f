#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"

namespace {

constexpr unsigned long kNoIndex = 0xFFFFFFFFul;

void* Key(long value) {
    return reinterpret_cast<void*>(static_cast<intptr_t>(value));
}

// Items of size 0 are the caller's: here, pointers into a fixed array of ints.
int g_items[10] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
void* Item(int i) {
    return &g_items[i];
}
int ItemNo(void* item) {
    return item ? *static_cast<int*>(item) : -1;
}

std::vector<int> Forward(BCList& list) {
    std::vector<int> out;
    for (int more = list.Home(); more; more = list.Next())
        out.push_back(ItemNo(list.GetCrntItem()));
    return out;
}

std::vector<int> Backward(BCList& list) {
    std::vector<int> out;
    for (int more = list.End(); more; more = list.Prev())
        out.push_back(ItemNo(list.GetCrntItem()));
    return out;
}

void AddAll(BCList& list, std::initializer_list<int> keys) {
    for (int k : keys)
        ASSERT_TRUE(list.Append(Key(k), Item(k)));
}

// Records what reaches DeleteItem and whether flag 0x0800 was set then; Install can be told
// to refuse.
template <class Base> class Recording : public Base {
  public:
    template <class... Args> explicit Recording(Args... args) : Base(args...) {}
    int DeleteItem(void* key, void* item) override {
        deleted.push_back(ItemNo(item));
        keepFlagSeen.push_back((this->GetFlags() & BC_FLAG_KEEP_ITEMS) != 0);
        return Base::DeleteItem(key, item);
    }
    int Install(void*, void*, int) override { return refuseInstall ? 0 : 1; }
    std::vector<int> deleted;
    std::vector<bool> keepFlagSeen;
    bool refuseInstall = false;
};
using RecordingList = Recording<BCDoubleLinkedList>;

// Two iterators walk the list in opposite directions, interleaved; neither disturbs the
// other nor the list's own current item.
void ExpectIndependentWalks(BCList& list) {
    const std::vector<int> order = Forward(list);
    ASSERT_GE(order.size(), 3u);
    ASSERT_TRUE(list.GoToIndex(2));
    void* listItem = list.GetCrntItem();
    {
        BCIterator a(&list), b(&list);
        EXPECT_EQ(2u, list.GetIterCount());
        EXPECT_EQ(listItem, a.GetCrntItem()); // starts where the list is
        EXPECT_EQ(2u, a.GetCrntInd());
        std::vector<int> forward, backward;
        for (int moreA = a.Home(), moreB = b.End(); moreA || moreB;) {
            if (moreA) {
                forward.push_back(ItemNo(a.GetCrntItem()));
                moreA = a.Next();
            }
            if (moreB) {
                backward.insert(backward.begin(), ItemNo(b.GetCrntItem()));
                moreB = b.Prev();
            }
        }
        EXPECT_EQ(order, forward);
        EXPECT_EQ(order, backward);
        EXPECT_EQ(listItem, list.GetCrntItem());
        EXPECT_EQ(2u, list.GetCrntInd());
    }
    EXPECT_EQ(0u, list.GetIterCount());
}

TEST(IteratorTest, IteratorsWalkEveryKindOfListIndependently) {
    BCDoubleLinkedList linked(0, 0);
    AddAll(linked, {5, 1, 4, 2, 3});
    ExpectIndependentWalks(linked);
    BCHashList hashed(3, 0, 0); // chains of several nodes, so walks cross buckets
    AddAll(hashed, {5, 1, 4, 2, 3, 0, 6});
    ExpectIndependentWalks(hashed);

    // Changes through an iterator happen at its position, not the list's.
    ASSERT_TRUE(linked.Home());
    BCIterator it(&linked);
    ASSERT_TRUE(it.GoToIndex(3));
    ASSERT_TRUE(it.Insert(Key(9), Item(9)));
    EXPECT_EQ(3u, it.GetCrntInd());
    EXPECT_EQ(5, ItemNo(linked.GetCrntItem()));
    EXPECT_EQ((std::vector<int>{5, 1, 4, 9, 2, 3}), Forward(linked));
    EXPECT_EQ(85u, it.GetObjectType());
}

TEST(IteratorTest, ArrayListPositionsAreIndexesThatDeletionDoesNotCorrect) {
    BCArrayList list(0, sizeof(int), 0, sizeof(int), 4, 0);
    for (int v : {10, 20, 30, 40})
        ASSERT_TRUE(list.Append(Key(v), &v));
    ASSERT_TRUE(list.GoToIndex(2));
    BCIterator early(&list), late(&list);
    EXPECT_EQ(2u, early.GetCrntInd());
    ASSERT_TRUE(early.Home());
    ASSERT_TRUE(late.End());
    int* copy = static_cast<int*>(early.GetCrntItem()); // the array list's own copy
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(10, *copy);
    delete[] reinterpret_cast<unsigned char*>(copy);

    ASSERT_TRUE(early.DeleteCrnt());
    EXPECT_EQ(3u, list.GetCount());
    EXPECT_EQ(2u, list.GetCrntInd());
    EXPECT_EQ(3u, late.GetCrntInd());       // not corrected: past the end now
    EXPECT_EQ(nullptr, late.GetCrntItem()); // and nothing is read there
    ASSERT_TRUE(late.End());
    EXPECT_EQ(2u, late.GetCrntInd());
}

TEST(IteratorTest, DelegatesDumpAndPersistenceAndSurvivesANullList) {
    BCSingleLinkedList list(0, 4);
    char* item = new char[4]{'a', 'b', 'c', 0};
    ASSERT_TRUE(list.Append(Key(7), item));
    BCIterator it(&list);
    MsgRecorder recorder;
    list.Display("p: ");
    it.Display("p: ");
    ASSERT_EQ(2u, recorder.Count());
    EXPECT_EQ(recorder.Entries()[0].text, recorder.Entries()[1].text);

    std::ostringstream direct = OutStream(), through = OutStream();
    ASSERT_EQ(1, list.Save(direct));
    ASSERT_EQ(1, it.Save(through));
    EXPECT_EQ(direct.str(), through.str());

    BCIterator none(nullptr);
    EXPECT_EQ(0, none.Home());
    EXPECT_EQ(0, none.Insert(Key(1), Item(1)));
    EXPECT_EQ(nullptr, none.GetCrntItem());
    EXPECT_EQ(kNoIndex, none.GetCrntInd());
}

TEST(DoubleLinkedListTest, InsertGoesInFrontOfCurrentAndBothDirectionsAgree) {
    BCDoubleLinkedList list(0, 0);
    EXPECT_EQ(88u, list.GetObjectType());
    EXPECT_STREQ("BCDoubleLinkedList", list.GetObjectTypeStr());
    EXPECT_EQ(kNoIndex, list.GetCrntInd());
    EXPECT_EQ(0, list.Home());
    EXPECT_EQ(0, list.End());
    EXPECT_EQ(0, list.GoToIndex(0));
    ASSERT_TRUE(list.Insert(Key(1), Item(1))); // no current node: appends
    ASSERT_TRUE(list.Insert(Key(2), Item(2))); // in front of 1
    EXPECT_EQ(2, ItemNo(list.GetCrntItem()));
    EXPECT_EQ(0u, list.GetCrntInd());
    ASSERT_TRUE(list.Append(Key(3), Item(3)));
    ASSERT_TRUE(list.GoToIndex(2));
    ASSERT_TRUE(list.Insert(Key(4), Item(4)));
    EXPECT_EQ(2u, list.GetCrntInd());
    EXPECT_EQ((std::vector<int>{2, 1, 4, 3}), Forward(list));
    EXPECT_EQ((std::vector<int>{3, 4, 1, 2}), Backward(list));

    ASSERT_TRUE(list.End());
    EXPECT_EQ(3u, list.GetCrntInd());
    EXPECT_EQ(0, list.Next());
    EXPECT_EQ(0, list.GoToIndex(4));
    EXPECT_EQ(4, ItemNo(list.Find(Key(4))));
    EXPECT_EQ(nullptr, list.Find(Key(99)));
    EXPECT_EQ(2u, list.GetCrntInd()); // a failed find moves nothing
}

TEST(DoubleLinkedListTest, SortedListsPlaceByKeyAndRelocate) {
    BCDoubleLinkedList list(BC_FLAG_SORTED, 0);
    AddAll(list, {3, 1, 2});
    ASSERT_TRUE(list.Insert(Key(2), Item(5))); // equal keys go after
    EXPECT_EQ((std::vector<int>{1, 2, 5, 3}), Forward(list));
    ASSERT_TRUE(list.Relocate(Key(9), Key(1), nullptr));
    EXPECT_EQ((std::vector<int>{2, 5, 3, 1}), Forward(list));
    EXPECT_EQ(Key(9), list.GetTail()->lpKey);
    EXPECT_EQ((std::vector<int>{1, 3, 5, 2}), Backward(list));
    EXPECT_EQ(0, list.Relocate(Key(8), Key(7), nullptr));

    BCDoubleLinkedList unsorted(0, 0);
    AddAll(unsorted, {1, 2});
    EXPECT_EQ(1, unsorted.Relocate(Key(0), Key(2), nullptr)); // nothing moves
    EXPECT_EQ((std::vector<int>{1, 2}), Forward(unsorted));

    // A node that Install refuses on relocation is dropped, its item left alone.
    RecordingList refusing(BC_FLAG_SORTED, 0u);
    AddAll(refusing, {1, 2, 3});
    refusing.refuseInstall = true;
    EXPECT_EQ(0, refusing.Relocate(Key(0), Key(2), nullptr));
    EXPECT_EQ((std::vector<int>{1, 3}), Forward(refusing));
    EXPECT_EQ((std::vector<int>{3, 1}), Backward(refusing));
    EXPECT_TRUE(refusing.deleted.empty());
}

TEST(DoubleLinkedListTest, DeletionAndClearing) {
    RecordingList list(0u, 0u);
    AddAll(list, {1, 2, 3, 4});
    ASSERT_TRUE(list.GoToIndex(1));
    ASSERT_TRUE(list.DeleteCrnt()); // the successor becomes current
    EXPECT_EQ(3, ItemNo(list.GetCrntItem()));
    ASSERT_TRUE(list.End());
    ASSERT_TRUE(list.DeleteCrnt()); // the last: its predecessor
    EXPECT_EQ(3, ItemNo(list.GetCrntItem()));
    EXPECT_EQ((std::vector<int>{3, 1}), Backward(list));

    ASSERT_TRUE(list.Home());
    ASSERT_TRUE(list.Delete(Key(3))); // another node: current stays
    EXPECT_EQ(1, ItemNo(list.GetCrntItem()));
    ASSERT_TRUE(list.Delete(Key(1))); // the current node: none is left current
    EXPECT_EQ(nullptr, list.GetCrntItem());
    EXPECT_EQ(kNoIndex, list.GetCrntInd());
    EXPECT_EQ(0, list.Next());
    EXPECT_EQ(0, list.Delete(Key(1)));
    EXPECT_EQ((std::vector<int>{2, 4, 3, 1}), list.deleted);
    EXPECT_EQ(0u, list.GetCount());
    EXPECT_EQ(nullptr, list.GetHead());
    EXPECT_EQ(nullptr, list.GetTail());

    AddAll(list, {5, 6});
    list.deleted.clear();
    list.keepFlagSeen.clear();
    EXPECT_EQ(1, list.Clear(0));
    EXPECT_EQ((std::vector<int>{5, 6}), list.deleted);
    EXPECT_EQ((std::vector<bool>{true, true}), list.keepFlagSeen);
    EXPECT_FALSE(list.GetFlags() & BC_FLAG_KEEP_ITEMS);
    list.SetFlags(BC_FLAG_KEEP_ITEMS, 1);
    AddAll(list, {7});
    list.keepFlagSeen.clear();
    EXPECT_EQ(1, list.Clear(1));
    EXPECT_EQ((std::vector<bool>{false}), list.keepFlagSeen);
    EXPECT_TRUE(list.GetFlags() & BC_FLAG_KEEP_ITEMS);
    EXPECT_EQ(0, list.Home());
}

// The list keeps the common list record; loading appends each item again.
TEST(DoubleLinkedListTest, OwnedItemsRoundTripThroughAStream) {
    BCDoubleLinkedList list(0, 4);
    for (const char* text : {"two", "neg"})
        ASSERT_TRUE(list.Append(Key(text[0]), std::strcpy(new char[4], text)));
    std::ostringstream os = OutStream();
    ASSERT_EQ(1, list.Save(os));
    EXPECT_EQ(LE32(88), os.str().substr(0, 4));
    BCDoubleLinkedList loaded(0, 0);
    std::istringstream is = InStream(os.str());
    ASSERT_EQ(1, loaded.Load(is));
    EXPECT_STREQ("two", static_cast<char*>(loaded.Find(Key('t'))));
    ASSERT_TRUE(loaded.End());
    EXPECT_STREQ("neg", static_cast<char*>(loaded.GetCrntItem()));
}

TEST(HashListTest, KeysLandInTheirBuckets) {
    BCHashList strings(10, BC_FLAG_STRING_KEY, 0);
    EXPECT_EQ(85u, strings.GetObjectType());
    char ab[] = "ab", high[] = "a\xC8"; // 97 + (-56): bytes above 127 subtract
    EXPECT_EQ((97u + 98u) % 10, strings.Hash(ab));
    EXPECT_EQ(41u % 10, strings.Hash(high));
    ASSERT_TRUE(strings.Insert(ab, Item(1)));
    EXPECT_EQ(5u, strings.GetCrntBucket());
    EXPECT_EQ(Item(1), strings.GetBucketHead(5)->lpItem);
    char probe[] = "ab";
    EXPECT_EQ(1, ItemNo(strings.Find(probe))); // by contents, not address

    BCHashList values(1000, 0, 0);
    EXPECT_EQ(0x5678u % 1000, values.Hash(Key(0x12345678)));
    ASSERT_TRUE(values.Append(Key(0x12345678), Item(2)));
    EXPECT_EQ(0x5678u % 1000, values.GetCrntBucket());

    BCHashList none(0, 0, 0); // nowhere to put anything
    EXPECT_EQ(0u, none.Hash(Key(5)));
    EXPECT_EQ(0, none.Insert(Key(1), Item(1)));
    EXPECT_EQ(0, none.Append(Key(1), Item(1)));
    EXPECT_EQ(0, none.Home());
    EXPECT_EQ(0, none.End());
    EXPECT_EQ(0, none.GoToItem(Key(1)));
    EXPECT_EQ(kNoIndex, none.GetCrntInd());
    EXPECT_EQ(1, none.Clear(1));
}

TEST(HashListTest, IterationGoesBucketByBucketInChainOrder) {
    BCHashList list(4, 0, 0);
    AddAll(list, {6, 1, 2, 5, 9, 4}); // 0: 4 | 1: 1 5 9 | 2: 6 2 | 3: empty
    EXPECT_EQ((std::vector<int>{4, 1, 5, 9, 6, 2}), Forward(list));
    EXPECT_EQ((std::vector<int>{2, 6, 9, 5, 1, 4}), Backward(list));
    for (unsigned i = 0; i < 6; ++i) {
        ASSERT_TRUE(list.GoToIndex(i));
        EXPECT_EQ(i, list.GetCrntInd());
    }
    EXPECT_EQ(0, list.GoToIndex(6));

    BCHashList sorted(4, BC_FLAG_SORTED, 0);
    AddAll(sorted, {9, 1, 5});
    ASSERT_TRUE(sorted.Insert(Key(5), Item(8))); // equal keys go after
    EXPECT_EQ((std::vector<int>{1, 5, 8, 9}), Forward(sorted));
}

TEST(HashListTest, RemovalRelocationAndClearing) {
    Recording<BCHashList> list(4u, 0u, 0u);
    AddAll(list, {1, 5, 2});
    ASSERT_TRUE(list.GoToItem(Key(5)));
    ASSERT_TRUE(list.DeleteCrnt()); // no node becomes current
    EXPECT_EQ(kNoIndex, list.GetCrntInd());
    EXPECT_EQ(0, list.Next());
    EXPECT_EQ(0, list.DeleteCrnt());
    EXPECT_EQ((std::vector<int>{1, 2}), Forward(list));

    // Relocation moves the node to its new key's bucket, sorted or not.
    ASSERT_TRUE(list.Relocate(Key(7), Key(1), nullptr));
    EXPECT_EQ(3u, list.GetCrntBucket());
    EXPECT_EQ((std::vector<int>{2, 1}), Forward(list));
    EXPECT_EQ(nullptr, list.Find(Key(1)));
    EXPECT_EQ(1, ItemNo(list.Find(Key(7))));
    EXPECT_EQ(0, list.Relocate(Key(8), Key(9), nullptr));
    list.refuseInstall = true;
    EXPECT_EQ(0, list.Relocate(Key(6), Key(7), nullptr)); // dropped, item left alone
    EXPECT_EQ((std::vector<int>{2}), Forward(list));
    list.refuseInstall = false;

    ASSERT_TRUE(list.GoToItem(Key(2)));
    ASSERT_TRUE(list.Delete(Key(2)));
    EXPECT_EQ(0, list.Delete(Key(2)));
    EXPECT_EQ((std::vector<int>{5, 2}), list.deleted);
    EXPECT_EQ(kNoIndex, list.GetCrntInd());

    AddAll(list, {3, 4});
    list.keepFlagSeen.clear();
    EXPECT_EQ(1, list.Clear(0));
    EXPECT_EQ((std::vector<bool>{true, true}), list.keepFlagSeen);
    EXPECT_FALSE(list.GetFlags() & BC_FLAG_KEEP_ITEMS);
    EXPECT_EQ(0u, list.GetCount());
    EXPECT_EQ(0, list.Home());
}

TEST(HashListTest, DownwardWalksStopAtBucket0xFFFF) {
    BCHashList list(70000, BC_FLAG_STRING_KEY, 0);
    char low[] = "d";           // bucket 100
    std::string high(541, 'z'); // 541 * 122 = bucket 66002
    ASSERT_TRUE(list.Insert(low, Item(1)));
    ASSERT_TRUE(list.Insert(&high[0], Item(2)));
    EXPECT_EQ(66002u, list.GetCrntBucket());
    EXPECT_EQ((std::vector<int>{1, 2}), Forward(list));
    ASSERT_TRUE(list.End());
    EXPECT_EQ(2, ItemNo(list.GetCrntItem()));
    EXPECT_EQ(0, list.Prev()); // bucket 100 lies beyond the sentinel
    ASSERT_TRUE(list.Delete(&high[0]));
    EXPECT_EQ(0, list.End());
    EXPECT_EQ(1, list.Home());
}

TEST(HashListStreamTest, RecordsLoadIntoAnyBucketCountAndCorruptOnesFail) {
    BCHashList list(8, 0, 4);
    for (long key : {3L, 11L}) {
        char* item = new char[4];
        std::memcpy(item, key == 3 ? "abc" : "xyz", 4);
        ASSERT_TRUE(list.Insert(Key(key), item));
    }
    std::ostringstream os = OutStream();
    ASSERT_EQ(1, list.Save(os));
    const std::string header = LE32(85) + LE32(0) + LE32(8) + LE32(2) + LE32(4);
    const std::string items = LE32(3) + std::string("abc", 4) + LE32(11) + std::string("xyz", 4);
    EXPECT_EQ(header + items, os.str());

    BCHashList loaded(5, 0, 0);
    std::istringstream is = InStream(os.str());
    ASSERT_EQ(1, loaded.Load(is));
    EXPECT_EQ(5u, loaded.GetLength()); // its own buckets
    EXPECT_STREQ("xyz", static_cast<char*>(loaded.Find(Key(11))));
    EXPECT_EQ(1u, loaded.GetCrntBucket());
    EXPECT_EQ(0, loaded.SetLen(9));
    EXPECT_EQ(5u, loaded.GetLength());

    const std::string cases[] = {
        LE32(85) + LE32(0) + LE32(0xFFFFFFFF) + LE32(2) + LE32(4) + LE32(3) + "abc",  // cut short
        LE32(85) + LE32(0) + LE32(8) + LE32(0xFFFFFFFF) + LE32(0xFFFFFFF0) + LE32(1), // absurd
        LE32(88) + header.substr(4) + items, // another class's record
        LE32(85) + LE32(0),
    };
    for (const std::string& bytes : cases) {
        BCHashList target(8, 0, 4);
        std::istringstream in = InStream(bytes);
        EXPECT_EQ(0, target.Load(in));
        EXPECT_EQ(8u, target.GetLength());
        char* item = new char[4]{'o', 'k', 0, 0};
        ASSERT_TRUE(target.Insert(Key(42), item));
        EXPECT_STREQ("ok", static_cast<char*>(target.Find(Key(42))));
    }
}

TEST(ContainersTest, HundredThousandItemsStayUsable) {
    const unsigned n = 100000;
    BCDoubleLinkedList linked(0, 0);
    BCHashList hashed(4096, 0, 0);
    for (unsigned i = 0; i < n; ++i) {
        ASSERT_TRUE(linked.Append(Key(i), Item(i % 10)));
        ASSERT_TRUE(hashed.Insert(Key(i), Item(i % 10)));
    }
    ASSERT_TRUE(linked.GoToIndex(n - 1));
    EXPECT_EQ(n - 1, linked.GetCrntInd());
    unsigned long visited = 0;
    for (int more = hashed.Home(); more; more = hashed.Next())
        ++visited;
    EXPECT_EQ(n, visited);
    for (unsigned i = 0; i < n; i += 7)
        ASSERT_TRUE(hashed.GoToItem(Key(i)));
    BCIterator it(&hashed);
    ASSERT_TRUE(it.End());
    EXPECT_EQ(n - 1, it.GetCrntInd());
    ASSERT_TRUE(linked.Home());
    while (linked.DeleteCrnt())
        ;
    EXPECT_EQ(0u, linked.GetCount());
}

TEST(StackQueueTest, PopAndOutFollowTheirDisciplines) {
    BCStackList stack;
    BCQueueList queue;
    EXPECT_EQ(89u, stack.GetObjectType());
    EXPECT_EQ(90u, queue.GetObjectType());
    EXPECT_EQ(nullptr, stack.Pop());
    EXPECT_EQ(nullptr, queue.Out());
    for (int i : {1, 2, 3}) {
        stack.Push(Key(i), Item(i));
        queue.In(Key(i), Item(i));
    }
    std::vector<int> popped, out;
    for (int i = 0; i < 3; ++i) {
        popped.push_back(ItemNo(stack.Pop()));
        out.push_back(ItemNo(queue.Out()));
    }
    EXPECT_EQ((std::vector<int>{3, 2, 1}), popped);
    EXPECT_EQ((std::vector<int>{1, 2, 3}), out);
    EXPECT_EQ(nullptr, stack.Pop());
    EXPECT_EQ(0u, stack.GetCount());
    EXPECT_EQ(nullptr, queue.Out());
}

TEST(StackQueueTest, PopRemovesTheFirstEqualKeyAndFollowsTheCurrentNode) {
    BCStackList stack;
    stack.Push(Key(7), Item(1));
    stack.Push(Key(7), Item(2));
    EXPECT_EQ(2, ItemNo(stack.Pop())); // the newer item comes back...
    ASSERT_EQ(1u, stack.GetCount());
    EXPECT_EQ(2, ItemNo(stack.GetHead()->lpItem)); // ...but the older node went
    EXPECT_EQ(2, ItemNo(stack.Pop()));

    for (int i : {1, 2, 3})
        stack.Push(Key(i), Item(i));
    ASSERT_TRUE(stack.Home());
    EXPECT_EQ(1, ItemNo(stack.Pop())); // the node moved to
    EXPECT_EQ(3, ItemNo(stack.Pop()));
}

} // namespace
