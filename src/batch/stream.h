// The dice of each game of a population: a sequence that depends on the seed and the game alone.
#pragma once

#include <array>
#include <cstdint>

#include "dice/generators.h"

/// SplitMix64 (Steele, Lea and Flood, 2014): number `place`, from 1, of the sequence that begins at
/// `start`. For a given start it is a bijection of places to 64-bit words.
std::uint64_t SplitMix(std::uint64_t start, std::uint64_t place);

/// The state of a Mersenne Twister for game `game` (from 0) of a population.
///
/// The seed, mixed, is the start of a SplitMix64 sequence. It is cut into pieces of 312 words of 64
/// bits, and game i takes piece i, which fills the 624 words of the Twister's state. So games of a
/// population never have a pair of words of their states in common, not to speak of a state: all
/// pieces are different places of one bijection, as long as there are fewer than 2^64 / 312 games.
/// Their states are then as good as drawn by chance out of 2^19937, and two sequences of 10^12
/// draws that start by chance on a period of 2^19937 - 1 run into each other with a probability
/// below 10^-5900. Populations of different seeds begin at places of the same period of 2^64 that
/// are as good as drawn by chance: that two of 10^9 games each overlap has a probability of 4 in
/// 10^8.
std::array<std::uint32_t, kTwisterWords> TwisterStateOf(std::uint64_t seed, std::uint64_t game);

/// Puts the chosen generator (RNG #1, #2 or #8) to the start of a game's dice.
void SeedGameDice(std::uint64_t seed, std::uint64_t game);

/// Whether a generator has sequences enough for each game to have its own. RNG #3, #4 and #5 know
/// less than a million of them, and #6 and #7 take every other roll from those.
constexpr bool HasOwnSequences(int rngChoice) {
  return rngChoice == Rng1Mt || rngChoice == Rng2Cokus || rngChoice == Rng8SingleCall;
}
