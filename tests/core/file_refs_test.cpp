// Files: the table of types, names and paths, and reading and writing in a folder of the test's own.
#include "core/file_refs.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "core/strings.h"
#include "support/temporary_folder.h"
#include "win32/system/system_version.h"

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
  return Owned<FileRef>(FileRefFromPath(path.c_str()));
}

// ---- Types --------------------------------------------------------------------------------------------------------

TEST(FileTypes, RowsComeFromTheirColumnsAndExtensionsAreFoundInAnyCase) {
  const struct {
    uint16_t index;
    FileTypeRow row;
    const char* typed; // an extension that leads here
  } cases[] = {
      {0, {"txt", ".txt", "Text Files (.TXT)"}, "tXt"},    {1, {"prf", ".prf", "Preferences (.PRF)"}, "prf"},
      {11, {"ps", ".ps", "Postscript Files (.PS)"}, "PS"}, {19, {"rc", ".rc", "Resource Source Files (.RC)"}, "rc"},
      {12, {"dta", ".dta", "Data Files (.DTA)"}, ""},      {12, {"dta", ".dta", "Data Files (.DTA)"}, "giff"},
  };
  for (const auto& one : cases) {
    const FileTypeRow& row = FileTypeRowAt(one.index);
    EXPECT_STREQ(row.extension, one.row.extension);
    EXPECT_STREQ(row.pattern, one.row.pattern);
    EXPECT_STREQ(row.description, one.row.description);
    Owned<FileType> type(FileTypeForExtension(one.typed));
    EXPECT_EQ(type->index, one.index) << one.typed;
    EXPECT_EQ(type->extension, FileTypeRowAt(one.index).extension); // the table is loaded once
  }
  EXPECT_STREQ(FileTypeRowAt(6).description, "");
  EXPECT_STREQ(FileTypeRowAt(20).extension, "dta"); // behind the last
}

// ---- Names --------------------------------------------------------------------------------------------------------

TEST(FileRefs, PathsFallIntoTheirPartsAndComeBack) {
  const struct {
    const char *path, *directory, *name;
    uint16_t type;
    const char* back;
  } cases[] = {
      {"/home/u/film.gif", "/home/u/", "film", 2, "/home/u/film.gif"},
      {"/film.GIF", "/", "film", 2, "/film.gif"},
      {"./a.b.txt", "./", "a.b", 0, "./a.b.txt"},
      {"/d/.prf", "/d/", "", 1, "/d/.prf"},
      {"/d.gif/name", "/d.gif/", "name", 12, "/d.gif/name.dta"},
      {"/d/\xFF\xFE \xC3.gif", "/d/", "\xFF\xFE \xC3", 2, "/d/\xFF\xFE \xC3.gif"},
  };
  for (const auto& one : cases) {
    Owned<FileRef> ref = Ref(one.path);
    ASSERT_TRUE(ref) << one.path;
    EXPECT_STREQ(ref->directory, one.directory) << one.path;
    EXPECT_STREQ(ref->name, one.name) << one.path;
    EXPECT_EQ(ref->type->index, one.type) << one.path;
    EXPECT_EQ(PathOf(ref.get()), one.back);
  }
  EXPECT_FALSE(Ref("/home/film"));
  EXPECT_FALSE(Ref("film.gif"));
}

TEST(FileRefs, AGivenTypeNeedsNoDotAndReplacesTheExtension) {
  Owned<FileType> gif(NewFileType(kFileTypeGif)), directory(NewFileType(10));
  const auto path = [](const char* text, const Owned<FileType>& type) {
    return PathOf(Owned<FileRef>(FileRefFromPathAndType(text, type.get())).get());
  };
  EXPECT_EQ(path("/d/film", gif), "/d/film.gif");
  EXPECT_EQ(path("/d.x/film.png", gif), "/d.x/film.gif");
  EXPECT_EQ(path("/d/film", directory), "/d/film");
  EXPECT_EQ(FileRefFromPathAndType("film", gif.get()), nullptr);
}

TEST(FileRefs, CopiesStandOnTheirOwnAndLongPathsStayWhole) {
  std::string path = std::string("/").append(3000, 'd').append("/").append(3000, 'n').append(".gif");
  Owned<FileRef> ref = Ref(path);
  Owned<FileRef> copy(CopyFileRef(ref.get()));
  ref.reset();
  EXPECT_EQ(PathOf(copy.get()), path);
  EXPECT_EQ(std::string(Owned<char>(FileRefName(copy.get())).get()), std::string(3000, 'n'));
}

TEST(FileRefs, OnAnOlderSystemNamesAreCutToEightBytes) {
  SetSystemVersion(0x80000003);
  EXPECT_EQ(PathOf(Ref("/a long folder/123456789.gif").get()), "/a long folder/12345678.gif");
  EXPECT_EQ(PathOf(Ref("/d/12345678.gif").get()), "/d/12345678.gif");
  SetSystemVersion(0x80000004);
  EXPECT_EQ(PathOf(Ref("/d/123456789.gif").get()), "/d/123456789.gif");
  SetSystemVersion(kThisSystem);
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
  EXPECT_FALSE(FileExists(ref.get()));
  EXPECT_FALSE(FileDelete(ref.get()));
  EXPECT_EQ(FileOpen(ref.get(), FileModeWrite), nullptr);
  mode_t mask = ::umask(0026);
  EXPECT_TRUE(FileCreate(ref.get()));
  ::umask(mask);
  EXPECT_EQ(fs::status(path).permissions(), fs::perms{0640});
  WriteWholeFile(path, "kept");
  EXPECT_FALSE(FileCreate(ref.get()));
  EXPECT_EQ(ReadWholeFile(path), "kept");
  EXPECT_TRUE(FileDelete(ref.get()));
  EXPECT_FALSE(FileExists(ref.get()));
  EXPECT_FALSE(FileCreate(Ref(folder / "missing/film.gif").get()));
  fs::create_directory(path); // a directory is no file
  EXPECT_FALSE(FileExists(ref.get()));
  EXPECT_FALSE(FileCreate(ref.get()));
  EXPECT_FALSE(FileDelete(ref.get()));
}

TEST_F(FilesTest, WhatIsWrittenCanBeReadBack) {
  std::string bytes(300'000, '\0');
  for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7 % 251);
  Owned<File> file = Open("", FileModeWrite);
  ASSERT_TRUE(file);
  EXPECT_EQ(PathOf(file->ref), path);
  EXPECT_TRUE(FileWrite(file.get(), static_cast<uint32_t>(bytes.size()), bytes.data()));
  EXPECT_TRUE(FileWrite(file.get(), 0, nullptr));
  uint32_t position = 0;
  EXPECT_TRUE(FileTell(file.get(), &position));
  EXPECT_EQ(position, bytes.size());
  EXPECT_TRUE(FileSeek(file.get(), 100'000));
  std::string back(bytes.size(), '#');
  auto count = static_cast<uint32_t>(back.size());
  EXPECT_TRUE(FileRead(file.get(), &count, back.data()));
  EXPECT_EQ(count, 200'000u);
  EXPECT_EQ(back.substr(0, count), bytes.substr(100'000));
  EXPECT_TRUE(FileRead(file.get(), &count, back.data()));
  EXPECT_EQ(count, 0u);
  EXPECT_FALSE(FileSeek(file.get(), 0x80000000u));
  EXPECT_TRUE(FileClose(file.release()));
  EXPECT_EQ(ReadWholeFile(path), bytes);
}

TEST_F(FilesTest, ModesKeepWhatTheyExclude) {
  Owned<File> reader = Open("abc", FileModeRead);
  Owned<FileRef> ref = Ref(path);
  Owned<File> second(FileOpen(ref.get(), FileModeRead));
  EXPECT_TRUE(reader && second);
  EXPECT_FALSE(FileWrite(reader.get(), 1, "x"));
  EXPECT_EQ(FileOpen(ref.get(), FileModeWrite), nullptr);
  EXPECT_EQ(errno, EBUSY);
  reader.reset();
  second.reset();
  Owned<File> writer(FileOpen(ref.get(), FileModeWrite));
  EXPECT_TRUE(writer);
  EXPECT_EQ(FileOpen(ref.get(), FileModeRead), nullptr);
  EXPECT_EQ(ReadWholeFile(path), "abc");
}

using Lines = std::vector<std::string>;

// With a buffer of eight bytes.
Lines ReadLines(File* file) {
  Lines lines;
  char buffer[] = "\n\n\n\n\n\n\n"; // what was not read must not look like the end of a line
  for (;;) {
    uint32_t count = sizeof buffer;
    EXPECT_TRUE(FileReadLine(file, &count, buffer));
    if (count == 0 || lines.size() > 20) return lines;
    lines.emplace_back(buffer, count);
  }
}

TEST_F(FilesTest, LinesComeWithoutTheirEnds) {
  const std::pair<const char*, Lines> cases[] = {
      {"ab\r\ncd", {"ab", "cd"}},
      {"ab\r\ncd\r\n", {"ab", "cd"}},
      {"a\nb\rc\r", {"a\nb\rc\r"}},
      {"12345678abc\r\nz", {"12345678", "abc", "z"}}, // longer than the buffer
      {"1234567\r\nab\r\n", {"1234567\r", "\nab"}},   // the end itself is torn
      {"", {}},
      {"ab\r\n\r\ncd", {"ab"}}, // an empty line looks like the end
  };
  for (const auto& [contents, lines] : cases) {
    EXPECT_EQ(ReadLines(Open(contents, FileModeRead).get()), lines) << contents;
  }
  Owned<File> file = Open("", FileModeWrite);
  EXPECT_TRUE(FileWriteLine(file.get(), 3, "one"));
  EXPECT_TRUE(FileWriteLine(file.get(), 0, ""));
  EXPECT_TRUE(FileWriteLine(file.get(), 3, "two"));
  EXPECT_EQ(ReadWholeFile(path), "one\r\n\r\ntwo\r\n");
  EXPECT_TRUE(FileSeek(file.get(), 7));
  EXPECT_EQ(ReadLines(file.get()), Lines{"two"});
}

// ---- The platform calls -------------------------------------------------------------------------------------------

TEST_F(FilesTest, AFileWithoutANameServesForWritingOnlyAndTwoMayHoldIt) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const std::string end = "/proc/self/fd/" + std::to_string(ends[1]);
  const auto open = [&end] {
    return ::CreateFileA(end.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  };
  File file = {nullptr, open()};
  EXPECT_TRUE(::CloseHandle(open()));
  ::close(ends[1]);
  EXPECT_TRUE(FileWrite(&file, 3, "abc"));
  uint32_t position = 0, count = 1;
  char byte = 0;
  EXPECT_FALSE(FileTell(&file, &position));
  EXPECT_FALSE(FileReadLine(&file, &count, &byte));
  EXPECT_EQ(count, 0u);
  EXPECT_TRUE(::FlushFileBuffers(file.handle)); // nothing of it is to reach a disk
  EXPECT_TRUE(::CloseHandle(file.handle));
  EXPECT_FALSE(::CloseHandle(INVALID_HANDLE_VALUE));
  EXPECT_FALSE(::CloseHandle(nullptr));
  char came[4] = "";
  EXPECT_EQ(::read(ends[0], came, sizeof came), 3);
  EXPECT_STREQ(came, "abc");
  ::close(ends[0]);
}

TEST_F(FilesTest, MovingReplacesOnlyWhenAskedTo) {
  const std::string from = folder / "from";
  WriteWholeFile(from, "new");
  WriteWholeFile(path, "old");
  EXPECT_FALSE(::MoveFileExA(from.c_str(), path.c_str(), 0));
  EXPECT_EQ(errno, EEXIST);
  EXPECT_EQ(ReadWholeFile(path), "old");
  EXPECT_TRUE(::MoveFileExA(from.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING));
  EXPECT_EQ(ReadWholeFile(path), "new");
}

TEST_F(FilesTest, PositionsBeyondThirtyTwoBitsAreRefused) {
  Owned<File> file = Open("", FileModeRead);
  fs::resize_file(path, 0x1'0000'0010);
  EXPECT_TRUE(FileSeek(file.get(), INT32_MAX));
  EXPECT_EQ(::SetFilePointer(file->handle, INT32_MAX, nullptr, FILE_CURRENT), 0xFFFFFFFEu);
  EXPECT_EQ(::SetFilePointer(file->handle, 1, nullptr, FILE_CURRENT), INVALID_SET_FILE_POINTER);
  uint32_t position = 0;
  EXPECT_FALSE(FileTell(file.get(), &position));
}

} // namespace
} // namespace framereel
