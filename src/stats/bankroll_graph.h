// Points of the bankroll graph and their moving average.
#pragma once

#include "core/game_state.h"

/// Adds the bankroll as the next point of the page; after 525 points a new page begins and the old
/// one moves behind it. Without `withAverage` the averages wait for `RecomputeAverages`.
void AddBankrollPoint(bool withAverage = true);

/// Figures the average of every point of the page anew, or of the newest only.
void RecomputeAverages(int newest = kGraphPoints);

/// The moving average at a point of the page over `span` points (0: all rolls of the game).
Currency BankrollMovingAverage(int point, int span);

/// Figures the average of every point of the page anew, and the page's high and low.
void RecomputeBankrollAverage();

/// The number of rolls in the moving average, brought into its limits; all averages and
/// the high and low of the page follow.
void SetBankrollAverageSpan(long long span);

/// An empty graph for a new game.
void RestartGraph();
