// How the parts of the application are put together and taken apart. The record of them stands in application_record.h,
// what the user works with in panel.h; the windows are the platform floor's.
#pragma once

#include "app/application_record.h"

namespace framereel {

// Between PlatformInit and the event loop: from the engine and the settings to the panel on its way in. Settings come
// ahead of the panel, whose controls are made with their values.
void ApplicationStart(Application& app);
// Behind the event loop. Nothing of what is under way is left on the screen or pending; the platform floor takes the
// windows down.
void ApplicationEnd(Application& app);

} // namespace framereel
