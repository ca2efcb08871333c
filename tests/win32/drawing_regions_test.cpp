// Regions, the clip, and contexts whose target is a part of a window's surface.
#include <functional>

#include "win32/canvas.h"
#include "win32/drawing/objects.h"

namespace framereel {
namespace {

struct OwnedRegion {
  HRGN handle;
  OwnedRegion(int left, int top, int right, int bottom) : handle(::CreateRectRgn(left, top, right, bottom)) {}
  ~OwnedRegion() { EXPECT_TRUE(::DeleteObject(handle)); }
};

void FillAll(HDC context, COLORREF colour) {
  HBRUSH brush = ::CreateSolidBrush(colour);
  const RECT all = {-100, -100, 100, 100};
  ::FillRect(context, &all, brush);
  ::DeleteObject(brush);
}

TEST(Regions, AreBoxedAndAskedForARectangle) {
  OwnedRegion a(8, 9, 2, 1), b(5, 5, 20, 20), none(4, 4, 4, 9);
  RECT box;
  EXPECT_EQ(::GetRgnBox(a.handle, &box), SIMPLEREGION);
  EXPECT_TRUE(box.left == 2 && box.top == 1 && box.right == 8 && box.bottom == 9);
  EXPECT_EQ(::GetRgnBox(none.handle, &box), NULLREGION);
  EXPECT_TRUE(box.left == 0 && box.top == 0 && box.right == 0 && box.bottom == 0);
  const RECT touching = {19, 19, 30, 30}, beside = {20, 5, 30, 30}, empty = {6, 6, 6, 8};
  EXPECT_TRUE(::RectInRegion(b.handle, &touching));
  EXPECT_FALSE(::RectInRegion(b.handle, &beside));
  EXPECT_FALSE(::RectInRegion(b.handle, &empty));
}

TEST(Clip, IsACopyThatHoldsAllDrawingAndIsGivenBack) {
  for (const int depth : {1, 8, 24}) {
    ScreenCanvas screen(12, 8, depth);
    BitmapCanvas bitmap(screen.context, 12, 8);
    for (const HDC context : {screen.context, bitmap.context}) {
      FillAll(context, RGB(0, 0, 0));
      {
        OwnedRegion clip(2, 3, 9, 100);
        EXPECT_EQ(::SelectClipRgn(context, clip.handle), SIMPLEREGION);
        EXPECT_EQ(::IntersectClipRect(context, 7, -5, 0, 100), SIMPLEREGION); // its sides in any order
      }
      FillAll(context, RGB(255, 255, 255));
      const uint32_t white = PixelOf(context, RGB(255, 255, 255));
      ExpectPixels(context, [&](int x, int y) { return x >= 2 && x < 7 && y >= 3 ? white : 0; });
      EXPECT_EQ(::GetPixel(context, 1, 3), CLR_INVALID);
      RECT box;
      EXPECT_EQ(::GetClipBox(context, &box), SIMPLEREGION);
      EXPECT_TRUE(box.left == 2 && box.top == 3 && box.right == 7 && box.bottom == 8);
      OwnedRegion saved(0, 0, 1, 1);
      EXPECT_EQ(::GetClipRgn(context, saved.handle), 1);
      ::GetRgnBox(saved.handle, &box);
      EXPECT_EQ(box.bottom, 100);
      ::SelectClipRgn(context, nullptr);
      EXPECT_EQ(::GetClipRgn(context, saved.handle), 0);
      EXPECT_EQ(::IntersectClipRect(context, 4, 4, 4, 8), NULLREGION); // where there was none
      EXPECT_EQ(::GetPixel(context, 1, 3), CLR_INVALID);
      ::SelectClipRgn(context, nullptr);
      EXPECT_EQ(::GetPixel(context, 1, 3), RGB(0, 0, 0));
    }
  }
}

TEST(Clip, HoldsCopiesStretchesAndLetters) {
  std::mt19937 random(11);
  ScreenCanvas screen(40, 30, 24);
  BitmapCanvas free(screen.context, 40, 30), clipped(screen.context, 40, 30), source(screen.context, 40, 30);
  Scribble(source.context, random);
  OwnedRegion clip(5, 6, 29, 17);
  const std::function<void(HDC)> drawings[] = {
      [&](HDC context) { ::BitBlt(context, 2, 2, 30, 20, source.context, 1, 3, SRCPAINT); },
      [&](HDC context) { ::BitBlt(context, 4, 3, 20, 14, context, 0, 0, SRCCOPY); }, // over itself
      [&](HDC context) { ::BitBlt(context, 0, 0, 40, 30, screen.context, 0, 0, SRCCOPY); },
      [&](HDC context) { ::StretchBlt(context, -3, 10, 50, 13, source.context, 0, 0, 7, 9, SRCAND); },
      [&](HDC context) { ::TextOutA(context, 3, 5, "Letters", 7); },
  };
  for (const auto& draw : drawings) {
    Scribble(free.context, random);
    ::SelectClipRgn(clipped.context, nullptr);
    ::BitBlt(clipped.context, 0, 0, 40, 30, free.context, 0, 0, SRCCOPY);
    Picture expected = PictureOf(clipped.context);
    ::SelectClipRgn(clipped.context, clip.handle);
    draw(free.context);
    draw(clipped.context);
    Picture whole = PictureOf(free.context);
    for (int y = 6; y < 17; ++y) {
      for (int x = 5; x < 29; ++x) expected.At(x, y) = whole.At(x, y);
    }
    EXPECT_EQ(PictureOf(clipped.context).pixels, expected.pixels) << "drawing " << &draw - drawings;
  }
}

// A window's context on a surface of its own: its 0, 0 lies at 4, 3, and it is seen in two parts.
struct WindowPart {
  Surface surface = {};
  PixelRect damage = {0, 0, 0, 0};
  HDC context = NewContext();

  WindowPart() {
    NewPlainSurface(DisplayScreen().layout, 20, 12, &surface);
    context->surface = &surface;
    context->originX = 4;
    context->originY = 3;
    context->damage = &damage;
    context->bounded = true;
    context->visible.Add({4, 3, 9, 9});
    context->visible.Add({12, 3, 18, 12});
  }
  ~WindowPart() {
    FreePlainSurface(&surface);
    FreeContext(context);
  }
  bool Sees(int x, int y) const { return (x >= 4 && x < 9 && y >= 3 && y < 9) || (x >= 12 && x < 18 && y >= 3); }
};

TEST(PartContext, DrawsInItsOwnCoordinatesWhereItIsSeenAndNotesTheDamage) {
  MemoryDisplayReset(30, 30, 24);
  WindowPart part;
  HBRUSH brush = ::CreateSolidBrush(RGB(0x12, 0x34, 0x56));
  const RECT r = {1, 1, 10, 4}; // on the surface from 5, 4 to 14, 7
  ::FillRect(part.context, &r, brush);
  ::DeleteObject(brush);
  for (int i = 0; i < 240; ++i) {
    const int x = i % 20, y = i / 20;
    const bool drawn = x >= 5 && x < 14 && y >= 4 && y < 7 && part.Sees(x, y);
    EXPECT_EQ(PixelAt(part.surface, x, y), drawn ? 0x123456U : 0) << x << ", " << y;
  }
  EXPECT_TRUE(part.damage.left == 5 && part.damage.top == 4 && part.damage.right == 14 && part.damage.bottom == 7);
  ::SetPixel(part.context, 13, 8, RGB(1, 1, 1));
  EXPECT_TRUE(part.damage.left == 5 && part.damage.top == 4 && part.damage.right == 18 && part.damage.bottom == 12);

  // Patterns count from its own 0, 0.
  HBITMAP bitmap = ::LoadBitmapA(nullptr, MAKEINTRESOURCEA(153));
  HBRUSH stripes = ::CreatePatternBrush(bitmap);
  const RECT all = {0, 0, 16, 9};
  ::FillRect(part.context, &all, stripes);
  EXPECT_EQ(PixelAt(part.surface, 4, 3), 0U);
  EXPECT_EQ(PixelAt(part.surface, 5, 3), 0xFFFFFFU);
  EXPECT_EQ(PixelAt(part.surface, 12, 3), 0U);
  ::DeleteObject(bitmap);
  ::DeleteObject(stripes);
}

TEST(PartContext, WithoutASurfaceDrawsNothing) {
  MemoryDisplayReset(30, 30, 24);
  WindowPart part;
  part.context->surface = nullptr;
  FillAll(part.context, RGB(255, 255, 255));
  EXPECT_TRUE(::TextOutA(part.context, 0, 0, "gone", 4));
  EXPECT_EQ(::GetPixel(part.context, 0, 0), CLR_INVALID);
  RECT box;
  EXPECT_EQ(::GetClipBox(part.context, &box), NULLREGION);
  EXPECT_TRUE(IsEmpty(part.damage));
}

TEST(PartContext, OfAWindowThatShowsTheDesktopDrawsOnTheScreenExactly) {
  std::mt19937 random(12);
  ScreenCanvas screen(30, 30, 8);
  Scribble(screen.context, random);
  const std::vector<uint32_t> before = TheMemoryDisplay().screen;
  WindowPart part;
  part.context->surface = nullptr;
  part.context->screen = true;
  ::SetROP2(part.context, R2_NOTXORPEN);
  ::SelectObject(part.context, ::GetStockObject(NULL_PEN));
  ::SelectObject(part.context, ::GetStockObject(BLACK_BRUSH));
  ::Rectangle(part.context, -50, -50, 50, 50);
  ExpectPixels(screen.context,
               [&](int x, int y) { return before[size_t(y * 30 + x)] ^ (part.Sees(x, y) && y < 12 ? 0xFFU : 0); });
}

} // namespace
} // namespace framereel
