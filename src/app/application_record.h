// What the program keeps for its run, in one record: the engine, the area, the settings, the panel, the document.
#pragma once

#include "app/settings_file.h"
#include "area/area_record.h"
#include "core/file_refs.h"
#include "core/timers.h"
#include "gif/animation_stream.h"
#include "gif/gif_records.h"
#include "recorder/engine/recorder_state.h"

namespace framereel {

struct Application;
struct Offscreen;

// A check box of the panel and the option that it stands for.
struct OptionBox {
  Application* app;
  bool* option; // one of the application's
  View* view;
};

enum PanelOption { kInterframeBox, kTimingBox, kLoopBox, kBorderBox, kCursorBox, kExplorerBox, kOptionBoxCount };

// The controls that are worked on after they have been made; all belong to the window. See panel.h.
struct Panel {
  ChildWindow* window = nullptr;
  View* root = nullptr; // the Column of all the others
  View *startButton = nullptr, *grabButton = nullptr, *stopButton = nullptr;
  View* statusLine = nullptr; // frames and bytes
  View *messageGapAbove = nullptr, *messageText = nullptr, *messageGapBelow = nullptr;
  View *sizeLabel = nullptr, *topLeftLabel = nullptr; // the area's read-outs
  View *showAreaBox = nullptr, *selectButton = nullptr;
  View *frameRatePopup = nullptr, *recordingSizePopup = nullptr; // the Rows
  OptionBox options[kOptionBoxCount] = {};
};

// See document.h.
struct Document {
  FileRef* file = nullptr;    // where the animation was saved last; null: nowhere yet
  FileType* type = nullptr;   // of every save
  uint32_t abandonedSize = 0; // of the stream, when the user last agreed to lose what is unsaved
};

// The splash and About; see picture_windows.h.
struct PictureWindow {
  ChildWindow* window = nullptr; // null: it is not up
  Offscreen* picture = nullptr;  // loaded when it is first shown, and kept
  Timer* timer = nullptr;        // its next step, or its end
};

// Its parts know each other by address, so it stays where it is.
struct Application {
  RecordingOptions options;
  AnimationStream stream; // the animation
  GifWriter gif;          // writes it
  RecorderState recorder;
  AreaState area;
  Settings settings;
  Panel panel;
  Document document;
  PictureWindow splash, about;
};

} // namespace framereel
