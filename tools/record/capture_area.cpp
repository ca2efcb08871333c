// Cutting each axis to the screen.
#include "record/capture_area.h"

#include <algorithm>

#include "area/area_geometry.h"
#include "recorder/engine/recording_scale.h"

namespace framereel {

namespace {

// The part of a span of `length` pixels from `start` that lies on the screen. False when that is nothing.
bool CutSpan(int32_t start, int32_t length, int16_t screen, int16_t* low, int16_t* high) {
  *low = int16_t(std::max(start, 0));
  *high = int16_t(std::min(start + length, int32_t{screen}));
  return *low < *high;
}

} // namespace

bool ChooseCaptureArea(const RecordOptions& options, int16_t screenWidth, int16_t screenHeight, Rect* area, bool* cut,
                       Refusal& refusal) {
  const WantedArea whole = {0, 0, screenWidth, screenHeight};
  const WantedArea& wanted = options.area.width ? options.area : whole;
  Rect onScreen;
  if (!CutSpan(wanted.left, wanted.width, screenWidth, &onScreen.left, &onScreen.right) ||
      !CutSpan(wanted.top, wanted.height, screenHeight, &onScreen.top, &onScreen.bottom)) {
    return Refuse(refusal, "the area %d,%d %dx%d lies outside the screen, which has %dx%d pixels", wanted.left,
                  wanted.top, wanted.width, wanted.height, screenWidth, screenHeight);
  }
  *cut = onScreen.right - onScreen.left != wanted.width || onScreen.bottom - onScreen.top != wanted.height;
  *area = AlignArea(onScreen, options.recording.recordingSize, screenWidth, screenHeight);
  const Point output = OutputSize(*area, options.recording.recordingSize);
  if (output.h > 0 && output.v > 0) return true;

  const RecordingScale& scale = ScaleOf(options.recording.recordingSize);
  return Refuse(refusal, "the area of %dx%d pixels is too small for a recording at %d %%, which takes blocks of %dx%d",
                onScreen.right - onScreen.left, onScreen.bottom - onScreen.top, scale.percent, scale.denominator,
                scale.denominator);
}

} // namespace framereel
