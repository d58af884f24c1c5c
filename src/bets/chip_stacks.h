// The Chip-Stacks: a hundred amounts of the player's own, four of them shown on the table.
#pragma once

#include <array>

#include "core/game_state.h"

/// Sets a Chip-Stack to a value, by way of `ChangeBet` and its limits.
void SetChipStack(int id, Currency value);

/// Chooses the four Chip-Stacks that the table shows, by their ids.
void ShowStacksOnTable(const std::array<int, 4>& ids);
