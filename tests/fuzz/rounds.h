// What the programs of this folder have in common: rounds, each made of one seed, until enough are done or one fails.
//
//   PROGRAM AMOUNT [SEED]
//
// AMOUNT is a number of rounds, or of seconds when an "s" follows it. A seed gives the same rounds again; without one
// it is a new one each time. Round n of a seed is round 0 of the seed plus n, so that `PROGRAM 1 N` runs the round of
// seed N alone. The first line names the seed and the folder in which each round leaves what it was made of. The folder
// stays when a check fails or the program dies.
#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

namespace framereel {

// Answers the exit code of the process.
inline int RunRounds(int count, char** arguments, const std::string& folder, void (*round)(uint32_t seed)) {
  using Clock = std::chrono::steady_clock;
  char* unit = nullptr;
  const uint32_t amount = count >= 2 ? uint32_t(std::strtoul(arguments[1], &unit, 10)) : 0;
  const uint32_t seed = count >= 3 ? uint32_t(std::strtoul(arguments[2], nullptr, 10)) : std::random_device()();
  if (amount == 0) {
    std::fprintf(stderr, "usage: %s ROUNDS|SECONDSs [SEED]\n", arguments[0]);
    return 2;
  }
  std::printf("seed %u in %s\n", seed, folder.c_str());
  std::fflush(stdout);
  const auto end = Clock::now() + std::chrono::seconds(amount);
  uint32_t done = 0;
  for (; *unit == 's' ? Clock::now() < end : done < amount; ++done) round(seed + done);
  std::printf("%u rounds are fine\n", done);
  return 0;
}

// Says so when it does not hold, and ends the process there.
inline void CheckRound(uint32_t seed, bool holds, const std::string& what) {
  if (holds) return;
  std::printf("round of seed %u: %s\n", seed, what.c_str());
  std::fflush(stdout);
  std::_Exit(1); // the folder stays
}

} // namespace framereel
