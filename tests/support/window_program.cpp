#include "support/window_program.h"

#include "core/numbers.h"
#include "core/timers.h"
#include "platform/pump/platform_start.h"
#include "platform/pump/pump.h"
#include "win32/memory/memory_display.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"
#include "win32/windows/create.h"
#include "win32/windows/window.h"

namespace framereel {
namespace {

char module;

} // namespace

WindowProgram::WindowProgram(int32_t width, int32_t height, int32_t depth, int32_t dotsPerInch) {
  MemoryDisplayReset(width, height, depth);
  TheMemoryDisplay().dotsPerInch = dotsPerInch;
  TimerFireDue(); // there is none: the clock has begun anew, and the timers are to know
  PlatformInit(reinterpret_cast<HINSTANCE>(&module), nullptr, "", SW_SHOWNORMAL);
  MoveMainWindow(nullptr, TheMainWindow()->geometry.insetLeft, TheMainWindow()->geometry.insetTop);
  ReturnToProgram();
}

WindowProgram::~WindowProgram() {
  PlatformShutdown();
  ForgetAllWindows();
}

void Settle() {
  MSG message;
  while (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE)) PumpOneEvent(nullptr, false);
}

void RunFor(uint32_t milliseconds) {
  const uint32_t start = ::GetTickCount();
  while (::GetTickCount() - start < milliseconds) PumpOneEvent(nullptr, true);
}

ChildWindow* OpenTestWindow(uint32_t flags) {
  ChildWindow* window = OpenChildWindow(nullptr, "Test", flags);
  SizeChildWindow(window, 200, 100);
  PlaceChildWindow(window, 100, 100);
  ShowChildWindow(window);
  Settle();
  return window;
}

Point OnScreen(const ChildWindow* window, int16_t x, int16_t y) {
  const MainWindow* main = TheMainWindow();
  const WindowGeometry& g = window->geometry;
  return {PinToShort(main->originY + g.clientTop + y), PinToShort(main->originX + g.clientLeft + x)};
}

Point OnScreenInMain(int16_t x, int16_t y) {
  const MainWindow* main = TheMainWindow();
  return {PinToShort(main->originY + main->geometry.insetTop + y),
          PinToShort(main->originX + main->geometry.insetLeft + x)};
}

void MoveOver(const ChildWindow* window, int16_t x, int16_t y) {
  const Point p = OnScreen(window, x, y);
  MemoryMovePointerTo(p.h, p.v);
  Settle();
}

void Press(const ChildWindow* window, int16_t x, int16_t y, uint8_t button) {
  MoveOver(window, x, y);
  MemoryPressButton(button);
  Settle();
}

void Release(uint8_t button) {
  MemoryReleaseButton(button);
  Settle();
}

void Type(uint8_t virtualKey) {
  MemoryTypeKey(virtualKey);
  Settle();
}

void LeaveProgram() {
  MemoryGiveKeyboard(nullptr);
  Settle();
}

void ReturnToProgram() {
  MemoryGiveKeyboard(MemoryWindowTitled("Framereel"));
  Settle();
}

} // namespace framereel
