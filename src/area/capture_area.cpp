// The corners belong to the area; what they span is aligned, and looked at on the screen.
#include "area/capture_area.h"

#include <algorithm>

#include "area/area_geometry.h"
#include "core/numbers.h"
#include "core/system_kind.h"
#include "platform/display/display_caps.h"
#include "recorder/engine/recorder_state.h"
#include "recorder/engine/status.h"

namespace framereel {

Rect OutlineOf(const Rect& r) {
  return {PinToShort(r.top - 1), PinToShort(r.left - 1), PinToShort(r.bottom + 1), PinToShort(r.right + 1)};
}

Rect AreaOutline(const AreaState& area) {
  return OutlineOf(area.recorder->captureArea);
}

void AreaFromCorners(AreaState& area) {
  const auto [left, right] = std::minmax(area.anchorX, area.cornerX);
  const auto [top, bottom] = std::minmax(area.anchorY, area.cornerY);
  area.recorder->captureArea = {top, left, PinToShort(bottom + 1), PinToShort(right + 1)};
  AlignCaptureArea(area);
}

void AreaSetDefault(AreaState& area) {
  area.anchorX = area.anchorY = 0;
  area.cornerX = HasNewShell() ? 439 : 459;
  area.cornerY = HasNewShell() ? 329 : 344;
  AreaFromCorners(area);
}

void AlignCaptureArea(AreaState& area) {
  const DisplayCaps& screen = TheDisplayCaps();
  RecorderState& recorder = *area.recorder;
  recorder.captureArea =
      AlignArea(recorder.captureArea, recorder.options->recordingSize, screen.screenWidth, screen.screenHeight);
  RecorderCheckScreen(recorder); // whether all of it is on the screen
}

} // namespace framereel
