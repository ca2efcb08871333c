// Handing events and drawing on to children. A child's operation may destroy the container: its ChildSet is then gone
// at once, while its record can still be read. So whoever goes on after a call looks at the owner first.
#include "toolkit/views/child_set.h"

#include "core/rects.h"
#include "platform/drawing/clip.h"
#include "platform/drawing/ports.h"
#include "platform/input/keys.h"
#include "platform/records/window_records.h"
#include "platform/windows/modal.h"
#include "platform/windows/paint_messages.h"
#include "toolkit/views/view.h"

namespace framereel {
namespace {

constexpr int16_t kOutside = -10; // a place that hits nothing

// Calls under the clip of the container; false when that has destroyed the container.
template <typename Call> bool UnderClip(const ChildSet* set, Call call) {
  const View* owner = set->owner;
  const SavedClip clip = NarrowClip(set->client.left, set->client.top, set->client.right, set->client.bottom);
  call();
  if (ViewIsDestroyed(owner)) {
    DropSavedClip(clip);
    return false;
  }
  RestoreClip(clip);
  return true;
}

void ForgetDyingChild(intptr_t child, void* argument) {
  auto* set = static_cast<ChildSet*>(argument);
  if (ToListValue(set->entered) == child) set->entered = nullptr;
  if (ToListValue(set->pressed) == child) set->pressed = nullptr;
}

// The listener stays as long as the set points at the child.
void StopListening(ChildSet* set, View* child) {
  if (child && child != set->entered && child != set->pressed) ViewRemoveListener(child, ForgetDyingChild, set);
}

View* HitChild(const ChildSet* set, int16_t x, int16_t y) {
  for (uint16_t i = set->children.count; i > 0; --i) {
    View* child = ChildAt(set, uint16_t(i - 1));
    if (ViewHitTest(child, x, y)) return child;
  }
  return nullptr;
}

// With a modal View only that one and what holds it take part.
bool ModalLets(const View* child) {
  const View* modal = GetModalView();
  for (const View* at = modal; at; at = at->parent) {
    if (at == child) return true;
  }
  return !modal;
}

// All false: the container is destroyed.
bool LeaveChild(ChildSet* set) {
  View* child = set->entered;
  if (!child) return true;
  set->entered = nullptr;
  StopListening(set, child);
  return UnderClip(set, [&] { child->viewClass->mouseLeft(child); });
}

bool EnterChild(ChildSet* set, View* child) {
  if (!child || ViewIsDestroyed(child)) return true;
  set->entered = child;
  if (child != set->pressed) ViewAddListener(child, ForgetDyingChild, set);
  return UnderClip(set, [&] { child->viewClass->mouseEntered(child); });
}

// A press in progress holds the entered child.
bool UpdateEntered(ChildSet* set, int16_t x, int16_t y) {
  if (set->pressed) return true;
  View* child = HitChild(set, x, y);
  if (child && !ModalLets(child)) child = nullptr;
  if (child == set->entered) return true;
  return LeaveChild(set) && EnterChild(set, child);
}

ChildWindow* CurrentWindow(const ChildSet* set) {
  SetPortWindow(set->owner->window);
  return set->owner->window;
}

// ---- The operations ----------------------------------------------------------------------------------------------

bool HitTest(const View* view, int16_t x, int16_t y) {
  return RectHas(ViewBounds(view), x, y) && HitChild(ChildSetOf(view), x, y);
}

void MouseLeft(View* view) {
  ChildSet* set = ChildSetOf(view);
  if (UpdateEntered(set, kOutside, kOutside)) LeaveChild(set);
}

void MouseDown(View* view, uint16_t flags, int16_t x, int16_t y) {
  ChildSet* set = ChildSetOf(view);
  if (!UpdateEntered(set, x, y)) return;
  View* before = set->pressed;
  View* child = set->pressed = set->entered;
  StopListening(set, before);
  if (child) {
    UnderClip(set, [&] { child->viewClass->mouseDown(child, flags, x, y); });
  } else {
    ChildWindow* window = CurrentWindow(set);
    window->methods.mouseDown(window, flags, x, y);
  }
}

void MouseMoved(View* view, int16_t x, int16_t y) {
  ChildSet* set = ChildSetOf(view);
  if (!UpdateEntered(set, x, y)) return;
  if (View* child = set->pressed ? set->pressed : set->entered) {
    UnderClip(set, [&] { child->viewClass->mouseMoved(child, x, y); });
  } else {
    ChildWindow* window = CurrentWindow(set);
    window->methods.mouseMoved(window, x, y);
  }
}

// The flags name the one button that went up, and with it the press is over.
void MouseUp(View* view, uint16_t flags, int16_t x, int16_t y) {
  ChildSet* set = ChildSetOf(view);
  View* child = set->pressed;
  if (!child) {
    ChildWindow* window = CurrentWindow(set);
    window->methods.mouseUp(window, flags, x, y);
    return;
  }
  if (!UnderClip(set, [&] { child->viewClass->mouseUp(child, flags, x, y); })) return;
  child = set->pressed; // null if it was destroyed
  set->pressed = nullptr;
  StopListening(set, child);
  UpdateEntered(set, x, y);
}

void KeyDown(View* view, const KeyEvent& event, int16_t x, int16_t y) {
  const ChildSet* set = ChildSetOf(view);
  if (View* child = set->entered) {
    UnderClip(set, [&] { child->viewClass->keyDown(child, event, x, y); });
  } else {
    SendKeyDown(false, event, x, y);
  }
}

bool ChildFullyShown(View* view, View* child) {
  return RectInside(ViewBounds(child), ChildSetOf(view)->client) && ViewFullyShown(view, child);
}

void ShowChildren(View* view, bool deep, bool visible) {
  if (!deep) return;
  ChildSet* set = ChildSetOf(view);
  UnderClip(set, [&] {
    for (uint16_t i = 0; !ViewIsDestroyed(view) && i < set->children.count; ++i) {
      ViewSetVisible(ChildAt(set, i), visible);
    }
  });
}

void Hidden(View* view, bool deep) {
  ShowChildren(view, deep, false);
}

void Shown(View* view, bool deep) {
  ShowChildren(view, deep, true);
}

} // namespace

void ChildSetInit(ChildSet* set, View* owner) {
  *set = {};
  set->owner = owner;
}

void ChildSetFree(ChildSet* set) {
  while (set->children.count > 0) {
    View* child = ChildAt(set, 0);
    GrowArrayRemoveAt(&set->children, 0);
    child->parent = nullptr;
    ViewDestroy(child);
  }
}

void ChildSetRemove(ChildSet* set, View* child) {
  GrowArrayRemove(&set->children, ToListValue(child));
  child->parent = nullptr;
  child->viewClass->destroy(child);
}

bool ChildIsIncluded(const View* container, const View* child) {
  return ViewIsVisible(child) || !ViewIsVisible(container);
}

void ChildSetFollowBounds(ChildSet* set, bool framed) {
  const int16_t inset = framed ? -2 : 0;
  set->client = RectGrow(ViewBounds(set->owner), inset, inset);
}

void ChildSetDraw(ChildSet* set) {
  const View* owner = set->owner;
  UnderClip(set, [&] {
    for (uint16_t i = 0; !ViewIsDestroyed(owner) && i < set->children.count; ++i) {
      View* child = ChildAt(set, i);
      if (RectNeedsPaint(ViewBounds(child))) ViewDraw(child);
    }
  });
}

void UseContainerSlots(ViewClass* viewClass) {
  viewClass->hitTest = HitTest;
  viewClass->mouseLeft = MouseLeft;
  viewClass->mouseDown = MouseDown;
  viewClass->mouseMoved = MouseMoved;
  viewClass->mouseUp = MouseUp;
  viewClass->keyDown = KeyDown;
  viewClass->childFullyShown = ChildFullyShown;
  viewClass->hidden = Hidden;
  viewClass->shown = Shown;
}

} // namespace framereel
