// Start-up and teardown of the floors below the engine, in their order.
#pragma once

namespace framereel {

// Toolkit core, contexts, drawing, display facts. False when there is no display, and then nothing is left behind.
bool EngineStartUp();
void EngineShutDown();

} // namespace framereel
