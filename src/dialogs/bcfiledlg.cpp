#include "bcfiledlg.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "bccombo.h"
#include "bcdlgtext.h"
#include "bcids2.h"
#include "controls/bcfilepath.h"
#include "bcmodule.h"
#include "bcmsg.h"
#include "kostring.h"

namespace {

constexpr unsigned int kNameMax = 120;
constexpr unsigned int kExtMax = 4;
constexpr unsigned int kSaveAsMax = 65;
constexpr size_t kSaveAsWithExt = 80;
// Drives and directories only, without the files.
constexpr unsigned int kDirsAndDrives = DDL_EXCLUSIVE | DDL_DRIVES | DDL_DIRECTORY;
// Room for a name, a directory entry (up to MAX_PATH), the "*" and extension added to it, and
// what a listing writes back.
constexpr size_t kWork = 2 * MAX_PATH;

// No dot, or a leading ".." part with no extension after it, as in ..\REPORT.
bool LacksExtension(const char* name) {
    const char* dot = std::strchr(name, '.');
    return !dot || (dot[1] == '.' && !std::strchr(dot + 2, '.'));
}

// A directory gets every file of the extension, SUB\ becoming SUB\*.TXT.
void AddExtension(char* name, const char* ext) {
    size_t length = std::strlen(name);
    if (length && (name[length - 1] == '\\' || name[length - 1] == '/'))
        std::strcat(name, "*");
    std::strcat(name, ext);
}

// The selection call is asked with the length of a cleared buffer, which gives nothing on
// some platforms: the entry is then read as that call would give it, a name without a dot
// ending in one, so that no default extension is added to it.
std::string SelectedFile(BCFileListBox* list) {
    char chosen[kWork];
    if (list->GetCrntFile(chosen))
        return chosen;
    int index = list->GetCrntInd();
    std::string entry(std::max(list->GetItemLen(index), 0), '\0');
    if (entry.empty() || !list->GetItem(index, &entry[0]))
        return "";
    return entry.find('.') == std::string::npos ? entry + "." : entry;
}

// [SUB] gives SUB\ + tail, [..] gives ..\ + tail, the drive [-a-] gives a: + tail. Whole
// entries are compared, so that directories named .cache or -old stay directories.
void EntryPath(const char* entry, const char* tail, char* into) {
    size_t length = std::strlen(entry);
    if (length == 5 && entry[1] == '-' && entry[3] == '-')
        std::snprintf(into, kWork, "%c:%s", entry[2], tail);
    else if (std::strcmp(entry, "[..]") == 0)
        std::snprintf(into, kWork, "..\\%s", tail);
    else
        std::snprintf(into, kWork, "%.*s\\%s", static_cast<int>(length - 2), entry + 1, tail);
}

BCFileListBox* BindList(unsigned int id, BCDialog* dialog) {
    auto* list =
        new BCFileListBox(BCResID(id), dialog, BCResID(bcids::kCtlFilePath), dialog->GetApp());
    list->Create("");
    return list;
}

} // namespace

BCFileDialog::BCFileDialog(const BCResID& dialogTemplate, BCWindow* parent, const char* ext,
                           unsigned char newFile, BCApplication* app)
    : BCModalDialog(dialogTemplate, parent, app), caFileName(), caFileExt(), caDirPat(),
      opNameEdit(nullptr), opFileList(nullptr), opDirList(nullptr), opOkButton(nullptr),
      blNewFile(newFile) {
    SetFileExt(ext);
}

// Control objects still held (a dialog ended other than through WindowRst) go with the
// dialog's own list.
BCFileDialog::~BCFileDialog() {
    caFileName[0] = '\0';
    caFileExt[0] = '\0';
    blNewFile = 0;
}

LRESULT BCFileDialog::Initialize(BCEvent*) {
    std::strcpy(caDirPat, "*.*");
    std::snprintf(caFileName, sizeof caFileName, "*%s", caFileExt);
    InitFileList();
    InitOkButton();
    InitNameEdit();
    return 0;
}

void BCFileDialog::InitFileList() {
    opFileList = BindList(bcids::kCtlFileList, this);
    opDirList = BindList(bcids::kCtlDirList, this);
    opFileList->ListFiles(caFileName, 0);
    opDirList->ListDirs(caDirPat, kDirsAndDrives);
}

void BCFileDialog::InitOkButton() {
    opOkButton = bcdlg::Bind<BCPushButton>(IDOK, this);
}

void BCFileDialog::InitNameEdit() {
    opNameEdit = bcdlg::BindEdit(bcids::kCtlFileName, this, caFileName, kNameMax, true);
}

int BCFileDialog::WindowRst(int result) {
    bcdlg::Drop(opFileList);
    bcdlg::Drop(opDirList);
    bcdlg::Drop(opOkButton);
    bcdlg::Drop(opNameEdit);
    return EndDlg(result);
}

LRESULT BCFileDialog::ButtonSnglClk(BCEvent* event) {
    switch (event->GetControlID()) {
    case IDOK:
        OkClick();
        return 0;
    case IDCANCEL:
        return WindowRst(0);
    default:
        return BCModalDialog::ButtonSnglClk(event);
    }
}

LRESULT BCFileDialog::Close(BCEvent*) {
    return WindowRst(0);
}

void BCFileDialog::OkClick() {
    char name[kWork] = "";
    if (opNameEdit)
        opNameEdit->GetText(name, sizeof caFileName);
    FileChk(name);
    RelistDirs();
}

LRESULT BCFileDialog::ListBoxSnglClk(BCEvent* event) {
    char chosen[sizeof caFileName];
    switch (event->GetControlID()) {
    case bcids::kCtlFileList:
        GetListFile(chosen);
        return 0;
    case bcids::kCtlDirList:
        GetListDirs(chosen);
        return 0;
    default:
        return BCModalDialog::ListBoxSnglClk(event);
    }
}

LRESULT BCFileDialog::ListBoxDblClk(BCEvent* event) {
    char chosen[sizeof caFileName];
    switch (event->GetControlID()) {
    case bcids::kCtlFileList:
        GetListFile(chosen);
        break;
    case bcids::kCtlDirList:
        GetListDirs(chosen);
        break;
    default:
        return BCModalDialog::ListBoxDblClk(event);
    }
    // Nothing selected, nothing to check.
    if (chosen[0])
        FileChk(chosen);
    RelistDirs();
    return 0;
}

LRESULT BCFileDialog::EditChange(BCEvent* event) {
    if (opNameEdit && opNameEdit->IsModified())
        return bcdlg::EnableForText(opOkButton, opNameEdit->GetTextLen() > 0);
    return BCModalDialog::EditChange(event);
}

void BCFileDialog::GetListFile(char* buffer) {
    buffer[0] = '\0';
    std::string chosen = opFileList && opNameEdit ? SelectedFile(opFileList) : "";
    if (chosen.empty())
        return;
    bcdlg::CopyCut(buffer, chosen.c_str(), kNameMax);
    opNameEdit->SetText(buffer);
    bcdlg::EnableForText(opOkButton, true);
}

void BCFileDialog::GetListDirs(char* buffer) {
    char typed[sizeof caFileName] = "", entry[kWork] = "", path[kWork];
    buffer[0] = '\0';
    if (!opDirList || !opNameEdit || !opDirList->GetCrntItem(entry) || std::strlen(entry) < 3)
        return;
    opNameEdit->GetText(typed, sizeof typed);
    EntryPath(entry, bcpath::Tail(bcpath::HasWildcard(typed) ? typed : caFileName), path);
    bcdlg::CopyCut(buffer, path, kNameMax);
    opNameEdit->SetText(buffer);
    bcdlg::EnableForText(opOkButton, true);
}

void BCFileDialog::FileChk(char* name) {
    char checked[kWork], listed[kWork];
    bcdlg::CopyCut(checked, name, kNameMax);
    if (LacksExtension(checked))
        AddExtension(checked, caFileExt);
    std::strcpy(listed, checked); // the listing rewrites the name it is given
    switch (opFileList ? opFileList->CheckFile(listed) : 1) {
    case 0:
        return blNewFile ? Refuse(bcids::kMsgFileExists, checked) : Accept(checked);
    case 2:
        return blNewFile ? Accept(checked) : Refuse(bcids::kMsgFileNotFound, checked);
    case 3:
        return ShowName(bcpath::Tail(checked));
    default:
        return Refuse(bcids::kMsgInvalidFileName, checked);
    }
}

void BCFileDialog::ShowName(const char* text) {
    if (!opNameEdit)
        return;
    opNameEdit->SetText(text);
    bcdlg::FocusAll(opNameEdit);
}

void BCFileDialog::Accept(const char* name) {
    SetFileName(name);
    WindowRst(1);
}

void BCFileDialog::Refuse(unsigned int messageId, const char* name) {
    BCDispAppMsg(GetModule(), this, messageId, name);
    if (opNameEdit)
        bcdlg::FocusAll(opNameEdit);
}

void BCFileDialog::RelistDirs() {
    if (opDirList)
        opDirList->ListDirs(caDirPat, kDirsAndDrives);
}

void BCFileDialog::SetFileName(const char* name) {
    bcdlg::CopyCut(caFileName, name, kNameMax);
}

char* BCFileDialog::GetFileName(char* buffer) {
    return bcdlg::CopyOut(buffer, caFileName);
}

// While the dialog runs, the file list and the name field follow the new extension.
void BCFileDialog::SetFileExt(const char* ext) {
    bcdlg::CopyCut(caFileExt, ext, kExtMax);
    if (!opNameEdit)
        return;
    std::snprintf(caFileName, sizeof caFileName, "*%s", ext ? caFileExt : ".*");
    if (opFileList)
        opFileList->ListFiles(caFileName, 0);
    ShowName(caFileName);
}

char* BCFileDialog::GetFileExt(char* buffer) {
    return bcdlg::CopyOut(buffer, caFileExt);
}

BCOpenDialog::BCOpenDialog(const char* ext, const BCResID& dialogTemplate, BCWindow* parent,
                           BCApplication* app)
    : BCFileDialog(dialogTemplate, parent, ext, 0, app) {
    Create("");
}

BCNewDialog::BCNewDialog(const char* ext, const BCResID& dialogTemplate, BCWindow* parent,
                         BCApplication* app)
    : BCFileDialog(dialogTemplate, parent, ext, 1, app) {
    Create("");
}

BCSaveAsDialog::BCSaveAsDialog(const char* name, const char* ext, const BCResID& dialogTemplate,
                               BCWindow* parent, BCApplication* app)
    : BCStringDialog(dialogTemplate, parent, nullptr, kSaveAsMax, app, bcids::kTypeSaveAsDialog) {
    // A name longer than the field is offered by its file part rather than cut short.
    if (name)
        SetString(std::strlen(name) > kSaveAsMax ? bcpath::Tail(name) : name);
    Create("");
    if (GetResult())
        ConfirmName(ext);
}

// An invalid name is reported but keeps the result: the caller's save then reports its own
// failure. Only an answer other than Yes to the overwrite question cancels.
void BCSaveAsDialog::ConfirmName(const char* ext) {
    if (!std::strchr(caString, '.') && ext)
        std::strncat(caString, ext, kSaveAsWithExt - std::strlen(caString));
    switch (bcpath::ProbeFile(caString)) {
    case bcpath::Probe::kNew:
        return;
    case bcpath::Probe::kInvalid:
        BCDispAppMsg(GetModule(), this, bcids::kMsgInvalidFileName, caString);
        return;
    case bcpath::Probe::kExists:
        break;
    }
    BCModule* module = GetModule();
    KoString question;
    question.Sprintf(bcids::kMsgOverwriteFile, module ? module->GetResources() : nullptr, caString);
    BCMsgBox box(question, nullptr, MB_YESNO | MB_ICONQUESTION, this, module);
    if (box.GetResult() != IDYES)
        wResult = 0;
}
