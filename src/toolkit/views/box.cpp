// The class Box: its record, its operations in the order of the class table, and what is set on one.
#include "toolkit/views/box.h"

#include <algorithm>

#include "core/memory.h"
#include "core/rects.h"
#include "toolkit/views/child_set.h"
#include "toolkit/views/container_look.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"

namespace framereel {
namespace {

constexpr int16_t kEmptySize = 16;

struct Box {
  ChildSet set; // the head
  ContainerLook look;
};

ViewClass* boxClass;

Box* BoxOf(const View* view) {
  return static_cast<Box*>(view->classData);
}

void Init(View* view) {
  auto* box = static_cast<Box*>(MemAlloc(sizeof(Box)));
  *box = {};
  ChildSetInit(&box->set, view);
  box->look = NewContainerLook();
  view->classData = box;
  ChildSetFollowBounds(&box->set, box->look.framed);
}

void Destroy(View* view) {
  ChildSetFree(&BoxOf(view)->set);
  MemFree(view->classData);
  view->classData = nullptr;
}

void Draw(View* view) {
  DrawContainerLook(view, BoxOf(view)->look);
  ChildSetDraw(&BoxOf(view)->set);
}

// What goes around the children that count; the empty size when there are none.
void NaturalSize(const View* view, int16_t* width, int16_t* height) {
  const Box* box = BoxOf(view);
  int32_t right = INT32_MIN, bottom = INT32_MIN;
  for (uint16_t i = 0; i < box->set.children.count; ++i) {
    const View* child = ChildAt(&box->set, i);
    if (!ChildIsIncluded(view, child)) continue;
    right = std::max(right, child->x + child->width);
    bottom = std::max(bottom, child->y + child->height);
  }
  const int frame = box->look.framed ? int{kFrameRoom} : 0;
  *width = right == INT32_MIN ? kEmptySize : int16_t(right - view->x + frame);
  *height = bottom == INT32_MIN ? kEmptySize : int16_t(bottom - view->y + frame);
}

void SetSize(View* view, int16_t width, int16_t height) {
  int16_t naturalWidth, naturalHeight;
  NaturalSize(view, &naturalWidth, &naturalHeight);
  if (width == 0) width = naturalWidth;
  if (height == 0) height = naturalHeight;
  if (width == view->width && height == view->height) return;
  ViewInvalidate(view);
  view->width = width;
  view->height = height;
  ViewInvalidate(view);
  ChildSetFollowBounds(&BoxOf(view)->set, BoxOf(view)->look.framed);
}

// The children's own positions, without asking for them.
void ShiftChildren(const Box* box, int16_t dx, int16_t dy) {
  for (uint16_t i = 0; i < box->set.children.count; ++i) {
    View* child = ChildAt(&box->set, i);
    child->viewClass->setPosition(child, int16_t(child->x + dx), int16_t(child->y + dy));
  }
}

void SetPosition(View* view, int16_t x, int16_t y) {
  Box* box = BoxOf(view);
  ViewInvalidate(view);
  const auto dx = int16_t(x - view->x), dy = int16_t(y - view->y);
  view->x = x;
  view->y = y;
  ShiftChildren(box, dx, dy);
  ChildSetFollowBounds(&box->set, box->look.framed);
  ViewInvalidate(view);
}

void MoveChild(View* view, View* child, int16_t x, int16_t y) {
  const Box* box = BoxOf(view);
  const int frame = box->look.framed ? int{kFrameRoom} : 0;
  const int16_t newX = x == kKeepPlace ? child->x : int16_t(x + view->x + frame);
  const int16_t newY = y == kKeepPlace ? child->y : int16_t(y + view->y + frame);
  if (newX != child->x || newY != child->y) child->viewClass->setPosition(child, newX, newY);
}

void AddChild(View* view, View* child) {
  GrowArrayAdd(&BoxOf(view)->set.children, ToListValue(child));
  ViewMove(child, child->x, child->y);
  ViewInvalidate(view);
}

void RemoveChild(View* view, View* child) {
  ChildSetRemove(&BoxOf(view)->set, child);
}

void ResizeChild(View*, View* child, int16_t width, int16_t height) {
  const int16_t oldWidth = child->width, oldHeight = child->height;
  child->viewClass->setSize(child, width, height);
  const int dw = child->width - oldWidth, dh = child->height - oldHeight;
  const uint32_t across = child->anchor & kAnchorCentreAcross, down = child->anchor & kAnchorCentreDown;
  const int dx = across == kAnchorRight ? dw : across == kAnchorCentreAcross ? dw / 2 : 0;
  const int dy = down == kAnchorBottom ? dh : down == kAnchorCentreDown ? dh / 2 : 0;
  child->viewClass->setPosition(child, int16_t(child->x - dx), int16_t(child->y - dy));
}

} // namespace

const ViewClass* BoxClass() {
  return boxClass;
}

void BoxSetUpClass() {
  if (boxClass) return;
  boxClass = ClassNew();
  UseContainerSlots(boxClass);
  boxClass->init = Init;
  boxClass->destroy = Destroy;
  boxClass->draw = Draw;
  boxClass->setSize = SetSize;
  boxClass->setPosition = SetPosition;
  boxClass->addChild = AddChild;
  boxClass->removeChild = RemoveChild;
  boxClass->resizeChild = ResizeChild;
  boxClass->moveChild = MoveChild;
}

void BoxSetFrame(View* view, bool framed) {
  Box* box = BoxOf(view);
  if (box->look.framed == framed) return;
  box->look.framed = framed;
  const auto shift = int16_t(framed ? -kFrameRoom : +kFrameRoom);
  ShiftChildren(box, shift, shift);
  SetSize(view, view->width, view->height);
  ChildSetFollowBounds(&box->set, framed);
  ViewInvalidate(view);
}

} // namespace framereel
