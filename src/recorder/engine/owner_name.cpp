// By the system's list of users, then by the environment.
#include "recorder/engine/owner_name.h"

#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

namespace framereel {

const char* OwnerName() {
  const passwd* user = ::getpwuid(::getuid());
  if (user && user->pw_name && *user->pw_name) return user->pw_name;
  const char* name = ::getenv("USER");
  return name && *name ? name : "unknown";
}

} // namespace framereel
