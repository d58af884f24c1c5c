// Which bets a throw decides, and in which order.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "core/bets.h"

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

/// The steps of a throw, with what finds those of the bets that stand.
struct ThrowSteps {
  const DecisionStep* Steps = nullptr;
  unsigned Count = 0;
  BetMask Bets{};                                  // the bets that a step decides or moves
  BitSet<2> Shooter{};                             // a bit for each step that tells of the shooter
  std::array<unsigned char, kBetSlots> PlaceOf{};  // of the one step of each of those bets
};

/// The same steps as `DecisionsOf`.
const ThrowSteps& StepsOfThrow(int prevPoint, int die1, int die2, int barDont);

/// Calls `action(step)` for the steps of the shooter and of the bets that stand, in their order.
template <typename Action>
void ForStandingBets(const ThrowSteps& steps, const BetMask& standing, Action action) {
  BitSet<2> wanted = steps.Shooter;
  ForEachIn(Both(standing, steps.Bets), [&](unsigned bet) { Include(wanted, steps.PlaceOf[bet]); });
  ForEachIn(wanted, [&](unsigned place) { action(steps.Steps[place]); });
}
