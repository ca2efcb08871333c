// What menus and native controls do for the windows. Their modules fill this record in when they start up; until then
// each entry does nothing, and answers false.
#pragma once

#include <cstdint>

#include "platform/records/input_events.h"

namespace framereel {

struct LaterModules {
  // Menus. A menu command comes from the bar or the system menu, with the item's id.
  void (*redrawMenuBar)(); // at the start of each pass of the event loop, if something on the bar has changed
  void (*menuCommand)(uint16_t id);
  bool (*menuShortcut)(const KeyEvent& event); // whether an item took the key
  void (*blockMenus)(bool block);              // a blocking modal window has come, or the last one has gone
  // Native controls. The event is the key that ended the session, or null.
  void (*endEditSession)(const KeyEvent* event);
};

LaterModules& TheLaterModules();

} // namespace framereel
