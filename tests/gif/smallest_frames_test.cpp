// Frames in few bytes, read back by a foreign reader: larger ones than the recorder's random animations have, so that
// dictionaries fill up and are kept or forgotten.
#include "gif/smallest_frames.h"

#include <gtest/gtest.h>

#include "gif/stream_bytes.h"
#include "support/dice.h"
#include "support/gif_reader.h"

namespace framereel {
namespace {

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

  void Take(const std::vector<uint8_t>& picture, bool mayMark = false) {
    FramePixels frame = {0, 0, int16_t(width), int16_t(height), {}, false, 0, mayMark, false};
    frame.pixels = {picture.data(), frame.width, 0};
    if (pictures.empty()) {
      uint8_t table[768];
      const int bits = SmallestBegin(*smallest, frame, table);
      GifWriteHeader(gif, int16_t(width), int16_t(height), 0, 0, uint8_t(bits), table);
    }
    const SmallestFrame& taken = SmallestTakeFrame(*smallest, frame);
    EXPECT_TRUE(mayMark || !taken.transparent);
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

TEST(SmallestFrames, ShowWhatTheyWereGiven) {
  Dice dice(1);
  for (int round = 0; round < 80; ++round) {
    const int counts[] = {1, 2, 3, 4, 5, 16, 17, 64, 65, 128, 255, 256}, colours = dice.OneOf(counts);
    Film film(1 + dice.Below(dice.OneIn(2) ? 900 : 90), 1 + dice.Below(200));
    std::vector<uint8_t> picture = AnyPicture(dice, film.width, film.height, 1 + dice.Below(colours));
    film.Take(picture);
    for (int frames = 1 + dice.Below(4); frames > 0; --frames) { // in a part of which there is another picture
      const std::vector<uint8_t> next = AnyPicture(dice, film.width, film.height, colours);
      const size_t from = size_t(dice.Below(int(next.size()))), to = from + size_t(dice.Below(int(next.size() - from)));
      const int apart = dice.OneIn(2) ? 1 : 1 + dice.Below(5000);
      for (size_t i = from; i <= to; ++i) picture[i] = dice.OneIn(apart) ? next[i] : picture[i];
      film.Take(picture, !dice.OneIn(4));
    }
    ASSERT_NO_FATAL_FAILURE(film.ExpectPictures()) << "round " << round;
  }
}

TEST(SmallestFrames, EndWhereverADictionaryStands) {
  Dice dice(2);
  std::vector<uint8_t> noise;
  for (int count = 1; count <= 4200; ++count) {
    noise.push_back(uint8_t(dice.random()));
    if (count > 3 && count < 3830) continue;
    Film film(count, 1);
    film.Take(noise);
    ASSERT_NO_FATAL_FAILURE(film.ExpectPictures()) << count;
  }
  // One colour, in strings of 1, 2, 3 and so on: the last one fills the dictionary, or begins another row.
  for (const int height : {2045, 2046}) {
    Film film(4091, height);
    const std::vector<uint8_t> flat(size_t(4091) * size_t(height), 7);
    film.Take(flat);
    ASSERT_NO_FATAL_FAILURE(film.ExpectPictures()) << height;
  }
}

} // namespace
} // namespace framereel
