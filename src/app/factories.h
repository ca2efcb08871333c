// Controls made with one call each, so that a panel reads as a list. Each comes out fitted to its content.
//
// Texts are copied. `data` goes into the View's userData, where its callback finds it.
#pragma once

#include <cstdint>

#include "platform/records/view_record.h"
#include "toolkit/controls/check_box.h"
#include "toolkit/controls/popup.h"
#include "toolkit/controls/push_button.h"
#include "toolkit/views/stack.h"

namespace framereel {

View* MakeRow(View* parent, StackAlign align);
View* MakeLabel(View* parent, const char* text);
void SetLabelText(View* label, const char* text); // fitted anew
View* MakeTextPane(View* parent, const char* text);
View* MakeButton(View* parent, const char* text, bool isDefault, PushButtonCallback callback, void* data);
// The callback is not told of the first value.
View* MakeCheckBox(View* parent, const char* text, bool value, CheckBoxCallback callback, void* data);
// What a Popup offers: numbers of AppString, kNoEntry for a divider.
inline constexpr uint16_t kNoEntry = 65535;
View* MakePopup(View* parent, uint16_t count, const uint16_t* strings, uint16_t selected, PopupCallback callback,
                void* data);
// A Row of a label, unless its text is null, and a Popup; answers the Row.
View* MakeLabelledPopup(View* parent, const char* label, uint16_t count, const uint16_t* strings, uint16_t selected,
                        PopupCallback callback, void* data);
View* MakeGap(View* parent, int16_t size); // of so many pixels both ways

// A title with a line on either side of it. Answers the second line, which StretchHeading makes reach the inner width
// of the column that the heading stands in, once that has been laid out.
View* MakeHeading(View* parent, const char* text);
void StretchHeading(View* rule);

} // namespace framereel
