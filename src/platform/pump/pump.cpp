// A pass of the event loop, and the loops that are made of passes.
#include "platform/pump/pump.h"

#include <csignal>

#include "core/numbers.h"
#include "core/temporary_blocks.h"
#include "core/timers.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/ports.h"
#include "platform/input/mouse.h"
#include "platform/menus/platform_menus.h"
#include "platform/windows/modal.h"
#include "platform/windows/window_list.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr uint16_t kPassesPerTimer = 64; // under a stream of messages
constexpr int32_t kLongestSleep = 50;    // ms
constexpr int kMostFlushed = 1000;       // paints in one go, should a window ask for another while it paints

struct PumpState {
  bool run;
  uint16_t passesLeft; // until the next chance of a timer
};

PumpState state = {true, kPassesPerTimer};
volatile std::sig_atomic_t allMustEnd; // set by signal handlers too

void DispatchOne(MSG message) {
  SetPortMain(nullptr);
  const ChildWindow* modal = GetModalWindow();
  if (modal && modal->flags & kWindowModal && ::IsDialogMessageA(modal->window, &message)) return;
  ::TranslateMessage(&message);
  ::DispatchMessageA(&message);
}

void Idle(bool mayWait) {
  PollMouse();
  state.passesLeft = 0;
  if (!mayWait) return;
  int32_t delay = Minimum(TimerNextDelay(), kLongestSleep);
  // A timer of this very tick fires once the tick has moved on: rather than spin until then, sleep.
  if (delay == 0) delay = 1;
  if (delay > 0) SleepFor(uint32_t(delay));
}

void GiveTimersAChance(bool allowed) {
  if (state.passesLeft > 0) return;
  state.passesLeft = kPassesPerTimer;
  if (!allowed || !TimerPending()) return;
  SetPortMain(nullptr);
  TimerFireDue();
}

} // namespace

void PumpStartUp() {
  state = {true, kPassesPerTimer};
  allMustEnd = 0;
}

void RunEventLoop() {
  while (state.run && LoopsMayRun()) PumpOneEvent(nullptr, true);
  ReleasePort();
}

void EndEventLoop() {
  state.run = false;
}

void EndAllLoops() {
  allMustEnd = 1;
}

bool LoopsMayRun() {
  return !allMustEnd && !ScreenIsLost();
}

void PumpOneEvent(ChildWindow* window, bool mayWait) {
  TempScopeBegin();
  RedrawMenuBar();
  ReleasePort();
  const HWND filter = window ? window->window : nullptr;
  MSG message;
  if (::PeekMessageA(&message, filter, 0, 0, PM_REMOVE)) {
    DispatchOne(message);
    --state.passesLeft;
  } else {
    Idle(mayWait);
  }
  GiveTimersAChance(window == nullptr);
  ReleasePort();
  TempScopeEnd();
}

// The scope around the passes keeps the record for a last look at it.
void RunModalLoop(ChildWindow* window, bool restrict) {
  TempScopeBegin();
  while (!(window->flags & kWindowClosed) && LoopsMayRun()) PumpOneEvent(restrict ? window : nullptr, true);
  TempScopeEnd();
}

void FlushPaints() {
  MSG message;
  for (int n = 0; n < kMostFlushed; ++n) {
    if (!::PeekMessageA(&message, nullptr, WM_PAINT, WM_PAINT, PM_NOREMOVE) || message.message != WM_PAINT) return;
    DispatchOne(message);
  }
}

void SleepFor(uint32_t milliseconds) {
  const uint32_t start = ::GetTickCount();
  for (uint32_t slept = 0; slept < milliseconds; slept = ::GetTickCount() - start) ::Sleep(milliseconds - slept);
  // Whoever goes on, a timer for instance, does so ahead of the message that tells of another display.
  ReadDisplayCaps();
}

} // namespace framereel
