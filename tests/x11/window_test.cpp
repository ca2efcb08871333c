// Our windows on a desktop as they are seen from outside: where they stand, what they show, what they say of
// themselves. The same tests run without a window manager, with one, and with a compositor.
#include "x11/user.h"

#include <X11/extensions/Xrandr.h>
#include <unistd.h>

#include <algorithm>
#include <ranges>
#include <utility>

namespace framereel {

namespace {

class X11Window : public X11WindowTest {
protected:
  // Waits until that is what stands at the place.
  void UntilShown(const Picture& picture, int32_t left, int32_t top) {
    const PixelRect place = {left, top, left + picture.width, top + picture.height};
    Until([&] { return Difference(artist.Look(place), picture).empty(); });
  }
};

TEST_F(X11Window, StandsWhereItWasPut) {
  for (Role role : {Role::kMain, Role::kDialog, Role::kPopup, Role::kCover}) {
    SCOPED_TRACE(static_cast<int>(role));
    const PixelRect first = {37, 59, 237, 159}, last = {141, 73, 301, 253}, later = {200, 100, 350, 250};
    DisplayWindow* window = Show(role, first);
    EXPECT_EQ(PlaceOf(window), first);
    for (int32_t i = 40; i >= 0; i--) DisplayPlaceWindow(window, Moved(last, -3 * i, -i));
    Until([&] { return PlaceOf(window) == last; });
    // The answers are no news.
    Until([&] {
      EXPECT_FALSE(Came(Kind::kPlaced));
      return X11Live()->desktop.fence.passed == X11Live()->desktop.fence.asked;
    });

    DisplayShowWindow(window, false);
    Until([&] { return !StandsOnScreen(window); });
    DisplayPlaceWindow(window, later);
    DisplayShowWindow(window, true);
    Until([&] { return StandsOnScreen(window); });
    EXPECT_EQ(PlaceOf(window), later);
    DisplayShowWindow(window, false);
  }
}

TEST_F(X11Window, KnowsTheMonitorsOfTheScreen) {
  const std::vector whole{PixelRect{0, 0, artist.Width(), artist.Height()}};
  EXPECT_EQ(DisplayMonitors(), whole);
  Drain();
  for (const char* name : {"left", "right"}) {
    const int left = *name == 'l' ? 0 : 320;
    XRRMonitorInfo monitor = {Atom(AtomOf(name)), left > 0, False, 0, left, 100, 320, 200, 0, 0, nullptr};
    XRRSetMonitor(artist.display, artist.root, &monitor);
  }
  // The primary one first; the server may have one of its own, of the whole screen.
  const std::vector both{PixelRect{320, 100, 640, 300}, PixelRect{0, 100, 320, 300}};
  Until([&] { return std::ranges::equal(DisplayMonitors() | std::views::take(2), both); });
  Until([&] { return Came(Kind::kScreenChanged); });
  for (const char* name : {"left", "right"}) XRRDeleteMonitor(artist.display, artist.root, AtomOf(name));
  Until([&] { return DisplayMonitors() == whole; });
}

TEST_F(X11Window, ShowsWhatIsPresented) {
  for (const auto& [width, height] : {std::pair{40, 30}, std::pair{300, 240}}) {
    DisplayWindow* window = Show(Role::kPopup, {51, 43, 51 + width, 43 + height});
    Picture shown = artist.Paper(width, height);
    for (const PixelRect& part : {shown.All(), PixelRect{7, 5, 23, 19}, PixelRect{-5, -5, width + 5, 2}}) {
      Picture noise = artist.Noise(width, height, static_cast<uint32_t>(part.bottom));
      OwnSurface surface(noise);
      DisplayPresent(window, surface.surface, part);
      Copy(noise, part, part.left, part.top, &shown);
      UntilShown(shown, 51, 43);
    }
  }
}

TEST_F(X11Window, IsAskedToShowAgainWhatWasUncoveredOrRefreshed) {
  const Picture white = artist.Paper(60, 40);
  Window others = artist.Show(white, 10, 10);
  XSetWindowBackground(artist.display, others, WhitePixel(artist.display, 0)); // it repaints itself by that alone
  const uint8_t all[8] = {255, 255, 255, 255, 255, 255, 255, 255};
  DisplayInvertScreen({5, 5, 40, 40}, all);
  Until([&] { return (Drain(), Difference(artist.Look({10, 10, 70, 50}), white) != ""); });
  DisplayRefresh({5, 5, 40, 40});
  UntilShown(white, 10, 10);

  if (HasCompositor()) GTEST_SKIP() << "a compositor keeps what windows show";
  EXPECT_EQ(NextOfArtist(Expose).xexpose.width, 30);
  DisplayWindow* window = Show(Role::kMain, {100, 100, 300, 200});
  DisplayWindow* above = Show(Role::kPopup, {150, 120, 180, 140});
  Drain();
  DisplayShowWindow(above, false);
  EXPECT_EQ(Next(Kind::kExposed, window).rect, (PixelRect{50, 20, 80, 40}));
  DisplayRefresh({0, 0, 140, 640});
  EXPECT_EQ(Next(Kind::kExposed, window).rect, (PixelRect{0, 0, 40, 100}));
}

TEST_F(X11Window, StandsAboveWhatItBelongsToAndIsModalWhenItIsToldTo) {
  const auto isModal = [this](const DisplayWindow* window) {
    const std::vector<long> state = Items(window->id, "_NET_WM_STATE");
    return std::count(state.begin(), state.end(), AtomOf("_NET_WM_STATE_MODAL")) > 0;
  };
  DisplayWindow* main = Show(Role::kMain, {20, 20, 320, 220});
  DisplayWindow* dialog = Open(Role::kDialog, {60, 60, 200, 160}, main);
  DisplayModalWindow(dialog, true);
  DisplayShowWindow(dialog, true);
  Until([&] { return StandsOnScreen(dialog); });
  DisplayWindow* inner = Show(Role::kDialog, {150, 110, 190, 150}, dialog);
  EXPECT_TRUE(isModal(dialog) && !isModal(inner) && !isModal(main));
  EXPECT_EQ(Items(inner->id, "_NET_WM_WINDOW_TYPE"), std::vector{AtomOf("_NET_WM_WINDOW_TYPE_DIALOG")});
  EXPECT_EQ(Items(inner->id, "WM_TRANSIENT_FOR"), std::vector{long(dialog->id)});
  if (HasManager()) { // who alone may change it of a window that is shown
    DisplayModalWindow(inner, true);
    DisplayModalWindow(dialog, false);
    Until([&] { return isModal(inner) && !isModal(dialog); });
  }
  DisplayWindow* popup = Show(Role::kPopup, {80, 80, 120, 120}, main);
  DisplayWindow* second = Show(Role::kPopup, {100, 100, 140, 140}, main);
  // A window manager may stack its own late, and popups go back on top once events have told of it.
  const auto settles = [&](int32_t at, const DisplayWindow* top) {
    Until([&] { return (Drain(), WindowAt(at, at) == top->id); });
  };
  for (DisplayWindow* raised : {main, dialog}) {
    DisplayStackWindow(raised, true);
    Catch();
    WaitForManager();
    EXPECT_EQ(WindowAt(30, 30), main->id);
    EXPECT_EQ(WindowAt(70, 70), dialog->id);
    EXPECT_EQ(WindowAt(160, 120), inner->id);
  }
  settles(85, popup);
  settles(110, second);
  DisplayStackWindow(second, false);
  settles(110, popup);
  settles(135, second);

  // A cover stays on top wherever popups go, shows what is under it, and takes the mouse.
  const Picture before = artist.Look();
  DisplayWindow* cover = Show(Role::kCover, before.All());
  DisplayStackWindow(popup, true);
  for (const auto& [x, y] : {std::pair{5, 300}, std::pair{30, 30}, std::pair{110, 110}}) ClicksInto(cover, x, y);
  EXPECT_EQ(Difference(artist.Look(), before), "");
}

// ---- What it says of itself --------------------------------------------------------------------------------------

TEST_F(X11Window, TellsWhatItIsAndAnswersItsWindowManager) {
  DisplayWindow* main = Show(Role::kMain, {10, 10, 60, 60});
  EXPECT_EQ(Text(main->id, "_NET_WM_NAME"), "test");
  DisplayTitleWindow(main, "Gr\u00FC\u00DFe \x01");
  const uint32_t pixels[] = {0xFF102030, 0x80400000, 0xFF112233};
  const PointerPicture icon[] = {{2, 1, 0, 0, pixels}, {200, 100, 0, 0, nullptr}, {1, 1, 0, 0, pixels + 2}};
  DisplayIconWindow(main, icon);
  Catch();
  EXPECT_EQ(Text(main->id, "WM_CLASS"), std::string("framereel\0Framereel\0", 20));
  EXPECT_EQ(Text(main->id, "WM_NAME"), "Gr\xFC\xDF\x65 ");
  EXPECT_EQ(Text(main->id, "_NET_WM_NAME"), "Gr\u00FC\u00DFe ");
  EXPECT_EQ(Items(main->id, "_NET_WM_ICON"), (std::vector<long>{2, 1, 0xFF102030, 0x80800000, 1, 1, 0xFF112233}));
  EXPECT_EQ(Items(main->id, "_NET_WM_PID"), std::vector<long>{::getpid()});
  EXPECT_EQ(Items(main->id, "_MOTIF_WM_HINTS"), (std::vector<long>{3, 44, 0, 0, 0})); // moved, minimised, closed
  EXPECT_EQ(Items(main->id, "WM_PROTOCOLS"), (std::vector{AtomOf("WM_DELETE_WINDOW"), AtomOf("_NET_WM_PING")}));
  XSelectInput(artist.display, artist.root, SubstructureNotifyMask);
  Tell(main->id, main->id, "WM_PROTOCOLS", {AtomOf("_NET_WM_PING"), 4711, long(main->id)});
  Tell(main->id, main->id, "WM_PROTOCOLS", {AtomOf("WM_DELETE_WINDOW"), CurrentTime});
  Next(Kind::kCloseRequest, main);
  Until([&] {
    const XClientMessageEvent answer = NextOfArtist(ClientMessage).xclient;
    return answer.window == artist.root && answer.data.l[1] == 4711 && Window(answer.data.l[2]) == main->id;
  });
}

// ---- The connection ----------------------------------------------------------------------------------------------

TEST_F(X11Window, AsksNothingAtRestAndOnceForAFrame) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 110, 110});
  const OwnSurface frame(300, 200);
  const auto requestsOf = [](const std::function<void()>& pass) {
    const unsigned long before = NextRequest(X11Live()->display);
    for (int times = 0; times < 10; ++times) pass();
    return NextRequest(X11Live()->display) - before;
  };
  const auto rest = [&] {
    int32_t x, y;
    PixelRect place;
    DisplayEvent event;
    DisplayPointer();
    DisplayHasSharedText(SharedText::kClipboard);
    DisplayCapturePointer(nullptr);
    DisplayShowWindow(window, true);
    DisplayPlaceWindow(window, {10, 10, 110, 110});
    X11Live()->keyboard.pressedTick--;
    EXPECT_FALSE(DisplayKeyIsDown('A') || DisplayNextEvent(&event));
    EXPECT_TRUE(DisplayPointerPlace(&x, &y) && DisplayWindowPlace(DisplayWindowAt(0, 50, 50), &place));
    EXPECT_EQ(DisplayUsableArea().left + DisplayMonitors()[0].left, 0);
  };
  const auto read = [&] {
    EXPECT_EQ(DisplayScreen().width, artist.Width());
    EXPECT_TRUE(DisplayReadScreen({9, 9, 309, 209}, frame.surface, 0, 0));
  };
  // The first may need memory, and a pointer rests that has moved long ago.
  Drain(), read(), rest();
  X11Live()->devices.movedTick -= 10000;
  rest();
  EXPECT_EQ(requestsOf(rest), 0U);
  EXPECT_EQ(requestsOf(read), 10U);
}

TEST_F(X11Window, VanishedWindowsAreNoEnd) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 110, 110});
  XDestroyWindow(artist.display, window->id);
  const OwnSurface surface(100, 100);
  DisplayPresent(window, surface.surface, {0, 0, 100, 100});
  DisplayPlaceWindow(window, {20, 20, 130, 130});
  DisplayActivateWindow(window);
  DisplayCapturePointer(window);
  Next(Kind::kDestroyed, window);
  EXPECT_FALSE(DisplayIsLost());
}

} // namespace

} // namespace framereel
