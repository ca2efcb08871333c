// Files appear whole or not at all, whatever the place and the disk are like.
#include "gif/output_file.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include "gif/animation_stream.h"
#include "gif/stream_bytes.h"
#include "support/system_failures.h"
#include "support/temporary_folder.h"

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

// "" or the reason against it.
std::string Save(const std::string& name, GifWriter& gif = Animation()) {
  Refusal refusal = {};
  return SaveAnimationAs(gif, name.c_str(), refusal) ? "" : refusal.text;
}

// The same into the folder, by a name in it; the reason without "cannot write" and the place.
std::string SaveIn(const TemporaryFolder& folder, const std::string& name, GifWriter& gif = Animation()) {
  const std::string reason = Save(folder / name, gif), prefix = "cannot write " + (folder / name) + ": ";
  return reason.find(prefix) == 0 ? reason.substr(prefix.size()) : reason;
}

TEST(OutputFile, AppearsWithTheSaveAndLeavesAnOlderFileUntilThen) {
  for (const auto& [older, named] : {std::pair{std::string(), false}, {"", true}, {"older", false}, {"older", true}}) {
    RefuseUnnamedFiles(named);
    const TemporaryFolder folder;
    const std::string place = folder / "a.gif";
    if (older != "") WriteWholeFile(place, older);
    if (older != "") fs::permissions(place, fs::perms(0604));
    const size_t entries = folder.EntryCount();
    for (const bool saves : {false, true}) {
      OutputFile output, another;
      Refusal refusal = {};
      ASSERT_TRUE(OutputFind(output, place.c_str(), refusal));
      EXPECT_EQ(folder.EntryCount(), entries);
      const mode_t mask = ::umask(0026);
      ASSERT_TRUE(OutputOpen(output, refusal));
      ::umask(mask);
      ASSERT_TRUE(OutputFind(another, place.c_str(), refusal) && OutputOpen(another, refusal));
      EXPECT_EQ(folder.EntryCount(), entries + 2 * named) << "it gives way to a temporary file that stands there";
      EXPECT_EQ(ReadWholeFile(place), older);
      EXPECT_TRUE(!saves || OutputSave(output, Animation(), refusal));
      another.keepsOlder = true; // what has appeared meanwhile
      EXPECT_FALSE(saves && OutputSave(another, Animation(4), refusal));
      EXPECT_EQ(refusal.text, saves ? "cannot write " + place + ": File exists" : "");
      OutputDiscard(output);
      OutputDiscard(another);
      EXPECT_EQ(ReadWholeFile(place), saves ? "GIF;" : older);
      EXPECT_EQ(folder.EntryCount(), saves ? 1 : entries);
    }
    EXPECT_EQ(fs::status(place).permissions(), fs::perms(older != "" ? 0604 : 0640));
  }
  RefuseUnnamedFiles(false);
}

TEST(OutputFile, KeepsTheOlderFileWhicheverCallOfTheSystemFails) {
  const TemporaryFolder folder;
  GifWriter& gif = Animation(2 * kStreamChunkSize + 1);
  for (const bool named : {false, true}) {
    RefuseUnnamedFiles(named);
    std::string calls; // "!" behind those that the save does not go on without
    for (int call = 0;; ++call) {
      WriteWholeFile(folder / "a.gif", "older");
      FailSystemCall(call, EIO);
      const std::string reason = SaveIn(folder, "a.gif", gif), failed = FailedSystemCall();
      FailSystemCall(-1, 0);
      const std::string now = ReadWholeFile(folder / "a.gif");
      if (reason.empty()) {
        ASSERT_EQ(now.size(), 2 * kStreamChunkSize + 2) << failed;
      } else {
        ASSERT_EQ(reason + now, "Input/output errorolder") << failed;
      }
      ASSERT_EQ(folder.EntryCount(), 1u) << failed;
      if (failed.empty()) break;
      calls += failed + (reason.empty() ? " " : "! ");
    }
    EXPECT_EQ(calls, named ? "open! lchown chmod write! write! write! fsync! close! rename! "
                           : "open chown chmod write! write! write! fsync! linkat! close! rename! ");
  }
  RefuseUnnamedFiles(false);
}

TEST(OutputFile, FollowsSymbolicLinksToFilesAndToPlacesForFiles) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "far");
  WriteWholeFile(folder / "far/old.gif", "older");
  for (const auto& [to, link] :
       {std::pair{"far/old.gif", "old"}, {"far/next", "new"}, {"new.gif", "far/next"}, {"a", "a"}}) {
    fs::create_symlink(to, folder / link);
  }
  for (const char* name : {"old", "new"}) {
    EXPECT_EQ(SaveIn(folder, name), "");
    EXPECT_TRUE(fs::is_symlink(folder / name));
    EXPECT_EQ(ReadWholeFile(folder / "far/" + name + ".gif"), "GIF;");
  }
  EXPECT_EQ(SaveIn(folder, "a"), "Too many levels of symbolic links");
}

TEST(OutputFile, RefusesPlacesWhereNoFileCanBe) {
  const TemporaryFolder folder;
  WriteWholeFile(folder / "file", "older");
  fs::permissions(folder / "file", fs::perms(0444));
  fs::permissions(folder.path, fs::perms(0777));
  const AsNobody nobody;
  const std::pair<std::string, const char*> cases[] = {
      {"file", "Permission denied"},
      {"none/a", "No such file or directory"},
      {"file/a", "Not a directory"},
      {std::string(300, 'n'), "File name too long"},
      {std::string(PATH_MAX - folder.path.size() - 1, 'n'), "File name too long"},
  };
  for (const auto& [name, reason] : cases) EXPECT_EQ(SaveIn(folder, name), reason) << name;
  EXPECT_EQ(Save("/a.gif"), "cannot write /a.gif: Permission denied");
  EXPECT_EQ(Save(folder.path), folder.path + " is not a file");
  const std::string directory = " a directory; FILE names the file in it, too";
  EXPECT_EQ(Save(folder / "new/"), (folder / "new/") + " is the name of" + directory);
  OutputFile output;
  Refusal refusal = {};
  EXPECT_FALSE(OutputFind(output, folder.path.c_str(), refusal));
  EXPECT_EQ(refusal.text, folder.path + " is" + directory);
  EXPECT_EQ(ReadWholeFile(folder / "file"), "older");
  EXPECT_EQ(folder.EntryCount(), 1u);
}

} // namespace
} // namespace framereel
