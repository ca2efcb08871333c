// The settings file: its bytes, what every kind of text in it comes to, and a world that does not let it be written.
#include "app/settings_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "app/settings_program.h"
#include "win32/memory/memory_windows.h"

namespace framereel {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

constexpr char kDefaults[] = "0,0 440x330 333 ITLFBCe 100";

// ---- The whole file -----------------------------------------------------------------------------------------------

TEST(SettingsFile, IsWrittenAnewByASaveAloneAndEveryValueComesBack) {
  SettingsProgram program;
  EXPECT_EQ(program.Told(), kDefaults);
  EXPECT_EQ(ReadWholeFile(program.place), "");
  SettingsSave(program.settings);
  EXPECT_EQ(ReadWholeFile(program.place), "Recording Area:0,0 440x330\r\n"
                                          "Frame Delay:333\r\n"
                                          "Interframe Transparency:Yes\r\n"
                                          "Record Timing Info:Yes\r\n"
                                          "Loop:Yes\r\n"
                                          "Fake Screen:Yes\r\n"
                                          "Overlay Border:Yes\r\n"
                                          "Overlay Cursor:Yes\r\n"
                                          "Explorer 2.0 Compatible:No\r\n"
                                          "Recording Size:100\r\n");
  const std::string page = ReadWholeFile(MAN_PAGES "framereel-settings.5");
  std::istringstream lines(ReadWholeFile(program.place));
  for (std::string line; std::getline(lines, line, '\r'); lines.get()) {
    EXPECT_NE(page.find("\n.It Li " + line + "\n"), std::string::npos) << line;
  }
  WriteWholeFile(program.place, "Something:else\r\n" + ReadWholeFile(program.place));
  program.options = {5000, false, false, false, false, false, true, kSize44, false};
  program.recorder.captureArea = {100, 30, 400, 630};
  SettingsSave(program.settings);
  const std::string text = ReadWholeFile(program.place);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 10);
  EXPECT_EQ(program.Loaded(text), "30,100 600x300 5000 itlfbcE 44");
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

TEST(SettingsFile, ValuesComeToWhatTheProgramOffersAndTheScreenHolds) {
  const struct {
    std::string key, ahead, behind; // of what is told
    std::vector<std::pair<std::string, std::string>> values;
  } lines[] = {
      {"",
       "",
       "",
       {{"Frame Delay:25\r\nLoop:No\r\nFrame Delay:50\r\nLoop:Yes", "0,0 440x330 50 ITLFBCe 100"}, // the last holds
        {"loop:No\r\n Loop:No\r\nLoop :No\r\nColour:No\r\n:No\r\nFrame Delay:25", "0,0 440x330 25 ITLFBCe 100"},
        {"Explorer 2.0 Compatible:\\Y\\es\\", "0,0 440x330 333 ITLFBCE 100"},
        {"Recording Size:26", "0,0 441x330 333 ITLFBCe 44"}, // in whole blocks of 3
        {"Recording Area:12,40\r\nRecording Area:5\r\n", "5,40 440x330 333 ITLFBCe 100"}}},
      {"Loop:", "0,0 440x330 333 IT", "FBCe 100", {{"yes", "l"}, {"Yes ", "l"}, {"Ye", "l"}, {"", "l"}, {"1", "l"}}},
      {"Frame Delay:",
       "0,0 440x330 ",
       " ITLFBCe 100",
       {{"7000", "5000"},
        {"340", "333"},
        {"26", "25"},
        {"-333", "25"},
        {"", "25"},
        {"fast", "25"},
        {" 500", "500"},
        {"100 ms", "100"},
        {"4294967796", "500"},
        {"00000000500", "50"}}},
      {"Recording Size:",
       "0,0 440x330 333 ITLFBCe ",
       "",
       {{"-7", "25"}, {"x", "25"}, {"25", "25"}, {"45", "100"}, {"100", "100"}, {"101", "100"}}},
      {"Recording Area:",
       "",
       " 333 ITLFBCe 100",
       {{"12,40 320x240", "12,40 320x240"},
        {"  12, 40   320x 240 px", "12,40 320x240"},
        {"-10,-10 100x100", "0,0 90x90"},
        {"600,440 100x100", "600,440 40x40"},
        {"640,100 100x100", "0,0 440x330"},
        {"-100,0 100x100", "0,0 440x330"},
        {"10,10 0x50", "0,0 440x330"},
        {"10,10 50x-5", "0,0 440x330"},
        // Sixteen bits: their ends, what leaves them, and numbers of which they are the low ones.
        {"0,0 32767x32767", "0,0 640x480"},
        {"-32768,-32768 32767x32767", "0,0 440x330"},
        {"0,1 100x32767", "0,0 440x330"},
        {"65546,-65526 65556x20", "10,10 20x20"},
        // Broken off: what was told, 0 at the break, and then what was there.
        {"12;40 320x240", "12,0 440x330"},
        {"12,40 320", "12,40 320x330"},
        {"12,40 320x", "0,0 440x330"},
        {"", "0,0 440x330"}}},
  };
  SettingsProgram program;
  for (const auto& [key, ahead, behind, values] : lines) {
    for (const auto& [value, told] : values) EXPECT_EQ(program.Loaded(key + value), ahead + told + behind) << value;
  }
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

// ---- Places -------------------------------------------------------------------------------------------------------

TEST(SettingsFile, StaysWhereItStandsAndElseBelongsToTheUser) {
  SettingsProgram program;
  const std::string current = program.place, folder = program.folder.path + "/";
  struct Place {
    bool standsHere;
    std::string config, home;
    std::string place; // "" when there is none
  };
  const Place places[] = {
      {true, folder + "config", folder + "home", current},
      {false, folder + "config", folder + "home", folder + "config/framereel/Settings.prf"},
      {false, "relative", folder + "home", folder + "home/.config/framereel/Settings.prf"},
      {false, "", folder + "home", folder + "home/.config/framereel/Settings.prf"},
      {false, "", "", current},
      {false, "", folder + "none", ""}, // a user who has no home gets none
      {false, folder + "file", folder + "home", ""},
  };
  for (const Place& p : places) {
    SCOPED_TRACE(p.config + " " + p.home);
    const auto init = [&] {
      SettingsShutDown(program.settings);
      program.options = {};
      SettingsInit(program.settings, &program.options, &program.area);
    };
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) fs::remove_all(entry);
    fs::create_directory(folder + "home");
    WriteWholeFile(folder + "file", "");
    if (p.standsHere) WriteWholeFile(current, "");
    ::setenv("XDG_CONFIG_HOME", p.config.c_str(), 1);
    ::setenv("HOME", p.home.c_str(), 1);
    const auto entries = [&] {
      return std::distance(fs::recursive_directory_iterator(folder), fs::recursive_directory_iterator());
    };
    const auto before = entries();
    init();
    EXPECT_EQ(entries(), before);
    program.options.frameDelay = 25;
    testing::internal::CaptureStderr();
    SettingsSave(program.settings);
    SettingsSave(program.settings);
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), p.place.empty()) << told;
    init();
    EXPECT_EQ(program.options.frameDelay, p.place.empty() ? 333 : 25);
    EXPECT_EQ(fs::exists(current), p.place == current);
    EXPECT_TRUE(p.place.empty() || fs::exists(p.place));
  }
}

// ---- A world that says no -----------------------------------------------------------------------------------------

TEST(SettingsFile, WhatStandsInItsPlaceStaysWhereItCannotBeWritten) {
  SettingsProgram program;
  const auto saveAndLoad = [&program] {
    program.options = {.frameDelay = 25};
    SettingsSave(program.settings);
    program.options = {};
    SettingsLoad(program.settings);
    return program.Told();
  };
  WriteWholeFile(program.place, "Loop:No\r\n");
  fs::permissions(program.folder.path, fs::perms{0555});
  {
    const AsNobody user;
    EXPECT_EQ(saveAndLoad(), "0,0 440x330 333 ITlFBCe 100");
  }
  fs::permissions(program.folder.path, fs::perms{0755});
  fs::permissions(program.place, fs::perms{0});
  {
    const AsNobody user;
    EXPECT_EQ(saveAndLoad(), kDefaults) << "it is there, but can't be read";
  }
  EXPECT_EQ(ReadWholeFile(program.place), "Loop:No\r\n");
  fs::remove(program.place);
  fs::create_directory(program.place);
  WriteWholeFile(program.place + "/inside", "kept");
  EXPECT_EQ(saveAndLoad(), kDefaults);
  EXPECT_EQ(ReadWholeFile(program.place + "/inside"), "kept");
  fs::remove_all(program.folder.path);
  EXPECT_EQ(saveAndLoad(), kDefaults);
  EXPECT_FALSE(fs::exists(program.folder.path));
}

} // namespace
} // namespace framereel
