// What the screen was like when windows last looked, and what they are told when it is another.
#include "win32/windows/screen_changes.h"

#include "win32/win32_windows.h"
#include "win32/windows/activation.h"
#include "win32/windows/sending.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/visible.h"
#include "win32/windows/window_contexts.h"
#include "win32/windows/window_surfaces.h"

namespace framereel {
namespace {

bool SameScreen(const ScreenFacts& a, const ScreenFacts& b) {
  return a.width == b.width && a.height == b.height && a.layout.depth == b.layout.depth;
}

// Pixels of another layout are of no use: all windows get new ones and paint.
void RemakeSurfaces() {
  for (HWND window : TheWindows().topLevels) {
    FitSurface(window);
    Expose(window, VisibleWindow(*window));
  }
  RefreshContexts();
}

} // namespace

void OnScreenChanged() {
  WindowSystem& system = TheWindows();
  const ScreenFacts facts = DisplayScreen();
  const PixelRect usable = DisplayUsableArea();
  const bool otherScreen = !SameScreen(facts, system.screen);
  const bool otherArea = !Same(usable, system.usableArea);
  system.screen = facts;
  system.usableArea = usable;
  if (otherScreen) {
    CancelMenu();
    RemakeSurfaces();
    SendToTopLevels(WM_DISPLAYCHANGE, WPARAM(facts.layout.depth), MAKELPARAM(facts.width, facts.height));
  }
  if (otherArea) SendToTopLevels(WM_WININICHANGE, 0, 0);
}

void NoteScreen() {
  WindowSystem& system = TheWindows();
  if (!system.topLevels.empty()) return;
  system.screen = DisplayScreen();
  system.usableArea = DisplayUsableArea();
}

} // namespace framereel
