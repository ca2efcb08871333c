// The language in which every message is written: a format with closed directives, and arguments for them.
//
// A directive is "%", a conversion letter, modifiers, and a closing "%" (the end of the text closes it too):
//
//   %d%  signed decimal     %u%  unsigned decimal    %x%  hexadecimal, capitals
//   %f%  decimal fraction   %s%  string, whole       %c%  one byte             %%%  a percent sign
//
// Any other letter gives nothing, and so does a single "%" at the end. Arguments: d, u, x, c and each `v` take one
// 32-bit word (int32_t or uint32_t; cast anything wider), f a double, s a zero-ended string.
//
// Modifiers of d, u, x: a size letter l, s or b, which changes nothing; then a width group:
//   [padding character, unless it is 1 to 9 or v][minimum][,maximum]
// where a width is decimal digits, or `v` for the next argument; both are kept modulo 256. The sign is written
// ahead of the padding and does not count. Digits above the maximum are dropped from the left. "%d05%" of -42 is
// "-00042".
//
// Modifiers of f: `+` for a sign in any case, or `s` for that by argument; a width group for the integer part; `.`;
// a width group for the number of decimals, 0 to 10 unless told otherwise: up to the last digit that is not 0 in the
// exact value, and then rounded. So 2.5 is "2.5" and 0.3, which has no exact double, "0.3000000000"; "%f1.2,2%" of
// 2.5 is "2.50". There is no exponent. Not-a-number is "NAN", infinity "inf".
//
// The same directives read text back: text_scan.h.
#pragma once

#include <cstdint>

namespace framereel {

// A new string, to be released with StrFree.
char* FormatNew(const char* format, ...);
// A temporary string (memory.h).
char* FormatTemp(const char* format, ...);
// Writes into a buffer, which the caller has made large enough, and answers it. The buffer may be that of the
// format, but not of a string argument.
char* FormatInto(char* buffer, const char* format, ...);

char* FormatInt(char* buffer, int32_t value); // at most 12 bytes with the terminator

} // namespace framereel
