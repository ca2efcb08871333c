// The whole command on the display in memory: what it records, what it refuses, and what it saves when the world fails.
#include "record/command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <iomanip>
#include <map>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

#include "record/arguments.h"
#include "support/allocations.h"
#include "support/gif_reader.h"
#include "support/temporary_folder.h"
#include "win32/memory/memory_display.h"
#include "win32/memory/memory_windows.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_input.h"
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

  void SetUp() override { MemoryDisplayReset(64, 48, 24); }

  // One record for all runs, as its engine is made only once.
  static RecordCommand& Command() {
    static RecordCommand command;
    if (!command.gif.stream) RecordCommandInit(command);
    return command;
  }

  // Runs the command into `place`, ten times a second if no more is said; `messages` gets what it says, with FILE for
  // the place.
  int Run(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "--delay=100");
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
};

// As if there had been more in front of what the stream has.
void PretendSize(RecordCommand& command, uint32_t size) {
  command.recorder.lastControl += size - command.stream.streamSize;
  command.stream.streamSize = command.recorder.frameBytes = size;
}

// What happens at a time of the script.
void Happen(const std::string& what, RecordCommand& command) {
  const uint32_t lastWithRoom = UINT32_MAX - 2 * 64 * 48 - 4096;
  if (what == "noise") DrawNoise(::GetTickCount());
  if (what == "lost") TheMemoryDisplay().lost = true;
  if (what == "lostAtRead") TheMemoryDisplay().lostAtRead = 1;
  if (what == "none") TheMemoryDisplay().present = false;
  if (what == "depth8") MemoryDisplaySetMode(64, 48, 8);
  if (what == "depth12") MemoryDisplayReset(64, 48, 12);
  if (what == "small") MemoryDisplaySetMode(16, 12, 24);
  if (what == "flat") MemoryDisplayReset(32767, 2, 24);
  if (what == "last") PretendSize(command, lastWithRoom);
  if (what == "full") PretendSize(command, lastWithRoom + 1);
  if (what == "display") ::setenv("DISPLAY", ":77", 1);
  if (what == "wayland") ::setenv("WAYLAND_DISPLAY", "wayland-0", 1);
  if (what == "empty") ::setenv("DISPLAY", "", 1);
}

TEST_F(CommandTest, TellsHowItWentAndSavesWhatItHas) {
  const struct {
    const char* script; // at what time what happens; at 0 ahead of the command
    std::vector<const char*> arguments;
    size_t frames;       // in the file; 0: there is none
    uint32_t passed;     // ms
    const char* message; // how its one line begins, behind the command's name
  } cases[] = {
      {"", {"--ticks=3"}, 1, 300, ""},
      {"150 noise 250 lost",
       {"--quiet"},
       2,
       300,
       "the connection to the display was lost; FILE holds the 2 frames before that"},
      {"250 depth8", {"--quiet"}, 1, 300, "the screen's colour depth has changed; FILE holds the 1 frame before that"},
      {"50 last 250 full", {"--quiet"}, 1, 300, "the animation has reached 4 GiB; FILE holds the 1 frame before that"},
      {"150 small 250 noise", {"--ticks=4"}, 2, 400, "Part of the recording area is not on the screen any more"},
      {"150 small 250 noise", {"--ticks=4", "--quiet"}, 2, 400, ""},
      {"", {"--ticks=1", "--area=60,0 4x48"}, 1, 100, ""},
      {"", {"--ticks=1", "--area=-10,40 30x8"}, 1, 100, "part of the area lies off the screen; recording 0,40 20x8"},
      {"", {"--ticks=1", "--area=9,-5 30x8"}, 1, 100, "part of the area lies off the screen; recording 9,0 30x3"},
      {"", {"--ticks=1", "--area=60,0 30x100", "--quiet"}, 1, 100, ""},
      {"", {"--area=64,0 10x10"}, 0, 0, "the area 64,0 10x10 lies outside the screen, which has 64x48 pixels"},
      {"", {"--area=0,-10 10x10"}, 0, 0, "the area 0,-10 10x10 lies outside the screen, which has 64x48 pixels"},
      {"0 flat",
       {"--size=44"},
       0,
       0,
       "the area of 32767x2 pixels is too small for a recording at 44 %, which takes "
       "blocks of 3x3"},
      {"0 depth12", {}, 0, 0, "Framereel does not support recording at the current bit depth (4096 colours)"},
      {"0 lost", {}, 0, 0, "the connection to the display was lost; nothing was recorded"},
      {"0 lostAtRead", {"--quiet"}, 0, 0, "the connection to the display was lost; nothing was recorded"},
      {"0 none 0 display", {}, 0, 0, "there is no display to record: \":77\", as DISPLAY names it, does not answer"},
      {"0 none 0 empty", {}, 0, 0, "there is no display to record: DISPLAY is not set"},
      {"0 none", {}, 0, 0, "there is no display to record: DISPLAY is not set"},
      {"0 none 0 display 0 wayland",
       {},
       0,
       0,
       "there is no display to record in this Wayland session; log in to an X11"},
      {"0 display 0 wayland", {"--ticks=1", "--quiet"}, 1, 100, "this is a Wayland session, which does not show"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.script << " " << testing::PrintToString(c.arguments));
    MemoryDisplayReset(64, 48, 24);
    ::unsetenv("DISPLAY");
    ::unsetenv("WAYLAND_DISPLAY");
    std::istringstream steps(c.script);
    uint32_t time;
    for (std::string what; steps >> time >> what;) {
      if (time == 0) Happen(what, Command());
      if (time != 0) MemoryAt(time, [what] { Happen(what, Command()); });
    }
    const bool done = c.frames > 0 && std::string(c.message).find("FILE holds") == std::string::npos;
    EXPECT_EQ(Run(c.arguments), done ? kExitDone : kExitFailed);
    const std::string line = *c.message ? std::string("framereel-record: ") + c.message : "";
    EXPECT_EQ(messages.substr(0, line.size()), line);
    EXPECT_EQ(messages.find('\n') + 1, messages.size());
    EXPECT_EQ(::GetTickCount(), c.passed);
    EXPECT_EQ(folder.EntryCount(), c.frames > 0);
    EXPECT_EQ(c.frames > 0 ? ReadGifFile(place).frames.size() : 0, c.frames);
    std::filesystem::remove(place);
  }
  ::unsetenv("WAYLAND_DISPLAY");
}

TEST_F(CommandTest, HandsItsOptionsToTheEngine) {
  EXPECT_EQ(Run({"--ticks=1", "--no-loop", "--size=44", "--area=10,10 20x16", "--owner=Ada"}), kExitDone);
  const GifPicture gif = ReadGifFile(place);
  EXPECT_NE(ReadWholeFile(place).find("Created by Ada, using"), std::string::npos);
  EXPECT_EQ(ReadWholeFile(place).find("NETSCAPE"), std::string::npos);
  EXPECT_EQ(gif.width, 14) << "21 pixels, widened from 20, by 2/3";
  EXPECT_EQ(gif.height, 12) << "18 pixels, widened from 16";
}

// By the figures that programs can read.
TEST_F(CommandTest, TakesATickAtOnceAndThenOneEachDelayUntilItsEnd) {
  const struct {
    TestClock clock;
    const char* end;
    int frames, ticks, lost;
    uint32_t passed;
  } cases[] = {
      {{}, "--seconds=1", 1, 10, 0, 1000},                 // the one at the end is not taken any more
      {{UINT32_MAX - 149}, "--seconds=0.5", 1, 5, 0, 500}, // the clock wraps
      {{}, "--ticks=5", 1, 5, 0, 500},                     // the last one has its delay, too
      {{}, "--frames=1", 1, 1, 0, 100},
      {{0, 250}, "--no-loop", 1, 3, 0, 250},
      {{0, 0}, "--no-loop", 1, 1, 0, 0},                     // one frame in any case
      {{0, UINT32_MAX, 399}, "--seconds=1", 1, 10, 0, 1000}, // late, the next one is still to come
      {{0, UINT32_MAX, 400}, "--seconds=1", 1, 9, 1, 1000},  // two are due: the older one is lost
      {{0, UINT32_MAX, 720}, "--seconds=1", 1, 6, 4, 1000},  // 700 is taken at 720, 800 in time
      {{0, UINT32_MAX, 999}, "--seconds=1", 1, 4, 6, 1000},
      {{0, UINT32_MAX, 1000}, "--seconds=1", 1, 3, 7, 1000}, // past the end nothing is taken
      {{0, UINT32_MAX, 50000}, "--seconds=1", 1, 3, 7, 50000},
  };
  for (const auto& c : cases) {
    MemoryDisplayReset(64, 48, 24);
    TheMemoryDisplay().tick = c.clock.begin;
    clock = c.clock;
    EXPECT_EQ(Run({"--stats", c.end}), kExitDone);
    std::ostringstream told;
    told << "{\"frames\":" << c.frames << ",\"ticks\":" << c.ticks << ",\"lost_ticks\":" << c.lost
         << ",\"bytes\":" << ReadWholeFile(place).size() << ",\"seconds\":" << c.passed / 1000 << "." << std::setw(3)
         << std::setfill('0') << c.passed % 1000
         << ",\"delay_ms\":100,\"left\":0,\"top\":0,\"width\":64,\"height\":48,\"cpu_seconds\":";
    EXPECT_EQ(figures.substr(0, told.str().size()), told.str());
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
    EXPECT_EQ(Run({("--delay=" + delay).c_str(), "--no-border"}), kExitDone);
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
  EXPECT_EQ(Run({"--delay=5000", "--ticks=2"}), kExitDone);
  EXPECT_EQ(std::count(messages.begin(), messages.end(), '\r'), 40 + 1) << "four times a second, and wiped in the end";
  EXPECT_EQ(Run({"--seconds=1"}), kExitDone);
  EXPECT_EQ(messages.find("\r1 frame, "), 0u);
  EXPECT_NE(messages.find("0:00  [############............]\x1b[K"), std::string::npos);
  EXPECT_NE(messages.find("\x1b[K\r\x1b[KFILE: 1 frame, "), std::string::npos);
  EXPECT_TRUE(messages.ends_with(", 0:01\n"));
  EXPECT_EQ(Run({"--seconds=1", "--quiet"}), kExitDone);
  EXPECT_EQ(messages, "");
  TheMemoryDisplay().lost = true;
  EXPECT_EQ(Run({}), kExitFailed);
  EXPECT_EQ(messages, "framereel-record: the connection to the display was lost; nothing was recorded\n");
}

TEST_F(CommandTest, KeepsElsewhereWhatCannotBeSavedInItsPlace) {
  const TemporaryFolder home;
  WriteWholeFile(home / "file", "");
  const std::string longName = std::string(251, 'n') + ".gif", cut = std::string(246, 'n');
  const std::string places = folder / "places/";
  const auto remove = [&] { std::filesystem::remove_all(places); };
  const auto move = [&] { std::filesystem::rename(places, folder / "moved"); };
  const auto refuse = [&] { std::filesystem::create_directories(place + "/in the way"); };
  const struct {
    std::string wanted;
    std::function<void()> happens; // while it records
    const char* why;
    std::string data, temporary; // the folders that the user has named
    std::string kept;            // "" when nowhere
  } cases[] = {
      {places + "a.gif", remove, "No such file or directory", home / "data", "", home / "data/framereel/a.gif"},
      {places + "a.gif", move, "No such file or directory", home / "data", "", home / "data/framereel/a-2.gif"},
      {places + "b.gif", refuse, "Is a directory", "", "", home / ".local/share/framereel/b.gif"},
      {places + "b", refuse, "Is a directory", "not absolute", "", home / ".local/share/framereel/b"},
      {places + longName, remove, "No such file or directory", "", "", home / ".local/share/framereel/" + cut + ".gif"},
      {places + longName, remove, "No such file or directory", "", "",
       home / ".local/share/framereel/" + cut + "-2.gif"},
      {"/dev/full", [] {}, "No space left on device", "", "", home / ".local/share/framereel/animation.gif"},
      {"/dev/full", [] {}, "No space left on device", home / "file", home.path, home / "animation.gif"},
      {"/dev/full", [] {}, "No space left on device", home / "file", home / "none", ""},
  };
  ::setenv("HOME", home.path.c_str(), 1);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.kept);
    std::filesystem::remove_all(folder / "moved");
    std::filesystem::create_directory(places);
    ::setenv("XDG_DATA_HOME", c.data.c_str(), 1);
    ::setenv("TMPDIR", c.temporary.c_str(), 1);
    place = c.wanted;
    MemoryDisplayReset(64, 48, 24);
    MemoryAt(50, c.happens);
    EXPECT_EQ(Run({"--ticks=2"}), kExitFailed);
    const std::string told =
        c.kept == "" ? "nor can it be kept elsewhere: No such file or directory" : "the animation is kept as " + c.kept;
    EXPECT_EQ(messages, std::string("framereel-record: cannot write FILE: ") + c.why + "; " + told + "\n");
    if (c.kept == "") continue;
    EXPECT_EQ(ReadGifFile(c.kept).frames.size(), 1u);
    EXPECT_EQ(std::filesystem::status(c.kept).permissions(), std::filesystem::perms(0600));
  }
  ::unsetenv("TMPDIR");
}

TEST_F(CommandTest, SavesTheCompleteFramesWhicheverAllocationFails) {
  MemoryDisplayReset(320, 320, 24);
  // The second picture outgrows the stream's first chunk, so that memory may end in the midst of a frame.
  for (const uint32_t time : {0, 150, 250}) MemoryAt(time, [time] { DrawNoise(time); });
  Run({"--ticks=1"}); // what it makes once for all its runs is made now
  std::filesystem::remove(place);
  size_t saved = 0;
  int status = kExitFailed;
  for (allocations = 0; status != kExitDone; ++allocations) {
    SCOPED_TRACE(testing::Message() << "allocation " << allocations);
    const pid_t child = ::fork();
    if (child == 0) ::_exit(Run({"--ticks=3"}));
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
  EXPECT_EXIT(Run({"--ticks=3"}), testing::KilledBySignal(SIGABRT), "");
  EXPECT_EQ(ReadGifFile(place).frames.size(), 2u);
}

// The window is of one colour, so that a second frame tells that the area has not gone with it.
TEST_F(CommandTest, RecordsAWindowByItsNumberOrAClickAndFollowsIt) {
  const struct {
    const char* script; // what becomes of the window, and when; at 0 ahead of the command
    std::vector<const char*> arguments;
    const char *figures, *message; // how the recording begins to tell of itself, or why there is none
    uint32_t passed;
  } cases[] = {
      {"", {"--window=7", "--ticks=1"}, "1 10 8 20 12", "", 100},
      {"50 right", {"--window=7", "--ticks=2"}, "2 10 8 20 12", "", 200},
      {"50 right", {"--window=7", "--follow", "--ticks=2"}, "1 13 8 20 12", "", 200},
      {"0 corner 50 right", {"--window=7", "--follow", "--ticks=2"}, "1 3 0 7 6", "", 200},
      {"50 away", {"--window=7", "--follow", "--ticks=2"}, "2 44 36 20 12", "", 200},
      {"50 hide 150 right 250 show", {"--window=7", "--follow", "--ticks=4"}, "3 13 8 20 12", "", 400},
      {"150 close", {"--window=7", "--follow"}, "1 10 8 20 12", "", 200},
      {"0 hide", {"--window=7"}, "", "the window 0x7 cannot be seen; it may be minimised", 0},
      {"0 close", {"--window=7"}, "", "there is no window 0x7", 0},
      {"", {"--window=0xFFFFFFFF"}, "", "there is no window 0xffffffff", 0},
      {"50 click 450 right", {"--window=pick", "--follow", "--ticks=2"}, "1 13 8 20 12", "", 560},
      {"0 hide 50 click", {"--window=pick"}, "", "there is no window to record there", 60},
      {"50 escape", {"--window=pick"}, "", "no window was picked; nothing was recorded", 60},
  };
  size_t run = 0;
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.script << " " << testing::PrintToString(c.arguments));
    const bool packed = run++ % 2 == 0; // four colours: rows of the screen begin at every fourth pixel
    MemoryDisplayReset(64, 48, packed ? 2 : 24);
    DisplayWindow* window = MemoryOpenWindow("a window", {10, 8, 30, 20}, packed ? 1 : 0xFF);
    window->name = 7;
    const std::map<std::string, std::function<void()>> deeds = {
        {"right", [&] { MemoryMoveWindow(window, Moved(window->place, 3, 0)); }},
        {"away",
         [&] {
           MemoryMoveWindow(window, {60, 60, 80, 72});
         }},
        {"corner",
         [&] {
           MemoryMoveWindow(window, {-3, -6, 7, 6});
         }},
        {"hide", [&] { MemoryMinimiseWindow(window, true); }},
        {"show", [&] { MemoryMinimiseWindow(window, false); }},
        {"close", [&] { MemoryCloseWindow(window); }},
        {"click", [&] { MemoryClick(15, 10); }},
        {"escape", [&] { MemoryTypeKey(VK_ESCAPE); }},
    };
    std::istringstream steps(c.script);
    uint32_t time;
    for (std::string what; steps >> time >> what;) time == 0 ? deeds.at(what)() : MemoryAt(time, deeds.at(what));
    std::vector<const char*> arguments = c.arguments;
    arguments.insert(arguments.end(), {"--stats", "--quiet", "--no-cursor"});
    EXPECT_EQ(Run(arguments), *c.figures ? kExitDone : kExitFailed);
    EXPECT_EQ(messages, *c.message ? std::string("framereel-record: ") + c.message + "\n" : "");
    std::ostringstream told;
    for (const std::string name : {"frames", "left", "top", "width", "height"}) {
      const size_t at = figures.find("\"" + name + "\":");
      if (at != std::string::npos)
        told << (name == "frames" ? "" : " ") << std::stoi(figures.substr(at + name.size() + 3));
    }
    EXPECT_EQ(told.str(), c.figures) << figures;
    EXPECT_EQ(::GetTickCount(), c.passed);
  }
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

TEST_F(CommandTest, CountsDownAheadOfTheFirstFrameAndKeepsAFileIfItIsToldTo) {
  EXPECT_EQ(Run({"--countdown=2", "--ticks=3"}), kExitDone);
  EXPECT_EQ(messages, "framereel-record: recording in 2 s\n");
  EXPECT_EQ(::GetTickCount(), 2300u);
  EXPECT_EQ(Run({"--no-clobber"}), kExitFailed);
  EXPECT_EQ(messages, "framereel-record: FILE exists already, and --no-clobber keeps it\n");
  EXPECT_EQ(::GetTickCount(), 2300u);
  EXPECT_EQ(Run({"--no-clobber", "--overwrite", "--ticks=1"}), kExitDone);
  std::filesystem::remove(place);
  MemoryDisplayReset(64, 48, 24);
  clock.stopAt = 2500;
  terminal = true;
  EXPECT_EQ(Run({"--countdown=3"}), kExitFailed);
  EXPECT_EQ(messages, "\rrecording in 3 s\x1b[K\rrecording in 2 s\x1b[K\rrecording in 1 s\x1b[K\r\x1b[K"
                      "framereel-record: the countdown was ended; nothing was recorded\n");
  EXPECT_EQ(folder.EntryCount(), 0u);
}

} // namespace
} // namespace framereel
