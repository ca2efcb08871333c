// One list of all blocks in the order of their making, with a mark where a scope begins.
#include "core/temporary_blocks.h"

#include <cassert>

#include "core/list.h"
#include "core/memory.h"

namespace framereel {
namespace {

// Stands in the temporary list where a scope begins. No block has this address.
constexpr ListValue kScopeMark = -1;

struct TemporaryBlocks {
  List* list;      // blocks and marks, in the order in which they were made
  List* outermost; // blocks of the outermost scope that were adopted inside it
  uint32_t openScopes;
  uint32_t marks; // of the outer scopes; one that holds no block yet needs none, so that it costs nothing
};

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

} // namespace

void TemporaryBlocksStartUp() {
  temporary.list = ListNew();
  temporary.outermost = ListNew();
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
