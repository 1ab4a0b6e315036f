#include "bcprinter.h"
#include "bcapp.h"
#include "bcdialog.h"
#include "bclib2.h"
#include "bcmemory.h"
#include "bcmsg.h"
#include "bcwindow.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include "bcids2.h"
#include "bcplatform.h"

namespace {
const char kFile[] = "PRINTER";
// The source lines the assertions report.
constexpr unsigned int kLineAbortProc = 293;
constexpr unsigned int kLinePage = 342;
constexpr unsigned int kLineBand = 364;
constexpr unsigned int kLineEnd = 398;
constexpr unsigned long kFieldLen = 40;
constexpr int kProfileLen = 80;

// The driver's setup entry: (owner window, driver library, device name, port).
using DeviceModeProc = void(WINAPI*)(HWND, HMODULE, LPSTR, LPSTR);

// "Sending <document> to print spooler", with a Cancel button that aborts the running job.
class StatusDialog : public BCModelessDialog {
  public:
    StatusDialog(const char* docName, BCWindow* parent)
        : BCModelessDialog(BCResID(bcids::kDlgPrintStatus, BCGetDLLModule2()), parent,
                           parent ? parent->GetApp() : nullptr),
          strDocName(docName) {}
    LRESULT Initialize(BCEvent*) override {
        BCTraced(SetDlgItemTextA(hWnd, bcids::kCtlPrintDocName, strDocName.c_str()),
                 "SetDlgItemTextA");
        return TRUE;
    }
    LRESULT ButtonSnglClk(BCEvent* e) override;

  private:
    std::string strDocName;
};

// The one print job of the process.
struct PrintJob {
    bool abort = false;
    BCPrinter* printer = nullptr;
    StatusDialog* status = nullptr;
    ABORTPROC abortProc = nullptr;
    bool hasSetup = false;
    PRINTDLGA setup = {};
};

PrintJob& Job() {
    static PrintJob job;
    return job;
}

LRESULT StatusDialog::ButtonSnglClk(BCEvent* e) {
    if (e->GetControlID() != bcids::kCtlPrintCancel)
        return DefaultEvent(e);
    Job().abort = true;
    if (Job().printer)
        Job().printer->Abort();
    EndDlg(0);
    return TRUE;
}

void CloseStatus() {
    delete Job().status;
    Job().status = nullptr;
}

// A field of 40 characters need not be terminated.
std::string Text(const char* field) {
    return std::string(field, strnlen(field, kFieldLen));
}

// At most 40 characters, terminated only when shorter.
void CopyField(char* field, const char* text) {
    std::memset(field, 0, kFieldLen);
    if (text)
        std::memcpy(field, text, strnlen(text, kFieldLen));
}

char* SkipBlanks(char* text) {
    while (*text == ' ')
        ++text;
    return text;
}

// Cuts `text` at its first comma and gives what follows, blanks skipped; without a comma,
// the empty end of `text`.
char* SplitAtComma(char* text) {
    char* comma = std::strchr(text, ',');
    if (!comma)
        return text + std::strlen(text);
    *comma = '\0';
    return SkipBlanks(comma + 1);
}
} // namespace

BCPrinter::BCPrinter(BCApplication* app, enumBCPrinterOptions options)
    : BCDisplayDevice(bcids::kTypePrinter, app ? app->GetModule() : nullptr), blFailed(0),
      blExists(0), wOptions(options) {
    char value[kProfileLen + 1] = "";
    GetProfileStringA("windows", "Device", "", value, sizeof value);
    CopyNames("", "", "");
    if (!value[0])
        return;
    char* driver = SplitAtComma(value);
    const char* port = SplitAtComma(driver);
    BCCopyLimStr(caPrinterName, value, kFieldLen);
    BCCopyLimStr(caPrinterPort, port, kFieldLen);
    BCCopyLimStr(caPrinterDriver, driver, kFieldLen);
    Open();
}

BCPrinter::BCPrinter(const char* name, const char* driver, const char* port, BCApplication* app,
                     enumBCPrinterOptions options)
    : BCDisplayDevice(bcids::kTypePrinter, app ? app->GetModule() : nullptr), blFailed(0),
      blExists(0), wOptions(options) {
    CopyNames(name, driver, port);
    Open();
}

BCPrinter::BCPrinter(const tagPDA& setup, BCApplication* app, enumBCPrinterOptions options)
    : BCDisplayDevice(bcids::kTypePrinter, app ? app->GetModule() : nullptr), blFailed(0),
      blExists(0), wOptions(options) {
    Job().setup = setup;
    Job().hasSetup = true;
    {
        BCGlobalLock names(setup.hDevNames);
        const DEVNAMES* block = names.As<DEVNAMES>();
        const char* base = static_cast<const char*>(names.Data());
        if (block)
            CopyNames(base + block->wDeviceOffset, base + block->wDriverOffset,
                      base + block->wOutputOffset);
        else
            CopyNames("", "", "");
    }
    Open();
}

BCPrinter::~BCPrinter() {
    PrintJob& job = Job();
    job.hasSetup = false;
    // A job left running goes with its printer: nothing could end it any more.
    if (job.printer == this) {
        CloseStatus();
        job.printer = nullptr;
    }
    if (hDC)
        ReleaseDC();
}

void BCPrinter::CopyNames(const char* name, const char* driver, const char* port) {
    CopyField(caPrinterName, name);
    CopyField(caPrinterDriver, driver);
    CopyField(caPrinterPort, port);
}

void BCPrinter::Open() {
    blExists = SelectDC() && hDC;
}

void* BCPrinter::GetDeviceDC() {
    PrintJob& job = Job();
    BCGlobalLock mode(job.hasSetup ? job.setup.hDevMode : nullptr);
    HDC dc = CreateDCA(Text(caPrinterDriver).c_str(), Text(caPrinterName).c_str(),
                       Text(caPrinterPort).c_str(), mode.As<DEVMODEA>());
    if (!dc)
        return BCTraced<void*>(nullptr, "CreateDCA");
    SetDeviceFlags(BC_DEV_OWNS_DC, 1);
    return dc;
}

int BCPrinter::ReleaseDeviceDC(void* dc) {
    SetDeviceFlags(BC_DEV_OWNS_DC, 0);
    return BCTraced(DeleteDC(static_cast<HDC>(dc)), "DeleteDC");
}

int BCPrinter::Escape(int code, int size, const void* in, void* out) {
    int result = ::Escape(static_cast<HDC>(hDC), code, size, static_cast<LPCSTR>(in), out);
    if (result <= 0)
        BCTraceFailure("Escape");
    return result;
}

int BCPrinter::Fail() {
    blFailed = 1;
    return 0;
}

int BCPrinter::Going() const {
    return !Job().abort && !blFailed;
}

int BCPrinter::Start(const char* docName, BCWindow* parent) {
    if (!hDC)
        return 0;
    const char* doc = docName ? docName : "";
    const bool silent = wOptions & BC_PRINT_SILENT;
    PrintJob& job = Job();
    job.printer = this;
    // The platform runs the abort procedure while it starts the document: an abort left
    // from an earlier job would stop this one before it began.
    job.abort = false;
    if (!silent) {
        job.status = new StatusDialog(doc, parent);
        job.status->Create(nullptr);
    }
    job.abortProc = BCPrintAbortProc;
    if (!silent)
        BCAssert(this,
                 Escape(SETABORTPROC, 0, reinterpret_cast<const void*>(job.abortProc), nullptr) > 0,
                 kLineAbortProc, kFile);
    if (!StartDocument(doc)) {
        CloseStatus();
        if (!silent)
            DispObjectMsg(bcids::kMsgPrintCannotStart, doc);
        return Fail();
    }
    if (parent)
        parent->Disable();
    SetPageRect();
    GetChrWidth(72);
    GetChrHeight(72);
    return 1;
}

int BCPrinter::StartDocument(const char* docName) {
    return Escape(STARTDOC, static_cast<int>(std::strlen(docName)), docName, nullptr) > 0;
}

void BCPrinter::SetPageRect() {
    HDC dc = static_cast<HDC>(hDC);
    // Some drivers acknowledge the escape without answering it: the page's size in device
    // units is then what the device reports.
    POINT page = {GetDeviceCaps(dc, PHYSICALWIDTH), GetDeviceCaps(dc, PHYSICALHEIGHT)};
    Escape(GETPHYSPAGESIZE, 0, nullptr, &page);
    const short width = static_cast<short>(page.x);
    const short height = static_cast<short>(page.y);
    if (GetDeviceFlags() & BC_DEV_TOP_DOWN)
        SetUserRect(BCRectangle(0, 0, width, height));
    else
        SetUserRect(BCRectangle(0, height, width, 0));
}

namespace {
short Extent(const BCRectangle& rect) {
    return static_cast<short>(std::abs(rect.GetHeight()));
}
} // namespace

int BCPrinter::NextPage() {
    if (!Going() || !BCAssert(this, hDC != nullptr, kLinePage, kFile))
        return 0;
    if (Escape(NEWFRAME, 0, nullptr, nullptr) <= 0)
        return Fail();
    const bool topDown = GetDeviceFlags() & BC_DEV_TOP_DOWN;
    return MoveTo(BCPosition(0, topDown ? 0 : Extent(GetUserRect())));
}

int BCPrinter::NextBand(BCRectangle& rect) {
    if (!Going() || !BCAssert(this, hDC != nullptr, kLineBand, kFile))
        return 0;
    RECT band = {};
    if (Escape(NEXTBAND, 0, nullptr, &band) <= 0)
        return Fail();
    if (band.right == band.left || band.bottom == band.top)
        return 0;
    POINT corners[2] = {{band.left, band.top}, {band.right, band.bottom}};
    BCTraced(DPtoLP(static_cast<HDC>(hDC), corners, 2), "DPtoLP");
    short top = static_cast<short>(corners[0].y);
    short bottom = static_cast<short>(corners[1].y);
    if (!(GetDeviceFlags() & BC_DEV_TOP_DOWN)) {
        const short extent = Extent(GetUserRect());
        top = static_cast<short>(extent - top);
        bottom = static_cast<short>(extent - bottom);
    }
    rect = BCRectangle(static_cast<short>(corners[0].x), top, static_cast<short>(corners[1].x),
                       bottom);
    MoveTo(rect.GetPos());
    return 1;
}

int BCPrinter::End(BCWindow* parent) {
    int ended = 0;
    if (BCAssert(this, hDC != nullptr, kLineEnd, kFile)) {
        if (Going())
            ended = Escape(ENDDOC, 0, nullptr, nullptr) > 0;
        ReleaseDC();
    }
    if (parent)
        parent->Enable();
    CloseStatus();
    Job().abortProc = nullptr;
    return ended;
}

int BCPrinter::Abort() {
    Job().abort = true;
    return 1;
}

int BCPrinter::Setup(BCWindow* parent) {
    std::string file = Text(caPrinterDriver);
    if (file.find('.') == std::string::npos)
        file += ".DRV";
    HMODULE library = LoadLibraryA(file.c_str());
    if (!library) {
        BCTraceFailure("LoadLibraryA");
        DispObjectMsg(bcids::kMsgPrinterDriverLoad, file.c_str(), 0u);
        return 0;
    }
    auto entry = reinterpret_cast<DeviceModeProc>(
        reinterpret_cast<void*>(GetProcAddress(library, "DEVICEMODE")));
    if (!entry) {
        BCTraceFailure("GetProcAddress");
        FreeLibrary(library);
        return 0;
    }
    std::string name = Text(caPrinterName);
    std::string port = Text(caPrinterPort);
    // The driver stays loaded: its dialog may still be using it.
    entry(parent ? parent->GetHandle() : nullptr, library, &name[0], &port[0]);
    return 1;
}

void BCPrinter::Display(const char* prefix) {
    DispObjectMsg("%scaPrinterName=%s\ncaPrinterPort=%s\ncaPrinterDriver=%s\nblExists=%d",
                  prefix ? prefix : "", Text(caPrinterName).c_str(), Text(caPrinterPort).c_str(),
                  Text(caPrinterDriver).c_str(), blExists);
}

BOOL CALLBACK BCPrintAbortProc(HDC, int code) {
    PrintJob& job = Job();
    if (code) {
        BCDispMsg(bcids::kMsgPrinterAbort, nullptr, code);
        job.abort = true;
    }
    MSG message;
    while (!job.abort && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        HWND status = job.status ? job.status->GetHandle() : nullptr;
        // Without a status dialog nobody is meant to act while the job spools: the message
        // is dropped on purpose.
        if (status && IsDialogMessageA(status, &message))
            continue;
        if (status) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
    return !job.abort;
}
