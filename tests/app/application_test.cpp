// The application at work on a desktop in memory: what the user does from the choice of an area to a recording.
#include "app/application_program.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <unistd.h>

#include "area/ants.h"
#include "area/selection.h"
#include "core/memory.h"
#include "core/timers.h"
#include "gif/stream_bytes.h"
#include "platform/records/view_record.h"
#include "recorder/control/recording_control.h"
#include "recorder/engine/recorder_core.h"
#include "support/allocations.h"
#include "support/gif_reader.h"
#include "support/temporary_folder.h"
#include "support/window_program.h"
#include "win32/memory/memory_display.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

TEST_F(ApplicationTest, RecordsTheAreaThatTheUserDrawsAndKeepsItForTheNextRun) {
  Start();
  SelectByKeysAndMouse(50, 60, 150, 140);
  EXPECT_EQ(Area(), "{ 50, 60, 150, 140 }");
  EXPECT_EQ(ReadWholeFile(folder.usersSettings).substr(0, 30), "Recording Area:50,60 100x80\r\nF");

  MemoryGiveKeyboard(scene);
  HoldStartStop();
  RunFor(3100);
  MemoryPaintWindow(*scene, {90, 90, 100, 100}, kRed);
  RunFor(700);
  HoldStartStop();
  RunFor(1000);
  EXPECT_EQ(app.recorder.frameCount, 2u);
  EXPECT_FALSE(app.recorder.control.recording);
  EXPECT_EQ(Seen(0, 0, 0), kBlack); // the border
  EXPECT_EQ(Seen(0, 45, 35), kBlue);
  EXPECT_EQ(Seen(1, 45, 35), kRed);
  EXPECT_EQ(Seen(1, 55, 35), kBlue);

  End();
  Start();
  EXPECT_EQ(Area(), "{ 50, 60, 150, 140 }");
}

TEST_F(ApplicationTest, StartsWithWhatTheSettingsSayAndWritesNothingByItself) {
  app.options.loop = false; // left by another run
  WriteWholeFile(folder / "Settings.prf", "Recording Size:44\r\nFrame Delay:60\r\nRecording Area:10,20 100x50\r\n");
  Start();
  EXPECT_EQ(Area(), "{ 9, 19, 111, 70 }"); // in whole blocks of 3
  EXPECT_EQ(app.options.frameDelay, 50);
  EXPECT_TRUE(app.options.loop);
  End();
  EXPECT_EQ(ReadWholeFile(folder / "Settings.prf").substr(0, 17), "Recording Size:44");
}

TEST_F(ApplicationTest, ASelectionEndsWithTheFirstFrameAndNoneBeginsAfterIt) {
  Start();
  HoldStartStop();
  MemoryMovePointerTo(50, 60);
  Type(VK_SPACE);
  MemoryMovePointerTo(149, 139);
  RunFor(4000);
  EXPECT_EQ(app.recorder.frameCount, 1u);
  EXPECT_EQ(ReadWholeFile(folder.usersSettings).substr(0, 28), "Recording Area:50,60 100x80\r");
  SelectByKeysAndMouse(10, 10, 20, 20);
  MemoryPaintWindow(*scene, {90, 90, 100, 100}, kRed);
  RunFor(700);
  EXPECT_EQ(Area(), "{ 50, 60, 150, 140 }");
  EXPECT_EQ(Seen(1, 45, 35), kRed);
}

// Part of the area lies off the screen now, in the countdown and between two frames.
TEST_F(ApplicationTest, GoesOnWhenTheScreenBecomesSmallerThanTheArea) {
  Start();
  SelectByKeysAndMouse(200, 150, 300, 250);
  HoldStartStop();
  MemoryDisplaySetMode(250, 200, 24);
  RunFor(4000);
  MemoryDisplaySetMode(100, 80, 24);
  RunFor(1000);
  MemoryDisplaySetMode(640, 480, 24);
  RunFor(1000);
  HoldStartStop();
  EXPECT_FALSE(app.recorder.control.recording);
  EXPECT_EQ(Seen(app.recorder.frameCount - 1, 50, 50), kBlue);
}

// Pictures that are larger than the area have the line across them; the next recording's are not. `o`: another program
// paints there, and is asked to do so anew. `h`: the line is hidden over a picture. `n`: it is not shown at all.
TEST_F(ApplicationTest, PicturesAndTheLineStandInOnePlaceAndNeitherLeavesATrace) {
  Start();
  for (const int32_t side : {20, 120}) {
    RecorderThaw(app.recorder);
    StreamClear(app.stream);
    RecorderReset(app.recorder);
    SelectByKeysAndMouse(100, 100, 100 + side, 100 + side);
    RunFor(2000);
    const std::vector<uint32_t> before = BesidesPanel();
    for (const char kind : {' ', 'o', 'h', 'n'}) {
      SCOPED_TRACE(testing::Message() << side << kind);
      const uint32_t refreshes = TheMemoryDesktop().refreshes;
      if (kind != 'n') AntsShow(app.area);
      HoldStartStop();
      RunFor(1500);
      if (kind == 'o') MemoryPaintWindow(*scene, {105, 105, 170, 170}, kBlue);
      if (kind == 'h') AntsHide(app.area);
      RunFor(3000);
      HoldStartStop();
      RunFor(500);
      EXPECT_EQ(TheMemoryDesktop().refreshes, refreshes + (kind == 'o'));
      if (kind != 'n' && kind != 'h') AntsHide(app.area);
      EXPECT_EQ(BesidesPanel(), before);
      EXPECT_EQ(Seen(0, side / 2, side / 2), kBlue);
    }
  }
}

std::string TitleOf(const View* button) {
  char title[40] = "";
  ::GetWindowTextA(button->viewClass->nativeHandle(button), title, sizeof title);
  return title;
}

TEST_F(ApplicationTest, TakesTheWindowThatTheUserPointsAt) {
  Start();
  scene->children = {{{90, 95, 111, 115}, true}};
  const std::vector<uint32_t> before = BesidesPanel();
  MemoryPressKey(VK_SHIFT);
  RunFor(600);
  EXPECT_EQ(TitleOf(app.panel.selectButton), "Select Window");
  MemoryReleaseKey(VK_SHIFT);
  RunFor(600);
  EXPECT_EQ(TitleOf(app.panel.selectButton), "Select Area");
  BeginPick(100, 100);
  EXPECT_NE(BesidesPanel(), before);
  MemoryClick(100, 100);
  Settle();
  EXPECT_EQ(Area(), "{ 90, 95, 111, 115 }");
  EXPECT_EQ(ReadWholeFile(folder.usersSettings).substr(0, 28), "Recording Area:90,95 21x20\r\n");
  RunFor(100);
  EXPECT_EQ(BesidesPanel(), before);

  // The outline runs across the pictures of a countdown; the first frame ends it.
  const uint32_t refreshes = TheMemoryDesktop().refreshes;
  RecorderStart(app.recorder);
  BeginPick(100, 100);
  EXPECT_TRUE(app.area.backdrop);
  RunFor(3000);
  EXPECT_FALSE(app.area.backdrop);
  EXPECT_EQ(app.recorder.frameCount, 1u);
  RecorderStop(app.recorder);
  RunFor(100);
  EXPECT_EQ(BesidesPanel(), before);
  EXPECT_EQ(TheMemoryDesktop().refreshes, refreshes + 1); // its end; nobody else has painted there
  EXPECT_EQ(Seen(0, 10, 10), kBlue);
}

TEST_F(ApplicationTest, ASelectionShowsItsBandWhileAPictureStands) {
  Start();
  SelectByKeysAndMouse(100, 100, 120, 120);
  const std::vector<uint32_t> before = BesidesPanel();
  RecorderStart(app.recorder);
  RunFor(1500);
  const std::vector<uint32_t> counting = BesidesPanel();
  SelectionBegin(app.area);
  EXPECT_NE(BesidesPanel(), counting);
  AntsToggle(app.area);
  EXPECT_EQ(BesidesPanel(), counting);
  AntsToggle(app.area);
  RunFor(1000); // into the next digit
  SelectionEnd(app.area);
  RecorderStop(app.recorder);
  Settle();
  EXPECT_EQ(BesidesPanel(), before);
}

std::vector<uint32_t> screenBefore;

// Ends the process for want of memory, and says what stands on the screen by the time at which it tells so.
[[noreturn]] void RunOutOfMemory() {
  const cookie_io_functions_t look = {nullptr,
                                      [](void*, const char*, size_t size) {
                                        const bool clean = IsBesidesPanel(screenBefore);
                                        if (::write(STDERR_FILENO, clean ? "clean" : "dirty", 5) != 5) ::_exit(1);
                                        return ssize_t(size);
                                      },
                                      nullptr, nullptr};
  stderr = ::fopencookie(nullptr, "w", look);
  std::setvbuf(stderr, nullptr, _IONBF, 0);
  FailAllocations(0);
  FatalExit();
}

TEST_F(ApplicationTest, LeavesNothingOnTheScreenWhenMemoryEnds) {
  Start();
  SelectByKeysAndMouse(100, 100, 120, 120);
  RunFor(2000);
  screenBefore = BesidesPanel();
  AntsShow(app.area);
  RecorderStart(app.recorder);
  RunFor(800);
  BeginPick(20, 20);
  EXPECT_EXIT(RunOutOfMemory(), testing::ExitedWithCode(0), "^(clean)+$");
}

// In a selection, in the countdown, between two frames, and with a line on the screen.
TEST_F(ApplicationTest, LeavesNothingOnTheScreenOrPendingWhenItEndsInTheMiddle) {
  for (const char* state : {"armed", "dragging", "picking", "counting", "recording"}) {
    SCOPED_TRACE(state);
    Start();
    const std::vector<uint32_t> before = BesidesPanel();
    switch (*state) {
    case 'a':
      MemoryMovePointerTo(50, 60);
      Type(VK_SPACE);
      break;
    case 'd':
      MemoryMovePointerTo(50, 60);
      Type(VK_SPACE);
      MemoryMovePointerTo(250, 260);
      RunFor(500);
      break;
    case 'p':
      BeginPick(50, 60);
      break;
    default:
      HoldStartStop();
      RunFor(*state == 'c' ? 1000 : 4000);
    }
    End();
    Settle();
    EXPECT_FALSE(TimerPending());
    EXPECT_EQ(BesidesPanel(), before);
    MemoryCloseWindow(scene);
  }
}

} // namespace
} // namespace framereel
