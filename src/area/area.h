// The capture area: which rectangle of the screen is recorded, and the record of everything that chooses and shows it.
//
// The rectangle itself is RecorderState::captureArea, so that there is one; area_geometry.h aligns it to the recording
// size. The user draws it in selection.h, or points at a window in window_picking.h; the moving line round it stands in
// ants.h; size and place of it are shown by readouts.cpp.
#pragma once

#include <cstdint>

#include "core/geometry.h"

namespace framereel {

struct AreaState;
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

// Sets the default area. The recorder stands already, with its options, and lives as long; so does the main window.
void AreaInit(AreaState& area, RecorderState* recorder);
// The panel stands now; its window's mouse and key methods, and its userData, become those of the selection.
void AreaTakePanel(AreaState& area, const AreaPanel& panel);
// From here on the line can be shown, the read-outs are kept, and Shift is looked at. Once, behind AreaTakePanel.
void AreaDisplayInit(AreaState& area);
// Ends what is under way and takes the line off the screen: no timer of the area is pending afterwards. A selection
// that is cut short keeps its area and saves no settings. The windows still stand; between events, not in one.
void AreaShutDown(AreaState& area);

// The capture area grown by a pixel on every side: the moving line runs just outside what is recorded.
Rect AreaOutline(const AreaState& area);

// From the four corner fields, in any order, to the aligned capture area.
void AreaFromCorners(AreaState& area);
// The area of the default corners, which may reach beyond the screen. The line is not moved along.
void AreaSetDefault(AreaState& area);
// Aligns the area to the recording size once more, and moves the line along if it is up.
void AreaRecompute(AreaState& area);
// Shows size and place of the area, and the size of the animation that it would give: through setReadouts, and during a
// selection on the backdrop over the labels.
void ShowAreaReadouts(AreaState& area);

} // namespace framereel
