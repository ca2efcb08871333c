// Primitives and DrawStates, as small pictures.
#include "platform/drawing/draw_state.h"

#include <algorithm>
#include <cstdlib>

#include "platform/bitmaps/copy_bits.h"
#include "platform/bitmaps/load_bitmaps.h"
#include "platform/drawing/clip.h"
#include "platform/drawing/font_cache.h"
#include "platform/drawing/shared_contexts.h"
#include "platform/sheet.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

const Point kCorner[] = {{1, 1}, {1, 4}, {4, 4}}; // v, h

void FillInColours(uint32_t pattern) {
  SetForeColour(kRed);
  SetBackColour(kBlue);
  SetPattern(kPatternStripes + 2);
  SetPattern(pattern);
  FillRectXY(0, 0, 6, 6);
}

// A mask of the stripes, where the sheet was.
void CopyMask(const Sheet& sheet, int mode) {
  Offscreen* mask = LoadMaskOffscreen(155);
  EXPECT_TRUE(mask->port.colour == 0 && CurrentPort() == &mask->port);
  SetPortOffscreen(sheet.offscreen);
  UseDrawState(sheet.state);
  SetForeColour(kRed);
  SetBackColour(kBlue);
  CopyBits(&mask->port, {0, 0, 6, 6}, {0, 0, 6, 6}, mode);
}

TEST(Drawing, GivesItsPicturesAtEveryDepth) {
  const Rows stripes = {"bbrbbb", "brbbbb", "rbbbbb", "bbbbbb", "bbbbbb", "bbbbbr"};
  const struct {
    const char* what;
    void (*draw)(const Sheet& sheet);
    Rows picture;
    int depth = 4; // from which on the colours are as they are
  } cases[] = {
      {"pixel", [](auto&) { DrawPixel(1, 4); }, {"......", "......", "......", "......", ".#....", "......"}},
      {"across", [](auto&) { DrawHLine(4, 1, 1); }, {"......", ".####.", "......", "......", "......", "......"}},
      {"down", [](auto&) { DrawVLine(2, 4, 0); }, {"..#...", "..#...", "..#...", "..#...", "..#...", "......"}},
      {"frame", [](auto&) { FrameRectXY(0, 1, 5, 5); }, {"......", "#####.", "#...#.", "#...#.", "#####.", "......"}},
      {"points", [](auto&) { DrawPolyline(3, kCorner); }, {"......", ".####.", "....#.", "....#.", "....#.", "......"}},
      {"one", [](auto&) { DrawPolyline(1, kCorner); }, {"......", ".#....", "......", "......", "......", "......"}},
      {"none", [](auto&) { DrawPolyline(0, kCorner); }, {"......", "......", "......", "......", "......", "......"}},
      {"ring",
       [](auto&) { DrawClosedPolyline(3, kCorner); },
       {"......", ".####.", "..#.#.", "...##.", "....#.", "......"}},
      {"area", [](auto&) { DrawPolygon(3, kCorner); }, {"......", ".####.", "..###.", "...##.", "....#.", "......"}},
      {"inverted once and twice",
       [](auto&) {
         SetPenMode(kPenInvert);
         FrameRectXY(0, 1, 3, 4);
         FillRectXY(2, 2, 5, 5);
         FrameRectXY(0, 1, 3, 4);
       },
       {"......", "......", "..###.", "..###.", "..###.", "......"}},
      {"colours and the clip",
       [](auto&) {
         SetForeColour(kRed);
         FillRectXY(0, 0, 3, 2);
         SetForeColour(kBlue);
         DrawPixel(0, 0);
         SetPenMode(kPenInvert); // not (blue xor red), and not (blue xor white)
         const SavedClip clip = NarrowClip(2, 1, 4, 9);
         FillRectXY(0, 0, 9, 9);
         RestoreClip(clip);
         DrawLine(5, 5, 5, 5);
       },
       {"brr...", "rrgb..", "..bb..", "..bb..", "..bb..", "..bb.b"},
       16},
      {"another state",
       [](auto& sheet) {
         SetForeColour(kRed);
         UseDrawState(NewDrawState());
         SetForeColour(kGreen);
         SetPenMode(kPenInvert);
         UseDrawState(sheet.state);
         DrawPixel(0, 0);
         DrawHLine(2, 2, 4);
         FillRectXY(0, 4, 3, 6);
       },
       {"r.....", "......", "..rrr.", "......", "rrr...", "rrr..."}},
      {"stripes", [](auto&) { FillInColours(kPatternStripes + 2); }, stripes},
      {"no pattern", [](auto&) { FillInColours(0); }, stripes},
      {"no bitmap", [](auto&) { FillInColours(45), FillInColours(50), FillInColours(60); }, stripes},
      {"beyond the last one", [](auto&) { FillInColours(91); }, Rows(6, "rrrrrr")},
      {"a mask, plainly", [](auto& sheet) { CopyMask(sheet, 3); }, stripes},
      {"a mask joined to the brush",
       [](auto& sheet) { CopyMask(sheet, 1); },
       {"mmrmmm", "mrmmmm", "rmmmmm", "mmmmmm", "mmmmmm", "mmmmmr"},
       16},
      {"a mask of what is white",
       [](auto& sheet) {
         SetForeColour(kRed);
         FillRectXY(0, 0, 2, 2);
         Offscreen* mask = NewMaskOffscreen(6, 6);
         SetPortOffscreen(mask);
         UseDrawState(DrawStateDefault());
         CopyBits(&sheet.offscreen->port, {0, 0, 6, 6}, {0, 0, 6, 6}, 1);
         SetPortOffscreen(sheet.offscreen);
         UseDrawState(DrawStateDefault());
         CopyBits(&mask->port, {0, 0, 6, 6}, {0, 0, 6, 6}, 3);
       },
       {"##....", "##....", "......", "......", "......", "......"}},
      {"the modes of a copy, and one that does not exist, stretched",
       [](auto& sheet) {
         FillRectXY(0, 0, 2, 6);
         Offscreen* source = NewOffscreen(4, 1, true); // black and white in turns
         SetPortOffscreen(source);
         CopyBits(&sheet.offscreen->port, {0, 2, 1, 6}, {0, 0, 1, 4}, 1);
         UseDrawState(DrawStateDefault());
         DrawPixel(0, 0);
         DrawPixel(2, 0);
         SetPortOffscreen(sheet.offscreen);
         for (const int16_t mode : {0, 1, 2, 4, 5}) {
           CopyBits(&source->port, {0, 0, 1, 4}, {mode, 0, int16_t(mode + 1), 4}, mode);
         }
         for (const int mode : {6, -1}) CopyBits(&source->port, {0, 0, 1, 4}, {3, 0, 4, 4}, mode);
         CopyBits(&source->port, {0, 1, 1, 3}, {1, 2, 2, 6}, 3);
       },
       {"####..", "#...##", "###...", "##....", "#.....", ".#...."}},
  };
  for (const int depth : {4, 8, 16, 24}) {
    for (const auto& c : cases) {
      if (depth < c.depth) continue;
      const Sheet sheet(6, 6, depth);
      c.draw(sheet);
      EXPECT_EQ(sheet.Picture(), c.picture) << c.what << " at " << depth;
    }
  }
}

TEST(DrawLine, DrawsBothEndsAndTheSamePixelsFromEither) {
  const Sheet sheet(15, 15);
  for (int i = 0; i < 225; ++i) {
    const int x = i % 15, y = i / 15, steps = std::max(std::abs(x - 7), std::abs(y - 7));
    Rows pictures[2];
    for (const bool back : {false, true}) {
      sheet.Clear();
      UseDrawState(sheet.state);
      back ? DrawLine(x, y, 7, 7) : DrawLine(7, 7, x, y);
      pictures[back] = sheet.Picture();
    }
    ASSERT_EQ(pictures[0], pictures[1]) << x << ", " << y;
    ASSERT_EQ(Count(pictures[0], '#'), size_t(steps + 1)); // a single point is one pixel
    ASSERT_TRUE(pictures[0][7][7] == '#' && pictures[0][size_t(y)][size_t(x)] == '#');
  }
}

TEST(DrawStates, LeaveNothingSelectedAfterAReleaseButTheFont) {
  const Sheet sheet(8, 8);
  SetPortScreen();
  UseDrawState(sheet.state);
  SetPenMode(kPenInvert);
  SetForeColour(kRed);
  SetPattern(kPatternStripes);
  const std::vector<uint32_t> before = TheMemoryDisplay().screen;
  ReleasePort();
  EXPECT_EQ(CurrentDrawState(), nullptr);
  EXPECT_EQ(CurrentContext(), nullptr);
  const HDC screen = ScreenContext();
  EXPECT_EQ(::SelectObject(screen, ::GetStockObject(BLACK_PEN)), ::GetStockObject(BLACK_PEN));
  EXPECT_EQ(::SelectObject(screen, WhiteBrush()), WhiteBrush());
  EXPECT_EQ(::GetROP2(screen), R2_COPYPEN);
  EXPECT_EQ(screen->font, sheet.state->font->handle);
  // Without a state in use the setters do nothing, and without a Port nothing is drawn and measured.
  SetForeColour(kBlue);
  SetPattern(kPatternSolid);
  EXPECT_TRUE(SameColour(sheet.state->foreground, kRed));
  EXPECT_EQ(sheet.state->pattern, kPatternStripes);
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
  const auto system = [](int index) { return COLORREF(::GetSysColor(index)); };
  const COLORREF black = RGB(0, 0, 0), white = RGB(255, 255, 255);
  const struct {
    DrawState* state;
    COLORREF fore, back;
  } states[] = {
      {DrawStateDefault(), black, white},
      {DrawStateInverse(), white, black},
      {DrawStateFill(), black, white},
      {DrawStateSecond(), black, white},
      {DrawStateEdge(), system(COLOR_WINDOWFRAME), white},
      {DrawStateFrame(), system(COLOR_WINDOWFRAME), white},
      {DrawStateWhite(), white, white},
      {DrawStateCaption(), system(COLOR_ACTIVECAPTION), white},
      {DrawStateFace(), system(COLOR_BTNFACE), white},
      {DrawStateShadow(), system(COLOR_BTNSHADOW), white},
  };
  int row = 0;
  for (const auto& s : states) {
    EXPECT_EQ(s.state->foreRef, s.fore) << row;
    EXPECT_EQ(s.state->backRef, s.back) << row++;
  }
  const std::pair<COLORREF, int> colours[] = {
      {ColourRef(ColourWorkspace()), COLOR_APPWORKSPACE}, {ColourRef(ColourMenu()), COLOR_MENU},
      {ColourRef(ColourFace()), COLOR_BTNFACE},           {ColourRef(ColourShadow()), COLOR_BTNSHADOW},
      {ColourRef(ColourLight()), COLOR_3DLIGHT},          {ColourGreyText(), COLOR_GRAYTEXT}};
  for (const auto& [colour, index] : colours) EXPECT_EQ(colour, system(index)) << index;
}

} // namespace
} // namespace framereel
