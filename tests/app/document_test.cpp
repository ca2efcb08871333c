// The document as its user has it: the questions, the saves, and what is kept when nobody can be asked.
#include "app/document.h"

#include <filesystem>

#include "app/application_program.h"
#include "app/picture_windows.h"
#include "app/recovery.h"
#include "platform/pump/pump.h"
#include "platform/windows/modal.h"
#include "support/script.h"

namespace framereel {
namespace {

class DocumentTest : public ApplicationTest {
protected:
  DocumentTest() {
    Start();
    app.recorder.captureArea = {20, 20, 60, 60};
    AddWords();
  }

  // Each word is a step, 40 ms after the one before, also while a question is open:
  //
  //   N S Q         the letter with Ctrl         enter esc    keys         name:TEXT   typed
  //   frame         one more, of other pixels    record      Start        about offer end  as they say
  //   ?             what the question on the screen says, "-" for none, is written down
  //
  // Answers that, and then the title, the frames, and whether they are saved.
  std::string Play(const std::string& steps) {
    said.clear();
    RunFor(script.Schedule(steps, 40) - ::GetTickCount() + 360);
    return Text(said, Title(), ", ", app.recorder.frameCount, IsUnsaved(app) ? " unsaved" : "");
  }

  void AddWords() {
    auto& words = script.words;
    for (const std::string letter : {"N", "S", "Q"}) {
      words[letter] = [=, this](std::istream&) { script.Act("ctrl+" + letter); };
    }
    words["frame"] = [this](std::istream&) {
      MemoryFill({30, 30, 40, 40}, shade += 0x10);
      RecorderGrab(app.recorder);
    };
    words["record"] = [this](std::istream&) { RecorderStart(app.recorder); };
    words["about"] = [this](std::istream&) { ShowAbout(app); };
    words["offer"] = [this](std::istream&) { TimerSchedule(OfferKept, &app, 0); };
    words["?"] = [this](std::istream&) { said += Question() + "; "; };
    words["name"] = [](std::istream& in) { MemoryTypeText(Word(in)); };
    script.Add("end", EndAllLoops);
  }

  std::string Title() const {
    char title[200] = "";
    ::GetWindowTextA(TheMainWindow()->window, title, sizeof title);
    return title;
  }
  static std::string Question() {
    const ChildWindow* modal = GetModalWindow();
    return modal ? modal->title : "-";
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
      {"N ? frame N ? esc", "-; Warning!; Framereel, 1 unsaved"},
      {"S esc ?", "-; Framereel, 1 unsaved"},
      {"S name:clip.gif enter", "Framereel - clip, 1"},
      {"frame", "Framereel - clip, 2 unsaved"},
      {"S ?", "-; Framereel - clip, 2"}, // where it was
      {"record", "Framereel - clip, 2"},
      {"frame S", "Framereel - clip, 3"}, // and the countdown has been stopped
      {"frame Q ? esc", "Warning!; Framereel - clip, 4 unsaved"},
      {"N ? N ? enter", "Warning!; Warning!; Framereel, 0"},
      {"S name:empty.gif enter", "Framereel - empty, 0"},
      {"frame S Q ?", "-; Framereel - empty, 1"},
  };
  for (const auto& [words, outcome] : steps) EXPECT_EQ(Play(words), outcome) << words;
  EXPECT_FALSE(app.recorder.control.recording);
  EXPECT_TRUE(app.document.abandoned);
  EXPECT_EQ(FramesOf(folder / "clip.gif"), "3");
  EXPECT_EQ(FramesOf(folder / "empty.gif"), "1");
}

TEST_F(DocumentTest, StaysUnsavedAndIsToldOfWhereASaveFails) {
  std::filesystem::create_directory(folder / "gone");
  EXPECT_EQ(Play("frame S name:gone/clip.gif enter"), "Framereel - clip, 1");
  std::filesystem::remove_all(folder / "gone");
  EXPECT_EQ(Play("frame S ? enter ? Q ? esc"), "Framereel; -; Warning!; Framereel - clip, 2 unsaved");
  std::filesystem::create_directory(folder / "gone");
  EXPECT_EQ(Play("S ?"), "-; Framereel - clip, 2");
  EXPECT_EQ(FramesOf(folder / "gone/clip.gif"), "2");
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
  EXPECT_TRUE(KeepUnsaved(app));
  Play("offer end");
  EXPECT_EQ(Kept().size(), 1u) << "nobody has answered";
}

TEST_F(DocumentTest, AboutComesAndGoesWithTheLineOutOfItsWay) {
  EXPECT_EQ(app.splash.window, nullptr) << "it has gone behind the slide";
  const std::vector<uint32_t> before = BesidesPanel();
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
  EXPECT_EQ(BesidesPanel() == before, true);
}

} // namespace
} // namespace framereel
