// Reading a directive: its letter, size letter, padding and widths.
#include "core/directives.h"

#include <cstring>

#include "core/scratch_buffer.h"
#include "core/strings.h"

namespace framereel {

Directive ReadDirective(const char* percent) {
  const char* modifiers = percent + 2;
  const char* end = StrFindEnd(modifiers, '%');
  return {percent[1], {modifiers, end}, *end ? end + 1 : end};
}

char Peek(const Modifiers& modifiers) {
  return modifiers.at < modifiers.end ? *modifiers.at : '\0';
}

bool Take(Modifiers& modifiers, char c) {
  if (modifiers.at >= modifiers.end || *modifiers.at != c) return false;
  ++modifiers.at;
  return true;
}

char TakeSizeLetter(Modifiers& modifiers) {
  char letter = Peek(modifiers);
  if (letter != 'b' && letter != 'l' && letter != 's') return '\0';
  ++modifiers.at;
  return letter;
}

uint32_t TakeNumber(Modifiers& modifiers) {
  uint32_t value = 0;
  for (; IsDigit(Peek(modifiers)); ++modifiers.at) value = value * 10 + uint32_t(*modifiers.at - '0');
  return value;
}

bool IsDigit(char c) {
  return '0' <= c && c <= '9';
}

const char* PrivateFormat(const char* format) {
  size_t bytes = StrLength(format) + 1;
  void* copy = ScratchBuffer(kScratchFormat, bytes);
  return copy ? static_cast<const char*>(std::memcpy(copy, format, bytes)) : format;
}

} // namespace framereel
