// Time, as the display counts it.
#include "win32/display.h"
#include "win32/present.h"
#include "win32/win32.h"

DWORD GetTickCount() {
  return framereel::DisplayTick();
}

void Sleep(DWORD milliseconds) {
  framereel::PresentWindows();
  framereel::DisplaySleep(milliseconds);
}
