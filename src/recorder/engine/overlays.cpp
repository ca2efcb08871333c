// The pointer and the border.
#include "recorder/engine/overlays.h"

#include <cstring>

#include "platform/drawing/current_port.h"
#include "win32/win32_drawing.h"
#include "win32/win32_input.h"

namespace framereel {

FramePointer LookAtCursor(int32_t left, int32_t top) {
  CURSORINFO info;
  if (!::GetCursorInfo(&info)) return {};
  const RECT& place = info.rcPicture;
  return {info.hCursor, info.serial, place.left - left, place.top - top, place.right - left, place.bottom - top};
}

void OverlayCursor(const FramePointer& pointer) {
  ::DrawIcon(CurrentContext(), pointer.left, pointer.top, pointer.picture);
}

void OverlayBorder(RecorderState& recorder, bool transparent, bool later) {
  const AnimationColours& colours = recorder.colours;
  const uint8_t value = transparent && later ? colours.outputTransparent : colours.blackIndex;
  const size_t rowBytes = size_t(recorder.frameWidth);
  const size_t width = size_t(recorder.outputWidth);
  const size_t height = size_t(recorder.outputHeight);
  if (width == 0 || height == 0) return;
  uint8_t* const top = recorder.workFrame;
  ::memset(top, value, width);
  ::memset(top + (height - 1) * rowBytes, value, width);
  for (size_t y = 0; y < height; ++y) {
    top[y * rowBytes] = value;
    top[y * rowBytes + width - 1] = value;
  }
}

} // namespace framereel
