// What is in a directory, and where something is mounted.
#include <dirent.h>
#include <sys/stat.h>

#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "win32/win32_files.h"

namespace {

bool IsDots(std::string_view name) {
  return name == "." || name == "..";
}

DWORD AttributesOfMode(mode_t mode) {
  if (S_ISDIR(mode)) return FILE_ATTRIBUTE_DIRECTORY;
  return S_ISREG(mode) ? FILE_ATTRIBUTE_NORMAL : FILE_ATTRIBUTE_SYSTEM;
}

// Directories of a hundred thousand files are read without a look at each, where the file system tells the kinds. A
// link that leads nowhere is a file: it can be written.
DWORD AttributesOf(DIR* directory, const dirent& entry) {
  if (entry.d_type == DT_REG) return FILE_ATTRIBUTE_NORMAL;
  if (entry.d_type == DT_DIR) return FILE_ATTRIBUTE_DIRECTORY;
  struct stat facts;
  if (::fstatat(::dirfd(directory), entry.d_name, &facts, 0) != 0) return FILE_ATTRIBUTE_NORMAL;
  return AttributesOfMode(facts.st_mode);
}

// In the table of mounts a blank, tab, line feed or backslash is a backslash and three octal digits.
std::string Unescaped(const std::string& text) {
  std::string plain;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool escaped = text[i] == '\\' && i + 3 < text.size();
    plain += escaped ? char(std::stoi(text.substr(i + 1, 3), nullptr, 8)) : text[i];
    if (escaped) i += 3;
  }
  return plain;
}

bool IsOfUser(const std::string& place) {
  for (const char* folder : {"/media/", "/run/media/", "/mnt/"}) {
    if (place.starts_with(folder)) return true;
  }
  return place == "/mnt";
}

// proc_pid_mountinfo(5): the fifth field of a line is the place.
std::string MountedPlaces() {
  std::string places("/\0", 2);
  std::ifstream table("/proc/self/mountinfo");
  for (std::string line; std::getline(table, line);) {
    std::istringstream fields(line);
    std::string place;
    for (int i = 0; i < 5; ++i) fields >> place;
    place = Unescaped(place);
    if (IsOfUser(place)) places += place + '\0';
  }
  return places;
}

} // namespace

DWORD GetFileAttributesA(const char* path) {
  struct stat facts;
  return ::stat(path, &facts) == 0 ? AttributesOfMode(facts.st_mode) : INVALID_FILE_ATTRIBUTES;
}

HANDLE FindFirstFileA(const char* pattern, WIN32_FIND_DATAA* found) {
  std::string path = pattern;
  path.resize(path.find_last_of('/') + 1);
  DIR* directory = ::opendir(path.c_str());
  if (directory && ::FindNextFileA(directory, found)) return directory;
  if (directory) ::closedir(directory);
  return INVALID_HANDLE_VALUE;
}

BOOL FindNextFileA(HANDLE search, WIN32_FIND_DATAA* found) {
  auto* directory = static_cast<DIR*>(search);
  const dirent* entry = ::readdir(directory);
  while (entry && std::strlen(entry->d_name) >= sizeof found->cFileName) entry = ::readdir(directory);
  if (!entry) return FALSE;
  std::strcpy(found->cFileName, entry->d_name);
  found->dwFileAttributes = AttributesOf(directory, *entry);
  if (entry->d_name[0] == '.' && !IsDots(entry->d_name)) found->dwFileAttributes |= FILE_ATTRIBUTE_HIDDEN;
  return TRUE;
}

BOOL FindClose(HANDLE search) {
  return search && search != INVALID_HANDLE_VALUE && ::closedir(static_cast<DIR*>(search)) == 0;
}

DWORD GetLogicalDriveStringsA(DWORD bufferSize, char* buffer) {
  const std::string places = MountedPlaces();
  if (places.size() + 1 > bufferSize) return DWORD(places.size() + 1);
  std::memcpy(buffer, places.c_str(), places.size() + 1);
  return DWORD(places.size());
}
