// What the engine tells the user: sizes, the status line, and why the screen cannot be recorded.
#include "recorder/engine/status.h"

#include <gtest/gtest.h>

#include "recorder/recording.h"
#include "support/desktop.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

constexpr Rect kArea = {2, 3, 10, 15};

TEST(FormatByteSize, CutsTenthsAndLeavesThemOutFromAHundredUp) {
  const Desktop desktop(8, 8, 24); // the strings need the toolkit
  const std::pair<uint32_t, const char*> cases[] = {
      {0, "0 bytes"},        {1, "1 byte"},      {1023, "1023 bytes"}, {1024, "1K"},         {1126, "1K"},
      {1127, "1.1K"},        {102399, "99.9K"},  {102400, "100K"},     {103300, "100K"},     {0xFFFFF, "1023K"},
      {0x100000, "1M"},      {0x119999, "1M"},   {0x11999A, "1.1M"},   {0x63FFFFF, "99.9M"}, {0x6400000, "100M"},
      {0x3FFFFFFF, "1023M"}, {0x40000000, "1G"}, {0x46666666, "1G"},   {0x46666667, "1.1G"}, {0xFFFFFFFF, "3.9G"},
  };
  for (const auto& [bytes, expected] : cases) {
    char text[kByteSizeText];
    FormatByteSize(bytes, text);
    EXPECT_STREQ(text, expected) << bytes;
  }
}

TEST(StatusLine, CountsFramesAndBytesAndStartsAnewAfterAReset) {
  const Desktop desktop(40, 30, 1);
  Recording recording(kArea);
  RecorderShowStatus(recording.recorder);
  EXPECT_EQ(recording.status, "0 Frames (0 bytes)");
  recording.Capture();
  EXPECT_EQ(recording.status, "1 Frame (" + std::to_string(recording.stream.streamSize) + " bytes)");
  recording.status = "as it was";
  recording.Capture(); // nothing changed
  EXPECT_EQ(recording.status, "as it was");
  MemoryFill({5, 5, 9, 9}, 1);
  recording.Capture();
  EXPECT_EQ(recording.status, "2 Frames (" + std::to_string(recording.stream.streamSize) + " bytes)");
  StreamClear(recording.stream);
  RecorderReset(recording.recorder);
  EXPECT_EQ(recording.status, "0 Frames (0 bytes)");
}

std::string Differs(const std::string& colours) {
  return "Framereel animations cannot contain frames recorded at differing bit depths. To add more frames to the "
         "current animation, please restore the monitor settings (to " +
         colours + " colours).";
}

TEST(ScreenCheck, BlocksWhileTheDepthIsNotTheAnimationsAndComesBack) {
  struct Case {
    int32_t depth, other, another; // bits; the others are not the animation's
    const char* colours;
  };
  const Case cases[] = {{24, 8, 4, "millions of"},
                        {16, 1, 8, "millions of"},
                        {8, 24, 2, "256"},
                        {4, 2, 8, "16"},
                        {2, 4, 8, "4"},
                        {1, 32, 8, "2"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.depth << " to " << c.other);
    Desktop desktop(40, 30, c.depth);
    Recording recording(kArea);
    const Watch watch(&recording.recorder);
    ASSERT_TRUE(recording.Capture());
    desktop.SetDepth(c.other);
    EXPECT_EQ(recording.message, Differs(c.colours));
    MemoryFill({5, 5, 9, 9}, 1);
    EXPECT_FALSE(recording.Capture());
    EXPECT_FALSE(recording.Capture(true));
    desktop.SetDepth(c.another); // nothing is said again
    desktop.SetDepth(12);        // nor for one that no animation can have
    EXPECT_EQ(recording.messageCalls, 1);
    desktop.SetDepth(c.depth);
    EXPECT_EQ(recording.message, "");
    EXPECT_EQ(recording.messageCalls, 2);
    MemoryFill({5, 5, 9, 9}, c.depth > 8 ? 0xFFFF : 1);
    EXPECT_TRUE(recording.Capture());
  }
}

std::string Unsupported(const std::string& colours) {
  return "Framereel does not support recording at the current bit depth (" + colours +
         " colours). Please change the monitor settings.";
}

TEST(ScreenCheck, NamesADepthThatCannotBeRecordedAndAResetLiftsAnAnimationsBlock) {
  for (const auto& [depth, colours] : {std::pair(12, "4096"), std::pair(20, "millions of")}) {
    const Desktop odd(40, 30, depth);
    const Recording recording(kArea);
    EXPECT_EQ(recording.message, Unsupported(colours));
  }
  Desktop desktop(40, 30, 4);
  Recording recording(kArea);
  const Watch watch(&recording.recorder);
  desktop.SetDepth(12); // the message names the format last seen
  EXPECT_EQ(recording.message, Unsupported("16"));
  EXPECT_FALSE(recording.Capture());
  EXPECT_EQ(recording.recorder.animationFormat, kFormatNone);
  desktop.SetDepth(2);
  EXPECT_EQ(recording.message, "");
  ASSERT_TRUE(recording.Capture());
  desktop.SetDepth(8);
  EXPECT_EQ(recording.message, Differs("4"));
  StreamClear(recording.stream);
  RecorderReset(recording.recorder);
  EXPECT_EQ(recording.message, "");
  EXPECT_TRUE(recording.Capture());
}

} // namespace
} // namespace framereel
