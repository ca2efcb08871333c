// Start-up of the portable half of the toolkit.
#pragma once

namespace framereel {

// Runs ahead of everything else that uses temporary blocks or notices. The first call does the work; later ones do
// nothing. Nothing is given back at the end: what stands then ends with the process.
void ToolkitInit();

} // namespace framereel
