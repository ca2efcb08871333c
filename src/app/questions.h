// What the program asks and tells its user, each in an alert over the main window. It returns once that is answered.
#pragma once

#include <cstdint>

namespace framereel {

inline constexpr uint16_t kWarningTitle = 60, kProgramTitle = 76; // of AppString

// Whether the answer is Yes; No, too, when all loops end around the question. `picture` is one of the kAlert numbers.
bool AskYesNo(uint16_t title, uint16_t picture, const char* question);
void Tell(uint16_t picture, const char* message);
// That something could not be saved, and the reason.
void TellOfFailedSave(const char* reason);

} // namespace framereel
