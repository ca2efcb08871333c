// What stands when the settings are read: the main window, the options and the area, with a current directory of their
// own, where the file stands.
#pragma once

#include <memory>
#include <string>

#include "app/settings_file.h"
#include "area/area.h"
#include "area/capture_area.h"
#include "core/file_refs.h"
#include "recorder/engine/recorder_state.h"
#include "recorder/engine/recording_scale.h"
#include "support/script.h"
#include "support/temporary_folder.h"
#include "support/window_program.h"

namespace framereel {

struct CloseFile {
  void operator()(File* file) const { FileClose(file); }
};
using OpenedFile = std::unique_ptr<File, CloseFile>;

struct SettingsProgram {
  WindowProgram program;
  WorkingFolder folder;
  const std::string place = folder / "Settings.prf";
  RecordingOptions options;
  AnimationStream stream;
  RecorderState recorder;
  AreaState area;
  Settings settings;

  SettingsProgram(int32_t width = 640, int32_t height = 480) : program(width, height) {
    recorder.options = &options;
    recorder.stream = &stream;
    AreaInit(area, &recorder);
    WriteWholeFile(place, "");
    SettingsInit(settings, &options, &area);
  }
  ~SettingsProgram() {
    SettingsShutDown(settings);
    AreaShutDown(area);
  }

  // What the program then knows, if it is started with this file.
  std::string Loaded(const std::string& text) {
    options = {};
    AreaSetDefault(area);
    WriteWholeFile(place, text);
    SettingsLoad(settings);
    return Told();
  }

  // Area, delay, a capital letter for each flag that is set, and recording size: "0,0 440x330 333 ITLFBCe 100".
  std::string Told() const {
    const Rect& r = recorder.captureArea;
    const auto flag = [](char letter, bool set) { return set ? letter : char(letter + 'a' - 'A'); };
    return Text(r.left, ',', r.top, ' ', r.right - r.left, 'x', r.bottom - r.top, ' ', options.frameDelay, ' ',
                flag('I', options.interframeTransparency), flag('T', options.recordTimingInfo), flag('L', options.loop),
                flag('F', options.fakeScreen), flag('B', options.overlayBorder), flag('C', options.overlayCursor),
                flag('E', options.explorerCompatible), ' ', ScaleOf(options.recordingSize).percent);
  }
};

} // namespace framereel
