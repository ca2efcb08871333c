// Files: the table of types, names and paths, and reading and writing in a directory of the test's own.
#include "platform/files.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "toolkit/core/strings.h"

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

// ---- Types --------------------------------------------------------------------------------------------------------

TEST(FileTypes, RowsComeFromTheirColumns) {
  const struct {
    uint16_t index;
    FileTypeRow row;
  } cases[] = {
      {0, {"txt", ".txt", "Text Files (.TXT)"}},
      {1, {"prf", ".prf", "Preferences (.PRF)"}},
      {6, {"", "", ""}},
      {11, {"ps", ".ps", "Postscript Files (.PS)"}},
      {16, {"", ".*", "All Files (.*)"}},
      {19, {"rc", ".rc", "Resource Source Files (.RC)"}},
      {20, {"dta", ".dta", "Data Files (.DTA)"}},
  };
  for (const auto& one : cases) {
    EXPECT_STREQ(FileTypeRowAt(one.index).extension, one.row.extension);
    EXPECT_STREQ(FileTypeRowAt(one.index).pattern, one.row.pattern);
    EXPECT_STREQ(FileTypeRowAt(one.index).description, one.row.description);
  }
}

TEST(FileTypes, ExtensionsAreFoundInAnyCaseAndUnknownOnesAreData) {
  const std::pair<const char*, uint16_t> cases[] = {{"GIF", 2}, {"Bat", 18}, {"ps", 11}, {"", 12}, {"giff", 12}};
  for (const auto& [text, index] : cases) {
    Owned<FileType> type(FileTypeForExtension(text));
    EXPECT_EQ(type->index, index) << text;
    EXPECT_EQ(type->extension, FileTypeRowAt(index).extension);
  }
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
      {"/d/picture.png", "/d/", "picture", 12, "/d/picture.dta"},
      {"/d.gif/name", "/d.gif/", "name", 12, "/d.gif/name.dta"},
      {"/d/\xFF\xFE \xC3.gif", "/d/", "\xFF\xFE \xC3", 2, "/d/\xFF\xFE \xC3.gif"},
  };
  for (const auto& one : cases) {
    Owned<FileRef> ref(FileRefFromPath(one.path));
    ASSERT_TRUE(ref) << one.path;
    EXPECT_STREQ(ref->directory, one.directory) << one.path;
    EXPECT_STREQ(ref->name, one.name) << one.path;
    EXPECT_EQ(ref->type->index, one.type) << one.path;
    EXPECT_EQ(PathOf(ref.get()), one.back);
  }
  EXPECT_EQ(FileRefFromPath("/home/film"), nullptr);
  EXPECT_EQ(FileRefFromPath("film.gif"), nullptr);
}

TEST(FileRefs, AGivenTypeNeedsNoDotAndReplacesTheExtension) {
  Owned<FileType> gif(NewFileType(kFileTypeGif));
  Owned<FileRef> bare(FileRefFromPathAndType("/d/film", gif.get()));
  EXPECT_EQ(PathOf(bare.get()), "/d/film.gif");
  Owned<FileRef> other(FileRefFromPathAndType("/d.x/film.png", gif.get()));
  EXPECT_EQ(PathOf(other.get()), "/d.x/film.gif");
  EXPECT_EQ(FileRefFromPathAndType("film", gif.get()), nullptr);
  Owned<FileType> directory(NewFileType(10));
  Owned<FileRef> none(FileRefFromPathAndType("/d/film", directory.get()));
  EXPECT_EQ(PathOf(none.get()), "/d/film");
}

TEST(FileRefs, CopiesStandOnTheirOwnAndLongPathsStayWhole) {
  std::string path = std::string("/").append(3000, 'd').append("/").append(3000, 'n').append(".gif");
  Owned<FileRef> ref(FileRefFromPath(path.c_str()));
  Owned<FileRef> copy(CopyFileRef(ref.get()));
  ref.reset();
  EXPECT_EQ(PathOf(copy.get()), path);
  EXPECT_EQ(std::string(Owned<char>(FileRefName(copy.get())).get()), std::string(3000, 'n'));
}

// ---- Files in a directory of the test's own -----------------------------------------------------------------------

class FilesTest : public ::testing::Test {
protected:
  fs::path before = fs::current_path();
  fs::path directory;

  FilesTest() {
    std::string pattern = (fs::temp_directory_path() / "files_test_XXXXXX").string();
    directory = ::mkdtemp(pattern.data());
  }
  ~FilesTest() override {
    fs::current_path(before);
    fs::remove_all(directory);
  }

  std::string PathTo(const char* name) { return (directory / name).string(); }

  Owned<FileRef> Ref(const char* name) { return Owned<FileRef>(FileRefFromPath(PathTo(name).c_str())); }

  Owned<FileRef> Written(const char* name, const std::string& contents) {
    std::ofstream(directory / name, std::ios::binary) << contents;
    return Ref(name);
  }

  std::string Contents(const char* name) {
    std::ostringstream text;
    text << std::ifstream(directory / name, std::ios::binary).rdbuf();
    return text.str();
  }
};

TEST_F(FilesTest, TheProgramsOwnFilesAreInTheCurrentDirectoryOrTheRoot) {
  Owned<FileType> type(NewFileType(kFileTypePreferences));
  auto settings = [&] { return PathOf(Owned<FileRef>(AppFileRef("Settings", type.get())).get()); };
  fs::current_path(directory);
  EXPECT_EQ(settings(), PathTo("Settings.prf"));
  fs::current_path("/");
  EXPECT_EQ(settings(), "/Settings.prf");
  fs::create_directory(directory / "gone");
  fs::current_path(directory / "gone");
  fs::remove(directory / "gone");
  EXPECT_EQ(settings(), "/Settings.prf");
}

TEST_F(FilesTest, CreatingAndDeletingAnswerForWhatIsThere) {
  Owned<FileRef> ref = Ref("film.gif");
  EXPECT_FALSE(FileExists(ref.get()));
  EXPECT_FALSE(FileDelete(ref.get()));
  EXPECT_EQ(FileOpen(ref.get(), FileModeWrite), nullptr);
  mode_t mask = ::umask(0026);
  EXPECT_TRUE(FileCreate(ref.get()));
  ::umask(mask);
  EXPECT_EQ(fs::status(PathTo("film.gif")).permissions(), fs::perms{0640});
  Written("film.gif", "kept");
  EXPECT_FALSE(FileCreate(ref.get()));
  EXPECT_EQ(Contents("film.gif"), "kept");
  EXPECT_TRUE(FileDelete(ref.get()));
  EXPECT_FALSE(FileExists(ref.get()));
  EXPECT_FALSE(FileCreate(Ref("missing/film.gif").get()));
  fs::create_directory(directory / "d.gif"); // a directory is no file
  EXPECT_FALSE(FileExists(Ref("d.gif").get()));
  EXPECT_FALSE(FileCreate(Ref("d.gif").get()));
  EXPECT_FALSE(FileDelete(Ref("d.gif").get()));
}

TEST_F(FilesTest, WhatIsWrittenCanBeReadBack) {
  Owned<FileRef> ref = Ref("film.gif");
  ASSERT_TRUE(FileCreate(ref.get()));
  std::string bytes(300'000, '\0');
  for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7 % 251);
  Owned<File> file(FileOpen(ref.get(), FileModeWrite));
  ASSERT_TRUE(file);
  ref.reset(); // the file has its own copy
  EXPECT_EQ(PathOf(file->ref), PathTo("film.gif"));
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
  EXPECT_EQ(Contents("film.gif"), bytes);
}

TEST_F(FilesTest, ModesKeepWhatTheyExclude) {
  Owned<FileRef> ref = Written("film.gif", "abc");
  Owned<File> reader(FileOpen(ref.get(), FileModeRead));
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
  EXPECT_EQ(Contents("film.gif"), "abc");
}

// ---- Lines --------------------------------------------------------------------------------------------------------

using Lines = std::vector<std::string>;

Lines ReadLines(File* file, uint32_t bufferSize) {
  Lines lines;
  std::string buffer(bufferSize, '\n'); // what was not read must not look like the end of a line
  for (;;) {
    uint32_t count = bufferSize;
    EXPECT_TRUE(FileReadLine(file, &count, buffer.data()));
    if (count == 0 || lines.size() > 20) return lines;
    lines.push_back(buffer.substr(0, count));
  }
}

TEST_F(FilesTest, LinesComeWithoutTheirEnds) {
  const struct {
    const char* contents;
    Lines lines;
  } cases[] = {
      {"ab\r\ncd", {"ab", "cd"}},
      {"ab\r\ncd\r\n", {"ab", "cd"}},
      {"ab\r", {"ab\r"}},
      {"a\nb\rc", {"a\nb\rc"}},
      {"x", {"x"}},
      {"12345678abc\r\nz", {"12345678", "abc", "z"}}, // longer than the buffer
      {"1234567\r\nab\r\n", {"1234567\r", "\nab"}},   // the end itself is torn
      {"", {}},
      {"ab\r\n\r\ncd", {"ab"}}, // an empty line looks like the end
  };
  for (const auto& one : cases) {
    Owned<FileRef> ref = Written("lines.txt", one.contents);
    Owned<File> file(FileOpen(ref.get(), FileModeRead));
    EXPECT_EQ(ReadLines(file.get(), 8), one.lines) << one.contents;
  }
}

TEST_F(FilesTest, AWrittenLineIsReadBackWhereTheFileStands) {
  Owned<FileRef> ref = Written("lines.txt", "");
  Owned<File> file(FileOpen(ref.get(), FileModeWrite));
  EXPECT_TRUE(FileWriteLine(file.get(), 3, "one"));
  EXPECT_TRUE(FileWriteLine(file.get(), 0, ""));
  EXPECT_TRUE(FileWriteLine(file.get(), 3, "two"));
  EXPECT_EQ(Contents("lines.txt"), "one\r\n\r\ntwo\r\n");
  EXPECT_TRUE(FileSeek(file.get(), 7));
  EXPECT_EQ(ReadLines(file.get(), 132), Lines{"two"});
}

// ---- The platform calls -------------------------------------------------------------------------------------------

struct Pipe {
  int ends[2];

  Pipe() { EXPECT_EQ(::pipe(ends), 0); }
  ~Pipe() { ::close(ends[0]); }
};

TEST_F(FilesTest, AFileWithoutANameServesForWritingOnly) {
  Pipe pipe;
  auto* file = static_cast<File*>(::HeapAlloc(::GetProcessHeap(), 0, sizeof(File)));
  *file = {nullptr, ::CreateFileA(("/proc/self/fd/" + std::to_string(pipe.ends[1])).c_str(), GENERIC_WRITE, 0, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)};
  ::close(pipe.ends[1]);
  ASSERT_NE(file->handle, INVALID_HANDLE_VALUE);
  EXPECT_TRUE(FileWrite(file, 3, "abc"));
  uint32_t position = 0, count = 1;
  char byte = 0;
  EXPECT_FALSE(FileTell(file, &position));
  EXPECT_FALSE(FileReadLine(file, &count, &byte));
  EXPECT_EQ(count, 0u);
  EXPECT_TRUE(::FlushFileBuffers(file->handle)); // nothing of it is to reach a disk
  EXPECT_TRUE(FileClose(file));
  char came[4] = "";
  EXPECT_EQ(::read(pipe.ends[0], came, sizeof came), 3);
  EXPECT_STREQ(came, "abc");
}

TEST_F(FilesTest, AWriteThatTheDiskCutsShortFailsAndTellsHowMuchWentOut) {
  Owned<FileRef> ref = Written("film.gif", "");
  Owned<File> file(FileOpen(ref.get(), FileModeWrite));
  auto onLimit = ::signal(SIGXFSZ, SIG_IGN);
  rlimit whole;
  ::getrlimit(RLIMIT_FSIZE, &whole);
  rlimit small = {1000, whole.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &small);
  std::string bytes(1500, 'x');
  DWORD written = 0;
  BOOL answer = ::WriteFile(file->handle, bytes.data(), 1500, &written, nullptr);
  int reason = errno;
  ::setrlimit(RLIMIT_FSIZE, &whole);
  ::signal(SIGXFSZ, onLimit);
  EXPECT_FALSE(answer);
  EXPECT_EQ(written, 1000u);
  EXPECT_EQ(reason, EFBIG);
}

TEST_F(FilesTest, AFullDeviceIsAFailureAndTwoMayHoldOne) {
  auto open = [] {
    return ::CreateFileA("/dev/full", GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  };
  File one = {nullptr, open()}, two = {nullptr, open()};
  EXPECT_FALSE(FileWrite(&one, 1, "x"));
  EXPECT_EQ(errno, ENOSPC);
  EXPECT_TRUE(::CloseHandle(one.handle));
  EXPECT_TRUE(::CloseHandle(two.handle));
  EXPECT_FALSE(::CloseHandle(INVALID_HANDLE_VALUE));
  EXPECT_FALSE(::CloseHandle(nullptr));
}

TEST_F(FilesTest, MovingReplacesOnlyWhenAskedTo) {
  Written("from", "new");
  Written("to", "old");
  std::string from = PathTo("from"), to = PathTo("to");
  EXPECT_FALSE(::MoveFileExA(from.c_str(), to.c_str(), 0));
  EXPECT_EQ(errno, EEXIST);
  EXPECT_EQ(Contents("to"), "old");
  EXPECT_TRUE(::MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING));
  EXPECT_EQ(Contents("to"), "new");
  EXPECT_FALSE(fs::exists(from));
  EXPECT_FALSE(::MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING));
  EXPECT_EQ(Contents("to"), "new");
}

TEST_F(FilesTest, PositionsBeyondThirtyTwoBitsAreRefused) {
  Owned<FileRef> ref = Written("film.gif", "");
  fs::resize_file(directory / "film.gif", 0x1'0000'0010);
  Owned<File> file(FileOpen(ref.get(), FileModeRead));
  EXPECT_TRUE(FileSeek(file.get(), INT32_MAX));
  EXPECT_EQ(::SetFilePointer(file->handle, INT32_MAX, nullptr, FILE_CURRENT), 0xFFFFFFFEu);
  EXPECT_EQ(::SetFilePointer(file->handle, 1, nullptr, FILE_CURRENT), INVALID_SET_FILE_POINTER);
  uint32_t position = 0;
  EXPECT_FALSE(FileTell(file.get(), &position));
}

} // namespace
} // namespace framereel
