// Loading a shape and giving it to the classes. The cell that a window's class has for its shape spares a call for each
// further window of the class.
#include "platform/windows/cursor_shape.h"

#include "platform/records/window_records.h"
#include "platform/windows/window_list.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr uint16_t kShapes = 7;

uint16_t currentShape;

HCURSOR LoadShape(uint16_t shape) {
  const char* const system[] = {IDC_ARROW, IDC_CROSS, IDC_WAIT, IDC_IBEAM};
  constexpr WORD kOwn[] = {1, 3, 2};
  if (shape <= 4) return ::LoadCursorA(nullptr, system[shape - 1]);
  return ::LoadCursorA(TheMainWindow()->instance, MAKEINTRESOURCEA(kOwn[shape - 5]));
}

void SetClassCursor(HWND window, HCURSOR cursor) {
  ::SetClassLongPtrA(window, GCL_HCURSOR, reinterpret_cast<LONG_PTR>(cursor));
}

} // namespace

void CursorShapeStartUp() {
  currentShape = 1;
}

void SetCursorShape(uint16_t shape) {
  if (shape < 1 || shape > kShapes) return;
  const HCURSOR cursor = LoadShape(shape);
  if (!cursor) return;
  currentShape = shape;
  for (ChildWindow* window = NextChildWindow(nullptr); window; window = NextChildWindow(window)) {
    if (*window->cursorCell == shape) continue;
    *window->cursorCell = shape;
    SetClassCursor(window->window, cursor);
  }
  SetClassCursor(TheMainWindow()->window, cursor);
}

uint16_t GetCursorShape() {
  return currentShape;
}

void UpdateCursorOf(ChildWindow* window) {
  if (*window->cursorCell == currentShape) return;
  *window->cursorCell = currentShape;
  SetClassCursor(window->window, LoadShape(currentShape));
}

} // namespace framereel
