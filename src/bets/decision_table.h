// Which bets a throw decides, and in which order.
#pragma once

#include <span>

/// What a step of a throw's decisions does.
enum class StepKind : unsigned char {
  Decide,      // `Bet` by `Code`, a DecisionCode
  Move,        // the bet `Bet` to its number `Target`
  Pass,        // the shooter passed
  Miss,        // the shooter missed
  Bar,         // the barred number on the come-out
  LogNatural,  // the log line of a come-out 11
};

struct DecisionStep {
  StepKind Kind;
  unsigned char Bet = 0;
  unsigned char Target = 0;
  signed char Code = 0;
};

/// The steps of a throw, in the order in which they are taken: first the line bets on a made point,
/// then the row of the total, then the bets that every roll decides. `prevPoint` is the point when
/// the dice were thrown, `barDont` the barred number (2 or 12). The order matters to a bankroll
/// that runs out, and to the log.
std::span<const DecisionStep> DecisionsOf(int prevPoint, int die1, int die2, int barDont);

/// Those steps alone that tell of the shooter: all that a throw does when no bet is up.
std::span<const DecisionStep> ShooterStepsOf(int prevPoint, int die1, int die2, int barDont);
