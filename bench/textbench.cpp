// The text of a 10 MB document: inserting one character at the start, middle and end against
// a raw memmove of the same bytes, and line counting and line offsets against memchr.
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <norlib2.h>

namespace {

using Clock = std::chrono::steady_clock;

template <class Work> double Millis(Work work) {
    auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void Row(const char* what, double ours, double theirs, const char* against) {
    std::printf("%-40s %9.3f ms  %-24s %9.3f ms  ratio %6.2f\n", what, ours, against, theirs,
                theirs > 0 ? ours / theirs : 0.0);
}

volatile unsigned long g_sink;

std::string MakeDocument(size_t size) {
    std::string text;
    text.reserve(size + 80);
    for (int line = 0; text.size() < size; ++line)
        text += "Line " + std::to_string(line) + " of a long document, with some words.\r\n";
    return text;
}

unsigned long CountLines(const char* p, const char* end) {
    unsigned long lines = 0;
    while ((p = static_cast<const char*>(std::memchr(p, '\n', end - p))) != nullptr) {
        ++lines;
        ++p;
    }
    return lines;
}

const char* NthLine(const char* p, const char* end, unsigned long n) {
    while (n-- && p) {
        p = static_cast<const char*>(std::memchr(p, '\n', end - p));
        if (p)
            ++p;
    }
    return p;
}

} // namespace

int main() {
    const int inserts = 100;
    std::string document = MakeDocument(10u * 1024 * 1024);
    std::printf("document of %zu bytes, %d one-character inserts per place\n\n", document.size(),
                inserts);

    BCText text(nullptr, 0);
    text.SetText(document.data(), 0, static_cast<unsigned long>(document.size()), 1);
    std::vector<char> raw(document.begin(), document.end());
    raw.reserve(raw.size() + 3 * inserts);

    struct Place {
        const char* name;
        double where; // fraction of the length
    } places[] = {
        {"insert at the start", 0.0}, {"insert in the middle", 0.5}, {"insert at the end", 1.0}};
    for (const Place& place : places) {
        double ours = Millis([&] {
            for (int i = 0; i < inserts; ++i) {
                unsigned long length = text.GetLen(BCGetTextFormat());
                text.SetText("x", static_cast<unsigned long>(length * place.where), 1, 1);
            }
        });
        double theirs = Millis([&] {
            for (int i = 0; i < inserts; ++i) {
                size_t at = static_cast<size_t>(raw.size() * place.where);
                raw.push_back(0);
                std::memmove(raw.data() + at + 1, raw.data() + at, raw.size() - 1 - at);
                raw[at] = 'x';
            }
        });
        Row(place.name, ours, theirs, "memmove");
    }

    const unsigned long length = text.GetLen(BCGetTextFormat());
    const char* begin = raw.data();
    const char* end = raw.data() + raw.size();
    Row("GetNumLines over the whole text", Millis([&] { g_sink = text.GetNumLines(0, length); }),
        Millis([&] { g_sink = CountLines(begin, end); }), "memchr count");
    unsigned long lastLine = CountLines(begin, end) - 1;
    Row("GetLineOfs of the last line", Millis([&] { g_sink = text.GetLineOfs(lastLine); }),
        Millis([&] { g_sink = static_cast<unsigned long>(NthLine(begin, end, lastLine) - begin); }),
        "memchr walk");
    return 0;
}
