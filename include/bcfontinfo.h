#pragma once
// The metrics of a device's current font, and the face, size and format menus through which a
// window's user chooses the window's font.
#include <windows.h>

#include "norlib2api.h"
#include "bcobject.h"

class BCDisplayDevice;
class BCMenu;
class BCWindow;

// The text metrics of the font selected on a device, read once when made. A null device, or
// one that cannot give a context, is reported as a fault and leaves the metrics zero.
class NORLIB2_API BCFontInfo : public BCObject {
  public:
    explicit BCFontInfo(BCDisplayDevice* opDev);
    void Display(const char* prefix) override;
    const TEXTMETRICA& GetMetrics() const { return tmMetrics; }

  private:
    TEXTMETRICA tmMetrics;
};

// Font menus. Command ids: 141 light, 142 normal, 143 bold, 144 italic, 145 underline,
// 146 strike-out (147-153 reserved and ignored); 161 + n the n-th face of the module's font
// list; 200 + p a size of p points. The functions act on the window's current font. When the
// window had none, or a face the machine lacks, they put a new font on the window: that font
// is the caller's to delete once it is taken off the window.

// Fills the submenu at `pos` of `menu` with the machine's faces and checks the window's
// (the "System" face when it has none or an unknown one); 1 when a face was checked.
NORLIB2_API int BCInitFontMenu(BCWindow* w, BCMenu* menu, unsigned int pos);
// Fills the submenu at `pos` with the sizes of the window's face and selects the font's size
// among them; 1 when the face has sizes. The position is remembered for BCSelectFont.
NORLIB2_API int BCInitSizeMenu(BCWindow* w, BCMenu* menu, unsigned int pos);
// Checks the style items as the window's font is; returns 1.
NORLIB2_API int BCInitFormatMenu(BCWindow* w, BCMenu* menu);
// Carries out a font-menu command; 1 when `id` is one, 0 otherwise.
NORLIB2_API int BCFontMenuCommand(BCWindow* w, BCMenu* menu, unsigned int id);
// Gives the window's font the face of item `id` and rebuilds the size menu; message 10078
// when the list no longer holds such a face (the window is then left without a font).
NORLIB2_API int BCSelectFont(BCWindow* w, BCMenu* menu, unsigned int id);
// Gives the window's font the first listed size of at least id - 200 points and checks it;
// a size above every listed one changes nothing. A face without sizes takes the font off the
// window. 1 when a size was set.
NORLIB2_API int BCSelectSize(BCWindow* w, BCMenu* menu, unsigned int id);
