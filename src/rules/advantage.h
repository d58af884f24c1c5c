// What a bet is worth under the rules and the dice in force.
#pragma once

#include "core/game_state.h"

/// Expectation and spread of a bet, as fractions of the amount bet, each rounded to six decimals,
/// halves away from zero.
struct Advantage {
  double EVRoll = 0;     // expected value per roll, negative for the house's edge
  double EVDec = 0;      // expected value per decision
  double RollsDec = 0;   // rolls per decision
  double StDevRoll = 0;  // standard deviation per roll
  double StDevDec = 0;   // standard deviation per decision

  bool operator==(const Advantage&) const = default;
};

/// True for the bets 1 to 83 but the line odds without a point, which stand for nothing then.
bool HasAdvantage(int betId);

/// Figures a bet by the payoffs, the rates of vig, `BarDont` and `IncludeZeroOutcomes`, with the
/// probability matrix when `skewed` and fair dice otherwise. The cells of the matrix are taken as
/// they stand, whatever they sum to. Line odds are the odds on the point. All figures are 0 for a
/// bet without an advantage and for one that these dice never decide.
///
/// A bet is its outcomes: chances p with gains g, of T rolls in all (1 for a bet that is looked at
/// throw by throw). With D the sum of p over gains other than 0, or 1 when zero outcomes count:
/// `EVDec` = sum(p g) / D, `RollsDec` = T / D, `EVRoll` = sum(p g) / T. The spread per roll counts
/// pushes and throws that decide nothing with a gain of 0, the spread per decision only when zero
/// outcomes count. A payoff too large to be figured is a fault of "Figure Advantage", kept in
/// `LastErrorText`, and gives 0.
Advantage FigureAdvantage(int betId, bool skewed);

/// With or without zero outcomes, whatever `IncludeZeroOutcomes` says.
Advantage FigureAdvantage(int betId, bool skewed, bool countZeros);

/// With the dice in force.
inline Advantage FigureAdvantage(int betId) {
  return FigureAdvantage(betId, Game.UseSkewedProbability);
}
