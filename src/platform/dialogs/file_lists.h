// The lists of a file dialog, and the directory that they show.
#pragma once

#include "platform/dialogs/dialog_paths.h"
#include "win32/win32_types.h"

namespace framereel {

inline constexpr size_t kPatternBytes = 256; // with the zero; a longer one is refused
inline constexpr int kDriveList = 103, kDirectoryList = 104, kFileList = 105, kPathText = 120;

struct FileLists {
  char directory[kPathBytes]; // from the root on, as FullPath makes it
  char filter[kPatternBytes]; // what the names of files match, for example *.gif
};

// Shows what there is in a directory now, or of which of its files the names match a pattern: `entered` is a directory,
// whose files are those of the filter, or a pattern, which becomes the filter, with or without a directory ahead of it.
// Only then, and when the directory can be read, anything changes; else false.
bool RefreshLists(HWND dialog, FileLists* lists, const char* entered);

enum class ListEntry : unsigned char { kNone, kFile, kDirectory };

// What is selected in one of the lists, as it would be entered: a file's name, or the path of a directory or drive with
// "/" behind it. `out` has kPathBytes.
ListEntry SelectedEntry(HWND dialog, int list, char* out);

} // namespace framereel
