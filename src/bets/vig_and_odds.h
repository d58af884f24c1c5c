// Vig on Buy and Lay bets, the largest odds bet, and amounts that pay in whole chips.
#pragma once

#include "core/game_state.h"

/// Leaves in `BuyVigCalc` the vig on `amount` on a Buy bet: `BuyVigPct` of the amount, rounded by
/// `RoundBuyVig` and at least one Unit on any amount above 0. 0 for another bet or a zero rate.
void FigureBuyVig(int betId, Currency amount);

/// Leaves in `LayVigCalc` the vig on `amount` on a Lay bet: `LayVigPct` of what it would win,
/// rounded by `RoundLayVig` like the Buy vig. 0 for another bet, a zero rate or a negative win.
void FigureLayVig(int betId, Currency amount);

/// The held vig of a Buy or Lay bet; 0 for any other bet.
Currency VigHeld(int betId);

/// True for a Buy or Lay bet whose vig is charged up front.
bool VigIsUpFront(int betId);

/// Figures the held vig of every Buy and Lay bet again and brings `TotalOnTable` up to date. For a
/// change of rate, rounding, mode or payoff.
void RefigureHeldVig();

/// Leaves in `MaxHere` the largest amount that odds on `flatBetId` may win or stake, by
/// `OddsCalcMethod`, capped by `MaxOddsBet` and rounded down to Units; and in `OddsMultiple` the
/// multiple allowed for the number. `payNum` and `payDen` are `Win` and `Per` for bets that take
/// odds, `Per` and `Win` for bets that lay them.
void FigureMaxOdds(int oddsBetId, int flatBetId, Currency payNum, Currency payDen);

/// `count` raised to the next whole multiple of `step`, but 0 when it is half a step or less.
Currency RoundToOddsStep(Currency count, Currency step);

/// Bends `Change` so that the bet becomes an amount that its payoff ratio pays in whole Units (or
/// in whole larger chips, by `AutoAdjust`), within `MinHere` and `MaxHere`. Reads the four bias
/// settings; outside Hyper-Drive it may add to `MsgText`. A change that removes the bet is left as
/// it is.
void AdjustForProperOdds(int betId);
