// Primitives, clips and text, as small pictures; fonts; what the program knows of the display.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/bitmaps/load_bitmaps.h"
#include "platform/bitmaps/offscreens.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/clip.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/font_cache.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "support/desktop.h"
#include "support/window_program.h"
#include "win32/drawing/contexts.h"
#include "win32/memory/memory_display.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

constexpr Colour kRed = {0xFFFF, 0, 0}, kBlue = {0, 0, 0xFFFF};

using Rows = std::vector<std::string>;

// What the tests draw on: a program whose current Port is a white Offscreen, with a state of its own in use.
struct Sheet {
  WindowProgram program;
  Offscreen* offscreen; // in the display's format
  DrawState* state = NewDrawState();

  Sheet(int16_t width, int16_t height, int32_t depth = 24)
      : program(200, 150, depth), offscreen(NewOffscreen(width, height, true)) {
    SetPortOffscreen(offscreen);
    Clear();
    UseDrawState(state);
  }

  // White all over, in another state.
  void Clear() const {
    UseDrawState(DrawStateFill());
    SetForeColour(PrimaryColour(7));
    FillRect(OffscreenBounds(offscreen));
  }
  // A row of letters for each row of pixels: # black, b g c r m y the full colours, . white, ? another one.
  Rows Picture() const {
    constexpr char kLetters[] = "#rgybmc."; // a bit each for red, green and blue
    SetPortOffscreen(offscreen);
    Rows rows(size_t(offscreen->height), std::string(size_t(offscreen->width), '?'));
    for (int i = 0; i < offscreen->width * offscreen->height; ++i) {
      const int x = i % offscreen->width, y = i / offscreen->width;
      for (int bits = 0; bits < 8; ++bits) {
        const COLORREF colour = RGB(bits & 1 ? 255 : 0, bits & 2 ? 255 : 0, bits & 4 ? 255 : 0);
        if (::GetPixel(CurrentContext(), x, y) == colour) rows[size_t(y)][size_t(x)] = kLetters[bits];
      }
    }
    return rows;
  }
};

// How many letters of the picture are this one.
size_t Count(const Sheet& sheet, char letter) {
  size_t count = 0;
  for (const std::string& row : sheet.Picture()) count += size_t(std::count(row.begin(), row.end(), letter));
  UseDrawState(sheet.state);
  return count;
}

const Point kCorner[] = {{1, 1}, {1, 4}, {4, 4}}; // v, h
constexpr Rect kFrame = {1, 0, 5, 5};

void FillInColours(uint32_t pattern) {
  SetForeColour(kRed);
  SetBackColour(kBlue);
  SetPattern(kPatternStripes + 2);
  SetPattern(pattern);
  FillRectXY(0, 0, 6, 6);
}

TEST(Drawing, GivesItsPicturesAtEveryDepth) {
  const Rows stripes = {"bbrbbb", "brbbbb", "rbbbbb", "bbbbbb", "bbbbbb", "bbbbbr"};
  const struct {
    const char* what;
    void (*draw)();
    Rows picture;
    int depth = 4; // from which on the colours are as they are
  } cases[] = {
      {"across", [] { DrawHLine(4, 1, 1); }, {"......", ".####.", "......", "......", "......", "......"}},
      {"down", [] { DrawVLine(2, 4, 0); }, {"..#...", "..#...", "..#...", "..#...", "..#...", "......"}},
      {"slope", [] { DrawLine(5, 2, 0, 0); }, {"##....", "..##..", "....##", "......", "......", "......"}},
      {"steep", [] { DrawLine(3, 5, 4, 0); }, {"....#.", "....#.", "....#.", "...#..", "...#..", "...#.."}},
      {"frame", [] { FrameRect(kFrame); }, {"......", "#####.", "#...#.", "#...#.", "#####.", "......"}},
      {"points", [] { DrawPolyline(3, kCorner); }, {"......", ".####.", "....#.", "....#.", "....#.", "......"}},
      {"area", [] { DrawPolygon(3, kCorner); }, {"......", ".####.", "..###.", "...##.", "....#.", "......"}},
      {"colours and the clip",
       [] {
         SetForeColour(kRed);
         FillRectXY(0, 0, 3, 2);
         SetForeColour(kBlue);
         DrawHLine(0, 0, 0);
         SetPenMode(kPenInvert); // not (blue xor red), and not (blue xor white)
         const SavedClip clip = NarrowClip(2, 1, 4, 9);
         FillRectXY(0, 0, 9, 9);
         RestoreClip(clip);
         DrawLine(5, 5, 5, 5);
       },
       {"brr...", "rrgb..", "..bb..", "..bb..", "..bb..", "..bb.b"},
       16},
      {"stripes", [] { FillInColours(kPatternStripes + 2); }, stripes},
      {"no pattern", [] { FillInColours(0); }, stripes},
      {"beyond the last one", [] { FillInColours(91); }, Rows(6, "rrrrrr")},
  };
  for (const int depth : {4, 8, 16, 24}) {
    for (const auto& c : cases) {
      if (depth < c.depth) continue;
      const Sheet sheet(6, 6, depth);
      c.draw();
      EXPECT_EQ(sheet.Picture(), c.picture) << c.what << " at " << depth;
    }
  }
}

// ---- Text and fonts ----------------------------------------------------------------------------------------------

TEST(DrawText, FillsWhatMeasureTextTellsInItsColoursAndLeavesTheTextColour) {
  const Sheet sheet(200, 60);
  SetForeColour(kRed);
  const TextMeasure measure = MeasureText("Grab (Jump)");
  EXPECT_TRUE(measure.ascent + measure.descent == 15 && measure.fullWidth == measure.width);
  UseDrawState(NewDrawState());
  SetForeColour(kBlue);
  UseDrawState(sheet.state);
  DrawText(40, 30, "Grab (Jump)");
  EXPECT_GT(Count(sheet, 'r'), 0u);
  SetForeColour(PrimaryColour(7));
  FillRectXY(40, 30 - measure.ascent, 40 + measure.width, 30 + measure.descent); // nothing lies beside the cell
  EXPECT_EQ(Count(sheet, 'r'), 0u);
  SetForeColour(kRed);
  DrawGreyText(10, 30, "Disabled");
  EXPECT_EQ(CurrentContext()->textColour, RGB(255, 0, 0));
  EXPECT_EQ(Count(sheet, 'r'), 0u);
  EXPECT_GT(Count(sheet, '?'), 0u);
}

TEST(Fonts, AreSharedAndBeyondSixTheFirstThatNobodyHoldsIsClosed) {
  const Sheet sheet(8, 8);
  HoldFont(GetFont(GetFontFamily("MS Sans Serif"), 20, kFontBold, 1.0));
  std::vector<Font*> fonts;
  for (int i = 0; i < 20; ++i) { // each twice
    SetFontSize(uint16_t(20 + i % 10));
    fonts.push_back(sheet.state->font);
    EXPECT_TRUE(fonts[size_t(i % 10)] == fonts.back() && fonts.back()->handle == CurrentContext()->font);
  }
  const auto open = [&fonts] {
    std::string text;
    for (int i = 0; i < 10; ++i) text += fonts[size_t(i)]->handle ? 'o' : '-';
    return text;
  };
  EXPECT_EQ(open(), "o----ooooo");
  LetGoOfFont(fonts[0]);
  SetFontSize(21);
  EXPECT_EQ(open(), "-o---ooooo");
  EXPECT_NE(GetFont(GetFontFamily(nullptr), 21, 0, 1.0), fonts[1]); // which is bold
}

// ---- The display -------------------------------------------------------------------------------------------------

TEST(DisplayCaps, TellDepthAndSizeOfEveryDisplayAndOffscreensTakeItsFormat) {
  for (const int depth : {1, 2, 4, 8, 12, 16, 24, 32}) {
    SCOPED_TRACE(depth);
    const Desktop desktop(300 + depth, 200, depth);
    const DisplayCaps& caps = TheDisplayCaps();
    EXPECT_EQ(caps.screenPlanes * caps.screenPlaneBits, depth);
    EXPECT_EQ(caps.screenHasColour, depth > 1);
    EXPECT_TRUE(caps.screenWidth == 300 + depth && caps.screenHeight == 200);
    if (depth == 12) continue; // which cannot be drawn on
    Offscreen* like = NewOffscreen(33, 7, true);
    EXPECT_EQ(like->bitmap->ofScreen, depth > 1);
    EXPECT_FALSE(NewOffscreen(2, 1, false)->bitmap->ofScreen); // left to the desktop's end
    SetPortOffscreen(like);
    FreeOffscreen(like);
    EXPECT_FALSE(CurrentPort() || CurrentContext()); // it was the current Port
    EXPECT_FALSE(NewOffscreen(0, 5, true) || LoadOffscreen(152) || LoadPicture(1));
  }
}

} // namespace
} // namespace framereel
