// What the toolkit has handed down, and the search that input and painting share.
#include "platform/records/view_record.h"

#include "platform/records/window_records.h"

namespace framereel {
namespace {

constexpr ViewCalls kNoToolkit = {
    [] {}, [](View*) {}, [](View*) {}, [](View*) {}, [](const View*, int16_t, int16_t) { return false; },
};

const ViewCalls* viewCalls = &kNoToolkit;

} // namespace

void HandDownViewCalls(const ViewCalls* calls) {
  viewCalls = calls ? calls : &kNoToolkit;
}

const ViewCalls& TheViewCalls() {
  return *viewCalls;
}

View* HitTestWindow(const ChildWindow* window, int16_t x, int16_t y) {
  for (uint16_t i = window->views.count; i > 0; --i) {
    auto* view = FromListValue<View>(window->views.entries[i - 1]);
    if (viewCalls->hitTest(view, x, y)) return view;
  }
  return nullptr;
}

} // namespace framereel
