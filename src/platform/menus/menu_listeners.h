// Who is told when a menu or an item comes or goes.
#pragma once

#include <cstdint>

#include "core/arrays.h"

namespace framereel {

enum class MenuChangeCode : uint8_t {
  kRemoved = 1,  // told ahead of it
  kInserted = 2, // told behind it
};

enum class MenuChangeKind : uint8_t { kMenu = 2, kItem = 3 };

struct MenuChange {
  MenuChangeCode code;
  MenuChangeKind kind;
  void* object; // the Menu or the MenuItem; its parent is the one that it comes into or goes out of
};

// The listener's subject is a MenuChange. The last added is told first.
void AddMenuListener(NoticeFunction function, void* argument);
void RemoveMenuListener(NoticeFunction function, void* argument);
void TellMenuListeners(const MenuChange& change);

void MenuListenersStartUp();
void MenuListenersShutDown();

} // namespace framereel
