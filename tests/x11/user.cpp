// See user.h.
#include "x11/user.h"

#include <algorithm>
#include <ostream>
#include <tuple>

namespace framereel {

namespace {

constexpr uint32_t kLongMs = 20000; // what has not come by then comes no more

} // namespace

void X11WindowTest::SetUp() {
  ASSERT_TRUE(DisplayOpen());
  MovePointer(artist.Width() - 1, artist.Height() - 1);
}

void X11WindowTest::TearDown() {
  for (DisplayWindow* window : windows) DisplayFreeWindow(window);
  Catch();
  // The next connection gets the same numbers for its windows, which a window manager must not take for these.
  WaitForManager();
  DisplayClose();
}

// ---- The program -------------------------------------------------------------------------------------------------

DisplayWindow* X11WindowTest::Open(Role role, const PixelRect& place, DisplayWindow* owner) {
  DisplayWindow* window = DisplayNewWindow({role, place, owner, "test"});
  EXPECT_NE(window, nullptr);
  windows.push_back(window);
  Catch(); // others may look at it
  return window;
}

DisplayWindow* X11WindowTest::Show(Role role, const PixelRect& place, DisplayWindow* owner) {
  DisplayWindow* window = Open(role, place, owner);
  DisplayShowWindow(window, true);
  Until([=, this] { return StandsOnScreen(window); });
  WaitForManager();
  if (role != Role::kCover) Next(Kind::kExposed, window);
  return window;
}

void X11WindowTest::Activate(DisplayWindow* window) {
  DisplayActivateWindow(window);
  Until([&] { return (Drain(), X11Live()->desktop.focus.told == window); });
}

// ---- The user ----------------------------------------------------------------------------------------------------

void X11WindowTest::ClicksInto(DisplayWindow* window, int32_t x, int32_t y, uint8_t button, Place where) {
  MovePointer(x, y);
  Click(button);
  const DisplayEvent down = Next(Kind::kMouseDown, window, where);
  EXPECT_EQ(std::tuple(down.x, down.y, down.button), std::tuple(x, y, button)) << "line " << where.line();
  EXPECT_LE(static_cast<int32_t>(down.tick - DisplayTick()), 0);
  EXPECT_EQ(Next(Kind::kMouseUp, window, where).button, button);
  WaitForManager(); // it held the mouse for a moment, to see the press first
}

void X11WindowTest::TypesInto(DisplayWindow* window, Place where) {
  Type(CodeOf(XK_b));
  EXPECT_EQ(Next(Kind::kKeyDown, window, where).key, 'B');
}

// ---- The desktop -------------------------------------------------------------------------------------------------

// Asked how thick a frame would be, it answers on the window, and it works off everything in its order.
void X11WindowTest::WaitForManager() {
  if (!HasManager()) return;
  Window window = XCreateSimpleWindow(artist.display, artist.root, 0, 0, 1, 1, 0, 0, 0);
  Tell(artist.root, window, "_NET_REQUEST_FRAME_EXTENTS", {});
  Until([&] { return !Items(window, "_NET_FRAME_EXTENTS").empty(); });
  XDestroyWindow(artist.display, window);
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
}

std::vector<long> X11WindowTest::Items(Window window, const char* property, Atom* type) const {
  Atom any = None;
  int format;
  unsigned long count = 0, rest;
  unsigned char* data = nullptr;
  XGetWindowProperty(artist.display, window, AtomOf(property), 0, 1 << 20, False, AnyPropertyType, type ? type : &any,
                     &format, &count, &rest, &data);
  std::vector<long> items;
  for (unsigned long i = 0; data && i < count; i++) {
    // Xlib keeps an item of 32 bits in a long, with its sign.
    items.push_back(format == 32 ? reinterpret_cast<long*>(data)[i] & 0xFFFFFFFF : data[i]);
  }
  if (data) XFree(data);
  return items;
}

void X11WindowTest::WriteItems(Window window, const char* property, Atom type, std::vector<long> items) {
  XChangeProperty(artist.display, window, AtomOf(property), type, 32, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(items.data()), static_cast<int>(items.size()));
}

XEvent X11WindowTest::NextOfArtist(int type) {
  XEvent event{};
  Until([&] { return XCheckTypedEvent(artist.display, type, &event); });
  return event;
}

PixelRect X11WindowTest::PlaceOf(Window window) const {
  const XWindowAttributes now = artist.State(window);
  int x = 0, y = 0;
  Window child;
  XTranslateCoordinates(artist.display, window, artist.root, -now.border_width, -now.border_width, &x, &y, &child);
  return {x, y, x + now.width + 2 * now.border_width, y + now.height + 2 * now.border_width};
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

// ---- Waiting -----------------------------------------------------------------------------------------------------

DisplayEvent X11WindowTest::Next(Kind kind, const DisplayWindow* window, Place where) {
  DisplayEvent event{};
  Until(
      [&] {
        while (DisplayNextEvent(&event)) {
          if (event.kind == kind && event.window == window) return true;
        }
        return event = {}, false;
      },
      where);
  return event;
}

// What is waited for may be another program's doing, of which we get no event: so the server is asked until it is
// there.
void X11WindowTest::Until(const std::function<bool()>& holds, Place where) {
  uint32_t start = DisplayTick();
  for (Catch(); !holds(); Catch()) {
    if (DisplayTick() - start > kLongMs) {
      ADD_FAILURE_AT(where.file_name(), int(where.line())) << "what was waited for did not come";
      return;
    }
  }
}

std::vector<DisplayEvent> X11WindowTest::Drain() {
  Catch();
  std::vector<DisplayEvent> events;
  for (DisplayEvent event; DisplayNextEvent(&event);) events.push_back(event);
  return events;
}

bool X11WindowTest::Came(Kind kind) {
  std::vector<DisplayEvent> events = Drain();
  return std::any_of(events.begin(), events.end(), [=](const DisplayEvent& event) { return event.kind == kind; });
}

void PrintTo(const PixelRect& r, std::ostream* out) {
  *out << "{" << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom << "}";
}

} // namespace framereel
