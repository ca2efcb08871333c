// One line of text, or a divider: what a Label shows and a Popup lists.
#pragma once

#include <cstdint>

#include "core/geometry.h"
#include "platform/records/view_record.h"

namespace framereel {

struct TextItem {
  char* text;   // owned; null is a divider
  int16_t x, y; // of the text inside its cell, the baseline's y; from the last measuring
};

// A copy of the text, or a divider for null.
TextItem NewTextItem(const char* text);
void FreeTextItem(TextItem* item);
// With the View's font. A divider is 0 wide.
void MeasureTextItem(View* view, TextItem* item, int16_t* width, int16_t* height);
// In the cell, on the current Port: grey when the View is disabled, white when inverted. A divider is a line across
// `clip`.
void DrawTextItem(View* view, const TextItem& item, const Rect& cell, const Rect& clip, bool invert);

} // namespace framereel
