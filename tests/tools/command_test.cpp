// The whole command on the display in memory: what it records, what it refuses, and what it saves when the world fails.
#include "record/command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

#include "support/gif_reader.h"
#include "support/temporary_folder.h"
#include "win32/memory/memory_display.h"
#include "win32/system/heap_faults.h"

namespace framereel {
namespace {

// The display's clock. Times are ms since the test began.
struct TestClock {
  uint32_t begin = 0;
  uint32_t stopAt = UINT32_MAX;   // the user ends the recording
  uint32_t sleepsAt = UINT32_MAX; // the first wait that reaches this time ...
  uint32_t wakesAt = 0;           // ... ends at that one only
};

uint32_t Now(void*) {
  return ::GetTickCount();
}

bool Wait(void* owner, uint32_t milliseconds) {
  TestClock& clock = *static_cast<TestClock*>(owner);
  const uint32_t now = ::GetTickCount() - clock.begin;
  uint32_t until = now + milliseconds;
  if (until >= clock.sleepsAt) {
    until = clock.wakesAt;
    clock.sleepsAt = UINT32_MAX;
  }
  const bool stopped = until >= clock.stopAt;
  if (stopped) until = std::max(now, clock.stopAt);
  ::Sleep(until - now);
  return stopped;
}

// Fills the screen with what does not compress; another picture for each seed.
void DrawNoise(uint32_t seed) {
  for (uint32_t& pixel : TheMemoryDisplay().screen) {
    seed = seed * 1664525 + 1013904223;
    pixel = seed >> 8;
  }
}

class CommandTest : public testing::Test {
protected:
  TemporaryFolder folder;
  std::string place = folder / "a.gif";
  std::string messages;
  bool terminal = false;
  TestClock clock;

  void SetUp() override { MemoryDisplayReset(64, 48, 24); }

  // One record for all runs, as its engine is made only once.
  static RecordCommand& Command() {
    static RecordCommand command;
    if (!command.reserve) RecordCommandInit(command);
    return command;
  }

  // Runs the command into `place`, ten times a second if no more is said; `messages` gets what it says.
  int Run(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "--delay=100");
    arguments.insert(arguments.end(), {place.c_str(), nullptr});
    char* text = nullptr;
    size_t length = 0;
    RecordCommand& command = Command();
    command.options = {};
    Refusal refusal;
    EXPECT_EQ(ReadOptions(arguments.data(), &command.options, refusal), Request::kRecord) << refusal.text;
    EXPECT_TRUE(OutputFind(command.output, command.options.file, refusal)) << refusal.text;
    command.clock = {&clock, Now, Wait};
    command.messages = ::open_memstream(&text, &length);
    command.terminal = terminal;
    const int status = RecordCommandRun(command);
    fclose(command.messages);
    messages = text;
    free(text);
    return status;
  }

  void ExpectRefused(const std::vector<const char*>& arguments, const std::string& why) {
    EXPECT_EQ(Run(arguments), kExitFailed);
    EXPECT_EQ(messages, "framereel-record: " + why + "\n");
    EXPECT_EQ(folder.EntryCount(), 0u);
  }
};

TEST_F(CommandTest, HandsItsOptionsToTheEngineAndSaysNothing) {
  EXPECT_EQ(Run({"--frames=3", "--owner=Ada"}), kExitDone);
  EXPECT_EQ(messages, "");
  GifPicture gif = ReadGifFile(place);
  EXPECT_EQ(gif.width, 64) << gif.error;
  EXPECT_EQ(gif.height, 48);
  EXPECT_EQ(gif.comment.find("Created by Ada, using"), 0u);
  EXPECT_EQ(::GetTickCount(), 200u);

  EXPECT_EQ(Run({"--frames=1", "--no-loop", "--size=44", "--area=10,10 20x16"}), kExitDone);
  gif = ReadGifFile(place);
  EXPECT_EQ(gif.loopCount, -1) << gif.error;
  EXPECT_EQ(gif.width, 14) << "21 pixels, widened from 20, by 2/3";
  EXPECT_EQ(gif.height, 12) << "18 pixels, widened from 16";
}

TEST_F(CommandTest, CutsAnAreaToTheScreenAndSaysSo) {
  EXPECT_EQ(Run({"--frames=1", "--area=-10,40 30x100"}), kExitDone);
  EXPECT_EQ(messages, "framereel-record: part of the area lies off the screen; recording 0,40 20x8\n");
  EXPECT_EQ(ReadGifFile(place).width, 20);
  EXPECT_EQ(ReadGifFile(place).height, 8);
  EXPECT_EQ(Run({"--frames=1", "--area=60,0 30x100", "--quiet"}), kExitDone);
  EXPECT_EQ(messages, "");
}

TEST_F(CommandTest, RefusesAnAreaOfWhichNothingCanBeRecorded) {
  ExpectRefused({"--area=64,0 10x10"}, "the area 64,0 10x10 lies outside the screen, which has 64x48 pixels");
  ExpectRefused({"--area=0,-10 10x10"}, "the area 0,-10 10x10 lies outside the screen, which has 64x48 pixels");
  MemoryDisplayReset(32767, 2, 24);
  ExpectRefused({"--size=44"},
                "the area of 32767x2 pixels is too small for a recording at 44 %, which takes blocks of 3x3");
}

TEST_F(CommandTest, RefusesAScreenThatIsNotThereOrHasNoSuchDepth) {
  MemoryDisplayReset(64, 48, 12);
  EXPECT_EQ(Run({}), kExitFailed);
  EXPECT_EQ(messages.find("framereel-record: Framereel does not support recording at the current bit depth"), 0u);
  EXPECT_EQ(messages.find('\n'), messages.size() - 1);
  EXPECT_EQ(folder.EntryCount(), 0u);
  TheMemoryDisplay().present = false;
  ::setenv("DISPLAY", ":77", 1);
  ExpectRefused({}, "there is no display to record: \":77\", as DISPLAY names it, does not answer");
  ::unsetenv("DISPLAY");
  ExpectRefused({}, "there is no display to record: DISPLAY is not set");
}

TEST_F(CommandTest, KnowsAheadOfTheRecordingThatNothingCanBeWritten) {
  place = folder / "none/a.gif";
  ExpectRefused({}, "cannot write " + place + ": No such file or directory");
  EXPECT_EQ(TheMemoryDisplay().screenReads, 0u);
}

TEST_F(CommandTest, SavesWhatItHasWhenTheScreenIsLostOrChanges) {
  MemoryAt(150, [] { DrawNoise(1); });
  MemoryAt(250, [] { TheMemoryDisplay().lost = true; });
  EXPECT_EQ(Run({}), kExitFailed);
  EXPECT_EQ(messages,
            "framereel-record: the connection to the display was lost; " + place + " holds the 2 frames before that\n");
  EXPECT_EQ(ReadGifFile(place).frames.size(), 2u);
  EXPECT_EQ(::GetTickCount(), 300u);

  MemoryDisplayReset(64, 48, 24);
  MemoryAt(250, [] { MemoryDisplaySetMode(64, 48, 8); });
  EXPECT_EQ(Run({}), kExitFailed);
  EXPECT_EQ(messages,
            "framereel-record: the screen's colour depth has changed; " + place + " holds the 1 frame before that\n");
  EXPECT_EQ(ReadGifFile(place).frames.size(), 1u);
}

TEST_F(CommandTest, LeavesNoFileWhenTheDisplayIsLostAtOnce) {
  TheMemoryDisplay().lost = true;
  ExpectRefused({}, "the connection to the display was lost; nothing was recorded");
}

// ---- When frames are taken, by the figures that programs can read ------------------------------------------------

TEST_F(CommandTest, TakesATickAtOnceAndThenOneEachDelayUntilItsEnd) {
  const struct {
    uint32_t begin;
    const char* end;
    uint32_t stopAt, wakesAt; // wakesAt 0: it does not sleep too long, at 300
    const char* figures;
    uint32_t passed;
  } cases[] = {
      {0, "--seconds=1", UINT32_MAX, 0, "ticks=10 frames=1 lost=0", 1000}, // the one at the end is not taken any more
      {UINT32_MAX - 149, "--seconds=0.5", UINT32_MAX, 0, "ticks=5 frames=1 lost=0", 500}, // the clock wraps
      {0, "--frames=5", UINT32_MAX, 0, "ticks=5 frames=1 lost=0", 400},                   // it ends with its last tick
      {0, "--no-loop", 250, 0, "ticks=3 frames=1 lost=0", 250},
      {0, "--no-loop", 0, 0, "ticks=1 frames=1 lost=0", 0},                  // one frame in any case
      {0, "--seconds=1", UINT32_MAX, 399, "ticks=10 frames=1 lost=0", 1000}, // late, the next one is still to come
      {0, "--seconds=1", UINT32_MAX, 400, "ticks=9 frames=1 lost=1", 1000},  // two are due: the older one is lost
      {0, "--seconds=1", UINT32_MAX, 720, "ticks=6 frames=1 lost=4", 1000},  // 700 is taken at 720, 800 in time
      {0, "--seconds=1", UINT32_MAX, 999, "ticks=4 frames=1 lost=6", 1000},
      {0, "--seconds=1", UINT32_MAX, 1000, "ticks=3 frames=1 lost=7", 1000}, // past the end nothing is taken
      {0, "--seconds=1", UINT32_MAX, 50000, "ticks=3 frames=1 lost=7", 50000},
  };
  for (const auto& c : cases) {
    MemoryDisplayReset(64, 48, 24);
    TheMemoryDisplay().tick = c.begin;
    clock = {c.begin, c.stopAt, c.wakesAt ? 300 : UINT32_MAX, c.wakesAt};
    EXPECT_EQ(Run({"--stats", c.end}), kExitDone);
    EXPECT_EQ(messages.substr(0, messages.find(" bytes=")), c.figures) << c.wakesAt;
    EXPECT_EQ(::GetTickCount() - c.begin, c.passed) << c.wakesAt;
  }
}

TEST_F(CommandTest, GoesOnOnAScreenThatGetsSmallerAndTellsTheBytesOfTheFile) {
  MemoryAt(250, [] { MemoryDisplaySetMode(16, 12, 24); });
  MemoryAt(350, [] { MemoryPixel(5, 5) = 0xFFFFFF; });
  EXPECT_EQ(Run({"--stats", "--frames=5"}), kExitDone);
  const std::string figures =
      "ticks=5 frames=2 lost=0 bytes=" + std::to_string(ReadWholeFile(place).size()) + " wall_s=";
  EXPECT_EQ(messages.substr(0, figures.size()), figures);
}

TEST_F(CommandTest, EndsAheadOfAStreamThatMightNotHoldAnotherFrame) {
  const uint32_t lastWithRoom = UINT32_MAX - 2 * 64 * 48 - 4096;
  MemoryAt(50, [&] { Command().stream.streamSize = lastWithRoom; });
  MemoryAt(250, [&] { Command().stream.streamSize = lastWithRoom + 1; });
  EXPECT_EQ(Run({}), kExitFailed);
  EXPECT_EQ(messages,
            "framereel-record: the animation has reached 4 GiB; " + place + " holds the 1 frame before that\n");
  EXPECT_EQ(::GetTickCount(), 300u);
}

TEST_F(CommandTest, ShowsHowItGoesDuringLongWaitsToo) {
  terminal = true;
  EXPECT_EQ(Run({"--delay=5000", "--frames=2"}), kExitDone);
  EXPECT_EQ(std::count(messages.begin(), messages.end(), '\r'), 20 + 1) << "four times a second, and wiped in the end";
  EXPECT_EQ(::GetTickCount(), 5000u);
}

TEST_F(CommandTest, ShowsProgressAndOutcomeOnATerminal) {
  terminal = true;
  EXPECT_EQ(Run({"--seconds=1"}), kExitDone);
  EXPECT_NE(messages.find("\r1 frame, "), std::string::npos);
  EXPECT_NE(messages.find("0:00  [############............]\x1b[K"), std::string::npos);
  const std::string outcome = "\r\x1b[K" + place + ": 1 frame, ";
  EXPECT_EQ(messages.substr(messages.rfind('\r'), outcome.size()), outcome);
  EXPECT_TRUE(messages.ends_with(", 0:01\n"));
  EXPECT_EQ(Run({"--seconds=1", "--quiet"}), kExitDone);
  EXPECT_EQ(messages, "");
}

TEST_F(CommandTest, SavesTheCompleteFramesWhicheverAllocationFails) {
  MemoryDisplayReset(320, 320, 24);
  DrawNoise(1);
  // The second picture outgrows the stream's first chunk, so that memory may end in the midst of a frame.
  MemoryAt(150, [] { DrawNoise(2); });
  MemoryAt(250, [] { DrawNoise(3); });
  Command();
  int n = 0;
  size_t saved = 0;
  for (int status = kExitFailed; status != kExitDone; ++n) {
    SCOPED_TRACE(testing::Message() << "allocation " << n);
    const pid_t child = ::fork();
    if (child == 0) {
      FailAllocationsAfter(n);
      ::_exit(Run({"--frames=3"}));
    }
    ::waitpid(child, &status, 0);
    status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    ASSERT_TRUE(status == kExitDone || status == kExitFailed);
    const bool exists = std::filesystem::exists(place);
    ASSERT_EQ(folder.EntryCount(), size_t{exists});
    saved += exists;
    ASSERT_EQ(exists ? ReadGifFile(place).error : "", "");
    std::filesystem::remove(place);
  }
  EXPECT_GT(n, 6);
  EXPECT_GT(saved, 2u) << "one of them with all frames";
}

} // namespace
} // namespace framereel
