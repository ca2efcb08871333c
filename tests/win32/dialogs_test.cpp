// Dialogs and message boxes: what the user's keys and mouse do in them, and what becomes of their loops.
#include "win32/window_scene.h"

namespace framereel {
namespace {

constexpr int kSaveDialog = 2; // of the resources: an edit 101, lists 103 to 105, buttons 106, 1 and 2

// What Ask's dialogs do with a message; set by the tests.
std::function<intptr_t(HWND, UINT, WPARAM)> procedure;

class Dialogs : public OneWindow {
protected:
  Dialogs() {
    Script& script = TheScript();
    script.Add("?", [] { Tell(Looks()); });
    script.Add("click", [](int id) {
      const PixelRect place = PlaceOnScreen(*::GetDlgItem(TheWindows().active, id));
      MemoryClick(place.left + 5, place.top + 5);
    });
    procedure = [](HWND dialog, UINT message, WPARAM wParam) {
      const bool ends = message == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL);
      return intptr_t{ends && ::EndDialog(dialog, LOWORD(wParam) + 100)};
    };
  }

  intptr_t Ask(HWND owner) {
    const auto run = [](HWND dialog, UINT message, WPARAM wParam, LPARAM) {
      return procedure(dialog, message, wParam);
    };
    return ::DialogBoxParamA(nullptr, MAKEINTRESOURCEA(kSaveDialog), owner, run, 0);
  }

  // By steps, with "?" for what is active, as Looks tells, and click:2 for that control of the active window. Runs the
  // call meanwhile and answers the looks, and then what the call answered.
  static std::string Play(const std::string& script, const std::function<intptr_t()>& call) {
    // Else a dialog that is open would stay so for ever.
    MemoryAt(TheScript().Schedule(script), [] { ::PostQuitMessage(0); });
    Tell(std::to_string(call()));
    TheWindows().quits = false;
    TheMemoryDisplay().script.clear();
    Drain();
    return Heard("none");
  }

  // The active window, the control with the focus and the default button: "Save File:101:1". "-" for nothing.
  static std::string Looks() {
    HWND active = TheWindows().active, focus = ::GetFocus();
    if (!active) return "-";
    std::string looks = active->title + (focus ? Text(':', focus->id) : "");
    for (HWND control : active->children) {
      const bool isDefault = ::SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON;
      if (isDefault) looks += Text(':', control->id);
    }
    return looks;
  }
};

TEST_F(Dialogs, OfMessagesHaveTheButtonsOfTheirFlagsAndAnswerTheOneThatWasPressed) {
  const struct {
    UINT flags;
    const char *script, *answer;
  } rows[] = {
      {MB_OK | MB_ICONHAND, "? enter", "box:1:1 1"},
      {MB_OKCANCEL, "esc", "2"},
      {MB_YESNO | MB_DEFBUTTON2 | MB_ICONQUESTION, "? enter", "box:7:7 7"},
      {MB_YESNO, "esc", "7"},
      {MB_YESNO, "alt+N", "7"},
      {MB_YESNO, "shift+tab space", "7"},
      {MB_YESNOCANCEL, "right right ? right left enter", "box:2:2 2"},
      {MB_YESNOCANCEL | MB_DEFBUTTON3 | MB_ICONEXCLAMATION, "left enter", "7"},
      {MB_RETRYCANCEL | MB_ICONASTERISK, "click:2", "2"},
      {MB_YESNO, "keyboard:- ? keyboard:box ? enter", "- box:6:6 6"},
  };
  for (const auto& row : rows) {
    const auto box = [&row] { return ::MessageBoxA(nullptr, "A question\nof two lines", "box", row.flags); };
    EXPECT_EQ(Play(row.script, box), row.answer) << row.script;
    EXPECT_EQ(TheWindows().active, main);
    EXPECT_TRUE(IsEnabled(main));
  }
}

TEST_F(Dialogs, AreWorkedByTheKeyboard) {
  const Step steps[] = {
      {"? tab ? tab ? tab ? tab ? tab ? tab ? tab ? esc",
       "Save File:101:1 Save File:103:1 Save File:104:1 Save File:105:1 Save File:106:106 Save File:1:1 "
       "Save File:2:2 Save File:101:1 102"},
      {"shift+tab ? shift+tab enter", "Save File:2:2 101"},
      {"alt+V ? alt+F ? alt+D ? alt+N ? enter", "Save File:103:1 Save File:105:1 Save File:104:1 Save File:101:1 101"},
      {"N D ? alt+X esc", "Save File:101:1 102"}, // letters that the edit has a use for
      {"shift+tab left ? right right ? esc", "Save File:1:1 Save File:101:1 102"}, // all of it is one group
      {"alt+V tab right ? esc", "Save File:104:1 102"}, // and a list has its own use for arrows
      {"click:2", "102"},
      {"tab keyboard:- ? keyboard:main ? esc", "- Save File:103:1 102"},
      {"tab enable:main focus:main tab ? esc", "Save File:104:1 102"}, // the program means to go on behind it
  };
  for (const auto& [words, brings] : steps) EXPECT_EQ(Play(words, [this] { return Ask(main); }), brings) << words;
  EXPECT_EQ(::GetFocus(), main);
}

// A box over a dialog over the main window, and the key that opened it is held. The desktop may leave the keyboard to
// nobody when they go.
TEST_F(Dialogs, StandOverDialogsAndComeBackToWhereTheKeyboardWas) {
  int idle = 0, answer = 0;
  Answer(WM_ENTERIDLE, [&idle](HWND, WPARAM, LPARAM) { return ++idle; });
  const auto ends = procedure;
  procedure = [&, this](HWND dialog, UINT message, WPARAM wParam) {
    if (message != WM_COMMAND || LOWORD(wParam) != 106) return ends(dialog, message, wParam);
    idle = 0;
    answer = ::MessageBoxA(nullptr, "text", "box", MB_YESNO | MB_TASKMODAL);
    EXPECT_GT(idle, 3);
    EXPECT_TRUE(IsEnabled(dialog) && !IsEnabled(main));
    return intptr_t{TRUE};
  };
  MemoryAt(::GetTickCount() + 130, [this] { // while the box stands
    EXPECT_EQ(MemoryWindowTitled("box")->owner, MemoryWindowTitled("Save File"));
    EXPECT_TRUE(MemoryWindowTitled("box")->modal && MemoryWindowTitled("Save File")->modal);
    MemoryClick(shown->place.left + 5, shown->place.bottom - 5);
    MemoryAskToClose(shown);
  });
  EXPECT_EQ(Play("shift+tab shift+tab shift+tab ? +enter +enter ? -enter keyboard:- keyboard:main ? N ? esc",
                 [this] { return Ask(main); }),
            "Save File:106:106 box:6:6 box:6:6 Save File:106:106 102");
  EXPECT_EQ(answer, IDNO);
  Answer(WM_ACTIVATE, [](HWND, WPARAM state, LPARAM) {
    if (state) MemoryGiveKeyboard(nullptr);
    return 0;
  });
  Play("esc", [this] { return Ask(main); });
  EXPECT_EQ(TheWindows().active, main);
}

TEST_F(Dialogs, StandOnTheMonitorOfTheirOwner) {
  TheMemoryDesktop().monitors = {{0, 0, 90, 480}, {90, 0, 640, 480}};
  MemoryAt(::GetTickCount() + 50, [] {
    const PixelRect place = MemoryWindowTitled("Save File")->place;
    EXPECT_EQ(place.left - 90, 640 - place.right);
    EXPECT_NEAR(place.top * 2, 480 - place.bottom, 2);
    MemoryTypeKey(VK_ESCAPE);
  });
  EXPECT_EQ(Ask(main), 102);
}

} // namespace
} // namespace framereel
