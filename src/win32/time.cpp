// The clock, which is the display's.
#include "win32/display.h"
#include "win32/win32.h"

DWORD GetTickCount() {
  return framereel::DisplayTick();
}

void Sleep(DWORD milliseconds) {
  framereel::DisplaySleep(milliseconds);
}
