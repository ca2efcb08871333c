// The moving line round the area: stripes of inverted pixels, drawn on the screen itself over every program's windows.
// Drawn a second time it is gone, so nothing of what lies under it is kept.
//
// Other programs that paint under it damage it unnoticed; RefreshScreen clears what that leaves behind.
#pragma once

#include "area/area_record.h"

namespace framereel {

// What the line is drawn with; once, ahead of all else. To draw it takes no more memory from then on.
void AntsInit(Ants& ants);

// Count the shows up and down; the line is up while there are more shows than hides. A hide may come ahead of its show.
void AntsShow(AreaState& area);
void AntsHide(AreaState& area);

// Whether the line stands on the screen now: shown, and not in a pause.
bool AntsAreUp(const AreaState& area);
// Takes the line off, or draws it: on both sides of a change of the area while it is up.
void AntsToggle(const AreaState& area);
// The screen is about to be painted anew: the line goes, and is drawn afresh in 1.2 s if it is shown then.
void AntsPause(AreaState& area);
// Ends a pause: the line is drawn at once, if it is shown.
void AntsResume(AreaState& area);

// The stripes of a phase, 0 to 7, along the inside of any rectangle on the screen: draws them, or takes them off.
void AntsDraw(const AreaState& area, const Rect& frame, uint16_t phase);
// Moves stripes that are drawn from that phase to the next.
void AntsStep(const AreaState& area, const Rect& frame, uint16_t phase);

// Asks every program to paint its windows anew, which clears stray inversions. A line that is shown pauses meanwhile.
void RefreshScreen(AreaState& area);

} // namespace framereel
