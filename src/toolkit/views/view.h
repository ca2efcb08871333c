// Views: the nodes of the tree of controls and panes in a ChildWindow.
//
// The record and its class stand in platform/records/view_record.h, the making of classes in view_class.h. A View is
// hit only when it is both visible and enabled, and drawn only when it is visible; its parents are not asked, so
// showing a container shows its children too. All operations but ViewResize and ViewFit take a View that is not null.
#pragma once

#include <cstdint>

#include "core/geometry.h"
#include "platform/records/colour.h"
#include "platform/records/view_record.h"

namespace framereel {

// ---- Life --------------------------------------------------------------------------------------------------------

// A new View, hidden and enabled, 16 by 16 unless its class says otherwise: directly in the window, or in a parent,
// whose class decides what a position means.
View* ViewCreateTop(const ViewClass* viewClass, ChildWindow* window, int16_t x, int16_t y);
View* ViewCreateAt(const ViewClass* viewClass, View* parent, int16_t x, int16_t y);
View* ViewCreate(const ViewClass* viewClass, View* parent); // at 0, 0
// Once; a second call does nothing. The record can be read until the current pass of the event loop ends.
void ViewDestroy(View* view);

// ---- State -------------------------------------------------------------------------------------------------------

void ViewShow(View* view); // a container with all its children
void ViewHide(View* view);
void ViewShowQuiet(View* view); // it alone
void ViewHideQuiet(View* view);
void ViewSetVisible(View* view, bool visible);
void ViewEnable(View* view);
void ViewDisable(View* view);
void ViewSetEnabled(View* view, bool enabled);
void ViewSetDrawing(View* view, DrawState* state);

inline bool ViewIsVisible(const View* view) {
  return view->flags & kViewVisible;
}
inline bool ViewIsEnabled(const View* view) {
  return view->flags & kViewEnabled;
}
inline bool ViewIsDestroyed(const View* view) {
  return view->flags & kViewDestroyed;
}

// ---- Size and place ----------------------------------------------------------------------------------------------

// Ask for a size or a place, which the parent decides on; a View without a parent takes it. A width or height of 0 is
// the class's natural one.
void ViewResize(View* view, int16_t width, int16_t height);
void ViewFit(View* view); // the natural size
void ViewMove(View* view, int16_t x, int16_t y);
Rect ViewBounds(const View* view);
bool ViewHitTest(const View* view, int16_t x, int16_t y);
// Whether nothing of the child is cut off by the containers around `view`, and by the window. For a View itself both
// are that View.
bool ViewFullyShown(View* view, View* child);

// ---- Drawing -----------------------------------------------------------------------------------------------------

// Marks its bounds, or a rectangle of its window, to be painted; nothing while it is hidden or its window not shown.
void ViewInvalidate(View* view);
void ViewInvalidateRect(View* view, const Rect& where);
// Its window becomes the current Port and its DrawState the one in use, each if it is not so already.
void ViewMakeCurrent(View* view);
// Draws it, current, if it is visible and its window has been shown.
void ViewDraw(View* view);
// The colour behind it: that of the next container which has one, else its window's; white for a null View.
Colour ViewBackground(const View* view);

// ---- Listeners ---------------------------------------------------------------------------------------------------

// Called in ViewDestroy with the View as subject, the last added first.
void ViewAddListener(View* view, NoticeFunction function, void* argument);
// Removes the last entry with this pair.
void ViewRemoveListener(View* view, NoticeFunction function, void* argument);

// ---- Windows -----------------------------------------------------------------------------------------------------

// New upper limits of the window's client size, to which it then yields.
void SetWindowLimits(ChildWindow* window, int16_t width, int16_t height);

} // namespace framereel
