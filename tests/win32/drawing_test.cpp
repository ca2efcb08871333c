// Drawing of all kinds but lines, at random places and at every depth, beside a twin that looks at each pixel alone.
#include <algorithm>
#include <cmath>

#include "win32/canvas.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_input.h"

namespace framereel {
namespace {

constexpr COLORREF kColours[] = {RGB(0, 0, 0), RGB(255, 255, 255), RGB(255, 0, 0), RGB(240, 220, 77)};
constexpr uint32_t kAlphas[] = {0, 128, 255};
constexpr int kFar[] = {-2000000000, 2000000000};
constexpr DWORD kOperations[] = {SRCCOPY, SRCAND, SRCPAINT, MERGEPAINT, 0};

uint32_t Combined(DWORD operation, uint32_t source, uint32_t target) {
  if (operation == SRCCOPY) return source;
  if (operation == SRCAND) return source & target;
  if (operation == SRCPAINT) return source | target;
  return operation == MERGEPAINT ? ~source | target : 0;
}

// A window's context: its 0, 0 lies at 2, 1 of a surface of its own or of the screen, and it is seen in two parts.
struct WindowPart {
  Surface surface = {};
  PixelRect damage = {0, 0, 0, 0};
  HDC context = NewContext();

  explicit WindowPart(bool ofScreen) {
    NewPlainSurface(DisplayScreen().layout, 12, 9, &surface);
    context->surface = ofScreen ? nullptr : &surface;
    context->screen = ofScreen;
    context->originX = 2, context->originY = 1;
    context->damage = &damage;
    context->bounded = true;
    for (const PixelRect& part : {PixelRect{2, 1, 6, 6}, PixelRect{8, 2, 11, 9}}) context->visible.Add(part);
  }
  ~WindowPart() {
    FreePlainSurface(&surface);
    FreeContext(context);
  }
  static bool Sees(int x, int y) { return (x >= 2 && x < 6 && y >= 1 && y < 6) || (x >= 8 && x < 11 && y >= 2); }
};

// A context, the pixels that should be on its surface, and what is selected into it.
struct Twin {
  HDC context;
  Picture picture;
  PixelRect clip = {-99, -99, 99, 99};
  bool inverts = false, hasPen = true;
  COLORREF pen = 0, brush = 0, text = 0, back = RGB(255, 255, 255);
  int stripes = -1; // of the brush: the text's colour where (x + y) modulo 8 is that
  HBRUSH brushHandle = nullptr;

  uint32_t Bits() const { return PixelBits(LayoutOf(*context)); }
  bool Sees(int x, int y) const {
    const int onX = x + context->originX, onY = y + context->originY;
    return picture.Has(onX, onY) && (!context->bounded || WindowPart::Sees(onX, onY)) && x >= clip.left &&
           x < clip.right && y >= clip.top && y < clip.bottom;
  }
  uint32_t& At(int x, int y) { return picture.At(x + context->originX, y + context->originY); }
  void Put(int x, int y, COLORREF colour, bool inverting) {
    if (!Sees(x, y)) return;
    const uint32_t pixel = PixelOf(context, colour);
    const uint32_t changed = colour == 0 ? Bits() : colour == RGB(255, 255, 255) ? 0 : ~pixel & Bits();
    At(x, y) = inverting ? At(x, y) ^ changed : pixel;
  }
  COLORREF BrushAt(int x, int y) const { return stripes < 0 ? brush : ((x + y) & 7) == stripes ? text : back; }
};

class TwinDrawing {
public:
  TwinDrawing(uint32_t seed, int depth)
      : dice(seed), screen(11, 9, depth), a(screen.context, 10, 8), b(screen.context, 9, 10),
        mono(screen.context, 12, 9, false) {
    if (depth == 8) { // a palette whose black and white lie anywhere
      for (int i = 0; i < 256; ++i) TheMemoryDisplay().palette[size_t(i)] = {uint8_t(i * 7), uint8_t(i * 3), 9};
    }
    for (HDC context : {screen.context, a.context, b.context, mono.context, window.context, cover.context})
      twins.push_back({context, {}});
  }
  ~TwinDrawing() {
    for (Twin& twin : twins) Select(twin.context, ::GetStockObject(BLACK_PEN), ::GetStockObject(BLACK_BRUSH));
  }

  void Step() {
    Twin& twin = twins[size_t(dice.Below(6))];
    Change(&twin);
    if (dice.OneIn(3)) Scribble(twin.context, &dice);
    const Picture before = twin.picture = PictureOf(twin.context);
    window.damage = {0, 0, 0, 0};
    constexpr void (TwinDrawing::*kActs[])(Twin*) = {&TwinDrawing::Fill, &TwinDrawing::Boxed, &TwinDrawing::Copied,
                                                     &TwinDrawing::Letters, &TwinDrawing::Pointer};
    const int act = dice.Below(5);
    (this->*kActs[act])(&twin);
    const Picture after = PictureOf(twin.context);
    ASSERT_EQ(after.pixels, twin.picture.pixels) << "act " << act;
    for (int i = 0; i < 12 * 9 && &twin == &twins[4]; ++i) {
      const bool noted = Holds(window.damage, i % 12, i / 12);
      ASSERT_TRUE(noted || before.pixels[size_t(i)] == after.pixels[size_t(i)]) << "act " << act;
    }
  }

private:
  static void Select(HDC context, HGDIOBJ pen, HGDIOBJ brush) {
    ::DeleteObject(::SelectObject(context, pen));
    ::DeleteObject(::SelectObject(context, brush));
  }
  // Another clip, mode, pen and brush.
  void Change(Twin* twin) {
    HDC context = twin->context;
    twin->inverts = dice.OneIn(2), twin->hasPen = dice.OneIn(2), twin->stripes = dice.OneIn(3) ? dice.Below(8) : -1;
    for (COLORREF* colour : {&twin->pen, &twin->brush, &twin->text, &twin->back}) *colour = dice.OneOf(kColours);
    ::SetROP2(context, twin->inverts ? R2_NOTXORPEN : R2_COPYPEN);
    ::SetTextColor(context, twin->text);
    ::SetBkColor(context, twin->back);
    HBITMAP pattern = twin->stripes < 0 ? nullptr : ::LoadBitmapA(nullptr, MAKEINTRESOURCEA(WORD(153 + twin->stripes)));
    twin->brushHandle = pattern ? ::CreatePatternBrush(pattern) : ::CreateSolidBrush(twin->brush);
    ::DeleteObject(pattern);
    Select(context, twin->hasPen ? ::CreatePen(PS_SOLID, 1, twin->pen) : ::GetStockObject(NULL_PEN), twin->brushHandle);
    ::SelectClipRgn(context, nullptr);
    twin->clip = {-99, -99, 99, 99};
    if (dice.OneIn(2)) return;
    twin->clip = {dice.Below(6), dice.Below(6), 5 + dice.Below(9), 5 + dice.Below(9)};
    HRGN region = ::CreateRectRgn(99, twin->clip.top, twin->clip.left, 99); // sides in any order
    EXPECT_EQ(::SelectClipRgn(context, region), SIMPLEREGION);
    ::DeleteObject(region); // the context has a copy
    ::IntersectClipRect(context, twin->clip.right, twin->clip.bottom, -5, -5);
  }
  // At each pixel of the surface.
  template <typename Function> static void Everywhere(const Twin& twin, Function function) {
    const int width = twin.picture.width;
    for (int i = 0; i < width * twin.picture.height; ++i) {
      function(i % width - twin.context->originX, i / width - twin.context->originY);
    }
  }
  // Reaching over each edge.
  int Any() { return dice.Below(24) - 7; }
  int AnyOrFar() { return dice.OneIn(20) ? dice.OneOf(kFar) : Any(); }

  void Fill(Twin* twin) {
    const RECT r = {AnyOrFar(), AnyOrFar(), AnyOrFar(), AnyOrFar()};
    ::FillRect(twin->context, &r, twin->brushHandle);
    Everywhere(*twin, [&](int x, int y) {
      if (x >= r.left && x < r.right && y >= r.top && y < r.bottom) twin->Put(x, y, twin->BrushAt(x, y), false);
    });
  }
  // With a border where there is a pen, and one column and row less without.
  void Boxed(Twin* twin) {
    const auto [left, right] = std::minmax({AnyOrFar(), AnyOrFar()});
    const auto [top, bottom] = std::minmax({AnyOrFar(), AnyOrFar()});
    dice.OneIn(2) ? ::Rectangle(twin->context, left, top, right, bottom)
                  : ::Rectangle(twin->context, right, bottom, left, top);
    const PixelRect r = {left, top, twin->hasPen ? right : right - 1, twin->hasPen ? bottom : bottom - 1};
    Everywhere(*twin, [&](int x, int y) {
      const bool inside = x > r.left && x < r.right - 1 && y > r.top && y < r.bottom - 1;
      if (x < r.left || x >= r.right || y < r.top || y >= r.bottom) return;
      twin->Put(x, y, twin->hasPen && !inside ? twin->pen : twin->BrushAt(x, y), twin->inverts);
    });
  }
  // From any place of any context of the same format, stretched by the nearest pixel if it lies inside.
  void Copied(Twin* twin) {
    const bool stretched = dice.OneIn(2);
    const HDC from = twin == &twins[3] ? twin->context : twins[size_t(dice.Below(3))].context;
    Picture source = PictureOf(from);
    const int x = Any(), y = Any(), width = 1 + dice.Below(12), height = 1 + dice.Below(12);
    const int fromX = stretched ? dice.Below(5) : Any(), fromY = stretched ? dice.Below(4) : Any();
    const int fromWidth = stretched ? 1 + dice.Below(5) : width, fromHeight = stretched ? 1 + dice.Below(4) : height;
    const DWORD operation = dice.OneOf(kOperations);
    ASSERT_TRUE(stretched ? ::StretchBlt(twin->context, x, y, width, height, from, fromX, fromY, fromWidth, fromHeight,
                                         operation)
                          : ::BitBlt(twin->context, x, y, width, height, from, fromX, fromY, operation));
    Everywhere(*twin, [&](int toX, int toY) {
      const int dx = toX - x, dy = toY - y;
      const int sourceX = fromX + dx * fromWidth / width, sourceY = fromY + dy * fromHeight / height;
      if (dx < 0 || dx >= width || dy < 0 || dy >= height || !twin->Sees(toX, toY) || !source.Has(sourceX, sourceY))
        return;
      uint32_t& target = twin->At(toX, toY);
      target = Combined(operation, source.At(sourceX, sourceY), target) & twin->Bits();
    });
  }
  // As on a bitmap without a clip.
  void Letters(Twin* twin) {
    BitmapCanvas free(screen.context, 14, 11, twin != &twins[3]);
    Everywhere(*twin,
               [&](int atX, int atY) { SetPixelAt(free.bitmap->surface, atX + 2, atY + 1, twin->At(atX, atY)); });
    const int x = Any(), y = Any();
    ::SetTextColor(free.context, twin->text);
    ::TextOutA(free.context, x + 2, y + 1, "Letters", 7);
    ::TextOutA(twin->context, x, y, "Letters", 7);
    Everywhere(*twin, [&](int atX, int atY) {
      if (twin->Sees(atX, atY)) twin->At(atX, atY) = PixelAt(free.bitmap->surface, atX + 2, atY + 1);
    });
  }
  // Blended by alpha, and nothing where there is none.
  void Pointer(Twin* twin) {
    MemoryDisplay& display = TheMemoryDisplay();
    display.hasPointer = true, display.pointerWidth = 4, display.pointerHeight = 3;
    display.pointerPixels.resize(4 * 3);
    for (uint32_t& pixel : display.pointerPixels) {
      const uint32_t alpha = dice.OneIn(3) ? uint32_t(dice.Below(256)) : dice.OneOf(kAlphas);
      pixel = alpha << 24;
      for (const int shift : {0, 8, 16}) pixel |= (uint32_t(dice.Below(256)) * alpha + 127) / 255 << shift;
    }
    const int left = Any(), top = Any();
    CURSORINFO pointer;
    ASSERT_TRUE(::GetCursorInfo(&pointer) && ::DrawIcon(twin->context, left, top, pointer.hCursor));
    const ColourMap map = MapOf(LayoutOf(*twin->context), HasScreenColours(*twin->context));
    for (int i = 0; i < 12; ++i) {
      const int x = left + i % 4, y = top + i / 4;
      const uint32_t pixel = display.pointerPixels[size_t(i)];
      if (!twin->Sees(x, y) || pixel == 0) continue;
      const auto over = [pixel](int shift, uint8_t under) {
        return uint8_t(std::min(255L, std::lround((pixel >> shift & 255) + under * (255 - (pixel >> 24)) / 255.0)));
      };
      const PaletteColour c = ColourOfPixel(map, twin->At(x, y));
      twin->At(x, y) = PixelOfColour(map, {over(16, c.red), over(8, c.green), over(0, c.blue)});
    }
  }

  Dice dice;
  ScreenCanvas screen;
  BitmapCanvas a, b, mono;
  WindowPart window{false}, cover{true};
  std::vector<Twin> twins;
};

TEST(DrawingAndATwin, GiveTheSamePixels) {
  for (const int depth : {1, 2, 4, 8, 16, 24, 32}) {
    TwinDrawing drawing(uint32_t(depth), depth);
    for (int step = 0; step < 3000; ++step) {
      drawing.Step();
      ASSERT_FALSE(testing::Test::HasFatalFailure()) << "depth " << depth << " step " << step;
    }
  }
}

} // namespace
} // namespace framereel
