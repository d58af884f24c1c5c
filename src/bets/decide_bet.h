// Deciding bets: the payoff of a bet that the dice touched, and what it does to the bankroll.
#pragma once

#include "core/game_state.h"

/// Decision codes: a flat bet wins or loses, an odds bet wins or loses.
enum DecisionCode : int { FlatWins = 1, OddsWin = 2, FlatLoses = -1, OddsLose = -2 };

/// Decides the real wager on a bet and nothing else: `DecideBet` without the phantom tables.
void DecideWager(int betId, DecisionCode code);

enum FigureMode : int { FigureRate = 0, FigureReal = 1 };

/// Decides one bet. Reads the dice, `PrevPoint`, `BetWorking` and the rules; feeds the phantom and
/// the actual bet tables, writes the won and lost lines of the log, moves the bankroll by
/// `NetPayoff`, and hands the bet to the won or lost handling (settle.h). A bet that doesn't work
/// is passed over, but for odds, which come back.
void DecideBet(int betId, DecisionCode code);

/// The dice of a decision, and the point that stood before them.
struct DecidedThrow {
  int Die1 = 0;
  int Die2 = 0;
  int Point = 0;
};

/// The throw that the record has just seen.
inline DecidedThrow ThrowInForce() { return {Game.Die1, Game.Die2, Game.PrevPoint}; }

struct BetPayoff {
  Currency Gross;  // exact
  Currency Net;    // whole Units, rounded down
  PayoffRecord Ratio;
};

/// The payoff of `amount` on a bet that a throw decides. `FigureRate` takes vig from its rate, for
/// one-dollar figures; `FigureReal` takes the held vig.
BetPayoff FigurePayoff(FigureMode mode, int betId, DecisionCode code, Currency amount,
                       const DecidedThrow& thrown);

/// What tells apart the payoffs of a bet, 0 to 127: the record that it is paid by.
int OutcomeOf(int betId, DecisionCode code, const DecidedThrow& thrown);

/// The place in `FieldPayoff`, 1 to 21, of a throw.
int FieldCombination(int die1, int die2);
