// Why something is refused or has failed, as one line for the user. Whoever notices writes it; who was asked shows it.
#pragma once

#include <climits>

namespace framereel {

struct Refusal {
  char text[2 * PATH_MAX + 512]; // room for two of the longest paths that the system takes, and a sentence
};

// Writes the reason, printf-like, and answers false. Control characters, which file names and arguments may hold, are
// written as C writes them, such as \n or \x1b, so that it stays one line and does nothing to a terminal; what does not
// fit is cut. The arguments may be texts of the refusal itself.
bool Refuse(Refusal& refusal, const char* format, ...) __attribute__((format(printf, 2, 3)));

} // namespace framereel
