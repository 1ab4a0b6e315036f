#include "bctext.h"
#include "bcstream.h"
#include "bcmemory.h"

#include "bcids2.h"

#include <cstring>
#include <istream>
#include <new>
#include <ostream>

namespace {

constexpr unsigned long kNoLine = 0xFFFFFFFFul;

// Only the ASCII letters fold; other bytes compare as they are.
char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool IsWordChar(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

unsigned long Min(unsigned long long a, unsigned long long b) {
    return static_cast<unsigned long>(a < b ? a : b);
}

} // namespace

BCText::BCText(char* text, unsigned int flags)
    : BCMemoryData(text, text ? static_cast<unsigned long>(std::strlen(text) + 1) : 0, flags) {
    SetObjectType(bcids::kTypeText);
}

int BCText::Load(std::istream& is) {
    return LoadBytes(is, 0, true);
}

int BCText::Save(std::ostream& os) {
    return BCSaveFarBlk(os, lpData, static_cast<long>(Held()));
}

BCRenderableData* BCText::Dup() {
    return new (std::nothrow) BCText(*this);
}

int BCText::IsRenderable(BCFormat& format) {
    unsigned int number = format.GetFormat();
    return number == BC_FORMAT_TEXT ||
           (number >= BC_FORMAT_PRIVATE_TEXT && number <= BC_FORMAT_PRIVATE_TEXTDATA);
}

unsigned long BCText::SetText(const char* text, unsigned long offset, unsigned long count,
                              int insert) {
    return SetData(offset, text, count, insert);
}

unsigned long BCText::DeleteText(unsigned long offset, unsigned long count) {
    return DeleteData(offset, count);
}

unsigned long BCText::GetText(char* buffer, unsigned long offset, unsigned long count) {
    if (!buffer)
        return 0;
    unsigned long n = GetData(offset, buffer, count);
    buffer[n] = '\0';
    return n;
}

unsigned long BCText::LineStart(unsigned long offset) const {
    const char* text = Chars();
    while (offset > 0 && text[offset - 1] != '\n')
        --offset;
    return offset;
}

unsigned long BCText::NextCR(unsigned long from, unsigned long to) const {
    if (from >= to)
        return to;
    const void* cr = std::memchr(Chars() + from, '\r', to - from);
    return cr ? static_cast<unsigned long>(static_cast<const char*>(cr) - Chars()) : to;
}

bool BCText::MatchesAt(const char* pattern, unsigned long length, unsigned long at,
                       int matchCase) const {
    const char* text = Chars() + at;
    if (matchCase)
        return std::memcmp(text, pattern, length) == 0;
    for (unsigned long i = 0; i < length; ++i) {
        if (Upper(text[i]) != Upper(pattern[i]))
            return false;
    }
    return true;
}

// Nothing lies before the first byte or after the last one: the text's edges are word edges.
bool BCText::IsWholeWord(unsigned long at, unsigned long length) const {
    unsigned long end = at + length;
    if (at > 0 && IsWordChar(Chars()[at - 1]))
        return false;
    return end >= Held() || !IsWordChar(Chars()[end]);
}

int BCText::Search(const char* pattern, unsigned long& position, int matchCase, int wholeWord) {
    unsigned long held = Held();
    unsigned long length = pattern ? static_cast<unsigned long>(std::strlen(pattern)) : 0;
    if (length == 0 || position >= held || length > held)
        return 0;
    const unsigned long last = held - length;
    for (unsigned long at = position; at <= last; ++at) {
        if (matchCase) {
            const void* first = std::memchr(Chars() + at, pattern[0], last - at + 1);
            if (!first)
                return 0;
            at = static_cast<unsigned long>(static_cast<const char*>(first) - Chars());
        }
        if (MatchesAt(pattern, length, at, matchCase) && (!wholeWord || IsWholeWord(at, length))) {
            position = at;
            return 1;
        }
    }
    return 0;
}

unsigned long BCText::GetLineOfs(unsigned long line) {
    if (line == 0)
        return 0;
    const char* p = Chars();
    const char* end = p + Held();
    if (p == end)
        return kNoLine;
    for (; line; --line) {
        p = static_cast<const char*>(std::memchr(p, '\n', end - p));
        if (!p)
            return kNoLine;
        ++p;
    }
    return static_cast<unsigned long>(p - Chars());
}

int BCText::GetLineStartLen(unsigned long offset, unsigned long& start, unsigned int& length) {
    unsigned long held = Held();
    if (offset > held || held == 0) {
        start = held;
        length = 0;
        return 0;
    }
    start = LineStart(offset);
    unsigned long end;
    char at = offset < held ? Chars()[offset] : '\0';
    if (at == '\n')
        end = offset > start ? offset - 1 : start;
    else if (at == '\r')
        end = offset;
    else
        end = NextCR(offset, held);
    length = static_cast<unsigned int>(end - start);
    return 1;
}

unsigned long BCText::GetLineRelOfs(unsigned long offset, long lines) {
    unsigned long held = Held();
    if (held == 0)
        return 0;
    if (offset > held)
        offset = held;
    unsigned long start = 0;
    unsigned long column = 0;
    if (offset > 0) {
        start = LineStart(offset);
        column = offset - start;
        // Back over the CR LF that ends the line before, to that line's start.
        for (; lines < 0 && start > 0; ++lines)
            start = LineStart(start >= 2 ? start - 2 : 0);
    } else if (lines < 1) {
        return 0;
    }
    for (; lines > 0 && start < held; --lines) {
        unsigned long cr = NextCR(start, held);
        start = cr < held ? Min(cr + 2ull, held) : held;
    }
    return NextCR(start, Min(static_cast<unsigned long long>(start) + column, held));
}

unsigned long BCText::GetNumLines(unsigned long from, unsigned long to) {
    unsigned long stop = Min(Held(), to);
    if (from >= stop)
        return 0;
    unsigned long lines = 0;
    const char* p = Chars() + from;
    const char* end = Chars() + stop;
    while ((p = static_cast<const char*>(std::memchr(p, '\n', end - p))) != nullptr) {
        ++lines;
        ++p;
    }
    return lines;
}

unsigned int BCText::GetTextLine(unsigned int line, char* buffer, unsigned int size) {
    if (!buffer)
        return 0;
    buffer[0] = '\0';
    unsigned long offset = GetLineOfs(line);
    unsigned long start = 0;
    unsigned int length = 0;
    if (offset == kNoLine || !GetLineStartLen(offset, start, length))
        return 0;
    return static_cast<unsigned int>(GetText(buffer, start, Min(length + 2ull, size)));
}
