// Keeping the targets of the mouse, and letting go of them.
#include "platform/windows/mouse_targets.h"

#include <cstdint>

#include "win32/win32_input.h"

namespace framereel {
namespace {

constexpr Point kNoPoint = {0, INT16_MIN}; // no mouse is ever there

MouseTargets targets;

} // namespace

void MouseTargetsStartUp() {
  targets = {};
  ResetMousePoint();
}

MouseTargets& TheMouseTargets() {
  return targets;
}

void ResetMousePoint() {
  targets.last = kNoPoint;
}

void EndMouseTracking() {
  targets.pressWindow = nullptr;
  targets.pressView = nullptr;
  if (!targets.captureHeld) ::ReleaseCapture();
}

void ForgetMouseWindow(const ChildWindow* window) {
  if (targets.pressWindow == window) EndMouseTracking();
  if (targets.enteredWindow == window) targets.enteredWindow = nullptr;
}

} // namespace framereel
