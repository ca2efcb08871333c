// What the programs of this folder have in common: rounds, each made of one seed, until enough are done or one fails.
//
//   PROGRAM AMOUNT [SEED]
//
// AMOUNT is a number of rounds, or of seconds when an "s" follows it. A seed gives the same rounds again; without one
// it is a new one each time. Round n of a seed is round 0 of the seed plus n, so that `PROGRAM 1 N` runs the round of
// seed N alone. The first line names the seed and the folder in which each round leaves what it was made of. The folder
// stays when a check fails or the program dies.
#pragma once

#include <cstdint>
#include <string>

namespace framereel {

// Answers the exit code of the process.
int RunRounds(int count, char** arguments, const std::string& folder, void (*round)(uint32_t seed));

// Says so when it does not hold, and ends the process there.
void CheckRound(uint32_t seed, bool holds, const std::string& what);

} // namespace framereel
