// Asking for the task bar, and taking it off the screen.
#include "platform/display/usable_area.h"

#include "core/numbers.h"
#include "core/rects.h"
#include "core/system_kind.h"
#include "platform/drawing/shared_contexts.h"
#include "platform/records/window_records.h"
#include "win32/win32_drawing.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

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

bool QueryUsableArea(Rect* usable) {
  const HDC screen = ScreenContext();
  *usable = {0, 0, PinToShort(::GetDeviceCaps(screen, VERTRES)), PinToShort(::GetDeviceCaps(screen, HORZRES))};
  APPBARDATA bar = {};
  bar.cbSize = sizeof bar;
  if (HasNewShell() && ::SHAppBarMessage(ABM_GETTASKBARPOS, &bar)) TakeBarOff(bar.rc, usable);
  const MainWindow* main = TheMainWindow();
  return !RectEqual(*usable, RectOf(main->usableLeft, main->usableTop, main->usableWidth, main->usableHeight));
}

} // namespace framereel
