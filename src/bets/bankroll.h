// The ATM and the bank limit.
#pragma once

#include "core/game_state.h"

enum AtmKind : int { AtmWithdrawal = 0, AtmDeposit = 1 };

/// Moves money between the player's bank and the bankroll: a withdrawal raises the bankroll, a
/// deposit lowers it. `amount` is above 0. What the limits don't allow is cut, and the player told.
/// Updates the bankroll and `InvestedBankroll`.
void AtmTransaction(AtmKind kind, Currency amount);

/// Tells that the bankroll has passed the bank limit, either way; under Hyper-Drive it clears
/// `KeepRolling` and leaves the reason in `StopMessage`.
void CheckBankLimits();

/// Which of the player's limits for a game, `StopLoss` or `WinGoal`, a bankroll has reached: what
/// counts is the bankroll less what was invested.
inline RunEndKind RunEndAt(Currency bankroll) {
  const Currency result = bankroll - Game.InvestedBankroll;
  if (Game.WinGoal > 0 && result >= Game.WinGoal) return GoalReached;
  if (Game.StopLoss > 0 && result <= -Game.StopLoss) return LossReached;
  return NoLimitReached;
}

/// The sentence that tells how to go on after a limit.
std::string SelectNewText();
