// Ticks at multiples of the delay; those that come too late are counted and left out.
#include "record/recording.h"

#include <algorithm>

#include "core/temporary_blocks.h"
#include "platform/display/display_caps.h"
#include "recorder/engine/pacing.h"
#include "recorder/engine/recorder_core.h"
#include "recorder/engine/status.h"

namespace framereel {

namespace {

constexpr uint64_t kProgressInterval = 250; // ms

void ReadClock(Recording& recording) {
  const uint32_t now = recording.clock.now(recording.clock.owner);
  recording.elapsed += now - recording.lastTime;
  recording.lastTime = now;
}

void ShowProgress(Recording& recording) {
  if (recording.onProgress) recording.onProgress(recording.watcher, recording);
}

// When the tick's frame begins, by the clock. A tick that is late by nearly a delay counts as earlier: viewers show a
// frame that has less than two hundredths for ten.
uint32_t FrameTime(const Recording& recording, uint64_t place) {
  constexpr uint32_t kShortestShown = 20; // ms
  const uint32_t latest = recording.delay - std::min(recording.delay, kShortestShown);
  const uint64_t late = recording.elapsed - place * recording.delay;
  return recording.lastTime - uint32_t(late > latest ? late - latest : 0);
}

// `place` counts lost ticks, too. Answers kComplete when the recording may go on.
RecordingEnd TakeTick(Recording& recording, uint64_t place) {
  RecorderState& recorder = *recording.recorder;
  ReadDisplayCaps();
  if (ScreenIsLost()) return RecordingEnd::kScreenLost; // a lost screen tells no depth either
  if (recording.aim && !recording.aim(recording.aimer)) return RecordingEnd::kWindowGone;
  TempScopeBegin();
  TellFrameTime(recorder, FrameTime(recording, place));
  RecorderCaptureFrame(recorder, false);
  TempScopeEnd();
  if (recorder.screenStatus == kAnimationFull) return RecordingEnd::kFull;
  if (!recorder.recordingAllowed) return RecordingEnd::kScreenChanged;
  ++recording.ticks;
  return ScreenIsLost() ? RecordingEnd::kScreenLost : RecordingEnd::kComplete;
}

bool HasEnough(const Recording& recording) {
  return (recording.tickLimit && recording.ticks >= recording.tickLimit) ||
         (recording.frameLimit && recording.recorder->frameCount >= recording.frameLimit);
}

// True when the user ended it.
bool WaitUntil(Recording& recording, uint64_t due) {
  do {
    ReadClock(recording);
    ShowProgress(recording);
    uint64_t rest = due > recording.elapsed ? due - recording.elapsed : 0;
    if (recording.onProgress) rest = std::min(rest, kProgressInterval);
    const bool stopped = recording.clock.wait(recording.clock.owner, uint32_t(rest));
    ReadClock(recording);
    if (stopped) return true;
  } while (recording.elapsed < due);
  return false;
}

RecordingEnd TakeTicks(Recording& recording) {
  const uint64_t delay = recording.delay;
  const uint64_t end = recording.milliseconds ? recording.milliseconds : UINT64_MAX;
  const uint64_t lastPlace = (end - 1) / delay;
  for (uint64_t place = 0;;) { // of the tick at hand, lost ones counted
    const RecordingEnd ended = TakeTick(recording, place);
    if (ended != RecordingEnd::kComplete) return ended;

    const uint64_t due = place == lastPlace ? end : (place + 1) * delay;
    if (WaitUntil(recording, due)) return RecordingEnd::kStopped;
    if (HasEnough(recording)) return RecordingEnd::kComplete;
    const uint64_t reached = recording.elapsed / delay;
    const bool over = place == lastPlace || recording.elapsed >= end;
    recording.lostTicks += uint32_t((over ? lastPlace : reached - 1) - place);
    if (over) return RecordingEnd::kComplete;
    place = reached;
  }
}

} // namespace

RecordingEnd RunRecording(Recording& recording) {
  recording.lastTime = recording.clock.now(recording.clock.owner);
  const RecordingEnd end = TakeTicks(recording);
  ReadClock(recording);
  RecorderState& recorder = *recording.recorder;
  StreamTruncate(*recorder.stream, recorder.frameBytes);
  TellFrameTime(recorder, recording.lastTime);
  return end;
}

} // namespace framereel
