// Separator: its thickness and its lines, by kind.
#include "toolkit/controls/separator.h"

#include <iterator>

#include "core/memory.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

struct Separator {
  uint16_t kind;
};

constexpr int16_t kThickness[] = {0, 3, 5, 1, 2, 2, 1, 1}; // by kind, in thin lines

ViewClass* separatorClass;

uint16_t KindOf(const View* view) {
  return static_cast<Separator*>(view->classData)->kind;
}

void SetSize(View* view, int16_t width, int16_t height) {
  const uint16_t kind = KindOf(view);
  const auto thickness = int16_t(kind < std::size(kThickness) ? kThickness[kind] * kThinLine : 0);
  ViewInvalidate(view);
  view->width = width ? width : thickness;
  view->height = height ? height : thickness;
  ViewInvalidate(view);
}

void Init(View* view) {
  auto* separator = static_cast<Separator*>(MemAlloc(sizeof(Separator)));
  separator->kind = 1;
  view->classData = separator;
  SetSize(view, 0, 0);
}

void Destroy(View* view) {
  MemFree(view->classData);
  view->classData = nullptr;
}

// A line `across` lines from the middle, a pixel short of both ends.
void DrawOneLine(const View* view, int16_t across) {
  const int line = kThinLine;
  if (view->width > view->height) {
    const auto y = int16_t(view->y + (view->height - line) / 2 + across * line);
    DrawHLine(int16_t(view->x + 1), y, int16_t(view->x + view->width - 2));
  } else {
    const auto x = int16_t(view->x + (view->width - line) / 2 + across * line);
    DrawVLine(x, int16_t(view->y + 1), int16_t(view->y + view->height - 2));
  }
}

void DrawColoured(const View* view, int16_t across, const Colour& colour) {
  UseDrawState(DrawStateFill());
  SetForeColour(colour);
  DrawOneLine(view, across);
}

void Draw(View* view) {
  const Colour black = PrimaryColour(0), white = PrimaryColour(7);
  switch (KindOf(view)) {
  case 1:
  case 3:
    return DrawOneLine(view, 0);
  case 2:
    DrawOneLine(view, -1);
    return DrawOneLine(view, 1);
  case 4:
    DrawColoured(view, 0, ColourShadow());
    return DrawColoured(view, 1, black);
  case 5:
    DrawColoured(view, 0, ColourLight());
    return DrawColoured(view, 1, white);
  case 6:
    return DrawColoured(view, 0, TheDisplayCaps().screenHasColour ? ColourShadow() : white);
  case 7:
    return DrawColoured(view, 0, white);
  default:
    return;
  }
}

} // namespace

const ViewClass* SeparatorClass() {
  return separatorClass;
}

void SeparatorSetUpClass() {
  if (separatorClass) return;
  separatorClass = ClassNew();
  separatorClass->init = Init;
  separatorClass->destroy = Destroy;
  separatorClass->draw = Draw;
  separatorClass->setSize = SetSize;
}

void SeparatorSetKind(View* view, uint16_t kind) {
  static_cast<Separator*>(view->classData)->kind = kind;
  ViewInvalidate(view);
}

} // namespace framereel
