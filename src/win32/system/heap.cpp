// The process heap: the system's allocator behind the three calls of the platform.
#include "win32/win32_system.h"

#include <cstdlib>

namespace {

char processHeap; // its address is the heap's handle

// The system may answer null for a block of no bytes, and that is not exhaustion.
size_t AtLeastOne(size_t bytes) {
  return bytes ? bytes : 1;
}

} // namespace

HANDLE GetProcessHeap() {
  return &processHeap;
}

void* HeapAlloc(HANDLE heap, DWORD, size_t bytes) {
  return heap == &processHeap ? std::malloc(AtLeastOne(bytes)) : nullptr;
}

void* HeapReAlloc(HANDLE heap, DWORD, void* block, size_t bytes) {
  return heap == &processHeap && block ? std::realloc(block, AtLeastOne(bytes)) : nullptr;
}

BOOL HeapFree(HANDLE heap, DWORD, void* block) {
  if (heap != &processHeap || !block) return FALSE;
  std::free(block);
  return TRUE;
}
