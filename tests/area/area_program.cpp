// See area_program.h.
#include "area_program.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <utility>

#include "area/selection.h"
#include "core/timers.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/records/window_records.h"
#include "platform/windows/child_window.h"
#include "platform/windows/window_geometry.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "toolkit/views_start.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/pixels.h"

namespace framereel {
namespace {

AreaProgram& Program(void* owner) {
  return *static_cast<AreaProgram*>(owner);
}

// Shows the text that its owner keeps at userData.
void DrawLabel(View* view) {
  UseDrawState(DrawStateFill());
  SetForeColour(ColourMenu());
  FillRect(ViewBounds(view));
  UseDrawState(DrawStateDefault());
  const auto* text = reinterpret_cast<const std::string*>(view->userData);
  DrawText(view->x, view->y + FontMetrics().ascent, text->c_str());
}

View* NewLabel(ChildWindow* window, int16_t y, const std::string* text) {
  static ViewClass* const label = ClassNew();
  label->draw = DrawLabel;
  label->mouseDown = [](View* view, uint16_t, int16_t, int16_t) {
    Program(static_cast<AreaState*>(view->window->userData)->panel.owner).heard += " label";
  };
  View* view = ViewCreateTop(label, window, 10, y);
  view->userData = uintptr_t(text);
  ViewResize(view, 150, 20);
  ViewShow(view);
  return view;
}

void ShowPatternedDesktop() {
  MemoryDisplay& display = TheMemoryDisplay();
  uint32_t seed = 1;
  display.desktop.picture.resize(display.screen.size());
  for (uint32_t& pixel : display.desktop.picture) {
    pixel = (seed = seed * 1664525 + 1013904223) >> 8 & PixelBits(display.layout);
  }
  MemoryExpose(Region(PixelRect{0, 0, display.width, display.height}));
}

} // namespace

AreaProgram::AreaProgram(int32_t depth) : platformIsUp((ViewsStartUp(), 1)), program(640, 480, depth) {
  SetMainClientSize(nullptr, 180, 120);
  MoveMainWindow(nullptr, 400, 60);
  ShowPatternedDesktop();
  StreamInit(stream);
  recorder.stream = &stream;
  recorder.options = &options;
  AreaInit(area, &recorder);
  panel.owner = this;
  panel.window = OpenTestWindow(kWindowFilled | kWindowUnclamped);
  panel.window->background = ColourMenu();
  InvalidateChildWindow(panel.window);
  PlaceChildWindow(panel.window, 5, 25);
  panel.sizeLabel = NewLabel(panel.window, 10, &size);
  panel.topLeftLabel = NewLabel(panel.window, 40, &topLeft);
  panel.setReadouts = [](void* owner, const char* newSize, const char* newTopLeft) {
    Program(owner).size = newSize;
    Program(owner).topLeft = newTopLeft;
    ViewInvalidate(Program(owner).panel.sizeLabel);
    ViewInvalidate(Program(owner).panel.topLeftLabel);
  };
  panel.setWindowMode = [](void* owner, bool mode) { Program(owner).heard += mode ? " window" : " area"; };
  panel.stopSlide = [](void* owner) { Program(owner).heard += " slide"; };
  panel.saveSettings = [](void* owner) { Program(owner).heard += " save"; };
  AreaTakePanel(area, panel);
  AreaDisplayInit(area);
  Settle();
}

AreaProgram::~AreaProgram() {
  AreaShutDown(area);
  EXPECT_FALSE(TimerPending());
  StreamFree(stream);
}

void AreaProgram::Act(const std::string& steps) {
  const std::map<std::string, uint8_t> keys = {{"space", VK_SPACE}, {"esc", VK_ESCAPE},  {"left", VK_LEFT},
                                               {"up", VK_UP},       {"right", VK_RIGHT}, {"down", VK_DOWN},
                                               {"x", 'X'}};
  const std::map<std::string, uint8_t> modifiers = {{"S", VK_SHIFT}, {"C", VK_CONTROL}, {"A", VK_MENU},
                                                    {"s", VK_SHIFT}, {"c", VK_CONTROL}, {"a", VK_MENU}};
  std::istringstream in(steps);
  for (std::string step; in >> step; Settle()) {
    if (step == "begin") SelectionBegin(area);
    if (step == "d" || step == "D") MemoryPressButton(step == "d" ? 1 : 3);
    if (step == "u" || step == "U") MemoryReleaseButton(step == "u" ? 1 : 3);
    if (modifiers.contains(step)) (step < "a" ? MemoryPressKey : MemoryReleaseKey)(modifiers.at(step));
    if (step == "hold") MemoryPressKey(VK_SPACE);
    if (step == "frame") StreamAppend(stream, 1, "x");
    if (keys.contains(step)) MemoryTypeKey(keys.at(step));
    if (step == "m") {
      int x = 0, y = 0;
      in >> x >> y;
      MemoryMovePointerTo(x, y);
    }
  }
}

std::string AreaProgram::State() {
  EXPECT_FALSE(area.selectionArmed && area.selectionDragging);
  EXPECT_EQ(area.backdrop != nullptr, area.selectionArmed || area.selectionDragging);
  const char* state = area.selectionArmed ? "armed" : area.selectionDragging ? "dragging" : "rest";
  const Rect& r = recorder.captureArea;
  std::ostringstream out;
  out << state << " " << r.left << "," << r.top << " " << r.right - r.left << "x" << r.bottom - r.top
      << std::exchange(heard, "");
  return out.str();
}

void AreaProgram::SetArea(const Rect& captured) {
  recorder.captureArea = captured;
  ShowAreaReadouts(area);
  Settle();
}

Picture Screen() {
  Settle();
  return TheMemoryDisplay().screen;
}

Picture WithLine(Picture picture, const Rect& outline, int phase) {
  const MemoryDisplay& display = TheMemoryDisplay();
  for (int y = std::max<int>(outline.top, 0); y < std::min<int>(outline.bottom, display.height); ++y) {
    for (int x = std::max<int>(outline.left, 0); x < std::min<int>(outline.right, display.width); ++x) {
      const bool onLine = x == outline.left || x == outline.right - 1 || y == outline.top || y == outline.bottom - 1;
      if (onLine && ((x + y - phase) & 7) >= 4) picture[size_t(y * display.width + x)] ^= PixelBits(display.layout);
    }
  }
  return picture;
}

void PassTime(uint32_t milliseconds) {
  ::Sleep(milliseconds);
  while (TimerNextDelay() < 0) TimerFireDue();
}

} // namespace framereel
