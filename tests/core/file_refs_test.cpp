// Files: their names and paths, and a life of one. Which of them the program takes stands in the tests of its settings.
#include "core/file_refs.h"

#include <gtest/gtest.h>
#include <memory>

#include "core/strings.h"
#include "support/script.h"
#include "support/temporary_folder.h"

namespace framereel {
namespace {

struct Free {
  void operator()(FileRef* ref) const { FreeFileRef(ref); }
  void operator()(FileType* type) const { FreeFileType(type); }
  void operator()(File* file) const { FileClose(file); }
  void operator()(char* string) const { StrFree(string); }
};
template <typename T> using Owned = std::unique_ptr<T, Free>;

Owned<FileRef> Ref(const std::string& path, uint16_t type) {
  return Owned<FileRef>(FileRefFromPathAndType(path.c_str(), Owned<FileType>(NewFileType(type)).get()));
}

TEST(FileRefs, PathsFallIntoTheirPartsAndComeBack) {
  const std::string deep(3000, 'd'), endless(3000, 'n');
  const struct {
    std::string path;
    uint16_t given;          // the type
    std::string parts, back; // directory, name and type
  } cases[] = {
      {"/d/\xFF\xFE \xC3.gif", 2, "/d/ \xFF\xFE \xC3 2", "/d/\xFF\xFE \xC3.gif"},
      {"/film.GIF", 2, "/ film 2", "/film.gif"},
      {"./a.b.txt", 0, "./ a.b 0", "./a.b.txt"},
      {"/d.gif/name", 99, "/d.gif/ name 12", "/d.gif/name.dta"},
      {"/" + deep + "/" + endless, 2, "/" + deep + "/ " + endless + " 2", "/" + deep + "/" + endless + ".gif"},
      {"/d/film", 10, "/d/ film 10", "/d/film"},
  };
  for (const auto& one : cases) {
    const Owned<FileRef> copy(CopyFileRef(Ref(one.path, one.given).get()));
    EXPECT_EQ(Text(copy->directory, ' ', Owned<char>(FileRefName(copy.get())).get(), ' ', copy->type->index),
              one.parts);
    EXPECT_STREQ(Owned<char>(FileRefPath(copy.get())).get(), one.back.c_str());
  }
  EXPECT_EQ(Ref("film", 2), nullptr);
}

TEST(Files, AreMadeWrittenReadInPiecesAndLinesAndDeleted) {
  const TemporaryFolder folder;
  const std::string path = folder / "film.gif";
  const Owned<FileRef> ref = Ref(path, kFileTypeGif);
  const auto open = [&ref](FileMode mode) { return Owned<File>(FileOpen(ref.get(), mode)); };
  EXPECT_TRUE(!FileExists(ref.get()) && !FileDelete(ref.get()) && !open(FileModeWrite));
  EXPECT_TRUE(FileCreate(ref.get()) && !FileCreate(ref.get()));
  Owned<File> file = open(FileModeWrite);
  EXPECT_TRUE(FileWrite(file.get(), 5, "first") && FileWriteLine(file.get(), 4, "line") &&
              FileWriteLine(file.get(), 0, "") && FileWrite(file.get(), 7, "\ra\n12\r\n"));
  EXPECT_TRUE(FileSeek(file.get(), 15) && FileWrite(file.get(), 1, "b"));
  EXPECT_FALSE(FileSeek(file.get(), 0x80000000u) || open(FileModeRead));
  const struct {
    uint32_t room;
    const char* line;
    uint32_t behind;
  } reads[] = {{8, "firstlin", 8}, {8, "e", 11},  {8, "", 13}, {5, "\rab12", 18},
               {1, "\r", 19},      {8, "\n", 20}, {8, "", 20}};
  EXPECT_TRUE(FileSeek(file.get(), 0));
  for (const auto& one : reads) {
    char buffer[] = "\n\n\n\n\n\n\n\n"; // what was not read must not look like the end of a line
    uint32_t count = one.room, position = 0;
    EXPECT_TRUE(FileReadLine(file.get(), &count, buffer) && FileTell(file.get(), &position));
    EXPECT_EQ(std::string(buffer, count), one.line) << one.behind;
    EXPECT_EQ(position, one.behind);
  }
  file = nullptr;
  file = open(FileModeRead);
  EXPECT_TRUE(open(FileModeRead) && !open(FileModeWrite) && !FileWrite(file.get(), 1, "x"));
  EXPECT_TRUE(FileDelete(ref.get()) && !FileExists(ref.get()));
  std::filesystem::create_directory(path); // is no file
  EXPECT_FALSE(FileExists(ref.get()) || FileDelete(ref.get()) || FileCreate(ref.get()));
}

} // namespace
} // namespace framereel
