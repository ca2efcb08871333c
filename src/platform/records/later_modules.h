// What menus and native controls do for the windows. Their modules fill this record in when they start up; until then
// each entry does nothing, and answers false.
#pragma once

#include <cstdint>

#include "platform/records/edit_target.h"
#include "platform/records/input_events.h"

namespace framereel {

struct ChildWindow;
struct MenuItem;

struct LaterModules {
  // Menus. A menu command comes from the bar or the system menu, with the item's id.
  void (*redrawMenuBar)(); // at the start of each pass of the event loop, if something on the bar has changed
  void (*menuCommand)(uint16_t id);
  bool (*menuShortcut)(const KeyEvent& event); // whether an item took the key
  void (*blockMenus)(bool block);              // a blocking modal window has come, or the last one has gone
  // The Edit menu. A new target, null for none, and where the one before is copied to, if anywhere.
  void (*setEditTarget)(const EditTarget* target, EditTarget* before);
  void (*setEditEnabled)(uint16_t mask);    // of EditCommand: which items can be chosen
  bool (*isEditItem)(const MenuItem* item); // one of Cut, Copy and Paste
  // Native controls. The event is the key that ended the session, or null.
  void (*endEditSession)(const KeyEvent* event);
  bool (*isEditedThere)(const ChildWindow* window, int16_t x, int16_t y); // the field with the session lies there
};

LaterModules& TheLaterModules();

} // namespace framereel
