// The settings file: its bytes, what every kind of text in it comes to, and a world that does not let it be written.
#include "app/settings_file.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "app/settings_program.h"
#include "win32/memory/memory_windows.h"

namespace framereel {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

constexpr char kFreshFile[] = "Recording Area:0,0 440x330\r\n"
                              "Frame Delay:333\r\n"
                              "Interframe Transparency:Yes\r\n"
                              "Record Timing Info:Yes\r\n"
                              "Loop:Yes\r\n"
                              "Fake Screen:Yes\r\n"
                              "Overlay Border:Yes\r\n"
                              "Overlay Cursor:Yes\r\n"
                              "Explorer 2.0 Compatible:No\r\n"
                              "Recording Size:100\r\n";
constexpr char kDefaults[] = "0,0 440x330 333 ITLFBCe 100";

struct Case {
  std::string text, told;
};

void ExpectAll(const std::vector<Case>& cases) {
  SettingsProgram program;
  for (const Case& one : cases) EXPECT_EQ(program.Loaded(one.text), one.told) << one.text;
}

// ---- The whole file -----------------------------------------------------------------------------------------------

TEST(SettingsFile, AFreshProgramHasTheDefaultsAndWritesNothingUntilItSaves) {
  SettingsProgram program;
  EXPECT_EQ(program.Told(), kDefaults);
  EXPECT_EQ(program.folder.EntryCount(), 0u);
  SettingsSave(program.settings);
  EXPECT_EQ(ReadWholeFile(program.place), kFreshFile);
}

TEST(SettingsFile, ASaveWritesTheFileAnewAndEveryValueComesBack) {
  SettingsProgram program;
  WriteWholeFile(program.place, "Something:else\r\n"s + kFreshFile + kFreshFile);
  program.options = {5000, false, false, false, false, false, true, kSize44, false};
  program.recorder.captureArea = {100, 30, 400, 630};
  SettingsSave(program.settings);
  const std::string text = "Recording Area:30,100 600x300\r\n"
                           "Frame Delay:5000\r\n"
                           "Interframe Transparency:No\r\n"
                           "Record Timing Info:No\r\n"
                           "Loop:No\r\n"
                           "Fake Screen:No\r\n"
                           "Overlay Border:No\r\n"
                           "Overlay Cursor:No\r\n"
                           "Explorer 2.0 Compatible:Yes\r\n"
                           "Recording Size:44\r\n";
  EXPECT_EQ(ReadWholeFile(program.place), text);
  EXPECT_EQ(program.Loaded(text), "30,100 600x300 5000 itlfbcE 44");
}

TEST(SettingsFile, EachKeyFeedsItsOwnFieldAndTheLastOneHolds) {
  ExpectAll({{"Interframe Transparency:No", "0,0 440x330 333 iTLFBCe 100"},
             {"Record Timing Info:No", "0,0 440x330 333 ItLFBCe 100"},
             {"Loop:No", "0,0 440x330 333 ITlFBCe 100"},
             {"Fake Screen:No", "0,0 440x330 333 ITLfBCe 100"},
             {"Overlay Border:No", "0,0 440x330 333 ITLFbCe 100"},
             {"Overlay Cursor:No", "0,0 440x330 333 ITLFBce 100"},
             {"Explorer 2.0 Compatible:Yes", "0,0 440x330 333 ITLFBCE 100"},
             {"Frame Delay:25\r\nLoop:No\r\nFrame Delay:50\r\nLoop:Yes", "0,0 440x330 50 ITLFBCe 100"},
             {"loop:No\r\n Loop:No\r\nLoop :No\r\nColour:No\r\n:No\r\nFrame Delay:25", "0,0 440x330 25 ITLFBCe 100"}});
}

TEST(SettingsFile, WhatAFileLeavesOutStaysButDelayAndSize) {
  SettingsProgram program;
  program.options = {25, false, true, false, true, true, true, kSize25, false};
  program.recorder.captureArea = {10, 20, 30, 40};
  WriteWholeFile(program.place, "Overlay Border:No\r\n");
  SettingsLoad(program.settings);
  EXPECT_EQ(program.Told(), "20,10 20x20 333 iTlfbCE 100");
}

// ---- Values -------------------------------------------------------------------------------------------------------

TEST(SettingsFile, NumbersComeToWhatTheProgramOffers) {
  std::vector<Case> cases;
  const std::pair<const char*, const char*> delays[] = {
      {"7000", "5000"},      {"4999", "4000"},     {"340", "333"}, {"26", "25"},    {"0", "25"},
      {"-333", "25"},        {"", "25"},           {"fast", "25"}, {" 500", "500"}, {"100 ms", "100"},
      {"4294967796", "500"}, {"00000000500", "50"}};
  for (const auto& [text, delay] : delays) {
    cases.push_back({"Frame Delay:"s + text, "0,0 440x330 "s + delay + " ITLFBCe 100"});
  }
  const std::pair<const char*, const char*> sizes[] = {{"-7", "25"},  {"x", "25"},    {"0", "25"},   {"25", "25"},
                                                       {"45", "100"}, {"100", "100"}, {"101", "100"}};
  for (const auto& [text, size] : sizes) {
    cases.push_back({"Recording Size:"s + text, "0,0 440x330 333 ITLFBCe "s + size});
  }
  cases.push_back({"Recording Size:26", "0,0 441x330 333 ITLFBCe 44"}); // in whole blocks of 3
  cases.push_back({"Recording Size:44", "0,0 441x330 333 ITLFBCe 44"});
  ExpectAll(cases);
}

TEST(SettingsFile, AFlagIsSetByOneWordOnly) {
  for (const char* word : {"yes", "YES", "Yes ", " Yes", "Ye", "No", "", "1", "Yes\r", "Yes\\n"}) {
    ExpectAll({{"Loop:"s + word, "0,0 440x330 333 ITlFBCe 100"}});
  }
  ExpectAll({{"Explorer 2.0 Compatible:\\Y\\es\\", "0,0 440x330 333 ITLFBCE 100"},
             {"Explorer 2.0 Compatible:Yes\0No"s, "0,0 440x330 333 ITLFBCE 100"}});
}

TEST(SettingsFile, AnAreaIsCutToTheScreenOrGivesWayToTheDefault) {
  const char kDefaultArea[] = "0,0 440x330";
  const std::pair<const char*, const char*> areas[] = {
      {"12,40 320x240", "12,40 320x240"},
      {"  12, 40   320x 240 px", "12,40 320x240"},
      {"-10,-10 100x100", "0,0 90x90"},
      {"600,440 100x100", "600,440 40x40"},
      {"639,479 1x1", "639,479 1x1"},
      {"640,100 100x100", kDefaultArea},
      {"3000,3000 100x100", kDefaultArea},
      {"-100,0 100x100", kDefaultArea},
      {"10,10 0x50", kDefaultArea},
      {"10,10 50x-5", kDefaultArea},
      // Sixteen bits: their ends, what leaves them, and numbers of which they are the low ones.
      {"0,0 32767x32767", "0,0 640x480"},
      {"-32768,-32768 32767x32767", kDefaultArea},
      {"1,0 32767x100", kDefaultArea},
      {"0,1 100x32767", kDefaultArea},
      {"-32768,0 -1x100", kDefaultArea},
      {"65546,-65526 65556x20", "10,10 20x20"},
      // Broken off: what was told, 0 at the break, and then what was there.
      {"12;40 320x240", "12,0 440x330"},
      {"12,", "12,0 440x330"},
      {"12,40 320", "12,40 320x330"},
      {"12,40 320x", kDefaultArea},
      {"", kDefaultArea},
  };
  std::vector<Case> cases;
  for (const auto& [text, told] : areas) cases.push_back({"Recording Area:"s + text, told + " 333 ITLFBCe 100"s});
  cases.push_back({"Recording Area:12,40\r\nRecording Area:5\r\n", "5,40 440x330 333 ITLFBCe 100"});
  ExpectAll(cases);
}

TEST(SettingsFile, TheDefaultAreaFitsASmallScreenAndATaskBar) {
  SettingsProgram program(320, 200);
  EXPECT_EQ(program.Told(), "0,0 320x200 333 ITLFBCe 100");
  EXPECT_EQ(program.Loaded("Recording Size:44"), "1,1 318x198 333 ITLFBCe 44");
  EXPECT_EQ(program.Loaded("Recording Size:44\r\nRecording Area:900,0 9x9"), "1,1 318x198 333 ITLFBCe 44");
  MemorySetTaskBar({0, 180, 320, 200});
  Settle();
  EXPECT_EQ(program.Loaded(""), "0,0 320x180 333 ITLFBCe 100");
  EXPECT_EQ(program.Loaded("Recording Area:8,170 30x30"), "8,170 30x10 333 ITLFBCe 100");
  EXPECT_EQ(program.Loaded("Recording Area:8,180 30x20"), "0,0 320x180 333 ITLFBCe 100");
}

// ---- Lines --------------------------------------------------------------------------------------------------------

TEST(SettingsFile, ReadingStopsAtALineThatIsNoneOrTooLong) {
  const std::string key50(50, 'k'), value80(80, 'v');
  const std::string passed[] = {key50 + ":" + std::string(79, 'v'), key50.substr(2) + ":" + value80, key50 + ":"};
  const std::string stops[] = {"",
                               "no colon",
                               key50 + "k:v",
                               "k:" + value80 + "v",
                               key50 + ":" + value80, // with its end beyond what is looked at
                               std::string(500, 'x'),
                               std::string(500, '\0'),
                               "k:" + std::string(40, '\\') + value80.substr(1, 41)};
  std::vector<Case> cases;
  for (const std::string& line : passed) {
    cases.push_back({"Frame Delay:25\r\n" + line + "\r\nLoop:No", "0,0 440x330 25 ITlFBCe 100"});
  }
  for (const std::string& line : stops) {
    cases.push_back({"Frame Delay:25\r\n" + line + "\r\nLoop:No", "0,0 440x330 25 ITLFBCe 100"});
  }
  // Only CR LF ends a line.
  cases.push_back({"Loop:No\nFrame Delay:25\r\nFrame Delay:50\r", "0,0 440x330 50 ITlFBCe 100"});
  cases.push_back({"Explorer 2.0 Compatible:Yes\r", kDefaults});
  cases.push_back({"", kDefaults});
  ExpectAll(cases);
}

using Lines = std::vector<std::pair<std::string, std::string>>;

// Opens the file that the program's settings are in.
OpenedFile Open(const SettingsProgram& program, FileMode mode) {
  return OpenedFile(FileOpen(program.settings.ref, mode));
}

Lines ReadLines(const SettingsProgram& program) {
  const OpenedFile file = Open(program, FileModeRead);
  char key[kSettingsKeyLimit + 1], value[kSettingsValueLimit + 1];
  Lines lines;
  while (SettingsReadLine(file.get(), key, value)) lines.emplace_back(key, value);
  return lines;
}

TEST(SettingsFile, LongValuesAndOddCharactersComeBackFromTheirLines) {
  const SettingsProgram program;
  const std::string odd = "a\nb\\n\\\n\xFF:\r.", full(79, 'x'), rest(78, 'x'), longer = full + "\n" + rest + "xyz";
  WriteWholeFile(program.place, "");
  OpenedFile file = Open(program, FileModeWrite);
  SettingsWriteString(file.get(), "odd", odd.c_str());
  SettingsWriteString(file.get(), "none", "");
  SettingsWriteString(file.get(), "full", full.c_str());
  SettingsWriteString(file.get(), "long", longer.c_str());
  file.reset();
  EXPECT_EQ(ReadWholeFile(program.place), "odd:a\\nb\\\\n\\\\\\n\xFF:\r.\r\nfull:" + full + "\r\nlong:" + full +
                                              "\r\nlong:\\n" + rest + "\r\nlong:xyz\r\n");
  const Lines lines = {{"odd", odd}, {"full", full}, {"long", full}, {"long", '\n' + rest}, {"long", "xyz"}};
  EXPECT_EQ(ReadLines(program), lines);
}

// ---- A world that says no -----------------------------------------------------------------------------------------

TEST(SettingsFile, AFolderInItsPlaceIsLeftAlone) {
  SettingsProgram program;
  fs::create_directory(program.place);
  WriteWholeFile(program.place + "/inside", "kept");
  SettingsSave(program.settings);
  SettingsLoad(program.settings);
  EXPECT_EQ(program.Told(), kDefaults);
  EXPECT_EQ(ReadWholeFile(program.place + "/inside"), "kept");
  fs::remove_all(program.folder.path);
  SettingsSave(program.settings);
  EXPECT_FALSE(fs::exists(program.folder.path));
}

// Somebody whom permissions bind, also where the tests are run by the superuser.
struct OrdinaryUser {
  const uid_t before = ::geteuid();
  const bool bound = before != 0 || ::seteuid(65534) == 0;

  OrdinaryUser() = default;
  ~OrdinaryUser() {
    if (before != ::geteuid() && ::seteuid(before) != 0) std::abort();
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
};

TEST(SettingsFile, AnOldFileStaysWhereNothingMayBeWritten) {
  SettingsProgram program;
  WriteWholeFile(program.place, "Loop:No\r\n");
  fs::permissions(program.folder.path, fs::perms{0555});
  {
    const OrdinaryUser user;
    if (!user.bound) GTEST_SKIP() << "permissions bind nobody here";
    program.options.frameDelay = 25;
    SettingsSave(program.settings);
    EXPECT_EQ(ReadWholeFile(program.place), "Loop:No\r\n");
    SettingsLoad(program.settings);
    EXPECT_EQ(program.Told(), "0,0 440x330 333 ITlFBCe 100");
  }
  fs::permissions(program.folder.path, fs::perms{0755});
  fs::permissions(program.place, fs::perms{0});
  {
    const OrdinaryUser user;
    program.options = {};
    SettingsLoad(program.settings); // it is there, but can't be read
    EXPECT_EQ(program.Told(), kDefaults);
  }
}

} // namespace
} // namespace framereel
