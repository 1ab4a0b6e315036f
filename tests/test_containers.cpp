// What the iterator, the double-linked, hash, stack and queue lists do beyond the protocol
// that every list keeps (test_lists).
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"

namespace {

[[maybe_unused]] const bool g_neverWait = NeverWaitOnFaults();

// Items of size 0 are the caller's: here, pointers into a fixed array of ints.
int g_items[10] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
int ItemNo(void* item) {
    return item ? *static_cast<int*>(item) : -1;
}

std::vector<int> Walk(BCList& list, bool backward = false) {
    std::vector<int> out;
    for (int more = backward ? list.End() : list.Home(); more;
         more = backward ? list.Prev() : list.Next())
        out.push_back(ItemNo(list.GetCrntItem()));
    return out;
}

void AddAll(BCList& list, std::initializer_list<int> keys) {
    for (int k : keys)
        ASSERT_TRUE(list.Append(Key(k), &g_items[k]));
}

// Install can be told to refuse; DeleteItem calls are counted.
template <class Base> class Refusing : public Base {
  public:
    template <class... Args> explicit Refusing(Args... args) : Base(args...) {}
    int Install(void*, void*, int) override { return refuse ? 0 : 1; }
    int DeleteItem(void* key, void* item) override {
        return ++deleted, Base::DeleteItem(key, item);
    }
    bool refuse = false;
    int deleted = 0;
};

// Two iterators walk the list in opposite directions, interleaved; neither disturbs the
// other nor the list's own current item, and each starts where the list is.
void ExpectIndependentWalks(BCList& list) {
    const std::vector<int> order = Walk(list);
    ASSERT_TRUE(list.GoToIndex(2));
    BCIterator a(&list), b(&list);
    EXPECT_EQ(list.GetCrntItem(), a.GetCrntItem());
    std::vector<int> forward, backward;
    for (int moreA = a.Home(), moreB = b.End(); moreA || moreB;) {
        if (moreA && (forward.push_back(ItemNo(a.GetCrntItem())), true))
            moreA = a.Next();
        if (moreB && (backward.insert(backward.begin(), ItemNo(b.GetCrntItem())), true))
            moreB = b.Prev();
    }
    EXPECT_EQ(order, forward);
    EXPECT_EQ(order, backward);
    EXPECT_EQ(2u, list.GetCrntInd());
}

TEST(IteratorTest, IteratorsWalkIndependentlyAndChangeAtTheirOwnPosition) {
    BCDoubleLinkedList linked(0, 0);
    AddAll(linked, {5, 1, 4, 2, 3});
    ExpectIndependentWalks(linked);
    BCHashList hashed(3, 0, 0); // chains of several nodes, so walks cross buckets
    AddAll(hashed, {5, 1, 4, 2, 3, 0, 6});
    ExpectIndependentWalks(hashed);

    ASSERT_TRUE(linked.Home());
    BCIterator it(&linked), none(nullptr);
    EXPECT_EQ(85u, it.GetObjectType());
    ASSERT_TRUE(it.GoToIndex(3) && it.Insert(Key(9), &g_items[9]));
    EXPECT_EQ(Nums(3, 5), Nums(it.GetCrntInd(), ItemNo(linked.GetCrntItem())));
    EXPECT_EQ((std::vector<int>{5, 1, 4, 9, 2, 3}), Walk(linked));
    EXPECT_TRUE(!none.Home() && !none.Insert(Key(1), &g_items[1]) &&
                none.GetCrntInd() == 0xFFFFFFFFul); // an iterator of no list
}

TEST(IteratorTest, ArrayIndexesAreNotCorrectedAndDumpAndRecordAreTheLists) {
    BCArrayList list(0, sizeof(int), 0, sizeof(int), 4, 0);
    for (int v : {10, 20, 30, 40})
        ASSERT_TRUE(list.Append(Key(v), &v));
    BCIterator early(&list), late(&list);
    ASSERT_TRUE(early.Home() && late.End() && early.DeleteCrnt());
    EXPECT_EQ(3u, late.GetCrntInd());       // past the end now
    EXPECT_EQ(nullptr, late.GetCrntItem()); // and nothing is read there
    EXPECT_EQ(SavedBytes(list), SavedBytes(late));
    MsgRecorder recorder;
    list.Display("p: ");
    const std::string dump = recorder.Texts();
    late.Display("p: ");
    EXPECT_EQ(dump + dump, recorder.Texts());
}

TEST(DoubleLinkedListTest, InsertWithoutCurrentAppendsAndLinksStayTwoWay) {
    BCDoubleLinkedList list(0, 0);
    AddAll(list, {1, 2, 3});
    // Deleting the current node leaves none current; deleting another keeps it.
    ASSERT_TRUE(list.Delete(Key(3)) && list.Insert(Key(4), &g_items[4]) && list.Home() &&
                list.Delete(Key(2)));
    EXPECT_EQ(1, ItemNo(list.GetCrntItem()));
    EXPECT_EQ((std::vector<int>{1, 4}), Walk(list));
    EXPECT_EQ((std::vector<int>{4, 1}), Walk(list, true));
}

TEST(DoubleLinkedListTest, SortedListsRelocateAndDropWhatInstallRefuses) {
    Refusing<BCDoubleLinkedList> list(BC_FLAG_SORTED, 0u);
    AddAll(list, {3, 1, 2});
    ASSERT_TRUE(list.Relocate(Key(9), Key(1), nullptr));
    EXPECT_EQ((std::vector<int>{1, 3, 2}), Walk(list, true));
    EXPECT_EQ(Key(9), list.GetTail()->lpKey);
    EXPECT_EQ(0, list.Relocate(Key(8), Key(7), nullptr));
    list.refuse = true;
    EXPECT_EQ(0, list.Relocate(Key(0), Key(3), nullptr)); // dropped, item left alone
    EXPECT_EQ(0, list.deleted);
    EXPECT_EQ((std::vector<int>{2, 1}), Walk(list));
    EXPECT_EQ((std::vector<int>{1, 2}), Walk(list, true));
    BCDoubleLinkedList unsorted(0, 0);
    AddAll(unsorted, {1, 2});
    EXPECT_EQ(1, unsorted.Relocate(Key(0), Key(2), nullptr)); // nothing moves
    EXPECT_EQ((std::vector<int>{1, 2}), Walk(unsorted));
}

TEST(HashListTest, KeysLandInTheirBucketsAndDownwardWalksStopAt0xFFFF) {
    BCHashList strings(10, BC_FLAG_STRING_KEY, 0), values(1000, 0, 0), none(0, 0, 0);
    char ab[] = "ab", high[] = "a\xC8"; // 97 + (-56): bytes above 127 subtract
    EXPECT_EQ(Nums((97 + 98) % 10, 41 % 10, 0x5678 % 1000, 0), // none: nowhere to put anything
              Nums(strings.Hash(ab), strings.Hash(high), values.Hash(Key(0x12345678)),
                   none.Hash(Key(5))));
    ASSERT_TRUE(strings.Insert(ab, &g_items[1]));
    EXPECT_EQ(&g_items[1], strings.GetBucketHead(5)->lpItem);
    ASSERT_TRUE(values.Append(Key(0x12345678), &g_items[2]));
    EXPECT_EQ(0x5678u % 1000, values.GetCrntBucket());
    for (int result : {none.Insert(Key(1), &g_items[1]), none.Append(Key(1), &g_items[1]),
                       none.Home(), none.End(), none.GoToIndex(0), none.GoToItem(Key(1))})
        EXPECT_EQ(0, result);
    EXPECT_EQ(1, none.Clear(1));
}

TEST(HashListTest, IterationGoesBucketByBucketAndRelocationFollowsTheKey) {
    Refusing<BCHashList> list(4u, 0u, 0u);
    AddAll(list, {6, 1, 2, 5, 9, 4}); // 0: 4 | 1: 1 5 9 | 2: 6 2 | 3: empty
    EXPECT_EQ((std::vector<int>{4, 1, 5, 9, 6, 2}), Walk(list));
    EXPECT_EQ((std::vector<int>{2, 6, 9, 5, 1, 4}), Walk(list, true));
    for (unsigned i = 0; i < 6; ++i) {
        ASSERT_TRUE(list.GoToIndex(i));
        EXPECT_EQ(i, list.GetCrntInd());
    }
    EXPECT_EQ(0, list.GoToIndex(6));
    ASSERT_TRUE(list.Relocate(Key(7), Key(1), nullptr)); // unsorted, too
    EXPECT_EQ(3u, list.GetCrntBucket());
    EXPECT_EQ((std::vector<int>{4, 5, 9, 6, 2, 1}), Walk(list));
    EXPECT_EQ(0, list.Relocate(Key(8), Key(3), nullptr));
    list.refuse = true;
    EXPECT_EQ(0, list.Relocate(Key(11), Key(7), nullptr)); // dropped, item left alone
    EXPECT_TRUE(!list.Find(Key(11)) && list.GetCount() == 5u && list.deleted == 0);
}

TEST(HashListTest, DownwardWalksStopAtBucket0xFFFF) {
    BCHashList list(70000, BC_FLAG_STRING_KEY, 0);
    char low[] = "d";           // bucket 100
    std::string high(541, 'z'); // 541 * 122 = bucket 66002
    ASSERT_TRUE(list.Insert(low, &g_items[1]) && list.Insert(&high[0], &g_items[2]));
    EXPECT_EQ((std::vector<int>{1, 2}), Walk(list));
    EXPECT_TRUE(list.End() && !list.Prev()); // bucket 100 lies beyond the sentinel
    EXPECT_TRUE(list.Delete(&high[0]) && !list.End());
}

TEST(HashListTest, RecordsLoadIntoTheListsOwnBucketsAndItGrowsLarge) {
    BCHashList list(8, 0, 4), loaded(5, 0, 0);
    ASSERT_TRUE(list.Insert(Key(11), std::strcpy(new char[4], "xyz")));
    ASSERT_EQ(1, LoadFrom(loaded, SavedBytes(list)));
    EXPECT_STREQ("xyz", static_cast<char*>(loaded.Find(Key(11))));
    EXPECT_EQ(Nums(5, 1, 0), Nums(loaded.GetLength(), loaded.GetCrntBucket(), loaded.SetLen(9)));

    const unsigned n = 100000;
    BCHashList big(4096, 0, 0);
    for (unsigned i = 0; i < n; ++i)
        ASSERT_TRUE(big.Insert(Key(i), &g_items[i % 10]));
    EXPECT_EQ(n, Walk(big).size());
    BCIterator it(&big);
    EXPECT_TRUE(it.End() && it.GetCrntInd() == n - 1);
}

TEST(StackQueueTest, PopAndOutFollowTheirDisciplinesAndPopTheFirstEqualKey) {
    BCStackList stack;
    BCQueueList queue;
    for (int i : {1, 2, 3}) {
        stack.Push(Key(i), &g_items[i]);
        queue.In(Key(i), &g_items[i]);
    }
    std::vector<int> popped, out;
    for (int i = 0; i < 4; ++i) {
        popped.push_back(ItemNo(stack.Pop()));
        out.push_back(ItemNo(queue.Out()));
    }
    EXPECT_EQ((std::vector<int>{3, 2, 1, -1}), popped); // empty: null, nothing changes
    EXPECT_EQ((std::vector<int>{1, 2, 3, -1}), out);
    EXPECT_EQ(0u, stack.GetCount() + queue.GetCount());
    // Pop removes the first equal key and follows the current node.
    stack.Push(Key(7), &g_items[1]);
    stack.Push(Key(7), &g_items[2]);
    EXPECT_EQ(2, ItemNo(stack.Pop()));             // the newer item comes back...
    EXPECT_EQ(2, ItemNo(stack.GetHead()->lpItem)); // ...but the older node went
    EXPECT_EQ(2, ItemNo(stack.Pop()));
    for (int i : {1, 2, 3})
        stack.Push(Key(i), &g_items[i]);
    ASSERT_TRUE(stack.Home());
    const int moved = ItemNo(stack.Pop()); // the node moved to
    EXPECT_EQ(Nums(1, 3), Nums(moved, ItemNo(stack.Pop())));
}

} // namespace
