// See system_failures.h. Takes the place of the C library's functions, in front of them.
#include "support/system_failures.h"

#include <cerrno>
#include <cstdarg>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

int left = -1; // of the calls that pass; below 0: all do
int reason;
const char* failed = "";
bool namedOnly = false;

bool Fails(const char* call) {
  if (left < 0 || left-- > 0) return false;
  failed = call;
  errno = reason;
  return true;
}

// The C library's own.
template <typename Function> Function* Next(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

namespace framereel {

void FailSystemCall(int which, int error) {
  left = which;
  reason = error;
  failed = "";
}

std::string FailedSystemCall() {
  return failed;
}

void RefuseUnnamedFiles(bool refuse) {
  namedOnly = refuse;
}

} // namespace framereel

extern "C" {

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = flags & (O_CREAT | O_TMPFILE) ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  if (namedOnly && (flags & O_TMPFILE) == O_TMPFILE) {
    errno = EOPNOTSUPP;
    return -1;
  }
  return Fails("open") ? -1 : Next<int(const char*, int, ...)>("open")(path, flags, mode);
}

ssize_t write(int descriptor, const void* bytes, size_t count) {
  if (Fails("write")) return -1;
  return Next<ssize_t(int, const void*, size_t)>("write")(descriptor, bytes, count);
}

int fsync(int descriptor) {
  return Fails("fsync") ? -1 : Next<int(int)>("fsync")(descriptor);
}

// One that fails has closed the descriptor all the same.
int close(int descriptor) {
  const bool fails = Fails("close");
  const int answer = Next<int(int)>("close")(descriptor);
  if (fails) errno = reason;
  return fails ? -1 : answer;
}

int chown(const char* path, uid_t owner, gid_t group) noexcept {
  return Fails("chown") ? -1 : Next<int(const char*, uid_t, gid_t)>("chown")(path, owner, group);
}

int lchown(const char* path, uid_t owner, gid_t group) noexcept {
  return Fails("lchown") ? -1 : Next<int(const char*, uid_t, gid_t)>("lchown")(path, owner, group);
}

int chmod(const char* path, mode_t mode) noexcept {
  return Fails("chmod") ? -1 : Next<int(const char*, mode_t)>("chmod")(path, mode);
}

int linkat(int from, const char* old, int to, const char* path, int flags) noexcept {
  if (Fails("linkat")) return -1;
  return Next<int(int, const char*, int, const char*, int)>("linkat")(from, old, to, path, flags);
}

int rename(const char* from, const char* to) noexcept {
  return Fails("rename") ? -1 : Next<int(const char*, const char*)>("rename")(from, to);
}

} // extern "C"
