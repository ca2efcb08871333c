// Placing windows, and following where the platform puts them. What is worked out here and sent to the platform comes
// back through ChildPlaceChanged and MainPlaceChanged, which alone store it.
#include "platform/windows/window_geometry.h"

#include "core/notices.h"
#include "core/numbers.h"
#include "platform/display/usable_area.h"
#include "platform/drawing/ports.h"
#include "platform/windows/active_window.h"
#include "platform/windows/child_window.h"
#include "platform/windows/main_window.h"

namespace framereel {
namespace {

constexpr int16_t kNowhere = 32767;

// Above 0 while the program itself moves a ChildWindow.
int quietCount;

struct Insets {
  int32_t left, top, width, height; // the last two of both sides together
};

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

bool IsTopLevel(const ChildWindow* window) {
  return window->flags & kTopLevelWindow;
}

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

// What a new window is centred on, in toolkit coordinates.
struct Area {
  int32_t left, top, width, height;
};

Area CentringArea(const MainWindow* main) {
  if (main->originX > main->usableWidth) {
    return {-main->originX, -main->originY, main->usableWidth, main->usableHeight};
  }
  const WindowGeometry& g = main->geometry;
  return {g.clientLeft, g.clientTop, g.clientWidth, g.clientHeight};
}

} // namespace

WindowGeometry NoGeometry() {
  return {kNowhere, kNowhere, kNowhere, kNowhere, kNowhere, kNowhere, kNowhere, kNowhere, 0, 0, 0, 0};
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
  constexpr int32_t kMargin = 5;
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
  // How far a span from `start` has to move to lie within the room; its start counts for more than its end.
  const auto shift = [](int32_t start, int32_t length, int32_t room, int32_t roomLength) {
    if (start < room) return room - start;
    return Minimum(0, room + roomLength - start - length);
  };
  const int32_t dx = shift(x - g.insetLeft, g.outerWidth, main.clientLeft, main.clientWidth);
  const int32_t dy = shift(y - g.insetTop, g.outerHeight, main.clientTop, main.clientHeight);
  PlaceChildWindow(window, PinToShort(x + dx), PinToShort(y + dy));
}

void CentreChildWindow(ChildWindow* window) {
  const Area area = CentringArea(window->parent);
  const WindowGeometry& g = window->geometry;
  PlaceChildWindow(window, PinToShort(area.left + area.width / 2 - g.outerWidth / 2 + g.insetLeft),
                   PinToShort(area.top + area.height / 2 - g.outerHeight / 2 + g.insetTop));
}

void PlaceChildWindowUpper(ChildWindow* window) {
  const Area area = CentringArea(window->parent);
  const WindowGeometry& g = window->geometry;
  PlaceChildWindow(window, PinToShort(area.left + (area.width - g.outerWidth) / 2),
                   PinToShort(area.top + (area.height - g.outerHeight) / 3));
}

void StartChildGeometry(ChildWindow* window) {
  const WindowGeometry& main = window->parent->geometry;
  ApplyWindowGeometry(window, 0, 0, main.outerWidth / 2, main.outerHeight / 2);
}

Point ToWindowPoint(const ChildWindow* window, Point point) {
  if (!window) return point;
  return {PinToShort(point.v - window->geometry.clientTop), PinToShort(point.h - window->geometry.clientLeft)};
}

Point ToToolkitPoint(const ChildWindow* window, Point point) {
  if (!window) return point;
  return {PinToShort(point.v + window->geometry.clientTop), PinToShort(point.h + window->geometry.clientLeft)};
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

// ---- What the platform tells -------------------------------------------------------------------------------------

namespace {

bool IsIconic(HWND handle) {
  WINDOWPLACEMENT placement = {};
  placement.length = sizeof placement;
  ::GetWindowPlacement(handle, &placement);
  return placement.showCmd == SW_SHOWMINIMIZED;
}

// Learns the frame from what the platform's default takes off the rectangle of WM_NCCALCSIZE.
LRESULT LearnInsets(WindowGeometry* g, bool iconic, HWND handle, WPARAM wParam, LPARAM lParam) {
  auto* rect = reinterpret_cast<RECT*>(lParam);
  const RECT outer = *rect;
  const LRESULT answer = ::DefWindowProcA(handle, WM_NCCALCSIZE, wParam, lParam);
  if (!iconic) {
    g->insetLeft = PinToShort(rect->left - outer.left);
    g->insetTop = PinToShort(rect->top - outer.top);
    g->insetRight = PinToShort(outer.right - rect->right);
    g->insetBottom = PinToShort(outer.bottom - rect->bottom);
  }
  ClientFromOuter(g);
  return answer;
}

bool StoreSize(WindowGeometry* g, const WINDOWPOS& place) {
  if (place.cx == g->outerWidth && place.cy == g->outerHeight) return false;
  const Insets insets = InsetsOf(*g);
  g->outerWidth = PinToShort(place.cx);
  g->outerHeight = PinToShort(place.cy);
  g->clientWidth = PinToShort(g->outerWidth - insets.width);
  g->clientHeight = PinToShort(g->outerHeight - insets.height);
  return true;
}

// The outer corner in toolkit coordinates.
bool StorePlace(WindowGeometry* g, int32_t x, int32_t y) {
  const WindowGeometry before = *g;
  g->outerLeft = PinToShort(x);
  g->outerTop = PinToShort(y);
  g->clientLeft = PinToShort(x + g->insetLeft);
  g->clientTop = PinToShort(y + g->insetTop);
  return g->outerLeft != before.outerLeft || g->outerTop != before.outerTop || g->clientLeft != before.clientLeft ||
         g->clientTop != before.clientTop;
}

// The main window moved and the origin of toolkit coordinates with it. Windows that stand on the screen by themselves
// stayed where they are, which is another place in those coordinates.
void FollowOrigin(int32_t dx, int32_t dy) {
  for (ChildWindow* window = NextChildWindow(nullptr); window; window = NextChildWindow(window)) {
    const WindowGeometry& g = window->geometry;
    if (IsTopLevel(window)) StorePlace(&window->geometry, g.outerLeft - dx, g.outerTop - dy);
  }
}

// A slot for what the user did to the window.
void CallUserSlot(ChildWindow* window, WindowMethod method) {
  if (quietCount > 0 || window->flags & kWindowClosed) return;
  SetPortWindow(window);
  method(window);
}

} // namespace

void ReadChildIconic(ChildWindow* window) {
  window->iconic = IsIconic(window->window);
}

void ReadMainIconic(MainWindow* main) {
  if (!main->window) return;
  const bool before = main->iconic;
  main->iconic = IsIconic(main->window);
  CheckActiveState();
  if (main->iconic != before) NotifySend(main, kChangeMainMinimised);
}

LRESULT ChildFrameChanged(ChildWindow* window, HWND handle, WPARAM wParam, LPARAM lParam) {
  ReadChildIconic(window);
  return LearnInsets(&window->geometry, window->iconic, handle, wParam, lParam);
}

LRESULT MainFrameChanged(MainWindow* main, HWND handle, WPARAM wParam, LPARAM lParam) {
  ReadMainIconic(main);
  return LearnInsets(&main->geometry, main->iconic, handle, wParam, lParam);
}

void ChildPlaceChanged(ChildWindow* window, const WINDOWPOS& place) {
  EvaluateActiveWindow();
  ReadChildIconic(window);
  if (window->iconic) return;
  const MainWindow* main = window->parent;
  const bool topLevel = IsTopLevel(window);
  const int32_t x = place.x + (topLevel ? -main->originX : main->geometry.insetLeft);
  const int32_t y = place.y + (topLevel ? -main->originY : main->geometry.insetTop);
  if (StoreSize(&window->geometry, place)) CallUserSlot(window, window->methods.resized);
  if (StorePlace(&window->geometry, x, y)) CallUserSlot(window, window->methods.moved);
}

void MainPlaceChanged(MainWindow* main, const WINDOWPOS& place) {
  WindowGeometry* g = &main->geometry;
  const int16_t width = g->clientWidth, height = g->clientHeight, originX = main->originX, originY = main->originY;
  ReadMainIconic(main);
  if (!main->iconic) {
    StoreSize(g, place);
    main->originX = PinToShort(place.x);
    main->originY = PinToShort(place.y);
    StorePlace(g, 0, 0);
    FollowOrigin(main->originX - originX, main->originY - originY);
  }
  if (main->originX != originX || main->originY != originY) NotifySend(main, kChangeMainMoved);
  if (g->clientWidth != width || g->clientHeight != height) NotifySend(main, kChangeMainSize);
  DisplayChanged();
}

} // namespace framereel
