// Files appear whole or not at all, whatever the place and the disk are like.
#include "record/output_file.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "gif/stream_bytes.h"
#include "support/temporary_folder.h"

namespace {

bool diskFails; // at a flush

} // namespace

// Takes the place of the system's.
extern "C" int fsync(int descriptor) {
  if (!diskFails) return int(::syscall(SYS_fsync, descriptor));
  errno = EIO;
  return -1;
}

namespace framereel {
namespace {

namespace fs = std::filesystem;

// An animation of the bytes "GIF", or of more.
GifWriter& Animation(size_t length = 3) {
  static OwnWriter gif;
  StreamClear(gif.ownStream);
  std::string bytes(length, 'x');
  bytes.replace(0, 3, "GIF");
  StreamAppend(gif.ownStream, uint32_t(length), bytes.data());
  return gif;
}

// Finds, opens and saves; "" or the reason against it.
std::string Save(const std::string& name, GifWriter& gif = Animation()) {
  OutputFile output;
  Refusal refusal = {};
  const bool saved =
      OutputFind(output, name.c_str(), refusal) && OutputOpen(output, refusal) && OutputSave(output, gif, refusal);
  OutputDiscard(output);
  return saved ? "" : refusal.text;
}

// The same into the folder, by a name in it; the reason without "cannot write" and the place.
std::string SaveIn(const TemporaryFolder& folder, const std::string& name, GifWriter& gif = Animation()) {
  const std::string reason = Save(folder / name, gif), prefix = "cannot write " + (folder / name) + ": ";
  return reason.find(prefix) == 0 ? reason.substr(prefix.size()) : reason;
}

TEST(OutputFile, AppearsWithTheSaveAndLeavesAnOlderFileUntilThen) {
  for (const std::string older : {"", "older"}) {
    const TemporaryFolder folder;
    const std::string place = folder / "a.gif";
    if (older != "") WriteWholeFile(place, older);
    const size_t entries = folder.EntryCount();
    for (const bool saves : {false, true}) {
      OutputFile output, another;
      Refusal refusal;
      ASSERT_TRUE(OutputFind(output, place.c_str(), refusal));
      EXPECT_EQ(folder.EntryCount(), entries);
      const mode_t mask = ::umask(0026);
      ASSERT_TRUE(OutputOpen(output, refusal));
      ::umask(mask);
      ASSERT_TRUE(OutputFind(another, place.c_str(), refusal) && OutputOpen(another, refusal));
      EXPECT_EQ(folder.EntryCount(), entries + 2) << "it gives way to a temporary file that stands there";
      OutputDiscard(another);
      EXPECT_EQ(ReadWholeFile(place), older);
      EXPECT_TRUE(!saves || OutputSave(output, Animation(), refusal));
      OutputDiscard(output);
      EXPECT_EQ(ReadWholeFile(place), saves ? "GIF;" : older);
      EXPECT_EQ(folder.EntryCount(), saves ? 1 : entries);
    }
    EXPECT_EQ(fs::status(place).permissions(), fs::perms(0640));
  }
}

TEST(OutputFile, KeepsTheOlderFileWhenTheDiskFails) {
  const TemporaryFolder folder;
  WriteWholeFile(folder / "a.gif", "older");
  const auto before = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit;
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit small = {100000, limit.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  EXPECT_EQ(SaveIn(folder, "a.gif", Animation(100001)), "File too large");
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  std::signal(SIGXFSZ, before);
  diskFails = true;
  EXPECT_EQ(SaveIn(folder, "a.gif"), "Input/output error");
  diskFails = false;
  EXPECT_EQ(ReadWholeFile(folder / "a.gif"), "older");
  EXPECT_EQ(folder.EntryCount(), 1u);
}

TEST(OutputFile, FollowsSymbolicLinksToFilesAndToPlacesForFiles) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "far");
  WriteWholeFile(folder / "far/old.gif", "older");
  fs::create_symlink("far/old.gif", folder / "old");
  fs::create_symlink("far/next", folder / "new");
  fs::create_symlink(folder / "far/new.gif", folder / "far/next");
  fs::create_symlink("round", folder / "round");
  for (const char* name : {"old", "new"}) {
    EXPECT_EQ(SaveIn(folder, name), "");
    EXPECT_TRUE(fs::is_symlink(folder / name));
    EXPECT_EQ(ReadWholeFile(folder / "far/" + name + ".gif"), "GIF;");
  }
  EXPECT_EQ(SaveIn(folder, "round"), "Too many levels of symbolic links");
}

TEST(OutputFile, RefusesPlacesWhereNoFileCanBe) {
  const TemporaryFolder folder;
  WriteWholeFile(folder / "file", "");
  const std::string directory = "; FILE names the file in it, too";
  EXPECT_EQ(Save(folder.path), folder.path + " is a directory" + directory);
  EXPECT_EQ(Save(folder / "new/"), (folder / "new/") + " is the name of a directory" + directory);
  EXPECT_EQ(SaveIn(folder, "none/a"), "No such file or directory");
  EXPECT_EQ(SaveIn(folder, "file/a"), "Not a directory");
  for (const size_t length : {size_t{300}, PATH_MAX - folder.path.size() - 1}) {
    EXPECT_EQ(SaveIn(folder, std::string(length, 'n')), "File name too long") << length;
  }
  EXPECT_EQ(folder.EntryCount(), 1u);
  fs::permissions(folder.path, fs::perms(0777));
  WriteWholeFile(folder / "mine", "older");
  fs::permissions(folder / "mine", fs::perms(0444));
  const AsNobody nobody;
  EXPECT_EQ(SaveIn(folder, "mine"), "Permission denied");
  EXPECT_EQ(ReadWholeFile(folder / "mine"), "older");
  EXPECT_EQ(Save("/a.gif"), "cannot write /a.gif: Permission denied");
}

} // namespace
} // namespace framereel
