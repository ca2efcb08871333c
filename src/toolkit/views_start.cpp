// The toolkit's start: the table of its classes, each set up once.
#include "toolkit/views_start.h"

#include "platform/records/view_record.h"
#include "toolkit/controls/check_box.h"
#include "toolkit/controls/edit_field.h"
#include "toolkit/controls/label.h"
#include "toolkit/controls/picture_view.h"
#include "toolkit/controls/popup.h"
#include "toolkit/controls/push_button.h"
#include "toolkit/controls/separator.h"
#include "toolkit/controls/text_pane.h"
#include "toolkit/views/box.h"
#include "toolkit/views/stack.h"
#include "toolkit/views/view.h"

namespace framereel {
namespace {

// In the order in which later classes may build on earlier ones.
void SetUpClasses() {
  SeparatorSetUpClass();
  PushButtonSetUpClass();
  EditFieldSetUpClass();
  CheckBoxSetUpClass();
  PopupSetUpClass();
  LabelSetUpClass();
  TextPaneSetUpClass();
  PictureViewSetUpClass();
  StackSetUpClass();
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
