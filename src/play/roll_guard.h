// No half roll: what a roll has changed before it fails is taken back.
#pragma once

#include "core/game_state.h"

/// Bets up to here add less than 2 * 10^11 dollars to a sum in a roll, whatever the house rules.
inline constexpr Currency kOrdinaryBets = 20'000'000;

/// Rolls under Hyper-Drive until the sums of the game are looked at again, which nothing else adds
/// to. To be set to 0 when there may be another game.
inline unsigned RollsToLook = 0;

/// Looks at the sums: whether no roll can fail until they are looked at again.
bool SumsAreOrdinary();

/// What `BeginGuardedRoll` does where it isn't sure that the roll can't fail.
bool GuardRoll();

/// Before a roll: notes the record, the generators and the place in the log. At the table always.
/// Under Hyper-Drive, where a copy would cost more than the roll, only while money lies beyond the
/// range in which no roll can fail; a look at the sums of the game every few thousand rolls tells.
/// True when the roll is guarded.
inline bool BeginGuardedRoll() {
  const bool sure = Game.LedgerOpen && RollsToLook > 0 && Game.TotalOnTable <= kOrdinaryBets;
  if (!sure) return GuardRoll();
  --RollsToLook;
  return false;
}

/// Behind all that may fail in a guarded roll: what it has changed stands. An Overflow fault when a
/// sum of the game has come further than its file can hold.
void EndGuardedRoll();

/// After a fault: the record, the generators and the lines gathered for the log are as they were
/// before the roll. False when the roll had no guard, or had come to its end.
bool TakeBackRoll();
