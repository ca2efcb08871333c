// Formatting times, sizes and the bar, and drawing the line over itself.
#include "record/progress.h"

#include <algorithm>
#include <cinttypes>
#include <cstring>
#include <sys/ioctl.h>

#include "recorder/engine/status.h"

namespace framereel {

namespace {

constexpr uint64_t kShortestInterval = 100; // ms from a drawing to the next; more often nobody can read
constexpr int kBarCells = 24;
constexpr int kUsualColumns = 80;

// 0:05, 12:34, 1:00:00
void FormatTime(uint64_t milliseconds, char* text, size_t size) {
  const uint64_t seconds = milliseconds / 1000;
  const uint64_t minutes = seconds / 60;
  if (minutes < 60) {
    snprintf(text, size, "%" PRIu64 ":%02" PRIu64, minutes, seconds % 60);
  } else {
    snprintf(text, size, "%" PRIu64 ":%02" PRIu64 ":%02" PRIu64, minutes / 60, minutes % 60, seconds % 60);
  }
}

// How much of the recording is done by the end that comes first, in cells of the bar; -1 when it has none.
int DoneCells(const Recording& recording) {
  const auto cells = [](uint64_t done, uint64_t all) { return all ? int(std::min(done, all) * kBarCells / all) : -1; };
  return std::max({cells(recording.elapsed, recording.milliseconds), cells(recording.ticks, recording.tickLimit),
                   cells(recording.recorder->frameCount, recording.frameLimit)});
}

int ColumnsOf(FILE* terminal) {
  winsize size;
  if (::ioctl(::fileno(terminal), TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsualColumns;
  return size.ws_col;
}

} // namespace

void FormatOutcome(const Recording& recording, char* text) {
  char size[kByteSizeText];
  char time[32];
  const uint32_t frames = recording.recorder->frameCount;
  FormatByteSize(recording.recorder->frameBytes, size);
  FormatTime(recording.elapsed, time, sizeof time);
  const int length =
      snprintf(text, kProgressTextSize, "%" PRIu32 " %s, %s, %s", frames, frames == 1 ? "frame" : "frames", size, time);
  if (recording.lostTicks == 0) return;
  snprintf(text + length, size_t(kProgressTextSize - length), ", %" PRIu32 " %s lost", recording.lostTicks,
           recording.lostTicks == 1 ? "tick" : "ticks");
}

void FormatProgress(const Recording& recording, int columns, char* text) {
  FormatOutcome(recording, text);
  const auto length = int(strlen(text));
  const int done = DoneCells(recording);
  // The last column stays free: writing there moves some terminals to the next line.
  const int bar = kBarCells + 4; // two blanks and the brackets
  if (done >= 0 && length + bar < columns) {
    char cells[kBarCells + 1] = {};
    memset(cells, '#', size_t(done));
    memset(cells + done, '.', size_t(kBarCells - done));
    snprintf(text + length, size_t(kProgressTextSize - length), "  [%s]", cells);
  } else if (length >= columns) {
    text[std::max(columns - 1, 0)] = 0;
  }
}

void ProgressShow(Progress& progress, const Recording& recording) {
  if (progress.shown && recording.elapsed - progress.shownAt < kShortestInterval) return;
  char text[kProgressTextSize];
  FormatProgress(recording, ColumnsOf(progress.to), text);
  fprintf(progress.to, "\r%s\x1b[K", text);
  fflush(progress.to);
  progress.shown = true;
  progress.shownAt = recording.elapsed;
}

void ProgressSay(Progress& progress, const char* what, uint32_t left) {
  fprintf(progress.to, "\r%s %" PRIu32 " s\x1b[K", what, left);
  fflush(progress.to);
  progress.shown = true;
}

void ProgressClear(Progress& progress) {
  if (!progress.shown) return;
  fputs("\r\x1b[K", progress.to);
  fflush(progress.to);
  progress.shown = false;
}

} // namespace framereel
