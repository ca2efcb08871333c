// See artist.h.
#include "x11/artist.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <random>

#include <X11/extensions/Xrandr.h>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

XImage ImageOfSurface(const Surface& s) {
  int32_t depth =
      IsPalette(s.layout) ? s.layout.depth : std::popcount(s.layout.redMask | s.layout.greenMask | s.layout.blueMask);
  return ImageOf(s.pixels, s.width, s.height, depth, 8 * s.layout.bytesPerPixel, s.stride);
}

} // namespace

// ---- Pictures ----------------------------------------------------------------------------------------------------

XImage ImageOf(void* rows, int32_t width, int32_t height, int32_t depth, int32_t bitsPerPixel, int32_t rowBytes) {
  XImage image{};
  image.width = width;
  image.height = height;
  image.format = ZPixmap;
  image.data = static_cast<char*>(rows);
  image.byte_order = image.bitmap_bit_order = kOwnByteOrder;
  image.bitmap_unit = image.bitmap_pad = 8;
  image.depth = depth;
  image.bits_per_pixel = bitsPerPixel;
  image.bytes_per_line = rowBytes;
  EXPECT_TRUE(XInitImage(&image));
  return image;
}

Picture PictureOf(XImage* image) {
  Picture picture{image->width, image->height, {}};
  for (int32_t y = 0; y < image->height; y++) {
    for (int32_t x = 0; x < image->width; x++) {
      picture.pixels.push_back(static_cast<uint32_t>(XGetPixel(image, x, y)));
    }
  }
  return picture;
}

void Copy(const Picture& from, const PixelRect& part, int32_t x, int32_t y, Picture* to) {
  const PixelRect cut = Intersect(part, from.All());
  for (int32_t row = cut.top; row < cut.bottom; row++) {
    for (int32_t column = cut.left; column < cut.right; column++) {
      int64_t toX = int64_t{x} + column - part.left;
      int64_t toY = int64_t{y} + row - part.top;
      if (toX < 0 || toY < 0 || toX >= to->width || toY >= to->height) continue;
      to->At(static_cast<int32_t>(toX), static_cast<int32_t>(toY)) = from.At(column, row);
    }
  }
}

std::string Difference(const Picture& found, const Picture& expected) {
  if (found.width != expected.width || found.height != expected.height) return "the sizes differ";
  auto at = std::mismatch(found.pixels.begin(), found.pixels.end(), expected.pixels.begin());
  if (at.first == found.pixels.end()) return "";
  auto place = at.first - found.pixels.begin();
  return "at " + std::to_string(place % found.width) + ", " + std::to_string(place / found.width) + ": " +
         std::to_string(*at.first) + " instead of " + std::to_string(*at.second);
}

// ---- The artist --------------------------------------------------------------------------------------------------

Artist::Artist() : display(XOpenDisplay(nullptr)) {
  if (!display) {
    ADD_FAILURE() << "no X server: run this with tests/with_xvfb.sh";
    std::abort();
  }
  root = DefaultRootWindow(display);
  XSynchronize(display, True);
}

Picture Artist::Noise(int32_t width, int32_t height, uint32_t seed) const {
  Picture picture = Paper(width, height);
  std::mt19937 noise(seed);
  for (uint32_t& pixel : picture.pixels) pixel = static_cast<uint32_t>(noise()) & PixelBits();
  return picture;
}

void Artist::Put(const Picture& picture, Drawable to, int32_t depth, int32_t x, int32_t y) const {
  uint32_t* rows = const_cast<uint32_t*>(picture.pixels.data());
  XImage image = ImageOf(rows, picture.width, picture.height, depth, 32, 4 * picture.width);
  GC context = XCreateGC(display, to, 0, nullptr);
  XPutImage(display, to, context, &image, 0, 0, x, y, picture.width, picture.height);
  XFreeGC(display, context);
}

Window Artist::Show(const Picture& picture, int32_t x, int32_t y) const {
  XSetWindowAttributes attributes{};
  attributes.override_redirect = True;
  attributes.event_mask = ExposureMask;
  Window window = XCreateWindow(display, root, x, y, picture.width, picture.height, 0, CopyFromParent, InputOutput,
                                CopyFromParent, CWOverrideRedirect | CWEventMask, &attributes);
  XMapRaised(display, window);
  XEvent exposed;
  XWindowEvent(display, window, ExposureMask, &exposed);
  Put(picture, window, Depth());
  return window;
}

Picture Artist::Look(const PixelRect& where) const {
  XImage* image = XGetImage(display, root, where.left, where.top, where.right - where.left, where.bottom - where.top,
                            AllPlanes, ZPixmap);
  Picture picture = PictureOf(image);
  XDestroyImage(image);
  return picture;
}

// Without a monitor, the server takes any size.
void Artist::ResizeScreen(int32_t width, int32_t height) const {
  XRRScreenResources* resources = XRRGetScreenResources(display, root);
  for (int i = 0; i < resources->ncrtc; i++) {
    XRRSetCrtcConfig(display, resources, resources->crtcs[i], CurrentTime, 0, 0, None, RR_Rotate_0, nullptr, 0);
  }
  XRRFreeScreenResources(resources);
  XRRSetScreenSize(display, root, width, height, width, height);
}

// ---- The display -------------------------------------------------------------------------------------------------

void X11Test::Catch() {
  if (X11Connection* x = X11Live()) XSync(x->display, False);
}

OwnSurface::OwnSurface(int32_t width, int32_t height, uint8_t fill) {
  EXPECT_TRUE(DisplayNewSurface(width, height, &surface));
  Fill(fill);
}

OwnSurface::OwnSurface(const Picture& picture) : OwnSurface(picture.width, picture.height) {
  XImage image = ImageOfSurface(surface);
  for (int32_t y = 0; y < picture.height; y++) {
    for (int32_t x = 0; x < picture.width; x++) XPutPixel(&image, x, y, picture.At(x, y));
  }
}

void OwnSurface::Fill(uint8_t byte) {
  std::memset(surface.pixels, byte, static_cast<size_t>(surface.stride) * surface.height);
}

Picture OwnSurface::Pixels() const {
  XImage image = ImageOfSurface(surface);
  return PictureOf(&image);
}

} // namespace framereel
