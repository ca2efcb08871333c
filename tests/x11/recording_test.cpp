// The whole road on a real server: what another program shows comes out of the file as the colour table has it.
#include "x11/artist.h"

#include "gif/own_writer.h"
#include "platform/start_up.h"
#include "recorder/recorder_core.h"
#include "support/gif_reader.h"

namespace framereel {

namespace {

constexpr PixelRect kArea = {13, 17, 114, 84}; // at no even place, of no even size

class X11Recording : public testing::Test {
protected:
  void SetUp() override {
    ASSERT_TRUE(EngineStartUp());
    options.overlayBorder = options.overlayCursor = false;
    RecorderSetUp(recorder, &writer.ownStream, &writer, &options);
    ASSERT_TRUE(recorder.recordingAllowed);
    recorder.captureArea = {kArea.top, kArea.left, kArea.bottom, kArea.right};
    recorder.outputWidth = kArea.right - kArea.left;
    recorder.outputHeight = kArea.bottom - kArea.top;
  }
  void TearDown() override {
    RecorderTearDown(recorder);
    EngineShutDown();
  }

  GifPicture Saved() {
    GifWriteTrailer(writer);
    return ReadGif(writer.Bytes());
  }

  // What the file is to show for pixels of the screen: their colour on a palette screen, else the nearest of the cube.
  std::vector<uint32_t> Shown(const Picture& picture) const {
    std::vector<uint32_t> shown;
    for (int32_t y = kArea.top; y < kArea.bottom; y++) {
      for (int32_t x = kArea.left; x < kArea.right; x++) shown.push_back(ColourOf(picture.At(x, y)));
    }
    return shown;
  }

  Artist artist;
  OwnWriter writer;
  RecordingOptions options;
  RecorderState recorder;

private:
  uint32_t ColourOf(uint32_t pixel) const {
    XColor cell{pixel, 0, 0, 0, 0, 0};
    XQueryColor(artist.display, DefaultColormap(artist.display, DefaultScreen(artist.display)), &cell);
    bool palette = artist.Depth() == 8;
    uint32_t colour = 0;
    for (uint32_t channel : {cell.red, cell.green, cell.blue}) {
      uint32_t nearest = (channel * 255 + 32767) / 65535;
      colour = colour << 8 | (palette ? channel >> 8 : (nearest * 5 + 127) / 255 * 51);
    }
    return colour;
  }
};

TEST_F(X11Recording, ShowsWhatStoodOnTheScreenAndNothingOfItsNeighbours) {
  Picture screen = artist.CoverScreen(1);
  RecorderCaptureFrame(recorder, false);
  RecorderCaptureFrame(recorder, false); // nothing has changed
  Picture patch = artist.Noise(10, 8, 2);
  artist.Show(patch, 40, 50);
  Picture changed = screen;
  Paste(patch, 40, 50, &changed);
  RecorderCaptureFrame(recorder, false);

  GifPicture gif = Saved();
  ASSERT_EQ(gif.error, "");
  ASSERT_EQ(gif.frames.size(), 2u);
  EXPECT_EQ(Composite(gif, 0), Shown(screen));
  EXPECT_EQ(Composite(gif, 1), Shown(changed));
  EXPECT_GE(gif.frames[1].left, 40 - kArea.left);
  EXPECT_GE(gif.frames[1].top, 50 - kArea.top);
  EXPECT_LE(gif.frames[1].width, 10);
  EXPECT_LE(gif.frames[1].height, 8);
}

TEST_F(X11Recording, ShowsThePointerWhereItStood) {
  Picture screen = artist.CoverScreen(3);
  const char there[] = {0x0F, 0x1F, 0x1F}; // 5 by 3 pixels, black; the right top one is not there
  const char none[] = {0, 0, 0};
  Pixmap source = XCreateBitmapFromData(artist.display, artist.root, none, 5, 3);
  Pixmap mask = XCreateBitmapFromData(artist.display, artist.root, there, 5, 3);
  XColor black{};
  Cursor cursor = XCreatePixmapCursor(artist.display, source, mask, &black, &black, 3, 1);
  for (Window window : artist.windows) XDefineCursor(artist.display, window, cursor);
  XWarpPointer(artist.display, None, artist.root, 0, 0, 0, 0, 60, 40);
  XSync(artist.display, False);
  for (int32_t y = 0; y < 3; y++) {
    for (int32_t x = 0; x < 5; x++) {
      if (there[y] >> x & 1) screen.At(57 + x, 39 + y) = static_cast<uint32_t>(artist.Black());
    }
  }

  options.overlayCursor = true;
  RecorderCaptureFrame(recorder, false);
  GifPicture gif = Saved();
  ASSERT_EQ(gif.error, "");
  EXPECT_EQ(Composite(gif, 0), Shown(screen));
  XFreeCursor(artist.display, cursor);
}

} // namespace

} // namespace framereel
