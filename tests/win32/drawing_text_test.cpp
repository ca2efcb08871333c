// Fonts: what they are asked for, how they blend with their ground, and that there is always something to draw.
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>

#include "support/temporary_folder.h"
#include "win32/canvas.h"
#include "win32/drawing/font_files.h"
#include "win32/drawing/relief.h"

namespace framereel {
namespace {

// A black bitmap that text is written on in white.
struct Sheet : BitmapCanvas {
  HGDIOBJ systemFont = nullptr;

  Sheet(const ScreenCanvas& screen, int width, int height) : BitmapCanvas(screen.context, width, height) {
    Clear();
    ::SetTextColor(context, RGB(255, 255, 255));
    ::SetTextAlign(context, TA_BASELINE);
  }
  ~Sheet() { ::DeleteObject(::SelectObject(context, systemFont)); }

  // In place of the font before.
  void Use(int height, int weight = FW_NORMAL, const char* family = "MS Sans Serif", int width = 0) {
    LOGFONTA what = {};
    what.lfHeight = height, what.lfWidth = width, what.lfWeight = weight;
    std::snprintf(what.lfFaceName, LF_FACESIZE, "%s", family);
    const HGDIOBJ last = ::SelectObject(context, ::CreateFontIndirectA(&what));
    if (!systemFont) systemFont = last;
    EXPECT_EQ(::DeleteObject(last), last != systemFont);
  }
  void Clear() { FillPixels(context, {0, 0, 10000, 10000}, RGB(0, 0, 0)); }
  void Write(int x, int y, const std::string& text) {
    ASSERT_TRUE(::TextOutA(context, x, y, text.data(), int(text.size())));
  }
  int WidthOf(const std::string& text) const {
    SIZE size = {};
    EXPECT_TRUE(::GetTextExtentPointA(context, text.data(), int(text.size()), &size));
    return size.cx;
  }
  TEXTMETRICA Metrics() const {
    TEXTMETRICA metrics = {};
    EXPECT_TRUE(::GetTextMetricsA(context, &metrics));
    return metrics;
  }
};

TEST(Fonts, FallToASansSerifOneAndObeyHeightWidthAndWeight) {
  ScreenCanvas screen(8, 8, 24);
  Sheet sheet(screen, 40, 40);
  const auto widthIn = [&sheet](auto... wish) {
    sheet.Use(wish...);
    return sheet.WidthOf("Framereel");
  };
  const int width = widthIn(20), height = sheet.Metrics().tmHeight;
  EXPECT_EQ(widthIn(20, FW_NORMAL, "No such family anywhere"), width);
  EXPECT_GT(widthIn(20, FW_BOLD), width);
  EXPECT_GT(widthIn(-20), width); // the height of the letters alone
  EXPECT_EQ(sheet.Metrics().tmHeight - sheet.Metrics().tmInternalLeading, 20);
  for (const int average : {5, 14}) {
    sheet.Use(20, FW_NORMAL, "MS Sans Serif", average);
    EXPECT_NEAR(sheet.Metrics().tmAveCharWidth, average, 1);
    EXPECT_EQ(sheet.Metrics().tmHeight, height);
  }
}

TEST(Fonts, BlendWithTheirGroundOnTrueColour) {
  for (const int depth : {1, 8, 16, 24}) {
    ScreenCanvas screen(8, 8, depth);
    Sheet sheet(screen, 160, 80);
    sheet.Use(21);
    sheet.Write(40, 40, "\u00C5gj");
    std::set<uint32_t> shades;
    for (const uint32_t pixel : PictureOf(sheet.context).pixels) shades.insert(pixel);
    EXPECT_EQ(shades.size() > 2, depth >= 16);
    for (const uint32_t shade : shades) ASSERT_TRUE(depth < 24 || shade == (shade & 255) * 0x10101);
  }
}

// While it lives no font is installed.
struct NoFonts {
  const TemporaryFolder folder;

  NoFonts() {
    WriteWholeFile(folder / "fonts.conf",
                   "<?xml version=\"1.0\"?><fontconfig><cachedir>" + folder.path + "</cachedir></fontconfig>");
    ::setenv("FONTCONFIG_FILE", (folder / "fonts.conf").c_str(), 1);
    ForgetInstalledFonts();
  }
  ~NoFonts() {
    ::unsetenv("FONTCONFIG_FILE");
    ForgetInstalledFonts();
  }
};

TEST(Fonts, TakeLettersThatTheyDoNotHaveFromOthersOnceAndElseDrawBoxes) {
  ScreenCanvas screen(8, 8, 24);
  Sheet sheet(screen, 100, 30);
  // Of the fonts that are always there, only the sans-serif one has faces.
  sheet.Use(16, FW_NORMAL, "DejaVu Sans Mono");
  const auto drawn = [&sheet](const std::string& text) {
    sheet.Clear();
    sheet.Write(10, 20, text);
    return PictureOf(sheet.context).pixels;
  };
  const std::string face = "\U0001F600", nowhere = "\U0010FFF0";
  const auto shown = drawn(face), box = drawn(nowhere);
  EXPECT_NE(shown, box);
  EXPECT_NE(box, drawn(" "));
  EXPECT_EQ(drawn("\x80"), drawn("\uFFFD"));
  EXPECT_EQ(sheet.WidthOf("\xF0\x9F"), 2 * sheet.WidthOf("\uFFFD"));
  EXPECT_EQ(sheet.WidthOf("a" + face), sheet.WidthOf("a") + sheet.WidthOf(face));
  const NoFonts nobodyToAsk;
  EXPECT_EQ(drawn(face), shown);
  EXPECT_EQ(drawn(nowhere), box);
  // Where there is none at all, every letter is a hollow box, as high as capitals.
  sheet.Use(15, FW_BOLD);
  sheet.Clear();
  sheet.Write(10, 20, "Two");
  EXPECT_EQ(sheet.Metrics().tmHeight, 15);
  const int last = 10 + sheet.WidthOf("Two") - 2;
  std::string row;
  for (const int x : {9, 10, 11, last - 1, last, last + 1}) row += ::GetPixel(sheet.context, x, 18) ? '#' : '.';
  EXPECT_EQ(row, ".#..#.");
}

} // namespace
} // namespace framereel
