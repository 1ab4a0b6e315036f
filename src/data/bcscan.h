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
// First byte that is `a` or `b`, or null.
const unsigned char* FindEither(const unsigned char* p, std::size_t n, unsigned char a,
                                unsigned char b);
// Last occurrence of `c`, or null.
const unsigned char* FindLast(const unsigned char* p, std::size_t n, unsigned char c);
// The `nth` occurrence of `c` (counting from 1). When there are fewer, null, and `nth` is
// reduced by the number found, so that a search can go on in the next run of bytes.
const unsigned char* FindNth(const unsigned char* p, std::size_t n, unsigned char c,
                             std::size_t& nth);

} // namespace bcscan
