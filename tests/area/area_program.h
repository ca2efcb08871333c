// A program with a panel and a capture area on a desktop in memory: 640 by 480 pixels, none like its neighbour, with
// the panel's window away from the screen's corner.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "area/area.h"
#include "gif/animation_stream.h"
#include "recorder/engine/recorder_state.h"
#include "support/window_program.h"

namespace framereel {

// There is one at a time. It starts with the area's display set up and nothing selected.
class AreaProgram {
public:
  explicit AreaProgram(int32_t depth = 24);
  ~AreaProgram();
  AreaProgram(const AreaProgram&) = delete;

  // What happens, word by word: "begin" is SelectionBegin, "m X Y" moves the pointer, "d" and "u" are the left button,
  // "D" and "U" the right one, "S", "C" and "A" press Shift, Ctrl and Alt, "s", "c" and "a" release them, "frame" puts
  // a frame into the animation, "space", "esc", "left", "up", "right", "down" and "x" are keys, and "hold" presses
  // Space and leaves it down.
  void Act(const std::string& steps);
  // "rest", "armed" or "dragging", the area, and what the panel has been told since the last time.
  std::string State();
  void SetArea(const Rect& captured);

private:
  int platformIsUp;
  WindowProgram program;
  AnimationStream stream;

public:
  RecordingOptions options;
  RecorderState recorder;
  AreaState area;
  AreaPanel panel;
  std::string heard;         // calls of the panel's functions but setReadouts
  std::string size, topLeft; // the read-outs
};

using Picture = std::vector<uint32_t>;

// What stands on the screen, all paints done.
Picture Screen();
// The picture with the line along the inside of the rectangle in that phase.
Picture WithLine(Picture picture, const Rect& outline, int phase);
// The clock goes on, and all timers that are due fire, but nothing else happens.
void PassTime(uint32_t milliseconds);

} // namespace framereel
