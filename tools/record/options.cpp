// kOptions is the table of all options; a Take function stands for each kind of value.
#include "record/options.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "recorder/engine/frame_rates.h"
#include "recorder/engine/recording_scale.h"

namespace framereel {

namespace {

constexpr int32_t kMostTicks = 1000000000;
constexpr double kMostSeconds = 604800; // a week

struct Option {
  const char* name;
  const char* value;                                       // what the help calls the value; null: it takes none
  const char* takes;                                       // which values are right, for refusals
  bool (*take)(RecordOptions& options, const char* value); // false: not a right value
  const char* help;
};

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

bool TakeFrames(RecordOptions& options, const char* value) {
  int32_t ticks;
  if (!ReadInteger(value, 1, kMostTicks, &ticks)) return false;
  options.ticks = uint32_t(ticks);
  return true;
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

template <bool RecordOptions::*field> bool SetFlag(RecordOptions& options, const char* /*value*/) {
  options.*field = true;
  return true;
}

static_assert(kShortestDelay == 25 && kLongestDelay == 5000, "the texts below say so");
constexpr Option kOptions[] = {
    {"--area", "\"L,T WxH\"", "\"L,T WxH\" in screen pixels, such as \"0,0 640x480\", W and H from 1 to 32767",
     TakeArea, "record this rectangle of the screen, in pixels; default: all of it"},
    {"--delay", "MS", "a whole number of milliseconds from 25 to 5000", TakeDelay,
     "take a frame every MS milliseconds, 25 to 5000; default: 333"},
    {"--fps", "N", "a number from 0.2 to 40", TakeFps, "the same as N frames a second, 0.2 to 40"},
    {"--size", "PERCENT", "25, 44 or 100", TakeSize,
     "share of the area's pixels that is kept: 25, 44 or 100 (default)"},
    {"--seconds", "S", "a number from 0.1 to 604800", TakeSeconds, "stop after S seconds; default: at Ctrl+C"},
    {"--frames", "N", "a whole number from 1 to 1000000000", TakeFrames, "stop when the screen was looked at N times"},
    {"--no-transparency", nullptr, nullptr, SetRecording<&RecordingOptions::interframeTransparency, false>,
     "write unchanged pixels with their colour, not as transparent"},
    {"--smallest", nullptr, nullptr, SetRecording<&RecordingOptions::smallest, true>,
     "spend several times the processor time on a smaller file"},
    {"--no-timing", nullptr, nullptr, SetRecording<&RecordingOptions::recordTimingInfo, false>,
     "store no delays between frames"},
    {"--no-loop", nullptr, nullptr, SetRecording<&RecordingOptions::loop, false>, "play once, not for ever"},
    {"--no-border", nullptr, nullptr, SetRecording<&RecordingOptions::overlayBorder, false>,
     "draw no black line around the picture"},
    {"--no-cursor", nullptr, nullptr, SetRecording<&RecordingOptions::overlayCursor, false>,
     "leave out the mouse pointer"},
    {"--explorer", nullptr, nullptr, SetRecording<&RecordingOptions::explorerCompatible, true>,
     "begin every later frame at the top left corner, for viewers that place frames wrongly"},
    {"--owner", "TEXT", "a text", TakeOwner, "the name in the file's comment; default: the user's login name"},
    {"--quiet", nullptr, nullptr, SetFlag<&RecordOptions::quiet>, "show no progress and no notes, only errors"},
    {"--stats", nullptr, nullptr, SetFlag<&RecordOptions::stats>,
     "at the end, write one line of figures to standard error"},
};

const Option* FindOption(const char* name, size_t length) {
  for (const Option& option : kOptions) {
    if (strlen(option.name) == length && memcmp(option.name, name, length) == 0) return &option;
  }
  return nullptr;
}

// Which of the options that exclude each other were given.
struct Given {
  bool delay, fps, seconds, frames;
};

void NoteGiven(Given& given, const Option& option) {
  given.delay |= option.take == TakeDelay;
  given.fps |= option.take == TakeFps;
  given.seconds |= option.take == TakeSeconds;
  given.frames |= option.take == TakeFrames;
}

// The argument `name` or `name=value`; *next is the argument behind it, and moves on when it is the value.
bool ReadOption(const char* argument, const char* const** next, RecordOptions* options, Given& given,
                Refusal& refusal) {
  const size_t nameLength = strcspn(argument, "=");
  const Option* option = FindOption(argument, nameLength);
  if (!option) {
    return Refuse(refusal, "unknown option %.*s; framereel-record --help lists them", int(nameLength), argument);
  }
  const char* value = argument[nameLength] ? argument + nameLength + 1 : nullptr;
  if (!option->value && value) return Refuse(refusal, "%s takes no value, not \"%s\"", option->name, value);
  if (option->value && !value) {
    value = **next;
    if (!value) return Refuse(refusal, "%s takes %s, and nothing stands behind it", option->name, option->takes);
    ++*next;
  }
  if (!option->take(*options, value)) {
    return Refuse(refusal, "%s takes %s, not \"%s\"", option->name, option->takes, value);
  }
  NoteGiven(given, *option);
  return true;
}

bool CheckTogether(const RecordOptions& options, const Given& given, Refusal& refusal) {
  if (given.delay && given.fps) return Refuse(refusal, "--delay and --fps say the same thing; give one of them");
  if (given.seconds && given.frames) {
    return Refuse(refusal, "--seconds and --frames both end the recording; give one of them");
  }
  if (!options.file) return Refuse(refusal, "no FILE to record into; framereel-record --help tells more");
  if (!*options.file) return Refuse(refusal, "the name of FILE is empty; give a path or - for standard output");
  return true;
}

} // namespace

Request ReadOptions(const char* const* arguments, RecordOptions* options, Refusal& refusal) {
  Given given = {};
  bool optionsEnded = false;
  const char* const* next = arguments;
  while (const char* argument = *next) {
    ++next;
    if (!optionsEnded && strcmp(argument, "--") == 0) {
      optionsEnded = true;
    } else if (optionsEnded || argument[0] != '-' || !argument[1]) {
      if (options->file) {
        Refuse(refusal, "one FILE at a time: \"%s\" or \"%s\"", options->file, argument);
        return Request::kRefused;
      }
      options->file = argument;
    } else if (strcmp(argument, "--help") == 0) {
      return Request::kHelp;
    } else if (strcmp(argument, "--version") == 0) {
      return Request::kVersion;
    } else if (!ReadOption(argument, &next, options, given, refusal)) {
      return Request::kRefused;
    }
  }
  return CheckTogether(*options, given, refusal) ? Request::kRecord : Request::kRefused;
}

void WriteHelp(FILE* to) {
  fputs("Usage: framereel-record [options] FILE.gif\n"
        "Records a rectangle of the screen into an animated GIF, until Ctrl+C or a given end.\n"
        "FILE may be - for standard output.\n\n",
        to);
  for (const Option& option : kOptions) {
    const char* value = option.value ? option.value : "";
    const int width = 17 - int(strlen(option.name));
    fprintf(to, "  %s %-*s  %s\n", option.name, width, value, option.help);
  }
  fputs("  --help              show this text\n"
        "  --version           show the version\n\n"
        "The file appears whole or not at all. Exit status: 0 recorded, 1 failed, 2 wrong arguments.\n",
        to);
}

void WriteVersion(FILE* to) {
  fputs("framereel-record " FRAMEREEL_VERSION "\n", to);
}

} // namespace framereel
