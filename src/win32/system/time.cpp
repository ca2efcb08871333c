// Time, as the display counts it.
#include "win32/pixels/display.h"
#include "win32/pixels/presenter.h"
#include "win32/win32_system.h"

DWORD GetTickCount() {
  return framereel::DisplayTick();
}

void Sleep(DWORD milliseconds) {
  framereel::PresentWindows();
  framereel::DisplaySleep(milliseconds);
}
