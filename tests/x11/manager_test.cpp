// Window managers that take their time, refuse what they are asked, or come and go: the artist plays them, on desktops
// without a manager of their own.
#include "x11/user.h"

namespace framereel {

namespace {

class X11WindowManager : public X11WindowTest {
protected:
  void SetUp() override {
    X11WindowTest::SetUp();
    if (HasManager()) GTEST_SKIP() << "there is one already";
  }

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
  void TellPlace(const DisplayWindow* window, int width, int height) {
    XEvent event{};
    event.xconfigure = {ConfigureNotify, 0,      False, artist.display, window->id, window->id, 7, 7,
                        width,           height, 0,     None,           False};
    XSendEvent(artist.display, window->id, False, StructureNotifyMask, &event);
  }
};

TEST_F(X11WindowManager, WhatItDidBeforeOurLastRequestIsNoNews) {
  const OwnManager manager(artist);
  const PixelRect asked = {50, 60, 250, 160};
  DisplayWindow* window = Open(Role::kMain, {10, 10, 640, 480});
  DisplayShowWindow(window, true);
  EXPECT_EQ(NextOfArtist(MapRequest).xmaprequest.window, window->id);
  XMoveResizeWindow(artist.display, window->id, 0, 0, 630, 470);
  XMapWindow(artist.display, window->id);
  DisplayPlaceWindow(window, asked);
  EXPECT_FALSE(Came(Kind::kPlaced));
  TellPlace(window, 300, 300);
  EXPECT_FALSE(Came(Kind::kPlaced));
  Grant();
  EXPECT_FALSE(Came(Kind::kPlaced));
  EXPECT_EQ(PlaceOf(window), asked);

  // A place that it refuses leaves it where it was, with the size that was asked for.
  DisplayPlaceWindow(window, {artist.Width(), 60, artist.Width() + 70, 100});
  Grant();
  TellPlace(window, 300, 300);
  EXPECT_EQ(Next(Kind::kPlaced, window).rect, (PixelRect{50, 60, 120, 100}));

  // What has not been taken yet is no news after the next request.
  XMoveWindow(artist.display, window->id, 5, 5);
  Catch();
  X11TakeEvents(X11Live(), QueuedAlready);
  X11SettlePlaces(X11Live());
  DisplayPlaceWindow(window, asked);
  Grant();
  EXPECT_FALSE(Came(Kind::kPlaced));
}

TEST_F(X11WindowManager, OneThatTakesAWindowForActiveStillNeedNotGiveItTheKeyboardBack) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 110, 110});
  const OwnManager manager(artist);
  WriteItems(artist.root, "_NET_SUPPORTED", XA_ATOM, {AtomOf("_NET_ACTIVE_WINDOW")});
  WriteItems(artist.root, "_NET_ACTIVE_WINDOW", XA_WINDOW, {long(window->id)});
  FocusOn(artist.root);
  Drain();
  Activate(window);
}

TEST_F(X11WindowManager, OneThatMinimisesNothingLeavesTheWindowAsItIs) {
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

TEST_F(X11WindowManager, NobodyElseIsBelievedWhatOnlyTheServerKnows) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 110, 110});
  Activate(window);
  Drain();
  TellPlace(window, 40000, 40000);
  for (int type : {FocusOut, UnmapNotify, DestroyNotify}) {
    XEvent event{};
    event.type = type;
    event.xfocus.detail = NotifyNonlinear;
    event.xany.window = window->id;
    XSendEvent(artist.display, window->id, False, StructureNotifyMask | FocusChangeMask, &event);
  }
  for (const DisplayEvent& event : Drain()) ADD_FAILURE() << "believed: " << int(event.kind);

  // A size that cannot be of use is cut, even if the window has it.
  XResizeWindow(artist.display, window->id, 30000, 20000);
  EXPECT_EQ(Next(Kind::kPlaced, window).rect, (PixelRect{10, 10, 10 + artist.Width(), 10 + artist.Height()}));
}

} // namespace

} // namespace framereel
