// The record that is handed down, and the order in which the classes are set up.
#include "toolkit/views_start.h"

#include "platform/records/view_record.h"
#include "toolkit/box.h"
#include "toolkit/view.h"

namespace framereel {
namespace {

// In the order in which later classes may build on earlier ones.
void SetUpClasses() {
  BoxSetUpClass();
}

constexpr ViewCalls kCalls = {
    .setUpClasses = SetUpClasses,
    .makeCurrent = ViewMakeCurrent,
    .draw = ViewDraw,
    .destroy = ViewDestroy,
    .hitTest = ViewHitTest,
};

} // namespace

void ViewsStartUp() {
  HandDownViewCalls(&kCalls);
}

} // namespace framereel
