// What the random animations do not reach: each form of the hot loop, large numbers, and the rates of the popup.
#include <unistd.h>

#include "core/app_strings.h"
#include "core/memory.h"
#include "recorder/engine/cube_index.h"
#include "recorder/engine/frame_rates.h"
#include "recorder/recording.h"
#include "support/allocations.h"
#include "support/script.h"

namespace framereel {
namespace {

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

// ---- An end for want of memory -------------------------------------------------------------------------------------

// The hook, which may run a loop, knows then that a frame is being taken, and another capture does nothing. What
// happens when other memory ends stands in the tests of the programs.
TEST(EngineDeathTest, ACaptureThatComesInWhileAnotherOneEndsForWantOfMemoryDoesNothing) {
  const Desktop desktop(40, 30, 24);
  Recording recording({2, 3, 14, 21});
  const auto captureOnceMore = [](void* recorder, uint32_t count) {
    RecorderCaptureFrame(*static_cast<RecorderState*>(recorder), true);
    ::_exit(2 + int(count));
  };
  SetMemFailureHook(captureOnceMore, &recording.recorder);
  ASSERT_EXIT((FailAllocations(0), recording.Capture()), testing::ExitedWithCode(3), "");
  SetMemFailureHook(nullptr, nullptr);
}

// ---- Words and tables ---------------------------------------------------------------------------------------------

TEST(Words, TellSizesWithTheirTenthsCutAndRatesByTheirDelays) {
  const Desktop desktop(8, 8, 24); // the strings need the toolkit
  constexpr uint32_t kK = 1 << 10, kM = 1 << 20, kG = 1 << 30;
  const std::pair<uint32_t, const char*> cases[] = {{1, "1 byte"},
                                                    {kK - 1, "1023 bytes"},
                                                    {kK, "1K"},
                                                    {kK + kK / 5, "1.1K"},
                                                    {100 * kK - 1, "99.9K"},
                                                    {101 * kK - 1, "100K"},
                                                    {kM + kM / 10 + 1, "1.1M"},
                                                    {200 * kM - 1, "199M"},
                                                    {kG, "1G"},
                                                    {UINT32_MAX, "3.9G"}};
  for (const auto& [bytes, expected] : cases) {
    char text[kByteSizeText];
    FormatByteSize(bytes, text);
    EXPECT_STREQ(text, expected) << bytes;
  }
  for (const FrameRate& rate : FrameRateTable) {
    const int number = std::stoi(AppString(rate.text));
    const bool slow = rate.delay > 1000;
    EXPECT_EQ(AppString(rate.text), Text(number, slow ? " spf" : " fps"));
    EXPECT_EQ(rate.delay, slow ? number * 1000 : 1000 / number);
  }
}

} // namespace
} // namespace framereel
