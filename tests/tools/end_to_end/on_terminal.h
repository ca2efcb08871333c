// Programs that a test starts and talks to: with their output in files, or on a terminal of their own.
#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <pty.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "support/temporary_folder.h"

namespace framereel {

// In the child: becomes the program. Signals that the tests' own caller ignores are not ignored here.
[[noreturn]] inline void BecomeProgram(std::vector<std::string> words) {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) std::signal(number, SIG_DFL);
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  ::execvp(arguments[0], arguments.data());
  ::_exit(127);
}

// The exit status, or minus the signal that ended it.
inline int StatusOf(pid_t process) {
  int status = 0;
  ::waitpid(process, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

struct Outcome {
  int status;
  std::string output, errors;
};

inline Outcome RunProgram(const std::vector<std::string>& words) {
  const TemporaryFolder folder;
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(::open((folder / "output").c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
    ::dup2(::open((folder / "errors").c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
    BecomeProgram(words);
  }
  const int status = StatusOf(child);
  return {status, ReadWholeFile(folder / "output"), ReadWholeFile(folder / "errors")};
}

// A program on a terminal, which the test types on and reads.
class OnTerminal {
public:
  explicit OnTerminal(const std::vector<std::string>& words) {
    process = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (process == 0) BecomeProgram(words);
  }
  ~OnTerminal() { ::close(terminal); }
  OnTerminal(const OnTerminal&) = delete;
  OnTerminal& operator=(const OnTerminal&) = delete;

  // Reads until the text has come; false when the program ended without it.
  bool WaitFor(const std::string& text) {
    while (shown.find(text) == std::string::npos) {
      if (!ReadMore()) return false;
    }
    return true;
  }
  void Type(char key) { EXPECT_EQ(::write(terminal, &key, 1), 1); }
  int Wait() {
    while (ReadMore()) {
    }
    return StatusOf(process);
  }

  pid_t process;
  std::string shown;

private:
  bool ReadMore() {
    char bytes[512];
    const ssize_t length = ::read(terminal, bytes, sizeof bytes);
    if (length <= 0) return false;
    shown.append(bytes, static_cast<size_t>(length));
    return true;
  }

  int terminal;
};

// A program that says on a descriptor, given to it as a number behind its words, that it is ready. Ended with the test.
class Companion {
public:
  explicit Companion(std::vector<std::string> words) {
    int ready[2];
    EXPECT_EQ(::pipe(ready), 0);
    process = ::fork();
    if (process == 0) {
      ::close(ready[0]);
      words.push_back(std::to_string(ready[1]));
      BecomeProgram(words);
    }
    ::close(ready[1]);
    char byte;
    while (::read(ready[0], &byte, 1) == 1 && byte != '\n') said += byte;
    ::close(ready[0]);
  }
  ~Companion() { End(); }
  Companion(const Companion&) = delete;
  Companion& operator=(const Companion&) = delete;

  void End() {
    if (process <= 0) return;
    ::kill(process, SIGTERM);
    StatusOf(process);
    process = 0;
  }

  std::string said; // up to the end of a line, or until it closed the descriptor

private:
  pid_t process;
};

} // namespace framereel
