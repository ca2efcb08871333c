// On the panel through its own labels; over a backdrop, which hides these from the painting, by hand.
#include "area/readouts.h"

#include "core/app_strings.h"
#include "core/rects.h"
#include "core/strings.h"
#include "core/text_format.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/pump/pump.h"
#include "platform/records/window_records.h"
#include "recorder/engine/recorder_state.h"
#include "recorder/engine/recording_scale.h"
#include "toolkit/views/view.h"

namespace framereel {
namespace {

constexpr uint16_t kSizeString = 19, kTopLeftString = 20, kReducedSizeString = 54;

// Where the label stands, in the backdrop's coordinates.
Rect BoundsOnBackdrop(const AreaState& area, const View* label) {
  const WindowGeometry& panel = area.panel.window->geometry;
  const WindowGeometry& backdrop = area.backdrop->geometry;
  return RectOffset(ViewBounds(label), int16_t(panel.clientLeft - backdrop.clientLeft),
                    int16_t(panel.clientTop - backdrop.clientTop));
}

void WipeLabel(const AreaState& area, const View* label) {
  if (label) FillRect(BoundsOnBackdrop(area, label));
}

void WriteLabel(const AreaState& area, const View* label, const char* text) {
  if (!label) return;
  const Rect bounds = BoundsOnBackdrop(area, label);
  DrawText(bounds.left, bounds.top + FontMetrics().ascent, text);
}

// What is drawn on the backdrop stands on the screen, over the panel's old picture.
void PaintOnBackdrop(const AreaState& area, const char* size, const char* topLeft) {
  const AreaPanel& panel = area.panel;
  if (!panel.window) return;
  SetPortWindow(area.backdrop);
  UseDrawState(DrawStateFill());
  SetForeColour(ColourMenu());
  WipeLabel(area, panel.sizeLabel);
  WipeLabel(area, panel.topLeftLabel);
  UseDrawState(DrawStateDefault());
  WriteLabel(area, panel.sizeLabel, size);
  WriteLabel(area, panel.topLeftLabel, topLeft);
}

// The caller frees.
char* SizeText(const Rect& captured, const Point& output) {
  const int32_t width = captured.right - captured.left, height = captured.bottom - captured.top;
  if (output.h == width && output.v == height) return FormatNew(AppString(kSizeString), width, height);
  return FormatNew(AppString(kReducedSizeString), width, height, int32_t{output.h}, int32_t{output.v});
}

} // namespace

void ShowAreaReadouts(AreaState& area) {
  const RecorderState& recorder = *area.recorder;
  const Rect& captured = recorder.captureArea;
  char* size = SizeText(captured, OutputSize(captured, recorder.options->recordingSize));
  char* topLeft = FormatNew(AppString(kTopLeftString), int32_t{captured.left}, int32_t{captured.top});
  if (area.backdrop) PaintOnBackdrop(area, size, topLeft);
  if (area.panel.setReadouts) area.panel.setReadouts(area.panel.owner, size, topLeft);
  // The labels paint themselves too, and not later: the line may run across them and comes back behind this.
  if (area.backdrop) FlushPaints();
  StrFree(size);
  StrFree(topLeft);
}

} // namespace framereel
