// A script of words: what the user, the program and its timers do on a desktop in memory. A test is a table of such
// scripts and of what each one brings; every room adds words of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <list>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>

namespace framereel {

template <typename... Parts> std::string Text(const Parts&... parts) {
  std::ostringstream text;
  (text << ... << parts);
  return text.str();
}

// The next word of what a word is told; all up to the next "." or the end.
std::string Word(std::istream& in);
std::string UpToTheDot(std::istream& in);

// What a word is told, as its function takes it: a number, or what a name stands for. Such forms are a room's own and
// must be declared wherever words are added that are told so.
template <typename T> T Told(std::istream& in) {
  int64_t number = 0;
  in >> number;
  return T(number);
}

// Words are separated by blanks.
//
//   the user    m X Y (the pointer on the screen), wheel N
//               keys like A, f4, ctrl+shift+left, and the buttons lb, mb, rb: typed, or with + or - ahead pressed or
//               released only
//   the others  takemouse
//   time        wait MS (the clock sleeps), tick MS (it alone goes on, and no event runs), later WORDS , WORDS ... .
//               (20 ms apart, once somebody waits)
//
// when ENTRY WORDS . reacts once to an entry of the log that begins so.
class Script {
public:
  Script();
  Script(const Script&) = delete;

  void Act(const std::string& script);
  // Each word is a step, so many ms behind the one before, but "rest" one of 300. A colon stands for the blank ahead of
  // what a word is told. Answers the time of a step behind the last one.
  uint32_t Schedule(const std::string& script, uint32_t apart = 20);
  // To what has just been logged.
  void React(const std::string& entry);
  // A word that is told what the function takes.
  template <typename Function> void Add(const std::string& word, Function act) { Bind(word, std::function(act)); }

  std::map<std::string, std::function<void(std::istream&)>> words; // ahead of keys of the same name
  std::function<void()> settle = [] {};                            // behind each word that is not inside another one

private:
  template <typename Result, typename... Arguments>
  void Bind(const std::string& word, std::function<Result(Arguments...)> act) {
    words[word] = [act](std::istream& in) { std::apply(act, std::tuple<Arguments...>{Told<Arguments>(in)...}); };
  }

  std::list<std::pair<std::string, std::string>> reactions;
  int nesting = 0; // of words that run inside words
};

} // namespace framereel
