// Popup: a box with the chosen one of several entries, which opens a list of them (popup_list.h) to choose another.
#pragma once

#include <cstdint>

#include "platform/records/view_record.h"

namespace framereel {

using PopupCallback = void (*)(View* view, uint16_t index);

const ViewClass* PopupClass();
void PopupSetUpClass(); // once, at start-up

// Copies of the texts, a null one a divider that cannot be chosen; the first is selected. The size stays.
void PopupSetItems(View* view, uint16_t count, const char* const* texts);
void PopupSetSelected(View* view, uint16_t index); // one that is not below the count changes nothing
uint16_t PopupSelected(const View* view);
// Told when the user has chosen another entry; null for nothing.
void PopupSetCallback(View* view, PopupCallback callback);

} // namespace framereel
