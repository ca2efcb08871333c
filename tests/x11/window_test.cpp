// Our windows on a desktop as they are seen from outside: where they stand, what they show, what they say of
// themselves. The same tests run without a window manager, with one, and with a compositor.
#include "x11/user.h"

#include <unistd.h>

namespace framereel {

namespace {

using Kind = DisplayEventKind;
using Role = WindowRole;

class X11Window : public X11WindowTest {
protected:
  void Present(DisplayWindow* window, const OwnSurface& surface, const PixelRect& part) {
    DisplayPresent(window, surface.surface, part);
    Catch();
  }
  // The pixels of a rectangle of the screen.
  Picture At(const PixelRect& where) {
    Picture screen = artist.Look();
    Picture cut{where.right - where.left, where.bottom - where.top, {}};
    for (int32_t y = where.top; y < where.bottom; y++) {
      for (int32_t x = where.left; x < where.right; x++) cut.pixels.push_back(screen.At(x, y));
    }
    return cut;
  }
};

void FillWith(const Picture& picture, OwnSurface* surface) {
  for (int32_t y = 0; y < picture.height; y++) {
    for (int32_t x = 0; x < picture.width; x++) surface->Set(x, y, picture.At(x, y));
  }
}

TEST_F(X11Window, StandsWhereItWasPut) {
  const PixelRect place = {37, 59, 237, 159};
  for (Role role : {Role::kMain, Role::kDialog, Role::kPopup, Role::kCover}) {
    DisplayWindow* window = Show(role, place);
    EXPECT_EQ(PlaceOf(window), place) << static_cast<int>(role);
    const PixelRect next = {141, 33, 301, 213};
    DisplayPlaceWindow(window, next);
    Until([&] { return PlaceOf(window) == next; });
    for (const DisplayEvent& event : Drain()) EXPECT_NE(event.kind, Kind::kPlaced) << static_cast<int>(role);
    Free(window);
  }
}

TEST_F(X11Window, IsPlacedWhileHiddenAndShownAgain) {
  DisplayWindow* window = Show(Role::kMain, {20, 20, 120, 90});
  DisplayShowWindow(window, false);
  Until([&] { return !StandsOnScreen(window); });
  DisplayPlaceWindow(window, {200, 100, 350, 250});
  DisplayShowWindow(window, true);
  Until([&] { return StandsOnScreen(window); });
  EXPECT_EQ(PlaceOf(window), (PixelRect{200, 100, 350, 250}));
}

TEST_F(X11Window, AnswersToManyMovesAreNoNews) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 110, 90});
  for (int32_t i = 1; i <= 40; i++) DisplayPlaceWindow(window, {10 + 3 * i, 10 + i, 110 + 3 * i, 90 + i});
  const PixelRect last = {130, 50, 230, 130};
  Until([&] { return PlaceOf(window) == last; });
  Until([&] { return window->unanswered.empty() || (Drain(), false); });
  for (const DisplayEvent& event : Drain()) EXPECT_NE(event.kind, Kind::kPlaced);
}

TEST_F(X11Window, TellsWhereTheDesktopPutIt) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 110, 90});
  Drain();
  if (HasManager()) {
    constexpr long staticGravity = 10, withXAndY = 3 << 8, byPager = 2 << 12;
    Tell(artist.root, window->id, "_NET_MOVERESIZE_WINDOW", {staticGravity | withXAndY | byPager, 210, 77, 0, 0});
  } else {
    XMoveWindow(artist.display, window->id, 210, 77);
    XSync(artist.display, False);
  }
  EXPECT_EQ(Next(Kind::kPlaced, window).rect, (PixelRect{210, 77, 310, 157}));
  // From here on this is its place, and going back is a move.
  DisplayPlaceWindow(window, {10, 10, 110, 90});
  Until([&] { return PlaceOf(window) == PixelRect{10, 10, 110, 90}; });
}

TEST_F(X11Window, ShowsWhatIsPresented) {
  for (const auto& [width, height] : {std::pair{40, 30}, std::pair{300, 240}}) {
    const PixelRect place = {51, 43, 51 + width, 43 + height};
    DisplayWindow* window = Show(Role::kPopup, place);
    Picture noise = artist.Noise(width, height, 3);
    OwnSurface surface(width, height);
    FillWith(noise, &surface);
    Present(window, surface, {0, 0, width, height});
    Until([&] { return Difference(At(place), noise).empty(); });

    Picture other = artist.Noise(width, height, 4);
    FillWith(other, &surface);
    Present(window, surface, {7, 5, 23, 19});
    for (int32_t y = 5; y < 19; y++) {
      for (int32_t x = 7; x < 23; x++) noise.At(x, y) = other.At(x, y);
    }
    Until([&] { return Difference(At(place), noise).empty(); });
    Present(window, surface, {-5, -5, width + 5, 2});
    for (int32_t y = 0; y < 2; y++) {
      for (int32_t x = 0; x < width; x++) noise.At(x, y) = other.At(x, y);
    }
    Until([&] { return Difference(At(place), noise).empty(); });
    Free(window);
  }
}

TEST_F(X11Window, IsAskedToShowAgainWhatWasUncovered) {
  if (HasCompositor()) GTEST_SKIP() << "a compositor keeps what windows show";
  DisplayWindow* window = Show(Role::kPopup, {50, 50, 250, 150});
  DisplayWindow* above = Show(Role::kPopup, {100, 70, 130, 90});
  Drain();
  DisplayShowWindow(above, false);
  EXPECT_EQ(Next(Kind::kExposed, window).rect, (PixelRect{50, 20, 80, 40}));
}

TEST_F(X11Window, RefreshReachesEveryWindow) {
  if (HasCompositor()) GTEST_SKIP() << "a compositor keeps what windows show";
  Window others = artist.Show(artist.Noise(60, 40, 1), 10, 10);
  DisplayWindow* window = Show(Role::kMain, {100, 100, 250, 200});
  Drain();
  DisplayRefresh({0, 0, 140, 640});
  EXPECT_EQ(Next(Kind::kExposed, window).rect, (PixelRect{0, 0, 40, 100}));
  XEvent exposed;
  XWindowEvent(artist.display, others, ExposureMask, &exposed);
  EXPECT_EQ(exposed.xexpose.width, 60);
}

TEST_F(X11Window, RefreshClearsWhatWasDrawnOverAWindow) {
  Window others = artist.Show(artist.Noise(60, 40, 1), 10, 10);
  XSetWindowBackground(artist.display, others, artist.White()); // it repaints itself by its background alone
  XClearWindow(artist.display, others);
  const Picture white = {60, 40, std::vector<uint32_t>(60 * 40, uint32_t(artist.White()) & artist.PixelBits())};
  Picture expected = artist.Look();
  Paste(white, 10, 10, &expected);
  Until([&] { return Difference(Seen(), expected).empty(); });
  const uint8_t all[8] = {255, 255, 255, 255, 255, 255, 255, 255};
  DisplayInvertScreen({5, 5, 40, 40}, all);
  EXPECT_NE(Difference(Seen(), expected), "");
  DisplayRefresh({5, 5, 40, 40});
  Until([&] { return Difference(Seen(), expected).empty(); });
}

TEST_F(X11Window, DialogsAndPopupsStandAboveTheMainWindow) {
  DisplayWindow* main = Show(Role::kMain, {20, 20, 320, 220});
  DisplayWindow* dialog = Show(Role::kDialog, {60, 60, 200, 160}, main);
  DisplayWindow* popup = Show(Role::kPopup, {80, 80, 120, 120}, main);
  DisplayWindow* second = Show(Role::kPopup, {100, 100, 140, 140}, main);
  DisplayStackWindow(main, true);
  // A window manager may stack its own late, and popups go back on top once events have told of it.
  auto settles = [&](int32_t x, int32_t y, const DisplayWindow* top) {
    Until([&] { return (Drain(), WindowAt(x, y) == top->id); });
  };
  settles(30, 30, main);
  settles(190, 150, dialog);
  settles(85, 85, popup);
  settles(110, 110, second);
  DisplayStackWindow(second, false);
  settles(110, 110, popup);
  settles(135, 135, second);
}

TEST_F(X11Window, CoverShowsWhatIsUnderItAndTakesTheMouse) {
  Activate(Show(Role::kMain, {250, 250, 350, 350}));
  Picture noise = artist.Noise(200, 150, 9);
  artist.Show(noise, 40, 40);
  DisplayWindow* popup = Show(Role::kPopup, {300, 40, 500, 190});
  OwnSurface surface(200, 150);
  FillWith(noise, &surface);
  Present(popup, surface, {0, 0, 200, 150});
  for (const PixelRect& place : {PixelRect{40, 40, 240, 190}, PixelRect{300, 40, 500, 190}}) {
    Until([&] { return Difference(At(place), noise).empty(); });
  }
  const PixelRect all = {0, 0, artist.Width(), artist.Height()};
  Picture before = artist.Look();
  DisplayWindow* cover = Show(Role::kCover, all);
  EXPECT_EQ(Difference(artist.Look(), before), "");
  // Wherever popups go, it stays on top.
  DisplayStackWindow(popup, true);
  for (const auto& [x, y] : {std::pair{50, 50}, std::pair{350, 90}, std::pair{5, 300}}) {
    MovePointer(x, y);
    Button(1, true);
    DisplayEvent event = Next(Kind::kMouseDown, cover);
    EXPECT_EQ(event.x, x);
    EXPECT_EQ(event.y, y);
    EXPECT_EQ(event.button, 1);
    Button(1, false);
    Next(Kind::kMouseUp, cover);
  }
  DisplayActivateWindow(cover);
  EXPECT_TRUE(Next(Kind::kActive, cover).flag);
  Key(XK_a, true);
  EXPECT_EQ(Next(Kind::kKeyDown, cover).key, 'A');
  Key(XK_a, false);
}

// ---- What it says of itself --------------------------------------------------------------------------------------

TEST_F(X11Window, TellsWhatItIs) {
  DisplayWindow* main = Open(Role::kMain, {10, 10, 60, 60}, nullptr,
                             "Gr\xFC\xDF"
                             "e \x01");
  DisplayWindow* dialog = Open(Role::kDialog, {10, 10, 60, 60}, main);
  Catch();
  EXPECT_EQ(Text(main->id, "WM_CLASS"), std::string("framereel\0Framereel\0", 20));
  EXPECT_EQ(Text(main->id, "WM_NAME"), "Gr\xFC\xDF"
                                       "e ");
  EXPECT_EQ(Text(main->id, "_NET_WM_NAME"), "Gr\xC3\xBC\xC3\x9F"
                                            "e ");
  EXPECT_EQ(Longs(main->id, "_NET_WM_PID"), std::vector<long>{::getpid()});
  EXPECT_NE(Text(main->id, "WM_CLIENT_MACHINE"), "");
  EXPECT_EQ(Longs(main->id, "_NET_WM_WINDOW_TYPE"), std::vector<long>{long(AtomOf("_NET_WM_WINDOW_TYPE_NORMAL"))});
  EXPECT_EQ(Longs(dialog->id, "_NET_WM_WINDOW_TYPE"), std::vector<long>{long(AtomOf("_NET_WM_WINDOW_TYPE_DIALOG"))});
  EXPECT_EQ(Longs(dialog->id, "WM_TRANSIENT_FOR"), std::vector<long>{long(main->id)});
  EXPECT_EQ(Longs(main->id, "_MOTIF_WM_HINTS").at(2), 0);

  DisplayTitleWindow(main, "plain");
  const uint32_t pixels[] = {0xFF102030, 0x80400000};
  DisplayIconWindow(main, {2, 1, 0, 0, pixels});
  Catch();
  EXPECT_EQ(Text(main->id, "_NET_WM_NAME"), "plain");
  EXPECT_EQ(Longs(main->id, "_NET_WM_ICON"), (std::vector<long>{2, 1, long(0xFF102030), long(0x80800000)}));
}

TEST_F(X11Window, AnswersItsWindowManager) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 160, 160});
  Tell(window->id, window->id, "WM_PROTOCOLS", {long(AtomOf("WM_DELETE_WINDOW")), CurrentTime});
  Next(Kind::kCloseRequest, window);

  XSelectInput(artist.display, artist.root, SubstructureNotifyMask);
  Tell(window->id, window->id, "WM_PROTOCOLS", {long(AtomOf("_NET_WM_PING")), 4711, long(window->id)});
  Drain();
  XEvent answer;
  do {
    XNextEvent(artist.display, &answer);
  } while (answer.type != ClientMessage || answer.xclient.message_type != AtomOf("WM_PROTOCOLS"));
  EXPECT_EQ(answer.xclient.window, artist.root);
  EXPECT_EQ(answer.xclient.data.l[1], 4711);
  EXPECT_EQ(answer.xclient.data.l[2], long(window->id));
}

// ---- The connection ----------------------------------------------------------------------------------------------

TEST_F(X11Window, AsksNothingAtRest) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 110, 110});
  DisplayUsableArea();
  DisplayCapturePointer(nullptr);
  DisplayKeyIsDown('A');
  Drain();
  int32_t x, y;
  X11Live()->devices.movedTick -= 10000; // long ago
  DisplayPointerPlace(&x, &y);
  DisplayPointerPlace(&x, &y);
  unsigned long before = NextRequest(X11Live()->display);
  DisplayEvent event;
  for (int32_t i = 0; i < 10; i++) {
    EXPECT_FALSE(DisplayNextEvent(&event));
    EXPECT_TRUE(DisplayPointerPlace(&x, &y));
    X11Live()->keyboard.pressedTick--;
    EXPECT_FALSE(DisplayKeyIsDown('A'));
    EXPECT_EQ(DisplayUsableArea().left, 0);
    DisplayShowWindow(window, true);
    DisplayPlaceWindow(window, {10, 10, 110, 110});
  }
  EXPECT_EQ(NextRequest(X11Live()->display), before);
}

TEST_F(X11Window, VanishedWindowsAreNoEnd) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 110, 110});
  XDestroyWindow(artist.display, window->id);
  XSync(artist.display, False);
  OwnSurface surface(100, 100);
  DisplayPresent(window, surface.surface, {0, 0, 100, 100});
  DisplayPlaceWindow(window, {20, 20, 130, 130});
  DisplayTitleWindow(window, "gone");
  DisplayMinimiseWindow(window, true);
  DisplayActivateWindow(window);
  DisplayCapturePointer(window);
  Drain();
  EXPECT_FALSE(DisplayIsLost());
}

TEST_F(X11Window, ALostConnectionLeavesEveryCallWithoutEffect) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 110, 110});
  OwnSurface surface(100, 100);
  XKillClient(artist.display, window->id);
  XSync(artist.display, False);
  EXPECT_TRUE(DisplayIsLost());
  EXPECT_EQ(DisplayNewWindow({Role::kPopup, {0, 0, 10, 10}, nullptr, ""}), nullptr);
  DisplayShowWindow(window, false);
  DisplayPlaceWindow(window, {20, 20, 130, 130});
  DisplayStackWindow(window, true);
  DisplayMinimiseWindow(window, true);
  DisplayActivateWindow(window);
  EXPECT_FALSE(DisplayDragWindow(window, 20, 20));
  DisplayPresent(window, surface.surface, {0, 0, 100, 100});
  DisplayRefresh({0, 0, 100, 100});
  DisplayCapturePointer(window);
  DisplayPointerShape(window, PointerShape::kWait, nullptr);
  DisplayBeep();
  bool dead = true;
  EXPECT_EQ(DisplayKeyCharacter(38, false, false, &dead), 0);
  EXPECT_FALSE(dead || DisplayKeyIsDown('A') || DisplayCapsLockIsOn());
  DisplayEvent event;
  EXPECT_FALSE(DisplayNextEvent(&event));
}

} // namespace

} // namespace framereel
