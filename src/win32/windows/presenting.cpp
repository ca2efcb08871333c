// Bringing what was drawn in windows to the display.
#include "win32/windows/presenting.h"

#include "win32/windows/window_contexts.h"

namespace framereel {
namespace {

constexpr uint32_t kLateMs = 20; // how long drawing may wait for the queue to run empty

void PresentOne(ShownSurface* shown) {
  if (shown->onScreen) {
    for (int32_t i = 0; i < shown->damages; ++i) DisplayPresent(shown->display, shown->surface, shown->damage[i]);
  }
  shown->damages = 0;
}

} // namespace

void PresentAll() {
  WindowSystem& system = TheWindows();
  GatherDamage();
  if (!system.damaged) return;
  system.damaged = false;
  for (ShownSurface* shown : system.shown) PresentOne(shown);
}

void PresentIfLate() {
  const WindowSystem& system = TheWindows();
  if (system.damaged && DisplayTick() - system.damagedSince >= kLateMs) PresentAll();
}

} // namespace framereel
