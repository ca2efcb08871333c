// The native side of edit fields: which messages reach the control, and what the keys do.
#pragma once

#include "platform/controls/edit_session.h"

namespace framereel {

// Puts the toolkit's procedure in front of the control's own. The View's class data is an EditField whose `control` is
// set; its `procedure` gets the control's own.
void SubclassEditField(View* view);

} // namespace framereel
