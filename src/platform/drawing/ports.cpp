// Changing the current Port: the last one is released, and the new one's context taken.
#include "platform/drawing/ports.h"

#include "platform/drawing/clip.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/shared_contexts.h"
#include "platform/records/offscreen_record.h"
#include "platform/records/window_records.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

struct PortState {
  WindowContexts windows;
  bool givenOut;    // the current context is to go back to its window
  HGDIOBJ replaced; // the bitmap that the current Offscreen's took the place of
};

PortState state;
const Port theScreenPort = {kPortScreen};

// Leaves nothing of the current Port selected, and gives its context back.
void Release(bool blind) {
  const CurrentPortState last = TheCurrentPort();
  LeaveDrawState(last.context);
  if (state.replaced) ::SelectObject(MemoryContext(), state.replaced);
  if (state.givenOut) state.windows.giveBack(last.window, last.context);
  state.replaced = nullptr;
  state.givenOut = false;
  StoreCurrentPort({nullptr, nullptr, nullptr, blind});
}

void AttachWindow(const Port* port, HWND window, bool blind) {
  Release(blind);
  bool painting = false;
  const HDC context = TakeWindowContext(window, &painting);
  StoreCurrentPort({port, context, context ? window : nullptr, blind});
  if (!context) return;
  state.givenOut = !painting;
  if (!painting) ResetClip();
}

} // namespace

const Port* ScreenPort() {
  return &theScreenPort;
}

void SetPortWindow(ChildWindow* window) {
  AttachWindow(&window->port, window->window, window->iconic);
}

void SetPortMain(MainWindow* main) {
  main = MainOr(main);
  if (!main->window) return Release(false);
  AttachWindow(&main->port, main->window, false);
}

void SetPortScreen() {
  Release(false);
  StoreCurrentPort({&theScreenPort, ScreenContext(), nullptr, false});
}

void SetPortOffscreen(Offscreen* offscreen) {
  Release(false);
  state.replaced = ::SelectObject(MemoryContext(), offscreen->bitmap);
  StoreCurrentPort({&offscreen->port, MemoryContext(), nullptr, false});
  ResetClip();
}

void ReleasePort() {
  Release(true);
}

void SetWindowContexts(const WindowContexts* contexts) {
  Release(TheCurrentPort().blind);
  state.windows = contexts ? *contexts : WindowContexts{};
}

HDC TakeWindowContext(HWND window, bool* painting) {
  *painting = false;
  return window && state.windows.take ? state.windows.take(window, painting) : nullptr;
}

void GiveWindowContextBack(HWND window, HDC context, bool painting) {
  if (context && !painting) state.windows.giveBack(window, context);
}

} // namespace framereel
