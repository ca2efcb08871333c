// The display's short sound.
#pragma once

namespace framereel {

void Beep();

} // namespace framereel
