// The program's command line. There is nothing to say on it, but the questions that every program answers are answered.
#pragma once

namespace framereel {

// `arguments` are those behind the program's name, with a null at their end. True when that was all that was asked for,
// or was asked wrongly: the process ends with *status then.
bool AnswerCommandLine(const char* const* arguments, int* status);

} // namespace framereel
