// The splash, which stands while the program comes up, and About, which slides in from the left.
#pragma once

#include "app/application_record.h"

namespace framereel {

// In the middle of the usable screen, a third of the free height down, at once. The panel can be used meanwhile.
void ShowSplash(Application& app);
// A moment later; the signature is a timer's, for the end of the panel's slide.
void CloseSplashSoon(void* application);

// It tells which name goes into every file. A key or a press closes it, also on its way. One at a time: a second call
// does nothing.
void ShowAbout(Application& app);

// Nothing of either is left pending; the pictures are freed.
void PictureWindowsShutDown(Application& app);

} // namespace framereel
