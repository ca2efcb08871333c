// Why something is refused or has failed, as one line for the user. Whoever notices writes it; who was asked shows it.
#pragma once

#include <climits>

namespace framereel {

struct Refusal {
  char text[2 * PATH_MAX + 512]; // room for two of the longest paths that the system takes, and a sentence
};

// Writes the reason, printf-like, and answers false. Control characters, which file names and arguments may hold, are
// written as "?", so that it stays one line; what does not fit is cut.
bool Refuse(Refusal& refusal, const char* format, ...) __attribute__((format(printf, 2, 3)));

} // namespace framereel
