// Writing the line.
#include "core/refusal.h"

#include <cstdarg>
#include <cstdio>

namespace framereel {

bool Refuse(Refusal& refusal, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(refusal.text, sizeof refusal.text, format, arguments);
  va_end(arguments);
  for (char* c = refusal.text; *c; ++c) {
    const auto byte = static_cast<unsigned char>(*c);
    if (byte < 0x20 || byte == 0x7F) *c = '?';
  }
  return false;
}

} // namespace framereel
