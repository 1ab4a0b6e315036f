#pragma once
#include "norlib2api.h"

class BCModule;

// The library's own module, created when the process loads the library and destroyed when
// it unloads it; its string table is searched from anywhere.
NORLIB2_API BCModule* BCGetDLLModule2();

// What the library caches at start-up.
NORLIB2_API int BCGetScreenWidth2();
NORLIB2_API int BCGetScreenHeight2();
NORLIB2_API void* BCGetArrowCursor2();
// The base module's window and dialog procedures, recorded for the library's window classes.
NORLIB2_API void* BCGetWindowProc2();
NORLIB2_API void* BCGetDialogProc2();

// The library's answer when the allocator runs out of memory: asks the user to retry (after
// compacting the heaps) or to end the application.
NORLIB2_API void BCOutOfMemoryHandler();

// Carried for applications; the library itself does not raise it.
NORLIB2_API extern const char* const BCTaskRegisterErrorText;
