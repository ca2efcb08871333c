// See artist.h. Pictures go through Xlib's own pixel access, one pixel at a time: slow, and independent of the code
// under test.
#include "x11/artist.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include <X11/extensions/XShm.h>
#include <X11/extensions/Xrandr.h>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

uint32_t NextNoise(uint32_t* state) {
  // xorshift32 (Marsaglia, 2003)
  *state ^= *state << 13;
  *state ^= *state >> 17;
  *state ^= *state << 5;
  return *state;
}

int AnswersExpose(Display*, XEvent* event, XPointer window) {
  return event->type == Expose && event->xexpose.window == *reinterpret_cast<Window*>(window);
}

} // namespace

Artist::Artist() : display(XOpenDisplay(nullptr)) {
  if (!display) {
    ADD_FAILURE() << "no X server: run this with tests/with_xvfb.sh";
    std::abort();
  }
  root = DefaultRootWindow(display);
}

Artist::~Artist() {
  XCloseDisplay(display);
}

int32_t Artist::Width() const {
  XWindowAttributes attributes{};
  XGetWindowAttributes(display, root, &attributes);
  return attributes.width;
}

int32_t Artist::Height() const {
  XWindowAttributes attributes{};
  XGetWindowAttributes(display, root, &attributes);
  return attributes.height;
}

bool Artist::HasSharedMemory() const {
  return XShmQueryExtension(display);
}

Window Artist::Show(const Picture& picture, int32_t x, int32_t y) {
  int screen = DefaultScreen(display);
  XSetWindowAttributes attributes{};
  attributes.override_redirect = True;
  attributes.event_mask = ExposureMask;
  Window window = XCreateWindow(display, root, x, y, picture.width, picture.height, 0, CopyFromParent, InputOutput,
                                CopyFromParent, CWOverrideRedirect | CWEventMask, &attributes);
  windows.push_back(window);
  XMapRaised(display, window);
  XEvent event;
  XIfEvent(display, &event, AnswersExpose, reinterpret_cast<XPointer>(&window));

  XImage* image = XCreateImage(display, DefaultVisual(display, screen), Depth(), ZPixmap, 0, nullptr, picture.width,
                               picture.height, 32, 0);
  image->data = static_cast<char*>(std::calloc(picture.height, image->bytes_per_line));
  for (int32_t row = 0; row < picture.height; row++) {
    for (int32_t column = 0; column < picture.width; column++) {
      XPutPixel(image, column, row, picture.At(column, row));
    }
  }
  GC context = XCreateGC(display, window, 0, nullptr);
  XPutImage(display, window, context, image, 0, 0, 0, 0, picture.width, picture.height);
  XFreeGC(display, context);
  XDestroyImage(image);
  XSync(display, False);
  return window;
}

Picture Artist::Noise(int32_t width, int32_t height, uint32_t seed) const {
  Picture picture{width, height, std::vector<uint32_t>(static_cast<size_t>(width) * height)};
  uint32_t state = seed * 2654435761u + 1;
  for (uint32_t& pixel : picture.pixels) pixel = NextNoise(&state) & PixelBits();
  return picture;
}

Picture Artist::CoverScreen(uint32_t seed) {
  Picture picture = Noise(Width(), Height(), seed);
  Show(picture, 0, 0);
  return picture;
}

Picture Artist::Look() const {
  Picture picture{Width(), Height(), {}};
  XImage* image = XGetImage(display, root, 0, 0, picture.width, picture.height, AllPlanes, ZPixmap);
  for (int32_t y = 0; y < picture.height; y++) {
    for (int32_t x = 0; x < picture.width; x++) {
      picture.pixels.push_back(static_cast<uint32_t>(XGetPixel(image, x, y)) & PixelBits());
    }
  }
  XDestroyImage(image);
  return picture;
}

// Without a monitor, the server takes any size.
void Artist::ResizeScreen(int32_t width, int32_t height) {
  XRRScreenResources* resources = XRRGetScreenResources(display, root);
  for (int i = 0; i < resources->ncrtc; i++) {
    XRRSetCrtcConfig(display, resources, resources->crtcs[i], CurrentTime, 0, 0, None, RR_Rotate_0, nullptr, 0);
  }
  XRRFreeScreenResources(resources);
  XRRSetScreenSize(display, root, width, height, width, height);
  XSync(display, False);
}

void X11Test::Catch() {
  if (X11Connection* x = X11Live()) XSync(x->display, False);
}

OwnSurface::OwnSurface(int32_t width, int32_t height, uint8_t fill) {
  if (!DisplayNewSurface(width, height, &surface)) {
    ADD_FAILURE() << "no surface of " << width << " by " << height;
    std::abort();
  }
  Fill(fill);
}

uint32_t OwnSurface::At(int32_t x, int32_t y) const {
  int32_t bytes = surface.layout.bytesPerPixel;
  const uint8_t* at = RowOf(surface, y) + int64_t{x} * bytes;
  uint32_t pixel = 0;
  if (bytes == 1) return *at;
  if (bytes == 2) {
    uint16_t half;
    std::memcpy(&half, at, 2);
    pixel = half;
  } else {
    std::memcpy(&pixel, at, 4);
  }
  return pixel & (surface.layout.redMask | surface.layout.greenMask | surface.layout.blueMask);
}

void OwnSurface::Set(int32_t x, int32_t y, uint32_t pixel) {
  int32_t bytes = surface.layout.bytesPerPixel;
  uint8_t* at = RowOf(surface, y) + int64_t{x} * bytes;
  uint16_t half = static_cast<uint16_t>(pixel);
  if (bytes == 1) *at = static_cast<uint8_t>(pixel);
  if (bytes == 2) std::memcpy(at, &half, 2);
  if (bytes == 4) std::memcpy(at, &pixel, 4);
}

void OwnSurface::Fill(uint8_t byte) {
  std::memset(surface.pixels, byte, static_cast<size_t>(surface.stride) * surface.height);
}

Picture OwnSurface::Pixels() const {
  Picture picture{surface.width, surface.height, {}};
  for (int32_t y = 0; y < surface.height; y++) {
    for (int32_t x = 0; x < surface.width; x++) picture.pixels.push_back(At(x, y));
  }
  return picture;
}

void Paste(const Picture& over, int32_t x, int32_t y, Picture* under) {
  for (int32_t row = 0; row < over.height; row++) {
    for (int32_t column = 0; column < over.width; column++) {
      int64_t atX = int64_t{x} + column;
      int64_t atY = int64_t{y} + row;
      if (atX < 0 || atY < 0 || atX >= under->width || atY >= under->height) continue;
      under->At(static_cast<int32_t>(atX), static_cast<int32_t>(atY)) = over.At(column, row);
    }
  }
}

std::string Difference(const Picture& found, const Picture& expected) {
  if (found.width != expected.width || found.height != expected.height) return "the sizes differ";
  for (int32_t y = 0; y < found.height; y++) {
    for (int32_t x = 0; x < found.width; x++) {
      if (found.At(x, y) == expected.At(x, y)) continue;
      return "at " + std::to_string(x) + ", " + std::to_string(y) + ": " + std::to_string(found.At(x, y)) +
             " instead of " + std::to_string(expected.At(x, y));
    }
  }
  return "";
}

} // namespace framereel
