// Paths as a user enters them in a file dialog, patterns of names, and where he may want to go.
#include "platform/dialogs/dialog_paths.h"

#include <cstdlib>
#include <cstring>
#include <pwd.h>
#include <unistd.h>

#include "core/memory.h"
#include "core/strings.h"
#include "win32/win32_files.h"

namespace framereel {
namespace {

// Of a path without "/" at its end, "" for the root, and one name more. False when it is too long.
bool AppendName(char* path, const char* name, size_t length) {
  const size_t before = StrLength(path);
  if (before + 1 + length >= kPathBytes) return false;
  path[before] = '/';
  StrCopyN(name, path + before + 1, length);
  return true;
}

void CutLastName(char* path) {
  const char* last = StrFindLast(path, '/');
  if (last) path[last - path] = 0;
}

// Goes on from the path by each name in turn.
bool AppendNames(char* path, const char* names) {
  while (*names) {
    const char* end = StrFindEnd(names, '/');
    const auto length = size_t(end - names);
    const bool isParent = length == 2 && ::strncmp(names, "..", 2) == 0;
    const bool isNothing = length == 0 || (length == 1 && *names == '.');
    if (isParent) CutLastName(path);
    if (!isParent && !isNothing && !AppendName(path, names, length)) return false;
    names = *end ? end + 1 : end;
  }
  return true;
}

bool BeginsAtHome(const char* entered) {
  return entered[0] == '~' && (entered[1] == 0 || entered[1] == '/');
}

} // namespace

bool FullPath(const char* directory, const char* entered, char* out) {
  const bool home = BeginsAtHome(entered);
  char path[kPathBytes] = "";
  const char* from = *entered == '/' ? "" : home ? HomeDirectory() : directory;
  if (!AppendNames(path, from) || !AppendNames(path, home ? entered + 1 : entered)) return false;
  StrCopy(*path ? path : "/", out);
  return true;
}

const char* NameInPath(const char* path) {
  const char* last = StrFindLast(path, '/');
  return last ? last + 1 : path;
}

bool IsDirectory(const char* path) {
  const DWORD attributes = ::GetFileAttributesA(path);
  return attributes != INVALID_FILE_ATTRIBUTES && attributes & FILE_ATTRIBUTE_DIRECTORY;
}

const char* HomeDirectory() {
  const char* home = ::getenv("HOME");
  if (home && *home == '/') return home;
  const passwd* user = ::getpwuid(::getuid());
  return user && user->pw_dir && *user->pw_dir == '/' ? user->pw_dir : "/";
}

bool IsPattern(const char* text) {
  return StrFind(text, '*') || StrFind(text, '?');
}

bool MatchesPattern(const char* pattern, const char* name) {
  if (StrEqual(pattern, "*.*")) return true;
  // Where the last "*" stands, and how much of the name it has been tried to stand for.
  const char *star = nullptr, *rest = nullptr;
  while (*name) {
    if (*pattern == '*') {
      star = pattern++;
      rest = name;
    } else if (*pattern && (*pattern == '?' || UpperCase(*pattern) == UpperCase(*name))) {
      ++pattern;
      ++name;
    } else if (star) {
      pattern = star + 1;
      name = ++rest;
    } else {
      return false;
    }
  }
  while (*pattern == '*') ++pattern;
  return *pattern == 0;
}

// ---- Drives ------------------------------------------------------------------------------------------------------

namespace {

bool SharesItsName(const char* drives, const char* path) {
  int alike = 0;
  for (const char* each = drives; *each; each += StrLength(each) + 1) {
    if (StrEqual(NameInPath(each), NameInPath(path))) ++alike;
  }
  return alike > 1;
}

} // namespace

void ForEachDrive(void (*each)(void* argument, const char* shown, const char* path), void* argument) {
  each(argument, "~", HomeDirectory());
  // Something may be mounted between the two calls.
  const DWORD size = ::GetLogicalDriveStringsA(0, nullptr) + kPathBytes;
  auto* drives = static_cast<char*>(MemAlloc(size));
  if (!drives) return;
  if (::GetLogicalDriveStringsA(size, drives) >= size) *drives = 0;
  for (const char* path = drives; *path; path += StrLength(path) + 1) {
    const bool whole = StrEqual(path, "/") || SharesItsName(drives, path);
    each(argument, whole ? path : NameInPath(path), path);
  }
  MemFree(drives);
}

} // namespace framereel
