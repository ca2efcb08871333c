// The dialog for the name to save under, as a user works it in a folder of a test's own.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "core/file_refs.h"
#include "core/strings.h"
#include "core/timers.h"
#include "platform/dialogs/dialog_paths.h"
#include "platform/dialogs/file_dialogs.h"
#include "platform/pump/pump.h"
#include "support/script.h"
#include "support/temporary_folder.h"
#include "support/window_program.h"
#include "win32/memory/memory_display.h"
#include "win32/win32_controls.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_drawing.h"
#include "win32/win32_input.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"
#include "win32/windows/window.h"
#include "win32/windows/window_tree.h"

namespace framereel {

template <> std::string Told<std::string>(std::istream& in) {
  std::string word = Word(in);
  std::replace(word.begin(), word.end(), '^', '\n');
  return word;
}

namespace {

constexpr int kName = 101, kDrives = 103, kDirectories = 104, kFiles = 105, kPath = 120;
constexpr int kMessage = 0xFFFF; // the text of a message box
constexpr int kEntryHeight = 15;

std::string TextOf(HWND window, int id) {
  char text[5000] = "";
  ::GetDlgItemTextA(window, id, text, sizeof text);
  return text;
}

std::string EntryOf(HWND window, int list, int entry) {
  char text[5000] = "";
  const bool is =
      ::SendDlgItemMessageA(window, list, LB_GETTEXT, WPARAM(entry), reinterpret_cast<LPARAM>(text)) != LB_ERR;
  return is ? text : "|";
}

// Folders: "Pics" with c.gif, "shut" without rights, "dir.gif" and ".hid"; files a.gif, B.GIF, x.txt, .h.gif,
// "l\nf.gif", "s*.gif", "bad\xff.gif".
class FileDialog : public ::testing::Test {
protected:
  TemporaryFolder folder;
  WindowProgram program;
  FileType* type = NewFileType(kFileTypeGif);
  std::string looks;
  Script script;

  FileDialog() {
    for (const char* each : {"Pics", "dir.gif", ".hid"}) std::filesystem::create_directory(folder / each);
    for (const char* each : {"a.gif", "B.GIF", "x.txt", ".h.gif", "l\nf.gif", "s*.gif", "bad\xff.gif", "Pics/c.gif"}) {
      WriteWholeFile(folder / each, "old");
    }
    ::setenv("HOME", folder.path.c_str(), 1);
    AddWords();
  }
  ~FileDialog() { FreeFileType(type); }

  // Each word of the script is a step, 20 ms after the one before; "^" stands for a line feed:
  //
  //   type:text           in the place of what the field holds
  //   enter esc tab Y N   keys               save cancel create   a button of the active window
  //   command             what Save says, without the button
  //   click:105:a.gif  double:104:[Pics]     the mouse on an entry of a list
  //   ?101 ?105 ...       writes the text of a control down, or a list's entries; ?box the message; ?on what is active
  //
  // Answers what was written, and then the path, without the folder's.
  std::string Play(const std::string& steps, const FileRef* document = nullptr) {
    looks.clear();
    MemoryAt(script.Schedule(steps), [] { ::PostQuitMessage(0); });
    FileRef* answer = AskSaveFile(document, type);
    TheWindows().quits = false;
    TheMemoryDisplay().script.clear();
    char* path = answer ? FileRefPath(answer) : nullptr;
    if (path) looks += path;
    StrFree(path);
    FreeFileRef(answer);
    for (size_t found; (found = looks.find(folder.path)) != std::string::npos;) looks.erase(found, folder.path.size());
    return looks;
  }

  void AddWords() {
    for (const char* what : {"on", "box", "101", "104", "105", "107", "120"}) {
      script.words[Text('?', what)] = [=, this](std::istream&) { looks += Look(TheWindows().active, what) + "; "; };
    }
    script.Add("type", [](std::string name) { ::SetDlgItemTextA(TheWindows().active, kName, name.c_str()); });
    script.Add("command", [] { ::SendMessageA(TheWindows().active, WM_COMMAND, IDOK, 0); });
    for (const auto& [button, id] : {std::pair{"save", IDOK}, {"cancel", IDCANCEL}, {"create", 106}}) {
      script.words[button] = [id = id](std::istream&) {
        const PixelRect place = PlaceOnScreen(*::GetDlgItem(TheWindows().active, id));
        MemoryClick(place.left + 5, place.top + 5);
      };
    }
    script.Add("click", PressEntry<1>);
    script.Add("double", PressEntry<2>);
  }

  static std::string Look(HWND active, const std::string& what) {
    if (what == "on") return active ? active->title : "-";
    if (what == "box") return active->title + ": " + TextOf(active, kMessage);
    const int id = std::stoi(what);
    if (id < kDrives || id > kFiles) return TextOf(active, id);
    std::string all;
    for (int i = 0; EntryOf(active, id, i) != "|"; ++i) all += EntryOf(active, id, i) + ",";
    return all;
  }

  template <int times> static void PressEntry(int id, std::string text) {
    HWND dialog = TheWindows().active, list = ::GetDlgItem(dialog, id);
    int entry = 0;
    while (EntryOf(dialog, id, entry) != text && EntryOf(dialog, id, entry) != "|") ++entry;
    const PixelRect client = ClientOnScreen(*list);
    for (int i = 0; i < times; ++i) MemoryClick(client.left + 5, client.top + entry * kEntryHeight + 2);
  }
};

#define MISSING                                                                                                        \
  "Mising Extension: The file name entered lacks an extension. The appropriate extension (.gif) has been appended."
#define EXISTS(name) "File Exists: A file with the name '" name "' already exists. Overwrite this file?; "

TEST_F(FileDialog, ChecksWhatIsEnteredAndStaysUntilItIsAName) {
  const std::pair<const char*, const char*> rows[] = {
      {"?101 ?107 ?105 ?104 ?120 esc",
       "*.gif; GIF Files (.GIF); a.gif,B.GIF,bad\xff.gif,l\nf.gif,s*.gif,; [..],[dir.gif],[Pics],; ; "},
      {"type: enter command ?101 ?105 esc",
       "*.*; a.gif,B.GIF,bad\xff.gif,l\nf.gif,s*.gif,x.txt,; "}, // Save itself is disabled
      {"type:?.t* enter ?101 ?105 esc", "?.t*; x.txt,; "},
      {"type:Pics/ enter ?101 ?105 ?120 type:.. enter ?120 esc", "*.gif; c.gif,; /Pics; ; "},
      {"type:Pics/*.txt enter ?101 ?105 ?120 esc", "*.txt; ; /Pics; "},
      {"type:none/ enter ?101 ?120 esc", "none/; ; "},
      {"type:name enter ?box enter ?101 ?on enter", MISSING "; name.gif; Save File; /name.gif"},
      {"type:name.txt enter ?box enter ?101 enter",
       "Mismatched Extension: The file name entered has an extension (.txt) which is inappropriate for the selected "
       "file "
       "type. The extension has been changed (to .gif) so it agrees with the file type.; name.gif; /name.gif"},
      {"type:.hidden enter enter enter", "/.hidden.gif"},
      {"type:new.GIF enter", "/new.gif"},
      {"type:dir.gif enter ?120 ?101 esc", "/dir.gif; *.gif; "},
      {"type:a.gif enter ?box enter ?on esc", EXISTS("a.gif") "Save File; "}, // No is the default
      {"type:a.GIF enter ?box Y", EXISTS("a.GIF") "/a.gif"},                  // what would be overwritten is asked for
      {"double:105:a.gif ?box ?101 N esc", EXISTS("a.gif") "; "},
      {"click:105:l^f.gif ?101 save Y", "l\nf.gif; /l\nf.gif"},
      {"click:105:s*.gif ?101 save Y", "s*.gif; /s*.gif"},
      {"click:104:[Pics] ?101 enter ?120 ?105 ?101 esc", "Pics/*.gif; /Pics; c.gif,; *.gif; "},
      {"double:104:[Pics] ?101 ?105 double:104:[..] ?120 esc", "*.gif; c.gif,; ; "},
      {"double:103:/ ?120 ?101 double:103:~ ?120 esc", "/; *.gif; ; "},
      {"create type:New enter ?104 esc", "[..],[dir.gif],[New],[Pics],; "},
      {"create type:New enter ?box enter type:no/where enter ?box enter esc ?on esc",
       "Directory Creation Error: The directory '/New' could not be created.; Directory Creation Error: The directory "
       "'/no/where' could not be created.; Save File; "},
      {"type:name.gif cancel", ""},
  };
  for (const auto& [steps, answer] : rows) {
    EXPECT_EQ(Play(steps), answer) << steps;
    EXPECT_EQ(ReadWholeFile(folder / "a.gif"), "old");
    FileDialogsStartUp(); // each begins at home
  }
}

TEST_F(FileDialog, TakesNamesAndPathsAsLongAsTheSystemDoes) {
  const std::string longest = std::string(251, 'n') + ".gif", tooLong = "n" + longest;
  EXPECT_EQ(Play("type:" + longest + " enter"), "/" + longest);
  EXPECT_EQ(Play("type:" + tooLong + " enter ?box enter ?101 esc"),
            "Bad Filename: The file name entered ('" + tooLong +
                "') cannot be used because it doesn't follow Windows naming conventions.; " + tooLong + "; ");
  std::string deep;
  while (deep.size() < 4096 - 6) deep += "d/";
  EXPECT_EQ(Play("type:" + deep + "n.gif enter ?on enter esc"), "Bad Filename; ");
}

TEST_F(FileDialog, BeginsWhereTheDocumentIsOrTheLastFileOrAtHome) {
  EXPECT_EQ(Play("?120 type:Pics/n.gif enter"), "; /Pics/n.gif");
  EXPECT_EQ(Play("?120 type:.. enter esc"), "/Pics; ");
  EXPECT_EQ(Play("?120 esc"), "/Pics; "); // what a cancelled one went to is forgotten
  FileRef* document = FileRefFromPathAndType((folder / "dir.gif/d.gif").c_str(), type);
  EXPECT_EQ(Play("?120 esc", document), "/dir.gif; ");
  std::filesystem::remove(folder / "dir.gif");
  EXPECT_EQ(Play("?120 esc", document), "; ");
  FreeFileRef(document);
}

TEST_F(FileDialog, LetsTheProgramGoOn) {
  int ticks = 0;
  const auto tick = [](void* count) { ++*static_cast<int*>(count); };
  for (int32_t delay : {30, 60, 90}) TimerSchedule(tick, &ticks, delay);
  EXPECT_EQ(Play("tab tab type:name enter tab tab tab esc esc"), "");
  EXPECT_EQ(ticks, 3);
}

TEST(DialogPaths, PatternsCoverNames) {
  const std::tuple<const char*, const char*, bool> rows[] = {
      {"*", "", true},           {"*.*", "none", true},    {"*.gif", "A.GIF", true}, {"*.gif", "a.gif~", false},
      {"a*b*c", "aXbXbc", true}, {"a*b*c", "aXcb", false}, {"?", "", false},         {"?.*", "a.", true},
      {"*aab", "aaaab", true},
  };
  for (const auto& [pattern, name, covers] : rows) EXPECT_EQ(MatchesPattern(pattern, name), covers) << pattern << name;
}

} // namespace
} // namespace framereel
