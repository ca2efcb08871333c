// EditField: text that the user edits, in a control of the platform inside a sunken edge. The session in which it has
// the keyboard, its keys and the Edit menu are platform/controls/edit_session.h's.
#pragma once

#include "platform/controls/edit_session.h"

namespace framereel {

const ViewClass* EditFieldClass();
void EditFieldSetUpClass(); // once, at start-up

void EditFieldSetText(View* view, const char* text); // copied; the size stays
// The text as it stands now, of lines that end with LF: the field's own, until it is asked again or set.
const char* EditFieldText(View* view);
// What the owner hears of, each may be null: a session has begun; it has ended, by the key or null; the text wants
// another size, which the owner may give.
void EditFieldSetFunctions(View* view, void (*started)(View* view), void (*finished)(View* view, const KeyEvent* event),
                           void (*requestSize)(View* view, int16_t width, int16_t height));

} // namespace framereel
