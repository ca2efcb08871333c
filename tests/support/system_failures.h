// Calls of the system on a save's way to the disk, refused where a test wants it: open, write, fsync, close, chown,
// lchown, chmod, linkat and rename, whoever makes them.
#pragma once

#include <string>

namespace framereel {

// Of these calls to come the `which`th fails with that errno, from 0 on; none below 0.
void FailSystemCall(int which, int error);
// The one that has failed since; "" while it has not come to that.
std::string FailedSystemCall();

// From now on as on a file system that has no files without names, or no longer so.
void RefuseUnnamedFiles(bool refuse);

} // namespace framereel
