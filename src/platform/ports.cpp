// The contexts and the current Port.
#include "platform/ports.h"

#include "platform/bitmaps.h"
#include "platform/child_window.h"
#include "platform/clip.h"
#include "platform/drawing.h"
#include "platform/main_window.h"

namespace framereel {
namespace {

struct PortState {
  HDC screenContext, memoryContext, sourceContext;
  WindowContexts windows;

  const Port* currentPort;
  HDC context;        // of the current Port
  HWND contextWindow; // whose context it is
  bool givenOut;      // it is to go back to the window
  bool blind;
  HGDIOBJ replaced; // the bitmap that the current Offscreen's took the place of
};

PortState state;
const Port theScreenPort = {kPortScreen, 1};

// Leaves nothing of the current Port selected, and gives its context back.
void Release() {
  LeaveDrawState(state.context);
  if (state.replaced) ::SelectObject(state.memoryContext, state.replaced);
  if (state.givenOut) state.windows.giveBack(state.contextWindow, state.context);
  state.replaced = nullptr;
  state.givenOut = false;
  state.currentPort = nullptr;
  state.context = nullptr;
  state.contextWindow = nullptr;
}

void ResetClip() {
  if (state.blind) {
    SetClip(0, 0, 0, 0);
  } else {
    ::SelectClipRgn(state.context, nullptr);
  }
}

void AttachWindow(const Port* port, HWND window) {
  Release();
  bool painting = false;
  state.context = TakeWindowContext(window, &painting);
  state.currentPort = port;
  if (!state.context) return;
  state.contextWindow = window;
  state.givenOut = !painting;
  if (!painting) ResetClip();
}

} // namespace

bool PortsStartUp() {
  state = {};
  state.screenContext = ::CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
  if (!state.screenContext) return false;
  state.memoryContext = ::CreateCompatibleDC(state.screenContext);
  state.sourceContext = ::CreateCompatibleDC(state.screenContext);
  return true;
}

void PortsShutDown() {
  ReleasePort();
  ::DeleteDC(state.sourceContext);
  ::DeleteDC(state.memoryContext);
  ::DeleteDC(state.screenContext);
  state = {};
}

void SetWindowContexts(const WindowContexts* contexts) {
  Release();
  state.windows = contexts ? *contexts : WindowContexts{};
}

const Port* ScreenPort() {
  return &theScreenPort;
}

void SetPortWindow(ChildWindow* window) {
  state.blind = window->iconic;
  AttachWindow(&window->port, window->window);
}

void SetPortMain(MainWindow* main) {
  state.blind = false;
  if (!main) main = state.windows.main;
  if (!main) return Release();
  AttachWindow(&main->port, main->window);
}

void SetPortScreen() {
  state.blind = false;
  Release();
  state.context = state.screenContext;
  state.currentPort = &theScreenPort;
}

void SetPortOffscreen(Offscreen* offscreen) {
  state.blind = false;
  Release();
  state.context = state.memoryContext;
  state.replaced = ::SelectObject(state.memoryContext, offscreen->bitmap);
  state.currentPort = &offscreen->port;
  ResetClip();
}

void ReleasePort() {
  state.blind = true;
  Release();
}

const Port* CurrentPort() {
  return state.currentPort;
}

HDC CurrentContext() {
  return state.context;
}

HWND CurrentContextWindow() {
  return state.contextWindow;
}

bool IsPortBlind() {
  return state.blind;
}

HDC ScreenContext() {
  return state.screenContext;
}

HDC SourceContext() {
  return state.sourceContext;
}

HDC TakeWindowContext(HWND window, bool* painting) {
  *painting = false;
  return window && state.windows.take ? state.windows.take(window, painting) : nullptr;
}

void GiveWindowContextBack(HWND window, HDC context, bool painting) {
  if (context && !painting) state.windows.giveBack(window, context);
}

} // namespace framereel
