// The settings file: the user's options and the capture area, kept from one run to the next.
//
// It is "Settings.prf" in the directory that is current at start-up, where it stands there; else in the user's
// configuration folder (core/user_folders.h), or in the current directory after all for a user who has no such folder.
// It is 8-bit text, on each line a key, a colon and a value with no blanks added, ended by CR LF. It has no header, no
// version and no checksum. The keys stand in one table in settings_file.cpp. It is read once, ahead of the panel, and
// written whole at every change, so settings have no Save.
#pragma once

#include <cstdint>

namespace framereel {

struct AreaState;
struct File;
struct FileRef;
struct RecordingOptions;

// There is one, made by the application, for the program's run.
struct Settings {
  FileRef* ref;              // the file; owned
  bool inUserFolder;         // which is made by the first save
  bool toldOfFailure;        // once is enough
  RecordingOptions* options; // not owned
  AreaState* area;           // not owned; its recorder has the capture area
};

// Finds the file and reads it. The main window and the area (AreaInit) stand already.
void SettingsInit(Settings& settings, RecordingOptions* options, AreaState* area);
void SettingsShutDown(Settings& settings);

// Reads the file into the options and the area. The file may be missing or hold anything: frame delay and recording
// size become ones that the program offers, and the area lies on the usable screen and fits the recording size. An area
// that has no pixels there gives way to the default one. What the file does not tell stays as it is, but for the delay
// and the size, which take their defaults.
void SettingsLoad(Settings& settings);
// Writes the file anew. When that cannot be, the old file stays if it can't be deleted; the user goes on undisturbed,
// and standard error is told at the first time.
void SettingsSave(Settings& settings);

// ---- Lines --------------------------------------------------------------------------------------------------------

// A value is stored with "\n" for a line feed and "\\" for a backslash. Both limits are without the terminator.
inline constexpr uint32_t kSettingsKeyLimit = 50;
inline constexpr uint32_t kSettingsValueLimit = 80; // as stored

// Reads the next line; the buffers have room for the limits and a terminator. False ends the reading, and the buffers
// then hold nothing of use: at the end of the file, an empty line, a line without a colon, and one beyond a limit. It
// looks at 132 bytes for the line and its end.
bool SettingsReadLine(File* file, char* key, char* value);
// A line for each 79 characters of the value, and none for an empty one. A write that fails is not noticed.
void SettingsWriteString(File* file, const char* key, const char* value);

} // namespace framereel
