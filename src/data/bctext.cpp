#include "bctext.h"
#include "bcstream.h"
#include "bcmemory.h"

#include "bcids2.h"
#include "bcscan.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <new>
#include <ostream>
#include <vector>

// Line feeds counted per stretch of text, in text order, with running sums over the
// stretches in a binary indexed tree, so that finding the stretch of an offset or of a line
// and changing one stretch's counts take a number of steps that grows with the logarithm of
// the text's size. The stretches start at 4 KB; an insert grows the stretch it falls in,
// which is cut again when it gets four times as long; a delete shrinks the stretches it
// covers and drops the empty ones.
struct BCLineIndex {
    struct Stretch {
        unsigned long bytes;
        unsigned long lfs;
    };
    // Where a stretch lies: its number, and the bytes and line feeds before it.
    struct Place {
        std::size_t i;
        unsigned long start;
        unsigned long lines;
    };

    std::vector<Stretch> parts;
    // sums[k] holds the stretches (k - lowest bit of k, k], counted from 1.
    std::vector<Stretch> sums;
    bool valid = false;

    static std::size_t LowBit(std::size_t k) { return k & (~k + 1); }

    void MakeSums() {
        sums.assign(parts.size() + 1, Stretch{0, 0});
        for (std::size_t k = 1; k <= parts.size(); ++k) {
            sums[k].bytes += parts[k - 1].bytes;
            sums[k].lfs += parts[k - 1].lfs;
            std::size_t up = k + LowBit(k);
            if (up <= parts.size()) {
                sums[up].bytes += sums[k].bytes;
                sums[up].lfs += sums[k].lfs;
            }
        }
    }

    // Adds to stretch `i`; the counts wrap, so taking off is adding the negation.
    void Add(std::size_t i, unsigned long bytes, unsigned long lfs) {
        parts[i].bytes += bytes;
        parts[i].lfs += lfs;
        for (std::size_t k = i + 1; k < sums.size(); k += LowBit(k)) {
            sums[k].bytes += bytes;
            sums[k].lfs += lfs;
        }
    }

    // The first stretch for which `before(sum so far + its sum)` fails: the stretch that
    // holds the offset or the line sought, or one past the last.
    template <class Before> Place Find(Before before) const {
        std::size_t top = 1;
        while (top * 2 <= parts.size())
            top *= 2;
        Place place{0, 0, 0};
        for (std::size_t step = parts.empty() ? 0 : top; step; step /= 2) {
            std::size_t k = place.i + step;
            if (k <= parts.size() &&
                before(place.start + sums[k].bytes, place.lines + sums[k].lfs)) {
                place = {k, place.start + sums[k].bytes, place.lines + sums[k].lfs};
            }
        }
        return place;
    }
    Place ByOffset(unsigned long offset) const {
        return Find([offset](unsigned long bytes, unsigned long) { return bytes <= offset; });
    }
    Place ByLine(unsigned long nth) const {
        return Find([nth](unsigned long, unsigned long lfs) { return lfs < nth; });
    }
};

namespace {

constexpr unsigned long kNoLine = 0xFFFFFFFFul;
constexpr unsigned long kStretch = 4 * 1024;
constexpr unsigned long kLongest = 4 * kStretch;
// A line start is first looked for this far back, before the counts are consulted.
constexpr unsigned long kNearby = kStretch;

bool IsWordChar(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

unsigned long Min(unsigned long long a, unsigned long long b) {
    return static_cast<unsigned long>(a < b ? a : b);
}

unsigned long Offset(const unsigned char* at, const unsigned char* base, unsigned long from) {
    return from + static_cast<unsigned long>(at - base);
}

// The bytes with a CR put before every LF; null when there is no memory for them.
unsigned char* WithCR(const unsigned char* raw, unsigned long length, unsigned long lfs) {
    unsigned long long wide = static_cast<unsigned long long>(length) + lfs;
    unsigned char* block = wide <= 0x7FFFFFFFull
                               ? static_cast<unsigned char*>(BCAllocFarMem(static_cast<long>(wide)))
                               : nullptr;
    if (!block)
        return nullptr;
    unsigned char* out = block;
    for (const unsigned char *p = raw, *end = raw + length; p < end;) {
        const unsigned char* lf = bcscan::Find(p, end - p, '\n');
        const unsigned char* stop = lf ? lf : end;
        std::memcpy(out, p, stop - p);
        out += stop - p;
        if (lf) {
            *out++ = '\r';
            *out++ = '\n';
        }
        p = lf ? lf + 1 : end;
    }
    return block;
}

} // namespace

BCText::BCText(char* text, unsigned int flags)
    : BCMemoryData(text, text ? static_cast<unsigned long>(std::strlen(text) + 1) : 0, flags),
      opLines(new (std::nothrow) BCLineIndex) {
    SetObjectType(bcids::kTypeText);
}

BCText::BCText(const BCText& other)
    : BCMemoryData(other), opLines(new (std::nothrow) BCLineIndex) {}

BCText& BCText::operator=(const BCText& other) {
    BCMemoryData::operator=(other);
    return *this;
}

BCText::~BCText() {
    delete opLines;
}

int BCText::Load(std::istream& is) {
    return LoadBytes(is, 0, true);
}

int BCText::Save(std::ostream& os) {
    return BCSaveFarBlk(os, Contiguous(), static_cast<long>(Held()));
}

int BCText::LoadLines(std::istream& is, int& lfOnly) {
    if (!BCStreamOK(is))
        return 0;
    // Read beside the text, so that a failure leaves it as it was.
    BCText read(nullptr, 0);
    if (!read.LoadBytes(is, 0, true))
        return is.bad() ? 0 : -1;
    const unsigned char* raw = read.Contiguous();
    unsigned long length = read.Held();
    // A CR anywhere settles it without counting the line feeds.
    bool hasCR = bcscan::Find(raw, length, '\r') != nullptr;
    unsigned long lfs = hasCR ? 0 : static_cast<unsigned long>(bcscan::Count(raw, length, '\n'));
    lfOnly = lfs != 0;
    if (!lfOnly) {
        Adopt(read.lpData, length, read.dwBufLen);
        read.lpData = nullptr;
        return 1;
    }
    unsigned char* wide = WithCR(raw, length, lfs);
    if (!wide)
        return -1;
    Adopt(wide, length + lfs, length + lfs);
    return 1;
}

// Only a CR followed by an LF is dropped: a lone CR is written as it is.
int BCText::SaveLines(std::ostream& os, int lfOnly) {
    if (!lfOnly)
        return Save(os);
    const unsigned char* text = Contiguous();
    const unsigned char* end = text + Held();
    for (const unsigned char* p = text; p < end && os;) {
        const unsigned char* cr = bcscan::Find(p, end - p, '\r');
        bool pair = cr && cr + 1 < end && cr[1] == '\n';
        const unsigned char* stop = cr ? cr + (pair ? 0 : 1) : end;
        os.write(reinterpret_cast<const char*>(p), stop - p);
        p = cr ? cr + 1 : end;
    }
    return BCStreamOK(os);
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

unsigned long BCText::CountLF(unsigned long from, unsigned long to) const {
    Run first, second;
    Runs(from, to, first, second);
    return static_cast<unsigned long>(bcscan::Count(first.bytes, first.size, '\n') +
                                      bcscan::Count(second.bytes, second.size, '\n'));
}

unsigned long BCText::LastLF(unsigned long from, unsigned long to) const {
    Run first, second;
    Runs(from, to, first, second);
    if (const unsigned char* lf = bcscan::FindLast(second.bytes, second.size, '\n'))
        return Offset(lf, second.bytes, from + first.size);
    const unsigned char* lf = bcscan::FindLast(first.bytes, first.size, '\n');
    return lf ? Offset(lf, first.bytes, from) : kNoLine;
}

unsigned long BCText::NthLF(unsigned long from, unsigned long to, unsigned long& nth) const {
    Run first, second;
    Runs(from, to, first, second);
    std::size_t left = nth;
    const unsigned char* lf = bcscan::FindNth(first.bytes, first.size, '\n', left);
    unsigned long at = lf ? Offset(lf, first.bytes, from) : kNoLine;
    if (!lf && (lf = bcscan::FindNth(second.bytes, second.size, '\n', left)) != nullptr)
        at = Offset(lf, second.bytes, from + first.size);
    nth = static_cast<unsigned long>(left);
    return at;
}

unsigned long BCText::NextCR(unsigned long from, unsigned long to) const {
    if (from >= to)
        return to;
    Run first, second;
    Runs(from, to, first, second);
    if (const unsigned char* cr = bcscan::Find(first.bytes, first.size, '\r'))
        return Offset(cr, first.bytes, from);
    const unsigned char* cr = bcscan::Find(second.bytes, second.size, '\r');
    return cr ? Offset(cr, second.bytes, from + first.size) : to;
}

// A borrowed buffer can change behind the object's back: its counts are made anew.
bool BCText::Indexed() {
    if (!opLines)
        return false;
    if (GetFlags() & BC_FLAG_BORROW)
        opLines->valid = false;
    if (!opLines->valid)
        BuildIndex();
    return opLines->valid;
}

void BCText::BuildIndex() {
    try {
        opLines->parts.clear();
        unsigned long held = Held();
        for (unsigned long at = 0; at < held; at += kStretch) {
            unsigned long end = Min(static_cast<unsigned long long>(at) + kStretch, held);
            opLines->parts.push_back({end - at, CountLF(at, end)});
        }
        opLines->MakeSums();
        opLines->valid = true;
    } catch (const std::bad_alloc&) {
        opLines->valid = false;
    }
}

void BCText::SplitStretch(unsigned long i, unsigned long start) {
    std::vector<BCLineIndex::Stretch> pieces;
    unsigned long end = start + opLines->parts[i].bytes;
    for (unsigned long at = start; at < end; at += kStretch) {
        unsigned long stop = Min(static_cast<unsigned long long>(at) + kStretch, end);
        pieces.push_back({stop - at, CountLF(at, stop)});
    }
    auto& parts = opLines->parts;
    parts.erase(parts.begin() + i);
    parts.insert(parts.begin() + i, pieces.begin(), pieces.end());
    opLines->MakeSums();
}

void BCText::Replaced() {
    if (opLines)
        opLines->valid = false;
}

// Called while the bytes are still there, so their line feeds can be taken off.
void BCText::Removing(unsigned long offset, unsigned long count) {
    if (!opLines || !opLines->valid || count == 0)
        return;
    BCLineIndex& index = *opLines;
    BCLineIndex::Place place = index.ByOffset(offset);
    bool emptied = false;
    for (unsigned long at = offset, left = count, i = place.i; left; ++i) {
        if (i == index.parts.size()) {
            index.valid = false;
            return;
        }
        unsigned long end = place.start + index.parts[i].bytes;
        unsigned long take = std::min(left, end - at);
        index.Add(i, 0 - take, 0 - CountLF(at, at + take));
        emptied = emptied || index.parts[i].bytes == 0;
        left -= take;
        at = place.start = end;
    }
    if (!emptied)
        return;
    try {
        auto& parts = index.parts;
        parts.erase(
            std::remove_if(parts.begin(), parts.end(),
                           [](const BCLineIndex::Stretch& part) { return part.bytes == 0; }),
            parts.end());
        index.MakeSums();
    } catch (const std::bad_alloc&) {
        index.valid = false;
    }
}

// An insert at the boundary of two stretches goes to the later one; at the end, to the last.
void BCText::Inserted(unsigned long offset, unsigned long count) {
    if (!opLines || !opLines->valid || count == 0)
        return;
    BCLineIndex& index = *opLines;
    try {
        if (index.parts.empty()) {
            index.parts.push_back({0, 0});
            index.MakeSums();
        }
        BCLineIndex::Place place = index.ByOffset(offset);
        if (place.i == index.parts.size()) {
            place.i = index.parts.size() - 1;
            place.start -= index.parts[place.i].bytes;
        }
        index.Add(place.i, count, CountLF(offset, offset + count));
        if (index.parts[place.i].bytes > kLongest)
            SplitStretch(static_cast<unsigned long>(place.i), place.start);
    } catch (const std::bad_alloc&) {
        index.valid = false;
    }
}

// Counts the nearer end of the stretch that holds the offset.
unsigned long BCText::LinesBefore(unsigned long offset) {
    if (!Indexed())
        return CountLF(0, offset);
    BCLineIndex::Place place = opLines->ByOffset(offset);
    if (place.i == opLines->parts.size())
        return place.lines;
    const BCLineIndex::Stretch& part = opLines->parts[place.i];
    unsigned long end = place.start + part.bytes;
    return offset - place.start <= part.bytes / 2 ? place.lines + CountLF(place.start, offset)
                                                  : place.lines + part.lfs - CountLF(offset, end);
}

unsigned long BCText::AfterNthLF(unsigned long line) {
    unsigned long nth = line;
    unsigned long lf = kNoLine;
    if (!Indexed()) {
        lf = NthLF(0, Held(), nth);
    } else {
        BCLineIndex::Place place = opLines->ByLine(nth);
        if (place.i < opLines->parts.size()) {
            nth -= place.lines;
            lf = NthLF(place.start, place.start + opLines->parts[place.i].bytes, nth);
        }
    }
    return lf == kNoLine ? kNoLine : lf + 1;
}

// Lines are short as a rule: the bytes just before are searched first; beyond them the last
// line feed is found by its number.
unsigned long BCText::LineStart(unsigned long offset) {
    unsigned long near = offset > kNearby ? offset - kNearby : 0;
    unsigned long lf = LastLF(near, offset);
    if (lf != kNoLine)
        return lf + 1;
    unsigned long before = near ? LinesBefore(near) : 0;
    return before ? AfterNthLF(before) : 0;
}

bool BCText::MatchesAt(const char* pattern, unsigned long length, unsigned long at,
                       int matchCase) const {
    Run first, second;
    Runs(at, at + length, first, second);
    const unsigned char* bytes = reinterpret_cast<const unsigned char*>(pattern);
    return bcscan::Equal(first.bytes, bytes, first.size, !matchCase) &&
           bcscan::Equal(second.bytes, bytes + first.size, second.size, !matchCase);
}

// Nothing lies before the first byte or after the last one: the text's edges are word edges.
bool BCText::IsWholeWord(unsigned long at, unsigned long length) const {
    unsigned long end = at + length;
    if (at > 0 && IsWordChar(static_cast<char>(At(at - 1))))
        return false;
    return end >= Held() || !IsWordChar(static_cast<char>(At(end)));
}

// The text is searched where it lies, on both sides of the free bytes, so that a search
// after an edit costs no more than one before it: candidates inside either run are found
// by the pattern's first and last bytes together; the few that span the free bytes are
// tried one by one.
int BCText::Search(const char* pattern, unsigned long& position, int matchCase, int wholeWord) {
    unsigned long held = Held();
    unsigned long length = pattern ? static_cast<unsigned long>(std::strlen(pattern)) : 0;
    if (length == 0 || position >= held || length > held - position)
        return 0;
    const unsigned long last = held - length; // the last offset a match can start at
    bool fold = !matchCase;
    bcscan::Folded head = bcscan::Fold(static_cast<unsigned char>(pattern[0]), fold);
    bcscan::Folded tail = bcscan::Fold(static_cast<unsigned char>(pattern[length - 1]), fold);
    auto accept = [&](unsigned long at) {
        return MatchesAt(pattern, length, at, matchCase) && (!wholeWord || IsWholeWord(at, length));
    };
    unsigned long found = 0;
    // Starts [from, to) whose bytes all lie in `run`, which holds offset `base` on.
    auto inRun = [&](const Run& run, unsigned long base, unsigned long from, unsigned long to) {
        while (from < to) {
            const unsigned char* hit =
                bcscan::FindPair(run.bytes + (from - base), to - from, length - 1, head, tail);
            if (!hit)
                return false;
            from = Offset(hit, run.bytes, base);
            if (accept(from)) {
                found = from;
                return true;
            }
            ++from;
        }
        return false;
    };
    Run first, second;
    Runs(position, held, first, second);
    const unsigned long split = position + first.size;
    const unsigned long end = last + 1;
    // From `span` on, a match would reach past the first run.
    const unsigned long span = split + 1 > length ? split + 1 - length : 0;
    bool hit = inRun(first, position, position, std::min(span, end));
    for (unsigned long at = std::max(position, span); !hit && at < std::min(split, end); ++at) {
        hit = accept(at);
        found = at;
    }
    hit = hit || inRun(second, split, split, end);
    if (hit)
        position = found;
    return hit ? 1 : 0;
}

unsigned long BCText::GetLineOfs(unsigned long line) {
    if (line == 0)
        return 0;
    return Held() == 0 ? kNoLine : AfterNthLF(line);
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
    char at = offset < held ? static_cast<char>(At(offset)) : '\0';
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

// A short range is counted directly: cheaper than the stretch counts.
unsigned long BCText::GetNumLines(unsigned long from, unsigned long to) {
    unsigned long stop = Min(Held(), to);
    if (from >= stop)
        return 0;
    if (stop - from <= kStretch)
        return CountLF(from, stop);
    return LinesBefore(stop) - LinesBefore(from);
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
