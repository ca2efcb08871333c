// The process heap: the system's allocator behind the three calls of the platform, with a seam for tests of
// exhaustion.
#include "win32/system/heap_faults.h"
#include "win32/win32.h"

#include <cstdlib>

namespace {

char processHeap;             // its address is the heap's handle
int64_t allocationsLeft = -1; // until the seam lets none through; negative: no limit

bool AllocationMayPass() {
  if (allocationsLeft < 0) return true;
  if (allocationsLeft == 0) return false;
  --allocationsLeft;
  return true;
}

// The system may answer null for a block of no bytes, and that is not exhaustion.
size_t AtLeastOne(size_t bytes) {
  return bytes ? bytes : 1;
}

} // namespace

namespace framereel {

void FailAllocationsAfter(int64_t n) {
  allocationsLeft = n;
}

} // namespace framereel

HANDLE GetProcessHeap() {
  return &processHeap;
}

void* HeapAlloc(HANDLE heap, DWORD, size_t bytes) {
  if (heap != &processHeap || !AllocationMayPass()) return nullptr;
  return std::malloc(AtLeastOne(bytes));
}

void* HeapReAlloc(HANDLE heap, DWORD, void* block, size_t bytes) {
  if (heap != &processHeap || !block || !AllocationMayPass()) return nullptr;
  return std::realloc(block, AtLeastOne(bytes));
}

BOOL HeapFree(HANDLE heap, DWORD, void* block) {
  if (heap != &processHeap || !block) return FALSE;
  std::free(block);
  return TRUE;
}
