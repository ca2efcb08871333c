// Plain operations on strings: 8-bit bytes, ended by a zero byte. Operations that copy take the source first.
//
// Strings that are built from values come from text_format.h; numbered texts from app_strings.h.
#pragma once

#include <cstddef>

namespace framereel {

size_t StrLength(const char* s);
bool StrEqual(const char* a, const char* b);
bool StrEqualNoCase(const char* a, const char* b); // blind to the case of the ASCII letters
char UpperCase(char c);                            // of an ASCII letter; any other byte as it stands

// The buffer of the copying operations is the caller's and large enough, terminator included.
void StrCopy(const char* source, char* out);
char* StrCopyEnd(const char* source, char* out); // answers the place of the terminator in `out`
// Copies n bytes of a source that has so many, and a terminator; answers the place of that.
char* StrCopyN(const char* source, char* out, size_t n);

// New strings, to be released with StrFree.
char* StrDup(const char* s);
char* StrDupN(const char* s, size_t n); // of the first n bytes; s has so many
char* StrConcat(const char* a, const char* b);
char* StrConcatList(const char* first, ...); // of all arguments up to a null pointer, `first` included
// A temporary string (memory.h) of the first n bytes; s has so many.
char* StrTempN(const char* s, size_t n);
// Null does nothing.
void StrFree(char* s);

// Places in `s`, or null when there is none. The zero byte counts as found at the terminator.
const char* StrFind(const char* s, char c);
const char* StrFindLast(const char* s, char c);
const char* StrFindEnd(const char* s, char c);    // the terminator instead of null
const char* StrFindNoCase(const char* s, char c); // blind to the case of the ASCII letters

} // namespace framereel
