// Buffers, the copy of the screen, and the mouse pointer in it.
#include "recorder/engine/grab.h"

#include <algorithm>
#include <utility>

#include "platform/bitmaps/copy_bits.h"
#include "platform/bitmaps/dib_buffers.h"
#include "platform/bitmaps/offscreens.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/shared_contexts.h"
#include "recorder/engine/overlays.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

// How each format's rows come out of an Offscreen.
struct GrabKind {
  PixelFormat format;
  DibBuffer* (*make)(int16_t width, int16_t height);
  void (*read)(DibBuffer* buffer, int16_t bufferRow, Offscreen* offscreen, int16_t offscreenRow, int16_t rows);
  uint32_t rowUnit;   // bytes that rowSize counts
  uint32_t bandBytes; // of rows at a time
};

// True colour is converted from the first cache; the others are copied as they are and gain nothing from small bands.
constexpr uint32_t kSmallBand = 8 << 10, kLargeBand = 1 << 20;

constexpr GrabKind kGrabKinds[] = {
    {kFormat8Bit, NewDibBuffer8, ReadDibBuffer8, 1, kLargeBand},
    {kFormat4Bit, NewDibBuffer8, ReadDibBuffer8, 1, kLargeBand},
    {kFormatTrueColour, NewDibBuffer24, ReadDibBuffer24, 1, kSmallBand},
    {kFormat2Bit, NewDibBuffer2, ReadDibBuffer2, 1, kLargeBand},
    {kFormat1Bit, NewDibBuffer1, ReadDibBuffer1, 4, kLargeBand},
};

const GrabKind* KindOf(PixelFormat format) {
  for (const GrabKind& kind : kGrabKinds) {
    if (kind.format == format) return &kind;
  }
  return nullptr;
}

} // namespace

void FreeGrabBuffers(RecorderState& recorder) {
  if (recorder.grab.offscreen) FreeOffscreen(recorder.grab.offscreen);
  if (recorder.grab.buffer) FreeDibBuffer(recorder.grab.buffer);
  ::DeleteObject(recorder.grab.newRows);
  recorder.grab = {};
}

void PrepareGrabBuffers(RecorderState& recorder) {
  FreeGrabBuffers(recorder);
  GrabPipeline& grab = recorder.grab;
  grab.format = recorder.screenFormat;
  const GrabKind* kind = KindOf(grab.format);
  // Rows of packed pixels begin at a whole byte of the screen.
  grab.lead = grab.format == kFormat2Bit ? recorder.frameLeft % 4 : 0;
  const auto width = int16_t(recorder.frameWidth + grab.lead);
  const uint32_t mostRows = kind->bandBytes / (uint32_t(width) * 3);
  grab.bandRows = std::clamp(int32_t(mostRows), 1, int32_t{recorder.frameHeight});
  grab.buffer = kind->make(width, int16_t(grab.bandRows));
  grab.grabRowBytes = grab.buffer->rowSize * kind->rowUnit;
  grab.grabTopRow = grab.buffer->bits + (grab.bandRows - 1) * int64_t(grab.grabRowBytes);
  grab.offscreen = NewOffscreen(width, recorder.frameHeight, true); // null on a lost display
  grab.newRows = ::CreateRectRgn(0, 0, 0, 0);
}

namespace {

// What lies off a screen that has become smaller is copied from nowhere: in the current Port it is black.
void BlackenUnlessOnScreen(const Rect& source, const Rect& bounds) {
  RECT screen;
  ::GetClipBox(ScreenContext(), &screen);
  if (source.left >= 0 && source.top >= 0 && source.right <= screen.right && source.bottom <= screen.bottom) return;
  const RECT whole = {bounds.left, bounds.top, bounds.right, bounds.bottom};
  if (screen.right > 0) ::FillRect(CurrentContext(), &whole, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
}

// The part of the screen that is grabbed.
Rect SourceOf(const RecorderState& recorder) {
  const Rect bounds = OffscreenBounds(recorder.grab.offscreen);
  const auto left = int16_t(recorder.frameLeft - recorder.grab.lead);
  return {recorder.frameTop, left, int16_t(recorder.frameTop + bounds.bottom), int16_t(left + bounds.right)};
}

// Finds out which rows are new, and looks at the pointer behind it, so that both are of one moment or the pointer is
// newer.
void FindNewRows(RecorderState& recorder, const Rect& source) {
  GrabPipeline& grab = recorder.grab;
  const RECT where = {source.left, source.top, source.right, source.bottom};
  ::GetScreenChanges(grab.newRows, &where);
  const LONG width = grab.offscreen->width, height = grab.offscreen->height;
  const RECT all = {0, 0, width, height};
  if (!std::exchange(grab.holdsFrame, true)) ::AddRectRgn(grab.newRows, &all);

  const FramePointer before = grab.pointer;
  grab.pointer = recorder.cursorOverlayOn ? LookAtCursor(source.left, source.top) : FramePointer{};
  if (grab.pointer == before) return;
  for (const FramePointer* pointer : {&before, &std::as_const(grab.pointer)}) {
    const RECT rows = {0, std::clamp<LONG>(pointer->top, 0, height), width,
                       std::clamp<LONG>(pointer->bottom, 0, height)};
    if (pointer->right > 0 && pointer->left < width) ::AddRectRgn(grab.newRows, &rows);
  }
}

} // namespace

bool GrabScreen(RecorderState& recorder) {
  GrabPipeline& grab = recorder.grab;
  grab.bandCount = 0;
  if (!grab.offscreen) return false;
  const Rect source = SourceOf(recorder), bounds = OffscreenBounds(grab.offscreen);
  FindNewRows(recorder, source);
  SetPortOffscreen(grab.offscreen);
  ::SelectClipRgn(CurrentContext(), grab.newRows);
  BlackenUnlessOnScreen(source, bounds);
  CopyBits(ScreenPort(), source, bounds, 1);
  OverlayCursor(grab.pointer);
  ReleasePort();
  return !ScreenIsLost();
}

RowSpan NewRows(const RecorderState& recorder) {
  RECT box = {};
  ::GetRgnBox(recorder.grab.newRows, &box);
  return {box.top, box.bottom};
}

bool RowIsNew(const RecorderState& recorder, int32_t y) {
  const RECT row = {0, y, recorder.frameWidth, y + 1};
  return ::RectInRegion(recorder.grab.newRows, &row);
}

namespace {

// Brings the rows from `first` on, as many as the band holds.
void ReadBand(RecorderState& recorder, int32_t first) {
  GrabPipeline& grab = recorder.grab;
  grab.bandFirst = first;
  grab.bandCount = std::min(grab.bandRows, recorder.frameHeight - first);
  const auto bufferRow = int16_t(grab.bandRows - grab.bandCount);
  KindOf(grab.format)->read(grab.buffer, bufferRow, grab.offscreen, int16_t(first), int16_t(grab.bandCount));
}

} // namespace

const uint8_t* GrabRow(RecorderState& recorder, int32_t y) {
  const GrabPipeline& grab = recorder.grab;
  if (y < grab.bandFirst || y >= grab.bandFirst + grab.bandCount) ReadBand(recorder, y);
  return grab.grabTopRow - int64_t(y - grab.bandFirst) * grab.grabRowBytes;
}

} // namespace framereel
