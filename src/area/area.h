// The life of the area's record, and what concerns all that hangs on it: the line, the selection, the read-outs.
#pragma once

#include "area/area_record.h"

namespace framereel {

// Sets the default area. The recorder stands already, with its options, and lives as long; so does the main window.
void AreaInit(AreaState& area, RecorderState* recorder);
// The panel stands now; its window's mouse and key methods, and its userData, become those of the selection.
void AreaTakePanel(AreaState& area, const AreaPanel& panel);
// From here on the line can be shown, the read-outs are kept, and Shift is looked at. Once, behind AreaTakePanel.
void AreaDisplayInit(AreaState& area);
// Ends what is under way and takes the line off the screen: no timer of the area is pending afterwards. A selection
// that is cut short keeps its area and saves no settings. The windows still stand; between events, not in one.
void AreaShutDown(AreaState& area);

// Aligns the area to the recording size once more, and moves the line along if it is up.
void AreaRecompute(AreaState& area);

} // namespace framereel
