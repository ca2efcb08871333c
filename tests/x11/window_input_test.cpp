// What the user and the desktop do to our windows: the keyboard's coming and going, the mouse and its capture,
// minimising, dragging, and the part of the screen that is free. With and without a window manager.
#include "x11/user.h"

#include <X11/Xatom.h>

namespace framereel {

namespace {

using Kind = DisplayEventKind;
using Role = WindowRole;

class X11WindowInput : public X11WindowTest {
protected:
  void WriteLongs(Window window, const char* property, Atom type, std::vector<long> items) {
    XChangeProperty(artist.display, window, AtomOf(property), type, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(items.data()), static_cast<int>(items.size()));
    XSync(artist.display, False);
  }
  // A panel at the screen's edge; `thick` as _NET_WM_STRUT_PARTIAL begins: left, right, top, bottom.
  Window NewDock(std::vector<long> thick) {
    Window dock = XCreateSimpleWindow(artist.display, artist.root, 0, 0, 50, 24, 0, 0, 0);
    WriteLongs(dock, "_NET_WM_WINDOW_TYPE", XA_ATOM, {long(AtomOf("_NET_WM_WINDOW_TYPE_DOCK"))});
    thick.resize(12);
    thick[9] = artist.Width() - 1; // as far as a strip at the top reaches
    WriteLongs(dock, "_NET_WM_STRUT_PARTIAL", XA_CARDINAL, thick);
    return dock;
  }
  XEvent NextOfArtist(int type) {
    XEvent event{};
    Until([&] { return XCheckTypedEvent(artist.display, type, &event); });
    return event;
  }
};

// The artist as a window manager, of which the tests know what it does and when, on a desktop without one.
struct OwnManager {
  Artist* artist;

  OwnManager(Artist* a) : artist(a) { Listen(SubstructureRedirectMask); }
  ~OwnManager() {
    for (const char* name : {"_NET_SUPPORTED", "_NET_CLIENT_LIST"}) {
      XDeleteProperty(artist->display, artist->root, XInternAtom(artist->display, name, False));
    }
    Listen(NoEventMask);
  }
  void Listen(long mask) {
    XSelectInput(artist->display, artist->root, mask);
    XSync(artist->display, False);
  }
};

// ---- The keyboard ------------------------------------------------------------------------------------------------

TEST_F(X11WindowInput, KeyboardGoesWhereItIsAskedFor) {
  DisplayWindow* first = Show(Role::kMain, {10, 10, 160, 110});
  DisplayWindow* second = Open(Role::kDialog, {200, 10, 350, 110}, first);
  Activate(first);
  // Asked for before the window manager has shown it.
  DisplayShowWindow(second, true);
  DisplayActivateWindow(second);
  EXPECT_FALSE(Next(Kind::kActive, first).flag);
  EXPECT_TRUE(Next(Kind::kActive, second).flag);
  Key(XK_b, true);
  EXPECT_EQ(Next(Kind::kKeyDown, second).key, 'B');
  Key(XK_b, false);
  EXPECT_EQ(Next(Kind::kKeyUp, second).key, 'B');

  Window others = artist.Show(artist.Noise(50, 50, 1), 10, 200);
  XSetInputFocus(artist.display, others, RevertToPointerRoot, CurrentTime);
  XSync(artist.display, False);
  EXPECT_FALSE(Next(Kind::kActive, second).flag);
}

TEST_F(X11WindowInput, AGrabOfTheKeysIsNoLossOfTheKeyboard) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 160, 110});
  Activate(window);
  XGrabKeyboard(artist.display, artist.root, False, GrabModeAsync, GrabModeAsync, CurrentTime);
  for (const DisplayEvent& event : Drain()) EXPECT_NE(event.kind, Kind::kActive);
  XUngrabKeyboard(artist.display, CurrentTime);
  for (const DisplayEvent& event : Drain()) EXPECT_NE(event.kind, Kind::kActive);
}

// ---- The mouse ---------------------------------------------------------------------------------------------------

TEST_F(X11WindowInput, MouseEventsTellPlaceAndButton) {
  DisplayWindow* window = Show(Role::kMain, {50, 50, 250, 200});
  MovePointer(91, 83);
  DisplayEvent moved = Next(Kind::kMouseMove, window);
  EXPECT_EQ(moved.x, 91);
  EXPECT_EQ(moved.y, 83);
  uint32_t last = moved.tick;
  for (uint8_t button : {1, 2, 3}) {
    Button(button, true);
    DisplayEvent down = Next(Kind::kMouseDown, window);
    EXPECT_EQ(down.button, button);
    EXPECT_LE(static_cast<int32_t>(last - down.tick), 0);
    EXPECT_LE(static_cast<int32_t>(down.tick - DisplayTick()), 0);
    Button(button, false);
    EXPECT_EQ(Next(Kind::kMouseUp, window).button, button);
    last = down.tick;
    WaitForManager(); // it held the mouse for a moment, to see the press first
  }
  // The wheel is no button.
  Button(4, true);
  Button(4, false);
  for (const DisplayEvent& event : Drain()) EXPECT_NE(event.kind, Kind::kMouseDown);
}

TEST_F(X11WindowInput, CaptureTakesAllMouseEventsAndGivesThemBack) {
  DisplayWindow* main = Show(Role::kMain, {10, 10, 210, 210});
  DisplayWindow* popup = Show(Role::kPopup, {300, 100, 400, 200}, main);
  DisplayCapturePointer(popup);
  MovePointer(50, 50);
  DisplayEvent event = Next(Kind::kMouseMove, popup);
  EXPECT_EQ(event.x, 50);
  Button(1, true);
  EXPECT_EQ(Next(Kind::kMouseDown, popup).y, 50);
  Button(1, false);
  Next(Kind::kMouseUp, popup);
  DisplayCapturePointer(nullptr);
  Catch();
  MovePointer(60, 60);
  EXPECT_EQ(Next(Kind::kMouseMove, main).x, 60);
}

TEST_F(X11WindowInput, CaptureBeforeTheWindowIsShownWaitsForIt) {
  DisplayWindow* window = Open(Role::kMain, {10, 10, 210, 210});
  DisplayCapturePointer(window);
  DisplayShowWindow(window, true);
  Until([&] { return (Drain(), !window->becameViewable && window->viewable); });
  MovePointer(400, 300);
  EXPECT_EQ(Next(Kind::kMouseMove, window).x, 400);
}

TEST_F(X11WindowInput, CaptureIsLostWithTheWindowOrToAnotherProgram) {
  DisplayWindow* window = Show(Role::kPopup, {10, 10, 210, 210});
  DisplayCapturePointer(window);
  DisplayShowWindow(window, false);
  Next(Kind::kCaptureLost, window);
  DisplayShowWindow(window, true);
  XGrabPointer(artist.display, artist.root, False, 0, GrabModeAsync, GrabModeAsync, None, None, CurrentTime);
  XSync(artist.display, False);
  DisplayCapturePointer(window);
  Next(Kind::kCaptureLost, window);
  XUngrabPointer(artist.display, CurrentTime);
}

TEST_F(X11WindowInput, PointerHasTheShapeOfItsWindow) {
  DisplayWindow* window = Show(Role::kPopup, {10, 10, 210, 210});
  MovePointer(50, 50);
  DisplayPointerShape(window, PointerShape::kIBeam, nullptr);
  Catch();
  auto pixels = [] {
    const PointerPicture* picture = DisplayPointer();
    return picture ? std::vector<uint32_t>(picture->pixels, picture->pixels + picture->width * picture->height)
                   : std::vector<uint32_t>();
  };
  std::vector<uint32_t> beam = pixels();
  EXPECT_FALSE(beam.empty());
  DisplayPointerShape(window, PointerShape::kArrow, nullptr);
  Catch();
  EXPECT_NE(pixels(), beam);

  // Three pixels: white, nothing, dark.
  const uint32_t three[] = {0xFFE0E0E0, 0, 0xFF300000};
  const PointerPicture own = {3, 1, 2, 0, three};
  DisplayPointerShape(window, PointerShape::kOwn, &own);
  Catch();
  const PointerPicture* shown = DisplayPointer();
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(shown->hotX, 2);
  EXPECT_EQ(shown->pixels[0], 0xFFFFFFFF);
  EXPECT_EQ(shown->pixels[1], 0u);
  EXPECT_EQ(shown->pixels[2], 0xFF000000);
}

// ---- Minimising and dragging -------------------------------------------------------------------------------------

TEST_F(X11WindowInput, MinimisesAndComesBack) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 160, 110});
  DisplayMinimiseWindow(window, true);
  Until([&] { return !StandsOnScreen(window); });
  DisplayMinimiseWindow(window, false);
  Until([&] { return StandsOnScreen(window); });
  EXPECT_EQ(PlaceOf(window), (PixelRect{10, 10, 160, 110}));
  for (const DisplayEvent& event : Drain()) EXPECT_NE(event.kind, Kind::kMinimised);

  DisplayWindow* later = Open(Role::kMain, {200, 10, 350, 110});
  DisplayMinimiseWindow(later, true);
  DisplayShowWindow(later, true);
  Drain();
  EXPECT_FALSE(StandsOnScreen(later));
  DisplayMinimiseWindow(later, false);
  Until([&] { return StandsOnScreen(later); });
}

TEST_F(X11WindowInput, TellsWhenTheDesktopMinimisesIt) {
  if (!HasManager()) GTEST_SKIP() << "nobody would";
  DisplayWindow* window = Show(Role::kMain, {10, 10, 160, 110});
  Tell(artist.root, window->id, "WM_CHANGE_STATE", {IconicState});
  EXPECT_TRUE(Next(Kind::kMinimised, window).flag);
  constexpr long byPager = 2;
  Tell(artist.root, window->id, "_NET_ACTIVE_WINDOW", {byPager, CurrentTime, 0});
  EXPECT_FALSE(Next(Kind::kMinimised, window).flag);
}

TEST_F(X11WindowInput, DesktopDragsItWhereThereIsOneThatDoes) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 160, 110});
  MovePointer(50, 50);
  Button(1, true);
  Next(Kind::kMouseDown, window);
  bool drags = DisplayDragWindow(window, 50, 50);
  EXPECT_EQ(drags, HasManager());
  if (drags) {
    // The window manager takes over when it gets round to it.
    Until([&, x = 120]() mutable {
      MovePointer(x ^= 1, 90);
      return PlaceOf(window).left > 10;
    });
    // That it has the pointer is known, so that nothing is taken back when the button goes up.
    Until([&] { return (Drain(), !X11Live()->desktop.drag.window); });
    MovePointer(250, 130);
  }
  Button(1, false);
  if (!drags) return;
  Until([&] { return PlaceOf(window) == PixelRect{210, 90, 360, 190}; });
  Until([&] { return (Drain(), window->place == PixelRect{210, 90, 360, 190}); });
}

TEST_F(X11WindowInput, AReleaseBeforeTheDesktopDragsTakesTheRequestBack) {
  if (HasManager()) GTEST_SKIP() << "it may be quicker";
  constexpr long byMouse = 8, cancel = 11;
  DisplayWindow* window = Show(Role::kMain, {10, 10, 160, 110});
  OwnManager manager(&artist);
  WriteLongs(artist.root, "_NET_SUPPORTED", XA_ATOM, {long(AtomOf("_NET_WM_MOVERESIZE"))});
  // Over the window, where the release comes to us, and beside it, where it comes to nobody.
  for (const auto& [x, y] : {std::pair{70, 90}, std::pair{400, 300}}) {
    const PixelRect before = window->place;
    MovePointer(before.left + 40, before.top + 40);
    Button(1, true);
    DisplayEvent down = Next(Kind::kMouseDown, window);
    ASSERT_TRUE(DisplayDragWindow(window, down.x, down.y));
    Catch();
    MovePointer(x, y);
    Button(1, false);
    for (const DisplayEvent& event : Drain()) EXPECT_NE(event.kind, Kind::kMouseUp);
    EXPECT_EQ(NextOfArtist(ClientMessage).xclient.data.l[2], byMouse);
    XEvent taken = NextOfArtist(ClientMessage);
    EXPECT_EQ(taken.xclient.message_type, AtomOf("_NET_WM_MOVERESIZE"));
    EXPECT_EQ(taken.xclient.data.l[2], cancel);
    const XConfigureRequestEvent move = NextOfArtist(ConfigureRequest).xconfigurerequest;
    XMoveWindow(artist.display, window->id, move.x, move.y);
    XSync(artist.display, False);
    EXPECT_EQ(Next(Kind::kPlaced, window).rect, (PixelRect{x - 40, y - 40, x + 110, y + 60}));
  }
}

TEST_F(X11WindowInput, AShortClickDoesNotLeaveTheDesktopDragging) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 160, 110});
  for (int32_t i = 0; i < 5; i++) {
    MovePointer(50, 50);
    Button(1, true);
    Next(Kind::kMouseDown, window);
    DisplayDragWindow(window, 50, 50);
    Button(1, false);
    Drain();
    WaitForManager();
    Drain();
    WaitForManager();
    MovePointer(300, 200);
    WaitForManager();
    EXPECT_EQ(PlaceOf(window), (PixelRect{10, 10, 160, 110}));
  }
}

// ---- The screen --------------------------------------------------------------------------------------------------

TEST_F(X11WindowInput, FollowsTheUsableArea) {
  const PixelRect all = {0, 0, artist.Width(), artist.Height()};
  if (HasManager()) {
    Until([&] { return (Drain(), DisplayUsableArea() == all); });
    Window dock = NewDock({0, 0, 24, 0});
    XMapWindow(artist.display, dock);
    XSync(artist.display, False);
    const PixelRect rest = {0, 24, all.right, all.bottom};
    Until([&] { return (Next(Kind::kScreenChanged, nullptr), DisplayUsableArea() == rest); });
    XDestroyWindow(artist.display, dock);
    XSync(artist.display, False);
    Until([&] { return (Next(Kind::kScreenChanged, nullptr), DisplayUsableArea() == all); });
    return;
  }
  EXPECT_EQ(DisplayUsableArea(), all);
  auto setArea = [&](std::vector<long> area, long desktop) {
    WriteLongs(artist.root, "_NET_WORKAREA", XA_CARDINAL, area);
    WriteLongs(artist.root, "_NET_CURRENT_DESKTOP", XA_CARDINAL, {desktop});
    Next(Kind::kScreenChanged, nullptr);
    return DisplayUsableArea();
  };
  EXPECT_EQ(setArea({0, 0, 640, 480, 10, 20, 300, 200}, 1), (PixelRect{10, 20, 310, 220}));
  EXPECT_EQ(setArea({0, 0, 640, 480, 10, 20, 300, 200}, 7), (PixelRect{0, 0, 640, 480}));
  EXPECT_EQ(setArea({0, 30, 70000, 70000}, 0), (PixelRect{0, 30, all.right, all.bottom}));
  EXPECT_EQ(setArea({1, 2}, 0), all);
  XDeleteProperty(artist.display, artist.root, AtomOf("_NET_WORKAREA"));
  XDeleteProperty(artist.display, artist.root, AtomOf("_NET_CURRENT_DESKTOP"));
}

TEST_F(X11WindowInput, UsableAreaLeavesOutThePanelsWhereNobodyWorksItOut) {
  if (HasManager()) GTEST_SKIP() << "it works it out";
  const PixelRect all = {0, 0, artist.Width(), artist.Height()};
  OwnManager manager(&artist);
  Window left = NewDock({30, 0, 0, 0}), bottom = NewDock({0, 0, 0, 40});
  auto becomes = [&](const PixelRect& area) {
    Until([&] { return (Next(Kind::kScreenChanged, nullptr), DisplayUsableArea() == area); });
  };
  WriteLongs(artist.root, "_NET_CLIENT_LIST", XA_WINDOW, {long(left), long(bottom)});
  becomes({30, 0, all.right, all.bottom - 40});
  WriteLongs(bottom, "_NET_WM_STRUT_PARTIAL", XA_CARDINAL, {0, 20, 0, 50, 0, 0, 0, 0, 0, 0, 0, 0});
  becomes({30, 0, all.right - 20, all.bottom - 50});
  WriteLongs(bottom, "_NET_WM_STRUT_PARTIAL", XA_CARDINAL, {0, 0, 70000, 70000, 0, 0, 0, 0, 0, 0, 0, 0});
  becomes(all); // nothing would be left
  XDestroyWindow(artist.display, bottom);
  WriteLongs(artist.root, "_NET_CLIENT_LIST", XA_WINDOW, {long(left)});
  becomes({30, 0, all.right, all.bottom});
}

TEST_F(X11WindowInput, TellsOfAnotherResolution) {
  const int32_t width = artist.Width(), height = artist.Height();
  DisplayUsableArea();
  Drain();
  for (const auto& [w, h] : {std::pair{width - 60, height - 40}, std::pair{width, height}}) {
    artist.ResizeScreen(w, h);
    Next(Kind::kScreenChanged, nullptr);
    EXPECT_EQ(DisplayScreen().width, w);
    EXPECT_EQ(DisplayScreen().height, h);
    Until([&] { return (Drain(), DisplayUsableArea() == PixelRect{0, 0, w, h}); });
  }
}

} // namespace

} // namespace framereel
