// The program itself on a real X server, as a user or a script starts it. The server is in DISPLAY, 640 by 480 pixels.
#include <gtest/gtest.h>

#include "support/gif_reader.h"
#include "tools/end_to_end/programs.h"

namespace framereel {
namespace {

const std::string kRecord = RECORD_PROGRAM;

TEST(FramereelRecord, RecordsWhatMovesOnTheScreen) {
  const TemporaryFolder folder;
  const Companion scene({DEMO_SCENE_PROGRAM, "--ready-fd"});
  const Outcome outcome =
      RunProgram({kRecord, "--area", "100,50 300x200", "--fps=20", "--frames=10", "--size=25", folder / "a.gif"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output + outcome.errors, "");
  const GifPicture gif = ReadGifFile(folder / "a.gif");
  EXPECT_EQ(gif.width, 150);
  EXPECT_EQ(gif.height, 100);
  EXPECT_GT(gif.frames.size(), 5u) << gif.error;
}

TEST(FramereelRecord, WritesToStandardOutput) {
  EXPECT_EQ(RunProgram({kRecord, "--version"}).output, "framereel-record 1.23\n");
  const std::string file = RunProgram({kRecord, "--frames=2", "--delay=25", "-"}).output;
  EXPECT_EQ(ReadGif({file.begin(), file.end()}).width, 640);
}

TEST(FramereelRecord, AnswersWithItsStatusWhatKindOfRefusalItIs) {
  const TemporaryFolder folder;
  const std::string file = folder / "a.gif";
  const struct {
    std::vector<std::string> words;
    int status;
    std::string error;
  } cases[] = {
      {{kRecord, "--fps=50", file}, 2, "--fps takes a number from 0.2 to 40, not \"50\""},
      {{"env", "-u", "DISPLAY", kRecord, file}, 1, "there is no display to record: DISPLAY is not set"},
      {{kRecord, "--frames=1", "/dev/full"}, 1, "cannot write /dev/full: No space left on device"},
      {{"sh", "-c", "\"$0\" --frames=1 - >&-", kRecord},
       1,
       "standard output cannot be written to; give a FILE or redirect it"},
      {{"sh", "-c", "\"$0\" --help >/dev/full", kRecord}, 1, "standard output cannot be written to"},
  };
  for (const auto& c : cases) {
    const Outcome outcome = RunProgram(c.words);
    EXPECT_EQ(outcome.status, c.status);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, "framereel-record: " + c.error + "\n");
  }
  EXPECT_EQ(folder.EntryCount(), 0u);
}

TEST(FramereelRecord, ReportsAReaderThatHasGone) {
  // The pipe has nobody at its other end by the time of the save: `true` never reads, and wait is for its end.
  const Outcome outcome = RunProgram({"bash", "-c", "exec 3> >(true); wait $!; \"$0\" --frames=1 - >&3", kRecord});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.errors, "framereel-record: cannot write standard output: Broken pipe\n");
}

TEST(FramereelRecord, WorksWithoutStandardFiles) {
  const TemporaryFolder folder;
  EXPECT_EQ(
      RunProgram({"sh", "-c", "exec \"$0\" --frames=2 --stats \"$1\" <&- >&- 2>&-", kRecord, folder / "a.gif"}).status,
      0);
  EXPECT_EQ(ReadGifFile(folder / "a.gif").width, 640);
}

TEST(FramereelRecord, SavesAtControlCAndWhenItIsToldToEnd) {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    const TemporaryFolder folder;
    OnTerminal record({kRecord, "--delay=5000", folder / "a.gif"});
    ASSERT_TRUE(record.WaitFor("1 frame, ")) << record.shown;
    EXPECT_FALSE(std::filesystem::exists(folder / "a.gif"));
    if (number == SIGINT) {
      record.Type('\x03');
    } else {
      ::kill(record.process, number);
    }
    EXPECT_EQ(record.Wait(), 0);
    EXPECT_EQ(ReadGifFile(folder / "a.gif").frames.size(), 1u);
    EXPECT_EQ(folder.EntryCount(), 1u);
    EXPECT_NE(record.shown.find((folder / "a.gif") + ": 1 frame, "), std::string::npos) << record.shown;
  }
}

TEST(FramereelRecord, SavesWhatItHasWhenTheServerEnds) {
  const TemporaryFolder folder;
  Companion server({"Xvfb", "-nolisten", "tcp", "-noreset", "-screen", "0", "320x200x24", "-displayfd"});
  OnTerminal record({"env", "DISPLAY=:" + server.said, kRecord, "--delay=25", folder / "a.gif"});
  ASSERT_TRUE(record.WaitFor("1 frame, ")) << record.shown;
  server.End();
  EXPECT_EQ(record.Wait(), 1);
  EXPECT_NE(record.shown.find("the connection to the display was lost; "), std::string::npos) << record.shown;
  EXPECT_EQ(ReadGifFile(folder / "a.gif").width, 320);
}

} // namespace
} // namespace framereel
