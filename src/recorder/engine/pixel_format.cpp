// From the screen's depth to a PixelFormat.
#include "recorder/engine/pixel_format.h"

#include "core/app_strings.h"
#include "core/text_format.h"
#include "platform/bitmaps/screen_colours.h"

namespace framereel {
namespace {

inline constexpr uint16_t kStringMillionsOf = 85;

struct DepthFormat {
  uint16_t depth; // bits per pixel
  PixelFormat format;
};

constexpr DepthFormat kDepthFormats[] = {
    {1, kFormat1Bit},        {2, kFormat2Bit},        {4, kFormat4Bit},        {8, kFormat8Bit},
    {16, kFormatTrueColour}, {24, kFormatTrueColour}, {32, kFormatTrueColour},
};

} // namespace

bool DetectPixelFormat(PixelFormat* format) {
  for (const DepthFormat& row : kDepthFormats) {
    if (row.depth != ScreenDepth()) continue;
    *format = row.format;
    return true;
  }
  return false;
}

const char* FormatColourCount(PixelFormat format) {
  uint16_t depth = ScreenDepth();
  for (const DepthFormat& row : kDepthFormats) {
    if (row.format == format) depth = row.depth;
  }
  if (depth >= 16) return AppString(kStringMillionsOf);
  return FormatTemp("%d%", 1 << depth);
}

} // namespace framereel
