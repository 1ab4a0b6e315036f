#pragma once
#include "norstrapi.h"

// The process error flag: string-module calls raise it when they fail, callers ask for it
// after a call and clear it before the next one.
class NORSTR_API KoErrorHook {
  public:
    // Non-zero when an error was raised since the last reset.
    static int DidProcErrorOccur();
    // The code of the first error raised since the last reset, 0 when none.
    static int GetProcError();
    static void ResetProcError();
    // Raises the flag; the first code raised after a reset is the one kept.
    static void RaiseProcError(int code);
};

// Error codes the string module raises.
enum KoErrorCode {
    KO_ERR_NONE = 0,
    KO_ERR_NO_RESOURCE = 1, // string resource not found
    KO_ERR_FORMAT = 2,      // formatting failed
    KO_ERR_NO_MEMORY = 3    // allocation failed
};
