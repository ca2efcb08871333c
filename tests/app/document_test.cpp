// The document as its user has it: the questions, the saves, and what is kept when nobody can be asked.
#include "app/document.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "app/application_program.h"
#include "app/picture_windows.h"
#include "app/recovery.h"
#include "platform/pump/pump.h"
#include "platform/windows/modal.h"
#include "support/script.h"
#include "support/system_failures.h"
#include "toolkit/controls/text_pane.h"
#include "win32/win32_system.h"
#include "win32/windows/window.h"

namespace framereel {
namespace {

class DocumentTest : public ApplicationTest {
protected:
  DocumentTest() {
    Start();
    app.recorder.captureArea = {20, 20, 60, 60};
    AddWords();
  }

  // Each word is a step, 60 ms after the one before, longer than the loop sleeps, also while a question is open:
  //
  //   ctrl+S enter esc ...    keys         name:TEXT   typed
  //   logout over   the session is to end        stays        it goes on   answers     given to that, of yes and no
  //   frame         one more, of other pixels    record      Start        about offer end  as they say
  //   ?             the title of the question on the screen, "-" for none, is written down; of an alert its text
  //
  // Answers that, and then the title, the frames, and whether they are saved.
  std::string Play(const std::string& steps) {
    said.clear();
    RunFor(script.Schedule(steps, 60) - ::GetTickCount() + 400);
    return Text(said, TheMainWindow()->window->title, ", ", app.recorder.frameCount, IsUnsaved(app) ? " unsaved" : "");
  }

  void AddWords() {
    script.Add("frame", [this] {
      MemoryFill({30, 30, 40, 40}, shade += 0x40);
      RecorderGrab(app.recorder);
    });
    script.Add("record", [this] { RecorderStart(app.recorder); });
    script.Add("about", [this] { ShowAbout(app); });
    script.Add("offer", [this] { TimerSchedule([](void* a) { OfferKept(*static_cast<Application*>(a)); }, &app, 0); });
    script.Add("logout", [] { MemoryTellOfSession(DisplayEventKind::kSessionAsks, false); });
    script.Add("over", [] { MemoryTellOfSession(DisplayEventKind::kSessionEnds, true); });
    script.Add("stays", [] { MemoryTellOfSession(DisplayEventKind::kSessionEnds, false); });
    script.Add("answers", [this] { said += Text(TheMemoryDesktop().sessionYes, TheMemoryDesktop().sessionNo, "; "); });
    script.Add("?", [this] { said += Question() + "; "; });
    script.words["name"] = [](std::istream& in) { MemoryTypeText(Word(in)); };
    script.Add("end", EndAllLoops);
  }

  static std::string Question() {
    ChildWindow* modal = GetModalWindow();
    if (!modal || modal->title != std::string("Framereel")) return modal ? modal->title : "-";
    for (uint16_t i = 0; i < modal->views.count; ++i) {
      const auto* view = reinterpret_cast<const View*>(modal->views.entries[i]);
      if (view->viewClass == TextPaneClass()) return TextPaneText(view);
    }
    return "";
  }
  // The frames of a file that a foreign reader takes, or what it has against it.
  std::string FramesOf(const std::string& path) {
    const GifPicture gif = ReadGifFile(path);
    return gif.error.empty() ? std::to_string(gif.frames.size()) : gif.error;
  }
  std::vector<std::string> Kept() {
    std::vector<std::string> paths;
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(folder / "data/framereel", none)) {
      paths.push_back(entry.path());
    }
    return paths;
  }

  uint32_t shade = 0;
  std::string said;
  Script script;
};

TEST_F(DocumentTest, IsAskedAboutWhereFramesWouldBeLostAndSavedUnderItsName) {
  const std::pair<const char*, const char*> steps[] = {
      {"ctrl+N ? frame ctrl+N ? esc", "-; Warning!; Framereel, 1 unsaved"},
      {"ctrl+S esc ?", "-; Framereel, 1 unsaved"},
      {"ctrl+S name:clip.gif enter", "Framereel - clip, 1"},
      {"frame", "Framereel - clip, 2 unsaved"},
      {"ctrl+S ?", "-; Framereel - clip, 2"}, // where it was
      {"record", "Framereel - clip, 2"},
      {"frame ctrl+S", "Framereel - clip, 3"}, // and the countdown has been stopped
      {"frame ctrl+Q ? esc", "Warning!; Framereel - clip, 4 unsaved"},
      {"ctrl+N ? ctrl+N ? enter", "Warning!; Warning!; Framereel, 0"},
      {"ctrl+S name:empty.gif enter", "Framereel - empty, 0"},
      {"frame ctrl+S ctrl+Q ?", "-; Framereel - empty, 1"},
  };
  for (const auto& [words, outcome] : steps) EXPECT_EQ(Play(words), outcome) << words;
  EXPECT_FALSE(app.recorder.control.recording);
  EXPECT_EQ(app.document.abandonedSize, app.stream.streamSize);
  EXPECT_EQ(FramesOf(folder / "clip.gif"), "3");
  EXPECT_EQ(FramesOf(folder / "empty.gif"), "1");
}

TEST_F(DocumentTest, IsAskedAboutAtALogoutWhichItMayPrevent) {
  const std::pair<const char*, const char*> steps[] = {
      {"logout ? answers", "-; 10; Framereel, 0"},
      {"frame logout ? answers esc ? answers", "Warning!; 10; -; 11; Framereel, 1 unsaved"},
      {"ctrl+S logout answers esc ?", "12; -; Framereel, 1 unsaved"}, // he is busy with the name
      {"logout ? enter answers", "Warning!; 22; Framereel, 1 unsaved"},
      {"stays ?", "-; Framereel, 1 unsaved"},
  };
  const auto abandoned = [&] { return app.document.abandonedSize == app.stream.streamSize; };
  for (const auto& [words, outcome] : steps) {
    EXPECT_EQ(Play(words), outcome) << words;
    EXPECT_EQ(abandoned(), std::string(words).find("enter") != std::string::npos || words == steps[0].first) << words;
  }
  EXPECT_TRUE(LoopsMayRun());
  Play("ctrl+S over");
  EXPECT_FALSE(LoopsMayRun()) << "the dialog around it ends too";
}

TEST_F(DocumentTest, StaysUnsavedAndIsToldOfWhereASaveFails) {
  const std::string place = folder / "far", clip = place + "/clip.gif";
  const auto refused = [&](int error) {
    return "The animation could not be saved: cannot write " + clip + ": " + std::strerror(error) + ".; -; ";
  };
  std::filesystem::create_directory(place);
  EXPECT_EQ(Play("frame ctrl+S name:far/clip.gif enter"), "Framereel - clip, 1");
  const std::string older = ReadWholeFile(clip);
  FailSystemCall(3, ENOSPC); // all of them are tried where the file itself is tested
  EXPECT_EQ(Play("frame ctrl+S ? enter ?"), refused(ENOSPC) + "Framereel - clip, 2 unsaved");
  EXPECT_TRUE(ReadWholeFile(clip) == older);
  FailSystemCall(-1, 0);
  EXPECT_EQ(Play("ctrl+S ?"), "-; Framereel - clip, 2");
  std::filesystem::remove_all(place);
  EXPECT_EQ(Play("frame ctrl+S ? enter ? ctrl+Q ? esc"), refused(ENOENT) + "Warning!; Framereel - clip, 3 unsaved");
  std::filesystem::create_directory(place);
  EXPECT_EQ(Play("ctrl+S ?"), "-; Framereel - clip, 3");
  EXPECT_EQ(FramesOf(clip), "3");
}

TEST_F(DocumentTest, IsKeptWithoutAQuestionAndOfferedAtTheNextStart) {
  EXPECT_TRUE(KeepUnsaved(app));
  EXPECT_EQ(Kept().size(), 0u) << "there is nothing";
  for (const char* answer : {"offer enter esc ?", "offer enter name:back.gif enter ?", "offer esc ?"}) {
    if (Kept().empty()) {
      Play("frame frame");
      StreamAppend(app.stream, 3, "and"); // of a frame under way
      testing::internal::CaptureStderr();
      EXPECT_TRUE(KeepUnsaved(app));
      const std::string told = testing::internal::GetCapturedStderr();
      ASSERT_EQ(Kept().size(), 1u);
      EXPECT_NE(told.find(Kept()[0]), std::string::npos);
      EXPECT_EQ(FramesOf(Kept()[0]), std::to_string(app.recorder.frameCount));
      EXPECT_EQ(std::filesystem::status(Kept()[0]).permissions(), std::filesystem::perms(0600));
    }
    EXPECT_EQ(Play(answer).substr(0, 3), "-; ") << answer;
    EXPECT_EQ(Kept().empty(), std::string(answer) != "offer enter esc ?") << "only a cancelled choice leaves it";
  }
  EXPECT_EQ(FramesOf(folder / "back.gif"), "2");
  EXPECT_EXIT(std::abort(), testing::KilledBySignal(SIGABRT), "it is kept as");
  Play("offer end");
  EXPECT_EQ(Kept().size(), 1u) << "nobody has answered";
}

TEST_F(DocumentTest, AboutComesAndGoesWithTheLineOutOfItsWay) {
  EXPECT_EQ(app.splash.window, nullptr) << "it has gone behind the slide";
  const std::vector<uint32_t> before = TheMemoryDisplay().screen;
  AntsShow(app.area);
  for (const bool atRest : {true, false}) {
    Play("about about");
    EXPECT_FALSE(AntsAreUp(app.area));
    if (atRest) RunFor(6000);
    EXPECT_EQ(TheMainWindow()->originX + app.about.window->geometry.clientLeft == (640 - 381) / 2, atRest);
    Play("esc");
    EXPECT_TRUE(AntsAreUp(app.area));
  }
  AntsHide(app.area);
  EXPECT_TRUE(IsBesidesPanel(before));
}

} // namespace
} // namespace framereel
