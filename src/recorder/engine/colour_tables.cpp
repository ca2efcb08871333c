// Which colours an animation has.
#include "recorder/engine/colour_tables.h"

#include <cstring>

#include "core/memory.h"
#include "platform/drawing/shared_contexts.h"
#include "resources/standard_colours.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

// What a PixelFormat means for the colour table.
struct FormatColours {
  PixelFormat format;
  int colours; // in the palette
  int bits;    // of a table that holds them and a transparent index; format 8 Bit has to borrow one
  uint8_t captureTransparent;
  bool blackIsDarkest; // else index 0 is black
};

constexpr FormatColours kFormatColours[] = {
    {kFormat8Bit, 256, 8, 77, false}, {kFormatTrueColour, kCubeColours, 8, kCubeTransparent, false},
    {kFormat2Bit, 4, 3, 4, true},     {kFormat1Bit, 2, 2, 2, true},
    {kFormat4Bit, 16, 5, 16, false},
};

const FormatColours& ColoursOf(PixelFormat format) {
  for (const FormatColours& row : kFormatColours) {
    if (row.format == format) return row;
  }
  return kFormatColours[1];
}

void CopySystemPalette(uint8_t* table, int count) {
  PALETTEENTRY entries[256] = {};
  ::GetSystemPaletteEntries(ScreenContext(), 0, UINT(count), entries);
  for (int i = 0; i < count; ++i) {
    table[3 * i] = entries[i].peRed;
    table[3 * i + 1] = entries[i].peGreen;
    table[3 * i + 2] = entries[i].peBlue;
  }
}

// The lowest index of those with the smallest sum of channels.
uint8_t DarkestEntry(const uint8_t* table, int count) {
  int least = 768, darkest = 0;
  for (int i = 0; i < count; ++i) {
    const int sum = table[3 * i] + table[3 * i + 1] + table[3 * i + 2];
    if (sum < least) {
      least = sum;
      darkest = i;
    }
  }
  return uint8_t(darkest);
}

// An index that is borrowed to mark unchanged pixels is a colour too. A reduction turns blocks of it into the cube's
// transparent index, and in a frame without transparency that index is seen: it shows the colour.
void ShowBorrowedIndex(const RecorderState& recorder, uint8_t* table) {
  const FormatColours& format = ColoursOf(recorder.screenFormat);
  if (format.captureTransparent >= format.colours) return;
  ::memcpy(table + 3 * kCubeTransparent, recorder.colours.screenPalette + 3 * format.captureTransparent, 3);
}

// The cube levels of the screen's colours, in lanes.
void FillPaletteLanes(AnimationColours& colours, int screenBits) {
  if (!colours.paletteLanes) colours.paletteLanes = static_cast<uint32_t*>(MemAlloc(256 * sizeof(uint32_t)));
  const uint8_t* colour = colours.screenPalette;
  for (int i = 0; i < 1 << screenBits; ++i, colour += 3) {
    colours.paletteLanes[i] =
        uint32_t{CubeLevel8[colour[0]]} << 16 | uint32_t{CubeLevel8[colour[1]]} << 8 | CubeLevel8[colour[2]];
  }
}

} // namespace

void BuildCubeTable(uint8_t table[kColourTableBytes]) {
  for (int i = 0; i < kCubeColours; ++i) {
    const int levels[3] = {i / 36, i / 6 % 6, i % 6};
    for (int channel = 0; channel < 3; ++channel) table[3 * i + channel] = uint8_t(levels[channel] * 255 / 5);
  }
}

int ReadScreenPalette(RecorderState& recorder, uint8_t table[kColourTableBytes]) {
  const FormatColours& format = ColoursOf(recorder.screenFormat);
  if (format.format == kFormatTrueColour) {
    BuildCubeTable(table);
  } else if (format.format == kFormat4Bit) {
    static_assert(sizeof kStandardColours == 3 * kStandardColourCount, "packed like the table");
    ::memcpy(table, kStandardColours, sizeof kStandardColours); // not asked of the platform
  } else {
    CopySystemPalette(table, format.colours);
  }
  recorder.colours.darkestEntry = DarkestEntry(table, format.colours);
  return format.bits;
}

int BuildColourTable(RecorderState& recorder, uint8_t table[kColourTableBytes]) {
  if (!IsReduced(recorder.recordingSize)) return ReadScreenPalette(recorder, table);
  AnimationColours& colours = recorder.colours;
  if (!colours.screenPalette) {
    colours.screenPalette = static_cast<uint8_t*>(MemAlloc(kColourTableBytes));
    ::memset(colours.screenPalette, 0, kColourTableBytes);
  }
  const int screenBits = ReadScreenPalette(recorder, colours.screenPalette);
  BuildCubeTable(table);
  ShowBorrowedIndex(recorder, table);
  if (recorder.recordingSize == kSize44) FillPaletteLanes(colours, screenBits);
  return 8;
}

void ChooseSpecialIndices(RecorderState& recorder) {
  AnimationColours& colours = recorder.colours;
  const FormatColours& format = ColoursOf(recorder.screenFormat);
  colours.captureTransparent = format.captureTransparent;
  colours.outputTransparent = format.captureTransparent;
  colours.blackIndex = format.blackIsDarkest ? colours.darkestEntry : 0;
  if (IsReduced(recorder.recordingSize)) {
    colours.outputTransparent = kCubeTransparent;
    colours.blackIndex = 0;
  }
}

} // namespace framereel
