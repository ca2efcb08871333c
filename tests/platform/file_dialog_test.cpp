// The dialog for the name to save under, as a user works it in a folder of a test's own.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/file_refs.h"
#include "core/strings.h"
#include "platform/dialogs/file_dialogs.h"
#include "support/script.h"
#include "support/temporary_folder.h"
#include "support/window_program.h"
#include "win32/memory/memory_display.h"
#include "win32/win32_controls.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_windows.h"
#include "win32/windows/window.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr int kName = 101, kDrives = 103, kFiles = 105;
constexpr int kMessage = 0xFFFF; // the text of a message box
constexpr int kEntryHeight = 15;

std::string TextOf(HWND window, int id) {
  char text[5000] = "";
  ::GetDlgItemTextA(window, id, text, sizeof text);
  return text;
}

// "|" behind the last one.
std::string EntryOf(HWND list, int entry) {
  char text[5000] = "";
  return ::SendMessageA(list, LB_GETTEXT, WPARAM(entry), reinterpret_cast<LPARAM>(text)) == LB_ERR ? "|" : text;
}

// Of a list, every entry.
std::string ContentOf(HWND window, int id) {
  if (id < kDrives || id > kFiles) return TextOf(window, id);
  std::string all;
  for (int i = 0; EntryOf(::GetDlgItem(window, id), i) != "|"; ++i) all += EntryOf(::GetDlgItem(window, id), i) + ",";
  return all;
}

void ClickAt(HWND window, int32_t y) {
  const PixelRect client = ClientOnScreen(*window);
  MemoryClick(client.left + 5, client.top + y);
}

void ClickEntry(HWND list, const std::string& text) {
  int entry = 0;
  while (EntryOf(list, entry) != text && EntryOf(list, entry) != "|") ++entry;
  ClickAt(list, entry * kEntryHeight + 2);
}

// Folders: "Pics" with c.gif, "dir.gif" and ".hid"; files a.gif, B.GIF, x.txt, .h.gif, "s*.gif", "bad\xff.gif".
class FileDialog : public ::testing::Test {
protected:
  TemporaryFolder folder;
  WindowProgram program;
  FileType* type = NewFileType(kFileTypeGif);
  std::string looks;
  Script script;

  // Each word of the script is a step, 20 ms after the one before:
  //
  //   type:text           in the place of what the field holds
  //   enter esc tab Y N   keys
  //   button:106          a button of the active window: IDOK is Save, 106 makes a folder
  //   click:105:a.gif     the mouse on an entry of a list, twice for a choice
  //   ?:101 ?:105 ...     writes the text of a control down, or a list's entries; ?box the message; ?on what is active
  FileDialog() {
    for (const char* each : {"Pics", "dir.gif", ".hid"}) std::filesystem::create_directory(folder / each);
    for (const char* each : {"a.gif", "B.GIF", "x.txt", ".h.gif", "s*.gif", "bad\xff.gif", "Pics/c.gif"}) {
      WriteWholeFile(folder / each, "old");
    }
    ::setenv("HOME", folder.path.c_str(), 1);
    const auto active = [] { return TheWindows().active; };
    script.Add("?", [=, this](int id) { looks += ContentOf(active(), id) + "; "; });
    script.Add("?on", [=, this] { looks += (active() ? active()->title : "-") + "; "; });
    script.Add("?box", [=, this] { looks += active()->title + ": " + TextOf(active(), kMessage) + "; "; });
    script.Add("button", [=](int id) { ClickAt(::GetDlgItem(active(), id), 5); });
    script.words["type"] = [=](std::istream& in) { ::SetDlgItemTextA(active(), kName, Word(in).c_str()); };
    script.words["click"] = [=](std::istream& in) {
      const int id = Told<int>(in);
      ClickEntry(::GetDlgItem(active(), id), Word(in));
    };
  }
  ~FileDialog() { FreeFileType(type); }

  // Answers what was written down, and then the path, without the folder's.
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
};

#define MISSING                                                                                                        \
  "Mising Extension: The file name entered lacks an extension. The appropriate extension (.gif) has been appended."
#define EXISTS(name) "File Exists: A file with the name '" name "' already exists. Overwrite this file?; "

TEST_F(FileDialog, ChecksWhatIsEnteredAndStaysUntilItIsAName) {
  const std::pair<const char*, const char*> rows[] = {
      {"?:101 ?:107 ?:105 ?:104 ?:120 esc",
       "*.gif; GIF Files (.GIF); a.gif,B.GIF,bad\xff.gif,s*.gif,; [..],[dir.gif],[Pics],; ; "},
      {"type: enter ?on type:*.* enter ?:101 ?:105 esc",
       "Save File; *.*; a.gif,B.GIF,bad\xff.gif,s*.gif,x.txt,; "}, // nothing is no name
      {"type:?.t* enter ?:101 ?:105 esc", "?.t*; x.txt,; "},
      {"type:*A*f enter ?:105 esc", "a.gif,bad\xff.gif,; "},
      {"type:Pics/ enter ?:101 ?:105 ?:120 type:.. enter ?:120 esc", "*.gif; c.gif,; /Pics; ; "},
      {"type:Pics/*.txt enter ?:101 ?:105 ?:120 esc", "*.txt; ; /Pics; "},
      {"type:none/ enter ?:101 ?:120 esc", "none/; ; "},
      {"type:name enter ?box enter ?:101 ?on enter", MISSING "; name.gif; Save File; /name.gif"},
      {"type:name.txt enter ?box enter ?:101 enter",
       "Mismatched Extension: The file name entered has an extension (.txt) which is inappropriate for the selected "
       "file "
       "type. The extension has been changed (to .gif) so it agrees with the file type.; name.gif; /name.gif"},
      {"type:.hidden enter enter enter", "/.hidden.gif"},
      {"type:new.GIF enter", "/new.gif"},
      {"type:dir.gif enter ?:120 ?:101 esc", "/dir.gif; *.gif; "},
      {"type:a.gif enter ?box enter ?on esc", EXISTS("a.gif") "Save File; "}, // No is the default
      {"type:a.GIF enter ?box Y", EXISTS("a.GIF") "/a.gif"},                  // what would be overwritten is asked for
      {"click:105:a.gif click:105:a.gif ?box ?:101 N esc", EXISTS("a.gif") "; "},
      {"click:105:s*.gif ?:101 button:1 Y", "s*.gif; /s*.gif"},
      {"click:104:[Pics] ?:101 enter ?:120 ?:105 ?:101 esc", "Pics/*.gif; /Pics; c.gif,; *.gif; "},
      {"click:104:[Pics] click:104:[Pics] ?:101 ?:105 click:104:[..] click:104:[..] ?:120 esc", "*.gif; c.gif,; ; "},
      {"click:103:/ click:103:/ ?:120 ?:101 click:103:~ click:103:~ ?:120 esc", "/; *.gif; ; "},
      {"button:106 type:New enter ?:104 esc", "[..],[dir.gif],[New],[Pics],; "},
      {"button:106 type:New enter ?box enter type:no/where enter ?box enter esc ?on esc",
       "Directory Creation Error: The directory '/New' could not be created.; Directory Creation Error: The directory "
       "'/no/where' could not be created.; Save File; "},
      {"type:name.gif button:2", ""},
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
  EXPECT_EQ(Play("type:" + tooLong + " enter ?box enter ?:101 esc"),
            "Bad Filename: The file name entered ('" + tooLong +
                "') cannot be used because it doesn't follow Windows naming conventions.; " + tooLong + "; ");
  std::string deep;
  while (deep.size() < 4096 - 6) deep += "d/";
  EXPECT_EQ(Play("type:" + deep + "n.gif enter ?on enter esc"), "Bad Filename; ");
}

TEST_F(FileDialog, BeginsWhereTheDocumentIsOrTheLastFileOrAtHome) {
  EXPECT_EQ(Play("?:120 type:Pics/n.gif enter"), "; /Pics/n.gif");
  EXPECT_EQ(Play("?:120 type:.. enter esc"), "/Pics; ");
  EXPECT_EQ(Play("?:120 esc"), "/Pics; "); // what a cancelled one went to is forgotten
  FileRef* document = FileRefFromPathAndType((folder / "dir.gif/d.gif").c_str(), type);
  EXPECT_EQ(Play("?:120 esc", document), "/dir.gif; ");
  std::filesystem::remove(folder / "dir.gif");
  EXPECT_EQ(Play("?:120 esc", document), "; ");
  FreeFileRef(document);
}

} // namespace
} // namespace framereel
