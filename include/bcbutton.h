#pragma once
#include "bccontrol.h"
#include "bcfwd.h"
#include "norlib2api.h"

// Buttons, static controls and the size box: thin wrappers of the system controls. Each is
// bound to a control of a dialog template by id or made as a child at a position and size;
// the child kinds are created at once when they are given a text. Every operation asks for
// the window first and, without one, gives 0.

// The text operations common to every button kind.
class NORLIB2_API BCButtonControl : public BCControlWindow {
  public:
    BCButtonControl(const BCResID& id, BCDialog* dialog, unsigned int typeCode, BCApplication* app);
    BCButtonControl(long style, unsigned int id, BCWindow* parent, const BCPosition& pos,
                    const BCSize& size, unsigned int typeCode, const char* text,
                    BCApplication* app);

    // The system result.
    int SetText(const char* text);
    // At most size - 1 characters, terminated; the count read (0 without a window, unlike
    // the edit controls).
    int GetText(char* buffer, unsigned int size);
    int GetTextLen() const;

  protected:
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const;
};

class NORLIB2_API BCRadioButton : public BCButtonControl {
  public:
    BCRadioButton(const BCResID& id, BCDialog* dialog, BCApplication* app);
    BCRadioButton(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
                  const char* text, BCApplication* app);
    // 1 when checked, else 0.
    int GetState() const;
    // The system result.
    int SetState(unsigned int state);
};

// With control id 1 it is the dialog's default button.
class NORLIB2_API BCPushButton : public BCButtonControl {
  public:
    BCPushButton(const BCResID& id, BCDialog* dialog, BCApplication* app);
    BCPushButton(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
                 const char* text, BCApplication* app);
};

class NORLIB2_API BCCheckBox : public BCButtonControl {
  public:
    BCCheckBox(const BCResID& id, BCDialog* dialog, BCApplication* app);
    BCCheckBox(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
               const char* text, BCApplication* app);
    // 1 when checked or indeterminate, else 0.
    int GetState() const;
    // The system result.
    int SetState(int state);
};

class NORLIB2_API BCGroupBox : public BCButtonControl {
  public:
    BCGroupBox(const BCResID& id, BCDialog* dialog, BCApplication* app);
    BCGroupBox(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
               const char* text, BCApplication* app);
    // Deletes the background brush the box was given.
    ~BCGroupBox() override;
    BCGroupBox(const BCGroupBox&) = delete;
    BCGroupBox& operator=(const BCGroupBox&) = delete;
};

// A size box that draws a right and a bottom edge line over the system's picture.
class NORLIB2_API BCSizeBox : public BCScrollBar {
  public:
    BCSizeBox(const BCResID& id, BCDialog* dialog, BCApplication* app);
    BCSizeBox(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
              BCApplication* app);
    // At the parent's origin, as large as a scroll bar is wide.
    BCSizeBox(unsigned int id, BCWindow* parent, BCApplication* app);
    LRESULT Paint(BCEvent* event) override;
};

class NORLIB2_API BCStaticControl : public BCControlWindow {
  public:
    BCStaticControl(const BCResID& id, BCDialog* dialog, BCApplication* app);
    // `id` is the type code too. The window is made at once, without a text, when `create`
    // is non-zero.
    BCStaticControl(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
                    long style, int create, BCApplication* app);
};

// A label. Made at once when it has a text, or else when its id is not 0: then its text is
// the string resource of that number (at most 80 characters).
class NORLIB2_API BCStaticText : public BCStaticControl {
  public:
    BCStaticText(const BCResID& id, BCDialog* dialog, BCApplication* app);
    BCStaticText(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
                 const char* text, long style, BCApplication* app);
    // As the button texts: the system result; the count read; the length; 0 without a window.
    int SetText(const char* text);
    int GetText(char* buffer, unsigned int size);
    int GetTextLen() const;
};

// An icon of the system icon size, loaded from `icon` (by name when it has one) in the
// icon's module, the application's or this library's.
class NORLIB2_API BCStaticIcon : public BCStaticControl {
  public:
    BCStaticIcon(const BCResID& id, BCDialog* dialog, BCApplication* app);
    // Made at once.
    BCStaticIcon(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCResID& icon,
                 BCApplication* app);
};
