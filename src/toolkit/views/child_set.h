// The children of a container, and how everything that comes to the container goes on to them.
//
// A container's class data begins with a ChildSet. Its class takes the operations of UseContainerSlots, and adds what
// is its own: size, place, look, and how children come and go.
#pragma once

#include "core/arrays.h"
#include "core/geometry.h"
#include "platform/records/view_record.h"

namespace framereel {

struct ChildSet {
  GrowArray children; // Views in order of creation: drawn first to last, hit last to first
  View* pressed;      // the child that has the press, or null
  Rect client;        // where children may draw: the clip for everything that goes to them
  View* entered;      // the child under the mouse, or null
  View* owner;        // the container
};

inline ChildSet* ChildSetOf(const View* container) {
  return static_cast<ChildSet*>(container->classData);
}
inline View* ChildAt(const ChildSet* set, uint16_t index) {
  return FromListValue<View>(set->children.entries[index]);
}

void ChildSetInit(ChildSet* set, View* owner);
// Destroys the children, first to last.
void ChildSetFree(ChildSet* set);
// Takes the child out of the container and finishes it: its parent is null, and its destroy operation has run. What a
// class does for removeChild.
void ChildSetRemove(ChildSet* set, View* child);
// Whether the child counts for the container's size: if it is visible, or the container is hidden.
bool ChildIsIncluded(const View* container, const View* child);
// The client rectangle from the container's bounds; a frame keeps 2 pixels free on the inside.
void ChildSetFollowBounds(ChildSet* set, bool framed);
// Draws the children that need it, under the clip.
void ChildSetDraw(ChildSet* set);

// Fills in hitTest, the mouse operations, keyDown, childFullyShown, hidden and shown. A key-up goes to the window, as
// by default.
void UseContainerSlots(ViewClass* viewClass);

} // namespace framereel
