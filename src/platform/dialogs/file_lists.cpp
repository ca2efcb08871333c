// The lists of a file dialog.
#include "platform/dialogs/file_lists.h"

#include <initializer_list>

#include "core/strings.h"
#include "win32/win32_controls.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_files.h"

namespace framereel {
namespace {

constexpr DWORD kUnlisted = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

void AddText(HWND dialog, int list, const char* text) {
  ::SendDlgItemMessageA(dialog, list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
}

// In brackets, so that the lists of a dialog look different.
void AddDirectory(HWND dialog, const char* name) {
  char text[sizeof WIN32_FIND_DATAA::cFileName + 2];
  StrCopy("]", StrCopyEnd(name, StrCopyEnd("[", text)));
  AddText(dialog, kDirectoryList, text);
}

void AddFound(HWND dialog, const FileLists& lists, const WIN32_FIND_DATAA& found) {
  const char* name = found.cFileName;
  if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
    const bool isRoot = StrEqual(lists.directory, "/");
    const bool shown = StrEqual(name, "..") ? !isRoot : !(found.dwFileAttributes & kUnlisted) && !StrEqual(name, ".");
    if (shown) AddDirectory(dialog, name);
  } else if (!(found.dwFileAttributes & kUnlisted) && MatchesPattern(lists.filter, name)) {
    AddText(dialog, kFileList, name);
  }
}

void Fill(HWND dialog, const FileLists& lists, HANDLE search, WIN32_FIND_DATAA* found) {
  for (const int list : {kDriveList, kDirectoryList, kFileList}) {
    ::SendDlgItemMessageA(dialog, list, LB_RESETCONTENT, 0, 0);
  }
  ForEachDrive([](void* to, const char* shown, const char*) { AddText(static_cast<HWND>(to), kDriveList, shown); },
               dialog);
  do {
    AddFound(dialog, lists, *found);
  } while (::FindNextFileA(search, found));
  ::SetDlgItemTextA(dialog, kPathText, lists.directory);
}

// The directory and the filter that the user means.
bool Understand(const FileLists& now, const char* entered, FileLists* meant) {
  StrCopy(now.filter, meant->filter);
  if (!FullPath(now.directory, entered, meant->directory)) return false;
  if (IsDirectory(meant->directory)) return true;
  const char* pattern = NameInPath(entered);
  if (!IsPattern(pattern) || StrLength(pattern) >= kPatternBytes) return false;
  StrCopy(pattern, meant->filter);
  char ahead[kPathBytes];
  StrCopyN(entered, ahead, size_t(pattern - entered));
  return FullPath(now.directory, ahead, meant->directory) && IsDirectory(meant->directory);
}

HANDLE Search(const char* directory, WIN32_FIND_DATAA* found) {
  char* all = StrConcat(directory, StrEqual(directory, "/") ? "*" : "/*");
  const HANDLE search = ::FindFirstFileA(all, found);
  StrFree(all);
  return search;
}

} // namespace

bool RefreshLists(HWND dialog, FileLists* lists, const char* entered) {
  FileLists meant;
  if (StrLength(entered) >= kPathBytes || !Understand(*lists, entered, &meant)) return false;
  WIN32_FIND_DATAA found;
  const HANDLE search = Search(meant.directory, &found);
  if (search == INVALID_HANDLE_VALUE) return false;
  *lists = meant;
  Fill(dialog, *lists, search, &found);
  ::FindClose(search);
  return true;
}

// ---- What is selected --------------------------------------------------------------------------------------------

namespace {

// Takes off the brackets. A directory that bears the sign of the home directory is told from it.
bool TakeDirectory(const char* shown, char* out) {
  const size_t length = StrLength(shown) - 2;
  if (length + 4 > kPathBytes) return false;
  char* end = StrCopyEnd(StrEqual(shown, "[~]") ? "./" : "", out);
  StrCopy("/", StrCopyN(shown + 1, end, length));
  return true;
}

struct DriveQuestion {
  const char* shown;
  char* out;
  bool answered;
};

void AnswerDrive(void* argument, const char* shown, const char* path) {
  auto* question = static_cast<DriveQuestion*>(argument);
  if (question->answered || !StrEqual(shown, question->shown) || StrLength(path) + 2 > kPathBytes) return;
  question->answered = true;
  StrCopy(StrEqual(path, "/") ? "" : "/", StrCopyEnd(path, question->out));
}

bool TakeDrive(const char* shown, char* out) {
  DriveQuestion question = {shown, out, false};
  ForEachDrive(AnswerDrive, &question);
  return question.answered;
}

} // namespace

ListEntry SelectedEntry(HWND dialog, int list, char* out) {
  const LRESULT selected = ::SendDlgItemMessageA(dialog, list, LB_GETCURSEL, 0, 0);
  if (selected == LB_ERR) return ListEntry::kNone;
  const LRESULT length = ::SendDlgItemMessageA(dialog, list, LB_GETTEXTLEN, WPARAM(selected), 0);
  if (length < 0 || size_t(length) >= kPathBytes) return ListEntry::kNone;
  char text[kPathBytes];
  ::SendDlgItemMessageA(dialog, list, LB_GETTEXT, WPARAM(selected), reinterpret_cast<LPARAM>(text));
  if (list == kFileList) {
    StrCopy(text, out);
    return ListEntry::kFile;
  }
  const bool taken = list == kDriveList ? TakeDrive(text, out) : TakeDirectory(text, out);
  return taken ? ListEntry::kDirectory : ListEntry::kNone;
}

} // namespace framereel
