// Decisions of known rolls that wait to be recorded in the bet tables: all that are alike together.
#pragma once

#include <cstdint>
#include <span>

#include "core/game_state.h"

/// Bets by how they went.
struct DecidedBets {
  BetMask Won{};
  BetMask Lost{};
};

/// What a known roll decides.
struct RollCases {
  DecidedBets Bets;
  unsigned First = 0;      // the place of its decisions
  unsigned Cases = 0;      // their number
  unsigned OfSeveral = 0;  // of them, and ahead: those of bets that are decided in several ways
  unsigned SortedAt = 0;   // which bets were when they were last sorted
  int Count = 0;           // times played and not recorded yet
  int LastRoll = 0;        // the last of them
};

/// The number of a decision, entered where it is new.
std::uint16_t FindCase(int betId, Currency staked, Currency net);

/// Adds decisions to those of a roll, by their numbers. Nothing is added to another roll between
/// the first of a roll and the last.
void AddCases(RollCases& roll, std::span<const std::uint16_t> numbers);

/// Whether there is room for what one more roll can decide.
bool HasRoomForCases();

/// There are no decisions any more. None may wait.
void ForgetCases();

/// `count` times more the roll waits to be recorded, `lastRoll` being the last of them. It stays
/// where it is until then.
void CountCases(RollCases& roll, int count, int lastRoll);

/// Records all that wait, so that the last amounts of each bet come out right.
void RecordCases();

/// The bets that any known roll decides.
const BetMask& BetsEverDecided();
