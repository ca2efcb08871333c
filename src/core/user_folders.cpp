// The paths, and the folders on their way.
#include "core/user_folders.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "win32/win32_files.h"

namespace framereel {

const char* AbsolutePathIn(const char* variable) {
  const char* value = ::getenv(variable);
  return value && *value == '/' ? value : nullptr;
}

int FindUserFolder(const UserFolder& folder, char (&path)[PATH_MAX]) {
  const char *place = AbsolutePathIn(folder.variable), *home = AbsolutePathIn("HOME");
  if (!place && !home) return 0;
  const int length = place ? ::snprintf(path, sizeof path, "%s/framereel/", place)
                           : ::snprintf(path, sizeof path, "%s/%s/framereel/", home, folder.belowHome);
  return length < PATH_MAX ? length : 0;
}

int MakeUserFolder(const UserFolder& folder, char (&path)[PATH_MAX]) {
  const int length = FindUserFolder(folder, path);
  if (length == 0) return 0;
  char* end = path + (AbsolutePathIn(folder.variable) ? 0 : ::strlen(AbsolutePathIn("HOME")));
  while ((end = ::strchr(end + 1, '/'))) {
    *end = 0;
    ::CreateDirectoryA(path, nullptr);
    *end = '/';
  }
  return length;
}

} // namespace framereel
