// The one timer and its three functions, and the actions behind the buttons and the chords.
#include "recorder/control/recording_control.h"

#include "core/timers.h"
#include "platform/display/beep.h"
#include "platform/pump/pump.h"
#include "recorder/control/countdown.h"
#include "recorder/control/key_chords.h"
#include "recorder/engine/recorder_core.h"
#include "recorder/engine/status.h"

namespace framereel {
namespace {

constexpr uint32_t kIdleInterval = 200;   // ms
constexpr uint32_t kDigitInterval = 1000; // ms
constexpr uint32_t kPauseTime = 750;      // ms
constexpr int16_t kCountdownSteps = 4;    // three digits, and the step that takes the last one away

RecorderState& RecorderOf(void* argument) {
  return *static_cast<RecorderState*>(argument);
}

KeyChord PollChord(RecorderState& recorder) {
  return PollHotKeys(&recorder.control.lastKeyState);
}

// For a function that the timer at hand has called, which is gone then.
void ArmRecorderTimer(RecorderState& recorder, TimerFunction function, uint32_t delay) {
  recorder.control.activeTimer = TimerSchedule(function, &recorder, delay);
}

void CancelRecorderTimer(RecorderState& recorder) {
  if (recorder.control.activeTimer) TimerCancel(recorder.control.activeTimer);
  recorder.control.activeTimer = nullptr;
}

void SetRecorderTimer(RecorderState& recorder, TimerFunction function, uint32_t delay) {
  CancelRecorderTimer(recorder);
  ArmRecorderTimer(recorder, function, delay);
}

void ActOrBeep(RecorderState& recorder, bool enabled, void (*action)(RecorderState& recorder)) {
  if (enabled) {
    action(recorder);
  } else {
    Beep();
  }
}

void IdlePoll(void* argument) {
  RecorderState& recorder = RecorderOf(argument);
  ArmRecorderTimer(recorder, IdlePoll, kIdleInterval);
  RecorderCheckScreen(recorder); // nobody tells of another size
  const RecordButtons enabled = RecorderButtons(recorder);
  switch (PollChord(recorder)) {
  case KeyChord::kStartStop:
    return ActOrBeep(recorder, enabled.start, RecorderStart);
  case KeyChord::kGrab:
    return ActOrBeep(recorder, enabled.grab, RecorderGrab);
  case KeyChord::kNone:
    return;
  }
}

void FreezeOptions(RecorderState& recorder, bool frozen) {
  if (recorder.control.optionsFrozen == frozen) return;
  recorder.control.optionsFrozen = frozen;
  const RecorderPanel& panel = recorder.panel;
  if (panel.enableOptions) panel.enableOptions(panel.owner, !frozen);
}

void TakeFrame(RecorderState& recorder, bool grab) {
  FreezeOptions(recorder, true);
  RecorderCaptureFrame(recorder, grab);
  RecorderRefreshStatus(recorder);
}

// Armed first, so that the interval runs from the start of one frame to the start of the next.
void FrameTick(void* argument) {
  RecorderState& recorder = RecorderOf(argument);
  ArmRecorderTimer(recorder, FrameTick, recorder.options->frameDelay);
  TakeFrame(recorder, false);
  const bool full = recorder.screenStatus == kAnimationFull;
  if (PollChord(recorder) == KeyChord::kStartStop || full) RecorderStop(recorder);
}

void CountdownTick(void* argument) {
  RecorderState& recorder = RecorderOf(argument);
  RecorderControl& control = recorder.control;
  if (PollChord(recorder) == KeyChord::kStartStop) {
    control.activeTimer = nullptr;
    return RecorderStop(recorder);
  }
  const int16_t step = control.countdown--;
  if (step > 1) {
    ShowPicture(recorder, CountdownPicture(step - 2));
    ArmRecorderTimer(recorder, CountdownTick, kDigitInterval);
  } else {
    RestorePictureArea(recorder);
    FrameTick(&recorder);
    RepaintPictureArea(recorder);
  }
}

} // namespace

void RecorderInit(RecorderState& recorder) {
  LoadCountdownPictures(recorder.control);
  SetRecorderTimer(recorder, IdlePoll, kIdleInterval);
}

void RecorderShutDown(RecorderState& recorder) {
  CancelRecorderTimer(recorder);
  RestorePictureArea(recorder);
  RepaintPictureArea(recorder);
  FreeCountdownPictures(recorder.control);
}

void RecorderStart(RecorderState& recorder) {
  recorder.control.recording = true;
  UpdateRecordButtons(recorder);
  recorder.control.countdown = kCountdownSteps;
  SetRecorderTimer(recorder, CountdownTick, 0);
}

void RecorderGrab(RecorderState& recorder) {
  TakeFrame(recorder, true);
}

void RecorderStop(RecorderState& recorder) {
  RecorderControl& control = recorder.control;
  if (!control.recording) return;
  control.countdown = 0;
  RestorePictureArea(recorder);
  SetRecorderTimer(recorder, IdlePoll, kIdleInterval);
  control.recording = false;
  UpdateRecordButtons(recorder);
  ShowPicture(recorder, kPicturePause);
  SleepFor(kPauseTime);
  RestorePictureArea(recorder);
  RepaintPictureArea(recorder);
}

void RecorderThaw(RecorderState& recorder) {
  RecorderStop(recorder);
  FreezeOptions(recorder, false);
}

} // namespace framereel
