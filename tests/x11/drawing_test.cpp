// Drawing on the screen, over everybody's windows. The artist looks at the result.
#include "x11/artist.h"

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

class X11Drawing : public X11Test {
protected:
  void Load(const Picture& picture, OwnSurface* surface) {
    for (int32_t y = 0; y < picture.height; y++) {
      for (int32_t x = 0; x < picture.width; x++) surface->Set(x, y, picture.At(x, y));
    }
  }

  // The screen after an inversion, by the words of the display's contract.
  Picture Inverted(Picture screen, const PixelRect& where, const uint8_t pattern[8]) {
    uint32_t bits = static_cast<uint32_t>(artist.Black() ^ artist.White());
    PixelRect seen = Intersect(where, {0, 0, screen.width, screen.height});
    for (int32_t y = seen.top; y < seen.bottom; y++) {
      for (int32_t x = seen.left; x < seen.right; x++) {
        if (pattern[y % 8] >> (7 - x % 8) & 1) screen.At(x, y) ^= bits;
      }
    }
    return screen;
  }
};

TEST_F(X11Drawing, PutsPixelsOverAllWindows) {
  Picture screen = artist.CoverScreen(1);
  artist.Show(artist.Noise(200, 100, 2), 50, 50);
  screen = Seen();
  Picture small = artist.Noise(31, 17, 3);
  OwnSurface from(31, 17);
  Load(small, &from);
  ASSERT_TRUE(DisplayDrawScreen(from.surface, {0, 0, 31, 17}, 45, 49));
  Paste(small, 45, 49, &screen);
  EXPECT_EQ(Difference(Seen(), screen), "");

  // A part from the middle.
  ASSERT_TRUE(DisplayDrawScreen(from.surface, {5, 6, 12, 16}, 300, 301));
  for (int32_t y = 6; y < 16; y++) {
    for (int32_t x = 5; x < 12; x++) screen.At(295 + x, 295 + y) = small.At(x, y);
  }
  EXPECT_EQ(Difference(Seen(), screen), "");
}

TEST_F(X11Drawing, CutsWhatLiesOffTheScreen) {
  Picture screen = artist.CoverScreen(4);
  for (int32_t size : {20, 300}) { // sent with the request, and through shared memory
    Picture picture = artist.Noise(size, size, 5);
    OwnSurface from(size, size);
    Load(picture, &from);
    const struct {
      int32_t x, y;
    } places[] = {{-7, 30},
                  {30, -7},
                  {screen.width - 5, 40},
                  {40, screen.height - 5},
                  {-size, 0},
                  {screen.width, 0},
                  {65546, 0}, // 10, 0 in the protocol's 16 bits
                  {-65526, 0},
                  {0, -65526},
                  {INT32_MAX, 10},
                  {10, INT32_MIN},
                  {screen.width - 1, -(size - 1)}};
    for (const auto& place : places) {
      ASSERT_TRUE(DisplayDrawScreen(from.surface, {0, 0, size, size}, place.x, place.y));
      Paste(picture, place.x, place.y, &screen);
      ASSERT_EQ(Difference(Seen(), screen), "") << place.x << ", " << place.y;
    }
    // A part that reaches beyond the surface shows what is there.
    ASSERT_TRUE(DisplayDrawScreen(from.surface, {-3, -4, size + 9, size + 9}, 0, 0));
    Paste(picture, 3, 4, &screen);
    EXPECT_EQ(Difference(Seen(), screen), "");
  }
}

TEST_F(X11Drawing, HasFinishedWithTheSurfaceWhenItReturns) {
  Picture screen = artist.CoverScreen(6);
  Picture picture = artist.Noise(screen.width, screen.height, 7);
  OwnSurface from(screen.width, screen.height);
  Load(picture, &from);
  ASSERT_TRUE(DisplayDrawScreen(from.surface, {0, 0, screen.width, screen.height}, 0, 0));
  Display* display = X11Live()->display;
  EXPECT_EQ(LastKnownRequestProcessed(display) == NextRequest(display) - 1, artist.HasSharedMemory());
  from.Fill(0);
  EXPECT_EQ(Difference(Seen(), picture), "");
}

TEST_F(X11Drawing, ReadsBackWhatItDrew) {
  artist.CoverScreen(8);
  for (int32_t size : {16, 250}) {
    Picture picture = artist.Noise(size, size, 9);
    OwnSurface from(size, size);
    OwnSurface into(size, size);
    Load(picture, &from);
    ASSERT_TRUE(DisplayDrawScreen(from.surface, {0, 0, size, size}, 21, 22));
    ASSERT_TRUE(DisplayReadScreen({21, 22, 21 + size, 22 + size}, into.surface, 0, 0));
    EXPECT_EQ(Difference(into.Pixels(), picture), "");
  }
}

TEST_F(X11Drawing, RefusesASurfaceOfAnotherLayout) {
  Picture screen = artist.CoverScreen(10);
  OwnSurface from(8, 8);
  from.surface.layout = kLayoutMono;
  EXPECT_FALSE(DisplayDrawScreen(from.surface, {0, 0, 8, 8}, 0, 0));
  EXPECT_EQ(Difference(Seen(), screen), "");
}

TEST_F(X11Drawing, InvertsUnderAPatternInScreenCoordinates) {
  Picture screen = artist.CoverScreen(11);
  artist.Show(artist.Noise(90, 90, 12), 20, 20);
  screen = Seen();
  const uint8_t uneven[8] = {0x87, 0x43, 0xA1, 0xD0, 0x68, 0x34, 0x1A, 0x0D};
  const PixelRect places[] = {
      {13, 11, 141, 139}, {7, 200, 8, 300}, {-20, -20, 30, 5}, {500, 400, 70000, 70000}, {65540, 0, 65600, 50}};
  for (const PixelRect& where : places) {
    ASSERT_TRUE(DisplayInvertScreen(where, uneven));
    EXPECT_EQ(Difference(Seen(), Inverted(screen, where, uneven)), "");
    ASSERT_TRUE(DisplayInvertScreen(where, uneven));
    EXPECT_EQ(Difference(Seen(), screen), "");
  }
}

TEST_F(X11Drawing, KeepsManyPatternsApart) {
  Picture screen = artist.CoverScreen(13);
  const PixelRect where = {3, 3, 43, 19};
  auto invert = [&](int32_t number) {
    uint8_t pattern[8];
    for (int32_t row = 0; row < 8; row++) pattern[row] = static_cast<uint8_t>(number * 37 + row * 11);
    ASSERT_TRUE(DisplayInvertScreen(where, pattern));
    screen = Inverted(screen, where, pattern);
  };
  for (int32_t i = 0; i < 3 * kStipplesKept; i++) {
    invert(i);
    for (int32_t back : {1, 5, kStipplesKept - 1, kStipplesKept}) invert(i - back); // kept, and just gone
  }
  EXPECT_EQ(Difference(Seen(), screen), "");
}

TEST_F(X11Drawing, SwapsBlackAndWhite) {
  Picture halves{80, 40, std::vector<uint32_t>(size_t{80} * 40, static_cast<uint32_t>(artist.Black()))};
  for (int32_t y = 0; y < 40; y++) {
    for (int32_t x = 40; x < 80; x++) halves.At(x, y) = static_cast<uint32_t>(artist.White());
  }
  artist.Show(halves, 0, 0);
  const uint8_t all[8] = {255, 255, 255, 255, 255, 255, 255, 255};
  ASSERT_TRUE(DisplayInvertScreen({0, 0, 80, 40}, all));
  Picture screen = Seen();
  EXPECT_EQ(screen.At(10, 10), artist.White());
  EXPECT_EQ(screen.At(70, 10), artist.Black());
}

} // namespace

} // namespace framereel
