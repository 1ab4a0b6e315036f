#include "bcfiledata.h"
#include "bcmodule.h"
#include "bcwindow.h"
#include "bccursor.h"
#include "bcdialog.h"
#include "bcfiledlg.h"
#include "bcstream.h"
#include "bcmsg.h"
#include "kostring.h"

#include <windows.h>

#include <cstring>
#include <fstream>
#include <new>

#include "bcids2.h"
#include "bclib2.h"
#include "bcplatform.h"

namespace {

constexpr unsigned int kYesNoCancelQuestion = 0x23;
const char kTempSuffix[] = ".~sv";
// The open dialog's pattern for a document without an extension.
const char kAnyExt[] = ".*";
// The words of the library's out-of-memory handler, for a document that does not fit.
const char kNoMemoryText[] = "Can't allocate enough memory!";
const char kNoMemoryCaption[] = "Attention";

char* CopyString(const char* text, bool& ok) {
    ok = true;
    if (!text)
        return nullptr;
    char* copy = new (std::nothrow) char[std::strlen(text) + 1];
    if (!copy) {
        ok = false;
        return nullptr;
    }
    std::strcpy(copy, text);
    return copy;
}

// Puts a copy of `text` in place of `field`; 0 when the copy could not be made (the field is
// then null).
int ReplaceString(char*& field, const char* text) {
    bool ok;
    char* copy = CopyString(text, ok);
    delete[] field;
    field = copy;
    return ok ? 1 : 0;
}

// The save-changes question in this library's words. A stale error flag is cleared first so
// that only this formatting is judged; false when the text could not be built (the flag is
// cleared again: the failure is reported by the result).
bool SaveQuestion(KoString& question, const char* fileName) {
    void* resources = BCGetDLLModule2() ? BCGetDLLModule2()->GetResources() : nullptr;
    KoErrorHook::ResetProcError();
    if (fileName)
        question.Sprintf(bcids::kMsgSaveChangesTo, resources, fileName);
    else
        question.Sprintf(bcids::kMsgSaveCurrentChanges, resources);
    bool built = !KoErrorHook::DidProcErrorOccur();
    KoErrorHook::ResetProcError();
    return built;
}

// The dialogs browse by changing the current directory, so a chosen name is kept as a full
// path: a later browse must not move the document. False when the name has no full path.
bool FullPath(const char* name, KoString& path) {
    char full[MAX_PATH];
    DWORD length = GetFullPathNameA(name, sizeof full, full, nullptr);
    if (length == 0 || length >= sizeof full) {
        BCTraceFailure("GetFullPathNameA");
        return false;
    }
    path = full;
    return true;
}

void RemoveFile(const char* path) {
    if (!::DeleteFileA(path))
        BCTraceFailure("DeleteFileA");
}

// The stock wait cursor on the document's window while a file is read or written.
class WaitCursor {
  public:
    explicit WaitCursor(BCWindow* window) : m_window(window), m_previous(nullptr) {
        BCCursor wait(BC_CURSOR_WAIT);
        if (m_window) {
            m_previous = m_window->GetCursor();
            m_window->SetCursor(wait.GetHandle());
        }
    }
    ~WaitCursor() {
        if (m_window)
            m_window->SetCursor(m_previous);
    }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

  private:
    BCWindow* m_window;
    HCURSOR m_previous;
};

} // namespace

BCFileData::BCFileData(BCRenderableData* data, BCWindow* window, const char* fileExt,
                       const char* fileName, unsigned int flags, BCUpdaterList* updaters)
    : BCDependentData(data, flags,
                      (window && !updaters) ? new (std::nothrow) BCUpdaterList : updaters),
      caFileName(nullptr), caFileExt(nullptr), opWindow(window) {
    bool ok;
    caFileName = CopyString(fileName, ok);
    caFileExt = CopyString(fileExt, ok);
    if (opWindow && opUpdaters && !opUpdaters->Find(opWindow)) {
        BCWindowUpdater* updater = new (std::nothrow) BCWindowUpdater(opWindow);
        if (updater && !opUpdaters->InsertUpdater(updater, true))
            delete updater;
    }
}

BCFileData::BCFileData(const BCFileData& other)
    : BCDependentData(other), caFileName(nullptr), caFileExt(nullptr), opWindow(nullptr) {
    bool ok;
    caFileName = CopyString(other.caFileName, ok);
    caFileExt = CopyString(other.caFileExt, ok);
}

BCFileData& BCFileData::operator=(const BCFileData& other) {
    if (this != &other) {
        BCDependentData::operator=(other);
        SetFileName(other.caFileName);
        SetFileExt(other.caFileExt);
    }
    return *this;
}

BCFileData::~BCFileData() {
    delete[] caFileName;
    delete[] caFileExt;
}

BCRenderableData* BCFileData::Dup() {
    return new (std::nothrow) BCFileData(*this);
}

int BCFileData::SetFileName(const char* fileName) {
    return ReplaceString(caFileName, fileName);
}

int BCFileData::SetFileExt(const char* fileExt) {
    return ReplaceString(caFileExt, fileExt);
}

void BCFileData::Notify(unsigned int code) {
    if (dwFlags & BC_FLAG_NOTIFY)
        UpdateDependents(code, nullptr);
}

BCModule* BCFileData::Module() const {
    return opWindow ? opWindow->GetModule() : nullptr;
}

BCApplication* BCFileData::App() const {
    return opWindow ? opWindow->GetApp() : nullptr;
}

int BCFileData::QuerySaveFile() {
    if (!IsModified())
        return 1;
    // Without the question the changes are kept: the answer counts as Cancel.
    KoString question;
    if (!SaveQuestion(question, caFileName))
        return 0;
    BCMsgBox box(question.c_str(), nullptr, kYesNoCancelQuestion, opWindow, Module());
    switch (box.GetResult()) {
    case IDYES:
        return caFileName ? SaveFile() : SaveAsFile();
    case IDNO:
        SetModified(false);
        return 1;
    default:
        return 0;
    }
}

// New and close: the same steps, told apart by the code they send.
int BCFileData::Restart(unsigned int code) {
    if (!QuerySaveFile() || !Clear(true) || !SetFileName(nullptr))
        return 0;
    SetModified(false);
    Notify(code);
    return 1;
}

int BCFileData::NewFile() {
    return Restart(BC_UPDATE_NEW);
}

int BCFileData::CloseFile() {
    return Restart(BC_UPDATE_CLOSED);
}

int BCFileData::OpenFile() {
    if (!QuerySaveFile())
        return 0;
    BCOpenDialog dialog(caFileExt ? caFileExt : kAnyExt,
                        BCResID(bcids::kDlgOpenFile, BCGetDLLModule2()), opWindow, App());
    KoString path;
    if (!dialog.GetResult() || !FullPath(dialog.GetFileName(nullptr), path))
        return 0;
    // A file that cannot be opened keeps the document's name as well as its contents.
    std::ifstream in(path.c_str(), std::ios::binary);
    if (!in || !SetFileName(path.c_str()))
        return 0;
    return ReadOpened(in);
}

int BCFileData::SaveAsFile() {
    BCSaveAsDialog dialog(caFileName, caFileExt, BCResID(bcids::kDlgSaveAs, BCGetDLLModule2()),
                          opWindow, App());
    KoString path;
    if (!dialog.GetResult() || !FullPath(dialog.GetString(nullptr), path) ||
        !SetFileName(path.c_str()))
        return 0;
    return SaveFile();
}

int BCFileData::WriteRecord(const char* path) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out)
        return 0;
    int saved = WriteDocument(out);
    out.flush();
    return saved && BCStreamOK(out);
}

int BCFileData::SaveFile() {
    if (!caFileName || !*caFileName)
        return SaveAsFile();
    // A target that cannot be written leads to save-as; opening it does not truncate it.
    HANDLE target = CreateFileA(caFileName, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (target == INVALID_HANDLE_VALUE) {
        BCTraceFailure("CreateFileA");
        return SaveAsFile();
    }
    bool created = GetLastError() != ERROR_ALREADY_EXISTS;
    CloseHandle(target);

    KoString temp;
    temp.Sprintf("%s%s", caFileName, kTempSuffix);
    int saved;
    {
        WaitCursor wait(opWindow);
        saved = WriteRecord(temp.c_str()) &&
                BCTraced(MoveFileExA(temp.c_str(), caFileName,
                                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH),
                         "MoveFileExA");
    }
    if (!saved) {
        RemoveFile(temp.c_str());
        if (created)
            RemoveFile(caFileName);
        BCDispAppMsg(Module(), opWindow, bcids::kMsgFileWriteError, caFileName);
        return 0;
    }
    SetModified(false);
    Notify(BC_UPDATE_SAVED);
    return 1;
}

int BCFileData::LoadFile() {
    if (!caFileName || !*caFileName)
        return 0;
    std::ifstream in(caFileName, std::ios::binary);
    return in ? ReadOpened(in) : 0;
}

int BCFileData::ReadOpened(std::istream& in) {
    WaitCursor wait(opWindow);
    int read = ReadDocument(in);
    if (read == BC_READ_FAILED)
        BCDispAppMsg(Module(), opWindow, bcids::kMsgFileReadError, caFileName);
    if (read == BC_READ_NO_MEMORY)
        BCMsgBox(kNoMemoryText, kNoMemoryCaption, MB_OK | MB_ICONSTOP, opWindow, Module());
    if (read != BC_READ_DONE)
        return 0;
    SetModified(false);
    Notify(BC_UPDATE_OPENED);
    return 1;
}

int BCFileData::ReadDocument(std::istream& is) {
    if (!Clear(true))
        return BC_READ_NOT_CLEARED;
    return Load(is) ? BC_READ_DONE : BC_READ_FAILED;
}

int BCFileData::WriteDocument(std::ostream& os) {
    return Save(os);
}

int BCFileData::DeleteFile() {
    if (!caFileName || !*caFileName)
        return 0;
    return BCTraced(::DeleteFileA(caFileName), "DeleteFileA") ? 1 : 0;
}
