// Files and directories, as win32_types.h tells.
#pragma once

#include "win32/win32_types.h"

inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(intptr_t{-1});
inline constexpr DWORD GENERIC_READ = 0x80000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD CREATE_NEW = 1;
inline constexpr DWORD OPEN_EXISTING = 3;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD FILE_ATTRIBUTE_TEMPORARY = 0x100;
inline constexpr DWORD FILE_BEGIN = 0;
inline constexpr DWORD FILE_CURRENT = 1;
inline constexpr DWORD INVALID_SET_FILE_POINTER = 0xFFFFFFFF;
inline constexpr DWORD STD_OUTPUT_HANDLE = 0xFFFFFFF5;
inline constexpr DWORD MOVEFILE_REPLACE_EXISTING = 1;
inline constexpr UINT OF_EXIST = 0x4000;

inline constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 2; // its name begins with a dot; "." and ".." are not hidden
inline constexpr DWORD FILE_ATTRIBUTE_SYSTEM = 4; // neither a file nor a directory: a device, a pipe
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;

struct WIN32_FIND_DATAA {
  DWORD dwFileAttributes;
  char cFileName[1024]; // longer than any system's names
};

using HFILE = int32_t;
inline constexpr HFILE HFILE_ERROR = -1;

struct OFSTRUCT {
  BYTE cBytes; // the record's size, filled by the call; nobody reads more of it
};

// Opens a file. `access` is GENERIC_READ, GENERIC_WRITE or both; `share` FILE_SHARE_READ or 0; `disposition`
// CREATE_NEW (fails on a file that exists; a new file gets the user's default permissions) or OPEN_EXISTING.
// `security` and `templateFile` are null, `attributes` is FILE_ATTRIBUTE_NORMAL; with FILE_ATTRIBUTE_TEMPORARY, for a
// new file, the path is that of a directory, and the file in it has no name and is gone when it is closed without one.
// Not every file system has those. Paths are bytes, separated by "/". INVALID_HANDLE_VALUE on failure, with errno
// telling why.
HANDLE CreateFileA(const char* path, DWORD access, DWORD share, void* security, DWORD disposition, DWORD attributes,
                   HANDLE templateFile);
// The process's standard output, for STD_OUTPUT_HANDLE. It is not to be closed.
HANDLE GetStdHandle(DWORD which);
// Writes all of the bytes: a write that is interrupted or cut short goes on with the rest. `written` gets the number
// of bytes that went out. FALSE on failure, with errno telling why. `overlapped` is null.
BOOL WriteFile(HANDLE file, const void* bytes, DWORD count, DWORD* written, void* overlapped);
// Reads up to `count` bytes; at the end of the file TRUE with `read` 0. `overlapped` is null.
BOOL ReadFile(HANDLE file, void* bytes, DWORD count, DWORD* read, void* overlapped);
// Moves the position and answers it; INVALID_SET_FILE_POINTER on failure. `distanceHigh` is null.
DWORD SetFilePointer(HANDLE file, LONG distance, LONG* distanceHigh, DWORD from);
// Brings what was written to the disk itself; FALSE when that fails, as on a full disk.
BOOL FlushFileBuffers(HANDLE file);
// FALSE when the system reports that an earlier write failed after all; the handle is gone in either case.
BOOL CloseHandle(HANDLE file);
// A path to an open file, good for this process while it is open, whether the file has a name or not. Answers its
// length; 0 when it does not fit or the system gives none. `flags` is 0.
DWORD GetFinalPathNameByHandleA(HANDLE file, char* path, DWORD size, DWORD flags);
// Gives a file another name on the same file system, where nothing stands under that name yet; `existing` may be a path
// of GetFinalPathNameByHandleA. FALSE on failure, with errno telling why. `security` is null.
BOOL CreateHardLinkA(const char* name, const char* existing, void* security);
BOOL DeleteFileA(const char* path);
// Makes a directory that nobody but its owner has a right to; FALSE on failure, with errno telling why. `security` is
// null.
BOOL CreateDirectoryA(const char* path, void* security);
// FILE_ATTRIBUTE_... of what the path names, links followed; INVALID_FILE_ATTRIBUTES when there is nothing, with errno
// telling why.
DWORD GetFileAttributesA(const char* path);
// Goes through the directory that `pattern` names with "/*" behind it: everything in it, "." and ".." too, in no
// particular order. INVALID_HANDLE_VALUE when it cannot be read, with errno telling why. The handle goes back with
// FindClose.
HANDLE FindFirstFileA(const char* pattern, WIN32_FIND_DATAA* found);
BOOL FindNextFileA(HANDLE search, WIN32_FIND_DATAA* found); // FALSE when there is no more
BOOL FindClose(HANDLE search);
// Where a person has something mounted: the root, and what is mounted below /media, /run/media and /mnt, each path
// ended by a zero byte, and one more behind the last. Answers how many bytes that is without the last; a buffer that is
// too small stays untouched, and the answer is the size needed.
DWORD GetLogicalDriveStringsA(DWORD bufferSize, char* buffer);
// Copies the current directory's path, without a separator at its end, and answers its length without the zero byte. A
// buffer that is too small stays untouched, and the answer is the size needed, zero byte included. 0 on failure.
DWORD GetCurrentDirectoryA(DWORD bufferSize, char* buffer);
// Puts the file in the place of `to`, in one step, on the same file system; with MOVEFILE_REPLACE_EXISTING a file that
// stands there goes. FALSE on failure, with errno telling why, and then both are as before.
BOOL MoveFileExA(const char* from, const char* to, DWORD flags);
// Only with OF_EXIST: answers HFILE_ERROR unless the path names a file that exists; nothing stays open.
HFILE OpenFile(const char* path, OFSTRUCT* record, UINT mode);
