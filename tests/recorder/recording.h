// The engine at work in a test: its record with everything that it is handed, and what it told the panel.
#pragma once

#include <string>
#include <vector>

#include "core/notices.h"
#include "recorder/engine/recorder_core.h"
#include "recorder/engine/status.h"
#include "support/gif_reader.h"

namespace framereel {

// Stands on a Desktop, and goes ahead of it. It keeps its place in memory.
struct Recording {
  RecordingOptions options;
  AnimationStream stream;
  GifWriter gif;
  RecorderState recorder;
  std::string status;   // the panel's status line
  std::string message;  // why the screen cannot be recorded; empty while it is hidden
  int messageCalls = 0; // how often it was shown or hidden
  RecordButtons buttons = {true, true, false};
  bool optionsEnabled = true;

  explicit Recording(const Rect& area, const RecordingOptions& withOptions = {});
  ~Recording();
  Recording(const Recording&) = delete;

  // Takes another area for the next animation, with the output size that goes with it.
  void SetArea(const Rect& area);
  // A tick, or a grabbed frame, at a time of the display's clock; the status line follows. Answers whether a frame was
  // written.
  bool Capture(bool grab = false);
  // The file that a save would write now, and what a foreign reader sees in it.
  std::vector<uint8_t> Saved() const;
  GifPicture Read() const;
};

// Hears of changes of the display as the program does.
struct Watch {
  RecorderState* recorder;

  explicit Watch(RecorderState* watched) : recorder(watched) { NotifyAdd(Hear, this); }
  ~Watch() { NotifyRemove(Hear, this); }
  static void Hear(intptr_t subject, void* watch) {
    if (subject == kChangeDisplay) RecorderCheckScreen(*static_cast<Watch*>(watch)->recorder);
  }
};

} // namespace framereel
