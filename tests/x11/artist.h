// Another program on the same server, for the tests of the X11 display: it paints known pictures with plain Xlib on its
// own connection, and looks at the screen without any help of the display's.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "win32/display.h"

// Behind gtest, which uses names that these make macros of.
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace framereel {

// Values of the server's pixels, only the bits that count. Rows without padding.
struct Picture {
  int32_t width, height;
  std::vector<uint32_t> pixels;

  uint32_t& At(int32_t x, int32_t y) { return pixels[static_cast<size_t>(y) * width + x]; }
  uint32_t At(int32_t x, int32_t y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

struct Artist {
  Display* display;
  Window root;
  std::vector<Window> windows;

  Artist();
  ~Artist();
  int32_t Depth() const { return DefaultDepth(display, DefaultScreen(display)); }
  int32_t Width() const;
  int32_t Height() const;
  bool HasSharedMemory() const;
  // All bits that the screen's pixels have.
  uint32_t PixelBits() const { return Depth() >= 32 ? ~0u : (1u << Depth()) - 1; }
  unsigned long Black() const { return BlackPixel(display, DefaultScreen(display)); }
  unsigned long White() const { return WhitePixel(display, DefaultScreen(display)); }

  // Shows a window of any program with the picture at that place, above the others, and waits until it stands there.
  Window Show(const Picture& picture, int32_t x, int32_t y);
  // Noise over the whole screen; no two neighbours are alike in general. The same for the same seed.
  Picture CoverScreen(uint32_t seed);
  Picture Noise(int32_t width, int32_t height, uint32_t seed) const;
  // What stands on the screen now.
  Picture Look() const;
  void ResizeScreen(int32_t width, int32_t height);
};

// The display under test and an artist beside it, fresh for each test.
class X11Test : public testing::Test {
protected:
  void SetUp() override { ASSERT_TRUE(DisplayOpen()); }
  void TearDown() override { DisplayClose(); }

  // Both sides agree behind it: the server has done what the display asked for, and the display has received what the
  // server sent up to now.
  void Catch();
  // What stands on the screen once the display's drawing has arrived.
  Picture Seen() {
    Catch();
    return artist.Look();
  }

  Artist artist;
};

// A surface of the display's, freed with it. Every byte is set to `fill`.
struct OwnSurface {
  Surface surface{};

  OwnSurface(int32_t width, int32_t height, uint8_t fill = 0xA5);
  ~OwnSurface() { DisplayFreeSurface(&surface); }
  OwnSurface(const OwnSurface&) = delete;
  OwnSurface& operator=(const OwnSurface&) = delete;

  // The pixel's bits that count.
  uint32_t At(int32_t x, int32_t y) const;
  void Set(int32_t x, int32_t y, uint32_t pixel);
  void Fill(uint8_t byte);
  Picture Pixels() const;
};

// `under` with the part of `over` that lies on it, its top left pixel at x, y.
void Paste(const Picture& over, int32_t x, int32_t y, Picture* under);
// Empty when both are alike; else the first pixel in which they differ.
std::string Difference(const Picture& found, const Picture& expected);

} // namespace framereel
