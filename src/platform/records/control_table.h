// The native controls of a window: which View belongs to the number that the platform knows a control by.
#pragma once

#include <cstdint>

namespace framereel {

struct View;

// Numbers are unique in a window and given again once they are back. A zeroed table is empty.
struct ControlTable {
  uint32_t capacity;
  int32_t firstFree; // number of a free slot + 1; 0 when there is none
  struct ControlSlot* slots;
};

// A control with this number is on its way out: whatever is still sent for it is dropped. No View ever has it.
inline constexpr uint16_t kDyingControl = 0xDED;

// A number for the View's control, below 65,536; 0xDED when all are taken.
uint16_t ControlTableTake(ControlTable* table, View* view);
void ControlTableGiveBack(ControlTable* table, uint16_t id);
// Null for a number that no control has.
View* ControlTableFind(const ControlTable* table, uint16_t id);
void ControlTableFree(ControlTable* table);

} // namespace framereel
