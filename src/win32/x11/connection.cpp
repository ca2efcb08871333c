// The connection of the X11 display: opening, losing, closing, and what arrives unasked, errors and events. The screen
// is in screen.cpp, the pointer in pointer.cpp.
//
// Xlib ends the program on an error of the server and on a broken connection. Neither may happen here: an error is
// remembered and means that the thing asked for is not there; a broken connection makes the display lost.
#include <csetjmp>
#include <csignal>

#include "win32/pixels/exhaustion.h"
#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

// The display's own state; everything else hangs off the connection.
struct {
  std::unique_ptr<X11Connection> connection;
  bool asked; // DisplayOpen has been called since the last DisplayClose
  bool lost;
  XErrorHandler errorsBefore;
  XIOErrorHandler breaksBefore;
  std::jmp_buf* opening; // where a break leads while the connection is being made; null afterwards
} own;

bool IsOwn(Display* display) {
  return own.connection && own.connection->display == display;
}

int OnError(Display* display, XErrorEvent* event) {
  if (!IsOwn(display)) return own.errorsBefore ? own.errorsBefore(display, event) : 0;
  own.connection->failedRequest = event->serial;
  return 0;
}

// Silent for our connection; the program tells its user in its own words.
//
// Until the connection stands Xlib ends the process behind this, and the libraries on top of it go on without the
// answer that they wait for, as far as their next null pointer. So a break leaves all of them at once.
int OnBreak(Display* display) {
  if (own.opening) std::longjmp(*own.opening, 1);
  return !IsOwn(display) && own.breaksBefore ? own.breaksBefore(display) : 0;
}

// Stands in the place of the exit that Xlib takes by default. Its calls return with an error from then on.
void OnAfterBreak(Display*, void*) {
  own.lost = true;
}

// Writing to a server that has gone is an error to be handled, not a signal to die of.
void IgnoreBrokenPipes() {
  struct sigaction action {};
  if (::sigaction(SIGPIPE, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) return;
  action.sa_handler = SIG_IGN;
  ::sigaction(SIGPIPE, &action, nullptr);
}

// Makes the connection, if there is a server. A break leaves it, and all that it calls, without clean-up: nothing here
// may need any.
void Connect() {
  Display* display = XOpenDisplay(nullptr);
  if (!display) return;
  own.connection = std::make_unique<X11Connection>();
  X11Connection* x = own.connection.get();
  x->display = display;
  x->root = DefaultRootWindow(display);
  XSetIOErrorExitHandler(display, OnAfterBreak, nullptr);
  // The root tells of a new resolution by a change of its size, and of the window manager's doings by its properties.
  XSelectInput(display, x->root, X11RootEvents(x));
  X11ReadScreenFacts(x);
  X11ReadResolution(x);
  X11MakeContexts(x);
  X11ReadSharing(x);
  X11WatchPointer(x);
  X11WatchDevices(x);
  X11InternAtoms(x);
  X11MakeFence(x);
  X11WatchCompositor(x);
  X11WatchChanges(x);
}

void LeaveHandlers() {
  XSetErrorHandler(own.errorsBefore);
  XSetIOErrorHandler(own.breaksBefore);
}

// Any client can send any event. What the server alone knows is believed of nobody else: others send messages and
// input, and window managers say that a window of ours may have moved.
bool IsBelieved(const X11Connection* x, const XEvent& event) {
  if (!event.xany.send_event) return true;
  switch (event.type) {
  case ClientMessage:
  case KeyPress:
  case KeyRelease:
  case ButtonPress:
  case ButtonRelease:
  case MotionNotify:
  case SelectionNotify:
    return true;
  case ConfigureNotify:
    return event.xconfigure.window != x->root;
  default:
    return false;
  }
}

} // namespace

bool DisplayOpen() {
  if (own.asked) return X11Live() != nullptr;
  own.asked = true;
  own.lost = false;
  IgnoreBrokenPipes();
  own.errorsBefore = XSetErrorHandler(OnError);
  own.breaksBefore = XSetIOErrorHandler(OnBreak);
  std::jmp_buf broken;
  own.opening = &broken;
  if (setjmp(broken) == 0) {
    Connect();
  } else {
    own.lost = true;
  }
  own.opening = nullptr;
  if (!own.connection) LeaveHandlers();
  return X11Live() != nullptr;
}

void DisplayClose() {
  own.asked = false;
  if (!own.connection) return;
  X11Connection* x = own.connection.get();
  if (x->transfers) X11FreeSegment(X11Live(), std::move(x->transfers));
  X11ForgetSequences(x);
  X11LeaveSession(x);
  // What the server holds for us goes with the connection; Xlib's own records do not.
  for (GC context : {x->drawing, x->inverting, x->stippling, x->marks.context}) {
    if (context) XFreeGC(x->display, context);
  }
  XCloseDisplay(x->display);
  LeaveHandlers();
  own.connection.reset();
}

bool DisplayIsLost() {
  if (X11Connection* x = X11Live()) X11TakeEvents(x, QueuedAfterReading);
  return own.lost;
}

// A lost display has not another one.
int32_t DisplayDotsPerInch() {
  return own.connection ? own.connection->dotsPerInch : 0;
}

X11Connection* X11Live() {
  return own.lost ? nullptr : own.connection.get();
}

void X11NoAnswer(const X11Connection* x, unsigned long request) {
  if (X11Live() && x->failedRequest < request) EndWithoutMemory();
}

void X11TakeEvents(X11Connection* x, int queued) {
  while (XEventsQueued(x->display, queued) > 0) {
    XEvent event;
    XNextEvent(x->display, &event);
    if (!IsBelieved(x, event)) continue;
    if (X11TakeDeviceEvent(x, event) || X11TakePointerEvent(x, event) || X11TakeDesktopEvent(x, event)) continue;
    if (X11TakeChangeEvent(x, event)) continue;
    if (event.type == ConfigureNotify && event.xconfigure.window == x->root) {
      x->facts.width = event.xconfigure.width;
      x->facts.height = event.xconfigure.height;
      x->desktop.monitorsUnsure = true; // the same event tells of them
      x->devices.pointerStale = true;   // the server keeps it on the screen
      x->changes.unsure = true;         // what was drawn on the screen before is no word on this one
      X11NoteScreenChanged(x);
      continue;
    }
    if (X11TakeCompositorEvent(x, event) || X11TakeSelectionEvent(x, event)) continue;
    X11TakeWindowEvent(x, &event);
  }
}

} // namespace framereel
