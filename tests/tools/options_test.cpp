// The arguments of framereel-record: what each option sets, and the words of every refusal.
#include "record/options.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace framereel {
namespace {

struct Reading {
  Request request = Request::kRecord;
  RecordOptions options;
  std::string refusal;
};

Reading Read(std::vector<const char*> words) {
  words.push_back(nullptr);
  Reading reading;
  Refusal refusal = {};
  reading.request = ReadOptions(words.data(), &reading.options, refusal);
  reading.refusal = refusal.text;
  return reading;
}

RecordOptions Accepted(const std::vector<const char*>& words) {
  const Reading reading = Read(words);
  EXPECT_EQ(reading.request, Request::kRecord) << reading.refusal;
  return reading.options;
}

TEST(RecordOptions, TakeValuesBehindABlankOrAnEqualsSign) {
  const RecordOptions options =
      Accepted({"--delay", "25", "--size=44", "--frames", "3", "--owner=a=b", "--quiet", "--stats", "-"});
  EXPECT_EQ(options.recording.frameDelay, 25);
  EXPECT_EQ(options.recording.recordingSize, kSize44);
  EXPECT_EQ(options.ticks, 3u);
  EXPECT_STREQ(options.owner, "a=b");
  EXPECT_TRUE(options.quiet);
  EXPECT_TRUE(options.stats);
  EXPECT_STREQ(options.file, "-");
}

TEST(RecordOptions, SwitchEachRecordingOptionByItself) {
  EXPECT_FALSE(Accepted({"--no-transparency", "f"}).recording.interframeTransparency);
  EXPECT_FALSE(Accepted({"--no-timing", "f"}).recording.recordTimingInfo);
  EXPECT_FALSE(Accepted({"--no-loop", "f"}).recording.loop);
  EXPECT_FALSE(Accepted({"--no-border", "f"}).recording.overlayBorder);
  EXPECT_FALSE(Accepted({"--no-cursor", "f"}).recording.overlayCursor);
  EXPECT_TRUE(Accepted({"--explorer", "f"}).recording.explorerCompatible);
  EXPECT_TRUE(Accepted({"--no-cursor", "f"}).recording.overlayBorder);
}

TEST(RecordOptions, ReachTheEndsOfTheirRanges) {
  const std::pair<const char*, int> delays[] = {
      {"--delay=5000", 5000}, {"--fps=40", 25}, {"--fps=0.2", 5000}, {"--fps=30", 33}, {"--fps=15", 67}};
  for (const auto& [word, delay] : delays) EXPECT_EQ(Accepted({word, "f"}).recording.frameDelay, delay) << word;
  EXPECT_EQ(Accepted({"--seconds=0.1", "f"}).milliseconds, 100u);
  EXPECT_EQ(Accepted({"--seconds=604800", "f"}).milliseconds, 604800000u);
  EXPECT_EQ(Accepted({"--frames=1000000000", "f"}).ticks, 1000000000u);
  const WantedArea area = Accepted({"--area=-32768,32767 32767x1", "f"}).area;
  EXPECT_EQ(area.left, -32768);
  EXPECT_EQ(area.top, 32767);
  EXPECT_EQ(area.width, 32767);
  EXPECT_EQ(area.height, 1);
}

TEST(RecordOptions, HoldTheLastOfTwoAndEndAtTwoDashes) {
  EXPECT_EQ(Accepted({"--delay=100", "f", "--delay=200"}).recording.frameDelay, 200);
  EXPECT_STREQ(Accepted({"--quiet", "--", "--delay"}).file, "--delay");
  EXPECT_STREQ(Accepted({"--owner", "--", "f"}).owner, "--");
}

TEST(RecordOptions, HelpAndVersionNeedNoFile) {
  EXPECT_EQ(Read({"--help"}).request, Request::kHelp);
  EXPECT_EQ(Read({"--delay", "50", "--version"}).request, Request::kVersion);
  EXPECT_EQ(Read({"--", "--help"}).request, Request::kRecord);
}

TEST(RecordOptions, RefuseWithTheOptionsNameAndWhatItTakes) {
  const struct {
    const char* name;
    const char* takes;
    std::vector<const char*> wrong;
  } cases[] = {
      {"--delay",
       "a whole number of milliseconds from 25 to 5000",
       {"24", "5001", "-25", "+25", "", " 50", "50 ", "50ms", "5e2", "33.3", "0x32", "99999999999999999999"}},
      {"--fps", "a number from 0.2 to 40", {"0", "0.19", "40.1", "-1", "", ".", "1.2.3", "inf", "nan", "1e1", "1,5"}},
      {"--size", "25, 44 or 100", {"50", "", "100%", "44 ", "1"}},
      {"--seconds", "a number from 0.1 to 604800", {"0", "604801", "", "5s", "-5", "1e3"}},
      {"--frames", "a whole number from 1 to 1000000000", {"0", "1000000001", "4294967297", "", "-1", "1.5"}},
      {"--area",
       "\"L,T WxH\" in screen pixels, such as \"0,0 640x480\", W and H from 1 to 32767",
       {"", "0,0", "0,0 640", "0,0 640x", "0 0 640x480", "0,0 0x480", "0,0 640x0", "0,0 -640x480", "0,0 32768x1",
        "0,0 640x480x", "0,0 640x480 ", "32768,0 1x1", "0,-32769 1x1", "0,0 00000000640x480", ",0 1x1", "0,0  1x1"}},
  };
  for (const auto& c : cases) {
    for (const char* value : c.wrong) {
      const Reading reading = Read({c.name, value, "f"});
      EXPECT_EQ(reading.request, Request::kRefused) << c.name << " " << value;
      EXPECT_EQ(reading.refusal, std::string(c.name) + " takes " + c.takes + ", not \"" + value + "\"");
    }
    EXPECT_EQ(Read({"f", c.name}).refusal,
              std::string(c.name) + " takes " + c.takes + ", and nothing stands behind it");
  }
}

TEST(RecordOptions, RefuseWhatMakesNoSenseTogether) {
  const struct {
    std::vector<const char*> words;
    const char* refusal;
  } cases[] = {
      {{}, "no FILE to record into; framereel-record --help tells more"},
      {{"--quiet"}, "no FILE to record into; framereel-record --help tells more"},
      {{""}, "the name of FILE is empty; give a path or - for standard output"},
      {{"a", "b"}, "one FILE at a time: \"a\" or \"b\""},
      {{"-", "-"}, "one FILE at a time: \"-\" or \"-\""},
      {{"--delay=100", "--fps=10", "f"}, "--delay and --fps say the same thing; give one of them"},
      {{"--frames=5", "--seconds=1", "f"}, "--seconds and --frames both end the recording; give one of them"},
      {{"--quiet=yes", "f"}, "--quiet takes no value, not \"yes\""},
      {{"--help=me"}, "unknown option --help; framereel-record --help lists them"},
      {{"--dela=100", "f"}, "unknown option --dela; framereel-record --help lists them"},
      {{"-q", "f"}, "unknown option -q; framereel-record --help lists them"},
      {{"--owner=x\ny", "--size=\n", "f"}, "--size takes 25, 44 or 100, not \"?\""},
  };
  for (const auto& c : cases) {
    const Reading reading = Read(c.words);
    EXPECT_EQ(reading.request, Request::kRefused);
    EXPECT_EQ(reading.refusal, c.refusal);
  }
}

TEST(RecordOptions, CutARefusalThatIsLongerThanItsRoom) {
  const std::string endless(20000, '9');
  EXPECT_EQ(Read({"--delay", endless.c_str(), "f"}).refusal.size(), sizeof Refusal::text - 1);
}

} // namespace
} // namespace framereel
