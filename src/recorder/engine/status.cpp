// The status line and the screen check.
#include "recorder/engine/status.h"

#include "core/app_strings.h"
#include "core/memory.h"
#include "core/text_format.h"

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

ScreenStatus Verdict(const RecorderState& recorder) {
  if (recorder.animationFormat != kFormatNone && recorder.animationFormat != recorder.screenFormat) {
    return kScreenDiffers;
  }
  return recorder.screenFormatSupported ? kScreenFine : kScreenUnsupported;
}

// The message why the screen cannot be recorded, or no message.
void ShowVerdict(const RecorderState& recorder) {
  const RecorderPanel& panel = recorder.panel;
  if (recorder.recordingAllowed) {
    if (panel.hideMessage) panel.hideMessage(panel.owner);
    return;
  }
  if (!panel.showMessage) return;
  const bool differs = recorder.screenStatus == kScreenDiffers;
  const PixelFormat named = differs ? recorder.animationFormat : recorder.screenFormat;
  const char* format = AppString(differs ? kStringDiffers : kStringUnsupported);
  char* text = FormatNew(format, FormatColourCount(named));
  panel.showMessage(panel.owner, text);
  MemFree(text);
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
  recorder.recordingAllowed = verdict == kScreenFine;
  UpdateRecordButtons(recorder);
  ShowVerdict(recorder);
}

} // namespace framereel
