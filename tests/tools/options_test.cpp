// The arguments of framereel-record: what they set, and the words of every refusal.
#include "record/options.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace framereel {
namespace {

using Words = std::vector<const char*>;

// What is set and not by default, a word for each; or the refusal.
std::string Told(Words words) {
  words.push_back(nullptr);
  RecordOptions o;
  Refusal refusal = {};
  const Request request = ReadOptions(words.data(), &o, refusal);
  if (request != Request::kRecord) {
    return request == Request::kHelp ? "help" : request == Request::kVersion ? "version" : refusal.text;
  }
  const RecordingOptions& r = o.recording;
  const RecordingOptions usual;
  std::string told = o.file;
  const auto add = [&told](const std::string& word, bool differs) { told += differs ? " " + word : ""; };
  const auto number = [](auto value) { return std::to_string(value); };
  add("delay " + number(r.frameDelay), r.frameDelay != usual.frameDelay);
  add("size " + number(r.recordingSize), r.recordingSize != usual.recordingSize);
  add("ms " + number(o.milliseconds), o.milliseconds != 0);
  add("ticks " + number(o.ticks), o.ticks != 0);
  add("owner " + std::string(o.owner ? o.owner : ""), o.owner != nullptr);
  add("area " + number(o.area.left) + "," + number(o.area.top) + " " + number(o.area.width) + "x" +
          number(o.area.height),
      o.area.width != 0);
  add("transparency", r.interframeTransparency != usual.interframeTransparency);
  add("timing", r.recordTimingInfo != usual.recordTimingInfo);
  add("loop", r.loop != usual.loop);
  add("border", r.overlayBorder != usual.overlayBorder);
  add("cursor", r.overlayCursor != usual.overlayCursor);
  add("explorer", r.explorerCompatible != usual.explorerCompatible);
  add("smallest", r.smallest != usual.smallest);
  add("quiet", o.quiet);
  add("stats", o.stats);
  return told;
}

TEST(RecordOptions, SetWhatTheySayAndAreRefusedWhereTheyMakeNoSenseTogether) {
  const std::pair<Words, const char*> cases[] = {
      {{"f"}, "f"},
      {{"--delay", "25", "--size=44", "--frames", "3", "--owner=a=b", "-"}, "- delay 25 size 1 ticks 3 owner a=b"},
      {{"--delay=100", "f", "--delay=5000"}, "f delay 5000"},
      {{"--no-timing", "--no-loop", "--explorer", "--smallest", "f"}, "f timing loop explorer smallest"},
      {{"--no-transparency", "--no-border", "--no-cursor", "--stats", "f"}, "f transparency border cursor stats"},
      {{"--fps=40", "--seconds=0.1", "--size=25", "f"}, "f delay 25 size 0 ms 100"},
      {{"--fps=0.2", "--seconds=604800", "f"}, "f delay 5000 ms 604800000"},
      {{"--fps=15", "--frames=1000000000", "f"}, "f delay 67 ticks 1000000000"},
      {{"--area=-32768,32767 32767x1", "f"}, "f area -32768,32767 32767x1"},
      {{"--quiet", "--", "--delay"}, "--delay quiet"},
      {{"--", "--"}, "--"},
      {{"--owner", "--", "f"}, "f owner --"},
      {{"--help"}, "help"},
      {{"--delay", "50", "--version"}, "version"},
      {{"--", "--help"}, "--help"},
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
      {{"--owner=x\ny", "--size=\n\x7F", "f"}, "--size takes 25, 44 or 100, not \"??\""},
  };
  for (const auto& [words, told] : cases) EXPECT_EQ(Told(words), told);
  const std::string endless(20000, '9'); // a refusal that is longer than its room
  EXPECT_EQ(Told({"--delay", endless.c_str(), "f"}).size(), sizeof Refusal::text - 1);
}

TEST(RecordOptions, RefuseValuesWithTheOptionsNameAndWhatItTakes) {
  const struct {
    const char *name, *takes;
    Words wrong;
  } cases[] = {
      {"--delay",
       "a whole number of milliseconds from 25 to 5000",
       {"24", "5001", "-25", "+25", "", " 50", "50 ", "50ms", "5e2", "33.3", "0x32", "99999999999999999999"}},
      {"--fps",
       "a number from 0.2 to 40",
       {"0", "0.19", "40.1", "-1", "", ".", "1.2.3", "inf", "nan", "1e1", "0x1", "1,5"}},
      {"--size", "25, 44 or 100", {"50", "", "100%", "44 ", "1"}},
      {"--seconds", "a number from 0.1 to 604800", {"0", "604801", "", "5s", "-5", "1e3"}},
      {"--frames", "a whole number from 1 to 1000000000", {"0", "1000000001", "4294967297", "", "-1", "1.5"}},
      {"--area",
       "\"L,T WxH\" in screen pixels, such as \"0,0 640x480\", W and H from 1 to 32767",
       {"", "0,0", "0,0 640", "0,0 640x", "0 0 640x480", "0,0 0x480", "0,0 640x0", "0,0 -640x480", "0,0 32768x1",
        "0,0 1x32768", "0,0 640x480x", "0,0 640x480 ", "32768,0 1x1", "0,-32769 1x1", "0,0 00000000640x480", ",0 1x1"}},
  };
  for (const auto& c : cases) {
    const std::string takes = std::string(c.name) + " takes " + c.takes;
    for (const char* value : c.wrong) EXPECT_EQ(Told({c.name, value, "f"}), takes + ", not \"" + value + "\"");
    EXPECT_EQ(Told({"f", c.name}), takes + ", and nothing stands behind it");
  }
}

} // namespace
} // namespace framereel
