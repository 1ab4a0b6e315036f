#include "bcrendata.h"

#include <new>

#include "bcstream.h"

namespace {
// Bits that a loaded record may set; the rest describe this object's own memory.
constexpr unsigned long kLoadedFlags = BC_FLAG_NOTIFY;
// A chain longer than this is a cycle; walks stop there instead of looping.
constexpr int kMaxChain = 4096;
} // namespace

BCRenderableData::BCRenderableData(unsigned int typeCode, unsigned long flags)
    : BCObject(typeCode), dwFlags(flags), lpKey(nullptr), opChained(nullptr) {}

BCRenderableData::BCRenderableData(const BCRenderableData& other)
    : BCObject(other), dwFlags(other.dwFlags), lpKey(other.lpKey), opChained(nullptr) {}

BCRenderableData& BCRenderableData::operator=(const BCRenderableData& other) {
    if (this != &other) {
        BCObject::operator=(other);
        dwFlags = other.dwFlags;
        lpKey = other.lpKey;
    }
    return *this;
}

BCRenderableData::~BCRenderableData() {}

int BCRenderableData::Load(std::istream& is) {
    unsigned long flags = 0;
    if (!BCObject::Load(is) || !BCLoadDblWord(is, flags))
        return 0;
    dwFlags = (dwFlags & ~kLoadedFlags) | (flags & kLoadedFlags);
    return 1;
}

int BCRenderableData::Save(std::ostream& os) {
    return BCObject::Save(os) && BCSaveDblWord(os, dwFlags);
}

void BCRenderableData::Display(const char* prefix) {
    DispObjectMsg("%sdwFlags=%08lx, lpKey=%p", prefix ? prefix : "", dwFlags, lpKey);
}

BCRenderableData* BCRenderableData::Dup() {
    return new (std::nothrow) BCRenderableData(*this);
}

int BCRenderableData::Clear(int) {
    return 1;
}

void* BCRenderableData::GetKey() {
    return lpKey;
}

void* BCRenderableData::SetKey(void* key) {
    void* previous = lpKey;
    lpKey = key;
    return previous;
}

int BCRenderableData::IsRenderable(BCFormat&) {
    return 0;
}

unsigned long BCRenderableData::GetData(void*, unsigned long, BCFormat&) {
    return 0;
}

void* BCRenderableData::GetDataPtr(BCFormat&) {
    return nullptr;
}

unsigned long BCRenderableData::GetLen(BCFormat&) {
    return 0;
}

unsigned long BCRenderableData::SetData(void*, unsigned long, BCFormat&) {
    return 0;
}

unsigned long BCRenderableData::SetFlags(unsigned long bits, int on) {
    unsigned long previous = dwFlags;
    dwFlags = on ? (dwFlags | bits) : (dwFlags & ~bits);
    return previous;
}

int BCRenderableData::IsModified() const {
    int steps = 0;
    for (const BCRenderableData* p = this; p && steps < kMaxChain; p = p->opChained, ++steps) {
        if (p->dwFlags & BC_FLAG_MODIFIED)
            return 1;
    }
    return 0;
}

int BCRenderableData::SetModified(int modified) {
    int previous = (dwFlags & BC_FLAG_MODIFIED) ? 1 : 0;
    int steps = 0;
    for (BCRenderableData* p = this; p && steps < kMaxChain; p = p->opChained, ++steps)
        p->SetFlags(BC_FLAG_MODIFIED, modified);
    return previous;
}
