// Memory that has ended, for whoever notices it otherwise than by `new`: callers of libraries, and of the system.
#pragma once

namespace framereel {

// Does what a `new` does that has nothing to give: the process's new-handler ends it in order. Without one it aborts.
[[noreturn]] void EndWithoutMemory();

} // namespace framereel
