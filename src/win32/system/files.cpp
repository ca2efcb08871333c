// Files, on the system's descriptors. A handle is the descriptor plus one, so that null is no file.
//
// Sharing is kept with advisory locks on regular files: it holds among programs that ask for it, this one among
// them.
#include "win32/win32_files.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

HANDLE HandleOf(int descriptor) {
  return reinterpret_cast<HANDLE>(intptr_t{descriptor} + 1);
}

// -1, which no call of the system accepts, for a handle that names no file.
int DescriptorOf(HANDLE file) {
  if (!file || file == INVALID_HANDLE_VALUE) return -1;
  return int(reinterpret_cast<intptr_t>(file) - 1);
}

int OpenFlags(DWORD access, DWORD disposition, DWORD attributes) {
  int flags = O_CLOEXEC | O_NOCTTY;
  if ((access & GENERIC_WRITE) == 0) {
    flags |= O_RDONLY | O_NONBLOCK; // a pipe that nobody writes to is an empty file, and not waited for
  } else {
    flags |= (access & GENERIC_READ) ? O_RDWR : O_WRONLY;
  }
  if (attributes & FILE_ATTRIBUTE_TEMPORARY) return flags | O_TMPFILE;
  return disposition == CREATE_NEW ? flags | O_CREAT | O_EXCL : flags;
}

// Devices and pipes are left out: two programs may well write to the null device.
bool LockForSharing(int descriptor, DWORD share) {
  struct stat facts;
  if (::fstat(descriptor, &facts) != 0) return false;
  if (!S_ISREG(facts.st_mode)) return true;
  int lock = (share & FILE_SHARE_READ) ? LOCK_SH : LOCK_EX;
  if (::flock(descriptor, lock | LOCK_NB) == 0 || errno != EWOULDBLOCK) return true;
  errno = EBUSY;
  return false;
}

} // namespace

HANDLE CreateFileA(const char* path, DWORD access, DWORD share, void*, DWORD disposition, DWORD attributes, HANDLE) {
  constexpr mode_t kNewFileMode = 0666; // the user's mask takes from it
  int descriptor = -1;
  do {
    descriptor = ::open(path, OpenFlags(access, disposition, attributes), kNewFileMode);
  } while (descriptor < 0 && errno == EINTR);
  if (descriptor < 0) return INVALID_HANDLE_VALUE;
  if (LockForSharing(descriptor, share)) return HandleOf(descriptor);
  int reason = errno;
  ::close(descriptor);
  errno = reason;
  return INVALID_HANDLE_VALUE;
}

HANDLE GetStdHandle(DWORD which) {
  return which == STD_OUTPUT_HANDLE ? HandleOf(STDOUT_FILENO) : INVALID_HANDLE_VALUE;
}

BOOL WriteFile(HANDLE file, const void* bytes, DWORD count, DWORD* written, void*) {
  int descriptor = DescriptorOf(file);
  const char* from = static_cast<const char*>(bytes);
  *written = 0;
  while (*written < count) {
    ssize_t went = ::write(descriptor, from + *written, count - *written);
    if (went < 0 && errno == EINTR) continue;
    if (went < 0) return FALSE;
    if (went == 0) {
      errno = EIO; // a device that takes nothing and says nothing
      return FALSE;
    }
    *written += DWORD(went);
  }
  return TRUE;
}

BOOL ReadFile(HANDLE file, void* bytes, DWORD count, DWORD* read, void*) {
  ssize_t came = 0;
  do {
    came = ::read(DescriptorOf(file), bytes, count);
  } while (came < 0 && errno == EINTR);
  *read = came > 0 ? DWORD(came) : 0;
  return came >= 0;
}

DWORD SetFilePointer(HANDLE file, LONG distance, LONG*, DWORD from) {
  off_t position = ::lseek(DescriptorOf(file), distance, from == FILE_BEGIN ? SEEK_SET : SEEK_CUR);
  if (position < 0) return INVALID_SET_FILE_POINTER;
  if (position >= off_t{INVALID_SET_FILE_POINTER}) {
    errno = EOVERFLOW;
    return INVALID_SET_FILE_POINTER;
  }
  return DWORD(position);
}

BOOL FlushFileBuffers(HANDLE file) {
  int result = 0;
  do {
    result = ::fsync(DescriptorOf(file));
  } while (result != 0 && errno == EINTR);
  // Pipes and terminals have no disk behind them, and nothing of theirs can be lost there.
  return result == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS;
}

BOOL CloseHandle(HANDLE file) {
  // An interrupted close has given the descriptor back all the same.
  return ::close(DescriptorOf(file)) == 0 || errno == EINTR;
}

DWORD GetFinalPathNameByHandleA(HANDLE file, char* path, DWORD size, DWORD) {
  const int length = std::snprintf(path, size, "/proc/self/fd/%d", DescriptorOf(file));
  struct stat facts;
  return DWORD(length) < size && ::stat(path, &facts) == 0 ? DWORD(length) : 0;
}

BOOL CreateHardLinkA(const char* name, const char* existing, void*) {
  return ::linkat(AT_FDCWD, existing, AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
}

BOOL DeleteFileA(const char* path) {
  return ::unlink(path) == 0;
}

BOOL CreateDirectoryA(const char* path, void*) {
  return ::mkdir(path, S_IRWXU) == 0;
}

DWORD GetCurrentDirectoryA(DWORD bufferSize, char* buffer) {
  std::vector<char> path(PATH_MAX);
  while (!::getcwd(path.data(), path.size())) {
    if (errno != ERANGE) return 0;
    path.resize(2 * path.size());
  }
  const size_t length = std::strlen(path.data());
  if (length >= bufferSize) return DWORD(length + 1);
  std::memcpy(buffer, path.data(), length + 1);
  return DWORD(length);
}

BOOL MoveFileExA(const char* from, const char* to, DWORD flags) {
  if (flags & MOVEFILE_REPLACE_EXISTING) return ::rename(from, to) == 0;
  if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0) return TRUE;
  // Not every file system knows how to; with a second name it comes to the same.
  return errno == EINVAL && ::link(from, to) == 0 && ::unlink(from) == 0;
}

HFILE OpenFile(const char* path, OFSTRUCT* record, UINT mode) {
  if (mode != OF_EXIST) return HFILE_ERROR;
  if (record) record->cBytes = sizeof(OFSTRUCT);
  struct stat facts;
  return ::stat(path, &facts) == 0 && !S_ISDIR(facts.st_mode) ? 0 : HFILE_ERROR;
}
