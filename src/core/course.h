// How a game goes from throw to throw: what its end doesn't show.
#pragma once

#include "core/currency.h"

/// Followed only where somebody asks for it before the first throw; see play/course.h. What the
/// player is worth is the bankroll less what was invested, so that the ATM moves nothing here.
struct GameCourse {
  bool Followed = false;
  Currency Worth;               // at the end of the last roll
  Currency Peak;                // the highest worth
  Currency DeepestFall;         // from a peak
  Currency MostAtRisk;          // of the player's money, lost or on the table when dice were thrown
  int LosingRolls = 0;          // that lost money, in a row; rolls that moved none don't count
  int LongestLosingStreak = 0;  // the most of them
  int RefusedBets = 0;          // requests of scripts for money on a bet that brought none there
};

struct CourseState {
  GameCourse Course;
};
