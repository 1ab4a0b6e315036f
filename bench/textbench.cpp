// The text object at document scale: counting lines against a plain SSE2 loop and the
// runtime's memchr, opening a 100 MB file against a raw read of it, and the keys an editor
// sends (a character, Return, Backspace joining two lines, Delete) in the middle of 100 MB
// against the same keys in 10 KB, each with the line queries an editor makes after a key.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#if defined(__i386__) || defined(__x86_64__)
#include <emmintrin.h>
#endif

#include <norlib2.h>

namespace {

using Clock = std::chrono::steady_clock;

template <class Work> double Millis(Work work) {
    auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void Row(const char* what, double ours, double theirs, const char* against) {
    std::printf("%-36s %9.3f ms  %-22s %9.3f ms  ratio %6.2f\n", what, ours, against, theirs,
                theirs > 0 ? ours / theirs : 0.0);
}

volatile unsigned long g_sink;

// Lines of 78 characters and CR LF.
std::string MakeDocument(size_t size) {
    std::string line(78, 'w');
    std::string text;
    text.reserve(size + 80);
    for (int n = 0; text.size() < size; ++n) {
        std::string number = std::to_string(n);
        std::copy(number.begin(), number.end(), line.begin());
        text += line + "\r\n";
    }
    return text;
}

#if defined(__i386__) || defined(__x86_64__)
// The plain SSE2 loop: each match adds one to a byte lane; the lanes are summed every 255
// blocks, before they can overflow.
__attribute__((target("sse2"))) unsigned long CountSse2(const char* p, size_t n) {
    const __m128i lf = _mm_set1_epi8('\n');
    unsigned long lines = 0;
    size_t i = 0;
    while (n - i >= 16) {
        __m128i lanes = _mm_setzero_si128();
        for (int block = 0; block < 255 && n - i >= 16; ++block, i += 16) {
            __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
            lanes = _mm_sub_epi8(lanes, _mm_cmpeq_epi8(bytes, lf));
        }
        __m128i sums = _mm_sad_epu8(lanes, _mm_setzero_si128());
        lines += static_cast<unsigned long>(_mm_cvtsi128_si32(sums) + _mm_extract_epi16(sums, 4));
    }
    for (; i < n; ++i)
        lines += p[i] == '\n';
    return lines;
}
#else
unsigned long CountSse2(const char* p, size_t n) {
    return static_cast<unsigned long>(std::count(p, p + n, '\n'));
}
#endif

unsigned long CountMemchr(const char* p, const char* end) {
    unsigned long lines = 0;
    while ((p = static_cast<const char*>(std::memchr(p, '\n', end - p))) != nullptr) {
        ++lines;
        ++p;
    }
    return lines;
}

BCText* Text(BCTextData& data) {
    return data.GetTextObject();
}

void Fill(BCTextData& data, const std::string& document) {
    data.SetText(document.data(), 0, static_cast<unsigned long>(document.size()), 1);
}

// What an editor asks after a key: the caret's line, the line count, the first visible
// line's start and the page end.
void Queries(BCTextData& data, unsigned long caret) {
    unsigned long start = 0;
    unsigned int length = 0;
    data.GetLineStartLen(caret, start, length);
    unsigned long lines = data.GetNumLines(0, data.GetTextLen());
    unsigned long top = data.GetLineOfs(lines / 2 > 20 ? lines / 2 - 20 : 0);
    g_sink = start + length + lines + data.GetLineRelOfs(top, 40);
}

struct Key {
    const char* name;
    // Changes the text at `caret`; returns the new caret.
    unsigned long (*press)(BCTextData&, unsigned long caret);
};

const Key kKeys[] = {
    {"character", [](BCTextData& d, unsigned long at) { return d.SetText("x", at, 1, 1) + at; }},
    {"Return", [](BCTextData& d, unsigned long at) { return d.SetText("\r\n", at, 2, 1) + at; }},
    {"Backspace joining lines",
     [](BCTextData& d, unsigned long at) {
         unsigned long start = d.GetLineOfs(d.GetNumLines(0, at));
         d.DeleteText(start - 2, 2);
         return start - 2;
     }},
    {"Delete", [](BCTextData& d, unsigned long at) { return at - d.DeleteText(at, 1) + 1; }},
};

struct Spread {
    double median, p99;
};

// Times `presses` presses of the key in the middle of the document, each with its queries.
Spread TimeKey(const Key& key, const std::string& document, int presses) {
    BCTextData data(nullptr, nullptr, nullptr);
    Fill(data, document);
    Queries(data, 0); // the line counts are made once, as when the document is shown
    unsigned long caret = data.GetLineOfs(data.GetNumLines(0, data.GetTextLen()) / 2) + 40;
    std::vector<double> times;
    for (int i = 0; i < presses; ++i) {
        times.push_back(Millis([&] {
            caret = key.press(data, caret);
            Queries(data, caret);
        }));
    }
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times[times.size() * 99 / 100]};
}

void KeyRows(int presses) {
    std::string small = MakeDocument(10 * 1024);
    std::string large = MakeDocument(100u * 1024 * 1024);
    std::printf("\n%d presses of each key in the middle, with the queries an editor makes\n",
                presses);
    std::printf("%-24s %12s %12s %12s %12s %8s\n", "key", "10 KB med", "10 KB p99", "100 MB med",
                "100 MB p99", "ratio");
    for (const Key& key : kKeys) {
        Spread a = TimeKey(key, small, presses);
        Spread b = TimeKey(key, large, presses);
        std::printf("%-24s %9.4f ms %9.4f ms %9.4f ms %9.4f ms %8.2f\n", key.name, a.median, a.p99,
                    b.median, b.p99, a.median > 0 ? b.median / a.median : 0.0);
    }
}

void CountRows(const std::string& document) {
    BCTextData data(nullptr, nullptr, nullptr);
    Fill(data, document);
    const char* begin = document.data();
    const char* end = begin + document.size();
    unsigned long length = data.GetTextLen();
    Row("GetNumLines, counts made", Millis([&] { g_sink = data.GetNumLines(0, length); }),
        Millis([&] { g_sink = CountSse2(begin, document.size()); }), "SSE2 count");
    Row("GetNumLines, counts kept", Millis([&] { g_sink = data.GetNumLines(0, length); }),
        Millis([&] { g_sink = CountSse2(begin, document.size()); }), "SSE2 count");
    Text(data)->GetDataPtr(BCGetTextFormat()); // the counts are made again when asked
    Row("GetNumLines, counts made", Millis([&] { g_sink = data.GetNumLines(0, length); }),
        Millis([&] { g_sink = CountMemchr(begin, end); }), "memchr count");
    unsigned long last = data.GetNumLines(0, length);
    Row("GetLineOfs of the last line", Millis([&] { g_sink = data.GetLineOfs(last); }),
        Millis([&] { g_sink = CountSse2(begin, document.size()); }), "SSE2 count");
}

// Into a new block, as the document reads it.
double RawRead(const std::string& path, size_t size) {
    return Millis([&] {
        std::unique_ptr<char[]> bytes(new char[size]);
        std::ifstream in(path, std::ios::binary);
        in.read(bytes.get(), static_cast<std::streamsize>(size));
        g_sink = static_cast<unsigned long>(in.gcount());
    });
}

void OpenRow(const char* what, const std::string& document) {
    char temp[MAX_PATH];
    GetTempPathA(sizeof temp, temp);
    std::string path = std::string(temp) + "textbench.txt";
    std::ofstream(path, std::ios::binary)
        .write(document.data(), static_cast<std::streamsize>(document.size()));
    RawRead(path, document.size()); // the file in the cache for both
    double raw = RawRead(path, document.size());
    BCTextData data(nullptr, nullptr, path.c_str());
    double ours = Millis([&] { g_sink = static_cast<unsigned long>(data.LoadFile()); });
    Row(what, ours, raw, "raw read");
    DeleteFileA(path.c_str());
}

} // namespace

int main() {
    std::string document = MakeDocument(100u * 1024 * 1024);
    std::printf("document of %zu bytes in lines of 80\n\n", document.size());
    CountRows(document);
    OpenRow("open a 100 MB CR LF file", document);
    std::string unix = document;
    unix.erase(std::remove(unix.begin(), unix.end(), '\r'), unix.end());
    OpenRow("open a 100 MB LF-only file", unix);
    KeyRows(400);
    return 0;
}
