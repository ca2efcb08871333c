// TextPane: text that is wrapped by words, with the commands of text/text_layout.h.
//
// A new text keeps the size: its owner fits the pane, or resizes it with a height of 0 to wrap it to a width.
#pragma once

#include "platform/records/view_record.h"

namespace framereel {

const ViewClass* TextPaneClass();
void TextPaneSetUpClass(); // once, at start-up

void TextPaneSetText(View* view, const char* text); // copied
const char* TextPaneText(const View* view);         // the pane's own
// A line round the bounds, 2 pixels away from the text; there at first.
void TextPaneSetFramed(View* view, bool framed);

} // namespace framereel
