#pragma once
#include <windows.h>

#include "bcvalues.h"
#include "bcwindow.h"

class BCDialog;

// A system control: bound to a control of a dialog template by id, or created as a child
// window at a position and size. Its notifications reach the parent's handlers; with
// Intercept(1) the control's own messages pass through its DispatchEvent first.
class NORLIB1_API BCControlWindow : public BCWindow {
  public:
    BCControlWindow(const BCResID& id, BCDialog* dialog, unsigned int typeCode, BCApplication* app);
    BCControlWindow(const char* className, long style, unsigned int id, BCWindow* parent,
                    const BCPosition& pos, const BCSize& size, unsigned int typeCode,
                    BCApplication* app);
    ~BCControlWindow() override;

    // Template controls: binds to the dialog's control (message 10014 when it has none,
    // 10015 without a dialog window). Created controls: creates the window (10016).
    int Create(const char* title) override;
    // 1: route the control's messages through DispatchEvent; 0 or -1: stop. Asked before the
    // control has its window, the request is kept and applied whenever it is bound or made.
    int Intercept(int on);
    LRESULT DefaultEvent(BCEvent* event) override;
    BCDialog* GetDialog() const { return opDialog; }
    // Used by the owning dialog.
    void ForgetDialog() { opDialog = nullptr; }
    void Unbind();

  private:
    static LRESULT CALLBACK InterceptProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    // Puts the control's own procedure in or out of the way, as asked.
    int Subclass(int on);
    BCDialog* opDialog;
    const char* caClass;
    WNDPROC lpOldProc;
    int blIntercept;
};

// The entries of a list box. A combo box overrides each entry slot, in this order, with its
// own messages. The value in brackets is the result without a window.
class NORLIB1_API BCListControl : public BCControlWindow {
  public:
    using BCControlWindow::BCControlWindow;
    // `item` is the entry's text. The new index, or the negative failure result after its
    // message (10034 the box is full, 10033 other failures) [-1].
    virtual int Append(void* item);
    // 1, or 0 after the same messages [0].
    virtual int Insert(void* item, int index);
    // Index -1 is the last entry; 1 when the entry went [0].
    virtual int Delete(int index);
    // Empties the box; 1 [0].
    virtual int DeleteAll();
    // [-1]
    virtual int GetCount();
    // The selected index, -1 when none [-1].
    virtual int GetCrntInd();
    // Selects the entry; 1 unless the box refused [0].
    virtual int GoTo(int index);
    // The selected entry's text into `buffer`; 1 when a text came back [0].
    virtual int GetCrntItem(char* buffer);

    // An entry's text into `buffer`, which holds GetItemLen + 1 bytes; 1 unless the index is
    // out of range [0].
    int GetItem(int index, char* buffer);
    // [-1]
    int GetItemLen(int index);

  private:
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const;
    // The index an add or insert gave, after reporting its failure.
    int Added(int index) const;
};

class NORLIB1_API BCListBox : public BCListControl {
  public:
    BCListBox(const BCResID& id, BCDialog* dialog, BCApplication* app);
    BCListBox(unsigned int id, BCWindow* parent, const BCPosition& pos, const BCSize& size,
              const char* text, BCApplication* app);
};

// Scroll-bar kinds.
enum BCScrollKind { BC_SCROLL_HORZ = 0, BC_SCROLL_VERT = 1, BC_SCROLL_SIZEBOX = 5 };

class NORLIB1_API BCScrollBar : public BCControlWindow {
  public:
    BCScrollBar(const BCResID& id, BCDialog* dialog, unsigned int kind, unsigned int typeCode,
                BCApplication* app);
    BCScrollBar(unsigned int kind, long style, unsigned int id, BCWindow* parent,
                const BCPosition& pos, const BCSize& size, unsigned int typeCode,
                BCApplication* app);
    unsigned int GetKind() const { return wKind; }
    int SetRange(int minimum, int maximum);
    int SetThumb(int position);
    // -1 without a window.
    int GetThumb() const;

  private:
    unsigned int wKind;
};
