// A folder of a test's own, gone with everything in it at the end.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

namespace framereel {

struct TemporaryFolder {
  std::string path;

  TemporaryFolder() {
    std::string pattern = testing::TempDir() + "framereel-XXXXXX";
    if (::mkdtemp(pattern.data())) path = pattern;
    EXPECT_NE(path, "");
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    if (!path.empty()) std::filesystem::remove_all(path, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string operator/(const std::string& name) const { return path + "/" + name; }

  size_t EntryCount() const {
    const std::filesystem::directory_iterator entries(path);
    return static_cast<size_t>(std::distance(begin(entries), end(entries)));
  }
};

// It is the process's current directory as long as it lives, and the folder of the user's configurations and data from
// then on, so that no test finds or leaves anything among those of the user who runs it.
struct WorkingFolder : TemporaryFolder {
  std::filesystem::path before = std::filesystem::current_path();
  const std::string usersSettings = path + "/framereel/Settings.prf";

  WorkingFolder() {
    std::filesystem::current_path(path);
    for (const char* place : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) ::setenv(place, path.c_str(), 1);
  }
  ~WorkingFolder() { std::filesystem::current_path(before); }
};

// As long as this lives the folder is the user's home, with his folders for data and for temporary files: nothing of
// his own is found.
struct HomeIn {
  const std::string before = testing::TempDir();

  explicit HomeIn(const TemporaryFolder& folder) {
    ::setenv("HOME", folder.path.c_str(), 1);
    ::setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1);
    ::setenv("TMPDIR", folder.path.c_str(), 1);
  }
  ~HomeIn() { ::setenv("TMPDIR", before.c_str(), 1); } // the others are set where they matter
  HomeIn(const HomeIn&) = delete;
};

// Nobody's rights, when the tests run as root, whom nothing is forbidden.
struct AsNobody {
  const bool root = ::geteuid() == 0;
  AsNobody() { EXPECT_TRUE(!root || ::seteuid(65534) == 0); }
  ~AsNobody() { EXPECT_TRUE(!root || ::seteuid(0) == 0); }
  AsNobody(const AsNobody&) = delete;
};

// "" for a file that does not exist, too.
inline std::string ReadWholeFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void WriteWholeFile(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

} // namespace framereel
