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

void* operator new(size_t bytes) {
  ++calls;
  if (void* block = std::malloc(bytes ? bytes : 1)) return block;
  throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
  std::free(block);
}

void operator delete(void* block, size_t) noexcept {
  std::free(block);
}
