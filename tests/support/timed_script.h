// Scripts by the display's clock.
#pragma once

#include <algorithm>
#include <sstream>
#include <string>

#include "support/script.h"
#include "win32/memory/memory_display.h"

namespace framereel {

// "150 noise 250 m:10:20": at 150 ms the word "noise", and at 250 another one, in which a colon stands for a blank as
// in Script::Schedule. Those of 0 happen at once.
inline void ActAt(Script& script, const std::string& steps) {
  std::istringstream in(steps);
  uint32_t time = 0;
  for (std::string word; in >> time >> word;) {
    std::replace(word.begin(), word.end(), ':', ' ');
    if (time == 0) script.Act(word);
    if (time != 0) MemoryAt(time, [&script, word] { script.Act(word); });
  }
}

} // namespace framereel
