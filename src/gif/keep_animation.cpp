// The two folders, and names that are free in them.
#include "gif/keep_animation.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/user_folders.h"
#include "gif/save_animation.h"
#include "win32/win32_files.h"

namespace framereel {
namespace {

constexpr int kMostNumbers = 10000, kNumberLength = 5; // with the hyphen
constexpr int kExtensionMax = 40;                      // bytes; what is longer is none

// Answers the length of the folder's path, which ends in a "/"; 0 when there is none.
int TemporaryFolder(char (&path)[PATH_MAX]) {
  const char* folder = AbsolutePathIn("TMPDIR");
  const int length = ::snprintf(path, sizeof path, "%s/", folder ? folder : "/tmp");
  return length < PATH_MAX ? length : 0;
}

// A new file of the name in the folder whose path is there already.
HANDLE CreateNumbered(char (&path)[PATH_MAX], int folder, const char* name) {
  const char* dot = ::strrchr(name, '.');
  const char* extension = dot && dot != name && ::strlen(dot) <= kExtensionMax ? dot : "";
  const int stem =
      std::min(int(::strlen(name) - ::strlen(extension)), NAME_MAX - kNumberLength - int(::strlen(extension)));
  HANDLE file = INVALID_HANDLE_VALUE;
  errno = EEXIST;
  for (int number = 1; number < kMostNumbers && file == INVALID_HANDLE_VALUE && errno == EEXIST; ++number) {
    char counted[16] = "";
    if (number > 1) ::snprintf(counted, sizeof counted, "-%d", number);
    const size_t room = sizeof path - size_t(folder);
    const int length = ::snprintf(path + folder, room, "%.*s%s%s", stem, name, counted, extension);
    if (size_t(length) >= room) {
      errno = ENAMETOOLONG;
      return INVALID_HANDLE_VALUE;
    }
    file = ::CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  return file;
}

bool KeepIn(GifWriter& gif, char (&path)[PATH_MAX], int folder, const char* name) {
  if (folder == 0) return false;
  const mode_t mask = ::umask(S_IRWXG | S_IRWXO);
  File file = {nullptr, CreateNumbered(path, folder, name)};
  ::umask(mask);
  if (file.handle == INVALID_HANDLE_VALUE) return false;
  bool kept = SaveAnimationTo(gif, &file) && ::FlushFileBuffers(file.handle);
  int error = errno;
  if (!::CloseHandle(file.handle) && kept) {
    kept = false;
    error = errno;
  }
  if (!kept) ::DeleteFileA(path);
  errno = error;
  return kept;
}

bool IsOwnFile(const char* path) {
  struct stat status;
  return ::lstat(path, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
}

// In the folder whose path is there already.
bool FindIn(char (&path)[PATH_MAX], int folder, const char* prefix) {
  if (folder == 0) return false;
  DIR* entries = ::opendir(path);
  if (!entries) return false;
  bool found = false;
  while (const dirent* entry = found ? nullptr : ::readdir(entries)) {
    if (::strncmp(entry->d_name, prefix, ::strlen(prefix)) != 0) continue;
    const size_t room = sizeof path - size_t(folder);
    found = size_t(::snprintf(path + folder, room, "%s", entry->d_name)) < room && IsOwnFile(path);
  }
  ::closedir(entries);
  return found;
}

} // namespace

bool KeepAnimation(GifWriter& gif, const char* name, char (&path)[PATH_MAX]) {
  const char* separator = ::strrchr(name, '/');
  if (separator) name = separator + 1;
  if (!*name) name = "animation.gif";
  return KeepIn(gif, path, MakeUserFolder(kDataFolder, path), name) || KeepIn(gif, path, TemporaryFolder(path), name);
}

bool FindKept(const char* prefix, char (&path)[PATH_MAX]) {
  return FindIn(path, FindUserFolder(kDataFolder, path), prefix) || FindIn(path, TemporaryFolder(path), prefix);
}

bool ReadKept(AnimationStream& stream, const char* path) {
  File file = {nullptr, ::CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr)};
  if (file.handle == INVALID_HANDLE_VALUE) return false;
  const uint32_t before = stream.streamSize;
  char bytes[1 << 16];
  uint32_t count = sizeof bytes;
  bool read;
  while ((read = FileRead(&file, &count, bytes)) && count > 0) {
    StreamAppend(stream, count, bytes);
    count = sizeof bytes;
  }
  const int error = errno;
  ::CloseHandle(file.handle);
  errno = error;
  if (read && stream.streamSize > before) StreamTruncate(stream, stream.streamSize - 1);
  return read;
}

} // namespace framereel
