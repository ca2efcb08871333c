// The default operations of a class.
#include "toolkit/views/view_class.h"
#include "core/memory.h"
#include "platform/input/keys.h"
#include "toolkit/views/view.h"

namespace framereel {
namespace {

constexpr int16_t kSmallest = 16; // stands in for a size of 0

void Nothing(View*) {}
void NothingWithDeep(View*, bool) {}
void NothingWithButton(View*, uint16_t, int16_t, int16_t) {}
void NothingWithPlace(View*, int16_t, int16_t) {}
void NothingWithChild(View*, View*) {}
void NothingWithChildPlace(View*, View*, int16_t, int16_t) {}

void SetDrawing(View* view, DrawState* state) {
  view->drawing = state;
  ViewInvalidate(view);
}

bool NoBackground(const View*, Colour*) {
  return false;
}

void PassKeyDown(View*, const KeyEvent& event, int16_t x, int16_t y) {
  SendKeyDown(false, event, x, y);
}

void PassKeyUp(View*, const KeyEvent& event, int16_t x, int16_t y) {
  SendKeyUp(false, event, x, y);
}

void SetSize(View* view, int16_t width, int16_t height) {
  ViewInvalidate(view);
  view->width = width ? width : kSmallest;
  view->height = height ? height : kSmallest;
  ViewInvalidate(view);
}

void SetPosition(View* view, int16_t x, int16_t y) {
  ViewInvalidate(view);
  view->x = x;
  view->y = y;
  ViewInvalidate(view);
}

constexpr ViewClass kDefaults = {
    .init = Nothing,
    .destroy = Nothing,
    .setDrawing = SetDrawing,
    .getBackground = NoBackground,
    .hitTest = ViewHitTest,
    .draw = Nothing,
    .mouseEntered = Nothing,
    .mouseLeft = Nothing,
    .mouseDown = NothingWithButton,
    .mouseMoved = NothingWithPlace,
    .mouseUp = NothingWithButton,
    .keyDown = PassKeyDown,
    .keyUp = PassKeyUp,
    .setSize = SetSize,
    .setPosition = SetPosition,
    .childFullyShown = [](View*, View*) { return false; },
    .hidden = NothingWithDeep,
    .shown = NothingWithDeep,
    .enabled = Nothing,
    .disabled = Nothing,
    .addChild = NothingWithChild,
    .removeChild = NothingWithChild,
    .resizeChild = NothingWithChildPlace,
    .moveChild = NothingWithChildPlace,
    .nativeNotice = [](View*, uint16_t) {},
    .scrollNotice = [](View*, uint16_t, int16_t) {},
    .nativeHandle = [](const View*) { return HWND{}; },
    .nativeProcedure = nullptr,
};

} // namespace

ViewClass* ClassNew() {
  auto* viewClass = static_cast<ViewClass*>(MemAlloc(sizeof(ViewClass)));
  *viewClass = kDefaults;
  return viewClass;
}

} // namespace framereel
