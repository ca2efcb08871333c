// Making the main window. The order of the steps of CreateMainWindow matters: while the platform makes and shows the
// window it calls the procedure, which finds a record without a window and so leaves alone what needs one.
#include "platform/windows/main_window.h"

#include "core/numbers.h"
#include "core/text_scan.h"
#include "platform/records/port.h"
#include "platform/windows/display_change.h"
#include "platform/windows/window_classes.h"
#include "platform/windows/window_geometry.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr UINT kTitleString = 100, kFrameTypeString = 101;
constexpr int16_t kFirstMinimum = 250;  // pixels
constexpr int16_t kFarOut = 500;        // pixels beyond the usable width: where a window that slides in begins
constexpr DWORD kStyleFixed = 0xCA0000; // caption, system menu, minimise box
constexpr DWORD kStyleSizable = 0xCF0000;

int32_t FrameType() {
  char text[16];
  return ::LoadStringA(nullptr, kFrameTypeString, text, sizeof text) ? ScanInt(text) : 0;
}

// Before there is a window: the usable area as its client area.
void TakeFirstPlace(MainWindow* main) {
  TakeUsableArea();
  WindowGeometry* g = &main->geometry;
  g->clientLeft = main->usableLeft;
  g->clientTop = main->usableTop;
  g->clientWidth = main->usableWidth;
  g->clientHeight = main->usableHeight;
  OuterFromClient(g);
}

} // namespace

bool CreateMainWindow(HINSTANCE instance, int showCommand) {
  MainWindow* main = TheMainWindow();
  if (main->window) return true;
  *main = {};
  main->port = {kPortMainWindow};
  main->geometry = NoGeometry();
  TakeFirstPlace(main);
  const int32_t type = FrameType();
  if (type == 1 || type == 2) main->originX = PinToShort(main->usableWidth + kFarOut);
  char title[80];
  if (!::LoadStringA(nullptr, kTitleString, title, sizeof title)) title[0] = 0;
  const HWND window =
      ::CreateWindowExA(0, kMainWindowClass, title[0] ? title : "Test Application",
                        (type == 1 ? kStyleFixed : kStyleSizable) | WS_CLIPCHILDREN, main->originX, main->originY,
                        main->usableWidth, main->usableHeight, nullptr, nullptr, instance, nullptr);
  if (!window) return false;
  ::ShowWindow(window, type == 1 ? SW_RESTORE : showCommand);
  ::UpdateWindow(window);
  main->window = window;
  main->instance = instance;
  DisplayChanged();
  SetMainMinimumSize(main, kFirstMinimum, kFirstMinimum);
  return true;
}

void DestroyMainWindow() {
  MainWindow* main = TheMainWindow();
  ::DestroyWindow(main->window);
  *main = {};
}

void RestoreMainWindow() {
  if (MainIsIconic(nullptr)) ::ShowWindow(TheMainWindow()->window, SW_RESTORE);
}

void SetMainWindowTitle(MainWindow* main, const char* title) {
  ::SetWindowTextA(MainOr(main)->window, title);
}

} // namespace framereel
