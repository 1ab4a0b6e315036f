#pragma once
// The device's context for one operation, shared by the device and the font code.
#include <windows.h>

#include "bcdevice.h"

// A caller that has not selected the device's context gets it selected for just this scope.
// The release always pairs with the select, also with one that found no context, so that the
// device's count of such selects stays even. A null device gives a null context.
class BCDCScope {
  public:
    explicit BCDCScope(BCDevice* device)
        : m_device(device), m_opened(device && !device->GetDC() && !device->GetSelectCount()) {
        if (m_opened)
            m_device->SelectDC();
    }
    ~BCDCScope() {
        if (m_opened)
            m_device->ReleaseDC();
    }
    BCDCScope(const BCDCScope&) = delete;
    BCDCScope& operator=(const BCDCScope&) = delete;
    HDC dc() const { return m_device ? static_cast<HDC>(m_device->GetDC()) : nullptr; }

  private:
    BCDevice* m_device;
    bool m_opened;
};
