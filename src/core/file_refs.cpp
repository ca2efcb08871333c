// Here the names and types; the operations on open files stand at the end.
#include "core/file_refs.h"

#include <cstring>

#include "core/memory.h"
#include "core/strings.h"
#include "core/system_kind.h"
#include "win32/win32_system.h"

namespace framereel {

// ---- Types --------------------------------------------------------------------------------------------------------

namespace {

// A row's string resource has fixed columns; the first two end at a blank or at the end of the string.
constexpr uint32_t kFirstRowString = 200;
constexpr int kRowBuffer = 150; // bytes
constexpr size_t kPatternColumn = 4;
constexpr size_t kDescriptionColumn = 9;

struct FileTypeTable {
  bool isLoaded;
  FileTypeRow rows[kFileTypeCount];
};

FileTypeTable fileTypes;

const char* CopyColumn(const char* column) {
  return StrDupN(column, size_t(StrFindEnd(column, ' ') - column));
}

FileTypeRow LoadRow(uint16_t index) {
  char text[kRowBuffer];
  int length = ::LoadStringA(nullptr, kFirstRowString + index, text, kRowBuffer);
  if (length < int(kDescriptionColumn)) return {"", "", ""};
  return {CopyColumn(text), CopyColumn(text + kPatternColumn), StrDup(text + kDescriptionColumn)};
}

// The table, loaded at its first use and kept for the run.
const FileTypeRow* FileTypeRows() {
  if (!fileTypes.isLoaded) {
    for (uint16_t i = 0; i < kFileTypeCount; ++i) fileTypes.rows[i] = LoadRow(i);
    fileTypes.isLoaded = true;
  }
  return fileTypes.rows;
}

uint16_t KnownIndex(uint16_t index) {
  return index < kFileTypeCount ? index : kFileTypeData;
}

} // namespace

const FileTypeRow& FileTypeRowAt(uint16_t index) {
  return FileTypeRows()[KnownIndex(index)];
}

FileType* NewFileType(uint16_t index) {
  auto* type = static_cast<FileType*>(MemAlloc(sizeof(FileType)));
  if (type) *type = {KnownIndex(index), FileTypeRowAt(index).extension};
  return type;
}

FileType* CopyFileType(const FileType* type) {
  return type ? NewFileType(type->index) : nullptr;
}

void FreeFileType(FileType* type) {
  MemFree(type);
}

// ---- Names --------------------------------------------------------------------------------------------------------

namespace {

constexpr size_t kShortName = 8; // bytes of a name that an older system takes

// Takes over all three.
FileRef* NewFileRef(char* directory, char* name, FileType* type) {
  auto* ref = static_cast<FileRef*>(MemAlloc(sizeof(FileRef)));
  if (ref && directory && name && type) {
    *ref = {directory, name, type};
    return ref;
  }
  StrFree(directory);
  StrFree(name);
  FreeFileType(type);
  MemFree(ref);
  return nullptr;
}

// The current directory with a "/" at its end, as a new string; null when it cannot be told.
char* CurrentDirectory() {
  char none[1];
  uint32_t size = ::GetCurrentDirectoryA(sizeof none, none);
  if (size == 0) return nullptr;
  auto* directory = static_cast<char*>(MemAlloc(size_t{size} + 1));
  if (!directory) return nullptr;
  uint32_t length = ::GetCurrentDirectoryA(size, directory);
  if (length == 0 || length >= size) { // it went, or changed, between the two calls
    MemFree(directory);
    return nullptr;
  }
  if (directory[length - 1] != '/') StrCopy("/", directory + length);
  return directory;
}

} // namespace

FileRef* CopyFileRef(const FileRef* ref) {
  return NewFileRef(StrDup(ref->directory), StrDup(ref->name), CopyFileType(ref->type));
}

void FreeFileRef(FileRef* ref) {
  if (!ref) return;
  StrFree(ref->directory);
  StrFree(ref->name);
  FreeFileType(ref->type);
  MemFree(ref);
}

char* FileRefPath(const FileRef* ref) {
  const char* dot = *ref->type->extension ? "." : "";
  char* path = StrConcatList(ref->directory, ref->name, dot, ref->type->extension, static_cast<const char*>(nullptr));
  const size_t length = StrLength(ref->name);
  if (!path || HasNewShell() || length <= kShortName) return path;
  char* name = path + StrLength(ref->directory);
  ::memmove(name + kShortName, name + length, StrLength(name + length) + 1);
  return path;
}

FileRef* FileRefFromPathAndType(const char* path, const FileType* type) {
  const char* separator = StrFindLast(path, '/');
  if (!separator) return nullptr;
  const char* name = separator + 1;
  const char* dot = StrFindLast(name, '.');
  size_t nameLength = dot ? size_t(dot - name) : StrLength(name);
  return NewFileRef(StrDupN(path, size_t(name - path)), StrDupN(name, nameLength), CopyFileType(type));
}

FileRef* AppFileRef(const char* name, const FileType* type) {
  char* directory = CurrentDirectory();
  return NewFileRef(directory ? directory : StrDup("/"), StrDup(name), CopyFileType(type));
}

char* FileRefName(const FileRef* ref) {
  return StrDup(ref->name);
}

// ---- Files by name ------------------------------------------------------------------------------------------------

namespace {

HANDLE OpenPath(const FileRef* ref, FileMode mode, uint32_t disposition) {
  char* path = FileRefPath(ref);
  HANDLE handle = ::CreateFileA(path, mode.access, mode.share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
  StrFree(path);
  return handle;
}

} // namespace

bool FileExists(const FileRef* ref) {
  char* path = FileRefPath(ref);
  OFSTRUCT record;
  bool exists = ::OpenFile(path, &record, OF_EXIST) != HFILE_ERROR;
  StrFree(path);
  return exists;
}

bool FileCreate(const FileRef* ref) {
  if (FileExists(ref)) return false;
  HANDLE handle = OpenPath(ref, FileModeWrite, CREATE_NEW);
  if (handle == INVALID_HANDLE_VALUE) return false;
  ::CloseHandle(handle);
  return true;
}

bool FileDelete(const FileRef* ref) {
  if (!FileExists(ref)) return false;
  char* path = FileRefPath(ref);
  bool isGone = ::DeleteFileA(path) != FALSE;
  StrFree(path);
  return isGone;
}

// ---- Open files ---------------------------------------------------------------------------------------------------

File* FileOpen(const FileRef* ref, FileMode mode) {
  HANDLE handle = OpenPath(ref, mode, OPEN_EXISTING);
  if (handle == INVALID_HANDLE_VALUE) return nullptr;
  auto* file = static_cast<File*>(MemAlloc(sizeof(File)));
  if (file) {
    *file = {CopyFileRef(ref), handle};
  } else {
    ::CloseHandle(handle);
  }
  return file;
}

bool FileClose(File* file) {
  if (!file) return true;
  bool isKept = ::CloseHandle(file->handle) != FALSE;
  FreeFileRef(file->ref);
  MemFree(file);
  return isKept;
}

bool FileRead(File* file, uint32_t* count, void* buffer) {
  return ::ReadFile(file->handle, buffer, *count, count, nullptr) != FALSE;
}

bool FileWrite(File* file, uint32_t count, const void* bytes) {
  uint32_t written = 0;
  return ::WriteFile(file->handle, bytes, count, &written, nullptr) && written == count;
}

bool FileReadLine(File* file, uint32_t* count, char* buffer) {
  uint32_t start = 0;
  if (!FileTell(file, &start)) {
    *count = 0;
    return false;
  }
  if (!FileRead(file, count, buffer)) return false;
  for (uint32_t i = 0; i + 1 < *count; ++i) {
    if (buffer[i] != '\r' || buffer[i + 1] != '\n') continue;
    *count = i;
    return FileSeek(file, start + i + 2);
  }
  return true;
}

bool FileWriteLine(File* file, uint32_t count, const char* bytes) {
  return FileWrite(file, count, bytes) && FileWrite(file, 2, "\r\n");
}

bool FileTell(File* file, uint32_t* position) {
  *position = ::SetFilePointer(file->handle, 0, nullptr, FILE_CURRENT);
  return *position != INVALID_SET_FILE_POINTER;
}

bool FileSeek(File* file, uint32_t position) {
  if (position > INT32_MAX) return false;
  auto distance = int32_t(position);
  return ::SetFilePointer(file->handle, distance, nullptr, FILE_BEGIN) != INVALID_SET_FILE_POINTER;
}

} // namespace framereel
