// PushButton: a button of the platform's, which it draws itself. A click calls the callback.
#pragma once

#include "platform/records/view_record.h"

namespace framereel {

using PushButtonCallback = void (*)(View* view);

const ViewClass* PushButtonClass();
void PushButtonSetUpClass(); // once, at start-up

void PushButtonSetTitle(View* view, const char* title); // copied; the size stays
// With a thicker edge: the one that Return presses.
void PushButtonSetDefault(View* view, bool isDefault);
void PushButtonSetCallback(View* view, PushButtonCallback callback); // null for nothing
// As a click does, if it is enabled: for keys that stand for it.
void PushButtonPress(View* view);

} // namespace framereel
