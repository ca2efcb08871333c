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
  const TextSize plain = MeasureTextBlock("iiii", TextAlign::kLeft, TextWrap::kByWord, kWideOpen);
  const auto measure = [](const char* text) {
    return int(MeasureTextBlock(text, TextAlign::kLeft, TextWrap::kByWord, kWideOpen).width);
  };
  EXPECT_GT(measure("\33s40\33iiii"), 2 * plain.width);
  EXPECT_EQ(measure("\33s+25\33iiii"), measure("\33s40\33iiii")); // the standard font has 15
  EXPECT_LT(measure("ii\33s-5\33ii"), plain.width);
  EXPECT_EQ(measure("\33s40\33\33snone\33iiii"), plain.width);
  EXPECT_NE(measure("\33fDejaVu Sans Mono\33iiii"), plain.width);
  EXPECT_EQ(measure("\33fDejaVu Sans Mono\33\33f\33iiii"), plain.width);
  EXPECT_EQ(measure("iiii\33fand no end"), plain.width);
  EXPECT_EQ(measure("iiii"), plain.width);
  // A word that goes on to the next line takes its font along.
  const TextSize broken =
      MeasureTextBlock("ii \33s40\33iiiiii", TextAlign::kLeft, TextWrap::kByWord, uint16_t(measure("\33s40\33iiiiii")));
  EXPECT_EQ(broken.width, measure("\33s40\33iiiiii"));
  EXPECT_EQ(broken.height, 2 * lineHeight);
  const std::vector<std::string> letters(3, "\u00E9");
  EXPECT_EQ(Lines("\u00E9\u00E9\u00E9", TextWrap::kByCharacter, 1), letters);
}

TEST_F(TextLayout, FitsTextsIntoPleasantShapes) {
  const char* sentence = "The quick brown fox jumps over the lazy dog and comes back to have a look at it once more.";
  const TextSize free = FittedTextSize(sentence, TextAlign::kLeft, 0, 0);
  EXPECT_LT(free.width, 3 * free.height);
  EXPECT_GT(3 * free.width, free.height);
  EXPECT_LE(FittedTextSize(sentence, TextAlign::kLeft, 120, 0).width, 120);
  EXPECT_LE(FittedTextSize(sentence, TextAlign::kLeft, 0, int16_t(3 * lineHeight)).height, 4 * lineHeight);
  EXPECT_EQ(FittedTextSize("a\nb\nc", TextAlign::kLeft, 0, 0).height, 3 * lineHeight);
  const std::string wide = std::string(sentence) + "\n" + sentence;
  EXPECT_GT(FittedTextSize(wide.c_str(), TextAlign::kLeft, 0, 0).height, 2 * lineHeight);
  const TextSize lines = MeasureLines("a\n\nbb ");
  EXPECT_EQ(lines.width, Width("bb "));
  EXPECT_EQ(lines.height, 3 * lineHeight);
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
  const Rect where = {10, 20, int16_t(10 + 2 * lineHeight), 220}, around = {0, 0, 200, 300};
  const auto drawn = [&](TextAlign align, const Rect& r, const char* text) {
    SetPortWindow(Window());
    UseDrawState(DrawStateFill());
    SetForeColour(PrimaryColour(7));
    FillRect(around);
    UseDrawState(DrawStateDefault());
    DrawTextBlock(r, text, align, TextWrap::kByWord, false);
    script.Act("settle");
    return Ink(around, Window());
  };
  const Rect left = drawn(TextAlign::kLeft, where, "H\nH"), centre = drawn(TextAlign::kCentre, where, "H\nH"),
             right = drawn(TextAlign::kRight, where, "H\nH");
  EXPECT_NEAR(left.left, where.left, 2);
  EXPECT_NEAR(right.right, where.right, 2);
  EXPECT_NEAR(centre.left + centre.right, where.left + where.right, 2);
  EXPECT_GT(left.bottom, where.top + lineHeight);
  EXPECT_LE(left.bottom, where.bottom);
  const Rect small = {10, 20, 16, 26};
  EXPECT_TRUE(RectInside(drawn(TextAlign::kLeft, small, "WWWW WWWW"), small));
}

} // namespace
} // namespace framereel
