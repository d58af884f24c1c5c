// The largest odds bet.
#pragma once

#include "core/game_state.h"

/// Leaves in `MaxHere` the largest amount that odds on `flatBetId` may win or stake, by
/// `OddsCalcMethod`, capped by `MaxOddsBet` and rounded down to Units; and in `OddsMultiple` the
/// multiple allowed for the number. `payNum` and `payDen` are `Win` and `Per` for bets that take
/// odds, `Per` and `Win` for bets that lay them.
void FigureMaxOdds(int oddsBetId, int flatBetId, Currency payNum, Currency payDen);

/// The multiple that an odds bet was last looked at with. Counted in `MultipleSets`, so that it
/// shows when it is set to what it was.
void SetOddsMultiple(Currency multiple);

/// `count` raised to the next whole multiple of `step`, but 0 when it is half a step or less.
Currency RoundToOddsStep(Currency count, Currency step);
