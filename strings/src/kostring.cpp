#include "kostring.h"

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <new>
#include <vector>

namespace {

std::vector<HINSTANCE>& RegisteredModules() {
    static std::vector<HINSTANCE> modules;
    return modules;
}

// LoadStringA cuts silently, so a full buffer means "try a larger one". The callers give a
// buffer of at least one byte.
int LoadFromModule(HINSTANCE module, unsigned int id, char* buffer, unsigned int size) {
    int length = LoadStringA(module, id, buffer, static_cast<int>(size));
    if (length <= 0)
        buffer[0] = '\0';
    return length > 0 ? length : 0;
}

int LoadAnyLength(HINSTANCE module, unsigned int id, std::vector<char>& text) {
    for (unsigned int size = 512; size <= 65536; size *= 2) {
        text.resize(size);
        int length = LoadFromModule(module, id, text.data(), size);
        if (length == 0 || static_cast<unsigned int>(length) < size - 1)
            return length;
    }
    return static_cast<int>(std::strlen(text.data()));
}

// The search order of every resource look-up: the module asked for, the application's,
// then the registered library modules. Returns the first non-zero result of `load`.
template <class Load> int SearchModules(HINSTANCE first, Load load) {
    if (first) {
        if (int found = load(first))
            return found;
    }
    if (int found = load(GetModuleHandleA(nullptr)))
        return found;
    for (HINSTANCE module : RegisteredModules()) {
        if (int found = load(module))
            return found;
    }
    return 0;
}

} // namespace

KoString::KoString() : m_text(nullptr), m_length(0) {}

KoString::KoString(const char* text) : m_text(nullptr), m_length(0) {
    if (text)
        Assign(text, std::strlen(text));
}

KoString::KoString(const KoString& other) : m_text(nullptr), m_length(0) {
    Assign(other.c_str(), other.m_length);
}

KoString& KoString::operator=(const KoString& other) {
    if (this != &other)
        Assign(other.c_str(), other.m_length);
    return *this;
}

KoString::~KoString() {
    delete[] m_text;
}

int KoString::Assign(const char* text, unsigned long length) {
    char* copy = new (std::nothrow) char[length + 1];
    if (!copy) {
        KoErrorHook::RaiseProcError(KO_ERR_NO_MEMORY);
        return 0;
    }
    std::memcpy(copy, text, length);
    copy[length] = '\0';
    delete[] m_text;
    m_text = copy;
    m_length = length;
    return 1;
}

void KoString::AddResourceModule(void* instance) {
    if (instance)
        RegisteredModules().push_back(static_cast<HINSTANCE>(instance));
}

void KoString::RemoveResourceModule(void* instance) {
    auto& modules = RegisteredModules();
    for (auto it = modules.begin(); it != modules.end(); ++it) {
        if (*it == instance) {
            modules.erase(it);
            return;
        }
    }
}

int KoString::LoadResString(unsigned int id, void* resources, char* buffer, unsigned int size) {
    if (!buffer || size == 0)
        return 0;
    buffer[0] = '\0';
    return SearchModules(static_cast<HINSTANCE>(resources), [&](HINSTANCE module) {
        return LoadFromModule(module, id, buffer, size);
    });
}

void* KoString::FindModule(void* first, int (*found)(void* module, void* context), void* context) {
    HINSTANCE match = nullptr;
    SearchModules(static_cast<HINSTANCE>(first), [&](HINSTANCE module) {
        if (!found(module, context))
            return 0;
        match = module;
        return 1;
    });
    return match;
}

int KoString::getResource(unsigned int id, void* resources) {
    std::vector<char> text;
    int length = SearchModules(static_cast<HINSTANCE>(resources),
                               [&](HINSTANCE module) { return LoadAnyLength(module, id, text); });
    if (length == 0) {
        Assign("", 0);
        KoErrorHook::RaiseProcError(KO_ERR_NO_RESOURCE);
        return 0;
    }
    return Assign(text.data(), static_cast<unsigned long>(length));
}

int KoString::VSprintf(const char* format, va_list args) {
    if (!format) {
        Assign("", 0);
        KoErrorHook::RaiseProcError(KO_ERR_FORMAT);
        return 0;
    }
    va_list measure;
    va_copy(measure, args);
    int length = std::vsnprintf(nullptr, 0, format, measure);
    va_end(measure);
    if (length < 0) {
        Assign("", 0);
        KoErrorHook::RaiseProcError(KO_ERR_FORMAT);
        return 0;
    }
    std::vector<char> text(static_cast<size_t>(length) + 1);
    std::vsnprintf(text.data(), text.size(), format, args);
    if (!Assign(text.data(), static_cast<unsigned long>(length)))
        return 0;
    return length;
}

int KoString::Sprintf(const char* format, ...) {
    va_list args;
    va_start(args, format);
    int length = VSprintf(format, args);
    va_end(args);
    return length;
}

int KoString::Sprintf(unsigned int id, void* resources, ...) {
    KoString format;
    if (!format.getResource(id, resources)) {
        Assign("", 0);
        return 0;
    }
    va_list args;
    va_start(args, resources);
    int length = VSprintf(format.c_str(), args);
    va_end(args);
    return length;
}
