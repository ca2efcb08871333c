// CheckBox: a box with a tick, and a label beside it. A press that goes up over it flips the value.
#pragma once

#include "platform/records/view_record.h"

namespace framereel {

using CheckBoxCallback = void (*)(View* view, bool value);

const ViewClass* CheckBoxClass();
void CheckBoxSetUpClass(); // once, at start-up

void CheckBoxSetLabel(View* view, const char* label); // copied; the size stays
// With `notify` the callback is told of a change.
void CheckBoxSetValue(View* view, bool value, bool notify);
bool CheckBoxValue(const View* view);
void CheckBoxSetCallback(View* view, CheckBoxCallback callback); // null for nothing

} // namespace framereel
