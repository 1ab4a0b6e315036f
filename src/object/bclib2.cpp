// The library's entry routine and start-up state.
#include <windows.h>

#include <new>

#include "bclib2.h"
#include "bcplatform.h"
#include "norlib1.h"

namespace {

BCModule* g_module = nullptr;
std::new_handler g_previousNewHandler = nullptr;
int g_screenWidth = 0;
int g_screenHeight = 0;
HCURSOR g_arrowCursor = nullptr;
// The window procedures of the base module, which the library's window classes use.
WNDPROC g_windowProc = nullptr;
DLGPROC g_dialogProc = nullptr;

const char kStartupFailure[] = "An error occured allocating memory or resources in the startup "
                               "procedures.  This application can not run.";
constexpr unsigned int kCompactBytes = 32000;

int ShowBox(const char* text, const char* caption, unsigned int style) {
    BCMsgInfo info = {BC_MSG_BOX, 0, text, caption, style, nullptr, nullptr, 0};
    return BCShowMsg(info);
}

bool Attach(HINSTANCE instance) {
    g_module = new (std::nothrow) BCModule(instance, "", 0);
    if (!g_module) {
        ShowBox(kStartupFailure, nullptr, MB_OK | MB_TASKMODAL);
        return false;
    }
    BCRegisterLibModule(g_module);
    g_previousNewHandler = std::set_new_handler(BCOutOfMemoryHandler);
    g_screenWidth = GetSystemMetrics(SM_CXSCREEN);
    g_screenHeight = GetSystemMetrics(SM_CYSCREEN);
    g_arrowCursor = BCTraced(LoadCursorA(nullptr, IDC_ARROW), "LoadCursorA");
    g_windowProc = BCWndProc;
    g_dialogProc = BCDlgWndProc;
    return true;
}

void Detach() {
    std::set_new_handler(g_previousNewHandler);
    BCUnregisterLibModule(g_module);
    delete g_module;
    g_module = nullptr;
}

} // namespace

const char* const BCTaskRegisterErrorText =
    "An error occured while registering this task.  The application will now close!";

BCModule* BCGetDLLModule2() {
    return g_module;
}
int BCGetScreenWidth2() {
    return g_screenWidth;
}
int BCGetScreenHeight2() {
    return g_screenHeight;
}
void* BCGetArrowCursor2() {
    return g_arrowCursor;
}
void* BCGetWindowProc2() {
    return reinterpret_cast<void*>(g_windowProc);
}
void* BCGetDialogProc2() {
    return reinterpret_cast<void*>(g_dialogProc);
}

namespace {
HWND MainWindowHandle() {
    BCApplication* app = BCGetApp();
    BCWindow* main = app ? app->GetMainWindow() : nullptr;
    return main ? main->GetHandle() : nullptr;
}
} // namespace

void BCOutOfMemoryHandler() {
    int answer = ShowBox("Can't allocate enough memory!", "Attention",
                         MB_SYSTEMMODAL | MB_ICONSTOP | MB_RETRYCANCEL);
    if (answer == IDRETRY) {
        GlobalCompact(kCompactBytes);
        LocalCompact(kCompactBytes);
        return;
    }
    std::set_new_handler(g_previousNewHandler);
    if (HWND mainWindow = MainWindowHandle())
        SendMessageA(mainWindow, WM_QUIT, 0, 0);
    ExitProcess(1);
}

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        return Attach(instance) ? TRUE : FALSE;
    case DLL_PROCESS_DETACH:
        Detach();
        break;
    default:
        break;
    }
    return TRUE;
}
