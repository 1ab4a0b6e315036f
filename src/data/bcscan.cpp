#include "bcscan.h"

#include <cstdint>

#if defined(__i386__) || defined(__x86_64__)
#define BC_SCAN_SSE2 1
#include <cpuid.h>
#include <emmintrin.h>
// Compiled for SSE2 even where the target's baseline lacks it; picked only when the
// processor has it.
#define BC_SSE2 __attribute__((target("sse2")))
#endif

namespace {

// Bytes counted before the partial sums are folded: a byte counter holds 255 blocks.
constexpr std::size_t kFoldBlocks = 255;
// Run that FindNth counts whole before looking for the occurrence inside it.
constexpr std::size_t kNthStride = 4096;

std::size_t CountPlain(const unsigned char* p, std::size_t n, unsigned char c) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < n; ++i)
        count += p[i] == c;
    return count;
}

const unsigned char* FindPlain(const unsigned char* p, std::size_t n, unsigned char c) {
    for (std::size_t i = 0; i < n; ++i) {
        if (p[i] == c)
            return p + i;
    }
    return nullptr;
}

const unsigned char* FindLastPlain(const unsigned char* p, std::size_t n, unsigned char c) {
    while (n > 0) {
        if (p[--n] == c)
            return p + n;
    }
    return nullptr;
}

const unsigned char* FindNthPlain(const unsigned char* p, std::size_t n, unsigned char c,
                                  std::size_t& nth) {
    for (std::size_t i = 0; i < n; ++i) {
        if (p[i] == c && --nth == 0)
            return p + i;
    }
    return nullptr;
}

bool Stands(unsigned char x, bcscan::Folded f) {
    return (x | f.mask) == f.value;
}

unsigned char Upper(unsigned char c) {
    return c >= 'a' && c <= 'z' ? static_cast<unsigned char>(c - 'a' + 'A') : c;
}

const unsigned char* FindPairPlain(const unsigned char* p, std::size_t n, std::size_t distance,
                                   bcscan::Folded first, bcscan::Folded last) {
    for (std::size_t i = 0; i < n; ++i) {
        if (Stands(p[i], first) && Stands(p[i + distance], last))
            return p + i;
    }
    return nullptr;
}

bool EqualPlain(const unsigned char* a, const unsigned char* b, std::size_t n, bool foldCase) {
    for (std::size_t i = 0; i < n; ++i) {
        if (a[i] != b[i] && (!foldCase || Upper(a[i]) != Upper(b[i])))
            return false;
    }
    return true;
}

struct Kernels {
    std::size_t (*count)(const unsigned char*, std::size_t, unsigned char);
    const unsigned char* (*find)(const unsigned char*, std::size_t, unsigned char);
    const unsigned char* (*findLast)(const unsigned char*, std::size_t, unsigned char);
    const unsigned char* (*findNth)(const unsigned char*, std::size_t, unsigned char, std::size_t&);
    const unsigned char* (*findPair)(const unsigned char*, std::size_t, std::size_t, bcscan::Folded,
                                     bcscan::Folded);
    bool (*equal)(const unsigned char*, const unsigned char*, std::size_t, bool);
};

const Kernels kPlain = {CountPlain,   FindPlain,     FindLastPlain,
                        FindNthPlain, FindPairPlain, EqualPlain};

#ifdef BC_SCAN_SSE2

BC_SSE2 inline __m128i Load(const unsigned char* p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

BC_SSE2 inline unsigned int Matches(const unsigned char* p, __m128i needle) {
    return static_cast<unsigned int>(_mm_movemask_epi8(_mm_cmpeq_epi8(Load(p), needle)));
}

BC_SSE2 inline __m128i Needle(unsigned char c) {
    return _mm_set1_epi8(static_cast<char>(c));
}

// Each match adds one to a byte lane; the lanes are summed before they can overflow.
BC_SSE2 std::size_t CountSse2(const unsigned char* p, std::size_t n, unsigned char c) {
    const __m128i needle = Needle(c);
    std::size_t total = 0;
    std::size_t i = 0;
    while (n - i >= 16) {
        std::size_t blocks = (n - i) / 16 < kFoldBlocks ? (n - i) / 16 : kFoldBlocks;
        __m128i lanes = _mm_setzero_si128();
        for (std::size_t b = 0; b < blocks; ++b, i += 16)
            lanes = _mm_sub_epi8(lanes, _mm_cmpeq_epi8(Load(p + i), needle));
        __m128i sums = _mm_sad_epu8(lanes, _mm_setzero_si128());
        total += static_cast<std::size_t>(_mm_cvtsi128_si32(sums) + _mm_extract_epi16(sums, 4));
    }
    return total + CountPlain(p + i, n - i, c);
}

// Reads whole aligned groups after a plain head: an aligned group never crosses a page, so a
// terminator may be looked for with a bound beyond the buffer.
BC_SSE2 const unsigned char* FindSse2(const unsigned char* p, std::size_t n, unsigned char c) {
    std::size_t head = (16 - (reinterpret_cast<std::uintptr_t>(p) & 15u)) & 15u;
    if (head > n)
        head = n;
    if (const unsigned char* hit = FindPlain(p, head, c))
        return hit;
    const __m128i needle = Needle(c);
    std::size_t i = head;
    for (; n - i >= 16; i += 16) {
        __m128i group = _mm_load_si128(reinterpret_cast<const __m128i*>(p + i));
        if (unsigned int mask =
                static_cast<unsigned int>(_mm_movemask_epi8(_mm_cmpeq_epi8(group, needle))))
            return p + i + __builtin_ctz(mask);
    }
    return FindPlain(p + i, n - i, c);
}

BC_SSE2 const unsigned char* FindLastSse2(const unsigned char* p, std::size_t n, unsigned char c) {
    const __m128i needle = Needle(c);
    for (; n >= 16; n -= 16) {
        if (unsigned int mask = Matches(p + n - 16, needle))
            return p + n - 16 + (31 - __builtin_clz(mask));
    }
    return FindLastPlain(p, n, c);
}

// Whole strides are counted and skipped; the stride holding the occurrence is searched a
// block at a time.
BC_SSE2 const unsigned char* FindNthSse2(const unsigned char* p, std::size_t n, unsigned char c,
                                         std::size_t& nth) {
    std::size_t i = 0;
    for (; n - i >= kNthStride; i += kNthStride) {
        std::size_t found = CountSse2(p + i, kNthStride, c);
        if (found >= nth)
            break;
        nth -= found;
    }
    const __m128i needle = Needle(c);
    for (; n - i >= 16; i += 16) {
        unsigned int mask = Matches(p + i, needle);
        std::size_t found = static_cast<std::size_t>(__builtin_popcount(mask));
        if (found < nth) {
            nth -= found;
            continue;
        }
        for (; nth > 1; --nth)
            mask &= mask - 1;
        nth = 0;
        return p + i + __builtin_ctz(mask);
    }
    return FindNthPlain(p + i, n - i, c, nth);
}

BC_SSE2 inline unsigned int PairMask(const unsigned char* p, std::size_t distance, __m128i fv,
                                     __m128i fm, __m128i lv, __m128i lm) {
    __m128i a = _mm_cmpeq_epi8(_mm_or_si128(Load(p), fm), fv);
    __m128i b = _mm_cmpeq_epi8(_mm_or_si128(Load(p + distance), lm), lv);
    return static_cast<unsigned int>(_mm_movemask_epi8(_mm_and_si128(a, b)));
}

// Two groups a round: a hit is rare, and the test of both masks at once keeps the loop short.
BC_SSE2 const unsigned char* FindPairSse2(const unsigned char* p, std::size_t n,
                                          std::size_t distance, bcscan::Folded first,
                                          bcscan::Folded last) {
    const __m128i fv = Needle(first.value), fm = Needle(first.mask);
    const __m128i lv = Needle(last.value), lm = Needle(last.mask);
    std::size_t i = 0;
    for (; n - i >= 32; i += 32) {
        unsigned int low = PairMask(p + i, distance, fv, fm, lv, lm);
        unsigned int high = PairMask(p + i + 16, distance, fv, fm, lv, lm);
        if (low | high)
            return p + i + __builtin_ctz(low | (high << 16));
    }
    return FindPairPlain(p + i, n - i, distance, first, last);
}

// a-z lowered by 0x20: the bytes are shifted so that the letters fall at the bottom of the
// signed range, where one comparison finds them.
BC_SSE2 inline __m128i Upper16(__m128i x) {
    __m128i shifted = _mm_add_epi8(x, _mm_set1_epi8(static_cast<char>(128 - 'a')));
    __m128i letter = _mm_cmplt_epi8(shifted, _mm_set1_epi8(static_cast<char>(-128 + 26)));
    return _mm_sub_epi8(x, _mm_and_si128(letter, _mm_set1_epi8(0x20)));
}

BC_SSE2 bool EqualSse2(const unsigned char* a, const unsigned char* b, std::size_t n,
                       bool foldCase) {
    std::size_t i = 0;
    for (; n - i >= 16; i += 16) {
        __m128i x = Load(a + i), y = Load(b + i);
        if (foldCase) {
            x = Upper16(x);
            y = Upper16(y);
        }
        if (_mm_movemask_epi8(_mm_cmpeq_epi8(x, y)) != 0xFFFF)
            return false;
    }
    return EqualPlain(a + i, b + i, n - i, foldCase);
}

const Kernels kSse2 = {CountSse2, FindSse2, FindLastSse2, FindNthSse2, FindPairSse2, EqualSse2};

bool HasSse2() {
#ifdef __x86_64__
    return true;
#else
    unsigned int eax = 0, ebx = 0, ecx = 0, edx = 0;
    return __get_cpuid(1, &eax, &ebx, &ecx, &edx) && (edx & bit_SSE2);
#endif
}

const Kernels& Pick() {
    static const Kernels& chosen = HasSse2() ? kSse2 : kPlain;
    return chosen;
}

#else

const Kernels& Pick() {
    return kPlain;
}

#endif

} // namespace

namespace bcscan {

std::size_t Count(const unsigned char* p, std::size_t n, unsigned char c) {
    return p ? Pick().count(p, n, c) : 0;
}

const unsigned char* Find(const unsigned char* p, std::size_t n, unsigned char c) {
    return p ? Pick().find(p, n, c) : nullptr;
}

const unsigned char* FindLast(const unsigned char* p, std::size_t n, unsigned char c) {
    return p ? Pick().findLast(p, n, c) : nullptr;
}

const unsigned char* FindNth(const unsigned char* p, std::size_t n, unsigned char c,
                             std::size_t& nth) {
    if (nth == 0)
        return nullptr;
    return p ? Pick().findNth(p, n, c, nth) : nullptr;
}

Folded Fold(unsigned char c, bool foldCase) {
    unsigned char lower = static_cast<unsigned char>(c | 0x20);
    if (foldCase && lower >= 'a' && lower <= 'z')
        return {lower, 0x20};
    return {c, 0};
}

const unsigned char* FindPair(const unsigned char* p, std::size_t n, std::size_t distance,
                              Folded first, Folded last) {
    return p && n ? Pick().findPair(p, n, distance, first, last) : nullptr;
}

bool Equal(const unsigned char* a, const unsigned char* b, std::size_t n, bool foldCase) {
    return n == 0 || (a && b && Pick().equal(a, b, n, foldCase));
}

} // namespace bcscan
