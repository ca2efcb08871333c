// Start-up of the toolkit: what it does for the platform floor, and its classes.
#pragma once

namespace framereel {

// Hands the toolkit's operations down to the platform floor; runs ahead of PlatformInit, which then has all classes
// set up at its time.
void ViewsStartUp();

} // namespace framereel
