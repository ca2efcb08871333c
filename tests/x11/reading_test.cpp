// Reading the screen: every pixel of the rectangle, at every offset, and not one beside it.
#include "x11/artist.h"

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

Picture Part(const Picture& whole, const PixelRect& where) {
  Picture part{where.right - where.left, where.bottom - where.top, {}};
  for (int32_t y = where.top; y < where.bottom; y++) {
    for (int32_t x = where.left; x < where.right; x++) part.pixels.push_back(whole.At(x, y));
  }
  return part;
}

class X11Reading : public X11Test {
protected:
  // Reads into the middle of a filled surface and compares all of it.
  void ExpectExactRead(const Picture& screen, const PixelRect& where, OwnSurface* into, int32_t toX, int32_t toY) {
    into->Fill(0xA5);
    Picture expected = into->Pixels();
    Paste(Part(screen, where), toX, toY, &expected);
    ASSERT_TRUE(DisplayReadScreen(where, into->surface, toX, toY));
    ASSERT_EQ(Difference(into->Pixels(), expected), "") << where.left << ", " << where.top << ", " << where.right
                                                        << ", " << where.bottom << " to " << toX << ", " << toY;
  }
};

TEST_F(X11Reading, TellsTheLayoutOfEachDepth) {
  const struct {
    int32_t server;
    PixelLayout layout;
  } known[] = {{8, {8, 1, 0, 0, 0}},
               {15, {16, 2, 0x7C00, 0x03E0, 0x001F}},
               {16, kLayoutRgb565},
               {24, kLayoutXrgb8888},
               {30, {32, 4, 0x3FF00000, 0x000FFC00, 0x000003FF}}};
  ScreenFacts facts = DisplayScreen();
  EXPECT_EQ(facts.width, artist.Width());
  EXPECT_EQ(facts.height, artist.Height());
  bool found = false;
  for (const auto& row : known) {
    if (row.server != artist.Depth()) continue;
    found = true;
    EXPECT_EQ(facts.layout.depth, row.layout.depth);
    EXPECT_EQ(facts.layout.bytesPerPixel, row.layout.bytesPerPixel);
    EXPECT_EQ(facts.layout.redMask, row.layout.redMask);
    EXPECT_EQ(facts.layout.greenMask, row.layout.greenMask);
    EXPECT_EQ(facts.layout.blueMask, row.layout.blueMask);
  }
  EXPECT_TRUE(found) << "no expectation for depth " << artist.Depth();
}

TEST_F(X11Reading, TakesTheWholeScreenWithAllWindows) {
  Picture screen = artist.CoverScreen(1);
  Picture window = artist.Noise(101, 67, 2);
  artist.Show(window, 33, 45);
  Paste(window, 33, 45, &screen);
  OwnSurface into(screen.width, screen.height);
  EXPECT_EQ(into.surface.memory != nullptr, artist.HasSharedMemory());
  ExpectExactRead(screen, {0, 0, screen.width, screen.height}, &into, 0, 0);
  // A band as wide as the surface, lower on the screen than on it.
  ExpectExactRead(screen, {0, 200, screen.width, 300}, &into, 0, 7);
}

TEST_F(X11Reading, IsExactAtAllOffsetsAndWidths) {
  Picture screen = artist.CoverScreen(3);
  OwnSurface into(23, 9);
  for (int32_t width = 1; width <= 9; width++) {
    for (int32_t left = 0; left < 9; left++) {
      for (int32_t toX = 0; toX < 9; toX++) {
        ExpectExactRead(screen, {left, left, left + width, left + 4}, &into, toX, toX % 5);
      }
    }
  }
  int32_t w = screen.width;
  int32_t h = screen.height;
  ExpectExactRead(screen, {w - 1, h - 1, w, h}, &into, 22, 8);
}

TEST_F(X11Reading, LeavesTheNeighboursInALargeSurfaceAlone) {
  Picture screen = artist.CoverScreen(4);
  OwnSurface into(screen.width - 3, screen.height); // rows that end in padding at most depths
  ExpectExactRead(screen, {3, 0, screen.width, screen.height}, &into, 0, 0);
  ExpectExactRead(screen, {5, 7, 6, 8}, &into, 300, 200);
  ExpectExactRead(screen, {1, 1, screen.width - 3, screen.height}, &into, 1, 0);
  // One narrower, with the same padded row as the surface.
  ExpectExactRead(screen, {0, 0, screen.width - 4, 100}, &into, 0, 300);
  ExpectExactRead(screen, {0, 0, screen.width - 4, 100}, &into, 1, 300);
}

TEST_F(X11Reading, SeesWhatChangesBetweenTwoReads) {
  OwnSurface into(DisplayScreen().width, DisplayScreen().height);
  for (uint32_t seed = 5; seed < 8; seed++) {
    Picture screen = artist.CoverScreen(seed);
    ExpectExactRead(screen, {0, 0, screen.width, screen.height}, &into, 0, 0);
  }
}

TEST_F(X11Reading, RefusesWhatDoesNotFit) {
  artist.CoverScreen(8);
  ScreenFacts facts = DisplayScreen();
  OwnSurface into(40, 30);
  Picture before = into.Pixels();
  const PixelRect off[] = {{-1, 0, 9, 9},
                           {0, -1, 9, 9},
                           {facts.width - 9, 0, facts.width + 1, 9},
                           {0, facts.height - 9, 9, facts.height + 1},
                           {65536, 0, 65540, 4}};
  for (const PixelRect& where : off) EXPECT_FALSE(DisplayReadScreen(where, into.surface, 0, 0));
  EXPECT_FALSE(DisplayReadScreen({0, 0, 10, 10}, into.surface, 31, 0));
  EXPECT_FALSE(DisplayReadScreen({0, 0, 10, 10}, into.surface, 0, 21));
  EXPECT_FALSE(DisplayReadScreen({0, 0, 10, 10}, into.surface, -1, 0));
  Surface other = into.surface;
  other.layout = kLayoutMono;
  EXPECT_FALSE(DisplayReadScreen({0, 0, 10, 10}, other, 0, 0));
  EXPECT_TRUE(DisplayReadScreen({5, 5, 5, 9}, into.surface, 0, 0));
  EXPECT_EQ(Difference(into.Pixels(), before), "");
  EXPECT_FALSE(DisplayIsLost());
}

TEST_F(X11Reading, AsksTheServerOncePerFrame) {
  artist.CoverScreen(9);
  ScreenFacts facts = DisplayScreen();
  OwnSurface whole(facts.width, facts.height);
  OwnSurface part(50, 50);
  ASSERT_TRUE(DisplayReadScreen({0, 0, 50, 50}, part.surface, 0, 0));
  Display* display = X11Live()->display;
  unsigned long before = NextRequest(display);
  for (int32_t i = 0; i < 10; i++) {
    DisplayScreen();
    ASSERT_TRUE(DisplayReadScreen({0, 0, facts.width, facts.height}, whole.surface, 0, 0));
    ASSERT_TRUE(DisplayReadScreen({i, i, i + 50, i + 50}, part.surface, 0, 0));
  }
  EXPECT_EQ(NextRequest(display) - before, 20u);
}

TEST_F(X11Reading, MakesNoSurfaceOfAnImpossibleSize) {
  Surface surface;
  EXPECT_FALSE(DisplayNewSurface(0, 10, &surface));
  EXPECT_FALSE(DisplayNewSurface(10, -1, &surface));
  EXPECT_FALSE(DisplayNewSurface(INT32_MAX, INT32_MAX, &surface));
}

} // namespace

} // namespace framereel
