// The application: everything that the program keeps for its run, in one record, and how its parts are put together.
//
// The windows are the platform floor's, and the panel's stand in panel.h.
#pragma once

#include "app/settings_file.h"
#include "area/area.h"
#include "gif/animation_stream.h"
#include "gif/gif_records.h"
#include "recorder/engine/recorder_state.h"

namespace framereel {

// Its parts know each other by address, so it stays where it is.
struct Application {
  RecordingOptions options;
  AnimationStream stream; // the animation
  GifWriter gif;          // writes it
  RecorderState recorder;
  AreaState area;
  Settings settings;
};

// Between PlatformInit and the event loop: from the engine and the settings to the panel on its way in. Settings come
// ahead of the panel, whose controls are made with their values.
void ApplicationStart(Application& app);
// Behind the event loop. Nothing of what is under way is left on the screen or pending; the platform floor takes the
// windows down.
void ApplicationEnd(Application& app);

} // namespace framereel
