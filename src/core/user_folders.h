// The program's folders among the user's files, by the XDG Base Directory Specification 0.8.
#pragma once

#include <climits>

namespace framereel {

// Where such files belong: in the folder that the variable holds, or else in one below the user's home.
struct UserFolder {
  const char* variable;
  const char* belowHome;
};

inline constexpr UserFolder kDataFolder = {"XDG_DATA_HOME", ".local/share"};
inline constexpr UserFolder kConfigFolder = {"XDG_CONFIG_HOME", ".config"};

// A variable that holds an absolute path; null for others, which are to be ignored.
const char* AbsolutePathIn(const char* variable);

// The path of the program's own folder there, which ends in a "/". Answers its length; 0, with the path undefined, when
// the user has no such place or the path is too long.
int FindUserFolder(const UserFolder& folder, char (&path)[PATH_MAX]);
// The same, and makes the folder with those above it as far as they do not exist; but a user without a home gets none.
// Whether that worked shows where a file is made in it.
int MakeUserFolder(const UserFolder& folder, char (&path)[PATH_MAX]);

} // namespace framereel
