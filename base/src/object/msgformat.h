#pragma once
#include <cstdarg>
#include "bcmsg.h"

// Loads numbered message `id` from `resources` (search order of the module), formats it
// with `args` and hands it to the sink as a numbered message; returns the sink's result,
// 0 when the text is missing.
int BCShowNumberedMsg(unsigned int id, void* resources, unsigned int style, const BCObject* object,
                      va_list args);

// The window that owns the boxes the default sink shows while it is set (null: the active
// window). Set around a message shown on behalf of a window.
void BCSetMsgOwner(void* window);
