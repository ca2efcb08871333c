// What happens to the whole display: its palette and size change, the connection breaks, and nothing stays behind.
#include "x11/artist.h"

#include <sys/shm.h>
#include <sys/time.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <string>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

class X11Whole : public X11Test {
protected:
  // The server throws the display's connection out.
  void Break() {
    XKillClient(artist.display, XGContextFromGC(X11Live()->drawing));
    XSync(artist.display, False);
  }

  // A pass of an event loop that deals with nothing.
  void PassEvents() {
    DisplayEvent event;
    while (DisplayNextEvent(&event)) {
    }
  }
};

TEST_F(X11Whole, TellsThePaletteAsItIsNow) {
  PaletteColour colours[256];
  for (PaletteColour& c : colours) c = {1, 2, 3};
  DisplayPalette(colours);
  if (DisplayScreen().layout.depth > 8) {
    for (const PaletteColour& c : colours) EXPECT_EQ(c.red * 65536 + c.green * 256 + c.blue, 0x010203);
    return;
  }
  EXPECT_EQ(colours[artist.Black()].red, 0);
  EXPECT_EQ(colours[artist.White()].green, 255);

  int screen = DefaultScreen(artist.display);
  Colormap map = DefaultColormap(artist.display, screen);
  if (DefaultVisual(artist.display, screen)->c_class == PseudoColor) {
    unsigned long cell;
    ASSERT_TRUE(XAllocColorCells(artist.display, map, False, nullptr, 0, &cell, 1));
    XColor colour{cell, 0x12FF, 0xFF00, 0x7F80, DoRed | DoGreen | DoBlue, 0};
    XStoreColor(artist.display, map, &colour);
    XSync(artist.display, False);
    PassEvents();
    DisplayPalette(colours);
    EXPECT_EQ(colours[cell].red, 0x12);
    EXPECT_EQ(colours[cell].green, 0xFF);
    EXPECT_EQ(colours[cell].blue, 0x7F);
    colour = {cell, 0xFFFF, 0, 0, DoRed | DoGreen | DoBlue, 0};
    XStoreColor(artist.display, map, &colour);
    XSync(artist.display, False);
    OwnSurface into(10, 10);
    ASSERT_TRUE(DisplayReadScreen({0, 0, 10, 10}, into.surface, 0, 0));
    DisplayPalette(colours);
    EXPECT_EQ(colours[cell].red, 255);
    XFreeColors(artist.display, map, &cell, 1, 0);
  }
}

TEST_F(X11Whole, AsksForColoursOnceBetweenEventsAndForFixedOnesOnce) {
  if (artist.Depth() > 8) GTEST_SKIP() << "there is no palette";
  bool fixed = DefaultVisual(artist.display, DefaultScreen(artist.display))->c_class != PseudoColor;
  PaletteColour colours[256];
  DisplayPalette(colours);
  for (int32_t pass = 0; pass < 3; pass++) {
    PassEvents();
    unsigned long before = NextRequest(X11Live()->display);
    for (int32_t i = 0; i < 5; i++) DisplayPalette(colours);
    EXPECT_EQ(NextRequest(X11Live()->display), fixed ? before : before + 1);
  }
}

TEST_F(X11Whole, FollowsTheResolution) {
  int32_t width = artist.Width();
  int32_t height = artist.Height();
  OwnSurface into(100, 100);
  PixelRect corner = {width - 100, height - 100, width, height};
  ASSERT_TRUE(DisplayReadScreen(corner, into.surface, 0, 0));

  artist.ResizeScreen(width - 60, height - 40);
  // Whether the display has heard of it already or asks for what is gone, the answer is the same.
  EXPECT_FALSE(DisplayReadScreen(corner, into.surface, 0, 0));
  Catch();
  EXPECT_EQ(DisplayScreen().width, width - 60);
  EXPECT_EQ(DisplayScreen().height, height - 40);
  EXPECT_TRUE(DisplayReadScreen({width - 160, height - 140, width - 60, height - 40}, into.surface, 0, 0));
  EXPECT_FALSE(DisplayIsLost());

  artist.ResizeScreen(width, height);
  Catch();
  EXPECT_EQ(DisplayScreen().width, width);
  EXPECT_TRUE(DisplayReadScreen(corner, into.surface, 0, 0));
}

// The server answers before the display has heard of the change: its error means the same as not being there.
TEST_F(X11Whole, AnswersFalseWhenTheServerRefusesARead) {
  OwnSurface into(100, 100);
  OwnSurface wide(artist.Width() + 100, 100);
  X11Live()->facts.width += 100;
  EXPECT_FALSE(DisplayReadScreen({artist.Width(), 0, artist.Width() + 100, 100}, into.surface, 0, 0));
  EXPECT_FALSE(DisplayReadScreen({0, 0, artist.Width() + 100, 100}, wide.surface, 0, 0));
  X11Live()->facts.width -= 100;
  EXPECT_TRUE(DisplayReadScreen({0, 0, 100, 100}, into.surface, 0, 0));
  EXPECT_FALSE(DisplayIsLost());
}

TEST_F(X11Whole, OutlivesABrokenConnection) {
  OwnSurface large(300, 300, 0x5A);
  OwnSurface small(10, 10);
  EXPECT_FALSE(DisplayIsLost());
  Break();
  EXPECT_FALSE(DisplayReadScreen({0, 0, 300, 300}, large.surface, 0, 0));
  EXPECT_TRUE(DisplayIsLost());

  const uint8_t pattern[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  int32_t x = 7;
  int32_t y = 8;
  Surface another{};
  PaletteColour colours[256] = {{9, 9, 9}};
  EXPECT_EQ(DisplayScreen().width, 0);
  DisplayPalette(colours);
  EXPECT_EQ(colours[0].red, 9);
  EXPECT_FALSE(DisplayNewSurface(300, 300, &another));
  EXPECT_FALSE(DisplayDrawScreen(small.surface, {0, 0, 10, 10}, 0, 0));
  EXPECT_FALSE(DisplayInvertScreen({0, 0, 10, 10}, pattern));
  EXPECT_EQ(DisplayPointer(), nullptr);
  EXPECT_FALSE(DisplayPointerPlace(&x, &y));
  EXPECT_EQ(x, 7);
  DisplayMovePointer(1, 1);
  EXPECT_FALSE(DisplayOpen());
  EXPECT_TRUE(DisplayIsLost());
  EXPECT_EQ(RowOf(large.surface, 299)[0], 0x5A); // what was recorded can still be saved

  DisplayClose();
  ASSERT_TRUE(DisplayOpen());
  EXPECT_FALSE(DisplayIsLost());
}

// Each call may be the one that finds the connection broken.
TEST_F(X11Whole, FindsOutInEveryCall) {
  const uint8_t pattern[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  int32_t x, y;
  Surface made{};
  PaletteColour colours[256];
  const std::function<bool()> calls[] = {
      [] { return DisplayScreen().width != 0; },
      [&] {
        return DisplayReadScreen({0, 0, 9, 9}, made, 0, 0);
      },
      [&] {
        return DisplayDrawScreen(made, {0, 0, 9, 9}, 0, 0);
      },
      [&] {
        return DisplayInvertScreen({0, 0, 9, 9}, pattern);
      },
      [] { return DisplayPointer() != nullptr; },
      [&] { return DisplayPointerPlace(&x, &y); },
      [] { return DisplayMovePointer(1, 1), false; },
      [&] { return DisplayPalette(colours), false; },
      [&] { return DisplayFreeSurface(&made), false; },
      [&] {
        DisplayFreeSurface(&made);
        return DisplayNewSurface(300, 300, &made) && artist.HasSharedMemory();
      },
  };
  for (const auto& call : calls) {
    ASSERT_TRUE(DisplayNewSurface(300, 300, &made));
    Break();
    EXPECT_FALSE(call());
    EXPECT_TRUE(DisplayIsLost());
    DisplayFreeSurface(&made);
    DisplayClose();
    ASSERT_TRUE(DisplayOpen());
  }
}

TEST_F(X11Whole, LeavesNoSharedMemoryBehind) {
  if (!artist.HasSharedMemory()) GTEST_SKIP() << "the server has none";
  auto stands = [](int id) {
    shmid_ds state;
    return ::shmctl(id, IPC_STAT, &state) == 0;
  };
  Surface surface;
  ASSERT_TRUE(DisplayNewSurface(300, 300, &surface));
  int id = static_cast<X11Segment*>(surface.memory)->shared.shmid;
  EXPECT_TRUE(stands(id));
  DisplayFreeSurface(&surface);
  Catch();
  EXPECT_FALSE(stands(id));

  // A surface that is freed behind the end of its connection.
  ASSERT_TRUE(DisplayNewSurface(300, 300, &surface));
  surface.pixels[0] = 77;
  DisplayClose();
  ASSERT_TRUE(DisplayOpen());
  EXPECT_EQ(surface.pixels[0], 77);
  DisplayFreeSurface(&surface);
  EXPECT_EQ(surface.pixels, nullptr);
  EXPECT_TRUE(X11Live()->segments.empty());
}

TEST_F(X11Whole, OpensOnce) {
  Display* display = X11Live()->display;
  EXPECT_TRUE(DisplayOpen());
  EXPECT_EQ(X11Live()->display, display);
}

// Errors of other connections in the process are not ours to swallow.
TEST_F(X11Whole, PassesOnErrorsOfOthers) {
  DisplayClose();
  static int seen;
  seen = 0;
  XErrorHandler before = XSetErrorHandler([](Display*, XErrorEvent*) { return ++seen; });
  ASSERT_TRUE(DisplayOpen());
  XMapWindow(artist.display, 1);
  XSync(artist.display, False);
  EXPECT_EQ(seen, 1);
  XMapWindow(X11Live()->display, 1);
  {
    OwnSurface surface(300, 300); // the refusal that arrives meanwhile is not one of shared memory
    EXPECT_EQ(surface.surface.memory != nullptr, artist.HasSharedMemory());
  }
  Catch();
  EXPECT_EQ(seen, 1);
  DisplayClose();
  XSetErrorHandler(before);
}

TEST(X11WithoutServer, AnswersNothing) {
  EXPECT_EQ(DisplayScreen().width, 0);
  EXPECT_FALSE(DisplayIsLost());
  const char* named = ::getenv("DISPLAY");
  ASSERT_NE(named, nullptr);
  std::string server = named;
  ::setenv("DISPLAY", "no-such-place:99", 1);
  EXPECT_FALSE(DisplayOpen());
  EXPECT_FALSE(DisplayOpen());
  EXPECT_FALSE(DisplayIsLost());
  EXPECT_EQ(DisplayPointer(), nullptr);
  DisplayClose();
  ::setenv("DISPLAY", server.c_str(), 1);
  EXPECT_TRUE(DisplayOpen());
  DisplayClose();
}

// Signals arrive all the time; the bound below does not depend on the machine's speed.
TEST(X11Clock, SleepsAtLeastSoLongWhateverHappens) {
  struct sigaction action {};
  struct sigaction before {};
  action.sa_handler = [](int) {};
  ::sigaction(SIGALRM, &action, &before);
  itimerval often = {{0, 500}, {0, 500}};
  ::setitimer(ITIMER_REAL, &often, nullptr);
  uint32_t start = DisplayTick();
  DisplaySleep(15);
  uint32_t end = DisplayTick();
  itimerval never{};
  ::setitimer(ITIMER_REAL, &never, nullptr);
  ::sigaction(SIGALRM, &before, nullptr);
  EXPECT_GE(end - start, 15u);
}

} // namespace

} // namespace framereel
