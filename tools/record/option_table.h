// The options of framereel-record, a row each: name, value, range, help, and what it sets.
#pragma once

#include <span>

#include "record/options.h"

namespace framereel {

struct Option {
  const char* name;
  const char* value; // what the help calls the value; null: it takes none
  const char* takes; // which values are right, for refusals
  const char* help;
  bool (*take)(RecordOptions& options, const char* value); // false: not a right value. Null: `request` ends the reading
  Request request = Request::kRecord;
};

// In the order of the help.
std::span<const Option> AllOptions();

// The one of that name, of `length` bytes; null when there is none.
const Option* FindOption(const char* name, size_t length);

// The name that somebody who wrote `name` most likely meant; null when none is near.
const char* NearestOption(const char* name, size_t length);

} // namespace framereel
