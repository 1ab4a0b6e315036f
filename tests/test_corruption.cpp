#include <gtest/gtest.h>

#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <string>

#include "msgrecorder.h"
#include "norlib2.h"
#include "streambytes.h"
#include "test_graphics.h"

// Documents come from disks and networks: every persistent object is loaded from thousands of
// damaged copies of a good record. A load may succeed or fail, but it must end, not crash or
// take absurd memory, and what it leaves must still be usable and freeable.

namespace {

// NORLIB_MUTANTS and NORLIB_MUTANT_SEED let a long local run go further than the suite.
unsigned EnvNumber(const char* name, unsigned otherwise) {
    const char* value = std::getenv(name);
    return value && *value ? static_cast<unsigned>(std::strtoul(value, nullptr, 10)) : otherwise;
}

const unsigned kMutants = EnvNumber("NORLIB_MUTANTS", 1500);
const unsigned kSeedBase = EnvNumber("NORLIB_MUTANT_SEED", 0);

std::string Saved(BCObject& object) {
    std::ostringstream os = OutStream();
    EXPECT_TRUE(object.Save(os));
    return os.str();
}

// Loads every mutant of `record` into a fresh object from `make`, lets `use` work on what
// loaded, and frees it. Returns how many loads succeeded, so that a caller can see the
// mutants still reach past the first field.
template <class T>
unsigned LoadEveryMutant(const std::string& record, unsigned seed, const std::function<T*()>& make,
                         const std::function<void(T&)>& use) {
    unsigned loaded = 0;
    for (const std::string& bytes : Mutants(record, kMutants, kSeedBase + seed)) {
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

unsigned Walk(BCList& list) {
    unsigned seen = 0;
    for (int more = list.Home(); more && seen <= list.GetCount(); more = list.Next())
        ++seen;
    return seen;
}

TEST(CorruptRecordTest, GraphicScenesOfTextBitmapsAndCompounds) {
    MsgRecorder recorder;
    BCBitmap picture(6, 4);
    BCGraphicList inner;
    inner.Append(nullptr, new BCTextGraphic(1, BCPosition(0, 0), BCSize(20, 10), "inner"));
    inner.Append(nullptr, new BCBitmapGraphic(2, BCPosition(3, 3), BCSize(6, 4), &picture, 15));
    BCGraphicList middle;
    middle.Append(nullptr, new BCCompoundGraphic(3, BCPosition(2, 2), BCSize(30, 30), &inner));
    BCGraphicList scene;
    scene.Append(nullptr, new BCTextGraphic(4, BCPosition(1, 1), BCSize(40, 12), "a\ttab"));
    scene.Append(nullptr, new BCCompoundGraphic(5, BCPosition(8, 8), BCSize(40, 40), &middle));
    scene.Append(nullptr, new BCBitmapGraphic(6, BCPosition(30, 2), BCSize(12, 8), &picture, 1));
    const std::string record = Saved(scene);

    unsigned loaded = LoadEveryMutant<BCGraphicList>(
        record, 1, [] { return new BCGraphicList; }, DrawAndFree);
    EXPECT_GT(loaded, 0u); // some damage (to text or pixels) still loads
    EXPECT_LT(loaded, kMutants);
}

TEST(CorruptRecordTest, ShapeListsWithPensBrushesAndPointLists) {
    MsgRecorder recorder;
    BCPen pen(BC_PEN_DASH, 1, BCColor(BC_COLOR_RED));
    BCBrush brush{BCColor(BC_COLOR_BLUE)};
    const short xy[] = {0, 0, 10, 5, 3, 12, -4, 7};
    BCPolyline points(4, xy);
    BCGraphicList shapes;
    shapes.Append(nullptr, new BCBoxGraphic(1, BCPosition(1, 1), BCSize(9, 9), &pen, &brush));
    shapes.Append(nullptr,
                  new BCPolygonGraphic(2, BCPosition(5, 5), BCSize(12, 12), &points, &pen, &brush));
    shapes.Append(nullptr,
                  new BCPolylineGraphic(3, BCPosition(9, 2), BCSize(12, 12), &points, &pen));
    const std::string record = Saved(shapes);
    // Shapes load what they save only as far as their record allows; the point is survival.
    LoadEveryMutant<BCGraphicList>(
        record, 2, [] { return new BCGraphicList; }, DrawAndFree);

    auto paint = [](BCPen* pen, BCBrush* brush, BCPolyline* line) {
        BCMemoryDevice dev(16, 16);
        dev.SetPen(pen);
        dev.SetBrush(brush);
        dev.PutRect(BCRectangle(1, 1, 12, 12), BC_DRAW_FILLED);
        if (line)
            dev.PutPolygon(line, BCPosition(0, 0));
        dev.SetPen(nullptr);
        dev.SetBrush(nullptr);
    };
    LoadEveryMutant<BCPen>(
        Saved(pen), 3, [] { return new BCPen(1, 1, BCGetBlack()); },
        [&](BCPen& loaded) { paint(&loaded, nullptr, nullptr); });
    LoadEveryMutant<BCBrush>(
        Saved(brush), 4, [] { return new BCBrush(); },
        [&](BCBrush& loaded) { paint(nullptr, &loaded, nullptr); });
    LoadEveryMutant<BCPolyline>(
        Saved(points), 5, [] { return new BCPolyline(); },
        [&](BCPolyline& loaded) { paint(nullptr, nullptr, &loaded); });
}

TEST(CorruptRecordTest, ListsOfEveryKindWithOwnedItemsAndKeys) {
    MsgRecorder recorder;
    BCDoubleLinkedList linked(BC_FLAG_STRING_KEY | BC_FLAG_SORTED, 6);
    BCHashList hashed(7, 0, 4);
    BCArrayList array(4, 8, 0, 4, 4, BC_FLAG_SORTED);
    BCSingleLinkedList single(BC_FLAG_BLOCK_KEY, 4);
    for (int i = 0; i < 5; ++i) {
        char key[] = {static_cast<char>('a' + i), 'k', 0};
        linked.Insert(key, std::strcpy(new char[6], "item"));
        hashed.Insert(reinterpret_cast<void*>(static_cast<intptr_t>(i * 3)),
                      std::strcpy(new char[4], "abc"));
        int record[2] = {i * 5, -i};
        array.Insert(record, record);
        single.Append(nullptr, std::strcpy(new char[4], "one"));
    }
    const std::string linkedRecord = Saved(linked), hashedRecord = Saved(hashed),
                      arrayRecord = Saved(array), singleRecord = Saved(single);

    auto use = [](BCList& list) {
        EXPECT_LE(Walk(list), list.GetCount());
        list.End();
        list.Prev();
        list.Clear(1);
        EXPECT_EQ(0u, list.GetCount());
    };
    EXPECT_GT(LoadEveryMutant<BCList>(
                  linkedRecord, 6,
                  [] { return new BCDoubleLinkedList(BC_FLAG_STRING_KEY | BC_FLAG_SORTED, 6); },
                  use),
              0u);
    EXPECT_GT(
        LoadEveryMutant<BCList>(
            singleRecord, 9, [] { return new BCSingleLinkedList(BC_FLAG_BLOCK_KEY, 4); }, use),
        0u);
    EXPECT_GT(LoadEveryMutant<BCList>(
                  hashedRecord, 7, [] { return new BCHashList(7, 0, 4); }, use),
              0u);
    EXPECT_GT(LoadEveryMutant<BCList>(
                  arrayRecord, 8, [] { return new BCArrayList(4, 8, 0, 4, 4, BC_FLAG_SORTED); },
                  [](BCList& list) {
                      int probe[2] = {10, 0};
                      list.Find(probe);
                      if (list.GetItemSize() <= sizeof probe) // items are item-size bytes
                          list.Append(probe, probe);
                      EXPECT_LE(Walk(list), list.GetCount());
                      list.Clear(1);
                  }),
              0u);
}

TEST(CorruptRecordTest, DataObjectsAndPictures) {
    MsgRecorder recorder;
    BCMemoryData memory(const_cast<char*>("0123456789abcdef"), 16, 0);
    BCInteger integer(-1234567);
    BCFloat real(3.25);
    BCBitmap picture(7, 5);

    auto readBack = [](BCRenderableData& data) {
        char buffer[64];
        data.GetData(buffer, sizeof buffer, BCGetTextFormat());
        std::ostringstream os = OutStream();
        data.Save(os);
    };
    LoadEveryMutant<BCRenderableData>(
        Saved(memory), 9, [] { return new BCMemoryData(nullptr, 0, 0); }, readBack);
    LoadEveryMutant<BCRenderableData>(
        Saved(integer), 10, [] { return new BCInteger; }, readBack);
    LoadEveryMutant<BCRenderableData>(
        Saved(real), 11, [] { return new BCFloat; }, readBack);
    LoadEveryMutant<BCBitmap>(
        Saved(picture), 12, [] { return new BCBitmap; },
        [](BCBitmap& bitmap) {
            BCMemoryDevice dev(16, 16);
            dev.PutBitmap(BCPosition(0, 0), BCSize(8, 8), &bitmap, 1);
        });
}

} // namespace
