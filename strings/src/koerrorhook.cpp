#include "koerrhk.h"

namespace {
int g_procError = KO_ERR_NONE;
}

int KoErrorHook::DidProcErrorOccur() {
    return g_procError != KO_ERR_NONE;
}

int KoErrorHook::GetProcError() {
    return g_procError;
}

void KoErrorHook::ResetProcError() {
    g_procError = KO_ERR_NONE;
}

void KoErrorHook::RaiseProcError(int code) {
    if (g_procError == KO_ERR_NONE)
        g_procError = code ? code : KO_ERR_FORMAT;
}
