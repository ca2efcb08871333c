// Separator: a line along the middle of its View, across a View that is wider than high, else down.
#pragma once

#include "platform/records/view_record.h"

namespace framereel {

// The kinds by number: 1 and 3 a black line, 2 two with one pixel free between, 4 shadow and below it black, 5 light
// and below it white, 6 shadow, 7 white. Any other is nothing, and 0 by 0 unless it is given a size.
const ViewClass* SeparatorClass();
void SeparatorSetUpClass(); // once, at start-up

void SeparatorSetKind(View* view, uint16_t kind); // 1 at first

} // namespace framereel
