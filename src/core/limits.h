// The largest amounts and rates that the game reckons with. Within them no roll can overflow: 83
// bets that all win at the best ratio bring less than `kMostMoney`.
#pragma once

#include "core/currency.h"

/// What a Chip-Stack can hold, and more than any bankroll can get to by a roll.
inline constexpr Currency kMostMoney = Currency::FromRaw(999'999'999'999'999'999);
/// Sums over all rolls of a game may come as far as this.
inline constexpr Currency kMostSum = 900'000'000'000'000;
/// A bet, and every limit of bets.
inline constexpr Currency kMostBet = 100'000'000;
/// The value of a check.
inline constexpr Currency kLeastCheck = Currency::FromRaw(100);
inline constexpr Currency kMostCheck = 1'000'000;
/// A payoff wins at most this for a unit; its unit is at most `kMostPer` dollars.
inline constexpr Currency kMostPayoff = 10'000;
inline constexpr Currency kMostPer = 1'000;
/// Vig, as a fraction: all of the bet or of what it wins.
inline constexpr Currency kMostVig = 1;
/// Odds, as a multiple of the flat bet.
inline constexpr Currency kMostOdds = 1'000;
/// Rolls that the view of a matrix counts in.
inline constexpr Currency kMostRollsOutOf = 1'000'000'000;
