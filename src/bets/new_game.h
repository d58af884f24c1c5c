// A new game.
#pragma once

#include "core/game_state.h"

/// Clears the table and all statistics and begins a game with the bankroll that
/// `BankrollInitType` asks for. With `preserveStacks` the Chip-Stacks keep their values; their
/// names are kept in any case. Seeds the generator when `ReSeed` is on.
void NewGame(bool preserveStacks);

/// Anything may stand in the tallies, as in a game that was read: the next new game clears all.
void ExpectAnyTallies();
