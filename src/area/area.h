// The capture area: which rectangle of the screen is recorded, and the record of everything that chooses and shows it.
//
// The rectangle itself is RecorderState::captureArea, so that there is one; area_geometry.h aligns it to the recording
// size. The user draws it in selection.h; the moving line round it stands in ants.h.
#pragma once

#include <cstdint>

#include "toolkit/core/geometry.h"

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

// The moving line round the area; see ants.h.
struct Ants {
  int16_t count = 0;            // above 0 it is up; below 0 something hid a line that was not shown
  uint16_t pause = 0;           // ticks until it is drawn afresh; 0: what stands on the screen is what the phase says
  uint16_t phase = 0;           // 0 to 7
  Timer* timer = nullptr;       // while count is above 0
  DrawState* drawing = nullptr; // carries the stripes
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
};

// Sets the default corners and the area that they give. The recorder stands already and lives as long.
void AreaInit(AreaState& area, RecorderState* recorder);
// The panel stands now; its window's mouse and key methods become those of the selection.
void AreaTakePanel(AreaState& area, const AreaPanel& panel);
// From here on the read-outs are kept, and Shift is looked at. Runs once, behind AreaTakePanel.
void AreaDisplayInit(AreaState& area);
// Ends what is under way and takes the line off the screen: no timer of the area is pending afterwards.
void AreaShutDown(AreaState& area);

// The capture area grown by a pixel on every side: the moving line runs just outside what is recorded.
Rect AreaOutline(const AreaState& area);

// From the four corner fields, in any order, to the aligned capture area.
void AreaFromCorners(AreaState& area);
// The area of the default corners, which may reach beyond the screen.
void AreaSetDefault(AreaState& area);
// Aligns the area to the recording size once more, and moves the line along if it is up.
void AreaRecompute(AreaState& area);
// Works out outputWidth and outputHeight of the recorder, and shows size and place of the area.
void ShowAreaReadouts(AreaState& area);

} // namespace framereel
