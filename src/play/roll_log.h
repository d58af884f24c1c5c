// The Events Log lines of the roll cycle.
#pragma once

#include "core/game_state.h"

/// Writes what the player changed since the last roll: Auto-Bet, bankroll, bets, Chip-Stacks. The
/// dice of the last roll are still in the record.
void LogChangesSinceRoll();

/// Writes the throw and where it came from.
enum class DiceSource { ManualPad, Tape, Generator };
void LogThrow(DiceSource source);

/// Writes what the throw did to the point, and the bankroll and shooter after a roll; the latter
/// only where events are logged.
void LogPassOrMiss(const char* text);
void LogEndOfRoll();
