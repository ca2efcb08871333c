// The whole command on the display in memory: what it records, what it refuses, and what it saves when the world fails.
#include "record/command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

#include "record/arguments.h"
#include "support/allocations.h"
#include "support/gif_reader.h"
#include "support/temporary_folder.h"
#include "support/timed_script.h"
#include "win32/memory/memory_display.h"
#include "win32/memory/memory_windows.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_system.h"

namespace framereel {
namespace {

// The display's clock. Times are ms since the recording began.
struct TestClock {
  uint32_t begin = 0;
  uint32_t stopAt = UINT32_MAX; // the user ends the recording
  uint32_t wakesAt = 0;         // the first wait that reaches 300 ends at this time only; 0: it ends as it should
};

bool Wait(void* owner, uint32_t milliseconds) {
  TestClock& clock = *static_cast<TestClock*>(owner);
  const uint32_t now = ::GetTickCount() - clock.begin;
  uint32_t until = now + milliseconds;
  if (until >= 300 && clock.wakesAt != 0) until = std::exchange(clock.wakesAt, 0);
  const bool stopped = until >= clock.stopAt;
  if (stopped) until = std::max(now, clock.stopAt);
  ::Sleep(until - now);
  return stopped;
}

// Fills the screen with what does not compress; another picture for each seed.
void DrawNoise(uint32_t seed) {
  for (uint32_t& pixel : TheMemoryDisplay().screen) pixel = (seed = seed * 1664525 + 1013904223) >> 8;
}

class CommandTest : public testing::Test {
protected:
  TemporaryFolder folder;
  std::string place = folder / "a.gif", messages, figures;
  bool terminal = false;
  TestClock clock;
  int64_t allocations = INT64_MAX; // that the command gets
  DisplayWindow* window = nullptr; // of another program, number 7
  Script script;

  // What happens around a recording.
  CommandTest() {
    MemoryDisplayReset(64, 48, 24);
    const uint32_t lastWithRoom = UINT32_MAX - 2 * 64 * 48 - 4096;
    const auto pretendSize = [](uint32_t size) { // as if there had been more in front of what the stream has
      Command().recorder.lastControl += size - Command().stream.streamSize;
      Command().stream.streamSize = Command().recorder.frameBytes = size;
    };
    script.Add("noise", [] { DrawNoise(::GetTickCount()); });
    script.Add("lost", [] { TheMemoryDisplay().lost = true; });
    script.Add("lostAtRead", [] { TheMemoryDisplay().lostAtRead = 1; });
    script.Add("mode", MemoryDisplaySetMode);
    script.Add("last", [=] { pretendSize(lastWithRoom); });
    script.Add("full", [=] { pretendSize(lastWithRoom + 1); });
    script.Add("open", [this] { // it is of one colour: a second frame tells that the area has not gone with it
      window = MemoryOpenWindow("a window", {10, 8, 30, 20}, 0xFF);
      window->name = 7;
    });
    script.Add("to", [this](int32_t left, int32_t top) { MemoryMoveWindow(window, Moved({0, 0, 20, 12}, left, top)); });
    script.Add("hide", [this] { MemoryMinimiseWindow(window, true); });
    script.Add("show", [this] { MemoryMinimiseWindow(window, false); });
    script.Add("close", [this] { MemoryCloseWindow(window); });
    script.Add("click", [] { MemoryClick(15, 10); });
  }
  ~CommandTest() override { ::unsetenv("TMPDIR"); }

  // One record for all runs, as its engine is made only once.
  static RecordCommand& Command() {
    static RecordCommand command;
    if (!command.gif.stream) RecordCommandInit(command);
    return command;
  }

  // Runs the command into `place`, ten times a second if no more is said; `messages` gets what it says, with FILE for
  // the place. In the arguments "_" stands for a blank.
  int Run(const std::string& words) {
    std::vector<std::string> all = {"--delay=100"};
    std::istringstream in(words);
    for (std::string word; in >> word;) all.push_back(word);
    std::vector<const char*> arguments;
    for (std::string& word : all) std::replace(word.begin(), word.end(), '_', ' '), arguments.push_back(word.c_str());
    arguments.insert(arguments.end(), {place.c_str(), nullptr});
    char *text = nullptr, *printed = nullptr;
    size_t length = 0, printedLength = 0;
    RecordCommand& command = Command();
    command.options = {};
    Refusal refusal;
    EXPECT_EQ(ReadOptions(arguments.data(), &command.options, refusal), Request::kRecord) << refusal.text;
    EXPECT_TRUE(OutputFind(command.output, command.options.file, refusal)) << refusal.text;
    command.clock = {&clock, [](void*) -> uint32_t { return ::GetTickCount(); }, Wait};
    command.messages = ::open_memstream(&text, &length);
    command.figures = ::open_memstream(&printed, &printedLength);
    command.terminal = terminal;
    FailAllocations(allocations);
    const int status = RecordCommandRun(command);
    FailAllocations(INT64_MAX);
    fclose(command.messages);
    fclose(command.figures);
    messages = text;
    figures = printed;
    free(text);
    free(printed);
    for (size_t at; (at = messages.find(place)) != std::string::npos;) messages.replace(at, place.size(), "FILE");
    return status;
  }

  // These of the figures that programs can read.
  std::string Told(const std::string& names) const {
    std::string told;
    std::istringstream in(names);
    for (std::string name; in >> name;) {
      const size_t at = figures.find("\"" + name + "\":");
      if (at != std::string::npos)
        told += (told.empty() ? "" : " ") + std::to_string(std::stoi(figures.substr(at + name.size() + 3)));
    }
    return told;
  }
};

TEST_F(CommandTest, TellsHowItWentAndSavesWhatItHas) {
  const struct {
    const char *script, *arguments;
    const char* figures; // frames, left, top, width and height; "" for no file
    uint32_t passed;     // ms
    const char* message; // how its one line begins, behind the command's name
  } cases[] = {
      {"", "--ticks=3", "1 0 0 64 48", 300, ""},
      {"150 noise 250 lost", "--quiet", "2 0 0 64 48", 300,
       "the connection to the display was lost; FILE holds the 2 frames before that"},
      {"250 mode:64:48:8", "--quiet", "1 0 0 64 48", 300,
       "the screen's colour depth has changed; FILE holds the 1 frame before that"},
      {"50 last 250 full", "--quiet", "1 0 0 64 48", 300,
       "the animation has reached 4 GiB; FILE holds the 1 frame before that"},
      {"150 mode:16:12:24 250 noise", "--ticks=4", "2 0 0 64 48", 400, "Part of the recording area is not on the"},
      {"", "--countdown=2 --ticks=1", "1 0 0 64 48", 2100, "recording in 2 s"},
      {"", "--ticks=1 --area=9,-5_30x8", "1 9 0 30 3", 100, "part of the area lies off the screen; recording 9,0 30x3"},
      {"", "--area=64,0_10x10", "", 0, "the area 64,0 10x10 lies outside the screen, which has 64x48 pixels"},
      {"0 mode:32767:2:24", "--size=44", "", 0, "the area of 32767x2 pixels is too small for a recording at 44 %"},
      {"0 mode:64:48:12", "", "", 0, "Framereel does not support recording at the current bit depth"},
      {"0 lostAtRead", "--quiet", "", 0, "the connection to the display was lost; nothing was recorded"},
      {"", "--ticks=1 --size=44 --area=10,10_20x16", "1 9 9 14 12", 100, ""}, // 21x18, whole blocks of 3, by 2/3
      // Another program's window, which the area goes with where it is told to.
      {"0 open", "--window=7 --ticks=1", "1 10 8 20 12", 100, ""},
      {"0 open 50 to:13:8", "--window=7 --ticks=2", "2 10 8 20 12", 200, ""},
      {"0 open 50 to:13:8", "--window=7 --follow --ticks=2", "1 13 8 20 12", 200, ""},
      {"0 open 0 to:-3:-6 50 to:0:-6", "--window=7 --follow --ticks=2", "1 3 0 17 6", 200, ""},
      {"0 open 50 to:60:60", "--window=7 --follow --ticks=2", "2 44 36 20 12", 200, ""},
      {"0 open 50 hide 150 to:13:8 250 show", "--window=7 --follow --ticks=4", "3 13 8 20 12", 400, ""},
      {"0 open 150 close", "--window=7 --follow", "1 10 8 20 12", 200, ""},
      {"0 open 0 hide", "--window=7", "", 0, "the window 0x7 cannot be seen; it may be minimised"},
      {"0 open 0 close", "--window=7", "", 0, "there is no window 0x7"},
      {"0 open", "--window=0xFFFFFFFF", "", 0, "there is no window 0xffffffff"},
      {"0 open 50 click 450 to:13:8", "--window=pick --follow --ticks=2", "1 13 8 20 12", 560, ""},
      {"0 open 0 hide 50 click", "--window=pick", "", 60, "there is no window to record there"},
      {"0 open 50 esc", "--window=pick", "", 60, "no window was picked; nothing was recorded"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.script << " " << c.arguments);
    MemoryDisplayReset(64, 48, 24);
    ActAt(script, c.script);
    const bool ofWindow = std::string(c.script).find("open") != std::string::npos;
    const int status = Run(std::string(c.arguments) + " --stats --no-cursor" + (ofWindow ? " --quiet" : ""));
    const bool done = *c.figures && std::string(c.message).find("FILE holds") == std::string::npos;
    EXPECT_EQ(status, done ? kExitDone : kExitFailed);
    const std::string line = *c.message ? std::string("framereel-record: ") + c.message : "";
    EXPECT_EQ(messages.substr(0, line.size()), line);
    EXPECT_EQ(messages.find('\n') + 1, messages.size());
    EXPECT_EQ(::GetTickCount(), c.passed);
    EXPECT_EQ(folder.EntryCount(), *c.figures != 0);
    EXPECT_TRUE(!done || Told("frames left top width height") == c.figures) << figures;
    EXPECT_EQ(*c.figures ? int(ReadGifFile(place).frames.size()) : 0, std::atoi(c.figures));
    std::filesystem::remove(place);
  }
}

// By the figures that programs can read.
TEST_F(CommandTest, TakesATickAtOnceAndThenOneEachDelayUntilItsEnd) {
  const struct {
    TestClock clock;
    const char* end;
    int ticks, lost;
    uint32_t passed;
  } cases[] = {
      {{}, "--seconds=1", 10, 0, 1000},                 // the one at the end is not taken any more
      {{UINT32_MAX - 149}, "--seconds=0.5", 5, 0, 500}, // the clock wraps
      {{}, "--ticks=5", 5, 0, 500},                     // the last one has its delay, too
      {{}, "--frames=1", 1, 0, 100},
      {{0, 250}, "--no-loop", 3, 0, 250},
      {{0, 0}, "--no-loop", 1, 0, 0},                     // one frame in any case
      {{0, UINT32_MAX, 399}, "--seconds=1", 10, 0, 1000}, // late, the next one is still to come
      {{0, UINT32_MAX, 400}, "--seconds=1", 9, 1, 1000},  // two are due: the older one is lost
      {{0, UINT32_MAX, 720}, "--seconds=1", 6, 4, 1000},  // 700 is taken at 720, 800 in time
      {{0, UINT32_MAX, 1000}, "--seconds=1", 3, 7, 1000}, // past the end nothing is taken
  };
  for (const auto& c : cases) {
    MemoryDisplayReset(64, 48, 24);
    TheMemoryDisplay().tick = c.clock.begin;
    clock = c.clock;
    EXPECT_EQ(Run(std::string("--stats ") + c.end), kExitDone);
    EXPECT_EQ(Told("frames ticks lost_ticks bytes delay_ms left top width height"),
              Text("1 ", c.ticks, " ", c.lost, " ", ReadWholeFile(place).size(), " 100 0 0 64 48"));
    const std::string seconds = std::to_string(1000 + c.passed % 1000).substr(1);
    EXPECT_NE(figures.find(Text("\"seconds\":", c.passed / 1000, ".", seconds, ",")), std::string::npos) << figures;
    EXPECT_EQ(figures.find("{\"frames\""), 0u);
    EXPECT_TRUE(figures.ends_with("}\n")) << figures;
    EXPECT_EQ(::GetTickCount() - c.clock.begin, c.passed) << c.clock.wakesAt;
  }
}

// Frames are noise that is drawn just ahead of a tick.
TEST_F(CommandTest, PlaysAsLongAsItRecordsAtEveryRateWithTicksLostAndTicksThatFindNothing) {
  const auto run = [this](const std::string& delay, const TestClock& c, std::vector<uint32_t> changes) {
    MemoryDisplayReset(16, 12, 24);
    for (const uint32_t time : changes) MemoryAt(time - 1, [time] { DrawNoise(time); });
    clock = c;
    EXPECT_EQ(Run("--no-border --delay=" + delay), kExitDone);
    return ReadGifFile(place).frames;
  };
  for (const uint32_t delay : {25, 26, 30, 33, 50, 101, 200, 333, 1000, 5000}) {
    for (const uint32_t changed : {1, 3, 100}) { // the how many-th tick
      for (const uint32_t late : {0u, 300 + 5 * delay / 2, 300 + 5 * delay - 1}) {
        SCOPED_TRACE(testing::Message() << delay << " " << changed << " " << late);
        std::vector<uint32_t> changes;
        for (uint32_t k = changed; k < 24; k += changed) changes.push_back(k * delay);
        const uint32_t end = 24 * delay + delay * 3 / 7;
        const std::vector<GifFrame> frames = run(std::to_string(delay), {0, end, late}, changes);
        int sum = 0;
        for (size_t i = 0; i < frames.size(); ++i) {
          EXPECT_TRUE(late != 0 || std::abs(10 * sum - int(i * changed * delay)) <= 5);
          EXPECT_TRUE(frames[i].delay >= 2 || i + 1 == frames.size()) << "viewers show less for ten";
          sum += frames[i].delay;
        }
        EXPECT_NEAR(10 * sum, ::GetTickCount(), 5);
        EXPECT_TRUE(late != 0 || frames.size() == changes.size() + 1);
      }
    }
  }
  std::vector<int> delays; // beyond the ends of their field
  for (const GifFrame& frame : run("5000", {0, 2100000}, {700000})) delays.push_back(frame.delay);
  EXPECT_EQ(delays, (std::vector{65535, 4465, 65535, 65535, 8930}));
  EXPECT_EQ(run("5000", {0, 655354}, {}).back().delay, 65535);
  EXPECT_EQ(run("5000", {0, 655355}, {}).back().delay, 1);
}

TEST_F(CommandTest, ShowsProgressAndOutcomeOnATerminal) {
  terminal = true;
  EXPECT_EQ(Run("--delay=5000 --ticks=720"), kExitDone);
  EXPECT_EQ(std::count(messages.begin(), messages.end(), '\r'), 4 * 3600 + 1) << "and wiped in the end";
  EXPECT_TRUE(messages.ends_with("59:59  [########################]\x1b[K\r\x1b[KFILE: 6 frames, 1K, 1:00:00\n"));
  EXPECT_EQ(Run("--seconds=1"), kExitDone);
  EXPECT_EQ(messages.find("\r1 frame, "), 0u);
  EXPECT_NE(messages.find("0:00  [############............]\x1b[K"), std::string::npos);
  EXPECT_EQ(Run("--seconds=1 --quiet"), kExitDone);
  EXPECT_EQ(messages, "");
}

TEST_F(CommandTest, KeepsElsewhereWhatCannotBeSavedInItsPlace) {
  const TemporaryFolder home;
  WriteWholeFile(home / "file", "");
  const std::string longName = std::string(251, 'n') + ".gif", cut = std::string(246, 'n');
  const std::string gone = folder / "gone/", full = "/dev/full", usual = home / ".local/share/framereel/";
  const struct {
    std::string wanted, data, temporary; // the place, and the folders that the user has named
    std::string kept;                    // "" when nowhere
  } cases[] = {
      {gone + "a.gif", home / "data", "", home / "data/framereel/a.gif"},
      {gone + "b", "not absolute", "", usual + "b"},
      {gone + longName, "", "", usual + cut + ".gif"},
      {gone + longName, "", "", usual + cut + "-2.gif"},
      {full, "", "", usual + "animation.gif"},
      {full, home / "file", home.path, home / "animation.gif"},
      {full, home / "file", home / "none", ""},
  };
  ::setenv("HOME", home.path.c_str(), 1);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.kept);
    ::setenv("XDG_DATA_HOME", c.data.c_str(), 1);
    ::setenv("TMPDIR", c.temporary.c_str(), 1);
    place = c.wanted;
    MemoryDisplayReset(64, 48, 24);
    std::filesystem::create_directory(gone);
    MemoryAt(50, [&] { std::filesystem::remove_all(gone); });
    EXPECT_EQ(Run("--ticks=2"), kExitFailed);
    const std::string why = place == full ? "No space left on device" : "No such file or directory";
    const std::string told =
        c.kept == "" ? "nor can it be kept elsewhere: No such file or directory" : "the animation is kept as " + c.kept;
    EXPECT_EQ(messages, "framereel-record: cannot write FILE: " + why + "; " + told + "\n");
    if (c.kept == "") continue;
    EXPECT_EQ(ReadGifFile(c.kept).frames.size(), 1u);
    EXPECT_EQ(std::filesystem::status(c.kept).permissions(), std::filesystem::perms(0600));
  }
}

TEST_F(CommandTest, SavesTheCompleteFramesWhicheverAllocationFails) {
  MemoryDisplayReset(320, 320, 24);
  // The second picture outgrows the stream's first chunk, so that memory may end in the midst of a frame.
  for (const uint32_t time : {0, 150, 250}) MemoryAt(time, [time] { DrawNoise(time); });
  Run("--ticks=1"); // what it makes once for all its runs is made now
  std::filesystem::remove(place);
  size_t saved = 0;
  int status = kExitFailed;
  for (allocations = 0; status != kExitDone; ++allocations) {
    SCOPED_TRACE(testing::Message() << "allocation " << allocations);
    const pid_t child = ::fork();
    if (child == 0) ::_exit(Run("--ticks=3"));
    ::waitpid(child, &status, 0);
    status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    ASSERT_TRUE(status == kExitDone || status == kExitFailed);
    const bool exists = std::filesystem::exists(place);
    ASSERT_EQ(folder.EntryCount(), size_t{exists});
    saved += exists;
    ASSERT_EQ(exists ? ReadGifFile(place).error : "", "");
    std::filesystem::remove(place);
  }
  EXPECT_GT(allocations, 6);
  EXPECT_GT(saved, 2u) << "one of them with all frames";
  allocations = INT64_MAX;
  MemoryAt(280, [] { std::abort(); }); // a library
  EXPECT_EXIT(Run("--ticks=3"), testing::KilledBySignal(SIGABRT), "");
  EXPECT_EQ(ReadGifFile(place).frames.size(), 2u);
}

TEST_F(CommandTest, ListsTheWindowsOfWhichSomethingIsSeen) {
  MemoryOpenWindow("Under it", {-5, 8, 30, 20}, 1)->name = 7;
  MemoryOpenWindow("a\twin\ndow", {10, 8, 30, 20}, 1)->name = 0x1A;
  MemoryOpenWindow("beside the screen", {64, 0, 70, 9}, 1);
  MemoryMinimiseWindow(MemoryOpenWindow("minimised", {1, 1, 9, 9}, 1), true);
  char* printed = nullptr;
  size_t length = 0;
  Command().figures = ::open_memstream(&printed, &length);
  EXPECT_EQ(ListWindowsRun(Command()), kExitDone);
  fclose(Command().figures);
  EXPECT_STREQ(printed, "0x1a\t10,8 20x12\ta\\twin\\ndow\n0x7\t-5,8 35x12\tUnder it\n");
  free(printed);
}

TEST_F(CommandTest, KeepsAFileIfItIsToldToAndNothingWhenTheUserEndsTheCountdown) {
  WriteWholeFile(place, "older");
  EXPECT_EQ(Run("--no-clobber"), kExitFailed);
  EXPECT_EQ(messages, "framereel-record: FILE exists already, and --no-clobber keeps it\n");
  EXPECT_EQ(Run("--no-clobber --overwrite --ticks=1"), kExitDone);
  std::filesystem::remove(place);
  clock.stopAt = 2500;
  terminal = true;
  EXPECT_EQ(Run("--countdown=3"), kExitFailed);
  EXPECT_EQ(messages, "\rrecording in 3 s\x1b[K\rrecording in 2 s\x1b[K\rrecording in 1 s\x1b[K\r\x1b[K"
                      "framereel-record: the countdown was ended; nothing was recorded\n");
  EXPECT_EQ(folder.EntryCount(), 0u);
}

} // namespace
} // namespace framereel
