// From the rectangle that the user asks for to the one that can be recorded on this screen.
#pragma once

#include "core/geometry.h"
#include "core/refusal.h"
#include "record/options.h"

namespace framereel {

// Cuts the wanted area to a screen of that many pixels and fits it to the recording size. `*cut` gets true when part of
// it lay off the screen. False with the reason when nothing is left.
bool ChooseCaptureArea(const RecordOptions& options, int16_t screenWidth, int16_t screenHeight, Rect* area, bool* cut,
                       Refusal& refusal);

} // namespace framereel
