#include <algorithm>

#include "bcdlgtext.h"
#include "bcfinddlg.h"
#include "bcids2.h"

namespace {
constexpr unsigned int kStringMax = 80;
} // namespace

BCStringDialog::BCStringDialog(const BCResID& dialogTemplate, BCWindow* parent, const char* text,
                               unsigned int maxLen, BCApplication* app, unsigned int typeCode)
    : BCModalDialog(dialogTemplate, parent, app, typeCode), caString(),
      wMaxLen(std::min(maxLen, kStringMax)), opStringEdit(nullptr), opOkButton(nullptr) {
    // Without a text the derived dialog finishes its own set-up and runs the dialog itself.
    SetString(text ? text : "");
    if (text)
        Create("");
}

// The controls stay until now and go with the dialog's own list.
BCStringDialog::~BCStringDialog() = default;

LRESULT BCStringDialog::Initialize(BCEvent*) {
    opStringEdit = bcdlg::BindEdit(bcids::kCtlStringEdit, this, caString, wMaxLen, true);
    OkInit();
    return 0;
}

void BCStringDialog::OkInit() {
    opOkButton = bcdlg::Bind<BCPushButton>(IDOK, this);
    bcdlg::EnableForText(opOkButton, caString[0] != '\0');
}

LRESULT BCStringDialog::ButtonSnglClk(BCEvent* event) {
    switch (event->GetControlID()) {
    case IDOK:
        if (opStringEdit)
            opStringEdit->GetText(caString, wMaxLen + 1);
        caString[wMaxLen] = '\0';
        return EndDlg(1);
    case IDCANCEL:
        return Close(event);
    default:
        return BCModalDialog::ButtonSnglClk(event);
    }
}

LRESULT BCStringDialog::EditChange(BCEvent* event) {
    if (opStringEdit && opStringEdit->IsModified())
        return bcdlg::EnableForText(opOkButton, opStringEdit->GetTextLen() > 0);
    return BCModalDialog::EditChange(event);
}

LRESULT BCStringDialog::Close(BCEvent*) {
    return EndDlg(0);
}

void BCStringDialog::SetString(const char* text) {
    bcdlg::CopyCut(caString, text, wMaxLen);
}

char* BCStringDialog::GetString(char* buffer) {
    return bcdlg::CopyOut(buffer, caString);
}
