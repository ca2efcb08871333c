// The moving line round the area: stripes of inverted pixels, drawn on the screen itself over every program's windows.
// Drawn a second time it is gone, so nothing of what lies under it is kept.
//
// Whatever makes the screen paint anew wipes it without a word. Those who cause that call AntsPause.
#pragma once

#include "area/area.h"

namespace framereel {

// Count the shows up and down; the line is up while there are more shows than hides.
void AntsShow(AreaState& area);
void AntsHide(AreaState& area);

// Takes the drawn line off, or draws it; around every change of the area while it is up.
void AntsToggle(AreaState& area);
// The screen is painting itself anew: the line is drawn afresh in 1.2 s, and counts as gone until then.
void AntsPause(AreaState& area);

// Asks every program to paint its windows anew, which clears stray inversions.
void RefreshScreen(AreaState& area);

} // namespace framereel
