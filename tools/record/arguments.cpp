// From arguments to rows of the table, what goes together, and the help.
#include "record/arguments.h"

#include <algorithm>
#include <cstring>

#include "record/option_table.h"

namespace framereel {

namespace {

// ---- Reading -----------------------------------------------------------------------------------------------------

// Which of the options that exclude each other were given.
struct Given {
  bool delay, fps;
};

void NoteGiven(Given& given, const char* name) {
  given.delay |= strcmp(name, "--delay") == 0;
  given.fps |= strcmp(name, "--fps") == 0;
}

Request RefuseUnknown(const char* name, size_t length, Refusal& refusal) {
  if (const char* nearest = NearestOption(name, length)) {
    Refuse(refusal, "unknown option %.*s; did you mean %s?", int(length), name, nearest);
  } else {
    Refuse(refusal, "unknown option %.*s; framereel-record --help lists them", int(length), name);
  }
  return Request::kRefused;
}

// Hands the value to the option.
bool TakeValue(const Option& option, const char* value, RecordOptions* options, Refusal& refusal) {
  if (option.take(*options, value)) return true;
  return Refuse(refusal, "%s takes %s, not \"%s\"", option.name, option.takes, value);
}

// The argument `name` or `name=value`; *next is the argument behind it, and moves on when it is the value. kRecord when
// the reading goes on.
Request ReadOption(const char* argument, const char* const** next, RecordOptions* options, Given& given,
                   Refusal& refusal) {
  if (strcmp(argument, "-h") == 0) return Request::kHelp;
  const size_t nameLength = strcspn(argument, "=");
  const Option* option = FindOption(argument, nameLength);
  if (!option) return RefuseUnknown(argument, nameLength, refusal);
  const char* value = argument[nameLength] ? argument + nameLength + 1 : nullptr;
  if (!option->value && value) {
    Refuse(refusal, "%s takes no value, not \"%s\"", option->name, value);
    return Request::kRefused;
  }
  if (option->value && !value) {
    value = **next;
    if (!value) {
      Refuse(refusal, "%s takes %s, and nothing stands behind it", option->name, option->takes);
      return Request::kRefused;
    }
    ++*next;
  }
  if (!option->take) return option->request;
  NoteGiven(given, option->name);
  return TakeValue(*option, value, options, refusal) ? Request::kRecord : Request::kRefused;
}

bool CheckTogether(const RecordOptions& options, const Given& given, Refusal& refusal) {
  if (given.delay && given.fps) return Refuse(refusal, "--delay and --fps say the same thing; give one of them");
  const bool window = options.pick || options.window != 0;
  if (window && options.area.width != 0) {
    return Refuse(refusal, "--area and --window both say what to record; give one of them");
  }
  if (options.follow && !window) return Refuse(refusal, "--follow needs a window to follow; give --window, too");
  if (!options.file) return Refuse(refusal, "no FILE to record into; framereel-record --help tells more");
  if (!*options.file) return Refuse(refusal, "the name of FILE is empty; give a path or - for standard output");
  return true;
}

// ---- The help ----------------------------------------------------------------------------------------------------

constexpr size_t kColumns = 79, kTextColumn = 25;

// The line that begins here has as many columns of text as fit, up to a blank. Answers where the next one begins.
const char* WriteLine(FILE* to, const char* text, size_t room) {
  size_t length = strlen(text);
  if (length > room) {
    length = room;
    while (length > 0 && text[length] != ' ') --length;
  }
  fprintf(to, "%.*s\n", int(length), text);
  return text[length] ? text + length + 1 : text + length;
}

void WriteOption(FILE* to, const Option& option) {
  char head[64];
  const int written = snprintf(head, sizeof head, option.value ? "  %s %s" : "  %s", option.name, option.value);
  const bool own = size_t(written) + 2 > kTextColumn; // then the text begins on the next line
  own ? fprintf(to, "%s\n", head) : fprintf(to, "%-*s", int(kTextColumn), head);
  for (const char* rest = option.help; *rest;) {
    if (rest != option.help || own) fprintf(to, "%*s", int(kTextColumn), "");
    rest = WriteLine(to, rest, kColumns - kTextColumn);
  }
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
    } else {
      const Request request = ReadOption(argument, &next, options, given, refusal);
      if (request != Request::kRecord) return request;
    }
  }
  return CheckTogether(*options, given, refusal) ? Request::kRecord : Request::kRefused;
}

void WriteHelp(FILE* to) {
  fputs("Usage: framereel-record [options] FILE.gif\n"
        "Records a rectangle of the screen into an animated GIF, until Ctrl+C or a\n"
        "given end. FILE may be - for standard output.\n\n",
        to);
  for (const Option& option : AllOptions()) WriteOption(to, option);
  fputs("\nThe file appears whole or not at all. Of several ends the first one holds.\n"
        "Exit status: 0 recorded, 1 failed, 2 wrong arguments.\n",
        to);
}

void WriteVersion(FILE* to) {
  fputs("framereel-record " FRAMEREEL_VERSION "\n", to);
}

} // namespace framereel
