// The dialog for the name to save under: what its controls do, and what a name has to pass when Save is pressed.
#include "platform/dialogs/file_dialogs.h"

#include <cerrno>
#include <initializer_list>
#include <sys/stat.h>

#include "core/file_refs.h"
#include "core/memory.h"
#include "core/strings.h"
#include "core/text_format.h"
#include "platform/dialogs/file_lists.h"
#include "platform/records/window_records.h"
#include "platform/windows/active_window.h"
#include "win32/win32_controls.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_files.h"
#include "win32/win32_input.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr WORD kSaveDialog = 2, kDirectoryDialog = 3;
constexpr int kName = 101, kTypeText = 107, kCreateDirectory = 106;
constexpr int kButtonSave = IDOK, kButtonCancel = IDCANCEL;

struct SaveDialogState {
  const char* extension; // of the file type, with its dot; the type's own
  const char* description;
  FileLists lists;
  char entry[kPathBytes];  // what the dialog is working on: the name entered or chosen
  char parsed[kPathBytes]; // the path that it means, with the extension in the type's own letters
};

SaveDialogState* state;     // of the one dialog that is open
char lastSaved[kPathBytes]; // the directory of the last file; "" for none

// ---- Messages ----------------------------------------------------------------------------------------------------

constexpr UINT kError = MB_TASKMODAL | MB_ICONHAND;
constexpr UINT kAskNo = MB_TASKMODAL | MB_ICONHAND | MB_DEFBUTTON2 | MB_YESNO;

// A title and the message behind it, by the title's number.
enum Message : UINT {
  kNoExtension = 1,
  kOtherExtension = 3,
  kFileExists = 5,
  kBadName = 7,
  kNotCreated = 13,
};

int Tell(Message which, UINT flags, const char* first, const char* second = "") {
  char title[80], format[256];
  ::LoadStringA(nullptr, which, title, sizeof title);
  ::LoadStringA(nullptr, which + 1, format, sizeof format);
  char* text = FormatNew(format, first, second);
  const int answer = ::MessageBoxA(nullptr, text ? text : title, title, flags);
  StrFree(text);
  return answer;
}

// ---- What the controls show --------------------------------------------------------------------------------------

// All of it is selected.
void ShowName(HWND dialog, const char* text) {
  ::SetDlgItemTextA(dialog, kName, text);
  ::SendDlgItemMessageA(dialog, kName, EM_SETSEL, 0, -1);
}

void ShowFilter(HWND dialog) {
  ShowName(dialog, state->lists.filter);
}

// False, and nothing is appended, when there is no room.
bool AppendToEntry(const char* text) {
  const size_t length = StrLength(state->entry);
  if (length + StrLength(text) >= kPathBytes) return false;
  StrCopy(text, state->entry + length);
  return true;
}

// Enters a directory or a pattern, and beeps where there is nothing to be seen.
void Enter(HWND dialog) {
  if (RefreshLists(dialog, &state->lists, state->entry)) {
    ShowFilter(dialog);
  } else {
    ::MessageBeep(0);
  }
}

// ---- Passing the name --------------------------------------------------------------------------------------------

// The text from the last "." of the name on, or its end. A dot that a name begins with only hides it.
char* ExtensionOf(char* entered) {
  const char* name = NameInPath(entered);
  const char* dot = *name ? StrFindLast(name + 1, '.') : nullptr;
  return entered + ((dot ? dot : name + StrLength(name)) - entered);
}

// A directory is left by its own signs; what ends in "/" is one, of which the files of the filter are meant.
bool CompleteEntry() {
  const char* name = NameInPath(state->entry);
  const bool sign = StrEqual(name, "..") || StrEqual(name, ".") || StrEqual(state->entry, "~");
  if (sign && !AppendToEntry("/")) return false;
  return *NameInPath(state->entry) || AppendToEntry(state->lists.filter);
}

// What there is where the entry leads to; INVALID_FILE_ATTRIBUTES for nothing.
DWORD NamedByEntry() {
  const bool fits = FullPath(state->lists.directory, state->entry, state->parsed);
  return fits ? ::GetFileAttributesA(state->parsed) : INVALID_FILE_ATTRIBUTES;
}

// A file's name may have the letters of a pattern, and is none all the same.
bool EntersPattern() {
  return IsPattern(NameInPath(state->entry)) && NamedByEntry() == INVALID_FILE_ATTRIBUTES;
}

bool EntersDirectory() {
  const DWORD named = NamedByEntry();
  return named != INVALID_FILE_ATTRIBUTES && named & FILE_ATTRIBUTE_DIRECTORY;
}

bool BadName() {
  Tell(kBadName, kError, state->entry);
  return false;
}

// The user sees what has been made of the name, and presses once more.
bool HasExtension(HWND dialog) {
  char* extension = ExtensionOf(state->entry);
  if (StrEqualNoCase(extension, state->extension)) return true;
  const bool none = !*extension;
  if (none) {
    Tell(kNoExtension, kError, state->extension);
  } else {
    Tell(kOtherExtension, kError, extension, state->extension);
  }
  *extension = 0;
  if (!AppendToEntry(state->extension)) return BadName();
  ShowName(dialog, state->entry);
  return false;
}

// Whether the system takes it. What it is saved as has the type's extension to the letter, so that is what is looked
// for from here on.
bool Parse() {
  if (!FullPath(state->lists.directory, state->entry, state->parsed)) return BadName();
  StrCopy(state->extension, ExtensionOf(state->parsed));
  const bool there = ::GetFileAttributesA(state->parsed) != INVALID_FILE_ATTRIBUTES;
  return there || (errno != ENAMETOOLONG && errno != EINVAL) || BadName();
}

bool MayBeWritten() {
  if (::GetFileAttributesA(state->parsed) == INVALID_FILE_ATTRIBUTES) return true;
  return Tell(kFileExists, kAskNo, state->entry) == IDYES;
}

void PressSave(HWND dialog) {
  ::GetDlgItemTextA(dialog, kName, state->entry, int(kPathBytes));
  if (!*state->entry) StrCopy("*.*", state->entry);
  if (!CompleteEntry()) {
    BadName();
    return;
  }
  if (EntersPattern()) return Enter(dialog);
  if (!HasExtension(dialog)) return;
  if (EntersDirectory()) return Enter(dialog);
  if (Parse() && MayBeWritten()) ::EndDialog(dialog, kButtonSave);
}

// ---- The new directory -------------------------------------------------------------------------------------------

void PressCreate(HWND dialog) {
  char name[kPathBytes], path[kPathBytes];
  ::GetDlgItemTextA(dialog, kName, name, int(kPathBytes));
  const bool fits = FullPath(state->lists.directory, name, path);
  // With the rights that the user's files are to have; the platform's call makes private ones.
  constexpr mode_t kRights = 0777;
  if (fits && ::mkdir(path, kRights) == 0) {
    ::EndDialog(dialog, IDOK);
  } else {
    Tell(kNotCreated, kError, fits ? path : name);
  }
}

intptr_t DirectoryProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
  if (message == WM_INITDIALOG) {
    ::SendDlgItemMessageA(dialog, kName, EM_LIMITTEXT, kPathBytes - 1, 0);
    return TRUE;
  }
  if (message != WM_COMMAND) return FALSE;
  if (LOWORD(wParam) == IDCANCEL) ::EndDialog(dialog, IDCANCEL);
  if (LOWORD(wParam) == IDOK) PressCreate(dialog);
  return TRUE;
}

void AskDirectory(HWND dialog) {
  ::DialogBoxParamA(TheMainWindow()->instance, MAKEINTRESOURCEA(kDirectoryDialog), dialog, DirectoryProcedure, 0);
  RefreshLists(dialog, &state->lists, state->lists.directory);
}

// ---- The dialog --------------------------------------------------------------------------------------------------

void OnSelected(HWND dialog, int list) {
  const ListEntry selected = SelectedEntry(dialog, list, state->entry);
  if (selected == ListEntry::kDirectory && !AppendToEntry(state->lists.filter)) return;
  if (selected != ListEntry::kNone) ShowName(dialog, state->entry);
}

void OnDoubleClick(HWND dialog, int list) {
  const ListEntry selected = SelectedEntry(dialog, list, state->entry);
  if (selected == ListEntry::kDirectory) Enter(dialog);
  if (selected != ListEntry::kFile) return;
  ShowName(dialog, state->entry);
  ::SendMessageA(dialog, WM_COMMAND, kButtonSave, 0);
}

void OnListNotice(HWND dialog, int list, WORD notice) {
  if (notice == LBN_SELCHANGE) OnSelected(dialog, list);
  if (notice == LBN_DBLCLK) OnDoubleClick(dialog, list);
  if (notice == LBN_KILLFOCUS) ::SendDlgItemMessageA(dialog, list, LB_SETCURSEL, WPARAM(-1), 0);
}

void OnCommand(HWND dialog, int id, WORD notice) {
  switch (id) {
  case kButtonCancel:
    ::EndDialog(dialog, kButtonCancel);
    return;
  case kButtonSave:
    return PressSave(dialog);
  case kCreateDirectory:
    return AskDirectory(dialog);
  case kName:
    if (notice == EN_CHANGE) {
      ::EnableWindow(::GetDlgItem(dialog, kButtonSave), ::GetWindowTextLengthA(::GetDlgItem(dialog, kName)) > 0);
    }
    return;
  case kDriveList:
  case kDirectoryList:
  case kFileList:
    return OnListNotice(dialog, id, notice);
  default:
    return;
  }
}

// The directory that it is to start in may have gone.
void ShowStart(HWND dialog) {
  FileLists* lists = &state->lists;
  for (const char* directory : {static_cast<const char*>(lists->directory), HomeDirectory(), "/"}) {
    if (*directory == '/' && RefreshLists(dialog, lists, directory)) return;
  }
}

void OnStart(HWND dialog) {
  ::SendDlgItemMessageA(dialog, kName, EM_LIMITTEXT, kPathBytes - 1, 0);
  ShowStart(dialog);
  ShowFilter(dialog);
  ::SetDlgItemTextA(dialog, kTypeText, state->description);
}

intptr_t SaveProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
  case WM_INITDIALOG:
    OnStart(dialog);
    return TRUE;
  case WM_COMMAND:
    OnCommand(dialog, LOWORD(wParam), HIWORD(wParam));
    return TRUE;
  default:
    return FALSE;
  }
}

SaveDialogState* NewState(const FileRef* document, const FileType* type) {
  auto* made = static_cast<SaveDialogState*>(MemAlloc(sizeof(SaveDialogState)));
  if (!made) return nullptr;
  *made = {};
  const FileTypeRow& row = FileTypeRowAt(type->index);
  made->extension = row.pattern;
  made->description = row.description;
  StrCopy(row.pattern, StrCopyEnd("*", made->lists.filter));
  if (!document || !FullPath("/", document->directory, made->lists.directory)) {
    StrCopy(lastSaved, made->lists.directory);
  }
  return made;
}

void NoteDirectory(const char* path) {
  StrCopyN(path, lastSaved, size_t(NameInPath(path) - path));
}

} // namespace

FileRef* AskSaveFile(const FileRef* document, const FileType* type) {
  if (state) return nullptr;
  state = NewState(document, type);
  if (!state) return nullptr;
  const MainWindow* main = TheMainWindow();
  SuspendActivation();
  const intptr_t answer =
      ::DialogBoxParamA(main->instance, MAKEINTRESOURCEA(kSaveDialog), main->window, SaveProcedure, 0);
  ResumeActivation();
  FileRef* file = answer == kButtonSave ? FileRefFromPathAndType(state->parsed, type) : nullptr;
  if (file) NoteDirectory(state->parsed);
  MemFree(state);
  state = nullptr;
  return file;
}

void FileDialogsStartUp() {
  *lastSaved = 0;
}

} // namespace framereel
