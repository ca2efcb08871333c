// The main panel: the one window that the user works with. It fills the main window, which frames it.
#pragma once

namespace framereel {

struct ChildWindow;

// Makes the panel in the main window, and sends that on its way in from the right edge of the screen (slide_frame.h).
void BuildPanel();
// Sizes the panel and with it the main window, whose corner stays.
void PanelFit();

ChildWindow* PanelWindow(); // null before BuildPanel

} // namespace framereel
