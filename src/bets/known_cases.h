// Decisions of known rolls that wait to be recorded in the bet tables: all that are alike together.
#pragma once

#include <cstdint>
#include <span>

#include "core/game_state.h"

/// The number of a decision, entered where it is new.
std::uint16_t FindCase(int betId, Currency staked, Currency net);

/// Whether there is room for what one more roll can decide.
bool HasRoomForCases();

/// None may wait.
void ForgetCases();

/// Of each of these decisions `count` more wait, the last of them of the roll `lastRoll`.
void CountCases(std::span<const std::uint16_t> cases, int count, int lastRoll);

/// Records all that wait, so that the last amounts of each bet come out right.
void RecordCases();
