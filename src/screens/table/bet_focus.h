// The bets as the keyboard walks over them.
#pragma once

#include <QPainterPath>
#include <vector>

enum class Way { Left, Right, Up, Down };

/// The bets that can be seen and clicked now, in the order of their ids: of Place and Buy, and of
/// Don't Pass and its odds, the one that a click acts on.
std::vector<int> BetsInReach();

/// True for a bet that is in reach.
bool IsInReach(int betId);

/// The nearest bet in reach in a direction, by chip places: within 45 degrees of it, else anywhere
/// on that side; `betId` itself where there is none. From a bet that is out of reach, the bet in
/// reach that is nearest to its place.
int NextBet(int betId, Way way);

/// The region of a bet, in table units.
QPainterPath RegionOfBet(int betId);
