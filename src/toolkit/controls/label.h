// Label: one line of text.
//
// A new text keeps the Label's size: its owner fits it.
#pragma once

#include "platform/records/view_record.h"

namespace framereel {

const ViewClass* LabelClass();
void LabelSetUpClass(); // once, at start-up

// Copies the text; null shows a divider.
void LabelSetValue(View* view, const char* text);
// A line round the bounds, 2 pixels away from the text.
void LabelSetFramed(View* view, bool framed);

} // namespace framereel
