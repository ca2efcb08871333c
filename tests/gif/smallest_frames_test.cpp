// Frames in few bytes, read back by a foreign reader: larger ones than the recorder's random animations have, so that
// dictionaries fill up and are kept or forgotten.
#include "gif/smallest_frames.h"

#include <gtest/gtest.h>

#include "gif/stream_bytes.h"
#include "support/dice.h"
#include "support/gif_reader.h"

namespace framereel {
namespace {

constexpr uint8_t kMark = 255;

// What a screen of `colours` colours may show, in bands of rows: noise and runs; a tile over and over; letters at
// chance distances.
std::vector<uint8_t> AnyPicture(Dice& dice, int width, int height, int colours) {
  std::vector<uint8_t> picture, tile;
  for (int i = 2 + dice.Below(700); i > 0; --i) tile.push_back(uint8_t(dice.Below(colours)));
  while (picture.size() < size_t(width) * size_t(height)) {
    const int kind = dice.Below(4), spread = dice.OneIn(3) ? 1 : 1 + dice.Below(60);
    uint8_t colour = 0;
    for (int i = (1 + dice.Below(40)) * width; i > 0; --i) {
      if (kind < 2 && dice.OneIn(spread)) colour = uint8_t(dice.Below(colours));
      if (kind == 3 && dice.OneIn(spread)) {
        const size_t letter = tile.size() / 8 * size_t(dice.Below(8));
        picture.insert(picture.end(), tile.begin() + ptrdiff_t(letter),
                       tile.begin() + ptrdiff_t(letter + tile.size() / 8));
      }
      picture.push_back(kind == 2 ? tile[picture.size() % tile.size()] : colour);
    }
  }
  picture.resize(size_t(width) * size_t(height));
  return picture;
}

struct Film {
  int width, height;
  OwnWriter gif;
  SmallestFrames* smallest;
  std::vector<std::vector<uint8_t>> pictures; // index i has the colour 0xiiiiii

  Film(int w, int h) : width(w), height(h) {
    uint8_t table[768];
    for (int i = 0; i < 768; ++i) table[i] = uint8_t(i / 3);
    smallest = SmallestNew(int16_t(w), int16_t(h), table);
  }
  ~Film() { SmallestFree(smallest); }

  // Within the rectangle pixels that stay may be marked, and outside nothing differs from the picture before.
  void Take(const std::vector<uint8_t>& picture, const std::vector<uint8_t>& pixels, FramePixels frame) {
    frame.pixels = {pixels.data() + frame.top * width + frame.left, frame.width, int16_t(width - frame.width)};
    if (pictures.empty()) {
      uint8_t table[768];
      const int bits = SmallestBegin(*smallest, frame, table);
      GifWriteHeader(gif, int16_t(width), int16_t(height), 0, 0, uint8_t(bits), table);
    }
    const SmallestFrame& taken = SmallestTakeFrame(*smallest, frame);
    EXPECT_TRUE(frame.mayMark || !taken.transparent);
    GifWriteControl(gif, taken.transparent, 0, taken.transparentIndex);
    SmallestWriteImage(*smallest, gif);
    pictures.push_back(picture);
  }

  void ExpectPictures() const {
    const GifPicture read = ReadGif(FileBytes(gif.ownStream));
    ASSERT_EQ(read.error, "");
    ASSERT_EQ(read.frames.size(), pictures.size());
    for (size_t i = 0; i < pictures.size(); ++i) {
      const std::vector<uint32_t> shown = Composite(read, i);
      ASSERT_EQ(shown.size(), pictures[i].size());
      for (size_t k = 0; k < shown.size(); ++k) ASSERT_EQ(shown[k], pictures[i][k] * 0x010101u) << i << ", " << k;
    }
  }
};

FramePixels Whole(const Film& film) {
  return {0, 0, int16_t(film.width), int16_t(film.height), {}, false, 0, false, false};
}

TEST(SmallestFrames, ShowWhatTheyWereGiven) {
  Dice dice(1);
  for (int round = 0; round < 80; ++round) {
    SCOPED_TRACE(round);
    const int counts[] = {1, 2, 3, 4, 5, 16, 17, 64, 65, 128, 255, 256}, colours = dice.OneOf(counts);
    Film film(1 + dice.Below(dice.OneIn(2) ? 900 : 90), 1 + dice.Below(200));
    std::vector<uint8_t> picture = AnyPicture(dice, film.width, film.height, 1 + dice.Below(colours));
    film.Take(picture, picture, Whole(film));
    for (int frames = 1 + dice.Below(4); frames > 0; --frames) {
      // A new picture in a part of the rectangle; the rest of it stays.
      const int left = dice.Below(film.width), top = dice.Below(film.height);
      const int width = 1 + dice.Below(film.width - left), height = 1 + dice.Below(film.height - top);
      const int apart = dice.OneIn(2) ? 1 : 1 + dice.Below(5000);
      FramePixels frame = {int16_t(left), int16_t(top), int16_t(width), int16_t(height), {}, false, kMark, true, false};
      frame.marked = colours < 256 && dice.OneIn(2);
      frame.mayMark = !dice.OneIn(4);
      frame.inPlace = dice.OneIn(4);
      const std::vector<uint8_t> next = AnyPicture(dice, film.width, film.height, colours);
      std::vector<uint8_t> pixels = picture;
      for (int y = top; y < top + height; ++y) {
        for (int x = left; x < left + width; ++x) {
          const auto at = size_t(y * film.width + x);
          if (dice.OneIn(apart)) picture[at] = next[at];
          const bool stays = frame.marked && picture[at] == pixels[at];
          pixels[at] = stays && !dice.OneIn(3) ? kMark : picture[at];
        }
      }
      film.Take(picture, pixels, frame);
    }
    ASSERT_NO_FATAL_FAILURE(film.ExpectPictures());
  }
}

TEST(SmallestFrames, EndWhereverADictionaryStands) {
  Dice dice(2);
  std::vector<uint8_t> noise;
  for (int count = 1; count <= 4200; ++count) {
    noise.push_back(uint8_t(dice.random()));
    if (count > 3 && count < 3830) continue;
    Film film(count, 1);
    film.Take(noise, noise, Whole(film));
    ASSERT_NO_FATAL_FAILURE(film.ExpectPictures()) << count;
  }
  // One colour, in strings of 1, 2, 3 and so on: the last one fills the dictionary, or begins another row.
  for (const int height : {2045, 2046}) {
    Film film(4091, height);
    const std::vector<uint8_t> flat(size_t(4091) * size_t(height), 7);
    film.Take(flat, flat, Whole(film));
    ASSERT_NO_FATAL_FAILURE(film.ExpectPictures()) << height;
  }
}

} // namespace
} // namespace framereel
