#include <algorithm>
#include <cctype>
#include <climits>
#include <cstring>
#include <random>

#include "test_data.h"

namespace {

constexpr unsigned long kNone = 0xFFFFFFFFul;

// Where Search finds `pattern` from `from` on; kNone when it does not.
unsigned long Find(BCText& text, const char* pattern, unsigned long from, int matchCase,
                   int wholeWord) {
    return text.Search(pattern, from, matchCase, wholeWord) ? from : kNone;
}

// What GetData gives in the binary form with a buffer of `size` bytes: "<count>:<bytes>".
std::string Binary(BCRenderableData& data, unsigned long size) {
    char out[32] = {};
    unsigned long n = data.GetData(out, size, gBinary);
    return std::to_string(n) + ":" + std::string(out, n);
}

unsigned long SetBinary(BCRenderableData& data, std::string form) {
    return data.SetData(&form[0], form.size(), gBinary);
}

TEST(DataClassesTest, TypeCodesFormatsAndTextForms) {
    BCInteger integer(42);
    BCFloat real(2.5);
    BCText text(Str("ab"), 0);
    BCMemoryData memory(nullptr, 0, 0);
    std::string got; // the type code, whether it renders in 1, 2, 0x8001-0x8003, its text
    for (BCRenderableData* data :
         std::initializer_list<BCRenderableData*>{&integer, &real, &text, &memory}) {
        got += Nums(data->GetObjectType());
        for (unsigned int number : {1u, 2u, 0x8001u, 0x8002u, 0x8003u})
            got += data->IsRenderable(*std::make_unique<BCFormat>(number)) ? '1' : '0';
        got += " " + Nums(data->GetLen(gText)) + TextForm(*data) + "|";
    }
    EXPECT_EQ("153 10110 3 42|154 10110 9 2.500000|156 10111 3 ab|155 00110 0 |", got);
}

std::string StartLen(BCText& text, unsigned long at) {
    unsigned long start = 0;
    unsigned int length = 0;
    int ok = text.GetLineStartLen(at, start, length);
    return Nums(ok, start, length);
}

// What the random edits and searches below do not reach: reading past the end, the empty
// pattern, a failed search's position, text without a NUL, empty text and far moves.
TEST(TextTest, SearchAndLineEdges) {
    BCText text(Str("ab\r\ncdef\r\ng"), 0), empty;
    char past[4], cut[4], whole[16], none[16];
    EXPECT_EQ((Seq{0, 3, 2, 0}),
              (Seq{text.GetText(past, 20, 2), text.GetTextLine(1, cut, 3),
                   text.GetTextLine(2, whole, 16), text.GetTextLine(3, none, 16)}));
    EXPECT_EQ("|cde|g|", std::string(past) + "|" + cut + "|" + whole + "|" + none);
    unsigned long at = 2;
    EXPECT_TRUE(!text.Search("xyz", at, 0, 0) && at == 2ul && !text.Search("", at, 0, 0));
    BCText bare;
    bare.SetText("to the", 0, 6, 1); // no NUL: the match ends the bytes
    // A line's start and length from within it, at its CR, at its LF; past the end, none.
    EXPECT_EQ("1 0 2 1 0 2 1 0 2 1 4 4 0 12 0 ", StartLen(text, 1) + StartLen(text, 2) +
                                                     StartLen(text, 3) + StartLen(text, 5) +
                                                     StartLen(text, 20));
    EXPECT_EQ(Nums(3, 0, 0, kNone, 0, 0, 1, 6, 12),
              Nums(Find(bare, "the", 0, 1, 1), text.GetLineOfs(0), empty.GetLineOfs(0),
                   empty.GetLineOfs(1), empty.GetNumLines(0, 10), empty.GetLineRelOfs(3, 1),
                   text.GetLineRelOfs(5, LONG_MIN), text.GetLineRelOfs(50, -1),
                   text.GetLineRelOfs(7, 5)));
}

TEST(TextTest, RecordIsThePlainBytes) {
    BCText text(Str("hi\r\n"), 0);
    EXPECT_EQ(std::string("hi\r\n", 5), RecordOf(text)); // the NUL the length counts goes too
    std::ostringstream lines; // LF-only lines: a lone CR is written as it is
    EXPECT_TRUE(BCText(Str("a\rb\r\nc"), 0).SaveLines(lines, 1) == 1 &&
                lines.str() == std::string("a\rb\nc", 6));
    BCText loaded(Str("old"), 0);
    std::istringstream in = InStream("line one\r\nline two");
    ASSERT_EQ(kNone, loaded.GetLineOfs(1));         // indexed before the load, which re-indexes
    EXPECT_TRUE(loaded.Load(in) && BCStreamOK(in)); // reaching the end is how the record ends
    EXPECT_EQ("line one\r\nline two|1 10 ",
              Contents(loaded) + "|" + Nums(loaded.GetNumLines(0, kNone), loaded.GetLineOfs(1)));
    EXPECT_TRUE(LoadFrom(loaded, "") && Contents(loaded).empty());

    std::string big(200000, 'q');
    big[123456] = '\n';
    ASSERT_EQ(1, LoadPiped(loaded, big));
    EXPECT_TRUE(Contents(loaded) == big && loaded.GetBufLen() == 262144ul); // 64 KiB, doubling
    std::istringstream broken = InStream("abc");
    broken.setstate(std::ios::badbit);
    EXPECT_TRUE(!loaded.Load(broken) && loaded.GetLen(gText) == big.size());
}

TEST(NumberDataTest, IntegerTextAndBinaryForms) {
    BCInteger number(42);
    EXPECT_TRUE(number.GetFlags() == BC_FLAG_NOT_OWNED && number.GetKey() == Key(42));
    char text[8];
    EXPECT_EQ(Nums(3, 8), Nums(number.GetData(text, sizeof text, gText), number.GetLen(gBinary)));
    const std::string form = LE32(42) + "\x03%ld"; // the form as far as it fits
    for (unsigned long size : {32ul, 3ul, 5ul, 6ul})
        EXPECT_EQ(std::to_string(std::min(size, 8ul)) + ":" + form.substr(0, size),
                  Binary(number, size));
    BCFormat bitmap(BC_FORMAT_BITMAP); // not a form of a number
    EXPECT_EQ(0ul, number.GetData(text, 8, bitmap) + number.GetLen(bitmap));

    // Setting from the binary form takes the format 3 bytes further on than it is written.
    EXPECT_EQ(8ul, SetBinary(number, LE32(7) + "\x03%ld%4d"));
    EXPECT_TRUE(std::string(number.GetFormat()) == "%4d" &&
                !(number.GetFlags() & BC_FLAG_NOT_OWNED));
    BCInteger copy(number), assigned;
    assigned = number;
    EXPECT_EQ("   7   7   7", TextForm(number) + TextForm(copy) + TextForm(assigned));
    EXPECT_EQ(5ul, SetBinary(number, LE32(9) + std::string(1, '\0'))); // format kept
    EXPECT_EQ("   9", TextForm(number));
    // Its own 8-byte form has no format at offset 8, and a format that is not one integer
    // conversion prints as the default.
    EXPECT_EQ(8ul, SetBinary(number, Binary(number, 8).substr(2)));
    EXPECT_EQ("9", std::string(number.GetFormat()) + TextForm(number));
    EXPECT_TRUE(SetBinary(number, LE32(5) + "\x04xxx%s%n") == 9ul && TextForm(number) == "5");

    // From text at most 24 characters are read.
    EXPECT_EQ((Seq{5, 0, 12, 25, 3}),
              (Seq{number.SetData(Str("12ab"), 4, gText), number.SetData(Str("ab"), 2, gText),
                   number.GetValue(), number.SetData(Str("00000000000000000000000345"), 26, gText),
                   number.GetValue()}));

    number.SetModified(1);
    EXPECT_TRUE(number.Clear(1) == 1 && !number.IsModified() && TextForm(number) == "0");
}

std::string DoubleBytes(double value) {
    return std::string(reinterpret_cast<char*>(&value), 8);
}

TEST(NumberDataTest, FloatFormsAndCopies) {
    BCFloat number(2.5);
    BCFormat bitmap(BC_FORMAT_BITMAP);
    double value = 0;
    EXPECT_EQ(Nums(0, 12), Nums(number.GetData(&value, 8, bitmap) + number.GetLen(bitmap),
                                number.GetLen(gBinary)));
    EXPECT_EQ("12:" + DoubleBytes(2.5) + "\x03%lf", Binary(number, 32));
    EXPECT_TRUE(number.SetData(Str("3.75xyz"), 7, gText) == 8ul && number.GetValue() == 3.75);
    EXPECT_EQ(14ul, SetBinary(number, DoubleBytes(0.25) + "\x05%.2lf")); // the format in place
    EXPECT_EQ("0.25", TextForm(number));

    // Copies take their own copy of an owned format.
    BCFloat copy(1.0);
    copy = number;
    EXPECT_NE(number.GetFormat(), copy.GetFormat());
    { BCFloat owned(copy); }
    EXPECT_EQ("0.25", TextForm(copy));
}

TEST(NumberDataTest, RecordsAndCorruptRecords) {
    BCFloat real(0.5);
    const std::string record = RecordOf(real);
    EXPECT_EQ(LE32(154) + DoubleBytes(0.5) + LE32(3) + "%lf", record);
    real = BCFloat(9.0);
    EXPECT_TRUE(LoadFrom(real, record) && real.GetValue() == 0.5);

    BCInteger number(-3);
    EXPECT_EQ(LE32(153) + LE32(0xFFFFFFFD) + LE32(3) + "%ld", RecordOf(number));
    BCInteger loaded(1);
    std::istringstream in = InStream(LE32(153) + LE32(77) + LE32(3) + "%3d" + "tail");
    ASSERT_EQ(1, loaded.Load(in));
    EXPECT_EQ(" 77t", TextForm(loaded) + char(in.get()));

    for (const std::string& bytes : {
             LE32(153) + LE32(5) + LE32(3) + "%l",         // format cut short
             LE32(153) + LE32(5) + LE32(1000) + "%ld",     // format longer than the form allows
             LE32(153) + LE32(5) + LE32(0x7FFFFFFF) + "x", // absurd length
             LE32(154) + LE32(5) + LE32(3) + "%ld",        // another class's record
             LE32(153) + "\x05",                           // value cut short
         }) {
        EXPECT_TRUE(!LoadFrom(loaded, bytes) && TextForm(loaded) == " 77") << bytes;
    }
}

// The line queries worked out naively on a plain string.
struct LineModel {
    std::string s;
    static constexpr size_t npos = std::string::npos;

    unsigned long Len() const { return static_cast<unsigned long>(s.size()); }
    unsigned long LineStart(unsigned long at) const {
        size_t lf = at ? s.rfind('\n', at - 1) : npos;
        return lf == npos ? 0 : static_cast<unsigned long>(lf + 1);
    }
    unsigned long NextCR(unsigned long at, unsigned long to) const {
        size_t cr = s.find('\r', at);
        return cr == npos || cr >= to ? std::max(at, to) : static_cast<unsigned long>(cr);
    }
    // Offsets just after each line feed.
    std::vector<unsigned long> AfterLFs() const {
        std::vector<unsigned long> after;
        for (size_t i = 0; i < s.size(); ++i)
            if (s[i] == '\n')
                after.push_back(static_cast<unsigned long>(i + 1));
        return after;
    }
    unsigned long RelOfs(unsigned long at, long lines) const {
        at = std::min(at, Len());
        if (s.empty() || (at == 0 && lines < 1))
            return 0;
        unsigned long start = LineStart(at), column = at - start;
        for (; lines < 0 && start > 0; ++lines)
            start = LineStart(start >= 2 ? start - 2 : 0);
        for (; lines > 0 && start < Len(); --lines) {
            unsigned long cr = NextCR(start, Len());
            start = cr < Len() ? std::min(cr + 2, Len()) : Len();
        }
        return NextCR(start, std::min(start + column, Len()));
    }
};

// Inserts, overwrites and deletes of CR LF text at random places, large enough to cut and
// merge the stretches the line feeds are counted in, and to move the free bytes about.
TEST(TextTest, EditedTextAnswersLineQueriesAsItsBytesSay) {
    std::mt19937 random(20261124);
    auto below = [&](unsigned long n) { return n ? static_cast<unsigned long>(random() % n) : 0; };
    auto piece = [&](unsigned long size) {
        std::string bytes(size, 'x');
        for (char& c : bytes)
            c = "abcdefghijklmnop\r\n\r\n"[below(20)];
        return bytes;
    };
    LineModel model{piece(300000)};
    BCText text;
    text.SetText(model.s.data(), 0, model.Len(), 1);
    for (int step = 0; step < 400; ++step) {
        unsigned long at = below(model.Len() + 1);
        unsigned long size = 1 + (step % 50 == 7 ? below(300000) : below(step % 3 ? 3 : 2000));
        std::string bytes = piece(size);
        const int insert = step % 4 < 2;
        if (step % 4 < 3) {
            ASSERT_EQ(size, text.SetText(bytes.data(), at, size, insert));
            insert ? model.s.insert(at, bytes) : model.s.replace(at, size, bytes);
        } else if (size = std::min(size, model.Len() - at);
                   at < model.Len() && size < model.Len()) {
            ASSERT_EQ(size, text.DeleteText(at, size));
            model.s.erase(at, size);
        }
        if (step % 97 == 0) { // a pointer handed out makes the counts untrusted
            static_cast<char*>(text.GetDataPtr(gText))[below(model.Len())] = '\n';
            model.s = Contents(text);
        }
        std::vector<unsigned long> after = model.AfterLFs();
        unsigned long probe = step % 2 ? below(model.Len() + 2) : std::min(at, model.Len()),
                      line = 1 + below(after.size() + 3);
        long lines = static_cast<long>(below(9)) - 4;
        unsigned long from = below(model.Len()), to = from + below(400000);
        unsigned long inRange = static_cast<unsigned long>(
            std::count(model.s.begin() + from, model.s.begin() + std::min(to, model.Len()), '\n'));
        ASSERT_EQ(Nums(model.Len(), after.size(), inRange,
                       line <= after.size() ? after[line - 1] : kNone, model.RelOfs(probe, lines)),
                  Nums(text.GetLen(gText), text.GetNumLines(0, kNone), text.GetNumLines(from, to),
                       text.GetLineOfs(line), text.GetLineRelOfs(probe, lines)))
            << "step " << step << " at " << probe;
    }
    ASSERT_EQ(model.s, Contents(text));

    // A delete reaching past the end keeps only the bytes before it: no line lies beyond.
    unsigned long keep = model.Len() / 2;
    ASSERT_EQ(model.Len() - keep, text.DeleteText(keep + 1, model.Len() - keep));
    model.s.resize(keep);
    std::vector<unsigned long> after = model.AfterLFs();
    EXPECT_EQ(Nums(keep, after.size(), after.back(), kNone),
              Nums(text.GetLen(gText), text.GetNumLines(0, kNone), text.GetLineOfs(after.size()),
                   text.GetLineOfs(after.size() + 1)));

    // Borrowing turned on by hand while the free bytes lie inside: growing keeps the text.
    ASSERT_EQ(1u, text.SetText("y", 1, 1, 1));
    text.SetFlags(BC_FLAG_BORROW, 1);
    std::string more(text.GetBufLen(), 'z');
    ASSERT_EQ(more.size(), text.SetText(more.data(), 0, more.size(), 1));
    EXPECT_EQ(more + model.s.insert(1, "y"), Contents(text));
}

// Every match, naively: only a-z fold to A-Z; a whole word has no letter or digit beside it.
std::vector<unsigned long> NaiveMatches(const std::string& s, const std::string& p, bool matchCase,
                                        bool wholeWord) {
    auto fold = [&](std::string t) {
        for (char& c : t)
            c = !matchCase && c >= 'a' && c <= 'z' ? char(c - 32) : c;
        return t;
    };
    auto word = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; };
    const std::string hay = fold(s), needle = fold(p);
    std::vector<unsigned long> found;
    for (size_t at = hay.find(needle), end; at != std::string::npos; at = hay.find(needle, at + 1))
        if (end = at + p.size();
            !wholeWord || ((at == 0 || !word(s[at - 1])) && (end == s.size() || !word(s[end]))))
            found.push_back(static_cast<unsigned long>(at));
    return found;
}

// A borrowed text that ends where readable memory ends: the search reads nothing past it.
TEST(TextTest, SearchStopsAtTheLastByte) {
    SYSTEM_INFO info;
    GetSystemInfo(&info);
    char* pages = static_cast<char*>(
        VirtualAlloc(nullptr, 2 * info.dwPageSize, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    DWORD old = 0;
    ASSERT_TRUE(pages &&
                VirtualProtect(pages + info.dwPageSize, info.dwPageSize, PAGE_NOACCESS, &old));
    char* text = pages + info.dwPageSize - 100;
    std::memset(text, 'x', 99);
    text[99] = 0;
    BCText borrowed(text, BC_FLAG_BORROW);
    std::string found;
    for (const char* pattern : {"xy", "X", "xx", "x\xff"})
        for (int options = 0; options < 4; ++options)
            found += Nums(Find(borrowed, pattern, 40, options & 1, options & 2));
    const unsigned long n = kNone; // xy, X, xx, x\xff
    EXPECT_EQ(Nums(n, n, n, n, 40, n, n, n, 40, 40, n, n, n, n, n, n), found);
    VirtualFree(pages, 0, MEM_RELEASE);
}

// Patterns of 1 to 70 bytes taken from the text with their letters' case changed, looked for
// with the free bytes of the last edit at a random place, matches spanning them included.
TEST(TextTest, SearchFindsWhatANaiveScanFinds) {
    std::mt19937 random(1124);
    auto below = [&](size_t n) { return static_cast<size_t>(random() % n); };
    std::string s(3000, ' ');
    for (char& c : s)
        c = "aAbB1 [{@`\xe1\xc1"[below(12)];
    BCText text;
    text.SetText(s.data(), 0, static_cast<unsigned long>(s.size()), 1);
    for (int round = 0; round < 300; ++round) {
        size_t at = below(s.size());
        text.SetText("b", static_cast<unsigned long>(at), 1, 1); // moves the free bytes there
        s.insert(at, "b");
        size_t length = 1 + below(round % 10 ? 8 : 70);
        std::string p = s.substr(below(s.size() - length), length);
        for (char& c : p)
            c = below(2) && std::isalpha(static_cast<unsigned char>(c)) ? c ^ 0x20 : c;
        bool matchCase = round % 2, wholeWord = round % 3 == 0;
        std::vector<unsigned long> got;
        for (unsigned long from = 0; text.Search(p.c_str(), from, matchCase, wholeWord); ++from)
            got.push_back(from);
        ASSERT_EQ(NaiveMatches(s, p, matchCase, wholeWord), got)
            << "round " << round << " pattern " << p;
    }
}

} // namespace
