// Byte by byte; what is new comes from MemAlloc.
#include "core/strings.h"

#include <cstdarg>
#include <cstring>

#include "core/memory.h"
#include "core/temporary_blocks.h"

namespace framereel {

size_t StrLength(const char* s) {
  return std::strlen(s);
}

bool StrEqual(const char* a, const char* b) {
  return std::strcmp(a, b) == 0;
}

char UpperCase(char c) {
  return 'a' <= c && c <= 'z' ? char(c - 'a' + 'A') : c;
}

bool StrEqualNoCase(const char* a, const char* b) {
  while (*a && UpperCase(*a) == UpperCase(*b)) {
    ++a;
    ++b;
  }
  return UpperCase(*a) == UpperCase(*b);
}

void StrCopy(const char* source, char* out) {
  StrCopyEnd(source, out);
}

char* StrCopyEnd(const char* source, char* out) {
  return StrCopyN(source, out, StrLength(source));
}

char* StrCopyN(const char* source, char* out, size_t n) {
  std::memmove(out, source, n);
  out[n] = 0;
  return out + n;
}

char* StrDup(const char* s) {
  return StrDupN(s, StrLength(s));
}

char* StrDupN(const char* s, size_t n) {
  auto* copy = static_cast<char*>(MemAlloc(n + 1));
  if (copy) StrCopyN(s, copy, n);
  return copy;
}

char* StrTempN(const char* s, size_t n) {
  return static_cast<char*>(TempAdopt(StrDupN(s, n)));
}

void StrFree(char* s) {
  MemFree(s);
}

char* StrConcat(const char* a, const char* b) {
  return StrConcatList(a, b, static_cast<const char*>(nullptr));
}

char* StrConcatList(const char* first, ...) {
  va_list parts, again;
  va_start(parts, first);
  va_copy(again, parts);
  size_t length = 0;
  for (const char* part = first; part; part = va_arg(parts, const char*)) length += StrLength(part);
  auto* whole = static_cast<char*>(MemAlloc(length + 1));
  if (whole) {
    char* end = whole;
    *end = 0;
    for (const char* part = first; part; part = va_arg(again, const char*)) end = StrCopyEnd(part, end);
  }
  va_end(again);
  va_end(parts);
  return whole;
}

const char* StrFind(const char* s, char c) {
  return std::strchr(s, c);
}

const char* StrFindLast(const char* s, char c) {
  return std::strrchr(s, c);
}

const char* StrFindEnd(const char* s, char c) {
  const char* found = StrFind(s, c);
  return found ? found : s + StrLength(s);
}

const char* StrFindNoCase(const char* s, char c) {
  char wanted = UpperCase(c);
  while (*s && UpperCase(*s) != wanted) ++s;
  return UpperCase(*s) == wanted ? s : nullptr;
}

} // namespace framereel
