// An open popup: where it stands, its look, and which item of it is marked. Internal to the layer; what the user does
// with it stands in menu_tracking.h.
#pragma once

#include "win32/windows/menu_record.h"
#include "win32/windows/window.h"

namespace framereel {

inline constexpr int32_t kNoItem = -1;

// A window of the display's but not one of the tree, that lives as long as the record. Its menu must still be there
// when a function below gets it.
struct MenuPopup {
  HMENU menu;
  uint32_t changed; // of the menu when it was drawn
  PixelRect beside; // the title or item that it belongs to, on the screen
  bool ofItem;      // it is an item's, and stands at its side
  PixelRect place;  // on the screen
  ShownSurface shown;
  HDC context;
  int32_t lineHeight;
  int32_t marked;       // index of an item, or kNoItem
  MenuEntry markedItem; // a copy, to find it by when the menu has changed

  MenuPopup(HWND owner, HMENU menu, const PixelRect& beside, bool ofItem);
  ~MenuPopup();
  MenuPopup(const MenuPopup&) = delete;
};

// Shows the menu as it is now; the marked item stays marked if its id or popup is still there.
void RenewPopup(MenuPopup* popup);
// Where an item stands on the screen.
PixelRect ItemPlace(const MenuPopup& popup, int32_t index);
// The item at a point of the screen, or kNoItem; separators are none.
int32_t ItemAt(const MenuPopup& popup, int32_t x, int32_t y);
void MarkItem(MenuPopup* popup, int32_t index);
// Marks the next item up or down, going round at the ends; greyed ones too, as they can be read.
void StepInPopup(MenuPopup* popup, int32_t by);

} // namespace framereel
