#pragma once
#include <windows.h>

#include "bcobject.h"
#include "bcvalues.h"

class BCModule;
class BCWindow;

// The text cursor of a window: made for the window with a size, placed, shown and hidden;
// destroyed with the object. A null width or height takes the default: the system's border
// width, and the height of a line of the window's font.
class NORLIB1_API BCCaret : public BCObject {
  public:
    BCCaret(BCWindow* window, const BCSize& size);
    ~BCCaret() override;
    BCCaret(const BCCaret&) = delete;
    BCCaret& operator=(const BCCaret&) = delete;

    int IsCreated() const { return blCreated; }
    int SetPos(const BCPosition& pos);
    BCPosition GetPos() const { return psPos; }
    // The size the caret was made with, defaults resolved.
    BCSize GetSize() const { return szSize; }
    int Show();
    int Hide();
    int Destroy();

  private:
    BCWindow* opWindow;
    BCPosition psPos;
    BCSize szSize;
    int blCreated;
};

// Stock cursor types.
enum BCCursorType : unsigned int {
    BC_CURSOR_ARROW = 1,
    BC_CURSOR_IBEAM = 2,
    BC_CURSOR_WAIT = 3,
    BC_CURSOR_CROSS = 4,
    BC_CURSOR_UPARROW = 5,
    BC_CURSOR_SIZE = 6
};

class NORLIB1_API BCCursor : public BCObject {
  public:
    // A stock cursor (the module is accepted for symmetry: stock cursors are the system's);
    // message 10017 for an unknown type, 10018 when it cannot be loaded.
    explicit BCCursor(unsigned int type, BCModule* module = nullptr);
    // A cursor of a module's resources; message 10019 when it cannot be loaded.
    explicit BCCursor(const BCResID& name);
    HCURSOR GetHandle() const { return hCursor; }
    // Makes it the cursor shown now and remembers the one shown before, which it returns.
    HCURSOR Set();
    // Shows again the cursor that the last Set replaced; 0 when Set showed nothing.
    int Restore();

  private:
    HCURSOR hCursor;
    HCURSOR hPrevious;
    int blSet;
};

// Stock icon types.
enum BCIconType : unsigned int {
    BC_ICON_APPLICATION = 1,
    BC_ICON_HAND = 2,
    BC_ICON_QUESTION = 3,
    BC_ICON_EXCLAMATION = 4,
    BC_ICON_ASTERISK = 5
};

class NORLIB1_API BCIcon : public BCObject {
  public:
    // A stock icon; message 10031 when it cannot be had.
    explicit BCIcon(unsigned int type);
    // An icon of a module's resources; message 10032 when it cannot be loaded.
    explicit BCIcon(const BCResID& name);
    HICON GetHandle() const { return hIcon; }

  private:
    HICON hIcon;
};
