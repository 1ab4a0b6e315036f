// The editor window at document scale: keys and clicks sent to a real BCTextEdit as a user
// makes them, timed from the message to the end of the repaint, on texts of 10 KB to 100 MB;
// a full repaint against a raw ExtTextOutA loop over the same lines; the text object's search
// against a plain Boyer-Moore-Horspool over the same bytes; and replace all of 10,000
// occurrences through the editor.
//
//   editbench.exe [largest size in MB, 100 by default] [search: search and replace only]
#include <windows.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <norlib2.h>

namespace {

constexpr int kRounds = 40;
constexpr int kLongLine = 2000;     // a line long enough for a click at column 1000
constexpr int kOccurrences = 10000; // of the pattern, for search and replace

double Now() {
    static LARGE_INTEGER frequency = [] {
        LARGE_INTEGER f;
        QueryPerformanceFrequency(&f);
        return f;
    }();
    LARGE_INTEGER t;
    QueryPerformanceCounter(&t);
    return 1000.0 * static_cast<double>(t.QuadPart) / static_cast<double>(frequency.QuadPart);
}

void Pump() {
    MSG m;
    while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&m);
        DispatchMessageA(&m);
    }
}

// 80-character lines with CR LF, one long line in the middle.
std::string MakeDocument(size_t size) {
    std::string text;
    text.reserve(size + kLongLine + 100);
    char line[96];
    for (unsigned long n = 0; text.size() < size; ++n) {
        if (n == 200 || (text.size() < size / 2 && text.size() + 80 >= size / 2)) {
            text.append(kLongLine, 'w');
            text += "\r\n";
            continue;
        }
        int k = std::snprintf(line, sizeof line, "%08lu a line of an ordinary log file ", n);
        std::string s(line, static_cast<size_t>(k));
        s.resize(78, '.');
        text += s + "\r\n";
    }
    return text;
}

struct Stats {
    double median;
    double p99;
};

Stats Summarise(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    size_t p99 = std::min(times.size() - 1, times.size() * 99 / 100);
    return {times[times.size() / 2], times[p99]};
}

void SetCtrl(bool down) {
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[VK_CONTROL] = down ? 0x80 : 0;
    SetKeyboardState(keys);
}

class Bench {
  public:
    explicit Bench(BCApplication& app) : app(app), main(&app) {
        main.SetWindowRect(BCRectangle(0, 0, 640, 480));
        main.Create("editbench");
        main.Show(SW_SHOW);
    }
    ~Bench() { delete edit; }

    void Open(const std::string& text) {
        delete edit;
        BCRectangle client = main.GetClientRect();
        edit = new BCTextEdit(1, &main, BCPosition(0, 0),
                              BCSize(client.GetRight(), client.GetBottom()), nullptr, nullptr,
                              nullptr, &app, 0, kOccurrences + 1);
        edit->SetStyle(WS_VSCROLL, 1);
        edit->Create("");
        edit->SetText(text.c_str());
        edit->SetFocus();
        Pump();
        UpdateWindow(H());
    }
    HWND H() const { return edit->GetHandle(); }
    BCTextEdit& Edit() { return *edit; }

    // Median and 99th percentile of `act` (timed through the repaint), with `prepare` run
    // untimed before each round.
    Stats Time(const std::function<void()>& prepare, const std::function<void()>& act) {
        std::vector<double> times;
        for (int i = 0; i < kRounds; ++i) {
            prepare();
            Pump();
            UpdateWindow(H());
            double start = Now();
            act();
            Pump();
            UpdateWindow(H());
            times.push_back(Now() - start);
        }
        return Summarise(times);
    }
    void Post(UINT message, WPARAM w, LPARAM l = 1) { PostMessageA(H(), message, w, l); }
    void Middle() {
        BCTextData* text = edit->GetText();
        unsigned long lines = text->GetNumLines(0, text->GetTextLen());
        unsigned long ofs = text->GetLineOfs(lines / 2 + 3);
        edit->SetTextPos(ofs + 40, -1);
    }

  private:
    BCApplication& app;
    BCMainWindow main;
    BCTextEdit* edit = nullptr;
};

struct Key {
    const char* name;
    std::function<void(Bench&)> prepare;
    std::function<void(Bench&)> act;
};

std::vector<Key> Keys() {
    auto middle = [](Bench& b) { b.Middle(); };
    return {
        {"character in the middle", middle, [](Bench& b) { b.Post(WM_CHAR, 'x'); }},
        {"Return", middle, [](Bench& b) { b.Post(WM_CHAR, '\r'); }},
        {"Backspace joining lines",
         [](Bench& b) {
             b.Middle();
             unsigned long start;
             unsigned int len;
             b.Edit().GetText()->GetLineStartLen(b.Edit().GetCaretOfs(), start, len);
             b.Edit().SetTextPos(start, -1);
         },
         [](Bench& b) { b.Post(WM_KEYDOWN, VK_BACK); }},
        {"Delete", middle, [](Bench& b) { b.Post(WM_KEYDOWN, VK_DELETE); }},
        {"Ctrl+End", middle,
         [](Bench& b) {
             SetCtrl(true);
             SendMessageA(b.H(), WM_KEYDOWN, VK_END, 1);
             SetCtrl(false);
         }},
        {"Page Down",
         [](Bench& b) { // from the last line shown, so that the page moves
             b.Middle();
             BCTextEdit& e = b.Edit();
             e.SetTextPos(e.GetText()->GetLineRelOfs(e.GetPageEnd(), -1), -1);
         },
         [](Bench& b) { b.Post(WM_KEYDOWN, VK_NEXT); }},
        {"thumb to the middle",
         [](Bench& b) {
             b.Edit().SetPagePos(0);
             SetScrollPos(b.H(), SB_VERT, static_cast<int>(b.Edit().GetLineCnt() / 2), FALSE);
         },
         [](Bench& b) { b.Post(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 0), 0); }},
        {"click at column 1000",
         [](Bench& b) {
             // The long line at the top, scrolled right so that column 1000 shows.
             BCTextData* text = b.Edit().GetText();
             unsigned long lines = text->GetNumLines(0, text->GetTextLen());
             unsigned long ofs = 0;
             unsigned int len = 0;
             for (unsigned long line = lines / 2 - 2; line < lines && len < kLongLine; ++line) {
                 unsigned long start;
                 ofs = text->GetLineOfs(line);
                 text->GetLineStartLen(ofs, start, len);
             }
             b.Edit().SetPagePos(ofs);
             short unit = b.Edit().GetStrSize("H").GetWidth();
             short column = b.Edit().GetStrSize("w").GetWidth();
             int units = (1000 * column - 100) / unit;
             SendMessageA(b.H(), WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, units), 0);
         },
         [](Bench& b) {
             BCRectangle r = b.Edit().GetTextRect();
             LPARAM at = MAKELPARAM(r.GetLeft() + 100, r.GetTop() + 4);
             b.Post(WM_LBUTTONDOWN, MK_LBUTTON, at);
             b.Post(WM_LBUTTONUP, 0, at);
         }},
    };
}

// The lines a hand-written window paints, one ExtTextOutA each, the rest cleared.
std::vector<std::string> g_rawLines;

LRESULT CALLBACK RawPaint(HWND h, UINT message, WPARAM w, LPARAM l) {
    if (message != WM_PAINT)
        return DefWindowProcA(h, message, w, l);
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(h, &ps);
    RECT client;
    GetClientRect(h, &client);
    TEXTMETRICA tm;
    GetTextMetricsA(dc, &tm);
    int y = 0;
    for (const std::string& line : g_rawLines) {
        if (y >= client.bottom)
            break;
        RECT row = {0, y, client.right, y + tm.tmHeight};
        ExtTextOutA(dc, 8, y, ETO_OPAQUE, &row, line.data(), static_cast<UINT>(line.size()),
                    nullptr);
        y += tm.tmHeight;
    }
    RECT rest = {0, y, client.right, client.bottom};
    FillRect(dc, &rest, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    EndPaint(h, &ps);
    return 0;
}

// A repaint of the whole editor against a hand-written window of the same size painting the
// same lines, both through the system's invalidate and update.
void Repaint(Bench& b) {
    b.Middle();
    Pump();
    UpdateWindow(b.H());
    BCTextEdit& e = b.Edit();
    g_rawLines.clear();
    for (unsigned long n = e.GetFirstLine(); g_rawLines.size() < 60; ++n) {
        char buf[130];
        unsigned int k = e.GetTextLine(static_cast<unsigned int>(n), buf, 128);
        g_rawLines.emplace_back(buf, k > 2 ? k - 2 : 0);
    }
    Stats ours = b.Time([] {}, [&] { InvalidateRect(b.H(), nullptr, TRUE); });
    WNDCLASSA wc = {};
    wc.lpfnWndProc = RawPaint;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    wc.lpszClassName = "editbench raw";
    RegisterClassA(&wc);
    RECT r;
    GetWindowRect(b.H(), &r);
    HWND raw =
        CreateWindowA("editbench raw", "", WS_POPUP | WS_VISIBLE, r.left, r.top, r.right - r.left,
                      r.bottom - r.top, nullptr, nullptr, wc.hInstance, nullptr);
    Pump();
    std::vector<double> times;
    for (int i = 0; i < kRounds; ++i) {
        double start = Now();
        InvalidateRect(raw, nullptr, TRUE);
        UpdateWindow(raw);
        times.push_back(Now() - start);
    }
    DestroyWindow(raw);
    Stats theirs = Summarise(times);
    std::printf(
        "\nfull repaint %8.3f ms   hand-written ExtTextOutA window %8.3f ms   ratio %5.2f\n",
        ours.median, theirs.median, ours.median / theirs.median);
}

// ---- search and replace ----

constexpr int kSearchRounds = 5;
const char kNeedle[] = "needle";

// The document with `kOccurrences` lines, spread evenly, whose "a line" reads "needle".
std::string MakeNeedles(size_t size) {
    std::string text = MakeDocument(size);
    size_t step = text.size() / kOccurrences;
    for (int k = 0; k < kOccurrences; ++k) {
        size_t line = text.find("a line", static_cast<size_t>(k) * step);
        text.replace(line, 6, kNeedle);
    }
    return text;
}

bool WordByte(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0;
}

bool WholeAt(const std::string& text, size_t at, size_t length) {
    return (at == 0 || !WordByte(text[at - 1])) &&
           (at + length == text.size() || !WordByte(text[at + length]));
}

struct FoldHash {
    size_t operator()(char c) const {
        return static_cast<size_t>(std::toupper(static_cast<unsigned char>(c)));
    }
};
struct FoldEqual {
    bool operator()(char a, char b) const {
        return std::toupper(static_cast<unsigned char>(a)) ==
               std::toupper(static_cast<unsigned char>(b));
    }
};

// Matches counted by the standard library's Boyer-Moore-Horspool searcher, the whole-word
// rule checked on each hit.
template <class Searcher>
int CountPlain(const std::string& text, const Searcher& searcher, size_t length, bool word) {
    int count = 0;
    for (auto at = text.begin();;) {
        at = std::search(at, text.end(), searcher);
        if (at == text.end())
            return count;
        count += !word || WholeAt(text, static_cast<size_t>(at - text.begin()), length);
        ++at;
    }
}

// A textbook Horspool loop: the shift is looked up by the byte under the pattern's end;
// letters go through a folding table when case does not matter.
int CountHorspool(const std::string& text, const char* pattern, bool matchCase, bool word) {
    unsigned char map[256];
    for (int i = 0; i < 256; ++i)
        map[i] = static_cast<unsigned char>(matchCase ? i : std::toupper(i));
    const unsigned char* p = reinterpret_cast<const unsigned char*>(pattern);
    const unsigned char* t = reinterpret_cast<const unsigned char*>(text.data());
    size_t m = std::strlen(pattern), n = text.size();
    size_t skip[256];
    std::fill(skip, skip + 256, m);
    for (size_t i = 0; i + 1 < m; ++i)
        skip[map[p[i]]] = m - 1 - i;
    int count = 0;
    for (size_t at = 0; at + m <= n;) {
        unsigned char end = map[t[at + m - 1]];
        if (end == map[p[m - 1]]) {
            size_t i = 0;
            while (i + 1 < m && map[t[at + i]] == map[p[i]])
                ++i;
            count += i + 1 == m && (!word || WholeAt(text, at, m));
        }
        at += skip[end];
    }
    return count;
}

int CountOurs(BCText& text, const char* pattern, int matchCase, int word) {
    int count = 0;
    for (unsigned long at = 0; text.Search(pattern, at, matchCase, word); ++at)
        ++count;
    return count;
}

double Median(const std::function<int()>& run, int& result) {
    std::vector<double> times;
    for (int i = 0; i < kSearchRounds; ++i) {
        double start = Now();
        result = run();
        times.push_back(Now() - start);
    }
    return Summarise(times).median;
}

// Every match of the pattern in the text, with the free bytes of an edit in its middle.
void SearchBench(const std::string& doc) {
    BCText text(nullptr, 0);
    text.SetText(doc.data(), 0, static_cast<unsigned long>(doc.size()), 1);
    text.SetText("x", static_cast<unsigned long>(doc.size() / 2), 1, 1);
    std::string plain = doc;
    plain.insert(doc.size() / 2, 1, 'x');
    std::boyer_moore_horspool_searcher<const char*> exact(kNeedle, kNeedle + 6);
    const char upper[] = "NEEDLE";
    std::boyer_moore_horspool_searcher<const char*, FoldHash, FoldEqual> folded(upper, upper + 6);
    struct Case {
        const char* name;
        const char* pattern;
        int matchCase;
        int word;
    };
    const Case cases[] = {{"match case", kNeedle, 1, 0},
                          {"any case", upper, 0, 0},
                          {"match case, whole word", kNeedle, 1, 1},
                          {"any case, whole word", upper, 0, 1}};
    std::printf("\nsearch of %zu MB, %d matches (ms)  ours   std::search   Horspool loop   "
                "ratio to the faster\n",
                doc.size() >> 20, kOccurrences);
    for (const Case& c : cases) {
        int ours = 0, theirs = 0, loop = 0;
        double t = Median([&] { return CountOurs(text, c.pattern, c.matchCase, c.word); }, ours);
        double h = Median(
            [&] {
                return c.matchCase ? CountPlain(plain, exact, 6, c.word)
                                   : CountPlain(plain, folded, 6, c.word);
            },
            theirs);
        double l =
            Median([&] { return CountHorspool(plain, c.pattern, c.matchCase, c.word); }, loop);
        std::printf("%-26s %9.1f %13.1f %15.1f %9.2f%s\n", c.name, t, h, l, t / std::min(h, l),
                    ours == theirs && ours == loop ? "" : "   COUNTS DIFFER");
    }
}

// Replace all through the editor, from the message to the end of the repaint.
void ReplaceBench(Bench& b, const std::string& doc, const char* replacement) {
    b.Open(doc);
    BCTextEdit& e = b.Edit();
    e.SetTextPos(0, -1);
    e.SetSearch(kNeedle, replacement, 0);
    double start = Now();
    int ok = e.ReplaceDirect(1);
    Pump();
    UpdateWindow(b.H());
    double took = Now() - start;
    long grown = static_cast<long>(e.GetTextLen()) - static_cast<long>(doc.size());
    std::printf("replace all %d \"%s\" by \"%s\" %9.1f ms  (%s, text %+ld bytes, caret %s)\n",
                kOccurrences, kNeedle, replacement, took, ok ? "done" : "FAILED", grown,
                e.GetCaretOfs() == e.GetTextLen() ? "at the end" : "NOT AT THE END");
}

} // namespace

int main(int argc, char** argv) {
    const unsigned long largestMb = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 100;
    std::vector<size_t> sizes = {10u * 1024, 1024u * 1024, 10u * 1024 * 1024,
                                 static_cast<size_t>(largestMb) * 1024 * 1024};
    BCApplication app;
    Bench bench(app);
    std::string needles = MakeNeedles(sizes.back());
    SearchBench(needles);
    ReplaceBench(bench, needles, "haystack");
    ReplaceBench(bench, needles, "pin");
    if (argc > 2 && std::string(argv[2]) == "search")
        return 0;
    needles.clear();
    std::vector<Key> keys = Keys();
    std::vector<std::vector<Stats>> results(keys.size());
    std::printf("%-26s", "key (median / p99 ms)");
    for (size_t size : sizes)
        std::printf(" %10zu KB    ", size / 1024);
    std::printf("  ratio largest/smallest\n");
    for (size_t size : sizes) {
        bench.Open(MakeDocument(size));
        for (size_t k = 0; k < keys.size(); ++k)
            results[k].push_back(
                bench.Time([&] { keys[k].prepare(bench); }, [&] { keys[k].act(bench); }));
        if (size == sizes.back())
            Repaint(bench);
    }
    for (size_t k = 0; k < keys.size(); ++k) {
        std::printf("%-26s", keys[k].name);
        for (const Stats& s : results[k])
            std::printf(" %7.3f / %7.3f", s.median, s.p99);
        std::printf("  %6.2f\n", results[k].back().median / results[k].front().median);
    }
    return 0;
}
