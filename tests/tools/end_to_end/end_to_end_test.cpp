// The program itself on a real X server, as a user or a script starts it. The server is in DISPLAY, 640 by 480 pixels.
#include <csignal>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/gif_reader.h"
#include "support/temporary_folder.h"

namespace framereel {
namespace {

// A program on a terminal of its own, on which the test types and reads.
class OnTerminal {
public:
  // A command of bash. Signals that the tests' own caller ignores are not ignored here.
  explicit OnTerminal(const std::string& command) {
    process = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (process != 0) return;
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) std::signal(number, SIG_DFL);
    ::execlp("bash", "bash", "-c", command.c_str(), nullptr);
    ::_exit(127);
  }
  ~OnTerminal() { ::close(terminal); }
  OnTerminal(const OnTerminal&) = delete;

  // Reads until the text has come; false when the program ended without it.
  bool WaitFor(const std::string& text) {
    while (shown.find(text) == std::string::npos) {
      if (!ReadMore()) return false;
    }
    return true;
  }
  void Type(char key) { (void)!::write(terminal, &key, 1); }
  // The exit status, or minus the signal that ended it.
  int Wait() {
    while (ReadMore()) {
    }
    int status = 0;
    ::waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

  pid_t process;
  std::string shown;

private:
  bool ReadMore() {
    char bytes[512];
    const ssize_t length = ::read(terminal, bytes, sizeof bytes);
    if (length > 0) shown.append(bytes, size_t(length));
    return length > 0;
  }

  int terminal;
};

// What the commands below find in their variables.
const std::string kPrograms = "R='" RECORD_PROGRAM "'; SCENE='" DEMO_SCENE_PROGRAM "'; ";

// Each test has a folder of its own, in which it is started.
struct FramereelRecord : testing::Test {
  const WorkingFolder folder; // for a.gif
  const std::string file = folder / "a.gif";
};

TEST_F(FramereelRecord, AnswersWithItsStatusItsMessageAndItsFile) {
  const struct {
    const char* command; // of bash
    int status, width;   // of a.gif; 0: there is none
    std::string shown;
  } cases[] = {
      {"mkfifo ready; $SCENE --ready-fd 5 5>ready & read < ready; "
       "$R --area '100,50 300x200' --fps=20 --ticks=10 --size=25 --quiet a.gif; status=$?; kill $!; exit $status",
       0, 150, ""},
      {"$R --version", 0, 0, "framereel-record 1.23"},
      {"$R --ticks=2 --delay=25 --quiet - | cat > a.gif", 0, 640, ""},
      {"exec $R --ticks=2 a.gif <&- >&- 2>&-", 0, 640, ""},
      {"$R --ticks=2 --stats --quiet a.gif >/dev/full", 1, 640, "standard output cannot be written to"},
      {"$R --fps=50 a.gif", 2, 0, "--fps takes a number from 0.2 to 40, not \"50\""},
      {"env -u DISPLAY $R a.gif", 1, 0, "there is no display to record: DISPLAY is not set"},
      {"XDG_DATA_HOME=$PWD $R --ticks=1 --quiet /dev/full", 1, 0,
       "cannot write /dev/full: No space left on device; the animation is kept as HERE/framereel/animation.gif"},
      {"$R -", 1, 0, "standard output is a terminal; give a FILE or redirect it"},
      {"$R - >&-", 1, 0, "standard output cannot be written to; give a FILE or redirect it"},
      {"$R --help >/dev/full", 1, 0, "standard output cannot be written to"},
      // The pipe has nobody at its other end by the time of the save: `true` never reads, and wait is for its end.
      {"exec 3> >(true); wait $!; XDG_DATA_HOME=$PWD $R --ticks=1 --quiet - >&3", 1, 0,
       "cannot write standard output: Broken pipe; the animation is kept as HERE/framereel/animation-2.gif"},
  };
  for (const auto& c : cases) {
    OnTerminal program(kPrograms + c.command);
    EXPECT_EQ(program.Wait(), c.status) << c.command;
    const size_t here = program.shown.find(folder.path);
    if (here != std::string::npos) program.shown.replace(here, folder.path.size(), "HERE");
    const std::string prefix = c.status == 0 ? "" : "framereel-record: ";
    EXPECT_EQ(program.shown, c.shown == "" ? "" : prefix + c.shown + "\r\n") << c.command;
    EXPECT_EQ(ReadGifFile(file).width, c.width) << c.command;
    std::filesystem::remove(file);
  }
}

TEST_F(FramereelRecord, SavesAtControlCAndWhenItIsToldToEnd) {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    OnTerminal record(kPrograms + "exec $R --delay=5000 a.gif");
    ASSERT_TRUE(record.WaitFor("1 frame, ")) << record.shown;
    EXPECT_FALSE(std::filesystem::exists(file));
    number == SIGINT ? record.Type('\x03') : void(::kill(record.process, number));
    EXPECT_EQ(record.Wait(), 0);
    EXPECT_EQ(ReadGifFile(file).frames.size(), 1u);
    EXPECT_EQ(folder.EntryCount(), 1u);
    EXPECT_NE(record.shown.find("a.gif: 1 frame, "), std::string::npos) << record.shown;
    std::filesystem::remove(file);
  }
}

} // namespace
} // namespace framereel
