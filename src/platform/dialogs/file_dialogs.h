// The dialog that asks for the name of a file to save under.
//
// It is the program's own: lists of drives, directories and files, and a field with the name. Names and paths are
// bytes, shown as UTF-8; names may have 255 bytes and paths 4096. "/" stands between names, ".." is the parent, "~" at
// the beginning the home directory. Hidden files, those whose names begin with a dot, are not listed.
//
// The dialog sees to the extension and asks before a file is overwritten: who gets an answer asks no more. It touches
// no file itself, but makes the directories that the user wants.
#pragma once

namespace framereel {

struct FileRef;
struct FileType;

// Asks for a file of the type and answers it, to be freed with FreeFileRef; null when the user cancelled, and when a
// dialog cannot be shown or is open already. Timers go on meanwhile; activation is suspended (windows/active_window.h).
//
// It starts in the directory of `document`, or for null where the last file that it answered is; else, and when that
// directory is gone, in the home directory.
FileRef* AskSaveFile(const FileRef* document, const FileType* type);

// Forgets where the last file was.
void FileDialogsStartUp();

} // namespace framereel
