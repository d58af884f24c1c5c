// Roll events: what each throw is, and how often and how long ago it was.
#pragma once

#include <span>

#include "core/game_state.h"

/// The one way that the count of an event rises: `RollCount`, `ShooterEvent`, the gap since its
/// last time in `RollGapTally`; and the ...Since fields start again at 0.
void TallyEvent(int event);

/// The events of a throw besides event 0, in the order in which they are tallied.
std::span<const unsigned char> EventsOfThrow(int die1, int die2);

/// The event of two dice in their order, and of the same dice in either order.
int EventOfDice(int die1, int die2);
int EventOfCombination(int die1, int die2);

/// Tallies all events of the dice just thrown.
void TallyThrow();
