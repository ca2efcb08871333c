// A user and a desktop for the tests of the X11 display's windows: presses keys and moves the mouse through the server,
// asks window managers as a task bar would, and waits for what comes of it. Waiting is for events, and ends in a
// failure when none comes for very long.
#pragma once

#include "x11/artist.h"

#include <algorithm>
#include <functional>
#include <ostream>
#include <source_location>
#include <tuple>

#include <X11/Xatom.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include "win32/x11/x11_display.h"

namespace framereel {

// The display under test and an artist beside it, fresh for each test.
class X11WindowTest : public testing::Test {
protected:
  using Kind = DisplayEventKind;
  using Role = WindowRole;
  using Place = std::source_location; // in the test

  void SetUp() override {
    ASSERT_TRUE(DisplayOpen());
    MovePointer(artist.Width() - 1, artist.Height() - 1);
  }
  void TearDown() override {
    for (DisplayWindow* window : windows) DisplayFreeWindow(window);
    Catch();
    // The next connection gets the same numbers for its windows, which a window manager must not take for these.
    WaitForManager();
    DisplayClose();
  }

  // ---- The program ----

  // A window of ours, freed with the test.
  DisplayWindow* Open(Role role, const PixelRect& place, DisplayWindow* owner = nullptr) {
    DisplayWindow* window = DisplayNewWindow({role, place, owner, "test"});
    EXPECT_NE(window, nullptr);
    windows.push_back(window);
    Catch(); // others may look at it
    return window;
  }
  // The same, shown, and waited for.
  DisplayWindow* Show(Role role, const PixelRect& place, DisplayWindow* owner = nullptr) {
    DisplayWindow* window = Open(role, place, owner);
    DisplayShowWindow(window, true);
    Until([=, this] { return StandsOnScreen(window); });
    WaitForManager();
    if (role != Role::kCover) Next(Kind::kExposed, window);
    return window;
  }
  // Gives it the keyboard, and waits until it has it.
  void Activate(DisplayWindow* window) {
    DisplayActivateWindow(window);
    Until([&] { return (Drain(), X11Live()->desktop.focus.told == window); });
  }

  // ---- The user ----

  void MovePointer(int32_t x, int32_t y) const { XTestFakeMotionEvent(artist.display, -1, x, y, CurrentTime); }
  void Button(unsigned int button, bool down) const { XTestFakeButtonEvent(artist.display, button, down, CurrentTime); }
  void Click(unsigned int button) const { Button(button, true), Button(button, false); }
  void Hold(KeyCode code, bool down) const { XTestFakeKeyEvent(artist.display, code, down, CurrentTime); }
  void Key(KeySym symbol, bool down) const { Hold(CodeOf(symbol), down); }
  void Type(KeyCode code) const { Hold(code, true), Hold(code, false); }
  // The click at that place, and the key, come to the window.
  void ClicksInto(DisplayWindow* window, int32_t x, int32_t y, uint8_t button = 1, Place where = Place::current()) {
    MovePointer(x, y);
    Click(button);
    const DisplayEvent down = Next(Kind::kMouseDown, window, where);
    EXPECT_EQ(std::tuple(down.x, down.y, down.button), std::tuple(x, y, button)) << "line " << where.line();
    EXPECT_LE(static_cast<int32_t>(down.tick - DisplayTick()), 0);
    EXPECT_EQ(Next(Kind::kMouseUp, window, where).button, button);
    WaitForManager(); // it held the mouse for a moment, to see the press first
  }
  void TypesInto(DisplayWindow* window, Place where = Place::current()) {
    Type(CodeOf(XK_b));
    EXPECT_EQ(Next(Kind::kKeyDown, window, where).key, 'B');
  }
  KeyCode CodeOf(KeySym symbol) const { return XKeysymToKeycode(artist.display, symbol); }

  // ---- The desktop ----

  bool HasManager() const { return artist.State(artist.root).all_event_masks & SubstructureRedirectMask; }
  // Waits until the window manager has worked off all that happened up to now: asked how thick a frame would be, it
  // answers on the window, and it works off everything in its order.
  void WaitForManager() {
    if (!HasManager()) return;
    Window window = XCreateSimpleWindow(artist.display, artist.root, 0, 0, 1, 1, 0, 0, 0);
    Tell(artist.root, window, "_NET_REQUEST_FRAME_EXTENTS", {});
    Until([&] { return !Items(window, "_NET_FRAME_EXTENTS").empty(); });
    XDestroyWindow(artist.display, window);
  }
  bool HasCompositor() const { return XGetSelectionOwner(artist.display, AtomOf("_NET_WM_CM_S0")) != None; }
  // Another program takes the keyboard, or all keys, or the mouse.
  void FocusOn(Window window) const { XSetInputFocus(artist.display, window, RevertToPointerRoot, CurrentTime); }
  Window Focus() const {
    Window focus = None;
    int revert;
    return XGetInputFocus(artist.display, &focus, &revert), focus;
  }
  void GrabKeys() const {
    XGrabKeyboard(artist.display, artist.root, False, GrabModeAsync, GrabModeAsync, CurrentTime);
  }
  void GrabMouse() const {
    XGrabPointer(artist.display, artist.root, False, 0, GrabModeAsync, GrabModeAsync, None, None, CurrentTime);
  }
  long AtomOf(const std::string& name) const { return long(XInternAtom(artist.display, name.c_str(), False)); }
  // A message of a task bar's or a window manager's: to the root about the window, or to the window itself.
  void Tell(Window to, Window about, const char* type, std::vector<long> data) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = about;
    event.xclient.message_type = AtomOf(type);
    event.xclient.format = 32;
    std::copy(data.begin(), data.end(), event.xclient.data.l);
    long mask = to == artist.root ? SubstructureRedirectMask | SubstructureNotifyMask : NoEventMask;
    XSendEvent(artist.display, to, False, mask, &event);
  }
  // The items of a property of 32 bits, or its bytes.
  std::vector<long> Items(Window window, const char* property) const {
    Atom type = None;
    int format;
    unsigned long count = 0, rest;
    unsigned char* data = nullptr;
    XGetWindowProperty(artist.display, window, AtomOf(property), 0, 1 << 20, False, AnyPropertyType, &type, &format,
                       &count, &rest, &data);
    std::vector<long> items;
    for (unsigned long i = 0; data && i < count; i++) {
      // Xlib keeps an item of 32 bits in a long, with its sign.
      items.push_back(format == 32 ? reinterpret_cast<long*>(data)[i] & 0xFFFFFFFF : data[i]);
    }
    if (data) XFree(data);
    return items;
  }
  std::string Text(Window window, const char* property) const {
    const std::vector<long> bytes = Items(window, property);
    return std::string(bytes.begin(), bytes.end());
  }
  void WriteItems(Window window, const char* property, Atom type, std::vector<long> items) {
    XChangeProperty(artist.display, window, AtomOf(property), type, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(items.data()), static_cast<int>(items.size()));
  }
  // Waits for an event of the artist's own.
  XEvent NextOfArtist(int type) {
    XEvent event{};
    Until([&] { return XCheckTypedEvent(artist.display, type, &event); });
    return event;
  }
  // Where the window stands on the screen with its border, by the server's own word.
  PixelRect PlaceOf(Window window) const {
    const XWindowAttributes now = artist.State(window);
    int x = 0, y = 0;
    Window child;
    XTranslateCoordinates(artist.display, window, artist.root, -now.border_width, -now.border_width, &x, &y, &child);
    return {x, y, x + now.width + 2 * now.border_width, y + now.height + 2 * now.border_width};
  }
  PixelRect PlaceOf(const DisplayWindow* window) const { return PlaceOf(window->id); }
  bool StandsOnScreen(const DisplayWindow* window) const { return artist.State(window->id).map_state == IsViewable; }
  // The innermost window at a place of the screen.
  Window WindowAt(int32_t x, int32_t y) const {
    Window window = artist.root;
    for (Window child = artist.root; child != None;) {
      int insideX, insideY;
      window = child;
      XTranslateCoordinates(artist.display, artist.root, window, x, y, &insideX, &insideY, &child);
    }
    return window;
  }

  // ---- Waiting ----

  // Both sides agree behind it: the server has done what the display asked for, and the display has received what the
  // server sent up to now.
  void Catch() {
    if (X11Connection* x = X11Live()) XSync(x->display, False);
  }
  // What stands on the screen once the display's drawing has arrived.
  Picture Seen() {
    Catch();
    return artist.Look();
  }
  // Takes events until one is of the kind and for the window, and answers it; the others are dropped.
  DisplayEvent Next(Kind kind, const DisplayWindow* window, Place where = Place::current()) {
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
  // Asks until it holds. What is waited for may be another program's doing, of which we get no event: so the server is
  // asked until it is there.
  void Until(const std::function<bool()>& holds, Place where = Place::current()) {
    constexpr uint32_t kLongMs = 20000; // what has not come by then comes no more
    const uint32_t start = DisplayTick();
    for (Catch(); !holds(); Catch()) {
      if (DisplayTick() - start > kLongMs) {
        ADD_FAILURE_AT(where.file_name(), int(where.line())) << "what was waited for did not come";
        return;
      }
    }
  }
  // Takes all events that have come, once both sides agree.
  std::vector<DisplayEvent> Drain() {
    Catch();
    std::vector<DisplayEvent> events;
    for (DisplayEvent event; DisplayNextEvent(&event);) events.push_back(event);
    return events;
  }
  // The same; whether one of the kind was among them.
  bool Came(Kind kind) {
    std::vector<DisplayEvent> events = Drain();
    return std::any_of(events.begin(), events.end(), [=](const DisplayEvent& event) { return event.kind == kind; });
  }

  Artist artist;

private:
  std::vector<DisplayWindow*> windows;
};

// The artist as a window manager, of which the tests know what it does and when, on a desktop without one.
struct OwnManager {
  const Artist& artist;

  explicit OwnManager(const Artist& a) : artist(a) {
    XSelectInput(artist.display, artist.root, SubstructureRedirectMask);
  }
  ~OwnManager() {
    for (const char* name :
         {"_NET_SUPPORTED", "_NET_CLIENT_LIST", "_NET_ACTIVE_WINDOW", "_NET_WORKAREA", "_NET_CURRENT_DESKTOP"}) {
      XDeleteProperty(artist.display, artist.root, XInternAtom(artist.display, name, False));
    }
    XSelectInput(artist.display, artist.root, NoEventMask);
  }
};

inline bool operator==(const PixelRect& a, const PixelRect& b) {
  return Same(a, b);
}
inline void PrintTo(const PixelRect& r, std::ostream* out) {
  *out << "{" << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom << "}";
}

} // namespace framereel
