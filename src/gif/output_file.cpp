// Finding the place, the temporary file with the rights of what it replaces, and the one step.
#include "gif/output_file.h"

#include "gif/save_animation.h"
#include "win32/win32_files.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace framereel {

namespace {

constexpr int kMostLinks = 40; // as many as the system itself follows

bool RefuseFor(Refusal& refusal, const char* path, int error) {
  return Refuse(refusal, "cannot write %s: %s", path, strerror(error));
}

// The part of a path up to and including its last separator; 0 when it has none.
size_t DirectoryLength(const char* path) {
  const char* separator = strrchr(path, '/');
  return separator ? size_t(separator - path) + 1 : 0;
}

bool FindStandardOutput(OutputFile& output, Refusal& refusal) {
  const int flags = ::fcntl(STDOUT_FILENO, F_GETFL);
  if (flags < 0 || (flags & O_ACCMODE) == O_RDONLY) {
    return Refuse(refusal, "standard output cannot be written to; give a FILE or redirect it");
  }
  if (::isatty(STDOUT_FILENO)) {
    return Refuse(refusal, "standard output is a terminal; give a FILE or redirect it");
  }
  struct stat status;
  output.flush = ::fstat(STDOUT_FILENO, &status) == 0 && S_ISREG(status.st_mode);
  output.direct = true;
  output.file.handle = ::GetStdHandle(STD_OUTPUT_HANDLE);
  snprintf(output.path, sizeof output.path, "standard output");
  return true;
}

bool OpenDirectly(OutputFile& output, Refusal& refusal) {
  const HANDLE handle =
      ::CreateFileA(output.path, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return RefuseFor(refusal, output.path, errno);
  output.direct = true;
  output.file.handle = handle;
  return true;
}

// Follows links to a file that does not exist yet, which realpath will not do.
bool FollowToNothing(OutputFile& output, Refusal& refusal) {
  for (int links = 0; links < kMostLinks; ++links) {
    struct stat status;
    if (::lstat(output.path, &status) != 0) {
      return errno == ENOENT ? true : RefuseFor(refusal, output.path, errno);
    }
    if (!S_ISLNK(status.st_mode)) return true;
    char target[PATH_MAX];
    const ssize_t length = ::readlink(output.path, target, sizeof target);
    if (length < 0) return RefuseFor(refusal, output.path, errno);
    const size_t directory = target[0] == '/' ? 0 : DirectoryLength(output.path);
    if (directory + size_t(length) >= sizeof output.path) {
      return RefuseFor(refusal, output.path, ENAMETOOLONG);
    }
    memcpy(output.path + directory, target, size_t(length));
    output.path[directory + size_t(length)] = 0;
  }
  return RefuseFor(refusal, output.path, ELOOP);
}

bool FindExisting(OutputFile& output, const char* name, const struct stat& status, Refusal& refusal) {
  if (S_ISDIR(status.st_mode)) return Refuse(refusal, "%s is a directory; FILE names the file in it, too", name);
  if (!S_ISREG(status.st_mode)) return OpenDirectly(output, refusal);
  // Replacing needs no right to the file itself, but one that is protected is not meant to be replaced.
  const bool writable = ::faccessat(AT_FDCWD, name, W_OK, AT_EACCESS) == 0;
  if (!writable || !::realpath(name, output.path)) return RefuseFor(refusal, name, errno);
  output.replaces = true;
  output.mode = status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
  output.owner = status.st_uid;
  output.group = status.st_gid;
  return true;
}

// Readable by its owner alone until it has the rights of the file that it replaces. `path` is the new file's; for one
// without a name, its folder's.
bool CreateTemporary(OutputFile& output, const char* path, DWORD attributes) {
  const mode_t mask = output.replaces ? ::umask(S_IRWXG | S_IRWXO) : 0;
  const HANDLE handle = ::CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr);
  const int error = errno;
  if (output.replaces) ::umask(mask);
  errno = error;
  if (handle == INVALID_HANDLE_VALUE) return false;
  output.file.handle = handle;
  return true;
}

bool CreateNamed(OutputFile& output, const char* name) {
  return CreateTemporary(output, name, FILE_ATTRIBUTE_NORMAL);
}

bool GiveName(OutputFile& output, const char* name) {
  return ::CreateHardLinkA(name, output.temporary, nullptr);
}

// The first name beside the place that `take` gets, and does not find taken, becomes the temporary file's.
bool TakeTemporaryName(OutputFile& output, bool (*take)(OutputFile& output, const char* name)) {
  char name[PATH_MAX];
  for (int number = 0;; ++number) {
    const int length = snprintf(name, sizeof name, "%.*s.framereel-%ld-%d.part", int(DirectoryLength(output.path)),
                                output.path, long(::getpid()), number);
    if (length >= int(sizeof name)) {
      errno = ENAMETOOLONG;
      return false;
    }
    if (take(output, name)) {
      memcpy(output.temporary, name, size_t(length) + 1);
      return true;
    }
    if (errno != EEXIST) return false;
  }
}

bool CreateUnnamed(OutputFile& output) {
  constexpr size_t kLongestName = 48; // that it will have for a moment
  char folder[PATH_MAX];
  const int length = int(DirectoryLength(output.path));
  if (size_t(length) + kLongestName > sizeof folder) return false;
  snprintf(folder, sizeof folder, "%.*s", length ? length : 1, length ? output.path : ".");
  if (!CreateTemporary(output, folder, FILE_ATTRIBUTE_TEMPORARY)) return false;
  if (::GetFinalPathNameByHandleA(output.file.handle, output.temporary, sizeof output.temporary, 0)) return true;
  ::CloseHandle(output.file.handle); // it could never be given a name
  output.file.handle = nullptr;
  return false;
}

void TakeRights(const OutputFile& output) {
  mode_t mode = output.mode;
  const auto own = output.unnamed ? ::chown : ::lchown;
  if (own(output.temporary, output.owner, output.group) != 0) {
    const mode_t others = mode & S_IRWXO;
    mode = (mode & ~mode_t{S_IRWXG}) | (mode & others << 3);
  }
  ::chmod(output.temporary, mode);
}

// Closes the file. False with errno when the system reports that the bytes did not all arrive.
bool Close(OutputFile& output) {
  const bool standard = output.file.handle == ::GetStdHandle(STD_OUTPUT_HANDLE);
  const bool closed = standard || ::CloseHandle(output.file.handle);
  output.file.handle = nullptr;
  return closed;
}

// Brings the bytes to the disk, gives the file its temporary name, and closes it. False with errno.
bool FinishWriting(OutputFile& output) {
  if (output.flush && !::FlushFileBuffers(output.file.handle)) return false;
  if (output.unnamed) {
    if (!TakeTemporaryName(output, GiveName)) return false;
    output.unnamed = false;
  }
  return Close(output);
}

} // namespace

bool OutputFind(OutputFile& output, const char* name, Refusal& refusal) {
  output = {};
  if (strcmp(name, "-") == 0) return FindStandardOutput(output, refusal);
  const size_t length = strlen(name);
  if (length >= sizeof output.path) return RefuseFor(refusal, name, ENAMETOOLONG);
  memcpy(output.path, name, length + 1);
  struct stat status;
  if (::stat(name, &status) == 0) return FindExisting(output, name, status, refusal);
  if (errno != ENOENT) return RefuseFor(refusal, name, errno);
  if (!FollowToNothing(output, refusal)) return false;
  if (output.path[DirectoryLength(output.path)] == 0) {
    return Refuse(refusal, "%s is the name of a directory; FILE names the file in it, too", name);
  }
  return true;
}

bool OutputOpen(OutputFile& output, Refusal& refusal) {
  if (output.direct) return true;
  output.unnamed = CreateUnnamed(output);
  if (!output.unnamed && !TakeTemporaryName(output, CreateNamed)) {
    output.temporary[0] = 0;
    return RefuseFor(refusal, output.path, errno);
  }
  if (output.replaces) TakeRights(output);
  output.flush = true;
  return true;
}

bool OutputSave(OutputFile& output, GifWriter& gif, Refusal& refusal) {
  if (!SaveAnimationTo(gif, &output.file)) return RefuseFor(refusal, output.path, errno);
  if (!FinishWriting(output)) return RefuseFor(refusal, output.path, errno);
  if (output.direct) return true;
  if (!::MoveFileExA(output.temporary, output.path, output.keepsOlder ? 0 : MOVEFILE_REPLACE_EXISTING)) {
    return RefuseFor(refusal, output.path, errno);
  }
  output.temporary[0] = 0;
  return true;
}

void OutputDiscard(OutputFile& output) {
  if (output.file.handle) Close(output);
  if (output.temporary[0] && !output.unnamed) ::DeleteFileA(output.temporary);
  output.temporary[0] = 0;
}

bool SaveAnimationAs(GifWriter& gif, const char* path, Refusal& refusal) {
  struct stat status;
  if (::stat(path, &status) == 0 && !S_ISREG(status.st_mode)) return Refuse(refusal, "%s is not a file", path);
  OutputFile output;
  const bool saved =
      OutputFind(output, path, refusal) && OutputOpen(output, refusal) && OutputSave(output, gif, refusal);
  OutputDiscard(output);
  return saved;
}

} // namespace framereel
