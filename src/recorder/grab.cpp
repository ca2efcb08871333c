// Buffers, the copy of the screen, and the mouse pointer in it.
#include "recorder/grab.h"

#include "recorder/overlays.h"

namespace framereel {
namespace {

// How each format's rows come out of an Offscreen.
struct GrabKind {
  PixelFormat format;
  DibBuffer* (*make)(int16_t width, int16_t height);
  void (*read)(DibBuffer* buffer, int16_t bufferRow, Offscreen* offscreen, int16_t offscreenRow, int16_t rows);
  uint32_t rowUnit; // bytes that rowSize counts
};

constexpr GrabKind kGrabKinds[] = {
    {kFormat8Bit, NewDibBuffer8, ReadDibBuffer8, 1},         {kFormat4Bit, NewDibBuffer8, ReadDibBuffer8, 1},
    {kFormatTrueColour, NewDibBuffer24, ReadDibBuffer24, 1}, {kFormat2Bit, NewDibBuffer2, ReadDibBuffer2, 1},
    {kFormat1Bit, NewDibBuffer1, ReadDibBuffer1, 4},
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
  grab.buffer = kind->make(width, recorder.frameHeight);
  grab.rowBytes = grab.buffer->rowSize * kind->rowUnit;
  grab.topRow = grab.buffer->bits + (recorder.frameHeight - 1) * static_cast<int64_t>(grab.rowBytes);
  grab.offscreen = NewOffscreen(width, recorder.frameHeight, true);
}

void GrabScreen(RecorderState& recorder) {
  const GrabPipeline& grab = recorder.grab;
  if (!grab.offscreen) return;
  SetPortOffscreen(grab.offscreen);
  const Rect bounds = OffscreenBounds(grab.offscreen);
  const auto left = int16_t(recorder.frameLeft - grab.lead);
  const Rect source = {recorder.frameTop, left, int16_t(recorder.frameTop + bounds.bottom),
                       int16_t(left + bounds.right)};
  CopyBits(ScreenPort(), source, bounds, 1);
  if (recorder.cursorOverlayOn) OverlayCursor(left, recorder.frameTop);
  ReleasePort();
}

void ReadGrabRows(RecorderState& recorder, int32_t first, int32_t count) {
  const GrabPipeline& grab = recorder.grab;
  if (!grab.offscreen) return;
  const int32_t bufferRow = recorder.frameHeight - first - count;
  KindOf(grab.format)->read(grab.buffer, int16_t(bufferRow), grab.offscreen, int16_t(first), int16_t(count));
}

} // namespace framereel
