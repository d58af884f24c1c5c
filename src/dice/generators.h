// The eight random number generators and their seeding.
#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <span>

#include "core/game_state.h"
#include "dice/throw_kinds.h"

/// The generators that this build goes without, as bits of `MissingRngFiles`.
inline constexpr int kGeneratorsLeftOut =
#ifdef KELVANOR_WITHOUT_MT
    1 |
#endif
#ifdef KELVANOR_WITHOUT_COKUS
    2 |
#endif
    0;

/// An integer from 1 to `limit`; advances `RngState`.
int Rng3(int limit);

/// A number in [0, 1). A negative `idum` restarts the generator with -`idum` as seed, and then
/// draws; `Ran1` leaves `idum` at 1. A seed that doesn't fit its sum is an Overflow fault.
float Ran1(int& idum);
float Ran2(int& idum);

/// RNG #1: the Mersenne Twister, seeded by its own routine; a number in [0, 1).
void init_genrand(std::uint32_t seed);
double genrand_real2();
std::uint32_t genrand_int32();

/// RNG #2: the Mersenne Twister with the older seeding by a congruence.
void srandMT(std::uint32_t seed);
double randomMT();
std::uint32_t randomMT_int32();

/// A Mersenne Twister, whose next numbers can be looked at before they are drawn. The numbers of
/// std::mt19937, on words of 32 bits: where `uint_fast32_t` has 64, drawing takes twice as long.
class Twister {
 public:
  static constexpr std::size_t state_size = 624;
  static constexpr unsigned kMostAhead = 128;

  void seed(std::uint32_t seed) {
    engine_.seed(seed);
    next_ = end_ = 0;
  }
  template <class Sequence>
  void seed(Sequence& seeds) {
    engine_.seed(seeds);
    next_ = end_ = 0;
  }

  std::uint32_t operator()() { return next_ < end_ ? ahead_[next_++] : engine_(); }

  /// The next `count` numbers, up to `kMostAhead`; they are still to be drawn.
  std::span<const std::uint32_t> Ahead(unsigned count);

  /// Draws `count` numbers that were looked at.
  void Skip(unsigned count) { next_ += count; }

 private:
  std::mersenne_twister_engine<std::uint32_t, 32, state_size, 397, 31, 0x9908B0DFU, 11, 0xFFFFFFFFU,
                               7, 0x9D2C5680U, 15, 0xEFC60000U, 18, 1812433253U>
      engine_;
  std::array<std::uint32_t, kMostAhead> ahead_{};
  unsigned next_ = 0;
  unsigned end_ = 0;
};

/// The words that a Mersenne Twister stands on.
inline constexpr std::size_t kTwisterWords = Twister::state_size;

/// Puts the Mersenne Twister of the chosen generator (of RNG #1 for any but RNG #2) into the state
/// of these words.
void PutTwisterState(std::span<const std::uint32_t, kTwisterWords> words);

/// Sets `Die1` and `Die2` from the generator of `RngChoice`, through the probability matrix when
/// `UseSkewedProbability` is on. Reads `RollCount[0]` for the generators that alternate.
void RollWithGenerator();

inline constexpr unsigned kMostThrowsAhead = Twister::kMostAhead / 2;

/// Fills `throws` with those that `RollWithGenerator` will make next, and draws nothing. False when
/// the generator in force can't tell.
bool LookAhead(std::span<ThrowNumber> throws);

/// Takes the first `count` of those throws from the generator, and leaves the dice alone.
void SkipThrows(unsigned count);

/// What `SeedRng` is asked to do.
enum SeedSource : int { SeedInChangeRequest = -1, FindSeed = 0 };

/// Seeds the chosen generator: with the whole part of `ChangeRequest`, or with the clock, or with
/// what the player enters when `UserSeed` is on (which also clears `KeepRolling`). A seed below 1
/// or above the generator's limit seeds nothing. Leaves `RngState` and `LastSeed`.
/// True when the generator was seeded.
bool SeedRng(SeedSource source);

/// The two Mersenne Twisters, which stand beside the record, as they were when it was made.
class GeneratorStates {
 public:
  GeneratorStates();
  void PutBack() const;

 private:
  Twister mt_;
  Twister cokus_;
};

/// The generators as in a program that has just been loaded, which gave no seeds out yet. The
/// states in the record are the caller's.
void ResetGenerators();

/// The largest seed of the chosen generator.
int SeedLimit();

/// A choice of generator that a missing support file rules out becomes RNG #4.
void CorrectRngChoice();
