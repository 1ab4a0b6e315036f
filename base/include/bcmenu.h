#pragma once
#include <windows.h>

#include "bcobject.h"

class BCModule;
class BCResID;

// A menu bar or popup menu. A menu this object created or loaded is destroyed with it unless
// a window shows it; wrappers of an existing handle (submenus, menu events) never
// destroy it.
class NORLIB1_API BCMenu : public BCObject {
  public:
    // An empty menu bar; message 10051 when it cannot be made.
    explicit BCMenu(BCModule* module = nullptr);
    // A menu from a module's resources; message 10050 when it cannot be loaded.
    explicit BCMenu(const BCResID& name);
    // Wraps the submenu at `position` of `parent` (null handle when there is none).
    BCMenu(BCMenu* parent, unsigned int position, BCModule* module);
    // Wraps an existing menu handle.
    explicit BCMenu(HMENU handle);
    ~BCMenu() override;
    BCMenu(const BCMenu&) = delete;
    BCMenu& operator=(const BCMenu&) = delete;

    HMENU GetHandle() const { return hMenu; }
    BCModule* GetModule() const { return opModule; }
    // The window showing the menu as its own menu bar (null: none); the system destroys the
    // menu with that window. Windows that only remember a menu (a document window keeps the
    // frame's) never own it.
    void SetShownBy(HWND window) { hShownBy = window; }
    HWND GetShownBy() const { return hShownBy; }
    // `window` is gone: when it showed the menu, the handle went with it.
    void WindowGone(HWND window);
    void Display(const char* prefix) override;

    int GetItemCount() const;
    // Position of the item whose text is `text`, searching from `from`; 0xFFFF when absent.
    unsigned int FindItem(const char* text, int from) const;
    int GetItemText(unsigned int position, char* buffer, int size) const;
    // `byCommand` non-zero: `item` is a command id, else a position. Disable greys the item
    // when `gray` is non-zero, else only disables it.
    int Enable(unsigned int item, int byCommand = 1, int gray = 1);
    int Disable(unsigned int item, int byCommand = 1, int gray = 1);
    int IsEnabled(unsigned int id) const;
    int Append(unsigned int id, const char* text);
    // Appends `popup` as a submenu; this menu takes ownership of it.
    int Append(BCMenu* popup, const char* text);
    int Delete(unsigned int id);
    int SetCheck(unsigned int id, int checked);
    int IsChecked(unsigned int id) const;
    // Checks `id` and clears the check of every other command first..last.
    int SetExclCheck(unsigned int first, unsigned int last, unsigned int id);

  private:
    HMENU hMenu;
    BCModule* opModule;
    int blOwned;
    HWND hShownBy;
};
