#pragma once
// How the file list box and the file dialogs read a typed name.
#include <windows.h>

#include <cstring>
#include <string>

namespace bcpath {

// The part after the last '/', ':' or '\': the file name or pattern of a path.
inline const char* Tail(const char* path) {
    const char* tail = path;
    for (const char* c = path; *c; ++c)
        if (*c == '/' || *c == ':' || *c == '\\')
            tail = c + 1;
    return tail;
}

inline bool HasWildcard(const char* name) {
    return std::strpbrk(name, "*?") != nullptr;
}

enum class Probe { kExists, kNew, kInvalid };

// Some platforms report a name with characters no file name holds, or one in a directory that
// is not there, as a missing file: only a new name in an existing directory is new.
inline Probe ProbeFile(const char* name) {
    OFSTRUCT info{};
    if (OpenFile(name, &info, OF_EXIST) != HFILE_ERROR)
        return Probe::kExists;
    if (info.nErrCode != ERROR_FILE_NOT_FOUND || !*name || std::strpbrk(name, "<>\"|"))
        return Probe::kInvalid;
    const char* tail = Tail(name);
    if (tail == name)
        return Probe::kNew;
    DWORD attributes = GetFileAttributesA(std::string(name, tail).c_str());
    bool directory =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return directory ? Probe::kNew : Probe::kInvalid;
}

} // namespace bcpath
