#pragma once
#include <windows.h>

#include <string>
#include <vector>

// The tests' printer: Wine's PostScript driver with tests/printdrv/norlibps.ppd, on port
// LPT1:, whose output Wine's spooler writes to JobFile(). Installed in the prefix once.
constexpr char kTestPrinter[] = "Norlib Test Printer";
constexpr char kTestDevice[] = "Norlib Test Printer,winspool,LPT1:";
bool InstallTestPrinter();
// The Unix path of the last job's PostScript.
std::string JobFile();
bool UnixFileExists(const std::string& path);

// The printer's page in device units.
struct PageGeometry {
    explicit PageGeometry(HDC dc);
    int dpi, offsetX, offsetY, width, height;
};

// One printed page as a grey map, addressed in device units.
struct Page {
    // The share of dark pixels in the device rectangle.
    double Ink(int left, int top, int right, int bottom) const;
    int width = 0, height = 0;
    std::vector<unsigned char> grey;
    double scale = 0, offsetX = 0, offsetY = 0; // device unit -> pixel
};

// The pages of the last job, rendered by scripts/printer.sh.
std::vector<Page> RenderJob(const PageGeometry& geometry);
