// Bringing what was drawn in windows to the display. Internal to the layer.
#pragma once

namespace framereel {

void PresentAll();    // presenter.h tells when
void PresentIfLate(); // when what was drawn has waited for long

} // namespace framereel
