// Animations of random doings on small desktops of every depth: each must be the plain rules' file byte for byte, or
// where the smallest one is asked for show the same in fewer bytes; its pictures must be what stood on the screen, and
// the user is told how it goes.
#include <algorithm>

#include "core/rects.h"
#include "platform/display/display_caps.h"
#include "recorder/recording.h"
#include "resources/standard_colours.h"
#include "win32/win32_system.h"

namespace framereel {
namespace {

constexpr int kWidths[] = {INT16_MAX, 2, 150}, kHeights[] = {2, INT16_MAX, 30}; // of desktops; most are of the last
constexpr int kDepths[] = {1, 2, 4, 8, 16, 24, 32}, kOtherDepth = 12;

int Depth() {
  return TheMemoryDisplay().layout.depth;
}

// What stands in the area, as indices. The pointer is white, and what lies off the screen black. On 16 colours the
// indices are those of the standard ones, whatever the screen's palette, by the palette that the animation began with.
Bytes IndicesOnScreen(const Rect& area, bool withPointer, const std::vector<PaletteColour>& firstPalette) {
  const MemoryDisplay& d = TheMemoryDisplay();
  Bytes indices;
  for (int32_t y = area.top; y < area.bottom; ++y) {
    for (int32_t x = area.left; x < area.right; ++x) {
      const int32_t dx = x - d.pointerX + d.hotX, dy = y - d.pointerY + d.hotY;
      const bool covered = withPointer && dx >= 0 && dy >= 0 && dx < d.pointerWidth && dy < d.pointerHeight;
      const bool seen = !covered && x < d.width && y < d.height;
      const uint8_t level = covered ? 255 : 0;
      const PaletteColour flat = {level, level, level};
      uint32_t index = seen ? MemoryPixel(x, y) : 0;
      if (!seen && Depth() <= 8) index = NearestColour(flat, d.palette.data(), int32_t(d.palette.size()));
      if (Depth() == 4) index = NearestColour(firstPalette[index], kStandardColours, kStandardColourCount);
      if (Depth() >= 16) index = PlainCubeIndex(seen ? MemoryColourOf(index) : flat);
      indices.push_back(uint8_t(index));
    }
  }
  return indices;
}

// Why the screen cannot be recorded, as the user is told it.
struct PlainVerdict {
  std::string inAnimation, onScreen; // how many colours; on the screen as last seen at a depth that can be recorded
  std::string message;
  int changes = 0;

  // With the area of the next frame.
  void See(const Rect& area) {
    if (Depth() != kOtherDepth) onScreen = Depth() >= 16 ? "millions of" : std::to_string(1 << Depth());
    std::string now;
    if (Depth() == kOtherDepth) {
      now = "Framereel does not support recording at the current bit depth (" + onScreen +
            " colours). Please change the monitor settings.";
    }
    if (inAnimation != "" && inAnimation != onScreen) {
      now = "Framereel animations cannot contain frames recorded at differing bit depths. To add more frames to the "
            "current animation, please restore the monitor settings (to " +
            inAnimation + " colours).";
    }
    const DisplayCaps& screen = TheDisplayCaps();
    if (now == "" && !RectInside(area, RectOf(0, 0, screen.screenWidth, screen.screenHeight))) {
      now = "Part of the recording area is not on the screen any more and is recorded as black. Please restore the "
            "monitor settings.";
    }
    changes += now.substr(0, 20) != message.substr(0, 20); // which of the two it is
    message = now;
  }
};

// Several animations, one after the other, of a screen on which something draws, moves the mouse, turns options and
// lets time pass.
class Film {
public:
  Film(int depth, uint32_t seed)
      : dice(seed), width(kWidths[std::min(seed % 20, 2u)]), height(kHeights[std::min(seed % 20, 2u)]),
        desktop(width, height, depth) {
    TheMemoryDisplay().tick = seed % 2 ? 0xFFFFF000 : 0; // the clock wraps during every other one
    verdict.See({});
  }

  void Animate() {
    recording.options.recordingSize = uint16_t(dice.OneIn(9) ? 65535 : dice.Below(3)); // past the table counts as full
    recording.options.loop = dice.OneIn(2);
    recording.options.smallest = smallest = dice.OneIn(2);
    size = std::min(recording.options.recordingSize, kSize100);
    SetScene();
    owner.assign(size_t(dice.OneIn(4) ? dice.Below(600) : 9), 'o');
    recording.recorder.ownerName = owner.c_str();
    recording.recorder.captureArea = area;
    plain = {};
    file.clear();
    screens.clear();
    bordered = false;
    for (int tick = 2 + dice.Below(15); tick > 0; --tick) {
      TurnOptions();
      LetTimePass();
      ASSERT_NO_FATAL_FAILURE(dice.OneIn(20) ? LoseDepth() : ExpectTold());
      ASSERT_NO_FATAL_FAILURE(Take());
      // The animation keeps what it began with.
      recording.recorder.captureArea = {};
      recording.options.recordingSize = uint16_t(dice.Below(4));
      recording.options.smallest = dice.OneIn(2);
    }
    ASSERT_NO_FATAL_FAILURE(ExpectFile());
  }

  // The animation goes, and often the depth.
  void Reset() {
    StreamClear(recording.stream);
    RecorderReset(recording.recorder);
    verdict.inAnimation.clear();
    for (const Rect& none : {Rect{}, {2, 3, 14, 3}, {2, 9, 14, 3}, {14, 3, 2, 21}, {-32768, 3, 32767, 21}, {}}) {
      recording.recorder.captureArea = none;
      ASSERT_FALSE(recording.Capture());
      verdict.See(none);
      ASSERT_NO_FATAL_FAILURE(ExpectTold());
      ASSERT_EQ(recording.status, "0 Frames (0 bytes)");
    }
    RecorderReset(recording.recorder); // there is none any more
    if (dice.OneIn(2)) SetDepth(kDepths[dice.Below(7)]);
  }

  static inline size_t smallestBytes = 0, plainBytes = 0; // of all animations that were to be small

private:
  // Area, colours and pointer. The sides of the area are whole blocks of the size.
  void SetScene() {
    changesDepth = Depth() >= 16 && dice.OneIn(3);
    changesSize = dice.OneIn(4);
    std::vector<PaletteColour>& all = TheMemoryDisplay().palette;
    if (!dice.OneIn(4)) std::generate(all.begin(), all.end(), [this] { return AnyColour(); });
    if (Depth() == 4 && dice.OneIn(2)) std::shuffle(all.begin(), all.end(), dice.random); // the standard ones
    for (uint32_t& colour : colours) colour = AnyPixel();
    if (Depth() == 8) colours[0] = 77, colours[1] = 255; // 77 is transparent at first
    MemoryDisplay& display = TheMemoryDisplay();
    display.hasPointer = dice.OneIn(3);
    display.pointerPixels.assign(6, 0xFFFFFFFF); // 3 by 2 of white, with the hot spot in them
    display.pointerWidth = 3, display.pointerHeight = 2, display.hotX = 2, display.hotY = 1;
    const int widths[] = {1, 5, 9, 18, 33, 65, 130, width}, heights[] = {1, 2, 9, 17, height};
    const int block = size == kSize100 ? 1 : 2 + size;
    const int lastWidth = area.right - area.left, lastHeight = area.bottom - area.top;
    if (lastWidth > 0 && lastWidth % block + lastHeight % block == 0 && dice.OneIn(2)) return; // the same once more
    const int across = std::max(block, std::min(dice.OneOf(widths), width) / block * block);
    const int down = std::max(block, std::min(dice.OneOf(heights), height) / block * block);
    const int left = dice.Below(std::max(width - across, 0) + 1), top = dice.Below(std::max(height - down, 0) + 1);
    area = RectOf(int16_t(left), int16_t(top), int16_t(across), int16_t(down));
  }

  // On a screen whose depth changes, one that no depth rounds to another level; on few colours, often as dark as
  // another.
  PaletteColour AnyColour() {
    uint8_t channels[3];
    const uint8_t steady[] = {0, 90, 170, 255};
    for (uint8_t& c : channels) c = changesDepth || Depth() < 4 ? steady[dice.Below(4)] : uint8_t(dice.random());
    return {channels[0], channels[1], channels[2]};
  }
  uint32_t AnyPixel() {
    const PaletteColour any = AnyColour();
    return Depth() < 16 ? uint32_t(dice.Below(1 << Depth())) : MemoryPixelOf(any.red, any.green, any.blue);
  }
  uint32_t NextPixel() {
    if (changesDepth) return AnyPixel();
    return Depth() == 8 && dice.OneIn(6) ? uint32_t(plain.captureTransparent) : colours[dice.Below(4)];
  }

  void TurnOptions() {
    RecordingOptions& o = recording.options;
    for (bool* usual : {&o.interframeTransparency, &o.recordTimingInfo, &o.overlayCursor}) *usual = !dice.OneIn(4);
    for (bool* rare : {&o.explorerCompatible, &o.overlayBorder}) *rare = dice.OneIn(4);
    o.frameDelay = uint16_t(25 * (1 + dice.Below(200)));
    if (screens.empty()) pointer = TheMemoryDisplay().hasPointer && o.overlayCursor;
  }

  void LetTimePass() {
    const int kind = dice.Below(40); // of the pause: short, longer than the field of 16 bits, longer than 2^31 ms
    ::Sleep(kind == 0 ? 0x80000000 + DWORD(dice.Below(1000000)) : DWORD(dice.Below(kind < 4 ? 2000000 : 700)));
    if (changesDepth && dice.OneIn(6)) SetDepth(8 * (2 + dice.Below(3)));
    if (changesSize && dice.OneIn(6)) { // also to one that the area does not lie on
      const int across = std::max(1, width >> dice.Below(4)), down = std::max(1, height >> dice.Below(3));
      // The program need not have heard of it.
      dice.OneIn(2) ? SetMode(across, down, Depth()) : MemoryDisplaySetMode(across, down, Depth());
    }
    MemoryDisplay& display = TheMemoryDisplay();
    if (!dice.OneIn(3)) DisplayMovePointer(area.left + dice.Below(40) - 4, area.top + dice.Below(20) - 3);
    if (dice.OneIn(6)) std::swap(display.pointerWidth, display.pointerHeight);
    for (int i = dice.Below(4); i > 0; --i) Draw();
  }

  // A point, a block, two rows or the whole area; with one colour, with noise, or with all colours of 256.
  void Draw() {
    const int x0 = area.left + dice.Below(area.right - area.left), y0 = area.top + dice.Below(area.bottom - area.top);
    const int kind = dice.Below(9), fill = dice.Below(4);
    PixelRect r = {x0, y0, x0 + 1, y0 + 1};
    if (kind < 3) r = {x0, y0, x0 + 1 + dice.Below(20), y0 + 1 + dice.Below(10)};
    if (kind == 3) r = {area.left, y0, area.right, y0 + 2};
    if (kind == 4 && fill < 2) r = {area.left, area.top, area.right, area.bottom};
    uint32_t next = NextPixel();
    for (int y = r.top; y < std::min(r.bottom, TheMemoryDisplay().height); ++y) {
      for (int x = r.left; x < std::min(r.right, TheMemoryDisplay().width); ++x) {
        MemoryPixel(x, y) = next;
        if (fill < 2) next = fill == 0 && Depth() == 8 ? (next + 1) & 255 : NextPixel();
      }
    }
  }

  void SetMode(int screenWidth, int screenHeight, int depth) {
    const bool isTold = depth != Depth(); // else it shows with the next frame
    desktop.SetMode(screenWidth, screenHeight, depth);
    if (isTold) verdict.See(verdict.inAnimation == "" ? recording.recorder.captureArea : area);
    ExpectTold();
  }
  void SetDepth(int depth) { SetMode(width, height, depth); }
  void ExpectTold() const {
    ASSERT_EQ(recording.message, verdict.message);
    ASSERT_EQ(recording.messageCalls, verdict.changes);
  }

  // For a while the screen has another depth, or two. Nothing can be recorded if the layout is another, too.
  void LoseDepth() {
    const int depth = Depth();
    for (int times = 1 + dice.Below(2); times > 0; --times) {
      SetDepth(dice.OneIn(4) ? kOtherDepth : kDepths[dice.Below(7)]);
      ASSERT_FALSE(verdict.message.rfind("Framereel", 0) == 0 && recording.Capture(dice.OneIn(2)));
    }
    SetDepth(depth);
  }

  void Take() {
    const bool grab = dice.OneIn(5);
    if (screens.empty()) palette = TheMemoryDisplay().palette;
    const Bytes screen = IndicesOnScreen(area, pointer, palette);
    if (screens.empty()) {
      plain = PlainBegin(Depth(), size, area.right - area.left, area.bottom - area.top, palette);
      head = PlainHeadOf(plain, recording.options.loop, owner);
      PlainWriteHead(file, head);
    }
    const auto frame = PlainTake(plain, screen, recording.options, grab, ::GetTickCount());
    verdict.See(area);
    ASSERT_EQ(recording.Capture(grab), frame.has_value());
    verdict.inAnimation = verdict.onScreen;
    if (frame) {
      PlainWriteFrame(file, head, *frame);
      screens.push_back(screen);
      bordered |= recording.options.overlayBorder;
    }
    const std::string frames = std::to_string(screens.size()) + (screens.size() == 1 ? " Frame (" : " Frames (");
    char bytes[kByteSizeText];
    FormatByteSize(uint32_t(smallest ? recording.stream.streamSize : file.size()), bytes);
    ASSERT_EQ(recording.status, frames + bytes + ")");
  }

  // What the foreign reader shows is what it shows of the plain file, and, at full size and but for the border, what
  // stood on the screen.
  void ExpectFile() {
    file.push_back(0x3B);
    const Bytes saved = recording.Saved();
    if (smallest) {
      smallestBytes += saved.size(), plainBytes += file.size();
    } else {
      ASSERT_TRUE(saved == file) << "byte "
                                 << std::mismatch(file.begin(), file.end(), saved.begin(), saved.end()).first -
                                        file.begin();
    }
    const GifPicture gif = recording.Read(), plainGif = ReadGif(file);
    ASSERT_EQ(gif.frames.size(), screens.size());
    for (size_t i = 0; i < gif.frames.size(); ++i) {
      const std::vector<uint32_t> shown = Composite(gif, i);
      ASSERT_EQ(shown, Composite(plainGif, i)) << "frame " << i;
      ASSERT_EQ(gif.frames[i].delay, plainGif.frames[i].delay) << "frame " << i;
      for (size_t k = 0; k < shown.size() && size == kSize100; ++k) {
        const int x = int(k) % gif.width, y = int(k) / gif.width;
        if (bordered && (x == 0 || y == 0 || x == gif.width - 1 || y == gif.height - 1)) continue;
        ASSERT_EQ(shown[k], plainGif.colours[screens[i][k]]) << "frame " << i << ", " << x << ", " << y;
      }
    }
  }

  Dice dice;
  const int width, height; // of the desktop
  Desktop desktop;
  Recording recording;
  PlainVerdict verdict;
  // Of the animation at hand.
  uint16_t size = 0;
  Rect area = {};
  bool smallest = false, changesDepth = false, changesSize = false, pointer = false, bordered = false;
  uint32_t colours[4] = {};
  std::string owner;
  PlainAnimation plain = {};
  PlainHead head = {};
  Bytes file;                         // that must come out
  std::vector<Bytes> screens;         // the indices on the screen at each frame
  std::vector<PaletteColour> palette; // as it began
};

class AnimationFuzz : public testing::TestWithParam<int> {};

TEST_P(AnimationFuzz, IsThePlainFileOrASmallerOneAndShowsWhatStoodOnTheScreen) {
  for (uint32_t seed = 0; seed < 60; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Film film(GetParam(), seed);
    for (int animation = 0; animation < 3; ++animation) {
      ASSERT_NO_FATAL_FAILURE(film.Animate()) << "animation " << animation;
      ASSERT_NO_FATAL_FAILURE(film.Reset());
    }
  }
  EXPECT_LT(Film::smallestBytes, Film::plainBytes * 9 / 10);
}

INSTANTIATE_TEST_SUITE_P(Depths, AnimationFuzz, testing::ValuesIn(kDepths),
                         [](const auto& depth) { return std::to_string(depth.param) + "Bits"; });

} // namespace
} // namespace framereel
