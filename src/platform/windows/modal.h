// The modal window: it alone gets the mouse and the keys until it closes. A blocking one disables the main window and
// the menus.
//
// A popup is modal too, but a passing one: it does not block. The windows behind it stay enabled, and it is told to go
// away when something else begins.
#pragma once

namespace framereel {

struct ChildWindow;
struct View;

// The one View that presses and keys go to; its window is then the modal one. Null: the modal window stays.
void SetModalView(View* view);

ChildWindow* GetModalWindow();
View* GetModalView();
bool ModalIsBlocking();
// Tells the modal window, if it is a popup, to go away.
void DismissPopup();

// ---- From child_window.h -----------------------------------------------------------------------------------------

// A window with kWindowModal is shown: it becomes the modal one, and the one before comes back behind it.
void BecomeModal(ChildWindow* window);
// The window closes: the one before it is modal again, and no other goes back to this one any more.
void GiveModalBack(ChildWindow* window);

void ModalStartUp();

} // namespace framereel
