// Which bets count for comps.
#pragma once

#include <array>

#include "core/bets.h"

/// The choice of each bet in the list: index 0 is bet 1.
using CompBetList = std::array<bool, LastBet>;

/// True when a bet counts for comps.
bool BetCountsForComps(int betId);
CompBetList CompBets();

/// Stores the list. Required: from the bet C and E on it lies one bit away from where
/// `BetCountsForComps` looks.
void StoreCompBets(const CompBetList& bets);

/// The default of a bet: all count but odds.
bool CompBetDefault(int betId);
