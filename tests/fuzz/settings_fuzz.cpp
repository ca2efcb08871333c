// Mutated settings files on screens of many sizes, and what must hold whatever a file says. The arguments stand in
// rounds.h; input.prf in the folder is the file of the last round.
#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "app/settings_program.h"
#include "core/rects.h"
#include "fuzz/rounds.h"
#include "platform/display/display_caps.h"
#include "platform/records/window_records.h"
#include "recorder/engine/frame_rates.h"
#include "support/dice.h"

namespace framereel {
namespace {

SettingsProgram* theProgram; // of all rounds

struct Round {
  SettingsProgram& program;
  uint32_t seed;
  Dice dice;
};

void Check(const Round& round, bool holds, const char* what) {
  CheckRound(round.seed, holds, what);
}

// ---- Mutations ----------------------------------------------------------------------------------------------------

const char* const kLines[] = {
    "Recording Area:12,40 320x240\r\n",
    "Recording Area:-10,-10 100x100\r\n",
    "Recording Area:-32768,32767 32767x-1\r\n",
    "Frame Delay:7000\r\n",
    "Record Timing Info:No\r\n",
    "Explorer 2.0 Compatible:Yes\r\n",
    "Recording Size:25\r\n",
    "Recording Size:44\r\n",
    "Another Key:a\\nb\\\\c\\\r\n",
    ("A key of just as many bytes as there may be in one:a value that fills its line, with a key like this, to the "
     "last of the 132 bytes\r\n"),
    "Key:a value of as many bytes as there may be on a line, behind a key that is shorter\r\n",
};

const char* const kPieces[] = {"\r\n", "\r",    "\n",     "\\",         "\\n",         ":",   "-",
                               "+",    " ",     ",",      "x",          "0",           "Yes", "No",
                               "1",    "32767", "-32768", "4294967296", "00000000000", "\xFF"};

std::string AnyPiece(Dice& dice) {
  if (dice.OneIn(4)) return std::string(size_t(dice.OneIn(2) ? 1 : dice.Below(140)), char(dice.random()));
  return dice.OneIn(6) ? kLines[dice.Below(std::size(kLines))] : kPieces[dice.Below(std::size(kPieces))];
}

// Lines of which pieces are taken out, put in, replaced and copied.
std::string AnyFile(Dice& dice) {
  std::string text;
  for (int lines = dice.Below(14); lines > 0; --lines) text += kLines[dice.Below(std::size(kLines))];
  for (int mutations = dice.Below(9); mutations > 0; --mutations) {
    const auto place = [&] { return size_t(dice.Below(int(text.size()) + 1)); };
    const auto length = [&] { return size_t(dice.OneIn(2) ? dice.Below(60) : dice.Below(4)); };
    const int kind = dice.Below(4);
    const std::string piece = kind == 0 ? "" : kind == 1 ? text.substr(place(), length()) : AnyPiece(dice);
    text.replace(place(), kind == 2 ? 0 : length(), piece);
  }
  return text;
}

// ---- Lines --------------------------------------------------------------------------------------------------------

using Line = std::pair<std::string, std::string>;

// Both as the program sees them: a zero byte ends a string.
Line PlainLine(std::string_view key, std::string_view stored) {
  Line line(key.substr(0, key.find('\0')), "");
  stored = stored.substr(0, stored.find('\0'));
  for (size_t i = 0; i < stored.size(); ++i) {
    if (stored[i] != '\\') {
      line.second += stored[i];
    } else if (++i < stored.size()) {
      line.second += stored[i] == 'n' ? '\n' : stored[i];
    }
  }
  return line;
}

// The rule of settings_file.h, plainly. Moves `text` on; none where the reading ends.
std::optional<Line> TakePlainLine(std::string_view& text) {
  const std::string_view seen = text.substr(0, 132);
  const size_t end = seen.find("\r\n");
  const std::string_view line = seen.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? seen.size() : end + 2);
  const size_t colon = line.find(':');
  if (colon == std::string_view::npos || colon > 50 || line.size() - colon - 1 > 80) return {};
  return PlainLine(line.substr(0, colon), line.substr(colon + 1));
}

void CheckLines(const Round& round, std::string_view text) {
  const OpenedFile file(FileOpen(round.program.settings.ref, FileModeRead));
  Check(round, file != nullptr, "the file does not open");
  for (;;) {
    char key[kSettingsKeyLimit + 2], value[kSettingsValueLimit + 2]; // with a byte behind each
    key[kSettingsKeyLimit + 1] = value[kSettingsValueLimit + 1] = '#';
    const bool more = SettingsReadLine(file.get(), key, value);
    const std::optional<Line> plain = TakePlainLine(text);
    Check(round, more == plain.has_value(), "reading ends at another line");
    if (!more) return;
    Check(round, key[kSettingsKeyLimit + 1] == '#' && value[kSettingsValueLimit + 1] == '#', "a buffer is overrun");
    Check(round, plain->first == key && plain->second == value, "a line reads differently");
  }
}

// What was written as a value that a line can hold comes back.
void CheckWrittenString(Round& round) {
  std::string value = AnyPiece(round.dice) + AnyPiece(round.dice) + AnyPiece(round.dice);
  std::replace(value.begin(), value.end(), '\0', '\\');
  value.resize(std::min<size_t>(value.size(), kSettingsValueLimit / 2));
  const OpenedFile file(FileOpen(round.program.settings.ref, FileModeWrite));
  SettingsWriteString(file.get(), "", value.c_str());
  const std::string written = ReadWholeFile(round.program.place);
  std::string_view rest = written;
  Check(round, TakePlainLine(rest).value_or(Line()).second == value, "a written value comes back changed");
}

// ---- The whole file -----------------------------------------------------------------------------------------------

struct Screen {
  int16_t width, height, bar; // a task bar at the lower edge
};

constexpr Screen kScreens[] = {{640, 480, 0}, {320, 200, 0}, {1280, 1024, 28}, {32767, 32767, 0}, {7, 5, 0}, {4, 4, 0}};

// Only the numbers: a display in memory as large as the largest would take gigabytes.
void TakeScreen(const Screen& screen) {
  auto& caps = const_cast<DisplayCaps&>(TheDisplayCaps());
  caps.screenWidth = screen.width;
  caps.screenHeight = screen.height;
  MainWindow* main = TheMainWindow();
  main->usableLeft = main->usableTop = 0;
  main->usableWidth = screen.width;
  main->usableHeight = int16_t(screen.height - screen.bar);
}

void CheckSettings(const Round& round, const Screen& screen) {
  const RecordingOptions& options = round.program.options;
  const Rect& area = round.program.recorder.captureArea;
  const int denominator = ScaleOf(options.recordingSize).denominator;
  const int width = area.right - area.left, height = area.bottom - area.top;
  Check(round, options.frameDelay == SnapFrameDelay(options.frameDelay), "the program has no such frame delay");
  Check(round, options.recordingSize <= kSize100, "the program has no such recording size");
  Check(round, width > 0 && height > 0, "the area has no pixels");
  Check(round, width % denominator == 0 && height % denominator == 0, "the area is not in whole blocks");
  Check(round, RectInside(area, RectOf(0, 0, screen.width, screen.height)), "the area leaves the screen");
}

// What is saved is what the next start knows. Beside a task bar that start cuts an area again that grew under it.
void CheckRoundTrip(const Round& round, const Screen& screen) {
  SettingsProgram& program = round.program;
  const std::string told = program.Told();
  SettingsSave(program.settings);
  const std::string saved = ReadWholeFile(program.place);
  Check(round, std::count(saved.begin(), saved.end(), '\n') == 10, "a save has not ten lines");
  const std::string back = program.Loaded(saved);
  CheckSettings(round, screen);
  if (screen.bar == 0) Check(round, back == told, "what is saved comes back changed");
}

void Run(uint32_t seed) {
  Round round = {*theProgram, seed, Dice(seed)};
  SettingsProgram& program = round.program;
  const Screen& screen = kScreens[round.dice.Below(std::size(kScreens))];
  const std::string text = AnyFile(round.dice);
  TakeScreen(screen);
  WriteWholeFile(program.folder / "input.prf", text);
  program.Loaded(text);
  CheckSettings(round, screen);
  CheckLines(round, text);
  CheckRoundTrip(round, screen);
  WriteWholeFile(program.place, "");
  CheckWrittenString(round);
}

} // namespace
} // namespace framereel

int main(int count, char** arguments) {
  framereel::SettingsProgram program;
  framereel::theProgram = &program;
  return framereel::RunRounds(count, arguments, program.folder.path, framereel::Run);
}
