// See allocations.h. Takes the place of the C library's allocator and of the language's operators, in front of them.
#include "support/allocations.h"

#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <new>
#include <sys/wait.h>
#include <unistd.h>

namespace {

size_t calls;
int64_t passes = INT64_MAX, fails; // that are left of each
void (*judgeOfChildren)(int status);
bool isChild;

void FailInChild() {
  void (*const judge)(int) = judgeOfChildren;
  judgeOfChildren = nullptr;
  const pid_t child = ::fork();
  if (child == 0) {
    isChild = true;
    ::alarm(60); // one that goes round in circles ends badly
    framereel::FailAllocations(0, calls % 2 ? 2 : INT64_MAX);
    return;
  }
  int status = -1;
  ::waitpid(child, &status, 0);
  judge(status);
  judgeOfChildren = judge;
}

bool MayPass() {
  ++calls;
  if (judgeOfChildren) FailInChild();
  int64_t& left = passes > 0 ? passes : fails;
  const bool isPass = &left == &passes || left == 0;
  if (left > 0 && left != INT64_MAX) --left;
  if (!isPass) errno = ENOMEM;
  return isPass;
}

template <typename Function> Function* Next(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

namespace framereel {

size_t Allocations() {
  return calls;
}

void FailAllocations(int64_t passing, int64_t failing) {
  passes = passing;
  fails = failing;
}

void FailEachAllocation(void (*judge)(int status)) {
  if (!judge && isChild) ::_exit(kWentOn);
  judgeOfChildren = judge;
}

} // namespace framereel

extern "C" {

void* malloc(size_t bytes) {
  static auto* const next = Next<void*(size_t)>("malloc");
  return MayPass() ? next(bytes) : nullptr;
}

void* calloc(size_t count, size_t bytes) {
  static auto* const next = Next<void*(size_t, size_t)>("calloc");
  return MayPass() ? next(count, bytes) : nullptr;
}

void* realloc(void* block, size_t bytes) {
  static auto* const next = Next<void*(void*, size_t)>("realloc");
  return MayPass() ? next(block, bytes) : nullptr;
}
}

void* operator new(size_t bytes) {
  for (;;) {
    if (void* block = ::malloc(bytes ? bytes : 1)) return block;
    const std::new_handler handler = std::get_new_handler();
    if (!handler) throw std::bad_alloc();
    handler();
  }
}

// As the C++ library's own. The sanitizers have another one, which is not the other half of the delete below.
void* operator new(size_t bytes, const std::nothrow_t&) noexcept {
  try {
    return ::operator new(bytes);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void operator delete(void* block) noexcept {
  std::free(block);
}

void operator delete(void* block, size_t) noexcept {
  std::free(block);
}
