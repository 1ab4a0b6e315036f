// The list protocol, run over every list kind; then what each kind does beyond it.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"

namespace {

[[maybe_unused]] const bool g_neverWait = NeverWaitOnFaults();

constexpr unsigned long kNone = 0xFFFFFFFFul;

// Items of size 0 are the caller's: pointers into this array.
int g_values[10] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};

int ItemNo(void* item) {
    return item ? *static_cast<int*>(item) : -1;
}

// Array items are {value, key}: the key lies at offset 4.
struct Pair {
    int value, key;
};

// What the typed cases need to know of each kind. The stack and queue hold the caller's items
// (size 0), are never sorted and never saved.
template <class L, unsigned Type, bool Owns = true> struct Kind {
    using List = L;
    static constexpr unsigned kType = Type;
    static constexpr bool kOwns = Owns, kArray = std::is_same<L, BCArrayList>::value;
    static constexpr bool kHash = std::is_same<L, BCHashList>::value;
    template <class T = L> static T* Make(unsigned flags) {
        if constexpr (kArray)
            return new T(0, sizeof(Pair), 4, sizeof(int), 4, flags);
        else if constexpr (kHash)
            return new T(16, flags, sizeof(int));
        else if constexpr (Owns)
            return new T(flags, sizeof(int));
        else
            return new T();
    }
    // The key a search asks for to land on `key`: an array list finds the first key above.
    static void* Probe(long key) { return Key(kArray ? key - 1 : key); }
};
using ArrayKind = Kind<BCArrayList, 86>;
using StackKind = Kind<BCStackList, 89, false>;
using Kinds =
    ::testing::Types<ArrayKind, Kind<BCSingleLinkedList, 87>, Kind<BCDoubleLinkedList, 88>,
                     Kind<BCHashList, 85>, StackKind, Kind<BCQueueList, 90, false>>;

void* NewInt(int value) {
    return std::memcpy(new char[sizeof(int)], &value, sizeof(int));
}

template <class K> int Add(BCList& list, long key, int value, bool insert = false) {
    Pair pair{value, static_cast<int>(key)};
    void* item = K::kArray  ? static_cast<void*>(&pair)
                 : K::kOwns ? NewInt(value)
                            : &g_values[value];
    int ok = insert ? list.Insert(Key(key), item) : list.Append(Key(key), item);
    if (!ok && !K::kArray && K::kOwns)
        delete[] static_cast<char*>(item);
    return ok;
}

template <class K> void Fill(BCList& list, std::initializer_list<int> keys) {
    for (int k : keys)
        ASSERT_TRUE(Add<K>(list, k, k));
}

// The current item's value; -1 without one. Array lists hand out copies.
template <class K> int Value(BCList& list) {
    void* item = list.GetCrntItem();
    const int value = K::kArray && item ? static_cast<Pair*>(item)->value : ItemNo(item);
    if (K::kArray)
        delete[] static_cast<unsigned char*>(item);
    return value;
}

template <class K> std::vector<int> Values(BCList& list, bool backward = false) {
    std::vector<int> out;
    for (int more = backward ? list.End() : list.Home(); more;
         more = backward ? list.Prev() : list.Next())
        out.push_back(Value<K>(list));
    return out;
}

std::vector<int> Walk(BCList& list, bool backward = false) {
    return Values<StackKind>(list, backward);
}

// Install can be told to refuse; records whether flag 0x0800 was set at each DeleteItem.
template <class Base> class Hooked : public Base {
  public:
    template <class... Args> explicit Hooked(Args... args) : Base(args...) {}
    int Install(void* key, void* item, int inserted) override {
        return refuse ? 0 : Base::Install(key, item, inserted);
    }
    int DeleteItem(void* key, void* item) override {
        keepFlagSeen.push_back((this->GetFlags() & BC_FLAG_KEEP_ITEMS) != 0);
        return Base::DeleteItem(key, item);
    }
    bool refuse = false;
    std::vector<bool> keepFlagSeen;
};

template <class Base> struct BlockKeyed : Base {
    template <class... Args> explicit BlockKeyed(Args... args) : Base(args...) {
        this->dwKeySize = 3;
    }
};

template <class K> class ListProtocolTest : public ::testing::Test {
  protected:
    std::unique_ptr<typename K::List> list{K::Make(0)};
};
TYPED_TEST_SUITE(ListProtocolTest, Kinds);

TYPED_TEST(ListProtocolTest, WalksIndexesAndSearchesAgree) {
    BCList& list = *this->list;
    EXPECT_TRUE(list.GetObjectType() == TypeParam::kType && !list.GetCrntKey());
    for (int result : {list.Home(), list.End(), list.Next(), list.Prev(), list.DeleteCrnt(),
                       list.GoToIndex(0), list.GoToItem(Key(1)), list.Delete(Key(1))})
        EXPECT_EQ(0, result); // nothing to move to
    Fill<TypeParam>(*this->list, {1, 2, 3, 4, 5});
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5}), Values<TypeParam>(list));
    EXPECT_EQ((std::vector<int>{5, 4, 3, 2, 1}), Values<TypeParam>(list, true));
    for (unsigned i = 0; i < 5; ++i) {
        ASSERT_EQ(1, list.GoToIndex(i));
        EXPECT_TRUE(list.GetCrntInd() == i && list.GetCrntKey() == Key(i + 1)) << i;
        void* found = list.Find(TypeParam::Probe(i + 1));
        ASSERT_NE(nullptr, found);
        if (TypeParam::kArray)
            delete[] static_cast<unsigned char*>(found);
        EXPECT_EQ(static_cast<int>(i + 1), Value<TypeParam>(list));
    }
    // A failed search keeps the position.
    EXPECT_TRUE(!list.Find(TypeParam::Probe(9)) && list.GetCrntInd() == 4u && !list.Next());
    EXPECT_EQ((Seq{1, 1, 1, 1, 0}),
              (Seq{list.Prev(), list.Next(), list.End(), list.Home(), list.Prev()}));
    EXPECT_EQ(TypeParam::kArray ? 1 : 0, list.GoToIndex(5)); // arrays do not check indexes
}

// Unsorted: in front of the current item (a hash list: at the end of the key's chain);
// sorted: by key, after equal keys. The new item becomes current.
TYPED_TEST(ListProtocolTest, InsertPlacesTheNewItemAndMakesItCurrent) {
    Fill<TypeParam>(*this->list, {1, 2, 3});
    BCList& list = *this->list;
    ASSERT_TRUE(list.GoToIndex(1) && Add<TypeParam>(list, 9, 9, true));
    EXPECT_EQ(Nums(9, TypeParam::kHash ? 3 : 1), Nums(Value<TypeParam>(list), list.GetCrntInd()));
    using V = std::vector<int>;
    EXPECT_EQ((TypeParam::kHash ? V{1, 2, 3, 9} : V{1, 9, 2, 3}), Values<TypeParam>(list));
    if constexpr (TypeParam::kOwns) {
        std::unique_ptr<BCList> sorted(TypeParam::Make(BC_FLAG_SORTED));
        Fill<TypeParam>(*sorted, {3, 1, 2});
        ASSERT_TRUE(Add<TypeParam>(*sorted, 2, 5, true) && Add<TypeParam>(*sorted, -4, 6) &&
                    Add<TypeParam>(*sorted, -4, 7)); // after an equal head, too
        EXPECT_EQ(7, Value<TypeParam>(*sorted));
        // The hash list's buckets follow the keys, except -4, whose low bits land last.
        EXPECT_EQ((TypeParam::kHash ? V{1, 2, 5, 3, 6, 7} : V{6, 7, 1, 2, 5, 3}),
                  Values<TypeParam>(*sorted));
    }
}

TYPED_TEST(ListProtocolTest, DeletingMovesOnOrLeavesNoCurrentItem) {
    Fill<TypeParam>(*this->list, {1, 2, 3, 4});
    BCList& list = *this->list;
    // The successor, or the predecessor at the end; a hash list keeps none.
    const int next = TypeParam::kHash ? -1 : 3;
    ASSERT_TRUE(list.GoToIndex(1) && list.DeleteCrnt() == 1);
    EXPECT_EQ(next, Value<TypeParam>(list));
    ASSERT_TRUE(list.End() && list.DeleteCrnt());
    EXPECT_EQ(next, Value<TypeParam>(list));
    ASSERT_EQ(1, list.Delete(TypeParam::Probe(1)));
    EXPECT_TRUE(Values<TypeParam>(list) == std::vector<int>{3} &&
                !list.Delete(TypeParam::Probe(7)));
}

TYPED_TEST(ListProtocolTest, ClearLetsDeleteItemFreeOnlyWhenAsked) {
    if constexpr (!TypeParam::kArray) {
        auto* list = TypeParam::template Make<Hooked<typename TypeParam::List>>(0);
        std::unique_ptr<BCList> owner(list);
        Fill<TypeParam>(*list, {1, 2});
        EXPECT_TRUE(list->Clear(0) == 1 && list->keepFlagSeen == (std::vector<bool>{true, true}));
        EXPECT_FALSE((list->GetFlags() & BC_FLAG_KEEP_ITEMS) || list->GetCount() || list->Home());
        list->SetFlags(BC_FLAG_KEEP_ITEMS, 1);
        list->keepFlagSeen.clear();
        ASSERT_TRUE(Add<TypeParam>(*list, 3, 3));
        EXPECT_TRUE(list->Clear(1) == 1 && list->keepFlagSeen == std::vector<bool>{false} &&
                    (list->GetFlags() & BC_FLAG_KEEP_ITEMS));
    }
}

// Saving and measuring (as rendering) walk the list; the position they found must survive.
TYPED_TEST(ListProtocolTest, SaveLengthAndRenderingKeepThePosition) {
    if constexpr (TypeParam::kOwns) {
        const std::function<void(BCList&)> walks[] = {
            [](BCList& l) { RecordOf(l); }, [](BCList& l) { l.GetLen(BCGetTextFormat()); }};
        for (const auto& walk : walks) {
            std::unique_ptr<BCList> list(TypeParam::Make(0));
            Fill<TypeParam>(*list, {1, 2, 3});
            ASSERT_TRUE(list->GoToIndex(1));
            walk(*list);
            EXPECT_EQ(1u, list->GetCrntInd());
            ASSERT_TRUE(list->Delete(TypeParam::Probe(2)));
            const unsigned long before = list->GetCrntInd();
            walk(*list);
            EXPECT_EQ(before, list->GetCrntInd());
        }
    }
}

// The iterator's item is the list's at the iterator's index, or none at none.
template <class K> void ExpectValidPosition(BCIterator& it, BCList& list) {
    const unsigned long index = it.GetCrntInd();
    const int value = Value<K>(it);
    const std::vector<int> values = Values<K>(list);
    EXPECT_TRUE(index == kNone ? value == -1 : index < values.size() && values[index] == value)
        << index;
}

// An iterator never keeps an item that another cursor deleted.
TYPED_TEST(ListProtocolTest, IteratorsSurviveDeletionsByOtherCursors) {
    Fill<TypeParam>(*this->list, {1, 2, 3, 4, 5});
    BCList& list = *this->list;
    {
        BCIterator deleter(&list), watcher(&list);
        EXPECT_EQ(2u, list.GetIterCount());
        EXPECT_EQ(2, list.SwapState(&watcher) + list.SwapState(&watcher)); // there and back
        ASSERT_TRUE(deleter.GoToIndex(1) && watcher.GoToIndex(1) && list.GoToIndex(1) &&
                    deleter.DeleteCrnt());
        ExpectValidPosition<TypeParam>(watcher, list);
        ExpectValidPosition<TypeParam>(deleter, list);
        ASSERT_TRUE(watcher.GoToIndex(0) && list.Delete(TypeParam::Probe(1)));
        ExpectValidPosition<TypeParam>(watcher, list);
        ASSERT_TRUE(watcher.GoToIndex(1));
        list.Clear(1);
        EXPECT_TRUE(Value<TypeParam>(watcher) == -1 && !watcher.Next());
    }
    EXPECT_EQ(0u, list.GetIterCount());
}

// Records load back whole (keys of every kind travel with their items, so a loaded list
// finds each by contents); records cut short fail.
TYPED_TEST(ListProtocolTest, RecordsLoadBackAndShortOnesFail) {
    using List = typename TypeParam::List; // array keys lie in the item: no block keys there
    using Made = std::conditional_t<TypeParam::kArray, List, BlockKeyed<List>>;
    std::string keys[2][3] = {{"pear", "fig", "apple"}, {"\1\2\3", "\1\2\4", "\xC8\x09\x09"}};
    const unsigned kinds[] = {0, BC_FLAG_STRING_KEY, BC_FLAG_BLOCK_KEY};
    for (unsigned kind = 0; kind < (TypeParam::kArray ? 1 : 3) && TypeParam::kOwns; ++kind) {
        auto make = [&] { return TypeParam::template Make<Made>(kinds[kind]); };
        std::unique_ptr<BCList> list(make()), loaded(make());
        for (int i = 0; i < 3; ++i)
            ASSERT_TRUE(kind ? list->Append(&keys[kind - 1][i][0], NewInt(i))
                             : Add<TypeParam>(*list, i * 7 - 4, i));
        const std::string record = RecordOf(*list);
        ASSERT_EQ(record, Reloaded(*loaded, record));
        EXPECT_EQ(Values<TypeParam>(*list), Values<TypeParam>(*loaded));
        for (int i = 0; kind && i < 3; ++i) {
            std::string probe = keys[kind - 1][i]; // a copy: found by contents
            ASSERT_TRUE(loaded->GoToItem(&probe[0])) << kind << " " << i;
            EXPECT_EQ(i, Value<TypeParam>(*loaded));
        }
        EveryShortRecordFails<BCList>(record, make);
    }
}

TEST(ListBaseTest, CmpKeyForEachKeyKindAndTheBaseListHoldsNothing) {
    BlockKeyed<BCSingleLinkedList> values(0u, 0u), strings(BC_FLAG_STRING_KEY, 0u),
        blocks(BC_FLAG_BLOCK_KEY, 0u);
    // Numbers compare signed; strings by contents, not address; blocks over the key size.
    char a[] = "apple", b[] = "apple", c[] = "pear";
    unsigned char x[] = {1, 2, 3, 9}, y[] = {1, 2, 3, 0}, z[] = {1, 2, 4, 0};
    auto sign = [](int n) { return (n > 0) - (n < 0); };
    EXPECT_EQ(Nums(-1, 1, 0, 0, -1, 1, 0, -1),
              Nums(sign(values.CmpKey(Key(-1), Key(5))), sign(values.CmpKey(Key(7), Key(5))),
                   values.CmpKey(Key(5), Key(5)), strings.CmpKey(a, b), sign(strings.CmpKey(a, c)),
                   sign(strings.CmpKey(c, nullptr)), blocks.CmpKey(x, y),
                   sign(blocks.CmpKey(x, z))));
    // The base list holds nothing and swaps nothing without an iterator.
    BCList list(7, 0, 4);
    EXPECT_EQ(Nums(85, 7), Nums(list.GetObjectType(), list.GetLength()));
    EXPECT_FALSE(list.Home() || list.End() || list.Next() || list.Prev() || list.GoToIndex(0) ||
                 list.GoToItem(Key(1)) || list.DeleteCrnt() || list.Delete(Key(1)) ||
                 list.Insert(Key(1), g_values) || list.Append(Key(1), g_values) ||
                 list.Relocate(Key(1), nullptr, nullptr) || list.Update(nullptr, g_values) ||
                 list.SwapState(nullptr) || list.SetCrntItem(g_values) || list.Dup());
    EXPECT_TRUE(list.GetCrntInd() == kNone && list.SetItemSize(8) && list.GetItemSize() == 8u);
}

TEST(ListBaseTest, NodeItemsChangeInPlaceAndSingleLinkedRelocationSorts) {
    BCSingleLinkedList list(0, 0);
    ASSERT_TRUE(list.Append(Key(1), &g_values[1]));
    EXPECT_EQ(&g_values[1], list.Lock()); // no copy: the item itself
    ASSERT_TRUE(list.Unlock(Key(1), &g_values[2]));
    EXPECT_TRUE(list.SetCrntItem(&g_values[3]) == &g_values[2] &&
                list.GetCrntItem() == &g_values[3]);
    EXPECT_EQ(0, list.SetItemSize(4)); // refused while items are held
    EXPECT_TRUE(list.Relocate(Key(9), Key(1), nullptr) && list.GetHead()->lpKey == Key(1))
        << "unsorted: nothing moves";

    BCSingleLinkedList sorted(BC_FLAG_SORTED, 0);
    for (int k : {10, 20, 30})
        ASSERT_TRUE(sorted.Append(Key(k), &g_values[k / 10]));
    ASSERT_TRUE(sorted.Relocate(Key(40), Key(10), nullptr));
    EXPECT_TRUE(Walk(sorted) == std::vector<int>({2, 3, 1}) && sorted.GetTail()->lpKey == Key(40));
    EXPECT_EQ(0, sorted.Relocate(Key(50), Key(77), nullptr)); // neither key present
    Hooked<BCSingleLinkedList> refusing(BC_FLAG_SORTED, 0u);
    std::ostringstream empty;
    EXPECT_EQ(1, refusing.Save(empty)); // exactly 1, also for a list with nothing to walk
    ASSERT_TRUE(refusing.Append(Key(1), &g_values[1]));
    refusing.refuse = true;
    EXPECT_EQ(0, refusing.Relocate(Key(5), Key(1), nullptr)); // the list would not take it back
}

TEST(ListBaseTest, OwnedItemsRenderAsLinesOfText) {
    BCSingleLinkedList list(0, 8), foreign(0, 0); // items of size 0 are not the list's to render
    BCFormat& text = BCGetTextFormat();
    char x[] = "x";
    EXPECT_FALSE(list.IsRenderable(BCGetBitmapFormat()) || foreign.IsRenderable(text) ||
                 foreign.SetItemData(x, 1, text) || foreign.SetData(x, 1, text));
    std::ostringstream os; // nor to save
    EXPECT_TRUE(foreign.Append(Key(1), x) && !foreign.Save(os));
    const char source[] = "one\r\ntwo\nlonger-than-eight\r\n";
    ASSERT_EQ(sizeof source - 1, list.SetData(const_cast<char*>(source), sizeof source - 1, text));
    EXPECT_TRUE(list.GetCount() == 3u && list.IsModified());
    const std::string expected = "one\r\ntwo\r\nlonger-\r\n"; // cut to the item size
    char buffer[64], small[6], seven[7];                      // the last cuts inside the next item
    EXPECT_EQ(Nums(expected.size() + 1, expected.size() + 1, 6, 7),
              Nums(list.GetLen(text), list.GetData(buffer, sizeof buffer, text),
                   list.GetData(small, sizeof small, text),
                   list.GetData(seven, sizeof seven, text)));
    EXPECT_EQ(expected + "|one\r\n|one\r\nt", std::string(buffer) + "|" + small + "|" + seven);
}

TEST(ListStreamTest, ItemRecordsCarryValueStringAndBlockKeys) {
    BCSingleLinkedList values(BC_FLAG_SORTED, 4);
    values.Insert(Key(20), std::memcpy(new char[4], "abc", 4));
    values.Insert(Key(-3), std::memcpy(new char[4], "xyz", 4));
    EXPECT_EQ(LE32(87) + LE32(BC_FLAG_SORTED) + LE32(0) + LE32(2) + LE32(4) + LE32(0xFFFFFFFD) +
                  std::string("xyz", 4) + LE32(20) + std::string("abc", 4),
              RecordOf(values));

    BlockKeyed<BCSingleLinkedList> strings(BC_FLAG_STRING_KEY, 2u), blocks(BC_FLAG_BLOCK_KEY, 2u);
    char name[] = "pear";
    strings.Append(name, std::memcpy(new char[2], "p", 2));
    strings.Append(nullptr, std::memcpy(new char[2], "n", 2));
    blocks.Append(name, std::memcpy(new char[2], "b", 2));
    EXPECT_EQ(LE32(87) + LE32(BC_FLAG_STRING_KEY) + LE32(0) + LE32(2) + LE32(2) + LE32(4) + "pear" +
                  std::string("p", 2) + LE32(0xFFFFFFFF) + std::string("n", 2),
              RecordOf(strings));
    EXPECT_EQ(LE32(87) + LE32(BC_FLAG_BLOCK_KEY) + LE32(0) + LE32(1) + LE32(2) + LE32(3) + "pea" +
                  std::string("b", 2),
              RecordOf(blocks));
}

TEST(ListStreamTest, ShortAndAbsurdRecordsFailAndLeaveTheListUsable) {
    const std::string base = LE32(87) + LE32(0);
    const std::string keyed = LE32(87) + LE32(BC_FLAG_STRING_KEY) + LE32(0) + LE32(1) + LE32(4);
    const std::string cases[] = {
        base + LE32(0) + LE32(0xFFFFFFFF) + LE32(0xFFFFFFFF) + LE32(1), // absurd item size
        LE32(87) + LE32(BC_FLAG_STRING_KEY | BC_FLAG_BLOCK_KEY) + LE32(0) + LE32(0) + LE32(4),
        base + LE32(0) + LE32(1) + LE32(0) + LE32(1), // items not the list's
        keyed + LE32(0xFFFFFFF0) + "abcdefgh",        // a key longer than the record
        LE32(87) + LE32(BC_FLAG_BLOCK_KEY) + LE32(0) + LE32(1) + LE32(4) + LE32(2) + "ab" + "cdef",
    };
    for (const std::string& bytes : cases) {
        BlockKeyed<BCSingleLinkedList> list(0u, 4u);
        EXPECT_EQ(0, LoadFrom(list, bytes));
        char key[] = "key"; // good for every key kind the record may have set
        ASSERT_TRUE(list.Append(key, std::memcpy(new char[4], "ok", 3)));
        EXPECT_STREQ("ok", static_cast<char*>(list.Find(key)));
    }
}

BCArrayList MakeList(unsigned flags = 0, unsigned length = 0, unsigned growBy = 4) {
    return BCArrayList(length, sizeof(Pair), 4, sizeof(int), growBy, flags);
}

void AppendAll(BCArrayList& list, std::initializer_list<Pair> records) {
    for (Pair r : records)
        ASSERT_TRUE(list.Append(Key(r.key), &r));
}

TEST(ArrayListTest, IndexesAreNotCheckedAndFailedSearchesKeepThePosition) {
    BCArrayList list = MakeList();
    AppendAll(list, {{1, 10}, {2, 20}, {3, 30}});
    EXPECT_TRUE(list.GoToIndex(1000) && list.GetCrntInd() == 1000u);
    // But nothing is read or written past the items; the copy stays the caller's.
    auto copy = std::make_unique<unsigned char[]>(sizeof(Pair));
    EXPECT_FALSE(list.GetCrntItem() || list.GetCrntKey() || list.Update(nullptr, &list) ||
                 list.Unlock(nullptr, copy.get()));
    ASSERT_TRUE(list.GoToItem(Key(25))); // CmpKey(25, k) is negative first for 30
    EXPECT_TRUE(!list.GoToItem(Key(30)) && list.GetCrntInd() == 2u);
}

TEST(ArrayListTest, CopiesAreIndependentUntilUpdateOrUnlock) {
    BCArrayList list = MakeList();
    AppendAll(list, {{1, 1}});
    Pair* a = static_cast<Pair*>(list.GetCrntItem());
    Pair* b = static_cast<Pair*>(list.Lock());
    ASSERT_TRUE(a && b && a != b);
    a->value = 77;
    EXPECT_EQ((std::vector<int>{1}), Values<ArrayKind>(list));
    ASSERT_TRUE(list.Update(nullptr, a));
    EXPECT_EQ((std::vector<int>{77}), Values<ArrayKind>(list));
    delete[] reinterpret_cast<unsigned char*>(a);
    b->value = 78;
    ASSERT_TRUE(list.Unlock(nullptr, b)); // stores and frees the copy
    EXPECT_EQ((std::vector<int>{78}), Values<ArrayKind>(list));
}

TEST(ArrayListTest, GrowsByGrowBySlotsAndClearReturnsZero) {
    BCArrayList list = MakeList(0, 0, 3), preset = MakeList(0, 5, 2), stuck = MakeList(0, 1, 0);
    // A block past 2 GiB is refused, the size kept; the first lock makes grow-by slots.
    EXPECT_EQ((Seq{5, 0, sizeof(Pair), 1, 3, 1}),
              (Seq{preset.GetLength(), preset.SetItemSize(0x40000000), preset.GetItemSize(),
                   list.LockList() != 0, list.GetLength(), list.UnlockList() != 0}));
    AppendAll(list, {{1, 1}, {2, 2}, {3, 3}});
    const unsigned long full = list.GetLength();
    AppendAll(list, {{4, 4}});
    EXPECT_TRUE(full == 3u && list.GetLength() == 6u &&
                Values<ArrayKind>(list) == std::vector<int>({1, 2, 3, 4}));
    EXPECT_EQ((Seq{0, 0, 0}), (Seq{list.Clear(1), list.GetCount(), list.GetCrntInd()}));
    // A list that cannot grow refuses the insert instead of writing past its block.
    AppendAll(stuck, {{1, 1}});
    Pair r{2, 2};
    EXPECT_TRUE(!stuck.Append(Key(2), &r) && stuck.GetCount() == 1u);
}

TEST(ArrayListTest, LockNestingAndTheUnbalancedUnlockMessage) {
    MsgRecorder recorder;
    BCArrayList list = MakeList();
    ASSERT_TRUE(list.LockList() && list.LockList());
    AppendAll(list, {{1, 1}, {2, 2}}); // operations under a lock keep the count balanced
    // One unlock too many is reported.
    EXPECT_TRUE(list.GetLockCount() == 2u && list.UnlockList() && list.UnlockList() &&
                !recorder.Count() && !list.UnlockList());
    EXPECT_TRUE(recorder.NumberedIds() == std::vector<unsigned>{10068} &&
                recorder.Last().object == &list);
    EXPECT_EQ("Internal error-Array List:UnlockList nesting error.|", recorder.Texts());
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
    const std::string first = key; // then the buffer is refilled
    EXPECT_TRUE(names.Next() && names.GetCrntKey() == key && first + key == "applefig");

    BCArrayList keyless(0, 4, 0, 0, 4, 0);
    for (int x : {1, 2})
        ASSERT_TRUE(keyless.Append(nullptr, &x));
    EXPECT_TRUE(!keyless.GetCrntKey() && keyless.GoToItem(Key(-1)) && keyless.GetCrntInd() == 0u &&
                !keyless.GoToItem(Key(5)));
}

TEST(ArrayListStreamTest, RecordIsHeaderThenRawItems) {
    BCArrayList list = MakeList(BC_FLAG_SORTED);
    AppendAll(list, {{0x0A0B0C0D, 2}, {0x01020304, 1}});
    ASSERT_TRUE(list.GoToIndex(1));
    const std::string record = RecordOf(list);
    EXPECT_EQ(Nums(1, 0), Nums(list.GetCrntInd(), list.GetLockCount()));
    EXPECT_EQ(LE32(86) + LE32(BC_FLAG_ARRAY | BC_FLAG_SORTED) + LE32(4) + LE32(2) +
                  LE32(sizeof(Pair)) + LE32(4) + LE32(4) + LE32(4) + LE32(0x01020304) + LE32(1) +
                  LE32(0x0A0B0C0D) + LE32(2),
              record);
    BCArrayList loaded = MakeList(0, 0, 9);
    ASSERT_EQ(1, LoadFrom(loaded, record));
    EXPECT_EQ(Nums(4, 4, BC_FLAG_SORTED),
              Nums(loaded.GetLength(), loaded.GetGrowBy(), loaded.GetFlags() & BC_FLAG_SORTED));
    std::ostringstream bad = OutStream();
    bad.setstate(std::ios::badbit);
    std::istringstream again = InStream(record);
    EXPECT_EQ(Nums(0, 1), Nums(loaded.Save(bad), loaded.LoadBase(again)));
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
        EXPECT_TRUE(Values<ArrayKind>(list).back() == 3 && list.GetItemSize() == sizeof(Pair));
    }
}

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
    EXPECT_TRUE(order == forward && order == backward && list.GetCrntInd() == 2u);
}

TEST(IteratorTest, IteratorsWalkIndependentlyAndChangeAtTheirOwnPosition) {
    BCDoubleLinkedList linked(0, 0);
    Fill<StackKind>(linked, {5, 1, 4, 2, 3});
    ExpectIndependentWalks(linked);
    BCHashList hashed(3, 0, 0); // chains of several nodes, so walks cross buckets
    Fill<StackKind>(hashed, {5, 1, 4, 2, 3, 0, 6});
    ExpectIndependentWalks(hashed);

    ASSERT_TRUE(linked.Home());
    BCIterator it(&linked), none(nullptr);
    EXPECT_EQ(85u, it.GetObjectType());
    ASSERT_TRUE(it.GoToIndex(3) && it.Insert(Key(9), &g_values[9]));
    EXPECT_EQ(Nums(3, 5), Nums(it.GetCrntInd(), ItemNo(linked.GetCrntItem())));
    EXPECT_EQ((std::vector<int>{5, 1, 4, 9, 2, 3}), Walk(linked));
    EXPECT_TRUE(!none.Home() && !none.Insert(Key(1), &g_values[1]) &&
                none.GetCrntInd() == 0xFFFFFFFFul); // an iterator of no list
}

TEST(DoubleLinkedListTest, SortedListsRelocateAndDropWhatInstallRefuses) {
    Hooked<BCDoubleLinkedList> list(BC_FLAG_SORTED, 0u);
    Fill<StackKind>(list, {3, 1, 2});
    ASSERT_TRUE(list.Relocate(Key(9), Key(1), nullptr));
    EXPECT_TRUE(Walk(list, true) == std::vector<int>({1, 3, 2}) && list.GetTail()->lpKey == Key(9));
    EXPECT_EQ(0, list.Relocate(Key(8), Key(7), nullptr));
    list.refuse = true;
    EXPECT_EQ(0, list.Relocate(Key(0), Key(3), nullptr)); // dropped, item left alone
    EXPECT_TRUE(list.keepFlagSeen.empty() && Walk(list) == std::vector<int>({2, 1}) &&
                Walk(list, true) == std::vector<int>({1, 2}));
    BCDoubleLinkedList unsorted(0, 0);
    Fill<StackKind>(unsorted, {1, 2});
    EXPECT_TRUE(unsorted.Relocate(Key(0), Key(2), nullptr) == 1 &&
                Walk(unsorted) == std::vector<int>({1, 2})); // nothing moves
}

TEST(HashListTest, KeysLandInTheirBucketsAndDownwardWalksStopAt0xFFFF) {
    BCHashList strings(10, BC_FLAG_STRING_KEY, 0), values(1000, 0, 0), none(0, 0, 0);
    char ab[] = "ab", high[] = "a\xC8"; // 97 + (-56): bytes above 127 subtract
    EXPECT_EQ(Nums((97 + 98) % 10, 41 % 10, 0x5678 % 1000, 0), // none: nowhere to put anything
              Nums(strings.Hash(ab), strings.Hash(high), values.Hash(Key(0x12345678)),
                   none.Hash(Key(5))));
    EXPECT_EQ(
        (Seq{0, 0, 0, 0, 0, 0, 1}),
        (Seq{none.Insert(Key(1), &g_values[1]), none.Append(Key(1), &g_values[1]), none.Home(),
             none.End(), none.GoToIndex(0), none.GoToItem(Key(1)), none.Clear(1)}));
}

TEST(HashListTest, IterationGoesBucketByBucketAndRelocationFollowsTheKey) {
    Hooked<BCHashList> list(4u, 0u, 0u);
    Fill<StackKind>(list, {6, 1, 2, 5, 9, 4}); // 0: 4 | 1: 1 5 9 | 2: 6 2 | 3: empty
    EXPECT_EQ((std::vector<int>{4, 1, 5, 9, 6, 2}), Walk(list));
    EXPECT_EQ((std::vector<int>{2, 6, 9, 5, 1, 4}), Walk(list, true));
    for (unsigned i = 0; i < 7; ++i)
        EXPECT_EQ(i < 6, list.GoToIndex(i) && list.GetCrntInd() == i) << i;
    ASSERT_TRUE(list.Relocate(Key(7), Key(1), nullptr)); // unsorted, too
    EXPECT_TRUE(list.GetCrntBucket() == 3u && Walk(list) == std::vector<int>({4, 5, 9, 6, 2, 1}));
    EXPECT_EQ(0, list.Relocate(Key(8), Key(3), nullptr));
    list.refuse = true;
    EXPECT_EQ(0, list.Relocate(Key(11), Key(7), nullptr)); // dropped, item left alone
    EXPECT_TRUE(!list.Find(Key(11)) && list.GetCount() == 5u && list.keepFlagSeen.empty());
}

TEST(HashListTest, DownwardWalksStopAtBucket0xFFFF) {
    BCHashList list(70000, BC_FLAG_STRING_KEY, 0);
    char low[] = "d";           // bucket 100
    std::string high(541, 'z'); // 541 * 122 = bucket 66002
    ASSERT_TRUE(list.Insert(low, &g_values[1]) && list.Insert(&high[0], &g_values[2]));
    EXPECT_EQ((std::vector<int>{1, 2}), Walk(list));
    EXPECT_TRUE(list.End() && !list.Prev()); // bucket 100 lies beyond the sentinel
    EXPECT_TRUE(list.Delete(&high[0]) && !list.End());
}

TEST(HashListTest, RecordsLoadIntoTheListsOwnBuckets) {
    BCHashList list(8, 0, 4), loaded(5, 0, 0);
    ASSERT_TRUE(list.Insert(Key(11), std::strcpy(new char[4], "xyz")));
    ASSERT_EQ(1, LoadFrom(loaded, RecordOf(list)));
    EXPECT_STREQ("xyz", static_cast<char*>(loaded.Find(Key(11))));
    EXPECT_EQ(Nums(5, 1, 0), Nums(loaded.GetLength(), loaded.GetCrntBucket(), loaded.SetLen(9)));
}

TEST(StackQueueTest, PopAndOutFollowTheirDisciplinesAndPopTheFirstEqualKey) {
    BCStackList stack;
    BCQueueList queue;
    for (int i : {1, 2, 3})
        stack.Push(Key(i), &g_values[i]), queue.In(Key(i), &g_values[i]);
    std::string popped, out; // empty: null, nothing changes
    for (int i = 0; i < 4; ++i)
        popped += Nums(ItemNo(stack.Pop())), out += Nums(ItemNo(queue.Out()));
    EXPECT_EQ("3 2 1 -1 |1 2 3 -1 |0 ",
              popped + "|" + out + "|" + Nums(stack.GetCount() + queue.GetCount()));
    // Pop removes the first equal key: the newer item comes back, but the older node went.
    stack.Push(Key(7), &g_values[1]);
    stack.Push(Key(7), &g_values[2]);
    EXPECT_EQ((Seq{2, 2, 2}),
              (Seq{ItemNo(stack.Pop()), ItemNo(stack.GetHead()->lpItem), ItemNo(stack.Pop())}));
}

} // namespace
