#include "bcnumdata.h"
#include "bcstream.h"
#include "bcmemory.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>

#include "bcids2.h"

namespace {

// Text read by SetData: 25 bytes with a NUL in the last, so at most 24 characters.
constexpr unsigned long kScanChars = 25;
constexpr unsigned long kPrintSize = 1024;
// The binary form gives the format's length one byte.
constexpr unsigned long kMaxFormat = 255;
constexpr unsigned int kNullString = 0xFFFFFFFFu;

char gIntegerDefault[] = "%ld";
char gFloatDefault[] = "%lf";

// What differs between the number classes: the value's bytes in the binary form, where
// SetData takes the format's characters, the conversions that fit the value, the default.
struct NumberKind {
    unsigned long width;
    unsigned long formatAt;
    const char* letters;
    char* fallback;
};
const NumberKind kInteger = {4, 8, "diouxX", gIntegerDefault};
const NumberKind kFloat = {8, 9, "fFeEgGaA", gFloatDefault};

enum FormatFit { kNoFit, kPlain, kLong };

// Whether `format` is exactly one conversion of `letters` (besides "%%"), with no '*' and
// no length modifier other than 'l', and whether it has the 'l'.
FormatFit Fit(const char* format, const char* letters) {
    FormatFit fit = kNoFit;
    for (const char* p = format; p && *p; ++p) {
        if (*p != '%' || *++p == '%')
            continue;
        p += std::strspn(p, "-+ #0123456789.");
        bool isLong = *p == 'l';
        if (isLong)
            ++p;
        if (fit != kNoFit || !*p || !std::strchr(letters, *p))
            return kNoFit;
        fit = isLong ? kLong : kPlain;
    }
    return fit;
}

const char* Usable(const char* format, const NumberKind& kind) {
    return Fit(format, kind.letters) == kNoFit ? kind.fallback : format;
}

unsigned long Min(unsigned long a, unsigned long b) {
    return a < b ? a : b;
}

unsigned long FormatLen(const char* format) {
    return Min(format ? static_cast<unsigned long>(std::strlen(format)) : 0, kMaxFormat);
}

bool IsTextForm(const BCFormat& format) {
    return format.GetFormat() == BC_FORMAT_TEXT || format.GetFormat() == BC_FORMAT_PRIVATE_TEXT;
}

bool IsBinaryForm(const BCFormat& format) {
    return format.GetFormat() == BC_FORMAT_PRIVATE_BINARY;
}

// ---- Format ownership (flag 0x0008: not owned)

void FreeFormat(char*& format, unsigned long flags) {
    if (!(flags & BC_FLAG_NOT_OWNED))
        delete[] format;
    format = nullptr;
}

void AdoptFormat(char*& format, unsigned long& flags, char* fresh) {
    FreeFormat(format, flags);
    format = fresh;
    flags &= ~static_cast<unsigned long>(BC_FLAG_NOT_OWNED);
}

// A copy shares a static format and copies an owned one, so each object frees only its own.
void CopyFormat(char*& format, unsigned long& flags, const char* other, const NumberKind& kind) {
    format = const_cast<char*>(other);
    if (!other || (flags & BC_FLAG_NOT_OWNED))
        return;
    size_t n = std::strlen(other) + 1;
    format = new (std::nothrow) char[n];
    if (format) {
        std::memcpy(format, other, n);
        return;
    }
    format = kind.fallback;
    flags |= BC_FLAG_NOT_OWNED;
}

// ---- Renderings

unsigned long PutText(void* buffer, unsigned long size, const char* text, unsigned long length) {
    unsigned long n = Min(length + 1, size);
    if (buffer)
        std::memcpy(buffer, text, n);
    return buffer ? n : 0;
}

// The value always goes first, as far as the buffer reaches; the length byte and the
// format's characters only when the whole head fits.
unsigned long PutBinary(void* buffer, unsigned long size, const void* value, const char* format,
                        const NumberKind& kind) {
    if (!buffer)
        return 0;
    unsigned char* out = static_cast<unsigned char*>(buffer);
    unsigned long n = FormatLen(format);
    unsigned long total = Min(kind.width + 1 + n, size);
    std::memcpy(out, value, Min(kind.width, size));
    if (total < kind.width + 1)
        return total;
    out[kind.width] = static_cast<unsigned char>(n);
    std::memcpy(out + kind.width + 1, format, total - kind.width - 1);
    return total;
}

// Reads the value and, when the length byte is not 0, a new format from `kind.formatAt`.
// The characters come without a NUL: the new format's bytes start zeroed, and characters
// beyond the buffer are not read.
unsigned long TakeBinary(const void* buffer, unsigned long size, void* value, char*& format,
                         unsigned long& flags, const NumberKind& kind) {
    if (!buffer || size < kind.width + 1)
        return 0;
    const unsigned char* in = static_cast<const unsigned char*>(buffer);
    unsigned long n = in[kind.width];
    char* fresh = n ? new (std::nothrow) char[n + 1]() : nullptr;
    if (n && !fresh)
        return 0;
    std::memcpy(value, in, kind.width);
    if (!n)
        return kind.width + 1;
    std::memcpy(fresh, in + kind.formatAt, size > kind.formatAt ? Min(n, size - kind.formatAt) : 0);
    AdoptFormat(format, flags, fresh);
    return kind.width + 1 + n;
}

// scanf stores through a pointer of the conversion's own width: 'l' the wide type.
template <class Wide, class Narrow>
unsigned long TakeText(const void* buffer, unsigned long size, const char* format, Wide& value,
                       const NumberKind& kind) {
    char text[kScanChars] = {};
    if (!buffer)
        return 0;
    std::memcpy(text, buffer, Min(size, kScanChars));
    text[kScanChars - 1] = '\0';
    const char* usable = Usable(format, kind);
    bool isLong = Fit(usable, kind.letters) == kLong;
    Wide wide{};
    Narrow narrow{};
    int read = isLong ? std::sscanf(text, usable, &wide) : std::sscanf(text, usable, &narrow);
    if (read != 1)
        return 0;
    value = isLong ? wide : static_cast<Wide>(narrow);
    return static_cast<unsigned long>(std::strlen(text)) + 1;
}

// ---- Records: code word, value, format as a string primitive of at most 255 characters.

// A stored null stands for the default (the fallback, not owned).
int LoadFormat(std::istream& is, char*& fresh) {
    unsigned int length = 0;
    fresh = nullptr;
    if (!BCLoadWord(is, length))
        return 0;
    if (length == kNullString)
        return 1;
    if (length > kMaxFormat)
        return 0;
    fresh = new (std::nothrow) char[length + 1]();
    if (fresh && BCLoadFarBlk(is, fresh, static_cast<long>(length)))
        return 1;
    delete[] fresh;
    fresh = nullptr;
    return 0;
}

void InstallLoaded(char*& format, unsigned long& flags, char* fresh, const NumberKind& kind) {
    if (fresh) {
        AdoptFormat(format, flags, fresh);
        return;
    }
    FreeFormat(format, flags);
    format = kind.fallback;
    flags |= BC_FLAG_NOT_OWNED;
}

} // namespace

// ---- BCInteger

BCInteger::BCInteger(long value)
    : BCRenderableData(bcids::kTypeInteger, BC_FLAG_NOT_OWNED), lValue(value),
      lpFormat(kInteger.fallback) {}

BCInteger::BCInteger(const BCInteger& other)
    : BCRenderableData(other), lValue(other.lValue), lpFormat(nullptr) {
    CopyFormat(lpFormat, dwFlags, other.lpFormat, kInteger);
}

BCInteger& BCInteger::operator=(const BCInteger& other) {
    if (this == &other)
        return *this;
    FreeFormat(lpFormat, dwFlags);
    dwFlags = (dwFlags & ~0xFFFFul) | other.dwFlags;
    lValue = other.lValue;
    CopyFormat(lpFormat, dwFlags, other.lpFormat, kInteger);
    return *this;
}

BCInteger::~BCInteger() {
    FreeFormat(lpFormat, dwFlags);
}

unsigned long BCInteger::Print(char* text, unsigned long size) const {
    return static_cast<unsigned long>(BCFrmtStr(text, size, Usable(lpFormat, kInteger), lValue));
}

BCRenderableData* BCInteger::Dup() {
    return new (std::nothrow) BCInteger(*this);
}

int BCInteger::Clear(int) {
    SetModified(false);
    lValue = 0;
    return 1;
}

void* BCInteger::GetKey() {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(lValue));
}

int BCInteger::IsRenderable(BCFormat& format) {
    return IsTextForm(format) || IsBinaryForm(format);
}

void* BCInteger::GetDataPtr(BCFormat&) {
    return nullptr;
}

unsigned long BCInteger::GetLen(BCFormat& format) {
    char text[kPrintSize];
    if (IsTextForm(format))
        return Print(text, sizeof text) + 1;
    return IsBinaryForm(format) ? kInteger.width + 1 + FormatLen(lpFormat) : 0;
}

unsigned long BCInteger::GetData(void* buffer, unsigned long size, BCFormat& format) {
    char text[kPrintSize];
    if (IsTextForm(format))
        return PutText(buffer, size, text, Print(text, sizeof text));
    if (!IsBinaryForm(format))
        return 0;
    std::int32_t value = lValue;
    return PutBinary(buffer, size, &value, lpFormat, kInteger);
}

unsigned long BCInteger::SetData(void* buffer, unsigned long size, BCFormat& format) {
    if (IsTextForm(format))
        return TakeText<long, int>(buffer, size, lpFormat, lValue, kInteger);
    if (!IsBinaryForm(format))
        return 0;
    std::int32_t value = lValue;
    unsigned long result = TakeBinary(buffer, size, &value, lpFormat, dwFlags, kInteger);
    lValue = value;
    return result;
}

int BCInteger::Save(std::ostream& os) {
    return BCObject::Save(os) && BCSaveDblWord(os, static_cast<std::uint32_t>(lValue)) &&
           BCSaveStringPtr(os, lpFormat);
}

int BCInteger::Load(std::istream& is) {
    unsigned long value = 0;
    char* fresh = nullptr;
    if (!BCObject::Load(is) || !BCLoadDblWord(is, value) || !LoadFormat(is, fresh))
        return 0;
    lValue = static_cast<std::int32_t>(value);
    InstallLoaded(lpFormat, dwFlags, fresh, kInteger);
    return 1;
}

void BCInteger::Display(const char* prefix) {
    char text[kPrintSize];
    Print(text, sizeof text);
    DispObjectMsg("%s%s", prefix ? prefix : "", text);
}

// ---- BCFloat

BCFloat::BCFloat(double value)
    : BCRenderableData(bcids::kTypeFloat, BC_FLAG_NOT_OWNED), dValue(value),
      lpFormat(kFloat.fallback) {}

BCFloat::BCFloat(const BCFloat& other)
    : BCRenderableData(other), dValue(other.dValue), lpFormat(nullptr) {
    CopyFormat(lpFormat, dwFlags, other.lpFormat, kFloat);
}

BCFloat& BCFloat::operator=(const BCFloat& other) {
    if (this == &other)
        return *this;
    FreeFormat(lpFormat, dwFlags);
    dwFlags = (dwFlags & ~0xFFFFul) | other.dwFlags;
    dValue = other.dValue;
    CopyFormat(lpFormat, dwFlags, other.lpFormat, kFloat);
    return *this;
}

BCFloat::~BCFloat() {
    FreeFormat(lpFormat, dwFlags);
}

unsigned long BCFloat::Print(char* text, unsigned long size) const {
    return static_cast<unsigned long>(BCFrmtStr(text, size, Usable(lpFormat, kFloat), dValue));
}

BCRenderableData* BCFloat::Dup() {
    return new (std::nothrow) BCFloat(*this);
}

int BCFloat::Clear(int) {
    SetModified(false);
    dValue = 0.0;
    return 1;
}

int BCFloat::IsRenderable(BCFormat& format) {
    return IsTextForm(format) || IsBinaryForm(format);
}

void* BCFloat::GetDataPtr(BCFormat&) {
    return nullptr;
}

unsigned long BCFloat::GetLen(BCFormat& format) {
    char text[kPrintSize];
    if (IsTextForm(format))
        return Print(text, sizeof text) + 1;
    return IsBinaryForm(format) ? kFloat.width + 1 + FormatLen(lpFormat) : 0;
}

unsigned long BCFloat::GetData(void* buffer, unsigned long size, BCFormat& format) {
    char text[kPrintSize];
    if (IsTextForm(format))
        return PutText(buffer, size, text, Print(text, sizeof text));
    return IsBinaryForm(format) ? PutBinary(buffer, size, &dValue, lpFormat, kFloat) : 0;
}

unsigned long BCFloat::SetData(void* buffer, unsigned long size, BCFormat& format) {
    if (IsTextForm(format))
        return TakeText<double, float>(buffer, size, lpFormat, dValue, kFloat);
    return IsBinaryForm(format) ? TakeBinary(buffer, size, &dValue, lpFormat, dwFlags, kFloat) : 0;
}

int BCFloat::Save(std::ostream& os) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &dValue, sizeof bits);
    return BCObject::Save(os) && BCSaveDblWord(os, static_cast<std::uint32_t>(bits)) &&
           BCSaveDblWord(os, static_cast<std::uint32_t>(bits >> 32)) &&
           BCSaveStringPtr(os, lpFormat);
}

int BCFloat::Load(std::istream& is) {
    unsigned long low = 0, high = 0;
    char* fresh = nullptr;
    if (!BCObject::Load(is) || !BCLoadDblWord(is, low) || !BCLoadDblWord(is, high) ||
        !LoadFormat(is, fresh))
        return 0;
    std::uint64_t bits = (static_cast<std::uint64_t>(high) << 32) | low;
    std::memcpy(&dValue, &bits, sizeof bits);
    InstallLoaded(lpFormat, dwFlags, fresh, kFloat);
    return 1;
}

void BCFloat::Display(const char* prefix) {
    char text[kPrintSize];
    Print(text, sizeof text);
    DispObjectMsg("%s%s", prefix ? prefix : "", text);
}
