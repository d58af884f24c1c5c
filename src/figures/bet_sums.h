// Sums of the bet tables over any set of bets, and which bets the player has selected.
#pragma once

#include <array>
#include <cstdint>

#include "core/number_format.h"
#include "core/tallies.h"

/// `optDataType`: whose wagers are shown.
enum class BetData : int {
  ActualWagers = 0,
  PhantomWagers = 1,
  AllGames = 2,  // actual wagers of the games finished since the start, and of the running one
};

/// The lines of `lstBets` that are selected, by bet id, and the choice of `optDataType`.
struct BetSelection {
  std::array<bool, kBetSlots> Selected{};
  BetData Data = BetData::ActualWagers;

  bool operator==(const BetSelection&) const = default;
};

/// The selection as the game keeps it, in `BetResultsChoice`: "S" or a blank for each bet, then "1"
/// for actual wagers, "0" for phantom ones, "2" for those of all games.
BetSelection KeptSelection();
void KeepSelection(const BetSelection& selection);

/// Stats of one bet, or of several together, in ten-thousandths: counts and sums added, the highest
/// and the lowest of all, and the last amounts added.
using WideStats = std::array<WideCount, kBetStats>;
struct BetSums {
  WideStats Wagers{};
  WideStats Wins{};
  WideStats Losses{};
  double Squares = 0;  // of all wagers, in dollars squared
};

BetSums SumsOfBet(int betId, BetData data);
void AddSums(BetSums& sums, const BetSums& more);

/// The rolls during which these wagers were made.
std::int64_t RollsOf(BetData data);
