// Working out places and sending them to the platform. They come back through place_messages.h, which alone stores
// them.
#include "platform/windows/window_geometry.h"

#include "core/numbers.h"
#include "platform/display/monitor_room.h"
#include "win32/pixels/scale.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr int16_t kNowhere = 32767;

int quietCount; // above 0 while the program itself places a ChildWindow

struct PlatformPlace {
  int32_t x, y, width, height;
};

// A minimised window takes the place for when it is restored.
void SendPlace(HWND handle, bool iconic, const PlatformPlace& p) {
  if (!iconic) {
    ::MoveWindow(handle, p.x, p.y, p.width, p.height, TRUE);
    return;
  }
  WINDOWPLACEMENT placement = {};
  placement.length = sizeof placement;
  ::GetWindowPlacement(handle, &placement);
  placement.rcNormalPosition = {p.x, p.y, p.x + p.width, p.y + p.height};
  placement.flags = 0;
  placement.showCmd = SW_SHOWNA;
  ::SetWindowPlacement(handle, &placement);
}

// The client place in toolkit coordinates.
void ApplyWindowGeometry(ChildWindow* window, int32_t x, int32_t y, int32_t width, int32_t height) {
  const Insets own = InsetsOf(window->geometry);
  const MainWindow* main = window->parent;
  x -= own.left;
  y -= own.top;
  if (IsTopLevel(window)) {
    x += main->originX;
    y += main->originY;
  } else {
    x -= main->geometry.insetLeft;
    y -= main->geometry.insetTop;
  }
  ++quietCount;
  SendPlace(window->window, window->iconic, {x, y, width + own.width, height + own.height});
  --quietCount;
}

// The client place on the screen.
void ApplyMainGeometry(MainWindow* main, int32_t x, int32_t y, int32_t width, int32_t height) {
  const Insets insets = InsetsOf(main->geometry);
  const PlatformPlace outer = {x - insets.left, y - insets.top, width + insets.width, height + insets.height};
  SendPlace(main->window, main->iconic, outer);
  if (!main->iconic) return;
  main->geometry.clientWidth = PinToShort(width);
  main->geometry.clientHeight = PinToShort(height);
  OuterFromClient(&main->geometry);
}

bool IsOffScreen(const MainWindow* main) {
  return main->originX > main->usableWidth;
}

// Where what belongs to the main window comes up.
MonitorRoom RoomOf(const MainWindow* main) {
  return RoomOfMonitor(IsOffScreen(main) ? nullptr : main->window);
}

// What a new window is centred on, in toolkit coordinates.
struct Area {
  int32_t left, top, width, height;
};

Area CentringArea(const MainWindow* main) {
  if (IsOffScreen(main)) {
    const auto [monitor, free, isOnly] = RoomOf(main);
    return {monitor.left - main->originX, monitor.top - main->originY, free.right - free.left, free.bottom - free.top};
  }
  const WindowGeometry& g = main->geometry;
  return {g.clientLeft, g.clientTop, g.clientWidth, g.clientHeight};
}

// How far a span from `start` has to move to lie within the room; its start counts for more than its end.
int32_t ShiftInto(int32_t start, int32_t length, int32_t room, int32_t roomLength) {
  if (start < room) return room - start;
  return Minimum(0, room + roomLength - start - length);
}

// Places it, but so that one that stands on the screen by itself does not reach from the main window's monitor onto
// another one.
void PlaceOnMonitor(ChildWindow* window, int32_t x, int32_t y) {
  const WindowGeometry& g = window->geometry;
  const MainWindow* main = window->parent;
  const auto [monitor, free, isOnly] = RoomOf(main);
  if (IsTopLevel(window) && !isOnly) {
    x += ShiftInto(x - g.insetLeft + main->originX, g.outerWidth, free.left, free.right - free.left);
    y += ShiftInto(y - g.insetTop + main->originY, g.outerHeight, free.top, free.bottom - free.top);
  }
  PlaceChildWindow(window, PinToShort(x), PinToShort(y));
}

} // namespace

WindowGeometry NoGeometry() {
  return {kNowhere, kNowhere, kNowhere, kNowhere, kNowhere, kNowhere, kNowhere, kNowhere, 0, 0, 0, 0};
}

Insets InsetsOf(const WindowGeometry& g) {
  return {g.insetLeft, g.insetTop, g.insetLeft + g.insetRight, g.insetTop + g.insetBottom};
}

void ClientFromOuter(WindowGeometry* g) {
  const Insets insets = InsetsOf(*g);
  g->clientLeft = PinToShort(g->outerLeft + insets.left);
  g->clientTop = PinToShort(g->outerTop + insets.top);
  g->clientWidth = PinToShort(g->outerWidth - insets.width);
  g->clientHeight = PinToShort(g->outerHeight - insets.height);
}

void OuterFromClient(WindowGeometry* g) {
  const Insets insets = InsetsOf(*g);
  g->outerLeft = PinToShort(g->clientLeft - insets.left);
  g->outerTop = PinToShort(g->clientTop - insets.top);
  g->outerWidth = PinToShort(g->clientWidth + insets.width);
  g->outerHeight = PinToShort(g->clientHeight + insets.height);
}

// ---- ChildWindows ------------------------------------------------------------------------------------------------

void PlaceChildWindow(ChildWindow* window, int16_t x, int16_t y) {
  constexpr Scaled kMargin{5};
  int32_t left = x, top = y;
  if (!(window->flags & kWindowUnclamped)) {
    const WindowGeometry& main = window->parent->geometry;
    left = PinValue(main.clientLeft + kMargin, left, main.clientLeft + main.clientWidth - kMargin);
    top = PinValue(main.clientTop + kMargin, top, main.clientTop + main.clientHeight - kMargin);
  }
  ApplyWindowGeometry(window, left, top, window->geometry.clientWidth, window->geometry.clientHeight);
}

void SizeChildWindow(ChildWindow* window, int16_t width, int16_t height) {
  const WindowGeometry& g = window->geometry;
  ApplyWindowGeometry(window, g.clientLeft, g.clientTop, PinValue(window->minWidth, width, window->maxWidth),
                      PinValue(window->minHeight, height, window->maxHeight));
}

void SetMaxChildSize(ChildWindow* window, int16_t width, int16_t height) {
  window->maxWidth = width;
  window->maxHeight = height;
  SizeChildWindow(window, window->geometry.clientWidth, window->geometry.clientHeight);
}

void KeepChildWindowInside(ChildWindow* window, int16_t x, int16_t y) {
  const WindowGeometry &g = window->geometry, &main = window->parent->geometry;
  const int32_t dx = ShiftInto(x - g.insetLeft, g.outerWidth, main.clientLeft, main.clientWidth);
  const int32_t dy = ShiftInto(y - g.insetTop, g.outerHeight, main.clientTop, main.clientHeight);
  PlaceChildWindow(window, PinToShort(x + dx), PinToShort(y + dy));
}

void CentreChildWindow(ChildWindow* window) {
  const Area area = CentringArea(window->parent);
  const WindowGeometry& g = window->geometry;
  PlaceOnMonitor(window, area.left + area.width / 2 - g.outerWidth / 2 + g.insetLeft,
                 area.top + area.height / 2 - g.outerHeight / 2 + g.insetTop);
}

void PlaceChildWindowUpper(ChildWindow* window) {
  const Area area = CentringArea(window->parent);
  const WindowGeometry& g = window->geometry;
  PlaceOnMonitor(window, area.left + (area.width - g.outerWidth) / 2, area.top + (area.height - g.outerHeight) / 3);
}

void StartChildGeometry(ChildWindow* window) {
  const WindowGeometry& main = window->parent->geometry;
  ApplyWindowGeometry(window, 0, 0, main.outerWidth / 2, main.outerHeight / 2);
}

bool ProgramPlacesWindow() {
  return quietCount > 0;
}

Point ToWindowPoint(const ChildWindow* window, Point point) {
  if (!window) return point;
  return {int16_t(point.v - window->geometry.clientTop), int16_t(point.h - window->geometry.clientLeft)};
}

Point ToToolkitPoint(const ChildWindow* window, Point point) {
  if (!window) return point;
  return {int16_t(point.v + window->geometry.clientTop), int16_t(point.h + window->geometry.clientLeft)};
}

// ---- The main window ---------------------------------------------------------------------------------------------

void SetMainClientSize(MainWindow* main, int16_t width, int16_t height) {
  main = MainOr(main);
  ApplyMainGeometry(main, main->originX + main->geometry.insetLeft, main->originY + main->geometry.insetTop, width,
                    height);
}

void MoveMainWindow(MainWindow* main, int16_t x, int16_t y) {
  main = MainOr(main);
  ApplyMainGeometry(main, x, y, main->geometry.clientWidth, main->geometry.clientHeight);
}

void SetMainBounds(MainWindow* main, int16_t x, int16_t y, int16_t width, int16_t height) {
  ApplyMainGeometry(MainOr(main), x, y, width, height);
}

void SetMainMinimumSize(MainWindow* main, int16_t width, int16_t height) {
  MainOr(main)->minWidth = width;
  MainOr(main)->minHeight = height;
}

bool MainIsIconic(const MainWindow* main) {
  return MainOr(main)->iconic;
}

} // namespace framereel
