// A frame's life in one view, and the animation around it.
#include "recorder/engine/recorder_core.h"

#include "core/app_strings.h"
#include "core/memory.h"
#include "core/text_format.h"
#include "gif/smallest_frames.h"
#include "recorder/engine/colour_tables.h"
#include "recorder/engine/difference.h"
#include "recorder/engine/full_frame.h"
#include "recorder/engine/grab.h"
#include "recorder/engine/overlays.h"
#include "recorder/engine/pacing.h"
#include "recorder/engine/recording_scale.h"
#include "recorder/engine/reduce.h"
#include "recorder/engine/status.h"

namespace framereel {
namespace {

inline constexpr uint16_t kStringCreatedBy = 24;

// Whether the sides of the area have pixels, and not more than a frame's 16 bits count; and so has what comes out.
bool AreaCanBeRecorded(const RecorderState& recorder) {
  const Rect& area = recorder.captureArea;
  const auto fits = [](int side) { return side > 0 && side <= INT16_MAX; };
  if (!fits(area.right - area.left) || !fits(area.bottom - area.top)) return false;
  const Point output = OutputSize(area, recorder.options->recordingSize);
  return output.h > 0 && output.v > 0;
}

void TakeGeometry(RecorderState& recorder) {
  const Rect& area = recorder.captureArea;
  recorder.frameLeft = area.left;
  recorder.frameTop = area.top;
  recorder.frameWidth = int16_t(area.right - area.left);
  recorder.frameHeight = int16_t(area.bottom - area.top);
  recorder.recordingSize = recorder.options->recordingSize;
  const Point output = OutputSize(area, recorder.recordingSize);
  recorder.outputWidth = output.h;
  recorder.outputHeight = output.v;
}

void AllocateFrames(RecorderState& recorder) {
  const size_t pixels = size_t(recorder.frameWidth) * size_t(recorder.frameHeight);
  recorder.previousFrame = static_cast<uint8_t*>(MemAlloc(pixels));
  recorder.workFrame = static_cast<uint8_t*>(MemAlloc(pixels));
  recorder.rowIndices = static_cast<uint8_t*>(MemAlloc(size_t(recorder.frameWidth)));
}

void WriteHead(RecorderState& recorder, int bits, const uint8_t* table) {
  GifWriter& gif = *recorder.gif;
  GifWriteHeader(gif, recorder.outputWidth, recorder.outputHeight, 0, 0, uint8_t(bits), table);
  if (recorder.options->loop) GifWriteLoop(gif, 0);
  char* comment = FormatNew(AppString(kStringCreatedBy), recorder.ownerName);
  GifWriteComment(gif, comment);
  MemFree(comment);
}

void BeginAnimation(RecorderState& recorder) {
  recorder.cursorOverlayOn = recorder.options->overlayCursor;
  TakeGeometry(recorder);
  uint8_t table[kColourTableBytes] = {};
  const int bits = BuildColourTable(recorder, table);
  ChooseSpecialIndices(recorder);
  PrepareGrabBuffers(recorder);
  AllocateFrames(recorder);
  if (recorder.options->smallest) {
    recorder.smallest = SmallestNew(recorder.outputWidth, recorder.outputHeight, table);
  } else {
    WriteHead(recorder, bits, table);
  }
}

// The smallest colour table is that of the first frame's colours.
void WriteHeadForFrame(RecorderState& recorder) {
  uint8_t table[kColourTableBytes];
  const int bits = SmallestBegin(*recorder.smallest, PixelsOfFrame(recorder, false), table);
  WriteHead(recorder, bits, table);
}

void EndAnimation(RecorderState& recorder) {
  for (uint8_t** block : {&recorder.previousFrame, &recorder.workFrame, &recorder.rowIndices}) {
    MemFree(*block);
    *block = nullptr;
  }
  SmallestFree(recorder.smallest);
  recorder.smallest = nullptr;
  recorder.haveLastFrameTick = false;
}

// Answers whether a frame went to the stream.
bool ProcessFrame(RecorderState& recorder, bool first, bool grab) {
  if (!GrabScreen(recorder)) return false;
  bool transparent = recorder.options->interframeTransparency;
  const bool clash = first ? FirstFrameConvert(recorder) : NextFrameConvert(recorder, transparent);
  if (clash) transparent = false;
  if (NothingIsDirty(recorder)) return false;
  ReduceFrame(recorder);
  if (recorder.options->overlayBorder) OverlayBorder(recorder, transparent, !first);
  if (first && recorder.smallest) WriteHeadForFrame(recorder);
  WriteFrame(recorder, transparent, grab);
  return true;
}

} // namespace

void RecorderSetUp(RecorderState& recorder, AnimationStream* stream, GifWriter* gif, const RecordingOptions* options,
                   const RecorderPanel& panel) {
  recorder = {};
  recorder.stream = stream;
  recorder.gif = gif;
  recorder.options = options;
  recorder.panel = panel;
  RecorderCheckScreen(recorder);
}

void RecorderTearDown(RecorderState& recorder) {
  EndAnimation(recorder);
  FreeGrabBuffers(recorder);
  MemFree(recorder.colours.screenPalette);
  MemFree(recorder.colours.paletteLanes);
  recorder = {};
}

void RecorderCaptureFrame(RecorderState& recorder, bool grab) {
  if (recorder.captureBusy) return;
  RecorderCheckScreen(recorder);
  if (!recorder.recordingAllowed) return;
  if (!recorder.animationStarted && !AreaCanBeRecorded(recorder)) return;
  recorder.captureBusy = true;
  if (!recorder.animationStarted) {
    BeginAnimation(recorder);
    recorder.animationStarted = true;
    recorder.animationFormat = recorder.screenFormat;
  }
  if (ProcessFrame(recorder, recorder.frameCount == 0, grab)) {
    ++recorder.frameCount;
    recorder.frameBytes = recorder.stream->streamSize;
  }
  recorder.captureBusy = false;
}

void RecorderMoveArea(RecorderState& recorder, int16_t left, int16_t top) {
  Rect& area = recorder.captureArea;
  area = {top, left, int16_t(top + area.bottom - area.top), int16_t(left + area.right - area.left)};
  if (!recorder.animationStarted) return;
  recorder.frameLeft = left;
  recorder.frameTop = top;
  if (recorder.screenFormat == kFormat2Bit) PrepareGrabBuffers(recorder); // its rows begin at every fourth pixel
}

void RecorderReset(RecorderState& recorder) {
  if (!recorder.animationStarted) return;
  recorder.frameCount = recorder.frameBytes = 0;
  recorder.shownFrameCount = -1;
  recorder.animationStarted = false;
  RecorderShowStatus(recorder);
  EndAnimation(recorder);
  recorder.animationFormat = kFormatNone;
  RecorderCheckScreen(recorder);
}

} // namespace framereel
