// Layout walks through the text by chunks: words, characters or whole lines. A chunk is measured with the font that its
// place in the text has; one that does not fit is measured again on the next line, so the font goes along with the
// place and not with what has been measured last.
#include "toolkit/text/text_layout.h"

#include <algorithm>
#include <cmath>

#include "core/memory.h"
#include "core/numbers.h"
#include "core/strings.h"
#include "core/text_scan.h"
#include "platform/drawing/clip.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/font_cache.h"
#include "platform/drawing/primitives.h"

namespace framereel {
namespace {

constexpr char kCommand = 27;
constexpr uint16_t kLineStep = 8; // lines that the array grows by

// ---- Runs and commands -------------------------------------------------------------------------------------------

struct TextFont {
  FontFamily* family; // null where there is no font at all
  uint16_t size;
};

TextFont FontInUse() {
  const DrawState* state = CurrentDrawState();
  return state && state->font ? TextFont{state->font->family, state->font->size} : TextFont{};
}

void UseFont(const TextFont& font) {
  const TextFont now = FontInUse();
  if (font.family && font.family != now.family) SetFontFamily(font.family);
  if (font.family && font.size != now.size) SetFontSize(font.size);
}

// Behind the command that begins here.
const char* CommandEnd(const char* at) {
  const char* end = StrFindEnd(at + 1, kCommand);
  return *end ? end + 1 : end;
}

const char* SkipCommands(const char* at) {
  while (*at == kCommand) at = CommandEnd(at);
  return at;
}

// Calls with the part of a block's text as a string: the byte behind it is the block's own, and a zero meanwhile.
template <typename Call> auto AsString(const char* start, const char* end, Call call) {
  char* stop = const_cast<char*>(end);
  const char kept = *stop;
  *stop = '\0';
  auto answer = call(start);
  *stop = kept;
  return answer;
}

uint16_t SizeSaid(const char* said, uint16_t first) {
  const bool counted = *said == '+' || *said == '-';
  const int32_t number = ScanInt(*said == '+' ? said + 1 : said);
  const int32_t size = counted ? first + number : number;
  return size > 0 ? uint16_t(std::min<int32_t>(size, INT16_MAX)) : first;
}

// What the command from `start` to `end` makes of the font.
TextFont AfterCommand(const char* start, const char* end, const TextFont& font, const TextFont& first) {
  const char* stop = end[-1] == kCommand && end - 1 > start ? end - 1 : end;
  if (stop - start < 2) return font;
  return AsString(start + 2, stop, [&](const char* said) {
    TextFont after = font;
    if (start[1] == 'f') {
      FontFamily* family = *said ? GetFontFamily(said) : nullptr;
      after.family = family ? family : first.family;
    } else if (start[1] == 's') {
      after.size = SizeSaid(said, first.size);
    }
    return after;
  });
}

// Calls with each run of the part, its font in use. Answers the font behind the part.
template <typename Call>
TextFont ForEachRun(const char* start, const char* end, TextFont font, const TextFont& first, Call call) {
  for (const char* at = start; at < end;) {
    if (*at == kCommand) {
      const char* behind = std::min(CommandEnd(at), end);
      font = AfterCommand(at, behind, font, first);
      at = behind;
      continue;
    }
    const char* stop = std::find(at, end, kCommand);
    UseFont(font);
    AsString(at, stop, [&](const char* run) {
      call(run);
      return 0;
    });
    at = stop;
  }
  return font;
}

// ---- Layout ------------------------------------------------------------------------------------------------------

struct Chunk {
  const char* end;
  int32_t overhang, width; // pixels
  TextFont font;           // behind it
  bool endsLine;           // it holds the line feed, or all that is left of the line
};

struct Layout {
  TextBlock* block;
  TextFont first; // at the beginning of the text
  const char* place;
  TextFont font; // at the place
};

// Behind the character, which may be of several bytes in UTF-8.
const char* CharacterEnd(const char* at) {
  ++at;
  while ((uint8_t(*at) & 0xC0) == 0x80) ++at;
  return at;
}

const char* WordEnd(const char* place) {
  const char* at = SkipCommands(place);
  if (*at && *at != '\n') at = CharacterEnd(at);
  while (*at && *at != ' ' && *at != '\n') at = *at == kCommand ? CommandEnd(at) : CharacterEnd(at);
  return at;
}

// Of the line from here on, up to the last character that is no blank.
const char* LineTextEnd(const char* place) {
  const char* end = StrFindEnd(place, '\n');
  while (end > place && end[-1] == ' ') --end;
  return end;
}

// Where the next chunk ends. `byCharacter`: a word of this line has been found too long.
const char* ChunkEnd(const Layout& layout, bool lineBegins, bool byCharacter, bool* endsLine) {
  const char* place = layout.place;
  *endsLine = false;
  if (layout.block->wrap == TextWrap::kNone) {
    const char* end = LineTextEnd(place);
    if (lineBegins && end > place) return end;
    *endsLine = true;
    end = StrFindEnd(place, '\n');
    return *end ? end + 1 : end;
  }
  const char* character = SkipCommands(place);
  if (*character == '\n') {
    *endsLine = true;
    return character + 1;
  }
  if (layout.block->wrap == TextWrap::kByWord && !byCharacter) return WordEnd(place);
  return *character ? CharacterEnd(character) : character;
}

void MeasureChunk(const Layout& layout, Chunk* chunk) {
  bool begins = true;
  chunk->overhang = chunk->width = 0;
  chunk->font = ForEachRun(layout.place, chunk->end, layout.font, layout.first, [&](const char* run) {
    const TextMeasure measure = MeasureText(run);
    if (begins) chunk->overhang = measure.leftOverhang;
    chunk->width += measure.width + (begins ? 0 : measure.leftOverhang);
    begins = false;
  });
}

void AppendLine(TextBlock* block, const TextLine& line) {
  RecordArrayAppend(&block->lines, &line);
  block->widest = uint16_t(std::max<int32_t>(block->widest, line.width));
}

// Takes the chunks of one line; the place is then behind it.
void LayLine(Layout* layout) {
  TextLine line = {0, 0, layout->place, layout->place};
  int32_t position = 0;
  bool byCharacter = false;
  for (bool begins = true; *layout->place; begins = false) {
    Chunk chunk;
    chunk.end = ChunkEnd(*layout, begins, byCharacter, &chunk.endsLine);
    MeasureChunk(*layout, &chunk);
    if (chunk.endsLine) {
      layout->place = chunk.end;
      layout->font = chunk.font;
      break;
    }
    if (begins) position = chunk.overhang;
    // Blanks at the end of a line need no room.
    const bool blank = chunk.end[-1] == ' ';
    if (!blank && position + chunk.width > layout->block->wrapWidth) {
      if (!begins) break;
      if (layout->block->wrap == TextWrap::kByWord && !byCharacter) {
        byCharacter = true;
        chunk.end = ChunkEnd(*layout, begins, byCharacter, &chunk.endsLine);
        MeasureChunk(*layout, &chunk);
        position = chunk.overhang;
      }
    }
    if (begins) line.overhang = PinToShort(chunk.overhang);
    position += chunk.width;
    layout->place = chunk.end;
    layout->font = chunk.font;
    if (blank) continue;
    line.end = chunk.end;
    line.width = PinToShort(position);
  }
  AppendLine(layout->block, line);
}

void LayOut(TextBlock* block) {
  const LineMetrics metrics = FontMetrics();
  block->lineUp = uint16_t(metrics.ascent + metrics.leadingAbove);
  block->lineDown = uint16_t(metrics.descent + metrics.leadingBelow);
  const TextFont first = FontInUse();
  Layout layout = {block, first, block->text, first};
  while (true) {
    while (*layout.place == ' ') ++layout.place;
    if (!*layout.place) break;
    LayLine(&layout);
  }
  UseFont(first);
}

int32_t LineHeight(const TextBlock* block) {
  return block->lineUp + block->lineDown;
}

// ---- Drawing -----------------------------------------------------------------------------------------------------

int32_t LineLeft(const TextBlock* block, const TextLine& line, const Rect& where) {
  switch (block->alignment) {
  case TextAlign::kCentre:
    return (where.left + where.right - line.width) / 2;
  case TextAlign::kRight:
    return where.right - line.width;
  default:
    return where.left;
  }
}

} // namespace

TextBlock* MakeTextBlock(const char* text, TextAlign alignment, TextWrap wrap, uint16_t wrapWidth) {
  auto* block = static_cast<TextBlock*>(MemAlloc(sizeof(TextBlock)));
  *block = {StrDup(text), wrapWidth, 0, alignment, wrap, false, 0, 0, {}};
  RecordArrayInit(&block->lines, sizeof(TextLine), kLineStep);
  LayOut(block);
  return block;
}

void FreeTextBlock(TextBlock* block) {
  RecordArrayFree(&block->lines);
  StrFree(block->text);
  MemFree(block);
}

TextSize TextBlockSize(const TextBlock* block) {
  const int32_t height = LineHeight(block);
  return {PinToShort(std::max<int32_t>(block->widest, height / 2)),
          PinToShort(std::max<int32_t>(1, block->lines.count) * height)};
}

void DrawBlock(const TextBlock* block, const Rect& where) {
  const SavedClip clip = NarrowClip(where.left, where.top, where.right, where.bottom);
  const TextFont first = FontInUse();
  TextFont font = first;
  const char* place = block->text;
  int32_t y = where.top + block->lineUp;
  for (uint16_t i = 0; i < block->lines.count; ++i, y += LineHeight(block)) {
    const auto& line = *static_cast<const TextLine*>(RecordArrayAt(&block->lines, i));
    // Commands between two lines count for the second.
    font = ForEachRun(place, line.start, font, first, [](const char*) {});
    int32_t x = LineLeft(block, line, where) + line.overhang;
    font = ForEachRun(line.start, line.end, font, first, [&](const char* run) {
      (block->grey ? DrawGreyText : DrawText)(x, y, run);
      const TextMeasure measure = MeasureText(run);
      x += measure.leftOverhang + measure.width;
    });
    place = line.end;
  }
  UseFont(first);
  RestoreClip(clip);
}

void DrawTextBlock(const Rect& where, const char* text, TextAlign alignment, TextWrap wrap, bool grey) {
  const auto width = uint16_t(std::max(0, where.right - where.left));
  TextBlock* block = MakeTextBlock(text, alignment, wrap, width);
  block->grey = grey;
  DrawBlock(block, where);
  FreeTextBlock(block);
}

TextSize MeasureTextBlock(const char* text, TextAlign alignment, TextWrap wrap, uint16_t wrapWidth) {
  TextBlock* block = MakeTextBlock(text, alignment, wrap, wrapWidth);
  const TextSize size = TextBlockSize(block);
  FreeTextBlock(block);
  return size;
}

TextSize MeasureLines(const char* text) {
  const LineMetrics metrics = FontMetrics();
  const int32_t step = metrics.ascent + metrics.descent + metrics.leadingAbove + metrics.leadingBelow;
  char* copy = StrDup(text);
  int32_t widest = 0, count = 0;
  for (const char* line = copy; line; ++count) {
    const char* end = StrFindEnd(line, '\n');
    const bool last = !*end;
    const TextMeasure measure = AsString(line, end, [](const char* run) { return MeasureText(run); });
    widest = std::max(widest, measure.leftOverhang + measure.width);
    line = last ? nullptr : end + 1;
  }
  StrFree(copy);
  return {PinToShort(widest), PinToShort(count * step)};
}

TextSize FittedTextSize(const char* text, TextAlign alignment, int16_t width, int16_t height) {
  const auto wrapped = [=](int32_t at) {
    return MeasureTextBlock(text, alignment, TextWrap::kByWord, uint16_t(PinValue(0, at, kWideOpen)));
  };
  const auto root = [](int64_t square) { return int32_t(std::sqrt(double(square))); };
  if (StrFind(text, '\n')) {
    const TextSize size = wrapped(width ? width : kWideOpen);
    const bool tooWide = !width && size.width > 2 * size.height;
    return tooWide ? wrapped(root(int64_t{size.width} * size.height * 3)) : size;
  }
  constexpr int32_t room = 6; // pixels, so that a text is not broken for a few
  if (width) return wrapped(width);
  const TextSize line = MeasureTextBlock(text, alignment, TextWrap::kNone, kWideOpen);
  const int64_t area = int64_t{line.width} * line.height;
  const int64_t asked = height == 0 ? root(2 * area) : height <= room ? area : area / (height - room);
  return wrapped(int32_t(std::min<int64_t>(asked + room, kWideOpen)));
}

} // namespace framereel
