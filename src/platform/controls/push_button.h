// The native side of push buttons: a click has the keyboard go back to where input routing expects it.
#pragma once

#include "platform/records/view_record.h"
#include "win32/win32_types.h"

namespace framereel {

// Puts the toolkit's procedure in front of the button's own, which comes out. From then on the class of the View has to
// answer that in nativeProcedure.
void SubclassButton(View* view, WNDPROC* earlier);

} // namespace framereel
