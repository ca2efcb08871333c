// A block for each slot, which only grows.
#include "core/scratch_buffer.h"

#include "core/memory.h"

namespace framereel {

namespace {

struct Scratch {
  size_t capacity;
  void* block;
};

Scratch slots[2];

} // namespace

void* ScratchBuffer(ScratchSlot slot, size_t bytes) {
  Scratch& scratch = slots[slot];
  if (scratch.block && bytes < scratch.capacity) return scratch.block;
  void* block = MemRealloc(scratch.block, bytes);
  if (!block) return nullptr; // only while the program ends for want of memory
  scratch = {bytes, block};
  return block;
}

} // namespace framereel
