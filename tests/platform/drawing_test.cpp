// Primitives, DrawStates, clips and text, as small pictures; fonts; what the program knows of the display.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/memory.h"
#include "platform/bitmaps/load_bitmaps.h"
#include "platform/bitmaps/offscreens.h"
#include "platform/bitmaps/screen_colours.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/clip.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/font_cache.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/shared_contexts.h"
#include "platform/drawing/standard_drawing.h"
#include "support/desktop.h"
#include "support/window_program.h"
#include "win32/drawing/contexts.h"
#include "win32/drawing/objects.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_drawing.h"
#include "win32/win32_windows.h"

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
size_t Count(const Rows& picture, char letter) {
  size_t count = 0;
  for (const std::string& row : picture) count += size_t(std::count(row.begin(), row.end(), letter));
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
    void (*draw)(const Sheet& sheet);
    Rows picture;
    int depth = 4; // from which on the colours are as they are
  } cases[] = {
      {"across", [](auto&) { DrawHLine(4, 1, 1); }, {"......", ".####.", "......", "......", "......", "......"}},
      {"down", [](auto&) { DrawVLine(2, 4, 0); }, {"..#...", "..#...", "..#...", "..#...", "..#...", "......"}},
      {"slope", [](auto&) { DrawLine(5, 2, 0, 0); }, {"##....", "..##..", "....##", "......", "......", "......"}},
      {"steep", [](auto&) { DrawLine(3, 5, 4, 0); }, {"....#.", "....#.", "....#.", "...#..", "...#..", "...#.."}},
      {"frame", [](auto&) { FrameRect(kFrame); }, {"......", "#####.", "#...#.", "#...#.", "#####.", "......"}},
      {"points", [](auto&) { DrawPolyline(3, kCorner); }, {"......", ".####.", "....#.", "....#.", "....#.", "......"}},
      {"area", [](auto&) { DrawPolygon(3, kCorner); }, {"......", ".####.", "..###.", "...##.", "....#.", "......"}},
      {"colours and the clip",
       [](auto&) {
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
      {"another state",
       [](auto& sheet) {
         SetForeColour(kRed);
         UseDrawState(NewDrawState());
         DrawHLine(0, 5, 5);
         UseDrawState(sheet.state);
         DrawHLine(0, 0, 1);
       },
       {"rr....", "......", "......", "......", "......", "######"}},
      {"stripes", [](auto&) { FillInColours(kPatternStripes + 2); }, stripes},
      {"no pattern", [](auto&) { FillInColours(0); }, stripes},
      {"beyond the last one", [](auto&) { FillInColours(91); }, Rows(6, "rrrrrr")},
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

TEST(DrawStates, LeaveNothingSelectedAfterAReleaseButTheFont) {
  const Sheet sheet(8, 8);
  SetPortScreen();
  UseDrawState(sheet.state);
  SetPenMode(kPenInvert);
  SetForeColour(kRed);
  SetPattern(kPatternStripes);
  const std::vector<uint32_t> before = TheMemoryDisplay().screen;
  ReleasePort();
  EXPECT_FALSE(CurrentDrawState() || CurrentContext());
  const HDC screen = ScreenContext();
  EXPECT_EQ(::SelectObject(screen, ::GetStockObject(BLACK_PEN)), ::GetStockObject(BLACK_PEN));
  EXPECT_EQ(::SelectObject(screen, WhiteBrush()), WhiteBrush());
  EXPECT_EQ(::GetROP2(screen), R2_COPYPEN);
  EXPECT_EQ(screen->font, sheet.state->font->handle);
  UseDrawState(sheet.state);
  FillRectXY(0, 0, 50, 50); // without a Port nothing is drawn
  DrawText(10, 10, "Nowhere");
  EXPECT_EQ(TheMemoryDisplay().screen, before);
}

// ---- Clips ---------------------------------------------------------------------------------------------------------

PixelRect ClipBox() {
  RECT box = {};
  ::GetClipBox(CurrentContext(), &box);
  return {box.left, box.top, box.right, box.bottom};
}

TEST(Clip, IsNarrowedWithinItsPortAndComesBackThereAlone) {
  const Sheet sheet(20, 20);
  SetClip(5, 5, 30, 15);
  const SavedClip before = NarrowClip(0, 10, 8, 40), narrow = SaveClip();
  EXPECT_TRUE(Same(ClipBox(), {5, 10, 8, 15}));
  SetPortOffscreen(NewOffscreen(20, 20, true)); // a Port begins without one
  SetClip(1, 2, 3, 4);
  RestoreClip(before);
  EXPECT_TRUE(Same(ClipBox(), {1, 2, 3, 4}));
  SetPortOffscreen(sheet.offscreen);
  RestoreClip(narrow);
  EXPECT_TRUE(Same(ClipBox(), {5, 10, 8, 15}));
}

TEST(Ports, OfMinimisedWindowsHaveNothingToDrawOn) {
  const WindowProgram program;
  ChildWindow* window = OpenTestWindow(kWindowMayClose);
  ::ShowWindow(window->window, SW_SHOWMINIMIZED);
  Settle();
  SetPortWindow(window);
  EXPECT_TRUE(IsEmpty(ClipBox()));
  SetClip(0, 0, 50, 50); // no way round it
  EXPECT_TRUE(IsEmpty(ClipBox()));
}

// ---- Text and fonts ----------------------------------------------------------------------------------------------

TEST(DrawText, FillsWhatMeasureTextTellsInItsColoursAndLeavesTheTextColour) {
  const Sheet sheet(200, 60);
  SetForeColour(kRed);
  const TextMeasure measure = MeasureText("Grab (Jump)");
  EXPECT_TRUE(measure.ascent + measure.descent == 15 && measure.fullWidth == measure.width);
  DrawText(40, 30, "Grab (Jump)");
  Rows picture = sheet.Picture();
  EXPECT_GT(Count(picture, 'r'), 0u);
  // What lies in the cell goes.
  for (int y = 30 - measure.ascent; y < 30 + measure.descent; ++y) {
    picture[size_t(y)].replace(40, size_t(measure.width), "");
  }
  EXPECT_EQ(Count(picture, 'r'), 0u);
  sheet.Clear();
  UseDrawState(sheet.state);
  DrawGreyText(10, 30, "Disabled");
  EXPECT_EQ(Count(sheet.Picture(), 'r'), 0u);
  EXPECT_GT(Count(sheet.Picture(), '?'), 0u);
  EXPECT_EQ(CurrentContext()->textColour, RGB(255, 0, 0));
}

TEST(Fonts, AreSharedByFamilySizeStyleAndScale) {
  WindowProgram program;
  FontFamily* family = GetFontFamily("MS Sans Serif");
  Font *font = GetFont(GetFontFamily(nullptr), 21, kFontBold, 1.0), *wide = GetFont(family, 21, kFontBold, 1.5);
  EXPECT_EQ(GetFont(family, 21, kFontBold, 1.0), font);
  EXPECT_TRUE(GetFont(family, 21, 0, 1.0) != font && GetFontFamily("Another") != family && wide->width > 0);
  EXPECT_EQ(GetFont(family, 21, kFontBold, 3.0)->width / 2, wide->width); // of the average character
}

TEST(Fonts, BeyondSixCloseTheFirstThatNobodyHolds) {
  const Sheet sheet(8, 8); // whose font is in its context
  std::vector<Font*> fonts;
  for (uint16_t size = 20; size < 26; ++size) fonts.push_back(GetFont(GetFontFamily(nullptr), size, kFontBold, 1.0));
  HoldFont(fonts[0]);
  const HDC context = ::CreateCompatibleDC(ScreenContext());
  const auto select = [&](std::initializer_list<int> order) {
    for (const int font : order) SelectFont(context, fonts[size_t(font)]);
    std::string open;
    for (const Font* font : fonts) open += font->handle ? 'o' : '-';
    return open;
  };
  EXPECT_EQ(select({1, 2, 3, 4}), "ooooo-");
  EXPECT_EQ(select({5}), "o-oooo");
  EXPECT_EQ(select({1}), "oo-ooo");
  LetGoOfFont(fonts[0]);
  EXPECT_EQ(select({2}), "-ooooo");
  EXPECT_EQ(context->font, fonts[2]->handle);
  EXPECT_TRUE(sheet.state->font->handle);
  ::DeleteDC(context);
}

// ---- The display -------------------------------------------------------------------------------------------------

TEST(DisplayCaps, TellDepthSizeAndColoursOfEveryDisplayAndOffscreensTakeItsFormat) {
  for (const int depth : {1, 2, 4, 8, 12, 16, 24, 32}) {
    SCOPED_TRACE(depth);
    const Desktop desktop(300 + depth, 200, depth);
    const DisplayCaps& caps = TheDisplayCaps();
    EXPECT_EQ(caps.screenPlanes * caps.screenPlaneBits, depth);
    EXPECT_EQ(caps.screenHasColour, depth > 1);
    EXPECT_TRUE(caps.screenWidth == 300 + depth && caps.screenHeight == 200);
    ColourList list;
    ScreenColours(&list);
    ASSERT_EQ(list.count, depth > 8 ? 512U : 1U << depth);
    for (uint32_t i = 0; i < list.count && (depth <= 8 || depth == 24); ++i) { // of true colour an even spread
      const PaletteColour even = {uint8_t((i >> 6) * 255 / 7), uint8_t((i >> 3 & 7) * 255 / 7),
                                  uint8_t((i & 7) * 255 / 7)};
      const auto [red, green, blue] = depth > 8 ? even : TheMemoryDisplay().palette[i];
      EXPECT_TRUE(SameColour(list.colours[i], {uint16_t(red * 257), uint16_t(green * 257), uint16_t(blue * 257)})) << i;
    }
    MemFree(list.colours);
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
