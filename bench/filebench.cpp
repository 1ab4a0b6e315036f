// The file list box listing a folder of 10,000 files, against the bare walk of the same
// folder with FindFirstFile (the floor: no list box at all), measured side by side in one run.
#include <windows.h>

#include <chrono>
#include <cstdio>
#include <string>

#include <norlib2.h>

namespace {

template <class Work> double Millis(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

void Make(const std::string& path) {
    CloseHandle(CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
}

// Making 10,000 files takes seconds under Wine: the folder is kept, a mark says it is whole.
std::string ManyFiles() {
    char temp[MAX_PATH];
    GetTempPathA(MAX_PATH, temp);
    const std::string many = std::string(temp) + "nlfbench-10000";
    CreateDirectoryA(many.c_str(), nullptr);
    if (GetFileAttributesA((many + "\\complete").c_str()) == INVALID_FILE_ATTRIBUTES) {
        for (int i = 0; i < 10000; ++i)
            Make(many + "\\f" + std::to_string(i) + ".dat");
        Make(many + "\\complete");
    }
    return many;
}

} // namespace

int main() {
    std::string pattern = ManyFiles() + "\\*.dat";
    BCApplication app;
    BCModelessDialog dialog(BCResID(1011u, BCGetDLLModule2()), nullptr, &app);
    auto* files = new BCFileListBox(BCResID(2002u), &dialog, BCResID(2003u), &app);
    if (!dialog.Create("Files"))
        return 1;
    HWND list = GetDlgItem(dialog.GetHandle(), 2002);
    const double ours = Millis([&] { files->ListFiles(&pattern[0], 0); });
    const LRESULT count = SendMessageA(list, LB_GETCOUNT, 0, 0);
    long walked = 0;
    const double bare = Millis([&] {
        WIN32_FIND_DATAA found;
        HANDLE walk = FindFirstFileA(pattern.c_str(), &found);
        for (bool more = walk != INVALID_HANDLE_VALUE; more; more = FindNextFileA(walk, &found))
            ++walked;
        FindClose(walk);
    });
    std::printf("file list box: %ld files %9.2f ms  bare walk: %ld files %9.2f ms  ratio %6.2f\n",
                static_cast<long>(count), ours, walked, bare, bare > 0 ? ours / bare : 0.0);
    dialog.EndDlg(2);
    return count == 10000 ? 0 : 1;
}
