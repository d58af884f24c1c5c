// What happens to the stake of a decided bet: the player's choice, or Auto-Play's.
#pragma once

#include "core/game_state.h"

/// Handle the bet in `DecidedBet` after a win (or a push) and after a loss: by
/// `HandleWinningBets` or `HandleLosingBets`, or through the settle screen. Under Hyper-Drive a
/// manual choice counts as taking the bet down. A bet with `BetComesDown` set is always taken down.
void HandleWonBet();
void HandleLostBet();

/// Fills the lines of the settle screen for a win or push, for odds that came back because they
/// weren't working, and for a loss.
void FillWinLines();
void FillReturnedOddsLines();
void FillLossLines();

/// What button 0 to 6 of the settle screen does. The screen has stored its amount boxes, operators
/// and units in their slots before it calls this.
void PressSettleButton(int button);

/// Leaves in `PressUnit` the largest chip, times the payoff's `Per`, that divides the bet into more
/// than one; the smallest when none does.
void FigurePressUnit(int betId);

// The choices. Each acts on `DecidedBet`.
void TakeDownBet();
void BetRemainder();
void SameBet();
void PressUnit1();
void PressDouble();
void Parlay();
void SameBetModified(int slot);
void SetBetTo(int slot);
