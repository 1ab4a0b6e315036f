#include "bcgfxlist.h"
#include "bcdevice.h"
#include "bcgdi.h"
#include "bcstream.h"
#include "bcmemory.h"

#include <istream>
#include <new>
#include <ostream>

#include "bcshapes.h"
#include "bctextgfx.h"
#include "bcids2.h"

namespace {

// Compounds nest by recursion; a stream or a cycle must not exhaust the stack.
constexpr int kMaxNesting = 64;
int g_nesting = 0;

// Counts one level of compound recursion for as long as it lives.
class NestingGuard {
  public:
    NestingGuard() : m_ok(g_nesting < kMaxNesting) {
        if (m_ok)
            ++g_nesting;
    }
    ~NestingGuard() {
        if (m_ok)
            --g_nesting;
    }
    NestingGuard(const NestingGuard&) = delete;
    NestingGuard& operator=(const NestingGuard&) = delete;
    bool Ok() const { return m_ok; }

  private:
    bool m_ok;
};

short Wrap(int value) {
    return static_cast<short>(value);
}

template <class T> BCGraphicObject* Make() {
    return new (std::nothrow) T;
}

BCGraphicObject* MakeGraphicObject() {
    return new (std::nothrow) BCGraphicObject(bcids::kTypeGraphicObject);
}

BCGraphicObject* MakeDrawGraphic() {
    return new (std::nothrow) BCDrawGraphic(bcids::kTypeDrawGraphic);
}

// The empty objects of the graphic type codes, in code order from kTypeGraphicObject.
BCGraphicObject* (*const kMakers[])() = {
    MakeGraphicObject,      MakeDrawGraphic,        Make<BCLineGraphic>, Make<BCPolylineGraphic>,
    Make<BCBoxGraphic>,     Make<BCPolygonGraphic>, Make<BCArcGraphic>,  Make<BCCircleGraphic>,
    Make<BCEllipseGraphic>, Make<BCChordGraphic>,   Make<BCPieGraphic>,  Make<BCTextGraphic>,
    Make<BCBitmapGraphic>,  Make<BCCompoundGraphic>};
static_assert(sizeof kMakers / sizeof kMakers[0] ==
                  bcids::kTypeCompoundGraphic - bcids::kTypeGraphicObject + 1,
              "one maker per graphic type code");

void DiscardLoaded(BCGraphicObject* obj);

// Everything a load hung off a list that nobody else can reach any more.
void DiscardLoadedList(BCGraphicList* list) {
    if (!list)
        return;
    for (int more = list->Home(); more; more = list->Next())
        DiscardLoaded(static_cast<BCGraphicObject*>(list->GetCrntItem()));
    list->Clear(0);
    delete list;
}

// An object that failed to load was made empty by the list, so whatever it holds now was
// made by its own load and would otherwise be lost.
void DiscardLoaded(BCGraphicObject* obj) {
    if (!obj)
        return;
    if (auto* bitmap = dynamic_cast<BCBitmapGraphic*>(obj))
        delete bitmap->GetBitmap();
    if (auto* compound = dynamic_cast<BCCompoundGraphic*>(obj))
        DiscardLoadedList(compound->GetList());
    if (auto* polyline = dynamic_cast<BCPolylineGraphic*>(obj))
        delete polyline->GetPolyline();
    if (auto* polygon = dynamic_cast<BCPolygonGraphic*>(obj))
        delete polygon->GetPolyline();
    if (auto* shape = dynamic_cast<BCDrawGraphic*>(obj)) {
        delete shape->GetPen();
        delete shape->GetBrush();
    }
    delete obj;
}

} // namespace

// ---- Graphic list

BCGraphicList::BCGraphicList() : BCSingleLinkedList(0, 0) {
    SetObjectType(bcids::kTypeGraphicList);
}

// The base destructor cannot reach DeleteItem of this class any more.
BCGraphicList::~BCGraphicList() {
    Clear(1);
}

int BCGraphicList::DeleteItem(void*, void* item) {
    if (dwFlags & BC_FLAG_KEEP_ITEMS)
        return 1;
    delete static_cast<BCGraphicObject*>(item);
    return 1;
}

int BCGraphicList::LoadBase(std::istream& is) {
    if (!BCSingleLinkedList::LoadBase(is))
        return 0;
    if (dwItemSize != 0) {
        dwItemSize = 0;
        return 0;
    }
    return 1;
}

BCGraphicObject* BCGraphicList::GetHitObject(const BCPosition& pos, int next) {
    for (int more = next ? Next() : Home(); more; more = Next()) {
        auto* obj = static_cast<BCGraphicObject*>(GetCrntItem());
        if (obj && obj->IsHit(pos))
            return obj;
    }
    lpCrnt = nullptr; // past the tail: nothing was found
    return nullptr;
}

BCGraphicObject* BCGraphicList::GetTopHitObject(const BCPosition& pos, short tolerance) {
    BCGraphicObject* top = nullptr;
    auto topNode = lpCrnt;
    for (int more = Home(); more; more = Next()) {
        auto* obj = static_cast<BCGraphicObject*>(GetCrntItem());
        if (obj && obj->HitTest(pos, tolerance)) {
            top = obj;
            topNode = lpCrnt;
        }
    }
    lpCrnt = top ? topNode : nullptr;
    return top;
}

int BCGraphicList::Unhook(BCGraphicObject* object) {
    for (int more = Home(); more; more = Next()) {
        if (GetCrntItem() != object)
            continue;
        const unsigned long flags = dwFlags;
        dwFlags |= BC_FLAG_KEEP_ITEMS;
        DeleteCrnt();
        dwFlags = flags;
        return 1;
    }
    return 0;
}

int BCGraphicList::BringToFront(BCGraphicObject* object) {
    return object && Unhook(object) ? Append(nullptr, object) : 0;
}

int BCGraphicList::SendToBack(BCGraphicObject* object) {
    if (!object || !Unhook(object))
        return 0;
    Home(); // an unsorted insert goes before the current item: the head
    return Insert(nullptr, object);
}

int BCGraphicList::Walk(BCDisplayDevice* dev, const BCPosition* offset, int drawing) {
    if (!dev)
        return 0;
    if (drawing)
        dev->SelectDC();
    for (int more = Home(); more; more = Next()) {
        auto* obj = static_cast<BCGraphicObject*>(GetCrntItem());
        if (!obj)
            return 0; // the context stays selected, as for a failing object
        int result;
        if (offset) {
            const BCPosition stored = obj->GetPos();
            obj->SetPos(BCPosition(Wrap(stored.GetX() + offset->GetX()),
                                   Wrap(stored.GetY() + offset->GetY())));
            result = drawing ? obj->Draw(dev) : obj->UnDraw(dev);
            obj->SetPos(stored);
        } else {
            result = drawing ? obj->Draw(dev) : obj->UnDraw(dev);
        }
        if (!result)
            return 0;
    }
    lpCrnt = nullptr; // past the tail, so that DeleteCrnt after a walk deletes nothing
    if (drawing)
        dev->ReleaseDC();
    return 1;
}

int BCGraphicList::Draw(BCDisplayDevice* dev) {
    return Walk(dev, nullptr, 1);
}

int BCGraphicList::UnDraw(BCDisplayDevice* dev) {
    return Walk(dev, nullptr, 0);
}

int BCGraphicList::Draw(const BCPosition& offset, BCDisplayDevice* dev) {
    return Walk(dev, &offset, 1);
}

int BCGraphicList::UnDraw(const BCPosition& offset, BCDisplayDevice* dev) {
    return Walk(dev, &offset, 0);
}

int BCGraphicList::MakeEmptyObject(unsigned int typeCode, BCGraphicObject*& out) {
    if (typeCode < bcids::kTypeGraphicObject || typeCode > bcids::kTypeCompoundGraphic) {
        DispObjectMsg(bcids::kMsgUnknownGraphicType);
        return 0;
    }
    BCGraphicObject* obj = kMakers[typeCode - bcids::kTypeGraphicObject]();
    if (!obj)
        return 0;
    out = obj;
    return 1;
}

int BCGraphicList::LoadItem(std::istream& is) {
    unsigned int code = 0;
    if (!BCLoadWord(is, code))
        return 0;
    // The object's own Load reads its record from the type code on.
    is.seekg(-4, std::ios::cur);
    if (!is)
        return 0;
    BCGraphicObject* obj = nullptr;
    if (!MakeEmptyObject(code, obj))
        return 0;
    if (!obj->Load(is) || !Append(nullptr, obj)) {
        // The stream's keeper holds what the load made, and frees it: only the object goes.
        if (BCGetLoadKeeper(is))
            delete obj;
        else
            DiscardLoaded(obj);
        return 0;
    }
    return 1;
}

int BCGraphicList::SaveItem(std::ostream& os, void*, void* item) {
    return item ? static_cast<BCGraphicObject*>(item)->Save(os) : 0;
}

// ---- Compound graphic

BCCompoundGraphic::BCCompoundGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                                     BCGraphicList* list)
    : BCGraphicObject(bcids::kTypeCompoundGraphic, id, pos, size), opList(list) {}

BCCompoundGraphic::BCCompoundGraphic()
    : BCGraphicObject(bcids::kTypeCompoundGraphic), opList(nullptr) {}

BCCompoundGraphic::~BCCompoundGraphic() = default;

BCGraphicList* BCCompoundGraphic::SetList(BCGraphicList* list) {
    BCGraphicList* old = opList;
    opList = list;
    return old;
}

int BCCompoundGraphic::Draw(BCDisplayDevice* dev) {
    NestingGuard guard;
    if (!opList || !guard.Ok())
        return 0;
    return opList->Draw(BCPosition(coX, coY), dev);
}

int BCCompoundGraphic::UnDraw(BCDisplayDevice* dev) {
    NestingGuard guard;
    if (!opList || !guard.Ok())
        return 0;
    return opList->UnDraw(BCPosition(coX, coY), dev);
}

int BCCompoundGraphic::Save(std::ostream& os) {
    NestingGuard guard;
    if (!guard.Ok() || !BCGraphicObject::Save(os))
        return 0;
    if (!opList)
        opList = new (std::nothrow) BCGraphicList;
    return opList && opList->Save(os);
}

int BCCompoundGraphic::Load(std::istream& is) {
    NestingGuard guard;
    if (!guard.Ok() || !BCGraphicObject::Load(is))
        return 0;
    opList = new (std::nothrow) BCGraphicList;
    BCKeepLoaded(is, opList);
    return opList && opList->Load(is);
}
