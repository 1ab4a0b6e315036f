#include <cstdlib>
#include <cstring>
#include <functional>
#include <random>

#include "test_devices.h"

// Documents come from disks and networks: every persistent object is loaded from thousands of
// damaged copies of a good record. A load may succeed or fail, but it must end, not crash or
// take absurd memory, and what it leaves must still be usable and freeable. Set NORLIB_MUTANTS
// for a longer local run.

namespace {

[[maybe_unused]] const bool g_neverWait = NeverWaitOnFaults();

const unsigned kCopies =
    std::getenv("NORLIB_MUTANTS") ? std::atoi(std::getenv("NORLIB_MUTANTS")) : 1500;

// A few bytes or 32-bit words made absurd (sizes and counts are words), a quarter cut short.
std::string Damaged(std::string bytes, std::mt19937& random) {
    static const std::uint32_t absurd[] = {0xFFFFFFFFu, 0x7FFFFFFFu, 0x80000000u, 0x00FFFFFFu,
                                           0x10000u};
    for (unsigned places = 1 + random() % 3; places; --places) {
        const size_t at = random() % bytes.size();
        if (random() % 2)
            bytes[at] = static_cast<char>(random());
        else
            bytes.replace(at, 4, LE32(absurd[random() % 5]).substr(0, bytes.size() - at));
    }
    if (random() % 4 == 0)
        bytes.resize(random() % bytes.size());
    return bytes;
}

// Loads damaged copies of `record` into fresh objects from `make`, lets `use` work on each and
// frees it. Returns how many loads succeeded: the damage must reach past the first field.
template <class T>
unsigned LoadDamaged(const std::string& record, unsigned seed, const std::function<T*()>& make,
                     const std::function<void(T&)>& use) {
    std::mt19937 random(seed);
    unsigned loaded = 0;
    for (unsigned n = 0; n < kCopies && !record.empty(); ++n) {
        std::unique_ptr<T> object(make());
        std::istringstream is = InStream(Damaged(record, random));
        loaded += object->Load(is) != 0;
        use(*object);
    }
    return loaded;
}

TEST(DamagedRecordTest, DrawingsOfEveryGraphicKindWithTheirToolsNestedInCompounds) {
    MsgRecorder recorder;
    Pieces pieces;
    BCDrawingData drawing(nullptr, nullptr, "n2d", nullptr, 0, nullptr);
    FillScene(drawing, pieces);
    const unsigned loaded = LoadDamaged<BCDrawingData>(
        RecordOf(drawing), 1,
        [] { return new BCDrawingData(nullptr, nullptr, "n2d", nullptr, 0, nullptr); },
        [](BCDrawingData& loaded) {
            BCMemoryDevice dev(64, 64);
            BCGraphicList& list = *loaded.GetGraphics();
            if (!list.Draw(&dev)) // a failing object leaves the context selected
                dev.ReleaseDC();
            list.UnDraw(&dev);
            BCPosition hit(5, 5);
            list.GetHitObject(hit, 0);
            EXPECT_EQ(0u, dev.GetSelectCount());
            loaded.Clear(1);
        });
    EXPECT_TRUE(loaded > 0 && loaded < kCopies) << loaded; // damage to text or pixels loads
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

TEST(DamagedRecordTest, ListsOfEveryKindWithOwnedItemsAndKeys) {
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
        EXPECT_GT(LoadDamaged<BCList>(RecordOf(*list), 6 + kind, makers[kind], UseLoadedList), 0u);
    }
}

TEST(DamagedRecordTest, DataObjectsAndPatternBrushes) {
    MsgRecorder recorder;
    BCMemoryData memory(const_cast<char*>("0123456789abcdef"), 16, 0);
    BCInteger integer(-1234567);
    BCFloat real(3.25);
    const std::function<BCRenderableData*()> makers[] = {
        [] { return new BCMemoryData(nullptr, 0, 0); }, [] { return new BCInteger; },
        [] { return new BCFloat; }};
    BCRenderableData* originals[] = {&memory, &integer, &real};
    for (unsigned i = 0; i < 3; ++i)
        LoadDamaged<BCRenderableData>(RecordOf(*originals[i]), 9 + i, makers[i],
                                      [](BCRenderableData& data) {
                                          char buffer[64];
                                          data.GetData(buffer, sizeof buffer, BCGetTextFormat());
                                          std::ostringstream os = OutStream();
                                          data.Save(os);
                                      });
    // Pens, brushes, pictures and point lists travel in drawings; a pattern brush carries a
    // whole picture record of its own.
    std::unique_ptr<BCBitmap> picture(Solid(6, 4, 0x00FF00));
    BCBrush pattern(picture.get());
    LoadDamaged<BCBrush>(
        RecordOf(pattern), 4, [] { return new BCBrush(); },
        [](BCBrush& loaded) {
            BCMemoryDevice dev(16, 16);
            dev.SetBrush(&loaded);
            dev.PutRect(BCRectangle(1, 1, 12, 12), BC_DRAW_FILLED);
            dev.SetBrush(nullptr);
        });
}

} // namespace
