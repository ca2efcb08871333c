// Writing the line.
#include "core/refusal.h"

#include <cstdarg>
#include <cstdio>

namespace framereel {
namespace {

// How many bytes the control character there has, in UTF-8; 0 when it is none.
int ControlLength(const char* text) {
  const auto byte = static_cast<unsigned char>(text[0]), next = static_cast<unsigned char>(byte ? text[1] : 0);
  if (byte == 0xC2 && next >= 0x80 && next < 0xA0) return 2;
  return byte < 0x20 || byte == 0x7F ? 1 : 0;
}

constexpr int kLongestForm = 4; // of a byte: \xff

// Answers the length of what is written, with a zero byte behind it.
int WriteByte(char byte, char* to) {
  if (byte == '\t' || byte == '\n') return snprintf(to, kLongestForm + 1, byte == '\t' ? "\\t" : "\\n");
  return snprintf(to, kLongestForm + 1, "\\x%02x", static_cast<unsigned char>(byte));
}

} // namespace

bool Refuse(Refusal& refusal, const char* format, ...) {
  char raw[sizeof refusal.text];
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(raw, sizeof raw, format, arguments);
  va_end(arguments);
  char* to = refusal.text;
  const char* const last = refusal.text + sizeof refusal.text - 1;
  for (const char* from = raw; *from;) {
    const int control = ControlLength(from);
    if (last - to < (control ? kLongestForm * control : 1)) break;
    for (int i = 0; i < control; ++i) to += WriteByte(*from++, to);
    if (control == 0) *to++ = *from++;
  }
  *to = 0;
  return false;
}

} // namespace framereel
