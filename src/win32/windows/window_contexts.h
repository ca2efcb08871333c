// The contexts that windows are drawn through. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

// The context of a window's client area or frame; EndContext gives it back.
WindowContext* BeginContext(HWND window, bool ofFrame);
void EndContext(WindowContext* context);
// The same for the handle; false when nobody has it, or its window has gone.
bool GiveBackContext(HDC context);
// Limits the context to a region of the client area until it is given back: BeginPaint's part.
void LimitContext(WindowContext* context, const Region& paint);
void RefreshContexts(); // after anything that changes what can be seen
void GatherDamage();    // from contexts that are in use
void ForgetContexts(HWND window);
void FreeContexts(); // all that nobody has

} // namespace framereel
