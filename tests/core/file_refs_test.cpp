// Files: names and paths, and reading and writing in a folder of the test's own.
#include "core/file_refs.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>

#include "core/strings.h"
#include "support/dice.h"
#include "support/temporary_folder.h"
#include "win32/win32_files.h"

namespace framereel {
namespace {

namespace fs = std::filesystem;

struct Free {
  void operator()(FileRef* ref) const { FreeFileRef(ref); }
  void operator()(FileType* type) const { FreeFileType(type); }
  void operator()(File* file) const { FileClose(file); }
  void operator()(char* string) const { StrFree(string); }
};
template <typename T> using Owned = std::unique_ptr<T, Free>;

std::string PathOf(const FileRef* ref) {
  return Owned<char>(FileRefPath(ref)).get();
}

Owned<FileRef> Ref(const std::string& path) {
  const Owned<FileType> type(NewFileType(kFileTypeGif));
  return Owned<FileRef>(FileRefFromPathAndType(path.c_str(), type.get()));
}

// ---- Names --------------------------------------------------------------------------------------------------------

TEST(FileRefs, PathsFallIntoTheirPartsAndComeBack) {
  const std::string deep(3000, 'd'), endless(3000, 'n');
  const struct {
    std::string path;
    int given; // the type
    std::string directory, name;
    uint16_t type;
    std::string back; // "": there is no such thing
  } cases[] = {
      {"/d/\xFF\xFE \xC3.gif", 2, "/d/", "\xFF\xFE \xC3", 2, "/d/\xFF\xFE \xC3.gif"},
      {"/film.GIF", 2, "/", "film", 2, "/film.gif"},
      {"./a.b.txt", 0, "./", "a.b", 0, "./a.b.txt"},
      {"/d/.prf", 1, "/d/", "", 1, "/d/.prf"},
      {"/d.gif/name", 99, "/d.gif/", "name", 12, "/d.gif/name.dta"},
      {"/" + deep + "/" + endless, 2, "/" + deep + "/", endless, 2, "/" + deep + "/" + endless + ".gif"},
      {"/d.x/film.png", 2, "/d.x/", "film", 2, "/d.x/film.gif"},
      {"/d/film", 10, "/d/", "film", 10, "/d/film"},
      {"film", 2, "", "", 0, ""},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.path);
    const Owned<FileType> type(NewFileType(uint16_t(one.given)));
    Owned<FileRef> ref(FileRefFromPathAndType(one.path.c_str(), type.get()));
    ASSERT_EQ(ref != nullptr, one.back != "");
    if (!ref) continue;
    const Owned<FileRef> copy(CopyFileRef(ref.get()));
    ref.reset();
    EXPECT_EQ(copy->directory, one.directory);
    EXPECT_EQ(Owned<char>(FileRefName(copy.get())).get(), one.name);
    EXPECT_EQ(copy->type->index, one.type);
    EXPECT_EQ(PathOf(copy.get()), one.back);
  }
}

TEST(FileRefs, OfTheProgramItselfAreInTheCurrentDirectoryOrTheRoot) {
  const WorkingFolder folder;
  Owned<FileType> type(NewFileType(kFileTypePreferences));
  auto settings = [&] { return PathOf(Owned<FileRef>(AppFileRef("Settings", type.get())).get()); };
  EXPECT_EQ(settings(), folder / "Settings.prf");
  fs::current_path("/");
  EXPECT_EQ(settings(), "/Settings.prf");
  fs::create_directory(folder / "gone");
  fs::current_path(folder / "gone");
  fs::remove(folder / "gone");
  EXPECT_EQ(settings(), "/Settings.prf");
}

// ---- Files ---------------------------------------------------------------------------------------------------------

class FilesTest : public ::testing::Test {
protected:
  // film.gif with these contents, opened.
  Owned<File> Open(const std::string& contents, FileMode mode) {
    WriteWholeFile(path, contents);
    return Owned<File>(FileOpen(Ref(path).get(), mode));
  }

  TemporaryFolder folder;
  std::string path = folder / "film.gif";
};

TEST_F(FilesTest, CreatingAndDeletingAnswerForWhatIsThere) {
  Owned<FileRef> ref = Ref(path);
  const auto refuses = [&ref] { return !FileExists(ref.get()) && !FileDelete(ref.get()); };
  EXPECT_TRUE(refuses() && !FileOpen(ref.get(), FileModeWrite));
  const mode_t mask = ::umask(0026);
  EXPECT_TRUE(FileCreate(ref.get()));
  ::umask(mask);
  EXPECT_EQ(fs::status(path).permissions(), fs::perms{0640});
  WriteWholeFile(path, "kept");
  EXPECT_FALSE(FileCreate(ref.get()));
  EXPECT_EQ(ReadWholeFile(path), "kept");
  EXPECT_TRUE(FileDelete(ref.get()) && refuses());
  EXPECT_FALSE(FileCreate(Ref(folder / "missing/film.gif").get()));
  fs::create_directory(path); // a directory is no file
  EXPECT_TRUE(refuses() && !FileCreate(ref.get()));
}

// Random operations beside a plain string, with a buffer of eight bytes.
TEST_F(FilesTest, HoldWhatIsWrittenAndGiveItBackInPiecesAndLines) {
  Owned<File> file = Open("", FileModeWrite);
  EXPECT_EQ(PathOf(file->ref), path);
  std::string twin;
  size_t at = 0;
  Dice dice(1);
  for (int step = 0; step < 5000; ++step) {
    std::string bytes, piece = twin.substr(at, 8);
    for (int i = dice.Below(8); i > 0; --i) bytes += "ab\r\n"[dice.Below(4)];
    char buffer[] = "\n\n\n\n\n\n\n"; // what was not read must not look like the end of a line
    uint32_t count = sizeof buffer, position = 0;
    const auto length = uint32_t(bytes.size()), place = uint32_t(dice.Below(int(twin.size()) + 1));
    const int operation = dice.Below(5);
    bool done = true;
    if (operation == 0) done = FileSeek(file.get(), uint32_t(at = place));
    if (operation == 1) done = FileWrite(file.get(), length, bytes.data());
    if (operation == 2) done = FileWriteLine(file.get(), length, bytes.data()), bytes += "\r\n";
    if (operation == 1 || operation == 2) twin.replace(at, bytes.size(), bytes), at += bytes.size();
    if (operation == 3) done = FileRead(file.get(), &count, buffer);
    if (operation == 4) done = FileReadLine(file.get(), &count, buffer);
    if (operation >= 3) {
      const size_t end = operation == 4 ? piece.find("\r\n") : std::string::npos;
      ASSERT_EQ(std::string(buffer, count), piece.substr(0, end)) << "step " << step;
      at += end == std::string::npos ? piece.size() : end + 2;
    }
    ASSERT_TRUE(done && FileTell(file.get(), &position)) << "step " << step;
    ASSERT_EQ(position, at) << "step " << step;
  }
  EXPECT_TRUE(FileClose(file.release()));
  EXPECT_EQ(ReadWholeFile(path), twin);
}

TEST_F(FilesTest, ModesKeepWhatTheyExclude) {
  Owned<File> file = Open("abc", FileModeRead);
  const auto opens = [this](FileMode mode) { return Owned<File>(FileOpen(Ref(path).get(), mode)) != nullptr; };
  EXPECT_TRUE(opens(FileModeRead) && !FileWrite(file.get(), 1, "x"));
  EXPECT_TRUE(!opens(FileModeWrite) && errno == EBUSY);
  file.reset();
  file.reset(FileOpen(Ref(path).get(), FileModeWrite));
  EXPECT_TRUE(file && !opens(FileModeRead));
  EXPECT_EQ(ReadWholeFile(path), "abc");
}

TEST_F(FilesTest, PositionsBeyondThirtyTwoBitsAreRefused) {
  Owned<File> file = Open("", FileModeRead);
  fs::resize_file(path, 0x1'0000'0010);
  EXPECT_FALSE(FileSeek(file.get(), 0x80000000u));
  EXPECT_TRUE(FileSeek(file.get(), INT32_MAX));
  ::SetFilePointer(file->handle, INT32_MAX, nullptr, FILE_CURRENT);
  ::SetFilePointer(file->handle, 1, nullptr, FILE_CURRENT);
  uint32_t position = 0;
  EXPECT_FALSE(FileTell(file.get(), &position));
}

} // namespace
} // namespace framereel
