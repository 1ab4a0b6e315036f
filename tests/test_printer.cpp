#include <gtest/gtest.h>

#include <windows.h>
#include <winspool.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "guidriver.h"
#include "msgrecorder.h"
#include "norlib2.h"

// Jobs go to a PostScript printer of the Wine prefix whose port writes to a file of the
// build; scripts/printer.sh turns the file into grey maps, which the checks read.
namespace {

const char kPrinter[] = "Norlib Test Printer";
const char kDevice[] = "Norlib Test Printer,winspool,LPT1:";

BCApplication& App() {
    static BCApplication app;
    return app;
}

std::string BuildDir() {
    const char* dir = std::getenv("NORLIB_BUILD_DIR");
    return dir ? dir : "/tmp";
}

std::string JobFile() { // Unix path; Wine reads it as Z:<path>
    return BuildDir() + "/printer-job.ps";
}

bool Exists(const std::string& unixPath) {
    return GetFileAttributesA(("Z:" + unixPath).c_str()) != INVALID_FILE_ATTRIBUTES;
}

void InstallPrinter() {
    char dir[MAX_PATH] = "";
    DWORD size = 0;
    GetPrinterDriverDirectoryA(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(dir), sizeof dir,
                               &size);
    std::string ppd = std::string(dir) + "\\3";
    CreateDirectoryA(ppd.c_str(), nullptr);
    ppd += "\\norlibps.ppd";
    ASSERT_TRUE(
        CopyFileA("Z:" NORLIB_SOURCE_DIR "/tests/printdrv/norlibps.ppd", ppd.c_str(), FALSE));
    DRIVER_INFO_3A driver = {};
    driver.cVersion = 3;
    driver.pName = const_cast<char*>(kPrinter);
    driver.pDriverPath = driver.pConfigFile = const_cast<char*>("wineps.drv");
    driver.pDataFile = &ppd[0];
    AddPrinterDriverA(nullptr, 3, reinterpret_cast<BYTE*>(&driver));
    HANDLE printer = nullptr;
    if (!OpenPrinterA(const_cast<char*>(kPrinter), &printer, nullptr)) {
        PRINTER_INFO_2A info = {};
        info.pPrinterName = info.pDriverName = const_cast<char*>(kPrinter);
        info.pPortName = const_cast<char*>("LPT1:");
        info.pPrintProcessor = const_cast<char*>("WinPrint");
        info.pDatatype = const_cast<char*>("RAW");
        printer = AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&info));
    }
    ASSERT_TRUE(printer);
    ClosePrinter(printer);
    // Wine's spooler sends what a port receives to the Unix file named for it here.
    std::string file = JobFile();
    ASSERT_EQ(RegSetKeyValueA(HKEY_CURRENT_USER, "Software\\Wine\\Printing\\Spooler",
                              "LPT1:", REG_SZ, file.c_str(), static_cast<DWORD>(file.size() + 1)),
              ERROR_SUCCESS);
    WriteProfileStringA("windows", "Device", kDevice);
}

// One printed page as a grey map, addressed in the printer's device units.
struct Page {
    int width = 0, height = 0;
    std::vector<unsigned char> grey;
    double scale = 0, offsetX = 0, offsetY = 0; // device unit -> pixel
    // The share of dark pixels in the device rectangle.
    double Ink(int left, int top, int right, int bottom) const {
        int dark = 0, all = 0;
        for (int y = int((top + offsetY) * scale); y < int((bottom + offsetY) * scale); ++y)
            for (int x = int((left + offsetX) * scale); x < int((right + offsetX) * scale); ++x)
                ++all, dark += grey.at(size_t(y) * width + x) < 128;
        return all ? double(dark) / all : 0;
    }
};

struct Geometry {
    int dpi, offsetX, offsetY, width, height;
    explicit Geometry(HDC dc)
        : dpi(GetDeviceCaps(dc, LOGPIXELSX)), offsetX(GetDeviceCaps(dc, PHYSICALOFFSETX)),
          offsetY(GetDeviceCaps(dc, PHYSICALOFFSETY)), width(GetDeviceCaps(dc, HORZRES)),
          height(GetDeviceCaps(dc, VERTRES)) {}
};

bool ReadPage(const std::string& file, const Geometry& g, Page& page) {
    std::ifstream in("Z:" + file, std::ios::binary);
    std::string magic, token;
    in >> magic;
    int fields[3], n = 0;
    while (n < 3 && in >> token)
        if (token[0] == '#')
            std::getline(in, token);
        else
            fields[n++] = std::atoi(token.c_str());
    in.get();
    if (magic != "P5" || n < 3)
        return false;
    page.width = fields[0], page.height = fields[1];
    page.grey.resize(size_t(page.width) * page.height);
    in.read(reinterpret_cast<char*>(page.grey.data()), std::streamsize(page.grey.size()));
    page.scale = 30.0 / g.dpi, page.offsetX = g.offsetX, page.offsetY = g.offsetY;
    return bool(in);
}

// The job's pages, rendered at 30 dpi by scripts/printer.sh (Wine cannot wait for a Unix
// process: the script leaves a mark when it is done).
std::vector<Page> Render(const Geometry& g) {
    std::string prefix = BuildDir() + "/printer-page";
    DeleteFileA(("Z:" + prefix + ".done").c_str());
    std::string command =
        "Z:\\bin\\sh " NORLIB_SOURCE_DIR "/scripts/printer.sh render " + JobFile() + " " + prefix;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process))
        return {};
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    for (int i = 0; i < 600 && !Exists(prefix + ".done"); ++i)
        Sleep(50);
    std::vector<Page> pages;
    for (Page page; ReadPage(prefix + "-" + std::to_string(pages.size() + 1) + ".pgm", g, page);)
        pages.push_back(page);
    return pages;
}

void DrawPage(BCPrinter& printer, int page);

class PrinterTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        InstallPrinter();
        // The driver's and the dialog's lasting objects (fonts) are made by a first job.
        BCPrinter warmUp(&App(), BC_PRINT_NORMAL);
        warmUp.Start("Warm-up", nullptr);
        DrawPage(warmUp, 1);
        warmUp.End(nullptr);
    }
    void SetUp() override {
        WriteProfileStringA("windows", "Device", kDevice);
        parent.Create("Printing");
        DeleteFileA(("Z:" + JobFile()).c_str());
        gdiObjects = BCGetGdiObjectCount();
    }
    void TearDown() override { parent.Destroy(); }
    bool StatusShown() { return FindWindowA("#32770", "Print Status") != nullptr; }

    MsgRecorder messages;
    BCMainWindow parent{&App()};
    unsigned long gdiObjects = 0;
};

// A box and two text lines on page 1, a box elsewhere on page 2.
void DrawPage(BCPrinter& printer, int page) {
    static BCBoxGraphic box(1, BCPosition(1700, 300), BCSize(600, 400), nullptr, BCGetBlackBrush());
    box.SetFill(1);
    if (page == 1) {
        box.Draw(&printer);
        printer.PosStr(BCPosition(300, 300), "Line one of the page");
        printer.PosStr(BCPosition(300, 600), "Line two of the page");
    } else {
        printer.SetBrush(BCGetBlackBrush());
        printer.PutRect(BCRectangle(300, 1500, 900, 2100), BC_DRAW_FILLED);
        printer.SetBrush(nullptr);
    }
}

void CheckPages(const std::vector<Page>& pages) {
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_GT(pages[0].Ink(1720, 320, 2280, 680), 0.95);
    EXPECT_GT(pages[0].Ink(300, 300, 900, 340), 0.05);
    EXPECT_GT(pages[0].Ink(300, 600, 900, 640), 0.05);
    EXPECT_EQ(pages[0].Ink(300, 400, 900, 560), 0); // between the lines
    EXPECT_EQ(pages[0].Ink(320, 1520, 880, 2080), 0);
    EXPECT_GT(pages[1].Ink(320, 1520, 880, 2080), 0.95);
    EXPECT_EQ(pages[1].Ink(1700, 300, 2300, 700), 0);
}

TEST_F(PrinterTest, PagesPrintWhereTheDeviceCoordinatesPutThemWithTheParentDisabled) {
    {
        BCPrinter printer(&App(), BC_PRINT_NORMAL);
        ASSERT_TRUE(printer.Exists());
        Geometry g(static_cast<HDC>(printer.GetDC()));
        ASSERT_EQ(printer.Start("Two pages", &parent), 1);
        char shown[64] = "";
        GetDlgItemTextA(FindWindowA("#32770", "Print Status"), 2005, shown, sizeof shown);
        EXPECT_STREQ(shown, "Two pages");
        EXPECT_FALSE(parent.IsEnabled());
        EXPECT_EQ(printer.GetUserRect().GetBottom(),
                  GetDeviceCaps(HDC(printer.GetDC()), PHYSICALHEIGHT));
        DrawPage(printer, 1);
        EXPECT_TRUE(printer.NextPage());
        EXPECT_EQ(printer.GetCrntPos(), BCPosition(0, 0));
        DrawPage(printer, 2);
        EXPECT_EQ(printer.End(&parent), 1);
        EXPECT_TRUE(parent.IsEnabled());
        EXPECT_FALSE(StatusShown());
        EXPECT_EQ(printer.GetDC(), nullptr);
        CheckPages(Render(g));
    }
    EXPECT_EQ(BCGetGdiObjectCount(), gdiObjects);
    EXPECT_TRUE(messages.Entries().empty());
}

TEST_F(PrinterTest, BandsCoverEachPageAndEndIt) {
    BCPrinter printer(kPrinter, "winspool", "LPT1:", &App(), BC_PRINT_SILENT);
    Geometry g(static_cast<HDC>(printer.GetDC()));
    ASSERT_EQ(printer.Start("Bands", &parent), 1);
    EXPECT_FALSE(StatusShown());
    BCRectangle band;
    for (int page = 1; page <= 2; ++page) {
        int bands = 0;
        for (; printer.NextBand(band); ++bands) {
            EXPECT_EQ(band, BCRectangle(0, 0, short(g.width), short(g.height)));
            EXPECT_EQ(printer.GetCrntPos(), band.GetPos());
            DrawPage(printer, page);
        }
        EXPECT_EQ(bands, 1);
    }
    EXPECT_EQ(printer.End(&parent), 1);
    CheckPages(Render(g));
}

TEST_F(PrinterTest, BottomUpPagesMeasureFromTheBottomEdge) {
    BCPrinter printer(&App(), BC_PRINT_SILENT);
    printer.SetDeviceFlags(BC_DEV_TOP_DOWN, 0);
    HDC dc = static_cast<HDC>(printer.GetDC());
    const short width = short(GetDeviceCaps(dc, PHYSICALWIDTH)),
                height = short(GetDeviceCaps(dc, PHYSICALHEIGHT)),
                printable = short(GetDeviceCaps(dc, VERTRES));
    ASSERT_EQ(printer.Start("Bottom up", &parent), 1);
    EXPECT_EQ(printer.GetUserRect(), BCRectangle(0, height, width, 0));
    EXPECT_TRUE(printer.NextPage());
    EXPECT_EQ(printer.GetCrntPos(), BCPosition(0, height));
    BCRectangle band;
    ASSERT_TRUE(printer.NextBand(band));
    EXPECT_EQ(band.GetTop(), height);
    EXPECT_EQ(band.GetBottom(), height - printable);
    EXPECT_EQ(printer.End(&parent), 1);
}

TEST_F(PrinterTest, AbortFromTheStatusDialogOrTheAbortProcedureSkipsTheRestOfTheJob) {
    for (bool fromDialog : {true, false}) {
        messages.Clear();
        BCPrinter printer(&App(), BC_PRINT_NORMAL);
        ASSERT_EQ(printer.Start("Halfway", &parent), 1);
        DialogDriver driver;
        driver.Click(2).Start(fromDialog ? 5000 : 0);
        DrawPage(printer, 1);
        EXPECT_TRUE(printer.NextPage());
        HDC dc = static_cast<HDC>(printer.GetDC());
        if (fromDialog)
            for (int i = 0; i < 500 && BCPrintAbortProc(dc, 0); ++i)
                Sleep(10);
        else
            EXPECT_FALSE(BCPrintAbortProc(dc, 7));
        EXPECT_EQ(driver.Finish(), fromDialog);
        EXPECT_FALSE(BCPrintAbortProc(dc, 0));
        EXPECT_EQ(printer.NextPage(), 0);
        BCRectangle band;
        EXPECT_EQ(printer.NextBand(band), 0);
        EXPECT_EQ(printer.End(&parent), 0);
        EXPECT_TRUE(parent.IsEnabled());
        EXPECT_FALSE(StatusShown());
        EXPECT_EQ(messages.Texts(), fromDialog ? "" : "Printer Abort:  7|");
    }
    EXPECT_FALSE(Exists(JobFile())); // no document was ended
    EXPECT_EQ(BCGetGdiObjectCount(), gdiObjects);
}

TEST_F(PrinterTest, DeviceEntriesAreSplitAtCommasWithBlanksSkipped) {
    const std::string longName(45, 'N');
    struct Case {
        std::string entry, name, driver, port;
        int exists;
    } cases[] = {
        {kDevice, kPrinter, "winspool", "LPT1:", 1},
        {"Norlib Test Printer, winspool,  LPT1:", kPrinter, "winspool", "LPT1:", 1},
        {"Office,LASERDRV,LPT1:", "Office", "LASERDRV", "LPT1:", 0},
        {"Office", "Office", "", "", 0},
        {"", "", "", "", 0},
        {longName + ",winspool,LPT1:", longName.substr(0, 39), "winspool", "LPT1:", 0},
    };
    for (const Case& c : cases) {
        WriteProfileStringA("windows", "Device", c.entry.c_str());
        BCPrinter printer(&App(), BC_PRINT_NORMAL);
        EXPECT_EQ(printer.GetName(), c.name) << c.entry;
        EXPECT_EQ(printer.GetDriver(), c.driver) << c.entry;
        EXPECT_EQ(printer.GetPort(), c.port) << c.entry;
        EXPECT_EQ(printer.Exists(), c.exists) << c.entry;
        if (!c.exists) {
            EXPECT_EQ(printer.Start("Nothing", &parent), 0);
        }
    }
    EXPECT_FALSE(StatusShown());
    EXPECT_TRUE(parent.IsEnabled());
    EXPECT_EQ(BCGetGdiObjectCount(), gdiObjects);
}

TEST_F(PrinterTest, NamedPrintersKeepFortyCharactersAndOneThatCannotOpenDoesNotExist) {
    BCPrinter printer(std::string(45, 'N').c_str(), "winspool", std::string(41, 'P').c_str(),
                      &App(), BC_PRINT_NORMAL);
    EXPECT_FALSE(printer.Exists());
    messages.Clear();
    printer.Display(">");
    EXPECT_EQ(messages.Last().text, ">caPrinterName=" + std::string(40, 'N') +
                                        "\ncaPrinterPort=" + std::string(40, 'P') +
                                        "\ncaPrinterDriver=winspool\nblExists=0");
    EXPECT_EQ(printer.End(&parent), 0);
    EXPECT_EQ(messages.Last().file, "PRINTER");
    EXPECT_EQ(messages.Last().line, 398u);
}

TEST_F(PrinterTest, AStartThatFailsIsReportedUnlessSilentAndBlocksOutput) {
    for (auto options : {BC_PRINT_NORMAL, BC_PRINT_SILENT}) {
        messages.Clear();
        BCPrinter screen("DISPLAY", "DISPLAY", nullptr, &App(), options);
        ASSERT_TRUE(screen.Exists());
        EXPECT_EQ(screen.Start("Report", &parent), 0);
        EXPECT_TRUE(screen.HasFailed());
        EXPECT_EQ(screen.NextPage(), 0);
        EXPECT_TRUE(parent.IsEnabled());
        EXPECT_FALSE(StatusShown());
        EXPECT_EQ(messages.Texts(), options ? ""
                                            : "Unable to start printing of Report.  Please try "
                                              "to re-install and setup the printer driver.|");
    }
    EXPECT_EQ(BCGetGdiObjectCount(), gdiObjects);
}

TEST_F(PrinterTest, ThePrintSetupDeviceModeShapesThePage) {
    HANDLE handle = nullptr;
    ASSERT_TRUE(OpenPrinterA(const_cast<char*>(kPrinter), &handle, nullptr));
    LONG size =
        DocumentPropertiesA(nullptr, handle, const_cast<char*>(kPrinter), nullptr, nullptr, 0);
    PRINTDLGA setup = {};
    setup.hDevMode = GlobalAlloc(GMEM_MOVEABLE, size_t(size));
    auto* mode = static_cast<DEVMODEA*>(GlobalLock(setup.hDevMode));
    DocumentPropertiesA(nullptr, handle, const_cast<char*>(kPrinter), mode, nullptr, DM_OUT_BUFFER);
    mode->dmOrientation = DMORIENT_LANDSCAPE;
    mode->dmFields |= DM_ORIENTATION;
    GlobalUnlock(setup.hDevMode);
    ClosePrinter(handle);
    const char names[] = "winspool\0Norlib Test Printer\0LPT1:";
    setup.hDevNames = GlobalAlloc(GMEM_MOVEABLE, sizeof(DEVNAMES) + sizeof names);
    auto* block = static_cast<DEVNAMES*>(GlobalLock(setup.hDevNames));
    *block = {sizeof(DEVNAMES), sizeof(DEVNAMES) + 9, sizeof(DEVNAMES) + 29, 0};
    memcpy(block + 1, names, sizeof names);
    GlobalUnlock(setup.hDevNames);
    {
        BCPrinter printer(setup, &App(), BC_PRINT_NORMAL);
        EXPECT_EQ(printer.GetDriver() + std::string("|") + printer.GetName() + "|" +
                      printer.GetPort(),
                  "winspool|Norlib Test Printer|LPT1:");
        HDC dc = static_cast<HDC>(printer.GetDC());
        EXPECT_GT(GetDeviceCaps(dc, HORZRES), GetDeviceCaps(dc, VERTRES));
    }
    BCPrinter later(&App(), BC_PRINT_NORMAL); // the setup went with its printer
    HDC dc = static_cast<HDC>(later.GetDC());
    EXPECT_LT(GetDeviceCaps(dc, HORZRES), GetDeviceCaps(dc, VERTRES));
    GlobalFree(setup.hDevMode);
    GlobalFree(setup.hDevNames);
}

TEST_F(PrinterTest, SetupCallsTheDriversDeviceModeEntry) {
    struct Case {
        const char* driver;
        int result;
        const char* messages;
    } cases[] = {
        {"NORDRV", 1, ""},
        {"NORDRV.DRV", 1, ""},
        {"nosuchdrv", 0, "Unable to load printer driver:  nosuchdrv.DRV  (0)|"},
        {"norlib1.dll", 0, ""}, // no "DEVICEMODE"
    };
    for (const Case& c : cases) {
        messages.Clear();
        BCPrinter printer("Desk", c.driver, "COM2:", &App(), BC_PRINT_SILENT);
        messages.Clear();
        EXPECT_EQ(printer.Setup(&parent), c.result) << c.driver;
        EXPECT_EQ(messages.Texts(), c.messages) << c.driver;
    }
    HMODULE driver = GetModuleHandleA("NORDRV.DRV");
    ASSERT_TRUE(driver); // stays loaded
    auto lastCall = reinterpret_cast<const char*(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(driver, "LastDeviceModeCall")));
    EXPECT_STREQ(lastCall(), "Desk|COM2:|1|1");
}

} // namespace
