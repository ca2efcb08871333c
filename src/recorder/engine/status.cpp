// The status line and the screen check.
#include "recorder/engine/status.h"

#include "core/app_strings.h"
#include "core/memory.h"
#include "core/strings.h"
#include "core/text_format.h"
#include "platform/display/display_caps.h"

namespace framereel {
namespace {

enum : uint16_t {
  kStringOneByte = 2,
  kStringBytes = 3,
  kStringTenthsK = 4,
  kStringK = 5,
  kStringTenthsM = 6,
  kStringM = 7,
  kStringTenthsG = 8,
  kStringG = 9,
  kStringUnsupported = 21,
  kStringOneFrame = 22,
  kStringFrames = 23,
  kStringDiffers = 83,
  kStringTooSmall = 95,
  kStringFull = 96,
};

void FormatUnit(uint32_t bytes, int shift, bool tenthsFromHundred, uint16_t withTenth, uint16_t without, char* text) {
  const uint32_t whole = bytes >> shift;
  const auto tenth = uint32_t((uint64_t{bytes & ((1U << shift) - 1)} * 10) >> shift);
  if (tenth != 0 && (whole < 100 || tenthsFromHundred)) {
    FormatInto(text, AppString(withTenth), whole, tenth);
  } else {
    FormatInto(text, AppString(without), whole);
  }
}

// The area of the next frame, with that of the frames so far.
Rect AreaOf(const RecorderState& recorder) {
  if (!recorder.animationStarted) return recorder.captureArea;
  const int32_t right = recorder.frameLeft + recorder.frameWidth, bottom = recorder.frameTop + recorder.frameHeight;
  return {recorder.frameTop, recorder.frameLeft, int16_t(bottom), int16_t(right)};
}

bool AreaIsOnScreen(const RecorderState& recorder) {
  const Rect area = AreaOf(recorder);
  const DisplayCaps& screen = TheDisplayCaps();
  return area.left >= 0 && area.top >= 0 && area.right <= screen.screenWidth && area.bottom <= screen.screenHeight;
}

// An image of pixels that do not compress takes at most 12 bits each, and a byte for every 255.
bool AnotherFrameFits(const RecorderState& recorder) {
  const uint64_t pixels = uint64_t(recorder.frameWidth) * uint64_t(recorder.frameHeight);
  return recorder.stream->streamSize + 2 * pixels + 4096 <= UINT32_MAX;
}

ScreenStatus Verdict(const RecorderState& recorder) {
  if (recorder.animationFormat != kFormatNone && recorder.animationFormat != recorder.screenFormat) {
    return kScreenDiffers;
  }
  if (!recorder.screenFormatSupported) return kScreenUnsupported;
  if (!AnotherFrameFits(recorder)) return kAnimationFull;
  return AreaIsOnScreen(recorder) ? kScreenFine : kScreenTooSmall;
}

// The caller frees. Null when there is nothing to tell.
char* MessageOf(const RecorderState& recorder) {
  switch (recorder.screenStatus) {
  case kScreenUnsupported:
    return FormatNew(AppString(kStringUnsupported), FormatColourCount(recorder.screenFormat));
  case kScreenDiffers:
    return FormatNew(AppString(kStringDiffers), FormatColourCount(recorder.animationFormat));
  case kScreenTooSmall:
    return StrDup(AppString(kStringTooSmall));
  case kAnimationFull:
    return StrDup(AppString(kStringFull));
  case kScreenFine:
    break;
  }
  return nullptr;
}

void ShowVerdict(const RecorderState& recorder) {
  const RecorderPanel& panel = recorder.panel;
  char* text = MessageOf(recorder);
  if (text) {
    if (panel.showMessage) panel.showMessage(panel.owner, text);
  } else if (panel.hideMessage) {
    panel.hideMessage(panel.owner);
  }
  StrFree(text);
}

} // namespace

void FormatByteSize(uint32_t bytes, char* text) {
  if (bytes == 1) {
    FormatInto(text, AppString(kStringOneByte));
  } else if (bytes < 1U << 10) {
    FormatInto(text, AppString(kStringBytes), bytes);
  } else if (bytes < 1U << 20) {
    FormatUnit(bytes, 10, false, kStringTenthsK, kStringK, text);
  } else if (bytes < 1U << 30) {
    FormatUnit(bytes, 20, false, kStringTenthsM, kStringM, text);
  } else {
    FormatUnit(bytes, 30, true, kStringTenthsG, kStringG, text);
  }
}

void RecorderShowStatus(RecorderState& recorder) {
  if (!recorder.panel.setStatus) return;
  char size[kByteSizeText];
  FormatByteSize(recorder.stream->streamSize, size);
  const uint16_t string = recorder.frameCount == 1 ? kStringOneFrame : kStringFrames;
  char* text = FormatNew(AppString(string), recorder.frameCount, size);
  recorder.panel.setStatus(recorder.panel.owner, text);
  MemFree(text);
}

void RecorderRefreshStatus(RecorderState& recorder) {
  if (recorder.shownFrameCount == int32_t(recorder.frameCount)) return;
  RecorderShowStatus(recorder);
  recorder.shownFrameCount = int32_t(recorder.frameCount);
}

RecordButtons RecorderButtons(const RecorderState& recorder) {
  const bool ready = recorder.recordingAllowed && !recorder.control.recording;
  return {ready, ready, recorder.recordingAllowed && recorder.control.recording};
}

void UpdateRecordButtons(const RecorderState& recorder) {
  const RecorderPanel& panel = recorder.panel;
  if (panel.enableButtons) panel.enableButtons(panel.owner, RecorderButtons(recorder));
}

void RecorderTakePanel(RecorderState& recorder, const RecorderPanel& panel) {
  recorder.panel = panel;
  UpdateRecordButtons(recorder);
  if (panel.enableOptions) panel.enableOptions(panel.owner, !recorder.control.optionsFrozen);
  RecorderShowStatus(recorder);
  ShowVerdict(recorder);
}

void RecorderCheckScreen(RecorderState& recorder) {
  recorder.screenFormatSupported = DetectPixelFormat(&recorder.screenFormat);
  const ScreenStatus verdict = Verdict(recorder);
  if (verdict == recorder.screenStatus) return;
  recorder.screenStatus = verdict;
  recorder.recordingAllowed = verdict == kScreenFine || verdict == kScreenTooSmall;
  UpdateRecordButtons(recorder);
  ShowVerdict(recorder);
}

} // namespace framereel
