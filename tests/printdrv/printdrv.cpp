// A printer driver library for the tests: its "DEVICEMODE" entry records how it was called.
#include <windows.h>

namespace {
char g_call[256];
} // namespace

extern "C" __declspec(dllexport) void WINAPI
    DEVICEMODE(HWND owner, HMODULE library, LPSTR device, LPSTR port) {
    wsprintfA(g_call, "%s|%s|%d|%d", device ? device : "(null)", port ? port : "(null)",
              owner != nullptr, library == GetModuleHandleA("NORDRV.DRV"));
}

// "device|port|owner given|own library handle" of the last call; empty before any.
extern "C" __declspec(dllexport) const char* WINAPI LastDeviceModeCall() {
    return g_call;
}
