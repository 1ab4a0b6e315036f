#pragma once
#include "bcgfxlist.h"
#include "bclistdata.h"

// A drawing document over a graphic list. Its record is a header ("N2DW", version 1) and the
// list's record in drawing records (see BCBeginDrawingRecords), so that every graphic kind,
// nested compounds, pens, brushes, fonts and bitmaps load back as they were saved.
//
// Ownership: the drawing always owns its list (flag 0x0008 is ignored), and the list owns its
// graphics. What the drawing's loads make (pens, brushes, fonts, polylines, bitmaps, the lists of
// compounds) belongs to the drawing and is freed when the drawing is emptied or destroyed; do not
// delete those yourself. Objects the application puts into the drawing stay the application's.
class NORLIB2_API BCDrawingData : public BCListData {
  public:
    // A null list makes an empty one.
    BCDrawingData(BCGraphicList* list, BCWindow* window, const char* fileExt, const char* fileName,
                  unsigned int flags, BCUpdaterList* updaters);
    ~BCDrawingData() override;
    BCDrawingData(const BCDrawingData&) = delete;
    BCDrawingData& operator=(const BCDrawingData&) = delete;

    // A deep copy, made by saving and loading: it shares nothing. Null when that failed.
    BCRenderableData* Dup() override;
    // A record without the header, of a later version or cut short gives 0; what was read
    // before the fault stays in the drawing.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    // Empties the list; with `freeItems` it also frees what the loads made.
    int Clear(int freeItems) override;

    BCGraphicList* GetGraphics() const;
    // How many objects the loads made that the drawing holds for freeing.
    unsigned long GetLoadedCount() const;

  private:
    class Keeper;
    void FreeLoaded();
    Keeper* opKeeper;
};
