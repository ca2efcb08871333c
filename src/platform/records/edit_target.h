// Who does what the Edit menu asks for.
#pragma once

#include <cstdint>

namespace framereel {

// The items, as the mask of what can be done now and as the code of what is to be done.
enum EditCommand : uint16_t {
  kEditCut = 1,
  kEditCopy = 2,
  kEditPaste = 4,
  kEditInstalled = 8, // to the target, when it becomes the target and when it is it no more
  kEditRemoved = 16,
};

struct EditTarget {
  void (*command)(void* data, uint16_t code); // null: nobody is the target
  void* data;
};

} // namespace framereel
