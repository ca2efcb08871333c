// All classes of Views, and what the toolkit hands down to the platform floor.
#pragma once

namespace framereel {

// Hands the toolkit's operations down; runs ahead of PlatformInit, which then has all classes set up at its time.
void ViewsStartUp();

} // namespace framereel
