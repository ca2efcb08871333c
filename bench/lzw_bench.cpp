// Our encoder beside two others on the same frames of colour indices: time for each index, and bytes.
//
// All three write each frame whole, over one global table of 256 colours, and into the same stream in memory. giflib
// gets its rows one by one; cgif gets frames with none of its own reductions asked for, and copies each. The table at
// the end sets our time against the faster of the two. Each is measured several times over, and the least time counts;
// --benchmark_enable_random_interleaving=true takes them in turns.
#include <benchmark/benchmark.h>
#include <cgif.h>
#include <gif_lib.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "content.h"
#include "gif/gif_records.h"

namespace framereel::bench {
namespace {

constexpr int kFrames = 4, kFrameStep = 3, kRepetitions = 5;

enum class Encoder { kOurs, kGiflib, kCgif };
constexpr Encoder kEncoders[] = {Encoder::kOurs, Encoder::kGiflib, Encoder::kCgif};
constexpr const char* kEncoderNames[] = {"ours", "giflib", "cgif"};

struct Size {
  int width, height;
};
constexpr Size kSizes[] = {{640, 480}, {1920, 1080}};

// Frames of one content at one size.
struct Film {
  std::string name;
  Size size;
  std::vector<std::vector<uint8_t>> frames;
};

// A caret that blinks: what comes of most ticks while somebody types. Many, so that the file's head weighs little.
Film MakeCaret() {
  constexpr int kWidth = 8, kHeight = 16, kBlinks = 64;
  constexpr uint8_t kWhite = 215;
  Film film = {"caret 8x16", {kWidth, kHeight}, {}};
  for (int n = 0; n < kBlinks; ++n) {
    std::vector<uint8_t> frame(kWidth * kHeight, kWhite);
    for (size_t i = 3; i < frame.size() && n % 2 == 0; i += kWidth) frame[i] = frame[i + 1] = 0;
    film.frames.push_back(std::move(frame));
  }
  return film;
}

std::vector<Film> MakeFilms() {
  std::vector<Film> films;
  for (const Size size : kSizes) {
    for (const SceneKind kind : kAllScenes) {
      const Scene scene = MakeScene(kind, size.width, size.height);
      Film film = {std::string(SceneName(kind)) + " " + std::to_string(size.width) + "x" + std::to_string(size.height),
                   size,
                   {}};
      for (int i = 0; i < kFrames; ++i) {
        film.frames.emplace_back(size_t(size.width) * size_t(size.height));
        DrawIndexFrame(scene, i * kFrameStep, film.frames.back().data());
      }
      films.push_back(std::move(film));
    }
  }
  films.push_back(MakeCaret());
  return films;
}

uint8_t table[768]; // what colours the indices have makes no difference

// Each of these writes the film once into an empty stream and answers the bytes of the whole file, 0 for a failure.

size_t WriteOurs(const Film& film, GifWriter& gif) {
  const auto width = int16_t(film.size.width), height = int16_t(film.size.height);
  GifWriteHeader(gif, width, height, 0, 0, 8, table);
  for (const std::vector<uint8_t>& frame : film.frames) {
    GifWriteControl(gif, false, 4, 0);
    GifWriteImage(gif, 0, 0, width, height, {frame.data(), width, 0});
  }
  GifWriteTrailer(gif);
  return gif.stream->streamSize;
}

int AppendForGiflib(GifFileType* file, const GifByteType* bytes, int count) {
  StreamAppend(*static_cast<AnimationStream*>(file->UserData), uint32_t(count), bytes);
  return count;
}

size_t WriteWithGiflib(const Film& film, AnimationStream& stream) {
  int error = 0;
  GifFileType* file = EGifOpen(&stream, AppendForGiflib, &error);
  static ColorMapObject* map = GifMakeMapObject(256, nullptr);
  EGifPutScreenDesc(file, film.size.width, film.size.height, 8, 0, map);
  for (const std::vector<uint8_t>& frame : film.frames) {
    EGifPutImageDesc(file, 0, 0, film.size.width, film.size.height, false, nullptr);
    for (int y = 0; y < film.size.height; ++y) {
      auto* row = const_cast<GifPixelType*>(frame.data()) + size_t(y) * film.size.width;
      if (EGifPutLine(file, row, film.size.width) != GIF_OK) return 0;
    }
  }
  return EGifCloseFile(file, &error) == GIF_OK ? stream.streamSize : 0;
}

int AppendForCgif(void* stream, const uint8_t* bytes, const size_t count) {
  StreamAppend(*static_cast<AnimationStream*>(stream), uint32_t(count), bytes);
  return 0;
}

size_t WriteWithCgif(const Film& film, AnimationStream& stream) {
  CGIF_Config config = {};
  config.pGlobalPalette = table;
  config.numGlobalPaletteEntries = 256;
  config.width = uint16_t(film.size.width);
  config.height = uint16_t(film.size.height);
  config.attrFlags = CGIF_ATTR_IS_ANIMATED;
  config.pWriteFn = AppendForCgif;
  config.pContext = &stream;
  CGIF* file = cgif_newgif(&config);
  for (const std::vector<uint8_t>& frame : film.frames) {
    CGIF_FrameConfig picture = {};
    picture.pImageData = const_cast<uint8_t*>(frame.data());
    picture.delay = 4;
    if (cgif_addframe(file, &picture) != CGIF_OK) return 0;
  }
  return cgif_close(file) == CGIF_OK ? stream.streamSize : 0;
}

size_t Write(Encoder encoder, const Film& film, GifWriter& gif) {
  StreamClear(*gif.stream);
  switch (encoder) {
  case Encoder::kOurs:
    return WriteOurs(film, gif);
  case Encoder::kGiflib:
    return WriteWithGiflib(film, *gif.stream);
  case Encoder::kCgif:
    return WriteWithCgif(film, *gif.stream);
  }
  return 0;
}

void RunFilm(benchmark::State& state, Encoder encoder, const Film& film, GifWriter& gif) {
  size_t bytes = 0;
  for (auto _ : state) {
    bytes = Write(encoder, film, gif);
    if (bytes == 0) {
      state.SkipWithError("the encoder refused the film");
      return;
    }
  }
  const double indices = double(film.frames[0].size() * film.frames.size());
  state.counters["bytes"] = double(bytes);
  state.counters["per_index"] =
      benchmark::Counter(indices, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert,
                         benchmark::Counter::kIs1000);
}

// Gathers the least time and the bytes of each film and encoder for the table.
class TableReporter : public benchmark::ConsoleReporter {
public:
  struct Result {
    double nanoseconds, bytes;
  };

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      const Result now = {run.counters.at("per_index") * 1e9, run.counters.at("bytes")};
      Result& best = results.emplace(run.run_name.function_name, now).first->second;
      if (now.nanoseconds < best.nanoseconds) best = now;
    }
  }

  void PrintTable(const std::vector<Film>& films) const {
    std::printf("\n%-28s %26s %32s %8s\n", "", "ns per index", "bytes", "faster");
    std::printf("%-28s %8s %8s %8s %10s %10s %10s %8s\n", "content", "ours", "giflib", "cgif", "ours", "giflib", "cgif",
                "by");
    for (const Film& film : films) {
      std::vector<Result> row;
      for (const char* encoder : kEncoderNames) {
        const auto found = results.find(film.name + "/" + encoder);
        if (found != results.end()) row.push_back(found->second);
      }
      if (row.size() != std::size(kEncoderNames)) continue;
      std::printf("%-28s %8.3f %8.3f %8.3f %10.0f %10.0f %10.0f %8.2f\n", film.name.c_str(), row[0].nanoseconds,
                  row[1].nanoseconds, row[2].nanoseconds, row[0].bytes, row[1].bytes, row[2].bytes,
                  std::min(row[1].nanoseconds, row[2].nanoseconds) / row[0].nanoseconds);
    }
  }

private:
  std::map<std::string, Result> results;
};

int Main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  AnimationStream stream;
  GifWriter gif;
  StreamInit(stream);
  GifWriterInit(gif, &stream);
  const std::vector<Film> films = MakeFilms();
  for (const Film& film : films) {
    for (const Encoder encoder : kEncoders) {
      const std::string name = film.name + "/" + kEncoderNames[int(encoder)];
      benchmark::RegisterBenchmark(name.c_str(), RunFilm, encoder, film, std::ref(gif))
          ->Unit(benchmark::kMillisecond)
          ->MinTime(0.05)
          ->Repetitions(kRepetitions);
    }
  }
  TableReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.PrintTable(films);
  return 0;
}

} // namespace
} // namespace framereel::bench

int main(int argc, char** argv) {
  return framereel::bench::Main(argc, argv);
}
