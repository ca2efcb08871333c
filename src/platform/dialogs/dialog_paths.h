// Paths as a user enters them in a file dialog, patterns of names, and where he may want to go.
#pragma once

#include <cstddef>

namespace framereel {

// Bytes with the zero behind them; longer ones the system does not take.
inline constexpr size_t kPathBytes = 4097;

// The path from the root on of what is entered in a directory: "." and ".." are worked out, "~" at the beginning is the
// home directory, and nothing but the root ends in "/". `directory` is such a path, `out` has kPathBytes. False, and
// nothing in `out`, when it is too long.
bool FullPath(const char* directory, const char* entered, char* out);
const char* NameInPath(const char* path); // behind the last "/"
bool IsDirectory(const char* path);       // links followed

// Absolute; "/" for a user who has none.
const char* HomeDirectory();

// "*" stands for any rest and "?" for any byte; letters count whatever their ASCII case. "*.*" is every name.
bool IsPattern(const char* text);
bool MatchesPattern(const char* pattern, const char* name);

// Calls `each` with the places that a user may want to go to, as a list is to show them, and their paths: "~" the home
// directory, "/" the root, and what is mounted for him, by its name or, where two have the same, by its path.
void ForEachDrive(void (*each)(void* argument, const char* shown, const char* path), void* argument);

} // namespace framereel
