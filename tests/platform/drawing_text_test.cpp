// The toolkit's fonts and text.
#include "platform/drawing/font_cache.h"
#include "platform/drawing/shared_contexts.h"
#include "platform/sheet.h"
#include "support/dice.h"
#include "win32/drawing/fonts.h"

namespace framereel {
namespace {

TEST(DrawText, FillsWhatMeasureTextTellsInItsColoursAndLeavesTheTextColour) {
  for (const uint16_t style : {0, kFontBold + 0, kFontBold | kFontOutlined}) {
    SCOPED_TRACE(style);
    const Sheet sheet(200, 60);
    UseDrawState(DrawStateDefault());
    const int32_t plain = MeasureText("Grab (Jump)").width;
    sheet.state->font = GetFont(GetFontFamily(nullptr), 15, style, 1.0);
    UseDrawState(sheet.state);
    SetForeColour(kRed);
    SetBackColour(kGreen);
    const bool outlined = style & kFontOutlined;
    const TextMeasure measure = MeasureText("Grab (Jump)");
    DrawText(40, 30, "Grab (Jump)");
    Rows picture = sheet.Picture();
    EXPECT_GT(Count(picture, 'r'), 0u);
    EXPECT_EQ(Count(picture, 'g') > 0, outlined);
    EXPECT_EQ(CurrentContext()->textColour, RGB(255, 0, 0));
    // What lies in the cell goes.
    for (int y = 30 - measure.ascent; y < 30 + measure.descent; ++y) {
      picture[size_t(y)].replace(size_t(40 - measure.leftOverhang), size_t(measure.width + measure.leftOverhang), "");
    }
    EXPECT_EQ(Count(picture, 'r') + Count(picture, 'g'), 0u);
    EXPECT_EQ(measure.fullWidth, measure.width);
    EXPECT_TRUE(style == 0 || measure.width == plain + (outlined ? 2 * 11 - 1 : 0));
    EXPECT_EQ(measure.leftOverhang, outlined);
    const LineMetrics line = FontMetrics();
    EXPECT_EQ(line.ascent + line.descent, 15);
    EXPECT_EQ(measure.ascent + measure.descent, 15 + 2 * outlined);
    sheet.Clear();
    UseDrawState(sheet.state);
    DrawGreyText(10, 30, "Disabled");
    EXPECT_EQ(Count(sheet.Picture(), 'r'), 0u);
    EXPECT_GT(Count(sheet.Picture(), '?'), 0u);
    EXPECT_EQ(CurrentContext()->textColour, RGB(255, 0, 0));
  }
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

// Fonts are selected into contexts and held beside a plain list of the open ones: one that opens as the seventh or
// later closes the first that nothing holds.
TEST(Fonts, BeyondSixCloseTheFirstThatNobodyHolds) {
  const Sheet sheet(8, 8);
  FontFamily* family = GetFontFamily(nullptr);
  std::vector<Font*> fonts = {sheet.state->font}, open = fonts, inContext(6), held;
  std::vector<HDC> contexts;
  for (size_t i = 0; i < inContext.size(); ++i) contexts.push_back(::CreateCompatibleDC(ScreenContext()));
  contexts[0] = CurrentContext();
  inContext[0] = sheet.state->font;
  const auto has = [](const std::vector<Font*>& list, Font* font) {
    return std::find(list.begin(), list.end(), font) != list.end();
  };
  const auto opens = [&](Font* font) {
    if (has(open, font)) return;
    open.push_back(font);
    if (open.size() <= 6) return;
    const auto closes = std::find_if(open.begin(), open.end(),
                                     [&](Font* one) { return one != font && !has(inContext, one) && !has(held, one); });
    if (closes != open.end()) open.erase(closes);
  };
  Dice dice(1);
  for (int step = 0; step < 2000; ++step) {
    const auto size = uint16_t(20 + dice.Below(12));
    Font* font = GetFont(family, size, kFontBold, 1.0);
    if (!has(fonts, font)) fonts.push_back(font), opens(font);
    const auto context = size_t(dice.Below(6));
    const int operation = dice.Below(5);
    if (operation == 0) SelectFont(contexts[context], font), opens(font), inContext[context] = font;
    if (operation == 1) HoldFont(font), held.push_back(font), opens(font);
    if (operation >= 2 && !held.empty()) LetGoOfFont(held.back()), held.pop_back();
    for (Font* one : fonts) ASSERT_EQ(one->handle != nullptr, has(open, one)) << "step " << step;
    for (size_t i = 0; i < 6; ++i) ASSERT_TRUE(!inContext[i] || contexts[i]->font == inContext[i]->handle);
  }
  for (size_t i = 1; i < 6; ++i) ::DeleteDC(contexts[i]);
}

} // namespace
} // namespace framereel
