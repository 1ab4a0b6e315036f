#pragma once
#include "norlib1api.h"

class BCObject;
class BCModule;
class BCWindow;

// Every text the framework shows passes through one replaceable sink, so applications can
// route it and tests can record it and answer boxes.
enum BCMsgKind { BC_MSG_DIAGNOSTIC, BC_MSG_NUMBERED, BC_MSG_BOX, BC_MSG_FAULT };

struct BCMsgInfo {
    BCMsgKind kind;
    unsigned int id;        // resource id of the text, 0 when none
    const char* text;       // the final, formatted text
    const char* caption;    // may be null
    unsigned int style;     // MessageBox style bits (MB_...)
    const BCObject* object; // the reporting object, or null
    const char* file;       // BC_MSG_FAULT: source file name (e.g. "TEXTEDIT")
    unsigned int line;      // BC_MSG_FAULT: source line
};

// The sink's result is the button pressed (IDOK 1, IDCANCEL 2, IDYES 6, IDNO 7).
typedef int (*BCMsgSink)(const BCMsgInfo& info, void* context);

// Installs a sink (null restores the default) and returns the previous one.
NORLIB1_API BCMsgSink BCSetMsgSink(BCMsgSink sink, void* context, void** previousContext = nullptr);
// Hands a message to the installed sink.
NORLIB1_API int BCShowMsg(const BCMsgInfo& info);
// The default sink: numbered messages and boxes in a message box, diagnostics and faults as
// debug output.
NORLIB1_API int BCDefaultMsgSink(const BCMsgInfo& info, void* context);

// Numbered messages: the text of message `id` is found in `resources` (a module instance
// handle, may be null), the application's module or a registered library, and formatted
// with the remaining arguments. Each returns the button pressed, 0 when the text is missing.
NORLIB1_API int BCDispMsg(unsigned int id, void* resources, ...);
// Application-modal forms; the window, when given, owns the box.
NORLIB1_API int BCDispAppMsg(BCModule* module, unsigned int id, ...);
NORLIB1_API int BCDispAppMsg(BCModule* module, BCWindow* window, unsigned int id, ...);
// The application's own text, formatted printf-style, shown as the numbered messages are
// (application-modal, owned by the window when given) but without a resource: id 0.
NORLIB1_API int BCDispAppText(BCWindow* window, const char* format, ...);
