#pragma once
// The platform headers first: the print-setup record and the abort procedure's types.
#include <windows.h>
#include <commdlg.h>

#include "norlib2api.h"
#include "bcdevice.h"

class BCApplication;
class BCWindow;

enum enumBCPrinterOptions : unsigned int {
    BC_PRINT_NORMAL = 0,
    // No status dialog, no abort procedure, no message when a job cannot start.
    BC_PRINT_SILENT = 0x0001
};

// A printer as a display device: whatever draws on a window draws on paper through it. The
// printer holds its device context from construction until End or destruction. One print
// job runs at a time in a process: Start makes this printer the running job, shows the
// "Print Status" dialog (unless silent) and disables the parent window until End.
//
// A job is either pages (draw, NextPage, ..., End) or bands (per page: while NextBand gives
// a rectangle, draw into it; NextBand gives 0 at the end of each page). The page's
// coordinates are the device's: (0, 0) top left when device flag BC_DEV_TOP_DOWN is set
// (the default), else y grows upwards from the bottom edge.
class NORLIB2_API BCPrinter : public BCDisplayDevice {
  public:
    // The default printer, from the "Device" entry of section "windows" of the profile
    // ("name,driver,port"); an empty entry makes a printer that does not exist.
    BCPrinter(BCApplication* app, enumBCPrinterOptions options);
    // Each text is cut to 40 characters.
    BCPrinter(const char* name, const char* driver, const char* port, BCApplication* app,
              enumBCPrinterOptions options);
    // The printer a print-setup dialog chose; its device mode is used for every context
    // made until this printer goes.
    BCPrinter(const tagPDA& setup, BCApplication* app, enumBCPrinterOptions options);
    ~BCPrinter() override;

    void Display(const char* prefix) override;
    void* GetDeviceDC() override;
    int ReleaseDeviceDC(void* dc) override;

    // 1 when the document started; a failed start is reported with message 10084 unless
    // silent, and blocks further output.
    int Start(const char* docName, BCWindow* parent);
    // 0 once the job was aborted or failed.
    int NextPage();
    // The next band of the page in `rect`; 0 at the end of the page, or once aborted or
    // failed.
    int NextBand(BCRectangle& rect);
    // Ends the document (unless aborted or failed), gives the context back and enables the
    // parent; 1 only when the document was ended.
    int End(BCWindow* parent);
    int Abort();
    // Opens the driver's own setup dialog: the driver library (".DRV" added to a name
    // without extension) and its "DEVICEMODE" entry. A library that cannot be loaded is
    // reported with message 10085.
    int Setup(BCWindow* parent);

    int Exists() const { return blExists; }
    int HasFailed() const { return blFailed; }
    const char* GetName() const { return caPrinterName; }
    const char* GetPort() const { return caPrinterPort; }
    const char* GetDriver() const { return caPrinterDriver; }

  private:
    void CopyNames(const char* name, const char* driver, const char* port);
    void Open();
    int Escape(int code, int size, const void* in, void* out);
    int StartDocument(const char* docName);
    void SetPageRect();
    int Fail();
    int Going() const;

    char caPrinterName[40];
    char caPrinterPort[40];
    char caPrinterDriver[40];
    int blFailed;
    int blExists;
    enumBCPrinterOptions wOptions;
};

// The abort procedure handed to the platform: pumps the waiting messages through the status
// dialog; a non-zero `code` (a spooling error) is shown with message 10083 and aborts the
// job. Non-zero to go on printing.
NORLIB2_API BOOL CALLBACK BCPrintAbortProc(HDC dc, int code);
