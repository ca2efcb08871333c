// The View and its class, as records: all that this floor knows of the tree of controls in a window.
//
// The floor sends paints, mouse and keys to Views through their class, and it asks the toolkit for the few operations
// of ViewCalls, which the toolkit hands down ahead of PlatformInit. What else is done with Views stands in
// toolkit/view.h.
#pragma once

#include <cstdint>

#include "core/arrays.h"
#include "platform/records/input_events.h"
#include "win32/win32_types.h"

namespace framereel {

struct ChildWindow;
struct Colour;
struct DrawState;
struct View;

// The operations that all Views of a class share. ClassNew fills in the defaults, told here after the dash; a class
// replaces some of them. Places are in window coordinates.
struct ViewClass {
  void (*init)(View* view);                                                    // 0 - nothing
  void (*destroy)(View* view);                                                 // 1 - nothing
  void (*setDrawing)(View* view, DrawState* state);                            // 2 - stores it and invalidates
  bool (*getBackground)(const View* view, Colour* out);                        // 3 - has none: false
  bool (*hitTest)(const View* view, int16_t x, int16_t y);                     // 4 - ViewHitTest
  void (*draw)(View* view);                                                    // 5 - nothing
  void (*mouseEntered)(View* view);                                            // 6 - nothing
  void (*mouseLeft)(View* view);                                               // 7 - nothing
  void (*mouseDown)(View* view, uint16_t flags, int16_t x, int16_t y);         // 8 - nothing
  void (*mouseMoved)(View* view, int16_t x, int16_t y);                        // 9 - nothing
  void (*mouseUp)(View* view, uint16_t flags, int16_t x, int16_t y);           // 10 - nothing
  void (*keyDown)(View* view, const KeyEvent& event, int16_t x, int16_t y);    // 11 - passes it on to the window
  void (*keyUp)(View* view, const KeyEvent& event, int16_t x, int16_t y);      // 12 - passes it on to the window
  void (*setSize)(View* view, int16_t width, int16_t height);                  // 13 - stores it, 16 for a 0
  void (*setPosition)(View* view, int16_t x, int16_t y);                       // 14 - stores it
  bool (*childFullyShown)(View* view, View* child);                            // 15 - false
  void (*hidden)(View* view, bool deep);                                       // 16 - nothing
  void (*shown)(View* view, bool deep);                                        // 17 - nothing
  void (*enabled)(View* view);                                                 // 18 - nothing
  void (*disabled)(View* view);                                                // 19 - nothing
  void (*addChild)(View* view, View* child);                                   // 20 - nothing
  void (*removeChild)(View* view, View* child);                                // 21 - nothing
  void (*resizeChild)(View* view, View* child, int16_t width, int16_t height); // 22 - nothing
  void (*moveChild)(View* view, View* child, int16_t x, int16_t y);            // 23 - nothing
  void (*nativeNotice)(View* view, uint16_t code);                             // 24 - nothing
  void (*scrollNotice)(View* view, uint16_t kind, int16_t value);              // 25 - nothing
  HWND (*nativeHandle)(const View* view);                                      // 26 - null
  WNDPROC (*nativeProcedure)(const View* view);                                // 27 - left empty: null
};

enum ViewFlag : uint32_t { kViewVisible = 1, kViewEnabled = 2, kViewDestroyed = 4 };

// A node of the tree. A View without a parent stands directly in its window. The record of a destroyed View can be read
// until the current pass of the event loop ends; the window, once closed, as long.
struct View {
  ChildWindow* window; // the same for a whole tree
  View* parent;
  const ViewClass* viewClass;
  DrawState* drawing;    // current whenever the View is made current
  int16_t x, y;          // window coordinates at every depth
  int16_t width, height; // pixels
  uint32_t flags;        // of ViewFlag
  void* classData;       // the class's own record
  uint32_t anchor;       // placement rule inside a parent, of that parent's class
  uintptr_t userData;    // the owner's
  Notifier listeners;    // told, with the View, when it is destroyed
  AttributeTable attributes;
};

// What the toolkit does for this floor.
struct ViewCalls {
  void (*setUpClasses)();                                  // once per PlatformInit, when Views can be made
  void (*makeCurrent)(View* view);                         // its window becomes the Port, its drawing the current one
  void (*draw)(View* view);                                // if it is visible and its window shown
  void (*destroy)(View* view);                             // ViewDestroy
  bool (*hitTest)(const View* view, int16_t x, int16_t y); // visible, enabled, and the point lies in its bounds
};

// Good for the process; a null record takes the toolkit away. Without it windows cannot hold Views.
void HandDownViewCalls(const ViewCalls* calls);
const ViewCalls& TheViewCalls();

// The topmost direct View of the window that qualifies at the place, by ViewCalls::hitTest; null when there is none.
View* HitTestWindow(const ChildWindow* window, int16_t x, int16_t y);

} // namespace framereel
