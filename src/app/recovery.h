// What the user has recorded and not saved, when the program has to end without asking: on a signal, with the display
// gone, without memory, at an abort. It is kept as a file of the user's (gif/keep_animation.h), and the next start
// offers it.
#pragma once

#include "app/application_record.h"

namespace framereel {

// Keeps the whole frames, if there are any that have not been saved, and says so on standard error. False when they
// could not be kept. It asks for no memory but what the last bytes of the stream may take.
bool KeepUnsaved(Application& app);

// Asks about each file that was kept: it is saved under a name that the user chooses, or deleted. A cancelled choice
// leaves it for the next start. Within the event loop.
void OfferKept(Application& app);

} // namespace framereel
