// See user.h.
#include "x11/user.h"

#include <poll.h>

#include <algorithm>
#include <ostream>

#include <X11/Xatom.h>
#include <X11/extensions/XTest.h>

namespace framereel {

namespace {

constexpr int kLongMs = 20000; // after so long without any event nothing comes any more

} // namespace

void X11WindowTest::SetUp() {
  X11Test::SetUp();
  MovePointer(artist.Width() - 1, artist.Height() - 1);
}

void X11WindowTest::TearDown() {
  for (DisplayWindow* window : windows) DisplayFreeWindow(window);
  Catch();
  // The next connection gets the same numbers for its windows, which a window manager must not take for these.
  WaitForManager();
  X11Test::TearDown();
}

DisplayWindow* X11WindowTest::Open(WindowRole role, const PixelRect& place, DisplayWindow* owner, const char* title) {
  DisplayWindow* window = DisplayNewWindow({role, place, owner, title});
  EXPECT_NE(window, nullptr);
  windows.push_back(window);
  Catch(); // others may look at it
  return window;
}

DisplayWindow* X11WindowTest::Show(WindowRole role, const PixelRect& place, DisplayWindow* owner) {
  DisplayWindow* window = Open(role, place, owner);
  DisplayShowWindow(window, true);
  Until([=, this] { return StandsOnScreen(window); });
  WaitForManager();
  if (role != WindowRole::kCover) Next(DisplayEventKind::kExposed, window);
  return window;
}

void X11WindowTest::Free(DisplayWindow* window) {
  std::erase(windows, window);
  DisplayFreeWindow(window);
}

void X11WindowTest::Activate(DisplayWindow* window) {
  DisplayActivateWindow(window);
  Until([&] { return (Drain(), window->active); });
}

void X11WindowTest::MovePointer(int32_t x, int32_t y) {
  XTestFakeMotionEvent(artist.display, -1, x, y, CurrentTime);
  XSync(artist.display, False);
}

void X11WindowTest::Button(unsigned int button, bool down) {
  XTestFakeButtonEvent(artist.display, button, down, CurrentTime);
  XSync(artist.display, False);
}

void X11WindowTest::Key(KeySym symbol, bool down) {
  XTestFakeKeyEvent(artist.display, CodeOf(symbol), down, CurrentTime);
  XSync(artist.display, False);
}

void X11WindowTest::Type(KeyCode code) {
  XTestFakeKeyEvent(artist.display, code, True, CurrentTime);
  XTestFakeKeyEvent(artist.display, code, False, CurrentTime);
  XSync(artist.display, False);
}

bool X11WindowTest::HasManager() const {
  XWindowAttributes state{};
  return XGetWindowAttributes(artist.display, artist.root, &state) && state.all_event_masks & SubstructureRedirectMask;
}

// Asked how thick a frame would be, it answers on the window, and it works off everything in its order.
void X11WindowTest::WaitForManager() {
  if (!HasManager()) return;
  Window window = XCreateSimpleWindow(artist.display, artist.root, 0, 0, 1, 1, 0, 0, 0);
  Tell(artist.root, window, "_NET_REQUEST_FRAME_EXTENTS", {});
  Until([&] { return !Longs(window, "_NET_FRAME_EXTENTS").empty(); });
  XDestroyWindow(artist.display, window);
}

bool X11WindowTest::HasCompositor() {
  return XGetSelectionOwner(artist.display, AtomOf("_NET_WM_CM_S0")) != None;
}

void X11WindowTest::Tell(Window to, Window about, const char* type, std::vector<long> data) {
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = about;
  event.xclient.message_type = AtomOf(type);
  event.xclient.format = 32;
  std::copy(data.begin(), data.end(), event.xclient.data.l);
  long mask = to == artist.root ? SubstructureRedirectMask | SubstructureNotifyMask : NoEventMask;
  XSendEvent(artist.display, to, False, mask, &event);
  XSync(artist.display, False);
}

std::vector<long> X11WindowTest::Longs(Window window, const char* property) const {
  Atom type;
  int format;
  unsigned long count = 0, rest;
  unsigned char* data = nullptr;
  XGetWindowProperty(artist.display, window, AtomOf(property), 0, 65536, False, AnyPropertyType, &type, &format, &count,
                     &rest, &data);
  std::vector<long> items;
  // Xlib keeps each in a long, with its sign.
  for (unsigned long i = 0; data && format == 32 && i < count; i++) {
    items.push_back(reinterpret_cast<long*>(data)[i] & 0xFFFFFFFF);
  }
  if (data) XFree(data);
  return items;
}

std::string X11WindowTest::Text(Window window, const char* property) const {
  Atom type;
  int format;
  unsigned long count = 0, rest;
  unsigned char* data = nullptr;
  XGetWindowProperty(artist.display, window, AtomOf(property), 0, 65536, False, AnyPropertyType, &type, &format, &count,
                     &rest, &data);
  std::string text = data && format == 8 ? std::string(reinterpret_cast<char*>(data), count) : "";
  if (data) XFree(data);
  return text;
}

PixelRect X11WindowTest::PlaceOf(const DisplayWindow* window) const {
  XWindowAttributes size{};
  int x = 0, y = 0;
  Window child;
  XGetWindowAttributes(artist.display, window->id, &size);
  XTranslateCoordinates(artist.display, window->id, artist.root, 0, 0, &x, &y, &child);
  return {x, y, x + size.width, y + size.height};
}

bool X11WindowTest::StandsOnScreen(const DisplayWindow* window) const {
  XWindowAttributes state{};
  XGetWindowAttributes(artist.display, window->id, &state);
  return state.map_state == IsViewable;
}

Window X11WindowTest::WindowAt(int32_t x, int32_t y) const {
  Window window = artist.root;
  for (Window child = artist.root; child != None;) {
    int insideX, insideY;
    window = child;
    XTranslateCoordinates(artist.display, artist.root, window, x, y, &insideX, &insideY, &child);
  }
  return window;
}

bool X11WindowTest::WaitForMore() {
  X11Connection* x = X11Live();
  if (!x) return false;
  // What Xlib has read already the connection does not tell of again.
  if (XEventsQueued(x->display, QueuedAfterFlush) > 0) return true;
  pollfd connection = {ConnectionNumber(x->display), POLLIN, 0};
  return ::poll(&connection, 1, kLongMs) > 0;
}

DisplayEvent X11WindowTest::Next(DisplayEventKind kind, const DisplayWindow* window, std::source_location where) {
  do {
    DisplayEvent event;
    while (DisplayNextEvent(&event)) {
      if (event.kind == kind && event.window == window) return event;
    }
  } while (WaitForMore());
  ADD_FAILURE_AT(where.file_name(), int(where.line())) << "no event of kind " << static_cast<int>(kind) << " came";
  return {};
}

// What is waited for may be another program's doing, of which we get no event: so the server is asked until it is
// there.
void X11WindowTest::Until(const std::function<bool()>& holds, std::source_location where) {
  uint32_t start = DisplayTick();
  for (Catch(); !holds(); Catch()) {
    if (DisplayTick() - start > kLongMs) {
      ADD_FAILURE_AT(where.file_name(), int(where.line())) << "what was waited for did not come";
      return;
    }
  }
}

std::vector<DisplayEvent> X11WindowTest::Drain() {
  XSync(artist.display, False);
  Catch();
  std::vector<DisplayEvent> events;
  for (DisplayEvent event; DisplayNextEvent(&event);) events.push_back(event);
  return events;
}

bool operator==(const PixelRect& a, const PixelRect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

void PrintTo(const PixelRect& r, std::ostream* out) {
  *out << "{" << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom << "}";
}

} // namespace framereel
