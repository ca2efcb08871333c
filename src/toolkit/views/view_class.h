// The classes of Views: tables of operations, made by hand at start-up. The record stands in
// platform/records/view_record.h.
//
// A class is made with ClassNew, which fills in the defaults, and by replacing some of them. There is no other
// inheritance.
#pragma once

#include "platform/records/view_record.h"

namespace framereel {

// A table with the defaults, good for the process.
ViewClass* ClassNew();

} // namespace framereel
