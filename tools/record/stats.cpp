// Formatting the figures.
#include "record/stats.h"

#include <cinttypes>
#include <sys/resource.h>

namespace framereel {

namespace {

int64_t Microseconds(const timeval& time) {
  return int64_t{time.tv_sec} * 1000000 + time.tv_usec;
}

} // namespace

Usage ReadUsage() {
  rusage used = {};
  ::getrusage(RUSAGE_SELF, &used);
  return {Microseconds(used.ru_utime) + Microseconds(used.ru_stime), used.ru_maxrss};
}

void WriteStats(FILE* to, const Recording& recording, uint64_t bytes, const Usage& before, const Usage& after) {
  const RecorderState& recorder = *recording.recorder;
  fprintf(to,
          "{\"frames\":%" PRIu32 ",\"ticks\":%" PRIu32 ",\"lost_ticks\":%" PRIu32 ",\"bytes\":%" PRIu64
          ",\"seconds\":%.3f,\"delay_ms\":%" PRIu32
          ",\"left\":%d,\"top\":%d,\"width\":%d,\"height\":%d,\"cpu_seconds\":%.3f,\"peak_kib\":%" PRId64 "}\n",
          recorder.frameCount, recording.ticks, recording.lostTicks, bytes, double(recording.elapsed) / 1e3,
          recording.delay, recorder.frameLeft, recorder.frameTop, recorder.outputWidth, recorder.outputHeight,
          double(after.cpuMicroseconds - before.cpuMicroseconds) / 1e6, after.peakKilobytes);
  fflush(to);
}

} // namespace framereel
