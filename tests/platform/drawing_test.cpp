// DrawStates and primitives, on Offscreens, windows and the screen.
#include "platform/drawing.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <vector>

#include "platform/bitmaps.h"
#include "platform/fonts.h"
#include "platform/primitives.h"
#include "platform/standard_drawing.h"
#include "support/window_program.h"
#include "win32/gdi.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels.h"

namespace framereel {
namespace {

constexpr int kDepths[] = {1, 2, 4, 8, 16, 24, 32};
constexpr Colour kBlack = {0, 0, 0}, kWhite = {0xFFFF, 0xFFFF, 0xFFFF}, kRed = {0xFFFF, 0, 0}, kBlue = {0, 0, 0xFFFF};

// A white Offscreen in the display's format with a state of its own in use.
struct Sheet {
  Offscreen* offscreen;
  DrawState* state = NewDrawState();
  Sheet(int16_t width, int16_t height) : offscreen(NewOffscreen(width, height, true)) {
    Use();
    Clear();
  }
  ~Sheet() { FreeOffscreen(offscreen); }

  void Use() {
    SetPortOffscreen(offscreen);
    UseDrawState(state);
  }
  // White all over, then the state as it was.
  void Clear() {
    DrawState* used = CurrentDrawState();
    UseDrawState(DrawStateWhite());
    FillRect(OffscreenBounds(offscreen));
    UseDrawState(used);
  }
  std::vector<uint32_t> Pixels() const {
    std::vector<uint32_t> pixels;
    for (int32_t i = 0; i < offscreen->width * offscreen->height; ++i) {
      pixels.push_back(PixelAt(offscreen->bitmap->surface, i % offscreen->width, i / offscreen->width));
    }
    return pixels;
  }
  uint32_t At(int x, int y) const { return PixelAt(offscreen->bitmap->surface, x, y); }
  int Inked() const {
    int inked = 0;
    for (const uint32_t pixel : Pixels()) inked += pixel != PixelOf(kWhite);
    return inked;
  }
  uint32_t PixelOf(const Colour& colour) const {
    const ColourMap map = MapOf(offscreen->bitmap->surface.layout, offscreen->bitmap->ofScreen);
    return PixelOfColour(map, {uint8_t(colour.red >> 8), uint8_t(colour.green >> 8), uint8_t(colour.blue >> 8)});
  }
};

TEST(DrawLine, DrawsBothEndsAndTheSamePixelsFromEither) {
  WindowProgram program;
  Sheet sheet(15, 15);
  for (int i = 0; i < 225; ++i) {
    const int x = i % 15, y = i / 15, steps = std::max(std::abs(x - 7), std::abs(y - 7));
    sheet.Clear();
    DrawLine(7, 7, x, y);
    const std::vector<uint32_t> there = sheet.Pixels();
    ASSERT_EQ(sheet.Inked(), steps + 1); // a single point is one pixel
    ASSERT_EQ(sheet.At(7, 7), sheet.PixelOf(kBlack));
    ASSERT_EQ(sheet.At(x, y), sheet.PixelOf(kBlack));
    sheet.Clear();
    DrawLine(x, y, 7, 7);
    ASSERT_EQ(sheet.Pixels(), there) << x << ", " << y;
  }
}

TEST(Frames, LieInsideTheirRectangleAndComeOffAgainWhenInverted) {
  WindowProgram program;
  Sheet sheet(12, 10);
  FrameRect({2, 3, 8, 11});
  for (int i = 0; i < 120; ++i) {
    const int x = i % 12, y = i / 12;
    const bool inside = x >= 3 && x < 11 && y >= 2 && y<8, deeper = x> 3 && x < 10 && y > 2 && y < 7;
    ASSERT_EQ(sheet.At(x, y) == sheet.PixelOf(kBlack), inside && !deeper) << x << ", " << y;
  }
  SetPenMode(kPenInvert);
  FrameRect({2, 3, 8, 11});
  EXPECT_EQ(sheet.Inked(), 0);
}

TEST(Polylines, DrawTheirLastPointAndPolygonsAreFilled) {
  WindowProgram program;
  Sheet sheet(12, 12);
  const Point corner[] = {{1, 1}, {1, 9}, {9, 9}}; // v, h
  DrawPolyline(3, corner);
  EXPECT_EQ(sheet.Inked(), 9 + 8);
  EXPECT_EQ(sheet.At(9, 9), sheet.PixelOf(kBlack));
  sheet.Clear();
  DrawPolyline(1, corner);
  EXPECT_EQ(sheet.Inked(), 1);
  sheet.Clear();
  DrawClosedPolyline(3, corner);
  EXPECT_EQ(sheet.Inked(), 3 * 8);
  EXPECT_EQ(sheet.At(5, 5), sheet.PixelOf(kBlack)); // on the way back
  EXPECT_EQ(sheet.At(7, 4), sheet.PixelOf(kWhite));
  DrawPolygon(3, corner);
  EXPECT_EQ(sheet.At(7, 4), sheet.PixelOf(kBlack));
  EXPECT_EQ(sheet.Inked(), 9 * 10 / 2);
  DrawPolyline(0, corner);
  DrawPixel(11, 0);
  EXPECT_EQ(sheet.Inked(), 9 * 10 / 2 + 1);
}

TEST(FillRect, CopiesAndInvertsAtEveryDepth) {
  std::mt19937 random(21);
  for (const int depth : kDepths) {
    SCOPED_TRACE(depth);
    WindowProgram program(200, 150, depth);
    Sheet sheet(16, 16);
    SetForeColour(kRed);
    FillRectXY(2, 3, 9, 11);
    for (int i = 0; i < 256; ++i) {
      const int x = i % 16, y = i / 16;
      const bool inside = x >= 2 && x < 9 && y >= 3 && y < 11;
      ASSERT_EQ(sheet.At(x, y), sheet.PixelOf(inside ? kRed : kWhite));
    }
    // What stands on the screen comes back, whatever it is and whatever colour inverts it.
    for (uint32_t& pixel : TheMemoryDisplay().screen) pixel = uint32_t(random()) & PixelBits(DisplayScreen().layout);
    const std::vector<uint32_t> before = TheMemoryDisplay().screen;
    SetPortScreen();
    UseDrawState(sheet.state);
    SetPenMode(kPenInvert);
    for (const Colour& colour : {kBlack, kRed, Colour{0x1234, 0xABCD, 0x4242}}) {
      SetForeColour(colour);
      FillRectXY(-5, 20, 100, 40);
      EXPECT_NE(TheMemoryDisplay().screen, before);
      FillRectXY(-5, 20, 100, 40);
      EXPECT_EQ(TheMemoryDisplay().screen, before);
    }
  }
}

// Inverts the one-pixel frame of a rectangle under the pattern in use, each pixel once.
void InvertFrame(const Rect& r) {
  const HDC context = CurrentContext();
  ::SelectObject(context, ::GetStockObject(NULL_PEN));
  ::Rectangle(context, r.left, r.top, r.left + 2, r.bottom + 1);
  ::Rectangle(context, r.right - 1, r.top, r.right + 1, r.bottom + 1);
  ::Rectangle(context, r.left + 1, r.top, r.right, r.top + 2);
  ::Rectangle(context, r.left + 1, r.bottom - 1, r.right, r.bottom + 1);
  ::SelectObject(context, CurrentDrawState()->pen);
}

TEST(Stripes, LieInScreenCoordinatesAndMoveAlongByTwoPatterns) {
  std::mt19937 random(22);
  for (const int depth : kDepths) {
    SCOPED_TRACE(depth);
    WindowProgram program(200, 150, depth);
    for (uint32_t& pixel : TheMemoryDisplay().screen) pixel = uint32_t(random()) & PixelBits(DisplayScreen().layout);
    const std::vector<uint32_t> before = TheMemoryDisplay().screen;
    DrawState* ants = NewDrawState();
    const Rect r = {10, 13, 60, 97};
    const auto draw = [&](uint32_t pattern) {
      SetPortScreen();
      UseDrawState(ants);
      SetPenMode(kPenInvert);
      SetPattern(kPatternStripes + (pattern & 7));
      InvertFrame(r);
    };
    const auto expected = [&](int phase) {
      std::vector<uint32_t> screen = before;
      for (int i = 0; i < 200 * 150; ++i) {
        const int x = i % 200, y = i / 200;
        const bool inside = x >= 13 && x < 97 && y >= 10 && y<60, deeper = x> 13 && x < 96 && y > 10 && y < 59;
        const int stripe = (x + y - phase) & 7;
        if (inside && !deeper && stripe >= 4) screen[size_t(i)] ^= PixelBits(DisplayScreen().layout);
      }
      return screen;
    };
    for (uint32_t i = 4; i < 8; ++i) draw(i);
    EXPECT_EQ(TheMemoryDisplay().screen, expected(0));
    draw(0);
    draw(4);
    EXPECT_EQ(TheMemoryDisplay().screen, expected(1));
    for (uint32_t i = 5; i < 9; ++i) draw(i);
    EXPECT_EQ(TheMemoryDisplay().screen, before);
    EXPECT_EQ(TheMemoryDisplay().screenReads, 0U);
  }
}

TEST(Patterns, DrawInBothColoursAndWithoutABitmapLeaveTheBrush) {
  WindowProgram program;
  Sheet sheet(16, 16);
  const Rect all = OffscreenBounds(sheet.offscreen);
  SetForeColour(kRed);
  SetBackColour(kBlue);
  const auto expectStripes = [&](const Colour& line, const Colour& ground) {
    FillRect(all);
    for (int i = 0; i < 256; ++i) {
      ASSERT_EQ(sheet.At(i % 16, i / 16), sheet.PixelOf((i % 16 + i / 16) % 8 == 2 ? line : ground)) << i;
    }
  };
  SetPattern(kPatternStripes + 2);
  ASSERT_NO_FATAL_FAILURE(expectStripes(kRed, kBlue));
  for (const uint32_t missing : {0U, 45U, 50U, 60U}) {
    SetPattern(missing);
    ASSERT_NO_FATAL_FAILURE(expectStripes(kRed, kBlue)) << missing;
  }
  SetForeColour(kWhite); // the brush takes the colours of the moment
  ASSERT_NO_FATAL_FAILURE(expectStripes(kWhite, kBlue));
  for (const uint32_t solid : {1U, 91U, 70000U}) {
    SetPattern(kPatternStripes);
    SetPattern(solid);
    FillRect(all);
    for (const uint32_t pixel : sheet.Pixels()) ASSERT_EQ(pixel, sheet.PixelOf(kWhite)) << solid;
  }
}

TEST(DrawStates, AreEachSelectedWhole) {
  WindowProgram program;
  Sheet sheet(30, 30);
  SetForeColour(kRed);
  DrawState* other = NewDrawState();
  UseDrawState(other);
  SetForeColour(kBlue);
  SetPenMode(kPenInvert);
  UseDrawState(sheet.state);
  EXPECT_EQ(CurrentDrawState(), sheet.state);
  DrawPixel(0, 0);
  DrawLine(2, 2, 5, 2);
  FillRectXY(0, 4, 3, 6);
  EXPECT_EQ(sheet.At(0, 0), sheet.PixelOf(kRed));
  EXPECT_EQ(sheet.At(3, 2), sheet.PixelOf(kRed));
  EXPECT_EQ(sheet.At(1, 5), sheet.PixelOf(kRed));
  UseDrawState(other);
  FillRectXY(0, 4, 3, 6); // not (blue xor red)
  EXPECT_EQ(sheet.At(1, 5), 0xFFFFFFU & ~(0xFFU ^ 0xFF0000U));
}

TEST(DrawStates, LeaveNothingSelectedAfterAReleaseButTheFont) {
  WindowProgram program;
  Sheet sheet(8, 8);
  SetPortScreen();
  UseDrawState(sheet.state);
  SetPenMode(kPenInvert);
  SetForeColour(kRed);
  SetPattern(kPatternStripes);
  ReleasePort();
  EXPECT_EQ(CurrentDrawState(), nullptr);
  EXPECT_EQ(CurrentContext(), nullptr);
  const HDC screen = ScreenContext();
  const HGDIOBJ pen = ::SelectObject(screen, ::GetStockObject(BLACK_PEN));
  EXPECT_EQ(pen, ::GetStockObject(BLACK_PEN));
  const HGDIOBJ brush = ::SelectObject(screen, ::GetStockObject(BLACK_BRUSH));
  EXPECT_EQ(brush, WhiteBrush());
  ::SelectObject(screen, brush);
  EXPECT_EQ(::GetROP2(screen), R2_COPYPEN);
  EXPECT_EQ(screen->font, sheet.state->font->handle);
  // Without a state in use the setters do nothing.
  SetForeColour(kBlue);
  SetPattern(kPatternSolid);
  EXPECT_TRUE(SameColour(sheet.state->foreground, kRed));
  EXPECT_EQ(sheet.state->pattern, kPatternStripes);
}

TEST(DrawStates, WithoutAPortDrawNothingAndMeasureNothing) {
  WindowProgram program;
  const std::vector<uint32_t> before = TheMemoryDisplay().screen;
  ReleasePort();
  UseDrawState(DrawStateDefault());
  SetForeColour(kRed);
  DrawLine(0, 0, 50, 50);
  FillRectXY(0, 0, 50, 50);
  DrawText(10, 10, "Nowhere");
  EXPECT_EQ(MeasureText("Nowhere").width, 0);
  EXPECT_EQ(TheMemoryDisplay().screen, before);
  SetForeColour(kBlack);
}

TEST(Colours, TurnFrom16BitsTo8AndBackAndStandReady) {
  for (int v = 0; v < 256; ++v) {
    const auto wide = uint16_t(v * 257);
    EXPECT_EQ(ColourRef({wide, 0, wide}), RGB(BYTE(v), 0, BYTE(v)));
  }
  EXPECT_EQ(ColourRef({0x00FF, 0x0100, 0xFFFE}), RGB(0, 0, 254));
  EXPECT_TRUE(SameColour(PrimaryColour(0), kBlack) && SameColour(PrimaryColour(7), kWhite));
  EXPECT_TRUE(SameColour(PrimaryColour(4), kRed) && SameColour(PrimaryColour(1), kBlue));
  EXPECT_TRUE(SameColour(GreyColour(0), kBlack) && SameColour(GreyColour(7), kWhite));
  EXPECT_EQ(GreyColour(3).green, 3 * 65535 / 7);

  WindowProgram program;
  EXPECT_EQ(ColourRef(ColourMenu()), ::GetSysColor(COLOR_MENU));
  EXPECT_EQ(ColourGreyText(), ::GetSysColor(COLOR_GRAYTEXT));
  EXPECT_NE(ColourGreyText(), 0U);
  EXPECT_EQ(DrawStateInverse()->foreRef, RGB(255, 255, 255));
  EXPECT_EQ(DrawStateInverse()->backRef, RGB(0, 0, 0));
  EXPECT_EQ(DrawStateCaption()->foreRef, ::GetSysColor(COLOR_ACTIVECAPTION));
  EXPECT_EQ(DrawStateShadow()->foreRef, ::GetSysColor(COLOR_BTNSHADOW));
  EXPECT_EQ(DrawStateShadow()->backRef, RGB(255, 255, 255));
}

} // namespace
} // namespace framereel
