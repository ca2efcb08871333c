// A Take function stands for each kind of value.
#include "record/option_table.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "recorder/engine/frame_rates.h"
#include "recorder/engine/recording_scale.h"

namespace framereel {

namespace {

constexpr int32_t kMostTicks = 1000000000;
constexpr double kMostSeconds = 604800; // a week
constexpr int32_t kLongestCountdown = 3600;

// The whole text must be one number, written plainly in decimal digits.
bool ReadInteger(const char* text, int32_t lowest, int32_t highest, int32_t* number) {
  const char* end = text + strlen(text);
  const std::from_chars_result read = std::from_chars(text, end, *number);
  return read.ec == std::errc() && read.ptr == end && *number >= lowest && *number <= highest;
}

bool ReadDecimal(const char* text, double lowest, double highest, double* number) {
  const char* end = text + strlen(text);
  if (strspn(text, "0123456789.") != size_t(end - text)) return false;
  const std::from_chars_result read = std::from_chars(text, end, *number, std::chars_format::fixed);
  return read.ec == std::errc() && read.ptr == end && *number >= lowest && *number <= highest;
}

// Reads an integer that `stop` ends, and moves *text behind that character. A stop of 0 is the end of the text.
bool TakePart(const char** text, char stop, int32_t lowest, int32_t highest, int32_t* number) {
  const char* end = strchr(*text, stop);
  char part[8]; // the longest, "-32768", and room to be wrong in
  if (!end || size_t(end - *text) >= sizeof part) return false;
  const auto length = size_t(end - *text);
  memcpy(part, *text, length);
  part[length] = 0;
  *text = end + 1;
  return ReadInteger(part, lowest, highest, number);
}

bool TakeArea(RecordOptions& options, const char* value) {
  WantedArea area;
  if (!TakePart(&value, ',', INT16_MIN, INT16_MAX, &area.left)) return false;
  if (!TakePart(&value, ' ', INT16_MIN, INT16_MAX, &area.top)) return false;
  if (!TakePart(&value, 'x', 1, INT16_MAX, &area.width)) return false;
  if (!TakePart(&value, 0, 1, INT16_MAX, &area.height)) return false;
  options.area = area;
  return true;
}

// As other programs print it: decimal, or hexadecimal behind 0x.
bool TakeWindow(RecordOptions& options, const char* value) {
  options.window = 0;
  options.pick = strcmp(value, "pick") == 0;
  if (options.pick) return true;
  const bool hexadecimal = strncmp(value, "0x", 2) == 0;
  const char *begin = value + (hexadecimal ? 2 : 0), *end = begin + strlen(begin);
  const std::from_chars_result read = std::from_chars(begin, end, options.window, hexadecimal ? 16 : 10);
  return read.ec == std::errc() && read.ptr == end && options.window != 0;
}

bool TakeDelay(RecordOptions& options, const char* value) {
  int32_t delay;
  if (!ReadInteger(value, kShortestDelay, kLongestDelay, &delay)) return false;
  options.recording.frameDelay = uint16_t(delay);
  return true;
}

bool TakeFps(RecordOptions& options, const char* value) {
  double rate;
  if (!ReadDecimal(value, 1000.0 / kLongestDelay, 1000.0 / kShortestDelay, &rate)) return false;
  options.recording.frameDelay = uint16_t(std::lround(1000 / rate));
  return true;
}

bool TakeSize(RecordOptions& options, const char* value) {
  int32_t percent;
  if (!ReadInteger(value, 1, 100, &percent)) return false;
  for (uint16_t size = kSize25; size <= kSize100; ++size) {
    if (ScaleOf(size).percent != percent) continue;
    options.recording.recordingSize = size;
    return true;
  }
  return false;
}

bool TakeSeconds(RecordOptions& options, const char* value) {
  double seconds;
  if (!ReadDecimal(value, 0.1, kMostSeconds, &seconds)) return false;
  options.milliseconds = uint32_t(std::lround(seconds * 1000));
  return true;
}

template <uint32_t RecordOptions::*field, int32_t lowest, int32_t highest>
bool TakeCount(RecordOptions& options, const char* value) {
  int32_t count;
  if (!ReadInteger(value, lowest, highest, &count)) return false;
  options.*field = uint32_t(count);
  return true;
}

bool TakeDelays(RecordOptions& options, const char* value) {
  options.recording.trueTime = strcmp(value, "true") == 0;
  return options.recording.trueTime || strcmp(value, "measured") == 0;
}

bool TakeOwner(RecordOptions& options, const char* value) {
  options.owner = value;
  return true;
}

// An option without a value that sets one field.
template <bool RecordingOptions::*field, bool value> bool SetRecording(RecordOptions& options, const char* /*value*/) {
  options.recording.*field = value;
  return true;
}

template <bool RecordOptions::*field, bool value = true> bool SetFlag(RecordOptions& options, const char* /*value*/) {
  options.*field = value;
  return true;
}

static_assert(kShortestDelay == 25 && kLongestDelay == 5000, "the texts below say so");
constexpr const char* kCount = "a whole number from 1 to 1000000000";
// clang-format off
constexpr Option kOptions[] = {
    {"--area", "\"L,T WxH\"",
     "\"L,T WxH\" in screen pixels, such as \"0,0 640x480\", W and H from 1 to 32767",
     "record this rectangle of the screen, in pixels; default: all of it", TakeArea},
    {"--window", "ID|pick", "the number of a window, such as 0x1a00007, or \"pick\"",
     "record the rectangle of this window, or of the one that you click on", TakeWindow},
    {"--follow", nullptr, nullptr, "keep to the window as it moves, until it is closed", SetFlag<&RecordOptions::follow>},
    {"--list-windows", nullptr, nullptr, "print number, rectangle and title of each window that is seen", nullptr,
     Request::kListWindows},
    {"--delay", "MS", "a whole number of milliseconds from 25 to 5000",
     "take a frame every MS milliseconds, 25 to 5000; default: 333", TakeDelay},
    {"--fps", "N", "a number from 0.2 to 40", "the same as N frames a second, 0.2 to 40", TakeFps},
    {"--size", "PERCENT", "25, 44 or 100", "share of the area's pixels that is kept: 25, 44 or 100 (default)", TakeSize},
    {"--countdown", "S", "a whole number of seconds from 0 to 3600", "wait S seconds ahead of the first frame",
     TakeCount<&RecordOptions::countdown, 0, kLongestCountdown>},
    {"--seconds", "S", "a number from 0.1 to 604800", "stop after S seconds; default: at Ctrl+C", TakeSeconds},
    {"--frames", "N", kCount, "stop when the file holds N frames; where nothing has changed there is none",
     TakeCount<&RecordOptions::frames, 1, kMostTicks>},
    {"--ticks", "N", kCount, "stop when the screen was looked at N times",
     TakeCount<&RecordOptions::ticks, 1, kMostTicks>},
    {"--delays", "true|measured", "true or measured",
     "true (default): each frame is shown for the time that it stood on the screen, so the file plays as long as the "
     "recording took; measured: for the time that the one before it stood, cut to hundredths, as the program with the "
     "panel does, so the file plays faster", TakeDelays},
    {"--smallest", nullptr, nullptr, "spend several times the processor time on a smaller file",
     SetRecording<&RecordingOptions::smallest, true>},
    {"--no-timing", nullptr, nullptr, "store no delays between frames",
     SetRecording<&RecordingOptions::recordTimingInfo, false>},
    {"--no-transparency", nullptr, nullptr, "write unchanged pixels with their colour, not as transparent",
     SetRecording<&RecordingOptions::interframeTransparency, false>},
    {"--no-loop", nullptr, nullptr, "play once, not for ever", SetRecording<&RecordingOptions::loop, false>},
    {"--no-border", nullptr, nullptr, "draw no black line around the picture",
     SetRecording<&RecordingOptions::overlayBorder, false>},
    {"--no-cursor", nullptr, nullptr, "leave out the mouse pointer",
     SetRecording<&RecordingOptions::overlayCursor, false>},
    {"--explorer", nullptr, nullptr,
     "begin every later frame at the top left corner, for viewers that place frames wrongly",
     SetRecording<&RecordingOptions::explorerCompatible, true>},
    {"--owner", "TEXT", "a text", "the name in the file's comment; default: the user's login name", TakeOwner},
    {"--overwrite", nullptr, nullptr, "replace a file that stands there (default)",
     SetFlag<&RecordOptions::noClobber, false>},
    {"--no-clobber", nullptr, nullptr, "record nothing where a file stands already", SetFlag<&RecordOptions::noClobber>},
    {"--quiet", nullptr, nullptr, "show no progress and no notes, only errors", SetFlag<&RecordOptions::quiet>},
    {"--stats", nullptr, nullptr,
     "at the end, print one line of figures as JSON; to standard error where the recording goes to standard output",
     SetFlag<&RecordOptions::stats>},
    {"--help", nullptr, nullptr, "show this text; so does -h", nullptr, Request::kHelp},
    {"--version", nullptr, nullptr, "show the version", nullptr, Request::kVersion},
};
// clang-format on

constexpr size_t kLongestName = 32;

// How many letters are to be put in, taken out or changed to make one of the other; one of the words may be cut.
size_t Distance(const char* a, size_t aLength, const char* b, size_t bLength) {
  aLength = std::min(aLength, kLongestName);
  bLength = std::min(bLength, kLongestName);
  size_t row[kLongestName + 1]; // from the part of `a` that has been looked at to each part of `b`
  for (size_t j = 0; j <= bLength; ++j) row[j] = j;
  for (size_t i = 0; i < aLength; ++i) {
    size_t diagonal = std::exchange(row[0], i + 1);
    for (size_t j = 0; j < bLength; ++j) {
      const size_t changed = diagonal + (a[i] != b[j]);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
    }
  }
  return row[bLength];
}

} // namespace

std::span<const Option> AllOptions() {
  return kOptions;
}

const Option* FindOption(const char* name, size_t length) {
  for (const Option& option : kOptions) {
    if (strlen(option.name) == length && memcmp(option.name, name, length) == 0) return &option;
  }
  return nullptr;
}

const char* NearestOption(const char* name, size_t length) {
  constexpr size_t kShortestStart = 4; // "--fo"
  const char* nearest = nullptr;
  size_t least = length / 4 + 1; // a letter of "--fps", two of "--frames"
  for (const Option& option : kOptions) {
    const bool begins = length >= kShortestStart && strncmp(option.name, name, length) == 0;
    const size_t distance = begins ? 1 : Distance(name, length, option.name, strlen(option.name));
    if (distance >= least + (nearest == nullptr)) continue;
    nearest = option.name;
    least = distance;
  }
  return nearest;
}

} // namespace framereel
