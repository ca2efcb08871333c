// How many bytes a recording takes: written the standard way, the smallest way, and by gifsicle -O2, which is handed
// the standard file, where it is installed. Beside it what the two ways cost at a larger size, in processor time for a
// whole tick of the engine from read to stream.
//
// It all runs on the display in memory, so the bytes are the same on every machine.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <time.h>
#include <unistd.h>

#include "content.h"
#include "gif/gif_records.h"
#include "platform/pump/engine_start.h"
#include "recorder/engine/recorder_core.h"
#include "win32/memory/memory_display.h"

namespace framereel::bench {
namespace {

constexpr int kFrames = 60, kCostFrames = 24;

double ProcessorSeconds() {
  timespec time;
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return double(time.tv_sec) + 1e-9 * double(time.tv_nsec);
}

struct Outcome {
  uint32_t bytes;
  double meanTime, worstTime; // of a tick, in ms
};

void WriteFile(const AnimationStream& stream, const std::string& path) {
  FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) return;
  for (const ListNode* chunk = stream.fullChunks->first; chunk; chunk = chunk->next) {
    std::fwrite(FromListValue<uint8_t>(chunk->value), 1, kStreamChunkSize, file);
  }
  if (stream.currentChunk) std::fwrite(stream.currentChunk, 1, stream.currentUsed, file);
  std::fclose(file);
}

// Records the scene and, with a path, saves it.
Outcome Record(const Scene& scene, int frames, bool smallest, const std::string& path) {
  MemoryDisplayReset(scene.width, scene.height, 24);
  if (!EngineStartUp()) std::abort();
  AnimationStream stream;
  GifWriter gif;
  RecordingOptions options;
  RecorderState recorder;
  StreamInit(stream);
  GifWriterInit(gif, &stream);
  options.overlayBorder = false;
  options.smallest = smallest;
  RecorderSetUp(recorder, &stream, &gif, &options);
  recorder.captureArea = {0, 0, int16_t(scene.height), int16_t(scene.width)};
  Outcome outcome = {};
  for (int n = 0; n < frames; ++n) {
    DrawFrame(scene, n, TheMemoryDisplay().screen.data());
    const double start = ProcessorSeconds();
    RecorderCaptureFrame(recorder, false);
    const double time = 1e3 * (ProcessorSeconds() - start);
    outcome.meanTime += time / frames;
    outcome.worstTime = std::max(outcome.worstTime, time);
  }
  GifWriteTrailer(gif);
  outcome.bytes = stream.streamSize;
  if (!path.empty()) WriteFile(stream, path);
  RecorderTearDown(recorder);
  GifWriterFree(gif);
  StreamFree(stream);
  EngineShutDown();
  return outcome;
}

// 0 where there is no gifsicle.
uint32_t SizeByGifsicle(const std::string& path) {
  const std::string command = "gifsicle --no-comments -O2 '" + path + "' 2>/dev/null | wc -c";
  FILE* pipe = ::popen(command.c_str(), "r");
  uint32_t size = 0;
  if (pipe && std::fscanf(pipe, "%u", &size) != 1) size = 0;
  if (pipe) ::pclose(pipe);
  return size;
}

int Run() {
  const char* folder = std::getenv("TMPDIR");
  const std::string path = std::string(folder ? folder : "/tmp") + "/size_bench." + std::to_string(::getpid()) + ".gif";
  std::printf("%d frames of 640x480: bytes; at 1280x720 ms of processor time for a tick, mean and worst\n", kFrames);
  std::printf("%-18s %10s %10s %12s %9s %15s %15s\n", "content", "standard", "smallest", "gifsicle -O2", "ratio",
              "standard", "smallest");
  for (const SceneKind kind : kAllScenes) {
    const Scene small = MakeScene(kind, 640, 480), large = MakeScene(kind, 1280, 720);
    const Outcome standard = Record(small, kFrames, false, path), smallest = Record(small, kFrames, true, "");
    const uint32_t gifsicle = SizeByGifsicle(path);
    const Outcome fast = Record(large, kCostFrames, false, ""), slow = Record(large, kCostFrames, true, "");
    std::printf("%-18s %10u %10u %12u %9.4f %7.2f %7.2f %7.2f %7.2f\n", SceneName(kind), standard.bytes, smallest.bytes,
                gifsicle, gifsicle ? double(smallest.bytes) / gifsicle : 0, fast.meanTime, fast.worstTime,
                slow.meanTime, slow.worstTime);
  }
  return std::remove(path.c_str());
}

} // namespace
} // namespace framereel::bench

int main() {
  return framereel::bench::Run();
}
