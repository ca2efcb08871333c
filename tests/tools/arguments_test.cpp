// The arguments of framereel-record: what they set, and the words of every refusal.
#include "record/arguments.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/script.h"

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
    const char* const others[] = {"record", "list", "help", "version", refusal.text};
    return others[int(request)];
  }
  const RecordingOptions& r = o.recording;
  const RecordingOptions usual;
  std::string told = o.file;
  const auto add = [&told](const std::string& word, bool differs) { told += differs ? " " + word : ""; };
  add(Text("delay ", r.frameDelay), r.frameDelay != usual.frameDelay);
  add(Text("size ", r.recordingSize), r.recordingSize != usual.recordingSize);
  add(Text("ms ", o.milliseconds), o.milliseconds != 0);
  add(Text("ticks ", o.ticks), o.ticks != 0);
  add(Text("frames ", o.frames), o.frames != 0);
  add("measured", !r.trueTime);
  add(Text("window ", o.window), o.window != 0);
  add("pick", o.pick);
  add("follow", o.follow);
  add(Text("countdown ", o.countdown), o.countdown != 0);
  add("keep", o.noClobber);
  add(Text("owner ", o.owner ? o.owner : ""), o.owner != nullptr);
  add(Text("area ", o.area.left, ",", o.area.top, " ", o.area.width, "x", o.area.height), o.area.width != 0);
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
      {{"--delay", "25", "--size=44", "--frames", "3", "--owner=a=b", "-"}, "- delay 25 size 1 frames 3 owner a=b"},
      {{"--delay=100", "f", "--delay=5000"}, "f delay 5000"},
      {{"--no-timing", "--no-loop", "--explorer", "--smallest", "f"}, "f timing loop explorer smallest"},
      {{"--no-transparency", "--no-border", "--no-cursor", "--stats", "f"}, "f transparency border cursor stats"},
      {{"--fps=40", "--seconds=0.1", "--size=25", "f"}, "f delay 25 size 0 ms 100"},
      {{"--fps=15", "--ticks=1000000000", "--frames=5", "f"}, "f delay 67 ticks 1000000000 frames 5"},
      {{"--delays=true", "--delays", "measured", "f"}, "f measured"},
      {{"--area=-32768,32767 32767x1", "f"}, "f area -32768,32767 32767x1"},
      {{"--quiet", "--", "--delay"}, "--delay quiet"},
      {{"--owner", "--", "f"}, "f owner --"},
      {{"--delay", "50", "--version"}, "version"},
      {{"--", "--help"}, "--help"},
      {{"--quiet"}, "no FILE to record into; framereel-record --help tells more"},
      {{""}, "the name of FILE is empty; give a path or - for standard output"},
      {{"a", "b"}, "one FILE at a time: \"a\" or \"b\""},
      {{"--delay=100", "--fps=10", "f"}, "--delay and --fps say the same thing; give one of them"},
      {{"--quiet=yes", "f"}, "--quiet takes no value, not \"yes\""},
      {{"-h"}, "help"},
      {{"--list-windows"}, "list"},
      {{"--window=0x1A00007", "--follow", "--countdown=3", "f"}, "f window 27262983 follow countdown 3"},
      {{"--window=12", "--window=pick", "--no-clobber", "f"}, "f pick keep"},
      {{"--window=pick", "--window=0xFFFFFFFF", "--no-clobber", "--overwrite", "f"}, "f window 4294967295"},
      {{"--window=1", "--area=0,0 1x1", "f"}, "--area and --window both say what to record; give one of them"},
      {{"--follow", "f"}, "--follow needs a window to follow; give --window, too"},
      {{"--fames", "f"}, "unknown option --fames; did you mean --frames?"},
      {{"--sec=100", "f"}, "unknown option --sec; did you mean --seconds?"},
      {{"-fps=5", "f"}, "unknown option -fps; did you mean --fps?"},
      {{"--colour-the-pointer-red-and-leave-the-rest", "f"},
       "unknown option --colour-the-pointer-red-and-leave-the-rest; framereel-record --help lists them"},
      {{"-q", "f"}, "unknown option -q; framereel-record --help lists them"},
      {{"--owner=x\ny", "--size=\n\x7F", "f"}, "--size takes 25, 44 or 100, not \"\\n\\x7f\""},
  };
  for (const auto& [words, told] : cases) EXPECT_EQ(Told(words), told);
  const std::string endless(20000, '9'); // a refusal that is longer than its room
  EXPECT_EQ(Told({"--delay", endless.c_str(), "f"}).size(), sizeof Refusal::text - 1);
}

TEST(RecordOptions, RefuseValuesWithTheOptionsNameAndWhatItTakes) {
  const struct {
    const char *name, *takes, *wrong; // with bars between
  } cases[] = {
      {"--delay", "a whole number of milliseconds from 25 to 5000", "24|5001|-25|+25| 50|50 |50ms|0x32|4294967321|"},
      {"--fps", "a number from 0.2 to 40", "0.19|40.1|-1|.|1.2.3|inf|nan|1e1|1,5|"},
      {"--size", "25, 44 or 100", "50|100%|44 |"},
      {"--seconds", "a number from 0.1 to 604800", "0|604801|5s|"},
      {"--window", "the number of a window, such as 0x1a00007, or \"pick\"", "0|0x|x|-1|1 |4294967296|"},
      {"--countdown", "a whole number of seconds from 0 to 3600", "-1|3601|1.5|"},
      {"--delays", "true or measured", "True|measure|"},
      {"--frames", "a whole number from 1 to 1000000000", "0|1000000001|4294967297|"},
      {"--area", "\"L,T WxH\" in screen pixels, such as \"0,0 640x480\", W and H from 1 to 32767",
       "0,0|0,0 640x|0 0 640x480|0,0 0x480|0,0 640x0|0,0 -640x480|0,0 32768x1|0,0 1x32768|0,0 640x480x|"
       "0,0 640x480 |32768,0 1x1|0,-32769 1x1|0,0 00000000640x480|,0 1x1|"},
  };
  for (const auto& c : cases) {
    const std::string takes = std::string(c.name) + " takes " + c.takes;
    EXPECT_EQ(Told({"f", c.name}), takes + ", and nothing stands behind it");
    std::istringstream wrong(Text(c.wrong, '|')); // and the empty one
    for (std::string value; std::getline(wrong, value, '|');) {
      EXPECT_EQ(Told({c.name, value.c_str(), "f"}), takes + ", not \"" + value + "\"");
    }
  }
}

} // namespace
} // namespace framereel
