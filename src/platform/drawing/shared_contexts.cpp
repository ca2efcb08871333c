// Making the contexts, and giving them back.
#include "platform/drawing/shared_contexts.h"

#include "win32/win32_drawing.h"

namespace framereel {
namespace {

struct Contexts {
  HDC screen, memory, source;
};

Contexts contexts;

} // namespace

bool SharedContextsStartUp() {
  contexts = {};
  contexts.screen = ::CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
  if (!contexts.screen) return false;
  contexts.memory = ::CreateCompatibleDC(contexts.screen);
  contexts.source = ::CreateCompatibleDC(contexts.screen);
  return true;
}

void SharedContextsShutDown() {
  ::DeleteDC(contexts.source);
  ::DeleteDC(contexts.memory);
  ::DeleteDC(contexts.screen);
  contexts = {};
}

HDC ScreenContext() {
  return contexts.screen;
}

HDC MemoryContext() {
  return contexts.memory;
}

HDC SourceContext() {
  return contexts.source;
}

} // namespace framereel
