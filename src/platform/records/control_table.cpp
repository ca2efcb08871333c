// Giving out numbers. Free slots are chained, and each holds the next one of the chain.
#include "platform/records/control_table.h"

#include "core/memory.h"

namespace framereel {

struct ControlSlot {
  View* view;       // null while free
  int32_t nextFree; // of a free slot: as ControlTable::firstFree
};

namespace {

constexpr uint32_t kGrowth = 4;
constexpr uint32_t kMost = 0x10000;

// The lowest of the new numbers comes to be given last. The one of dying controls never comes into the chain.
void Grow(ControlTable* table) {
  if (table->capacity + kGrowth > kMost) return;
  const uint32_t first = table->capacity;
  auto* slots = static_cast<ControlSlot*>(MemRealloc(table->slots, (first + kGrowth) * sizeof(ControlSlot)));
  if (!slots) return;
  table->slots = slots;
  table->capacity += kGrowth;
  for (uint32_t id = first; id < table->capacity; ++id) {
    table->slots[id] = {nullptr, table->firstFree};
    if (id != kDyingControl) table->firstFree = int32_t(id) + 1;
  }
}

} // namespace

uint16_t ControlTableTake(ControlTable* table, View* view) {
  if (table->firstFree == 0) Grow(table);
  if (table->firstFree == 0) return kDyingControl;
  const auto id = uint16_t(table->firstFree - 1);
  table->firstFree = table->slots[id].nextFree;
  table->slots[id].view = view;
  return id;
}

void ControlTableGiveBack(ControlTable* table, uint16_t id) {
  if (!ControlTableFind(table, id)) return;
  table->slots[id] = {nullptr, table->firstFree};
  table->firstFree = id + 1;
}

View* ControlTableFind(const ControlTable* table, uint16_t id) {
  return id < table->capacity ? table->slots[id].view : nullptr;
}

void ControlTableFree(ControlTable* table) {
  MemFree(table->slots);
  *table = {};
}

} // namespace framereel
