// Known parts: what a throw does to a part of the table.
//
// A part's roll that was once played in full is known from then on, whatever else stands; and a
// whole roll is put together from what is known of its parts. See part_states.h for the parts, and
// known_rolls.h.
#pragma once

#include <array>
#include <cstdint>

#include "bets/known_cases.h"
#include "bets/part_states.h"
#include "core/game_state.h"
#include "dice/throw_kinds.h"

/// What a throw does to a part, or to two that it joins.
struct PartRoll {
  std::int64_t Gain = 0;         // of the bankroll
  std::int64_t MoneyNeeded = 0;  // of the money free to bet before the roll, at most
  bool AsksForMoney = false;
  bool ChangesWorking = false;
  std::uint16_t Next = 0;      // the state that it leaves
  std::uint16_t NextCome = 0;  // and that of the Come bets, where they are joined
  std::uint16_t NextMultiple = 0;
  unsigned char MultipleAt = 0;  // the place of the last step that set `OddsMultiple`
  RollCases Cases;
};

/// What a throw does to a layout, put together from its parts.
struct JoinedRoll {
  std::int64_t Gain = 0;
  std::int64_t MoneyNeeded = 0;
  bool AsksForMoney = false;
  bool ChangesWorking = false;
  PartStates Next{};
  unsigned Moving = 0;  // parts of which there is anything to tell
  std::array<PartRoll*, kParts> Rolls{};
};

/// Whether there is room for what one more roll can teach.
bool HasRoomForParts();

/// Nothing is known of the parts any more, nor are there states of them. See `ForgetStates`.
void ForgetParts();

/// Before a roll that is to be learnt, and after each step of its decisions: `betId` is the bet
/// that it decided or moved, `place` the step's place among those of the throw.
void BeginRollNotes();
void NoteStep(int betId, unsigned place);

/// Learns what the roll since `BeginRollNotes` did; false when it can't be counted.
bool LearnParts(const PartStates& before, Currency bankrollBefore, const PartStates& after);

/// Puts a roll together; false when one of its parts isn't known.
bool JoinParts(const PartStates& before, ThrowNumber thrown, JoinedRoll& roll);
