#include "bcclipboard.h"
#include "bcapp.h"
#include "bcgdi.h"
#include "bcmemory.h"
#include "bcmsg.h"
#include "bcwindow.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <new>
#include "bcids2.h"
#include "bcplatform.h"
#include "data/bcscan.h"

namespace {
// Movable and shareable between processes, as the clipboard wants its blocks.
constexpr UINT kClipboardAlloc = GMEM_MOVEABLE | GMEM_DDESHARE;

// The names under which the private formats 0x8001-0x8003 are registered, in that order.
constexpr const char* kPrivateNames[] = {"Norlib2 Private Text", "Norlib2 Private Binary",
                                         "Norlib2 Text Data"};

bool IsPrivate(unsigned int number) {
    return number >= BC_FORMAT_PRIVATE_TEXT && number <= BC_FORMAT_PRIVATE_TEXTDATA;
}

UINT RegisteredNumber(unsigned int privateNumber) {
    return BCTraced(RegisterClipboardFormatA(kPrivateNames[privateNumber - BC_FORMAT_PRIVATE_TEXT]),
                    "RegisterClipboardFormatA");
}

// The system's number for a library format; 0 when a private one cannot be registered.
UINT SystemFormat(const BCFormat& format) {
    unsigned int number = format.GetFormat();
    return IsPrivate(number) ? RegisteredNumber(number) : number;
}

// The library's number for a system format: registered names come back as 0x8001-0x8003.
unsigned int LibraryFormat(UINT system) {
    if (system < 0xC000)
        return system;
    for (unsigned int number = BC_FORMAT_PRIVATE_TEXT; number <= BC_FORMAT_PRIVATE_TEXTDATA;
         ++number) {
        if (RegisteredNumber(number) == system)
            return number;
    }
    return system;
}

// Offset of the first NUL in text[0, limit), or limit: the library's vectorised scan, since the
// runtime's byte-at-a-time one would make a large text cost many copies.
size_t FindNul(const char* text, size_t limit) {
    const unsigned char* bytes = reinterpret_cast<const unsigned char*>(text);
    const unsigned char* nul = bcscan::Find(bytes, limit, 0);
    return nul ? static_cast<size_t>(nul - bytes) : limit;
}

// Another program (a clipboard manager most often) opens the clipboard for a moment after
// every change: a busy clipboard is tried again for a short while before the call fails.
constexpr int kOpenAttempts = 40;
constexpr DWORD kOpenRetryMs = 5;

bool OpenWithRetry(HWND owner) {
    for (int attempt = 1; attempt < kOpenAttempts; ++attempt) {
        if (OpenClipboard(owner))
            return true;
        Sleep(kOpenRetryMs);
    }
    return BCTraced(OpenClipboard(owner), "OpenClipboard") != 0;
}

// Opens the clipboard for one scope.
class ClipboardSession {
  public:
    explicit ClipboardSession(HWND owner) : m_open(OpenWithRetry(owner)) {}
    ~ClipboardSession() {
        if (m_open && !CloseClipboard())
            BCTraceFailure("CloseClipboard");
    }
    ClipboardSession(const ClipboardSession&) = delete;
    ClipboardSession& operator=(const ClipboardSession&) = delete;
    bool IsOpen() const { return m_open; }

  private:
    bool m_open;
};

// A global block that is freed at the end of the scope unless it was handed over. Blocks
// are limited to what the library's memory helpers address (a long), on every build alike.
class OwnedBlock {
  public:
    explicit OwnedBlock(unsigned long long size)
        : m_block(size <= LONG_MAX ? BCTraced(GlobalAlloc(kClipboardAlloc, size), "GlobalAlloc")
                                   : nullptr) {}
    ~OwnedBlock() {
        if (m_block && GlobalFree(m_block))
            BCTraceFailure("GlobalFree");
    }
    OwnedBlock(const OwnedBlock&) = delete;
    OwnedBlock& operator=(const OwnedBlock&) = delete;
    HGLOBAL Get() const { return m_block; }
    void HandOver() { m_block = nullptr; }

  private:
    HGLOBAL m_block;
};

// The clipboard's block for a format, locked while the clipboard stays open, so that no other
// program can empty it while it is read.
class ClipboardBlock {
  public:
    ClipboardBlock(HWND owner, UINT format)
        : m_session(owner), m_handle(m_session.IsOpen() ? GetClipboardData(format) : nullptr),
          m_lock(m_handle) {}
    const char* Data() const { return m_lock.As<const char>(); }
    size_t Size() const { return m_lock.Data() ? GlobalSize(m_handle) : 0; }

  private:
    ClipboardSession m_session;
    HANDLE m_handle;
    BCGlobalLock m_lock;
};
} // namespace

BCClipboard::BCClipboard(BCWindow* owner) : BCObject(bcids::kTypeClipboard), opWindow(owner) {}

BCClipboard::~BCClipboard() = default;

HWND BCClipboard::OwnerHandle() const {
    return opWindow ? opWindow->GetHandle() : nullptr;
}

int BCClipboard::SetHandle(const BCFormat& format, void* handle) {
    UINT number = SystemFormat(format);
    ClipboardSession session(OwnerHandle());
    if (!number || !session.IsOpen())
        return 0;
    // Delayed rendering puts a null handle, for which the system reports no success.
    if (handle)
        BCTraced(SetClipboardData(number, handle), "SetClipboardData");
    else
        SetClipboardData(number, nullptr);
    return 1;
}

int BCClipboard::SetData(const BCFormat& format, const void* data, unsigned long size) {
    if (!data)
        return SetHandle(format, nullptr);
    OwnedBlock block(size);
    if (!block.Get()) {
        BCDispMsg(bcids::kMsgClipboardBuffer, nullptr);
        return 0;
    }
    {
        BCGlobalLock lock(block.Get());
        if (size && !lock.Data())
            return 0;
        BCCopyMem(lock.Data(), data, size);
    }
    if (!SetHandle(format, block.Get()))
        return 0;
    block.HandOver();
    return 1;
}

int BCClipboard::SetText(const char* text) {
    if (!text)
        return 0;
    size_t length = FindNul(text, ULONG_MAX);
    if (length >= ULONG_MAX)
        return 0;
    return SetData(BCGetTextFormat(), text, static_cast<unsigned long>(length) + 1);
}

int BCClipboard::SetBitmap(BCBitmap* bitmap) {
    if (!bitmap)
        return SetHandle(BCGetBitmapFormat(), nullptr);
    if (!SetHandle(BCGetBitmapFormat(), bitmap->GetHandle()))
        return 0;
    // Marked only once handed over: a bitmap the clipboard did not take still deletes it.
    bitmap->SetFlags(BC_BITMAP_HANDED_OVER, 1);
    return 1;
}

int BCClipboard::SetObject(const BCFormat& format, BCRenderableData& object) {
    BCFormat asked(format.GetFormat());
    unsigned long length = object.GetLen(asked);
    OwnedBlock block(static_cast<unsigned long long>(length) + 1);
    if (!block.Get())
        return 0;
    {
        BCGlobalLock lock(block.Get());
        char* bytes = lock.As<char>();
        unsigned long n = bytes ? object.GetData(bytes, length, asked) : 0;
        if (n == 0)
            return 0;
        bytes[n < length ? n : length] = '\0';
    }
    if (!SetHandle(format, block.Get()))
        return 0;
    block.HandOver();
    return 1;
}

int BCClipboard::IsType(const BCFormat& format) {
    UINT wanted = SystemFormat(format);
    ClipboardSession session(OwnerHandle());
    if (!wanted || !session.IsOpen())
        return 0;
    UINT number = 0;
    while ((number = EnumClipboardFormats(number)) != 0 && number != wanted) {
    }
    return number == wanted;
}

BCFormat BCClipboard::GetType(const BCFormat& previous) {
    UINT after = SystemFormat(previous);
    ClipboardSession session(OwnerHandle());
    // A private format that cannot be registered must not restart the walk.
    if (!session.IsOpen() || (previous.GetFormat() && !after))
        return BCFormat(0);
    return BCFormat(LibraryFormat(EnumClipboardFormats(after)));
}

int BCClipboard::GetHandle(const BCFormat& format, void*& handle) {
    UINT number = SystemFormat(format);
    ClipboardSession session(OwnerHandle());
    handle = session.IsOpen() ? GetClipboardData(number) : nullptr;
    return handle != nullptr;
}

// The caller's size is copied whatever the block holds; what lies past the block is not
// read but given as zeros.
int BCClipboard::GetData(const BCFormat& format, void* buffer, unsigned long size) {
    ClipboardBlock block(OwnerHandle(), SystemFormat(format));
    if (!block.Data() || (size && !buffer))
        return 0;
    size_t held = std::min<size_t>(block.Size(), size);
    BCCopyMem(buffer, block.Data(), held);
    if (held < size)
        std::memset(static_cast<char*>(buffer) + held, 0, size - held);
    return 1;
}

// A text block need not end in a NUL: nothing past the block is read.
int BCClipboard::GetText(char* buffer, unsigned long max) {
    ClipboardBlock block(OwnerHandle(), BC_FORMAT_TEXT);
    if (!block.Data() || !buffer)
        return 0;
    if (max == 0)
        return 1;
    size_t limit = std::min<size_t>(block.Size(), max - 1);
    size_t length = FindNul(block.Data(), limit);
    BCCopyMem(buffer, block.Data(), length);
    buffer[length] = '\0';
    return 1;
}

unsigned long BCClipboard::GetTextLen() {
    ClipboardBlock block(OwnerHandle(), BC_FORMAT_TEXT);
    return block.Data() ? static_cast<unsigned long>(FindNul(block.Data(), block.Size())) : 0;
}

int BCClipboard::GetBitmap(BCBitmap*& out) {
    out = nullptr;
    void* handle = nullptr;
    if (!GetHandle(BCGetBitmapFormat(), handle))
        return 0;
    BCApplication* app = opWindow ? opWindow->GetApp() : nullptr;
    BCBitmap* bitmap = new (std::nothrow) BCBitmap(app ? app->GetModule() : nullptr);
    if (!bitmap || !bitmap->SetHandle(handle)) {
        delete bitmap;
        return 0;
    }
    bitmap->SetFlags(BC_BITMAP_BORROWED, 1);
    out = bitmap;
    return 1;
}

unsigned long BCClipboard::GetObject(const BCFormat& format, BCRenderableData& object) {
    ClipboardBlock block(OwnerHandle(), SystemFormat(format));
    if (!block.Data())
        return 0;
    BCFormat asked(format.GetFormat());
    return object.SetData(const_cast<char*>(block.Data()), static_cast<unsigned long>(block.Size()),
                          asked);
}

int BCClipboard::Clear() {
    ClipboardSession session(OwnerHandle());
    if (!session.IsOpen())
        return 0;
    BCTraced(EmptyClipboard(), "EmptyClipboard");
    return 1;
}

void BCClipboard::Display(const char* prefix) {
    char title[256] = "(none)";
    if (opWindow)
        opWindow->GetTitle(title, sizeof title);
    DispObjectMsg("%sUser window = \"%s\"", prefix ? prefix : "", title);
}
