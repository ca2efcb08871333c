// What the screen was like when windows last looked, and what they are told when it is another. Internal to the layer.
#pragma once

namespace framereel {

void NoteScreen(); // before the first window stands on it
// New pixels for all windows where they need them, messages to the top-level ones, and back to a monitor with those
// whose own has gone.
void OnScreenChanged();

} // namespace framereel
