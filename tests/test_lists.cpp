// The list protocol, run over every list kind; then what only the base list does.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "norlib2.h"
#include "streambytes.h"

namespace {

[[maybe_unused]] const bool g_neverWait = NeverWaitOnFaults();

constexpr unsigned long kNone = 0xFFFFFFFFul;

// Items of size 0 are the caller's: pointers into this array.
int g_values[10] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};

// Array items are {key, value}; the key is the item's first word.
struct Pair {
    int key, value;
};

// What the typed cases need to know of each kind.
// The stack and queue hold the caller's items (size 0), are never sorted and never saved.
template <class L, unsigned Type, bool Owns = true> struct Kind {
    using List = L;
    static constexpr unsigned kType = Type;
    static constexpr bool kOwns = Owns, kArray = std::is_same<L, BCArrayList>::value;
    static constexpr bool kHash = std::is_same<L, BCHashList>::value;
    template <class T = L> static T* Make(unsigned flags) {
        if constexpr (kArray)
            return new T(0, sizeof(Pair), 0, sizeof(int), 4, flags);
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
using StackKind = Kind<BCStackList, 89, false>;
using Kinds = ::testing::Types<Kind<BCArrayList, 86>, Kind<BCSingleLinkedList, 87>,
                               Kind<BCDoubleLinkedList, 88>, Kind<BCHashList, 85>, StackKind,
                               Kind<BCQueueList, 90, false>>;

void* NewInt(int value) {
    return std::memcpy(new char[sizeof(int)], &value, sizeof(int));
}

template <class K> int Add(BCList& list, long key, int value, bool insert = false) {
    Pair pair{static_cast<int>(key), value};
    void* item = K::kArray  ? static_cast<void*>(&pair)
                 : K::kOwns ? NewInt(value)
                            : &g_values[value];
    int ok = insert ? list.Insert(Key(key), item) : list.Append(Key(key), item);
    if (!ok && !K::kArray && K::kOwns)
        delete[] static_cast<char*>(item);
    return ok;
}

// The current item's value; -1 without one. Array lists hand out copies.
template <class K> int Value(BCList& list) {
    void* item = list.GetCrntItem();
    const int value = !item       ? -1
                      : K::kArray ? static_cast<Pair*>(item)->value
                                  : *static_cast<int*>(item);
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

// Records what reaches DeleteItem and whether flag 0x0800 was set then.
template <class Base> class Recording : public Base {
  public:
    template <class... Args> explicit Recording(Args... args) : Base(args...) {}
    int DeleteItem(void* key, void* item) override {
        keepFlagSeen.push_back((this->GetFlags() & BC_FLAG_KEEP_ITEMS) != 0);
        return Base::DeleteItem(key, item);
    }
    std::vector<bool> keepFlagSeen;
};

// Block keys of three bytes.
template <class Base> struct BlockKeyed : Base {
    template <class... Args> explicit BlockKeyed(Args... args) : Base(args...) {
        this->dwKeySize = 3;
    }
};

template <class K> class ListProtocolTest : public ::testing::Test {
  protected:
    std::unique_ptr<typename K::List> list{K::Make(0)};
    void Fill(std::initializer_list<int> keys) {
        for (int k : keys)
            ASSERT_TRUE(Add<K>(*list, k, k));
    }
};
TYPED_TEST_SUITE(ListProtocolTest, Kinds);

TYPED_TEST(ListProtocolTest, WalksIndexesAndSearchesAgree) {
    BCList& list = *this->list;
    EXPECT_EQ(TypeParam::kType, list.GetObjectType());
    for (int result : {list.Home(), list.End(), list.Next(), list.Prev(), list.DeleteCrnt(),
                       list.GoToIndex(0), list.GoToItem(Key(1)), list.Delete(Key(1))})
        EXPECT_EQ(0, result); // nothing to move to
    EXPECT_EQ(nullptr, list.GetCrntKey());
    this->Fill({1, 2, 3, 4, 5});
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5}), Values<TypeParam>(list));
    EXPECT_EQ((std::vector<int>{5, 4, 3, 2, 1}), Values<TypeParam>(list, true));
    for (unsigned i = 0; i < 5; ++i) {
        ASSERT_EQ(1, list.GoToIndex(i));
        EXPECT_EQ(i, list.GetCrntInd());
        EXPECT_EQ(Key(i + 1), list.GetCrntKey());
        void* found = list.Find(TypeParam::Probe(i + 1));
        ASSERT_NE(nullptr, found);
        if (TypeParam::kArray)
            delete[] static_cast<unsigned char*>(found);
        EXPECT_EQ(static_cast<int>(i + 1), Value<TypeParam>(list));
    }
    EXPECT_EQ(nullptr, list.Find(TypeParam::Probe(9)));
    EXPECT_EQ(4u, list.GetCrntInd()); // a failed search keeps the position
    EXPECT_EQ(0, list.Next());
    for (int result : {list.Prev(), list.Next(), list.End(), list.Home()})
        EXPECT_EQ(1, result);
    EXPECT_EQ(0, list.Prev());
    EXPECT_EQ(TypeParam::kArray ? 1 : 0, list.GoToIndex(5)); // arrays do not check indexes
}

// Unsorted: in front of the current item (a hash list: at the end of the key's chain);
// sorted: by key, after equal keys. The new item becomes current.
TYPED_TEST(ListProtocolTest, InsertPlacesTheNewItemAndMakesItCurrent) {
    this->Fill({1, 2, 3});
    BCList& list = *this->list;
    ASSERT_TRUE(list.GoToIndex(1) && Add<TypeParam>(list, 9, 9, true));
    EXPECT_EQ(Nums(9, TypeParam::kHash ? 3 : 1), Nums(Value<TypeParam>(list), list.GetCrntInd()));
    using V = std::vector<int>;
    EXPECT_EQ((TypeParam::kHash ? V{1, 2, 3, 9} : V{1, 9, 2, 3}), Values<TypeParam>(list));
    if constexpr (TypeParam::kOwns) {
        std::unique_ptr<BCList> sorted(TypeParam::Make(BC_FLAG_SORTED));
        for (int k : {3, 1, 2})
            ASSERT_TRUE(Add<TypeParam>(*sorted, k, k));
        ASSERT_TRUE(Add<TypeParam>(*sorted, 2, 5, true) && Add<TypeParam>(*sorted, -4, 6) &&
                    Add<TypeParam>(*sorted, -4, 7)); // after an equal head, too
        EXPECT_EQ(7, Value<TypeParam>(*sorted));
        // The hash list's buckets follow the keys, except -4, whose low bits land last.
        EXPECT_EQ((TypeParam::kHash ? V{1, 2, 5, 3, 6, 7} : V{6, 7, 1, 2, 5, 3}),
                  Values<TypeParam>(*sorted));
    }
}

TYPED_TEST(ListProtocolTest, DeletingMovesOnOrLeavesNoCurrentItem) {
    this->Fill({1, 2, 3, 4});
    BCList& list = *this->list;
    // The successor, or the predecessor at the end; a hash list keeps none.
    const int next = TypeParam::kHash ? -1 : 3;
    ASSERT_TRUE(list.GoToIndex(1) && list.DeleteCrnt() == 1);
    EXPECT_EQ(next, Value<TypeParam>(list));
    ASSERT_TRUE(list.End() && list.DeleteCrnt());
    EXPECT_EQ(next, Value<TypeParam>(list));
    ASSERT_EQ(1, list.Delete(TypeParam::Probe(1)));
    EXPECT_EQ((std::vector<int>{3}), Values<TypeParam>(list));
    EXPECT_EQ(0, list.Delete(TypeParam::Probe(7)));
}

TYPED_TEST(ListProtocolTest, ClearLetsDeleteItemFreeOnlyWhenAsked) {
    if constexpr (!TypeParam::kArray) {
        auto* list = TypeParam::template Make<Recording<typename TypeParam::List>>(0);
        std::unique_ptr<BCList> owner(list);
        for (int k : {1, 2})
            ASSERT_TRUE(Add<TypeParam>(*list, k, k));
        EXPECT_EQ(1, list->Clear(0));
        EXPECT_EQ((std::vector<bool>{true, true}), list->keepFlagSeen);
        EXPECT_FALSE((list->GetFlags() & BC_FLAG_KEEP_ITEMS) || list->GetCount() || list->Home());
        list->SetFlags(BC_FLAG_KEEP_ITEMS, 1);
        list->keepFlagSeen.clear();
        ASSERT_TRUE(Add<TypeParam>(*list, 3, 3));
        EXPECT_EQ(1, list->Clear(1));
        EXPECT_EQ((std::vector<bool>{false}), list->keepFlagSeen);
        EXPECT_TRUE(list->GetFlags() & BC_FLAG_KEEP_ITEMS);
    }
}

// Saving, measuring and rendering walk the list; the position they found must survive,
// also none (an unsorted insert then still appends).
TYPED_TEST(ListProtocolTest, SaveLengthAndRenderingKeepThePosition) {
    if constexpr (TypeParam::kOwns) {
        char buffer[64];
        const std::function<void(BCList&)> walks[] = {
            [](BCList& l) { SavedBytes(l); },
            [](BCList& l) { l.GetLen(BCGetTextFormat()); },
            [&](BCList& l) { l.GetData(buffer, sizeof buffer, BCGetTextFormat()); },
        };
        for (const auto& walk : walks) {
            std::unique_ptr<BCList> list(TypeParam::Make(0));
            for (int k : {1, 2, 3})
                ASSERT_TRUE(Add<TypeParam>(*list, k, k));
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

template <class K> void ExpectValidPosition(BCIterator& it, BCList& list) {
    const unsigned long index = it.GetCrntInd();
    const int value = Value<K>(it);
    if (index == kNone) {
        EXPECT_EQ(-1, value);
        return;
    }
    ASSERT_LT(index, list.GetCount());
    EXPECT_EQ(Values<K>(list)[index], value);
}

// An iterator never keeps an item that another cursor deleted.
TYPED_TEST(ListProtocolTest, IteratorsSurviveDeletionsByOtherCursors) {
    this->Fill({1, 2, 3, 4, 5});
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
        EXPECT_EQ(-1, Value<TypeParam>(watcher));
        EXPECT_EQ(0, watcher.Next());
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
        const std::string record = SavedBytes(*list);
        ASSERT_EQ(1, LoadFrom(*loaded, record));
        EXPECT_EQ(Values<TypeParam>(*list), Values<TypeParam>(*loaded));
        EXPECT_EQ(record, SavedBytes(*loaded));
        for (int i = 0; kind && i < 3; ++i) {
            std::string probe = keys[kind - 1][i]; // a copy: found by contents
            ASSERT_TRUE(loaded->GoToItem(&probe[0])) << kind << " " << i;
            EXPECT_EQ(i, Value<TypeParam>(*loaded));
        }
        EXPECT_EQ(std::string::npos, FirstShortLoad(record, [&](std::istream& in) {
                      return std::unique_ptr<BCList>(make())->Load(in);
                  }));
    }
}

// ---- the base list and the single-linked list's own cases ----

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
    EXPECT_FALSE(list.Insert(Key(1), g_values) || list.Append(Key(1), g_values) ||
                 list.Relocate(Key(1), nullptr, nullptr) || list.Update(nullptr, g_values) ||
                 list.SwapState(nullptr) || list.SetCrntItem(g_values) || list.Dup());
    EXPECT_EQ(kNone, list.GetCrntInd());
    EXPECT_TRUE(list.SetItemSize(8) && list.GetItemSize() == 8u);
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
    EXPECT_TRUE(Values<StackKind>(sorted) == std::vector<int>({2, 3, 1}) &&
                sorted.GetTail()->lpKey == Key(40));
    EXPECT_EQ(0, sorted.Relocate(Key(50), Key(77), nullptr)); // neither key present
    struct Refusing : BCSingleLinkedList {
        using BCSingleLinkedList::BCSingleLinkedList;
        bool refuse = false;
        int Install(void* key, void* item, int inserted) override {
            return refuse ? 0 : BCSingleLinkedList::Install(key, item, inserted);
        }
    } refusing(BC_FLAG_SORTED, 0);
    std::ostringstream empty;
    EXPECT_EQ(1, refusing.Save(empty)); // exactly 1, also for a list with nothing to walk
    ASSERT_TRUE(refusing.Append(Key(1), &g_values[1]));
    refusing.refuse = true;
    EXPECT_EQ(0, refusing.Relocate(Key(5), Key(1), nullptr)); // the list would not take it back
}

TEST(ListBaseTest, OwnedItemsRenderAsLinesOfText) {
    BCSingleLinkedList list(0, 8);
    BCFormat& text = BCGetTextFormat();
    EXPECT_FALSE(list.IsRenderable(BCGetBitmapFormat()));
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
    // Items of size 0 are not the list's to render.
    BCSingleLinkedList foreign(0, 0);
    EXPECT_FALSE(foreign.IsRenderable(text) ||
                 foreign.SetItemData(const_cast<char*>("x"), 1, text));
}

TEST(ListStreamTest, ItemRecordsCarryValueStringAndBlockKeys) {
    BCSingleLinkedList values(BC_FLAG_SORTED, 4);
    values.Insert(Key(20), std::memcpy(new char[4], "abc", 4));
    values.Insert(Key(-3), std::memcpy(new char[4], "xyz", 4));
    EXPECT_EQ(LE32(87) + LE32(BC_FLAG_SORTED) + LE32(0) + LE32(2) + LE32(4) + LE32(0xFFFFFFFD) +
                  std::string("xyz", 4) + LE32(20) + std::string("abc", 4),
              SavedBytes(values));

    BlockKeyed<BCSingleLinkedList> strings(BC_FLAG_STRING_KEY, 2u), blocks(BC_FLAG_BLOCK_KEY, 2u);
    char name[] = "pear";
    strings.Append(name, std::memcpy(new char[2], "p", 2));
    strings.Append(nullptr, std::memcpy(new char[2], "n", 2));
    blocks.Append(name, std::memcpy(new char[2], "b", 2));
    const std::string head = LE32(0) + LE32(2) + LE32(2);
    EXPECT_EQ(LE32(87) + LE32(BC_FLAG_STRING_KEY) + head + LE32(4) + "pear" + std::string("p", 2) +
                  LE32(0xFFFFFFFF) + std::string("n", 2),
              SavedBytes(strings));
    EXPECT_EQ(LE32(87) + LE32(BC_FLAG_BLOCK_KEY) + LE32(0) + LE32(1) + LE32(2) + LE32(3) + "pea" +
                  std::string("b", 2),
              SavedBytes(blocks));
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

} // namespace
