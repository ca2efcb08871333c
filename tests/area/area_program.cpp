// See area_program.h.
#include "area_program.h"

#include <utility>

#include "core/rects.h"
#include "core/timers.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "toolkit/views_start.h"
#include "win32/pixels/pixels.h"
#include "win32/win32_system.h"

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
    Program(static_cast<AreaState*>(view->window->userData)->panel.owner).Say("label");
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

AreaProgram::AreaProgram(int32_t depth) : WindowScript((ViewsStartUp(), 640), 480, depth) {
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
  panel.setWindowMode = [](void* owner, bool mode) { Program(owner).Say(mode ? "window" : "area"); };
  panel.stopSlide = [](void* owner) { Program(owner).Say("slide"); };
  panel.saveSettings = [](void* owner) { Program(owner).Say("save"); };
  AreaTakePanel(area, panel);
  AreaDisplayInit(area);
  Settle();
  AddWords();
  Heard();
}

AreaProgram::~AreaProgram() {
  AreaShutDown(area);
  EXPECT_FALSE(TimerPending());
  StreamFree(stream);
}

void AreaProgram::AddWords() {
  const std::pair<const char*, void (*)(AreaState&)> calls[] = {
      {"begin", SelectionBegin},   {"showline", AntsShow},       {"hideline", AntsHide},    {"pauseline", AntsPause},
      {"resumeline", AntsResume},  {"recompute", AreaRecompute}, {"stopall", AreaShutDown}, {"refresh", RefreshScreen},
      {"default", AreaSetDefault}, {"hide", WindowPickHide},     {"freezes", SelectionEnd}};
  for (const auto& [word, call] : calls) words[word] = [this, call = call](std::istream&) { call(area); };
  words["toggleline"] = [this](std::istream&) { AntsToggle(area); };
  words["bare"] = [this](std::istream&) { AreaTakePanel(area, {.window = panel.window}); };
  words["frame"] = [this](std::istream&) { StreamAppend(stream, 1, "x"); };
  words["size44"] = [this](std::istream&) { options.recordingSize = kSize44; };
  words["size25"] = [this](std::istream&) { options.recordingSize = kSize25; };
  words["note"] = [this](std::istream&) { noted = Screen(); };
  words["look"] = [this](std::istream&) { Say(Look()); };
  words["readouts"] = [this](std::istream&) { Say(size + ", " + topLeft); };
  words["pause"] = [this](std::istream&) { Pause(); };
  Add("pass", PassTime);
  Add("slip", [](int32_t x) { TheMemoryDisplay().pointerX = x; });
  Add("mode", MemoryDisplaySetMode);
}

std::string AreaProgram::Look() const {
  const Picture now = Screen();
  if (now == noted) return "clear";
  const Picture line = WithLine(noted, AreaOutline(area), area.ants.phase);
  if (now == line) return "line";
  const Rect& r = area.hoverRect;
  if (now != WithLine(line, RectGrow(r, 1, 1), area.hoverPhase)) return "mess";
  std::ostringstream out;
  out << r.left << "," << r.top << " " << r.right - r.left << "x" << r.bottom - r.top << "/" << area.hoverPhase;
  return out.str();
}

void AreaProgram::Pause() {
  const int phase = area.ants.phase;
  int steps = 0;
  for (; Look() == "clear" && steps < 20; ++steps) PassTime(kTick);
  Say(Look() + (area.ants.phase == ((phase + 1) & 7) ? " after " : " in a wrong phase after ") + std::to_string(steps));
}

std::string AreaProgram::State() {
  EXPECT_FALSE(area.selectionArmed && area.selectionDragging);
  EXPECT_EQ(area.backdrop != nullptr, area.selectionArmed || area.selectionDragging);
  const char* state = area.selectionArmed ? "armed" : area.selectionDragging ? "dragging" : "rest";
  const Rect& r = recorder.captureArea;
  std::ostringstream out;
  out << state << " " << r.left << "," << r.top << " " << r.right - r.left << "x" << r.bottom - r.top
      << (log.empty() ? "" : " ") << std::exchange(log, "");
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
