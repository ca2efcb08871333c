// DrawStates and primitives, on Offscreens and the screen.
#include "platform/drawing/draw_state.h"

#include <algorithm>
#include <cstdlib>

#include "platform/drawing/font_cache.h"
#include "platform/sheet.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

TEST(DrawLine, DrawsBothEndsAndTheSamePixelsFromEither) {
  Sheet sheet(15, 15);
  for (int i = 0; i < 225; ++i) {
    const int x = i % 15, y = i / 15, steps = std::max(std::abs(x - 7), std::abs(y - 7));
    sheet.Clear();
    DrawLine(7, 7, x, y);
    const std::vector<uint32_t> there = sheet.Pixels();
    ASSERT_EQ(sheet.Count(kBlack), steps + 1); // a single point is one pixel
    ASSERT_TRUE(sheet.Is(7, 7, kBlack) && sheet.Is(x, y, kBlack));
    sheet.Clear();
    DrawLine(x, y, 7, 7);
    ASSERT_EQ(sheet.Pixels(), there) << x << ", " << y;
  }
}

TEST(Frames, LieInsideTheirRectangleAndComeOffAgainWhenInverted) {
  Sheet sheet(12, 10);
  FrameRect({2, 3, 8, 11});
  sheet.ExpectColours([](int x, int y) {
    return Contains({2, 3, 8, 11}, x, y) && !Contains({3, 4, 7, 10}, x, y) ? kBlack : kWhite;
  });
  SetPenMode(kPenInvert);
  FrameRect({2, 3, 8, 11});
  EXPECT_EQ(sheet.Count(kWhite), 12 * 10);
}

TEST(Polylines, DrawTheirLastPointAndPolygonsAreFilled) {
  Sheet sheet(12, 12);
  const Point corner[] = {{1, 1}, {1, 9}, {9, 9}}; // v, h
  DrawPolyline(3, corner);
  EXPECT_EQ(sheet.Count(kBlack), 9 + 8);
  EXPECT_TRUE(sheet.Is(9, 9, kBlack));
  sheet.Clear();
  DrawPolyline(1, corner);
  DrawPolyline(0, corner);
  EXPECT_EQ(sheet.Count(kBlack), 1);
  sheet.Clear();
  DrawClosedPolyline(3, corner);
  EXPECT_EQ(sheet.Count(kBlack), 3 * 8);
  EXPECT_TRUE(sheet.Is(5, 5, kBlack)); // on the way back
  DrawPolygon(3, corner);
  EXPECT_TRUE(sheet.Is(7, 4, kBlack));
  EXPECT_EQ(sheet.Count(kBlack), 9 * 10 / 2);
}

TEST(FillRect, CopiesAndInverts) {
  Sheet sheet(16, 16);
  const auto inside = [](int x, int y) { return Contains({3, 2, 11, 9}, x, y); };
  SetForeColour(kRed);
  FillRectXY(2, 3, 9, 11);
  sheet.ExpectColours([&](int x, int y) { return inside(x, y) ? kRed : kWhite; });
  SetForeColour(kBlack);
  SetPenMode(kPenInvert);
  FillRectXY(2, 3, 9, 11);
  sheet.ExpectColours([&](int x, int y) { return inside(x, y) ? Colour{0, 0xFFFF, 0xFFFF} : kWhite; });
}

TEST(Patterns, DrawInBothColoursAndWithoutABitmapLeaveTheBrush) {
  Sheet sheet(16, 16);
  SetForeColour(kRed);
  SetBackColour(kBlue);
  const auto expectStripes = [&](const Colour& line) {
    FillRect(OffscreenBounds(sheet.offscreen));
    sheet.ExpectColours([&](int x, int y) { return (x + y) % 8 == 2 ? line : kBlue; });
  };
  SetPattern(kPatternStripes + 2);
  ASSERT_NO_FATAL_FAILURE(expectStripes(kRed));
  for (const uint32_t missing : {0U, 45U, 50U, 60U}) {
    SetPattern(missing);
    ASSERT_NO_FATAL_FAILURE(expectStripes(kRed)) << missing;
  }
  SetForeColour(kWhite); // the brush takes the colours of the moment
  ASSERT_NO_FATAL_FAILURE(expectStripes(kWhite));
  for (const uint32_t solid : {1U, 91U, 70000U}) {
    SetPattern(kPatternStripes);
    SetPattern(solid);
    FillRect(OffscreenBounds(sheet.offscreen));
    EXPECT_EQ(sheet.Count(kWhite), 16 * 16) << solid;
  }
}

TEST(DrawStates, AreEachSelectedWhole) {
  Sheet sheet(30, 30);
  SetForeColour(kRed);
  UseDrawState(NewDrawState());
  SetForeColour(kBlue);
  SetPenMode(kPenInvert);
  DrawState* other = CurrentDrawState();
  UseDrawState(sheet.state);
  DrawPixel(0, 0);
  DrawLine(2, 2, 5, 2);
  FillRectXY(0, 4, 3, 6);
  EXPECT_TRUE(sheet.Is(0, 0, kRed) && sheet.Is(3, 2, kRed) && sheet.Is(1, 5, kRed));
  UseDrawState(other);
  FillRectXY(0, 4, 3, 6);
  EXPECT_TRUE(sheet.Is(1, 5, kGreen)); // not (blue xor red)
}

TEST(DrawStates, LeaveNothingSelectedAfterAReleaseButTheFont) {
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
  EXPECT_EQ(::SelectObject(screen, ::GetStockObject(BLACK_PEN)), ::GetStockObject(BLACK_PEN));
  EXPECT_EQ(::SelectObject(screen, WhiteBrush()), WhiteBrush());
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
  UseDrawState(DrawStateInverse());
  DrawLine(0, 0, 50, 50);
  FillRectXY(0, 0, 50, 50);
  DrawText(10, 10, "Nowhere");
  EXPECT_EQ(MeasureText("Nowhere").width, 0);
  EXPECT_EQ(TheMemoryDisplay().screen, before);
}

TEST(Colours, TurnFrom16BitsTo8AndStandReady) {
  EXPECT_EQ(ColourRef({0x00FF, 0x0100, 0xFFFE}), RGB(0, 0, 254));
  EXPECT_EQ(ColourRef({127 * 257, 128 * 257, 0xFFFF}), RGB(127, 128, 255));
  EXPECT_TRUE(SameColour(PrimaryColour(4), kRed) && SameColour(PrimaryColour(1), kBlue));
  WindowProgram program;
  EXPECT_EQ(ColourRef(ColourMenu()), ::GetSysColor(COLOR_MENU));
  EXPECT_EQ(DrawStateCaption()->foreRef, ::GetSysColor(COLOR_ACTIVECAPTION));
  EXPECT_EQ(DrawStateShadow()->foreRef, ::GetSysColor(COLOR_BTNSHADOW));
  EXPECT_EQ(DrawStateInverse()->foreRef, RGB(255, 255, 255));
  EXPECT_EQ(DrawStateInverse()->backRef, RGB(0, 0, 0));
}

} // namespace
} // namespace framereel
