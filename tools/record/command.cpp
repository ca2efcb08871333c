// The steps in their order, and for each failure its message and what is saved all the same.
#include "record/command.h"

#include <cerrno>
#include <cinttypes>
#include <cstdlib>
#include <cstring>

#include "core/abort_hook.h"
#include "core/memory.h"
#include "gif/keep_animation.h"
#include "platform/display/display_caps.h"
#include "platform/display/session.h"
#include "platform/pump/engine_start.h"
#include "record/capture_area.h"
#include "record/pick_window.h"
#include "record/stats.h"
#include "recorder/engine/owner_name.h"
#include "recorder/engine/recorder_core.h"
#include "win32/win32_system.h"

namespace framereel {

namespace {

constexpr const char* kScreenLost = "the connection to the display was lost";

void Note(const RecordCommand& command, const char* text) {
  if (!command.options.quiet) Complain(command.messages, text);
}

bool RefuseAll(Refusal& refusal, const char* reason) {
  return Refuse(refusal, "%s; nothing was recorded", reason);
}

// A black file is not to come as a surprise, and so this is said even to who wants it quiet.
void WarnOfWayland(FILE* messages) {
  Complain(messages, "this is a Wayland session, which does not show its windows to X11 programs: the recording stays "
                     "black; to record the screen, log in to an X11 (Xorg) session");
}

bool StartScreen(Refusal& refusal) {
  if (EngineStartUp()) return true;
  if (ScreenIsLost()) return RefuseAll(refusal, kScreenLost);
  const char* name = ::getenv("DISPLAY");
  if (SessionIsWayland()) {
    return Refuse(refusal, "there is no display to record in this Wayland session; log in to an X11 (Xorg) session");
  }
  if (!name || !*name) return Refuse(refusal, "there is no display to record: DISPLAY is not set");
  return Refuse(refusal, "there is no display to record: \"%s\", as DISPLAY names it, does not answer", name);
}

// The engine says in the panel's place why the screen cannot be recorded, or only in part.
void HearOfScreen(void* owner, const char* text) {
  RecordCommand& command = *static_cast<RecordCommand*>(owner);
  if (command.recorder.screenStatus != kScreenTooSmall) {
    Refuse(command.refusal, "%s", text);
  } else {
    ProgressClear(command.progress);
    Note(command, text);
  }
}

void SetUpRecorder(RecordCommand& command) {
  RecorderPanel panel;
  panel.owner = &command;
  panel.showMessage = HearOfScreen;
  RecorderSetUp(command.recorder, &command.stream, &command.gif, &command.options.recording, panel);
  command.recorder.ownerName = command.options.owner ? command.options.owner : OwnerName();
}

// False with the reason when the user has asked for a window and there is none.
bool SetUpWindow(RecordCommand& command) {
  RecordOptions& options = command.options;
  HWND window = nullptr;
  if (options.window != 0) {
    if (!FindNumberedWindow(options.window, &window, &options.area, command.refusal)) return false;
  } else if (options.pick) {
    Note(command, "click on the window to record; Esc ends the search");
    if (!PickWindow(command.clock, &window, &options.area, command.refusal)) return false;
  }
  command.aimed.window = window;
  return true;
}

bool SetUpArea(RecordCommand& command) {
  const DisplayCaps& screen = TheDisplayCaps();
  Rect area;
  bool cut;
  if (!ChooseCaptureArea(command.options, screen.screenWidth, screen.screenHeight, &area, &cut, command.refusal)) {
    return false;
  }
  command.recorder.captureArea = area;
  if (cut) {
    Refusal note;
    Refuse(note, "part of the area lies off the screen; recording %d,%d %dx%d", area.left, area.top,
           area.right - area.left, area.bottom - area.top);
    Note(command, note.text);
  }
  if (command.options.follow) AimBegin(command.aimed, command.recorder, command.aimed.window);
  return true;
}

void OnProgress(void* watcher, const Recording& recording) {
  ProgressShow(*static_cast<Progress*>(watcher), recording);
}

bool Follow(void* aimed) {
  return AimFollow(*static_cast<AimedWindow*>(aimed));
}

void SetUpRecording(RecordCommand& command) {
  const RecordOptions& options = command.options;
  const bool shows = command.terminal && !options.quiet;
  command.progress = {command.messages, false, 0};
  command.recording = {};
  command.recording.recorder = &command.recorder;
  command.recording.clock = command.clock;
  command.recording.delay = options.recording.frameDelay;
  command.recording.milliseconds = options.milliseconds;
  command.recording.tickLimit = options.ticks;
  command.recording.frameLimit = options.frames;
  command.recording.onProgress = shows ? OnProgress : nullptr;
  command.recording.watcher = &command.progress;
  command.recording.aim = options.follow ? Follow : nullptr;
  command.recording.aimer = &command.aimed;
}

// Why the recording ended ahead of its time; null when it did not.
const char* ReasonOf(RecordingEnd end) {
  switch (end) {
  case RecordingEnd::kScreenLost:
    return kScreenLost;
  case RecordingEnd::kScreenChanged:
    return "the screen's colour depth has changed";
  case RecordingEnd::kFull:
    return "the animation has reached 4 GiB";
  case RecordingEnd::kWindowGone: // as the user has asked for it
  case RecordingEnd::kComplete:
  case RecordingEnd::kStopped:
    break;
  }
  return nullptr;
}

// The animation that could not be saved in its place for the reason in `refusal` is kept elsewhere, and that is told
// too.
void KeepElsewhere(RecordCommand& command, Refusal& refusal) {
  const Refusal failed = refusal;
  char path[PATH_MAX];
  if (KeepAnimation(command.gif, command.output.direct ? "animation.gif" : command.output.path, path)) {
    Refuse(refusal, "%s; the animation is kept as %s", failed.text, path);
  } else {
    Refuse(refusal, "%s; nor can it be kept elsewhere: %s", failed.text, strerror(errno));
  }
}

// Saves the complete frames, and tells the user when there are none or `reason` has cut the recording short.
int Save(RecordCommand& command, const char* reason) {
  Refusal refusal;
  int status = kExitFailed;
  ProgressClear(command.progress);
  if (command.output.direct && command.signals) StopSignalsRelease(*command.signals);
  const uint32_t frames = command.recorder.frameCount;
  if (frames == 0) {
    RefuseAll(refusal, reason ? reason : "no frame was taken");
  } else if (!OutputSave(command.output, command.gif, refusal)) {
    if (reason) Complain(command.messages, reason);
    KeepElsewhere(command, refusal);
  } else if (reason) {
    Refuse(refusal, "%s; %s holds the %" PRIu32 " %s before that", reason, command.output.path, frames,
           frames == 1 ? "frame" : "frames");
  } else {
    status = kExitDone;
  }
  OutputDiscard(command.output);
  if (status != kExitDone) Complain(command.messages, refusal.text);
  return status;
}

void SaveAtOnce(RecordCommand& command, const char* reason) {
  StreamTruncate(command.stream, command.recorder.frameBytes);
  Save(command, reason);
}

void SaveWhenMemoryEnded(void* argument, uint32_t count) {
  if (count == 1) SaveAtOnce(*static_cast<RecordCommand*>(argument), "memory is exhausted");
  ::ExitProcess(kExitFailed);
}

void SaveAtAbort(void* argument) {
  SaveAtOnce(*static_cast<RecordCommand*>(argument), "a library has given up");
}

void TellOutcome(const RecordCommand& command) {
  if (!command.terminal || command.options.quiet) return;
  char outcome[kProgressTextSize];
  FormatOutcome(command.recording, outcome);
  Refusal line;
  Refuse(line, "%s: %s", command.output.path, outcome);
  fprintf(command.messages, "%s\n", line.text);
}

int Fail(RecordCommand& command) {
  OutputDiscard(command.output);
  Complain(command.messages, command.refusal.text);
  return kExitFailed;
}

// False when the user ends it.
bool CountDown(RecordCommand& command) {
  const RecordingClock& clock = command.clock;
  const bool shows = command.terminal && !command.options.quiet;
  bool stopped = false;
  if (!shows && command.options.countdown != 0) {
    Refusal note;
    Refuse(note, "recording in %u s", command.options.countdown);
    Note(command, note.text);
  }
  for (uint32_t left = command.options.countdown; left > 0 && !stopped; --left) {
    if (shows) ProgressSay(command.progress, "recording in", left);
    stopped = clock.wait(clock.owner, 1000);
  }
  ProgressClear(command.progress);
  return !stopped;
}

int RecordAndSave(RecordCommand& command) {
  SetUpRecording(command);
  if (!CountDown(command)) {
    RefuseAll(command.refusal, "the countdown was ended");
    return Fail(command);
  }
  if (command.options.milliseconds == 0 && command.options.ticks == 0) Note(command, "recording; Ctrl+C ends it");
  const Usage before = ReadUsage();
  const RecordingEnd end = RunRecording(command.recording);
  const Usage after = ReadUsage();
  const int status = Save(command, ReasonOf(end));
  if (end == RecordingEnd::kWindowGone) Note(command, "the window is gone, and with it the recording ended");
  if (status == kExitDone) TellOutcome(command);
  if (command.options.stats) {
    const uint64_t trailer = 1;
    WriteStats(command.figures, command.recording, command.stream.streamSize + trailer, before, after);
  }
  return status;
}

// With the display open. False with the reason, before anything was recorded.
bool Prepare(RecordCommand& command) {
  SetUpRecorder(command);
  if (ScreenIsLost()) return RefuseAll(command.refusal, kScreenLost); // it tells no depth and no size
  if (!command.recorder.recordingAllowed) return false;
  return SetUpWindow(command) && SetUpArea(command) && OutputOpen(command.output, command.refusal);
}

} // namespace

void Complain(FILE* messages, const char* text) {
  fprintf(messages, "framereel-record: %s\n", text);
  fflush(messages);
}

void RecordCommandInit(RecordCommand& command) {
  SetMemFailureHook(SaveWhenMemoryEnded, &command);
  SetAbortHook(SaveAtAbort, &command);
  StreamInit(command.stream);
  GifWriterInit(command.gif, &command.stream);
}

int ListWindowsRun(RecordCommand& command) {
  if (!StartScreen(command.refusal)) return Fail(command);
  ListWindows(command.figures);
  EngineShutDown();
  return kExitDone;
}

int RecordCommandRun(RecordCommand& command) {
  command.recording = {};
  command.aimed = {};
  StreamClear(command.stream);
  command.output.keepsOlder = command.options.noClobber;
  if (command.output.replaces && command.output.keepsOlder) {
    Refuse(command.refusal, "%s exists already, and --no-clobber keeps it", command.output.path);
    return Fail(command);
  }
  if (!StartScreen(command.refusal)) return Fail(command);
  // Not earlier: Ctrl+C is to end a wait for a pipe's reader, or for a server that does not answer.
  if (command.signals) StopSignalsBlock(*command.signals);
  if (SessionIsWayland()) WarnOfWayland(command.messages);
  const int status = Prepare(command) ? RecordAndSave(command) : Fail(command);
  RecorderTearDown(command.recorder);
  EngineShutDown();
  return status;
}

} // namespace framereel
