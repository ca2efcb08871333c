// Files appear whole or not at all, whatever the place and the disk are like.
#include "record/output_file.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "gif/own_writer.h"
#include "support/temporary_folder.h"

namespace framereel {
namespace {

// An animation of the bytes "GIF", or of more.
GifWriter& Animation(size_t length = 3) {
  static OwnWriter gif;
  StreamClear(gif.ownStream);
  std::string bytes(length, 'x');
  bytes.replace(0, 3, "GIF");
  StreamAppend(gif.ownStream, static_cast<uint32_t>(length), bytes.data());
  return gif;
}

constexpr const char* kSaved = "GIF;";

// Finds, opens and saves; "" or the reason against it.
std::string Save(const std::string& name, GifWriter& gif = Animation()) {
  OutputFile output;
  Refusal refusal = {};
  const bool saved =
      OutputFind(output, name.c_str(), refusal) && OutputOpen(output, refusal) && OutputSave(output, gif, refusal);
  OutputDiscard(output);
  return saved ? "" : refusal.text;
}

// Puts a descriptor in the place of standard output for a while.
struct StandardOutputIs {
  const int kept = ::dup(STDOUT_FILENO);
  explicit StandardOutputIs(int descriptor) { ::dup2(descriptor, STDOUT_FILENO); }
  ~StandardOutputIs() {
    ::dup2(kept, STDOUT_FILENO);
    ::close(kept);
  }
};

TEST(OutputFile, AppearsWithTheSaveAndLeavesAnOlderFileUntilThen) {
  for (const std::string older : {"", "older"}) {
    const TemporaryFolder folder;
    const std::string place = folder / "a.gif";
    if (older != "") WriteWholeFile(place, older);
    const size_t entries = folder.EntryCount();
    for (const bool saves : {false, true}) {
      OutputFile output;
      Refusal refusal;
      ASSERT_TRUE(OutputFind(output, place.c_str(), refusal));
      EXPECT_EQ(folder.EntryCount(), entries);
      const mode_t mask = ::umask(0026);
      ASSERT_TRUE(OutputOpen(output, refusal));
      ::umask(mask);
      EXPECT_EQ(folder.EntryCount(), entries + 1);
      EXPECT_EQ(ReadWholeFile(place), older);
      EXPECT_TRUE(!saves || OutputSave(output, Animation(), refusal));
      OutputDiscard(output);
      EXPECT_EQ(ReadWholeFile(place), saves ? kSaved : older);
      EXPECT_EQ(folder.EntryCount(), saves ? 1 : entries);
    }
    EXPECT_EQ(std::filesystem::status(place).permissions(), std::filesystem::perms(0640));
  }
}

TEST(OutputFile, GivesWayToATemporaryFileThatStandsThere) {
  const TemporaryFolder folder;
  OutputFile first, second;
  Refusal refusal;
  ASSERT_TRUE(OutputFind(first, (folder / "a.gif").c_str(), refusal) && OutputOpen(first, refusal));
  ASSERT_TRUE(OutputFind(second, (folder / "b.gif").c_str(), refusal) && OutputOpen(second, refusal));
  EXPECT_STRNE(first.temporary, second.temporary);
  OutputDiscard(first);
  EXPECT_TRUE(OutputSave(second, Animation(), refusal));
  EXPECT_EQ(ReadWholeFile(folder / "b.gif"), kSaved);
  EXPECT_EQ(folder.EntryCount(), 1u);
}

TEST(OutputFile, KeepsTheOlderFileWhenTheDiskIsFull) {
  const TemporaryFolder folder;
  const std::string place = folder / "a.gif";
  WriteWholeFile(place, "older");
  const auto before = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit;
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit small = {100000, limit.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  EXPECT_EQ(Save(place, Animation(100001)), "cannot write " + place + ": File too large");
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  std::signal(SIGXFSZ, before);
  EXPECT_EQ(ReadWholeFile(place), "older");
  EXPECT_EQ(folder.EntryCount(), 1u);
}

TEST(OutputFile, FollowsSymbolicLinksToFilesAndToPlacesForFiles) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "far");
  WriteWholeFile(folder / "far/old.gif", "older");
  std::filesystem::create_symlink("far/old.gif", folder / "old");
  std::filesystem::create_symlink("far/next", folder / "new");
  std::filesystem::create_symlink(folder / "far/new.gif", folder / "far/next");

  EXPECT_EQ(Save(folder / "old"), "");
  EXPECT_EQ(Save(folder / "new"), "");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "old"));
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "new"));
  EXPECT_EQ(ReadWholeFile(folder / "far/old.gif"), kSaved);
  EXPECT_EQ(ReadWholeFile(folder / "far/new.gif"), kSaved);

  std::filesystem::create_symlink("round", folder / "round");
  EXPECT_EQ(Save(folder / "round"), "cannot write " + (folder / "round") + ": Too many levels of symbolic links");
}

TEST(OutputFile, WritesDirectlyToWhatCannotBeReplaced) {
  EXPECT_EQ(Save("/dev/null"), "");
  EXPECT_EQ(Save("/dev/full"), "cannot write /dev/full: No space left on device");
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));

  const TemporaryFolder folder;
  const std::string fifo = folder / "fifo";
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  const int reader = ::open(fifo.c_str(), O_RDONLY | O_NONBLOCK);
  EXPECT_EQ(Save(fifo), "");
  char bytes[16] = {};
  EXPECT_EQ(::read(reader, bytes, sizeof bytes), 4);
  EXPECT_STREQ(bytes, kSaved);
  EXPECT_EQ(::read(reader, bytes, sizeof bytes), 0);
  ::close(reader);
  EXPECT_EQ(folder.EntryCount(), 1u);
}

TEST(OutputFile, RefusesPlacesWhereNoFileCanBe) {
  const TemporaryFolder folder;
  WriteWholeFile(folder / "file", "");
  EXPECT_EQ(Save(folder.path), folder.path + " is a directory; FILE names the file in it, too");
  EXPECT_EQ(Save(folder / "new/"), (folder / "new/") + " is the name of a directory; FILE names the file in it, too");
  const std::pair<std::string, const char*> cases[] = {{"none/a", "No such file or directory"},
                                                       {"file/a", "Not a directory"},
                                                       {std::string(300, 'n'), "File name too long"}};
  for (const auto& [name, why] : cases) EXPECT_EQ(Save(folder / name), "cannot write " + (folder / name) + ": " + why);
  EXPECT_NE(Save(std::string(5000, 'p')), "");
  EXPECT_EQ(folder.EntryCount(), 1u);
}

TEST(OutputFile, RefusesProtectedFoldersAndFiles) {
  const TemporaryFolder folder;
  std::filesystem::permissions(folder.path, std::filesystem::perms(0777));
  WriteWholeFile(folder / "mine", "older");
  std::filesystem::permissions(folder / "mine", std::filesystem::perms(0444));
  const AsNobody nobody;
  EXPECT_EQ(Save(folder / "mine"), "cannot write " + (folder / "mine") + ": Permission denied");
  EXPECT_EQ(ReadWholeFile(folder / "mine"), "older");
  EXPECT_EQ(Save("/a.gif"), "cannot write /a.gif: Permission denied");
}

TEST(OutputFile, IsStandardOutputOnlyWhereThatCanTakeIt) {
  int pipe[2], master, terminal;
  ASSERT_EQ(::pipe(pipe), 0);
  ASSERT_EQ(::openpty(&master, &terminal, nullptr, nullptr, nullptr), 0);
  const std::pair<int, const char*> cases[] = {
      {pipe[1], ""},
      {pipe[0], "standard output cannot be written to; give a FILE or redirect it"},
      {terminal, "standard output is a terminal; give a FILE or redirect it"}};
  for (const auto& [descriptor, refusal] : cases) {
    const StandardOutputIs standard(descriptor);
    EXPECT_EQ(Save("-"), refusal);
    EXPECT_GE(::fcntl(STDOUT_FILENO, F_GETFD), 0) << "it is not ours to close";
  }
  char bytes[16] = {};
  EXPECT_EQ(::read(pipe[0], bytes, sizeof bytes), 4);
  EXPECT_STREQ(bytes, kSaved);
  for (const int descriptor : {pipe[0], pipe[1], master, terminal}) ::close(descriptor);
}

} // namespace
} // namespace framereel
