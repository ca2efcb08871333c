// The toolkit's fonts and text.
#include "platform/drawing/font_cache.h"
#include "platform/sheet.h"

namespace framereel {
namespace {

TEST(DrawText, FillsWhatMeasureTextTells) {
  for (const int style : {kFontBold + 0, kFontBold | kFontOutlined}) {
    SCOPED_TRACE(style);
    Sheet sheet(200, 60);
    sheet.state->font = GetFont(GetFontFamily(nullptr), 15, uint16_t(style), 1.0);
    UseDrawState(sheet.state);
    const TextMeasure measure = MeasureText("Grab (Jump)");
    DrawText(40, 30, "Grab (Jump)");
    // The outline of a last letter without a margin reaches one column further.
    const Rect cell = {int16_t(30 - measure.ascent), int16_t(40 - measure.leftOverhang), int16_t(30 + measure.descent),
                       int16_t(40 + measure.width)};
    int inside = 0, outside = 0;
    for (int i = 0; i < 200 * 60; ++i) {
      if (!sheet.Is(i % 200, i / 200, kWhite)) ++(Contains(cell, i % 200, i / 200) ? inside : outside);
    }
    EXPECT_GT(inside, 0);
    EXPECT_EQ(outside, 0);
    EXPECT_EQ(measure.fullWidth, measure.width);
    const LineMetrics line = FontMetrics();
    EXPECT_EQ(line.ascent + line.descent, 15);
    EXPECT_EQ(measure.ascent, line.ascent + measure.leftOverhang);
  }
}

TEST(DrawText, OutlinedDrawsBothColoursAndLeavesTheTextColour) {
  Sheet sheet(200, 60);
  const int plain = MeasureText("Wide").width;
  sheet.state->font = GetFont(GetFontFamily(nullptr), 15, kFontBold | kFontOutlined, 1.0);
  UseDrawState(sheet.state);
  EXPECT_EQ(MeasureText("Wide").width, plain + 2 * 4 - 1);
  EXPECT_EQ(MeasureText("Wide").leftOverhang, 1);
  SetFontSize(34);
  SetForeColour(kRed);
  SetBackColour(kGreen);
  DrawText(10, 40, "Wide");
  EXPECT_GT(sheet.Count(kRed), 0);
  EXPECT_GT(sheet.Count(kGreen), 0);
  EXPECT_EQ(CurrentContext()->textColour, RGB(255, 0, 0));
}

TEST(DrawGreyText, IsGreyAndLeavesTheTextColour) {
  Sheet sheet(200, 60);
  SetForeColour(kRed);
  DrawGreyText(10, 30, "Disabled");
  EXPECT_GT(sheet.Count({128 * 257, 128 * 257, 128 * 257}), 0);
  EXPECT_EQ(sheet.Count(kRed), 0);
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
  EXPECT_EQ(wide->ascent, font->ascent);
  TEXTMETRICA metrics;
  const HGDIOBJ before = ::SelectObject(ScreenContext(), font->handle);
  ::GetTextMetricsA(ScreenContext(), &metrics);
  ::SelectObject(ScreenContext(), before);
  EXPECT_EQ(wide->width, int(metrics.tmAveCharWidth * 1.5));
  EXPECT_EQ(GetFont(family, 9, 0, 0.001)->width, 1);
  EXPECT_EQ(GetFont(nullptr, 9, 0, 1.0), nullptr);
}

// Handles that are open, of the one family that there is.
uint16_t OpenFontCount() {
  const GrowArray& fonts = GetFontFamily(nullptr)->fonts;
  uint16_t count = 0;
  for (uint16_t i = 0; i < fonts.count; ++i) count += FromListValue<Font>(fonts.entries[i])->handle != nullptr;
  return count;
}

TEST(Fonts, FromTheSeventhOnCloseTheFirstThatNobodyHolds) {
  Sheet sheet(8, 8);
  std::vector<Font*> fonts;
  for (uint16_t size = 20; size < 26; ++size) fonts.push_back(GetFont(GetFontFamily(nullptr), size, kFontBold, 1.0));
  // The state's font is in use, and was the first to open: the one behind it has gone.
  EXPECT_EQ(OpenFontCount(), 6);
  EXPECT_NE(sheet.state->font->handle, nullptr);
  EXPECT_EQ(fonts[0]->handle, nullptr);
  EXPECT_NE(fonts[1]->handle, nullptr);

  // It opens again when it is used, and another goes.
  SetFontSize(20);
  EXPECT_EQ(sheet.state->font, fonts[0]);
  EXPECT_NE(fonts[0]->handle, nullptr);
  EXPECT_EQ(FontMetrics().ascent, fonts[0]->ascent);
  EXPECT_EQ(OpenFontCount(), 6);
  EXPECT_EQ(CurrentContext()->font, fonts[0]->handle);
}

TEST(Fonts, InUseKeepTheListLonger) {
  Sheet sheet(8, 8);
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
