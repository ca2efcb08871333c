// The contexts and the current Port.
#include "platform/ports.h"

#include "platform/bitmaps.h"

namespace framereel {
namespace {

struct PortState {
  HDC screenContext, memoryContext, sourceContext;
  const Port* currentPort;
  HDC context;      // of the current Port
  HGDIOBJ replaced; // the bitmap that the current Offscreen's took the place of
};

PortState state;
const Port theScreenPort = {kPortScreen, 1};

void SetPort(const Port* port, HDC context) {
  state.currentPort = port;
  state.context = context;
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

const Port* ScreenPort() {
  return &theScreenPort;
}

void ReleasePort() {
  if (state.replaced) ::SelectObject(state.memoryContext, state.replaced);
  state.replaced = nullptr;
  SetPort(nullptr, nullptr);
}

void SetPortScreen() {
  ReleasePort();
  SetPort(&theScreenPort, state.screenContext);
}

void SetPortOffscreen(Offscreen* offscreen) {
  ReleasePort();
  state.replaced = ::SelectObject(state.memoryContext, offscreen->bitmap);
  SetPort(&offscreen->port, state.memoryContext);
}

const Port* CurrentPort() {
  return state.currentPort;
}

HDC CurrentContext() {
  return state.context;
}

HDC ScreenContext() {
  return state.screenContext;
}

HDC SourceContext() {
  return state.sourceContext;
}

} // namespace framereel
