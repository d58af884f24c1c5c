// What the player has set for every game at this table: the pace of rolls, and where runs end.
#pragma once

#include "core/currency.h"

/// Why a run of rolls ended.
enum RunEndKind : int { NoLimitReached = 0, LossReached = 1, GoalReached = 2 };

struct RunLimits {
  int Pace = 0;                 // milliseconds that the result of a roll is to be seen, at least
  Currency StopLoss;            // what a game may lose before its run of rolls ends; 0 for no limit
  Currency WinGoal;             // what a game is to win before its run ends; 0 for no goal
  int RunEnd = NoLimitReached;  // by the roll that was last thrown
};
