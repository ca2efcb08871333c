// The packings that servers of today no longer use, against Xlib's own pixel access. No server is asked here.
#include "x11/artist.h"

#include <cstring>
#include <utility>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

struct Packing {
  int32_t depth, bitsPerPixel, byteOrder, bitOrder, bitUnit;
  PixelLayout layout;
};

XImage ImageOf(const Packing& p, std::vector<char>* data, int32_t width) {
  XImage image{};
  image.width = width;
  image.height = 1;
  image.format = ZPixmap;
  image.byte_order = p.byteOrder;
  image.bitmap_bit_order = p.bitOrder;
  image.bitmap_unit = p.bitUnit;
  image.bitmap_pad = 32;
  image.depth = p.depth;
  image.bits_per_pixel = p.bitsPerPixel;
  EXPECT_TRUE(XInitImage(&image));
  data->resize(image.bytes_per_line);
  for (size_t i = 0; i < data->size(); i++) (*data)[i] = static_cast<char>(i * 2654435761u >> 13);
  image.data = data->data();
  return image;
}

uint32_t PixelOf(const uint8_t* at, size_t bytes) {
  uint16_t half;
  uint32_t whole;
  std::memcpy(&half, at, 2);
  std::memcpy(&whole, at, 4);
  return bytes == 1 ? *at : bytes == 2 ? half : whole;
}

std::vector<Packing> AllPackings() {
  std::vector<Packing> all;
  const PixelLayout deep = {32, 4, 0x3FF00000, 0x000FFC00, 0x000003FF};
  const PixelLayout fifteen = {16, 2, 0x7C00, 0x03E0, 0x001F};
  for (int32_t byteOrder : {LSBFirst, MSBFirst}) {
    for (int32_t bitOrder : {LSBFirst, MSBFirst}) {
      for (int32_t unit : {8, 16, 32}) all.push_back({1, 1, byteOrder, bitOrder, unit, {1, 1, 0, 0, 0}});
    }
    const std::pair<int32_t, int32_t> palettes[] = {{1, 8}, {2, 4}, {2, 8}, {4, 4}, {4, 8}, {8, 8}};
    for (auto [depth, bits] : palettes) all.push_back({depth, bits, byteOrder, byteOrder, 32, {depth, 1, 0, 0, 0}});
    all.push_back({15, 16, byteOrder, byteOrder, 32, fifteen});
    all.push_back({16, 16, byteOrder, byteOrder, 32, kLayoutRgb565});
    all.push_back({16, 32, byteOrder, byteOrder, 32, kLayoutRgb565});
    all.push_back({24, 24, byteOrder, byteOrder, 32, kLayoutXrgb8888});
    all.push_back({24, 32, byteOrder, byteOrder, 32, kLayoutXrgb8888});
    all.push_back({30, 32, byteOrder, byteOrder, 32, deep});
  }
  return all;
}

TEST(X11Packing, UnpacksEveryPackingToTheLayout) {
  constexpr int32_t kWidth = 67;
  for (const Packing& p : AllPackings()) {
    SCOPED_TRACE(testing::Message() << "depth " << p.depth << " in " << p.bitsPerPixel << ", byte order " << p.byteOrder
                                    << ", bit order " << p.bitOrder << ", unit " << p.bitUnit);
    std::vector<char> data;
    XImage image = ImageOf(p, &data, kWidth);
    uint32_t kept = (1u << p.depth) - 1;

    X11Format format = {p.depth, p.bitsPerPixel, 32, p.byteOrder, p.bitOrder, p.bitUnit, false};
    EXPECT_EQ(X11RowBytes(format, kWidth), image.bytes_per_line);
    size_t bytes = static_cast<size_t>(p.layout.bytesPerPixel);
    std::vector<uint8_t> out(kWidth * bytes + 4, 0xA5);
    X11UnpackRow(format, reinterpret_cast<uint8_t*>(data.data()), kWidth, p.layout, out.data());
    for (int32_t x = 0; x < kWidth; x++) {
      uint32_t counts = IsPalette(p.layout) ? 0xFF : kept; // an index fills its byte, and nothing else is in it
      ASSERT_EQ(PixelOf(&out[x * bytes], bytes) & counts, XGetPixel(&image, x, 0) & kept) << "pixel " << x;
    }
    for (size_t i = kWidth * bytes; i < out.size(); i++) EXPECT_EQ(out[i], 0xA5) << "beyond the row";
  }
}

TEST(X11Packing, TurnsTheBitsOfAServerWhosePixelOneIsBlack) {
  X11Format format = {1, 1, 32, MSBFirst, MSBFirst, 8, true};
  const uint8_t row[4] = {0xA0, 0, 0, 0};
  uint8_t out[4];
  X11UnpackRow(format, row, 4, kLayoutMono, out);
  EXPECT_EQ(out[0], 0);
  EXPECT_EQ(out[1], 1);
  EXPECT_EQ(out[2], 0);
  EXPECT_EQ(out[3], 1);
}

} // namespace

} // namespace framereel
