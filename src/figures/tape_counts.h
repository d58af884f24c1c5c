// How often the highlighted kinds of throws stand on a stretch of the tape.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "dice/tape_edit.h"

/// The throws of a stretch by their pair of dice, (die 1 - 1) x 6 + (die 2 - 1).
struct TapeCounts {
  std::array<std::int64_t, 36> Pairs{};
  std::int64_t NoThrows = 0;  // bytes out of limits
  std::int64_t Rolls = 0;     // all that stands there
};

/// Counts a stretch of the tape in use. A tape that can't be read, or a count that the player has
/// ended, leaves `LastFileResult` at 0 or below, and is no count.
TapeCounts CountTape(const RollSelection& rolls);

/// A highlighted kind: how many there are, in percent of all throws, and what fair dice would give.
struct TapeKind {
  std::string Name;  // "Total 7", "A 3 on a die", "3-4", "All highlighted"
  std::int64_t Count = 0;
  double Share = 0;
  double FairShare = 0;
};

/// The totals and faces that are highlighted whole, then pairs that belong to none of them, and at
/// the end all highlighted throws together, each counted once. Empty while nothing is highlighted.
std::vector<TapeKind> HighlightedKinds(const TapeCounts& counts);
