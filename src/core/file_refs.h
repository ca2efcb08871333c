// Files: what they are named by (FileRef) and open files (File), with the operations on both.
//
// The toolkit never handles a path as one string for long: a FileRef holds directory, name and type. All failures
// are answers, false or null; errno then tells why where a platform call failed. Paths are bytes, separated by "/",
// as long as the system allows. Operations on an open File allocate nothing, so they also serve when memory is
// exhausted.
#pragma once

#include <cstdint>

#include "win32/win32_files.h"

namespace framereel {

// ---- Types --------------------------------------------------------------------------------------------------------

// A row of the table of types. The strings live as long as the process; a row that stands for nothing has three
// empty ones.
struct FileTypeRow {
  const char* extension;   // without the dot: gif
  const char* pattern;     // with it: .gif
  const char* description; // for the lists of the file dialogs: GIF Files (.GIF)
};

inline constexpr uint16_t kFileTypeCount = 20;
inline constexpr uint16_t kFileTypePreferences = 1;
inline constexpr uint16_t kFileTypeGif = 2;
inline constexpr uint16_t kFileTypeData = 12; // stands for any extension that the table does not know

// An index that is not below kFileTypeCount gives the row of kFileTypeData.
const FileTypeRow& FileTypeRowAt(uint16_t index);

struct FileType {
  uint16_t index;        // of the row
  const char* extension; // the row's; not owned
};

// New records, to be released with FreeFileType. An index out of the table counts as kFileTypeData.
FileType* NewFileType(uint16_t index);
FileType* CopyFileType(const FileType* type);
void FreeFileType(FileType* type);

// ---- Names --------------------------------------------------------------------------------------------------------

struct FileRef {
  char* directory; // owned; ends in "/", and is "/" for the root
  char* name;      // owned; without extension
  FileType* type;  // owned
};

// All three fields are copied, or freed. FreeFileRef of null does nothing.
FileRef* CopyFileRef(const FileRef* ref);
void FreeFileRef(FileRef* ref);

// A new string, directory, name, "." and extension, to be released with StrFree. A type without an extension gives
// no dot either, since here a dot at the end would be part of the name. Where names have 8 bytes (HasNewShell), a
// longer one is cut.
char* FileRefPath(const FileRef* ref);
// The name runs from the last "/" to the last "." behind it, if any; null when there is no "/". Copies the type.
FileRef* FileRefFromPathAndType(const char* path, const FileType* type);
// A file in the current directory; in "/" when that cannot be told. Copies both arguments.
FileRef* AppFileRef(const char* name, const FileType* type);
// A new string, to be released with StrFree.
char* FileRefName(const FileRef* ref);

// ---- Files by name ------------------------------------------------------------------------------------------------

bool FileExists(const FileRef* ref); // false for a directory
bool FileCreate(const FileRef* ref); // a new empty file; false, and nothing changes, when it exists
bool FileDelete(const FileRef* ref); // false when it does not exist

// ---- Open files ---------------------------------------------------------------------------------------------------

struct FileMode {
  uint32_t access, share; // as ::CreateFileA takes them
};

inline constexpr FileMode FileModeWrite = {GENERIC_READ | GENERIC_WRITE, 0};
inline constexpr FileMode FileModeRead = {GENERIC_READ, FILE_SHARE_READ};

struct File {
  FileRef* ref;  // what it was opened by, an owned copy; null for a handle without a name, such as standard output
  HANDLE handle; // owned
};

// The file must exist. Null when it cannot be opened, also when another program holds it in a way that excludes
// this.
File* FileOpen(const FileRef* ref, FileMode mode);
// Closes the handle and frees the record, which is from FileOpen or MemAlloc. False when the system reports that an
// earlier write failed after all. Null does nothing and answers true.
bool FileClose(File* file);

// At the end of the file true with a count of 0. `count` comes in as the buffer's size and goes out as what was
// read; it is 0 after a failure.
bool FileRead(File* file, uint32_t* count, void* buffer);
// True when all bytes went out.
bool FileWrite(File* file, uint32_t count, const void* bytes);

// Lines end in CR LF. Reads a line without its end; `count` as with FileRead. A line longer than the buffer arrives
// in pieces, without any sign; a last line without an end arrives like any other. The file must be one that can be
// sought.
bool FileReadLine(File* file, uint32_t* count, char* buffer);
bool FileWriteLine(File* file, uint32_t count, const char* bytes);

// The position in bytes from the start. It can be told below 2^32 - 1 and sought below 2^31; beyond that, false.
bool FileTell(File* file, uint32_t* position);
bool FileSeek(File* file, uint32_t position);

} // namespace framereel
