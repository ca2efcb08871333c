// The table of numbered strings, in ascending order. The texts are exact: other code formats and compares them.
#include "resources/string_table.h"

#include <algorithm>
#include <iterator>

namespace framereel {

namespace {

struct StringResource {
  uint16_t id;
  const char* text;
};

constexpr bool operator<(const StringResource& a, uint16_t id) {
  return a.id < id;
}

constexpr StringResource kStrings[] = {
    // What the save dialog says: a title and a message each (platform/dialogs/).
    {1, "Mising Extension"},
    {2, "The file name entered lacks an extension. The appropriate extension (%s%) has been appended."},
    {3, "Mismatched Extension"},
    {4, "The file name entered has an extension (%s%) which is inappropriate for the selected file type. The extension "
        "has been changed (to %s%) so it agrees with the file type."},
    {5, "File Exists"},
    {6, "A file with the name '%s%' already exists. Overwrite this file?"},
    {7, "Bad Filename"},
    {8, "The file name entered ('%s%') cannot be used because it doesn't follow Windows naming conventions."},
    {13, "Directory Creation Error"},
    {14, "The directory '%s%' could not be created."},

    // The frame window: title, kind of frame; first and last window class, and a digit for each class.
    {100, "Framereel"},
    {101, "1"},
    {102, "200 201"},
    {103, "01"},

    // The groups of the program's texts (app_strings.h): each names its first and last string.
    {128, "1000 1099"},
    {129, "1100 1171"},
    {160, "1300 1305"},

    // File types (core/file_refs.h) in fixed columns: extension from 0, pattern from 4, description from 9.
    {200, "txt .txt Text Files (.TXT)"},
    {201, "prf .prf Preferences (.PRF)"},
    {202, "gif .gif GIF Files (.GIF)"},
    {203, "jpg .jpg JPEG Files (.JPG)"},
    {204, "tmp .tmp Temporary Files (.TMP)"},
    {205, "pct .pct PICT Files (.PCT)"},
    {208, "res .res Resource Files (.RES)"},
    {209, "exe .exe Executables (.EXE)"},
    {211, "ps  .ps  Postscript Files (.PS)"},
    {212, "dta .dta Data Files (.DTA)"},
    {213, "wmf .wmf Windows Meta-Files (.WMF)"},
    {216, "    .*   All Files (.*)"},
    {217, "bmp .bmp Windows Bitmap Files (.BMP)"},
    {218, "bat .bat Batch Files (.BAT)"},
    {219, "rc  .rc  Resource Source Files (.RC)"},

    // The program's texts: text number n is string 1000 + n. Menu texts begin with their letters.
    {1001, "Untitled"},
    {1002, "1 byte"},
    {1003, "%d% bytes"},
    {1004, "%d%.%d%K"},
    {1005, "%d%K"},
    {1006, "%d%.%d%M"},
    {1007, "%d%M"},
    {1008, "%d%.%d%G"},
    {1009, "%d%G"},
    {1010, " Apple"},
    {1011, " AAbout Framereel..."},
    {1012, "FFile"},
    {1013, "NNNew"},
    {1016, "SSSave"},
    {1017, " ASave as..."},
    {1018, "QQQuit"},
    {1019, "Size: %d%x%d%"},
    {1020, "Top Left: %d%,%d%"},
    {1021, "Framereel does not support recording at the current bit depth (%s% colours). Please change the "
           "monitor settings."},
    {1022, "%d% Frame (%s%)"},
    {1023, "%d% Frames (%s%)"},
    {1024, "Created by %s%, using Framereel v1.23."},
    {1033, "40 fps"},
    {1034, "2 fps"},
    {1035, "3 fps"},
    {1036, "4 fps"},
    {1037, "5 fps"},
    {1038, "10 fps"},
    {1039, "20 fps"},
    {1040, "Start"},
    {1041, "Grab"},
    {1042, "Stop"},
    {1043, "Capture Area"},
    {1044, "Show Area"},
    {1045, "Select Area"},
    {1046, "Refresh Screen"},
    {1047, "Capture Options"},
    {1048, "Max Frame Rate:"},
    {1049, "Interframe Transparency"},
    {1050, "Record Timing Info"},
    {1051, "Loop"},
    {1052, "Fake Screen"},
    {1053, "Overlay Border"},
    {1054, "Size: %d%x%d% (%d%x%d%)"},
    {1055, "The animation could not be saved: %s%."},
    {1056, "OK"},
    {1057, "Every file that is saved says:"},
    {1058,
     "An animation of %s% (%s%) was kept when Framereel had to end, and has not been saved. Do you wish to save it "
     "now? If not, it will be deleted."},
    {1060, "Warning!"},
    {1061, "The animation has been changed without saving. %s% Do you wish to proceed?"},
    {1062, "Opening a new animation will destroy the current animation."},
    {1063, "Quitting now will destroy the current animation."},
    {1064, "Yes"},
    {1065, "No"},
    {1066, "Overlay Cursor"},
    {1074, "Framereel - %s%"},
    {1076, "Framereel"},
    {1077, "1 fps"},
    {1078, "2 spf"},
    {1079, "3 spf"},
    {1080, "4 spf"},
    {1081, "5 spf"},
    {1082, "Explorer 2.0 Compatible"},
    {1083, "Framereel animations cannot contain frames recorded at differing bit depths. To add more frames "
           "to the current animation, please restore the monitor settings (to %s% colours)."},
    {1085, "millions of"},
    {1086, "Recording size:"},
    {1087, "25%"},
    {1088, "44%"},
    {1089, "100%"},
    {1090, "Select Window"},
    {1091, "EEdit"},
    {1092, "XTCut"},
    {1093, "CCCopy"},
    {1094, "VPPaste"},
    {1095, "Part of the recording area is not on the screen any more and is recorded as black. Please restore the "
           "monitor settings."},
    {1096, "The animation has grown to 4 gigabytes, and no more fits into it. Please save it and begin a new one."},
    {1097,
     "This is a Wayland session. It does not show its windows to X11 programs, of which Framereel is one: recordings "
     "stay black, whatever is on the screen. To record the screen, log in to an X11 (Xorg) session."},
    {1104, "Frame Delay"},
    {1105, "Recording Size"},
    {1106, "Recording Area"},
    {1170, "Yes"},
    {1171, "No"},

    // What is shown when memory is exhausted: a message with two buttons, then a second one with its button; and the
    // message for when nothing could be kept.
    {1300,
     "Framereel has run out of memory and has to quit. What has not been saved is kept, and the next start offers "
     "to save it."},
    {1301, "Quit"},
    {1302, "Why?"},
    {1303, "The animation is kept in memory while it is being recorded. A smaller area, a lower frame rate "
           "or a smaller recording size needs less of it."},
    {1304, "Quit"},
    {1305, "Framereel has run out of memory and has to quit. The animation that has not been saved will be "
           "lost."},
};

constexpr bool IsAscending() {
  for (size_t i = 1; i < std::size(kStrings); ++i) {
    if (kStrings[i].id <= kStrings[i - 1].id) return false;
  }
  return true;
}
static_assert(IsAscending(), "the search below halves the table");

} // namespace

const char* FindStringResource(uint16_t id) {
  const StringResource* found = std::lower_bound(std::begin(kStrings), std::end(kStrings), id);
  return found != std::end(kStrings) && found->id == id ? found->text : nullptr;
}

} // namespace framereel
