// Animations of random doings on small desktops of every depth: each must be the plain rules' file byte for byte, its
// pictures must be what stood on the screen, and the user is told how it goes.
#include <gtest/gtest.h>

#include <algorithm>

#include "gif/stream_bytes.h"
#include "recorder/plain_difference.h"
#include "recorder/recording.h"
#include "resources/standard_colours.h"
#include "support/desktop.h"
#include "support/dice.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/pixels.h"

namespace framereel {
namespace {

constexpr int kWidth = 150, kHeight = 30; // of the desktop
constexpr int kDepths[] = {1, 2, 4, 8, 16, 24, 32};

PixelFormat FormatOf(int depth) {
  return depth == 1   ? kFormat1Bit
         : depth == 2 ? kFormat2Bit
         : depth == 4 ? kFormat4Bit
         : depth == 8 ? kFormat8Bit
                      : kFormatTrueColour;
}

// Something on the screen that draws, moves the mouse and turns options. It lasts as long as an animation.
class Actor {
public:
  Actor(Dice& chance, Desktop& mine) : dice(chance), desktop(mine), depth(TheMemoryDisplay().layout.depth) {
    changesDepth = depth >= 16 && dice.OneIn(3);
    changesSize = dice.OneIn(4);
    std::vector<PaletteColour>& palette = TheMemoryDisplay().palette;
    if (!dice.OneIn(4)) std::generate(palette.begin(), palette.end(), [this] { return AnyColour(); });
    if (depth == 4 && dice.OneIn(2)) std::shuffle(palette.begin(), palette.end(), dice.random); // the standard ones
    for (uint32_t& colour : colours) colour = AnyPixel();
    if (depth == 8) colours[0] = 77; // transparent at first
    if (depth == 8) colours[1] = 255;
    TheMemoryDisplay().hasPointer = false;
    if (dice.OneIn(3)) ShowWhitePointer(3, 2, 1, 1);
  }

  // Its sides are whole blocks of the size.
  Rect AnyArea(uint16_t recordingSize) {
    const int block = recordingSize == kSize25 ? 2 : recordingSize == kSize44 ? 3 : 1;
    const int widths[] = {1, 5, 9, 18, 33, 65, 130}, heights[] = {1, 2, 9, 17};
    const int width = (widths[dice.Below(7)] + block - 1) / block * block;
    const int height = (heights[dice.Below(4)] + block - 1) / block * block;
    const int left = dice.Below(kWidth - width + 1), top = dice.Below(kHeight - height + 1);
    return {int16_t(top), int16_t(left), int16_t(top + height), int16_t(left + width)};
  }

  void TurnOptions(RecordingOptions& options) {
    for (bool* usual : {&options.interframeTransparency, &options.recordTimingInfo, &options.overlayCursor}) {
      *usual = !dice.OneIn(4);
    }
    for (bool* rare : {&options.explorerCompatible, &options.overlayBorder}) *rare = dice.OneIn(4);
    options.frameDelay = uint16_t(25 * (1 + dice.Below(200)));
  }

  void Act(const Rect& area, int captureTransparent) {
    const int kind = dice.Below(40); // of the pause: short, longer than the field of 16 bits, longer than 2^31 ms
    ::Sleep(kind == 0 ? 0x80000000 + DWORD(dice.Below(1000000)) : DWORD(dice.Below(kind < 4 ? 2000000 : 700)));
    if (changesDepth && dice.OneIn(6)) desktop.SetMode(kWidth, kHeight, depth = 8 * (2 + dice.Below(3)));
    // Also to one that the area does not lie on, which the program need not have heard of.
    if (changesSize && dice.OneIn(6)) MemoryDisplaySetMode(kWidth >> dice.Below(4), kHeight >> dice.Below(3), depth);
    DisplayMovePointer(area.left + dice.Below(40) - 4, area.top + dice.Below(20) - 3);
    for (int i = dice.Below(4); i > 0; --i) Draw(area, captureTransparent);
  }

private:
  // On a screen whose depth changes, one that no depth rounds to another level; on few colours, often as dark as
  // another.
  PaletteColour AnyColour() {
    const auto channel = [this]() -> uint8_t {
      const uint8_t steady[] = {0, 90, 170, 255};
      return changesDepth || depth < 4 ? steady[dice.Below(4)] : uint8_t(dice.random());
    };
    return {channel(), channel(), channel()};
  }

  uint32_t AnyPixel() {
    if (depth < 16) return uint32_t(dice.Below(1 << depth));
    const PaletteColour any = AnyColour();
    return MemoryPixelOf(any.red, any.green, any.blue);
  }

  uint32_t Colour(int captureTransparent) {
    if (changesDepth) return AnyPixel();
    return depth == 8 && dice.OneIn(6) ? uint32_t(captureTransparent) : colours[dice.Below(4)];
  }

  // A point, a block, two rows or the whole area; with one colour, with noise, or with all colours of 256.
  void Draw(const Rect& area, int captureTransparent) {
    const int left = area.left + dice.Below(area.right - area.left),
              top = area.top + dice.Below(area.bottom - area.top);
    const int kind = dice.Below(9), fill = dice.Below(4);
    PixelRect r = {left, top, left + 1, top + 1};
    if (kind < 3) r = {left, top, left + 1 + dice.Below(20), top + 1 + dice.Below(10)};
    if (kind == 3) r = {area.left, top, area.right, top + 2};
    if (kind == 4 && fill < 2) r = {area.left, area.top, area.right, area.bottom};
    uint32_t next = Colour(captureTransparent);
    for (int y = r.top; y < std::min(r.bottom, TheMemoryDisplay().height); ++y) {
      for (int x = r.left; x < std::min(r.right, TheMemoryDisplay().width); ++x) {
        MemoryPixel(x, y) = next;
        if (fill == 0) next = depth == 8 ? (next + 1) & 255 : Colour(captureTransparent);
        if (fill == 1) next = Colour(captureTransparent);
      }
    }
  }

  Dice& dice;
  Desktop& desktop;
  int depth;
  bool changesDepth, changesSize;
  uint32_t colours[4];
};

// What stands in the area, as indices. The pointer is white, and what lies off the screen black. On 16 colours the
// indices are those of the standard ones, whatever the screen's palette, by the palette that the animation began with.
Bytes IndicesOnScreen(const Rect& area, bool withPointer, const std::vector<PaletteColour>& firstPalette) {
  const MemoryDisplay& d = TheMemoryDisplay();
  const int depth = d.layout.depth, count = int(d.palette.size());
  Bytes indices;
  for (int32_t y = area.top; y < area.bottom; ++y) {
    for (int32_t x = area.left; x < area.right; ++x) {
      const int32_t dx = x - d.pointerX + d.hotX, dy = y - d.pointerY + d.hotY;
      const bool covered = withPointer && dx >= 0 && dy >= 0 && dx < d.pointerWidth && dy < d.pointerHeight;
      const uint8_t level = covered ? 255 : 0;
      const uint32_t pixel = !covered && x < d.width && y < d.height ? MemoryPixel(x, y)
                             : depth >= 16                           ? MemoryPixelOf(level, level, level)
                                           : uint32_t(NearestColour({level, level, level}, d.palette.data(), count));
      indices.push_back(depth >= 16  ? PlainCubeIndex(MemoryColourOf(pixel))
                        : depth == 4 ? uint8_t(NearestColour(firstPalette[pixel], kStandardColours, 16))
                                     : uint8_t(pixel));
    }
  }
  return indices;
}

// Why the screen cannot be recorded, as the user is told it.
struct PlainVerdict {
  std::string inAnimation, onScreen; // in words how many colours; on the screen as last seen at a depth that is one
  std::string message;
  int changes = 0;

  void See(int depth) {
    if (depth != 12) onScreen = depth >= 16 ? "millions of" : std::to_string(1 << depth);
    const std::string before = message;
    message =
        inAnimation != "" && inAnimation != onScreen
            ? "Framereel animations cannot contain frames recorded at differing bit depths. To add more frames to "
              "the current animation, please restore the monitor settings (to " +
                  inAnimation + " colours)."
        : depth == 12 ? "Framereel does not support recording at the current bit depth (" + onScreen +
                            " colours). Please change the monitor settings."
                      : "";
    changes += message.substr(0, 20) != before.substr(0, 20); // which of the two it is
  }
};

// Several animations, one after the other.
class Film {
public:
  Film(int depth, uint32_t seed) : dice(seed), desktop(kWidth, kHeight, depth) {
    TheMemoryDisplay().tick = seed % 2 ? 0xFFFFF000 : 0; // the clock wraps during every other one
    verdict.See(depth);
  }

  void Animate() {
    Actor actor(dice, desktop);
    recording.options.recordingSize = uint16_t(dice.OneIn(9) ? 65535 : dice.Below(3)); // past the table counts as full
    recording.options.loop = dice.OneIn(2);
    const uint16_t size = std::min(recording.options.recordingSize, kSize100);
    const Rect area = actor.AnyArea(size);
    recording.recorder.captureArea = area;
    file.clear();
    screens.clear();
    bordered = false;
    for (int tick = 2 + dice.Below(15); tick > 0; --tick) {
      actor.TurnOptions(recording.options);
      if (screens.empty()) pointer = TheMemoryDisplay().hasPointer && recording.options.overlayCursor;
      actor.Act(area, plain.captureTransparent);
      ASSERT_NO_FATAL_FAILURE(dice.OneIn(20) ? LoseDepth() : ExpectTold());
      ASSERT_NO_FATAL_FAILURE(Take(area, size));
      // The animation keeps what it began with.
      recording.recorder.captureArea = actor.AnyArea(kSize100);
      recording.options.recordingSize = uint16_t(dice.Below(4));
    }
    ASSERT_NO_FATAL_FAILURE(ExpectFile(size));
  }

  // The animation goes, and often the depth.
  void Reset() {
    StreamClear(recording.stream);
    RecorderReset(recording.recorder);
    verdict.inAnimation.clear();
    verdict.See(TheMemoryDisplay().layout.depth);
    ASSERT_NO_FATAL_FAILURE(ExpectTold());
    ASSERT_EQ(recording.status, "0 Frames (0 bytes)");
    RecorderReset(recording.recorder); // there is none any more
    if (dice.OneIn(2)) SetDepth(kDepths[dice.Below(7)]);
  }

private:
  void SetDepth(int depth) {
    desktop.SetMode(kWidth, kHeight, depth);
    verdict.See(depth);
    ExpectTold();
  }

  void ExpectTold() const {
    ASSERT_EQ(recording.message, verdict.message);
    ASSERT_EQ(recording.messageCalls, verdict.changes);
  }

  // For a while the screen has another depth, or two. Nothing can be recorded if the layout is another, too.
  void LoseDepth() {
    const int depth = TheMemoryDisplay().layout.depth;
    for (int times = 1 + dice.Below(2); times > 0; --times) {
      SetDepth(dice.OneIn(4) ? 12 : kDepths[dice.Below(7)]);
      ASSERT_TRUE(verdict.message == "" || !recording.Capture(dice.OneIn(2)));
    }
    SetDepth(depth);
  }

  void Take(const Rect& area, uint16_t size) {
    const bool grab = dice.OneIn(5);
    if (screens.empty()) palette = TheMemoryDisplay().palette;
    const Bytes screen = IndicesOnScreen(area, pointer, palette);
    if (screens.empty()) {
      plain = PlainBegin(FormatOf(TheMemoryDisplay().layout.depth), size, area.right - area.left,
                         area.bottom - area.top, palette);
      head = PlainHeadOf(plain, recording.options.loop ? 0 : -1, recording.recorder.ownerName);
      PlainWriteHead(file, head);
    }
    const auto frame = PlainTake(plain, screen, recording.options, grab, ::GetTickCount());
    if (frame) PlainWriteFrame(file, head, *frame);
    ASSERT_EQ(recording.Capture(grab), frame.has_value());
    verdict.inAnimation = verdict.onScreen;
    if (frame) screens.push_back(screen);
    if (frame) bordered |= recording.options.overlayBorder;
    const std::string frames = std::to_string(screens.size()) + (screens.size() == 1 ? " Frame (" : " Frames (");
    ASSERT_EQ(recording.status, frames + PlainByteSize(uint32_t(file.size())) + ")");
  }

  // What the foreign reader shows is what stood on the screen, at full size and but for the border.
  void ExpectFile(uint16_t size) {
    file.push_back(0x3B);
    const auto differ = std::mismatch(file.begin(), file.end(), recording.Saved().begin()).first - file.begin();
    ASSERT_EQ(recording.Saved() == file, true)
        << "byte " << differ << " of " << file.size() << " depth " << TheMemoryDisplay().layout.depth << " size "
        << size << " head " << int(recording.Saved()[size_t(differ)]) << " " << int(file[size_t(differ)]) << " "
        << screens.size();
    const GifPicture gif = recording.Read();
    ASSERT_EQ(gif.frames.size(), screens.size());
    for (size_t i = 0; i < gif.frames.size() && size == kSize100; ++i) {
      const std::vector<uint32_t> shown = Composite(gif, i);
      ASSERT_EQ(shown.size(), screens[i].size());
      for (size_t k = 0; k < shown.size(); ++k) {
        const int x = int(k) % gif.width, y = int(k) / gif.width;
        if (bordered && (x == 0 || y == 0 || x == gif.width - 1 || y == gif.height - 1)) continue;
        ASSERT_EQ(shown[k], gif.colours[screens[i][k]]) << "frame " << i << ", " << x << ", " << y;
      }
    }
  }

  Dice dice;
  Desktop desktop;
  Recording recording;
  PlainVerdict verdict;
  PlainAnimation plain = {};
  PlainHead head = {};
  Bytes file;                         // that must come out
  std::vector<Bytes> screens;         // the indices on the screen at each frame
  std::vector<PaletteColour> palette; // as it began
  bool pointer = false, bordered = false;
};

class AnimationFuzz : public testing::TestWithParam<int> {};

TEST_P(AnimationFuzz, IsThePlainFileAndShowsWhatStoodOnTheScreen) {
  for (uint32_t seed = 0; seed < 60; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Film film(GetParam(), seed);
    for (int animation = 0; animation < 3; ++animation) {
      ASSERT_NO_FATAL_FAILURE(film.Animate()) << "animation " << animation;
      ASSERT_NO_FATAL_FAILURE(film.Reset());
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Depths, AnimationFuzz, testing::ValuesIn(kDepths),
                         [](const auto& depth) { return std::to_string(depth.param) + "Bits"; });

} // namespace
} // namespace framereel
