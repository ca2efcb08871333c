// Fonts and text: what they measure agrees with what they draw, and there is always something to draw.
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "win32/canvas.h"
#include "win32/fonts.h"

namespace framereel {
namespace {

constexpr COLORREF kInk = RGB(255, 255, 255);

struct Font {
  HFONT handle;
  explicit Font(int height, int weight = FW_NORMAL, bool italic = false, const char* family = "MS Sans Serif",
                int width = 0) {
    LOGFONTA what = {};
    what.lfHeight = height;
    what.lfWidth = width;
    what.lfWeight = weight;
    what.lfItalic = italic;
    std::snprintf(what.lfFaceName, LF_FACESIZE, "%s", family);
    handle = ::CreateFontIndirectA(&what);
  }
  ~Font() { EXPECT_TRUE(::DeleteObject(handle)); }
};

// A black bitmap that text is written on in white.
struct Sheet : BitmapCanvas {
  HGDIOBJ systemFont = nullptr;
  Sheet(HDC screen, int width, int height, bool ofScreen = true) : BitmapCanvas(screen, width, height, ofScreen) {
    Clear();
    ::SetTextColor(context, kInk);
    ::SetTextAlign(context, TA_BASELINE);
  }
  ~Sheet() {
    if (systemFont) ::SelectObject(context, systemFont);
  }
  void Use(const Font& font) {
    HGDIOBJ last = ::SelectObject(context, font.handle);
    if (!systemFont) systemFont = last;
  }
  void Clear() {
    const RECT all = {0, 0, 10000, 10000};
    ::FillRect(context, &all, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
  }
  // The smallest rectangle round the ink.
  PixelRect Ink() const {
    const Picture picture = PictureOf(context);
    const uint32_t ground = PixelOfColour(MapOf(LayoutOf(*context), HasScreenColours(*context)), {0, 0, 0});
    PixelRect ink = {picture.width, picture.height, 0, 0};
    for (int i = 0; i < int(picture.pixels.size()); ++i) {
      const int x = i % picture.width, y = i / picture.width;
      if (picture.pixels[size_t(i)] == ground) continue;
      ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1), std::max(ink.bottom, y + 1)};
    }
    return ink;
  }
};

int WidthOf(HDC context, const std::string& text) {
  SIZE size = {};
  EXPECT_TRUE(::GetTextExtentPointA(context, text.data(), int(text.size()), &size));
  return size.cx;
}

TEXTMETRICA MetricsOf(HDC context) {
  TEXTMETRICA metrics = {};
  EXPECT_TRUE(::GetTextMetricsA(context, &metrics));
  return metrics;
}

void Write(HDC context, int x, int y, const std::string& text) {
  ASSERT_TRUE(::TextOutA(context, x, y, text.data(), int(text.size())));
}

TEST(Text, StaysWithinTheCellThatItMeasuresInEveryLetterSizeAndStyle) {
  for (const int depth : {1, 8, 16, 24}) {
    MemoryDisplayReset(8, 8, depth);
    ScreenCanvas screen;
    Sheet sheet(screen.context, 160, 80);
    for (const int height : {6, 9, 13, 15, 16, 21, 34}) {
      for (const bool italic : {false, true}) {
        Font font(height, height % 2 ? FW_BOLD : FW_NORMAL, italic);
        sheet.Use(font);
        const TEXTMETRICA metrics = MetricsOf(sheet.context);
        EXPECT_EQ(metrics.tmHeight, height);
        EXPECT_EQ(metrics.tmAscent + metrics.tmDescent, height);
        for (int letter = 0x21; letter < 0x100; ++letter) {
          const bool inkless = (letter >= 0x7F && letter <= 0xA0) || letter == 0xAD;
          if (inkless) continue;
          sheet.Clear();
          const std::string text(1, char(letter));
          Write(sheet.context, 40, 40, text);
          const PixelRect ink = sheet.Ink();
          // The smallest marks may vanish at the smallest sizes.
          const bool mark = letter > 0x7F || !std::isalnum(letter);
          if (IsEmpty(ink) && mark && height < 9) continue;
          ASSERT_FALSE(IsEmpty(ink)) << letter << " at " << height;
          ASSERT_GE(ink.top, 40 - metrics.tmAscent) << letter << " at " << height;
          ASSERT_LE(ink.bottom, 40 + metrics.tmDescent) << letter << " at " << height;
          const int slack = italic ? 3 + height / 4 : 2;
          ASSERT_GE(ink.left, 40 - slack) << letter << " at " << height;
          ASSERT_LE(ink.right, 40 + WidthOf(sheet.context, text) + slack) << letter << " at " << height;
        }
        ::SelectObject(sheet.context, sheet.systemFont);
      }
    }
  }
}

TEST(Text, IsMeasuredLetterByLetterAndWritesEachWhereTheLastEnds) {
  MemoryDisplayReset(8, 8, 24);
  ScreenCanvas screen;
  Sheet together(screen.context, 200, 30), apart(screen.context, 200, 30);
  Font font(15, FW_BOLD);
  const std::string text = "Start recording";
  for (const int extra : {0, 2}) {
    int x = 10;
    for (Sheet* sheet : {&together, &apart}) {
      sheet->Clear();
      sheet->Use(font);
      ::SetTextCharacterExtra(sheet->context, extra);
    }
    Write(together.context, x, 20, text);
    for (const char letter : text) {
      Write(apart.context, x, 20, std::string(1, letter));
      x += WidthOf(apart.context, std::string(1, letter)) + extra;
    }
    EXPECT_EQ(PictureOf(together.context).pixels, PictureOf(apart.context).pixels);
    EXPECT_EQ(x, 10 + WidthOf(together.context, text) + extra * int(text.size()));
  }
  EXPECT_EQ(WidthOf(together.context, ""), 0);
  ::SelectObject(together.context, together.systemFont);
  ::SelectObject(apart.context, apart.systemFont);
}

TEST(Text, IsSmoothOnTrueColourAndPlainOnPalettesAndBitmapsOfOneBit) {
  for (const int depth : {2, 8, 16, 24, 32}) {
    SCOPED_TRACE(depth);
    MemoryDisplayReset(8, 8, depth);
    ScreenCanvas screen;
    Sheet deep(screen.context, 200, 40), mono(screen.context, 200, 40, false);
    Font font(22);
    for (Sheet* sheet : {&deep, &mono}) {
      sheet->Use(font);
      Write(sheet->context, 4, 30, "Shades of grey? 0");
      const ColourMap map = MapOf(LayoutOf(*sheet->context), HasScreenColours(*sheet->context));
      const uint32_t ground = PixelOfColour(map, {0, 0, 0}), ink = PixelOfColour(map, {255, 255, 255});
      int inked = 0, between = 0;
      for (const uint32_t pixel : PictureOf(sheet->context).pixels) {
        inked += pixel == ink;
        between += pixel != ink && pixel != ground;
      }
      EXPECT_GT(inked, 50);
      EXPECT_EQ(between > 0, sheet == &deep && depth >= 16);
      ::SelectObject(sheet->context, sheet->systemFont);
    }
  }
}

TEST(Text, BlendsBetweenTheGroundAndItsColourAndNeverBeyond) {
  MemoryDisplayReset(120, 30, 24);
  ScreenCanvas screen;
  MemoryFill({0, 0, 120, 30}, 0x204060);
  ::SetTextColor(screen.context, RGB(0xE0, 0x10, 0x60));
  Write(screen.context, 3, 3, "On the screen"); // placed by the top of its cell
  int shades = 0;
  for (const uint32_t pixel : TheMemoryDisplay().screen) {
    const int red = int(pixel >> 16), green = int(pixel >> 8 & 255), blue = int(pixel & 255);
    ASSERT_TRUE(red >= 0x20 && red <= 0xE0 && green >= 0x10 && green <= 0x40 && blue == 0x60) << pixel;
    // The same share of the way on both channels.
    EXPECT_NEAR((red - 0x20) / 192.0, (0x40 - green) / 48.0, 0.02);
    shades += red != 0x20 && red != 0xE0;
  }
  EXPECT_GT(shades, 20);
}

TEST(Fonts, FallToASansSerifOneAndObeyHeightWidthAndWeight) {
  MemoryDisplayReset(8, 8, 24);
  ScreenCanvas screen;
  Sheet sheet(screen.context, 10, 10);
  Font known(20), unknown(20, FW_NORMAL, false, "No such family anywhere"), bold(20, FW_BOLD), letters(-20);
  Font wide(20, FW_NORMAL, false, "MS Sans Serif", 14), narrow(20, FW_NORMAL, false, "MS Sans Serif", 5);
  sheet.Use(known);
  const TEXTMETRICA metrics = MetricsOf(sheet.context);
  const int width = WidthOf(sheet.context, "Framereel");
  sheet.Use(unknown);
  EXPECT_EQ(WidthOf(sheet.context, "Framereel"), width);
  sheet.Use(bold);
  EXPECT_GT(WidthOf(sheet.context, "Framereel"), width);
  sheet.Use(letters);
  EXPECT_EQ(MetricsOf(sheet.context).tmHeight - MetricsOf(sheet.context).tmInternalLeading, 20);
  EXPECT_GT(WidthOf(sheet.context, "Framereel"), width);
  sheet.Use(wide);
  EXPECT_NEAR(MetricsOf(sheet.context).tmAveCharWidth, 14, 1);
  EXPECT_EQ(MetricsOf(sheet.context).tmHeight, metrics.tmHeight);
  sheet.Use(narrow);
  EXPECT_NEAR(MetricsOf(sheet.context).tmAveCharWidth, 5, 1);
  ::SelectObject(sheet.context, sheet.systemFont);
}

TEST(Fonts, TakeAnyHeight) {
  MemoryDisplayReset(8, 8, 24);
  ScreenCanvas screen;
  Sheet sheet(screen.context, 40, 40);
  for (const int height : {INT32_MIN, -65535, -1, 0, 1, 2, 3, 65535, INT32_MAX}) {
    Font font(height);
    ASSERT_NE(font.handle, nullptr);
    sheet.Use(font);
    Write(sheet.context, 5, 30, "x");
    EXPECT_GT(MetricsOf(sheet.context).tmHeight, 0) << height;
    ::SelectObject(sheet.context, sheet.systemFont);
  }
}

TEST(Fonts, DrawBoxesWhereNoneIsInstalled) {
  const std::filesystem::path folder =
      std::filesystem::path(::testing::TempDir()) / ("framereel-no-fonts-" + std::to_string(::getpid()));
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "fonts.conf") << "<?xml version=\"1.0\"?><fontconfig><cachedir>" << folder.string()
                                       << "</cachedir></fontconfig>";
  ::setenv("FONTCONFIG_FILE", (folder / "fonts.conf").c_str(), 1);
  ForgetInstalledFonts();
  {
    MemoryDisplayReset(8, 8, 24);
    ScreenCanvas screen;
    Sheet sheet(screen.context, 100, 30);
    Font font(15, FW_BOLD);
    sheet.Use(font);
    const TEXTMETRICA metrics = MetricsOf(sheet.context);
    EXPECT_EQ(metrics.tmHeight, 15);
    Write(sheet.context, 10, 20, "Two words");
    const PixelRect ink = sheet.Ink();
    EXPECT_GE(ink.top, 20 - metrics.tmAscent);
    EXPECT_EQ(ink.bottom, 20);
    EXPECT_EQ(ink.left, 10);
    EXPECT_EQ(ink.right, 10 + WidthOf(sheet.context, "Two words") - 1);
    EXPECT_EQ(::GetPixel(sheet.context, 12, 18), RGB(0, 0, 0)); // hollow
    ::SelectObject(sheet.context, sheet.systemFont);
  }
  ::unsetenv("FONTCONFIG_FILE");
  ForgetInstalledFonts();
  std::filesystem::remove_all(folder);
}

} // namespace
} // namespace framereel
