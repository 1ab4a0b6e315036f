#include "bcmsg.h"

#include <windows.h>

#include "bcmodule.h"
#include "bcwindow.h"
#include "koerrhk.h"
#include "kostring.h"
#include "msgformat.h"

namespace {

BCMsgSink g_sink = nullptr;
HWND g_owner = nullptr;
void* g_sinkContext = nullptr;

constexpr unsigned int kTaskModalStyle = MB_OK | MB_ICONEXCLAMATION | MB_TASKMODAL;
constexpr unsigned int kAppModalStyle = MB_OK | MB_ICONEXCLAMATION | MB_APPLMODAL;

int ShowAppMsg(BCModule* module, unsigned int id, va_list args) {
    return BCShowNumberedMsg(id, module ? module->GetResources() : nullptr, kAppModalStyle, nullptr,
                             args);
}

} // namespace

BCMsgSink BCSetMsgSink(BCMsgSink sink, void* context, void** previousContext) {
    BCMsgSink previous = g_sink ? g_sink : BCDefaultMsgSink;
    if (previousContext)
        *previousContext = g_sinkContext;
    g_sink = sink;
    g_sinkContext = sink ? context : nullptr;
    return previous;
}

int BCShowMsg(const BCMsgInfo& info) {
    return g_sink ? g_sink(info, g_sinkContext) : BCDefaultMsgSink(info, nullptr);
}

int BCDefaultMsgSink(const BCMsgInfo& info, void*) {
    const char* text = info.text ? info.text : "";
    switch (info.kind) {
    case BC_MSG_NUMBERED:
    case BC_MSG_BOX:
        return MessageBoxA(g_owner ? g_owner : GetActiveWindow(), text, info.caption, info.style);
    case BC_MSG_FAULT: {
        KoString line;
        line.Sprintf("%s (%s, line %u)\n", text, info.file ? info.file : "", info.line);
        OutputDebugStringA(line.c_str());
        return IDOK;
    }
    case BC_MSG_DIAGNOSTIC:
        OutputDebugStringA(text);
        OutputDebugStringA("\n");
        return IDOK;
    }
    return IDOK;
}

void BCSetMsgOwner(void* window) {
    g_owner = static_cast<HWND>(window);
}

int BCShowNumberedMsg(unsigned int id, void* resources, unsigned int style, const BCObject* object,
                      va_list args) {
    KoString format;
    if (!format.getResource(id, resources)) {
        KoErrorHook::ResetProcError(); // reported by the 0 result, not left for the next caller
        return 0;
    }
    KoString text;
    text.VSprintf(format.c_str(), args);
    BCMsgInfo info = {BC_MSG_NUMBERED, id, text.c_str(), nullptr, style, object, nullptr, 0};
    return BCShowMsg(info);
}

int BCDispMsg(unsigned int id, void* resources, ...) {
    va_list args;
    va_start(args, resources);
    int result = BCShowNumberedMsg(id, resources, kTaskModalStyle, nullptr, args);
    va_end(args);
    return result;
}

int BCDispAppMsg(BCModule* module, unsigned int id, ...) {
    va_list args;
    va_start(args, id);
    int result = ShowAppMsg(module, id, args);
    va_end(args);
    return result;
}

int BCDispAppText(BCWindow* window, const char* format, ...) {
    KoString text;
    va_list args;
    va_start(args, format);
    text.VSprintf(format ? format : "", args);
    va_end(args);
    BCMsgInfo info = {BC_MSG_NUMBERED, 0,       text.c_str(), nullptr,
                      kAppModalStyle,  nullptr, nullptr,      0};
    BCSetMsgOwner(window ? window->GetHandle() : nullptr);
    int result = BCShowMsg(info);
    BCSetMsgOwner(nullptr);
    return result;
}

int BCDispAppMsg(BCModule* module, BCWindow* window, unsigned int id, ...) {
    va_list args;
    va_start(args, id);
    BCSetMsgOwner(window ? window->GetHandle() : nullptr);
    int result = ShowAppMsg(module, id, args);
    BCSetMsgOwner(nullptr);
    va_end(args);
    return result;
}
