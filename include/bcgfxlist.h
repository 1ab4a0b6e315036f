#pragma once
#include <iosfwd>
#include "bcgraphic.h"
#include "bcsllist.h"

// An owning list of graphic objects; its order is the z-order (head at the bottom, painted
// first). Items are BCGraphicObject pointers with null keys. Loading re-creates each object
// from the type code at the start of its record.
class NORLIB2_API BCGraphicList : public BCSingleLinkedList {
  public:
    BCGraphicList();
    ~BCGraphicList() override;

    // The first object in list order whose bounding box holds `pos`, from the head (`next`
    // 0) or from the item after the current one (`next` non-zero), so repeated calls with 1
    // walk bottom to top. The current item is left on the object returned.
    BCGraphicObject* GetHitObject(const BCPosition& pos, int next);
    // The topmost object that HitTest finds at `pos` with `tolerance`, or null; the current
    // item is left on it (on no item when none is hit).
    BCGraphicObject* GetTopHitObject(const BCPosition& pos, short tolerance);
    // Move `object` to the top (painted last) or the bottom of the z-order; 0 when the list
    // does not hold it. The current item is left on it. Should the list have no memory to
    // take it back, 0 too, and the object is the caller's again.
    int BringToFront(BCGraphicObject* object);
    int SendToBack(BCGraphicObject* object);

    // Every object in list order. A null item or a failing object ends the walk with 0; Draw
    // then returns without releasing the device's context, on purpose.
    int Draw(BCDisplayDevice* dev);
    int UnDraw(BCDisplayDevice* dev);
    // The same with every object displaced by `offset` (16-bit wrap) while it paints; the
    // stored positions are unchanged afterwards.
    int Draw(const BCPosition& offset, BCDisplayDevice* dev);
    int UnDraw(const BCPosition& offset, BCDisplayDevice* dev);

    // Reads the type code, steps back over it, makes the empty object, loads it and appends
    // it. A failed load deletes the object and gives 0.
    int LoadItem(std::istream& is) override;
    int SaveItem(std::ostream& os, void* key, void* item) override;
    // Destroys the object (unless flag 0x0800 says the list keeps it).
    int DeleteItem(void* key, void* item) override;
    // The list record of this class always has item size 0.
    int LoadBase(std::istream& is) override;

    // An empty object of a graphic type code (70 to 83); other codes report message 10079
    // and give 0 with `out` untouched. Not virtual: a list with graphic classes of its own
    // replaces LoadItem.
    int MakeEmptyObject(unsigned int typeCode, BCGraphicObject*& out);

  private:
    // Takes `object` out of the list without freeing it; 0 when the list does not hold it.
    int Unhook(BCGraphicObject* object);
    // Shared by the four walks: `offset` null for no displacement.
    int Walk(BCDisplayDevice* dev, const BCPosition* offset, int drawing);
};

// A graphic holding a graphic list whose objects are placed relative to the compound's
// top-left corner. The list is not deleted with the compound: it belongs to the caller, also
// when Save or Load made it. Record: the graphic-object record, then the list's record.
// Nesting deeper than 64 compounds is refused by Load, Save, Draw and UnDraw (0).
class NORLIB2_API BCCompoundGraphic : public BCGraphicObject {
  public:
    BCCompoundGraphic(unsigned int id, const BCPosition& pos, const BCSize& size,
                      BCGraphicList* list);
    BCCompoundGraphic();
    ~BCCompoundGraphic() override;

    // Load always makes a new list; the one held before is dropped, not freed.
    int Load(std::istream& is) override;
    // Without a list an empty one is made and kept first.
    int Save(std::ostream& os) override;
    // 0 without a list.
    int Draw(BCDisplayDevice* dev) override;
    int UnDraw(BCDisplayDevice* dev) override;

    BCGraphicList* GetList() const { return opList; }
    BCGraphicList* SetList(BCGraphicList* list);

  private:
    BCGraphicList* opList;
};
