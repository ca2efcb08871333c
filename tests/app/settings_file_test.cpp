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
      {"Loop:", "0,0 440x330 333 IT", "FBCe 100", {{"yes", "l"}, {"Yes ", "l"}, {"Ye", "l"}, {"", "l"}}},
      {"Frame Delay:",
       "0,0 440x330 ",
       " ITLFBCe 100",
       {{"7000", "5000"}, {"340", "333"}, {"-333", "25"}, {"fast", "25"}, {" 500", "500"}, {"4294967796", "500"}}},
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
        {"10,10 50x-5", "0,0 440x330"},
        // Sixteen bits: their ends, what leaves them, and numbers of which they are the low ones.
        {"0,0 32767x32767", "0,0 640x480"},
        {"-32768,-32768 32767x32767", "0,0 440x330"},
        {"65546,-65526 65556x20", "10,10 20x20"},
        // Broken off: what was told, 0 at the break, and then what was there.
        {"12;40 320x240", "12,0 440x330"},
        {"12,40 320", "12,40 320x330"},
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
  const std::string folder = program.folder.path;
  const struct {
    const char* stands; // in the folder, as do these where they begin with "/"
    std::string config, home;
    std::string place; // "" when there is none
  } cases[] = {
      {"Settings.prf", "/config", "/home", "Settings.prf"},
      {"file", "/config", "/home", "config/framereel/Settings.prf"},
      {"file", "relative", "/home", "home/.config/framereel/Settings.prf"},
      {"file", "", "", "Settings.prf"},
      {"file", "", "/none", ""}, // a user who has no home gets none
      {"file", "/file", "/home", ""},
  };
  for (const auto& [stands, config, home, place] : cases) {
    SCOPED_TRACE(config + " " + home);
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) fs::remove_all(entry);
    fs::create_directory("home");
    WriteWholeFile(stands, "");
    ::setenv("XDG_CONFIG_HOME", ((config[0] == '/' ? folder : "") + config).c_str(), 1);
    ::setenv("HOME", ((home[0] == '/' ? folder : "") + home).c_str(), 1);
    const auto start = [&program = program] {
      SettingsShutDown(program.settings);
      program.options = {};
      SettingsInit(program.settings, &program.options, &program.area);
    };
    start();
    EXPECT_EQ(program.folder.EntryCount(), 2u) << "a start leaves nothing";
    program.options.frameDelay = 25;
    testing::internal::CaptureStderr();
    SettingsSave(program.settings);
    SettingsSave(program.settings);
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), place.empty()) << told;
    start();
    EXPECT_EQ(program.options.frameDelay, place.empty() ? 333 : 25);
    EXPECT_EQ(fs::exists("Settings.prf"), place == "Settings.prf");
    EXPECT_TRUE(place.empty() || fs::exists(place));
  }
}

// ---- A world that says no -----------------------------------------------------------------------------------------

TEST(SettingsFile, WhatStandsInItsPlaceStaysWhereItCannotBeWritten) {
  SettingsProgram program;
  const auto saveAndLoad = [&program] {
    const AsNobody user;
    program.options = {.frameDelay = 25};
    SettingsSave(program.settings);
    program.options = {};
    SettingsLoad(program.settings);
    return program.Told();
  };
  WriteWholeFile(program.place, "Loop:No\r\n");
  fs::permissions(program.folder.path, fs::perms{0555});
  EXPECT_EQ(saveAndLoad(), "0,0 440x330 333 ITlFBCe 100");
  fs::permissions(program.place, fs::perms{0});
  EXPECT_EQ(saveAndLoad(), kDefaults) << "it is there, but can't be read";
  EXPECT_EQ(ReadWholeFile(program.place), "Loop:No\r\n");
  fs::remove_all(program.folder.path);
  EXPECT_EQ(saveAndLoad(), kDefaults);
  EXPECT_FALSE(fs::exists(program.folder.path));
}

} // namespace
} // namespace framereel
