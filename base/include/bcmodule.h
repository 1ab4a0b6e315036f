#pragma once
#include "bcobject.h"

class BCFontList;

// A loaded module (application or library) and its resources. Resource look-ups search the
// module asked for, then the application's, then every registered library module.
class NORLIB1_API BCModule : public BCObject {
  public:
    BCModule(void* instance, const char* name, unsigned short dataSegment);
    ~BCModule() override;
    BCModule(const BCModule&) = delete;
    BCModule& operator=(const BCModule&) = delete;

    void* GetInstance() const { return lpInstance; }
    // The handle string and dialog resources are loaded from.
    void* GetResources() const { return lpInstance; }
    const char* GetName() const { return caName ? caName : ""; }
    unsigned short GetDataSegment() const { return wDataSeg; }
    // The faces of the machine, listed on first use and kept by the module.
    BCFontList* GetFontList();
    void Display(const char* prefix) override;

  private:
    friend NORLIB1_API void BCRegisterLibModule(BCModule* module);
    friend NORLIB1_API void BCUnregisterLibModule(BCModule* module);
    void* lpInstance;
    char* caName;
    unsigned short wDataSeg;
    int blRegistered;
    BCFontList* opFontList;
};

// Libraries register their module so that their string tables are found from anywhere; a
// registered module unregisters itself when it is destroyed.
NORLIB1_API void BCRegisterLibModule(BCModule* module);
NORLIB1_API void BCUnregisterLibModule(BCModule* module);

// Copies string resource `id` into `buffer` (NUL-terminated, cut to size - 1) in the search
// order above, starting with `module` (may be null); returns the length, 0 when not found.
NORLIB1_API int BCGetResString(unsigned int id, char* buffer, unsigned int size, BCModule* module);
