// See rounds.h.
#include "fuzz/rounds.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

namespace framereel {
namespace {

bool ReadNumber(const char* text, const char* behind, uint32_t& number) {
  char* end = nullptr;
  number = uint32_t(std::strtoul(text, &end, 10));
  return end != text && std::strcmp(end, behind) == 0;
}

} // namespace

int RunRounds(int count, char** arguments, const std::string& folder, void (*round)(uint32_t seed)) {
  using Clock = std::chrono::steady_clock;
  uint32_t rounds = 0, seconds = 0, seed = std::random_device()();
  const bool timed = count >= 2 && ReadNumber(arguments[1], "s", seconds);
  if (count < 2 || count > 3 || (!timed && !ReadNumber(arguments[1], "", rounds)) ||
      (count == 3 && !ReadNumber(arguments[2], "", seed))) {
    std::fprintf(stderr, "usage: %s ROUNDS|SECONDSs [SEED]\n", arguments[0]);
    return 2;
  }
  std::printf("seed %u in %s\n", seed, folder.c_str());
  std::fflush(stdout);
  const auto end = Clock::now() + std::chrono::seconds(seconds);
  uint32_t done = 0;
  for (; timed ? Clock::now() < end : done < rounds; ++done) round(seed + done);
  std::printf("%u rounds are fine\n", done);
  return 0;
}

void CheckRound(uint32_t seed, bool holds, const std::string& what) {
  if (holds) return;
  std::printf("round of seed %u: %s\n", seed, what.c_str());
  std::fflush(stdout);
  std::_Exit(1); // the folder stays
}

} // namespace framereel
