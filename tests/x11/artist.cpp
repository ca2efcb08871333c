// See artist.h.
#include "support/script.h" // ahead of Xlib, whose macros are ordinary words

#include "x11/artist.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <random>

#include <X11/extensions/Xrandr.h>

#include "win32/pixels/pixels.h"
#include "win32/pixels/rectangles.h"
#include "win32/x11/x11_display.h"

namespace framereel {

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
  for (int i = 0; i < image->width * image->height; ++i) {
    picture.pixels.push_back(uint32_t(XGetPixel(image, i % image->width, i / image->width)));
  }
  return picture;
}

void Copy(const Picture& from, const PixelRect& part, int32_t x, int32_t y, Picture* to) {
  const PixelRect cut = Intersect(part, from.All());
  for (int64_t row = cut.top; row < cut.bottom; row++) {
    for (int64_t column = cut.left; column < cut.right; column++) {
      const int64_t toX = x + column - part.left, toY = y + row - part.top;
      const bool has = toX >= 0 && toY >= 0 && toX < to->width && toY < to->height;
      if (has) to->At(int32_t(toX), int32_t(toY)) = from.At(int32_t(column), int32_t(row));
    }
  }
}

std::string Difference(const Picture& found, const Picture& expected) {
  if (found.width != expected.width || found.height != expected.height) return "the sizes differ";
  const auto at = std::mismatch(found.pixels.begin(), found.pixels.end(), expected.pixels.begin());
  const auto place = at.first - found.pixels.begin();
  return at.first == found.pixels.end()
             ? ""
             : Text("at ", place % found.width, ", ", place / found.width, ": ", *at.first, " instead of ", *at.second);
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

Window Artist::Make(Window parent, const PixelRect& place, int32_t border, int32_t depth) const {
  const int screen = DefaultScreen(display);
  XVisualInfo kind{};
  if (depth == 0 || !XMatchVisualInfo(display, screen, depth, TrueColor, &kind)) {
    kind.visual = DefaultVisual(display, screen);
    kind.depth = Depth();
  }
  XSetWindowAttributes attributes{};
  attributes.override_redirect = True;
  attributes.colormap = XCreateColormap(display, root, kind.visual, AllocNone);
  const Window window = XCreateWindow(display, parent, place.left, place.top, unsigned(WidthOf(place)),
                                      unsigned(HeightOf(place)), unsigned(border), kind.depth, InputOutput, kind.visual,
                                      CWOverrideRedirect | CWColormap | CWBackPixel | CWBorderPixel, &attributes);
  XMapRaised(display, window);
  return window;
}

Window Artist::Show(const Picture& picture, int32_t x, int32_t y) const {
  const Window window = Make(root, {x, y, x + picture.width, y + picture.height});
  XSelectInput(display, window, ExposureMask);
  XSetWindowBackgroundPixmap(display, window, None); // what is uncovered is left as it is
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

OwnSurface::OwnSurface(int32_t width, int32_t height, uint8_t fill) {
  EXPECT_TRUE(DisplayNewSurface(width, height, &surface));
  Fill(fill);
}

OwnSurface::OwnSurface(const Picture& picture) : OwnSurface(picture.width, picture.height) {
  for (size_t i = 0; i < picture.pixels.size(); ++i) {
    SetPixelAt(surface, int32_t(i) % picture.width, int32_t(i) / picture.width, picture.pixels[i]);
  }
}

void OwnSurface::Fill(uint8_t byte) {
  std::memset(surface.pixels, byte, size_t(surface.stride) * size_t(surface.height));
}

Picture OwnSurface::Pixels() const {
  Picture picture = {surface.width, surface.height, {}};
  for (int32_t i = 0; i < picture.width * picture.height; ++i) {
    picture.pixels.push_back(PixelAt(surface, i % picture.width, i / picture.width) &
                             framereel::PixelBits(surface.layout));
  }
  return picture;
}

} // namespace framereel
