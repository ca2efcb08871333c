// The engine at work in a test: its record with everything that it is handed, and what it told the panel.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/notices.h"
#include "gif/stream_bytes.h"
#include "recorder/engine/recorder_core.h"
#include "recorder/engine/status.h"
#include "recorder/plain_difference.h"
#include "support/desktop.h"
#include "support/dice.h"
#include "support/gif_reader.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/pixels.h"

namespace framereel {

// Stands on a Desktop, and goes ahead of it. Hears of changes of the display as the program does.
struct Recording {
  RecordingOptions options;
  OwnWriter gif;
  AnimationStream& stream = gif.ownStream;
  RecorderState recorder;
  std::string status;   // the panel's status line
  std::string message;  // why the screen cannot be recorded; empty while it is hidden
  int messageCalls = 0; // how often it was shown or hidden
  RecordButtons buttons = {true, true, false};
  bool optionsEnabled = true;

  explicit Recording(const Rect& area = {}) {
    RecorderPanel panel;
    panel.owner = this;
    panel.setStatus = [](void* owner, const char* text) { Owner(owner).status = text; };
    panel.showMessage = [](void* owner, const char* text) { Owner(owner).Show(text); };
    panel.hideMessage = [](void* owner) { Owner(owner).Show(""); };
    panel.enableButtons = [](void* owner, const RecordButtons& enabled) { Owner(owner).buttons = enabled; };
    panel.enableOptions = [](void* owner, bool enabled) { Owner(owner).optionsEnabled = enabled; };
    RecorderSetUp(recorder, &stream, &gif, &options, panel);
    NotifyAdd(HearOfChange, this);
    recorder.ownerName = "a tester";
    recorder.captureArea = area;
  }
  ~Recording() {
    NotifyRemove(HearOfChange, this);
    RecorderTearDown(recorder);
  }
  Recording(const Recording&) = delete;

  // A tick, or a grabbed frame, at a time of the display's clock; the status line follows. Answers whether a frame was
  // written.
  bool Capture(bool grab = false) {
    const uint32_t before = recorder.frameCount;
    RecorderCaptureFrame(recorder, grab);
    RecorderRefreshStatus(recorder);
    return recorder.frameCount != before;
  }
  // The file that a save would write now, and what a foreign reader sees in it.
  std::vector<uint8_t> Saved() const { return FileBytes(stream); }
  GifPicture Read() const {
    GifPicture picture = ReadGif(Saved());
    EXPECT_EQ(picture.error, "");
    return picture;
  }

private:
  static Recording& Owner(void* owner) { return *static_cast<Recording*>(owner); }
  void Show(const char* text) {
    message = text;
    ++messageCalls;
  }
  static void HearOfChange(intptr_t subject, void* recording) {
    if (subject == kChangeDisplay) RecorderCheckScreen(Owner(recording).recorder);
  }
};

} // namespace framereel
