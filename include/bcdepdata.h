#pragma once
#include <iosfwd>
#include "bcsllist.h"
#include "bcrendata.h"
#include "bcfwd.h"
#include "norlib2api.h"

class BCDependentData;

// Notification codes a dependent data object sends to its updaters.
enum BCUpdateCode : unsigned int { BC_UPDATE_CHANGED = 4, BC_UPDATE_CLEARED = 6 };

// An observer of a data object: tells its target when the data change. The target is not
// owned. A plain updater answers 0 and so stops a broadcast at its place in the list.
class NORLIB2_API BCUpdater : public BCObject {
  public:
    BCUpdater(unsigned int typeCode, BCObject* target);

    // A new updater of the same class for the same target; caller owns it.
    virtual BCUpdater* Dup();
    // Returns non-zero to let the updaters after this one be told.
    virtual int DataUpdated(BCObject* source, unsigned int code, BCObject* data);

    BCObject* GetTarget() const { return opTarget; }

  protected:
    BCObject* opTarget;
};

// Passes a notification on to another dependent data object.
class NORLIB2_API BCDataUpdater : public BCUpdater {
  public:
    explicit BCDataUpdater(BCDependentData* target);

    BCUpdater* Dup() override;
    // The target's answer; 0 without a target.
    int DataUpdated(BCObject* source, unsigned int code, BCObject* data) override;
};

// Passes a notification on to a window (its DataUpdated).
class NORLIB2_API BCWindowUpdater : public BCUpdater {
  public:
    explicit BCWindowUpdater(BCWindow* target);

    BCUpdater* Dup() override;
    // The window's answer; 0 without a target.
    int DataUpdated(BCObject* source, unsigned int code, BCObject* data) override;
};

// The observers of one or more data objects, keyed by target; owns its updaters.
class NORLIB2_API BCUpdaterList : public BCSingleLinkedList {
  public:
    BCUpdaterList();
    ~BCUpdaterList() override;

    // Adds `updater` at the current position, or at the end when `append` is non-zero. A
    // target that already has an updater keeps it: the result is 1 and the caller still
    // owns `updater`.
    int InsertUpdater(BCUpdater* updater, int append);
    // Removes and deletes the updater of `target`; 0 when it has none.
    int DeleteUpdater(BCObject* target);
    int DeleteItem(void* key, void* item) override;
    // Tells every updater in list order; stops with 0 at the first that answers 0.
    int UpdateAll(BCObject* source, unsigned int code, BCObject* data);
};

// A data object that wraps another (which holds the contents) and reports every change to
// an updater list. The wrapped object is owned unless flag 0x0008 is set; the updater list
// never is, and copies share it.
class NORLIB2_API BCDependentData : public BCRenderableData {
  public:
    BCDependentData(BCRenderableData* data, unsigned int flags, BCUpdaterList* updaters);
    // The copy wraps a duplicate of the other's object, which it owns.
    BCDependentData(const BCDependentData& other);
    BCDependentData& operator=(const BCDependentData& other);
    ~BCDependentData() override;

    // The stream holds exactly the wrapped object's record.
    int Load(std::istream& is) override;
    int Save(std::ostream& os) override;
    void Display(const char* prefix) override;

    BCRenderableData* Dup() override;
    // Notifies code 6 before the contents go.
    int Clear(int freeItems) override;
    int IsRenderable(BCFormat& format) override;
    unsigned long GetData(void* buffer, unsigned long size, BCFormat& format) override;
    void* GetDataPtr(BCFormat& format) override;
    unsigned long GetLen(BCFormat& format) override;
    // Notifies code 4 after the contents changed.
    unsigned long SetData(void* buffer, unsigned long length, BCFormat& format) override;
    // Accepts notifications from the objects this one listens to.
    virtual int DataUpdated(BCObject* source, unsigned int code, BCObject* data);

    // Wraps `data` instead (not deleting the old object) and notifies code 4; returns the
    // old object, which the caller now owns.
    BCRenderableData* SetObject(BCRenderableData* data);
    // 1 without an updater list, else the list's answer.
    int UpdateDependents(unsigned int code, BCRenderableData* data);

    BCRenderableData* GetDataObject() const { return opData; }
    BCUpdaterList* GetUpdaters() const { return opUpdaters; }

  protected:
    BCRenderableData* opData;
    BCUpdaterList* opUpdaters;

  private:
    void Wrap(BCRenderableData* data);
    void Adopt(BCRenderableData* copy, BCUpdaterList* updaters);
    void DeleteOwnedData();
};
