#pragma once
#include <iosfwd>
#include "norlib1api.h"

// Persistence primitives. Widths are fixed whatever the build, little-endian:
// word and double word 4 bytes, coordinate 2, byte 1, pointer a 4-byte presence mark,
// string a 4-byte length (0xFFFFFFFF for null) followed by its bytes. Each returns non-zero
// on success; a short or failed stream gives 0.
NORLIB1_API int BCLoadWord(std::istream& is, unsigned int& value);
NORLIB1_API int BCSaveWord(std::ostream& os, unsigned int value);
NORLIB1_API int BCLoadDblWord(std::istream& is, unsigned long& value);
NORLIB1_API int BCSaveDblWord(std::ostream& os, unsigned long value);
NORLIB1_API int BCLoadCoord(std::istream& is, short& value);
NORLIB1_API int BCSaveCoord(std::ostream& os, short value);
NORLIB1_API int BCLoadByte(std::istream& is, unsigned char& value);
NORLIB1_API int BCSaveByte(std::ostream& os, unsigned char value);
// Loading allocates the string with new[]; the caller owns it.
NORLIB1_API int BCLoadStringPtr(std::istream& is, char*& text);
NORLIB1_API int BCSaveStringPtr(std::ostream& os, const char* text);
// A pointer cannot travel between processes: only whether it was set does. Loading gives
// null or the non-null mark (void*)1.
NORLIB1_API int BCLoadPtr(std::istream& is, void*& pointer);
NORLIB1_API int BCSavePtr(std::ostream& os, const void* pointer);
NORLIB1_API int BCLoadFarBlk(std::istream& is, void* block, long length);
NORLIB1_API int BCSaveFarBlk(std::ostream& os, const void* block, long length);

// Neither the bad nor the fail bit is set.
NORLIB1_API int BCStreamOK(const std::ios& stream);
// Bytes left to read when the stream can tell, -1 when it cannot (not seekable).
NORLIB1_API long long BCStreamRemaining(std::istream& is);
