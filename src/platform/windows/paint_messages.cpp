// Painting windows. Their contexts come from here as well: while a window is being painted, its context is that of the
// paint.
#include "platform/windows/paint_messages.h"

#include "platform/drawing/clip.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/records/view_record.h"
#include "platform/records/window_records.h"
#include "win32/win32_drawing.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

struct PaintState {
  bool painting; // a ChildWindow's paint is running
  HWND window;   // of that paint, with its context
  HDC context;
  HRGN updateRegion; // what that paint is to paint, in window coordinates
};

PaintState state;

HDC TakeContext(HWND window, bool* painting) {
  *painting = state.window && window == state.window;
  return *painting ? state.context : ::GetDC(window);
}

void GiveContextBack(HWND window, HDC context) {
  ::ReleaseDC(window, context);
}

// Fills with a colour from 0, 0, in the current Port.
void FillFromCorner(const Colour& colour, int16_t width, int16_t height) {
  UseDrawState(DrawStateFill());
  SetForeColour(colour);
  FillRectXY(0, 0, width, height);
}

void DrawViews(ChildWindow* window) {
  for (uint16_t i = 0; i < window->views.count; ++i) {
    auto* view = FromListValue<View>(window->views.entries[i]);
    const Rect bounds = {view->y, view->x, int16_t(view->y + view->height), int16_t(view->x + view->width)};
    if (RectNeedsPaint(bounds)) TheViewCalls().draw(view);
  }
}

void DrawWindow(ChildWindow* window) {
  SetPortWindow(window);
  if (window->flags & kWindowFilled) {
    FillFromCorner(window->background, window->geometry.clientWidth, window->geometry.clientHeight);
  }
  const SavedClip clip = SaveClip();
  window->methods.paint(window);
  if (window->flags & kWindowClosed) return DropSavedClip(clip);
  SetPortWindow(window);
  RestoreClip(clip);
  DrawViews(window);
}

} // namespace

void PaintStartUp() {
  state = {};
  state.updateRegion = ::CreateRectRgn(0, 0, 0, 0);
  const WindowContexts contexts = {TakeContext, GiveContextBack};
  SetWindowContexts(&contexts);
}

void PaintShutDown() {
  SetWindowContexts(nullptr);
  ::DeleteObject(state.updateRegion);
  state = {};
}

void PaintMainWindow(HWND handle) {
  PAINTSTRUCT paint;
  ::BeginPaint(handle, &paint);
  if (DrawStateFill()) {
    SetPortMain(nullptr);
    const WindowGeometry& g = TheMainWindow()->geometry;
    FillFromCorner(ColourWorkspace(), g.clientWidth, g.clientHeight);
    ReleasePort();
  }
  ::EndPaint(handle, &paint);
}

// A paint may run inside a paint, of a window that a handler shows and flushes: each has a region of its own.
void PaintChildWindow(ChildWindow* window) {
  const PaintState outer = state;
  const HWND handle = window->window;
  if (outer.painting) state.updateRegion = ::CreateRectRgn(0, 0, 0, 0);
  ::GetUpdateRgn(handle, state.updateRegion, FALSE);
  PAINTSTRUCT paint;
  state.context = ::BeginPaint(handle, &paint);
  state.window = handle;
  state.painting = true;
  if (!window->iconic) DrawWindow(window);
  ReleasePort();
  if (outer.painting) ::DeleteObject(state.updateRegion);
  state = outer;
  ::EndPaint(handle, &paint);
}

bool RectNeedsPaint(const Rect& rect) {
  const RECT r = {rect.left, rect.top, rect.right, rect.bottom};
  return state.painting && ::RectInRegion(state.updateRegion, &r);
}

} // namespace framereel
