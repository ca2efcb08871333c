// giflib behind gif_reader.h.
#include "support/gif_reader.h"

#include <gif_lib.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <span>

namespace framereel {
namespace {

int ReadBytes(GifFileType* file, GifByteType* to, int count) {
  auto& left = *static_cast<std::span<const uint8_t>*>(file->UserData);
  const auto part = left.first(std::min(size_t(count), left.size()));
  std::copy(part.begin(), part.end(), to);
  left = left.subspan(part.size());
  return int(part.size());
}

std::vector<uint32_t> ReadColours(const ColorMapObject* map) {
  std::vector<uint32_t> colours;
  for (int i = 0; map && i < map->ColorCount; ++i) {
    const GifColorType& colour = map->Colors[i];
    colours.push_back(uint32_t(colour.Red << 16 | colour.Green << 8 | colour.Blue));
  }
  return colours;
}

GifFrame ReadFrame(GifFileType* file, int index) {
  const SavedImage& image = file->SavedImages[index];
  const GifImageDesc& where = image.ImageDesc;
  GifFrame frame = {where.Left, where.Top, where.Width, where.Height, {}, 0, -1, 0, ReadColours(where.ColorMap)};
  frame.indices.assign(image.RasterBits, image.RasterBits + size_t(where.Width) * size_t(where.Height));
  GraphicsControlBlock control;
  if (DGifSavedExtensionToGCB(file, index, &control) == GIF_OK) {
    frame.delay = control.DelayTime;
    frame.transparent = control.TransparentColor;
    frame.disposal = control.DisposalMode;
  }
  return frame;
}

} // namespace

GifPicture ReadGif(const std::vector<uint8_t>& bytes) {
  GifPicture gif = {};
  std::span<const uint8_t> left(bytes);
  int error = 0;
  GifFileType* file = DGifOpen(&left, ReadBytes, &error);
  if (file && DGifSlurp(file) == GIF_OK) {
    gif = {
        left.empty() ? "" : "bytes behind the trailer", file->SWidth, file->SHeight, ReadColours(file->SColorMap), {}};
    for (int i = 0; i < file->ImageCount; ++i) gif.frames.push_back(ReadFrame(file, i));
  } else {
    const char* reason = GifErrorString(file ? file->Error : error);
    gif.error = reason ? reason : "the file ends early";
  }
  if (file) DGifCloseFile(file, &error);
  return gif;
}

GifPicture ReadGifFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return ReadGif({std::istreambuf_iterator<char>(file), {}});
}

std::vector<uint32_t> Composite(const GifPicture& gif, size_t last) {
  std::vector<uint32_t> shown(size_t(gif.width) * size_t(gif.height), kUncovered);
  for (size_t f = 0; f <= last && f < gif.frames.size(); ++f) {
    const GifFrame& frame = gif.frames[f];
    const std::vector<uint32_t>& colours = frame.colours.empty() ? gif.colours : frame.colours;
    if (frame.disposal > 1 || frame.left + frame.width > gif.width || frame.top + frame.height > gif.height) return {};
    for (int i = 0; i < frame.width * frame.height; ++i) {
      const uint8_t index = frame.indices[size_t(i)];
      if (index == frame.transparent) continue;
      if (index >= colours.size()) return {};
      shown[size_t(frame.top + i / frame.width) * size_t(gif.width) + size_t(frame.left + i % frame.width)] =
          colours[index];
    }
  }
  return shown;
}

} // namespace framereel
