// A program with a panel and a capture area on a desktop in memory: 640 by 480 pixels, none like its neighbour, with
// the panel's window away from the screen's corner.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "area/ants.h"
#include "area/area.h"
#include "area/area_record.h"
#include "area/capture_area.h"
#include "area/readouts.h"
#include "area/selection.h"
#include "area/window_picking.h"
#include "core/rects.h"
#include "core/timers.h"
#include "gif/animation_stream.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/windows/child_window.h"
#include "platform/windows/window_geometry.h"
#include "recorder/engine/recorder_state.h"
#include "support/window_script.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/pixels.h"
#include "win32/win32_system.h"

namespace framereel {

using Picture = std::vector<uint32_t>;

inline constexpr uint32_t kTick = 151; // ms to the next step of the line

// What stands on the screen, all paints done.
inline Picture Screen() {
  Settle();
  return TheMemoryDisplay().screen;
}

// The picture with the line along the inside of the rectangle in that phase.
inline Picture WithLine(Picture picture, const Rect& outline, int phase) {
  const MemoryDisplay& display = TheMemoryDisplay();
  for (int y = std::max<int>(outline.top, 0); y < std::min<int>(outline.bottom, display.height); ++y) {
    for (int x = std::max<int>(outline.left, 0); x < std::min<int>(outline.right, display.width); ++x) {
      const bool onLine = x == outline.left || x == outline.right - 1 || y == outline.top || y == outline.bottom - 1;
      if (onLine && ((x + y - phase) & 7) >= 4) picture[size_t(y * display.width + x)] ^= PixelBits(display.layout);
    }
  }
  return picture;
}

// As the word "pass".
inline void PassTime(uint32_t milliseconds) {
  ::Sleep(milliseconds);
  while (TimerNextDelay() < 0) TimerFireDue();
}

// There is one at a time. It starts with the area's display set up and nothing selected.
//
// Words of its own: "begin" is SelectionBegin, "stopall" AreaShutDown, "frame" puts a frame into the animation, "slip
// X" moves the pointer unseen, "mode W H D" is another display, "size44" and "size25" are options. "pass MS": the clock
// goes on, and all timers that are due fire, but nothing else happens. "readouts" tells them. Of the line: "showline",
// "hideline", "pauseline", "toggleline", "refresh", "recompute"; "look" tells whether it stands round the area or
// nothing does, for a screen as it was at "note", or round which window and in what phase the outline stands besides,
// and "pause" after how many steps of the line it is back.
class AreaProgram : public WindowScript {
  AnimationStream stream;

public:
  explicit AreaProgram(int32_t depth = 24) : WindowScript(640, 480, depth) {
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
    panel.setReadouts = [](void* owner, const char* newSize, const char* newTopLeft) {
      Program(owner).size = newSize;
      Program(owner).topLeft = newTopLeft;
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

  ~AreaProgram() {
    AreaShutDown(area);
    EXPECT_FALSE(TimerPending());
    StreamFree(stream);
  }

  // "rest", "armed" or "dragging", the area, and what has been told since the last time.
  std::string State() {
    EXPECT_FALSE(area.selectionArmed && area.selectionDragging);
    EXPECT_EQ(area.backdrop != nullptr, area.selectionArmed || area.selectionDragging);
    const char* state = area.selectionArmed ? "armed" : area.selectionDragging ? "dragging" : "rest";
    const Rect& r = recorder.captureArea;
    const std::string told = std::exchange(log, "");
    return Text(state, ' ', r.left, ',', r.top, ' ', r.right - r.left, 'x', r.bottom - r.top, told == "" ? "" : " ",
                told);
  }

  void SetArea(const Rect& captured) {
    recorder.captureArea = captured;
    ShowAreaReadouts(area);
    Settle();
  }

  // "line", "clear" or a window, else "mess".
  std::string Look() const {
    const Picture now = Screen();
    if (now == noted) return "clear";
    const Picture line = WithLine(noted, AreaOutline(area), area.ants.phase);
    if (now == line) return "line";
    const Rect& r = area.hoverRect;
    if (now != WithLine(line, RectGrow(r, 1, 1), area.hoverPhase)) return "mess";
    return Text(r.left, ',', r.top, ' ', r.right - r.left, 'x', r.bottom - r.top, '/', area.hoverPhase);
  }

  RecordingOptions options;
  RecorderState recorder;
  AreaState area;
  AreaPanel panel;
  std::string size, topLeft; // the read-outs
  Picture noted;

private:
  void AddWords() {
    const std::pair<const char*, void (*)(AreaState&)> calls[] = {
        {"begin", SelectionBegin},  {"showline", AntsShow},       {"hideline", AntsHide},    {"pauseline", AntsPause},
        {"resumeline", AntsResume}, {"recompute", AreaRecompute}, {"stopall", AreaShutDown}, {"refresh", RefreshScreen},
        {"hide", WindowPickHide},   {"freezes", SelectionEnd}};
    for (const auto& [word, call] : calls) words[word] = [this, call = call](std::istream&) { call(area); };
    words["toggleline"] = [this](std::istream&) { AntsToggle(area); };
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

  void Pause() {
    const int phase = area.ants.phase;
    int steps = 0;
    for (; Look() == "clear" && steps < 20; ++steps) PassTime(kTick);
    Say(Look() + (area.ants.phase == ((phase + 1) & 7) ? " after " : " in a wrong phase after ") +
        std::to_string(steps));
  }

  static AreaProgram& Program(void* owner) { return *static_cast<AreaProgram*>(owner); }

  static void ShowPatternedDesktop() {
    MemoryDisplay& display = TheMemoryDisplay();
    uint32_t seed = 1;
    display.desktop.picture.resize(display.screen.size());
    for (uint32_t& pixel : display.desktop.picture) {
      pixel = (seed = seed * 1664525 + 1013904223) >> 8 & PixelBits(display.layout);
    }
    MemoryExpose(Region(PixelRect{0, 0, display.width, display.height}));
  }
};

} // namespace framereel
