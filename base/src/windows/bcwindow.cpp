#include "bcwindow.h"

#include <cstring>
#include <new>

#include "bcapp.h"
#include "bcids1.h"
#include "bcmenu.h"
#include "bcmodule.h"
#include "bcplatform.h"

namespace {

const char kObjectProperty[] = "BCWindowObject";
const char kWindowClass[] = "BCWindow";

BCWindow* g_creating = nullptr;

char* CopyText(const char* text) {
    char* copy = new (std::nothrow) char[std::strlen(text ? text : "") + 1];
    if (copy)
        std::strcpy(copy, text ? text : "");
    return copy;
}

HINSTANCE ThisModule() {
    static HINSTANCE instance = [] {
        HMODULE module = nullptr;
        GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                               GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           reinterpret_cast<LPCSTR>(&BCWndProc), &module);
        return module;
    }();
    return instance;
}

bool AnyButton(WPARAM keys) {
    return (keys & (MK_LBUTTON | MK_RBUTTON | MK_MBUTTON)) != 0;
}

} // namespace

void BCSetCreateWindow(BCWindow* window) {
    g_creating = window;
}
BCWindow* BCGetCreateWindow() {
    return g_creating;
}

LRESULT CALLBACK BCWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    BCWindow* object = BCWindow::FromHandle(window);
    if (!object && g_creating && !g_creating->GetHandle()) {
        object = g_creating;
        if (!object->Attach(window))
            object = nullptr;
    }
    if (!object)
        return DefWindowProcA(window, message, wParam, lParam);
    BCEvent event(window, message, wParam, lParam);
    LRESULT result = object->DispatchEvent(&event);
    if (message == WM_NCDESTROY)
        object->Detach();
    return result;
}

BCWindow* BCWindow::FromHandle(HWND window) {
    return window ? static_cast<BCWindow*>(GetPropA(window, kObjectProperty)) : nullptr;
}

BCWindow::BCWindow(unsigned int typeCode, BCWindow* parent, BCApplication* app)
    : BCDisplayDevice(typeCode, app ? app->GetModule() : nullptr), hWnd(nullptr), opParent(parent),
      wID(0), dwStyle(0), dwExStyle(0), caTitle(nullptr), opMenu(nullptr),
      opApp(app ? app : BCGetApp()), hCursor(nullptr), blDestroying(0) {}

BCWindow::~BCWindow() {
    if (g_creating == this)
        g_creating = nullptr;
    if (opApp)
        opApp->ForgetWindow(this);
    if (hWnd) {
        HWND window = hWnd;
        Detach(); // the window's last messages must not reach a dying object
        BCTraced(DestroyWindow(window), "DestroyWindow");
    }
    delete[] caTitle;
}

int BCWindow::Attach(HWND window) {
    if (!SetPropA(window, kObjectProperty, this)) {
        BCTraceFailure("SetPropA");
        DispObjectMsg(bcids::kMsgCannotInstallWindow);
        return 0;
    }
    hWnd = window;
    return 1;
}

void BCWindow::Detach() {
    if (hWnd)
        RemovePropA(hWnd, kObjectProperty);
    if (opMenu)
        opMenu->WindowGone(hWnd);
    hWnd = nullptr;
    blDestroying = 0;
}

void BCWindow::Display(const char* prefix) {
    DispObjectMsg("%shWnd=%p, wID=%u, dwStyle=%08lx, caTitle=%s", prefix ? prefix : "",
                  static_cast<void*>(hWnd), wID, dwStyle, caTitle ? caTitle : "");
}

void* BCWindow::GetDeviceDC() {
    return hWnd ? ::GetDC(hWnd) : nullptr;
}

int BCWindow::ReleaseDeviceDC(void* dc) {
    return hWnd && dc ? ::ReleaseDC(hWnd, static_cast<HDC>(dc)) : 0;
}

const char* BCWindow::WindowClass() {
    static ATOM atom = [] {
        WNDCLASSA wc = {};
        wc.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
        wc.lpfnWndProc = BCWndProc;
        wc.hInstance = ThisModule();
        wc.hCursor = LoadCursorA(nullptr, IDC_ARROW);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        wc.lpszClassName = kWindowClass;
        return BCTraced(RegisterClassA(&wc), "RegisterClassA");
    }();
    return atom ? kWindowClass : nullptr;
}

int BCWindow::Create(const char* title) {
    char* copy = CopyText(title);
    if (!copy)
        return 0;
    delete[] caTitle;
    caTitle = copy;
    return WindowClass() != nullptr;
}

int BCWindow::CreateSystemWindow(const char* className, HWND parent, HMENU menuOrId,
                                 unsigned int failureMessage) {
    if (hWnd)
        return 1;
    bool placed = !rcWindow.IsEmpty();
    BCSetCreateWindow(this);
    HWND window = CreateWindowExA(
        dwExStyle, className, caTitle, static_cast<DWORD>(dwStyle),
        placed ? rcWindow.GetLeft() : CW_USEDEFAULT, placed ? rcWindow.GetTop() : CW_USEDEFAULT,
        placed ? rcWindow.GetWidth() : CW_USEDEFAULT, placed ? rcWindow.GetHeight() : CW_USEDEFAULT,
        parent, menuOrId, ThisModule(), this);
    BCSetCreateWindow(nullptr);
    if (!window) {
        BCTraceFailure("CreateWindowExA");
        DispObjectMsg(failureMessage);
        return 0;
    }
    if (!hWnd) // a class whose procedure is not ours: attach now
        Attach(window);
    return hWnd != nullptr;
}

LRESULT BCWindow::DispatchEvent(BCEvent* e) {
    switch (e->GetMessage()) {
    case WM_CREATE:
    case WM_INITDIALOG:
        return Initialize(e);
    case WM_PAINT: {
        if (GetDC()) {
            DispObjectMsg(bcids::kMsgPaintWithDC);
            return DefaultEvent(e);
        }
        PAINTSTRUCT ps;
        AdoptDC(BeginPaint(hWnd, &ps));
        LRESULT result = Paint(e);
        DropDC();
        EndPaint(e->GetWindow(), &ps);
        return result;
    }
    case WM_SIZE:
        return ReSize(e);
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        return Focus(e);
    case WM_VSCROLL:
        return VertScroll(e);
    case WM_HSCROLL:
        return HorizScroll(e);
    case WM_CHAR:
        return CharKey(e);
    case WM_KEYDOWN:
        return KeyDown(e);
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
        return MouseDown(e);
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP:
        return MouseUp(e);
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDBLCLK:
        return MouseDblClk(e);
    case WM_MOUSEMOVE:
        return AnyButton(e->GetWParam()) ? MouseDrag(e) : DefaultEvent(e);
    case WM_INITMENU:
    case WM_INITMENUPOPUP:
        return MenuInit(e);
    case WM_CLOSE:
        return Close(e);
    case WM_TIMER:
        return Timer(e);
    case WM_SETCURSOR:
        if (hCursor && LOWORD(e->GetLParam()) == HTCLIENT) {
            ::SetCursor(hCursor);
            return TRUE;
        }
        return DefaultEvent(e);
    case WM_DESTROY:
        blDestroying = 1;
        if (opApp && opApp->GetMainWindow() == this)
            PostQuitMessage(0);
        return DefaultEvent(e);
    case WM_COMMAND:
        if (e->IsMenuCommand())
            return MenuCommand(e);
        switch (e->GetNotifyCode()) {
        case BN_CLICKED:
            return ButtonSnglClk(e);
        case EN_CHANGE:
            return EditChange(e);
        case LBN_SELCHANGE:
            return ListBoxSnglClk(e);
        case LBN_DBLCLK:
            return ListBoxDblClk(e);
        default:
            return DefaultEvent(e);
        }
    default:
        return DefaultEvent(e);
    }
}

LRESULT BCWindow::DefaultEvent(BCEvent* e) {
    return DefWindowProcA(e->GetWindow(), e->GetMessage(), e->GetWParam(), e->GetLParam());
}

long BCWindow::DataUpdated(BCObject*, unsigned int, BCObject*) {
    Repaint();
    return 1;
}

LRESULT BCWindow::CharKey(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::Focus(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::HorizScroll(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::Initialize(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::KeyDown(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::MenuCommand(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::MenuInit(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::MouseDown(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::MouseUp(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::MouseDblClk(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::MouseDrag(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::Paint(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::ReSize(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::VertScroll(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::ButtonSnglClk(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::EditChange(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::ListBoxSnglClk(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::ListBoxDblClk(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::Close(BCEvent* e) {
    return DefaultEvent(e);
}
LRESULT BCWindow::Timer(BCEvent* e) {
    return DefaultEvent(e);
}

int BCWindow::SetTimer(unsigned int id, unsigned int milliseconds) {
    if (!HandleCheck())
        return 0;
    return BCTraced(::SetTimer(hWnd, id, milliseconds, nullptr), "SetTimer") ? 1 : 0;
}

int BCWindow::KillTimer(unsigned int id) {
    return HandleCheck() && ::KillTimer(hWnd, id) ? 1 : 0;
}

int BCWindow::Destroy() {
    return hWnd && DestroyWindow(hWnd);
}

int BCWindow::HandleCheck() const {
    return hWnd && IsWindow(hWnd);
}

long BCWindow::SetStyle(long bits, int add) {
    long previous = dwStyle;
    dwStyle = add ? (dwStyle | bits) : (dwStyle & ~bits);
    if (hWnd)
        SetWindowLongPtrA(hWnd, GWL_STYLE, static_cast<LONG_PTR>(static_cast<DWORD>(dwStyle)));
    return previous;
}

BCRectangle BCWindow::GetWindowRect() const {
    if (!hWnd)
        return rcWindow;
    RECT r = {0, 0, 0, 0};
    if (!::GetWindowRect(hWnd, &r))
        BCTraceFailure("GetWindowRect");
    if (HWND parent = GetParent(hWnd); parent && (dwStyle & WS_CHILD))
        MapWindowPoints(HWND_DESKTOP, parent, reinterpret_cast<POINT*>(&r), 2);
    return BCRectangle::FromRECT(&r);
}

int BCWindow::SetWindowRect(const BCRectangle& rect) {
    rcWindow = rect;
    return hWnd ? MoveWindow(hWnd, rect.GetLeft(), rect.GetTop(), rect.GetWidth(), rect.GetHeight(),
                             TRUE)
                : 1;
}

BCRectangle BCWindow::GetClientRect() const {
    RECT r = {0, 0, 0, 0};
    if (hWnd && !::GetClientRect(hWnd, &r))
        BCTraceFailure("GetClientRect");
    return BCRectangle::FromRECT(&r);
}

BCWindow* BCWindow::SetPrnt(BCWindow* parent) {
    BCWindow* previous = opParent;
    opParent = parent;
    if (hWnd && parent && parent->hWnd)
        BCTraced(SetParent(hWnd, parent->hWnd), "SetParent");
    return previous;
}

unsigned int BCWindow::SetID(unsigned int id) {
    unsigned int previous = wID;
    wID = id;
    if (hWnd && (dwStyle & WS_CHILD))
        SetWindowLongPtrA(hWnd, GWLP_ID, static_cast<LONG_PTR>(id));
    return previous;
}

int BCWindow::GetTitle(char* buffer, int size) const {
    if (!buffer || size <= 0)
        return 0;
    buffer[0] = '\0';
    if (hWnd)
        return GetWindowTextA(hWnd, buffer, size);
    lstrcpynA(buffer, caTitle ? caTitle : "", size);
    return lstrlenA(buffer);
}

int BCWindow::SetTitle(const char* title) {
    char* copy = CopyText(title);
    if (!copy)
        return 0;
    delete[] caTitle;
    caTitle = copy;
    return hWnd ? SetWindowTextA(hWnd, caTitle) : 1;
}

// Only a window that shows the menu as its own bar owns it; a child (a document window)
// merely remembers a menu that another window shows and owns.
BCMenu* BCWindow::SetMenu(BCMenu* menu) {
    BCMenu* previous = opMenu;
    bool shown = hWnd && !(dwStyle & WS_CHILD);
    if (shown) {
        if (!::SetMenu(hWnd, menu ? menu->GetHandle() : nullptr))
            BCTraceFailure("SetMenu");
        BCTraced(DrawMenuBar(hWnd), "DrawMenuBar");
    }
    if (previous && hWnd && previous->GetShownBy() == hWnd)
        previous->SetShownBy(nullptr);
    opMenu = menu;
    if (menu && shown)
        menu->SetShownBy(hWnd);
    return previous;
}

// The window shows its own cursor over its client area (WM_SETCURSOR); others are untouched.
int BCWindow::SetCursor(HCURSOR cursor) {
    hCursor = cursor;
    if (cursor)
        ::SetCursor(cursor);
    return 1;
}

int BCWindow::Show(int command) {
    return hWnd ? (ShowWindow(hWnd, command), 1) : 0;
}
int BCWindow::SetFocus() {
    return hWnd && ::SetFocus(hWnd) != nullptr;
}
int BCWindow::HasFocus() const {
    return hWnd && GetFocus() == hWnd;
}
int BCWindow::Enable() {
    return hWnd ? (EnableWindow(hWnd, TRUE), 1) : 0;
}
int BCWindow::Disable() {
    return hWnd ? (EnableWindow(hWnd, FALSE), 1) : 0;
}
int BCWindow::IsEnabled() const {
    return hWnd && IsWindowEnabled(hWnd);
}

int BCWindow::EnableRedraw(int redraw) {
    if (!hWnd)
        return 0;
    SendMessageA(hWnd, WM_SETREDRAW, redraw ? TRUE : FALSE, 0);
    return 1;
}

int BCWindow::Repaint() {
    return hWnd && InvalidateRect(hWnd, nullptr, TRUE);
}

int BCWindow::Invalidate(const BCRectangle* rect, int erase) {
    if (!hWnd)
        return 0;
    RECT r;
    if (rect)
        rect->ToRECT(&r);
    return InvalidateRect(hWnd, rect ? &r : nullptr, erase ? TRUE : FALSE);
}

int BCWindow::Update() {
    return hWnd && UpdateWindow(hWnd);
}

int BCWindow::CaptureMouse() {
    return hWnd ? (SetCapture(hWnd), 1) : 0;
}

int BCWindow::ReleaseMouse() {
    return hWnd && GetCapture() == hWnd && ReleaseCapture();
}

int BCWindow::SetVertScrollRange(int minimum, int maximum, int redraw) {
    return hWnd && SetScrollRange(hWnd, SB_VERT, minimum, maximum, redraw);
}

int BCWindow::SetHorizScrollRange(int minimum, int maximum, int redraw) {
    return hWnd && SetScrollRange(hWnd, SB_HORZ, minimum, maximum, redraw);
}

int BCWindow::SetVertThumb(int position, int redraw) {
    return hWnd ? (SetScrollPos(hWnd, SB_VERT, position, redraw), 1) : 0;
}

int BCWindow::SetHorizThumb(int position, int redraw) {
    return hWnd ? (SetScrollPos(hWnd, SB_HORZ, position, redraw), 1) : 0;
}

int BCWindow::GetVertThumb() const {
    return hWnd ? GetScrollPos(hWnd, SB_VERT) : -1;
}

int BCWindow::GetHorizThumb() const {
    return hWnd ? GetScrollPos(hWnd, SB_HORZ) : -1;
}

BCMainWindow::BCMainWindow(BCApplication* app, unsigned int typeCode)
    : BCWindow(typeCode, nullptr, app) {
    dwStyle = WS_OVERLAPPEDWINDOW;
}

int BCMainWindow::Create(const char* title) {
    if (!BCWindow::Create(title) ||
        !CreateSystemWindow(WindowClass(), nullptr, opMenu ? opMenu->GetHandle() : nullptr,
                            bcids::kMsgCannotCreateMain))
        return 0;
    if (opMenu)
        opMenu->SetShownBy(hWnd);
    if (opApp && !opApp->GetMainWindow())
        opApp->SetMainWindow(this);
    return 1;
}

BCChildWindow::BCChildWindow(BCWindow* parent, unsigned int id, BCApplication* app,
                             unsigned int typeCode)
    : BCWindow(typeCode, parent, app) {
    wID = id;
    dwStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;
}

int BCChildWindow::Create(const char* title) {
    if (!opParent) {
        DispObjectMsg(bcids::kMsgNullWindowObject);
        return 0;
    }
    if (!opParent->GetHandle()) {
        DispObjectMsg(bcids::kMsgNullWindowHandle);
        return 0;
    }
    return BCWindow::Create(title) &&
           CreateSystemWindow(WindowClass(), opParent->GetHandle(),
                              reinterpret_cast<HMENU>(static_cast<UINT_PTR>(wID)),
                              bcids::kMsgCannotCreateChild);
}

BCPopUpWindow::BCPopUpWindow(BCWindow* owner, BCApplication* app, unsigned int typeCode)
    : BCWindow(typeCode, owner, app) {
    dwStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME;
}

int BCPopUpWindow::Create(const char* title) {
    if (!BCWindow::Create(title) ||
        !CreateSystemWindow(WindowClass(), opParent ? opParent->GetHandle() : nullptr,
                            opMenu ? opMenu->GetHandle() : nullptr, bcids::kMsgCannotCreatePopUp))
        return 0;
    if (opMenu)
        opMenu->SetShownBy(hWnd);
    return 1;
}

BCWindowList::BCWindowList() : BCSingleLinkedList(0, 0) {
    SetObjectType(bcids::kTypeWindowList);
}

int BCWindowList::CloseAll() {
    for (int more = Home(); more; more = Next()) {
        BCWindow* window = static_cast<BCWindow*>(GetCrntItem());
        if (window && window->HandleCheck())
            SendMessageA(window->GetHandle(), WM_CLOSE, 0, 0);
    }
    for (int more = Home(); more; more = Next()) {
        BCWindow* window = static_cast<BCWindow*>(GetCrntItem());
        if (window && window->HandleCheck())
            return 0;
    }
    return 1;
}
