#include "testprinter.h"

#include <winspool.h>

#include <cstdlib>
#include <fstream>

namespace {
constexpr int kRenderDpi = 30;

const char* const kBuildDir =
    std::getenv("NORLIB_BUILD_DIR") ? std::getenv("NORLIB_BUILD_DIR") : "/tmp";

bool AddTestPrinter() {
    HANDLE printer = nullptr;
    if (!OpenPrinterA(const_cast<char*>(kTestPrinter), &printer, nullptr)) {
        PRINTER_INFO_2A info = {};
        info.pPrinterName = info.pDriverName = const_cast<char*>(kTestPrinter);
        info.pPortName = const_cast<char*>("LPT1:");
        info.pPrintProcessor = const_cast<char*>("WinPrint");
        info.pDatatype = const_cast<char*>("RAW");
        printer = AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&info));
    }
    return printer && ClosePrinter(printer);
}

bool ReadPage(const std::string& file, const PageGeometry& g, Page& page) {
    std::ifstream in("Z:" + file, std::ios::binary);
    std::string magic, comment;
    int maxGrey = 0;
    for (in >> magic >> std::ws; in.peek() == '#';)
        std::getline(in, comment);
    in >> page.width >> page.height >> maxGrey;
    in.get();
    if (magic != "P5" || !in)
        return false;
    page.grey.resize(size_t(page.width) * page.height);
    in.read(reinterpret_cast<char*>(page.grey.data()), std::streamsize(page.grey.size()));
    page.scale = double(kRenderDpi) / g.dpi, page.offsetX = g.offsetX, page.offsetY = g.offsetY;
    return bool(in);
}
} // namespace

std::string JobFile() {
    return std::string(kBuildDir) + "/printer-job.ps";
}

bool UnixFileExists(const std::string& path) {
    return GetFileAttributesA(("Z:" + path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool InstallTestPrinter() {
    // The driver looks for the printer's description in its own directory.
    char dir[MAX_PATH] = "";
    DWORD size = 0;
    GetPrinterDriverDirectoryA(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(dir), sizeof dir,
                               &size);
    std::string ppd = std::string(dir) + "\\3";
    CreateDirectoryA(ppd.c_str(), nullptr);
    ppd += "\\norlibps.ppd";
    if (!CopyFileA("Z:" NORLIB_SOURCE_DIR "/tests/printdrv/norlibps.ppd", ppd.c_str(), FALSE))
        return false;
    DRIVER_INFO_3A driver = {};
    driver.cVersion = 3;
    driver.pName = const_cast<char*>(kTestPrinter);
    driver.pDriverPath = driver.pConfigFile = const_cast<char*>("wineps.drv");
    driver.pDataFile = &ppd[0];
    AddPrinterDriverA(nullptr, 3, reinterpret_cast<BYTE*>(&driver)); // fails when it is there
    // Wine's spooler sends what a port receives to the Unix file named for it here.
    std::string file = JobFile();
    return AddTestPrinter() &&
           RegSetKeyValueA(HKEY_CURRENT_USER, "Software\\Wine\\Printing\\Spooler", "LPT1:", REG_SZ,
                           file.c_str(), DWORD(file.size() + 1)) == ERROR_SUCCESS;
}

PageGeometry::PageGeometry(HDC dc)
    : dpi(GetDeviceCaps(dc, LOGPIXELSX)), offsetX(GetDeviceCaps(dc, PHYSICALOFFSETX)),
      offsetY(GetDeviceCaps(dc, PHYSICALOFFSETY)), width(GetDeviceCaps(dc, HORZRES)),
      height(GetDeviceCaps(dc, VERTRES)) {}

double Page::Ink(int left, int top, int right, int bottom) const {
    int dark = 0, all = 0;
    for (int y = int((top + offsetY) * scale); y < int((bottom + offsetY) * scale); ++y)
        for (int x = int((left + offsetX) * scale); x < int((right + offsetX) * scale); ++x)
            ++all, dark += grey.at(size_t(y) * width + x) < 128;
    return all ? double(dark) / all : 0;
}

std::vector<Page> RenderJob(const PageGeometry& geometry) {
    // Wine cannot wait for a Unix process: the script leaves a mark when it is done.
    std::string prefix = std::string(kBuildDir) + "/printer-page";
    DeleteFileA(("Z:" + prefix + ".done").c_str());
    std::string command = "Z:\\bin\\sh " NORLIB_SOURCE_DIR "/scripts/printer.sh render " +
                          JobFile() + " " + prefix + " " + std::to_string(kRenderDpi);
    if (WinExec(command.c_str(), SW_HIDE) < 32)
        return {};
    for (int i = 0; i < 600 && !UnixFileExists(prefix + ".done"); ++i)
        Sleep(50);
    std::vector<Page> pages;
    for (Page page;
         ReadPage(prefix + "-" + std::to_string(pages.size() + 1) + ".pgm", geometry, page);)
        pages.push_back(page);
    return pages;
}
