#include "bcbutton.h"
#include "bcfinddlg.h"
#include "bcids2.h"

BCMessageDialog::BCMessageDialog(const BCResID& dialogTemplate, BCWindow* parent,
                                 const char* message, BCApplication* app)
    : BCModalDialog(dialogTemplate, parent, app, bcids::kTypeMessageDialog), lpMessage(message) {
    Create("");
}

LRESULT BCMessageDialog::Initialize(BCEvent* event) {
    if (lpMessage) {
        // The control keeps the text; the object is needed only to put it there.
        BCStaticText text(BCResID(bcids::kCtlMessageText), this, GetApp());
        if (text.Create(""))
            text.SetText(lpMessage);
    }
    return BCModalDialog::Initialize(event); // the dialog manager focuses the first button
}

LRESULT BCMessageDialog::ButtonSnglClk(BCEvent* event) {
    return EndDlg(static_cast<int>(event->GetControlID()));
}
