// The record of everything that chooses and shows the capture area: the rectangle of the screen that is recorded.
//
// The rectangle itself is RecorderState::captureArea, so that there is one; capture_area.h sets it. The user draws it
// in selection.h, or points at a window in window_picking.h; the moving line round it stands in ants.h; its size and
// place are shown by readouts.h. How all that begins and ends stands in area.h.
#pragma once

#include <cstdint>

#include "core/geometry.h"

namespace framereel {

struct ChildWindow;
struct DrawState;
struct RecorderState;
struct Timer;
struct View;

// What the program above hands down: its panel, where the read-outs stand. Null fields are passed over.
struct AreaPanel {
  void* owner = nullptr;         // passed to the functions
  ChildWindow* window = nullptr; // its keys and mouse serve selections too
  View* sizeLabel = nullptr;     // in `window`; where the two read-outs stand
  View* topLeftLabel = nullptr;
  void (*setReadouts)(void* owner, const char* size, const char* topLeft) = nullptr;
  void (*setWindowMode)(void* owner, bool windowMode) = nullptr; // what the button of a selection offers now
  void (*stopSlide)(void* owner) = nullptr;                      // Esc while nothing is being selected
  void (*saveSettings)(void* owner) = nullptr;                   // a selection has ended
};

inline constexpr int kAntsPhases = 8;

// The moving line round the area; see ants.h.
struct Ants {
  int16_t count = 0;        // above 0 it is up; below 0 something hid a line that was not shown
  uint16_t pause = 0;       // ticks until it is drawn afresh; 0: what stands on the screen is what the phase says
  uint16_t phase = 0;       // below kAntsPhases
  bool leavesMarks = false; // it has been drawn since everybody was asked to paint
  Timer* timer = nullptr;   // while count is above 0
  DrawState* diagonals[kAntsPhases] = {}; // each inverts one diagonal of the stripes; the drawing layer's
};

// There is one, for the program's run. At most one of the two flags is set, and outside a selection neither is.
struct AreaState {
  RecorderState* recorder = nullptr; // has the rectangle, the options and the stream; not owned
  AreaPanel panel;
  Ants ants;
  int16_t anchorX = 0, anchorY = 0; // screen pixels; where the drag began
  int16_t cornerX = 0, cornerY = 0; // the corner under the mouse; both belong to the area
  bool selectionArmed = false;      // the backdrop stands, and no press has come yet
  bool selectionDragging = false;   // the rubber band is being drawn
  bool windowMode = false;          // the next selection takes a window
  ChildWindow* backdrop = nullptr;  // during a selection: covers the screen and takes all mouse and key events
  Timer* followTimer = nullptr;     // the pending step of a keyboard drag
  Timer* modeTimer = nullptr;       // the pending look at Shift
  Rect hoverRect = {};              // the window that the outline of window_picking.h stands round; empty: none
  uint16_t hoverPhase = 0;          // of that outline, below kAntsPhases
  Timer* hoverTimer = nullptr;      // while it follows the pointer
};

} // namespace framereel
