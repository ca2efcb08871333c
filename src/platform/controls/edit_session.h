// The edit session: the time in which an edit field has the keyboard, and Cut, Copy and Paste work.
//
// It begins when the field's control gets the focus (edit_field.h), and ends with whatever comes first: a Tab, a Return
// or an Escape in the field, a press elsewhere, a menu command, another window, the loss of the focus. There is one at
// a time.
#pragma once

#include <cstdint>

#include "platform/records/view_record.h"
#include "win32/win32_types.h"

namespace framereel {

// The head of the class data of a View that is an edit field.
struct EditField {
  HWND control;
  WNDPROC procedure; // the control's own
  char* text;        // owned: as it was last set or fetched
  bool multiLine;
  bool bevel;        // an edge is drawn round it
  bool painted;      // the control has been painted once
  bool focusPending; // it gets the focus when it is
  // Each may be null.
  void (*started)(View* view);                                            // a session has begun
  void (*finished)(View* view, const KeyEvent* event);                    // it has ended: the key that did it, or null
  void (*requestSize)(View* view, int16_t width, int16_t height);         // the text wants another width
  void (*naturalSize)(const View* view, int16_t* width, int16_t* height); // the size that the text wants
};

void BeginEditSession(View* view);
// Ends the session that runs, if one does; the keyboard goes back to the field's window or the main window.
void EndEditSession(const KeyEvent* event);
// The same when it is this View's, which is on its way out and hears nothing of it.
void DropEditSession(View* view);
bool HasEditSession(const View* view);

// Makes it take the keyboard, now or as soon as it has been painted, with all text selected.
void FocusEditField(View* view);

// Brings the text that is kept up to date.
void FetchEditText(View* view);
// After the text or the selection may have changed: asks for another size where the text is wider than the View or has
// fallen more than 20 pixels short of it; keeps the Edit items in step with the selection.
void CheckEditSize(View* view);
void CheckEditSelection(View* view);

// What keeps the Edit menu's items up to date; null for nothing. Calls it.
using RefreshFunction = void (*)(void* argument);
void SetRefreshFunction(RefreshFunction function, void* argument);

void EditSessionStartUp();

} // namespace framereel
