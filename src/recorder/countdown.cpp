// See countdown.h.
#include "recorder/countdown.h"

#include "platform/ports.h"
#include "platform/standard_drawing.h"

namespace framereel {
namespace {

constexpr uint16_t kPictureBitmaps[] = {512, 513, 514, 517}; // of the resources

// The bounds moved into the middle of the area.
Rect Centred(const Rect& bounds, const Rect& area) {
  const int left = (area.left + area.right - bounds.right) / 2;
  const int top = (area.top + area.bottom - bounds.bottom) / 2;
  return {int16_t(top), int16_t(left), int16_t(top + bounds.bottom), int16_t(left + bounds.right)};
}

void DrawOnScreen() {
  SetPortScreen();
  UseDrawState(DrawStateDefault());
}

} // namespace

void LoadCountdownPictures(RecorderControl& control) {
  for (int i = kPictureOne; i <= kPicturePause; ++i) control.pictures[i] = LoadOffscreen(kPictureBitmaps[i]);
}

void FreeCountdownPictures(RecorderControl& control) {
  for (Offscreen*& picture : control.pictures) {
    if (picture) FreeOffscreen(picture);
    picture = nullptr;
  }
}

void SavePictureArea(RecorderState& recorder) {
  RecorderControl& control = recorder.control;
  for (const Offscreen* picture : control.pictures) {
    if (!picture) return;
  }
  control.pictureBounds = OffscreenBounds(control.pictures[kPictureOne]);
  control.pictureRect = Centred(control.pictureBounds, recorder.captureArea);
  control.savedScreen = NewOffscreen(control.pictureBounds.right, control.pictureBounds.bottom, true);
  if (!control.savedScreen) return;
  SetPortOffscreen(control.savedScreen);
  UseDrawState(DrawStateDefault());
  CopyBits(ScreenPort(), control.pictureRect, control.pictureBounds, 1);
}

void ShowPicture(const RecorderControl& control, CountdownPicture picture) {
  if (!control.savedScreen) return;
  DrawOnScreen();
  CopyBits(&control.pictures[picture]->port, control.pictureBounds, control.pictureRect, 1);
}

void RestorePictureArea(RecorderControl& control) {
  if (!control.savedScreen) return;
  DrawOnScreen();
  CopyBits(&control.savedScreen->port, control.pictureBounds, control.pictureRect, 1);
  FreeOffscreen(control.savedScreen);
  control.savedScreen = nullptr;
  // What was kept is behind the times where a program has painted since.
  const Rect& r = control.pictureRect;
  const RECT where = {r.left, r.top, r.right, r.bottom};
  ::InvalidateRect(nullptr, &where, TRUE);
}

} // namespace framereel
