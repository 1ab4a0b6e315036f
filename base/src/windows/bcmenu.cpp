#include "bcmenu.h"

#include <cstring>

#include "bcids1.h"
#include "bcmodule.h"
#include "bcplatform.h"
#include "bcvalues.h"

namespace {
constexpr unsigned int kNotFound = 0xFFFF;

HINSTANCE InstanceOf(BCModule* module) {
    return module ? static_cast<HINSTANCE>(module->GetResources()) : GetModuleHandleA(nullptr);
}
} // namespace

BCMenu::BCMenu(BCModule* module)
    : BCObject(bcids::kTypeMenu), hMenu(BCTraced(CreateMenu(), "CreateMenu")), opModule(module),
      blOwned(1), hShownBy(nullptr) {
    if (!hMenu)
        DispObjectMsg(bcids::kMsgCannotCreateMenu);
}

BCMenu::BCMenu(const BCResID& name)
    : BCObject(bcids::kTypeMenu), hMenu(nullptr), opModule(name.GetModule()), blOwned(1),
      hShownBy(nullptr) {
    hMenu = BCTraced(LoadMenuA(InstanceOf(opModule), name.GetResource()), "LoadMenuA");
    if (!hMenu) {
        char number[16];
        wsprintfA(number, "%u", name.GetResNum());
        DispObjectMsg(bcids::kMsgCannotLoadMenu, name.GetResName() ? name.GetResName() : number);
    }
}

BCMenu::BCMenu(BCMenu* parent, unsigned int position, BCModule* module)
    : BCObject(bcids::kTypeMenu), hMenu(nullptr), opModule(module), blOwned(0), hShownBy(nullptr) {
    if (parent && parent->hMenu)
        hMenu = GetSubMenu(parent->hMenu, static_cast<int>(position));
}

BCMenu::BCMenu(HMENU handle)
    : BCObject(bcids::kTypeMenu), hMenu(handle), opModule(nullptr), blOwned(0), hShownBy(nullptr) {}

BCMenu::~BCMenu() {
    if (hMenu && blOwned && !hShownBy)
        BCTraced(DestroyMenu(hMenu), "DestroyMenu");
}

void BCMenu::WindowGone(HWND window) {
    if (!window || window != hShownBy)
        return;
    hMenu = nullptr;
    hShownBy = nullptr;
}

void BCMenu::Display(const char* prefix) {
    DispObjectMsg("%shMenu=%p, items=%d", prefix ? prefix : "", static_cast<void*>(hMenu),
                  GetItemCount());
}

int BCMenu::GetItemCount() const {
    return hMenu ? GetMenuItemCount(hMenu) : 0;
}

int BCMenu::GetItemText(unsigned int position, char* buffer, int size) const {
    if (!buffer || size <= 0)
        return 0;
    buffer[0] = '\0';
    return hMenu ? GetMenuStringA(hMenu, position, buffer, size, MF_BYPOSITION) : 0;
}

unsigned int BCMenu::FindItem(const char* text, int from) const {
    if (!hMenu || !text)
        return kNotFound;
    char buffer[256];
    for (int i = from < 0 ? 0 : from, n = GetItemCount(); i < n; ++i) {
        if (GetItemText(static_cast<unsigned int>(i), buffer, sizeof buffer) &&
            std::strcmp(buffer, text) == 0)
            return static_cast<unsigned int>(i);
    }
    return kNotFound;
}

int BCMenu::Enable(unsigned int item, int byCommand, int) {
    if (!hMenu)
        return 0;
    UINT how = byCommand ? MF_BYCOMMAND : MF_BYPOSITION;
    return EnableMenuItem(hMenu, item, how | MF_ENABLED) != -1;
}

int BCMenu::Disable(unsigned int item, int byCommand, int gray) {
    if (!hMenu)
        return 0;
    UINT how = (byCommand ? MF_BYCOMMAND : MF_BYPOSITION) | (gray ? MF_GRAYED : MF_DISABLED);
    return EnableMenuItem(hMenu, item, how) != -1;
}

int BCMenu::IsEnabled(unsigned int id) const {
    if (!hMenu)
        return 0;
    UINT state = GetMenuState(hMenu, id, MF_BYCOMMAND);
    return state != static_cast<UINT>(-1) && !(state & (MF_GRAYED | MF_DISABLED));
}

int BCMenu::Append(unsigned int id, const char* text) {
    return hMenu && BCTraced(AppendMenuA(hMenu, MF_STRING, id, text ? text : ""), "AppendMenuA");
}

int BCMenu::Append(BCMenu* popup, const char* text) {
    if (!hMenu || !popup || !popup->hMenu)
        return 0;
    if (!AppendMenuA(hMenu, MF_POPUP | MF_STRING, reinterpret_cast<UINT_PTR>(popup->hMenu),
                     text ? text : ""))
        return BCTraceFailure("AppendMenuA");
    popup->blOwned = 0; // destroyed with this menu now
    return 1;
}

int BCMenu::Delete(unsigned int id) {
    return hMenu && DeleteMenu(hMenu, id, MF_BYCOMMAND);
}

int BCMenu::SetCheck(unsigned int id, int checked) {
    if (!hMenu)
        return 0;
    return CheckMenuItem(hMenu, id, MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED)) !=
           static_cast<DWORD>(-1);
}

int BCMenu::IsChecked(unsigned int id) const {
    if (!hMenu)
        return 0;
    UINT state = GetMenuState(hMenu, id, MF_BYCOMMAND);
    return state != static_cast<UINT>(-1) && (state & MF_CHECKED);
}

int BCMenu::SetExclCheck(unsigned int first, unsigned int last, unsigned int id) {
    if (!hMenu)
        return 0;
    for (unsigned int item = first; item <= last; ++item)
        CheckMenuItem(hMenu, item, MF_BYCOMMAND | MF_UNCHECKED);
    return SetCheck(id, 1);
}
