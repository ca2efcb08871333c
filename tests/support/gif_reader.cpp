// giflib behind gif_reader.h.
#include "support/gif_reader.h"

#include <gif_lib.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>

namespace framereel {
namespace {

struct Source {
  const std::vector<uint8_t>* bytes;
  size_t at;
};

int ReadSource(GifFileType* file, GifByteType* to, int count) {
  auto* source = static_cast<Source*>(file->UserData);
  const size_t part = std::min(static_cast<size_t>(count), source->bytes->size() - source->at);
  std::copy_n(source->bytes->begin() + static_cast<ptrdiff_t>(source->at), part, to);
  source->at += part;
  return static_cast<int>(part);
}

std::vector<uint32_t> ReadColours(const ColorMapObject* map) {
  std::vector<uint32_t> colours;
  for (int i = 0; map && i < map->ColorCount; ++i) {
    const GifColorType& colour = map->Colors[i];
    colours.push_back(static_cast<uint32_t>(colour.Red << 16 | colour.Green << 8 | colour.Blue));
  }
  return colours;
}

GifFrame ReadFrame(GifFileType* file, int index) {
  const SavedImage& image = file->SavedImages[index];
  const GifImageDesc& where = image.ImageDesc;
  const size_t count = static_cast<size_t>(where.Width) * static_cast<size_t>(where.Height);
  GifFrame frame = {where.Left, where.Top, where.Width, where.Height, {}, 0, -1, 0, ReadColours(where.ColorMap)};
  frame.indices.assign(image.RasterBits, image.RasterBits + count);
  GraphicsControlBlock control;
  if (DGifSavedExtensionToGCB(file, index, &control) == GIF_OK) {
    frame.delay = control.DelayTime;
    frame.transparent = control.TransparentColor;
    frame.disposal = control.DisposalMode;
  }
  return frame;
}

void ReadPicture(GifFileType* file, GifPicture& gif) {
  gif.width = file->SWidth;
  gif.height = file->SHeight;
  gif.colours = ReadColours(file->SColorMap);
  for (int i = 0; i < file->ImageCount; ++i) gif.frames.push_back(ReadFrame(file, i));
}

} // namespace

GifPicture ReadGif(const std::vector<uint8_t>& bytes) {
  GifPicture gif = {};
  Source source = {&bytes, 0};
  int error = 0;
  GifFileType* file = DGifOpen(&source, ReadSource, &error);
  if (!file) {
    gif.error = GifErrorString(error);
    return gif;
  }
  if (DGifSlurp(file) == GIF_OK) {
    ReadPicture(file, gif);
  } else {
    const char* reason = GifErrorString(file->Error);
    gif.error = reason ? reason : "the file ends early";
  }
  if (gif.error.empty() && source.at != bytes.size()) gif.error = "bytes behind the trailer";
  DGifCloseFile(file, &error);
  return gif;
}

GifPicture ReadGifFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return ReadGif({std::istreambuf_iterator<char>(file), {}});
}

std::vector<uint32_t> Composite(const GifPicture& gif, size_t last) {
  const auto width = static_cast<size_t>(gif.width);
  std::vector<uint32_t> shown(width * static_cast<size_t>(gif.height), kUncovered);
  for (size_t f = 0; f <= last && f < gif.frames.size(); ++f) {
    const GifFrame& frame = gif.frames[f];
    const std::vector<uint32_t>& colours = frame.colours.empty() ? gif.colours : frame.colours;
    if (frame.disposal > 1 || frame.left + frame.width > gif.width || frame.top + frame.height > gif.height) return {};
    for (size_t i = 0; i < frame.indices.size(); ++i) {
      if (frame.indices[i] == frame.transparent) continue;
      if (frame.indices[i] >= colours.size()) return {};
      const size_t x = static_cast<size_t>(frame.left) + i % static_cast<size_t>(frame.width);
      const size_t y = static_cast<size_t>(frame.top) + i / static_cast<size_t>(frame.width);
      shown[y * width + x] = colours[frame.indices[i]];
    }
  }
  return shown;
}

} // namespace framereel
