// The class "static": text that stands there. Internal to the layer.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

LRESULT StaticProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// How much room a text of several lines takes in the font of the context, when lines wider than `width` are broken. Its
// lines end with CR LF.
SIZE WrappedTextSize(HDC context, const char* text, int32_t width);

} // namespace framereel
