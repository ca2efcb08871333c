// Menus while a modal window blocks the program: all but the Edit menu are greyed, which its edit fields still serve.
#pragma once

namespace framereel {

// A blocking modal window has come, or the last one has gone. Menus that come onto the bar meanwhile are greyed too.
void BlockMenus(bool block);

void MenuBlockingStartUp();

} // namespace framereel
