// The bitmaps. Numbers 153 to 160 are the diagonal stripes of the drawing patterns 75 to 82: number 153 + k is black
// where (x + y) modulo 8 is k, so that each lies one pixel to the right of the one before it. From 512 on stand the
// pictures of the countdown.
#include "resources/bitmaps.h"

#include "resources/countdown_pictures.h"

namespace framereel {
namespace {

// One long diagonal. Stripe k is its eight rows from 7 - k on.
// clang-format off
const char* const kStripes[] = {
    ".......#",
    "......#.",
    ".....#..",
    "....#...",
    "...#....",
    "..#.....",
    ".#......",
    "#.......",
    ".......#",
    "......#.",
    ".....#..",
    "....#...",
    "...#....",
    "..#.....",
    ".#......",
};
// clang-format on

const BitmapResource kBitmaps[] = {
    {153, 8, 8, kStripes + 7},
    {154, 8, 8, kStripes + 6},
    {155, 8, 8, kStripes + 5},
    {156, 8, 8, kStripes + 4},
    {157, 8, 8, kStripes + 3},
    {158, 8, 8, kStripes + 2},
    {159, 8, 8, kStripes + 1},
    {160, 8, 8, kStripes},
    {512, kCountdownWidth, kCountdownHeight, kDigitOne},
    {513, kCountdownWidth, kCountdownHeight, kDigitTwo},
    {514, kCountdownWidth, kCountdownHeight, kDigitThree},
    {517, kCountdownWidth, kCountdownHeight, kPauseSign},
};

} // namespace

const BitmapResource* FindBitmapResource(uint16_t id) {
  for (const std::span<const BitmapResource> table : {std::span<const BitmapResource>(kBitmaps), PictureResources()}) {
    for (const BitmapResource& bitmap : table) {
      if (bitmap.id == id) return &bitmap;
    }
  }
  return nullptr;
}

} // namespace framereel
