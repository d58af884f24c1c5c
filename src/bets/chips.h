// How an amount of money becomes a pile of chips on the table.
#pragma once

#include "core/game_state.h"

/// Appends a chip of picture `ChipColor` at (x, y) to the list, for bet `betId`. A list of more
/// than 900 turns `AutoArrangeChips` on, for good.
void AddChip(int betId, int x, int y);

/// Rebuilds the chips of one bet, or of a Chip-Stack that the table shows, from its amount: the
/// largest chips first, at most 13, then one of the overflow picture. Nothing under Hyper-Drive.
void ArrangeChips(int betId);

/// Rebuilds the chips of every bet and of the shown Chip-Stacks.
void ArrangeAllChips();

/// Squeezes out free records and sorts the list by bet, keeping the order within a bet.
void CompactChips();

/// The value of a chip picture 1 to 5.
inline Currency ChipValue(int picture) { return Game.Bets[SmallestChip - 1 + picture]; }
