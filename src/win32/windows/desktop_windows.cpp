// The calls that take windows of other programs too: which one is at a point, and where it stands.
//
// Such a window's handle is its name on the display, marked so that it is no address. Any other call finds that it is
// none of our windows, and does nothing.
#include "win32/windows/desktop_windows.h"

#include "win32/pixels/rectangles.h"
#include "win32/win32_windows.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr uintptr_t kForeignMark = 3; // addresses of records have no such bits

HWND HandleOf(DesktopWindow name) {
  return reinterpret_cast<HWND>(uintptr_t{name} << 2 | kForeignMark);
}

bool IsForeign(HWND window) {
  return (reinterpret_cast<uintptr_t>(window) & kForeignMark) == kForeignMark;
}

DesktopWindow NameOf(HWND foreign) {
  return DesktopWindow(reinterpret_cast<uintptr_t>(foreign) >> 2);
}

bool ForeignPlace(HWND foreign, PixelRect* place) {
  if (NameOf(foreign) != 0) return DisplayWindowPlace(NameOf(foreign), place);
  const ScreenFacts screen = DisplayScreen();
  *place = {0, 0, screen.width, screen.height};
  return true;
}

// Where it is on the screen; false when the window is not there.
bool FindPlace(HWND window, PixelRect* place) {
  if (IsForeign(window)) return ForeignPlace(window, place);
  if (IsLive(window)) *place = PlaceOnScreen(*window);
  return IsLive(window);
}

bool FindClient(HWND window, PixelRect* client) {
  if (IsForeign(window)) return ForeignPlace(window, client);
  if (IsLive(window)) *client = ClientOnScreen(*window);
  return IsLive(window);
}

HWND OwnChildAt(const Win32Window& window, int32_t x, int32_t y) {
  for (HWND child : window.children) {
    if (Has(*child, WS_VISIBLE) && Holds(PlaceOnScreen(*child), x, y)) return child;
  }
  return nullptr;
}

HWND ForeignChildAt(HWND window, int32_t x, int32_t y) {
  const DesktopWindow found = DisplayWindowAt(NameOf(window), x, y);
  if (found == 0) return nullptr;
  const DisplayWindow* own = DisplayOwnWindow(found);
  const HWND topLevel = own ? TopLevelOf(own) : nullptr; // none for an open menu
  return topLevel ? topLevel : HandleOf(found);
}

} // namespace

std::string ForeignTitle(HWND window) {
  return IsForeign(window) ? DisplayWindowTitle(NameOf(window)) : "";
}

} // namespace framereel

using namespace framereel;

HWND GetDesktopWindow() {
  return HandleOf(0);
}

BOOL EnumWindows(WNDENUMPROC each, LPARAM argument) {
  for (const DesktopWindow name : DisplayWindows()) {
    const DisplayWindow* own = DisplayOwnWindow(name);
    const HWND topLevel = own ? TopLevelOf(own) : HandleOf(name);
    if (topLevel && !each(topLevel, argument)) return FALSE;
  }
  return TRUE;
}

BOOL IsWindow(HWND window) {
  return IsForeign(window) ? NameOf(window) == 0 || DisplayHasWindow(NameOf(window)) : IsLive(window);
}

HWND ULongToHandle(uint32_t number) {
  return number != 0 && number >> 29 == 0 ? HandleOf(number) : nullptr;
}

uint32_t HandleToULong(HWND window) {
  return IsForeign(window) ? NameOf(window) : 0;
}

HWND ChildWindowFromPointEx(HWND window, POINT point, UINT) {
  PixelRect client = {};
  if (!FindClient(window, &client)) return nullptr;
  const int32_t x = client.left + point.x, y = client.top + point.y;
  if (!Holds(client, x, y)) return nullptr;
  const HWND child = IsForeign(window) ? ForeignChildAt(window, x, y) : OwnChildAt(*window, x, y);
  return child ? child : window;
}

BOOL GetWindowRect(HWND window, RECT* rect) {
  PixelRect place;
  if (!rect || !FindPlace(window, &place)) return FALSE;
  *rect = RectOf(place);
  return TRUE;
}

BOOL ScreenToClient(HWND window, POINT* point) {
  PixelRect client = {};
  if (!point || !FindClient(window, &client)) return FALSE;
  *point = {point->x - client.left, point->y - client.top};
  return TRUE;
}
