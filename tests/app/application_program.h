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
#include "toolkit/views_start.h"
#include "win32/memory/memory_display.h"
#include "win32/win32_input.h"

namespace framereel {

constexpr uint32_t kBlue = 0x0000FF, kRed = 0xFF0000, kBlack = 0;

// Whether the screen to the left of the panel is still the same; found without memory.
inline bool IsBesidesPanel(const std::vector<uint32_t>& before) {
  const int width = TheMemoryDisplay().width;
  for (size_t i = 0; i < before.size(); ++i) {
    if (int(i) % width < TheMainWindow()->originX && TheMemoryDisplay().screen[i] != before[i]) return false;
  }
  return true;
}

// The program's panel has come in at the right, and another program's window stands at the left.
class ApplicationTest : public testing::Test {
protected:
  // On a screen of 640 by 480 at 96 to the inch.
  explicit ApplicationTest(int32_t dotsPerInch = 96)
      : viewsAreUp((ViewsStartUp(), 1)), program(640 * dotsPerInch / 96, 480 * dotsPerInch / 96, 24, dotsPerInch) {}
  ~ApplicationTest() override { End(); }

  void Start() {
    ApplicationStart(app);
    runs = true;
    RunFor(4000);
    scene = MemoryOpenWindow("Scene", {0, 0, 300, 300}, kBlue);
    ReturnToProgram();
  }

  void End() {
    if (runs) ApplicationEnd(app);
    runs = false;
  }

  // Left, top, right, bottom.
  std::string Area() const {
    const Rect& r = app.recorder.captureArea;
    return testing::PrintToString(std::vector<int>{r.left, r.top, r.right, r.bottom});
  }

  void SelectByKeysAndMouse(int32_t left, int32_t top, int32_t right, int32_t bottom) {
    MemoryMovePointerTo(left, top);
    Type(VK_SPACE);
    MemoryMovePointerTo(right - 1, bottom - 1);
    Settle();
    MemoryPressButton();
    MemoryReleaseButton();
    Settle();
  }

  // Holds Shift until the panel offers windows, presses the button, and points at a place.
  void BeginPick(int32_t x, int32_t y) {
    MemoryPressKey(VK_SHIFT);
    RunFor(600);
    Click(app.panel.selectButton);
    MemoryReleaseKey(VK_SHIFT);
    MemoryMovePointerTo(x, y);
    RunFor(100);
  }

  void HoldStartStop() {
    for (const int key : {VK_CONTROL, VK_MENU, VK_SHIFT}) MemoryPressKey(uint8_t(key));
    RunFor(400); // over a tick
    for (const int key : {VK_CONTROL, VK_MENU, VK_SHIFT}) MemoryReleaseKey(uint8_t(key));
    RunFor(250);
  }

  // What the file shows at a place of the area.
  uint32_t Seen(size_t frame, int x, int y) {
    const GifPicture gif = ReadGif(FileBytes(app.stream));
    return frame < gif.frames.size() ? Composite(gif, frame)[size_t(y * gif.width + x)] : kUncovered;
  }

  // Presses the mouse in the middle of a View and lets it go there.
  void Click(const View* view) {
    Press(view->window, int16_t(view->x + view->width / 2), int16_t(view->y + view->height / 2));
    Release();
  }
  int viewsAreUp;
  WorkingFolder folder;
  const HomeIn lives{folder};
  WindowProgram program;
  Application app;
  DisplayWindow* scene = nullptr;
  bool runs = false;
};

} // namespace framereel
