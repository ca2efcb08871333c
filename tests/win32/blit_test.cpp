// Copies between bitmaps and the screen, against a copy that looks at every pixel alone.
#include "win32/canvas.h"

namespace framereel {
namespace {

struct Copy {
  int x, y, width, height, fromX, fromY;
  DWORD operation;
};

uint32_t PlainCombine(DWORD operation, uint32_t source, uint32_t target, uint32_t bits) {
  if (operation == SRCCOPY || operation == kPatternOrSource) return source; // the brush is black
  if (operation == SRCAND) return source & target;
  if (operation == SRCPAINT) return source | target;
  if (operation == MERGEPAINT) return (~source & bits) | target;
  return 0;
}

void PlainCopy(Picture& to, Picture from, const Copy& copy, uint32_t bits) {
  for (int i = 0; i < copy.width * copy.height; ++i) {
    const int dx = i % copy.width, dy = i / copy.width;
    if (!to.Has(copy.x + dx, copy.y + dy) || !from.Has(copy.fromX + dx, copy.fromY + dy)) continue;
    uint32_t& target = to.At(copy.x + dx, copy.y + dy);
    target = PlainCombine(copy.operation, from.At(copy.fromX + dx, copy.fromY + dy), target, bits);
  }
}

void ExpectCopy(HDC to, HDC from, const Copy& copy) {
  Picture expected = PictureOf(to);
  PlainCopy(expected, PictureOf(from), copy, PixelBits(LayoutOf(*to)));
  ASSERT_TRUE(::BitBlt(to, copy.x, copy.y, copy.width, copy.height, from, copy.fromX, copy.fromY, copy.operation));
  ASSERT_EQ(PictureOf(to).pixels, expected.pixels)
      << copy.x << ", " << copy.y << " from " << copy.fromX << ", " << copy.fromY << " by " << copy.operation;
}

constexpr DWORD kOperations[] = {SRCCOPY, SRCAND, SRCPAINT, MERGEPAINT, kPatternOrSource, 0};

// Places that lie inside, reach over each edge, and lie wholly outside.
constexpr int kPlaces[] = {-9, -3, 0, 2, 5, 12};

TEST(BitBlt, ClipsToBothSidesWithEveryOperation) {
  std::mt19937 random(2);
  for (const int depth : {1, 4, 8, 16, 24}) {
    SCOPED_TRACE(depth);
    ScreenCanvas screen(11, 9, depth);
    BitmapCanvas a(screen.context, 10, 8), b(screen.context, 9, 10);
    const HDC contexts[] = {screen.context, a.context, b.context};
    for (const HDC context : contexts) {
      ::SelectObject(context, ::GetStockObject(BLACK_BRUSH));
      Scribble(context, random);
    }
    for (int i = 0; i < 36 * 36; ++i) {
      const int x = kPlaces[i % 6], y = kPlaces[i / 6 % 6], fromX = kPlaces[i / 36 % 6], fromY = kPlaces[i / 216];
      const HDC to = contexts[random() % 3], from = contexts[random() % 3];
      ASSERT_NO_FATAL_FAILURE(ExpectCopy(to, from, {x, y, 7, 5, fromX, fromY, kOperations[random() % 6]}));
      Scribble(to, random);
    }
  }
}

TEST(BitBlt, ReadsTheScreenOnceIntoABitmapOfItsFormat) {
  ScreenCanvas screen(20, 20, 24);
  BitmapCanvas bitmap(screen.context, 5, 5);
  ASSERT_TRUE(::BitBlt(bitmap.context, 0, 0, 5, 5, screen.context, 17, 17, SRCCOPY));
  EXPECT_EQ(TheMemoryDisplay().screenReads, 1U);
}

TEST(BitBlt, CopiesColoursWhereTheLayoutsDiffer) {
  ScreenCanvas screen(2, 1, 24);
  BitmapCanvas deep(screen.context, 2, 1), mono(screen.context, 2, 1, false);
  SetPixelAt(mono.bitmap->surface, 1, 0, 1);
  ASSERT_TRUE(::BitBlt(screen.context, 0, 0, 2, 1, mono.context, 0, 0, SRCCOPY));
  EXPECT_EQ(TheMemoryDisplay().screen, (std::vector<uint32_t>{0, 0xFFFFFF}));

  MemoryDisplaySetMode(2, 1, 16);
  MemoryPixel(0, 0) = 0xF800 | 1; // full red, the least blue
  MemoryPixel(1, 0) = 0x8410;     // half of all
  ASSERT_TRUE(::BitBlt(deep.context, 0, 0, 2, 1, screen.context, 0, 0, SRCCOPY));
  EXPECT_EQ(PictureOf(deep.context).pixels, (std::vector<uint32_t>{0xFF0008, 0x848284}));

  MemoryDisplaySetMode(2, 1, 4);
  ASSERT_TRUE(::BitBlt(screen.context, 0, 0, 2, 1, deep.context, 0, 0, SRCCOPY));
  EXPECT_EQ(TheMemoryDisplay().screen, (std::vector<uint32_t>{9, 8}));
}

TEST(StretchBlt, TakesTheNearestPixelAndIsCutAtTheTargetsEdges) {
  std::mt19937 random(4);
  ScreenCanvas screen(12, 12, 24);
  BitmapCanvas source(screen.context, 6, 6);
  const int sizes[] = {1, 2, 3, 5, 6, 11};
  for (int i = 0; i < 36; ++i) {
    const int width = sizes[i % 6], height = sizes[i / 6];
    Scribble(source.context, random);
    Picture from = PictureOf(source.context), expected = PictureOf(screen.context);
    for (int k = 0; k < width * height; ++k) {
      expected.At(1 + k % width, 1 + k / width) = from.At(1 + k % width * 5 / width, 2 + k / width * 3 / height);
    }
    ASSERT_TRUE(::StretchBlt(screen.context, 1, 1, width, height, source.context, 1, 2, 5, 3, SRCCOPY));
    ASSERT_EQ(TheMemoryDisplay().screen, expected.pixels) << width << " by " << height;
  }
  Picture from = PictureOf(source.context);
  ASSERT_TRUE(::StretchBlt(screen.context, -5, -5, 20, 20, source.context, 0, 0, 6, 6, SRCCOPY));
  ExpectPixels(screen.context, [&from](int x, int y) { return from.At((x + 5) * 6 / 20, (y + 5) * 6 / 20); });

  const std::vector<uint32_t> before = TheMemoryDisplay().screen;
  EXPECT_FALSE(::StretchBlt(screen.context, 0, 0, 12, 12, source.context, 1, 0, 6, 6, SRCCOPY)); // over its own edge
  EXPECT_TRUE(::StretchBlt(screen.context, 12, 0, 12, 12, source.context, 0, 0, 6, 6, SRCCOPY)); // nothing to do
  EXPECT_EQ(TheMemoryDisplay().screen, before);
}

TEST(BitBlt, DoesNothingOnALostDisplayOrWithoutAContext) {
  ScreenCanvas screen(4, 4, 24);
  BitmapCanvas bitmap(screen.context, 4, 4);
  std::mt19937 random(5);
  Scribble(bitmap.context, random);
  const Picture before = PictureOf(bitmap.context);
  const auto copies = [](HDC to, HDC from, int width, DWORD operation) {
    return ::BitBlt(to, 0, 0, width, 4, from, 0, 0, operation);
  };
  EXPECT_FALSE(copies(nullptr, screen.context, 4, SRCCOPY));
  EXPECT_FALSE(copies(bitmap.context, nullptr, 4, SRCCOPY));
  EXPECT_FALSE(copies(bitmap.context, screen.context, 0, SRCCOPY));
  TheMemoryDisplay().lost = true;
  copies(bitmap.context, screen.context, 4, SRCCOPY);
  copies(bitmap.context, screen.context, 4, SRCPAINT);
  copies(screen.context, bitmap.context, 4, SRCCOPY);
  EXPECT_EQ(::GetPixel(screen.context, 0, 0), 0xFFFFFFFF);
  EXPECT_EQ(PictureOf(bitmap.context).pixels, before.pixels);
  EXPECT_EQ(TheMemoryDisplay().screen, std::vector<uint32_t>(16, 0));
}

} // namespace
} // namespace framereel
