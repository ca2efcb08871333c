// The arrangement of a Stack is worked out along its direction and across it, for Row and Column alike: `along` is x
// and width in a Row, y and height in a Column.
#include "toolkit/views/stack.h"

#include <algorithm>

#include "core/memory.h"
#include "core/numbers.h"
#include "core/rects.h"
#include "toolkit/views/child_set.h"
#include "toolkit/views/container_look.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

constexpr int16_t kEmptySize = 16;
constexpr int16_t kParked = 5000; // both coordinates of a hidden child, out of the way
constexpr uint32_t kChildAnchor = 1;

struct Stack {
  ChildSet set; // the head
  bool isRow, packed, outerGaps;
  StackAlign align;
  int16_t spacing;
  StackMargins margins;
  ContainerLook look;
  int16_t naturalWidth, naturalHeight; // as last worked out
};

ViewClass* stackClass;

Stack* StackOf(const View* view) {
  return static_cast<Stack*>(view->classData);
}

int16_t Inset(const Stack* stack) {
  return stack->look.framed ? int16_t(kFrameRoom) : int16_t{0};
}

// ---- Along and across --------------------------------------------------------------------------------------------

int16_t Along(bool isRow, const View* view) {
  return isRow ? view->width : view->height;
}

int16_t Across(bool isRow, const View* view) {
  return isRow ? view->height : view->width;
}

// What a Stack has on one axis: where it begins, how long it is, and its margins ahead and behind.
struct Axis {
  int32_t start, extent, ahead, behind;
};

Axis AxisOf(const View* view, bool horizontal) {
  const StackMargins& m = StackOf(view)->margins;
  return horizontal ? Axis{view->x, view->width, m.left, m.right} : Axis{view->y, view->height, m.top, m.bottom};
}

// ---- Size --------------------------------------------------------------------------------------------------------

uint16_t IncludedCount(const View* view) {
  const ChildSet* set = ChildSetOf(view);
  uint16_t count = 0;
  for (uint16_t i = 0; i < set->children.count; ++i) count += ChildIsIncluded(view, ChildAt(set, i));
  return count;
}

void FindNaturalSize(const View* view) {
  Stack* stack = StackOf(view);
  stack->naturalWidth = stack->naturalHeight = kEmptySize;
  if (IncludedCount(view) == 0) return;
  int32_t along = -stack->spacing, across = 0;
  for (uint16_t i = 0; i < stack->set.children.count; ++i) {
    const View* child = ChildAt(&stack->set, i);
    if (!ChildIsIncluded(view, child)) continue;
    along += Along(stack->isRow, child) + stack->spacing;
    across = std::max<int32_t>(across, Across(stack->isRow, child));
  }
  const StackMargins& m = stack->margins;
  const int32_t frame = 2 * Inset(stack);
  stack->naturalWidth = PinToShort(m.left + m.right + frame + (stack->isRow ? along : across));
  stack->naturalHeight = PinToShort(m.top + m.bottom + frame + (stack->isRow ? across : along));
}

// ---- Arrangement -------------------------------------------------------------------------------------------------

// What is free along the direction, for each gap that shares in it. The margins are part of the room that is shared
// out, the frame is not.
int32_t GapOf(const View* view, const Axis& along) {
  const Stack* stack = StackOf(view);
  if (stack->packed) return 0;
  const int32_t natural = stack->isRow ? stack->naturalWidth : stack->naturalHeight;
  const int32_t free = std::max(0, along.extent - natural + along.ahead + along.behind);
  const int32_t count = IncludedCount(view);
  return free / (stack->outerGaps || count < 2 ? count + 1 : count - 1);
}

int32_t PlaceAcross(const Stack* stack, const Axis& across, int32_t childExtent) {
  const int32_t start = across.start + across.ahead, extent = across.extent - across.ahead - across.behind;
  switch (stack->align) {
  case kAlignStart:
    return start + Inset(stack);
  case kAlignEnd:
    return start + extent - childExtent - Inset(stack);
  default:
    return start + (extent - childExtent) / 2;
  }
}

// Not by ViewMove, which would come back as a change of order.
void PutChild(View* child, int16_t x, int16_t y) {
  if (x != child->x || y != child->y) child->viewClass->setPosition(child, x, y);
}

void Arrange(const View* view) {
  const Stack* stack = StackOf(view);
  const Axis along = AxisOf(view, stack->isRow), across = AxisOf(view, !stack->isRow);
  const int32_t gap = GapOf(view, along);
  int32_t place = along.start + along.ahead + Inset(stack) + (stack->outerGaps ? gap : 0);
  const uint16_t count = stack->set.children.count;
  for (uint16_t i = 0; i < count; ++i) {
    View* child = ChildAt(&stack->set, i);
    if (!ChildIsIncluded(view, child)) {
      PutChild(child, kParked, kParked);
      continue;
    }
    const int32_t extent = Along(stack->isRow, child);
    if (!stack->outerGaps && i == count - 1) place = along.start + along.extent - extent - Inset(stack);
    const int16_t p = PinToShort(place);
    const int16_t q = PinToShort(PlaceAcross(stack, across, Across(stack->isRow, child)));
    PutChild(child, stack->isRow ? p : q, stack->isRow ? q : p);
    place += stack->spacing + extent + gap;
  }
}

void MeasureAndArrange(const View* view) {
  FindNaturalSize(view);
  Arrange(view);
}

// ---- The operations ----------------------------------------------------------------------------------------------

void Init(View* view) {
  auto* stack = static_cast<Stack*>(MemAlloc(sizeof(Stack)));
  *stack = {};
  ChildSetInit(&stack->set, view);
  stack->isRow = stack->outerGaps = true;
  stack->align = kAlignCentre;
  stack->spacing = Scaled(2);
  stack->look = NewContainerLook();
  view->classData = stack;
  ChildSetFollowBounds(&stack->set, stack->look.framed);
}

void Destroy(View* view) {
  ChildSetFree(&StackOf(view)->set);
  MemFree(view->classData);
  view->classData = nullptr;
}

bool GetBackground(const View* view, Colour* out) {
  if (!StackOf(view)->look.filled) return false;
  *out = StackOf(view)->look.background;
  return true;
}

void Draw(View* view) {
  DrawContainerLook(view, StackOf(view)->look);
  ChildSetDraw(&StackOf(view)->set);
}

void SetSize(View* view, int16_t width, int16_t height) {
  Stack* stack = StackOf(view);
  FindNaturalSize(view);
  const int16_t newWidth = width ? width : stack->naturalWidth, newHeight = height ? height : stack->naturalHeight;
  const bool changes = newWidth != view->width || newHeight != view->height;
  if (changes) ViewInvalidate(view);
  view->width = newWidth;
  view->height = newHeight;
  if (changes) ViewInvalidate(view);
  ChildSetFollowBounds(&stack->set, stack->look.framed);
  Arrange(view);
}

void SetPosition(View* view, int16_t x, int16_t y) {
  Stack* stack = StackOf(view);
  ViewInvalidate(view);
  view->x = x;
  view->y = y;
  ViewInvalidate(view);
  ChildSetFollowBounds(&stack->set, stack->look.framed);
  Arrange(view);
}

void AddChild(View* view, View* child) {
  child->anchor = kChildAnchor;
  GrowArrayAdd(&StackOf(view)->set.children, ToListValue(child));
  SetSize(view, view->width, view->height);
}

void RemoveChild(View* view, View* child) {
  ChildSetRemove(&StackOf(view)->set, child);
  MeasureAndArrange(view);
}

void ResizeChild(View* view, View* child, int16_t width, int16_t height) {
  child->viewClass->setSize(child, width, height);
  MeasureAndArrange(view);
}

void MoveChild(View* view, View* child, int16_t x, int16_t y) {
  const Stack* stack = StackOf(view);
  GrowArray* children = &StackOf(view)->set.children;
  const int32_t at = GrowArrayFind(children, ToListValue(child));
  if (at < 0) return;
  const int32_t to = PinValue(0, stack->isRow ? x : y, children->count - 1);
  GrowArrayRemoveAt(children, uint16_t(at));
  GrowArrayInsert(children, uint16_t(to), ToListValue(child));
  Arrange(view);
}

} // namespace

const ViewClass* StackClass() {
  return stackClass;
}

void StackSetUpClass() {
  if (stackClass) return;
  stackClass = ClassNew();
  UseContainerSlots(stackClass);
  stackClass->init = Init;
  stackClass->destroy = Destroy;
  stackClass->getBackground = GetBackground;
  stackClass->draw = Draw;
  stackClass->setSize = SetSize;
  stackClass->setPosition = SetPosition;
  stackClass->addChild = AddChild;
  stackClass->removeChild = RemoveChild;
  stackClass->resizeChild = ResizeChild;
  stackClass->moveChild = MoveChild;
}

// ---- Setters -----------------------------------------------------------------------------------------------------

void StackSetDirection(View* view, bool isRow) {
  StackOf(view)->isRow = isRow;
  MeasureAndArrange(view);
}

void StackSetAlign(View* view, StackAlign align) {
  StackOf(view)->align = align;
  MeasureAndArrange(view);
}

void StackSetFrame(View* view, bool framed) {
  Stack* stack = StackOf(view);
  if (stack->look.framed != framed) ViewInvalidate(view);
  stack->look.framed = framed;
  ChildSetFollowBounds(&stack->set, framed);
  MeasureAndArrange(view);
}

void StackSetSpacing(View* view, int16_t pixels) {
  StackOf(view)->spacing = pixels;
  MeasureAndArrange(view);
}

void StackSetPacked(View* view, bool packed) {
  StackOf(view)->packed = packed;
  MeasureAndArrange(view);
}

void StackSetOuterGaps(View* view, bool outerGaps) {
  StackOf(view)->outerGaps = outerGaps;
  MeasureAndArrange(view);
}

void StackSetMargins(View* view, const StackMargins& margins) {
  StackOf(view)->margins = margins;
}

void StackSetBackground(View* view, const Colour& colour) {
  StackOf(view)->look.background = colour;
  if (StackOf(view)->look.filled) ViewInvalidate(view);
}

void StackSetFilled(View* view, bool filled) {
  if (StackOf(view)->look.filled == filled) return;
  StackOf(view)->look.filled = filled;
  ViewInvalidate(view);
}

// ---- Queries -----------------------------------------------------------------------------------------------------

void StackInnerSize(const View* view, int16_t* width, int16_t* height) {
  const int16_t frame = int16_t(2 * Inset(StackOf(view)));
  if (width) *width = int16_t(view->width - frame);
  if (height) *height = int16_t(view->height - frame);
}

View* StackChildAt(const View* view, uint16_t index) {
  const ChildSet* set = ChildSetOf(view);
  return index < set->children.count ? ChildAt(set, index) : nullptr;
}

uint16_t StackChildCount(const View* view) {
  return ChildSetOf(view)->children.count;
}

} // namespace framereel
