// The grammar that text_format.cpp and text_scan.cpp share: how a format falls into literal bytes and directives,
// and how a directive's modifiers are read.
#pragma once

#include <cstdint>

namespace framereel {

// A reader of the modifier text of one directive.
struct Modifiers {
  const char* at;
  const char* end;
};

struct Directive {
  char letter;
  Modifiers modifiers;
  const char* behind; // the first byte of the format behind it
};

// The directive whose "%" stands at `percent`; a byte follows it. It ends with the next "%", which it takes, or
// with the format.
Directive ReadDirective(const char* percent);

// The next byte without taking it; 0 at the end.
char Peek(const Modifiers& modifiers);
// Takes the next byte if it is the one asked for.
bool Take(Modifiers& modifiers, char c);
// Takes a size letter, b, l or s, and answers it; 0 when there is none.
char TakeSizeLetter(Modifiers& modifiers);
// Takes a run of decimal digits, possibly none, and answers its value modulo 2^32.
uint32_t TakeNumber(Modifiers& modifiers);

bool IsDigit(char c);

// Copies a format to the scratch buffer for formats and answers the copy, so that an output may take the place of
// the format. Answers the format itself when there is no memory for that, which is only while the program ends.
const char* PrivateFormat(const char* format);

} // namespace framereel
