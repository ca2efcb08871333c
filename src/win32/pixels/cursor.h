// The record behind cursors and icons. Internal to the layer.
#pragma once

#include <span>

#include "win32/pixels/display_windows.h"

struct Win32Cursor {
  const framereel::PointerPicture* picture;              // null for the display's own shapes
  framereel::PointerShape shape;                         // kOwn: the picture
  std::span<const framereel::PointerPicture> sizes = {}; // an icon's pictures, of which `picture` is one
};
