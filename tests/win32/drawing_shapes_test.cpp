// Lines, rectangles and polygons, against what their pixels are by definition.
#include <cmath>
#include <set>

#include "win32/canvas.h"

namespace framereel {
namespace {

constexpr int kDepths[] = {1, 2, 4, 8, 16, 24, 32};

// What a context holds while one of these stands, which owns it.
struct Selected {
  HDC context;
  HGDIOBJ object, before;
  Selected(HDC to, HGDIOBJ selected) : context(to), object(selected), before(::SelectObject(to, selected)) {}
  ~Selected() {
    ::SelectObject(context, before);
    EXPECT_TRUE(::DeleteObject(object));
  }
};

HPEN PenOf(COLORREF colour) {
  return ::CreatePen(PS_SOLID, 1, colour);
}

// A brush of stripes: black where (x + y) modulo 8 is k.
HBRUSH StripeBrush(int k) {
  HBITMAP bitmap = ::LoadBitmapA(nullptr, MAKEINTRESOURCEA(WORD(153 + k)));
  HBRUSH brush = ::CreatePatternBrush(bitmap);
  ::DeleteObject(bitmap);
  return brush;
}

using Places = std::set<std::pair<int, int>>;

// Where the picture is no longer black.
Places Marked(HDC context) {
  Places places;
  const Picture picture = PictureOf(context);
  for (int i = 0; i < int(picture.pixels.size()); ++i) {
    if (picture.pixels[size_t(i)]) places.insert({i % picture.width, i / picture.width});
  }
  return places;
}

void Clear(HDC context) {
  const RECT all = {0, 0, 100, 100};
  ::FillRect(context, &all, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
}

TEST(Polyline, DrawsTheNearestPixelOfEachStepAndNotTheLastPoint) {
  ScreenCanvas screen(13, 13, 24);
  BitmapCanvas bitmap(screen.context, 13, 13, false);
  Selected pen(bitmap.context, PenOf(RGB(255, 255, 255)));
  for (int i = 0; i < 169; ++i) {
    const POINT ends[] = {{6, 6}, {i % 13, i / 13}};
    Clear(bitmap.context);
    ASSERT_TRUE(::Polyline(bitmap.context, ends, 2));
    const Places drawn = Marked(bitmap.context);
    const int dx = ends[1].x - 6, dy = ends[1].y - 6, steps = std::max(std::abs(dx), std::abs(dy));
    ASSERT_EQ(int(drawn.size()), steps);
    EXPECT_EQ(drawn.count({ends[1].x, ends[1].y}), 0U);
    for (int step = 0; step < steps; ++step) {
      const double x = 6 + double(dx) * step / steps, y = 6 + double(dy) * step / steps;
      const bool near = drawn.count({int(std::floor(x + 0.5)), int(std::floor(y + 0.5))}) ||
                        drawn.count({int(std::ceil(x - 0.5)), int(std::ceil(y - 0.5))});
      ASSERT_TRUE(near) << "to " << ends[1].x << ", " << ends[1].y << " at step " << step;
    }
  }
}

TEST(Rectangle, FillsInsideItsBorderAndWithoutAPenOneColumnAndRowLess) {
  ScreenCanvas screen(10, 10, 24);
  Selected pen(screen.context, PenOf(RGB(1, 2, 3)));
  Selected brush(screen.context, ::CreateSolidBrush(RGB(4, 5, 6)));
  ASSERT_TRUE(::Rectangle(screen.context, 7, 8, 2, 1)); // sides in any order
  ExpectPixels(screen.context, [](int x, int y) {
    const bool whole = x >= 2 && x < 7 && y >= 1 && y<8, inside = x> 2 && x < 6 && y > 1 && y < 7;
    return inside ? 0x040506U : whole ? 0x010203U : 0;
  });
  MemoryFill({0, 0, 10, 10}, 0);
  ::SelectObject(screen.context, ::GetStockObject(NULL_PEN));
  ASSERT_TRUE(::Rectangle(screen.context, 3, 3, 5, 6)); // one column of two rows
  Picture expected = {10, 10, std::vector<uint32_t>(100)};
  expected.At(3, 3) = expected.At(3, 4) = 0x040506;
  EXPECT_EQ(TheMemoryDisplay().screen, expected.pixels);
  ASSERT_TRUE(::Rectangle(screen.context, 3, 3, 4, 6)); // nothing is left
  EXPECT_EQ(TheMemoryDisplay().screen, expected.pixels);
}

TEST(Polygon, FillsWhatLiesInsideByTheEvenOddRuleAndDrawsNoPixelTwice) {
  ScreenCanvas screen(30, 30, 24);
  BitmapCanvas bitmap(screen.context, 30, 30, false);
  const std::vector<std::vector<POINT>> shapes = {
      {{3, 3}, {20, 3}, {20, 12}, {3, 12}},                 // a rectangle
      {{15, 1}, {28, 27}, {2, 27}},                         // a triangle
      {{15, 1}, {24, 28}, {1, 10}, {29, 10}, {6, 28}},      // a star, hollow in the middle
      {{5, 5}, {25, 5}, {25, 5}, {25, 25}, {5, 25}, {5, 5}} // closed by hand, with a point twice
  };
  // A point is inside when a ray to its right crosses the outline an odd number of times.
  const auto inside = [](const std::vector<POINT>& shape, int x, int y) {
    bool odd = false;
    for (size_t i = 0; i < shape.size(); ++i) {
      const POINT a = shape[i], b = shape[(i + 1) % shape.size()];
      if ((a.y > y) == (b.y > y)) continue;
      odd ^= x < a.x + double(b.x - a.x) * (y - a.y) / (b.y - a.y);
    }
    return odd;
  };
  for (const std::vector<POINT>& shape : shapes) {
    Clear(bitmap.context);
    {
      Selected pen(bitmap.context, PenOf(RGB(255, 255, 255)));
      std::vector<POINT> closed = shape;
      closed.push_back(shape[0]);
      ::Polyline(bitmap.context, closed.data(), int(closed.size()));
    }
    const Places outline = Marked(bitmap.context);
    Clear(bitmap.context);
    ::SetROP2(bitmap.context, R2_NOTXORPEN);
    Selected brush(bitmap.context, ::CreateSolidBrush(RGB(0, 0, 0)));
    ASSERT_TRUE(::Polygon(bitmap.context, shape.data(), int(shape.size())));
    ::SetROP2(bitmap.context, R2_COPYPEN);
    const Places drawn = Marked(bitmap.context);
    for (int i = 0; i < 900; ++i) {
      const bool expected = outline.count({i % 30, i / 30}) || inside(shape, i % 30, i / 30);
      EXPECT_EQ(drawn.count({i % 30, i / 30}) > 0, expected) << i % 30 << ", " << i / 30;
    }
  }
}

TEST(FillRect, CopiesSolidColoursAndPatternsAtEveryDepthWhateverTheMode) {
  for (const int depth : kDepths) {
    SCOPED_TRACE(depth);
    ScreenCanvas screen(20, 10, depth);
    BitmapCanvas deep(screen.context, 20, 10), mono(screen.context, 20, 10, false);
    for (const HDC context : {screen.context, deep.context, mono.context}) {
      ::SetROP2(context, R2_NOTXORPEN);
      ::SetTextColor(context, RGB(255, 0, 0));
      ::SetBkColor(context, RGB(255, 255, 255));
      const uint32_t red = PixelOf(context, RGB(255, 0, 0)), white = PixelOf(context, RGB(255, 255, 255));
      Clear(context);
      HBRUSH stripes = StripeBrush(3), solid = ::CreateSolidBrush(RGB(255, 0, 0));
      const RECT left = {1, 1, 10, 9}, right = {10, 2, 19, 100};
      EXPECT_TRUE(::FillRect(context, &left, stripes));
      EXPECT_TRUE(::FillRect(context, &right, solid));
      ExpectPixels(context, [&](int x, int y) {
        if (x >= 10 && x < 19 && y >= 2) return red;
        if (x >= 1 && x < 10 && y >= 1 && y < 9) return (x + y) % 8 == 3 ? red : white;
        return PixelOf(context, RGB(0, 0, 0));
      });
      EXPECT_TRUE(::DeleteObject(stripes));
      EXPECT_TRUE(::DeleteObject(solid));
    }
  }
}

// Pens and brushes of every kind, drawn in the inverting mode.
void DrawInverted(HDC context) {
  for (const COLORREF colour : {RGB(0, 0, 0), RGB(240, 220, 77), RGB(255, 255, 255)}) {
    Selected pen(context, PenOf(colour));
    Selected brush(context, ::CreateSolidBrush(colour));
    const POINT line[] = {{-3, 2}, {9, 14}, {25, 1}, {2, 1}};
    ::Polyline(context, line, 4);
    ::Rectangle(context, 3, 4, 30, 9);
    ::Polygon(context, line, 4);
    ::SetTextColor(context, colour);
    Selected stripes(context, StripeBrush(5));
    ::SelectObject(context, ::GetStockObject(NULL_PEN));
    ::Rectangle(context, 1, 0, 15, 12);
    ::SelectObject(context, pen.object);
  }
}

TEST(InvertingMode, IsUndoneByDrawingTheSameAgainAtEveryDepth) {
  std::mt19937 random(7);
  for (const int depth : kDepths) {
    SCOPED_TRACE(depth);
    ScreenCanvas screen(20, 10, depth);
    BitmapCanvas deep(screen.context, 20, 10), mono(screen.context, 20, 10, false);
    for (const HDC context : {screen.context, deep.context, mono.context}) {
      Scribble(context, random);
      const Picture before = PictureOf(context);
      ::SetROP2(context, R2_NOTXORPEN);
      DrawInverted(context);
      EXPECT_NE(PictureOf(context).pixels, before.pixels);
      DrawInverted(context);
      EXPECT_EQ(PictureOf(context).pixels, before.pixels);
    }
  }
}

TEST(InvertingMode, InvertsUnderBlackAndLeavesUnderWhiteWithoutReadingTheScreen) {
  std::mt19937 random(8);
  for (const int depth : kDepths) {
    SCOPED_TRACE(depth);
    ScreenCanvas screen(17, 11, depth);
    if (depth == 8) { // a palette whose black and white lie anywhere
      for (int i = 0; i < 256; ++i) TheMemoryDisplay().palette[size_t(i)] = {uint8_t(i * 7), uint8_t(i * 3), 9};
    }
    Scribble(screen.context, random);
    Picture before = PictureOf(screen.context);
    ::SetROP2(screen.context, R2_NOTXORPEN);
    ::SelectObject(screen.context, ::GetStockObject(NULL_PEN));
    Selected stripes(screen.context, StripeBrush(6));
    ASSERT_TRUE(::Rectangle(screen.context, -4, 2, 16, 30));
    ExpectPixels(screen.context, [&](int x, int y) {
      const bool inverted = x < 15 && y >= 2 && (x + y) % 8 == 6;
      return before.At(x, y) ^ (inverted ? PixelBits(LayoutOf(*screen.context)) : 0);
    });
    EXPECT_EQ(TheMemoryDisplay().screenReads, 0U);
  }
}

TEST(SetPixel, CopiesWhateverTheModeAndTellsTheColourDrawn) {
  ScreenCanvas screen(4, 4, 4);
  ::SetROP2(screen.context, R2_NOTXORPEN);
  EXPECT_EQ(::SetPixel(screen.context, 2, 1, RGB(250, 3, 4)), RGB(255, 0, 0));
  EXPECT_EQ(MemoryPixel(2, 1), 9U);
  EXPECT_EQ(::SetPixel(screen.context, 4, 1, RGB(250, 3, 4)), CLR_INVALID);
}

TEST(Drawing, OnANullContextOrWithNullObjectsDoesNothing) {
  ScreenCanvas screen(4, 4, 24);
  const POINT points[] = {{0, 0}, {3, 3}};
  const RECT all = {0, 0, 4, 4};
  EXPECT_FALSE(::Polyline(nullptr, points, 2));
  EXPECT_FALSE(::Polygon(nullptr, points, 2));
  EXPECT_FALSE(::Rectangle(nullptr, 0, 0, 4, 4));
  EXPECT_FALSE(::FillRect(nullptr, &all, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH))));
  EXPECT_FALSE(::FillRect(screen.context, &all, nullptr));
  EXPECT_FALSE(::TextOutA(nullptr, 0, 0, "x", 1));
  EXPECT_EQ(::SelectObject(nullptr, ::GetStockObject(BLACK_PEN)), nullptr);
  EXPECT_EQ(::SelectObject(screen.context, nullptr), nullptr);
  EXPECT_EQ(::SetROP2(screen.context, 6), 0); // no such mode here
  EXPECT_EQ(::GetROP2(screen.context), R2_COPYPEN);
  EXPECT_EQ(::LoadBitmapA(nullptr, MAKEINTRESOURCEA(152)), nullptr);
  EXPECT_EQ(TheMemoryDisplay().screen, std::vector<uint32_t>(16, 0));
}

TEST(DeleteObject, LeavesWhatAContextHoldsAndStockObjects) {
  ScreenCanvas screen(4, 4, 24);
  LOGFONTA what = {};
  for (const HGDIOBJ object : {HGDIOBJ(PenOf(RGB(1, 1, 1))), HGDIOBJ(::CreateFontIndirectA(&what))}) {
    const HGDIOBJ before = ::SelectObject(screen.context, object);
    EXPECT_NE(before, nullptr);
    EXPECT_FALSE(::DeleteObject(object));
    EXPECT_EQ(::SelectObject(screen.context, before), object);
    EXPECT_TRUE(::DeleteObject(object));
  }
  EXPECT_EQ(::SelectObject(screen.context, ::GetStockObject(BLACK_PEN)), ::GetStockObject(BLACK_PEN));
  EXPECT_FALSE(::DeleteObject(::GetStockObject(BLACK_BRUSH)));
  EXPECT_FALSE(::DeleteObject(nullptr));
}

} // namespace
} // namespace framereel
