// What the system tells of itself: its kind, its colours, its task bar; and its bell.
#include <algorithm>

#include "win32/pixels/display_windows.h"
#include "win32/pixels/rectangles.h"
#include "win32/system/system_version.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

DWORD systemVersion = kThisSystem;

} // namespace

void SetSystemVersion(DWORD version) {
  systemVersion = version;
}

} // namespace framereel

using namespace framereel;

DWORD GetVersion() {
  return systemVersion;
}

BOOL MessageBeep(UINT) {
  DisplayBeep();
  return TRUE;
}

uintptr_t SHAppBarMessage(DWORD message, APPBARDATA* data) {
  if (message != ABM_GETTASKBARPOS || !data) return FALSE;
  const ScreenFacts screen = DisplayScreen();
  const PixelRect free = DisplayUsableArea();
  const int32_t left = free.left, top = free.top, right = screen.width - free.right,
                bottom = screen.height - free.bottom;
  const int32_t thickest = std::max({left, top, right, bottom});
  if (thickest <= 0) return FALSE;
  PixelRect bar = {0, 0, screen.width, screen.height};
  if (thickest == bottom) {
    bar.top = free.bottom;
  } else if (thickest == top) {
    bar.bottom = free.top;
  } else if (thickest == left) {
    bar.right = free.left;
  } else {
    bar.left = free.right;
  }
  data->rc = RectOf(bar);
  return TRUE;
}
