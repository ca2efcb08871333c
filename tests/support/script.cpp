// See script.h.
#include "support/script.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <vector>

#include "win32/memory/memory_display.h"
#include "win32/win32_input.h"
#include "win32/win32_system.h"

namespace framereel {
namespace {

// 0 for none.
uint8_t KeyNamed(const std::string& name) {
  static const std::map<std::string, int> keys = {
      {"shift", VK_SHIFT},  {"ctrl", VK_CONTROL},  {"alt", VK_MENU},      {"tab", VK_TAB},        {"pageup", VK_PRIOR},
      {"caps", VK_CAPITAL}, {"space", VK_SPACE},   {"insert", VK_INSERT}, {"esc", VK_ESCAPE},     {"enter", VK_RETURN},
      {"left", VK_LEFT},    {"right", VK_RIGHT},   {"up", VK_UP},         {"down", VK_DOWN},      {"home", VK_HOME},
      {"end", VK_END},      {"pagedown", VK_NEXT}, {"delete", VK_DELETE}, {"backspace", VK_BACK}, {"f4", VK_F4},
      {"f6", VK_F6},        {"f10", VK_F10},       {"acute", 0xDE},       {"grave", 0xC0},        {"lb", VK_LBUTTON},
      {"mb", VK_MBUTTON},   {"rb", VK_RBUTTON}};
  const auto found = keys.find(name);
  if (found != keys.end()) return uint8_t(found->second);
  return name.size() == 1 && (std::isupper(name[0]) || std::isdigit(name[0])) ? uint8_t(name[0]) : 0;
}

void SetKey(uint8_t key, bool down) {
  const uint8_t button = key == VK_LBUTTON ? 1 : key == VK_MBUTTON ? 2 : key == VK_RBUTTON ? 3 : 0;
  if (button) return down ? MemoryPressButton(button) : MemoryReleaseButton(button);
  down ? MemoryPressKey(key) : MemoryReleaseKey(key);
}

// One key, or some that are held together.
bool TypeKeys(const std::string& word) {
  std::vector<uint8_t> keys;
  std::istringstream names(word.substr(word[0] == '+' || word[0] == '-'));
  for (std::string name; std::getline(names, name, '+');) keys.push_back(KeyNamed(name));
  if (keys.empty() || std::count(keys.begin(), keys.end(), 0)) return false;
  for (auto key = keys.begin(); key != keys.end() && word[0] != '-'; ++key) SetKey(*key, true);
  for (auto key = keys.rbegin(); key != keys.rend() && word[0] != '+'; ++key) SetKey(*key, false);
  return true;
}

} // namespace

std::string Word(std::istream& in) {
  std::string word;
  in >> word;
  return word;
}

std::string UpToTheDot(std::istream& in) {
  std::string text;
  for (std::string word; in >> word && word != ".";) text += word + " ";
  return text;
}

Script::Script() {
  Add("m", MemoryMovePointerTo);
  Add("wheel", MemoryTurnWheel);
  Add("takemouse", MemoryTakeCapture);
  Add("wait", ::Sleep);
  Add("tick", [](uint32_t time) { TheMemoryDisplay().tick += time; });
  words["when"] = [this](std::istream& in) {
    const std::string entry = Word(in);
    reactions.emplace_back(entry, UpToTheDot(in));
  };
  words["later"] = [this](std::istream& in) {
    std::istringstream all(UpToTheDot(in));
    uint32_t at = ::GetTickCount();
    for (std::string step; std::getline(all, step, ',');) MemoryAt(at += 20, [this, step] { Act(step); });
  };
}

void Script::Act(const std::string& script) {
  std::istringstream in(script);
  ++nesting;
  for (std::string word; in >> word;) {
    const auto known = words.find(word);
    if (known != words.end()) {
      known->second(in);
    } else if (!TypeKeys(word)) {
      ADD_FAILURE() << "there is no word " << word << " in " << script;
    }
    if (nesting == 1) settle();
  }
  --nesting;
}

uint32_t Script::Schedule(const std::string& script, uint32_t apart) {
  uint32_t at = ::GetTickCount() + apart;
  std::istringstream steps(script);
  for (std::string step; steps >> step; at += step == "rest" ? 300 : apart) {
    std::string told = step;
    std::replace(told.begin(), told.end(), ':', ' ');
    if (step != "rest") MemoryAt(at, [this, told] { Act(told); });
  }
  return at;
}

void Script::React(const std::string& entry) {
  const auto reaction = std::find_if(reactions.begin(), reactions.end(),
                                     [&](const auto& each) { return entry.rfind(each.first, 0) == 0; });
  if (reaction == reactions.end()) return;
  const std::string now = reaction->second;
  reactions.erase(reaction);
  Act(now);
}

} // namespace framereel
