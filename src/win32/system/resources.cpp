// The program's resources. They are compiled in, so the module that they belong to does not matter.
#include "win32/win32_system.h"

#include <algorithm>
#include <cstring>

#include "resources/string_table.h"

int LoadStringA(HINSTANCE, UINT id, char* buffer, int bufferSize) {
  if (!buffer || bufferSize <= 0) return 0;
  const char* text = id <= UINT16_MAX ? framereel::FindStringResource(uint16_t(id)) : nullptr;
  size_t length = text ? std::min(std::strlen(text), size_t(bufferSize) - 1) : 0;
  if (length) std::memcpy(buffer, text, length);
  buffer[length] = 0;
  return int(length);
}
