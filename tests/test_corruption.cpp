#include <cstdlib>
#include <cstring>
#include <functional>

#include "test_devices.h"

// Documents come from disks and networks: every persistent object is loaded from thousands of
// damaged copies of a good record. A load may succeed or fail, but it must end, not crash or
// take absurd memory, and what it leaves must still be usable and freeable.

namespace {

[[maybe_unused]] const bool g_neverWait = NeverWaitOnFaults();

// NORLIB_MUTANTS lets a long local run go further than the suite.
const unsigned kMutants =
    std::getenv("NORLIB_MUTANTS") ? std::atoi(std::getenv("NORLIB_MUTANTS")) : 1500;

// Loads every mutant of `record` into a fresh object from `make`, lets `use` work on what
// loaded, and frees it. Returns how many loads succeeded, so that a caller can see the
// mutants still reach past the first field.
template <class T>
unsigned LoadEveryMutant(const std::string& record, unsigned seed, const std::function<T*()>& make,
                         const std::function<void(T&)>& use) {
    unsigned loaded = 0;
    for (const std::string& bytes : Mutants(record, kMutants, seed)) {
        std::unique_ptr<T> object(make());
        std::istringstream is = InStream(bytes);
        loaded += object->Load(is) != 0;
        use(*object);
    }
    return loaded;
}

void DrawAndFree(BCGraphicList& list) {
    BCMemoryDevice dev(64, 64);
    list.Draw(&dev);
    list.UnDraw(&dev);
    BCPosition hit(5, 5);
    list.GetHitObject(hit, 0);
    EXPECT_EQ(0u, dev.GetSelectCount());
    FreeLoaded(&list);
}

TEST(CorruptRecordTest, GraphicScenesOfTextBitmapsAndCompounds) {
    MsgRecorder recorder;
    BCBitmap picture(6, 4);
    BCGraphicList inner, middle, scene;
    inner.Append(nullptr, new BCTextGraphic(1, BCPosition(0, 0), BCSize(20, 10), "inner"));
    inner.Append(nullptr, new BCBitmapGraphic(2, BCPosition(3, 3), BCSize(6, 4), &picture, 15));
    middle.Append(nullptr, new BCCompoundGraphic(3, BCPosition(2, 2), BCSize(30, 30), &inner));
    scene.Append(nullptr, new BCTextGraphic(4, BCPosition(1, 1), BCSize(40, 12), "a\ttab"));
    scene.Append(nullptr, new BCCompoundGraphic(5, BCPosition(8, 8), BCSize(40, 40), &middle));
    scene.Append(nullptr, new BCBitmapGraphic(6, BCPosition(30, 2), BCSize(12, 8), &picture, 1));
    const unsigned loaded = LoadEveryMutant<BCGraphicList>(
        RecordOf(scene), 1, [] { return new BCGraphicList; }, DrawAndFree);
    EXPECT_TRUE(loaded > 0u && loaded < kMutants) << loaded; // damaged text or pixels still load
}

// What a loaded list must still do: find, grow, walk within its count and clear.
void UseLoadedList(BCList& loaded) {
    int probe[2] = {10, 0};
    loaded.Find(probe);
    if ((loaded.GetFlags() & BC_FLAG_ARRAY) && loaded.GetItemSize() <= sizeof probe)
        loaded.Append(probe, probe); // array items are copied bytes
    unsigned seen = 0;
    for (int more = loaded.Home(); more && seen <= loaded.GetCount(); more = loaded.Next())
        ++seen;
    EXPECT_LE(seen, loaded.GetCount());
    loaded.End();
    loaded.Prev();
    loaded.Clear(1);
}

TEST(CorruptRecordTest, ListsOfEveryKindWithOwnedItemsAndKeys) {
    MsgRecorder recorder;
    const std::function<BCList*()> makers[] = {
        [] { return new BCDoubleLinkedList(BC_FLAG_STRING_KEY | BC_FLAG_SORTED, 6); },
        [] { return new BCSingleLinkedList(BC_FLAG_BLOCK_KEY, 4); },
        [] { return new BCHashList(7, BC_FLAG_STRING_KEY, 4); },
        [] { return new BCArrayList(4, 8, 0, 4, 4, BC_FLAG_SORTED); },
    };
    char keys[5][3] = {"ak", "bk", "ck", "dk", "ek"};
    for (unsigned kind = 0; kind < 4; ++kind) {
        std::unique_ptr<BCList> list(makers[kind]());
        for (int i = 0; i < 5; ++i) {
            int record[2] = {i * 5, -i};
            list->Insert(kind == 3 ? static_cast<void*>(record) : keys[i],
                         kind == 3 ? record : std::memcpy(new char[8], "item", 5));
        }
        EXPECT_GT(LoadEveryMutant<BCList>(RecordOf(*list), 6 + kind, makers[kind], UseLoadedList),
                  0u);
    }
}

TEST(CorruptRecordTest, DataObjects) {
    MsgRecorder recorder;
    BCMemoryData memory(const_cast<char*>("0123456789abcdef"), 16, 0);
    BCInteger integer(-1234567);
    BCFloat real(3.25);
    auto readBack = [](BCRenderableData& data) {
        char buffer[64];
        data.GetData(buffer, sizeof buffer, BCGetTextFormat());
        std::ostringstream os = OutStream();
        data.Save(os);
    };
    const std::function<BCRenderableData*()> makers[] = {
        [] { return new BCMemoryData(nullptr, 0, 0); }, [] { return new BCInteger; },
        [] { return new BCFloat; }};
    BCRenderableData* originals[] = {&memory, &integer, &real};
    for (unsigned i = 0; i < 3; ++i)
        LoadEveryMutant<BCRenderableData>(RecordOf(*originals[i]), 9 + i, makers[i], readBack);
}

} // namespace
