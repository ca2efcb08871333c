// A window that covers the screen, shows what lies under it and takes the click, while the line follows the pointer.
#include "record/pick_window.h"

#include "area/ants.h"
#include "area/window_picking.h"
#include "core/timers.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/ports.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {

namespace {

constexpr const char* kCoverClass = "RecordPick";
constexpr uint32_t kLookInterval = 10; // ms
constexpr uint32_t kRepaintTime = 300; // ms, for what the line has passed over to be painted anew

// What has happened to the cover. There is one at a time.
struct Pick {
  bool pressed, released, cancelled;
};
Pick pick;

LRESULT CoverProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_LBUTTONDOWN:
    pick.pressed = true;
    return 0;
  case WM_LBUTTONUP:
    pick.released = pick.pressed;
    return 0;
  case WM_RBUTTONDOWN:
    pick.cancelled = true;
    return 0;
  case WM_KEYDOWN:
    if (wParam == VK_ESCAPE) pick.cancelled = true;
    return 0;
  default:
    return ::DefWindowProcA(window, message, wParam, lParam);
  }
}

HWND OpenCover() {
  WNDCLASSA what = {};
  what.lpfnWndProc = CoverProcedure;
  what.hCursor = ::LoadCursorA(nullptr, IDC_CROSS);
  what.lpszClassName = kCoverClass;
  ::RegisterClassA(&what); // the second time it is there already
  const DisplayCaps& screen = TheDisplayCaps();
  pick = {};
  HWND cover = ::CreateWindowExA(WS_EX_TOPMOST, kCoverClass, "", WS_POPUP, 0, 0, screen.screenWidth,
                                 screen.screenHeight, nullptr, nullptr, nullptr, nullptr);
  ::ShowWindow(cover, SW_SHOW);
  ::SetCapture(cover);
  ::SetCursor(what.hCursor);
  return cover;
}

// Until the click, or what ends the wait.
void WaitForClick(const RecordingClock& clock) {
  while (!pick.released && !pick.cancelled && !ScreenIsLost()) {
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
      ::TranslateMessage(&message);
      ::DispatchMessageA(&message);
    }
    TimerFireDue();
    if (clock.wait(clock.owner, kLookInterval)) pick.cancelled = true;
  }
}

} // namespace

bool PickWindow(const RecordingClock& clock, HWND* window, WantedArea* area, Refusal& refusal) {
  AreaState line;
  AntsInit(line.ants);
  HWND cover = OpenCover();
  WindowPickBegin(line);
  WaitForClick(clock);
  WindowPickEnd(line);
  ::ReleaseCapture();
  POINT pointer = {};
  ::GetCursorPos(&pointer);
  ::DestroyWindow(cover);
  RefreshScreen(line);
  ReleasePort();
  if (ScreenIsLost()) return Refuse(refusal, "the connection to the display was lost; nothing was recorded");
  if (!pick.released) return Refuse(refusal, "no window was picked; nothing was recorded");
  Rect seen;
  if (!FindWindowAt(pointer.x, pointer.y, &seen, window)) return Refuse(refusal, "there is no window to record there");
  *area = {seen.left, seen.top, seen.right - seen.left, seen.bottom - seen.top};
  clock.wait(clock.owner, kRepaintTime);
  return true;
}

} // namespace framereel
