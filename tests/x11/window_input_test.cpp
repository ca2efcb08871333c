// What the user and the desktop do to our windows: the keyboard's coming and going, the mouse and its capture,
// minimising, dragging, and the part of the screen that is free. With and without a window manager, and with one that
// takes its time or refuses what it is asked, which the artist plays.
#include "x11/user.h"

#include <utility>

namespace framereel {

namespace {

class X11WindowInput : public X11WindowTest {
protected:
  // A panel at the screen's edge; `thick` as _NET_WM_STRUT_PARTIAL begins: left, right, top, bottom.
  Window NewDock(const std::vector<long>& thick) {
    const Window dock = XCreateSimpleWindow(artist.display, artist.root, 0, 0, 50, 24, 0, 0, 0);
    WriteItems(dock, "_NET_WM_WINDOW_TYPE", XA_ATOM, {AtomOf("_NET_WM_WINDOW_TYPE_DOCK")});
    SetDock(dock, thick);
    return dock;
  }
  void SetDock(Window dock, std::vector<long> thick) {
    thick.resize(12);
    thick[9] = artist.Width() - 1; // as far as a strip at the top reaches
    WriteItems(dock, "_NET_WM_STRUT_PARTIAL", XA_CARDINAL, thick);
  }
  void UsableAreaBecomes(const PixelRect& area, Place where = Place::current()) {
    Until([&] { return (Next(Kind::kScreenChanged, nullptr, where), DisplayUsableArea() == area); }, where);
  }
  // Presses where the window's caption could be, and asks the desktop to drag the window.
  bool StartDrag(DisplayWindow* window) {
    MovePointer(window->place.left + 40, window->place.top + 40);
    Button(1, true);
    DisplayEvent down = Next(Kind::kMouseDown, window);
    return DisplayDragWindow(window, down.x, down.y);
  }

  // ---- The artist as the window manager ----

  // Works off the requests that wait, but for those to stand beyond the screen, as some managers do.
  void Grant() {
    Catch();
    for (XEvent event; XCheckTypedEvent(artist.display, ConfigureRequest, &event);) {
      const XConfigureRequestEvent& asked = event.xconfigurerequest;
      XWindowChanges changes = {asked.x, asked.y, asked.width, asked.height, 0, None, 0};
      const unsigned long what = asked.value_mask & (CWX | CWY | CWWidth | CWHeight);
      if (!(what & CWX) || asked.x < artist.Width())
        XConfigureWindow(artist.display, asked.window, unsigned(what), &changes);
    }
  }
  // Tells the window where it is, as a manager does that has moved its frame alone.
  void TellPlace(const DisplayWindow* window) {
    XEvent event{};
    event.xconfigure = {ConfigureNotify, 0, False, artist.display, window->id, window->id, 7, 7, 300, 300, 0, None, 0};
    XSendEvent(artist.display, window->id, False, StructureNotifyMask, &event);
  }
};

// ---- The keyboard ------------------------------------------------------------------------------------------------

// A window manager takes a window that it made active for active until another one is: whoever takes the focus behind
// its back loses the keyboard for the program.
TEST_F(X11WindowInput, KeyboardGoesWhereItIsAskedForAndUnmanagedWindowsHaveItInThePlaceOfTheirOwner) {
  const Window others = artist.Show(artist.Noise(50, 50, 1), 10, 200);
  DisplayWindow* main = Show(Role::kMain, {10, 10, 160, 110});
  Activate(main);
  for (Role role : {Role::kPopup, Role::kCover}) {
    DisplayWindow* window = Show(role, {0, 0, 640, 480}, main);
    GrabKeys();
    DisplayActivateWindow(window);
    EXPECT_TRUE(Next(Kind::kActive, window).flag);
    EXPECT_EQ(Focus(), main->id);
    XUngrabKeyboard(artist.display, CurrentTime);
    if (role == Role::kCover) { // it holds the keyboard whatever the focus does, once nobody else does
      Until([&] { return (Drain(), X11Live()->desktop.focus.grabbed); });
      FocusOn(others);
      EXPECT_FALSE(Came(Kind::kActive));
    }
    TypesInto(window);
    DisplayShowWindow(window, false);
    EXPECT_FALSE(Next(Kind::kActive, window).flag);
    if (role == Role::kCover) Activate(main);
    TypesInto(main);
  }
  // Asked for before the window manager has shown it.
  DisplayWindow* dialog = Open(Role::kDialog, {200, 10, 350, 110}, main);
  DisplayShowWindow(dialog, true);
  DisplayActivateWindow(dialog);
  EXPECT_FALSE(Next(Kind::kActive, main).flag);
  EXPECT_TRUE(Next(Kind::kActive, dialog).flag);
  TypesInto(dialog);
  // A grab of the keys is no loss of the keyboard, but some may have changed behind it.
  GrabKeys();
  EXPECT_FALSE(Came(Kind::kActive));
  XUngrabKeyboard(artist.display, CurrentTime);
  Next(Kind::kKeysUnseen, dialog);
  EXPECT_FALSE(Came(Kind::kActive));
  FocusOn(others);
  EXPECT_FALSE(Next(Kind::kActive, dialog).flag);
}

// ---- The mouse ---------------------------------------------------------------------------------------------------

TEST_F(X11WindowInput, MouseEventsGoToTheWindowUnderThePointerOrToWhomHasIt) {
  DisplayWindow* main = Open(Role::kMain, {10, 10, 210, 210});
  DisplayCapturePointer(main); // waits for the window
  DisplayShowWindow(main, true);
  Until([&] { return (Drain(), !main->becameViewable && main->viewable); });
  ClicksInto(main, 400, 300);
  DisplayWindow* popup = Show(Role::kPopup, {300, 100, 400, 200}, main);
  DisplayCapturePointer(popup);
  ClicksInto(popup, 50, 50);
  DisplayCapturePointer(nullptr);
  Catch();
  MovePointer(91, 83);
  const DisplayEvent moved = Next(Kind::kMouseMove, main);
  EXPECT_EQ(std::pair(moved.x, moved.y), std::pair(91, 83));
  for (uint8_t button : {1, 2, 3}) ClicksInto(main, 91, 83, button);
  // The wheel is no button, and other buttons are nobody's.
  for (unsigned int button : {4, 5, 6}) Click(button);
  for (const int notches : {1, -1}) {
    const DisplayEvent turned = Next(Kind::kMouseWheel, main);
    EXPECT_EQ(std::pair(turned.x, turned.notches), std::pair(91, int8_t(notches)));
  }
  EXPECT_TRUE(Drain().empty());

  // Lost with the window, and to another program.
  DisplayCapturePointer(popup);
  DisplayShowWindow(popup, false);
  Next(Kind::kCaptureLost, popup);
  DisplayShowWindow(popup, true);
  GrabMouse();
  DisplayCapturePointer(popup);
  Next(Kind::kCaptureLost, popup);
  XUngrabPointer(artist.display, CurrentTime);
}

// ---- Minimising and dragging -------------------------------------------------------------------------------------

TEST_F(X11WindowInput, MinimisesAndComesBack) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 160, 110});
  EXPECT_EQ(DisplayMinimiseWindow(window, true), HasManager());
  if (!HasManager()) return;
  const auto becomes = [this](const DisplayWindow* which, bool minimised) {
    EXPECT_EQ(Next(Kind::kMinimised, which).flag, minimised);
    Until([&] { return StandsOnScreen(which) == !minimised; }); // some managers map it after they have said so
  };
  becomes(window, true);
  DisplayMinimiseWindow(window, false);
  becomes(window, false);
  EXPECT_EQ(PlaceOf(window), (PixelRect{10, 10, 160, 110}));
  DisplayWindow* later = Open(Role::kMain, {200, 10, 350, 110});
  DisplayMinimiseWindow(later, true);
  DisplayShowWindow(later, true);
  becomes(later, true);

  Tell(artist.root, window->id, "WM_CHANGE_STATE", {IconicState});
  becomes(window, true);
  constexpr long byPager = 2;
  Tell(artist.root, window->id, "_NET_ACTIVE_WINDOW", {byPager, CurrentTime, 0});
  becomes(window, false);
}

TEST_F(X11WindowInput, DesktopDragsItWhereThereIsOneThatDoes) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 160, 110});
  EXPECT_EQ(StartDrag(window), HasManager());
  if (!HasManager()) return Button(1, false);
  // The window manager takes over when it gets round to it.
  Until([&, x = 120]() mutable {
    MovePointer(x ^= 1, 90);
    return PlaceOf(window).left > 10;
  });
  // That it has the pointer is known, so that nothing is taken back when the button goes up.
  Until([&] { return (Drain(), !X11Live()->desktop.drag.window); });
  MovePointer(250, 130);
  Button(1, false);
  const PixelRect dragged = {210, 90, 360, 190};
  Until([&] { return (Drain(), PlaceOf(window) == dragged && window->place == dragged); });
}

TEST_F(X11WindowInput, AReleaseBeforeTheDesktopDragsTakesTheRequestBack) {
  if (HasManager()) GTEST_SKIP() << "it may be quicker";
  constexpr long byMouse = 8, cancel = 11;
  DisplayWindow* window = Show(Role::kMain, {10, 10, 160, 110});
  OwnManager manager(artist);
  WriteItems(artist.root, "_NET_SUPPORTED", XA_ATOM, {AtomOf("_NET_WM_MOVERESIZE")});
  // Over the window, where the release comes to us, and beside it, where it comes to nobody.
  for (const auto& [x, y] : {std::pair{70, 90}, std::pair{400, 300}}) {
    ASSERT_TRUE(StartDrag(window));
    Catch();
    MovePointer(x, y);
    Button(1, false);
    EXPECT_FALSE(Came(Kind::kMouseUp));
    for (const long how : {byMouse, cancel}) EXPECT_EQ(NextOfArtist(ClientMessage).xclient.data.l[2], how);
    const XConfigureRequestEvent move = NextOfArtist(ConfigureRequest).xconfigurerequest;
    XMoveWindow(artist.display, window->id, move.x, move.y);
    EXPECT_EQ(Next(Kind::kPlaced, window).rect, (PixelRect{x - 40, y - 40, x + 110, y + 60}));
  }
}

// ---- The screen --------------------------------------------------------------------------------------------------

TEST_F(X11WindowInput, UsableAreaIsWhatTheDesktopLeaves) {
  const PixelRect all = {0, 0, artist.Width(), artist.Height()};
  if (HasManager()) {
    Window dock = NewDock({0, 0, 24, 0});
    XMapWindow(artist.display, dock);
    UsableAreaBecomes({0, 24, all.right, all.bottom});
    XDestroyWindow(artist.display, dock);
    return UsableAreaBecomes(all);
  }
  EXPECT_EQ(DisplayUsableArea(), all);
  const OwnManager manager(artist);
  const Window left = NewDock({30, 0, 0, 0}), other = NewDock({});
  WriteItems(artist.root, "_NET_CLIENT_LIST", XA_WINDOW, {long(left), long(other)});
  // What the manager has worked out counts. Where it has not, the panels are left out.
  const struct {
    std::vector<long> works; // of all desktops: left, top, width, height
    long desktop;
    std::vector<long> thick; // the other panel
    PixelRect usable;
  } cases[] = {{{0, 5, 600, 400, 10, 20, 300, 200}, 1, {}, {10, 20, 310, 220}},
               {{0, 5, 600, 400, 10, 20, 300, 200}, 7, {}, {0, 5, 600, 405}},
               {{0, 30, 70000, 70000}, 0, {}, {0, 30, all.right, all.bottom}},
               {{}, 0, {0, 0, 0, 40}, {30, 0, all.right, all.bottom - 40}},
               {{}, 0, {0, 20, 0, 50}, {30, 0, all.right - 20, all.bottom - 50}},
               {{}, 0, {0, 0, 70000, 70000}, all}}; // nothing would be left
  for (const auto& [works, desktop, thick, usable] : cases) {
    WriteItems(artist.root, "_NET_WORKAREA", XA_CARDINAL, works);
    WriteItems(artist.root, "_NET_CURRENT_DESKTOP", XA_CARDINAL, {desktop});
    SetDock(other, thick);
    UsableAreaBecomes(usable);
  }
  XDestroyWindow(artist.display, other);
}

TEST_F(X11WindowInput, FollowsTheResolution) {
  const int32_t width = artist.Width(), height = artist.Height();
  const OwnSurface part(100, 100), wide(width, 100);
  DisplayUsableArea();
  Drain();
  for (const Surface& into : {part.surface, wide.surface}) {
    for (const auto& [w, h] : {std::pair{width - 60, height - 40}, std::pair{width, height}}) {
      artist.ResizeScreen(w, h);
      // What has gone the server refuses, and what has come the display has not heard of.
      EXPECT_FALSE(DisplayReadScreen({width - into.width, height - 100, width, height}, into, 0, 0));
      Next(Kind::kScreenChanged, nullptr);
      EXPECT_EQ(std::pair(DisplayScreen().width, DisplayScreen().height), std::pair(w, h));
      EXPECT_TRUE(DisplayReadScreen({w - 100, h - 100, w, h}, into, 0, 0));
      EXPECT_FALSE(DisplayReadScreen({w - 99, h - 99, w + 1, h + 1}, into, 0, 0));
      Until([&] { return (Drain(), DisplayUsableArea() == PixelRect{0, 0, w, h}); });
    }
  }
  EXPECT_FALSE(DisplayIsLost());
}

// ---- Window managers that take their time, or refuse what they are asked ------------------------------------------

TEST_F(X11WindowInput, WhatAManagerDidBeforeOurLastRequestIsNoNews) {
  if (HasManager()) GTEST_SKIP() << "there is one already";
  const OwnManager manager(artist);
  const PixelRect asked = {50, 60, 250, 160};
  DisplayWindow* window = Open(Role::kMain, {10, 10, 640, 480});
  DisplayShowWindow(window, true);
  EXPECT_EQ(NextOfArtist(MapRequest).xmaprequest.window, window->id);
  XMoveResizeWindow(artist.display, window->id, 0, 0, 630, 470);
  XMapWindow(artist.display, window->id);
  DisplayPlaceWindow(window, asked);
  EXPECT_FALSE(Came(Kind::kPlaced));
  TellPlace(window);
  EXPECT_FALSE(Came(Kind::kPlaced));
  Grant();
  EXPECT_FALSE(Came(Kind::kPlaced));
  EXPECT_EQ(PlaceOf(window), asked);

  // A place that it refuses leaves it where it was, with the size that was asked for.
  DisplayPlaceWindow(window, {artist.Width(), 60, artist.Width() + 70, 100});
  Grant();
  TellPlace(window);
  EXPECT_EQ(Next(Kind::kPlaced, window).rect, (PixelRect{50, 60, 120, 100}));

  // A size that cannot be of use is cut, even if the window has it.
  XResizeWindow(artist.display, window->id, 30000, 20000);
  EXPECT_EQ(Next(Kind::kPlaced, window).rect, (PixelRect{50, 60, 50 + artist.Width(), 60 + artist.Height()}));
}

TEST_F(X11WindowInput, AManagerThatTakesAWindowForActiveStillNeedNotGiveItTheKeyboardBack) {
  if (HasManager()) GTEST_SKIP() << "there is one already";
  DisplayWindow* window = Show(Role::kMain, {10, 10, 110, 110});
  const OwnManager manager(artist);
  WriteItems(artist.root, "_NET_SUPPORTED", XA_ATOM, {AtomOf("_NET_ACTIVE_WINDOW")});
  WriteItems(artist.root, "_NET_ACTIVE_WINDOW", XA_WINDOW, {long(window->id)});
  FocusOn(artist.root);
  Drain();
  Activate(window);
}

TEST_F(X11WindowInput, AManagerThatMinimisesNothingLeavesTheWindowAsItIs) {
  if (HasManager()) GTEST_SKIP() << "there is one already";
  DisplayWindow* window = Show(Role::kMain, {10, 10, 110, 110});
  const DisplayWindow* dialog = Show(Role::kDialog, {20, 20, 60, 60}, window);
  {
    OwnManager manager(artist);
    EXPECT_TRUE(DisplayMinimiseWindow(window, true));
    NextOfArtist(ClientMessage);
    EXPECT_FALSE(Came(Kind::kMinimised));
    // What it says of itself counts, the newer word as long as the older one does not gainsay it.
    WriteItems(artist.root, "_NET_SUPPORTED", XA_ATOM, {AtomOf("_NET_WM_STATE_HIDDEN")});
    WriteItems(window->id, "_NET_WM_STATE", XA_ATOM, {AtomOf("_NET_WM_STATE_HIDDEN")});
    XUnmapWindow(artist.display, window->id);
    for (long state : {IconicState, NormalState, IconicState}) {
      WriteItems(window->id, "WM_STATE", Atom(AtomOf("WM_STATE")), {state, None});
      EXPECT_EQ(Next(Kind::kMinimised, window).flag, state == IconicState);
    }
    // A dialog that it minimises along with its owner is not to come back minimised.
    WriteItems(dialog->id, "_NET_WM_STATE", XA_ATOM, {AtomOf("_NET_WM_STATE_HIDDEN")});
    WriteItems(dialog->id, "WM_STATE", Atom(AtomOf("WM_STATE")), {IconicState, None});
    EXPECT_FALSE(Came(Kind::kMinimised));
  }
  // One that goes leaves all windows on the screen.
  XMapWindow(artist.display, window->id);
  EXPECT_FALSE(Next(Kind::kMinimised, window).flag);
}

} // namespace

} // namespace framereel
