// The screen: how the server packs it, reading it, and drawing on it over everybody's windows. The artist knows what
// stands there.
#include "x11/user.h"

#include <sys/shm.h>

#include <algorithm>
#include <cstring>

namespace framereel {

namespace {

constexpr PixelLayout kRgb555 = {16, 2, 0x7C00, 0x03E0, 0x001F}, kRgb30 = {32, 4, 0x3FF00000, 0x000FFC00, 0x000003FF};

// ---- Packings ----------------------------------------------------------------------------------------------------

struct Packing {
  int32_t depth, bitsPerPixel, bitUnit;
  PixelLayout layout;
};

constexpr Packing kPackings[] = {
    {1, 1, 8, {1, 1, 0, 0, 0}},    {1, 1, 16, {1, 1, 0, 0, 0}},   {1, 1, 32, {1, 1, 0, 0, 0}},
    {1, 8, 32, {1, 1, 0, 0, 0}},   {2, 4, 32, {2, 1, 0, 0, 0}},   {2, 8, 32, {2, 1, 0, 0, 0}},
    {4, 4, 32, {4, 1, 0, 0, 0}},   {4, 8, 32, {4, 1, 0, 0, 0}},   {8, 8, 32, {8, 1, 0, 0, 0}},
    {15, 16, 32, kRgb555},         {16, 16, 32, kLayoutRgb565},   {16, 32, 32, kLayoutRgb565},
    {24, 24, 32, kLayoutXrgb8888}, {24, 32, 32, kLayoutXrgb8888}, {30, 32, 32, kRgb30},
};

// Those that servers of today no longer use among them, so no server is asked: Xlib knows them all.
TEST(X11Packing, IsUndoneToTheLayout) {
  constexpr int32_t width = 67;
  uint8_t row[4 * width + 4];
  for (size_t i = 0; i < sizeof row; i++) row[i] = static_cast<uint8_t>(i * 2654435761u >> 13);
  for (int kind = 0; kind < 8 * std::ssize(kPackings); ++kind) {
    const Packing& p = kPackings[kind / 8];
    const int byteOrder = kind & 1, bitOrder = kind >> 1 & 1;
    const bool turned = p.depth == 1 && kind >> 2 & 1; // a server whose pixel 1 is black
    SCOPED_TRACE(testing::Message() << "depth " << p.depth << " in " << p.bitsPerPixel << ", unit " << p.bitUnit
                                    << ", orders " << byteOrder << bitOrder << ", turned " << turned);
    XImage image = ImageOf(row, width, 1, p.depth, p.bitsPerPixel, 0);
    image.byte_order = byteOrder;
    image.bitmap_bit_order = bitOrder;
    image.bitmap_unit = p.bitUnit;
    image.bitmap_pad = 32;
    image.bytes_per_line = 0;
    ASSERT_TRUE(XInitImage(&image));
    Picture expected = PictureOf(&image);
    for (uint32_t& pixel : expected.pixels) pixel ^= turned ? 1 : 0;

    const X11Format format = {p.depth, p.bitsPerPixel, 32, byteOrder, bitOrder, p.bitUnit, turned};
    EXPECT_EQ(X11RowBytes(format, width), image.bytes_per_line);
    const int32_t bytes = p.layout.bytesPerPixel;
    std::vector<uint8_t> out(width * bytes + 1, 0xA5);
    X11UnpackRow(format, row, width, p.layout, out.data());
    // An index fills its byte, and nothing else is in it.
    XImage unpacked = ImageOf(out.data(), width, 1, bytes == 1 ? 8 : p.depth, 8 * bytes, width * bytes);
    EXPECT_EQ(Difference(PictureOf(&unpacked), expected), "");
    EXPECT_EQ(out.back(), 0xA5) << "beyond the row";
  }
}

// ---- Reading -----------------------------------------------------------------------------------------------------

// Reads into a filled surface and compares all of it.
void ExpectExactRead(const Picture& screen, const PixelRect& where, OwnSurface* into, int32_t toX, int32_t toY) {
  into->Fill(0xA5);
  Picture expected = into->Pixels();
  Copy(screen, where, toX, toY, &expected);
  ASSERT_TRUE(DisplayReadScreen(where, into->surface, toX, toY));
  ASSERT_EQ(Difference(into->Pixels(), expected), "")
      << where.left << ", " << where.top << ", " << where.right << ", " << where.bottom << " to " << toX << ", " << toY;
}

using X11Screen = X11WindowTest;

TEST_F(X11Screen, HasTheLayoutOfItsDepth) {
  const Packing* own = std::find_if(std::begin(kPackings), std::end(kPackings),
                                    [this](const Packing& each) { return each.depth == artist.Depth(); });
  const PixelLayout found = DisplayScreen().layout;
  EXPECT_EQ(std::memcmp(&found, &own->layout, sizeof found), 0);
}

TEST_F(X11Screen, IsReadExactlyAtAllOffsetsAndWidths) {
  Picture screen = artist.CoverScreen(1);
  OwnSurface small(23, 9);
  for (int32_t width = 1; width <= 9; width++) {
    for (int32_t left = 0; left < 9; left++) {
      for (int32_t toX = 0; toX < 9; toX++) {
        ExpectExactRead(screen, {left, left, left + width, left + 4}, &small, toX, toX % 5);
      }
    }
  }
  const int32_t w = screen.width, h = screen.height;
  ExpectExactRead(screen, {w - 1, h - 1, w, h}, &small, 22, 8);
  OwnSurface whole(w, h), narrow(w - 3, h); // whose rows end in padding at most depths
  EXPECT_EQ(whole.surface.memory && narrow.surface.memory, artist.HasSharedMemory());
  ExpectExactRead(screen, screen.All(), &whole, 0, 0);
  ExpectExactRead(screen, {0, 200, w, 300}, &whole, 0, 7);
  ExpectExactRead(screen, {3, 0, w, h}, &narrow, 0, 0);
  ExpectExactRead(screen, {1, 1, w - 3, h}, &narrow, 1, 0);
  // One pixel narrower, with the same padded row as the surface.
  for (int32_t toX : {0, 1}) ExpectExactRead(screen, {0, 0, w - 4, 100}, &narrow, toX, 300);
}

TEST_F(X11Screen, RefusesWhatDoesNotFit) {
  const int32_t w = artist.Width(), h = artist.Height();
  OwnSurface into(40, 30);
  Picture before = into.Pixels();
  const PixelRect off[] = {
      {-1, 0, 9, 9}, {0, -1, 9, 9}, {w - 9, 0, w + 1, 9}, {0, h - 9, 9, h + 1}, {65536, 0, 65540, 4}};
  for (const PixelRect& where : off) EXPECT_FALSE(DisplayReadScreen(where, into.surface, 0, 0));
  for (const int32_t by : {31, -1}) {
    EXPECT_FALSE(DisplayReadScreen({0, 0, 10, 10}, into.surface, by, 0));
    EXPECT_FALSE(DisplayReadScreen({0, 0, 10, 10}, into.surface, 0, by));
  }
  EXPECT_TRUE(DisplayReadScreen({5, 5, 5, 9}, into.surface, 0, 0));
  EXPECT_EQ(Difference(into.Pixels(), before), "");

  Surface other = into.surface;
  other.layout = kLayoutMono;
  EXPECT_FALSE(DisplayReadScreen({0, 0, 10, 10}, other, 0, 0) || DisplayDrawScreen(other, {0, 0, 10, 10}, 0, 0));
  for (const int32_t size : {-1, 0, INT32_MAX}) EXPECT_FALSE(DisplayNewSurface(size, size, &other));
}

TEST_F(X11Screen, HandsOutSurfacesOfZerosAndLeavesNoSharedMemoryBehind) {
  for (const int32_t size : {20, 300}) { // plain memory, and shared
    { const OwnSurface dirty(size, size); }
    Surface fresh{};
    ASSERT_TRUE(DisplayNewSurface(size, size, &fresh));
    const std::vector<uint8_t> bytes(fresh.pixels, fresh.pixels + size_t(fresh.stride) * size_t(size));
    EXPECT_EQ(bytes, std::vector<uint8_t>(bytes.size())) << size;
    const int id = fresh.memory ? static_cast<X11Segment*>(fresh.memory)->shared.shmid : -1;
    DisplayFreeSurface(&fresh);
    Catch();
    shmid_ds state;
    EXPECT_NE(::shmctl(id, IPC_STAT, &state), 0);
  }
}

// ---- Drawing -----------------------------------------------------------------------------------------------------

TEST_F(X11Screen, TakesPixelsOverAllWindowsAndCutsWhatLiesOff) {
  Picture screen = artist.CoverScreen(4);
  const int32_t w = screen.width, h = screen.height;
  for (int32_t size : {20, 300}) { // sent with the request, and through shared memory
    Picture picture = artist.Noise(size, size, 5);
    const PixelRect all = picture.All();
    const struct {
      PixelRect part;
      int32_t x, y;
    } draws[] = {{all, 45, 49},    {{5, 6, 12, 16}, 200, 101}, {all, -7, 30},      {all, 30, -7}, {all, w - 5, h - 5},
                 {all, -size, 0},  {all, w - 1, 1 - size},     {all, 65546, 0}, // 10, 0 in the protocol's 16 bits
                 {all, 0, -65526}, {all, INT32_MAX, 9},        {all, 9, INT32_MIN}};
    for (const auto& draw : draws) {
      OwnSurface from(picture);
      ASSERT_TRUE(DisplayDrawScreen(from.surface, draw.part, draw.x, draw.y));
      from.Fill(0); // the draw is done with it
      Copy(picture, draw.part, draw.x, draw.y, &screen);
      ASSERT_EQ(Difference(Seen(), screen), "") << draw.x << ", " << draw.y;
    }
  }
}

TEST_F(X11Screen, InvertsUnderPatternsInScreenCoordinates) {
  Picture screen = artist.CoverScreen(7);
  const uint32_t bits = artist.Black() ^ artist.White();
  // What the display does to the screen, the words of its contract do to the picture.
  auto invert = [&](const PixelRect& where, std::vector<uint8_t> pattern) {
    ASSERT_TRUE(DisplayInvertScreen(where, pattern.data()));
    PixelRect seen = Intersect(where, screen.All());
    for (int32_t y = seen.top; y < seen.bottom; y++) {
      for (int32_t x = seen.left; x < seen.right; x++) {
        if (pattern[y % 8] >> (7 - x % 8) & 1) screen.At(x, y) ^= bits;
      }
    }
  };
  const PixelRect places[] = {
      {13, 11, 141, 139}, {7, 200, 8, 300}, {-20, -20, 30, 5}, {500, 400, 70000, 70000}, {65540, 0, 65600, 50}};
  for (const PixelRect& where : places) {
    invert(where, {0x87, 0x43, 0xA1, 0xD0, 0x68, 0x34, 0x1A, 0x0D});
    EXPECT_EQ(Difference(Seen(), screen), "");
  }
  // More patterns than the server keeps: new, kept, and just gone.
  for (int32_t i = 0; i < 9 * kStipplesKept; i++) {
    invert({3, 3, 43, 19}, std::vector<uint8_t>(8, static_cast<uint8_t>(i * i % (2 * kStipplesKept))));
  }
  EXPECT_EQ(Difference(Seen(), screen), "");
}

} // namespace

} // namespace framereel
