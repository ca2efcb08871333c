// Alerts: a small modal window with a picture, a message and one or two buttons. It blocks until a button is pressed.
//
// Timers go on meanwhile, and a recording with them. The first button, on the right, is the default one: Return presses
// it, and Escape the second. Alerts may open over alerts. Texts are copied; a null parent means the main window.
#pragma once

#include <cstdint>

namespace framereel {

struct ChildWindow;
struct MainWindow;

// The pictures, by their number in the resources.
enum AlertPicture : uint16_t { kAlertStop = 128, kAlertNote = 129, kAlertCaution = 130, kAlertQuestion = 131 };

// Whether the first button was pressed. A null title is empty; without a second text there is one button.
bool AlertAsk(MainWindow* parent, const char* title, uint16_t picture, const char* message, const char* first,
              const char* second);

// The alert's window, not yet shown. `answered` is called with the argument once a button has closed it; null for
// nothing.
ChildWindow* AlertBuild(MainWindow* parent, const char* title, uint16_t picture, const char* message, const char* first,
                        const char* second, void (*answered)(void* argument, bool first), void* argument);

} // namespace framereel
