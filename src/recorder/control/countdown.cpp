// See countdown.h.
#include "recorder/control/countdown.h"

#include <cstring>

#include "platform/bitmaps/copy_bits.h"
#include "platform/bitmaps/dib_buffers.h"
#include "platform/bitmaps/load_bitmaps.h"
#include "platform/bitmaps/offscreens.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/standard_drawing.h"

namespace framereel {
namespace {

constexpr uint16_t kPictureBitmaps[] = {512, 513, 514, 517}; // of the resources

// The bounds moved into the middle of the area.
Rect Centred(const Rect& bounds, const Rect& area) {
  const int left = (area.left + area.right - bounds.right) / 2;
  const int top = (area.top + area.bottom - bounds.bottom) / 2;
  return {int16_t(top), int16_t(left), int16_t(top + bounds.bottom), int16_t(left + bounds.right)};
}

// The pictures are of one size.
Rect BoundsOf(const RecorderControl& control) {
  return OffscreenBounds(control.pictures[kPictureOne]);
}

void DrawOnScreen() {
  SetPortScreen();
  UseDrawState(DrawStateDefault());
}

void CopyTo(Offscreen* offscreen, const Port* source, const Rect& from) {
  SetPortOffscreen(offscreen);
  UseDrawState(DrawStateDefault());
  CopyBits(source, from, OffscreenBounds(offscreen), 1);
}

// The pixels of the Offscreen, which the caller frees.
DibBuffer* ReadPixels(Offscreen* offscreen) {
  DibBuffer* pixels = NewDibBuffer24(offscreen->width, offscreen->height);
  ReadDibBuffer24(pixels, 0, offscreen, 0, offscreen->height);
  return pixels;
}

// Whether the picture does not stand on the screen as it was drawn. What lies off the screen counts as whole.
bool IsPaintedOver(const RecorderControl& control) {
  const Rect bounds = BoundsOf(control);
  Offscreen* seen = NewOffscreen(bounds.right, bounds.bottom, true);
  if (!seen) return true;
  CopyTo(seen, &control.shownPicture->port, bounds);
  DibBuffer* drawn = ReadPixels(seen);
  CopyTo(seen, ScreenPort(), control.pictureRect);
  DibBuffer* now = ReadPixels(seen);
  const bool same = ::memcmp(drawn->bits, now->bits, size_t(now->rowSize) * size_t(now->height)) == 0;
  FreeDibBuffer(drawn);
  FreeDibBuffer(now);
  FreeOffscreen(seen);
  return !same;
}

// Another program that has painted where the picture stands has left its mark on it, and what was kept of the screen is
// behind the times.
void LookForOthers(RecorderControl& control) {
  if (control.shownPicture && IsPaintedOver(control)) control.paintedOver = true;
}

void TellPanel(const RecorderState& recorder, bool stands) {
  const RecorderPanel& panel = recorder.panel;
  if (panel.pictureStands) panel.pictureStands(panel.owner, recorder.control.pictureRect, stands);
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
  control.paintedOver = false;
  const Rect bounds = BoundsOf(control);
  control.pictureRect = Centred(bounds, recorder.captureArea);
  control.savedScreen = NewOffscreen(bounds.right, bounds.bottom, true);
  if (!control.savedScreen) return;
  TellPanel(recorder, true);
  CopyTo(control.savedScreen, ScreenPort(), control.pictureRect);
}

void ShowPicture(RecorderControl& control, CountdownPicture picture) {
  if (!control.savedScreen) return;
  LookForOthers(control);
  DrawOnScreen();
  CopyBits(&control.pictures[picture]->port, BoundsOf(control), control.pictureRect, 1);
  control.shownPicture = control.pictures[picture];
}

void RestorePictureArea(RecorderState& recorder) {
  RecorderControl& control = recorder.control;
  if (!control.savedScreen) return;
  LookForOthers(control);
  control.shownPicture = nullptr;
  DrawOnScreen();
  CopyBits(&control.savedScreen->port, BoundsOf(control), control.pictureRect, 1);
  FreeOffscreen(control.savedScreen);
  control.savedScreen = nullptr;
  const Rect& r = control.pictureRect;
  const RECT where = {r.left, r.top, r.right, r.bottom};
  if (control.paintedOver) ::InvalidateRect(nullptr, &where, TRUE);
  TellPanel(recorder, false);
}

} // namespace framereel
