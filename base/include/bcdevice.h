#pragma once
#include "bcobject.h"
#include "bcvalues.h"

class BCModule;

// Device flags.
enum BCDeviceFlag : unsigned long {
    BC_DEV_OWNS_DC = 0x0001, // holds a context it created
    BC_DEV_TOP_DOWN = 0x0002 // y grows downwards
};

// Something to draw on. SelectDC/ReleaseDC nest: the outermost pair obtains the platform
// context through GetDeviceDC and gives it back through ReleaseDeviceDC.
class NORLIB1_API BCDevice : public BCObject {
  public:
    explicit BCDevice(unsigned int typeCode = 22, BCModule* module = nullptr);
    ~BCDevice() override;
    BCDevice(const BCDevice&) = delete;
    BCDevice& operator=(const BCDevice&) = delete;

    void Display(const char* prefix) override;
    // The platform context (HDC) for a first SelectDC; null when there is none.
    virtual void* GetDeviceDC();
    virtual int ReleaseDeviceDC(void* dc);

    // Nesting faults are reported with messages 10020-10024.
    int SelectDC();
    int ReleaseDC();
    // The selected context (HDC), null outside a SelectDC/ReleaseDC pair.
    void* GetDC() const { return hDC; }
    unsigned int GetSelectCount() const { return wSelectCount; }
    unsigned long GetDeviceFlags() const { return dwDevFlags; }
    // Returns the previous flags.
    unsigned long SetDeviceFlags(unsigned long bits, int on);
    const BCRectangle& GetUserRect() const { return rcUser; }
    void SetUserRect(const BCRectangle& rect) { rcUser = rect; }
    BCModule* GetModule() const { return opModule; }

  protected:
    // Puts a context that the caller obtained (a paint context) in place as if selected.
    void AdoptDC(void* dc);
    void* DropDC();

    void* hDC;
    unsigned int wSelectCount;
    unsigned long dwDevFlags;
    BCRectangle rcUser;
    BCModule* opModule;
};

// A device that shows things to the user (a window, a printer page).
class NORLIB1_API BCDisplayDevice : public BCDevice {
  public:
    explicit BCDisplayDevice(unsigned int typeCode = 25, BCModule* module = nullptr);
    ~BCDisplayDevice() override;
};
