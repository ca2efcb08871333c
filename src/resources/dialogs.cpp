// The dialogs: the one that asks for the name to save under, and the one for a new directory.
#include "resources/dialogs.h"

namespace framereel {
namespace {

// Of the platform calls (win32_windows.h, win32_controls.h, win32_dialogs.h).
constexpr uint32_t kDialog = 0x80C80000;          // popup, caption, system menu
constexpr uint32_t kCentred = 0x800;              // on the monitor
constexpr uint32_t kTabStop = 0x10000;            // the keyboard reaches it
constexpr uint32_t kEdit = kTabStop | 0x800000;   // with a border
constexpr uint32_t kPushButton = kTabStop;        //
constexpr uint32_t kDefaultButton = kTabStop | 1; //
constexpr uint32_t kList = kTabStop | 0xA00083; // border, scroll bar, tab stops in the text, sorted, tells its notices
constexpr uint32_t kLabel = 0xC;                // one line
constexpr uint32_t kPlainText = kLabel | 0x80;  // "&" is a letter like any other
constexpr uint32_t kPathText = kPlainText | 0x8000; // shortened in the middle where it has no room

// A static stands ahead of the control that its letter picks.
constexpr DialogItem kSaveItems[] = {
    {-1, "static", "File&name:", 5, 7, 33, 8, kLabel},
    {101, "edit", "", 39, 6, 155, 12, kEdit},
    {-1, "static", "Directory:", 5, 25, 32, 8, kLabel},
    {120, "static", "", 39, 25, 154, 12, kPathText},
    {-1, "static", "File&type:", 9, 43, 28, 8, kLabel},
    {107, "static", "", 42, 43, 104, 8, kPlainText},
    {-1, "static", "Dri&ves", 9, 64, 22, 8, kLabel},
    {103, "listbox", "", 4, 74, 64, 101, kList},
    {-1, "static", "&Directories", 79, 64, 38, 8, kLabel},
    {104, "listbox", "", 72, 74, 91, 84, kList},
    {-1, "static", "&Files", 173, 64, 21, 8, kLabel},
    {105, "listbox", "", 167, 74, 103, 102, kList},
    {106, "button", "Create Directory", 83, 160, 69, 16, kPushButton},
    {1, "button", "Save", 210, 9, 50, 17, kDefaultButton},
    {2, "button", "Cancel", 210, 42, 50, 17, kPushButton},
};

constexpr DialogItem kDirectoryItems[] = {
    {-1, "static", "Directory Name:", 6, 15, 55, 8, kLabel},
    {101, "edit", "", 61, 12, 77, 15, kEdit},
    {1, "button", "Create", 148, 6, 50, 16, kDefaultButton},
    {2, "button", "Cancel", 148, 28, 50, 17, kPushButton},
};

constexpr DialogResource kDialogs[] = {
    {2, "Save File", 12, 23, 273, 179, kDialog | kCentred, "MS Sans Serif", 8, kSaveItems},
    {3, "Create Directory", 19, 29, 207, 51, kDialog, "MS Sans Serif", 8, kDirectoryItems},
};

} // namespace

const DialogResource* FindDialogResource(uint16_t id) {
  for (const DialogResource& dialog : kDialogs) {
    if (dialog.id == id) return &dialog;
  }
  return nullptr;
}

} // namespace framereel
