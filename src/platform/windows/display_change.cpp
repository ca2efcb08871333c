// Reading the display into the main window's record.
#include "platform/windows/display_change.h"

#include "platform/display/display_caps.h"
#include "platform/display/usable_area.h"
#include "platform/records/window_records.h"
#include "platform/windows/window_geometry.h"

namespace framereel {

bool TakeUsableArea() {
  Rect usable;
  if (!QueryUsableArea(&usable)) return false;
  MainWindow* main = TheMainWindow();
  main->usableLeft = usable.left;
  main->usableTop = usable.top;
  main->usableWidth = int16_t(usable.right - usable.left);
  main->usableHeight = int16_t(usable.bottom - usable.top);
  return true;
}

void DisplayChanged() {
  ReadDisplayCaps();
  MainWindow* main = TheMainWindow();
  if (!main->window) return;
  const WindowGeometry& g = main->geometry;
  const bool filled = g.outerWidth == main->usableWidth && g.outerHeight == main->usableHeight;
  if (TakeUsableArea() && filled) SetMainBounds(main, g.insetLeft, g.insetTop, main->usableWidth, main->usableHeight);
}

} // namespace framereel
