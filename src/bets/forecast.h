// What a throw would bring, before it is thrown.
#pragma once

#include <vector>

#include "core/game_state.h"

/// What the bankroll would gain or lose if these dice fell now, with the bets as they stand, before
/// anything is settled. Changes nothing.
Currency NetIfRolled(int die1, int die2);

/// Throws of one total that bring the same.
struct ForecastRow {
  int Total = 0;
  int Die1 = 0;  // of the throw that the row is named by; 0 when it is named by its total
  int Die2 = 0;
  int Ways = 0;  // of 36
  Currency Net;

  bool operator==(const ForecastRow&) const = default;
};

/// All throws, by total: a row for each of the eleven, and more where throws of a total don't bring
/// the same. The row of a total is what most of its throws bring; the others are named by dice.
std::vector<ForecastRow> ForecastRolls();

/// What a throw brings on average.
Currency MeanOfForecast(const std::vector<ForecastRow>& rows);
