// Native controls of Views: making one inside of the View's window, and keeping the two in step.
//
// The class of such a View answers the control and, for buttons, its earlier procedure (nativeHandle, nativeProcedure
// of its ViewClass). The control's id is its number in the ControlTable of the window, and it draws in the font of the
// View's DrawState.
#pragma once

#include <cstdint>

#include "platform/records/view_record.h"
#include "win32/win32_types.h"

namespace framereel {

// A control at the View's place and size; null when the platform has none to give. The id is of ControlTableTake.
HWND CreateNativeControl(View* view, const char* className, DWORD style, uint16_t id);
// With its id. What is on its way from it goes nowhere any more.
void DestroyNativeControl(View* view);

// The View's DrawState from now on. `first`: the View has had none that its control held.
void SetNativeFont(View* view, HWND control, DrawState* state, bool first);
void SetNativeSize(View* view, HWND control, int16_t controlWidth, int16_t controlHeight, int16_t width,
                   int16_t height);
void SetNativePosition(View* view, HWND control, int16_t controlX, int16_t controlY, int16_t x, int16_t y);
void ShowNativeControl(HWND control, bool shown);

// Lines end with LF above this seam and with CR LF below it.
void SetNativeText(HWND control, const char* text);
char* NativeText(HWND control); // a new string, to be released with StrFree

// The View of a control that is live: it isn't on its way out, and neither is its View. Null for any other.
View* ViewOfNativeControl(HWND control);

} // namespace framereel
