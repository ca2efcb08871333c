// What the server and the window manager tell of our windows and of the screen, turned into events, and the mouse.
//
// Some of it is told in part only: that a window has moved, or that its state has changed somehow. What is missing is
// asked for when the caller takes its next event, never in the midst of another call.
#include <X11/Xatom.h>
#include <X11/cursorfont.h>

#include <algorithm>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

using Kind = DisplayEventKind;

constexpr long kMouseEvents = ButtonPressMask | ButtonReleaseMask | PointerMotionMask;
constexpr int32_t kPointerSideMax = 256; // pixels of a pointer's picture

// When it happened, by our clock. The server's may be another machine's: the event that arrived quickest tells by how
// much they differ.
uint32_t TickOf(X11Desktop* desktop, const XEvent& event, Time time) {
  uint32_t now = DisplayTick();
  if (event.xany.send_event || time == CurrentTime) return now;
  uint32_t ahead = now - uint32_t(time);
  if (!desktop->knowsClock || int32_t(ahead - desktop->clockAhead) < 0) desktop->clockAhead = ahead;
  desktop->knowsClock = true;
  return uint32_t(time) + desktop->clockAhead;
}

void QueueMouse(X11Connection* x, DisplayWindow* window, const XEvent& event) {
  DisplayEvent told{};
  told.window = window;
  if (event.type == MotionNotify) {
    told.kind = Kind::kMouseMove;
    told.x = event.xmotion.x_root;
    told.y = event.xmotion.y_root;
    told.tick = TickOf(&x->desktop, event, event.xmotion.time);
  } else {
    unsigned int button = event.xbutton.button;
    // The wheel comes as buttons of its own, one press for each notch; others are nobody's.
    bool wheel = button == Button4 || button == Button5;
    if (button < Button1 || button > Button5 || (wheel && event.type == ButtonRelease)) return;
    told.kind = wheel ? Kind::kMouseWheel : event.type == ButtonPress ? Kind::kMouseDown : Kind::kMouseUp;
    told.x = event.xbutton.x_root;
    told.y = event.xbutton.y_root;
    told.button = wheel ? 0 : uint8_t(button);
    told.notches = wheel ? (button == Button4 ? 1 : -1) : 0;
    told.tick = TickOf(&x->desktop, event, event.xbutton.time);
    if (event.type == ButtonPress) x->desktop.userTime = event.xbutton.time;
  }
  x->desktop.events.push_back(told);
}

void QueueKey(X11Connection* x, DisplayWindow* window, const XEvent& event) {
  const XKeyEvent& key = event.xkey;
  DisplayEvent told{};
  told.kind = key.type == KeyPress ? Kind::kKeyDown : Kind::kKeyUp;
  told.window = x->desktop.focus.told ? x->desktop.focus.told : window;
  told.x = key.x_root;
  told.y = key.y_root;
  told.scan = uint8_t(key.keycode);
  told.key = X11VirtualKey(x, told.scan, key.state);
  if (key.type == KeyPress) {
    x->desktop.userTime = key.time;
    told.text = X11TypedText(x, key);
  }
  told.tick = TickOf(&x->desktop, event, key.time);
  x->desktop.events.push_back(told);
}

void QueueExposed(X11Connection* x, DisplayWindow* window, const XExposeEvent& event) {
  X11QueueEvent(x, Kind::kExposed, window, false);
  x->desktop.events.back().rect = {event.x, event.y, event.x + event.width, event.y + event.height};
}

// ---- The capture of the mouse ------------------------------------------------------------------------------------

void LoseCapture(X11Connection* x) {
  DisplayWindow* window = x->desktop.captured;
  x->desktop.captured = nullptr;
  x->desktop.captureWaits = false;
  if (window) X11QueueEvent(x, Kind::kCaptureLost, window, false);
}

void GrabPointer(X11Connection* x) {
  X11Desktop& desktop = x->desktop;
  int answer = XGrabPointer(x->display, desktop.captured->id, False, kMouseEvents, GrabModeAsync, GrabModeAsync, None,
                            desktop.captured->pointer, CurrentTime);
  desktop.captureWaits = answer == GrabNotViewable;
  if (answer != GrabSuccess && answer != GrabNotViewable && X11Live()) LoseCapture(x);
}

// ---- Dragging by the window manager ------------------------------------------------------------------------------

// The button went up before the window manager had taken the pointer, and it would wait for the release for ever: the
// EWMH has the client that gets the release take the request back. Where the pointer had got to, the window follows,
// and that it does is news of the desktop's.
void EndDrag(X11Connection* x, int32_t pointerX, int32_t pointerY) {
  const X11Drag drag = x->desktop.drag;
  x->desktop.drag = {};
  X11AskNotToDrag(x, *drag.window);
  XMoveWindow(x->display, drag.window->id, pointerX + drag.right, pointerY + drag.down);
  XFlush(x->display);
}

// ---- The mouse ---------------------------------------------------------------------------------------------------

void TakeMouse(X11Connection* x, DisplayWindow* window, const XEvent& event) {
  x->devices.pointerStale = true; // it may have moved without a device's doing
  bool endsDrag = x->desktop.drag.window && event.type == ButtonRelease && event.xbutton.button == Button1;
  if (endsDrag) return EndDrag(x, event.xbutton.x_root, event.xbutton.y_root);
  QueueMouse(x, window, event);
}

void TakeCrossing(X11Connection* x, const XCrossingEvent& event) {
  x->devices.pointerStale = true;
  // The window manager has the pointer now, and gets the release.
  if (event.type == LeaveNotify && event.mode == NotifyGrab) x->desktop.drag = {};
}

// ---- What is asked for -------------------------------------------------------------------------------------------

// It can be given now what only a window on the screen can have.
void OnViewable(X11Connection* x, DisplayWindow* window) {
  window->viewable = true;
  window->becameViewable = false;
  window->stateUnsure = window->stateUnsure || window->minimised;
  X11GiveKeyboard(x, window);
  if (x->desktop.captured == window && x->desktop.captureWaits) GrabPointer(x);
  XFlush(x->display);
}

// A release outside of our windows reaches nobody while the window manager has not taken the pointer.
void AskDrag(X11Connection* x) {
  x->desktop.drag.unsure = false;
  bool up = !(X11AskPointer(x) & Button1Mask);
  if (up && X11Live()) EndDrag(x, x->pointerX, x->pointerY);
}

// Asks for what events have told in part; false when there was nothing.
bool Settle(X11Connection* x) {
  bool asked = x->desktop.drag.window && x->desktop.drag.unsure;
  if (asked) AskDrag(x);
  for (DisplayWindow* window : x->desktop.windows) {
    if (!window->becameViewable) continue;
    OnViewable(x, window);
    asked = true;
  }
  bool focus = X11SettleFocus(x), places = X11SettlePlaces(x);
  return asked || focus || places;
}

void OnUnmapped(X11Connection* x, DisplayWindow* window) {
  window->viewable = window->becameViewable = false;
  // The server takes the pointer from a window that is not on the screen.
  if (x->desktop.captured == window) LoseCapture(x);
}

// ---- Messages ----------------------------------------------------------------------------------------------------

void TakeMessage(X11Connection* x, DisplayWindow* window, XEvent* event) {
  XClientMessageEvent& message = event->xclient;
  if (message.message_type != X11AtomOf(x, kWmProtocols) || message.format != 32) return;
  Atom protocol = static_cast<Atom>(message.data.l[0]);
  if (protocol == X11AtomOf(x, kWmDeleteWindow)) X11QueueEvent(x, Kind::kCloseRequest, window, false);
  if (protocol != X11AtomOf(x, kNetWmPing)) return;
  // Sent back as it came, but to the root: the program is alive.
  message.window = x->root;
  XSendEvent(x->display, x->root, False, SubstructureRedirectMask | SubstructureNotifyMask, event);
}

void TakeProperty(X11Connection* x, Window changed, Atom atom) {
  X11Desktop& desktop = x->desktop;
  auto is = [&](X11Atom which) { return atom == X11AtomOf(x, which); };
  if (DisplayWindow* window = X11WindowOf(x, changed)) {
    if (is(kWmState) || is(kNetWmState)) window->stateUnsure = true;
    return;
  }
  if (is(kGtkFrameExtents)) X11TakeMargins(x, changed);
  if (is(kNetSupported)) desktop.talentsUnsure = true;
  if (is(kNetClientListStacking)) X11RaiseUnmanaged(x);
  if (is(kNetWorkArea) || is(kNetCurrentDesktop) || is(kNetClientList) || is(kNetWmStrutPartial)) {
    X11NoteScreenChanged(x);
  }
}

// ---- Pointer shapes ----------------------------------------------------------------------------------------------

Cursor SystemPointer(X11Connection* x, PointerShape shape) {
  constexpr unsigned int shapes[] = {XC_left_ptr, XC_xterm, XC_watch, XC_crosshair};
  size_t which = size_t(shape);
  Cursor& pointer = x->desktop.shapes[which];
  if (!pointer) pointer = XCreateFontCursor(x->display, shapes[which]);
  return pointer;
}

// Of two colours, which every server can show: half or more of a pixel is there, and half or more of the light white.
Cursor OwnPointer(X11Connection* x, const PointerPicture& picture) {
  if (picture.width < 1 || picture.height < 1) return None;
  if (picture.width > kPointerSideMax || picture.height > kPointerSideMax) return None;
  size_t rowBytes = size_t(picture.width + 7) / 8;
  std::vector<char> white(rowBytes * picture.height), there(rowBytes * picture.height);
  for (int32_t y = 0; y < picture.height; y++) {
    for (int32_t column = 0; column < picture.width; column++) {
      uint32_t pixel = picture.pixels[y * picture.width + column];
      uint32_t alpha = pixel >> 24;
      uint32_t light = (pixel >> 16 & 255) + (pixel >> 8 & 255) + (pixel & 255);
      size_t byte = y * rowBytes + column / 8;
      if (alpha >= 128) there[byte] |= char(1 << column % 8);
      if (2 * light >= 3 * alpha) white[byte] |= char(1 << column % 8);
    }
  }
  Pixmap source = XCreateBitmapFromData(x->display, x->root, white.data(), picture.width, picture.height);
  Pixmap mask = XCreateBitmapFromData(x->display, x->root, there.data(), picture.width, picture.height);
  XColor light{0, 0xFFFF, 0xFFFF, 0xFFFF, DoRed | DoGreen | DoBlue, 0};
  XColor dark{0, 0, 0, 0, DoRed | DoGreen | DoBlue, 0};
  Cursor pointer =
      XCreatePixmapCursor(x->display, source, mask, &light, &dark, std::clamp(picture.hotX, 0, picture.width - 1),
                          std::clamp(picture.hotY, 0, picture.height - 1));
  XFreePixmap(x->display, source);
  XFreePixmap(x->display, mask);
  return pointer;
}

} // namespace

void X11QueueEvent(X11Connection* x, DisplayEventKind kind, DisplayWindow* window, bool flag) {
  DisplayEvent event{};
  event.kind = kind;
  event.window = window;
  event.flag = flag;
  event.tick = DisplayTick();
  x->desktop.events.push_back(event);
}

void X11NoteScreenChanged(X11Connection* x) {
  std::deque<DisplayEvent>& events = x->desktop.events;
  x->desktop.usableUnsure = true;
  // One tells as much as many.
  bool waits = std::any_of(events.begin(), events.end(),
                           [](const DisplayEvent& event) { return event.kind == Kind::kScreenChanged; });
  if (!waits) X11QueueEvent(x, Kind::kScreenChanged, nullptr, false);
}

void X11TakeWindowEvent(X11Connection* x, XEvent* event) {
  if (X11TakeKeyboardEvent(x, event)) return;
  if (event->type == PropertyNotify) return TakeProperty(x, event->xproperty.window, event->xproperty.atom);
  if (event->type == ConfigureNotify) return X11TakePlace(x, event->xconfigure);
  DisplayWindow* window = X11WindowOf(x, event->xany.window);
  if (!window) return;
  switch (event->type) {
  case MotionNotify:
  case ButtonPress:
  case ButtonRelease:
    return TakeMouse(x, window, *event);
  case EnterNotify:
  case LeaveNotify:
    return TakeCrossing(x, event->xcrossing);
  case KeyPress:
  case KeyRelease:
    return QueueKey(x, window, *event);
  case FocusIn:
  case FocusOut:
    return X11TakeFocus(x, window, event->xfocus);
  case Expose:
    return QueueExposed(x, window, event->xexpose);
  case VisibilityNotify:
    window->becameViewable = true;
    return;
  case UnmapNotify:
    return OnUnmapped(x, window);
  case DestroyNotify:
    return X11QueueEvent(x, Kind::kDestroyed, window, false);
  case ClientMessage:
    return TakeMessage(x, window, event);
  default:
    return;
  }
}

void X11ForgetWindow(X11Connection* x, const DisplayWindow* window) {
  X11Desktop& desktop = x->desktop;
  X11ReleaseKeyboard(x, window);
  std::erase_if(desktop.events, [=](const DisplayEvent& event) { return event.window == window; });
  for (DisplayWindow* other : desktop.windows) {
    if (other->owner == window) other->owner = nullptr;
  }
  // The server releases it as the window goes.
  if (desktop.captured == window) desktop.captured = nullptr;
  if (desktop.drag.window == window) desktop.drag = {};
}

void DisplayCapturePointer(DisplayWindow* window) {
  X11Connection* x = X11Live();
  if (!x || (!window && !x->desktop.captured)) return;
  x->desktop.captured = window;
  x->desktop.captureWaits = false;
  if (window) {
    GrabPointer(x);
  } else {
    XUngrabPointer(x->display, CurrentTime);
  }
  XFlush(x->display);
}

void DisplayPointerShape(DisplayWindow* window, PointerShape shape, const PointerPicture* picture) {
  X11Connection* x = X11Live();
  if (!x) return;
  bool own = shape == PointerShape::kOwn;
  Cursor pointer = !own ? SystemPointer(x, shape) : picture ? OwnPointer(x, *picture) : None;
  XDefineCursor(x->display, window->id, pointer);
  if (x->desktop.captured == window) XChangeActivePointerGrab(x->display, kMouseEvents, pointer, CurrentTime);
  if (window->ownsPointer && window->pointer) XFreeCursor(x->display, window->pointer);
  window->pointer = pointer;
  window->ownsPointer = own;
  XFlush(x->display);
}

void DisplayBeep() {
  X11Connection* x = X11Live();
  if (!x) return;
  XBell(x->display, 0);
  XFlush(x->display);
}

bool DisplayNextEvent(DisplayEvent* event) {
  X11Connection* x = X11Live();
  if (!x) return false;
  std::deque<DisplayEvent>& events = x->desktop.events;
  X11ForgetPalette(x);
  if (events.empty()) {
    X11TakeEvents(x, QueuedAfterFlush);
    X11TakeSessionMessages(x);
  }
  // More may have come along with the answers.
  while (X11Live() && Settle(x)) X11TakeEvents(x, QueuedAlready);
  if (X11Live()) X11SettleOldMarks(x);
  X11ForgetOldChanges(x);
  if (!X11Live() || events.empty()) return false;
  *event = events.front();
  events.pop_front();
  return true;
}

} // namespace framereel
