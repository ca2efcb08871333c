// What is in the animation, read back from the file. See user.h.
#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "app/document.h"
#include "core/strings.h"
#include "fuzz/user.h"
#include "gif/stream_bytes.h"
#include "support/gif_reader.h"
#include "support/temporary_folder.h"
#include "win32/pixels/region.h"

namespace framereel {
namespace {

// Everything in the frames is dim, as other programs and the pointer are, or darker at and beyond the screen's edges.
void ExpectOthersOnly(const User& user, const GifPicture& gif) {
  for (size_t f = 0; f < gif.frames.size(); ++f) {
    const GifFrame& frame = gif.frames[f];
    for (size_t i = 0; i < frame.indices.size(); ++i) {
      const int x = frame.left + int(i) % frame.width, y = frame.top + int(i) / frame.width;
      const bool onRim = x == 0 || y == 0 || x == gif.width - 1 || y == gif.height - 1;
      if (frame.indices[i] == frame.transparent || onRim) continue;
      const uint32_t colour = gif.colours[frame.indices[i]];
      if (IsDim(colour, user.mixture.offScreen)) continue;
      Expect(user, false, Text("something of ours is recorded, frame ", f, " at ", x, ',', y));
    }
  }
}

bool IsNear(uint32_t a, uint32_t b) {
  constexpr int kCubeStep = 51, kCoarse = 10; // a screen of 16 bits has steps of 8
  for (const int shift : {0, 8, 16}) {
    if (2 * std::abs(int(a >> shift & 255) - int(b >> shift & 255)) > kCubeStep + kCoarse) return false;
  }
  return true;
}

bool IsUnderPointer(int32_t x, int32_t y) {
  const MemoryDisplay& display = TheMemoryDisplay();
  const int32_t left = display.pointerX - display.hotX, top = display.pointerY - display.hotY;
  return display.hasPointer && x >= left && x < left + display.pointerWidth && y >= top &&
         y < top + display.pointerHeight;
}

// The last frame shows what stands on the screen now.
void ExpectTheScreen(const User& user, const GifPicture& gif) {
  const RecorderState& recorder = user.app.recorder;
  const MemoryDisplay& display = TheMemoryDisplay();
  const std::vector<uint32_t> shown = Composite(gif, gif.frames.size() - 1);
  for (int y = 1; y < gif.height - 1 && recorder.frameTop + y < display.height; ++y) {
    for (int x = 1; x < gif.width - 1 && recorder.frameLeft + x < display.width; ++x) {
      const int32_t screenX = recorder.frameLeft + x, screenY = recorder.frameTop + y;
      if (IsUnderPointer(screenX, screenY)) continue;
      const PaletteColour c = MemoryColourOf(MemoryPixel(screenX, screenY));
      const bool near = IsNear(shown[size_t(y * gif.width + x)], uint32_t(c.red << 16 | c.green << 8 | c.blue));
      if (!near) Expect(user, false, Text("the last frame is not what the screen shows at ", screenX, ',', screenY));
    }
  }
}

// What counts as saved is in the document's file.
void ExpectSaved(const User& user, const std::vector<uint8_t>& bytes) {
  const FileRef* file = user.app.document.file;
  if (!file || IsUnsaved(user.app)) return;
  char* path = FileRefPath(file);
  const std::string saved = ReadWholeFile(path);
  StrFree(path);
  Expect(user, saved == std::string(bytes.begin(), bytes.end()), "the document's file is another one");
}

} // namespace

void LookAtWindows(User& user) {
  Region own;
  for (const auto& window : TheMemoryDesktop().windows) {
    if (window->ours && window->role != WindowRole::kCover) own.Add(window->place);
  }
  const PixelRect seen = own.Bounds();
  own.Add(user.mixture.ownSeen);
  user.mixture.ownSeen = seen;
  const Rect& area = user.app.recorder.captureArea;
  const bool began = user.app.recorder.animationStarted;
  const bool meet = !IsEmpty(Intersect(own.Bounds(), {area.left, area.top, area.right, area.bottom}));
  const bool leaves = area.right > TheMemoryDisplay().width || area.bottom > TheMemoryDisplay().height;
  user.mixture.ownWindows = meet || (began && user.mixture.ownWindows);
  user.mixture.offScreen = leaves || (began && user.mixture.offScreen);
}

void CheckAnimation(User& user, bool screenIsRecorded) {
  RecorderState& recorder = user.app.recorder;
  const uint32_t size = user.app.stream.streamSize;
  Expect(user, (size != 0) == recorder.animationStarted, "there are bytes without an animation");
  Expect(user, !screenIsRecorded || recorder.frameCount > 0, "a grab gives no frame");
  if (size == 0) return;
  const std::vector<uint8_t> bytes = FileBytes(user.app.stream);
  ExpectSaved(user, bytes);
  const GifPicture gif = ReadGif(bytes);
  Expect(user, gif.error.empty(), "the animation cannot be read: " + gif.error);
  Expect(user, gif.frames.size() == recorder.frameCount, "the animation has another count of frames");
  const std::vector<uint32_t> first = Composite(gif, 0);
  Expect(user, !first.empty() && std::count(first.begin(), first.end(), kUncovered) == 0, "a first frame with holes");
  Expect(user, !Composite(gif, gif.frames.size() - 1).empty(), "a frame leaves the picture, or its colours");
  const bool whole = gif.width == recorder.frameWidth && gif.height == recorder.frameHeight;
  if (user.mixture.coloursChanged) return;
  if (recorder.animationFormat == kFormatTrueColour || recorder.animationFormat == kFormat8Bit) {
    if (!user.mixture.ownWindows) ExpectOthersOnly(user, gif);
  }
  if (screenIsRecorded && whole) ExpectTheScreen(user, gif);
}

} // namespace framereel
