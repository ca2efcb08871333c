// A save: trailer on, write, trailer off.
#include "gif/save_animation.h"

namespace framereel {

bool SaveAnimationTo(GifWriter& gif, File* file) {
  const uint32_t size = gif.stream->streamSize;
  GifWriteTrailer(gif);
  const bool written = StreamWrite(*gif.stream, file);
  StreamTruncate(*gif.stream, size);
  return written;
}

} // namespace framereel
