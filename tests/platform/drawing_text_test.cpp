// The toolkit's fonts and text.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/bitmaps.h"
#include "platform/drawing.h"
#include "platform/fonts.h"
#include "platform/primitives.h"
#include "platform/standard_drawing.h"
#include "support/window_program.h"
#include "win32/gdi.h"
#include "win32/pixels.h"

namespace framereel {
namespace {

constexpr Colour kWhite = {0xFFFF, 0xFFFF, 0xFFFF}, kRed = {0xFFFF, 0, 0};

struct Sheet {
  Offscreen* offscreen = NewOffscreen(200, 60, true);
  DrawState* state = NewDrawState();
  Sheet() {
    SetPortOffscreen(offscreen);
    UseDrawState(DrawStateWhite());
    FillRect(OffscreenBounds(offscreen));
    UseDrawState(state);
  }
  ~Sheet() { FreeOffscreen(offscreen); }
  // Whether any pixel other than white lies in the rectangle, or outside of it.
  bool HasInk(const Rect& r, bool inside) const {
    for (int i = 0; i < 200 * 60; ++i) {
      const int x = i % 200, y = i / 200;
      const bool in = x >= r.left && x < r.right && y >= r.top && y < r.bottom;
      if (in == inside && PixelAt(offscreen->bitmap->surface, x, y) != 0xFFFFFF) return true;
    }
    return false;
  }
  bool Has(uint32_t pixel) const {
    for (int i = 0; i < 200 * 60; ++i) {
      if (PixelAt(offscreen->bitmap->surface, i % 200, i / 200) == pixel) return true;
    }
    return false;
  }
};

TEST(DrawText, FillsWhatMeasureTextTells) {
  WindowProgram program;
  for (const int style : {kFontBold + 0, kFontBold | kFontOutlined}) {
    SCOPED_TRACE(style);
    Sheet sheet;
    sheet.state->font = GetFont(GetFontFamily(nullptr), 15, uint16_t(style), 1.0);
    UseDrawState(sheet.state);
    const std::string text = "Grab (Jump)";
    const TextMeasure measure = MeasureText(text.c_str());
    DrawText(40, 30, text.c_str());
    const auto left = int16_t(40 - measure.leftOverhang);
    // The outline of a last letter without a margin reaches one column further.
    const auto right = int16_t(left + measure.width + measure.leftOverhang);
    const Rect cell = {int16_t(30 - measure.ascent), left, int16_t(30 + measure.descent), right};
    EXPECT_TRUE(sheet.HasInk(cell, true));
    EXPECT_FALSE(sheet.HasInk(cell, false));
    EXPECT_EQ(measure.fullWidth, measure.width);
    const LineMetrics line = FontMetrics();
    EXPECT_EQ(line.ascent + line.descent, 15);
    EXPECT_EQ(measure.ascent, line.ascent + measure.leftOverhang);
  }
}

TEST(DrawText, OutlinedDrawsBothColoursAndLeavesTheTextColour) {
  WindowProgram program;
  Sheet sheet;
  sheet.state->font = GetFont(GetFontFamily(nullptr), 34, kFontBold | kFontOutlined, 1.0);
  UseDrawState(sheet.state);
  SetForeColour(kRed);
  SetBackColour({0, 0xFFFF, 0});
  DrawText(10, 40, "Wide");
  EXPECT_TRUE(sheet.Has(0xFF0000));
  EXPECT_TRUE(sheet.Has(0x00FF00));
  EXPECT_EQ(CurrentContext()->textColour, RGB(255, 0, 0));

  const int plain = MeasureText("Wide").width - 2 * 4 + 1;
  SetFontFamily(GetFontFamily("MS Sans Serif")); // the same, and changes nothing
  EXPECT_EQ(MeasureText("Wide").width, plain + 2 * 4 - 1);
  EXPECT_EQ(MeasureText("Wide").leftOverhang, 1);
}

TEST(DrawGreyText, IsGreyAndLeavesTheTextColour) {
  WindowProgram program;
  Sheet sheet;
  SetForeColour(kRed);
  DrawGreyText(10, 30, "Disabled");
  const COLORREF grey = ColourGreyText();
  EXPECT_TRUE(sheet.Has(uint32_t(GetRValue(grey) << 16 | GetGValue(grey) << 8 | GetBValue(grey))));
  EXPECT_FALSE(sheet.Has(0xFF0000));
  EXPECT_EQ(CurrentContext()->textColour, RGB(255, 0, 0));
}

TEST(Fonts, AreSharedByFamilySizeStyleAndScale) {
  WindowProgram program;
  FontFamily* family = GetFontFamily(nullptr);
  EXPECT_EQ(GetFontFamily("MS Sans Serif"), family);
  EXPECT_NE(GetFontFamily("Another"), family);
  Font* font = GetFont(family, 21, kFontBold, 1.0);
  EXPECT_EQ(GetFont(family, 21, kFontBold, 1.0), font);
  EXPECT_EQ(font->references, 2U);
  EXPECT_NE(GetFont(family, 21, 0, 1.0), font);
  Font* wide = GetFont(family, 21, kFontBold, 1.5);
  EXPECT_NE(wide, font);
  EXPECT_EQ(wide->ascent, font->ascent);
  TEXTMETRICA metrics;
  const HGDIOBJ before = ::SelectObject(ScreenContext(), font->handle);
  ::GetTextMetricsA(ScreenContext(), &metrics);
  ::SelectObject(ScreenContext(), before);
  EXPECT_EQ(wide->width, int(metrics.tmAveCharWidth * 1.5));
  EXPECT_EQ(GetFont(family, 9, 0, 0.001)->width, 1);
  EXPECT_EQ(GetFont(nullptr, 9, 0, 1.0), nullptr);
}

TEST(Fonts, FromTheSeventhOnCloseTheFirstThatNobodyHolds) {
  WindowProgram program;
  Sheet sheet;
  FontFamily* family = GetFontFamily(nullptr);
  std::vector<Font*> fonts;
  for (uint16_t size = 20; size < 26; ++size) fonts.push_back(GetFont(family, size, kFontBold, 1.0));
  // The state's font is in use, and was the first to open: the one behind it has gone.
  EXPECT_EQ(OpenFontCount(), 6);
  EXPECT_NE(sheet.state->font->handle, nullptr);
  EXPECT_EQ(fonts[0]->handle, nullptr);
  EXPECT_NE(fonts[1]->handle, nullptr);
  EXPECT_GT(fonts[0]->ascent, 0); // a closed font still tells its size

  // It opens again when it is used, and another goes.
  SetFontSize(20);
  EXPECT_EQ(sheet.state->font, fonts[0]);
  EXPECT_NE(fonts[0]->handle, nullptr);
  EXPECT_EQ(FontMetrics().ascent, fonts[0]->ascent);
  EXPECT_EQ(OpenFontCount(), 6);
  EXPECT_EQ(CurrentContext()->font, fonts[0]->handle);
}

TEST(Fonts, InUseKeepTheListLonger) {
  WindowProgram program;
  Sheet sheet;
  std::vector<HDC> contexts;
  FontFamily* family = GetFontFamily(nullptr);
  for (uint16_t size = 30; size < 38; ++size) {
    contexts.push_back(::CreateCompatibleDC(ScreenContext()));
    SelectFont(contexts.back(), GetFont(family, size, 0, 1.0));
    EXPECT_NE(contexts.back()->font, SystemFont());
  }
  EXPECT_GE(OpenFontCount(), 8);
  for (const HDC context : contexts) ::DeleteDC(context);
  const uint16_t open = OpenFontCount();
  GetFont(family, 50, 0, 1.0);
  EXPECT_EQ(OpenFontCount(), open); // one more, one less
}

} // namespace
} // namespace framereel
