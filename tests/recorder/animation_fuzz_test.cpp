// Animations of random doings on small desktops of every depth, frame by frame against the plain rules, and then as the
// file that comes out, read back by a foreign reader and laid over what stood on the screen.
#include <gtest/gtest.h>

#include <random>

#include "recorder/plain_difference.h"
#include "recorder/recording.h"
#include "support/desktop.h"
#include "support/gif_reader.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels.h"

namespace framereel {
namespace {

struct Scenario {
  int32_t depth;
  uint16_t recordingSize;
  uint32_t seed;
};

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
  explicit Actor(const Scenario& scenario) : random(scenario.seed), depth(scenario.depth) {
    changesDepth = depth >= 16 && Below(3) == 0;
    showsPointer = Below(3) == 0;
    if (depth < 4 || depth == 8) ShufflePalette();
    for (uint32_t& colour : colours) colour = AnyPixel();
    if (depth == 8) colours[0] = 77;
    if (showsPointer) ShowWhitePointer(3, 2, 1, 1);
  }

  int Below(int n) { return int(random() % uint32_t(n)); }
  bool Often() { return Below(4) != 0; }

  Rect AnyArea(int denominator) {
    const int widths[] = {1, 5, 9, 33, 18, 67, 130}, heights[] = {1, 2, 9, 17};
    const auto whole = [denominator](int side) { return (side + denominator - 1) / denominator * denominator; };
    const int width = whole(widths[Below(7)]), height = whole(heights[Below(4)]);
    const int left = Below(kWidth - width + 1), top = Below(kHeight - height + 1);
    return {int16_t(top), int16_t(left), int16_t(top + height), int16_t(left + width)};
  }

  void TurnOptions(RecordingOptions& options) {
    options.interframeTransparency = Often();
    options.explorerCompatible = !Often();
    options.recordTimingInfo = Often();
    options.overlayBorder = !Often();
    options.frameDelay = uint16_t(25 * (1 + Below(200)));
  }

  void Act(Desktop& desktop, const Rect& area, int captureTransparent) {
    ::Sleep(DWORD(Below(10) == 0 ? Below(2000000) : Below(700)));
    if (changesDepth && Below(6) == 0) desktop.SetDepth(depth = 8 * (2 + Below(3)));
    if (showsPointer) DisplayMovePointer(area.left + Below(40) - 4, area.top + Below(20) - 3);
    for (int i = Below(4); i > 0; --i) Draw(area, captureTransparent);
  }

  static constexpr int kWidth = 150, kHeight = 30;

private:
  void ShufflePalette() {
    for (PaletteColour& colour : TheMemoryDisplay().palette) {
      const auto any = uint32_t(random());
      colour = {uint8_t(any), uint8_t(any >> 8), uint8_t(any >> 16)};
    }
  }

  // On a screen whose depth changes, colours that no depth rounds to another level.
  uint32_t AnyPixel() {
    const uint8_t steady[] = {0, 90, 170, 255};
    if (depth < 16) return uint32_t(Below(1 << depth));
    const auto channel = [&] { return changesDepth ? steady[Below(4)] : uint8_t(random()); };
    const uint8_t red = channel(), green = channel(), blue = channel();
    return MemoryPixelOf(red, green, blue);
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
  bool changesDepth, showsPointer;
  uint32_t colours[4];
};

PaletteColour WithPointer(int32_t x, int32_t y, bool* covered) {
  const MemoryDisplay& display = TheMemoryDisplay();
  const int32_t dx = x - display.pointerX + display.hotX, dy = y - display.pointerY + display.hotY;
  *covered = display.hasPointer && dx >= 0 && dy >= 0 && dx < display.pointerWidth && dy < display.pointerHeight;
  return {255, 255, 255};
}

// What stands in the area, white pointer included, as indices.
std::vector<uint8_t> IndicesOnScreen(const Rect& area) {
  const MemoryDisplay& display = TheMemoryDisplay();
  const bool palette = IsPalette(display.layout);
  std::vector<uint8_t> indices;
  for (int32_t y = area.top; y < area.bottom; ++y) {
    for (int32_t x = area.left; x < area.right; ++x) {
      bool covered = false;
      const PaletteColour white = WithPointer(x, y, &covered);
      if (palette) {
        const auto nearest = uint8_t(NearestColour(white, display.palette.data(), int32_t(display.palette.size())));
        indices.push_back(covered ? nearest : uint8_t(MemoryPixel(x, y)));
      } else {
        indices.push_back(PlainCubeIndex(covered ? white : MemoryColourOf(MemoryPixel(x, y))));
      }
    }
  }
  return indices;
}

void ExpectFrame(const RecorderState& recorder, const PlainAnimation& plain, const PlainFrame& frame) {
  ASSERT_EQ(recorder.frameCount, plain.frames);
  ASSERT_EQ(recorder.colours.captureTransparent, plain.captureTransparent);
  ASSERT_EQ(recorder.colours.outputTransparent, plain.outputTransparent);
  ASSERT_EQ(recorder.colours.blackIndex, plain.blackIndex);
  const size_t pixels = plain.previous.size();
  ASSERT_EQ(std::vector<uint8_t>(recorder.previousFrame, recorder.previousFrame + pixels), plain.previous);
  if (!frame.written) {
    ASSERT_LT(recorder.dirtyWidth, 1);
    return;
  }
  ASSERT_EQ(recorder.dirtyLeft - recorder.frameLeft, frame.left);
  ASSERT_EQ(recorder.dirtyTop - recorder.frameTop, frame.top);
  ASSERT_EQ(recorder.dirtyRight, recorder.dirtyLeft + frame.width);
  ASSERT_EQ(recorder.dirtyBottom, recorder.dirtyTop + frame.height);
  ASSERT_EQ(recorder.dirtyWidth, frame.width);
  ASSERT_EQ(recorder.dirtyHeight, frame.height);
  for (int i = 0; i < frame.width * frame.height; ++i) {
    const int x = frame.left + i % frame.width, y = frame.top + i / frame.width;
    ASSERT_EQ(recorder.workFrame[y * plain.width + x], frame.pixels[size_t(i)]) << x << ", " << y;
  }
}

// A whole animation, in three tellings.
struct Take {
  std::vector<uint8_t> file;
  PlainAnimation plain;
  std::vector<PlainFrame> frames;            // that were written
  std::vector<std::vector<uint8_t>> screens; // the indices on the screen at each of them
  bool bordered = false;                     // some frame has a border
};

void Record(const Scenario& scenario, Take& take) {
  Desktop desktop(Actor::kWidth, Actor::kHeight, scenario.depth);
  TheMemoryDisplay().tick = scenario.seed % 2 ? 0xFFFFF000 : 0; // the clock wraps during every other one
  Actor actor(scenario);
  RecordingOptions options;
  options.recordingSize = scenario.recordingSize;
  const Rect area = actor.AnyArea(scenario.recordingSize == kSize25 ? 2 : scenario.recordingSize == kSize44 ? 3 : 1);
  Recording recording(area, options);
  take.plain = PlainBegin(FormatOf(scenario.depth), scenario.recordingSize, area.right - area.left,
                          area.bottom - area.top, TheMemoryDisplay().palette);
  for (int i = 0; i < 16; ++i) {
    SCOPED_TRACE(testing::Message() << "tick " << i);
    actor.Act(desktop, area, take.plain.captureTransparent);
    actor.TurnOptions(recording.options);
    const bool grab = actor.Below(5) == 0;
    const uint32_t streamSize = recording.stream.streamSize;
    const std::vector<uint8_t> screen = IndicesOnScreen(area);
    const PlainFrame frame = PlainTake(take.plain, screen, recording.options, grab, ::GetTickCount());
    ASSERT_EQ(recording.Capture(grab), frame.written);
    ASSERT_NO_FATAL_FAILURE(ExpectFrame(recording.recorder, take.plain, frame));
    if (!frame.written) {
      ASSERT_EQ(recording.stream.streamSize, streamSize);
      continue;
    }
    take.bordered |= recording.options.overlayBorder;
    take.frames.push_back(frame);
    take.screens.push_back(screen);
  }
  take.file = recording.Saved();
}

// As the reader tells colours.
uint32_t WordOf(const PaletteColour& colour) {
  return uint32_t{colour.red} << 16 | uint32_t{colour.green} << 8 | colour.blue;
}

void ExpectTable(const GifPicture& gif, const Take& take) {
  const std::vector<PaletteColour> table = PlainColourTable(take.plain);
  // Room for the colours and, but on 256 of them, a transparent index.
  const size_t entries = table.size() > 16 ? 256 : 2 * table.size();
  ASSERT_EQ(gif.colours.size(), entries);
  for (size_t i = 0; i < table.size(); ++i) {
    ASSERT_EQ(gif.colours[i], WordOf(table[i])) << i;
  }
}

void ExpectFramesInFile(const GifPicture& gif, const Take& take) {
  ASSERT_EQ(gif.frames.size(), take.frames.size());
  for (size_t i = 0; i < gif.frames.size(); ++i) {
    SCOPED_TRACE(testing::Message() << "frame " << i);
    const GifFrame& frame = gif.frames[i];
    const PlainFrame& plain = take.frames[i];
    ASSERT_EQ(frame.left, plain.left);
    ASSERT_EQ(frame.top, plain.top);
    ASSERT_EQ(frame.width, plain.width);
    ASSERT_EQ(frame.height, plain.height);
    ASSERT_EQ(frame.indices, plain.pixels);
    ASSERT_EQ(frame.delay, plain.delay);
    ASSERT_EQ(frame.transparent, plain.transparent ? plain.transparentIndex : -1);
  }
}

// The picture after each frame is what stood on the screen, but for the border.
void ExpectPictures(const GifPicture& gif, const Take& take) {
  const std::vector<PaletteColour> table = PlainColourTable(take.plain);
  for (size_t i = 0; i < gif.frames.size(); ++i) {
    const std::vector<uint8_t> image = PlainReduction(take.plain, take.screens[i]);
    const std::vector<uint32_t> shown = Composite(gif, i);
    ASSERT_EQ(shown.size(), image.size());
    for (size_t k = 0; k < image.size(); ++k) {
      const int x = int(k) % gif.width, y = int(k) / gif.width;
      if (take.bordered && (x == 0 || y == 0 || x == gif.width - 1 || y == gif.height - 1)) continue;
      ASSERT_EQ(shown[k], WordOf(table[image[k]])) << "frame " << i << ", " << x << ", " << y;
    }
  }
}

class AnimationFuzz : public testing::TestWithParam<int32_t> {};

TEST_P(AnimationFuzz, EqualsThePlainRulesFrameByFrameAndAsAFile) {
  for (uint32_t seed = 0; seed < 3 * 30; ++seed) {
    const Scenario scenario = {GetParam(), uint16_t(seed % 3), seed};
    SCOPED_TRACE(testing::Message() << "size " << scenario.recordingSize << ", seed " << seed);
    Take take;
    ASSERT_NO_FATAL_FAILURE(Record(scenario, take));
    const GifPicture gif = ReadGif(take.file);
    ASSERT_EQ(gif.error, "");
    ASSERT_EQ(gif.width, PlainOutputSide(scenario.recordingSize, take.plain.width));
    ASSERT_EQ(gif.height, PlainOutputSide(scenario.recordingSize, take.plain.height));
    ASSERT_NO_FATAL_FAILURE(ExpectTable(gif, take));
    ASSERT_NO_FATAL_FAILURE(ExpectFramesInFile(gif, take));
    // A reduced frame without transparency that shows nothing but colour 77 has no index for it on 256 colours.
    if (scenario.depth != 8 || scenario.recordingSize == kSize100) ExpectPictures(gif, take);
  }
}

TEST_P(AnimationFuzz, GivesTheSameBytesForTheSameFrames) {
  for (uint32_t seed = 0; seed < 3; ++seed) {
    Take first, second;
    const Scenario scenario = {GetParam(), uint16_t(seed), 100 + seed};
    ASSERT_NO_FATAL_FAILURE(Record(scenario, first));
    ASSERT_NO_FATAL_FAILURE(Record(scenario, second));
    EXPECT_EQ(first.file, second.file);
  }
}

INSTANTIATE_TEST_SUITE_P(Depths, AnimationFuzz, testing::Values(1, 2, 4, 8, 16, 24, 32),
                         [](const auto& depth) { return std::to_string(depth.param) + "Bits"; });

} // namespace
} // namespace framereel
