// Wrapped text: what holds for any text, on random ones; commands; and where the pixels go.
#include "toolkit/text/text_layout.h"

#include <random>
#include <vector>

#include "platform/drawing/clip.h"
#include "views/view_scene.h"

namespace framereel {
namespace {

int Width(const std::string& text) {
  const TextMeasure m = MeasureText(text.c_str());
  return m.leftOverhang + m.width;
}

class TextLayout : public ViewScene {
protected:
  TextLayout() {
    script.Act("size w 300 200");
    SetPortWindow(Window());
    UseDrawState(DrawStateDefault());
    const LineMetrics m = FontMetrics();
    lineUp = m.ascent + m.leadingAbove;
    lineHeight = lineUp + m.descent + m.leadingBelow;
  }

  // The lines as the block has them, its widths checked on the way.
  std::vector<std::string> Lines(const std::string& text, TextWrap wrap, uint16_t width) {
    TextBlock* block = MakeTextBlock(text.c_str(), TextAlign::kLeft, wrap, width);
    std::vector<std::string> lines;
    int widest = 0;
    for (uint16_t i = 0; i < block->lines.count; ++i) {
      const auto* line = static_cast<const TextLine*>(RecordArrayAt(&block->lines, i));
      lines.emplace_back(line->start, line->end);
      EXPECT_EQ(line->width, Width(lines.back())) << text;
      widest = std::max<int>(widest, line->width);
    }
    const TextSize size = TextBlockSize(block);
    EXPECT_EQ(size.width, std::max(widest, lineHeight / 2));
    EXPECT_EQ(size.height, std::max<int>(1, int(lines.size())) * lineHeight);
    FreeTextBlock(block);
    return lines;
  }

  int lineUp, lineHeight;
};

std::string Trimmed(std::string text) {
  text.erase(0, text.find_first_not_of(' '));
  return text.erase(text.find_last_not_of(' ') + 1);
}

// The text between line feeds. What follows the last of them makes a line only if there is something.
std::vector<std::string> Paragraphs(const std::string& text) {
  std::vector<std::string> all;
  std::istringstream in(text);
  for (std::string each; std::getline(in, each, '\n');) {
    if (!in.eof() || !Trimmed(each).empty()) all.push_back(Trimmed(each));
  }
  return all;
}

// As much as there is room for, and then back to the last blank where words stay whole.
std::vector<std::string> Broken(std::string rest, TextWrap wrap, int width) {
  std::vector<std::string> lines;
  do {
    size_t end = std::min<size_t>(1, rest.size());
    while (end < rest.size() && (wrap == TextWrap::kNone || Width(rest.substr(0, end + 1)) <= width)) ++end;
    const size_t blank = rest.rfind(' ', end);
    if (wrap == TextWrap::kByWord && end < rest.size() && blank != std::string::npos) end = blank;
    lines.push_back(Trimmed(rest.substr(0, end)));
    rest = Trimmed(rest.substr(end));
  } while (!rest.empty());
  return lines;
}

TEST_F(TextLayout, BreaksRandomTextsAsLateAsTheWidthAllows) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    std::string text;
    for (int i = int(random() % 60); i > 0; --i) text += "abcdef ghij W\n    iii"[random() % 20];
    const auto width = uint16_t(random() % 120 + 1);
    for (const TextWrap wrap : {TextWrap::kNone, TextWrap::kByWord, TextWrap::kByCharacter}) {
      std::vector<std::string> lines;
      for (const std::string& paragraph : Paragraphs(text)) {
        for (const std::string& line : Broken(paragraph, wrap, width)) lines.push_back(line);
      }
      EXPECT_EQ(Lines(text, wrap, width), lines) << text;
    }
  }
}

TEST_F(TextLayout, HonoursCommandsOnTheWayAndKeepsTheBytesOfACharacterTogether) {
  const auto width = [](const char* text) {
    return MeasureTextBlock(text, TextAlign::kLeft, TextWrap::kByWord, kWideOpen).width;
  };
  const int plain = width("iiii"), large = width("\33s40\33iiii");
  EXPECT_GT(large, 2 * plain);
  EXPECT_EQ(width("\33s+25\33iiii"), large); // the standard font has 15
  EXPECT_NE(width("\33fDejaVu Sans Mono\33iiii"), plain);
  EXPECT_EQ(width("\33fDejaVu Sans Mono\33\33f\33\33s40\33\33snone\33iiii\33fand no end"), plain);
  // A word that goes on to the next line takes its font along.
  EXPECT_EQ(MeasureTextBlock("ii \33s40\33iiii", TextAlign::kLeft, TextWrap::kByWord, uint16_t(large)).width, large);
  const std::vector<std::string> letters(3, "\u00E9");
  EXPECT_EQ(Lines("\u00E9\u00E9\u00E9", TextWrap::kByCharacter, 1), letters);
}

TEST_F(TextLayout, DrawsEachLineAtItsSideAndInsideItsRectangle) {
  const auto shown = [this](const auto& draw) {
    UseDrawState(DrawStateFill());
    SetForeColour(PrimaryColour(7));
    FillRect(ChildBounds(Window()));
    UseDrawState(DrawStateDefault());
    draw();
    Settle();
    return TheMemoryDisplay().screen;
  };
  const Rect where = {10, 20, 100, 220}, small = {10, 20, 16, 26};
  const int room = 200 - Width("H"), x = 20 + MeasureText("H").leftOverhang, y = 10 + lineUp;
  for (const auto& [align, indent] :
       {std::pair{TextAlign::kLeft, 0}, {TextAlign::kCentre, room / 2}, {TextAlign::kRight, room}}) {
    const auto lines = [&, at = x + indent] { DrawText(at, y, "H"), DrawText(at, y + lineHeight, "H"); };
    EXPECT_EQ(shown([&] { DrawTextBlock(where, "H\nH", align, TextWrap::kByWord, false); }), shown(lines));
  }
  const auto corner = [&] {
    const SavedClip clip = NarrowClip(20, 10, 26, 16);
    DrawText(x, y, "H");
    RestoreClip(clip);
  };
  EXPECT_EQ(shown([&] { DrawTextBlock(small, "H", TextAlign::kLeft, TextWrap::kByWord, false); }), shown(corner));
}

} // namespace
} // namespace framereel
