// See panel.h.
#include "app/panel.h"

#include "app/slide_frame.h"
#include "core/numbers.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/records/window_records.h"
#include "platform/windows/child_window.h"
#include "platform/windows/window_geometry.h"

namespace framereel {
namespace {

constexpr int16_t kWidth = 180, kHeight = 330; // pixels
constexpr int16_t kEdgeGap = 5;                // between the resting place and the edges of the usable screen

ChildWindow* panelWindow;

// The program is nothing without its panel: the keys that close a window do not close this one.
bool StaysOpen(ChildWindow*) {
  return false;
}

// The top right corner of the usable screen, with the panel's frame beyond the edge that the user sees.
Point RestingPlace(const MainWindow* main) {
  const WindowGeometry& g = panelWindow->geometry;
  const int x = main->usableWidth - g.clientWidth - g.insetRight - kEdgeGap - main->geometry.insetLeft;
  return {PinToShort(main->usableTop + kEdgeGap), PinToShort(x)};
}

} // namespace

ChildWindow* PanelWindow() {
  return panelWindow;
}

void PanelFit() {
  SizeChildWindow(panelWindow, kWidth, kHeight);
  // Twice: a frame may change with the size, and its thickness is known only afterwards.
  SetMainClientSize(nullptr, kWidth, kHeight);
  SetMainClientSize(nullptr, kWidth, kHeight);
}

void BuildPanel() {
  MainWindow* main = TheMainWindow();
  panelWindow = OpenChildWindow(nullptr, "", kWindowFilled | kWindowUnclamped);
  panelWindow->background = ColourMenu();
  SetWindowMethod(panelWindow, &WindowMethods::mayClose, StaysOpen);
  SetMainMinimumSize(nullptr, 1, 1);
  PanelFit();
  // Client area on client area, so that nothing is seen of the panel's own frame.
  PlaceChildWindow(panelWindow, main->geometry.insetLeft, main->geometry.insetTop);
  ShowChildWindow(panelWindow);
  const Point rest = RestingPlace(main);
  MoveMainWindow(main, PinToShort(main->usableWidth + main->geometry.insetLeft),
                 PinToShort(rest.v + main->geometry.insetTop));
  SlideFrameStart(rest);
}

} // namespace framereel
