// Keeping what a picture covers, drawing it, and putting back what still shows it.
//
// savedScreen is the screen as it would be without the picture. Whenever a picture is about to change, the screen is
// looked at: a pixel that shows something else than the picture has been painted by another program, and is what the
// screen has there now; one that still shows the picture has what was kept.
#include "recorder/control/countdown.h"

#include <cstring>
#include <utility>

#include "platform/bitmaps/copy_bits.h"
#include "platform/bitmaps/dib_buffers.h"
#include "platform/bitmaps/load_bitmaps.h"
#include "platform/bitmaps/offscreens.h"
#include "platform/bitmaps/screen_colours.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/standard_drawing.h"
#include "win32/pixels/scale.h"
#include "win32/win32_windows.h"

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

// On the screen, from their corner on. The pictures are of one size.
Rect BoundsOf(const RecorderControl& control) {
  const Offscreen* one = control.pictures[kPictureOne];
  return {0, 0, int16_t(one->height * PictureScale()), int16_t(one->width * PictureScale())};
}

Offscreen* NewPictureOffscreen(const RecorderControl& control) {
  const Rect bounds = BoundsOf(control);
  return NewOffscreen(bounds.right, bounds.bottom, true);
}

// A part of the picture's place, given from its corner on.
void PutOnScreen(const RecorderControl& control, const Offscreen* offscreen, const Rect& part) {
  const Rect& place = control.pictureRect;
  SetPortScreen();
  UseDrawState(DrawStateDefault());
  CopyBits(&offscreen->port, part,
           {int16_t(place.top + part.top), int16_t(place.left + part.left), int16_t(place.top + part.bottom),
            int16_t(place.left + part.right)},
           1);
}

void CopyTo(Offscreen* offscreen, const Port* source, const Rect& from) {
  SetPortOffscreen(offscreen);
  UseDrawState(DrawStateDefault());
  CopyBits(source, from, OffscreenBounds(offscreen), 1);
}

// ---- What others have painted ------------------------------------------------------------------------------------

// A look at the picture's place.
struct Sight {
  Offscreen* now;          // what stands there
  DibBuffer *shown, *seen; // the pixels that were drawn, and those of `now`, in one layout
};

// Of a pixel in them: a colour index, or blue, green and red.
size_t PixelBytes() {
  return ScreenDepth() <= kPaletteDepth ? 1 : 3;
}

DibBuffer* ReadPixels(Offscreen* offscreen) {
  const bool palette = PixelBytes() == 1;
  DibBuffer* pixels = (palette ? NewDibBuffer8 : NewDibBuffer24)(offscreen->width, offscreen->height);
  (palette ? ReadDibBuffer8 : ReadDibBuffer24)(pixels, 0, offscreen, 0, offscreen->height);
  return pixels;
}

// What lies off the screen counts as the picture. False without memory.
bool LookAtScreen(const RecorderControl& control, Sight* sight) {
  sight->now = NewPictureOffscreen(control);
  if (!sight->now) return false;
  CopyTo(sight->now, &control.shownScreen->port, BoundsOf(control));
  sight->shown = ReadPixels(sight->now);
  CopyTo(sight->now, ScreenPort(), control.pictureRect);
  sight->seen = ReadPixels(sight->now);
  return true;
}

void ForgetSight(const Sight& sight) {
  FreeDibBuffer(sight.shown);
  FreeDibBuffer(sight.seen);
  FreeOffscreen(sight.now);
}

bool ShowsNothingElse(const Sight& sight) {
  const DibBuffer &a = *sight.shown, &b = *sight.seen;
  return ::memcmp(a.bits, b.bits, size_t{a.rowSize} * size_t(a.height)) == 0;
}

// Whether the pixel still shows the picture.
bool ShowsPicture(const Sight& sight, int16_t x, int16_t y) {
  const size_t pixelBytes = PixelBytes();
  const size_t place = size_t{sight.seen->rowSize} * size_t(sight.seen->height - 1 - y) + size_t(x) * pixelBytes;
  return ::memcmp(sight.shown->bits + place, sight.seen->bits + place, pixelBytes) == 0;
}

// Calls what is given with rectangles that hold the pixels that still show the picture, and no others.
template <typename Function> void ForEachPartOfPicture(const Sight& sight, Function function) {
  const Rect bounds = OffscreenBounds(sight.now);
  if (ShowsNothingElse(sight)) return function(bounds);
  for (int16_t y = 0; y < bounds.bottom; ++y) {
    for (int16_t x = 0, start = 0; x < bounds.right; start = ++x) {
      while (x < bounds.right && ShowsPicture(sight, x, y)) ++x;
      if (start < x) function(Rect{y, start, int16_t(y + 1), x});
    }
  }
}

// Brings what was kept of the screen up to date. What was kept before is the sight's then.
void TakeInOthers(RecorderControl& control, Sight* sight) {
  if (ShowsNothingElse(*sight)) return;
  control.paintedOver = true;
  SetPortOffscreen(sight->now);
  UseDrawState(DrawStateDefault());
  ForEachPartOfPicture(*sight, [&](const Rect& part) { CopyBits(&control.savedScreen->port, part, part, 1); });
  std::swap(sight->now, control.savedScreen);
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
  Sight sight;
  if (!control.savedScreen) {
    CopyTo(below, ScreenPort(), control.pictureRect);
    control.savedScreen = below; // not earlier: whoever puts it back puts back what lies there
  } else if (LookAtScreen(control, &sight)) {
    TakeInOthers(control, &sight);
    ForgetSight(sight);
  }
  CopyTo(control.shownScreen, &control.pictures[picture]->port, OffscreenBounds(control.pictures[picture]));
  PutOnScreen(control, control.shownScreen, BoundsOf(control));
  TellPanel(recorder, PictureWork::kEnds);
}

void RestorePictureArea(RecorderState& recorder) {
  RecorderControl& control = recorder.control;
  if (!control.savedScreen) return;
  TellPanel(recorder, PictureWork::kBegins);
  Sight sight;
  if (LookAtScreen(control, &sight)) {
    control.paintedOver |= !ShowsNothingElse(sight);
    ForEachPartOfPicture(sight, [&](const Rect& part) { PutOnScreen(control, control.savedScreen, part); });
    ForgetSight(sight);
  } else {
    PutBackPictureArea(recorder);
  }
  FreeSaved(control);
  TellPanel(recorder, PictureWork::kEnds);
}

void PutBackPictureArea(const RecorderState& recorder) {
  const RecorderControl& control = recorder.control;
  if (control.savedScreen) PutOnScreen(control, control.savedScreen, BoundsOf(control));
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
