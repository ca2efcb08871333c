// What each stage of a frame costs on a real X screen, and what a tick costs in which nothing or little was drawn, as a
// table.
//
// Runs on the server that DISPLAY names, whose screen is at least 1920x1080 at 24 bits, and draws over all of it:
// bench.sh starts a private one. All figures are medians over the frames of a scene; ratios compare what ran in turns.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <vector>

#include "content.h"
#include "gif/animation_stream.h"
#include "gif/gif_records.h"
#include "platform/pump/engine_start.h"
#include "recorder/engine/difference.h"
#include "recorder/engine/full_frame.h"
#include "recorder/engine/grab.h"
#include "recorder/engine/index_rows.h"
#include "recorder/engine/recorder_core.h"
#include "recorder/engine/recording_scale.h"
#include "recorder/engine/reduce.h"
#include "win32/pixels/display.h"

namespace framereel::bench {
namespace {

enum Stage { kBareRead, kRead, kConvert, kDifference, kReduce25, kReduce44, kCompress, kAppend, kStages };

constexpr const char* kStageNames[kStages] = {"bare",    "read",    "convert",  "difference",
                                              "red. 25", "red. 44", "compress", "append"};
constexpr int kFrames = 41;

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
  return values[values.size() / 2];
}

template <typename Work> double Nanoseconds(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
}

// A recorder over the top left part of the screen.
struct Bench {
  int width, height;
  AnimationStream stream;
  GifWriter gif;
  RecordingOptions options;
  RecorderState recorder;
  Surface picture; // the frame to be shown
  Surface target;  // of the bare reads
  Surface caret;
  std::vector<uint8_t> indices;
};

void StartBench(Bench& bench, int width, int height) {
  bench.width = width;
  bench.height = height;
  StreamInit(bench.stream);
  GifWriterInit(bench.gif, &bench.stream);
  bench.options.overlayCursor = false;
  RecorderSetUp(bench.recorder, &bench.stream, &bench.gif, &bench.options);
  bench.recorder.captureArea = {0, 0, int16_t(height), int16_t(width)};
  DisplayNewSurface(width, height, &bench.picture);
  DisplayNewSurface(width, height, &bench.target);
  DisplayNewSurface(8, 16, &bench.caret);
  bench.indices.resize(size_t(width) * size_t(height));
}

void EndBench(Bench& bench) {
  RecorderTearDown(bench.recorder);
  StreamClear(bench.stream);
  DisplayFreeSurface(&bench.picture);
  DisplayFreeSurface(&bench.target);
  DisplayFreeSurface(&bench.caret);
}

void ShowFrame(Bench& bench, const Scene& scene, int n) {
  std::vector<uint32_t> pixels(bench.indices.size());
  DrawFrame(scene, n, pixels.data());
  for (int y = 0; y < bench.height; ++y) {
    ::memcpy(RowOf(bench.picture, y), pixels.data() + size_t(y) * bench.width, size_t(bench.width) * 4);
  }
  DisplayDrawScreen(bench.picture, {0, 0, bench.width, bench.height}, 0, 0);
  // A read waits until the server has drawn.
  DisplayReadScreen({0, 0, 1, 1}, bench.target, 0, 0);
}

double BareRead(Bench& bench) {
  return Nanoseconds([&] { DisplayReadScreen({0, 0, bench.width, bench.height}, bench.target, 0, 0); });
}

void ConvertAll(Bench& bench) {
  for (int32_t y = 0; y < bench.height; ++y) IndexRow(bench.recorder, y, bench.indices.data());
}

// The whole screen at a reduced size, from the frame's own indices; the recorder's state is put back.
double Reduce(Bench& bench, uint16_t size) {
  RecorderState& recorder = bench.recorder;
  const std::vector<uint8_t> work(recorder.workFrame, recorder.workFrame + bench.indices.size());
  const RecorderState before = recorder;
  recorder.recordingSize = size;
  const double time = Nanoseconds([&] { ReduceFrame(recorder); });
  recorder = before;
  std::copy(work.begin(), work.end(), recorder.workFrame);
  return time;
}

double Compress(Bench& bench) {
  const RecorderState& recorder = bench.recorder;
  const Rect& dirty = recorder.dirty;
  const auto width = int16_t(dirty.right - dirty.left), height = int16_t(dirty.bottom - dirty.top);
  const PixelCursor cursor = {recorder.workFrame + size_t(dirty.top) * bench.width + dirty.left, width,
                              int16_t(bench.width - width)};
  return Nanoseconds([&] { GifWriteImage(bench.gif, dirty.left, dirty.top, width, height, cursor); });
}

// One frame of a scene through every stage, read whole. The comparison is made while the rows are converted, so its
// cost is what the walk takes beyond the conversion.
void MeasureFrame(Bench& bench, std::vector<double> times[kStages]) {
  RecorderState& recorder = bench.recorder;
  times[kBareRead].push_back(BareRead(bench));
  recorder.grab.holdsFrame = false;
  times[kRead].push_back(Nanoseconds([&] { GrabScreen(recorder); }));
  const double convert = Nanoseconds([&] { ConvertAll(bench); });
  const double walk = Nanoseconds([&] { NextFrameConvert(recorder, true); });
  times[kConvert].push_back(convert);
  times[kDifference].push_back(std::max(0.0, walk - convert));
  if (NothingIsDirty(recorder)) return;
  times[kReduce25].push_back(Reduce(bench, kSize25));
  times[kReduce44].push_back(Reduce(bench, kSize44));
  const uint32_t before = bench.stream.streamSize;
  times[kCompress].push_back(Compress(bench));
  const std::vector<uint8_t> bytes(bench.stream.streamSize - before);
  times[kAppend].push_back(Nanoseconds([&] { StreamAppend(bench.stream, uint32_t(bytes.size()), bytes.data()); }));
}

void MeasureScene(SceneKind kind, int width, int height) {
  static Bench bench;
  StartBench(bench, width, height);
  const Scene scene = MakeScene(kind, width, height);
  ShowFrame(bench, scene, 0);
  RecorderCaptureFrame(bench.recorder, false);
  std::vector<double> times[kStages];
  for (int n = 1; n <= kFrames; ++n) {
    ShowFrame(bench, scene, n);
    MeasureFrame(bench, times);
  }
  ::printf("%-16s %4dx%-4d", SceneName(kind), width, height);
  const double pixels = double(width) * height;
  for (const std::vector<double>& stage : times) ::printf(" %10.3f", stage.empty() ? 0 : Median(stage) / pixels);
  ::printf("\n");
  EndBench(bench);
}

void DrawCaret(Bench& bench, bool on) {
  const PixelRect caret = {bench.width / 2, bench.height / 2, bench.width / 2 + 8, bench.height / 2 + 16};
  ::memset(bench.caret.pixels, on ? 0 : 0xFF, size_t(bench.caret.stride) * 16);
  DisplayDrawScreen(bench.caret, {0, 0, 8, 16}, caret.left, caret.top);
  DisplayReadScreen({0, 0, 1, 1}, bench.target, 0, 0);
}

// Whole ticks on a screen on which nothing is drawn, or a caret ahead of each; the same when they have to read all of
// it; and bare reads of the same rectangle, in turns of a few: each finds the processor's caches as it leaves them
// itself.
void MeasureTicks(int width, int height, bool withCaret) {
  static Bench bench;
  StartBench(bench, width, height);
  ShowFrame(bench, MakeScene(SceneKind::kScrollingText, width, height), 0);
  RecorderCaptureFrame(bench.recorder, false);
  std::vector<double> bare, whole, tick;
  const auto take = [&](bool all, bool on) {
    if (withCaret) DrawCaret(bench, on);
    if (all) bench.recorder.grab.holdsFrame = false;
    return Nanoseconds([&] { RecorderCaptureFrame(bench.recorder, false); });
  };
  for (int turn = 0; turn < kFrames; ++turn) {
    for (int n = 0; n < 5; ++n) bare.push_back(BareRead(bench));
    for (int n = 0; n < 6; ++n) whole.push_back(take(true, n % 2));
    for (int n = 0; n < 6; ++n) tick.push_back(take(false, n % 2));
  }
  ::printf("%4dx%-4d %-10s %9.3f ms %12.2f %8.2f\n", width, height, withCaret ? "a caret" : "nothing",
           Median(bare) / 1e6, Median(whole) / Median(bare), Median(tick) / Median(bare));
  EndBench(bench);
}

int Run() {
  if (!EngineStartUp()) {
    ::fprintf(stderr, "engine_bench: there is no display to measure on; start it through bench.sh\n");
    return 1;
  }
  constexpr int kSizes[][2] = {{640, 480}, {1920, 1080}};
  const ScreenFacts facts = DisplayScreen();
  if (facts.width < kSizes[1][0] || facts.height < kSizes[1][1] || facts.layout.bytesPerPixel != 4) {
    ::fprintf(stderr, "engine_bench: needs a screen of 1920x1080 or more at 24 bits\n");
    return 1;
  }
  ::printf("ns per pixel of the frame; bare is the display's read alone\n%-26s", "");
  for (const char* name : kStageNames) ::printf(" %10s", name);
  ::printf("\n");
  for (const auto& size : kSizes) {
    for (const SceneKind kind : kAllScenes) MeasureScene(kind, size[0], size[1]);
  }
  ::printf("\nWhole ticks as multiples of a bare read: as they are, and if they have to read all of the area\n"
           "area      drawn      bare read    reads all     tick\n");
  for (const auto& size : kSizes) {
    for (const bool withCaret : {false, true}) MeasureTicks(size[0], size[1], withCaret);
  }
  EngineShutDown();
  return 0;
}

} // namespace
} // namespace framereel::bench

int main() {
  return framereel::bench::Run();
}
