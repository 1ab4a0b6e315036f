#include "bcdrawing.h"

#include <cstring>
#include <istream>
#include <new>
#include <ostream>
#include <sstream>
#include <vector>

#include "bcstream.h"
#include "bcids2.h"

namespace {

constexpr char kMagic[4] = {'N', '2', 'D', 'W'};
constexpr unsigned int kVersion = 1;

BCGraphicList* OwnOrNew(BCGraphicList* list) {
    return list ? list : new (std::nothrow) BCGraphicList;
}

// Marks a stream for drawing records while it lives, whatever way the record ends.
class DrawingRecords {
  public:
    DrawingRecords(std::ios_base& stream, BCLoadKeeper* keeper) : m_stream(stream) {
        BCBeginDrawingRecords(stream, keeper);
    }
    ~DrawingRecords() { BCEndDrawingRecords(m_stream); }
    DrawingRecords(const DrawingRecords&) = delete;
    DrawingRecords& operator=(const DrawingRecords&) = delete;

  private:
    std::ios_base& m_stream;
};

} // namespace

// Holds what the loads made, in the order made, for freeing.
class BCDrawingData::Keeper : public BCLoadKeeper {
  public:
    void Keep(BCObject* made) override { m_made.push_back(made); }
    void FreeAll() {
        for (BCObject* made : m_made)
            delete made;
        m_made.clear();
    }
    unsigned long Count() const { return static_cast<unsigned long>(m_made.size()); }

  private:
    std::vector<BCObject*> m_made;
};

BCDrawingData::BCDrawingData(BCGraphicList* list, BCWindow* window, const char* fileExt,
                             const char* fileName, unsigned int flags, BCUpdaterList* updaters)
    : BCListData(OwnOrNew(list), window, fileExt, fileName, flags & ~BC_FLAG_NOT_OWNED, updaters),
      opKeeper(new (std::nothrow) Keeper) {
    SetObjectType(bcids::kTypeDrawingData);
}

// The list and its graphics go in the base destructor; they no longer draw by then.
BCDrawingData::~BCDrawingData() {
    FreeLoaded();
    delete opKeeper;
}

BCRenderableData* BCDrawingData::Dup() {
    auto* copy =
        new (std::nothrow) BCDrawingData(nullptr, nullptr, caFileExt, caFileName, dwFlags, nullptr);
    std::stringstream record;
    if (copy && (!Save(record) || !copy->Load(record))) {
        delete copy;
        return nullptr;
    }
    return copy;
}

int BCDrawingData::Save(std::ostream& os) {
    if (!GetGraphics())
        return 0;
    DrawingRecords records(os, nullptr);
    return BCSaveFarBlk(os, kMagic, sizeof kMagic) && BCSaveWord(os, kVersion) &&
           BCListData::Save(os);
}

int BCDrawingData::Load(std::istream& is) {
    char magic[sizeof kMagic] = {};
    unsigned int version = 0;
    if (!GetGraphics() || !opKeeper || !BCLoadFarBlk(is, magic, sizeof magic) ||
        std::memcmp(magic, kMagic, sizeof kMagic) != 0 || !BCLoadWord(is, version) ||
        version != kVersion)
        return 0;
    // Loading empties the list; what earlier loads made goes with it.
    GetGraphics()->Clear(1);
    FreeLoaded();
    DrawingRecords records(is, opKeeper);
    return BCListData::Load(is);
}

// Graphics let go without being freed keep the pieces they point to.
int BCDrawingData::Clear(int freeItems) {
    int cleared = BCListData::Clear(freeItems);
    if (freeItems)
        FreeLoaded();
    return cleared;
}

BCGraphicList* BCDrawingData::GetGraphics() const {
    return dynamic_cast<BCGraphicList*>(GetList());
}

unsigned long BCDrawingData::GetLoadedCount() const {
    return opKeeper ? opKeeper->Count() : 0;
}

void BCDrawingData::FreeLoaded() {
    if (opKeeper)
        opKeeper->FreeAll();
}
