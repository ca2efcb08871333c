// The user points at a window: a line of rushing stripes shows which one, and a click takes it.
#pragma once

#include "core/refusal.h"
#include "record/options.h"
#include "record/recording.h"

namespace framereel {

// Waits for the click. Gets the window, down to the parts that a program has made windows of their own, and what is
// seen of it. False with the reason when the user ends the wait, by Esc or as `clock` tells, or when there is no window
// under the click.
bool PickWindow(const RecordingClock& clock, HWND* window, WantedArea* area, Refusal& refusal);

} // namespace framereel
