// What the random animations do not reach: the ends of fields and tables, a display or memory that ends, and each form
// of the hot loop.
#include <unistd.h>

#include "core/app_strings.h"
#include "core/memory.h"
#include "core/rects.h"
#include "recorder/engine/cube_index.h"
#include "recorder/engine/frame_rates.h"
#include "recorder/recording.h"
#include "support/allocations.h"
#include "support/script.h"

namespace framereel {
namespace {

constexpr Rect kArea = {2, 3, 14, 21};

// ---- True colour to indices ---------------------------------------------------------------------------------------

TEST(CubeForms, GiveTheNearestLevelsAndTouchNothingElse) {
  Bytes bgr, expected; // the whole domain of each channel
  for (int value = 0; value < 256 * 256; ++value) {
    const auto v = uint8_t(value >> 8), o = uint8_t(value), third = uint8_t(v * 7 + o * 13);
    for (const PaletteColour c : {PaletteColour{v, o, third}, {third, v, o}, {o, third, v}}) {
      bgr.insert(bgr.end(), {c.blue, c.green, c.red});
      expected.push_back(PlainCubeIndex(c));
    }
  }
  const auto whole = [](const uint8_t* from, size_t count, uint8_t* indices) {
    BgrToCube(from, count, indices);
    return count;
  };
  std::vector<CubeForm> forms(CubeForms().begin(), CubeForms().end());
  forms.push_back(whole);
  for (const CubeForm form : forms) {
    for (size_t length = 0; length <= expected.size(); length = length == 200 ? expected.size() : length + 1) {
      Bytes indices(length, 0xE7), plain(expected.end() - ptrdiff_t(length), expected.end());
      // Ends with the last pixel, so that a read behind it is seen.
      const size_t done = form(bgr.data() + bgr.size() - 3 * length, length, indices.data());
      std::fill(plain.begin() + ptrdiff_t(done), plain.end(), uint8_t{0xE7});
      ASSERT_EQ(indices, plain) << length;
      ASSERT_LT(length - done, 64u);
    }
  }
  EXPECT_EQ(CubeForms().back()(bgr.data(), 31, expected.data()), 31u);
}

// ---- Frames -------------------------------------------------------------------------------------------------------

TEST(Engine, TakesFramesAsWideAndAsHighAsTheFieldsHold) {
  constexpr int16_t kMost = 0x7FFF;
  Bytes expected(kMost);
  for (const bool wide : {true, false}) {
    const int16_t width = wide ? kMost : 1, height = wide ? 1 : kMost;
    const Desktop desktop(width, height, 24);
    for (uint32_t i = 0; i < kMost; ++i) {
      TheMemoryDisplay().screen[i] = i * 559;
      expected[i] = PlainCubeIndex(MemoryColourOf(i * 559));
    }
    Recording recording({0, 0, height, width});
    recording.options.overlayBorder = false;
    ASSERT_TRUE(recording.Capture());
    TheMemoryDisplay().screen[kMost - 1] = 0xFFFFFF;
    ASSERT_TRUE(recording.Capture());
    const GifPicture gif = recording.Read();
    EXPECT_EQ(gif.frames.at(0).indices, expected);
    EXPECT_EQ(gif.frames.at(1).left + gif.frames.at(1).top, kMost - 1);
    EXPECT_EQ(gif.frames.at(1).indices, Bytes{215});
  }
}

TEST(Engine, TakesNothingOfAnAreaThatHasNoPixelsOrTooMany) {
  const Desktop desktop(40, 30, 8);
  const Rect half = {2, 3, 14, 4}; // of a block
  for (const Rect& area : {Rect{2, 3, 14, 3}, {2, 3, 2, 21}, {14, 3, 2, 21}, {-32768, 3, 32767, 21}, half, kArea}) {
    for (const uint16_t size : {kSize25, kSize100}) {
      Recording recording(area);
      recording.options.recordingSize = size;
      const bool takes = RectEqual(area, kArea) || (RectEqual(area, half) && size == kSize100);
      EXPECT_EQ(recording.Capture(), takes);
      EXPECT_EQ(recording.stream.streamSize > 0, takes);
    }
  }
}

// While memory ends, the hook may run a loop of its own, in which another capture comes in and does nothing. What
// happens when other memory ends stands in the tests of the command.
TEST(EngineDeathTest, ACaptureThatComesInWhileAnotherOneEndsForWantOfMemoryDoesNothing) {
  const Desktop desktop(40, 30, 24);
  Recording recording(kArea);
  const auto captureOnceMore = [](void* inner, uint32_t count) {
    RecorderState& recorder = static_cast<Recording*>(inner)->recorder;
    RecorderCaptureFrame(recorder, true);
    ::_exit(recorder.frameCount > 0 ? 4 : 2 + int(count));
  };
  SetMemFailureHook(captureOnceMore, &recording);
  ASSERT_EXIT((FailAllocations(0), recording.Capture()), testing::ExitedWithCode(3), "");
  SetMemFailureHook(nullptr, nullptr);
}

// ---- What the user is told ----------------------------------------------------------------------------------------

TEST(Engine, TellsOfAnAreaThatIsNotAllOnTheScreenAndTakesIt) {
  Desktop desktop(40, 30, 24);
  Recording recording(kArea);
  ASSERT_TRUE(recording.Capture());
  for (const auto& [width, height] : {std::pair{kArea.right - 1, 30}, {40, kArea.bottom - 1}}) {
    desktop.SetMode(width, height, 24);
    MemoryFill({5, 5, 9, 9}, 0xFFFFFF);
    EXPECT_TRUE(recording.Capture());
    EXPECT_EQ(recording.message.substr(0, 31), "Part of the recording area is n");
    EXPECT_TRUE(recording.buttons.grab);
    desktop.SetMode(kArea.right, kArea.bottom, 24);
    recording.Capture();
    EXPECT_EQ(recording.message, "");
  }
}

// ---- Words and tables ---------------------------------------------------------------------------------------------

TEST(ByteSizes, AreToldWithTheirTenthsCut) {
  const Desktop desktop(8, 8, 24); // the strings need the toolkit
  Dice dice(1);
  for (int round = 0; round < 5000; ++round) {
    const int32_t edge = (dice.OneIn(2) ? 1 : 100) << (10 * dice.Below(4));
    const uint32_t bytes =
        round % 2 ? uint32_t(edge + dice.Below(201) - 100) : uint32_t(dice.random()) >> dice.Below(32);
    char text[kByteSizeText];
    FormatByteSize(bytes, text);
    ASSERT_EQ(text, PlainByteSize(bytes)) << bytes;
  }
}

TEST(FrameRates, TellTheirDelaysAndAreTakenByTheFirstDelayThatReachesThem) {
  const Desktop desktop(8, 8, 24);
  uint16_t before = UINT16_MAX, index = 0;
  for (const FrameRate& rate : FrameRateTable) {
    const int number = std::stoi(AppString(rate.text));
    const bool slow = rate.delay > 1000;
    EXPECT_EQ(AppString(rate.text), Text(number, slow ? " spf" : " fps"));
    EXPECT_EQ(rate.delay, slow ? number * 1000 : 1000 / number);
    EXPECT_EQ(FrameRateIndex(before - 1), index++);
    before = rate.delay;
  }
}

} // namespace
} // namespace framereel
