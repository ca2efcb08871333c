// Files: names and paths, and reading and writing in a folder of the test's own.
#include "core/file_refs.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>

#include "core/strings.h"
#include "support/script.h"
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
    uint16_t given;          // the type
    std::string parts, back; // directory, name and type; "": there is no such thing
  } cases[] = {
      {"/d/\xFF\xFE \xC3.gif", 2, "/d/ \xFF\xFE \xC3 2", "/d/\xFF\xFE \xC3.gif"},
      {"/film.GIF", 2, "/ film 2", "/film.gif"},
      {"./a.b.txt", 0, "./ a.b 0", "./a.b.txt"},
      {"/d/.prf", 1, "/d/  1", "/d/.prf"},
      {"/d.gif/name", 99, "/d.gif/ name 12", "/d.gif/name.dta"},
      {"/" + deep + "/" + endless, 2, "/" + deep + "/ " + endless + " 2", "/" + deep + "/" + endless + ".gif"},
      {"/d.x/film.png", 2, "/d.x/ film 2", "/d.x/film.gif"},
      {"/d/film", 10, "/d/ film 10", "/d/film"},
      {"film", 2, "", ""},
  };
  for (const auto& one : cases) {
    const Owned<FileType> type(NewFileType(one.given));
    Owned<FileRef> ref(FileRefFromPathAndType(one.path.c_str(), type.get()));
    ASSERT_EQ(ref != nullptr, one.back != "") << one.path;
    if (!ref) continue;
    const Owned<FileRef> copy(CopyFileRef(ref.get()));
    ref.reset();
    EXPECT_EQ(Text(copy->directory, ' ', Owned<char>(FileRefName(copy.get())).get(), ' ', copy->type->index),
              one.parts);
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

TEST_F(FilesTest, HoldWhatIsWrittenAndGiveItBackInPiecesAndLines) {
  Owned<File> file = Open("", FileModeWrite);
  EXPECT_EQ(PathOf(file->ref), path);
  EXPECT_TRUE(FileWrite(file.get(), 5, "first") && FileWriteLine(file.get(), 4, "line") &&
              FileWriteLine(file.get(), 0, ""));
  EXPECT_TRUE(FileWrite(file.get(), 8, "\ra\nb12\r\n") && FileSeek(file.get(), 15) && FileWrite(file.get(), 3, "cde"));
  EXPECT_EQ(ReadWholeFile(path), "firstline\r\n\r\n\racde2\r\n");
  const struct {
    bool line;
    uint32_t room;
    const char* bytes;
    uint32_t behind;
  } reads[] = {{true, 8, "firstlin", 8}, {true, 8, "e", 11},  {true, 8, "", 13}, {true, 6, "\racde2", 19},
               {true, 1, "\r", 20},      {true, 8, "\n", 21}, {true, 8, "", 21}, {false, 8, "", 21}};
  EXPECT_TRUE(FileSeek(file.get(), 0));
  for (const auto& one : reads) {
    char buffer[] = "\n\n\n\n\n\n\n\n"; // what was not read must not look like the end of a line
    uint32_t count = one.room, position = 0;
    EXPECT_TRUE(one.line ? FileReadLine(file.get(), &count, buffer) : FileRead(file.get(), &count, buffer));
    EXPECT_TRUE(FileTell(file.get(), &position));
    EXPECT_EQ(std::string(buffer, count), one.bytes) << one.behind;
    EXPECT_EQ(position, one.behind);
  }
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
