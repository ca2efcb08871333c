// What the display tells: the user's and the desktop's doings with our windows, and with the screen. Input goes into
// the queue; the rest takes effect at once.
#include "win32/windows/window.h"

namespace framereel {
namespace {

ShownSurface* ShownOf(const DisplayWindow* display) {
  for (ShownSurface* shown : TheWindows().shown) {
    if (shown->display == display) return shown;
  }
  return nullptr;
}

void OnActive(const DisplayEvent& event) {
  WindowSystem& system = TheWindows();
  if (event.flag) {
    if (!system.keyboardAt) SyncKeys();
    system.keyboardAt = event.window;
    if (system.askedFor == event.window) system.askedFor = nullptr;
  } else if (system.keyboardAt == event.window) {
    system.keyboardAt = nullptr;
  }
}

// Not every desktop gives a window the keyboard that is clicked on.
void OnPress(const DisplayEvent& event) {
  MSG message;
  if (!TheWindows().hasKeyboard && MessageOfInput(event, &message)) Activate(TopLevelOf(message.hwnd), true);
  EnqueueInput(event);
}

void OnMinimised(HWND window, bool minimised) {
  if (minimised) {
    Minimise(window, true);
  } else {
    Restore(window, true);
  }
}

void OnCaptureLost(const DisplayEvent& event) {
  TheWindows().capture = nullptr;
  // For whoever follows the mouse in a loop of its own.
  EnqueueInput(event);
}

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

void OnScreenChanged() {
  WindowSystem& system = TheWindows();
  const ScreenFacts facts = DisplayScreen();
  const PixelRect usable = DisplayUsableArea();
  const bool otherScreen = !SameScreen(facts, system.screen);
  const bool otherArea = !Same(usable, system.usableArea);
  system.screen = facts;
  system.usableArea = usable;
  if (otherScreen) {
    RemakeSurfaces();
    SendToTopLevels(WM_DISPLAYCHANGE, WPARAM(facts.layout.depth), MAKELPARAM(facts.width, facts.height));
  }
  if (otherArea) SendToTopLevels(WM_WININICHANGE, 0, 0);
}

void OnWindowEvent(HWND window, const DisplayEvent& event) {
  switch (event.kind) {
  case DisplayEventKind::kPlaced:
    return Place(window, event.rect, true);
  case DisplayEventKind::kMinimised:
    return OnMinimised(window, event.flag);
  case DisplayEventKind::kCloseRequest:
    // A disabled window waits for its dialog.
    if (!Has(*window, WS_DISABLED)) Post(window, WM_SYSCOMMAND, SC_CLOSE, 0, false);
    return;
  case DisplayEventKind::kDestroyed:
    ::DestroyWindow(window);
    return;
  default:
    return;
  }
}

void Handle(const DisplayEvent& event) {
  switch (event.kind) {
  case DisplayEventKind::kMouseDown:
    return OnPress(event);
  case DisplayEventKind::kMouseMove:
  case DisplayEventKind::kMouseUp:
  case DisplayEventKind::kKeyDown:
  case DisplayEventKind::kKeyUp:
  case DisplayEventKind::kKeysUnseen:
    return EnqueueInput(event);
  case DisplayEventKind::kExposed:
    if (ShownSurface* shown = ShownOf(event.window)) NoteDamage(shown, event.rect);
    return;
  case DisplayEventKind::kActive:
    return OnActive(event);
  case DisplayEventKind::kCaptureLost:
    return OnCaptureLost(event);
  case DisplayEventKind::kScreenChanged:
    return OnScreenChanged();
  default:
    if (const HWND window = TopLevelOf(event.window)) OnWindowEvent(window, event);
  }
}

} // namespace

void PumpDisplay() {
  DisplayEvent event;
  while (DisplayNextEvent(&event)) Handle(event);
  SettleKeyboard();
}

void NoteScreen() {
  WindowSystem& system = TheWindows();
  if (!system.topLevels.empty()) return;
  system.screen = DisplayScreen();
  system.usableArea = DisplayUsableArea();
}

} // namespace framereel
