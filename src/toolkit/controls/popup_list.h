// The list of an open Popup: a window of its own over the panel, in which an entry is chosen. There is at most one.
//
// Opening it is part of a press of the mouse, which goes on in the list: the user can drag through it and let go, or
// click once to open it and again to choose. Escape closes it without a choice. A list that is higher than the main
// window scrolls, by arrows at its ends.
#pragma once

#include <cstdint>

#include "platform/records/view_record.h"
#include "toolkit/controls/text_item.h"

namespace framereel {

// What is listed. The record belongs to the Popup and stays as it is while the list is open.
struct PopupEntries {
  uint16_t count;
  TextItem* items;  // owned
  int16_t* heights; // owned; pixels
  int16_t widest, tallest;
  uint16_t selected;
};

// The room that the Popup's size leaves for its arrow, for the mark of the selected entry, and above its text; pixels.
struct PopupRoom {
  int16_t arrowWidth, markWidth, markRoom, textTop;
};

bool PopupListIsOpen();
// Opens it over the Popup, with the press that has just come to it. `choose` is called behind the closing, with an
// index that is another one than the selected.
void PopupListOpen(View* popup, const PopupEntries* entries, const PopupRoom& room, uint16_t flags, Point press,
                   void (*choose)(View* popup, uint16_t index));
// Closes it if it is the Popup's; nothing is chosen.
void PopupListClose(const View* popup);

} // namespace framereel
