// Our windows on the X11 display: making, showing, stacking, presenting. Where they stand is in placement.cpp, which of
// them has the keyboard in focus.cpp, what they say to a window manager in window_manager.cpp, and what is heard of
// them in events.cpp.
//
// Every call sends what it asks for at once and does not wait for it. Sizes and places are cut to what the protocol
// can say, 16 bits.
#include <X11/extensions/Xrandr.h>

#include <algorithm>
#include <vector>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

Window Create(const X11Connection* x, const DisplayWindowSpec& spec) {
  bool cover = spec.role == WindowRole::kCover;
  XSetWindowAttributes attributes{};
  attributes.override_redirect = spec.role == WindowRole::kPopup || cover;
  attributes.bit_gravity = NorthWestGravity;
  attributes.event_mask = StructureNotifyMask | VisibilityChangeMask | FocusChangeMask | PropertyChangeMask |
                          KeyPressMask | KeyReleaseMask | ButtonPressMask | ButtonReleaseMask | PointerMotionMask |
                          EnterWindowMask | LeaveWindowMask;
  unsigned long said = CWOverrideRedirect | CWEventMask;
  // A window without output has neither pixels to keep nor any to paint.
  if (!cover) {
    attributes.event_mask |= ExposureMask;
    said |= CWBitGravity;
  }
  X11Place place = X11PlaceOf(spec.place);
  return XCreateWindow(x->display, x->root, place.x, place.y, place.width, place.height, 0, cover ? 0 : CopyFromParent,
                       cover ? InputOnly : InputOutput, CopyFromParent, said, &attributes);
}

// The last is the topmost of its kind.
void Restack(X11Connection* x, DisplayWindow* window, bool top) {
  std::vector<DisplayWindow*>& windows = x->desktop.windows;
  std::erase(windows, window);
  windows.insert(top ? windows.end() : windows.begin(), window);
}

void Show(X11Connection* x, DisplayWindow* window) {
  if (X11IsManaged(*window)) {
    X11WritePlace(x, *window);
    X11WriteStart(x, *window);
  }
  Restack(x, window, true);
  if (X11IsManaged(*window)) XRaiseWindow(x->display, window->id);
  X11RaiseUnmanaged(x);
  XMapWindow(x->display, window->id);
}

void Hide(X11Connection* x, DisplayWindow* window) {
  window->wantsKeyboard = false;
  X11ReleaseKeyboard(x, window);
  if (X11IsManaged(*window)) {
    XWithdrawWindow(x->display, window->id, DefaultScreen(x->display));
  } else {
    XUnmapWindow(x->display, window->id);
  }
}

// Window managers do it by themselves.
void RaiseDialogsOf(X11Connection* x, const DisplayWindow* owner) {
  for (const DisplayWindow* window : x->desktop.windows) {
    if (!window->shown || window->owner != owner || !X11IsManaged(*window)) continue;
    XRaiseWindow(x->display, window->id);
    RaiseDialogsOf(x, window);
  }
}

void ForgetPointer(X11Connection* x, DisplayWindow* window) {
  if (window->ownsPointer && window->pointer) XFreeCursor(x->display, window->pointer);
  window->pointer = None;
  window->ownsPointer = false;
}

std::vector<PixelRect> ReadMonitors(X11Connection* x) {
  const PixelRect screen = {0, 0, x->facts.width, x->facts.height};
  int event, error, major = 0, minor = 0, count = 0;
  // Monitors came with version 1.5.
  bool has = XRRQueryExtension(x->display, &event, &error) && XRRQueryVersion(x->display, &major, &minor) &&
             (major > 1 || minor >= 5);
  XRRMonitorInfo* monitors = has ? XRRGetMonitors(x->display, x->root, True, &count) : nullptr;
  std::stable_partition(monitors, monitors + count, [](const XRRMonitorInfo& monitor) { return monitor.primary; });
  std::vector<PixelRect> shown;
  for (int i = 0; i < count; i++) {
    const XRRMonitorInfo& m = monitors[i];
    const PixelRect part = Intersect(screen, {m.x, m.y, m.x + m.width, m.y + m.height});
    if (!IsEmpty(part)) shown.push_back(part);
  }
  if (monitors) XRRFreeMonitors(monitors);
  if (shown.empty()) shown.push_back(screen);
  return shown;
}

} // namespace

X11Place X11PlaceOf(const PixelRect& place) {
  auto size = [](int64_t v) { return int32_t(std::clamp<int64_t>(v, 1, kX11PlaceMax)); };
  return {std::clamp(place.left, kX11PlaceMin, kX11PlaceMax), std::clamp(place.top, kX11PlaceMin, kX11PlaceMax),
          size(int64_t{place.right} - place.left), size(int64_t{place.bottom} - place.top)};
}

DisplayWindow* X11WindowOf(const X11Connection* x, Window id) {
  for (DisplayWindow* window : x->desktop.windows) {
    if (window->id == id) return window;
  }
  return nullptr;
}

bool X11IsManaged(const DisplayWindow& window) {
  return window.role != WindowRole::kPopup && window.role != WindowRole::kCover;
}

void X11RaiseUnmanaged(X11Connection* x) {
  const std::vector<DisplayWindow*>& windows = x->desktop.windows;
  std::vector<Window> stack; // from the top down
  for (WindowRole role : {WindowRole::kCover, WindowRole::kPopup}) {
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
      if ((*window)->shown && (*window)->role == role) stack.push_back((*window)->id);
    }
  }
  if (!stack.empty()) {
    // Each of the others slides under the one before, so none covers another for a moment and has to be painted anew.
    XRaiseWindow(x->display, stack.front());
    XRestackWindows(x->display, stack.data(), int(stack.size()));
  }
  X11RaiseMarks(x);
}

DisplayWindow* DisplayNewWindow(const DisplayWindowSpec& spec) {
  X11Connection* x = X11Live();
  if (!x) return nullptr;
  auto* window = new DisplayWindow{};
  X11ReadKeys(x);
  window->id = Create(x, spec);
  window->role = spec.role;
  window->place = spec.place;
  window->owner = spec.owner;
  x->desktop.windows.push_back(window);
  X11Describe(x, *window);
  X11WriteTitle(x, *window, spec.title ? spec.title : "");
  XFlush(x->display);
  if (spec.role == WindowRole::kMain) X11JoinSession(x);
  if (X11Live()) return window;
  DisplayFreeWindow(window);
  return nullptr;
}

void DisplayFreeWindow(DisplayWindow* window) {
  X11Connection* x = X11Live();
  // One that is not in the list belongs to an earlier connection and has gone with it.
  if (x && std::erase(x->desktop.windows, window) > 0) {
    X11ForgetWindow(x, window);
    XDestroyWindow(x->display, window->id);
    ForgetPointer(x, window);
    XFlush(x->display);
  }
  delete window;
}

void DisplayShowWindow(DisplayWindow* window, bool shown) {
  X11Connection* x = X11Live();
  if (!x || window->shown == shown) return;
  window->shown = shown;
  if (shown) {
    Show(x, window);
  } else {
    Hide(x, window);
  }
  XFlush(x->display);
}

void DisplayStackWindow(DisplayWindow* window, bool top) {
  X11Connection* x = X11Live();
  if (!x) return;
  Restack(x, window, top);
  if (X11IsManaged(*window) && top) {
    XRaiseWindow(x->display, window->id);
    RaiseDialogsOf(x, window);
  } else if (X11IsManaged(*window)) {
    XLowerWindow(x->display, window->id);
  }
  X11RaiseUnmanaged(x);
  XFlush(x->display);
}

void DisplayTitleWindow(DisplayWindow* window, const char* title) {
  X11Connection* x = X11Live();
  if (!x) return;
  X11WriteTitle(x, *window, title);
  XFlush(x->display);
}

void DisplayModalWindow(DisplayWindow* window, bool modal) {
  X11Connection* x = X11Live();
  if (!x || window->modal == modal) return;
  window->modal = modal;
  // One that is shown later says so then.
  if (window->shown) X11AskModal(x, *window);
  XFlush(x->display);
}

void DisplayIconWindow(DisplayWindow* window, std::span<const PointerPicture> icon) {
  X11Connection* x = X11Live();
  if (!x) return;
  X11WriteIcon(x, *window, icon);
  XFlush(x->display);
}

bool DisplayDragWindow(DisplayWindow* window, int32_t pointerX, int32_t pointerY) {
  X11Connection* x = X11Live();
  if (!x || !X11IsManaged(*window) || !X11ManagerCan(x, kNetWmMoveResize)) return false;
  // The window manager takes the pointer, which must be free for it.
  x->desktop.captured = nullptr;
  XUngrabPointer(x->display, CurrentTime);
  X11AskToDrag(x, *window, pointerX, pointerY);
  x->desktop.drag = {window, window->place.left - pointerX, window->place.top - pointerY, false};
  XFlush(x->display);
  return X11Live() != nullptr;
}

void DisplayPresent(DisplayWindow* window, const Surface& surface, const PixelRect& part) {
  X11Connection* x = X11Live();
  if (!x || window->role == WindowRole::kCover) return;
  if (!window->viewable && !window->becameViewable) return; // it is exposed when it comes to stand on the screen
  if (!X11HasScreenLayout(x, surface)) return;
  PixelRect on = Intersect(part, {0, 0, surface.width, surface.height});
  if (!IsEmpty(on)) X11PutPixels(x, window->id, surface, on, on.left, on.top);
}

PixelRect DisplayUsableArea() {
  X11Connection* x = X11Live();
  if (!x) return {};
  X11TakeEvents(x, QueuedAlready);
  if (x->desktop.usableUnsure) {
    x->desktop.usable = X11ReadUsableArea(x);
    x->desktop.usableUnsure = false;
  }
  return x->desktop.usable;
}

std::vector<PixelRect> DisplayMonitors() {
  X11Connection* x = X11Live();
  if (!x) return {PixelRect{}};
  X11TakeEvents(x, QueuedAlready);
  if (x->desktop.monitorsUnsure) {
    x->desktop.monitors = ReadMonitors(x);
    x->desktop.monitorsUnsure = false;
  }
  return x->desktop.monitors;
}

} // namespace framereel
