// The panel: one column of controls that fills the main window, the whole of what the user works with.
//
// Its buttons call the recorder and the area, its boxes and popups write the options and have the settings saved at
// once, its labels show frames and area. What stands in it is listed in panel.cpp from top to bottom.
#pragma once

#include "app/application_record.h"

namespace framereel {

// Makes the window and its controls with the options as they are, sizes the main window to them, and has it slide in to
// the top right corner of the usable screen. Once; recorder, area and settings stand already.
void BuildPanel(Application& app);
// The main window's client area becomes as large as the controls need.
void PanelFit(Panel& panel);

// The panel as the recorder and the area know it.
RecorderPanel PanelForRecorder(Application& app);
AreaPanel PanelForArea(Application& app);

} // namespace framereel
