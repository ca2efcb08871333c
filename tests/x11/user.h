// A user and a desktop for the tests of the X11 display's windows: presses keys and moves the mouse through the server,
// asks window managers as a task bar would, and waits for what comes of it. Waiting is for events, and ends in a
// failure when none comes for very long.
#pragma once

#include "x11/artist.h"

#include <functional>
#include <source_location>

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

  void SetUp() override;
  void TearDown() override;

  // ---- The program ----

  // A window of ours, freed with the test.
  DisplayWindow* Open(Role role, const PixelRect& place, DisplayWindow* owner = nullptr);
  // The same, shown, and waited for.
  DisplayWindow* Show(Role role, const PixelRect& place, DisplayWindow* owner = nullptr);
  // Gives it the keyboard, and waits until it has it.
  void Activate(DisplayWindow* window);

  // ---- The user ----

  void MovePointer(int32_t x, int32_t y) const { XTestFakeMotionEvent(artist.display, -1, x, y, CurrentTime); }
  void Button(unsigned int button, bool down) const { XTestFakeButtonEvent(artist.display, button, down, CurrentTime); }
  void Click(unsigned int button) const { Button(button, true), Button(button, false); }
  void Hold(KeyCode code, bool down) const { XTestFakeKeyEvent(artist.display, code, down, CurrentTime); }
  void Key(KeySym symbol, bool down) const { Hold(CodeOf(symbol), down); }
  void Type(KeyCode code) const { Hold(code, true), Hold(code, false); }
  // The click at that place, and the key, come to the window.
  void ClicksInto(DisplayWindow* window, int32_t x, int32_t y, uint8_t button = 1, Place where = Place::current());
  void TypesInto(DisplayWindow* window, Place where = Place::current());
  KeyCode CodeOf(KeySym symbol) const { return XKeysymToKeycode(artist.display, symbol); }

  // ---- The desktop ----

  bool HasManager() const { return artist.State(artist.root).all_event_masks & SubstructureRedirectMask; }
  // Waits until the window manager has worked off all that happened up to now.
  void WaitForManager();
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
  void Tell(Window to, Window about, const char* type, std::vector<long> data);
  // The items of a property of 32 bits, or its bytes, and its type.
  std::vector<long> Items(Window window, const char* property, Atom* type = nullptr) const;
  std::string Text(Window window, const char* property, Atom* type = nullptr) const {
    const std::vector<long> bytes = Items(window, property, type);
    return std::string(bytes.begin(), bytes.end());
  }
  void WriteItems(Window window, const char* property, Atom type, std::vector<long> items);
  // Waits for an event of the artist's own.
  XEvent NextOfArtist(int type);
  // Where the window stands on the screen with its border, by the server's own word.
  PixelRect PlaceOf(Window window) const;
  PixelRect PlaceOf(const DisplayWindow* window) const { return PlaceOf(window->id); }
  bool StandsOnScreen(const DisplayWindow* window) const { return artist.State(window->id).map_state == IsViewable; }
  // The innermost window at a place of the screen.
  Window WindowAt(int32_t x, int32_t y) const;

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
  DisplayEvent Next(Kind kind, const DisplayWindow* window, Place where = Place::current());
  // Asks until it holds.
  void Until(const std::function<bool()>& holds, Place where = Place::current());
  // Takes all events that have come, once both sides agree.
  std::vector<DisplayEvent> Drain();
  // The same; whether one of the kind was among them.
  bool Came(Kind kind);

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
    for (const char* name : {"_NET_SUPPORTED", "_NET_CLIENT_LIST", "_NET_ACTIVE_WINDOW"}) {
      XDeleteProperty(artist.display, artist.root, XInternAtom(artist.display, name, False));
    }
    XSelectInput(artist.display, artist.root, NoEventMask);
  }
};

inline bool operator==(const PixelRect& a, const PixelRect& b) {
  return Same(a, b);
}
void PrintTo(const PixelRect& r, std::ostream* out);

} // namespace framereel
