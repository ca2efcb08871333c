// The numbered dialogs that the program reads as resources: what stands where in them.
//
// Places are units of the dialog's font (win32/win32_dialogs.h). Styles are those of the platform calls, by their
// numbers, since nothing of them is known here; every control is a visible child, and that is left out.
#pragma once

#include <cstdint>
#include <span>

namespace framereel {

struct DialogItem {
  int16_t id; // -1: nobody asks for it
  const char* className;
  const char* text;
  int16_t left, top, width, height;
  uint32_t style;
};

// A caption around it is not counted in its size.
struct DialogResource {
  uint16_t id;
  const char* title;
  int16_t left, top, width, height;
  uint32_t style;
  const char* font;
  uint16_t points;                   // of the font, at 96 to the inch
  std::span<const DialogItem> items; // in the order of Tab
};

// The dialog with this number, for the whole run; null when there is none.
const DialogResource* FindDialogResource(uint16_t id);

} // namespace framereel
