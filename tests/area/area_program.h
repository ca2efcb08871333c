// A program with a panel and a capture area on a desktop in memory: 640 by 480 pixels, none like its neighbour, with
// the panel's window away from the screen's corner.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "area/ants.h"
#include "area/area.h"
#include "area/area_record.h"
#include "area/capture_area.h"
#include "area/readouts.h"
#include "area/selection.h"
#include "area/window_picking.h"
#include "gif/animation_stream.h"
#include "platform/records/window_records.h"
#include "platform/windows/child_window.h"
#include "platform/windows/window_geometry.h"
#include "recorder/engine/recorder_state.h"
#include "support/window_script.h"
#include "win32/memory/memory_display.h"

namespace framereel {

using Picture = std::vector<uint32_t>;

// There is one at a time. It starts with the area's display set up and nothing selected.
//
// Words of its own: "begin" is SelectionBegin, "default" AreaSetDefault, "stopall" AreaShutDown, "frame" puts a frame
// into the animation, "slip X" moves the pointer unseen, "mode W H D" is another display, "size44" and "size25" are
// options, "bare" takes all but the window from the panel. "pass MS": the clock goes on, and all timers that are due
// fire, but nothing else happens. "readouts" tells them. Of the line: "showline", "hideline", "pauseline",
// "toggleline", "refresh", "recompute"; "look" tells whether it stands round the area or nothing does, for a screen as
// it was at "note", or round which window and in what phase the outline stands besides, and "pause" after how many
// steps of the line it is back.
class AreaProgram : public WindowScript {
public:
  explicit AreaProgram(int32_t depth = 24);
  ~AreaProgram();

  // "rest", "armed" or "dragging", the area, and what has been told since the last time.
  std::string State();
  void SetArea(const Rect& captured);
  // "line", "clear" or a window, else "mess".
  std::string Look() const;

private:
  void AddWords();
  void Pause();

  AnimationStream stream;

public:
  RecordingOptions options;
  RecorderState recorder;
  AreaState area;
  AreaPanel panel;
  std::string size, topLeft; // the read-outs
  Picture noted;
};

// What stands on the screen, all paints done.
Picture Screen();
// The picture with the line along the inside of the rectangle in that phase.
Picture WithLine(Picture picture, const Rect& outline, int phase);
// As the word "pass".
void PassTime(uint32_t milliseconds);

inline constexpr uint32_t kTick = 151; // ms to the next step of the line

} // namespace framereel
