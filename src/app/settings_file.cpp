// A new setting is a row of kSettings.
#include "app/settings_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "area/area.h"
#include "area/capture_area.h"
#include "core/app_strings.h"
#include "core/file_refs.h"
#include "core/numbers.h"
#include "core/rects.h"
#include "core/strings.h"
#include "core/text_format.h"
#include "core/text_scan.h"
#include "core/user_folders.h"
#include "platform/records/window_records.h"
#include "recorder/engine/frame_rates.h"
#include "recorder/engine/recorder_state.h"
#include "recorder/engine/recording_scale.h"

namespace framereel {

// ---- Lines --------------------------------------------------------------------------------------------------------

namespace {

constexpr uint32_t kLineLimit = 132; // bytes looked at for a line and its end
constexpr uint32_t kPieceLimit = 79; // characters of a value on one line

// Answers what is left of the value. `out` has room for every character of a piece escaped.
const char* EscapePiece(const char* value, char* out) {
  for (uint32_t i = 0; i < kPieceLimit && *value; ++i, ++value) {
    if (*value == '\n' || *value == '\\') *out++ = '\\';
    *out++ = *value == '\n' ? 'n' : *value;
  }
  *out = '\0';
  return value;
}

// A backslash at the very end is dropped.
void Unescape(const char* stored, char* out) {
  for (; *stored; ++stored) {
    const bool escaped = *stored == '\\';
    if (escaped && !*++stored) break;
    *out++ = escaped && *stored == 'n' ? '\n' : *stored;
  }
  *out = '\0';
}

} // namespace

bool SettingsReadLine(File* file, char* key, char* value) {
  char line[kLineLimit + 1];
  uint32_t length = kLineLimit;
  if (!FileReadLine(file, &length, line)) return false;
  line[length] = '\0';
  uint32_t keyLength = 0;
  for (; keyLength < length && line[keyLength] != ':'; ++keyLength) {
    if (keyLength == kSettingsKeyLimit) return false;
    key[keyLength] = line[keyLength];
  }
  key[keyLength] = '\0';
  // Unsigned: without a colon the length is one below 0, and so beyond the limit.
  const uint32_t valueLength = length - keyLength - 1;
  if (valueLength > kSettingsValueLimit) return false;
  Unescape(line + keyLength + 1, value);
  return true;
}

void SettingsWriteString(File* file, const char* key, const char* value) {
  while (*value) {
    char escaped[2 * kPieceLimit + 1];
    value = EscapePiece(value, escaped);
    char* line = FormatNew("%s%:%s%", key, escaped);
    FileWriteLine(file, uint32_t(StrLength(line)), line);
    StrFree(line);
  }
}

// ---- The table ----------------------------------------------------------------------------------------------------

namespace {

constexpr uint16_t kYesText = 170, kNoText = 171;
constexpr char kAreaFormat[] = "%ds%,%ds% %ds%x%ds%"; // read and written by it

struct StoredArea {
  int16_t left, top, width, height; // screen pixels; from a file, any numbers
};

// The values as the file has them.
struct StoredSettings {
  StoredArea area;
  int32_t frameDelay;        // ms
  int32_t recordingSize;     // percent
  RecordingOptions* options; // the flags stand there; not owned
};

// One of the three fields is set, and it is the value's type.
struct Setting {
  uint16_t key; // of AppString
  StoredArea StoredSettings::*area = nullptr;
  int32_t StoredSettings::*number = nullptr;
  bool RecordingOptions::*flag = nullptr;
};

// In the order of the file.
constexpr Setting kSettings[] = {
    {.key = 106, .area = &StoredSettings::area},
    {.key = 104, .number = &StoredSettings::frameDelay},
    {.key = 49, .flag = &RecordingOptions::interframeTransparency},
    {.key = 50, .flag = &RecordingOptions::recordTimingInfo},
    {.key = 51, .flag = &RecordingOptions::loop},
    {.key = 52, .flag = &RecordingOptions::fakeScreen},
    {.key = 53, .flag = &RecordingOptions::overlayBorder},
    {.key = 66, .flag = &RecordingOptions::overlayCursor},
    {.key = 82, .flag = &RecordingOptions::explorerCompatible},
    {.key = 105, .number = &StoredSettings::recordingSize},
};

StoredSettings CurrentSettings(const Settings& settings) {
  const Rect& area = settings.area->recorder->captureArea;
  const auto width = int16_t(area.right - area.left);
  const auto height = int16_t(area.bottom - area.top);
  const RecordingOptions& options = *settings.options;
  return {{area.left, area.top, width, height},
          options.frameDelay,
          ScaleOf(options.recordingSize).percent,
          settings.options};
}

// ---- Reading ------------------------------------------------------------------------------------------------------

void ReadValue(const Setting& setting, const char* text, StoredSettings& stored) {
  if (setting.area) {
    StoredArea& area = stored.*setting.area;
    ScanText(text, kAreaFormat, &area.left, &area.top, &area.width, &area.height);
  } else if (setting.number) {
    stored.*setting.number = ScanInt(text);
  } else {
    stored.options->*setting.flag = StrEqual(text, AppString(kYesText));
  }
}

void ReadLines(File* file, StoredSettings& stored) {
  char key[kSettingsKeyLimit + 1], value[kSettingsValueLimit + 1];
  while (SettingsReadLine(file, key, value)) {
    for (const Setting& setting : kSettings) {
      if (StrEqual(key, AppString(setting.key))) ReadValue(setting, value, stored);
    }
  }
}

bool HasPixels(const Rect& r) {
  return r.right > r.left && r.bottom > r.top;
}

Rect OnUsableScreen(const Rect& r) {
  const MainWindow* main = TheMainWindow();
  return RectIntersect(r, {0, 0, main->usableHeight, main->usableWidth});
}

// The part of the area that lies on the usable screen; one without pixels if its edges have no place in 16 bits.
Rect UsablePart(const StoredArea& area) {
  const int32_t right = area.left + area.width, bottom = area.top + area.height;
  if (PinToShort(right) != right || PinToShort(bottom) != bottom) return {};
  return OnUsableScreen({area.top, area.left, PinToShort(bottom), PinToShort(right)});
}

void SetArea(AreaState& area, const StoredArea& stored) {
  Rect& captureArea = area.recorder->captureArea;
  captureArea = UsablePart(stored);
  if (HasPixels(captureArea)) return;
  AreaSetDefault(area);
  captureArea = OnUsableScreen(captureArea);
}

// The smallest size that is not below the percentage; the largest for one above them all.
uint16_t RecordingSizeOf(int32_t percent) {
  uint16_t size = 0;
  while (size < kSize100 && ScaleOf(size).percent < percent) ++size;
  return size;
}

// ---- Writing ------------------------------------------------------------------------------------------------------

void SettingsWriteInt(File* file, const char* key, int32_t value) {
  char text[12];
  SettingsWriteString(file, key, FormatInt(text, value));
}

void SettingsWriteBool(File* file, const char* key, bool value) {
  SettingsWriteString(file, key, AppString(value ? kYesText : kNoText));
}

void SettingsWriteArea(File* file, const char* key, const StoredArea& area) {
  char* text = FormatNew(kAreaFormat, area.left, area.top, area.width, area.height);
  SettingsWriteString(file, key, text);
  StrFree(text);
}

void WriteValue(File* file, const Setting& setting, const StoredSettings& stored) {
  const char* key = AppString(setting.key);
  if (setting.area) {
    SettingsWriteArea(file, key, stored.*setting.area);
  } else if (setting.number) {
    SettingsWriteInt(file, key, stored.*setting.number);
  } else {
    SettingsWriteBool(file, key, stored.options->*setting.flag);
  }
}

// ---- Places -------------------------------------------------------------------------------------------------------

constexpr char kFileName[] = "Settings";

void UseUserFolder(Settings& settings, const FileType* type) {
  char folder[PATH_MAX];
  if (FindUserFolder(kConfigFolder, folder) == 0) return;
  char* path = StrConcatList(folder, kFileName, static_cast<const char*>(nullptr));
  FreeFileRef(settings.ref);
  settings.ref = FileRefFromPathAndType(path, type);
  settings.inUserFolder = true;
  StrFree(path);
}

// The file, new and empty; null with errno.
File* BeginFile(const Settings& settings) {
  char folder[PATH_MAX];
  if (settings.inUserFolder) MakeUserFolder(kConfigFolder, folder);
  if (FileExists(settings.ref) && !FileDelete(settings.ref)) return nullptr;
  return FileCreate(settings.ref) ? FileOpen(settings.ref, FileModeWrite) : nullptr;
}

void TellOfFailure(Settings& settings) {
  if (settings.toldOfFailure) return;
  settings.toldOfFailure = true;
  const char* reason = ::strerror(errno);
  char* path = FileRefPath(settings.ref);
  ::fprintf(stderr, "framereel: the settings cannot be written to %s: %s\n", path, reason);
  StrFree(path);
}

} // namespace

// ---- The file -----------------------------------------------------------------------------------------------------

void SettingsInit(Settings& settings, RecordingOptions* options, AreaState* area) {
  FileType* type = NewFileType(kFileTypePreferences);
  settings = {AppFileRef(kFileName, type), false, false, options, area};
  if (!FileExists(settings.ref)) UseUserFolder(settings, type);
  FreeFileType(type);
  SettingsLoad(settings);
}

void SettingsShutDown(Settings& settings) {
  FreeFileRef(settings.ref);
  settings.ref = nullptr;
}

void SettingsLoad(Settings& settings) {
  const RecordingOptions defaults;
  StoredSettings stored = CurrentSettings(settings);
  stored.frameDelay = defaults.frameDelay;
  stored.recordingSize = ScaleOf(defaults.recordingSize).percent;
  if (FileExists(settings.ref)) {
    File* file = FileOpen(settings.ref, FileModeRead);
    if (file) ReadLines(file, stored);
    FileClose(file);
  }
  SetArea(*settings.area, stored.area);
  settings.options->frameDelay = SnapFrameDelay(stored.frameDelay);
  settings.options->recordingSize = RecordingSizeOf(stored.recordingSize);
  AreaRecompute(*settings.area);
}

void SettingsSave(Settings& settings) {
  File* file = BeginFile(settings);
  if (!file) return TellOfFailure(settings);
  const StoredSettings stored = CurrentSettings(settings);
  for (const Setting& setting : kSettings) WriteValue(file, setting, stored);
  FileClose(file);
}

} // namespace framereel
