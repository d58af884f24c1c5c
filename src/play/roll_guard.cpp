#include "play/roll_guard.h"

#include <algorithm>
#include <optional>

#include "bets/ledger.h"
#include "core/kept_record.h"
#include "core/limits.h"
#include "dice/generators.h"
#include "dice/tape.h"
#include "stats/events_log.h"

namespace {

constexpr unsigned kRollsPerLook = 2048;
/// A sum up to here has room for that many rolls.
constexpr Currency kOrdinarySum = kMostSum - Currency(200'000'000'000) * kRollsPerLook;

struct Guard {
  KeptRecord Record;
  std::optional<GeneratorStates> Generators;
};
Guard guard;

bool AnySumBeyond(Currency most) {
  if (Abs(Game.BankrollSum) > most) return true;
  bool beyond = false;
  for (const BetKind kind : {Phantom, Actual})
    ForEachIn(Game.TalliedBets[kind], [&](unsigned id) {
      for (const BetTable* table : {&Game.BetWagers, &Game.BetWins, &Game.BetLosses})
        beyond |= id != 0 && (*table)[kind][id][StatSum] > most;  // 0 is the totals
    });
  return beyond;
}

}  // namespace

bool SumsAreOrdinary() {
  if (!LedgerIsOpen() || Game.TotalOnTable > kOrdinaryBets) return false;
  if (RollsToLook == 0 && !AnySumBeyond(kOrdinarySum)) RollsToLook = kRollsPerLook;
  return RollsToLook > 0;
}

bool GuardRoll() {
  if (SumsAreOrdinary()) {
    --RollsToLook;
    return false;
  }
  RollsToLook = 0;
  SettleLedger();
  CloseTape();
  guard.Record.Keep();
  guard.Generators.emplace();
  HoldLogLines();
  return true;
}

void EndGuardedRoll() {
  if (AnySumBeyond(kMostSum)) RaiseOverflow();
  guard.Record.Forget();
  ReleaseLogLines();
}

bool TakeBackRoll() {
  if (!guard.Record.PutBack()) return false;
  guard.Generators->PutBack();
  DropHeldLogLines();
  if (LedgerIsOpen()) OpenLedger();  // what it has counted since belongs to the lost roll
  Game.SnapshotsDue = true;
  Game.WorkingTouched = true;
  return true;
}
