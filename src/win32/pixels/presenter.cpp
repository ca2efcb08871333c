// Bringing what was drawn in our windows to the screen; surfaces.cpp does it.
#include "win32/pixels/presenter.h"

namespace framereel {
namespace {

void (*presenter)() = nullptr;

} // namespace

void PresentWindowsBy(void (*present)()) {
  presenter = present;
}

void PresentWindows() {
  if (presenter) presenter();
}

} // namespace framereel
