#include "bcmodule.h"

#include <cstring>
#include <new>

#include "bcfont.h"
#include "bcids1.h"
#include "kostring.h"

BCModule::BCModule(void* instance, const char* name, unsigned short dataSegment)
    : BCObject(bcids::kTypeModule), lpInstance(instance), caName(nullptr), wDataSeg(dataSegment),
      blRegistered(0), opFontList(nullptr) {
    if (name) {
        caName = new (std::nothrow) char[std::strlen(name) + 1];
        if (caName)
            std::strcpy(caName, name);
    }
}

BCModule::~BCModule() {
    // A module that goes away must not be searched any more.
    BCUnregisterLibModule(this);
    delete[] caName;
    delete opFontList;
}

BCFontList* BCModule::GetFontList() {
    if (!opFontList)
        opFontList = new (std::nothrow) BCFontList();
    return opFontList;
}

void BCModule::Display(const char* prefix) {
    DispObjectMsg("%slpInstance=%p, caName=%s, wDataSeg=%u", prefix ? prefix : "", lpInstance,
                  GetName(), static_cast<unsigned>(wDataSeg));
}

void BCRegisterLibModule(BCModule* module) {
    if (module && module->GetResources() && !module->blRegistered) {
        KoString::AddResourceModule(module->GetResources());
        module->blRegistered = 1;
    }
}

// Each registration is one entry of the search list, so another module object of the same
// instance stays registered.
void BCUnregisterLibModule(BCModule* module) {
    if (module && module->blRegistered) {
        KoString::RemoveResourceModule(module->GetResources());
        module->blRegistered = 0;
    }
}

int BCGetResString(unsigned int id, char* buffer, unsigned int size, BCModule* module) {
    return KoString::LoadResString(id, module ? module->GetResources() : nullptr, buffer, size);
}
