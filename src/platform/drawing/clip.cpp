// Setting, saving, narrowing and restoring the clip.
#include "platform/drawing/clip.h"

#include "platform/drawing/current_port.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

// Stands for no clip at all: larger than any Port.
constexpr int kUnclipped = 10000;

} // namespace

void ResetClip() {
  if (TheCurrentPort().blind) {
    SetClip(0, 0, 0, 0);
  } else {
    ::SelectClipRgn(CurrentContext(), nullptr);
  }
}

SavedClip SaveClip() {
  SavedClip saved = {CurrentPort(), ::CreateRectRgn(0, 0, 0, 0)};
  if (::GetClipRgn(CurrentContext(), saved.region) == 0) {
    ::DeleteObject(saved.region);
    saved.region = ::CreateRectRgn(0, 0, kUnclipped, kUnclipped);
  }
  return saved;
}

void SetClip(int left, int top, int right, int bottom) {
  HRGN region = TheCurrentPort().blind ? ::CreateRectRgn(0, 0, 0, 0) : ::CreateRectRgn(left, top, right, bottom);
  ::SelectClipRgn(CurrentContext(), region);
  ::DeleteObject(region);
}

SavedClip NarrowClip(int left, int top, int right, int bottom) {
  const SavedClip saved = SaveClip();
  ::IntersectClipRect(CurrentContext(), left, top, right, bottom);
  return saved;
}

void RestoreClip(const SavedClip& saved) {
  if (saved.port == CurrentPort()) ::SelectClipRgn(CurrentContext(), saved.region);
  DropSavedClip(saved);
}

void DropSavedClip(const SavedClip& saved) {
  ::DeleteObject(saved.region);
}

} // namespace framereel
