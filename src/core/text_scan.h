// Reading text back by the directives of text_format.h.
//
// A literal byte of the format must stand in the input as it is. A directive reads a field and stores it at the
// next output address:
//
//   %d%  signed decimal     %u%  unsigned decimal, without a sign   %x%  hexadecimal, no prefix, sign allowed
//   %f%  decimal fraction   %s%  up to the next space               %c%  one byte
//
// Modifiers of d, u, x, f: a size letter (b 8 bits, s 16, l or none 32; f always a double); then any of
//   l and digits  at most so many digits are read (0 or none: 10; no effect on f)
//   s and a byte  skip all copies of that byte first
//   w             read, but store nothing and take no address
//   x             do not skip spaces first
// so "%dll5%" reads at most five digits. Numbers of more than 32 bits keep their low 32. A number is stored even
// when no digit was there, as 0. f succeeds if the input moved at all, spaces included.
//
// Modifiers of s: `a` stores a new string in a char*, `t` a temporary one; without either the address is a buffer
// large enough for the field. `d` and a byte set another delimiter than the space. s, w, x as above. An empty field
// fails and stores nothing. %c% takes no modifiers and skips no spaces.
#pragma once

#include <cstdint>

namespace framereel {

// Whether the whole format was used; the input need not be. What was stored ahead of a failure stays stored.
bool ScanText(const char* input, const char* format, ...);

// The number at the beginning of the input, behind spaces; 0 when there is none.
int32_t ScanInt(const char* input);

} // namespace framereel
