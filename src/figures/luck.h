// Whether it was luck: how far a result stands from what the bets are worth.
#pragma once

#include <string>

#include "figures/bet_sums.h"

/// What one decision of a bet brings, as a fraction of the wager.
struct DecisionWorth {
  double Mean = 0;
  double Variance = 0;
};

/// The worth of a decision as the bet tables count decisions, by the rules and dice in force: 0
/// outcomes are none, and the flat Come and Don't Come are decided by the throw after the bet
/// alone, for what moves to a number is decided there. Line odds are taken over all points, by how
/// often each stands. All 0 for a bet that these dice never decide.
DecisionWorth WorthOfDecision(int betId);

/// How many standard deviations the net result stands from its expected value, and the share of
/// games with these wagers that do worse (by the normal distribution).
struct Luck {
  bool Known = false;  // there was something to be lucky about
  bool About = false;  // several bets: throws that they share make them move together
  double Deviations = 0;
  double Worse = 0;  // 0 to 1
};

/// With the variance of the net as the sum of squared wagers times the variance of a decision.
Luck FigureLuck(const BetSelection& selection);

/// "+1.23 (89.07 % do worse)", with "about" before it where it is; "-" when it isn't known.
std::string LuckText(const Luck& luck);

/// What the figure means, and why it is only about.
std::string LuckTip(const Luck& luck);
