#pragma once
#include <windows.h>

#include "bcdevice.h"
#include "bcevent.h"
#include "bcsllist.h"
#include "bcvalues.h"

class BCApplication;
class BCMenu;
class BCModule;

// A window object and its system window. The object attaches itself to the window while
// the window is created (BCSetCreateWindow) and detaches when either goes: destroying the
// object destroys the window; destroying the window leaves the object without a handle.
// Operations on an object without a window return their no-window value.
class NORLIB1_API BCWindow : public BCDisplayDevice {
  public:
    BCWindow(unsigned int typeCode, BCWindow* parent, BCApplication* app);
    ~BCWindow() override;

    void Display(const char* prefix) override;
    void* GetDeviceDC() override;
    int ReleaseDeviceDC(void* dc) override;

    // The object's bookkeeping for a new window (title, window class); the window kinds
    // create the system window after it.
    virtual int Create(const char* title);
    // Routes an event to its handler; events without one go to DefaultEvent.
    virtual LRESULT DispatchEvent(BCEvent* event);
    virtual LRESULT DefaultEvent(BCEvent* event);
    // Told by a data object this window depends on that the data changed; repaints and
    // returns 1 so that the notification goes on.
    virtual long DataUpdated(BCObject* source, unsigned int code, BCObject* data);

    // Event handlers. Each base handler passes the event to DefaultEvent and returns its
    // result; an override decides itself whether the default handling is wanted. They
    // return what DispatchEvent returns for the message (LRESULT: a handle fits).
    virtual LRESULT CharKey(BCEvent* event);
    virtual LRESULT Focus(BCEvent* event);
    virtual LRESULT HorizScroll(BCEvent* event);
    virtual LRESULT Initialize(BCEvent* event);
    virtual LRESULT KeyDown(BCEvent* event);
    virtual LRESULT MenuCommand(BCEvent* event);
    virtual LRESULT MenuInit(BCEvent* event);
    virtual LRESULT MouseDown(BCEvent* event);
    virtual LRESULT MouseUp(BCEvent* event);
    virtual LRESULT MouseDblClk(BCEvent* event);
    // Mouse moves while a button is held.
    virtual LRESULT MouseDrag(BCEvent* event);
    virtual LRESULT Paint(BCEvent* event);
    virtual LRESULT ReSize(BCEvent* event);
    virtual LRESULT VertScroll(BCEvent* event);
    virtual LRESULT ButtonSnglClk(BCEvent* event);
    virtual LRESULT EditChange(BCEvent* event);
    virtual LRESULT ListBoxSnglClk(BCEvent* event);
    virtual LRESULT ListBoxDblClk(BCEvent* event);
    virtual LRESULT Close(BCEvent* event);
    // A timer of this window went off; GetTimerID tells which.
    virtual LRESULT Timer(BCEvent* event);

    int Destroy();
    // Starts (or restarts) timer `id`, which sends Timer events every `milliseconds` until
    // KillTimer; 1, or 0 without a window or when the system refused.
    int SetTimer(unsigned int id, unsigned int milliseconds);
    // 1 when the timer ran and is stopped now.
    int KillTimer(unsigned int id);
    // Non-zero while the system window exists.
    int HandleCheck() const;
    HWND GetHandle() const { return hWnd; }
    BCApplication* GetApp() const { return opApp; }
    int IsBeingDestroyed() const { return blDestroying; }

    long GetStyle() const { return dwStyle; }
    // Adds (`add` non-zero) or removes style bits; returns the previous style word.
    long SetStyle(long bits, int add);
    BCRectangle GetWindowRect() const;
    // Before creation: where the window will be made; after: moves it.
    int SetWindowRect(const BCRectangle& rect);
    BCRectangle GetClientRect() const;
    BCWindow* GetPrnt() const { return opParent; }
    BCWindow* SetPrnt(BCWindow* parent);
    unsigned int GetID() const { return wID; }
    unsigned int SetID(unsigned int id);
    int GetTitle(char* buffer, int size) const;
    int SetTitle(const char* title);
    BCMenu* GetMenu() const { return opMenu; }
    // Shows `menu` as the window's menu bar (null removes it); returns the previous menu.
    virtual BCMenu* SetMenu(BCMenu* menu);
    // The cursor shown over the client area; null: the class's.
    int SetCursor(HCURSOR cursor);
    HCURSOR GetCursor() const { return hCursor; }

    int Show(int command);
    int SetFocus();
    int HasFocus() const;
    int Enable();
    int Disable();
    int IsEnabled() const;
    int EnableRedraw(int redraw);
    int Repaint();
    int Invalidate(const BCRectangle* rect, int erase);
    int Update();
    int CaptureMouse();
    int ReleaseMouse();

    int SetVertScrollRange(int minimum, int maximum, int redraw = 1);
    int SetHorizScrollRange(int minimum, int maximum, int redraw = 1);
    int SetVertThumb(int position, int redraw = 1);
    int SetHorizThumb(int position, int redraw = 1);
    // The thumb position; -1 without a window.
    int GetVertThumb() const;
    int GetHorizThumb() const;

    // Used by the window procedures.
    int Attach(HWND window);
    void Detach();
    static BCWindow* FromHandle(HWND window);

  protected:
    // Registers the framework's window class of `procedure` once; returns its name.
    static const char* WindowClass();
    // Creates the system window for this object with the given class and parent handle.
    int CreateSystemWindow(const char* className, HWND parent, HMENU menuOrId,
                           unsigned int failureMessage);

    HWND hWnd;
    BCWindow* opParent;
    unsigned int wID;
    long dwStyle;
    long dwExStyle;
    BCRectangle rcWindow;
    char* caTitle;
    BCMenu* opMenu;
    BCApplication* opApp;
    HCURSOR hCursor;
    int blDestroying;
};

// A top-level window; the application's first main window ends the message loop when it
// goes.
class NORLIB1_API BCMainWindow : public BCWindow {
  public:
    explicit BCMainWindow(BCApplication* app, unsigned int typeCode = 27);
    int Create(const char* title) override;
};

// A child of another window, with a control id.
class NORLIB1_API BCChildWindow : public BCWindow {
  public:
    BCChildWindow(BCWindow* parent, unsigned int id, BCApplication* app,
                  unsigned int typeCode = 29);
    int Create(const char* title) override;
};

// A window of its own, owned by another.
class NORLIB1_API BCPopUpWindow : public BCWindow {
  public:
    BCPopUpWindow(BCWindow* owner, BCApplication* app, unsigned int typeCode = 30);
    int Create(const char* title) override;
};

// Windows kept by pointer (not owned).
class NORLIB1_API BCWindowList : public BCSingleLinkedList {
  public:
    BCWindowList();
    // Asks every window to close (WM_CLOSE, sent); returns 1 when all are gone.
    int CloseAll();
};

// The object whose window is being created: it receives the window's first messages.
NORLIB1_API void BCSetCreateWindow(BCWindow* window);
NORLIB1_API BCWindow* BCGetCreateWindow();

NORLIB1_API LRESULT CALLBACK BCWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
