// Values that an action takes from the game.
#pragma once

#include "core/game_state.h"

/// The value of a source ("of") now; 0 for a code that is no source, a stack that doesn't exist and
/// a bet on the point without one. `stack` is the Chip-Stack number, or the span of the average.
Currency ValueOf(int subject, int stack);

/// The value that the source had one roll ago, where it has a past.
Currency ValueOfLast(int subject, int stack);

/// `amount` percent of the value, reckoned in double precision and rounded back to money.
Currency PercentOf(int subject, int stack, Currency amount);
Currency PercentOfLast(int subject, int stack, Currency amount);
