#pragma once
// Scoped platform resources and failure tracing, shared by the base module and the library.
// Private: applications never see these; they keep every select/lock paired and every failed
// platform call visible in the debugger output.
#include <windows.h>

#include <cstdio>

// Writes "norlib: <api> failed, error <n>" to the debugger output and returns 0, so that a
// failed call reads `return BCTraceFailure("CreateDCA");`.
inline int BCTraceFailure(const char* api) {
    DWORD error = GetLastError();
    char line[160];
    std::snprintf(line, sizeof line, "norlib: %s failed, error %lu\n", api ? api : "?",
                  static_cast<unsigned long>(error));
    OutputDebugStringA(line);
    SetLastError(error);
    return 0;
}

// Passes `result` through, tracing the call when it failed (a null or zero result).
template <class T> T BCTraced(T result, const char* api) {
    if (!result)
        BCTraceFailure(api);
    return result;
}

// Selects a GDI object into a context for one scope and puts back what it replaced. A null
// object or context selects nothing.
class BCSelection {
  public:
    BCSelection(HDC dc, HGDIOBJ object)
        : m_dc(dc), m_saved(dc && object ? SelectObject(dc, object) : nullptr) {
        if (dc && object && !m_saved)
            BCTraceFailure("SelectObject");
    }
    ~BCSelection() {
        if (m_saved)
            SelectObject(m_dc, m_saved);
    }
    BCSelection(const BCSelection&) = delete;
    BCSelection& operator=(const BCSelection&) = delete;
    // The object the selection replaced (null when nothing was selected).
    HGDIOBJ Replaced() const { return m_saved; }

  private:
    HDC m_dc;
    HGDIOBJ m_saved;
};

// Locks a global memory block for one scope.
class BCGlobalLock {
  public:
    explicit BCGlobalLock(HGLOBAL block)
        : m_block(block), m_data(block ? BCTraced(GlobalLock(block), "GlobalLock") : nullptr) {}
    ~BCGlobalLock() {
        if (m_data)
            GlobalUnlock(m_block);
    }
    BCGlobalLock(const BCGlobalLock&) = delete;
    BCGlobalLock& operator=(const BCGlobalLock&) = delete;
    void* Data() const { return m_data; }
    template <class T> T* As() const { return static_cast<T*>(m_data); }

  private:
    HGLOBAL m_block;
    void* m_data;
};

// A screen or window context borrowed with GetDC for one scope.
class BCWindowDC {
  public:
    explicit BCWindowDC(HWND window) : m_window(window), m_dc(BCTraced(GetDC(window), "GetDC")) {}
    ~BCWindowDC() {
        if (m_dc)
            ReleaseDC(m_window, m_dc);
    }
    BCWindowDC(const BCWindowDC&) = delete;
    BCWindowDC& operator=(const BCWindowDC&) = delete;
    HDC Get() const { return m_dc; }

  private:
    HWND m_window;
    HDC m_dc;
};
