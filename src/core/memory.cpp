// The exhaustion path is FatalExit; MemAlloc and MemRealloc take it once.
#include "core/memory.h"

#include <cassert>
#include <new>

#include "core/list.h"
#include "core/timers.h"
#include "win32/win32.h"

namespace framereel {

namespace {

// Stands in the temporary list where a scope begins. No block has this address.
constexpr ListValue kScopeMark = -1;

struct Exhaustion {
  MemFailureHook hook;
  void* argument;
  uint32_t timesEntered;
  void* reserve;
};

struct TemporaryBlocks {
  List* list;      // blocks and marks, in the order in which they were made
  List* outermost; // blocks of the outermost scope that were adopted inside it
  uint32_t openScopes;
  uint32_t marks; // of the outer scopes; one that holds no block yet needs none, so that it costs nothing
};

// So that the path has something to work with.
constexpr size_t kReserveSize = 1 << 20;

Exhaustion exhaustion;
TemporaryBlocks temporary;

// Frees the blocks behind the last mark, and takes that away.
void FreeInnermost() {
  --temporary.marks;
  while (temporary.list->last) {
    ListLast(temporary.list);
    ListValue value = ListRemove(temporary.list);
    if (value == kScopeMark) return;
    MemFree(FromListValue<void>(value));
  }
}

// What can be given back to the heap before the program gives up: nothing in this build is kept that could be.
void PurgeMemory() {}

// Takes the exhaustion path. It comes back only to code that runs on the path itself.
void EnterExhaustion() {
  if (exhaustion.timesEntered == 0) FatalExit();
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

void FatalExit() {
  if (exhaustion.timesEntered == 0) TimerClearAll();
  ++exhaustion.timesEntered;
  MemFree(exhaustion.reserve);
  exhaustion.reserve = nullptr;
  if (exhaustion.hook) exhaustion.hook(exhaustion.argument, exhaustion.timesEntered);
  ::ExitProcess(0);
}

void MemoryStartUp() {
  temporary.list = ListNew();
  temporary.outermost = ListNew();
  exhaustion.reserve = MemAlloc(kReserveSize);
  std::set_new_handler(EndForNew);
}

void* TempAlloc(size_t bytes) {
  return TempAdopt(MemAlloc(bytes));
}

void* TempAdopt(void* block) {
  assert(temporary.list && "ToolkitInit comes first");
  if (!block) return nullptr;
  // A mark that there is no memory for leaves the block to the scope around this one.
  while (temporary.marks < temporary.openScopes && ListAppendHandle(temporary.list, kScopeMark)) ++temporary.marks;
  ListAppend(temporary.list, ToListValue(block));
  return block;
}

void* TempAdoptOutermost(void* block) {
  if (temporary.openScopes == 0) return TempAdopt(block);
  if (block) ListAppend(temporary.outermost, ToListValue(block));
  return block;
}

void TempScopeBegin() {
  assert(temporary.list && "ToolkitInit comes first");
  ++temporary.openScopes;
}

void TempScopeEnd() {
  if (temporary.openScopes == 0) return;
  if (temporary.marks == temporary.openScopes) FreeInnermost();
  --temporary.openScopes;
  if (temporary.openScopes > 0) return;
  ListDrain(temporary.outermost, [](ListValue value) { MemFree(FromListValue<void>(value)); });
}

} // namespace framereel
