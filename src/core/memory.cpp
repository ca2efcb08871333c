// The exhaustion path is FatalExit; MemAlloc and MemRealloc take it once.
#include "core/memory.h"

#include <new>

#include "win32/win32_system.h"

namespace framereel {

namespace {

struct Exhaustion {
  MemFailureHook hook;
  void* argument;
  void (*forgetTimers)(); // the timers stand above this module
  uint32_t timesEntered;
  bool nextEnds; // EndAtNextFailure
  void* reserve;
};

// So that the path has something to work with.
constexpr size_t kReserveSize = 1 << 20;

Exhaustion exhaustion;

// What can be given back to the heap before the program gives up: nothing in this build is kept that could be.
void PurgeMemory() {}

// Takes the exhaustion path. It comes back only to code that runs on the path itself.
void EnterExhaustion() {
  if (exhaustion.timesEntered == 0) FatalExit();
  if (exhaustion.nextEnds) ::ExitProcess(0);
}

// For `new`, which takes no null for an answer: on the path itself the hook is told once more, and then it is over.
void EndForNew() {
  if (exhaustion.timesEntered < 2) FatalExit();
  ::ExitProcess(0);
}

} // namespace

void* MemAlloc(size_t bytes) {
  void* block = ::HeapAlloc(::GetProcessHeap(), 0, bytes);
  if (block) return block;
  PurgeMemory();
  block = ::HeapAlloc(::GetProcessHeap(), 0, bytes);
  if (!block) EnterExhaustion();
  return block;
}

void* MemRealloc(void* block, size_t bytes) {
  if (!block) return MemAlloc(bytes);
  void* resized = ::HeapReAlloc(::GetProcessHeap(), 0, block, bytes);
  if (resized) return resized;
  PurgeMemory();
  resized = ::HeapReAlloc(::GetProcessHeap(), 0, block, bytes);
  if (!resized) EnterExhaustion();
  return resized;
}

void MemFree(void* block) {
  if (block) ::HeapFree(::GetProcessHeap(), 0, block);
}

void SetMemFailureHook(MemFailureHook hook, void* argument) {
  exhaustion.hook = hook;
  exhaustion.argument = argument;
}

void EndAtNextFailure() {
  exhaustion.nextEnds = true;
}

void FatalExit() {
  if (exhaustion.timesEntered == 0 && exhaustion.forgetTimers) exhaustion.forgetTimers();
  ++exhaustion.timesEntered;
  MemFree(exhaustion.reserve);
  exhaustion.reserve = nullptr;
  if (exhaustion.hook) exhaustion.hook(exhaustion.argument, exhaustion.timesEntered);
  ::ExitProcess(0);
}

void MemoryStartUp(void (*forgetTimers)()) {
  exhaustion.forgetTimers = forgetTimers;
  exhaustion.reserve = MemAlloc(kReserveSize);
  std::set_new_handler(EndForNew);
}

} // namespace framereel
