// Reads a GIF back with a foreign decoder, giflib, for tests that look at what was written.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace framereel {

struct GifFrame {
  int left, top, width, height;
  std::vector<uint8_t> indices; // width x height, the top row first
  int delay;                    // hundredths of a second
  int transparent;              // index, or -1
  int disposal;
  std::vector<uint32_t> colours; // its own table; empty: the global one holds
};

struct GifPicture {
  std::string error;             // empty when the whole file was read; else nothing else holds
  int width, height;             // of the logical screen
  std::vector<uint32_t> colours; // the global table, 0x00RRGGBB
  std::vector<GifFrame> frames;
};

// A file without a frame counts as an error: the decoder takes none.
GifPicture ReadGif(const std::vector<uint8_t>& bytes);
GifPicture ReadGifFile(const std::string& path);

// What is to be seen after frame `last`: width x height of 0x00RRGGBB, kUncovered where no frame has drawn. Frames must
// leave their image in place, which is all that this program writes; with others, or indices outside the table, the
// answer is empty.
inline constexpr uint32_t kUncovered = 0xFF000000;
std::vector<uint32_t> Composite(const GifPicture& gif, size_t last);

} // namespace framereel
