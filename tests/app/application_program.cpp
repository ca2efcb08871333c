#include "app/application_program.h"

#include "toolkit/views_start.h"
#include "win32/win32_input.h"

namespace framereel {

std::vector<uint32_t> BesidesPanel() {
  std::vector<uint32_t> pixels;
  for (int y = 0; y < TheMemoryDisplay().height; ++y) {
    for (int x = 0; x < TheMainWindow()->originX; ++x) pixels.push_back(MemoryPixel(x, y));
  }
  return pixels;
}

bool IsBesidesPanel(const std::vector<uint32_t>& before) {
  const int width = TheMainWindow()->originX;
  for (size_t i = 0; i < before.size(); ++i) {
    if (MemoryPixel(int(i) % width, int(i) / width) != before[i]) return false;
  }
  return true;
}

ApplicationTest::ApplicationTest() : viewsAreUp((ViewsStartUp(), 1)), program(640, 480, 24) {
  ::setenv("HOME", folder.path.c_str(), 1);
  ::setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1); // where animations are kept, and offered from
}

void ApplicationTest::Start() {
  ApplicationStart(app);
  runs = true;
  RunFor(4000);
  scene = MemoryOpenWindow("Scene", {0, 0, 300, 300}, kBlue);
  ReturnToProgram();
}

void ApplicationTest::End() {
  if (runs) ApplicationEnd(app);
  runs = false;
}

std::string ApplicationTest::Area() const {
  const Rect& r = app.recorder.captureArea;
  return testing::PrintToString(std::vector<int>{r.left, r.top, r.right, r.bottom});
}

void ApplicationTest::SelectByKeysAndMouse(int32_t left, int32_t top, int32_t right, int32_t bottom) {
  MemoryMovePointerTo(left, top);
  Type(VK_SPACE);
  MemoryMovePointerTo(right - 1, bottom - 1);
  Settle();
  MemoryPressButton();
  MemoryReleaseButton();
  Settle();
}

void ApplicationTest::BeginPick(int32_t x, int32_t y) {
  MemoryPressKey(VK_SHIFT);
  RunFor(600);
  Click(app.panel.selectButton);
  MemoryReleaseKey(VK_SHIFT);
  MemoryMovePointerTo(x, y);
  RunFor(100);
}

void ApplicationTest::HoldStartStop() {
  for (const int key : {VK_CONTROL, VK_MENU, VK_SHIFT}) MemoryPressKey(uint8_t(key));
  RunFor(400); // over a tick
  for (const int key : {VK_CONTROL, VK_MENU, VK_SHIFT}) MemoryReleaseKey(uint8_t(key));
  RunFor(250);
}

uint32_t ApplicationTest::Seen(size_t frame, int x, int y) {
  const GifPicture gif = ReadGif(FileBytes(app.stream));
  return frame < gif.frames.size() ? Composite(gif, frame)[size_t(y * gif.width + x)] : kUncovered;
}

void ApplicationTest::Click(const View* view) {
  Press(view->window, int16_t(view->x + view->width / 2), int16_t(view->y + view->height / 2));
  Release();
}

} // namespace framereel
