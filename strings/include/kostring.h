#pragma once
#include <cstdarg>
#include "norstrapi.h"
#include "koerrhk.h"

// A heap string that loads string resources and formats printf-style. Failures return 0
// and raise the process error flag (KoErrorHook); the string is then left empty.
class NORSTR_API KoString {
  public:
    KoString();
    KoString(const char* text);
    KoString(const KoString& other);
    KoString& operator=(const KoString& other);
    ~KoString();

    // Loads string resource `id`, searching `resources` (a module instance handle, may be
    // null), then the application's module, then every registered module.
    int getResource(unsigned int id, void* resources = nullptr);
    // Formats into this string; returns its length, 0 on failure.
    int Sprintf(const char* format, ...);
    // Loads message `id` as getResource does and formats it with the remaining arguments.
    int Sprintf(unsigned int id, void* resources, ...);
    int VSprintf(const char* format, va_list args);

    const char* c_str() const { return m_text ? m_text : ""; }
    operator const char*() const { return c_str(); }
    unsigned long Length() const { return m_length; }

    // Modules searched after the one asked for and the application's (libraries that carry
    // string tables register themselves on load). Each call adds or removes one entry.
    static void AddResourceModule(void* instance);
    static void RemoveResourceModule(void* instance);
    // Copies resource `id`, found in the search order above, into `buffer` (NUL-terminated,
    // cut to size - 1); returns the length copied, 0 when not found.
    static int LoadResString(unsigned int id, void* resources, char* buffer, unsigned int size);
    // The first module, in the search order above, for which `found` gives non-zero; null
    // when none does.
    static void* FindModule(void* first, int (*found)(void* module, void* context), void* context);

  private:
    int Assign(const char* text, unsigned long length);
    char* m_text;
    unsigned long m_length;
};
