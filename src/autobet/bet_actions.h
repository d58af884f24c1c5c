// What action lines do to bets and Chip-Stacks.
#pragma once

#include "autobet/actions.h"

/// Whether an action is one of "Bet", "Add", "Subtract", "Multiply by" and "Divide by".
constexpr bool ChangesByValue(int action) {
  return action >= 10 && action < 60 && action % 10 <= 8;
}

/// Performs such an action on a bet or a Chip-Stack, by `MakeBet` and its rules. Notes in `run`
/// what the lines of the run have in common.
void ChangeByValue(int id, const ScriptLine& line, ActionRun& run);

/// Sets a bet to `amount`, as a fresh bet under all rules.
void SetBet(int id, Currency amount);

/// "Round" to whole `unit`s, by a `RoundingWay`; nothing for a unit of 0.
void RoundToWhole(int id, Currency unit, int way);

/// "Buy the Place Bet", "Call OFF", "Call ON" and "Reset wins / losses". Nothing for Chip-Stacks.
void TreatBet(int id, int action);
