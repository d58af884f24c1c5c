// Holds the dice of a population's games against each other: the first draws of all games are
// pairwise different, no game's draws turn up in another's at any distance, and neighbours are not
// correlated at any lag looked at. The exit code tells.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "batch/stream.h"
#include "core/game_state.h"

namespace {

constexpr int kDraws = 10'000;
constexpr int kLags = 2;  // to either side
constexpr std::uint64_t kSeed = 20'260'119;

/// One in this many draws begins a window that is looked for in all games.
constexpr std::uint32_t kOneIn = 512;

using Draws = std::vector<std::uint32_t>;

void DrawGame(std::uint64_t game, Draws& draws) {
  SeedGameDice(kSeed, game);
  for (std::uint32_t& draw : draws) draw = genrand_int32();
}

std::uint64_t Folded(const Draws& draws) {
  std::uint64_t fold = 0;
  for (const std::uint32_t draw : draws) fold = SplitMix(fold ^ draw, 1);
  return fold;
}

/// Windows of four draws, 128 bits folded into 64, wherever a draw says that one begins: a stretch
/// of a few thousand draws that two games share, at whatever places, shows in some of them.
void AddWindows(const Draws& draws, std::vector<std::uint64_t>& windows) {
  for (std::size_t at = 0; at + 3 < draws.size(); ++at) {
    if (draws[at] % kOneIn != 0) continue;
    const std::uint64_t front = SplitMix((std::uint64_t{draws[at]} << 32U) + draws[at + 1], 1);
    windows.push_back(SplitMix(front ^ ((std::uint64_t{draws[at + 2]} << 32U) + draws[at + 3]), 2));
  }
}

/// The draws as numbers with mean 0 and variance 1.
void Standardise(const Draws& draws, std::vector<float>& values) {
  constexpr double kMean = 2147483647.5;
  const double perDeviation = std::sqrt(12.0) / 4294967296.0;
  for (std::size_t i = 0; i < draws.size(); ++i)
    values[i] = static_cast<float>((draws[i] - kMean) * perDeviation);
}

/// The correlation of two games at a lag, in deviations of what chance makes of it.
double Correlation(const std::vector<float>& a, const std::vector<float>& b, int lag) {
  constexpr int kParts = 8;  // sums that don't wait for each other
  std::array<float, kParts> sums{};
  for (int i = kLags; i + kParts <= kDraws - kLags; i += kParts)
    for (int part = 0; part < kParts; ++part)
      sums[static_cast<unsigned>(part)] +=
          a[static_cast<unsigned>(i + part)] * b[static_cast<unsigned>(i + part + lag)];
  double sum = 0;
  for (const float part : sums) sum += static_cast<double>(part);
  return sum / std::sqrt(static_cast<double>((kDraws - 2 * kLags) / kParts * kParts));
}

/// Whether a value stands twice among others.
bool HasTwice(std::vector<std::uint64_t>& values) {
  std::sort(values.begin(), values.end());
  return std::adjacent_find(values.begin(), values.end()) != values.end();
}

struct Correlations {
  double Squares = 0;
  double Largest = 0;
  long Count = 0;

  void Add(double z) {
    Squares += z * z;
    Largest = std::max(Largest, std::abs(z));
    ++Count;
  }
};

}  // namespace

/// The number of games can be named.
int main(int count, char** arguments) {
  const std::uint64_t games = count > 1 ? std::strtoull(arguments[1], nullptr, 10) : 100'000;
  Game.RngChoice = Rng1Mt;
  Draws draws(kDraws);
  std::vector<float> values(kDraws);
  std::vector<float> before(kDraws);
  std::vector<std::uint64_t> folds;
  std::vector<std::uint64_t> windows;
  Correlations correlations;
  for (std::uint64_t game = 0; game < games; ++game) {
    DrawGame(game, draws);
    folds.push_back(Folded(draws));
    AddWindows(draws, windows);
    std::swap(values, before);
    Standardise(draws, values);
    for (int lag = -kLags; game > 0 && lag <= kLags; ++lag)
      correlations.Add(Correlation(before, values, lag));
  }
  const std::size_t windowCount = windows.size();
  const bool same = HasTwice(folds);
  const bool shared = HasTwice(windows);
  // The mean of n squares has a deviation of the square root of 2 / n, and the largest of a million
  // values lies beyond 6 deviations once in five hundred times.
  const double mean = correlations.Squares / static_cast<double>(correlations.Count);
  const double off = (mean - 1) / std::sqrt(2.0 / static_cast<double>(correlations.Count));
  std::printf(
      "%llu games of %d draws: %s; %zu windows: %s; correlations of neighbours at %d lags: "
      "mean square %.5f (%+.2f deviations), largest %.2f deviations\n",
      static_cast<unsigned long long>(games), kDraws, same ? "two are the same" : "all different",
      windowCount, shared ? "two games share one" : "none shared", 2 * kLags + 1, mean, off,
      correlations.Largest);
  constexpr double kMostOff = 4.5;
  constexpr double kMostLargest = 6;
  const bool good =
      !same && !shared && std::abs(off) < kMostOff && correlations.Largest < kMostLargest;
  return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
