#pragma once
// Helpers the find, replace, string and file dialogs share: cut copies of their texts and the
// binding of control objects made after the dialog has started.
#include <cstring>

#include "bcbutton.h"
#include "bcdialog.h"
#include "bceditctl.h"

namespace bcdlg {

// Copies at most `max` characters of `text` (nothing for null) and terminates the copy.
inline void CopyCut(char* into, const char* text, unsigned int max) {
    size_t count = text ? strnlen(text, max) : 0;
    if (count)
        std::memcpy(into, text, count);
    into[count] = '\0';
}

// The caller's buffer gets a copy; without one, the dialog's own text is handed out.
inline char* CopyOut(char* buffer, char* own) {
    return buffer ? std::strcpy(buffer, own) : own;
}

// Controls made in Initialize come after the dialog bound its list: bind them now. A
// missing template control has been reported; the object then gives its no-window results.
template <class Control> Control* Bind(unsigned int id, BCDialog* dialog) {
    Control* control = new Control(BCResID(id), dialog, dialog->GetApp());
    control->Create("");
    return control;
}

// The field takes the focus with its whole text selected, so that typing replaces it.
inline void FocusAll(BCStringEdit* edit) {
    edit->SetFocus();
    edit->SetCrntSelection(BCLimits(0, edit->GetTextLen()));
}

// The edit shows `text` within `limit` characters; focused, it has the whole text selected.
inline BCStringEdit* BindEdit(unsigned int id, BCDialog* dialog, const char* text,
                              unsigned int limit, bool focus) {
    BCStringEdit* edit = Bind<BCStringEdit>(id, dialog);
    edit->SetText(text);
    edit->SetCharLimit(limit);
    if (focus)
        FocusAll(edit);
    return edit;
}

// A button that needs a text is enabled exactly while the edit holds one; the platform's
// answer, or 0 without a button.
inline int EnableForText(BCPushButton* button, bool hasText) {
    if (!button)
        return 0;
    return hasText ? button->Enable() : button->Disable();
}

template <class Object> void Drop(Object*& object) {
    delete object;
    object = nullptr;
}

} // namespace bcdlg
