// The application at work on a desktop in memory, and its user.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/application.h"
#include "area/ants.h"
#include "core/timers.h"
#include "gif/stream_bytes.h"
#include "platform/records/view_record.h"
#include "recorder/control/recording_control.h"
#include "recorder/engine/recorder_core.h"
#include "support/gif_reader.h"
#include "support/temporary_folder.h"
#include "support/window_program.h"
#include "win32/memory/memory_display.h"

namespace framereel {

constexpr uint32_t kBlue = 0x0000FF, kRed = 0xFF0000, kBlack = 0;

// The screen to the left of the panel; and whether it is still the same, found without memory.
std::vector<uint32_t> BesidesPanel();
bool IsBesidesPanel(const std::vector<uint32_t>& before);

// The program's panel has come in at the right, and another program's window stands at the left.
class ApplicationTest : public testing::Test {
protected:
  ApplicationTest();
  ~ApplicationTest() override { End(); }
  void Start();
  void End();

  std::string Area() const; // left, top, right, bottom
  void SelectByKeysAndMouse(int32_t left, int32_t top, int32_t right, int32_t bottom);
  // Holds Shift until the panel offers windows, presses the button, and points at a place.
  void BeginPick(int32_t x, int32_t y);
  void HoldStartStop();
  // What the file shows at a place of the area.
  uint32_t Seen(size_t frame, int x, int y);
  // Presses the mouse in the middle of a View and lets it go there.
  void Click(const View* view);

  int viewsAreUp;
  WorkingFolder folder;
  WindowProgram program;
  Application app;
  DisplayWindow* scene = nullptr;
  bool runs = false;
};

} // namespace framereel
