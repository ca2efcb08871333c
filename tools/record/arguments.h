// The arguments of framereel-record: reading them, and the help. The options stand in one table, option_table.h.
#pragma once

#include <cstdio>

#include "core/refusal.h"
#include "record/options.h"

namespace framereel {

// Reads the arguments behind the program's name, up to a null. The same option twice: the last one holds. kRecord only
// when all that is asked for makes sense together; kRefused leaves the reason. `options` comes in with its defaults.
Request ReadOptions(const char* const* arguments, RecordOptions* options, Refusal& refusal);

// In lines of at most 80 columns.
void WriteHelp(FILE* to);
void WriteVersion(FILE* to);

} // namespace framereel
