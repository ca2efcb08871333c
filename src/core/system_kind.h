// What kind of system the program runs on.
#pragma once

namespace framereel {

// The newer kind: files have long names, and there may be a task bar. On others a file's name has 8 bytes.
bool HasNewShell();

} // namespace framereel
