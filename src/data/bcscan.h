#pragma once
// Byte scanning for the text object: vectorised where the processor allows, a plain loop
// elsewhere. The C runtime's memchr is not used: some runtimes check one byte at a time.
#include <cstddef>

namespace bcscan {

// Occurrences of `c` in the `n` bytes at `p`.
std::size_t Count(const unsigned char* p, std::size_t n, unsigned char c);
// First occurrence of `c`, or null. Reads never cross into a page past the one holding the
// occurrence, so a terminator that is known to be there may be looked for with a larger bound.
const unsigned char* Find(const unsigned char* p, std::size_t n, unsigned char c);
// Last occurrence of `c`, or null.
const unsigned char* FindLast(const unsigned char* p, std::size_t n, unsigned char c);
// The `nth` occurrence of `c` (counting from 1). When there are fewer, null, and `nth` is
// reduced by the number found, so that a search can go on in the next run of bytes.
const unsigned char* FindNth(const unsigned char* p, std::size_t n, unsigned char c,
                             std::size_t& nth);

// A pattern byte as the search sees it: a text byte x stands for it when (x | mask) == value.
// A letter whose case does not matter has mask 0x20 and its lower-case form as the value.
struct Folded {
    unsigned char value;
    unsigned char mask;
};
Folded Fold(unsigned char c, bool foldCase);
// First i < n at which p[i] stands for `first` and p[i + distance] for `last`, or null. Every
// p[i + distance] with i < n must be readable.
const unsigned char* FindPair(const unsigned char* p, std::size_t n, std::size_t distance,
                              Folded first, Folded last);
// Whether the `n` bytes at `a` and `b` are the same, a-z and A-Z taken as one with `foldCase`.
bool Equal(const unsigned char* a, const unsigned char* b, std::size_t n, bool foldCase);

} // namespace bcscan
