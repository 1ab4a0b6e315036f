#pragma once
// How the file list box and the file dialogs read a typed name.
#include <cstring>

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

} // namespace bcpath
