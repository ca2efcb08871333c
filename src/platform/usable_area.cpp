// See usable_area.h.
#include "platform/usable_area.h"

#include "core/system_kind.h"
#include "platform/display_caps.h"
#include "platform/main_window.h"
#include "platform/ports.h"

namespace framereel {
namespace {

struct UsableArea {
  bool known;
  Rect last; // as it was handed out
};

UsableArea area;

bool SameRect(const Rect& a, const Rect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

// Takes the task bar off the screen. The two diagonals of the screen tell at which edge a bar stands: its centre lies
// in one of the four triangles between them.
void TakeBarOff(const RECT& bar, Rect* screen) {
  const int32_t width = screen->right, height = screen->bottom;
  const int32_t x = (bar.left + bar.right) / 2, y = (bar.top + bar.bottom) / 2, middle = (width + height) / 2;
  const bool topOrLeft = x + y <= middle, topOrRight = width - x + y <= middle;
  if (topOrLeft) {
    (topOrRight ? screen->top : screen->left) = PinToShort(topOrRight ? bar.bottom : bar.right);
  } else {
    (topOrRight ? screen->right : screen->bottom) = PinToShort(topOrRight ? bar.left : bar.top);
  }
}

} // namespace

void UsableAreaStartUp() {
  area = {};
}

bool QueryUsableArea(Rect* usable, Rect* screen) {
  const HDC context = ScreenContext();
  const int width = ::GetDeviceCaps(context, HORZRES), height = ::GetDeviceCaps(context, VERTRES);
  *screen = {0, 0, PinToShort(height), PinToShort(width)};
  *usable = *screen;
  APPBARDATA bar = {};
  bar.cbSize = sizeof bar;
  if (HasNewShell() && ::SHAppBarMessage(ABM_GETTASKBARPOS, &bar)) TakeBarOff(bar.rc, usable);
  if (area.known && SameRect(*usable, area.last)) return false;
  area.known = true;
  area.last = *usable;
  return true;
}

void StoreUsableArea(MainWindow* main, const Rect& usable, const Rect& screen) {
  main->usableLeft = usable.left;
  main->usableTop = usable.top;
  main->usableWidth = int16_t(usable.right - usable.left);
  main->usableHeight = int16_t(usable.bottom - usable.top);
  main->screenLeft = screen.left;
  main->screenTop = screen.top;
  main->screenWidth = int16_t(screen.right - screen.left);
  main->screenHeight = int16_t(screen.bottom - screen.top);
}

void DisplayChanged() {
  ReadDisplayCaps();
  MainWindow* main = TheMainWindow();
  Rect usable, screen;
  if (!main->window || !QueryUsableArea(&usable, &screen)) return;
  const WindowGeometry& g = main->geometry;
  const bool filled = g.outerWidth == main->usableWidth && g.outerHeight == main->usableHeight;
  StoreUsableArea(main, usable, screen);
  if (filled) SetMainBounds(main, g.insetLeft, g.insetTop, main->usableWidth, main->usableHeight);
}

} // namespace framereel
