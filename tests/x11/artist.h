// Another program on the same server, for the tests of the X11 display: it paints known pictures with plain Xlib on its
// own connection, and looks at the screen without any help of the display's. What it asks for is done when a call
// returns.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "win32/pixels/display.h"

// Behind gtest, which uses names that these make macros of.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>

namespace framereel {

// Values of the server's pixels, only the bits that count. Rows without padding.
struct Picture {
  int32_t width, height;
  std::vector<uint32_t> pixels;

  PixelRect All() const { return {0, 0, width, height}; }
  uint32_t& At(int32_t x, int32_t y) { return pixels[static_cast<size_t>(y) * width + x]; }
  uint32_t At(int32_t x, int32_t y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

// Rows of pixels in memory, in its own byte order, for Xlib's access to single pixels: slow, and independent of the
// code under test.
XImage ImageOf(void* rows, int32_t width, int32_t height, int32_t depth, int32_t bitsPerPixel, int32_t rowBytes);
Picture PictureOf(XImage* image);
// Puts a part of a picture onto another, its top left pixel at x, y. What lies off either is cut.
void Copy(const Picture& from, const PixelRect& part, int32_t x, int32_t y, Picture* to);
// Empty when both are alike; else the first pixel in which they differ.
std::string Difference(const Picture& found, const Picture& expected);

struct Artist {
  Display* display;
  Window root;

  Artist();
  ~Artist() { XCloseDisplay(display); }
  int32_t Depth() const { return DefaultDepth(display, DefaultScreen(display)); }
  XWindowAttributes State(Window window) const {
    XWindowAttributes state{};
    XGetWindowAttributes(display, window, &state);
    return state;
  }
  int32_t Width() const { return State(root).width; }
  int32_t Height() const { return State(root).height; }
  bool HasExtension(const char* name) const {
    int major, event, error;
    return XQueryExtension(display, name, &major, &event, &error);
  }
  bool HasSharedMemory() const { return HasExtension("MIT-SHM"); }
  // All bits that the screen's pixels have.
  uint32_t PixelBits() const { return Depth() >= 32 ? ~0u : (1u << Depth()) - 1; }
  uint32_t Black() const { return uint32_t(BlackPixel(display, DefaultScreen(display))) & PixelBits(); }
  uint32_t White() const { return uint32_t(WhitePixel(display, DefaultScreen(display))) & PixelBits(); }

  Picture Paper(int32_t width, int32_t height) const {
    return {width, height, std::vector(static_cast<size_t>(width) * height, White())};
  }
  // Noise of the screen's pixels, the same for the same seed; no two neighbours are alike in general.
  Picture Noise(int32_t width, int32_t height, uint32_t seed) const;
  void Put(const Picture& picture, Drawable to, int32_t depth, int32_t x = 0, int32_t y = 0) const;
  // A window that no window manager takes for its own, above the others in its parent; of the depth, where the screen
  // has that.
  Window Make(Window parent, const PixelRect& place, int32_t border = 0, int32_t depth = 0) const;
  // The same, of the picture, which it tells when it has to be painted again.
  Window Show(const Picture& picture, int32_t x, int32_t y) const;
  // Noise over the whole screen.
  Picture CoverScreen(uint32_t seed) const {
    Picture picture = Noise(Width(), Height(), seed);
    return Show(picture, 0, 0), picture;
  }
  // What stands on the screen now, or on a part of it.
  Picture Look() const { return Look({0, 0, Width(), Height()}); }
  Picture Look(const PixelRect& where) const;
  void ResizeScreen(int32_t width, int32_t height) const;
};

// A surface of the display's, freed with it.
struct OwnSurface {
  Surface surface{};

  OwnSurface(int32_t width, int32_t height, uint8_t fill = 0xA5);
  explicit OwnSurface(const Picture& picture);
  ~OwnSurface() { DisplayFreeSurface(&surface); }
  OwnSurface(const OwnSurface&) = delete;
  OwnSurface& operator=(const OwnSurface&) = delete;

  void Fill(uint8_t byte); // every one
  Picture Pixels() const;
};

} // namespace framereel
