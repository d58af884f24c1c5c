// The roll cycle: everything that a throw of the dice does.
#pragma once

#include "core/game_state.h"

/// Throws the dice once, or for as long as `KeepRolling` holds under auto-roll and Hyper-Drive, and
/// returns when the run has ended. Every command that rolls enters here; `RollInProgress` is true
/// meanwhile. The roll is called off when a keyed amount leaves a message, and when the bankroll is
/// beyond the bank limit.
void RollDice();

/// Starts a roll with dice named by the player.
void RollNamedDice(int die1, int die2);

/// The working states after a change of `Point`: a point just made puts bets to work, the come-out
/// gives every bet that isn't called ON or OFF its come-out state.
void UpdateWorkingStates();

/// The ratios of Pass Line Odds and Don't Pass Odds follow the point.
void CopyPointOddsPayoffs();

/// The stick person's call when the dice come out again.
void StickCall();
