#include "guidriver.h"
#include "msgrecorder.h"
#include "streambytes.h"
#include "testprinter.h"

namespace {

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
    EXPECT_EQ(Seq(1, 1, 1, 0, 0, 1, 0),
              Seq(pages[0].Ink(1720, 320, 2280, 680) > 0.95,
                  pages[0].Ink(300, 300, 900, 340) > 0.05, pages[0].Ink(300, 600, 900, 640) > 0.05,
                  pages[0].Ink(300, 400, 900, 560) > 0, pages[0].Ink(320, 1520, 880, 2080) > 0,
                  pages[1].Ink(320, 1520, 880, 2080) > 0.95,
                  pages[1].Ink(1700, 300, 2300, 700) > 0));
}

HDC DC(BCPrinter& printer) {
    return static_cast<HDC>(printer.GetDC());
}

std::string Names(BCPrinter& printer) {
    return std::string(printer.GetName()) + "|" + printer.GetDriver() + "|" + printer.GetPort();
}

// The status dialog: the only dialog the printing thread shows.
HWND StatusDialog() {
    return ShownDialog(GetCurrentThreadId());
}

int g_ticks = 0;
void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
    ++g_ticks;
}

// Whether the abort procedure hands a waiting message on to its window (a timer's tick).
bool AbortProcDispatches(BCPrinter& printer) {
    g_ticks = 0;
    UINT_PTR timer = SetTimer(nullptr, 0, 1, Tick);
    Sleep(30);
    BCPrintAbortProc(DC(printer), 0);
    KillTimer(nullptr, timer);
    return g_ticks > 0;
}

class PrinterTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        ASSERT_TRUE(InstallTestPrinter());
        WriteProfileStringA("windows", "Device", kTestDevice);
        // A first job makes the driver's and the dialog's lasting objects (fonts).
        BCPrinter warmUp(&App(), BC_PRINT_NORMAL);
        warmUp.Start("Warm-up", nullptr);
        DrawPage(warmUp, 1);
        warmUp.End(nullptr);
    }
    void SetUp() override {
        parent.Create("Printing");
        DeleteFileA(("Z:" + JobFile()).c_str());
        gdiObjects = BCGetGdiObjectCount();
    }
    void TearDown() override {
        WriteProfileStringA("windows", "Device", kTestDevice);
        EXPECT_TRUE(parent.IsEnabled());
        EXPECT_FALSE(StatusDialog());
        parent.Destroy();
        EXPECT_EQ(BCGetGdiObjectCount(), gdiObjects);
    }

    MsgRecorder messages;
    BCMainWindow parent{&App()};
    unsigned long gdiObjects = 0;
};

TEST_F(PrinterTest, PagesPrintWhereTheDeviceCoordinatesPutThemWithTheParentDisabled) {
    BCPrinter printer(&App(), BC_PRINT_NORMAL);
    PageGeometry geometry(DC(printer));
    EXPECT_EQ(printer.GetDeviceFlags() & BC_DEV_OWNS_DC, BC_DEV_OWNS_DC);
    ASSERT_EQ(printer.Start("Two pages", &parent), 1);
    char shown[64] = "";
    GetDlgItemTextA(StatusDialog(), 2005, shown, sizeof shown);
    EXPECT_TRUE(std::string(shown) == "Two pages" && !parent.IsEnabled() &&
                AbortProcDispatches(printer));
    EXPECT_EQ(printer.GetUserRect().GetBottom(), GetDeviceCaps(DC(printer), PHYSICALHEIGHT));
    DrawPage(printer, 1);
    EXPECT_TRUE(printer.NextPage() && printer.GetCrntPos() == BCPosition(0, 0));
    DrawPage(printer, 2);
    EXPECT_TRUE(printer.End(&parent) == 1 && !StatusDialog() && !printer.GetDC() &&
                !(printer.GetDeviceFlags() & BC_DEV_OWNS_DC));
    CheckPages(RenderJob(geometry));
    BCRectangle band; // without a context now: each reports its assertion
    EXPECT_EQ((Seq{0, 0, 0}),
              (Seq{printer.NextPage(), printer.NextBand(band), printer.End(&parent)}));
    EXPECT_EQ(messages.Faults(), "PRINTER:342 Assertion failure|PRINTER:364 Assertion failure|"
                                 "PRINTER:398 Assertion failure|");
    EXPECT_EQ(3u, messages.Count());
}

TEST_F(PrinterTest, BandsCoverEachPageAndAnEmptyOneEndsIt) {
    BCPrinter printer(kTestPrinter, "winspool", "LPT1:", &App(), BC_PRINT_SILENT);
    PageGeometry geometry(DC(printer));
    ASSERT_EQ(printer.Start("Bands", &parent), 1);
    EXPECT_FALSE(StatusDialog() || AbortProcDispatches(printer)); // dropped without the dialog
    BCRectangle band;
    for (int page = 1; page <= 2; ++page) {
        for (int bands = 0; printer.NextBand(band); ++bands) {
            EXPECT_TRUE(bands == 0 && printer.GetCrntPos() == band.GetPos() &&
                        band == BCRectangle(0, 0, short(geometry.width), short(geometry.height)));
            DrawPage(printer, page);
        }
    }
    EXPECT_EQ(printer.End(&parent), 1);
    CheckPages(RenderJob(geometry));
}

TEST_F(PrinterTest, BottomUpPagesMeasureFromTheBottomEdge) {
    BCPrinter printer(&App(), BC_PRINT_SILENT);
    printer.SetDeviceFlags(BC_DEV_TOP_DOWN, 0);
    const HDC dc = DC(printer);
    const short width = short(GetDeviceCaps(dc, PHYSICALWIDTH)),
                height = short(GetDeviceCaps(dc, PHYSICALHEIGHT));
    const int bottom = height - GetDeviceCaps(dc, VERTRES);
    ASSERT_EQ(printer.Start("Bottom up", &parent), 1);
    BCRectangle band;
    EXPECT_TRUE(printer.GetUserRect() == BCRectangle(0, height, width, 0) && printer.NextPage() &&
                printer.GetCrntPos() == BCPosition(0, height) && printer.NextBand(band) &&
                band.GetTop() == height && band.GetBottom() == bottom && printer.End(&parent));
}

TEST_F(PrinterTest, AbortFromTheStatusDialogOrTheAbortProcedureSkipsTheRestOfTheJob) {
    for (bool fromDialog : {true, false}) {
        messages.Clear();
        BCPrinter printer(&App(), BC_PRINT_NORMAL);
        ASSERT_EQ(printer.Start("Halfway", &parent), 1);
        DrawPage(printer, 1);
        EXPECT_TRUE(printer.NextPage());
        DialogDriver driver;
        driver.Click(2).Start(fromDialog ? 5000 : 0);
        if (fromDialog)
            for (int i = 0; i < 500 && BCPrintAbortProc(DC(printer), 0); ++i)
                Sleep(10);
        else
            EXPECT_FALSE(BCPrintAbortProc(DC(printer), 7));
        EXPECT_EQ(driver.Finish(), fromDialog);
        EXPECT_FALSE(BCPrintAbortProc(DC(printer), 0));
        BCRectangle band;
        EXPECT_EQ(printer.NextPage() + printer.NextBand(band) + printer.End(&parent), 0);
        EXPECT_EQ(messages.Texts(), fromDialog ? "" : "Printer Abort:  7|");
    }
    EXPECT_FALSE(UnixFileExists(JobFile())); // no document was ended
}

TEST_F(PrinterTest, NamesComeFromTheDeviceEntryOrTheCallerAndAFailedStartIsReported) {
    const std::string longName(45, 'N');
    struct Case {
        std::string entry, names; // name|driver|port
        int exists;
    } cases[] = {
        {kTestDevice, "Norlib Test Printer|winspool|LPT1:", 1},
        {"Norlib Test Printer, winspool,  LPT1:", "Norlib Test Printer|winspool|LPT1:", 1},
        {"Office,LASERDRV,LPT1:", "Office|LASERDRV|LPT1:", 0},
        {"", "||", 0},
        {longName + ",winspool,LPT1:", longName.substr(0, 39) + "|winspool|LPT1:", 0},
    };
    for (const Case& c : cases) {
        WriteProfileStringA("windows", "Device", c.entry.c_str());
        BCPrinter printer(&App(), BC_PRINT_NORMAL);
        EXPECT_EQ(Names(printer) + std::to_string(printer.Exists()),
                  c.names + std::to_string(c.exists));
        EXPECT_TRUE(c.exists || !printer.Start("Nothing", &parent)) << c.entry;
    }
    BCPrinter named(longName.c_str(), "winspool", std::string(41, 'P').c_str(), &App(),
                    BC_PRINT_NORMAL);
    EXPECT_FALSE(named.Exists());
    named.Display(">");
    EXPECT_EQ(messages.Last().text, ">caPrinterName=" + std::string(40, 'N') +
                                        "\ncaPrinterPort=" + std::string(40, 'P') +
                                        "\ncaPrinterDriver=winspool\nblExists=0");

    // A printer that exists but will not start: reported unless silent, and no output after.
    for (auto options : {BC_PRINT_NORMAL, BC_PRINT_SILENT}) {
        messages.Clear();
        BCPrinter screen("DISPLAY", "DISPLAY", nullptr, &App(), options);
        EXPECT_TRUE(screen.Exists() && !screen.Start("Report", &parent) && screen.HasFailed() &&
                    !screen.NextPage());
        EXPECT_EQ(messages.Texts(), options ? ""
                                            : "Unable to start printing of Report.  Please try "
                                              "to re-install and setup the printer driver.|");
    }
}

TEST_F(PrinterTest, ThePrintSetupDeviceModeShapesThePage) {
    PRINTDLGA setup = {};
    setup.lStructSize = sizeof setup;
    setup.Flags = PD_RETURNDEFAULT; // the default printer's record, without a dialog
    ASSERT_TRUE(PrintDlgA(&setup));
    static_cast<DEVMODEA*>(GlobalLock(setup.hDevMode))->dmOrientation = DMORIENT_LANDSCAPE;
    GlobalUnlock(setup.hDevMode);
    {
        BCPrinter printer(setup, &App(), BC_PRINT_NORMAL);
        EXPECT_EQ(Names(printer), "Norlib Test Printer|wineps.drv|LPT1:");
        EXPECT_GT(GetDeviceCaps(DC(printer), HORZRES), GetDeviceCaps(DC(printer), VERTRES));
    }
    BCPrinter later(&App(), BC_PRINT_NORMAL); // the setup went with its printer
    EXPECT_LT(GetDeviceCaps(DC(later), HORZRES), GetDeviceCaps(DC(later), VERTRES));
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
        BCPrinter printer("Desk", c.driver, "COM2:", &App(), BC_PRINT_SILENT);
        messages.Clear();
        EXPECT_EQ(printer.Setup(&parent), c.result) << c.driver;
        EXPECT_EQ(messages.Texts(), c.messages) << c.driver;
    }
    HMODULE driver = GetModuleHandleA("NORDRV.DRV"); // still loaded
    ASSERT_TRUE(driver);
    auto lastCall = reinterpret_cast<const char*(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(driver, "LastDeviceModeCall")));
    EXPECT_STREQ(lastCall(), "Desk|COM2:|1|1");
}

} // namespace
