#include "bcapp.h"

#include <new>

#include "bcids1.h"
#include "bcmodule.h"
#include "bcplatform.h"
#include "bcwindow.h"

namespace {
BCApplication* g_app = nullptr;
// The atom of the system's dialog window class ("#32770").
constexpr ULONG_PTR kDialogClassAtom = 32770;
} // namespace

BCApplication* BCGetApp() {
    return g_app;
}

BCApplication::BCApplication(HINSTANCE instance, const char* name)
    : BCObject(bcids::kTypeApplication), opModule(nullptr), opMainWindow(nullptr),
      opMDIClient(nullptr), blQuit(0), wExitCode(0) {
    opModule = new (std::nothrow)
        BCModule(instance ? instance : GetModuleHandleA(nullptr), name ? name : "", 0);
    if (!g_app)
        g_app = this;
}

BCApplication::~BCApplication() {
    if (g_app == this)
        g_app = nullptr;
    delete opModule;
}

void BCApplication::ForgetWindow(BCWindow* window) {
    if (opMainWindow == window)
        opMainWindow = nullptr;
    if (opMDIClient == window)
        opMDIClient = nullptr;
}

void BCApplication::Handle(MSG& message) {
    HWND client = opMDIClient ? opMDIClient->GetHandle() : nullptr;
    if (client && TranslateMDISysAccel(client, &message))
        return;
    // Modeless dialogs get their keyboard navigation; other windows keep their keys.
    HWND active = GetActiveWindow();
    if (active && GetClassLongPtrA(active, GCW_ATOM) == kDialogClassAtom &&
        IsDialogMessageA(active, &message))
        return;
    TranslateMessage(&message);
    DispatchMessageA(&message);
}

int BCApplication::Run() {
    MSG message;
    while (!blQuit) {
        BOOL got = GetMessageA(&message, nullptr, 0, 0);
        if (got == 0) {
            blQuit = 1;
            wExitCode = static_cast<int>(message.wParam);
        } else if (got > 0) {
            Handle(message);
        } else {
            BCTraceFailure("GetMessageA");
            break;
        }
    }
    return wExitCode;
}

int BCApplication::ProcessPending() {
    MSG message;
    while (!blQuit && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            blQuit = 1;
            wExitCode = static_cast<int>(message.wParam);
        } else {
            Handle(message);
        }
    }
    return !blQuit;
}

void BCApplication::Quit(int exitCode) {
    PostQuitMessage(exitCode);
}

void BCApplication::Display(const char* prefix) {
    DispObjectMsg("%sopMainWindow=%p, opMDIClient=%p", prefix ? prefix : "",
                  static_cast<void*>(opMainWindow), static_cast<void*>(opMDIClient));
}
