#include "bcfinddlg.h"

#include "bcdlgtext.h"
#include "bcids2.h"

namespace {

constexpr unsigned int kTextMax = 120;

BCCheckBox* BindBox(unsigned int id, BCDialog* dialog, unsigned int flags, unsigned int bit) {
    BCCheckBox* box = bcdlg::Bind<BCCheckBox>(id, dialog);
    box->SetState((flags & bit) != 0);
    return box;
}

// The flags change with each click, so a cancelled dialog keeps what was toggled. The
// check box's answer is the handler's.
long Toggle(unsigned int& flags, unsigned int bit, BCCheckBox* box) {
    flags ^= bit;
    return box ? box->SetState((flags & bit) != 0) : 0;
}

void ReadEdit(BCStringEdit* edit, char* into) {
    if (edit)
        edit->GetText(into, kTextMax + 1);
}

bool HoldsText(BCStringEdit* edit) {
    return edit->GetTextLen() > 0;
}

} // namespace

BCFindDialog::BCFindDialog(const BCResID& dialogTemplate, BCWindow* parent, const char* pattern,
                           unsigned int flags, BCApplication* app)
    : BCModalDialog(dialogTemplate, parent, app, bcids::kTypeFindDialog), caPattern(),
      wFlags(flags), opPatternEdit(nullptr), opMatchCase(nullptr), opWholeWord(nullptr),
      opFindButton(nullptr) {
    SetPattern(pattern);
    Create("");
}

// The control objects left go with the dialog's own list.
BCFindDialog::~BCFindDialog() = default;

LRESULT BCFindDialog::Initialize(BCEvent*) {
    opPatternEdit = bcdlg::BindEdit(bcids::kCtlFindPattern, this, caPattern, kTextMax, true);
    opMatchCase = BindBox(bcids::kCtlMatchCase, this, wFlags, BC_FIND_MATCH_CASE);
    opWholeWord = BindBox(bcids::kCtlWholeWord, this, wFlags, BC_FIND_WHOLE_WORD);
    opFindButton = bcdlg::Bind<BCPushButton>(IDOK, this);
    bcdlg::EnableForText(opFindButton, caPattern[0] != '\0');
    return 0;
}

LRESULT BCFindDialog::ButtonSnglClk(BCEvent* event) {
    switch (event->GetControlID()) {
    case IDOK:
        ReadEdit(opPatternEdit, caPattern);
        Reset();
        return EndDlg(BC_FIND_ONE);
    case IDCANCEL:
        return Close(event);
    case bcids::kCtlMatchCase:
        return Toggle(wFlags, BC_FIND_MATCH_CASE, opMatchCase);
    case bcids::kCtlWholeWord:
        return Toggle(wFlags, BC_FIND_WHOLE_WORD, opWholeWord);
    default:
        return BCModalDialog::ButtonSnglClk(event);
    }
}

LRESULT BCFindDialog::EditChange(BCEvent* event) {
    if (opPatternEdit && opPatternEdit->IsModified())
        return bcdlg::EnableForText(opFindButton, HoldsText(opPatternEdit));
    return BCModalDialog::EditChange(event);
}

LRESULT BCFindDialog::Close(BCEvent*) {
    Reset();
    return EndDlg(BC_FIND_CANCELLED);
}

void BCFindDialog::Reset() {
    bcdlg::Drop(opPatternEdit);
    bcdlg::Drop(opMatchCase);
    bcdlg::Drop(opWholeWord);
    bcdlg::Drop(opFindButton);
}

void BCFindDialog::SetPattern(const char* pattern) {
    bcdlg::CopyCut(caPattern, pattern, kTextMax);
}

char* BCFindDialog::GetPattern(char* buffer) {
    return bcdlg::CopyOut(buffer, caPattern);
}

BCReplaceDialog::BCReplaceDialog(const BCResID& dialogTemplate, BCWindow* parent,
                                 const char* pattern, const char* replacement, unsigned int flags,
                                 BCApplication* app)
    : BCModalDialog(dialogTemplate, parent, app, bcids::kTypeReplaceDialog), caPattern(),
      caReplacement(), wFlags(flags), opPatternEdit(nullptr), opReplaceEdit(nullptr),
      opMatchCase(nullptr), opWholeWord(nullptr), opQuery(nullptr), opReplaceButton(nullptr),
      opReplaceAllButton(nullptr) {
    SetPattern(pattern);
    SetReplacement(replacement);
    Create("");
}

BCReplaceDialog::~BCReplaceDialog() = default;

LRESULT BCReplaceDialog::Initialize(BCEvent*) {
    opPatternEdit = bcdlg::BindEdit(bcids::kCtlReplacePattern, this, caPattern, kTextMax, true);
    opReplaceEdit = bcdlg::BindEdit(bcids::kCtlReplacement, this, caReplacement, kTextMax, false);
    opMatchCase = BindBox(bcids::kCtlMatchCase, this, wFlags, BC_FIND_MATCH_CASE);
    opWholeWord = BindBox(bcids::kCtlWholeWord, this, wFlags, BC_FIND_WHOLE_WORD);
    opQuery = BindBox(bcids::kCtlQuery, this, wFlags, BC_FIND_QUERY);
    opReplaceButton = bcdlg::Bind<BCPushButton>(IDOK, this);
    opReplaceAllButton = bcdlg::Bind<BCPushButton>(bcids::kCtlReplaceAll, this);
    EnableReplace(caPattern[0] != '\0');
    return 0;
}

LRESULT BCReplaceDialog::ButtonSnglClk(BCEvent* event) {
    switch (event->GetControlID()) {
    case IDOK:
        return Accept(BC_FIND_ONE);
    case bcids::kCtlReplaceAll:
        return Accept(BC_FIND_ALL);
    case IDCANCEL:
        return Close(event);
    case bcids::kCtlMatchCase:
        return Toggle(wFlags, BC_FIND_MATCH_CASE, opMatchCase);
    case bcids::kCtlWholeWord:
        return Toggle(wFlags, BC_FIND_WHOLE_WORD, opWholeWord);
    case bcids::kCtlQuery:
        return Toggle(wFlags, BC_FIND_QUERY, opQuery);
    default:
        return BCModalDialog::ButtonSnglClk(event);
    }
}

LRESULT BCReplaceDialog::EditChange(BCEvent* event) {
    if (opPatternEdit && opPatternEdit->IsModified())
        return EnableReplace(HoldsText(opPatternEdit));
    return BCModalDialog::EditChange(event);
}

LRESULT BCReplaceDialog::Close(BCEvent*) {
    Reset();
    return EndDlg(BC_FIND_CANCELLED);
}

void BCReplaceDialog::Reset() {
    bcdlg::Drop(opPatternEdit);
    bcdlg::Drop(opReplaceEdit);
    bcdlg::Drop(opMatchCase);
    bcdlg::Drop(opWholeWord);
    bcdlg::Drop(opQuery);
    bcdlg::Drop(opReplaceButton);
    bcdlg::Drop(opReplaceAllButton);
}

void BCReplaceDialog::SetPattern(const char* pattern) {
    bcdlg::CopyCut(caPattern, pattern, kTextMax);
}

char* BCReplaceDialog::GetPattern(char* buffer) {
    return bcdlg::CopyOut(buffer, caPattern);
}

void BCReplaceDialog::SetReplacement(const char* replacement) {
    bcdlg::CopyCut(caReplacement, replacement, kTextMax);
}

char* BCReplaceDialog::GetReplacement(char* buffer) {
    return bcdlg::CopyOut(buffer, caReplacement);
}

int BCReplaceDialog::Accept(int result) {
    ReadEdit(opPatternEdit, caPattern);
    ReadEdit(opReplaceEdit, caReplacement);
    Reset();
    return EndDlg(result);
}

int BCReplaceDialog::EnableReplace(bool on) {
    return bcdlg::EnableForText(opReplaceButton, on) & bcdlg::EnableForText(opReplaceAllButton, on);
}
