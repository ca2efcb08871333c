// Animations of random doings on small desktops of every depth, recorded and read back by a foreign reader: each frame
// must be as the plain rules say, and at full size the picture what stood on the screen.
#include <gtest/gtest.h>

#include <random>

#include "recorder/plain_difference.h"
#include "recorder/recording.h"
#include "support/desktop.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/pixels.h"

namespace framereel {
namespace {

constexpr int kWidth = 150, kHeight = 30; // of the desktop

PixelFormat FormatOf(int32_t depth) {
  return depth == 1   ? kFormat1Bit
         : depth == 2 ? kFormat2Bit
         : depth == 4 ? kFormat4Bit
         : depth == 8 ? kFormat8Bit
                      : kFormatTrueColour;
}

// Something on the screen that draws, moves the mouse, turns options and lets time pass.
class Actor {
public:
  Actor(uint32_t seed, int32_t screenDepth) : random(seed), depth(screenDepth) {
    changesDepth = depth >= 16 && Below(3) == 0;
    if (depth < 4 || depth == 8) {
      for (PaletteColour& c : TheMemoryDisplay().palette) c = AnyColour();
    }
    for (uint32_t& colour : colours) colour = AnyPixel();
    if (depth == 8) {
      colours[0] = 77; // transparent at first
      colours[1] = 255;
    }
    if (Below(3) == 0) ShowWhitePointer(3, 2, 1, 1);
  }

  int Below(int n) { return int(random() % uint32_t(n)); }

  // Its sides are whole blocks.
  Rect AnyArea(int block) {
    const int widths[] = {1, 5, 9, 18, 33, 65, 130}, heights[] = {1, 2, 9, 17};
    const int width = (widths[Below(7)] + block - 1) / block * block;
    const int height = (heights[Below(4)] + block - 1) / block * block;
    const int left = Below(kWidth - width + 1), top = Below(kHeight - height + 1);
    return {int16_t(top), int16_t(left), int16_t(top + height), int16_t(left + width)};
  }

  void TurnOptions(RecordingOptions& options) {
    for (bool* usual : {&options.interframeTransparency, &options.recordTimingInfo, &options.overlayCursor}) {
      *usual = Below(4) != 0;
    }
    for (bool* rare : {&options.explorerCompatible, &options.overlayBorder}) *rare = Below(4) == 0;
    options.frameDelay = uint16_t(25 * (1 + Below(200)));
  }

  void Act(Desktop& desktop, const Rect& area, int captureTransparent) {
    const int kind = Below(40); // of the pause: short, longer than the field of 16 bits, longer than 2^31 ms
    ::Sleep(kind == 0 ? 0x80000000 + DWORD(Below(1000000)) : DWORD(Below(kind < 4 ? 2000000 : 700)));
    if (changesDepth && Below(6) == 0) desktop.SetDepth(depth = 8 * (2 + Below(3)));
    DisplayMovePointer(area.left + Below(40) - 4, area.top + Below(20) - 3);
    for (int i = Below(4); i > 0; --i) Draw(area, captureTransparent);
  }

private:
  // On a screen whose depth changes, one that no depth rounds to another level; on few colours, often as dark as
  // another.
  PaletteColour AnyColour() {
    PaletteColour any = {uint8_t(random()), uint8_t(random()), uint8_t(random())};
    if (!changesDepth && depth >= 4) return any;
    const uint8_t steady[] = {0, 90, 170, 255};
    for (uint8_t* channel : {&any.red, &any.green, &any.blue}) *channel = steady[*channel % 4];
    return any;
  }

  uint32_t AnyPixel() {
    if (depth < 16) return uint32_t(Below(1 << depth));
    const PaletteColour any = AnyColour();
    return MemoryPixelOf(any.red, any.green, any.blue);
  }

  uint32_t Colour(int captureTransparent) {
    if (changesDepth) return AnyPixel();
    return depth == 8 && Below(6) == 0 ? uint32_t(captureTransparent) : colours[Below(4)];
  }

  void Draw(const Rect& area, int captureTransparent) {
    const int left = area.left + Below(area.right - area.left), top = area.top + Below(area.bottom - area.top);
    const int kind = Below(8);
    if (kind == 0 && depth == 8) { // all 256 colours, if the area has room for them
      int next = Below(256);
      for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) MemoryPixel(x, y) = uint32_t(next++ & 255);
      }
    } else if (kind <= 2) {
      MemoryFill({left, top, left + 1 + Below(20), top + 1 + Below(10)}, Colour(captureTransparent));
    } else if (kind == 3) { // noise
      for (int i = 0; i < 60; ++i) {
        const int x = left + i % 10, y = top + i / 10;
        if (x < kWidth && y < kHeight) MemoryPixel(x, y) = Colour(captureTransparent);
      }
    } else if (kind == 4) {
      MemoryFill({area.left, top, area.right, top + 2}, Colour(captureTransparent));
    } else {
      MemoryPixel(left, top) = Colour(captureTransparent);
    }
  }

  std::mt19937 random;
  int32_t depth;
  bool changesDepth;
  uint32_t colours[4];
};

// What stands in the area, as indices. The pointer is white.
std::vector<uint8_t> IndicesOnScreen(const Rect& area, bool withPointer) {
  const MemoryDisplay& d = TheMemoryDisplay();
  const bool palette = IsPalette(d.layout);
  const auto white =
      uint8_t(palette ? NearestColour({255, 255, 255}, d.palette.data(), int32_t(d.palette.size())) : 215);
  std::vector<uint8_t> indices;
  for (int32_t y = area.top; y < area.bottom; ++y) {
    for (int32_t x = area.left; x < area.right; ++x) {
      const int32_t dx = x - d.pointerX + d.hotX, dy = y - d.pointerY + d.hotY;
      const bool covered = withPointer && dx >= 0 && dy >= 0 && dx < d.pointerWidth && dy < d.pointerHeight;
      const uint32_t pixel = MemoryPixel(x, y);
      indices.push_back(covered ? white : palette ? uint8_t(pixel) : PlainCubeIndex(MemoryColourOf(pixel)));
    }
  }
  return indices;
}

// An animation in three tellings.
struct Take {
  GifPicture gif; // as it was read back
  PlainAnimation plain;
  std::vector<GifFrame> frames;              // that must be in the file
  std::vector<std::vector<uint8_t>> screens; // the indices on the screen at each of them
  bool bordered = false;                     // some frame has a border
};

void Record(int32_t depth, uint16_t recordingSize, uint32_t seed, Take& take) {
  Desktop desktop(kWidth, kHeight, depth);
  TheMemoryDisplay().tick = seed % 2 ? 0xFFFFF000 : 0; // the clock wraps during every other one
  Actor actor(seed, depth);
  RecordingOptions options;
  options.recordingSize = recordingSize;
  const Rect area = actor.AnyArea(recordingSize == kSize25 ? 2 : recordingSize == kSize44 ? 3 : 1);
  Recording recording(area, options);
  take.plain = PlainBegin(FormatOf(depth), std::min(recordingSize, kSize100), area.right - area.left,
                          area.bottom - area.top, TheMemoryDisplay().palette);
  bool pointer = false;
  for (int i = 0; i < 16; ++i) {
    actor.Act(desktop, area, take.plain.captureTransparent);
    actor.TurnOptions(recording.options);
    if (i == 0) pointer = TheMemoryDisplay().hasPointer && recording.options.overlayCursor;
    const bool grab = actor.Below(5) == 0;
    const std::vector<uint8_t> screen = IndicesOnScreen(area, pointer);
    const auto frame = PlainTake(take.plain, screen, recording.options, grab, ::GetTickCount());
    ASSERT_EQ(recording.Capture(grab), frame.has_value()) << "tick " << i;
    if (!frame) continue;
    take.bordered |= recording.options.overlayBorder;
    take.frames.push_back(*frame);
    take.screens.push_back(screen);
  }
  take.gif = recording.Read();
}

// As the reader tells colours.
uint32_t WordOf(const PaletteColour& colour) {
  return uint32_t{colour.red} << 16 | uint32_t{colour.green} << 8 | colour.blue;
}

void ExpectTable(const GifPicture& gif, const std::vector<PaletteColour>& table) {
  // Room for the colours and, but on 256 of them, a transparent index.
  ASSERT_EQ(gif.colours.size(), table.size() > 16 ? 256 : 2 * table.size());
  for (size_t i = 0; i < table.size(); ++i) ASSERT_EQ(gif.colours[i], WordOf(table[i])) << i;
}

void ExpectFrames(const GifPicture& gif, const Take& take) {
  ASSERT_EQ(gif.frames.size(), take.frames.size());
  for (size_t i = 0; i < gif.frames.size(); ++i) {
    SCOPED_TRACE(testing::Message() << "frame " << i);
    const GifFrame &frame = gif.frames[i], &plain = take.frames[i];
    ASSERT_EQ(frame.left, plain.left);
    ASSERT_EQ(frame.top, plain.top);
    ASSERT_EQ(frame.width, plain.width);
    ASSERT_EQ(frame.height, plain.height);
    ASSERT_EQ(frame.indices, plain.indices);
    ASSERT_EQ(frame.delay, plain.delay);
    ASSERT_EQ(frame.transparent, plain.transparent);
    ASSERT_EQ(frame.disposal, plain.disposal);
  }
}

// But for the border.
void ExpectPictures(const GifPicture& gif, const Take& take) {
  for (size_t i = 0; i < gif.frames.size(); ++i) {
    const std::vector<uint32_t> shown = Composite(gif, i);
    ASSERT_EQ(shown.size(), take.screens[i].size());
    for (size_t k = 0; k < shown.size(); ++k) {
      const int x = int(k) % gif.width, y = int(k) / gif.width;
      if (take.bordered && (x == 0 || y == 0 || x == gif.width - 1 || y == gif.height - 1)) continue;
      ASSERT_EQ(shown[k], gif.colours[take.screens[i][k]]) << "frame " << i << ", " << x << ", " << y;
    }
  }
}

class AnimationFuzz : public testing::TestWithParam<int32_t> {};

TEST_P(AnimationFuzz, EqualsThePlainRulesAndShowsWhatStoodOnTheScreen) {
  const uint16_t sizes[] = {kSize25, kSize44, kSize100, 65535}; // a size past the table counts as full
  for (uint32_t seed = 0; seed < 120; ++seed) {
    const uint16_t size = sizes[seed / 2 % 4];
    SCOPED_TRACE(testing::Message() << "size " << size << ", seed " << seed);
    Take take;
    ASSERT_NO_FATAL_FAILURE(Record(GetParam(), size, seed, take));
    const GifPicture& gif = take.gif;
    ASSERT_EQ(gif.width, PlainOutputSide(size, take.plain.width));
    ASSERT_EQ(gif.height, PlainOutputSide(size, take.plain.height));
    ASSERT_NO_FATAL_FAILURE(ExpectTable(gif, PlainColourTable(take.plain)));
    ASSERT_NO_FATAL_FAILURE(ExpectFrames(gif, take));
    if (size < kSize100) continue;
    ASSERT_NO_FATAL_FAILURE(ExpectPictures(gif, take));
  }
}

INSTANTIATE_TEST_SUITE_P(Depths, AnimationFuzz, testing::Values(1, 2, 4, 8, 16, 24, 32),
                         [](const auto& depth) { return std::to_string(depth.param) + "Bits"; });

} // namespace
} // namespace framereel
