// A regular expression for rules that tests tell plainly.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <regex.h>
#include <string>

namespace framereel {

struct Pattern {
  regex_t compiled;

  explicit Pattern(const std::string& text) { EXPECT_EQ(::regcomp(&compiled, ("^" + text).c_str(), REG_EXTENDED), 0); }
  ~Pattern() { ::regfree(&compiled); }
  Pattern(const Pattern&) = delete;

  // What of the beginning of the text matches, and of that what each pair of brackets does; all "" for no match.
  std::array<std::string, 12> operator()(const std::string& text) const {
    std::array<std::string, 12> groups;
    regmatch_t places[12];
    if (::regexec(&compiled, text.c_str(), 12, places, 0) != 0) return groups;
    for (size_t i = 0; i < 12; ++i) {
      if (places[i].rm_so >= 0) groups[i] = text.substr(places[i].rm_so, places[i].rm_eo - places[i].rm_so);
    }
    return groups;
  }
};

} // namespace framereel
