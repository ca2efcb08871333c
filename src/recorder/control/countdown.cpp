// See countdown.h.
//
// savedScreen is the screen as it would be without the picture. Whenever a picture is about to change, the screen is
// looked at: a pixel that shows something else than the picture has been painted by another program, and is what the
// screen has there now; one that still shows the picture has what was kept.
#include "recorder/control/countdown.h"

#include <cstring>
#include <utility>

#include "platform/ports.h"
#include "platform/standard_drawing.h"

namespace framereel {
namespace {

constexpr uint16_t kPictureBitmaps[] = {512, 513, 514, 517}; // of the resources
constexpr uint16_t kPaletteDepth = 8;                        // up to it a pixel is a colour index

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

Offscreen* NewPictureOffscreen(const RecorderControl& control) {
  const Rect bounds = BoundsOf(control);
  return NewOffscreen(bounds.right, bounds.bottom, true);
}

void PutOnScreen(const RecorderControl& control, const Offscreen* offscreen) {
  SetPortScreen();
  UseDrawState(DrawStateDefault());
  CopyBits(&offscreen->port, BoundsOf(control), control.pictureRect, 1);
}

void CopyTo(Offscreen* offscreen, const Port* source, const Rect& from) {
  SetPortOffscreen(offscreen);
  UseDrawState(DrawStateDefault());
  CopyBits(source, from, OffscreenBounds(offscreen), 1);
}

// ---- What others have painted ------------------------------------------------------------------------------------

// The pixels of the Offscreen in bytes, or groups of three, that are the same where the pixels are. The caller frees.
DibBuffer* ReadPixels(Offscreen* offscreen) {
  const bool palette = offscreen->depth <= kPaletteDepth;
  DibBuffer* pixels = (palette ? NewDibBuffer8 : NewDibBuffer24)(offscreen->width, offscreen->height);
  (palette ? ReadDibBuffer8 : ReadDibBuffer24)(pixels, 0, offscreen, 0, offscreen->height);
  return pixels;
}

bool Same(const DibBuffer* a, const DibBuffer* b) {
  return ::memcmp(a->bits, b->bits, size_t{a->rowSize} * size_t(a->height)) == 0;
}

// Copies into `now` what `saved` has at the pixels that both buffers, read from an Offscreen like `now`, agree about.
void CopyWhereSame(Offscreen* now, const Offscreen* saved, const DibBuffer* a, const DibBuffer* b) {
  const size_t pixelBytes = now->depth <= kPaletteDepth ? 1 : 3;
  SetPortOffscreen(now);
  UseDrawState(DrawStateDefault());
  for (int16_t y = 0; y < now->height; ++y) {
    const size_t row = size_t{a->rowSize} * size_t(now->height - 1 - y);
    const auto same = [&](int16_t x) {
      const size_t place = row + size_t(x) * pixelBytes;
      return ::memcmp(a->bits + place, b->bits + place, pixelBytes) == 0;
    };
    for (int16_t x = 0, start = 0; x < now->width; start = ++x) {
      while (x < now->width && same(x)) ++x;
      const Rect run = {y, start, int16_t(y + 1), x};
      if (start < x) CopyBits(&saved->port, run, run, 1);
    }
  }
}

// Brings what was kept of the screen up to date. What lies off the screen counts as unchanged; without memory all does.
void TakeInOthers(RecorderControl& control) {
  Offscreen* now = NewPictureOffscreen(control);
  if (!now) return;
  CopyTo(now, &control.shownScreen->port, BoundsOf(control));
  DibBuffer* shown = ReadPixels(now);
  CopyTo(now, ScreenPort(), control.pictureRect);
  DibBuffer* seen = ReadPixels(now);
  if (!Same(shown, seen)) {
    CopyWhereSame(now, control.savedScreen, shown, seen);
    std::swap(now, control.savedScreen);
    control.paintedOver = true;
  }
  FreeDibBuffer(shown);
  FreeDibBuffer(seen);
  FreeOffscreen(now);
}

// ---- A picture's coming and going --------------------------------------------------------------------------------

void TellPanel(const RecorderState& recorder, PictureWork work) {
  const RecorderPanel& panel = recorder.panel;
  if (panel.pictureWork) panel.pictureWork(panel.owner, recorder.control.pictureRect, work);
}

void FreeSaved(RecorderControl& control) {
  for (Offscreen** offscreen : {&control.savedScreen, &control.shownScreen}) {
    if (*offscreen) FreeOffscreen(*offscreen);
    *offscreen = nullptr;
  }
}

// The place in the middle of the area, where none stands yet, and an Offscreen for what lies there. Null without
// memory.
Offscreen* ChoosePlace(RecorderState& recorder) {
  RecorderControl& control = recorder.control;
  for (const Offscreen* picture : control.pictures) {
    if (!picture) return nullptr;
  }
  const Rect place = Centred(BoundsOf(control), recorder.captureArea);
  const bool elsewhere = place.left != control.pictureRect.left || place.top != control.pictureRect.top;
  if (elsewhere) RepaintPictureArea(recorder); // the place of before, which is forgotten
  control.pictureRect = place;
  control.shownScreen = NewPictureOffscreen(control);
  Offscreen* below = control.shownScreen ? NewPictureOffscreen(control) : nullptr;
  if (!below) FreeSaved(control);
  return below;
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

void ShowPicture(RecorderState& recorder, CountdownPicture picture) {
  RecorderControl& control = recorder.control;
  Offscreen* below = control.savedScreen ? control.savedScreen : ChoosePlace(recorder);
  if (!below) return;
  TellPanel(recorder, PictureWork::kBegins);
  if (control.savedScreen) {
    TakeInOthers(control);
  } else {
    CopyTo(below, ScreenPort(), control.pictureRect);
    control.savedScreen = below; // not earlier: whoever puts it back puts back what lies there
  }
  CopyTo(control.shownScreen, &control.pictures[picture]->port, BoundsOf(control));
  PutOnScreen(control, control.shownScreen);
  TellPanel(recorder, PictureWork::kEnds);
}

void RestorePictureArea(RecorderState& recorder) {
  RecorderControl& control = recorder.control;
  if (!control.savedScreen) return;
  TellPanel(recorder, PictureWork::kBegins);
  TakeInOthers(control);
  PutOnScreen(control, control.savedScreen);
  FreeSaved(control);
  TellPanel(recorder, PictureWork::kEnds);
}

void PutBackPictureArea(const RecorderState& recorder) {
  if (recorder.control.savedScreen) PutOnScreen(recorder.control, recorder.control.savedScreen);
}

void RepaintPictureArea(RecorderState& recorder) {
  RecorderControl& control = recorder.control;
  if (!control.paintedOver) return;
  control.paintedOver = false;
  TellPanel(recorder, PictureWork::kRepaints);
  const Rect& r = control.pictureRect;
  const RECT where = {r.left, r.top, r.right, r.bottom};
  ::InvalidateRect(nullptr, &where, TRUE);
}

} // namespace framereel
