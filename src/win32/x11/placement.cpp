// Where our windows stand and whether they are minimised on the X11 display: what is asked for, and what has come of
// it.
//
// A window manager does what it is asked later, one request after the other, and moves windows on its own in between.
// Whatever it told before it came to our last request is of the past, and a caller who believed it would ask for it
// again: the old size with the next move, for instance. So nothing is told until the fence (x11_windows.h) has passed,
// and then the server is asked where the window really stands. That also makes it useless to invent notices: any client
// can send one, of any size.
#include <algorithm>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

using Kind = DisplayEventKind;

// A window manager that has ended, or that leaves windows alone that are not its own, lets no fence pass.
constexpr uint32_t kPatienceMs = 3000;

void RaiseFence(X11Connection* x) {
  X11Fence& fence = x->desktop.fence;
  fence.asked = (fence.asked + 1) & kX11PlaceMax;
  fence.askedAt = DisplayTick();
  XMoveWindow(x->display, fence.id, fence.asked, 0);
}

bool HasPassed(const X11Fence& fence) {
  return fence.passed == fence.asked || DisplayTick() - fence.askedAt >= kPatienceMs;
}

bool ReadPlace(X11Connection* x, const DisplayWindow& window, PixelRect* place) {
  Window root, child;
  int left, top;
  unsigned int width, height, border, depth;
  bool stands = XGetGeometry(x->display, window.id, &root, &left, &top, &width, &height, &border, &depth) &&
                XTranslateCoordinates(x->display, window.id, x->root, 0, 0, &left, &top, &child);
  // Any client can make a window of ours as large as the protocol goes. What is beyond the screen is not worth memory.
  int32_t widest = std::max(x->facts.width, window.place.right - window.place.left);
  int32_t highest = std::max(x->facts.height, window.place.bottom - window.place.top);
  if (stands) {
    *place = {left, top, left + std::min(int32_t(width), widest), top + std::min(int32_t(height), highest)};
  }
  return stands;
}

void AskPlace(X11Connection* x, DisplayWindow* window) {
  window->placeUnsure = false;
  PixelRect place;
  if (!ReadPlace(x, *window, &place) || Same(place, window->place)) return;
  window->place = place;
  X11QueueEvent(x, Kind::kPlaced, window, false);
  x->desktop.events.back().rect = place;
}

// Nobody minimises windows where there is no window manager, but the last one may have.
bool ReadState(X11Connection* x, const DisplayWindow& window, bool* minimised) {
  if (X11HasManager(x)) return X11ReadMinimised(x, window, minimised);
  *minimised = false;
  return window.viewable;
}

// Managers that minimise a window may do so with those that it owns. These go and come back with it in any case.
void AskState(X11Connection* x, DisplayWindow* window) {
  window->stateUnsure = false;
  bool minimised = false;
  if (!window->shown || window->owner || !ReadState(x, *window, &minimised) || minimised == window->minimised) return;
  window->minimised = window->startsMinimised = minimised;
  X11QueueEvent(x, Kind::kMinimised, window, minimised);
}

// A move and a new size are two requests: a window manager that does not want the window there (beyond the screen, for
// one) leaves aside all of that request.
void Configure(X11Connection* x, DisplayWindow* window, const PixelRect& place) {
  X11Place before = X11PlaceOf(window->place), after = X11PlaceOf(place);
  bool sized = before.width != after.width || before.height != after.height;
  window->place = place;
  if (sized && X11IsManaged(*window)) {
    X11WritePlace(x, *window); // it keeps to the sizes that it has been told
    XResizeWindow(x->display, window->id, after.width, after.height);
  }
  XMoveResizeWindow(x->display, window->id, after.x, after.y, after.width, after.height);
}

} // namespace

void X11MakeFence(X11Connection* x) {
  XSetWindowAttributes attributes{};
  attributes.event_mask = StructureNotifyMask;
  x->desktop.fence.id =
      XCreateWindow(x->display, x->root, 0, 0, 1, 1, 0, 0, InputOnly, CopyFromParent, CWEventMask, &attributes);
}

void X11TakePlace(X11Connection* x, const XConfigureEvent& event) {
  if (event.window == x->desktop.fence.id && !event.send_event) x->desktop.fence.passed = event.x;
  if (DisplayWindow* window = X11WindowOf(x, event.window)) window->placeUnsure = true;
}

bool X11SettlePlaces(X11Connection* x) {
  bool asked = false, passed = HasPassed(x->desktop.fence);
  for (DisplayWindow* window : x->desktop.windows) {
    bool place = window->placeUnsure && passed, state = window->stateUnsure;
    if (place) AskPlace(x, window);
    if (state) AskState(x, window);
    asked = asked || place || state;
  }
  return asked;
}

void DisplayPlaceWindow(DisplayWindow* window, const PixelRect& place) {
  X11Connection* x = X11Live();
  if (!x || (Same(place, window->place) && !window->placeUnsure)) return;
  std::erase_if(x->desktop.events,
                [=](const DisplayEvent& event) { return event.kind == Kind::kPlaced && event.window == window; });
  Configure(x, window, place);
  RaiseFence(x);
  XFlush(x->display);
}

bool DisplayMinimiseWindow(DisplayWindow* window, bool minimised) {
  X11Connection* x = X11Live();
  if (!x || !X11IsManaged(*window) || !X11HasManager(x)) return false;
  window->startsMinimised = minimised;
  if (!window->shown) return true; // it then comes that way
  if (minimised) {
    XIconifyWindow(x->display, window->id, DefaultScreen(x->display));
  } else {
    XMapWindow(x->display, window->id);
  }
  XFlush(x->display);
  return true;
}

} // namespace framereel
