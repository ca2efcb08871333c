// What can be done with a View of any class.
#include "toolkit/views/view.h"

#include "core/memory.h"
#include "core/rects.h"
#include "core/temporary_blocks.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/input/mouse.h"
#include "platform/windows/child_window.h"
#include "platform/windows/window_geometry.h"

namespace framereel {
namespace {

constexpr int16_t kFirstSize = 16;

View* NewRecord(const ViewClass* viewClass, ChildWindow* window, View* parent, int16_t x, int16_t y) {
  auto* view = static_cast<View*>(MemAlloc(sizeof(View)));
  *view = {};
  view->window = window;
  view->parent = parent;
  view->viewClass = viewClass;
  view->drawing = DrawStateDefault();
  view->x = x;
  view->y = y;
  view->width = view->height = kFirstSize;
  view->flags = kViewEnabled;
  return view;
}

void SetVisible(View* view, bool visible, bool deep) {
  if (ViewIsVisible(view) == visible) return;
  if (visible) {
    view->flags |= kViewVisible;
    view->viewClass->shown(view, deep);
    ViewInvalidate(view);
  } else {
    ViewInvalidate(view);
    view->flags &= ~kViewVisible;
    view->viewClass->hidden(view, deep);
  }
}

} // namespace

// ---- Life --------------------------------------------------------------------------------------------------------

View* ViewCreateTop(const ViewClass* viewClass, ChildWindow* window, int16_t x, int16_t y) {
  View* view = NewRecord(viewClass, window, nullptr, x, y);
  if (window) GrowArrayAdd(&window->views, ToListValue(view));
  viewClass->init(view);
  return view;
}

View* ViewCreateAt(const ViewClass* viewClass, View* parent, int16_t x, int16_t y) {
  View* view = NewRecord(viewClass, parent->window, parent, x, y);
  viewClass->init(view);
  parent->viewClass->addChild(parent, view);
  return view;
}

View* ViewCreate(const ViewClass* viewClass, View* parent) {
  return ViewCreateAt(viewClass, parent, 0, 0);
}

void ViewDestroy(View* view) {
  if (ViewIsDestroyed(view)) return;
  view->flags |= kViewDestroyed;
  ViewInvalidate(view);
  if (!view->parent && view->window) GrowArrayRemove(&view->window->views, ToListValue(view));
  ForgetView(view);
  NotifierSend(&view->listeners, ToListValue(view));
  if (View* parent = view->parent) {
    parent->viewClass->removeChild(parent, view);
  } else {
    view->viewClass->destroy(view);
  }
  NotifierClear(&view->listeners);
  AttributeClear(&view->attributes);
  TempAdoptOutermost(view);
}

// ---- State -------------------------------------------------------------------------------------------------------

void ViewShow(View* view) {
  SetVisible(view, true, true);
}

void ViewHide(View* view) {
  SetVisible(view, false, true);
}

void ViewShowQuiet(View* view) {
  SetVisible(view, true, false);
}

void ViewHideQuiet(View* view) {
  SetVisible(view, false, false);
}

void ViewSetVisible(View* view, bool visible) {
  SetVisible(view, visible, true);
}

void ViewEnable(View* view) {
  ViewSetEnabled(view, true);
}

void ViewDisable(View* view) {
  ViewSetEnabled(view, false);
}

void ViewSetEnabled(View* view, bool enabled) {
  if (ViewIsEnabled(view) == enabled) return;
  view->flags ^= kViewEnabled;
  (enabled ? view->viewClass->enabled : view->viewClass->disabled)(view);
}

void ViewSetDrawing(View* view, DrawState* state) {
  view->viewClass->setDrawing(view, state);
}

// ---- Size and place ----------------------------------------------------------------------------------------------

void ViewResize(View* view, int16_t width, int16_t height) {
  if (!view || (width == view->width && height == view->height)) return;
  if (View* parent = view->parent) {
    parent->viewClass->resizeChild(parent, view, width, height);
  } else {
    view->viewClass->setSize(view, width, height);
  }
}

void ViewFit(View* view) {
  ViewResize(view, 0, 0);
}

void ViewMove(View* view, int16_t x, int16_t y) {
  if (View* parent = view->parent) {
    parent->viewClass->moveChild(parent, view, x, y);
  } else {
    view->viewClass->setPosition(view, x, y);
  }
}

Rect ViewBounds(const View* view) {
  return RectOf(view->x, view->y, view->width, view->height);
}

bool ViewHitTest(const View* view, int16_t x, int16_t y) {
  return ViewIsVisible(view) && ViewIsEnabled(view) && RectHas(ViewBounds(view), x, y);
}

bool ViewFullyShown(View* view, View* child) {
  if (View* parent = view->parent) return parent->viewClass->childFullyShown(parent, child);
  return RectInside(ViewBounds(child), ChildBounds(child->window));
}

// ---- Drawing -----------------------------------------------------------------------------------------------------

void ViewInvalidate(View* view) {
  ViewInvalidateRect(view, ViewBounds(view));
}

void ViewInvalidateRect(View* view, const Rect& where) {
  ChildWindow* window = view->window;
  if (window && window->openCount > 0 && ViewIsVisible(view)) InvalidateChildRect(window, where);
}

void ViewMakeCurrent(View* view) {
  if (CurrentPort() != &view->window->port) SetPortWindow(view->window);
  if (CurrentDrawState() != view->drawing) UseDrawState(view->drawing);
}

void ViewDraw(View* view) {
  if (!ViewIsVisible(view) || view->window->openCount < 1) return;
  ViewMakeCurrent(view);
  view->viewClass->draw(view);
}

Colour ViewBackground(const View* view) {
  if (!view) return PrimaryColour(7);
  Colour colour;
  for (const View* at = view; at; at = at->parent) {
    if (at->viewClass->getBackground(at, &colour)) return colour;
  }
  return view->window->background;
}

// ---- Listeners ---------------------------------------------------------------------------------------------------

void ViewAddListener(View* view, NoticeFunction function, void* argument) {
  NotifierAdd(&view->listeners, function, argument);
}

void ViewRemoveListener(View* view, NoticeFunction function, void* argument) {
  NotifierRemove(&view->listeners, function, argument);
}

// ---- Windows -----------------------------------------------------------------------------------------------------

void SetWindowLimits(ChildWindow* window, int16_t width, int16_t height) {
  SetMaxChildSize(window, width, height);
}

} // namespace framereel
