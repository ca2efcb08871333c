// Wrapped text: what holds for any text, on random ones; commands; and where the pixels go.
#include "toolkit/text/text_layout.h"

#include <random>
#include <vector>

#include "core/rects.h"
#include "views/view_scene.h"

namespace framereel {
namespace {

class TextLayout : public ViewScene {
protected:
  TextLayout() {
    script.Act("size w 300 200");
    SetPortWindow(Window());
    UseDrawState(DrawStateDefault());
    const LineMetrics m = FontMetrics();
    lineHeight = m.ascent + m.descent + m.leadingAbove + m.leadingBelow;
  }

  int Width(const std::string& text) {
    const TextMeasure m = MeasureText(text.c_str());
    return m.leftOverhang + m.width;
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

  int lineHeight;
};

// The text between line feeds, without the blanks at both ends.
std::vector<std::string> Paragraphs(const std::string& text) {
  std::vector<std::string> all;
  std::istringstream in(text);
  for (std::string each; std::getline(in, each, '\n');) {
    each.erase(0, each.find_first_not_of(' '));
    each.erase(each.find_last_not_of(' ') + 1);
    all.push_back(each);
  }
  // What follows the last line feed makes a line only if there is something.
  if (!all.empty() && all.back().empty() && text.back() != '\n') all.pop_back();
  return all;
}

TEST_F(TextLayout, BreaksRandomTextsAsLateAsTheWidthAllows) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    std::string text;
    for (int i = int(random() % 60); i > 0; --i) text += "abcdef ghij W\n    iii"[random() % 20];
    const auto width = uint16_t(random() % 120 + 1);
    EXPECT_EQ(Lines(text, TextWrap::kNone, width), Paragraphs(text)) << text;
    for (const TextWrap wrap : {TextWrap::kByWord, TextWrap::kByCharacter}) {
      const std::vector<std::string> lines = Lines(text, wrap, width);
      size_t next = 0;
      for (const std::string& paragraph : Paragraphs(text)) {
        size_t at = 0;
        do {
          ASSERT_LT(next, lines.size()) << text;
          const std::string& line = lines[next++];
          at = paragraph.find_first_not_of(' ', at) == std::string::npos ? at : paragraph.find_first_not_of(' ', at);
          ASSERT_EQ(paragraph.compare(at, line.size(), line), 0) << text;
          at += line.size();
          EXPECT_TRUE(line.size() <= 1 || Width(line) <= width) << text;
          if (at == paragraph.size()) break;
          // One character more, or the word whole, would not have had room.
          const bool inWord = paragraph[at] != ' ' && paragraph[at - 1] != ' ';
          const size_t word = paragraph.find_first_not_of(' ', at);
          const size_t end = paragraph.find(' ', word);
          const size_t stop = wrap == TextWrap::kByCharacter || inWord ? word + 1 : std::min(end, paragraph.size());
          EXPECT_GT(Width(line + paragraph.substr(at, stop - at)), width) << text;
          if (wrap == TextWrap::kByWord && inWord) {
            EXPECT_EQ(line.find(' '), std::string::npos) << text;
          }
        } while (at < paragraph.size());
      }
      EXPECT_EQ(next, lines.size()) << text;
    }
  }
}

TEST_F(TextLayout, HonoursCommandsOnTheWayAndKeepsTheBytesOfACharacterTogether) {
  const auto size = [](const char* text, int width = kWideOpen) {
    return MeasureTextBlock(text, TextAlign::kLeft, TextWrap::kByWord, uint16_t(width));
  };
  const int plain = size("iiii").width, large = size("\33s40\33iiii").width;
  EXPECT_GT(large, 2 * plain);
  EXPECT_EQ(size("\33s+25\33iiii").width, large); // the standard font has 15
  EXPECT_EQ(size("\33s40\33\33snone\33iiii").width, plain);
  EXPECT_NE(size("\33fDejaVu Sans Mono\33iiii").width, plain);
  EXPECT_EQ(size("\33fDejaVu Sans Mono\33\33f\33iiii").width, plain);
  EXPECT_EQ(size("iiii\33fand no end").width, plain);
  // A word that goes on to the next line takes its font along.
  const TextSize broken = size("ii \33s40\33iiii", large);
  EXPECT_TRUE(broken.width == large && broken.height == 2 * lineHeight);
  const std::vector<std::string> letters(3, "\u00E9");
  EXPECT_EQ(Lines("\u00E9\u00E9\u00E9", TextWrap::kByCharacter, 1), letters);
}

TEST_F(TextLayout, FitsTextsIntoPleasantShapes) {
  const std::string sentence = "The quick brown fox jumps over the lazy dog and comes back to have a look once more.";
  const auto fitted = [](const std::string& text, int width, int height) {
    return FittedTextSize(text.c_str(), TextAlign::kLeft, int16_t(width), int16_t(height));
  };
  const TextSize free = fitted(sentence, 0, 0);
  EXPECT_TRUE(free.width < 3 * free.height && free.height < 3 * free.width);
  EXPECT_LE(fitted(sentence, 120, 0).width, 120);
  EXPECT_LE(fitted(sentence, 0, 3 * lineHeight).height, 4 * lineHeight);
  EXPECT_EQ(fitted("a\nb\nc", 0, 0).height, 3 * lineHeight);
  EXPECT_GT(fitted(sentence + "\n" + sentence, 0, 0).height, 2 * lineHeight);
}

// The columns and rows from the first to the last with ink, over white.
Rect Ink(const Rect& where, const ChildWindow* window) {
  Rect ink = {INT16_MAX, INT16_MAX, INT16_MIN, INT16_MIN};
  for (int16_t y = where.top; y < where.bottom; ++y) {
    for (int16_t x = where.left; x < where.right; ++x) {
      const Point p = OnScreen(window, x, y);
      if (MemoryPixel(p.h, p.v) == 0xFFFFFF) continue;
      ink = {std::min(ink.top, y), std::min(ink.left, x), int16_t(std::max<int>(ink.bottom, y + 1)),
             int16_t(std::max<int>(ink.right, x + 1))};
    }
  }
  return ink;
}

TEST_F(TextLayout, DrawsEachLineAtItsSideAndInsideItsRectangle) {
  const Rect where = {10, 20, int16_t(10 + 2 * lineHeight), 220}, around = {0, 0, 200, 300}, small = {10, 20, 16, 26};
  const auto drawn = [&](TextAlign align, const Rect& r, const char* text) {
    UseDrawState(DrawStateFill());
    SetForeColour(PrimaryColour(7));
    FillRect(around);
    UseDrawState(DrawStateDefault());
    DrawTextBlock(r, text, align, TextWrap::kByWord, false);
    script.Act("settle");
    return Ink(around, Window());
  };
  const Rect left = drawn(TextAlign::kLeft, where, "H\nH"), centre = drawn(TextAlign::kCentre, where, "H\nH");
  EXPECT_NEAR(left.left, where.left, 2);
  EXPECT_NEAR(drawn(TextAlign::kRight, where, "H\nH").right, where.right, 2);
  EXPECT_NEAR(centre.left + centre.right, where.left + where.right, 2);
  EXPECT_TRUE(left.bottom > where.top + lineHeight && left.bottom <= where.bottom);
  EXPECT_TRUE(RectInside(drawn(TextAlign::kLeft, small, "WWWW WWWW"), small));
}

} // namespace
} // namespace framereel
