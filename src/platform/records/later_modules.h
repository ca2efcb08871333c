// What menus and native controls do for rooms that come before theirs. Their modules fill this record in when they
// start up; until then each entry does nothing, and answers false.
#pragma once

#include <cstdint>

#include "platform/records/input_events.h"

namespace framereel {

struct ChildWindow;

struct LaterModules {
  // Menus.
  bool (*menuShortcut)(const KeyEvent& event); // whether an item took the key
  void (*blockMenus)(bool block);              // a blocking modal window has come, or the last one has gone
  // Native controls. The event is the key that ended the session, or null.
  void (*endEditSession)(const KeyEvent* event);
  bool (*isEditedThere)(const ChildWindow* window, int16_t x, int16_t y); // the field with the session lies there
};

LaterModules& TheLaterModules();

} // namespace framereel
