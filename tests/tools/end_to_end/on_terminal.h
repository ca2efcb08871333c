// A program on a terminal of its own, on which the test types and reads.
#pragma once

#include <csignal>
#include <pty.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace framereel {

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

} // namespace framereel
