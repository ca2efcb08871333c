// See allocations.h. Takes the place of the language's own operators.
#include "support/allocations.h"

#include <cstdlib>
#include <new>

namespace {

size_t calls;

} // namespace

size_t framereel::NewCalls() {
  return calls;
}

void* operator new(size_t bytes, const std::nothrow_t&) noexcept {
  ++calls;
  return std::malloc(bytes ? bytes : 1);
}

void* operator new(size_t bytes) {
  if (void* block = operator new(bytes, std::nothrow)) return block;
  throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
  std::free(block);
}

void operator delete(void* block, size_t) noexcept {
  std::free(block);
}
