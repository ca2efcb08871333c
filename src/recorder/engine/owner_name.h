// Who makes an animation, for the comment in its file.
#pragma once

namespace framereel {

// The user's name, by the system's list of users or, without an entry there, by USER; "unknown" without either.
const char* OwnerName();

} // namespace framereel
