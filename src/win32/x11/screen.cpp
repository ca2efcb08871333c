// The screen of the X11 display: its facts, its palette, surfaces in its format, reading from it and drawing on it,
// over all windows. Shared memory is in segments.cpp, the server's packing of pixels in pixels.cpp.
#include <X11/Xresource.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "win32/pixels/exhaustion.h"
#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

// Less than this is not worth an own segment, of which a system has a limited number, nor a wait for the server.
constexpr int64_t kSharedFrom = 65536;

bool operator==(const PixelLayout& a, const PixelLayout& b) {
  return a.depth == b.depth && a.bytesPerPixel == b.bytesPerPixel && a.redMask == b.redMask &&
         a.greenMask == b.greenMask && a.blueMask == b.blueMask;
}

bool Holds(const PixelRect& outer, const PixelRect& inner) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

PixelRect ScreenRect(const X11Connection* x) {
  return {0, 0, x->facts.width, x->facts.height};
}

// ---- Facts -------------------------------------------------------------------------------------------------------

X11Format FormatOf(Display* display, int32_t depth) {
  X11Format format = {depth, depth, 32, ImageByteOrder(display), BitmapBitOrder(display), BitmapUnit(display), false};
  int count = 0;
  XPixmapFormatValues* formats = XListPixmapFormats(display, &count);
  if (!formats) EndWithoutMemory();
  for (int i = 0; i < count; i++) {
    if (formats[i].depth != depth) continue;
    format.bitsPerPixel = formats[i].bits_per_pixel;
    format.rowPad = formats[i].scanline_pad;
  }
  XFree(formats);
  return format;
}

// Up to 8 bits every kind of visual is a palette: the server tells the colours of a fixed one in the same way.
PixelLayout LayoutOf(int32_t depth, const Visual& visual) {
  bool trueColour = visual.c_class == TrueColor || visual.c_class == DirectColor;
  if (depth <= kPaletteDepthMax) return {depth, 1, 0, 0, 0};
  if (!trueColour) return {depth, depth <= 16 ? 2 : 4, 0, 0, 0};
  int32_t counted = depth == 15 ? 16 : depth == 30 ? 32 : depth;
  return {counted, counted <= 16 ? 2 : 4, uint32_t(visual.red_mask), uint32_t(visual.green_mask),
          uint32_t(visual.blue_mask)};
}

// The server's colours in the order of its own pixels; all black when the connection is lost.
void QueryColours(const X11Connection* x, int32_t count, XColor* cells) {
  for (int32_t i = 0; i < count; i++) cells[i] = {static_cast<unsigned long>(i), 0, 0, 0, 0, 0};
  XQueryColors(x->display, DefaultColormap(x->display, DefaultScreen(x->display)), cells, count);
}

void ReadPalette(X11Connection* x) {
  int32_t count = 1 << x->facts.layout.depth;
  XColor cells[1 << kPaletteDepthMax];
  QueryColours(x, count, cells);
  for (int32_t i = 0; i < count; i++) {
    const XColor& cell = cells[x->format.turned ? count - 1 - i : i];
    x->palette[i] = {uint8_t(cell.red >> 8), uint8_t(cell.green >> 8), uint8_t(cell.blue >> 8)};
  }
  x->knowsPalette = X11Live() != nullptr;
}

bool IsFirstLighter(const X11Connection* x) {
  XColor cells[2];
  QueryColours(x, 2, cells);
  return cells[0].red + cells[0].green + cells[0].blue > cells[1].red + cells[1].green + cells[1].blue;
}

// The bits whose change swaps black and white.
uint32_t InvertedBits(Display* display, const PixelLayout& layout) {
  if (!IsPalette(layout)) return layout.redMask | layout.greenMask | layout.blueMask;
  int screen = DefaultScreen(display);
  return uint32_t(BlackPixel(display, screen) ^ WhitePixel(display, screen));
}

// ---- Images ------------------------------------------------------------------------------------------------------

// A surface's own packing, which Xlib turns into the server's when it sends.
X11Format OwnFormat(const X11Connection* x) {
  return {x->format.depth, 8 * x->facts.layout.bytesPerPixel, 8, kOwnByteOrder, kOwnByteOrder, 8, x->format.turned};
}

// The segment that the surface's pixels lie in with the server's own rows, or null.
X11Segment* SegmentOf(const X11Connection* x, const Surface& surface) {
  if (!X11IsDirect(x->format, surface.layout)) return nullptr;
  for (X11Segment* segment : x->segments) {
    if (segment == surface.memory && segment->shared.shmaddr == reinterpret_cast<char*>(surface.pixels) &&
        surface.stride == X11RowBytes(x->format, surface.width)) {
      return segment;
    }
  }
  return nullptr;
}

// ---- Reading -----------------------------------------------------------------------------------------------------

// Lets the server write the rectangle to `at` inside of the segment, in its own rows.
bool ReadShared(X11Connection* x, const PixelRect& where, X11Segment* segment, uint8_t* at) {
  int32_t width = where.right - where.left;
  XImage image = X11ImageOf(x->format, at, width, where.bottom - where.top, X11RowBytes(x->format, width));
  image.obdata = reinterpret_cast<char*>(&segment->shared);
  return XShmGetImage(x->display, x->root, &image, where.left, where.top, AllPlanes) && X11Live();
}

// Makes room for transfers of `bytes` bytes, which then stays; false when shared memory cannot be had.
bool HasTransfers(X11Connection* x, int64_t bytes) {
  if (x->transfers && int64_t(x->transfers->bytes) >= bytes) return true;
  if (x->transfers) X11FreeSegment(x, std::move(x->transfers));
  int64_t rounded = (bytes + kSharedFrom - 1) / kSharedFrom * kSharedFrom;
  x->transfers = X11NewSegment(x, size_t(rounded));
  return x->transfers != nullptr;
}

void UnpackRows(const X11Connection* x, const PixelRect& where, const uint8_t* rows, int64_t rowBytes,
                const Surface& into, int32_t toX, int32_t toY) {
  for (int32_t y = 0; y < where.bottom - where.top; y++) {
    uint8_t* out = RowOf(into, toY + y) + int64_t(toX) * into.layout.bytesPerPixel;
    X11UnpackRow(x->format, rows + y * rowBytes, where.right - where.left, into.layout, out);
  }
}

bool ReadThroughConnection(X11Connection* x, const PixelRect& where, const Surface& into, int32_t toX, int32_t toY) {
  const unsigned long request = NextRequest(x->display);
  XImage* image = XGetImage(x->display, x->root, where.left, where.top, where.right - where.left,
                            where.bottom - where.top, AllPlanes, ZPixmap);
  if (!image) return X11NoAnswer(x, request), false;
  UnpackRows(x, where, reinterpret_cast<uint8_t*>(image->data), image->bytes_per_line, into, toX, toY);
  XDestroyImage(image);
  return true;
}

// ---- Drawing -----------------------------------------------------------------------------------------------------

// What of a part of a surface lies on the screen once it is moved by so much, however far that is.
PixelRect VisiblePart(const X11Connection* x, const PixelRect& part, int64_t right, int64_t down) {
  auto within = [](int64_t v, int32_t low, int32_t high) { return int32_t(v < low ? low : v > high ? high : v); };
  return {within(-right, part.left, part.right), within(-down, part.top, part.bottom),
          within(x->facts.width - right, part.left, part.right), within(x->facts.height - down, part.top, part.bottom)};
}

// A bitmap of the server's with the pattern. The patterns used last are kept.
Pixmap StippleOf(X11Connection* x, const uint8_t pattern[8]) {
  for (int32_t i = 0; i < x->stippleCount; i++) {
    if (std::memcmp(x->stipples[i].pattern, pattern, 8) == 0) return x->stipples[i].bitmap;
  }
  X11Stipple& slot = x->stipples[x->stippleNext];
  if (x->stippleNext < x->stippleCount) {
    XFreePixmap(x->display, slot.bitmap);
  } else {
    x->stippleCount++;
  }
  x->stippleNext = (x->stippleNext + 1) % kStipplesKept;

  std::memcpy(slot.pattern, pattern, 8);
  slot.bitmap = XCreatePixmap(x->display, x->root, 8, 8, 1);
  if (!x->stippling) x->stippling = XCreateGC(x->display, slot.bitmap, 0, nullptr);
  if (!x->stippling) EndWithoutMemory();
  X11Format bits = {1, 1, 8, MSBFirst, MSBFirst, 8, false};
  XImage image = X11ImageOf(bits, slot.pattern, 8, 8, 1);
  XPutImage(x->display, slot.bitmap, x->stippling, &image, 0, 0, 0, 0, 8, 8);
  return slot.bitmap;
}

} // namespace

XImage X11ImageOf(const X11Format& format, uint8_t* pixels, int32_t width, int32_t height, int64_t rowBytes) {
  XImage image{};
  image.width = width;
  image.height = height;
  image.format = ZPixmap;
  image.data = reinterpret_cast<char*>(pixels);
  image.byte_order = format.byteOrder;
  image.bitmap_bit_order = format.bitOrder;
  image.bitmap_unit = format.bitUnit;
  image.bitmap_pad = format.rowPad;
  image.depth = format.depth;
  image.bits_per_pixel = format.bitsPerPixel;
  image.bytes_per_line = int(rowBytes);
  XInitImage(&image);
  return image;
}

void X11ReadScreenFacts(X11Connection* x) {
  int screen = DefaultScreen(x->display);
  int32_t depth = DefaultDepth(x->display, screen);
  x->format = FormatOf(x->display, depth);
  x->format.turned = depth == 1 && IsFirstLighter(x);
  // Asked now, not taken from the greeting: the size may have changed before the root was watched.
  XWindowAttributes root{};
  XGetWindowAttributes(x->display, x->root, &root);
  PixelLayout layout = LayoutOf(depth, *DefaultVisual(x->display, screen));
  x->facts = {root.width, root.height, layout, InvertedBits(x->display, layout)};
}

void X11ReadResolution(X11Connection* x) {
  const char* resources = XResourceManagerString(x->display); // of the root, as it was when the connection was made
  XrmInitialize();
  XrmDatabase database = resources ? XrmGetStringDatabase(resources) : nullptr;
  char* type = nullptr;
  XrmValue value{};
  const bool told = database && XrmGetResource(database, "Xft.dpi", "Xft.Dpi", &type, &value) && value.addr;
  x->dotsPerInch = told ? int32_t(std::clamp(std::strtol(value.addr, nullptr, 10), 0L, 10000L)) : 0;
  if (database) XrmDestroyDatabase(database);
}

void X11MakeContexts(X11Connection* x) {
  XGCValues values{};
  values.subwindow_mode = IncludeInferiors;
  values.graphics_exposures = False;
  values.function = x->format.turned ? GXcopyInverted : GXcopy;
  unsigned long common = GCSubwindowMode | GCGraphicsExposures | GCFunction;
  x->drawing = XCreateGC(x->display, x->root, common, &values);

  values.function = GXxor;
  values.foreground = x->facts.inverted;
  values.fill_style = FillStippled;
  x->inverting = XCreateGC(x->display, x->root, common | GCForeground | GCFillStyle, &values);
  if (!x->drawing || !x->inverting) EndWithoutMemory();
}

bool X11HasScreenLayout(const X11Connection* x, const Surface& surface) {
  return surface.layout == x->facts.layout;
}

void X11PutPixels(X11Connection* x, Drawable to, const Surface& from, const PixelRect& part, int32_t toX, int32_t toY) {
  int32_t width = part.right - part.left;
  int32_t height = part.bottom - part.top;
  X11Segment* segment = SegmentOf(x, from);
  if (segment && X11RowBytes(x->format, width) * height >= kSharedFrom) {
    XImage image = X11ImageOf(x->format, from.pixels, from.width, from.height, from.stride);
    image.obdata = reinterpret_cast<char*>(&segment->shared);
    XShmPutImage(x->display, to, x->drawing, &image, part.left, part.top, toX, toY, width, height, False);
    // The surface may change behind this call, so the server must have read it.
    XSync(x->display, False);
    return;
  }
  XImage image = X11ImageOf(OwnFormat(x), from.pixels, from.width, from.height, from.stride);
  XPutImage(x->display, to, x->drawing, &image, part.left, part.top, toX, toY, width, height);
  XFlush(x->display);
}

ScreenFacts DisplayScreen() {
  X11Connection* x = X11Live();
  if (!x) return {};
  X11TakeEvents(x, QueuedAfterReading);
  return X11Live() ? x->facts : ScreenFacts{};
}

void X11ForgetPalette(X11Connection* x) {
  // Of the classes of visuals those with an odd number have colours that programs may change, and no event tells of it.
  bool changeable = DefaultVisual(x->display, DefaultScreen(x->display))->c_class & 1;
  if (changeable) x->knowsPalette = false;
}

void DisplayPalette(PaletteColour* colours) {
  X11Connection* x = X11Live();
  if (!x || x->facts.layout.depth > kPaletteDepthMax) return;
  if (!x->knowsPalette) ReadPalette(x);
  if (x->knowsPalette) std::copy_n(x->palette, 1 << x->facts.layout.depth, colours);
}

bool DisplayNewSurface(int32_t width, int32_t height, Surface* out) {
  X11Connection* x = X11Live();
  if (!x || width <= 0 || height <= 0) return false;
  const PixelLayout& layout = x->facts.layout;
  const bool direct = X11IsDirect(x->format, layout) && width <= kX11PlaceMax && height <= kX11PlaceMax;
  const int64_t stride = direct ? X11RowBytes(x->format, width) : 0, bytes = stride * height;
  if (bytes >= kSharedFrom) {
    // New segments are all zero.
    if (X11Segment* segment = X11NewSegment(x, size_t(bytes)).release()) {
      auto* pixels = reinterpret_cast<uint8_t*>(segment->shared.shmaddr);
      *out = {layout, width, height, int32_t(stride), pixels, segment};
      return true;
    }
    if (!X11Live()) return false;
  }
  return NewPlainSurface(layout, width, height, out);
}

void DisplayFreeSurface(Surface* surface) {
  if (surface->memory) {
    X11FreeSegment(X11Live(), std::unique_ptr<X11Segment>(static_cast<X11Segment*>(surface->memory)));
  } else {
    FreePlainSurface(surface);
  }
  *surface = {};
}

bool DisplayReadScreen(const PixelRect& where, const Surface& into, int32_t toX, int32_t toY) {
  X11Connection* x = X11Live();
  if (!x) return false;
  // A size that is behind the times is no harm: the server refuses what it does not have.
  X11TakeEvents(x, QueuedAlready);
  X11ForgetPalette(x);
  if (!X11HasScreenLayout(x, into)) return false;
  if (IsEmpty(where)) return true;
  if (!Holds(ScreenRect(x), where)) return false;
  if (toX < 0 || toY < 0) return false;
  if (where.right - where.left > into.width - toX || where.bottom - where.top > into.height - toY) return false;
  const bool done = X11ReadBesideMarks(x, where, into, toX, toY);
  if (!done) x->changes.unsure = true;
  return done;
}

bool X11ReadScreen(X11Connection* x, const PixelRect& where, const Surface& into, int32_t toX, int32_t toY) {
  const int32_t width = where.right - where.left, height = where.bottom - where.top;
  // A read as wide as the surface touches none of its other pixels.
  X11Segment* segment = width == into.width ? SegmentOf(x, into) : nullptr;
  if (segment) return ReadShared(x, where, segment, RowOf(into, toY));
  int64_t rowBytes = X11RowBytes(x->format, width);
  if (!HasTransfers(x, rowBytes * height)) return X11Live() && ReadThroughConnection(x, where, into, toX, toY);
  uint8_t* rows = reinterpret_cast<uint8_t*>(x->transfers->shared.shmaddr);
  if (!ReadShared(x, where, x->transfers.get(), rows)) return false;
  UnpackRows(x, where, rows, rowBytes, into, toX, toY);
  return true;
}

bool DisplayDrawScreen(const Surface& from, const PixelRect& part, int32_t x, int32_t y) {
  X11Connection* connection = X11Live();
  if (!connection) return false;
  X11TakeEvents(connection, QueuedAlready);
  if (!X11HasScreenLayout(connection, from)) return false;
  int64_t right = int64_t{x} - part.left; // from a place on the surface to the one on the screen
  int64_t down = int64_t{y} - part.top;
  PixelRect cut = VisiblePart(connection, Intersect(part, {0, 0, from.width, from.height}), right, down);
  if (IsEmpty(cut)) return true;
  const PixelRect where = Moved(cut, int32_t(right), int32_t(down));
  if (!X11DrawMark(connection, from, cut.left, cut.top, where)) {
    X11PutPixels(connection, connection->root, from, cut, where.left, where.top);
  }
  return X11Live() != nullptr;
}

bool DisplayInvertScreen(const PixelRect& where, const uint8_t pattern[8]) {
  X11Connection* x = X11Live();
  if (!x) return false;
  X11TakeEvents(x, QueuedAlready);
  PixelRect cut = Intersect(where, ScreenRect(x));
  if (IsEmpty(cut)) return true;
  if (!X11InvertMark(x, cut, pattern)) X11InvertRoot(x, cut, pattern);
  return X11Live() != nullptr;
}

void X11InvertRoot(X11Connection* x, const PixelRect& where, const uint8_t pattern[8]) {
  XSetStipple(x->display, x->inverting, StippleOf(x, pattern));
  XFillRectangle(x->display, x->root, x->inverting, where.left, where.top, where.right - where.left,
                 where.bottom - where.top);
  XFlush(x->display);
}

} // namespace framereel
