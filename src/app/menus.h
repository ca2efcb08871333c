// The menu bar: the item About in the system menu, the menus File and Edit.
#pragma once

#include "app/application_record.h"

namespace framereel {

// Makes it and gives it to the main window. The panel has no text field, so Cut, Copy and Paste stay grey.
void BuildMenus(Application& app);

} // namespace framereel
