// What the screen was like when windows last looked, and what they are told when it is another. Internal to the layer.
#pragma once

namespace framereel {

void NoteScreen();      // before the first window stands on it
void OnScreenChanged(); // new pixels for all windows where they need them, and messages to the top-level ones

} // namespace framereel
